// SPDX-License-Identifier: MIT
#include "ToolPage/RowFeature.h"

#include "Features/NodeGuard.h"
#include "PanelBase/HostCall.h"

void RowFeature::bind(GenApi::INode *node)
{
    m_node = nullptr;
    guardRead([&] {
        if (node && node->IsFeature() && node->GetVisibility() != GenApi::Invisible)
            m_node = node;
    });
}

void RowFeature::release()
{
    m_isReleased = true;
    m_node = nullptr;
}

GenApi::EInterfaceType RowFeature::identify(GenApi::INode *node)
{
    GenApi::EInterfaceType type = GenApi::intfIBase;
    guardRead([&] {
        m_name = QString::fromUtf8(node->GetName().c_str());
        type = node->GetPrincipalInterfaceType();
    });
    return type;
}

bool RowFeature::guardRead(const std::function<void()> &read)
{
    const auto report = [this](const char *error) {
        const QString fault = QString::fromUtf8(error);
        if (fault == m_readFault)
            return;
        m_readFault = fault;
        if (!isSilent())
            log(QStringLiteral("Read %1 failed, message = %2").arg(m_name.isEmpty() ? m_label : m_name, fault));
    };
    const auto access = [&] { m_reading ? m_reading->read(m_node, read) : read(); };
    return guardNode(
        access, [&](const GenICam::GenericException &error) { report(error.GetDescription()); }, report);
}

bool RowFeature::guardWrite(const std::function<void()> &write, const std::function<void()> &onRefused)
{
    if (m_isReleased)
        return false;
    const auto refused = [&](const GenICam::GenericException &error) {
        logRefusal(QString::fromUtf8(error.GetDescription()));
        onRefused();
    };
    const auto access = [&] { m_reading ? m_reading->write(m_node, write) : write(); };
    return guardNode(access, refused, [](const char *error) { log(QString::fromUtf8(error)); });
}

void RowFeature::logRefusal(const QString &reason) const
{
    const QString name = m_name.isEmpty() ? m_label.trimmed() : m_name;
    log(QStringLiteral("Set %1 value failed, message = %2").arg(name, reason));
}

void RowFeature::log(const QString &message)
{
    logToHost(Module, message.toStdString());
}
