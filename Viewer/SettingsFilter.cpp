// SPDX-License-Identifier: MIT
#include "Viewer/SettingsFilter.h"

#include <algorithm>

SettingsFilter::SettingsFilter(SettingsModel &settings, QObject *parent)
    : QSortFilterProxyModel(parent), m_settings(settings)
{
    setDynamicSortFilter(false); // a row stays where it is when somebody ticks it
    setSourceModel(&settings);
}

// invalidate() is one change of the layout; invalidateFilter() tells of each run of rows that goes or comes, which
// takes a view of thousands of rows a second.

void SettingsFilter::setSearch(const QString &text)
{
    m_search = text;
    invalidate();
}

void SettingsFilter::setOnly(Only only)
{
    m_only = only;
    invalidate();
}

bool SettingsFilter::filterAcceptsRow(int rank, const QModelIndex &) const
{
    const SettingsModel::Row &row = m_settings.rows()[std::size_t(rank)];
    const bool isOfInterest = row.isDifferent || !row.result.isEmpty();
    if ((m_only == Only::Different && !isOfInterest) || (m_only == Only::Failed && !row.isFailed))
        return false;
    const QString *const texts[] = {&row.feature, &row.position, &row.left.text, &row.right.text, &row.result};
    return m_search.isEmpty() || std::any_of(std::begin(texts), std::end(texts), [this](const QString *text) {
               return text->contains(m_search, Qt::CaseInsensitive);
           });
}
