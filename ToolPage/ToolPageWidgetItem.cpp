// SPDX-License-Identifier: MIT
#include "ToolPage/ToolPageWidgetItem.h"

#include <algorithm>
#include <cmath>

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QCursor>
#include <QHBoxLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QSignalBlocker>

#include "Features/NodeGuard.h"
#include "PanelBase/HostCall.h"
#include "PanelBase/NumberField.h"
#include "ToolPage/EditorFocus.h"
#include "ToolPage/RowEditors.h"
#include "ToolPage/RowLabel.h"
#include "ToolPage/SwitchButton.h"

namespace {

constexpr const char *Module = "ToolPageWidgetItem";

constexpr int RowHeight = 40;
constexpr int EditorHeight = 34;
constexpr int EditorMinimumWidth = 150;
constexpr QMargins RowMargins(30, 3, 10, 3);

/// The number fields of an editor, if there is one: the editor itself, or parts of a container.
QVector<NumberInput *> inputsOf(QWidget *editor)
{
    QVector<NumberInput *> inputs;
    if (!editor)
        return inputs;
    const auto add = [&inputs](QWidget *field) {
        if (NumberInput *input = NumberInput::of(field))
            inputs.append(input);
    };
    add(editor);
    for (QAbstractSpinBox *part : editor->findChildren<QAbstractSpinBox *>())
        add(part);
    return inputs;
}

bool isSwitchContainer(const QWidget *editor)
{
    return editor->findChild<SwitchButton *>();
}

int minimumEditorWidth(const QWidget *editor)
{
    if (!editor)
        return 0;
    return editor->minimumWidth() > 0 ? editor->minimumWidth() : editor->minimumSizeHint().width();
}

bool isInUse(const QWidget *editor)
{
    const auto *comboBox = qobject_cast<const QComboBox *>(editor);
    return editor->hasFocus() || (comboBox && comboBox->view()->isVisible());
}

} // namespace

ToolPageWidgetItem::ToolPageWidgetItem(QWidget *parent) : QWidget(parent), m_focus(new EditorFocus(this))
{
    connect(m_focus, &EditorFocus::gained, this, &ToolPageWidgetItem::itemFocused);
    connect(m_focus, &EditorFocus::editCancelled, this, [this] { updateWidget(false); });
}

/// An editor that loses the focus by being deleted ends its editing; that must not reach what is left of the row.
ToolPageWidgetItem::~ToolPageWidgetItem()
{
    for (QWidget *child : findChildren<QWidget *>())
        child->disconnect(this);
}

void ToolPageWidgetItem::setItemInfo(const QStringList &names, const QStringList &descriptions, GenApi::INode *node,
                                     bool hideWhenUnavailable)
{
    createLabel();
    setTexts(names, descriptions);
    m_node = nullptr;
    m_hideWhenUnavailable = hideWhenUnavailable;
    guardRead([&] {
        if (node && node->IsFeature() && node->GetVisibility() != GenApi::Invisible)
            m_node = node;
    });
    m_available = false;
    m_editor = getParameterWidget(m_node, m_available);
    if (m_hideWhenUnavailable && !m_available)
        hide();
    layOut();
    m_laidOut = true;
}

void ToolPageWidgetItem::setItemInfo(const QStringList &names, const QStringList &descriptions, QWidget *widget)
{
    createLabel();
    setTexts(names, descriptions);
    if (auto *button = qobject_cast<SwitchButton *>(widget))
        adoptEditor(RowEditors::switchContainer(button, this));
    else
        adoptEditor(widget);
    layOut();
}

void ToolPageWidgetItem::setItemInfo(const QStringList &names, const QStringList &descriptions)
{
    setTexts(names, descriptions);
}

void ToolPageWidgetItem::setTexts(const QStringList &names, const QStringList &descriptions)
{
    m_names = names;
    m_descriptions = descriptions;
}

void ToolPageWidgetItem::createLabel()
{
    if (m_label)
        return;
    m_label = new RowLabel(this);
    m_label->setAttribute(Qt::WA_TranslucentBackground);
}

void ToolPageWidgetItem::layOut()
{
    delete layout();
    auto *box = new QHBoxLayout(this);
    box->setContentsMargins(RowMargins);
    box->addWidget(m_label);
    if (!m_editor || isSwitchContainer(m_editor))
        box->addStretch(m_editor ? 1 : 0);
    if (m_editor) {
        box->addWidget(m_editor);
        m_focus->watch(m_editor);
    }
    setFixedHeight(RowHeight);
}

void ToolPageWidgetItem::adoptEditor(QWidget *editor)
{
    m_editor = editor;
    if (!editor)
        return;
    for (NumberInput *input : inputsOf(editor))
        input->onRefused = [this](const QString &reason) { logRefusal(reason); };
    if (!isSwitchContainer(editor)) {
        editor->setFixedHeight(EditorHeight);
        editor->setMinimumWidth(EditorMinimumWidth);
    }
    nameEditor();
}

