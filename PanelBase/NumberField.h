// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>

#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>

#include "PanelBase/NumberInput.h"
#include "PanelBase/NumberSteps.h"
#include "PanelBase/NumberText.h"

/// A QSpinBox or QDoubleSpinBox whose edit is a NumberInput. Number, double or qint64, is what it stands for: numbers
/// with more digits than the box shows are kept as they were loaded, typed or stepped to.
///
/// Keyboard tracking is off: valueChanged() is not emitted for a number that is still being typed. Exact range and
/// value hold until QSpinBox's own setters replace them.
template <class Base, class Number>
class NumberField : public Base, public NumberInput
{
public:
    using Shown = decltype(std::declval<const Base &>().value());

    explicit NumberField(QWidget *parent = nullptr, Beyond beyond = Beyond::Refused)
        : Base(parent), NumberInput(this, beyond)
    {
        Base::setKeyboardTracking(false);
        Base::setGroupSeparatorShown(false);
        Base::setContextMenuPolicy(Qt::NoContextMenu);
        Base::setValue(Base::value()); // writes the text, without which the field would look typed in
        QObject::connect(this, qOverload<Shown>(&Base::valueChanged), this, [this] {
            if (hasInput())
                watch();
        });
    }

    /// Emits nothing, and leaves text that is being typed alone.
    void setLimits(Number minimum, Number maximum)
    {
        const QSignalBlocker blocker(this);
        const bool wasUntouched = !hasInput();
        maximum = std::max(minimum, maximum);
        undisturbed(isTyped(), [&] { Base::setRange(static_cast<Shown>(minimum), static_cast<Shown>(maximum)); });
        m_minimum = {minimum, Base::minimum()};
        m_maximum = {maximum, Base::maximum()};
        if (wasUntouched)
            settle();
    }
    /// Steps go along minimum + n * increment, or by the single step if the increment is 0. Text that is being typed is
    /// left alone.
    void setSteps(Shown singleStep, Number increment = 0)
    {
        undisturbed(isTyped(), [&] { Base::setSingleStep(singleStep); });
        m_increment = increment;
    }

    /// Shows a number, which must be inside the limits, and forgets the input. Emits nothing.
    void load(Number number) { load(number, static_cast<Shown>(number)); }
    /// The same, for a number that the box cannot hold.
    void load(Number number, Shown shown)
    {
        hold(number, shown);
        settle();
    }
    /// Shows what a device has, in limits widened to hold it. With input the field takes over the limits alone.
    void refresh(Number minimum, Number maximum, Number number, Shown shown)
    {
        if (hasInput())
            return setLimits(minimum, maximum);
        setLimits(std::min(minimum, converted(shown)), std::max(maximum, converted(shown)));
        load(number, shown);
    }
    /// Whether the box holds the number that was loaded.
    bool holdsLoaded() const { return m_isHeld; }

    Number lowest() const { return m_minimum.of(Base::minimum()); }
    Number highest() const { return m_maximum.of(Base::maximum()); }
    /// What the field stands for; text that is being typed does not count.
    Number number() const { return m_held.of(Base::value()); }
    /// The number that is typed, or that the field stands for; nothing if the text is no number inside the limits.
    std::optional<Number> entered() const
    {
        const std::optional<Number> typed = isTyped() ? parsed() : number();
        return typed && (!isTyped() || isInside(*typed)) ? typed : std::nullopt;
    }

    void giveBack() override { load(m_loaded.number, m_loaded.shown); }
    void settle() override
    {
        m_loaded = {number(), Base::value()};
        if constexpr (std::is_floating_point_v<Number>)
            m_isHeld = std::isfinite(m_loaded.number);
        else if constexpr (std::is_integral_v<Shown>)
            m_isHeld = m_loaded.shown == m_loaded.number;
        forget();
    }
    QString refusal() const override
    {
        const auto kind = std::is_integral_v<Number> ? QLatin1String("integer") : QLatin1String("number");
        return entered() ? QString()
                         : QStringLiteral("\"%1\" is no %2 from %3 to %4")
                               .arg(Base::text(), kind, NumberText::limit(lowest()), NumberText::limit(highest()));
    }

