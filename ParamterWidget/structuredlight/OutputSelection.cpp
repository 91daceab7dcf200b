// SPDX-License-Identifier: MIT
#include "ParamterWidget/structuredlight/OutputSelection.h"

#include <iterator>
#include <vector>

#include <QComboBox>
#include <QSignalBlocker>

#include "PanelBase/HostCall.h"
#include "PanelBase/TranslationTables.h"
#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/PageControls.h"
#include "ParamterWidget/PanelContext.h"
#include "ToolPage/CComboBox.h"

namespace {

struct Output
{
    const char *feature;
    const char *name; ///< key of imgShowTypeMap, the same in every language
};

constexpr Output Outputs[] = {
    {"Left2DImage", "2D Left"},           {"Right2DImage", "2D Right"},           {"Left2DSrcImage", "Left Streak"},
    {"Right2DSrcImage", "Right Streak"},  {"Left2.5DFront", "2.5D Left Shot"},    {"Right2.5DFront", "2.5D Right Shot"},
    {"Left2.5DBack", "2.5D Left Reflex"}, {"Right2.5DBack", "2.5D Right Reflex"},
};
constexpr int OutputCount = int(std::size(Outputs));
constexpr int FirstRow = 1; ///< of the outputs in the model of their list
constexpr int FirstOffered = 1; ///< after ShowNone

const char *const Offer = "offer"; ///< name of a step; the others have those of the outputs

const QLatin1String On("True");
const QLatin1String Off("False");
const QLatin1String ShowNone("-");

bool isOn(const PanelContext &context, const Output &output)
{
    return HostValues::readNode(context, output.feature, Off) == On;
}

} // namespace

OutputSelection::OutputSelection(PanelContext &context, QWidget *controlsParent)
    : m_context(context), m_outputs(new CComboBox(controlsParent)),
      m_showTypes(PageControls::list({ShowNone}, controlsParent)), m_steps(context)
{
    std::vector<ReadingSteps::Step> steps;
    for (int index = 0; index < OutputCount; ++index) {
        const QString name = QString::fromLatin1(Outputs[index].name);
        m_outputs->addOption(name, false, name);
        steps.push_back({Outputs[index].feature, [this, index] {
                             m_outputs->setItemChecked(index + FirstRow, isOn(m_context, Outputs[index]));
                         }});
    }
    steps.push_back({Offer, [this] { updateShowTypes(); }});
    m_steps.run(steps);
    context.controls[RowId::ImageOutputs] = m_outputs;
    context.controls[RowId::ImageShowType] = m_showTypes;
}

void OutputSelection::applyOutput(int output, bool on)
{
    const bool isKnown = output >= 0 && output < OutputCount;
    const QString text = on ? QStringLiteral("1") : QStringLiteral("0");
    const bool refused = isKnown && !HostValues::writeNode(m_context, Outputs[output].feature, text);
    if (m_context.disabled)
        return;
    if (refused)
        show(output, on);
    if (!m_context.disabled)
        updateShowTypes();
}

void OutputSelection::applyShowType()
{
    callHost<HostCore::SetSLImageShowMode>("OutputSelection", m_context.deviceKey(),
                                           imgShowTypeMap.value(m_showTypes->currentText(), 0));
}

void OutputSelection::updateShowTypes()
{
    const QStringList names = m_outputs->getCheckedItemsName();
    if (names == offered())
        return;
    const QString shown = m_showTypes->currentText();
    const QSignalBlocker blocker(m_showTypes);
    m_showTypes->hidePopup(); // of the entries that go
    m_showTypes->clear();
    m_showTypes->addItem(ShowNone);
    for (const QString &name : names)
        m_showTypes->addItem(name, name);
    m_showTypes->setCurrentText(shown);
    if (m_showTypes->currentText() != shown)
        applyShowType();
}

void OutputSelection::show(int output, bool otherwise)
{
    const QString text = HostValues::knownText(m_context, Outputs[output].feature).value_or(otherwise ? On : Off);
    m_outputs->setItemChecked(output + FirstRow, text == On);
}

QStringList OutputSelection::offered() const
{
    QStringList names;
    for (int entry = FirstOffered; entry < m_showTypes->count(); ++entry)
        names << m_showTypes->itemText(entry);
    return names;
}

/// Features that the device lacks are not asked for: the host would report each of them every time. The host may take
/// the device away at any call.
void OutputSelection::show()
{
    GenApi::INodeMap *const nodeMap = m_context.nodeMap();
    if (!nodeMap)
        return;
    std::vector<ReadingSteps::Step> steps;
    for (int index = 0; index < OutputCount; ++index)
        steps.push_back({Outputs[index].feature, [this, nodeMap, index] { showReadable(index, nodeMap); }});
    steps.push_back({Offer, [this] { updateShowTypes(); }});
    m_steps.run(steps);
}

void OutputSelection::showReadable(int output, GenApi::INodeMap *nodeMap)
{
    const bool on = m_outputs->getCheckedItemsName().contains(QLatin1String(Outputs[output].name));
    bool isReadable = false;
    m_context.read([&] { isReadable = GenApi::IsReadable(nodeMap->GetNode(Outputs[output].feature)); });
    if (isReadable)
        show(output, on);
}