/// Tells assistive technology what the editor edits.
void ToolPageWidgetItem::nameEditor()
{
    if (!m_editor || !m_label)
        return;
    m_editor->setAccessibleName(m_label->text());
    for (QWidget *part : m_editor->findChildren<QWidget *>()) {
        if (qobject_cast<SwitchButton *>(part) || qobject_cast<QAbstractSpinBox *>(part))
            part->setAccessibleName(m_label->text());
    }
}

QWidget *ToolPageWidgetItem::getParameterWidget(GenApi::INode *node, bool &available)
{
    if (!node || m_released)
        return nullptr;
    GenApi::EInterfaceType type = GenApi::intfIBase;
    guardRead([&] {
        m_nodeName = QString::fromUtf8(node->GetName().c_str());
        type = node->GetPrincipalInterfaceType();
    });
    return RowEditors::find(type) ? syncEditor(type, node, available) : nullptr;
}

QWidget *ToolPageWidgetItem::getIntParamWidget(GenApi::INode *node, bool &available)
{
    return syncEditor(GenApi::intfIInteger, node, available);
}

QWidget *ToolPageWidgetItem::getBoolParamWidget(GenApi::INode *node, bool &available)
{
    return syncEditor(GenApi::intfIBoolean, node, available);
}

QWidget *ToolPageWidgetItem::getFloatParamWidget(GenApi::INode *node, bool &available)
{
    return syncEditor(GenApi::intfIFloat, node, available);
}

QWidget *ToolPageWidgetItem::getEnumParamWidget(GenApi::INode *node, bool &available)
{
    return syncEditor(GenApi::intfIEnumeration, node, available);
}

QWidget *ToolPageWidgetItem::getCommandParamWidget(GenApi::INode *node, bool &available)
{
    return syncEditor(GenApi::intfICommand, node, available);
}

QWidget *ToolPageWidgetItem::syncEditor(GenApi::EInterfaceType type, GenApi::INode *node, bool &available)
{
    if (m_released)
        return m_editor;
    const RowEditor &kind = *RowEditors::find(type);
    const auto sync = [&](bool verify) {
        if (!kind.accepts(node) || (kind.needsReadable && !GenApi::IsReadable(node))) {
            available = false;
            return;
        }
        const bool editable = m_enabled && GenApi::IsWritable(node);
        const bool isNew = !m_editor;
        if (isNew)
            makeEditor(kind, node, verify);
        m_editor->setEnabled(editable);
        if (!editable)
            dropInput();
        if (!isNew)
            kind.refresh(node, m_editor);
        available = true;
        m_readFault.clear();
    };
    bool synced = guardRead([&] { sync(true); });
    if (!synced && !m_editor)
        synced = guardRead([&] { sync(false); });
    if (!synced && m_editor && !hasInput())
        m_editor->setEnabled(false);
    return m_editor;
}

void ToolPageWidgetItem::makeEditor(const RowEditor &kind, GenApi::INode *node, bool verify)
{
    adoptEditor(kind.make(node, this, verify));
    m_kind = &kind;
    kind.connectTo(m_editor, this);
    if (m_laidOut)
        layOut();
}

void ToolPageWidgetItem::logLine(const QString &message)
{
    logToHost(Module, message.toStdString());
}

/// Logs what `read` throws, once per cause.
bool ToolPageWidgetItem::guardRead(const std::function<void()> &read)
{
    const auto report = [this](const char *error) {
        const QString fault = QString::fromUtf8(error);
        if (fault == m_readFault)
            return;
        m_readFault = fault;
        const QString name = m_nodeName.isEmpty() ? m_names.value(0) : m_nodeName;
        logLine(QStringLiteral("Read %1 failed, message = %2").arg(name, fault));
    };
    return guardNode(
        read, [&](const GenICam::GenericException &error) { report(error.GetDescription()); }, report);
}

void ToolPageWidgetItem::updateWidget(bool live)
{
    if (live) {
        showLiveValue();
        return;
    }
    getParameterWidget(m_node, m_available);
    hideUnlessAvailable();
}

void ToolPageWidgetItem::hideUnlessAvailable()
{
    if (m_node && m_hideWhenUnavailable)
        showRow(m_available && m_showable);
}

/// What the device lets the user do with the feature may change by itself, as its value does. What could not be read
/// stays disabled until it can.
void ToolPageWidgetItem::followAccess(bool isRead)
{
    if (!m_node)
        return;
    bool editable = false;
    const bool isKnown = guardRead([&] {
        m_available = GenApi::IsReadable(m_node);
        editable = m_enabled && GenApi::IsWritable(m_node);
    });
    if (isKnown && isRead)
        m_readFault.clear();
    m_editor->setEnabled(editable && m_readFault.isEmpty());
    hideUnlessAvailable();
}

