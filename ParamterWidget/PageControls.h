// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QComboBox;
class QDoubleSpinBox;
class QPushButton;
class QWidget;

/// The controls that the controllers of the pages make. All become children of `parent`.
namespace PageControls {

/// A list with the first entry chosen.
QComboBox *list(const QStringList &entries, QWidget *parent);
/// A field for numbers, 0 to 99.99 at first. It tells that editing has finished after Enter, and when it is left with
/// another value than it was entered with.
QDoubleSpinBox *numberField(QWidget *parent, int decimals = 4);
void setRange(QDoubleSpinBox *field, double minimum, double maximum, double step);
/// The panel's text for "Auto", "Settings" and the like.
QPushButton *button(const char *text, QWidget *parent);
/// Widgets side by side.
QWidget *row(const QList<QWidget *> &widgets, QWidget *parent);

/// Chooses an entry without telling so; none for -1.
void show(QComboBox *list, int entry);
/// Shows a number in a field of numberField() without telling so. A field that is being typed in stays as it is.
void show(QDoubleSpinBox *field, double value);
/// Chooses an entry and tells so once, even if it was chosen before.
void choose(QComboBox *list, int entry);

} // namespace PageControls
