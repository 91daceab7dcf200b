// SPDX-License-Identifier: MIT
#include "ParamterWidget/ScrollReturn.h"

#include <algorithm>

#include <QScrollBar>

ScrollReturn::ScrollReturn(QScrollBar *bar, int value) : QObject(bar), m_bar(bar), m_wanted(value)
{
    connect(m_bar, &QScrollBar::rangeChanged, this, &ScrollReturn::follow);
    connect(m_bar, &QScrollBar::valueChanged, this, &ScrollReturn::adoptValue);
    follow();
}

void ScrollReturn::follow()
{
    m_reached = std::min(m_wanted, m_bar->maximum());
    m_bar->setValue(m_reached);
    if (m_reached == m_wanted)
        end();
}

void ScrollReturn::adoptValue(int value)
{
    if (value != m_reached)
        end();
}

void ScrollReturn::end()
{
    disconnect(m_bar, nullptr, this, nullptr);
    deleteLater();
}
