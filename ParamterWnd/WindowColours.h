// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QWidget;

/// Gives a window and whatever is or comes in it the light palette, whatever palette the application has and gets:
/// pages, lists that open, menus and tool tips. Widgets with a style sheet inherit no palette, nor do windows; so each
/// gets it by itself, before it is shown.
class WindowColours : public QObject
{
    Q_OBJECT

public:
    /// Of `window`, which owns it.
    explicit WindowColours(QWidget *window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void adopt(QObject *object);
};
