// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class TourPanel;
class TourVerdict;

/// The curated pages of the panel. Rows are known by their English labels.
class TourPage
{
public:
    TourPage(TourPanel &panel, TourVerdict &verdict) : m_panel(panel), m_verdict(verdict) { }

    /// Clicks the tab of a page; false when there is none.
    bool open(int number);
    /// The row, scrolled into view; null when it is not shown.
    QWidget *row(const QString &label);
    /// The control of a row, scrolled into view; null when the row has none of that kind.
    template <class Control>
    Control *control(const QString &label)
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

private:
    TourPanel &m_panel;
    TourVerdict &m_verdict;
};
