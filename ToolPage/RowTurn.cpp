// SPDX-License-Identifier: MIT
#include "ToolPage/RowTurn.h"

#include <utility>

#include <QScopedValueRollback>
#include <QWidget>

RowTurn::RowTurn(const QWidget *row, std::function<void()> refresh) : m_row(row), m_refresh(std::move(refresh)) { }

RowTurn::~RowTurn()
{
    cancel();
}

bool RowTurn::isNow()
{
    if (!m_reading || m_reading->hasTime())
        return true;
    m_reading->later(this);
    return false;
}

void RowTurn::take()
{
    if (!m_isRefreshing && isNow())
        refresh();
}

void RowTurn::refresh()
{
    const QScopedValueRollback<bool> refreshing(m_isRefreshing, true);
    m_refresh();
}

void RowTurn::cancel()
{
    if (m_reading)
        m_reading->forget(this);
}

/// Rows hide until it is known whether they are available, so it is their page that counts.
bool RowTurn::isInView() const
{
    const QWidget *page = m_row->parentWidget();
    return page && page->isVisible();
}

bool RowTurn::readNext()
{
    refresh();
    return false;
}
