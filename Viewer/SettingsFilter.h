// SPDX-License-Identifier: MIT
#pragma once

#include <QSortFilterProxyModel>

#include "Viewer/SettingsModel.h"

/// The rows of settings that contain a text, and, if wanted, only those that differ (or did: what came of them is
/// there) or did not take. Sorted as the rows come at first.
class SettingsFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    enum class Only { All, Different, Failed };

    explicit SettingsFilter(SettingsModel &settings, QObject *parent = nullptr);

    void setSearch(const QString &text);
    void setOnly(Only only);

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    const SettingsModel &m_settings;
    QString m_search;
    Only m_only = Only::All;
};