    void stepBy(int steps) override
    {
        const Number before = number();
        const Number from = isTyped() ? parsed().value_or(before) : before;
        const bool onGrid = m_increment > 0;
        const Number step = onGrid ? m_increment : converted(Base::singleStep());
        const Number to = NumberSteps<Number>{lowest(), highest(), step, onGrid}.from(from, steps);
        if (to == before && !isTyped())
            return;
        hold(to, static_cast<Shown>(to));
        if (!onGrid && std::is_floating_point_v<Number>)
            m_held.number = std::clamp(converted(m_held.shown), lowest(), highest()); // with the digits that are shown
        line()->setModified(false);
        noteStep();
        tellChange(before);
        Base::selectAll();
    }

    QValidator::State validate(QString &text, int &) const override
    {
        const std::optional<Number> typed = NumberText::parse<Number>(text, Base::locale());
        return isUndisturbed() || (typed && isInside(*typed)) ? QValidator::Acceptable : QValidator::Intermediate;
    }
    void fixup(QString &) const override { }
    Shown valueFromText(const QString &text) const override
    {
        const std::optional<Number> typed = NumberText::parse<Number>(text, Base::locale());
        return isUndisturbed() || !typed ? Base::value() : static_cast<Shown>(*typed);
    }
    QString textFromValue(Shown value) const override { return isUndisturbed() ? line()->text() : textOf(value); }

protected:
    bool event(QEvent *event) override { return process(event); }
    typename Base::StepEnabled stepEnabled() const override
    {
        typename Base::StepEnabled enabled = Base::StepNone;
        if (Base::isReadOnly() || (!m_isHeld && !hasInput()))
            return enabled;
        enabled.setFlag(Base::StepUpEnabled, number() < highest() || isTyped());
        enabled.setFlag(Base::StepDownEnabled, number() > lowest() || isTyped());
        return enabled;
    }
    virtual QString textOf(Shown value) const { return Base::textFromValue(value); }
    /// The number behind a value of the box.
    Number exact(Shown value) const
    {
        return static_cast<Shown>(m_held.number) == value ? m_held.number : converted(value);
    }

private:
    /// A number, and what the box has made of it.
    struct Held
    {
        Number number;
        Shown shown;
        Number of(Shown now) const { return now == shown ? number : converted(now); }
    };

    /// The nearest one; 2^63 itself is beyond 64 bits.
    template <class Other>
    static Number converted(Other other)
    {
        if constexpr (std::is_integral_v<Number> && std::is_floating_point_v<Other>) {
            constexpr Other Beyond = 9223372036854775808.0;
            if (other >= Beyond)
                return std::numeric_limits<Number>::max();
            return other <= -Beyond ? std::numeric_limits<Number>::min() : static_cast<Number>(other);
        } else {
            return static_cast<Number>(other);
        }
    }

    bool handle(QEvent *event) override { return Base::event(event); }
    bool take() override
    {
        if (!isTyped())
            return true;
        const std::optional<Number> typed = parsed();
        if (!typed)
            return false;
        const Number before = number();
        const Number now = std::clamp(*typed, lowest(), highest());
        hold(now, static_cast<Shown>(now));
        tellChange(before);
        return true;
    }
    bool showsLoaded() const override { return Base::value() == m_loaded.shown; }
    QString shownText() const override { return textOf(Base::value()); }

    std::optional<Number> parsed() const { return NumberText::parse<Number>(Base::text(), Base::locale()); }
    bool isInside(Number value) const { return value >= lowest() && value <= highest(); }
    void hold(Number number, Shown shown)
    {
        const QSignalBlocker blocker(this);
        m_held = {number, shown};
        Base::setValue(shown);
        m_held.shown = Base::value();
    }
    void tellChange(Number before)
    {
        if (number() == before)
            return;
        Q_EMIT Base::textChanged(Base::text());
        Q_EMIT Base::valueChanged(Base::value());
    }

    Held m_minimum{converted(Base::minimum()), Base::minimum()};
    Held m_maximum{converted(Base::maximum()), Base::maximum()};
    Held m_held{converted(Base::value()), Base::value()};
    Held m_loaded = m_held;
    Number m_increment = 0;
    bool m_isHeld = true;
};

using IntegerField = NumberField<QSpinBox, qint64>;
using RealField = NumberField<QDoubleSpinBox, double>;
