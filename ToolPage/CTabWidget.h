// SPDX-License-Identifier: MIT
#pragma once

#include <QTabWidget>

/// A tab widget whose tabs (see CTabBar) share its whole width.
class CTabWidget : public QTabWidget
{
    Q_OBJECT

public:
    explicit CTabWidget(QWidget *parent = nullptr);

protected:
    void resizeEvent(QResizeEvent *event) override;
};