void ToolPageWidgetItem::showRow(bool visible)
{
    if (!visible)
        dropInput();
    setVisible(visible);
}

bool ToolPageWidgetItem::hasInput() const
{
    const QVector<NumberInput *> inputs = inputsOf(m_editor);
    return std::any_of(inputs.begin(), inputs.end(), [](const NumberInput *input) { return input->hasInput(); });
}

/// What can no longer be edited shows what it had.
void ToolPageWidgetItem::dropInput()
{
    for (NumberInput *input : inputsOf(m_editor))
        input->drop();
}

void ToolPageWidgetItem::showLiveValue()
{
    auto *field = dynamic_cast<RealField *>(m_editor);
    auto *comboBox = qobject_cast<QComboBox *>(m_editor);
    if (m_released || (!field && !comboBox) || isInUse(m_editor) || (field && field->hasInput()))
        return;
    std::string value;
    const bool isRead =
        callHost<HostCore::GetCameraNodeValue>(Module, deviceName.toStdString(), m_nodeName.toStdString(), value) == 0;
    followAccess(isRead);
    if (!isRead)
        return;
    const QString text = QString::fromStdString(value);
    if (comboBox) {
        const QSignalBlocker blocker(m_editor);
        comboBox->setCurrentText(text);
        return;
    }
    bool isNumber = false;
    const float number = text.toFloat(&isNumber);
    if (isNumber && std::isfinite(number))
        field->load(text.toDouble(), static_cast<double>(number));
}

void ToolPageWidgetItem::setWidgetItemEnable(bool enable)
{
    if (!m_editor)
        return;
    m_enabled = enable && !m_released;
    m_editor->setEnabled(m_enabled);
    if (!m_enabled)
        dropInput();
}

void ToolPageWidgetItem::setWidgetItemVisible(bool visible)
{
    m_showable = visible;
    if (visible && m_hideWhenUnavailable)
        updateWidget(false);
    else
        showRow(visible);
}

void ToolPageWidgetItem::releaseNode()
{
    m_released = true;
    m_node = nullptr;
    setWidgetItemEnable(false);
}

void ToolPageWidgetItem::setLanguage(int language)
{
    if (m_label)
        m_label->setText(m_names.value(language != 0 ? 1 : 0));
    nameEditor();
    auto *button = qobject_cast<QPushButton *>(m_editor);
    if (button && !button->text().isEmpty())
        button->setText(tr("Execute"));
}

QString ToolPageWidgetItem::getDescription(int language) const
{
    return m_descriptions.value(language);
}

void ToolPageWidgetItem::setCurrentColor(const QColor &color)
{
    m_currentColor = color;
    update();
}

void ToolPageWidgetItem::enterEvent(EnterEvent *)
{
    setCurrentColor(m_hoverColor);
}

void ToolPageWidgetItem::leaveEvent(QEvent *)
{
    m_currentColor = m_normalColor;
    if (!rect().contains(mapFromGlobal(QCursor::pos()))) // not when the mouse entered the editor
        update();
}

void ToolPageWidgetItem::mousePressEvent(QMouseEvent *event)
{
    setCurrentColor(m_pressedColor);
    QWidget::mousePressEvent(event);
    Q_EMIT itemClicked();
}

void ToolPageWidgetItem::mouseReleaseEvent(QMouseEvent *event)
{
    QWidget::mouseReleaseEvent(event);
}

void ToolPageWidgetItem::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), m_currentColor);
    m_focus->paint(painter);
    painter.end();
    QWidget::paintEvent(event);
}

void ToolPageWidgetItem::resizeEvent(QResizeEvent *)
{
    if (m_label)
        m_label->setFixedWidth(labelWidth());
}

void ToolPageWidgetItem::showEvent(QShowEvent *event)
{
    updateWidget(false);
    QWidget::showEvent(event);
}

bool ToolPageWidgetItem::focusNextPrevChild(bool next)
{
    return m_focus->leaveDisabled() || QWidget::focusNextPrevChild(next);
}

/// Half the row, less where the row is so narrow that the editor would not fit beside it.
int ToolPageWidgetItem::labelWidth() const
{
    const int room = width() - minimumSizeHint().width() - (layout() ? layout()->spacing() : 0);
    return qMax(0, qMin(width() / 2 - 20, room));
}

QSize ToolPageWidgetItem::minimumSizeHint() const
{
    return QSize(RowMargins.left() + minimumEditorWidth(m_editor) + RowMargins.right(), RowHeight);
}
