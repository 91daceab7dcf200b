// SPDX-License-Identifier: MIT
#include "Devices/DescriptionDevice.h"

#include <QFile>
#include <QFileInfo>

#include "Features/NodeGuard.h"

namespace {

constexpr qint64 maximumSize = 256 * 1024 * 1024; // bytes; real descriptions stay below ten million

} // namespace

DescriptionDevice::DescriptionDevice(const QString &file, QObject *parent) : Device(parent), path(file) { }

DescriptionDevice::~DescriptionDevice() = default;

QString DescriptionDevice::id() const
{
    return QStringLiteral("file:") + QFileInfo(path).absoluteFilePath();
}

QString DescriptionDevice::displayName() const
{
    return QFileInfo(path).fileName();
}

bool DescriptionDevice::open(QString *error)
{
    if (isOpen())
        return true;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return false;
    }
    const QByteArray description = file.read(maximumSize + 1);
    if (description.size() > maximumSize) {
        *error = QStringLiteral("the file is larger than 256 MiB");
        return false;
    }
    return guarded(error, [&] { nodes.emplace(description, port); });
}

void DescriptionDevice::close()
{
    nodes.reset();
    port = SparseMemoryPort();
}

GenApi::INodeMap *DescriptionDevice::nodeMap() const
{
    return nodes ? nodes->get() : nullptr;
}

bool DescriptionDevice::startAcquisition(QString *error)
{
    *error = QStringLiteral("a description file makes no images");
    return false;
}
