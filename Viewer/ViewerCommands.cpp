// SPDX-License-Identifier: MIT
#include "Viewer/ViewerCommands.h"

#include <QActionGroup>
#include <QEvent>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include <iterator>

#include "Viewer/GlyphIcons.h"

namespace {

enum Menu { FileMenu, RecentMenu, DeviceMenu, ViewMenu, DeveloperMenu, DefaultModeMenu, LanguageMenu, HelpMenu };

struct MenuSpec
{
    int parent; ///< a Menu, or -1: in the menu bar
    const char *title;
};

constexpr MenuSpec Menus[] = {
    {-1, QT_TRANSLATE_NOOP("ViewerCommands", "&File")},
    {FileMenu, QT_TRANSLATE_NOOP("ViewerCommands", "Load &Recent Settings")},
    {-1, QT_TRANSLATE_NOOP("ViewerCommands", "&Device")},
    {-1, QT_TRANSLATE_NOOP("ViewerCommands", "&View")},
    {ViewMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Developer")},
    {DeveloperMenu, QT_TRANSLATE_NOOP("ViewerCommands", "Default Panel &Mode")},
    {-1, QT_TRANSLATE_NOOP("ViewerCommands", "&Language")},
    {-1, QT_TRANSLATE_NOOP("ViewerCommands", "&Help")},
};

enum Trait {
    Plain = 0,
    InToolBar = 1,
    OfDevice = 2, ///< also in a device's context menu
    Checkable = 4,
    Exclusive = 8, ///< one of its menu's exclusive commands is checked
    Separated = 16, ///< a separator stands before it
    Untranslated = 32
};

struct CommandSpec
{
    Command command;
    Menu menu;
    const char *text;
    const char *shortcut;
    Glyph glyph;
    int traits;
    const char *tip;
};

constexpr CommandSpec Commands[] = {
    {Command::OpenFile, FileMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Open Description File..."), "Ctrl+O",
     Glyph::File, InToolBar, QT_TRANSLATE_NOOP("ViewerCommands", "Open a GenICam camera description without a camera")},
    {Command::SaveSettings, FileMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Save Settings..."), "Ctrl+S", Glyph::Save,
     InToolBar | OfDevice | Separated,
     QT_TRANSLATE_NOOP("ViewerCommands", "Save the settings of the selected device in a file")},
    {Command::LoadSettings, FileMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Load Settings..."), "Ctrl+L", Glyph::Load,
     InToolBar | OfDevice, QT_TRANSLATE_NOOP("ViewerCommands", "Load settings from a file into the selected device")},
    {Command::CompareSettings, FileMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Compare Settings..."), "Ctrl+D",
     Glyph::Compare, InToolBar, QT_TRANSLATE_NOOP("ViewerCommands", "Compare the settings of devices and files")},
    {Command::Quit, FileMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Quit"), "Ctrl+Q", Glyph::None, Separated, ""},

    {Command::Refresh, DeviceMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Refresh Devices"), "F5", Glyph::Refresh,
     InToolBar | Separated, QT_TRANSLATE_NOOP("ViewerCommands", "Search the network and the USB ports for cameras")},
    {Command::Producers, DeviceMenu, QT_TRANSLATE_NOOP("ViewerCommands", "GenTL &Producers..."), "", Glyph::None, Plain,
     QT_TRANSLATE_NOOP("ViewerCommands", "Choose the makers' drivers that the viewer searches with")},
    {Command::OpenDevice, DeviceMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Open"), "Ctrl+E", Glyph::Open,
     InToolBar | OfDevice | Separated, QT_TRANSLATE_NOOP("ViewerCommands", "Open the selected device")},
    {Command::CloseDevice, DeviceMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Close"), "Ctrl+W", Glyph::Close,
     InToolBar | OfDevice, QT_TRANSLATE_NOOP("ViewerCommands", "Close the selected device")},
    {Command::StartAcquisition, DeviceMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Start Acquisition"), "F6",
     Glyph::Start, InToolBar | OfDevice | Separated,
     QT_TRANSLATE_NOOP("ViewerCommands", "Let the selected camera acquire images")},
    {Command::StopAcquisition, DeviceMenu, QT_TRANSLATE_NOOP("ViewerCommands", "S&top Acquisition"), "F7", Glyph::Stop,
     InToolBar | OfDevice, QT_TRANSLATE_NOOP("ViewerCommands", "Stop acquiring images")},

    {Command::ZoomFit, ViewMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Fit Image"), "Ctrl+0", Glyph::ZoomFit,
     InToolBar | Separated, QT_TRANSLATE_NOOP("ViewerCommands", "Show the whole image")},
    {Command::ZoomOriginal, ViewMenu, QT_TRANSLATE_NOOP("ViewerCommands", "Zoom &100 %"), "Ctrl+1", Glyph::ZoomOriginal,
     InToolBar, QT_TRANSLATE_NOOP("ViewerCommands", "Show one image pixel on one screen pixel")},
    {Command::ZoomIn, ViewMenu, QT_TRANSLATE_NOOP("ViewerCommands", "Zoom &In"), "Ctrl++", Glyph::ZoomIn, InToolBar,
     QT_TRANSLATE_NOOP("ViewerCommands", "Enlarge the image")},
    {Command::ZoomOut, ViewMenu, QT_TRANSLATE_NOOP("ViewerCommands", "Zoom &Out"), "Ctrl+-", Glyph::ZoomOut, InToolBar,
     QT_TRANSLATE_NOOP("ViewerCommands", "Reduce the image")},
    {Command::SearchAutomatically, ViewMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Search Automatically"), "",
     Glyph::None, Checkable | Separated,
     QT_TRANSLATE_NOOP("ViewerCommands", "Show cameras as soon as they are connected")},
    {Command::OpenLostAgain, ViewMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Reopen Lost Devices"), "", Glyph::None,
     Checkable, QT_TRANSLATE_NOOP("ViewerCommands", "Open a device that was lost as soon as it is there again")},
    {Command::AcquireAgain, ViewMenu, QT_TRANSLATE_NOOP("ViewerCommands", "Acquire &Again"), "", Glyph::None, Checkable,
     QT_TRANSLATE_NOOP("ViewerCommands", "Let a camera that is back acquire images if it did when it was lost")},
    {Command::ShowCommonTab, DeveloperMenu, QT_TRANSLATE_NOOP("ViewerCommands", "Show &Common Attributes"), "",
     Glyph::None, Checkable, QT_TRANSLATE_NOOP("ViewerCommands", "Show the panel's tab of common attributes")},
    {Command::ShowAttributeTab, DeveloperMenu, QT_TRANSLATE_NOOP("ViewerCommands", "Show &All Attributes"), "",
     Glyph::None, Checkable, QT_TRANSLATE_NOOP("ViewerCommands", "Show the panel's tab of all attributes")},
    {Command::DisablePanel, DeveloperMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Disable Panel of Device"), "",
     Glyph::None, Plain,
     QT_TRANSLATE_NOOP("ViewerCommands",
                       "Let the panel of the focused camera stop reading it, until it is opened again")},
    {Command::ShowLoad, DeveloperMenu, QT_TRANSLATE_NOOP("ViewerCommands", "Show &Load"), "", Glyph::None, Checkable,
     QT_TRANSLATE_NOOP("ViewerCommands",
                       "Show the longest event, the accesses a second and the time-outs in the status bar")},
    {Command::LoseFrames, DeveloperMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Lose Frames"), "", Glyph::None,
     Checkable | Separated,
     QT_TRANSLATE_NOOP("ViewerCommands", "Let frames of the selected simulated camera get lost or come in part")},
    {Command::EnlargeFrames, DeveloperMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Enlarge Frames"), "", Glyph::None,
     Checkable,
     QT_TRANSLATE_NOOP("ViewerCommands", "Let the selected simulated camera send larger frames than it tells")},
    {Command::Unplug, DeveloperMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Unplug Device"), "", Glyph::None, Checkable,
     QT_TRANSLATE_NOOP("ViewerCommands", "Take the link of the selected simulated device away")},
    {Command::Silence, DeveloperMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&Silence Device"), "", Glyph::None,
     Checkable, QT_TRANSLATE_NOOP("ViewerCommands", "Let the selected simulated device answer nothing")},
    {Command::DefaultMode0, DefaultModeMenu, QT_TRANSLATE_NOOP("ViewerCommands", "Mode &0"), "", Glyph::None,
     Checkable | Exclusive, ""},
    {Command::DefaultMode1, DefaultModeMenu, QT_TRANSLATE_NOOP("ViewerCommands", "Mode &1"), "", Glyph::None,
     Checkable | Exclusive, ""},

    {Command::English, LanguageMenu, "&English", "", Glyph::None, Checkable | Exclusive | Untranslated, ""},
    {Command::Chinese, LanguageMenu, "\xe7\xae\x80\xe4\xbd\x93\xe4\xb8\xad\xe6\x96\x87(&C)", "", Glyph::None,
     Checkable | Exclusive | Untranslated, ""},

    {Command::About, HelpMenu, QT_TRANSLATE_NOOP("ViewerCommands", "&About..."), "", Glyph::None, Plain, ""},
};

QString translated(const char *text)
{
    return *text ? ViewerCommands::tr(text) : QString();
}

} // namespace

ViewerCommands::ViewerCommands(QMenuBar *menuBar, QToolBar *toolBar) : QObject(menuBar)
{
    addMenus(menuBar);
    addActions(toolBar);
    retranslate();
    menuBar->installEventFilter(this);
}

void ViewerCommands::addMenus(QMenuBar *menuBar)
{
    for (int row = 0; row < int(std::size(Menus)); ++row) {
        const int parent = Menus[row].parent;
        m_menus[row] = parent < 0 ? menuBar->addMenu(QString()) : new QMenu(m_menus[parent]);
        m_menus[row]->setToolTipsVisible(true);
    }
}

void ViewerCommands::addActions(QToolBar *toolBar)
{
    for (int row = 0; row < int(std::size(Commands)); ++row)
        addAction(row, toolBar);
    m_menus[FileMenu]->insertMenu(action(Command::CompareSettings), m_menus[RecentMenu]);
    m_menus[DeveloperMenu]->addMenu(m_menus[DefaultModeMenu]);
}

QMenu *ViewerCommands::deviceMenu() const
{
    return m_menus[DeviceMenu];
}

QMenu *ViewerCommands::recentMenu() const
{
    return m_menus[RecentMenu];
}

void ViewerCommands::showDeveloperMenu()
{
    m_menus[ViewMenu]->addSeparator();
    m_menus[ViewMenu]->addMenu(m_menus[DeveloperMenu]);
}

void ViewerCommands::addAction(int row, QToolBar *toolBar)
{
    const CommandSpec &spec = Commands[row];
    QMenu *menu = m_menus[spec.menu];
    if (spec.traits & Separated) {
        menu->addSeparator();
        if (spec.traits & InToolBar)
            toolBar->addSeparator();
    }
    QAction *action = menu->addAction(glyphIcon(spec.glyph), QString());
    action->setShortcut(QKeySequence(QLatin1String(spec.shortcut)));
    action->setCheckable(spec.traits & Checkable);
    if (spec.traits & Exclusive) {
        auto *group = menu->findChild<QActionGroup *>();
        (group ? group : new QActionGroup(menu))->addAction(action);
    }
    if (spec.traits & InToolBar)
        toolBar->addAction(action);
    const Command command = spec.command;
    connect(action, &QAction::triggered, this, [this, command](bool checked) { Q_EMIT triggered(command, checked); });
    m_actions.insert(int(command), action);
}

QList<QAction *> ViewerCommands::deviceActions() const
{
    QList<QAction *> result;
    for (const CommandSpec &spec : Commands) {
        if (spec.traits & OfDevice)
            result << action(spec.command);
    }
    return result;
}

void ViewerCommands::addViewToggles(const QList<QAction *> &toggles)
{
    QAction *before = m_menus[ViewMenu]->actions().first();
    m_menus[ViewMenu]->insertActions(before, toggles);
}

void ViewerCommands::retranslate()
{
    for (int row = 0; row < int(std::size(Menus)); ++row)
        m_menus[row]->setTitle(tr(Menus[row].title));
    for (const CommandSpec &spec : Commands) {
        QAction *entry = action(spec.command);
        entry->setText(spec.traits & Untranslated ? QString::fromUtf8(spec.text) : tr(spec.text));
        const QString tip = translated(spec.tip);
        const QString keys = entry->shortcut().toString(QKeySequence::NativeText);
        entry->setToolTip(tip.isEmpty() || keys.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, keys));
        entry->setStatusTip(tip);
    }
}

bool ViewerCommands::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    return QObject::eventFilter(watched, event);
}
