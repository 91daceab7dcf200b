// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QWheelEvent>
#include <QtTest>

/// Shows the window; true once it is the active one.
inline bool activate(QWidget &window)
{
    window.show();
    QApplication::setActiveWindow(&window);
    return QTest::qWaitForWindowActive(&window);
}

/// One notch of the wheel, towards the user; true if the widget kept it to itself.
inline bool turnWheel(QWidget &widget, int delta = -120)
{
    QWheelEvent wheel(QPointF(5, 5), widget.mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    wheel.ignore();
    QCoreApplication::sendEvent(&widget, &wheel);
    return wheel.isAccepted();
}
