// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

class ParamterWnd;
class QTabWidget;
class QTextBrowser;

/// The panel that the viewer shows. Its parts are null when it lacks them.
class TourPanel
{
public:
    explicit TourPanel(const ParamterWnd &panels) : m_panels(panels) { }

    /// Null when no panel is shown.
    QWidget *widget() const;
    template <class Part>
    Part *part(const char *name) const
    {
        const QWidget *shown = widget();
        return shown ? shown->findChild<Part *>(QLatin1String(name)) : nullptr;
    }
    QTabWidget *tabs() const;
    QTextBrowser *description() const;
    /// Clicks the panel's main tab of that number; false when there is none.
    bool openTab(int number);

private:
    const ParamterWnd &m_panels;
};
