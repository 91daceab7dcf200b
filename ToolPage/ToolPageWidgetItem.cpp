// SPDX-License-Identifier: MIT
#include "ToolPage/ToolPageWidgetItem.h"

#include <QComboBox>
#include <QCursor>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>

#include "PanelBase/HostCall.h"
#include "ToolPage/EditorFocus.h"
#include "ToolPage/RowEditors.h"
#include "ToolPage/SwitchButton.h"

namespace {

constexpr QColor NormalColor(240, 240, 240);
constexpr QColor HoverColor(216, 216, 216);
constexpr QColor PressedColor(191, 231, 213);

} // namespace

ToolPageWidgetItem::ToolPageWidgetItem(QWidget *parent)
    : QWidget(parent), m_focus(new EditorFocus(this)), m_face(this, m_focus), m_control(this, &m_feature, &m_face),
      m_writer(&m_feature, &m_control, m_focus), m_turn(this, [this] { refresh(); }),
      m_liveTurn(this, [this] { showLiveValue(); }), m_color(NormalColor)
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

void ToolPageWidgetItem::setReading(DeviceReading *reading)
{
    m_feature.setReading(reading);
    m_turn.setReading(reading);
    m_liveTurn.setReading(reading);
}

void ToolPageWidgetItem::setItemInfo(const QStringList &names, const QStringList &descriptions, GenApi::INode *node,
                                     bool hideWhenUnavailable)
{
    m_face.createLabel();
    setItemInfo(names, descriptions);
    m_hideWhenUnavailable = hideWhenUnavailable;
    m_feature.bind(node);
    m_available = false;
    if (!m_turn.isNow() || !getParameterWidget(m_feature.node(), m_available))
        m_control.setEditor(nullptr);
    if (m_hideWhenUnavailable && !m_available)
        hide();
    m_face.layOut();
}

void ToolPageWidgetItem::setItemInfo(const QStringList &names, const QStringList &descriptions, QWidget *widget)
{
    m_face.createLabel();
    setItemInfo(names, descriptions);
    auto *button = qobject_cast<SwitchButton *>(widget);
    m_control.setEditor(button ? RowEditors::switchContainer(button, this) : widget);
    m_face.layOut();
}

void ToolPageWidgetItem::setItemInfo(const QStringList &names, const QStringList &descriptions)
{
    m_face.setNames(names);
    m_feature.setLabel(names.value(0));
    m_descriptions = descriptions;
}

QWidget *ToolPageWidgetItem::getParameterWidget(GenApi::INode *node, bool &available)
{
    if (!node || m_feature.isReleased())
        return nullptr;
    const GenApi::EInterfaceType type = m_feature.identify(node);
    return RowEditors::find(type) ? m_control.show(type, node, available) : nullptr;
}

QWidget *ToolPageWidgetItem::getIntParamWidget(GenApi::INode *node, bool &available)
{
    return m_control.show(GenApi::intfIInteger, node, available);
}

QWidget *ToolPageWidgetItem::getBoolParamWidget(GenApi::INode *node, bool &available)
{
    return m_control.show(GenApi::intfIBoolean, node, available);
}

QWidget *ToolPageWidgetItem::getFloatParamWidget(GenApi::INode *node, bool &available)
{
    return m_control.show(GenApi::intfIFloat, node, available);
}

QWidget *ToolPageWidgetItem::getEnumParamWidget(GenApi::INode *node, bool &available)
{
    return m_control.show(GenApi::intfIEnumeration, node, available);
}

QWidget *ToolPageWidgetItem::getCommandParamWidget(GenApi::INode *node, bool &available)
{
    return m_control.show(GenApi::intfICommand, node, available);
}

void ToolPageWidgetItem::updateWidget(bool live)
{
    if (!live && m_feature.node())
        m_turn.take();
    else if (live && m_control.takesLiveValue())
        m_liveTurn.take();
    if (m_feature.isSilent())
        showSilence();
}

