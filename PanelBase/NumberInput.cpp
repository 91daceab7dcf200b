// SPDX-License-Identifier: MIT
#include "PanelBase/NumberInput.h"

#include <QAbstractSpinBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QSignalBlocker>

namespace {

bool isArrow(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

} // namespace

NumberInput *NumberInput::of(QObject *field)
{
    return dynamic_cast<NumberInput *>(field);
}

NumberInput::NumberInput(QAbstractSpinBox *box, Beyond beyond)
    : m_box(box), m_line(box->findChild<QLineEdit *>()), m_beyond(beyond),
      m_press(box, [this] { finish(Ending::Press); })
{
    QObject::connect(m_line, &QLineEdit::textEdited, &m_press, &PressElsewhere::start);
}

NumberInput::~NumberInput() = default;

bool NumberInput::hasInput() const
{
    return m_isStepped || isTyped() || !showsLoaded();
}

bool NumberInput::isTyped() const
{
    return m_line->isModified() || m_line->text() != shownText();
}

void NumberInput::drop()
{
    if (m_beyond == Beyond::Nearest && !isTyped())
        settle();
    else if (hasInput())
        giveBack();
}

void NumberInput::noteStep()
{
    m_isStepped = true;
    watch();
}

void NumberInput::watch()
{
    m_press.start();
}

void NumberInput::forget()
{
    m_isStepped = false;
    m_line->setModified(false);
    m_press.stop();
}

bool NumberInput::process(QEvent *event)
{
    const QPointer<QAbstractSpinBox> box(m_box);
    bool handled = false;
    switch (event->type()) {
    case QEvent::FocusOut:
    case QEvent::Hide:
    case QEvent::Show:
    case QEvent::Close:
    case QEvent::ActivationChange:
    case QEvent::LocaleChange: {
        const QSignalBlocker blocker(m_box);
        // In another locale the text of a number is another one, so the comparison would see input where none is.
        const bool isKept = event->type() == QEvent::LocaleChange ? m_line->isModified() : isTyped();
        undisturbed(isKept, [&] { handled = handle(event); });
        return handled;
    }
    case QEvent::EnabledChange:
        handled = handle(event);
        if (m_box->testAttribute(Qt::WA_ForceDisabled)) // not when all of the panel or the window is, for a while
            drop();
        return handled;
    case QEvent::KeyPress:
        return processKey(*static_cast<QKeyEvent *>(event)) || handle(event);
    default:
        handled = handle(event);
        if (box && endsStep(*event))
            finish(Ending::Arrow);
        return handled;
    }
}

/// True if the box is done with the key.
bool NumberInput::processKey(QKeyEvent &event)
{
    const QPointer<QAbstractSpinBox> box(m_box);
    switch (event.key()) {
    case Qt::Key_Enter:
    case Qt::Key_Return:
        finish(Ending::Enter);
        if (box)
            m_box->selectAll();
        event.ignore(); // a dialog may have a default button
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (!(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)))
            finish(Ending::Tab);
        return !box;
    default:
        return false;
    }
}

/// A key or a button that is held repeats its step; the last one counts.
bool NumberInput::endsStep(const QEvent &event) const
{
    if (!m_isStepped)
        return false;
    if (event.type() == QEvent::MouseButtonRelease)
        return true;
    const auto &key = static_cast<const QKeyEvent &>(event);
    return event.type() == QEvent::KeyRelease && isArrow(key.key()) && !key.isAutoRepeat();
}

void NumberInput::finish(Ending ending)
{
    const bool isOver = ending != Ending::Enter && !hasInput();
    if (isOver || m_ending != Ending::None || !m_box->isEnabled())
        return;
    const QPointer<QAbstractSpinBox> box(m_box);
    m_ending = ending;
    const bool isTaken = m_beyond == Beyond::Refused || take();
    if (isTaken)
        Q_EMIT m_box->editingFinished();
    else
        refuse();
    if (!box)
        return;
    m_ending = Ending::None;
    if (isTaken && m_beyond == Beyond::Nearest)
        settle();
}

void NumberInput::refuse()
{
    const QString reason = refusal();
    giveBack();
    if (onRefused)
        onRefused(reason);
}
