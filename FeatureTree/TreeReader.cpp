// SPDX-License-Identifier: MIT
#include "FeatureTree/TreeReader.h"

#include <algorithm>
#include <utility>

#include "FeatureTree/FeatureTreeView.h"
#include "FeatureTree/TreeItem.h"
#include "FeatureTree/TreeModel.h"

namespace {

void collectUnread(TreeItem &item, QVector<TreeItem *> &unread)
{
    if (item.isUnread())
        unread.append(&item);
    for (int row = 0; row < item.childCount(); ++row)
        collectUnread(*item.child(row), unread);
}

} // namespace

TreeReader::TreeReader(FeatureTreeView &view, VisibilityPass &pass) : m_view(view), m_pass(pass) { }

TreeReader::~TreeReader()
{
    if (m_reading)
        m_reading->forget(this);
}

void TreeReader::setModel(TreeModel *model)
{
    if (m_reading)
        m_reading->forget(this);
    m_model = model;
    m_reading = model ? model->getItem({})->reading() : nullptr;
    m_pass = VisibilityPass();
    m_pass.reading = m_reading;
    adoptRows();
}

void TreeReader::dropRows()
{
    m_rows.clear();
    m_readRows.clear();
    m_fresh.clear();
    m_unread.clear();
}

void TreeReader::adoptRows()
{
    dropRows();
    if (!m_reading || !m_model)
        return;
    collectUnread(*m_model->getItem({}), m_unread);
    std::reverse(m_unread.begin(), m_unread.end());
    if (!m_unread.isEmpty())
        m_reading->later(this);
}

bool TreeReader::isNow() const
{
    return !m_reading || m_reading->hasTime();
}

QVector<QModelIndex> TreeReader::rowsIn(const QRegion &region) const
{
    QVector<QModelIndex> rows;
    for (const QRect &part : region) {
        QModelIndex row = m_view.indexAt(part.topLeft()).siblingAtColumn(0);
        for (; row.isValid() && m_view.visualRect(row).top() <= part.bottom(); row = m_view.indexBelow(row)) {
            if (rows.isEmpty() || rows.last() != row)
                rows.append(row);
        }
    }
    return rows;
}

/// Not what has no value, what was read for being painted now, what waits, and, while others wait, what was read
/// before.
bool TreeReader::needsReading(const QModelIndex &row, bool wasBehind)
{
    TreeItem *const item = m_model->getItem(row);
    const bool isRead = m_fresh.remove(item) || (wasBehind && item->hasCell());
    return item->childCount() == 0 && !isRead && !m_rows.contains(row);
}

void TreeReader::readRows(const QRegion &region)
{
    if (!m_model || m_model->dataDisabled)
        return;
    const bool wasBehind = isBehind();
    for (const QModelIndex &row : rowsIn(region)) {
        if (!needsReading(row, wasBehind))
            continue;
        if (isNow())
            m_model->readRow(row);
        else
            m_rows.append(row);
    }
    if (isBehind() && m_reading)
        m_reading->later(this);
}

bool TreeReader::readAhead(const QModelIndex &row)
{
    if (!m_model || !isNow())
        return false;
    m_model->readRow(row);
    m_fresh.insert(m_model->getItem(row));
    return !m_reading || !m_reading->isSilent();
}

void TreeReader::adoptPass()
{
    if (!m_pass.due.isEmpty() && m_reading)
        m_reading->later(this);
}

bool TreeReader::isInView() const
{
    return m_view.isVisible() && (isBehind() || !m_pass.due.isEmpty());
}

/// Two of three reads are for the rows in view, which are read again each second: the others have to end, too.
bool TreeReader::readNext()
{
    constexpr int Share = 3;
    if (++m_readCount % Share != 0 && readRowInView())
        return true;
    return readSwitch() || readFirstValue() || readRowInView();
}

/// Rows that were scrolled away are read when they come back.
bool TreeReader::readRowInView()
{
    while (!m_rows.isEmpty()) {
        const QPersistentModelIndex row = m_rows.takeFirst();
        if (!m_view.isVisible() || !m_view.viewport()->rect().intersects(m_view.visualRect(row)))
            continue;
        m_model->readRow(row);
        m_readRows.append(row);
        return true;
    }
    return false;
}

bool TreeReader::readSwitch()
{
    if (m_pass.due.isEmpty())
        return false;
    m_model->getItem({})->readSwitch(m_pass.due.takeFirst(), m_pass);
    m_isPassAhead = true;
    return true;
}

/// One that could not be read since the device fell silent stays the next one.
bool TreeReader::readFirstValue()
{
    while (!m_unread.isEmpty() && !m_unread.last()->isUnread())
        m_unread.removeLast();
    if (m_unread.isEmpty())
        return false;
    m_unread.last()->readFirst();
    return true;
}

void TreeReader::endSlice()
{
    for (const QPersistentModelIndex &row : qAsConst(m_readRows)) {
        if (!row.isValid())
            continue;
        m_fresh.insert(m_model->getItem(row));
        m_view.viewport()->update(m_view.visualRect(row).adjusted(0, 0, m_view.viewport()->width(), 0));
    }
    m_readRows.clear();
    if (std::exchange(m_isPassAhead, false))
        m_view.showSwitched();
}
