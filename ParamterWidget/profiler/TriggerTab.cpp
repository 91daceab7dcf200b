// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/TriggerTab.h"

#include <algorithm>
#include <iterator>

#include <QComboBox>
#include <QPushButton>
#include <QSignalBlocker>
#include <QThread>

#include "ParamterWidget/Guarded.h"
#include "ParamterWidget/NodeAccess.h"
#include "ParamterWidget/PanelContext.h"
#include "ParamterWidget/WriteSequence.h"
#include "ParamterWidget/profiler/HostValues.h"
#include "ParamterWidget/profiler/ProfilerControls.h"
#include "ToolPage/ToolPageWidgetItem.h"

namespace {

using HostValues::readNode;
using HostValues::writeNode;

constexpr int FrameTrigger = 1; ///< entries of TriggerSelector
constexpr int LineTrigger = 2;
constexpr int Off = 0; ///< entries of TriggerMode and of AcquisitionLineRateEnable
constexpr int On = 1;
constexpr int EncoderSource = 4; ///< entry of TriggerSource
constexpr int Pause = 10; // ms

const char *const Source = "TriggerSource";
const QLatin1String DefaultSource("Line1");
const QLatin1String DepthOnly("Uint16_t");
const QLatin1String DepthAndIntensity("Uint32_t");

constexpr NodeWrite SelectFrameTrigger[] = {NodeWrite::ofEntry("TriggerSelector", FrameTrigger, Pause)};
constexpr NodeWrite SelectLineTrigger[] = {NodeWrite::ofEntry("TriggerSelector", LineTrigger)};
constexpr NodeWrite SelectLineTriggerToRead[] = {NodeWrite::ofEntry("TriggerSelector", LineTrigger, Pause)};

constexpr NodeWrite ExternalTrigger[] = {NodeWrite::ofEntry("TriggerSelector", FrameTrigger, Pause),
                                         NodeWrite::ofEntry("TriggerMode", On, Pause)};
constexpr NodeWrite ContinuousTrigger[] = {NodeWrite::ofEntry("TriggerSelector", FrameTrigger, Pause),
                                           NodeWrite::ofEntry("TriggerMode", Off)};
/// The line trigger keeps its source whatever the frame trigger's becomes.
constexpr NodeWrite LineTriggerSource[] = {NodeWrite::ofEntry("TriggerSelector", LineTrigger),
                                           NodeWrite::ofText("TriggerSource", "ShaftEncoderModuleOut")};
constexpr NodeWrite ContinuousScan[] = {
    NodeWrite::ofEntry("TriggerSelector", LineTrigger, Pause), NodeWrite::ofEntry("TriggerMode", Off),
    NodeWrite::ofEntry("TriggerSource", EncoderSource, Pause), NodeWrite::ofEntry("AcquisitionLineRateEnable", On)};
constexpr NodeWrite EncoderScan[] = {
    NodeWrite::ofEntry("TriggerSelector", LineTrigger, Pause), NodeWrite::ofEntry("TriggerMode", On),
    NodeWrite::ofEntry("TriggerSource", EncoderSource, Pause), NodeWrite::ofEntry("AcquisitionLineRateEnable", Off)};

constexpr int External = 0; ///< places in the lists of the two modes
constexpr int ContinuousScanning = 0;

/// Lines per batch, by the place in the list of modes.
constexpr int BatchLines[] = {100, 400, 800};

QStringList words(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list << QString::fromLatin1(text);
    return list;
}

} // namespace

TriggerTab::TriggerTab(PanelContext &context, QWidget *controlsParent)
    : m_context(context),
      m_frameTriggerMode(ProfilerControls::list(words({"ExternalTrigger", "ContinuousTrigger"}), controlsParent)),
      m_frameTriggerSource(ProfilerControls::list(words({"Line1", "Line2", "Software"}), controlsParent)),
      m_softwareTrigger(ProfilerControls::button("Execute", controlsParent)),
      m_lineScanMode(ProfilerControls::list(words({"Continuous", "Encoder"}), controlsParent)),
      m_dataSource(ProfilerControls::list(words({"3D", "3D + 2D"}), controlsParent)),
      m_batchMode(ProfilerControls::list(words({"Normal", "Fast", "Full"}), controlsParent))
{
    context.controls[RowId::FrameTriggerMode] = m_frameTriggerMode;
    context.controls[RowId::FrameTriggerSource] = m_frameTriggerSource;
    context.controls[RowId::FrameTriggerSoftware] = m_softwareTrigger;
    context.controls[RowId::LineScanMode] = m_lineScanMode;
    context.controls[RowId::AcquisitionDataSource] = m_dataSource;
    context.controls[RowId::BatchMode] = m_batchMode;
    QObject::connect(m_dataSource, qOverload<int>(&QComboBox::currentIndexChanged), m_dataSource,
                     [this](int index) { guarded("TriggerTab", [&] { followDataSource(index); }); });
}

