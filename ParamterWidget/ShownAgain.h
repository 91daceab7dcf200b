// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QHash>
#include <QObject>

class QWidget;

/// Tells when a page of a panel is shown again, by its application: not when the panel is shown for the first time, as
/// its pages have just been built then.
class ShownAgain : public QObject
{
public:
    /// `panel` is the parent, and has not been shown yet.
    explicit ShownAgain(QWidget *panel);

    /// Calls a function each time that `page`, which is watched once at most, is shown again.
    void watch(QWidget *page, std::function<void()> shown);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QHash<QObject *, std::function<void()>> m_pages;
    bool m_panelWasShown = false;
};
