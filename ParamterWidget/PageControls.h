// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QAbstractSpinBox;
class QComboBox;
class QDoubleSpinBox;
class QPushButton;
class QSpinBox;
class QWidget;

/// The controls that the controllers of the pages make. All become children of `parent`.
namespace PageControls {

/// A list with the first entry chosen.
QComboBox *list(const QStringList &entries, QWidget *parent);
/// Fields for numbers, the first one from 0 to 99.99 until its range is set. In place of a typed number beyond the
/// range they take its nearest end.
QDoubleSpinBox *numberField(QWidget *parent, int decimals = 4);
QSpinBox *integerField(QWidget *parent, int minimum = 0, int maximum = 99, int value = 0);
/// Of a field of numberField(), in either order; text that is being typed stays.
void setRange(QDoubleSpinBox *field, double minimum, double maximum, double step);
/// The panel's text for "Auto", "Settings" and the like.
QPushButton *button(const char *text, QWidget *parent);
/// Widgets side by side.
QWidget *row(const QList<QWidget *> &widgets, QWidget *parent);

/// Chooses an entry without telling so; none for -1.
void show(QComboBox *list, int entry);
/// What a field of numberField() holds, with all digits that were typed.
double value(QDoubleSpinBox *field);
/// Shows a number in a field of numberField() without telling so. A field with input stays as it is.
void show(QDoubleSpinBox *field, double value);
/// The same, whatever the field holds.
void put(QDoubleSpinBox *field, double value);
/// Shows again what the field of one of these functions had before it was edited.
void giveBack(QAbstractSpinBox *field);
/// What the field of one of these functions holds has been taken: it is no input any more.
void settle(QAbstractSpinBox *field);
/// Chooses an entry and tells so once, even if it was chosen before.
void choose(QComboBox *list, int entry);

} // namespace PageControls
