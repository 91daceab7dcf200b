// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

/// Gives the keyboard focus back to the widget of a panel that lost it because what is around it was hidden or locked:
/// as soon as it can be used again, unless the focus has been taken elsewhere meanwhile.
class FocusReturn : public QObject
{
public:
    /// `panel` is the parent.
    explicit FocusReturn(QWidget *panel);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void adopt(QWidget *before, QWidget *now);
    bool isLost(const QWidget *before) const;

    QWidget *m_panel;
    QPointer<QWidget> m_lost;
    QPointer<QWidget> m_successor; ///< what the toolkit has given the focus to instead; null for none
    bool m_isMoving = false; ///< while that may still change
};
