// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QHash>
#include <QObject>

class QMenu;
class QMenuBar;
class QToolBar;

/// What a person can order from the viewer's menus.
enum class Command {
    Refresh,
    Producers,
    OpenDevice,
    CloseDevice,
    OpenFile,
    SaveSettings,
    LoadSettings,
    CompareSettings,
    StartAcquisition,
    StopAcquisition,
    Quit,
    ZoomFit,
    ZoomOriginal,
    ZoomIn,
    ZoomOut,
    SearchAutomatically,
    OpenLostAgain,
    AcquireAgain,
    ShowCommonTab,
    ShowAttributeTab,
    DisablePanel,
    ShowLoad,
    LoseFrames,
    EnlargeFrames,
    Unplug,
    Silence,
    DefaultMode0,
    DefaultMode1,
    English,
    Chinese,
    About
};

/// The viewer's menus, actions and tool bar, made from one table. Follows QEvent::LanguageChange of `menuBar`.
class ViewerCommands : public QObject
{
    Q_OBJECT

public:
    /// Owned by `menuBar`.
    ViewerCommands(QMenuBar *menuBar, QToolBar *toolBar);

    QAction *action(Command command) const { return m_actions.value(int(command)); }
    /// The commands of a device's context menu.
    QList<QAction *> deviceActions() const;
    QMenu *deviceMenu() const;
    /// The menu of the settings files that were used last, empty at first.
    QMenu *recentMenu() const;
    /// Adds the show-and-hide actions of docks and tool bars to the View menu.
    void addViewToggles(const QList<QAction *> &toggles);
    /// Adds the submenu of the switches for developers of the panel to the View menu, which lacks it otherwise.
    void showDeveloperMenu();

Q_SIGNALS:
    void triggered(Command command, bool checked);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addMenus(QMenuBar *menuBar);
    void addActions(QToolBar *toolBar);
    void addAction(int row, QToolBar *toolBar);
    void retranslate();

    QHash<int, QMenu *> m_menus;
    QHash<int, QAction *> m_actions;
};
