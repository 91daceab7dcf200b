// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QScrollBar;

/// Brings a scroll bar back to a value that it may not reach yet: it follows as its range grows, until it is there or
/// somebody scrolls elsewhere.
class ScrollReturn : public QObject
{
public:
    /// `bar` is the parent. Ends by deleting itself.
    ScrollReturn(QScrollBar *bar, int value);

private:
    void follow();
    void adoptValue(int value);
    void end();

    QScrollBar *m_bar;
    const int m_wanted;
    int m_reached = 0; ///< as much of it as the range has allowed
};
