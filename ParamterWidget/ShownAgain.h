// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QMultiHash>
#include <QObject>

class QWidget;

/// Tells when a page of a panel is shown again, by its application: not when the panel is shown for the first time, as
/// its pages have just been built then.
class ShownAgain : public QObject
{
public:
    /// `panel` is the parent, and has not been shown yet.
    explicit ShownAgain(QWidget *panel);

    /// Calls a function each time that a page is shown again.
    void watch(QWidget *page, const std::function<void()> &shown);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QMultiHash<QObject *, std::function<void()>> m_pages;
    bool m_panelWasShown = false;
};
