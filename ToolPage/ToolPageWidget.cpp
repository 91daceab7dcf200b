// SPDX-License-Identifier: MIT
#include "ToolPage/ToolPageWidget.h"

#include <algorithm>

#include <QEvent>
#include <QGridLayout>
#include <QVBoxLayout>

#include "ToolPage/ToolPageWidgetItem.h"

namespace {

/// A widget that was just added to a visible parent counts as hidden until the layout shows it.
bool isHiddenForGood(const QWidget *item)
{
    return item->isHidden() && item->testAttribute(Qt::WA_WState_ExplicitShowHide);
}

} // namespace

ToolPageWidget::ToolPageWidget(QWidget *parent) : QWidget(parent)
{
    auto *outer = new QGridLayout(this);
    outer->setObjectName(QStringLiteral("gridLayout"));
    outer->setSpacing(0);
    outer->setContentsMargins(0, 0, 0, 0);
    auto *widget = new QWidget(this);
    widget->setObjectName(QStringLiteral("widget"));
    outer->addWidget(widget);

    auto *inner = new QGridLayout(widget);
    inner->setObjectName(QStringLiteral("gridLayout_2"));
    inner->setVerticalSpacing(0);
    const QMargins margins = inner->contentsMargins();
    inner->setContentsMargins(0, margins.top(), 0, margins.bottom());
    m_layout = new QVBoxLayout;
    m_layout->setObjectName(QStringLiteral("verticalLayout"));
    inner->addLayout(m_layout, 0, 0);
}

void ToolPageWidget::addWidget(QWidget *widget)
{
    m_layout->addWidget(widget);
    m_items.append(widget);
    if (auto *row = qobject_cast<ToolPageWidgetItem *>(widget))
        connect(row, &ToolPageWidgetItem::valueChanged, this, &ToolPageWidget::updateWidget);
    widget->installEventFilter(this);
    adoptVisibility();
}

void ToolPageWidget::updateWidget()
{
    for (ToolPageWidgetItem *row : rows())
        row->updateWidget(false);
}

void ToolPageWidget::setLanguage(int language)
{
    for (ToolPageWidgetItem *row : rows())
        row->setLanguage(language);
}

bool ToolPageWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
        adoptVisibility();
    return QWidget::eventFilter(watched, event);
}

void ToolPageWidget::adoptVisibility()
{
    const auto isHidden = [](const QWidget *item) { return !item || isHiddenForGood(item); };
    const bool isEmpty = !m_titleStays && !m_items.isEmpty() && std::all_of(m_items.begin(), m_items.end(), isHidden);
    if (isEmpty == m_isEmpty)
        return;
    m_isEmpty = isEmpty;
    Q_EMIT emptyChanged(isEmpty);
}

void ToolPageWidget::showEvent(QShowEvent *event)
{
    for (ToolPageWidgetItem *row : rows()) {
        if (row->isHidden())
            row->updateWidget(false);
    }
    QWidget::showEvent(event);
}

QList<ToolPageWidgetItem *> ToolPageWidget::rows() const
{
    QList<ToolPageWidgetItem *> rows;
    for (const QPointer<QWidget> &item : m_items) {
        if (auto *row = qobject_cast<ToolPageWidgetItem *>(item))
            rows.append(row);
    }
    return rows;
}
