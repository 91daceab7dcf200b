// SPDX-License-Identifier: MIT
#include "tour/TourHand.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QTimer>
#include <QWheelEvent>

namespace {

constexpr int Glance = 30; // ms between the steps of a movement

void send(QWidget *widget, QEvent::Type type, const QPoint &position, Qt::MouseButtons buttons)
{
    const bool moves = type == QEvent::MouseMove;
    QMouseEvent event(type, position, widget->mapToGlobal(position), moves ? Qt::NoButton : Qt::LeftButton, buttons,
                      Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

/// The innermost widget at the position, which moves to that widget's coordinates.
QWidget *hit(QWidget *widget, QPoint &position)
{
    QWidget *inner = widget->childAt(position);
    if (!inner)
        return widget;
    position = inner->mapFrom(widget, position);
    return inner;
}

/// What the toolkit does for a real press.
void giveFocus(QWidget *pressed)
{
    for (QWidget *widget = pressed; widget; widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
        if (widget->isEnabled() && (widget->focusPolicy() & Qt::ClickFocus) == Qt::ClickFocus)
            return widget->setFocus(Qt::MouseFocusReason);
    }
}

QPoint middleIfUnset(const QWidget *widget, const QPoint &position)
{
    return position.x() < 0 ? widget->rect().center() : position;
}

QPoint cellMiddle(QAbstractItemView *view, const QModelIndex &index)
{
    view->scrollTo(index);
    TourHand::pause(Glance);
    return (view->visualRect(index) & view->viewport()->rect()).center();
}

QString characterText(int key, Qt::KeyboardModifiers modifiers)
{
    const bool printable = key >= Qt::Key_Space && key <= Qt::Key_AsciiTilde && modifiers == Qt::NoModifier;
    return printable ? QString(QChar(key)) : QString();
}

void sendKey(QWidget *widget, int key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    for (QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QWidget *focused = widget->focusWidget() ? widget->focusWidget() : widget;
        QKeyEvent event(type, key, modifiers, text);
        QApplication::sendEvent(focused, &event);
    }
}

} // namespace

namespace TourHand {

void pause(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

bool waitUntil(const std::function<bool()> &condition, int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition() && clock.elapsed() < milliseconds)
        pause(Glance);
    return condition();
}

void click(QWidget *widget, QPoint position)
{
    position = middleIfUnset(widget, position);
    QWidget *target = hit(widget, position);
    send(target, QEvent::MouseMove, position, Qt::NoButton);
    giveFocus(target);
    send(target, QEvent::MouseButtonPress, position, Qt::LeftButton);
    send(target, QEvent::MouseButtonRelease, position, Qt::NoButton);
    pause(Glance);
}

void doubleClick(QWidget *widget, QPoint position)
{
    click(widget, position);
    position = middleIfUnset(widget, position);
    QWidget *target = hit(widget, position);
    send(target, QEvent::MouseButtonDblClick, position, Qt::LeftButton);
    send(target, QEvent::MouseButtonRelease, position, Qt::NoButton);
    pause(Glance);
}

void drag(QWidget *widget, QPoint from, QPoint to)
{
    constexpr int Steps = 10;
    send(widget, QEvent::MouseMove, from, Qt::NoButton);
    giveFocus(widget);
    send(widget, QEvent::MouseButtonPress, from, Qt::LeftButton);
    for (int step = 1; step <= Steps; ++step) {
        send(widget, QEvent::MouseMove, from + (to - from) * step / Steps, Qt::LeftButton);
        pause(Glance);
    }
    send(widget, QEvent::MouseButtonRelease, to, Qt::NoButton);
    pause(Glance);
}

void clickCell(QAbstractItemView *view, const QModelIndex &index)
{
    click(view->viewport(), cellMiddle(view, index));
}

void doubleClickCell(QAbstractItemView *view, const QModelIndex &index)
{
    doubleClick(view->viewport(), cellMiddle(view, index));
}

void wheel(QWidget *widget, QPoint position, int steps)
{
    QWheelEvent event(position, widget->mapToGlobal(position), {}, {0, 120 * steps}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
    pause(Glance);
}

void key(QWidget *widget, int key, Qt::KeyboardModifiers modifiers)
{
    sendKey(widget, key, modifiers, characterText(key, modifiers));
    pause(Glance);
}

void type(QWidget *widget, const QString &text)
{
    for (const QChar character : text)
        sendKey(widget, character.toUpper().unicode(), Qt::NoModifier, QString(character));
    pause(Glance);
}

void retype(QWidget *field, const QString &text)
{
    sendKey(field, Qt::Key_A, Qt::ControlModifier, QString());
    if (text.isEmpty())
        sendKey(field, Qt::Key_Delete, Qt::NoModifier, QString());
    type(field, text);
}

bool choose(QComboBox *box, const QString &entry)
{
    const int row = box->findText(entry, Qt::MatchStartsWith);
    if (row < 0)
        return false;
    if (!box->view()->isVisible())
        click(box);
    pause(QApplication::doubleClickInterval() + Glance); // a list takes no choice that follows its opening at once
    clickCell(box->view(), box->model()->index(row, box->modelColumn(), box->rootModelIndex()));
    pause(Glance);
    return box->currentText().startsWith(entry);
}

QImage screenshot(QWidget *window)
{
    QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest); // of texts that have just changed
    QPixmap picture = window->grab();
    QPainter painter(&picture);
    const QWidgetList others = QApplication::topLevelWidgets();
    for (QWidget *other : others) {
        if (other != window && other->isVisible())
            painter.drawPixmap(other->pos() - window->pos(), other->grab());
    }
    painter.end();
    return picture.toImage();
}

} // namespace TourHand
