// SPDX-License-Identifier: MIT
#include "Devices/DescriptionDevice.h"

#include <QFile>
#include <QFileInfo>

#include "Features/NodeGuard.h"

namespace {

constexpr qint64 MaximumSize = 256 * 1024 * 1024; // bytes; real descriptions stay below ten million

} // namespace

DescriptionDevice::DescriptionDevice(const QString &file, QObject *parent) : Device(parent), m_path(file) { }

DescriptionDevice::~DescriptionDevice() = default;

QString DescriptionDevice::id() const
{
    return QStringLiteral("file:") + QFileInfo(m_path).absoluteFilePath();
}

QString DescriptionDevice::displayName() const
{
    return QFileInfo(m_path).fileName();
}

bool DescriptionDevice::open(QString *error)
{
    if (isOpen())
        return true;
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return false;
    }
    const QByteArray description = file.read(MaximumSize + 1);
    if (description.size() > MaximumSize) {
        *error = QStringLiteral("the file is larger than 256 MiB");
        return false;
    }
    return guarded(error, [&] { m_nodes.emplace(description, m_port); });
}

QByteArray DescriptionDevice::description() const
{
    QFile file(m_path);
    return isOpen() && file.open(QIODevice::ReadOnly) ? file.read(MaximumSize) : QByteArray();
}

void DescriptionDevice::close()
{
    m_nodes.reset();
    m_port = SparseMemoryPort();
}

GenApi::INodeMap *DescriptionDevice::nodeMap() const
{
    return m_nodes ? m_nodes->get() : nullptr;
}

bool DescriptionDevice::startAcquisition(QString *error)
{
    *error = QStringLiteral("a description file makes no images");
    return false;
}
