// SPDX-License-Identifier: MIT
#include "ParamterWidget/PageControls.h"

#include <algorithm>

#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include "PanelBase/NumberField.h"
#include "PanelBase/StyleSheets.h"

namespace {

/// The fields here are all made by numberField().
RealField *real(QDoubleSpinBox *field)
{
    return static_cast<RealField *>(field);
}

} // namespace

QComboBox *PageControls::list(const QStringList &entries, QWidget *parent)
{
    auto *const list = new QComboBox(parent);
    list->addItems(entries);
    list->setStyleSheet(StyleSheets::ChoiceList);
    list->setItemDelegate(new QStyledItemDelegate(list)); // the default one ignores item styles
    return list;
}

QDoubleSpinBox *PageControls::numberField(QWidget *parent, int decimals)
{
    auto *const field = new RealField(parent, NumberInput::Beyond::Nearest);
    field->setDecimals(decimals);
    return field;
}

QSpinBox *PageControls::integerField(QWidget *parent, int minimum, int maximum, int value)
{
    auto *const field = new IntegerField(parent, NumberInput::Beyond::Nearest);
    field->setLimits(minimum, maximum);
    field->load(value);
    return field;
}

void PageControls::setRange(QDoubleSpinBox *field, double minimum, double maximum, double step)
{
    real(field)->setLimits(std::min(minimum, maximum), std::max(minimum, maximum));
    real(field)->setSteps(step);
}

QPushButton *PageControls::button(const char *text, QWidget *parent)
{
    auto *const button = new QPushButton(QCoreApplication::translate("ParamterWidget", text), parent);
    button->setStyleSheet(StyleSheets::PlainButton);
    return button;
}

QWidget *PageControls::row(const QList<QWidget *> &widgets, QWidget *parent)
{
    auto *const row = new QWidget(parent);
    auto *const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget *widget : widgets)
        layout->addWidget(widget);
    return row;
}

void PageControls::show(QComboBox *list, int entry)
{
    const QSignalBlocker blocker(list);
    list->setCurrentIndex(entry);
}

double PageControls::value(QDoubleSpinBox *field)
{
    return real(field)->number();
}

void PageControls::show(QDoubleSpinBox *field, double value)
{
    if (!real(field)->hasInput())
        put(field, value);
}

void PageControls::put(QDoubleSpinBox *field, double value)
{
    real(field)->load(std::clamp(value, real(field)->lowest(), real(field)->highest()));
}

void PageControls::giveBack(QAbstractSpinBox *field)
{
    NumberInput::of(field)->giveBack();
}

void PageControls::settle(QAbstractSpinBox *field)
{
    NumberInput::of(field)->settle();
}

void PageControls::choose(QComboBox *list, int entry)
{
    show(list, entry);
    Q_EMIT list->currentIndexChanged(entry);
}
