// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/ProfilerControls.h"

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

#include "ToolPage/StyleSheets.h"

namespace {

/// Leaving a field whose value is still the one that was met there, or that Enter finished, finishes no editing:
/// walking over the page must not store values again, rounded to the field's decimals.
class NumberField : public QDoubleSpinBox
{
public:
    using QDoubleSpinBox::QDoubleSpinBox;

protected:
    void focusInEvent(QFocusEvent *event) override
    {
        QDoubleSpinBox::focusInEvent(event);
        m_settled = value();
    }
    void keyPressEvent(QKeyEvent *event) override
    {
        QDoubleSpinBox::keyPressEvent(event);
        if (event->key() == Qt::Key_Enter || event->key() == Qt::Key_Return)
            m_settled = value();
    }
    void focusOutEvent(QFocusEvent *event) override
    {
        interpretText();
        std::optional<QSignalBlocker> blocker;
        if (value() == m_settled)
            blocker.emplace(this);
        QDoubleSpinBox::focusOutEvent(event);
    }

private:
    double m_settled = 0;
};

} // namespace

QComboBox *ProfilerControls::list(const QStringList &entries, QWidget *parent)
{
    auto *const list = new QComboBox(parent);
    list->addItems(entries);
    list->setStyleSheet(StyleSheets::ChoiceList);
    list->setItemDelegate(new QStyledItemDelegate(list)); // the default one ignores item styles
    return list;
}

QDoubleSpinBox *ProfilerControls::numberField(QWidget *parent, int decimals)
{
    auto *const field = new NumberField(parent);
    field->setDecimals(decimals);
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
