// SPDX-License-Identifier: MIT
#include "Viewer/DeviceSettings.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include "Features/NodeGuard.h"
#include "Features/NodeText.h"
#include "Host/HostContext.h"
#include "Tools/BytesText.h"
#include "Tools/SettingsStore.h"
#include "Viewer/SettingsWalk.h"

namespace {

const QString AcquiringAgainKey = QStringLiteral("Viewer/acquireAfterLoad");

/// Stops an acquisition as long as it lives: a device that acquires locks settings, which then are none.
class AcquisitionPause
{
public:
    AcquisitionPause(HostContext &context, const QString &id, const SettingsWalk &walk, bool startsAgain)
        : m_context(context), m_id(id), m_walk(walk),
          m_startsAgain(startsAgain && context.devices().device(id)->isAcquiring())
    {
        m_context.sessions().stopAcquisition(m_id);
    }
    ~AcquisitionPause()
    {
        if (m_startsAgain && !m_walk.isLost())
            m_context.sessions().startAcquisition(m_id);
    }
    AcquisitionPause(const AcquisitionPause &) = delete;
    AcquisitionPause &operator=(const AcquisitionPause &) = delete;

private:
    HostContext &m_context;
    const QString m_id;
    const SettingsWalk &m_walk;
    const bool m_startsAgain;
};

} // namespace

DeviceSettings::DeviceSettings(HostContext &context, QObject *parent) : QObject(parent), m_context(context) { }

QString DeviceSettings::nameOf(const QString &id) const
{
    const Device *const device = m_context.devices().device(id);
    return device ? device->displayName() : id;
}

bool DeviceSettings::isOpen(const QString &id) const
{
    return m_context.devices().isReady(id);
}

Persistence::DeviceInfo DeviceSettings::infoOf(const QString &id) const
{
    return isOpen(id) ? Persistence::deviceInfo(*m_context.devices().device(id)->nodeMap()) : Persistence::DeviceInfo();
}

QString DeviceSettings::fileNameFor(const QString &id) const
{
    QString serial = id;
    QString error;
    if (isOpen(id))
        guarded(&error, [&] {
            serial = readNodeText(*m_context.devices().device(id)->nodeMap(), QStringLiteral("DeviceSerialNumber"));
        });
    static const QRegularExpression Unsafe(QStringLiteral("[^A-Za-z0-9._-]+"));
    QString name = QStringLiteral("%1-%2").arg(textOfBytes(infoOf(id).model), serial);
    return name.replace(Unsafe, QStringLiteral("_")) + QStringLiteral(".txt");
}

QStringList DeviceSettings::openDevices(const QString &first) const
{
    QStringList ids;
    const QList<Device *> devices = m_context.devices().all();
    for (const Device *device : devices) {
        if (isOpen(device->id()))
            ids.insert(device->id() == first ? 0 : ids.size(), device->id());
    }
    return ids;
}

void DeviceSettings::log(const QString &line)
{
    m_context.log().add(QStringLiteral("Settings"), line);
}

/// False, with a line in the log, when the walk did not come to its end.
bool DeviceSettings::tellEnd(const SettingsWalk &walk, const QString &id, bool isAnswering)
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); // a loss that is on its way
    if (walk.isLost())
        log(tr("%1 was closed or lost while its settings were read.").arg(nameOf(id)));
    else if (walk.isCancelled())
        log(tr("Reading the settings of %1 was cancelled.").arg(nameOf(id)));
    else if (!isAnswering)
        log(tr("%1 does not answer: its settings were not read.").arg(nameOf(id)));
    else
        return true;
    return false;
}

std::optional<Persistence::Settings> DeviceSettings::read(const QString &id, QWidget *window)
{
    SettingsWalk walk(m_context, id, tr("Settings of %1").arg(nameOf(id)), window);
    GenApi::INodeMap *const map = walk.map();
    if (!map) {
        log(tr("%1 is not open.").arg(nameOf(id)));
        return std::nullopt;
    }
    const AcquisitionPause pause(m_context, id, walk, true);
    Persistence::Settings settings =
        settingsOf(*map, [&](std::size_t count) { return walk.goOn(tr("Reading settings..."), count); });
    return tellEnd(walk, id, !isCutShort(settings)) ? std::optional(std::move(settings)) : std::nullopt;
}

bool DeviceSettings::compare(SettingsLoad &load, const QString &id, QWidget *window)
{
    SettingsWalk walk(m_context, id, tr("Settings of %1").arg(nameOf(id)), window);
    GenApi::INodeMap *const map = walk.map();
    SettingsLoad::End end = SettingsLoad::End::Lost;
    if (map)
        end = load.compare(*map, [&](const SettingsLoad::Progress &progress) {
            return walk.goOn(tr("Reading what the device has..."), progress.done, progress.total);
        });
    return tellEnd(walk, id, end != SettingsLoad::End::Lost);
}

SettingsLoad::End DeviceSettings::apply(SettingsLoad &load, const QString &id, QWidget *window)
{
    SettingsWalk walk(m_context, id, tr("Settings of %1").arg(nameOf(id)), window);
    if (!walk.map()) {
        log(tr("%1 is not open.").arg(nameOf(id)));
        return SettingsLoad::End::Lost;
    }
    const AcquisitionPause pause(m_context, id, walk, isAcquiringAgain());
    walk.noteWritten();
    const SettingsLoad::End end = write(load, id, walk);
    tellLoad(load, id, end);
    return end;
}

void DeviceSettings::setAcquiringAgain(bool acquiring)
{
    m_context.settings().setValue(AcquiringAgainKey, acquiring);
}

bool DeviceSettings::isAcquiringAgain() const
{
    return m_context.settings().value(AcquiringAgainKey, true).toBool();
}

SettingsLoad::End DeviceSettings::write(SettingsLoad &load, const QString &id, SettingsWalk &walk)
{
    const SettingsLoad::End end = load.apply(*walk.map(), [&](const SettingsLoad::Progress &progress) {
        const bool isWriting = progress.phase == SettingsLoad::Phase::Writing;
        if (isWriting)
            Q_EMIT written(id, progress.entry, wordsOf(progress.row.outcome));
        return walk.goOn(isWriting ? tr("Writing settings...") : tr("Reading back..."), progress.done, progress.total);
    });
    return walk.isLost() ? SettingsLoad::End::Lost : end;
}

void DeviceSettings::tellLoad(const SettingsLoad &load, const QString &id, SettingsLoad::End end)
{
    const auto number = [](const SettingsLoad::Ranks &ranks) { return QString::number(ranks.size()); };
    QString line = tr("%1: settings written: %2, did not take: %3.")
                       .arg(nameOf(id), number(load.written()), number(load.refused()));
    if (end == SettingsLoad::End::Lost)
        line += tr(" The device was closed or lost; not tried: %1.").arg(number(load.notTried()));
    else if (end == SettingsLoad::End::Cancelled)
        line += tr(" Cancelled; not tried: %1.").arg(number(load.notTried()));
    log(line);
    const QStringList problems = load.problems();
    for (const QString &problem : problems)
        log(QStringLiteral("%1: %2").arg(nameOf(id), problem));
}
