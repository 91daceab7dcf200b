// SPDX-License-Identifier: MIT
#pragma once

#include <QModelIndex>
#include <QString>
#include <QWidget>

#include "Viewer/DeviceTree.h"

class QComboBox;
class QLineEdit;
class QTabWidget;
class QTextBrowser;
class QToolButton;
class QTreeView;
class Device;
class HostContext;
class ViewerWindow;
enum class Command;

/// A text of ASCII characters.
inline QString say(const char *text)
{
    return QString::fromLatin1(text);
}

/// Where the tour takes place: finds what a person would look for in the window, and remembers what failed.
class TourStage
{
public:
    explicit TourStage(ViewerWindow &window) : m_window(window) { }

    ViewerWindow &window() const { return m_window; }
    HostContext &host() const;

    /// The first simulated device of that kind; null when there is none.
    Device *simulated(bool card) const;
    Device *profiler() const;
    /// Clicks (or double-clicks) the device's row.
    void pointAt(const Device &device, bool twice);
    void order(Command command);
    /// Opens the device by a double click and waits for its panel.
    bool open(const Device &device);
    /// Closes the device that is chosen, and goes to the first camera, which is open.
    bool leave(const Device &device);
    /// Between English and Chinese, by the menu.
    void changeLanguage();
    /// Waits until the viewer shows the device in that state, and the panel has followed.
    bool reaches(const Device &device, DeviceTree::State state) const;
    /// Starts the acquisition and waits for images.
    bool acquires();

    /// The panel that is shown. Its parts below are null when it lacks them.
    QWidget *panel() const;
    QTabWidget *tabs() const;
    QTreeView *tree() const;
    QLineEdit *searchField() const;
    QComboBox *levelBox() const;
    QToolButton *foldButton() const;
    QTextBrowser *description() const;
    /// Clicks the panel's main tab of that number; false when there is none.
    bool openTab(int number);
    /// Clicks the tab of a curated page; false when there is none.
    bool openPage(int number);
    /// Makes the panel that wide, in pixels; false when that does not fit.
    bool resizePanel(int width);
    /// The row of a curated page, known by its English label, scrolled into view; null when it is not shown.
    QWidget *row(const QString &label) const;
    /// The control of a row, scrolled into view; null when the row has none of that kind.
    template <class Control>
    Control *control(const QString &label) const
    {
        const QWidget *owner = row(label);
        return owner ? owner->findChild<Control *>() : nullptr;
    }
    /// Clicks the row's button or switch; false when there is none or it is disabled.
    bool press(const QString &label);
    /// Types a number into the row's field and presses Enter; false when there is no such field.
    bool enter(const QString &label, const QString &number);
    /// Chooses an entry of the row's list; false when there is none.
    bool choose(const QString &label, const QString &entry);

    /// Number of rows of the tree that can be seen or scrolled to.
    int shownRows() const;
    /// The row of a feature or category, invalid when it has none.
    QModelIndex feature(const QString &name) const;
    bool isShown(const QString &name) const;

    /// The editor that is open in the tree, or null.
    QWidget *editor() const;
    /// Clicks the value of a feature and returns the editor that opens, else null.
    QWidget *openEditor(const QString &name);
    /// The same; the list of a choice opens too. False when no editor opens.
    bool showEditor(const QString &name);
    /// Closes the open list and the open editor without a write.
    void leaveEditor();
    /// Edits the feature's value in the tree as a person would.
    bool edit(const QString &name, const QString &text);
    /// The device's value of a feature of the focused device, as text.
    QString value(const QString &name) const;
    /// Waits until that value is the expected text, or the same number.
    bool becomes(const char *name, const char *expected);
    /// True when a line of the log contains the text.
    bool isLogged(const QString &text) const;

    /// Remembers `what` as the reason for a failure unless `holds`; returns `holds`.
    bool expect(bool holds, const QString &what);
    QString failure() const { return m_failure; }
    void forgetFailure() { m_failure.clear(); }

private:
    void settle() const;

    ViewerWindow &m_window;
    QString m_failure;
};
