// SPDX-License-Identifier: MIT
#include "Viewer/RecentFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QSettings>

namespace {

const QString PathsKey = QStringLiteral("Viewer/recentSettings");

} // namespace

RecentFiles::RecentFiles(QSettings &settings, QMenu *menu) : QObject(menu), m_settings(settings), m_menu(menu)
{
    fill();
}

QStringList RecentFiles::paths() const
{
    return m_settings.value(PathsKey).toStringList();
}

void RecentFiles::add(const QString &path)
{
    const QString whole = QFileInfo(path).absoluteFilePath();
    QStringList all = paths();
    all.removeAll(whole);
    all.prepend(whole);
    store(all.mid(0, Most));
}

void RecentFiles::remove(const QString &path)
{
    QStringList all = paths();
    all.removeAll(path);
    store(all);
}

void RecentFiles::store(const QStringList &paths)
{
    m_settings.setValue(PathsKey, paths);
    fill();
}

void RecentFiles::fill()
{
    m_menu->clear();
    const QStringList all = paths();
    m_menu->setEnabled(!all.isEmpty());
    for (int i = 0; i < all.size(); ++i) {
        QString name = QDir::toNativeSeparators(all[i]);
        name.replace(QLatin1Char('&'), QLatin1String("&&"));
        QAction *const action = m_menu->addAction(QStringLiteral("&%1 %2").arg(i + 1).arg(name));
        connect(action, &QAction::triggered, this, [this, path = all[i]] { Q_EMIT chosen(path); });
    }
}
