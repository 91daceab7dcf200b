// SPDX-License-Identifier: MIT
#include "PanelBase/NodeWrites.h"

#include <exception>
#include <functional>

#include <QLocale>
#include <QPointer>

#include "Features/NodeGuard.h"
#include "Features/NodeText.h"
#include "Features/ValueKind.h"
#include "PanelBase/DeviceReading.h"

namespace {

/// Without words of the device, so that nobody takes it for a write.
const QString Refused = QStringLiteral("refused");

QString textOf(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

/// The value as ValueKind::write() writes it.
QString textOf(const ValueKind &kind, const QVariant &value)
{
    switch (kind.type) {
    case GenApi::intfIInteger:
        return QString::number(value.toLongLong());
    case GenApi::intfIFloat:
        return textOf(static_cast<double>(value.toFloat()));
    case GenApi::intfIBoolean:
        return QString::number(int(value.toBool()));
    default:
        return value.toString();
    }
}

/// Runs `write`, which is false if there was nothing to write. It may let the panel go, and the node.
bool tellOf(DeviceReading *reading, GenApi::INode *node, const QString &value, const std::function<bool()> &write)
{
    if (!reading || !node)
        return write();
    const QPointer<DeviceReading> teller(reading);
    QString feature;
    guardNode([&] { feature = QString::fromUtf8(node->GetName().c_str()); });
    bool isWritten = true;
    std::exception_ptr thrown;
    const std::optional<std::string> refusal = errorOf([&] {
        try {
            isWritten = write();
        } catch (...) {
            thrown = std::current_exception();
            throw;
        }
    });
    if (teller && isWritten) {
        const QString words = refusal ? QString::fromStdString(*refusal) : QString();
        Q_EMIT teller->written(teller->deviceName(), feature, value, refusal && words.isEmpty() ? Refused : words);
    }
    if (thrown)
        std::rethrow_exception(thrown);
    return isWritten;
}

} // namespace

bool NodeWrites::writeValue(DeviceReading *reading, GenApi::INode *node, const QVariant &value)
{
    const ValueKind &kind = valueKind(node);
    return tellOf(reading, node, textOf(kind, value), [&] { return kind.write(node, value); });
}

void NodeWrites::writeReal(DeviceReading *reading, GenApi::INode *node, double number)
{
    tellOf(reading, node, textOf(number), [&] {
        GenApi::CFloatPtr(node)->SetValue(number, true);
        return true;
    });
}

void NodeWrites::writeEntry(DeviceReading *reading, GenApi::INode *node, const QString &symbolic)
{
    tellOf(reading, node, symbolic, [&] {
        GenApi::CEnumerationPtr(node)->FromString(symbolic.toUtf8().constData(), true);
        return true;
    });
}

void NodeWrites::writeEntry(DeviceReading *reading, GenApi::INode *node, int64_t number)
{
    tellOf(reading, node, settingText(node, QString::number(number)), [&] {
        GenApi::CEnumerationPtr(node)->SetIntValue(number, true);
        return true;
    });
}

void NodeWrites::execute(DeviceReading *reading, GenApi::INode *node)
{
    tellOf(reading, node, QString(), [&] {
        GenApi::CCommandPtr(node)->Execute(true);
        return true;
    });
}
