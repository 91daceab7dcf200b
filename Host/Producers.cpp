// SPDX-License-Identifier: MIT
#include "Host/Producers.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>

#include <QFileInfo>
#include <QUrl>

#include "Devices/MergedFinder.h"
#include "Devices/gentl/GentlFinder.h"
#include "Features/HandOver.h"
#include "Host/HostLog.h"

namespace {

const QString AddedKey = QStringLiteral("producers/added");
const QString OffKey = QStringLiteral("producers/off");
const QString VerdictGroup = QStringLiteral("producers/tried/");
const QString RouteGroup = QStringLiteral("routes/");

QString asKey(const QString &group, const QString &text)
{
    return group + QString::fromLatin1(QUrl::toPercentEncoding(text));
}

QString canonical(const QString &path)
{
    const QString found = QFileInfo(path).canonicalFilePath();
    return found.isEmpty() ? QFileInfo(path).absoluteFilePath() : found;
}

QStringList canonical(const QStringList &paths)
{
    QStringList result;
    for (const QString &path : paths)
        result << canonical(path);
    return result;
}

} // namespace

/// What the threads of the search ask and tell; those of a producer that hangs may do so when nobody else is left.
class Producers::Shared
{
public:
    Shared(QSettings &settings, HostLog &log) : m_settings(settings), m_log(&log) { }

    void setFiles(const QStringList &files)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_files = files;
    }
    QStringList files() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_files;
    }

    void setRoute(const QString &camera, const QString &id)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_routes[camera] = id;
    }
    QString route(const QString &camera) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto chosen = m_routes.find(camera);
        return chosen == m_routes.end() ? QString() : chosen->second;
    }

    void setVerdict(const QString &file, const QByteArray &verdict)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_verdicts[file] = verdict;
    }
    QByteArray verdict(const QString &file) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto known = m_verdicts.find(file);
        return known == m_verdicts.end() ? QByteArray() : known->second;
    }
    void keepVerdict(const QString &file, const QByteArray &verdict)
    {
        setVerdict(file, verdict);
        m_handOver.post([this, file, verdict] { // dropped at the end
            const QString key = asKey(VerdictGroup, file);
            if (verdict.isEmpty())
                m_settings.remove(key);
            else
                m_settings.setValue(key, verdict);
        });
    }

    void tell(const QString &line)
    {
        m_handOver.post([this, line] { m_log->add(HostModule, line); });
    }

    /// Neither settings nor log are there any more.
    void end() { m_handOver.close(); }

private:
    QSettings &m_settings;
    HostLog *const m_log;
    mutable std::mutex m_mutex; ///< guards what follows
    QStringList m_files;
    std::map<QString, QString> m_routes;
    std::map<QString, QByteArray> m_verdicts;
    HandOver m_handOver;
};

ProducerSearch::Options Producers::searchOptions(const std::shared_ptr<Shared> &shared)
{
    ProducerSearch::Options options;
    options.files = [shared] { return shared->files(); };
    options.verdicts.read = [shared](const QString &file) { return shared->verdict(file); };
    options.verdicts.write = [shared](const QString &file, const QByteArray &verdict) {
        shared->keepVerdict(file, verdict);
    };
    options.report = [shared](const QString &line) { shared->tell(line); };
    return options;
}

Producers::Producers(QSettings &settings, const Given &given, HostLog &log)
    : m_settings(settings), m_given({canonical(given.files), given.areOnly}),
      m_leftOut(given.areOnly ? settings.value(AddedKey).toStringList() : QStringList()),
      m_shared(std::make_shared<Shared>(settings, log)),
      m_search(std::make_shared<ProducerSearch>(searchOptions(m_shared)))
{
    const QStringList keys = m_settings.allKeys();
    for (const QString &key : keys) {
        if (key.startsWith(VerdictGroup))
            m_shared->setVerdict(QUrl::fromPercentEncoding(key.mid(VerdictGroup.size()).toLatin1()),
                                 m_settings.value(key).toByteArray());
        else if (key.startsWith(RouteGroup))
            m_shared->setRoute(QUrl::fromPercentEncoding(key.mid(RouteGroup.size()).toLatin1()),
                               m_settings.value(key).toString());
    }
    connect(this, &Producers::changed, this, [this] {
        QStringList used;
        const QList<File> all = files();
        for (const File &file : all) {
            if (file.isOn)
                used << file.path;
        }
        m_shared->setFiles(used);
    });
    Q_EMIT changed();
}

Producers::~Producers()
{
    m_shared->end();
}

QList<Producers::File> Producers::files() const
{
    const QStringList off = m_settings.value(OffKey).toStringList();
    QList<File> all;
    const auto take = [&](const QStringList &paths, Origin origin) {
        for (const QString &path : paths) {
            if (std::none_of(all.begin(), all.end(), [&path](const File &known) { return known.path == path; }))
                all << File{path, origin, origin == Origin::CommandLine || !off.contains(path)};
        }
    };
    take(m_given.files, Origin::CommandLine);
    take(ofEnvironment(), Origin::Environment);
    take(ofSettings(), Origin::Settings);
    return all;
}

QStringList Producers::ofEnvironment() const
{
    return m_given.areOnly ? QStringList() : canonical(producersOfEnvironment());
}

QStringList Producers::ofSettings() const
{
    QStringList files = m_settings.value(AddedKey).toStringList();
    for (const QString &file : m_leftOut)
        files.removeAll(file);
    return files;
}

void Producers::keep(const QString &key, const QStringList &paths)
{
    m_settings.setValue(key, paths);
    Q_EMIT changed();
}

void Producers::setOn(const QString &path, bool on)
{
    QStringList off = m_settings.value(OffKey).toStringList();
    off.removeAll(path);
    keep(OffKey, on ? off : off << path);
}

void Producers::add(const QString &path)
{
    const QString added = canonical(path);
    const QList<File> all = files();
    if (std::any_of(all.begin(), all.end(), [&added](const File &known) { return known.path == added; }))
        return;
    m_leftOut.removeAll(added);
    QStringList kept = m_settings.value(AddedKey).toStringList();
    kept.removeAll(added);
    keep(AddedKey, kept << added);
}

void Producers::remove(const QString &path)
{
    QStringList added = m_settings.value(AddedKey).toStringList();
    added.removeAll(path);
    keep(AddedKey, added);
}

void Producers::checkAgain(const QString &path)
{
    m_search->checkAgain(path);
}

std::vector<ProducerReport> Producers::reports() const
{
    return m_search->reports();
}

QString Producers::route(const QString &camera) const
{
    return m_shared->route(camera);
}

void Producers::chooseRoute(const QString &camera, const QString &id)
{
    m_settings.setValue(asKey(RouteGroup, camera), id);
    m_shared->setRoute(camera, id);
}

DeviceFinder Producers::finder(const DeviceFinder &builtIn) const
{
    const auto choice = [shared = m_shared](const QString &camera, const std::vector<DeviceRoute> &) {
        return shared->route(camera);
    };
    const DeviceFinder none = [] { return std::vector<FoundDevice>(); };
    return mergedFinder(builtIn ? builtIn : none, gentlFinder(m_search), choice);
}