void TriggerTab::followFrameTriggerMode() const
{
    const bool external = m_frameTriggerMode->currentIndex() == External;
    if (external) {
        writeSequence(m_context, ExternalTrigger);
        showFrameTriggerSource();
    } else {
        writeSequence(m_context, ContinuousTrigger);
    }
    m_context.showRow(RowId::FrameTriggerSource, external);
    m_context.showRow(RowId::FrameTriggerSoftware, external);
    writeSequence(m_context, SelectLineTrigger);
}

/// The internal timer is no source of an external trigger.
void TriggerTab::showFrameTriggerSource() const
{
    QString source = readNode(m_context, Source, DefaultSource);
    if (source == QLatin1String("Timer")) {
        source = DefaultSource;
        writeNode(m_context, Source, source);
    }
    const QSignalBlocker blocker(m_frameTriggerSource); // the device has it already
    m_frameTriggerSource->setCurrentText(source);
    enableSoftwareTrigger(source);
}

void TriggerTab::followFrameTriggerSource() const
{
    const QString source = m_frameTriggerSource->currentText();
    writeSequence(m_context, SelectFrameTrigger);
    writeNode(m_context, Source, source);
    QThread::msleep(Pause);
    writeSequence(m_context, LineTriggerSource);
    enableSoftwareTrigger(source);
}

void TriggerTab::enableSoftwareTrigger(const QString &source) const
{
    m_softwareTrigger->setEnabled(source.contains(QLatin1String("Software")));
}

void TriggerTab::followLineScanMode() const
{
    const bool continuous = m_lineScanMode->currentIndex() == ContinuousScanning;
    m_context.showRow(RowId::AcquisitionLineRate, continuous);
    for (RowId encoderRow : {RowId::EncoderDivider, RowId::EncoderOutputMode, RowId::EncoderMode})
        m_context.showRow(encoderRow, !continuous);
    writeSequence(m_context, continuous ? Table<NodeWrite>(ContinuousScan) : Table<NodeWrite>(EncoderScan));
    ToolPageWidgetItem *const lineRate = m_context.placed(RowId::AcquisitionLineRate).row;
    if (continuous && lineRate)
        lineRate->updateWidget(false);
}

void TriggerTab::followBatchMode() const
{
    const int mode = m_batchMode->currentIndex();
    if (mode >= 0 && mode < int(std::size(BatchLines)))
        writeNode(m_context, "BatchNumber", QString::number(BatchLines[mode]));
}

void TriggerTab::followDataSource(int index) const
{
    writeNode(m_context, "DepthDataType", index == 0 ? DepthOnly : DepthAndIntensity);
}

void TriggerTab::trigger() const
{
    writeSequence(m_context, SelectFrameTrigger);
    ExecCameraCommandNode(m_context.deviceName, QStringLiteral("TriggerSoftware"));
    QThread::msleep(Pause);
    writeSequence(m_context, SelectLineTrigger);
}

void TriggerTab::readModes()
{
    const auto isOff = [this](const char *unread) {
        return readNode(m_context, "TriggerMode", QString::fromLatin1(unread)) == QLatin1String("Off");
    };
    writeSequence(m_context, SelectFrameTrigger);
    ProfilerControls::choose(m_frameTriggerMode, isOff("0") ? 1 : 0);
    writeSequence(m_context, SelectLineTriggerToRead);
    ProfilerControls::choose(m_lineScanMode, isOff("") ? 0 : 1);
}

void TriggerTab::readDataSource()
{
    const QSignalBlocker blocker(m_dataSource);
    m_dataSource->setCurrentIndex(readNode(m_context, "DepthDataType", DepthOnly) == DepthOnly ? 0 : 1);
}

void TriggerTab::readBatchMode()
{
    bool isNumber = false;
    const int lines = readNode(m_context, "BatchNumber", QStringLiteral("100")).toInt(&isNumber);
    if (!isNumber || lines <= 0)
        return;
    const int *const end = std::prev(std::end(BatchLines));
    m_batchMode->setCurrentIndex(int(std::lower_bound(std::begin(BatchLines), end, lines) - std::begin(BatchLines)));
}
