// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QString>

#include "PanelBase/PressElsewhere.h"

class QAbstractSpinBox;
class QEvent;
class QKeyEvent;
class QLineEdit;
class QObject;

/// The edit in a number field: whether there is one, and when it ends. Both are decided here alone; NumberField is the
/// widget around it.
///
/// Anything can be typed. An edit ends by Enter, by Tab, by the release of an arrow (of the box, or of the keyboard),
/// or by a press elsewhere in the panel; then editingFinished() is emitted. Losing the focus, being hidden, another
/// window and a refresh end nothing and leave the text alone. A field that is disabled itself gives back what was
/// loaded.
class NumberInput
{
public:
    /// What becomes of a number outside of the limits: whoever takes editingFinished() refuses it, or the nearest limit
    /// takes its place before the edit ends.
    enum class Beyond { Refused, Nearest };

    /// Null for what is no number field.
    static NumberInput *of(QObject *field);
    NumberInput(const NumberInput &) = delete;
    NumberInput &operator=(const NumberInput &) = delete;

    /// Whether the field was typed in or stepped since it was loaded, or holds another value, however it got there.
    bool hasInput() const;
    /// The same, or Enter is being pressed.
    bool isWanted() const { return m_ending == Ending::Enter || hasInput(); }
    /// Whether the edit is being ended by an arrow or by Tab: the focus stays, or goes its own way.
    bool keepsFocus() const { return m_ending == Ending::Arrow || m_ending == Ending::Tab; }
    /// Shows what was loaded and forgets the input, without a signal.
    virtual void giveBack() = 0;
    /// The same for a field that can no longer be edited. One that takes the nearest limit keeps a value that it holds
    /// already and drops the typed text alone.
    void drop();
    /// What the field holds counts as loaded from now on.
    virtual void settle() = 0;
    /// Why the text cannot be taken; empty if it can.
    virtual QString refusal() const = 0;

    /// Called when a field that takes the nearest limit has given back what it had, because the text is no number.
    std::function<void(const QString &reason)> onRefused;

protected:
    NumberInput(QAbstractSpinBox *box, Beyond beyond);
    virtual ~NumberInput();

    /// To be called with every event of the field, instead of the spin box's own handling.
    bool process(QEvent *event);
    /// The spin box's own handling.
    virtual bool handle(QEvent *event) = 0;
    /// Makes the number in the text, or its nearest limit, the field's value; false if the text is no number.
    virtual bool take() = 0;
    virtual bool showsLoaded() const = 0;
    /// The text of what the field holds.
    virtual QString shownText() const = 0;

    bool isTyped() const;
    QLineEdit *line() const { return m_line; }
    /// While this is true the field does not read its text, nor replace it.
    bool isUndisturbed() const { return m_isUndisturbed; }
    void noteStep();
    void watch();
    void forget();
    template <class Action>
    void undisturbed(bool isKept, Action action)
    {
        const bool before = m_isUndisturbed;
        m_isUndisturbed = before || isKept;
        action();
        m_isUndisturbed = before;
    }

private:
    enum class Ending { None, Enter, Tab, Arrow, Press };

    bool processKey(QKeyEvent &event);
    bool endsStep(const QEvent &event) const;
    void finish(Ending ending);
    void refuse();

    QAbstractSpinBox *m_box;
    QLineEdit *m_line;
    Beyond m_beyond;
    PressElsewhere m_press;
    Ending m_ending = Ending::None;
    bool m_isStepped = false;
    bool m_isUndisturbed = false;
};
