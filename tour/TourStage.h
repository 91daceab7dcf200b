// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "Viewer/DeviceTree.h"
#include "tour/TourPage.h"
#include "tour/TourPanel.h"
#include "tour/TourTree.h"
#include "tour/TourVerdict.h"

class Device;
class HostContext;
class ViewerWindow;
enum class Command;

/// Where the tour takes place: the window and its devices, with the parts of the panel that a person looks for.
class TourStage
{
public:
    explicit TourStage(ViewerWindow &window);

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
    /// Waits until the viewer shows the device in that state, and its panel is up to date.
    bool reaches(const Device &device, DeviceTree::State state);
    /// Starts the acquisition and waits for images.
    bool acquires();

    TourPanel &panel() { return m_panel; }
    TourPage &page() { return m_page; }
    TourTree &tree() { return m_tree; }
    /// Makes the panel that wide, in pixels; false when that does not fit.
    bool resizePanel(int width);

    /// The device's value of a feature of the focused device, as text.
    QString value(const QString &name) const;
    /// Waits until that value is the expected text, or the same number.
    bool becomes(const char *name, const char *expected);
    /// True when a line of the log contains the text.
    bool isLogged(const QString &text) const;

    bool expect(bool holds, const QString &what) { return m_verdict.expect(holds, what); }
    TourVerdict &verdict() { return m_verdict; }

private:
    void settle();

    ViewerWindow &m_window;
    TourVerdict m_verdict;
    TourPanel m_panel;
    TourPage m_page;
    TourTree m_tree;
};
