// SPDX-License-Identifier: MIT
#pragma once

#include <QModelIndex>
#include <QPoint>
#include <QString>

#include <functional>

class QAbstractItemView;
class QComboBox;
class QImage;
class QWidget;

/// A person's hand for the tour: moves and presses the mouse, types, waits and looks.
/// Events go to the widget that a person would hit at that place. GUI thread.
namespace TourHand {

/// Handles events for `milliseconds`.
void pause(int milliseconds);
/// Handles events until `condition` holds; false when it does not within `milliseconds`.
bool waitUntil(const std::function<bool()> &condition, int milliseconds = 5000);

/// Presses and releases the left button at `position` of the widget; its middle by default.
void click(QWidget *widget, QPoint position = {-1, -1});
void doubleClick(QWidget *widget, QPoint position = {-1, -1});
/// Holds the left button down at `from` and moves to `to` before it is released.
void drag(QWidget *widget, QPoint from, QPoint to);
/// Scrolls the row into view and clicks the middle of its cell.
void clickCell(QAbstractItemView *view, const QModelIndex &index);
void doubleClickCell(QAbstractItemView *view, const QModelIndex &index);
/// Turns the wheel by `steps` notches (positive: away from the person).
void wheel(QWidget *widget, QPoint position, int steps);

void key(QWidget *widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Types the text, one key a character.
void type(QWidget *widget, const QString &text);
/// Replaces what stands in the field.
void retype(QWidget *field, const QString &text);
/// Opens the list and chooses the entry that begins with the text, which closes the list. False when there is no such
/// entry.
bool choose(QComboBox *box, const QString &entry);

/// The window as it is seen, with the lists and menus open above it.
QImage screenshot(QWidget *window);

} // namespace TourHand
