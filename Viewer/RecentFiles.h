// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

class QMenu;
class QSettings;

/// The settings files that were saved or loaded last, as a menu.
class RecentFiles : public QObject
{
    Q_OBJECT

public:
    static constexpr int Most = 8;

    /// Fills the menu, which owns this. The settings must outlive it.
    RecentFiles(QSettings &settings, QMenu *menu);

    QStringList paths() const;
    void add(const QString &path);
    void remove(const QString &path);

Q_SIGNALS:
    void chosen(const QString &path);

private:
    void store(const QStringList &paths);
    void fill();

    QSettings &m_settings;
    QMenu *m_menu;
};
