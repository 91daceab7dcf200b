// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/ProfilerControls.h"

#include <algorithm>

#include <QComboBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include "ToolPage/StyleSheets.h"

QComboBox *ProfilerControls::list(const QStringList &entries, QWidget *parent)
{
    auto *const list = new QComboBox(parent);
    list->addItems(entries);
    list->setStyleSheet(StyleSheets::ChoiceList);
    list->setItemDelegate(new QStyledItemDelegate(list)); // the default one ignores item styles
    return list;
}

QDoubleSpinBox *ProfilerControls::numberField(QWidget *parent)
{
    auto *const field = new QDoubleSpinBox(parent);
    field->setDecimals(4);
    return field;
}

void ProfilerControls::setRange(QDoubleSpinBox *field, double minimum, double maximum, double step)
{
    field->setRange(std::min(minimum, maximum), std::max(minimum, maximum));
    field->setSingleStep(step);
}

QPushButton *ProfilerControls::button(const char *text, QWidget *parent)
{
    auto *const button = new QPushButton(QCoreApplication::translate("ParamterWidget", text), parent);
    button->setStyleSheet(StyleSheets::PlainButton);
    return button;
}

QWidget *ProfilerControls::row(const QList<QWidget *> &widgets, QWidget *parent)
{
    auto *const row = new QWidget(parent);
    auto *const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget *widget : widgets)
        layout->addWidget(widget);
    return row;
}

void ProfilerControls::choose(QComboBox *list, int entry)
{
    {
        const QSignalBlocker blocker(list);
        list->setCurrentIndex(entry);
    }
    Q_EMIT list->currentIndexChanged(entry);
}
