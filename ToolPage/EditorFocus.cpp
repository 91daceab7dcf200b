// SPDX-License-Identifier: MIT
#include "ToolPage/EditorFocus.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>

#include "PanelBase/NumberInput.h"
#include "PanelBase/StyleSheets.h"
#include "ToolPage/CComboBox.h"
#include "ToolPage/SwitchButton.h"

namespace {

constexpr int FrameWidth = 2; // pixels, of the three between an editor and the row's edge
constexpr qreal FrameRadius = 3; // pixels

bool isTabStop(const QWidget *widget)
{
    return (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy();
}

bool isByKeyboard(const QFocusEvent &event)
{
    return event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason
        || event.reason() == Qt::ShortcutFocusReason;
}

/// The scroll area that shows the widget, null if none does.
QScrollArea *scrollAreaOf(const QWidget *widget)
{
    QScrollArea *area = nullptr;
    for (QWidget *parent = widget->parentWidget(); parent && !area; parent = parent->parentWidget())
        area = qobject_cast<QScrollArea *>(parent);
    return area;
}

/// Lets a widget take the focus while it is being ordered: QWidget::setTabOrder() looks past others.
class Focusable
{
public:
    explicit Focusable(QWidget *widget) : m_widget(widget), m_policy(widget->focusPolicy())
    {
        m_widget->setFocusPolicy(Qt::StrongFocus);
    }
    ~Focusable() { m_widget->setFocusPolicy(m_policy); }
    Focusable(const Focusable &) = delete;
    Focusable &operator=(const Focusable &) = delete;

private:
    QWidget *m_widget;
    Qt::FocusPolicy m_policy;
};

} // namespace

EditorFocus::EditorFocus(QWidget *row) : QObject(row), m_row(row) { }

void EditorFocus::watch(QWidget *editor)
{
    QList<QWidget *> candidates = editor->findChildren<QWidget *>();
    candidates.prepend(editor);
    for (QWidget *candidate : std::as_const(candidates)) {
        if (!isTabStop(candidate) || candidate->window() != m_row->window() || m_stops.contains(candidate))
            continue;
        m_stops.append(candidate);
        candidate->setFocusPolicy(Qt::StrongFocus); // the wheel gives no focus
        candidate->installEventFilter(this);
        connect(candidate, &QObject::destroyed, this, [this, candidate] { m_stops.removeOne(candidate); });
    }
    arrange();
}

void EditorFocus::arrange()
{
    const Focusable row(m_row);
    const Focusable window(m_row->window()); // else the last widget counts as the one before the first
    QWidget *previous = m_row;
    for (QWidget *stop : std::as_const(m_stops)) {
        QWidget::setTabOrder(previous, stop);
        previous = stop;
    }
    QWidget::setTabOrder(previous, m_row);
}

void EditorFocus::leave(QWidget *editor)
{
    const NumberInput *const input = NumberInput::of(editor);
    if (editor->hasFocus() && !(input && input->keepsFocus()))
        m_row->setFocus(Qt::OtherFocusReason);
}

bool EditorFocus::leaveDisabled()
{
    for (QWidget *stop : std::as_const(m_stops)) {
        if (stop->hasFocus() && !stop->isEnabled()) {
            m_row->setFocus(Qt::OtherFocusReason);
            return true;
        }
    }
    return false;
}

void EditorFocus::paint(QPainter &painter) const
{
    for (const QWidget *stop : m_stops) {
        if (!stop->hasFocus() || qobject_cast<const SwitchButton *>(stop)) // a switch frames itself
            continue;
        const QRectF edge(stop->mapTo(m_row, QPoint(0, 0)), stop->size());
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(StyleSheets::FocusColor, FrameWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(edge.marginsAdded(QMarginsF() + FrameWidth / 2.0), FrameRadius, FrameRadius);
    }
}

bool EditorFocus::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        enter(*static_cast<QFocusEvent *>(event));
        return false;
    case QEvent::FocusOut:
        m_row->update();
        return false;
    case QEvent::ShortcutOverride: // Escape may be a shortcut of the window
    case QEvent::KeyPress:
        return cancelEdit(static_cast<QWidget *>(watched), *static_cast<QKeyEvent *>(event));
    case QEvent::Wheel: // scrolling over the page changes no value
        if (qobject_cast<CComboBox *>(watched)) // takes the wheel and does nothing
            return false;
        event->setAccepted(static_cast<QWidget *>(watched)->hasFocus());
        return !event->isAccepted();
    default:
        return false;
    }
}

void EditorFocus::enter(const QFocusEvent &event)
{
    m_row->update();
    if (isByKeyboard(event)) {
        if (QScrollArea *area = scrollAreaOf(m_row))
            area->ensureWidgetVisible(m_row, 0, 0);
    }
    if (event.reason() != Qt::PopupFocusReason) // the list of a combo box closed
        Q_EMIT gained();
}

bool EditorFocus::cancelEdit(QWidget *editor, QKeyEvent &event)
{
    NumberInput *const input = NumberInput::of(editor);
    if (event.key() != Qt::Key_Escape || !input || !input->hasInput())
        return false;
    event.accept();
    if (event.type() == QEvent::KeyPress) {
        input->giveBack();
        Q_EMIT editCancelled();
    }
    return true;
}
