// SPDX-License-Identifier: MIT
#include "ParamterWidget/PageControls.h"

#include <algorithm>
#include <optional>

#include <QComboBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include "ToolPage/EditorFocus.h"
#include "ToolPage/StyleSheets.h"

namespace {

double settledValue(const QDoubleSpinBox *field)
{
    return field->property(EditorFocus::SettledValue).toDouble();
}

bool isBeingTyped(const QDoubleSpinBox *field)
{
    return field->hasFocus() && field->text() != field->textFromValue(settledValue(field));
}

/// Leaving a field whose value is the settled one finishes no editing: walking over the page must not store values
/// again, rounded to the field's decimals.
class NumberField : public QDoubleSpinBox
{
public:
    using QDoubleSpinBox::QDoubleSpinBox;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        QDoubleSpinBox::keyPressEvent(event);
        if (event->key() == Qt::Key_Enter || event->key() == Qt::Key_Return)
            setProperty(EditorFocus::SettledValue, value());
    }
    void focusOutEvent(QFocusEvent *event) override
    {
        interpretText();
        std::optional<QSignalBlocker> blocker;
        if (value() == settledValue(this))
            blocker.emplace(this);
        QDoubleSpinBox::focusOutEvent(event);
    }
};

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
    auto *const field = new NumberField(parent);
    field->setDecimals(decimals);
    return field;
}

void PageControls::setRange(QDoubleSpinBox *field, double minimum, double maximum, double step)
{
    field->setRange(std::min(minimum, maximum), std::max(minimum, maximum));
    field->setSingleStep(step);
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

void PageControls::show(QDoubleSpinBox *field, double value)
{
    if (isBeingTyped(field))
        return;
    const QSignalBlocker blocker(field);
    field->setValue(value);
    field->setProperty(EditorFocus::SettledValue, field->value());
}

void PageControls::choose(QComboBox *list, int entry)
{
    show(list, entry);
    Q_EMIT list->currentIndexChanged(entry);
}
