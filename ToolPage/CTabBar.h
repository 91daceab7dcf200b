// SPDX-License-Identifier: MIT
#pragma once

#include <QTabBar>

/// A flat tab bar: text over a grey baseline, underlined under the mouse and when selected. The tabs
/// share the bar's width evenly. The selected tab is framed while the bar has the focus. Icons and close buttons are
/// not painted.
class CTabBar : public QTabBar
{
    Q_OBJECT

public:
    explicit CTabBar(QWidget *parent = nullptr);

protected:
    /// The bar's width divided by the number of tabs, 40 high.
    QSize tabSizeHint(int index) const override;
    void paintEvent(QPaintEvent *event) override;

private:
    void paintTab(QPainter &painter, int index) const;

    QColor m_baselineColor{220, 220, 220};
    QColor m_hoverColor{93, 189, 147};
    QColor m_selectedColor{93, 189, 147};
    int m_baselineWidth = 4; ///< pixels
    int m_hoverWidth = 4; ///< pixels
    int m_selectedWidth = 5; ///< pixels
    int m_tabHeight = 40; ///< pixels
};
