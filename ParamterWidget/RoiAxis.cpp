// SPDX-License-Identifier: MIT
#include "ParamterWidget/RoiAxis.h"

#include <algorithm>

#include <QSignalBlocker>
#include <QSpinBox>

#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/PageControls.h"

namespace {

void setUp(QSpinBox *spinBox, int minimum, int maximum, const IntegerInfo &info)
{
    const QSignalBlocker blocker(spinBox);
    spinBox->setRange(minimum, maximum);
    spinBox->setSingleStep(std::max(1, info.increment));
    spinBox->setValue(info.value);
    PageControls::settle(spinBox);
}

} // namespace

RoiAxis::RoiAxis(const char *sizeFeature, const char *offsetFeature, QWidget *controlsParent)
    : m_sizeFeature(sizeFeature), m_offsetFeature(offsetFeature), m_size(PageControls::integerField(controlsParent)),
      m_offset(PageControls::integerField(controlsParent))
{ }

int RoiAxis::begin() const
{
    return m_offset->value() - m_offset->minimum();
}

int RoiAxis::length() const
{
    return m_size->value();
}

void RoiAxis::adoptCamera(const PanelContext &context)
{
    const IntegerInfo offset = HostValues::readInteger(context, m_offsetFeature);
    const IntegerInfo size = HostValues::readInteger(context, m_sizeFeature);
    setUp(m_size, size.minimum, size.value, size);
    setUp(m_offset, offset.value, offset.value, offset);
    m_edge = offset.value + size.value;
}

bool RoiAxis::isCurrent(const PanelContext &context) const
{
    const int offset = m_offset->minimum();
    const int size = m_edge - offset;
    return HostValues::readInteger(context, m_offsetFeature, offset).value == offset
        && HostValues::readInteger(context, m_sizeFeature, size).value == size;
}

void RoiAxis::adoptHost(int from, int to)
{
    const auto [begin, end] = std::minmax(from, to);
    m_size->setMaximum(m_edge - m_offset->minimum());
    m_size->setValue(end - begin); // limits the offset
    m_offset->setValue(begin + m_offset->minimum());
    m_size->setMaximum(m_edge - m_offset->value());
    settle();
}

bool RoiAxis::limitPartner(const QObject *edited)
{
    if (edited == m_size)
        m_offset->setMaximum(m_edge - m_size->value());
    else if (edited == m_offset)
        m_size->setMaximum(m_edge - m_offset->value());
    else
        return false;
    settle();
    return true;
}

void RoiAxis::settle()
{
    PageControls::settle(m_size);
    PageControls::settle(m_offset);
}
