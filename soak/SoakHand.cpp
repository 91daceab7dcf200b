// SPDX-License-Identifier: MIT
#include "soak/SoakHand.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QPointer>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>
#include <QtTest>

namespace {

constexpr int NotchAngle = 120;

/// Where events enter for a place of a widget; null off the window.
QWindow *entrance(const QWidget &widget, QPoint &place)
{
    QWidget *window = widget.window();
    place = widget.mapTo(window, place);
    return window->isVisible() && window->rect().contains(place) && !place.isNull() ? window->windowHandle() : nullptr;
}

QWindow *keyboardWindow(QWidget &window)
{
    for (QWidget *open : {QApplication::activePopupWidget(), QApplication::activeModalWidget()}) {
        if (open)
            return open->window()->windowHandle();
    }
    return window.windowHandle();
}

void mouse(QTest::MouseAction action, QWidget &widget, QPoint place, Qt::MouseButton button)
{
    if (QWindow *window = entrance(widget, place))
        QTest::mouseEvent(action, window, button, Qt::NoModifier, place);
}

/// The window may go with the press.
void send(QWidget &window, Qt::Key key, const QString &text, Qt::KeyboardModifiers modifiers)
{
    const QPointer<QWindow> target = keyboardWindow(window);
    for (const QTest::KeyAction action : {QTest::Press, QTest::Release}) {
        if (target)
            QTest::sendKeyEvent(action, target, key, text, modifiers);
    }
}

} // namespace

namespace SoakHand {

void click(QWidget &widget, const QPoint &place, Qt::MouseButton button)
{
    mouse(QTest::MouseClick, widget, place, button);
}

void doubleClick(QWidget &widget, const QPoint &place)
{
    mouse(QTest::MouseDClick, widget, place, Qt::LeftButton);
}

void drag(QWidget &widget, const QPoint &from, const QPoint &to)
{
    constexpr int Steps = 6;
    const QPointer<QWidget> held(&widget);
    mouse(QTest::MousePress, widget, from, Qt::LeftButton);
    for (int step = 1; step <= Steps && held; ++step)
        mouse(QTest::MouseMove, widget, from + (to - from) * step / Steps, Qt::LeftButton);
    if (held)
        mouse(QTest::MouseRelease, widget, to, Qt::LeftButton);
}

void askForMenu(QWidget &widget, const QPoint &place)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, widget.mapToGlobal(place));
    QApplication::sendEvent(&widget, &event);
}

void wheel(QWidget &widget, const QPoint &place, int notches)
{
    QWheelEvent event(place, widget.mapToGlobal(place), {}, {0, NotchAngle * notches}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

void key(QWidget &window, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    send(window, key, QString(), modifiers);
}

void type(QWidget &window, const QString &text)
{
    for (const QChar character : text) {
        const bool ascii = character.unicode() < 0x80;
        const auto key = ascii ? Qt::Key(character.toUpper().unicode()) : Qt::Key_unknown;
        send(window, key, QString(character), Qt::NoModifier);
    }
}

} // namespace SoakHand
