// SPDX-License-Identifier: MIT
#include "Host/HostContext.h"

#include <atomic>
#include <mutex>
#include <utility>

#include <QThread>

#include "Host/AutomaticRange.h"

namespace {

std::atomic<HostContext *> theContext{nullptr};
std::mutex contextMutex; ///< held by other threads while they use the context, and while it goes

const QString LanguageKey = QStringLiteral("language");

std::unique_ptr<QSettings> makeSettings(const QString &file)
{
    if (file.isEmpty())
        return std::make_unique<QSettings>();
    return std::make_unique<QSettings>(file, QSettings::IniFormat);
}

} // namespace

HostContext::HostContext(Options options, QObject *parent)
    : QObject(parent), m_settings(makeSettings(options.settingsFile)),
      m_producers(*m_settings, {options.producers.value_or(QStringList()), options.onlyGivenProducers}, m_log),
      m_devices(options.producers ? m_producers.finder(options.finder) : options.finder, m_log),
      m_focus(m_devices, m_listeners, m_log), m_sessions(m_devices, m_focus, m_listeners, m_log),
      m_silentDevices(m_devices, m_sessions),
      m_deviceReturn(m_devices, m_sessions, *m_settings, std::move(options.clock)),
      m_cameraModules(m_devices, m_sessions, m_deviceReturn), m_automaticSearch(m_devices, *m_settings),
      m_infoItems(m_devices, *m_settings), m_values(m_devices, m_log), m_writes(m_devices),
      m_panelRegions(m_devices, m_values, m_regions, m_log), m_profilerRegions(m_devices, m_values, m_regions, m_log),
      m_profilerHeights(m_devices, m_sessions, m_values, m_log), m_showModes(m_devices, m_sessions, m_log)
{
    new AutomaticRange(m_devices, m_sessions, m_infoItems, m_listeners);
    connectParts();
    theContext = this;
}

void HostContext::connectParts()
{
    connect(&m_deviceReturn, &DeviceReturn::awaitingChanged, &m_automaticSearch, &AutomaticSearch::setHurried);
    connect(&m_sessions, &DeviceSessions::releasing, &m_regions, &ImageRegions::removeAll);
    connect(&m_values, &DeviceValues::userSetLoaded, &m_profilerRegions, &ProfilerRegions::showDevice);
    connect(&m_values, &DeviceValues::written, this,
            [this](const QString &id, const QString &node, const QString &value, const QString &refusal) {
                m_writes.add(id, node, value, refusal);
            });
    connect(&m_devices, &KnownDevices::restarted, this, [this](const QString &id) {
        m_profilerRegions.showDevice(id);
        m_listeners.raiseImport(id);
    });
    connect(&m_regions, &ImageRegions::movedByUser, this, [this](const QString &id, int handle, const QRect &area) {
        m_listeners.raiseRegionMoved(id, m_regions.region(handle).number.value_or(handle), area);
        m_profilerRegions.noteMove(handle);
    });
}

HostContext::~HostContext()
{
    {
        const std::lock_guard<std::mutex> lock(contextMutex);
        theContext = nullptr;
    }
    m_devices.endSearch();
    m_sessions.end();
}

HostContext *HostContext::current()
{
    return theContext;
}

void HostContext::callCurrent(const std::function<void(HostContext &)> &action)
{
    std::unique_lock<std::mutex> lock(contextMutex);
    HostContext *const context = theContext;
    if (!context)
        return;
    if (context->thread() != QThread::currentThread()) {
        context->m_handOver.post([=] { action(*context); });
        return;
    }
    lock.unlock(); // it can only go on this thread
    action(*context);
}

void HostContext::setLanguage(const QString &name)
{
    m_settings->setValue(LanguageKey, name);
    m_listeners.raiseLanguage(name);
}

QString HostContext::language() const
{
    return m_settings->value(LanguageKey, QStringLiteral("English")).toString();
}
