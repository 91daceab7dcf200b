// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/TriggerTab.h"

#include <QComboBox>
#include <QPushButton>
#include <QThread>

#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/PageControls.h"
#include "ParamterWidget/PanelContext.h"
#include "ParamterWidget/WriteSequence.h"
#include "ToolPage/ToolPageWidgetItem.h"

namespace {

using HostValues::knownText;
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

constexpr NodeWrite SoftwareTrigger[] = {NodeWrite::ofEntry("TriggerSelector", FrameTrigger, Pause),
                                         NodeWrite::ofCommand("TriggerSoftware", Pause),
                                         NodeWrite::ofEntry("TriggerSelector", LineTrigger)};

constexpr int External = 0; ///< places in the list of frame trigger modes
constexpr int Continuous = 1;
constexpr int ByTime = 0; ///< places in the list of line scan modes
constexpr int ByEncoder = 1;

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
      m_frameTriggerMode(PageControls::list(words({"ExternalTrigger", "ContinuousTrigger"}), controlsParent)),
      m_frameTriggerSource(PageControls::list(words({"Line1", "Line2", "Software"}), controlsParent)),
      m_softwareTrigger(PageControls::button("Execute", controlsParent)),
      m_lineScanMode(PageControls::list(words({"Continuous", "Encoder"}), controlsParent))
{
    context.controls[RowId::FrameTriggerMode] = m_frameTriggerMode;
    context.controls[RowId::FrameTriggerSource] = m_frameTriggerSource;
    context.controls[RowId::FrameTriggerSoftware] = m_softwareTrigger;
    context.controls[RowId::LineScanMode] = m_lineScanMode;
}

void TriggerTab::applyFrameTriggerMode()
{
    bool done = false;
    if (m_frameTriggerMode->currentIndex() == External) {
        done = writeSequence(m_context, ExternalTrigger);
        done &= useFrameTriggerSource();
    } else {
        done = writeSequence(m_context, ContinuousTrigger);
    }
    showFrameTriggerRows();
    done &= writeSequence(m_context, SelectLineTrigger);
    if (!done)
        showModes();
}

/// The internal timer is no source of an external trigger.
bool TriggerTab::useFrameTriggerSource()
{
    const QString source = readNode(m_context, Source, DefaultSource);
    const bool isUsable = source != QLatin1String("Timer");
    const bool done = isUsable || writeNode(m_context, Source, DefaultSource);
    showFrameTriggerSource(isUsable ? source : QString(DefaultSource));
    return done;
}

void TriggerTab::showFrameTriggerSource(const QString &source)
{
    PageControls::show(m_frameTriggerSource, m_frameTriggerSource->findText(source));
    enableSoftwareTrigger(source);
}

void TriggerTab::showFrameTriggerRows()
{
    const bool external = m_frameTriggerMode->currentIndex() == External;
    m_context.showRow(RowId::FrameTriggerSource, external);
    m_context.showRow(RowId::FrameTriggerSoftware, external);
}

void TriggerTab::applyFrameTriggerSource()
{
    const QString source = m_frameTriggerSource->currentText();
    bool done = writeSequence(m_context, SelectFrameTrigger);
    done &= writeNode(m_context, Source, source);
    QThread::msleep(Pause);
    done &= writeSequence(m_context, LineTriggerSource);
    enableSoftwareTrigger(source);
    if (!done)
        showModes();
}

void TriggerTab::enableSoftwareTrigger(const QString &source)
{
    m_softwareTrigger->setEnabled(source.contains(QLatin1String("Software")));
}

void TriggerTab::applyLineScanMode()
{
    const bool continuous = showLineScanRows();
    const bool done =
        writeSequence(m_context, continuous ? Table<NodeWrite>(ContinuousScan) : Table<NodeWrite>(EncoderScan));
    ToolPageWidgetItem *const lineRate = m_context.placed(RowId::AcquisitionLineRate).row;
    if (continuous && lineRate)
        lineRate->updateWidget(false);
    if (!done)
        showModes();
}

bool TriggerTab::showLineScanRows()
{
    const bool continuous = m_lineScanMode->currentIndex() == ByTime;
    m_context.showRow(RowId::AcquisitionLineRate, continuous);
    for (RowId encoderRow : {RowId::EncoderDivider, RowId::EncoderOutputMode, RowId::EncoderMode})
        m_context.showRow(encoderRow, !continuous);
    return continuous;
}

void TriggerTab::trigger()
{
    writeSequence(m_context, SoftwareTrigger);
}

void TriggerTab::adoptFrameTrigger()
{
    selectToRead(m_context, SelectFrameTrigger);
    PageControls::choose(m_frameTriggerMode, isTriggerOff().value_or(false) ? Continuous : External);
}

void TriggerTab::adoptLineScan()
{
    selectToRead(m_context, SelectLineTriggerToRead);
    PageControls::choose(m_lineScanMode, isTriggerOff().value_or(false) ? ByTime : ByEncoder);
}

void TriggerTab::showModes()
{
    showFrameTrigger();
    showLineScan();
}

void TriggerTab::showFrameTrigger()
{
    if (selectToRead(m_context, SelectFrameTrigger)) {
        showMode(m_frameTriggerMode, Continuous, External);
        if (const auto source = knownText(m_context, Source))
            showFrameTriggerSource(*source);
        showFrameTriggerRows();
    }
}

void TriggerTab::showLineScan()
{
    if (selectToRead(m_context, SelectLineTriggerToRead)) {
        showMode(m_lineScanMode, ByTime, ByEncoder);
        showLineScanRows();
    }
}

void TriggerTab::showMode(QComboBox *list, int entryOfOff, int entryOfOn)
{
    if (const auto isOff = isTriggerOff())
        PageControls::show(list, *isOff ? entryOfOff : entryOfOn);
}

std::optional<bool> TriggerTab::isTriggerOff() const
{
    const auto mode = knownText(m_context, "TriggerMode");
    return mode ? std::optional(*mode == QLatin1String("Off")) : std::nullopt;
}
