// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QFile>
#include <QTemporaryDir>

#include "Host/HostContext.h"
#include "Simulation/SimulatedDevices.h"
#include "TestDevice.h"

inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// A host with settings of its own, and what it has logged. There is none before renew() and after end().
class TestHost
{
public:
    HostContext *operator->() const { return m_context.get(); }
    HostContext &operator*() const { return *m_context; }

    /// A new one, as after an installation.
    void renew(DeviceFinder finder = {})
    {
        end();
        QFile::remove(m_settings);
        log.clear();
        start(std::move(finder));
    }
    /// The same again, with the settings and the log of before.
    void start(DeviceFinder finder = {})
    {
        end();
        m_context = std::make_unique<HostContext>(HostContext::Options{m_settings, std::move(finder)});
        QObject::connect(&m_context->log(), &HostLog::lineAdded, m_context.get(),
                         [this](const QDateTime &, const QString &, const QString &message) { log += message; });
    }
    void end() { m_context.reset(); }

    /// Null when the id is taken.
    TestDevice *add(const char *id, Device::Kind kind = Device::Kind::Camera)
    {
        auto device = std::make_unique<TestDevice>(text(id), kind);
        TestDevice *added = device.get();
        return m_context->devices().add(std::move(device)) ? added : nullptr;
    }
    void addSimulatedDevices()
    {
        for (std::unique_ptr<Device> &device : makeSimulatedDevices())
            m_context->devices().add(std::move(device));
    }
    bool open(const char *id) { return m_context->sessions().open(text(id)); }
    void close(const char *id) { m_context->sessions().close(text(id)); }
    bool acquire(const char *id) { return m_context->sessions().startAcquisition(text(id)); }
    bool isReady(const char *id) const { return m_context->devices().isReady(text(id)); }
    Device *device(const char *id) const { return m_context->devices().device(text(id)); }

    QStringList log;

private:
    QTemporaryDir m_folder;
    const QString m_settings = m_folder.filePath(QStringLiteral("host.ini"));
    std::unique_ptr<HostContext> m_context;
};
