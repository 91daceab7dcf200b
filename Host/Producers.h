// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include <QList>
#include <QObject>
#include <QSettings>
#include <QString>
#include <QStringList>

#include "Devices/DeviceDiscovery.h"
#include "Devices/gentl/GentlFinder.h"

class HostLog;

/// The GenTL producers that the host searches with, and by which way a camera is reached that is found in several.
///
/// Files come from the environment (GENICAM_GENTL64_PATH), from the command line and from the settings, which also keep
/// those that are switched off, what became of trying a file, and the ways. GUI thread, but for the finder.
class Producers : public QObject
{
    Q_OBJECT

public:
    enum class Origin { Environment, CommandLine, Settings };
    struct File
    {
        QString path;
        Origin origin;
        bool isOn; ///< those of the command line always are
    };

    struct Given
    {
        QStringList files; ///< of the command line
        bool areOnly = false; ///< all others that are there at the start are left out
    };

    /// `settings` and `log` must outlive this.
    Producers(QSettings &settings, const Given &given, HostLog &log);
    ~Producers() override;

    /// Each once, in the order of the search.
    QList<File> files() const;
    void setOn(const QString &path, bool on);
    /// Adds a file to the settings; nothing happens for one that is known.
    void add(const QString &path);
    /// Takes a file out of the settings.
    void remove(const QString &path);
    /// The next search tries the file again, whatever became of it before.
    void checkAgain(const QString &path);
    /// What the last search has seen, in the order of the files that are on.
    std::vector<ProducerReport> reports() const;

    /// The device id of the way that was chosen for a camera (see cameraKey()); empty: the usual one.
    QString route(const QString &camera) const;
    /// The next search lists the camera by that way.
    void chooseRoute(const QString &camera, const QString &id);

    /// Finds what `builtIn` finds (nothing if it is empty) and what the producers reach, each camera once. May be
    /// called after the end of this.
    DeviceFinder finder(const DeviceFinder &builtIn) const;

Q_SIGNALS:
    /// The files, or which of them are on.
    void changed();

private:
    class Shared;

    static ProducerSearch::Options searchOptions(const std::shared_ptr<Shared> &shared);
    void keep(const QString &key, const QStringList &paths);
    QStringList ofEnvironment() const;
    QStringList ofSettings() const;

    QSettings &m_settings;
    const Given m_given; ///< canonical
    QStringList m_leftOut; ///< of the settings
    const std::shared_ptr<Shared> m_shared; ///< with the threads of the search
    const std::shared_ptr<ProducerSearch> m_search;
};
