// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QtTest>

#include "Host/HostContext.h"
#include "Simulation/SimulatedDevices.h"
#include "TestDevice.h"

inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// Hears of the lists of devices as long as it lives, on the thread that tells of them.
class ListListener final : public HostCore::IDeviceListUpdate
{
public:
    using Keys = std::vector<std::string>;
    using Handler = std::function<void(int source, const Keys &cards, const Keys &cameras)>;

    explicit ListListener(Handler handler) : m_handle(std::move(handler))
    {
        HostCore::RegisterDeviceListUpdateListener(this);
    }
    ~ListListener() { HostCore::UnRegisterDeviceListUpdateListener(this); }

    void OnUpdate(int source, Keys cards, Keys cameras) override { m_handle(source, cards, cameras); }

private:
    const Handler m_handle;
};

/// A host with settings of its own, and what it has logged. There is none before renew() and after end().
class TestHost
{
public:
    HostContext *operator->() const { return m_context.get(); }
    HostContext &operator*() const { return *m_context; }

    /// A new one, as after an installation.
    void renew(DeviceFinder finder = {}, DeviceReturn::Clock clock = OncePerMinute::steadyTime)
    {
        end();
        QFile::remove(m_settings);
        log.clear();
        start(std::move(finder), std::move(clock));
    }
    /// The same again, with the settings and the log of before.
    void start(DeviceFinder finder = {}, DeviceReturn::Clock clock = OncePerMinute::steadyTime,
               std::optional<QStringList> producers = std::nullopt)
    {
        end();
        m_context = std::make_unique<HostContext>(
            HostContext::Options{m_settings, std::move(finder), std::move(clock), std::move(producers)});
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
    /// A new one with the simulated devices.
    void renewSimulated()
    {
        renew();
        for (std::unique_ptr<Device> &device : makeSimulatedDevices())
            m_context->devices().add(std::move(device));
    }
    bool open(const char *id) { return m_context->sessions().open(text(id)); }
    void close(const char *id) { m_context->sessions().close(text(id)); }
    bool acquire(const char *id) { return m_context->sessions().startAcquisition(text(id)); }
    bool isReady(const char *id) const { return m_context->devices().isReady(text(id)); }
    /// Writes features by words "feature=value", one after the other.
    void set(const char *id, const QByteArray &words) const
    {
        for (const QByteArray &word : words.split(' ')) {
            const QStringList parts = text(word).split(QLatin1Char('='));
            QVERIFY2(m_context->values().write(text(id), parts[0], parts[1]), word);
        }
    }
    double number(const char *id, const char *feature) const
    {
        QString value;
        m_context->values().read(text(id), text(feature), &value);
        return value.toDouble();
    }
    Device *device(const char *id) const { return m_context->devices().device(text(id)); }

    QStringList log;

private:
    QTemporaryDir m_folder;
    const QString m_settings = m_folder.filePath(QStringLiteral("host.ini"));
    std::unique_ptr<HostContext> m_context;
};
