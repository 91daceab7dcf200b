// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QString>

class QWidget;

/// Mouse and keyboard: events enter at the window, as those of a screen do. GUI thread.
namespace SoakHand {

/// Places are in the widget's coordinates. Nothing happens at a place that is not on a window.
void click(QWidget &widget, const QPoint &place, Qt::MouseButton button = Qt::LeftButton);
void doubleClick(QWidget &widget, const QPoint &place);
/// Holds the left button down on the way.
void drag(QWidget &widget, const QPoint &from, const QPoint &to);
/// Opens what the right button opens there.
void askForMenu(QWidget &widget, const QPoint &place);
/// Turns the wheel by `notches`, positive ones away from the person.
void wheel(QWidget &widget, const QPoint &place, int notches);

/// Goes to the list, menu or dialog that is open, else to `window`.
void key(QWidget &window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void type(QWidget &window, const QString &text);

} // namespace SoakHand