void ToolPageWidgetItem::refresh()
{
    const bool wasAvailable = m_available;
    getParameterWidget(m_feature.node(), m_available);
    hideUnlessAvailable();
    if (m_available != wasAvailable)
        Q_EMIT availabilityChanged();
}

void ToolPageWidgetItem::showLiveValue()
{
    if (!m_control.takesLiveValue()) // the user has come into it while it waited
        return;
    DeviceReading *const reading = m_feature.reading();
    std::string value;
    bool isRead = false;
    const auto read = [&] {
        isRead = callHost<HostCore::GetCameraNodeValue>(RowFeature::Module, deviceName.toStdString(),
                                                        m_feature.name().toStdString(), value)
            == 0;
    };
    reading ? reading->read(m_feature.node(), read) : read();
    if (m_feature.isSilent())
        return;
    if (m_feature.node()) {
        m_control.showAccess(isRead, m_available);
        hideUnlessAvailable();
    }
    if (isRead)
        m_control.showLiveValue(QString::fromStdString(value));
}

void ToolPageWidgetItem::hideUnlessAvailable()
{
    if (m_feature.node() && m_hideWhenUnavailable)
        showRow(m_available && m_showable);
}

void ToolPageWidgetItem::showRow(bool visible)
{
    if (!visible)
        m_control.dropInput();
    setVisible(visible);
}

void ToolPageWidgetItem::setWidgetItemEnable(bool enable)
{
    m_control.setEnabled(enable);
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
    m_turn.cancel();
    m_liveTurn.cancel();
    m_feature.release();
    m_control.setEnabled(false);
}

void ToolPageWidgetItem::showSilence()
{
    m_control.showSilence();
}

void ToolPageWidgetItem::setLanguage(int language)
{
    m_face.setLanguage(language);
    auto *button = qobject_cast<QPushButton *>(m_control.editor());
    if (button && !button->text().isEmpty())
        button->setText(tr("Execute"));
}

QString ToolPageWidgetItem::getDescription(int language) const
{
    return m_descriptions.value(language);
}

void ToolPageWidgetItem::setCurrentColor(const QColor &color)
{
    m_color = color;
    update();
}

void ToolPageWidgetItem::setCurrentValue()
{
    m_writer.writeShownReal();
}

void ToolPageWidgetItem::onIntParamChanged()
{
    if (m_writer.writeInteger(sender()))
        Q_EMIT valueChanged(QVariant());
}

void ToolPageWidgetItem::onFloatParamChanged()
{
    if (m_writer.writeReal(sender()))
        Q_EMIT valueChanged(QVariant());
}

void ToolPageWidgetItem::onBoolParamChanged()
{
    if (m_writer.writeSwitch(qobject_cast<SwitchButton *>(sender())))
        Q_EMIT valueChanged(QVariant());
}

void ToolPageWidgetItem::onEnumParamChanged(const QString &text)
{
    if (m_writer.writeEntry(qobject_cast<QComboBox *>(sender()), text))
        Q_EMIT valueChanged(QVariant());
}

void ToolPageWidgetItem::onCommandParamChanged()
{
    if (m_writer.execute())
        Q_EMIT commandExecuted();
}

void ToolPageWidgetItem::enterEvent(EnterEvent *)
{
    setCurrentColor(HoverColor);
}

void ToolPageWidgetItem::leaveEvent(QEvent *)
{
    m_color = NormalColor;
    if (!rect().contains(mapFromGlobal(QCursor::pos()))) // not when the mouse entered the editor
        update();
}

void ToolPageWidgetItem::mousePressEvent(QMouseEvent *event)
{
    setCurrentColor(PressedColor);
    QWidget::mousePressEvent(event);
    Q_EMIT itemClicked();
}

void ToolPageWidgetItem::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), m_color);
    m_focus->paint(painter);
    painter.end();
    QWidget::paintEvent(event);
}

void ToolPageWidgetItem::resizeEvent(QResizeEvent *)
{
    m_face.fitLabel();
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

QSize ToolPageWidgetItem::minimumSizeHint() const
{
    return m_face.minimumSize();
}
