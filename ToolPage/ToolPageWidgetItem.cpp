// SPDX-License-Identifier: MIT
#include "ToolPage/ToolPageWidgetItem.h"

#include <cmath>

#include <QAbstractItemView>
#include <QComboBox>
#include <QCursor>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QThread>

#include "ParamterWidget/TranslationTables.h"
#include "ParamterWnd/HostCore.h"
#include "ToolPage/NodeGuard.h"
#include "ToolPage/NodeNumbers.h"
#include "ToolPage/RowEditors.h"
#include "ToolPage/RowLabel.h"
#include "ToolPage/SwitchButton.h"

namespace {

constexpr int RowHeight = 40;
constexpr int EditorHeight = 34;
constexpr int EditorMinimumWidth = 150;
constexpr QMargins RowMargins(30, 3, 10, 3);
constexpr unsigned long SettleMs = 10; ///< what a device gets to apply a switch or an entry before it is read back

void logLine(const QString &message)
{
    HostCore::VLogInfo("ToolPageWidgetItem", message.toStdString(), 0);
}

/// The entry that a shown text stands for: itself unless it is a known Chinese text.
QString symbolicOf(const QString &text)
{
    const QString symbolic = zhTransEnMap.value(text);
    return symbolic.isEmpty() ? text : symbolic;
}

/// False for a spin box that the user leaves untouched.
bool takeUserInput(QWidget *spinBox)
{
    const bool edited = spinBox->property(RowEditors::Edited).toBool();
    spinBox->setProperty(RowEditors::Edited, false);
    return edited || spinBox->hasFocus();
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

ToolPageWidgetItem::ToolPageWidgetItem(QWidget *parent) : QWidget(parent) { }

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
    bool available = false;
    m_editor = getParameterWidget(m_node, available);
    if (m_hideWhenUnavailable && !available)
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
    if (m_editor)
        box->addWidget(m_editor);
    setFixedHeight(RowHeight);
}

void ToolPageWidgetItem::adoptEditor(QWidget *editor)
{
    m_editor = editor;
    if (!editor)
        return;
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
    QWidget *button = m_editor->findChild<SwitchButton *>();
    (button ? button : m_editor)->setAccessibleName(m_label->text());
}

QWidget *ToolPageWidgetItem::getParameterWidget(GenApi::INode *node, bool &available)
{
    if (!node)
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
    const RowEditor &kind = *RowEditors::find(type);
    guardRead([&] {
        if (!kind.accepts(node) || (kind.needsReadable && !GenApi::IsReadable(node))) {
            available = false;
            return;
        }
        if (m_editor) {
            kind.refresh(node, m_editor);
        } else {
            adoptEditor(kind.make(node, this));
            kind.connectTo(m_editor, this);
            if (m_laidOut)
                layOut();
        }
        m_editor->setEnabled(m_enabled && GenApi::IsWritable(node));
        available = true;
        m_readFault.clear();
    });
    return m_editor;
}

/// Logs what `read` throws, once per cause.
void ToolPageWidgetItem::guardRead(const std::function<void()> &read)
{
    const auto report = [this](const char *error) {
        const QString fault = QString::fromUtf8(error);
        if (fault == m_readFault)
            return;
        m_readFault = fault;
        const QString name = m_nodeName.isEmpty() ? m_names.value(0) : m_nodeName;
        logLine(QStringLiteral("Read %1 failed, message = %2").arg(name, fault));
    };
    guardNode(
        read, [&](const GenICam::GenericException &error) { report(error.GetDescription()); }, report);
}

void ToolPageWidgetItem::updateWidget(bool live)
{
    if (live) {
        showLiveValue();
        return;
    }
    bool available = false;
    getParameterWidget(m_node, available);
    if (m_node && m_hideWhenUnavailable)
        setVisible(available && m_showable);
}

void ToolPageWidgetItem::showLiveValue()
{
    auto *spinBox = qobject_cast<QDoubleSpinBox *>(m_editor);
    auto *comboBox = qobject_cast<QComboBox *>(m_editor);
    if (m_released || (!spinBox && !comboBox) || isInUse(m_editor))
        return;
    std::string value;
    if (HostCore::GetCameraNodeValue(deviceName.toStdString(), m_nodeName.toStdString(), value) != 0)
        return;
    const QString text = QString::fromStdString(value);
    const QSignalBlocker blocker(m_editor);
    if (comboBox) {
        comboBox->setCurrentText(text);
        return;
    }
    bool isNumber = false;
    const float number = text.toFloat(&isNumber);
    if (isNumber && std::isfinite(number))
        spinBox->setValue(static_cast<double>(number));
}

void ToolPageWidgetItem::setWidgetItemEnable(bool enable)
{
    if (!m_editor)
        return;
    m_editor->setEnabled(enable);
    m_enabled = enable;
}

void ToolPageWidgetItem::setWidgetItemVisible(bool visible)
{
    m_showable = visible;
    if (visible && m_node && m_hideWhenUnavailable)
        updateWidget(false);
    else
        setVisible(visible);
}

void ToolPageWidgetItem::releaseNode()
{
    setWidgetItemEnable(false);
    m_node = nullptr;
    m_released = true;
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

void ToolPageWidgetItem::setCurrentValue()
{
    attempt([this] {
        const GenApi::CFloatPtr number(m_node);
        const auto *spinBox = qobject_cast<QDoubleSpinBox *>(m_editor);
        if (spinBox && m_node->GetPrincipalInterfaceType() == GenApi::intfIFloat && GenApi::IsReadable(m_node))
            number->SetValue(spinBox->value(), true);
    });
}

bool ToolPageWidgetItem::attempt(const std::function<void()> &write, const std::function<void()> &rollBack)
{
    const auto refused = [&](const GenICam::GenericException &error) {
        logLine(QStringLiteral("Set %1 value failed, message = %2")
                    .arg(m_nodeName, QString::fromUtf8(error.GetDescription())));
        if (rollBack)
            rollBack();
    };
    return guardNode(write, refused, [](const char *error) { logLine(QString::fromUtf8(error)); });
}

/// Writes a spin box's value with `write`, which returns the device's value after the write.
template <class SpinBox, class Value>
void ToolPageWidgetItem::commit(SpinBox *spinBox, Value (*write)(GenApi::INode *node, Value value),
                                Value (*toPreValue)(const QVariant &preValue))
{
    if (!spinBox || !takeUserInput(spinBox))
        return;
    const Value value = spinBox->value();
    QSignalBlocker blocker(spinBox); // losing the focus finishes editing once more
    const auto restore = [&] { spinBox->setValue(toPreValue(spinBox->property(RowEditors::PreValue))); };
    if (!attempt([&] { spinBox->setValue(write(m_node, value)); }, restore))
        return;
    spinBox->clearFocus();
    spinBox->setProperty(RowEditors::PreValue, value);
    blocker.unblock();
    Q_EMIT valueChanged(QVariant());
}

void ToolPageWidgetItem::onIntParamChanged()
{
    commit<QSpinBox, int>(
        qobject_cast<QSpinBox *>(sender()),
        [](GenApi::INode *node, int value) {
            const GenApi::CIntegerPtr integer(node);
            integer->SetValue(value, true);
            return NodeNumbers::low32(integer->GetValue(true, true));
        },
        [](const QVariant &preValue) { return preValue.toInt(); });
}

void ToolPageWidgetItem::onFloatParamChanged()
{
    commit<QDoubleSpinBox, double>(
        qobject_cast<QDoubleSpinBox *>(sender()),
        [](GenApi::INode *node, double value) {
            const GenApi::CFloatPtr number(node);
            number->SetValue(value, true);
            return NodeNumbers::finite(number->GetValue(true, true));
        },
        [](const QVariant &preValue) { return static_cast<double>(preValue.toFloat()); });
}

void ToolPageWidgetItem::onBoolParamChanged()
{
    const auto *button = qobject_cast<SwitchButton *>(sender());
    const bool written = attempt([&] {
        const GenApi::CBooleanPtr boolean(m_node);
        if (!button || !boolean.IsValid())
            return;
        boolean->SetValue(button->isOn(), true);
        QThread::msleep(SettleMs);
        boolean->GetValue(true, true);
    });
    if (written)
        Q_EMIT valueChanged(QVariant());
}

void ToolPageWidgetItem::onEnumParamChanged(const QString &text)
{
    auto *comboBox = qobject_cast<QComboBox *>(sender());
    const bool written = attempt([&] {
        const GenApi::CEnumerationPtr enumeration(m_node);
        enumeration->FromString(symbolicOf(text).toUtf8().constData(), true);
        QThread::msleep(SettleMs);
        enumeration->GetIntValue(true, true);
    });
    if (!written)
        return;
    if (comboBox)
        comboBox->clearFocus();
    Q_EMIT valueChanged(QVariant());
}

void ToolPageWidgetItem::onCommandParamChanged()
{
    attempt([this] { GenApi::CCommandPtr(m_node)->Execute(true); });
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
    QPainter(this).fillRect(event->rect(), m_currentColor);
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
