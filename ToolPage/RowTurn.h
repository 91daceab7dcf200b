// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QPointer>

#include "PanelBase/DeviceReading.h"

class QWidget;

/// A row's turn to read its feature: at once while there is time, later otherwise.
class RowTurn : public DeviceReading::Job
{
public:
    /// `refresh` reads the feature of `row`, which must live as long as this.
    RowTurn(const QWidget *row, std::function<void()> refresh);
    ~RowTurn() override;
    RowTurn(const RowTurn &) = delete;
    RowTurn &operator=(const RowTurn &) = delete;

    /// Without one the row always reads at once.
    void setReading(DeviceReading *reading) { m_reading = reading; }
    /// False when the row has to wait, for which it is queued.
    bool isNow();
    /// Refreshes the row, now or later; nothing while it is being refreshed, which may show it.
    void take();
    /// Nothing that waits is read any more.
    void cancel();

    bool isInView() const override;
    bool readNext() override;

private:
    void refresh();

    const QWidget *m_row;
    std::function<void()> m_refresh;
    QPointer<DeviceReading> m_reading;
    bool m_isRefreshing = false;
};
