// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include <QObject>
#include <QSettings>
#include <QTimer>

class KnownDevices;

/// Searches for devices by itself, in intervals: every 5 s, and without a break worth mentioning while that is hurried.
/// Never while a device is being opened. Nobody sees it unless something changes. GUI thread.
class AutomaticSearch : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds Interval{5000};
    static constexpr std::chrono::milliseconds HurriedInterval{250}; ///< after the end of a search

    /// Both must outlive this. Nothing is searched for before start().
    AutomaticSearch(KnownDevices &devices, QSettings &settings);

    /// Searches from now on, unless it is switched off.
    void start();
    /// Kept in the settings; on at first.
    void setEnabled(bool enabled);
    bool isEnabled() const;
    /// While nobody looks.
    void setPaused(bool paused);
    /// While a device is expected back.
    void setHurried(bool hurried);

private:
    void schedule();
    void search();

    KnownDevices &m_devices;
    QSettings &m_settings;
    QTimer m_timer; ///< runs between two searches
    bool m_isStarted = false;
    bool m_isPaused = false;
    bool m_isHurried = false;
};
