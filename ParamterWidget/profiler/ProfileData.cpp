// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/ProfileData.h"

#include <algorithm>
#include <iterator>

#include <QComboBox>

#include "PanelBase/Guarded.h"
#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/PageControls.h"
#include "ParamterWidget/PanelContext.h"

namespace {

const char *const DataType = "DepthDataType";
const QLatin1String DepthOnly("Uint16_t");
const QLatin1String DepthAndIntensity("Uint32_t");

const char *const BatchNumber = "BatchNumber";
/// Profiles per batch, by the place in the list of modes.
constexpr int BatchSizes[] = {100, 400, 800};

QStringList sources()
{
    return {QStringLiteral("3D"), QStringLiteral("3D + 2D")};
}

QStringList batchModes()
{
    return {QStringLiteral("Normal"), QStringLiteral("Fast"), QStringLiteral("Full")};
}

int entryOf(const QString &dataType)
{
    return dataType == DepthOnly ? 0 : 1;
}

} // namespace

ProfileData::ProfileData(PanelContext &context, QWidget *controlsParent)
    : m_context(context), m_source(PageControls::list(sources(), controlsParent)),
      m_batchMode(PageControls::list(batchModes(), controlsParent))
{
    context.controls[RowId::AcquisitionDataSource] = m_source;
    context.controls[RowId::BatchMode] = m_batchMode;
    QObject::connect(m_source, qOverload<int>(&QComboBox::currentIndexChanged), m_source,
                     [this](int index) { guarded("ProfileData", [&] { applySource(index); }); });
}

void ProfileData::applySource(int index)
{
    if (!HostValues::writeNode(m_context, DataType, index == 0 ? DepthOnly : DepthAndIntensity))
        showSource();
}

void ProfileData::adoptSource()
{
    PageControls::show(m_source, entryOf(HostValues::readNode(m_context, DataType, DepthOnly)));
}

void ProfileData::showSource()
{
    if (const auto dataType = HostValues::knownText(m_context, DataType))
        PageControls::show(m_source, entryOf(*dataType));
}

void ProfileData::applyBatchMode()
{
    const int mode = m_batchMode->currentIndex();
    if (mode < 0 || mode >= int(std::size(BatchSizes)))
        return;
    if (!HostValues::writeNode(m_context, BatchNumber, QString::number(BatchSizes[mode])))
        showBatchMode();
}

void ProfileData::adoptBatchMode()
{
    m_batchMode->setCurrentIndex(batchMode(HostValues::readNumber(m_context, BatchNumber, QStringLiteral("100"))));
}

void ProfileData::showBatchMode()
{
    PageControls::show(m_batchMode, batchMode(HostValues::readNumber(m_context, BatchNumber)));
}

int ProfileData::batchMode(const std::optional<double> &profiles) const
{
    if (!profiles || *profiles < 1)
        return m_batchMode->currentIndex();
    const int *const end = std::prev(std::end(BatchSizes));
    return int(std::lower_bound(std::begin(BatchSizes), end, *profiles) - std::begin(BatchSizes));
}
