// SPDX-License-Identifier: MIT
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QVBoxLayout>

#include <cfloat>
#include <functional>

#include "FeatureTree/IntegerSpinBox.h"
#include "PanelBase/NumberField.h"
#include "support/Input.h"
#include "support/Rows.h"

namespace {

class Panel : public QWidget, public EditScope
{ };

QPoint arrowOf(const QAbstractSpinBox *box, QStyle::SubControl arrow)
{
    QStyleOptionSpinBox option;
    option.initFrom(box);
    option.subControls = QStyle::SC_All;
    option.buttonSymbols = box->buttonSymbols();
    option.stepEnabled = QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled;
    return box->style()->subControlRect(QStyle::CC_SpinBox, &option, arrow, box).center();
}

/// A window of a host, with a panel in it.
struct Window
{
    explicit Window(QAbstractSpinBox *box) : field(box)
    {
        auto *whole = new QVBoxLayout(&window);
        auto *panelLayout = new QVBoxLayout(&panel);
        button.setFocusPolicy(Qt::NoFocus);
        for (QWidget *widget : std::initializer_list<QWidget *>{field, &line, &button, &label})
            panelLayout->addWidget(widget);
        whole->addWidget(&panel);
        whole->addWidget(&beside);
        isActive = activate(window);
        field->setFocus();
        QObject::connect(field, &QAbstractSpinBox::editingFinished, &window, [box] { // as an owner takes the number
            box->interpretText();
            NumberInput::of(box)->settle();
        });
    }
    void typeIn(const char *text)
    {
        field->selectAll();
        QTest::keyClicks(field, QLatin1String(text));
    }
    void key(int code) { QTest::keyClick(field, Qt::Key(code)); }
    void press(QWidget *widget, int place = 2) { QTest::mouseClick(widget, Qt::LeftButton, {}, {place, place}); }
    static void blink(QWidget &widget) { widget.hide(), widget.show(); }
    NumberInput *input() const { return NumberInput::of(field); }

    QWidget window;
    QAbstractSpinBox *field;
    Panel panel;
    QLineEdit line;
    QPushButton button;
    QLabel label;
    QLineEdit beside;
    bool isActive = false;
};

/// Gives the focus to another window and, when that closes, back.
void visitAnotherWindow(Window &)
{
    QWidget other;
    QVERIFY(activate(other));
}

void openPopup(Window &window)
{
    QWidget popup(&window.window, Qt::Popup);
    popup.show();
    popup.setFocus();
}

void lockPanel(Window &window)
{
    window.panel.setEnabled(false);
    window.panel.setEnabled(true);
}

const struct Leaving
{
    const char *name;
    void (*leave)(Window &window);
    bool ends;
} Leavings[] = {
    {"Enter", [](Window &window) { window.key(Qt::Key_Enter); }, true},
    {"Return", [](Window &window) { window.key(Qt::Key_Return); }, true},
    {"Tab", [](Window &window) { window.key(Qt::Key_Tab); }, true},
    {"Backtab", [](Window &window) { window.key(Qt::Key_Backtab); }, true},
    {"press on a line", [](Window &window) { window.press(&window.line); }, true},
    {"press on a button", [](Window &window) { window.press(&window.button); }, true},
    {"press on a label", [](Window &window) { window.press(&window.label); }, true},
    {"press on the panel", [](Window &window) { window.press(&window.panel); }, true},
    {"press beside the panel", [](Window &window) { window.press(&window.beside); }, false},
    {"press in the field", [](Window &window) { window.press(window.field->findChild<QLineEdit *>()); }, false},
    {"press on its frame", [](Window &window) { window.press(window.field, 0); }, false},
    {"focus taken", [](Window &window) { window.line.setFocus(); }, false},
    {"another window", visitAnotherWindow, false},
    {"panel hidden", [](Window &window) { Window::blink(window.panel); }, false},
    {"window hidden", [](Window &window) { Window::blink(window.window); }, false},
    {"panel locked", lockPanel, false},
    {"popup", openPopup, false},
    {"locale", [](Window &window) { window.window.setLocale(QLocale(QLocale::German)); }, false},
};

template <class Field>
QAbstractSpinBox *makeField()
{
    auto *field = new Field;
    field->setLimits(0, 99999);
    field->load(48);
    return field;
}

constexpr struct Kind
{
    const char *name;
    QAbstractSpinBox *(*make)();
} Kinds[] = {
    {"integer", makeField<IntegerField>}, {"real", makeField<RealField>}, {"64 bits", makeField<IntegerSpinBox>}};

} // namespace

class tst_NumberField : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    /// Half a number is taken by those ways alone that a person ends an edit by; all others leave it as it is.
    void leaving()
    {
        for (const Kind &row : Kinds) {
            const InRow at(row.name);
            for (const Leaving &way : Leavings) {
                for (const bool typed : {true, false}) {
                    Window window(row.make());
                    QVERIFY(window.isActive);
                    QSignalSpy ended(window.field, &QAbstractSpinBox::editingFinished);
                    if (typed)
                        window.typeIn("123");
                    way.leave(window);
                    const QByteArray name(way.name);
                    const bool isEnter = name == "Enter" || name == "Return";
                    QVERIFY2(ended.count() == ((typed && way.ends) || isEnter ? 1 : 0), way.name);
                    QVERIFY2(window.input()->hasInput() == (typed && !way.ends), way.name);
                    QVERIFY2(!typed || way.ends || window.field->text() == QLatin1String("123"), way.name);
                }
            }
        }
    }

    /// The cursor stays, too, and the next key goes on.
    void unfinishedInputSurvives()
    {
        for (const Kind &row : Kinds) {
            const InRow at(row.name);
            Window window(row.make());
            window.typeIn("13");
            window.key(Qt::Key_Left);
            visitAnotherWindow(window);
            QApplication::setActiveWindow(&window.window);
            QVERIFY(window.field->hasFocus());
            Window::blink(window.window);
            QApplication::setActiveWindow(&window.window);
            QVERIFY(window.field->hasFocus());
            QTest::keyClicks(window.field, QStringLiteral("2"));
            QCOMPARE(window.field->text(), QStringLiteral("123"));
            window.field->setEnabled(false);
            QVERIFY(!window.input()->hasInput());
            QVERIFY(window.field->text().startsWith(QLatin1String("48")));
        }
    }

    void arrowsEndWithTheirRelease()
    {
        const std::tuple<const char *, int, double> rows[] = {
            {"up", Qt::Key_Up, 49}, {"down", Qt::Key_Down, 47}, {"page up", Qt::Key_PageUp, 58}, {"button", 0, 49}};
        for (const auto &[name, key, to] : rows) {
            const InRow at(name);
            for (const Kind &kind : Kinds) {
                Window window(kind.make());
                QSignalSpy ended(window.field, &QAbstractSpinBox::editingFinished);
                bool keepsFocus = false;
                connect(window.field, &QAbstractSpinBox::editingFinished, this,
                        [&] { keepsFocus = window.input()->keepsFocus(); });
                if (key == 0) {
                    const QPoint up = arrowOf(window.field, QStyle::SC_SpinBoxUp);
                    QTest::mousePress(window.field, Qt::LeftButton, {}, up);
                    QCOMPARE(ended.count(), 0);
                    QTest::mouseRelease(window.field, Qt::LeftButton, {}, up);
                } else {
                    QTest::keyPress(window.field, Qt::Key(key));
                    QKeyEvent repeat(QEvent::KeyRelease, key, Qt::NoModifier, QString(), true);
                    QApplication::sendEvent(window.field, &repeat);
                    QCOMPARE(ended.count(), 0);
                    QTest::keyRelease(window.field, Qt::Key(key));
                }
                QCOMPARE(ended.count(), 1);
                QVERIFY(keepsFocus && window.field->hasFocus());
                QCOMPARE(window.field->property("value").toDouble(), to);
            }
        }
    }

    /// It ends nothing: a page may be meant to scroll.
    void wheelIsInput()
    {
        Window window(makeField<IntegerField>());
        QSignalSpy ended(window.field, &QAbstractSpinBox::editingFinished);
        turnWheel(*window.field, 120);
        QCOMPARE(window.field->text(), QStringLiteral("49"));
        QCOMPARE(ended.count(), 0);
        window.press(&window.label);
        QCOMPARE(ended.count(), 1);
    }

    /// No key is dropped, which would make another number.
    void anythingCanBeTyped()
    {
        for (const Kind &row : Kinds) {
            const InRow at(row.name);
            const bool isReal = QByteArray(row.name) == "real";
            const std::tuple<const char *, bool, bool> texts[] = {
                {"1200", true, true},  {"100000", false, false},  {"-5", false, false},
                {"4x2", false, false}, {"", false, false},        {"33.1", false, true},
                {"33,1", false, true}, {"1,234.5", false, false}, {"0.12345678", false, true}};
            for (const auto &[typed, asInteger, asReal] : texts) {
                for (const QLocale &locale : {QLocale::c(), QLocale(QLocale::German)}) {
                    const bool isTaken = isReal ? asReal : asInteger;
                    std::unique_ptr<QAbstractSpinBox> field(row.make());
                    field->setLocale(locale);
                    field->selectAll();
                    QTest::keyClick(field.get(), Qt::Key_Delete);
                    QTest::keyClicks(field.get(), QLatin1String(typed));
                    QCOMPARE(field->text(), QLatin1String(typed));
                    QCOMPARE(NumberInput::of(field.get())->refusal(),
                             isTaken ? QString()
                                     : QStringLiteral("\"%1\" is no %2 from 0 to 99999")
                                           .arg(QLatin1String(typed), QLatin1String(isReal ? "number" : "integer")));
                    field->interpretText();
                    QVERIFY2(field->property("value").toDouble() == 48.0 || isTaken, typed);
                }
            }
        }
    }

    void nearestLimit()
    {
        const std::tuple<const char *, const char *, double, bool> rows[] = {
            {"inside", "7,5", 7.5, false},
            {"above", "70", 60, false},
            {"below", "-7000", -60, false},
            {"no number", "1,234.5", 5, true},
            {"as before, to the eye", "5.001", 5, false}};
        for (const auto &[name, typed, value, isRefused] : rows) {
            const InRow at(name);
            auto *field = new RealField(nullptr, NumberInput::Beyond::Nearest);
            field->setLimits(-60, 60);
            field->load(5);
            Window window(field);
            QStringList reasons;
            field->onRefused = [&](const QString &reason) { reasons << reason; };
            QSignalSpy changed(field, qOverload<double>(&QDoubleSpinBox::valueChanged));
            QSignalSpy ended(field, &QAbstractSpinBox::editingFinished);
            window.typeIn(typed);
            QCOMPARE(changed.count(), 0);
            window.key(Qt::Key_Tab);
            QCOMPARE(field->value(), value);
            QCOMPARE(changed.count(), isRefused ? 0 : 1);
            QCOMPARE(ended.count(), isRefused ? 0 : 1);
            QCOMPARE(reasons.size(), isRefused ? 1 : 0);
            QVERIFY(!field->hasInput());
        }
    }

    void moreDigitsThanShown()
    {
        RealField field;
        field.setLimits(-1, 1);
        field.load(0.123456789);
        QCOMPARE(field.value(), 0.12);
        QCOMPARE(*field.entered(), 0.123456789);
        field.selectAll();
        QTest::keyClicks(&field, QStringLiteral("-0.987654321"));
        QCOMPARE(*field.entered(), -0.987654321);
        field.giveBack();
        QCOMPARE(field.text(), QStringLiteral("0.12"));
        QCOMPARE(field.number(), 0.123456789);
    }

    void steps()
    {
        const std::tuple<const char *, double, double, double, double, int, double> rows[] = {
            {"from value to value", 0, 60, 0.5, 2.5, 1, 3.0},
            {"down", 0, 60, 0.5, 2.5, -1, 2.0},
            {"onto the grid", 0, 60, 0.5, 2.6, 1, 3.0},
            {"onto the grid, down", 0, 60, 0.5, 2.6, -1, 2.5},
            {"the grid begins at the minimum", 0.3, 60, 0.5, 2.3, 1, 2.8},
            {"a page", 0, 60, 0.5, 2.5, 10, 7.5},
            {"last value", 0, 59.9, 0.5, 59.5, 1, 59.5},
            {"stops at the last value", 0, 59.9, 0.5, 58, 10, 59.5},
            {"stops at the minimum", 0.3, 60, 0.5, 0.8, -10, 0.3},
            {"tenths", 0, 10, 0.1, 0.2, 1, 0.3},
            {"finer than the digits", 0, 1, 0.00003, 0.00006, 1, 0.00009},
            {"no limits", -DBL_MAX, DBL_MAX, 0.5, 2.6, 1, 3.0},
            {"no increment", 0, 60, 0, 2.5, 1, 2.51},
            {"to a limit with more digits than shown", 0, 66.66666667, 0, 66.66, 10, 66.66666667}};
        for (const auto &[name, minimum, maximum, increment, from, count, to] : rows) {
            const InRow at(name);
            RealField field;
            field.setDecimals(4);
            field.setLimits(minimum, maximum);
            field.setSteps(static_cast<double>(0.01f), increment);
            field.load(from);
            field.stepBy(count);
            QCOMPARE(field.number(), to);
            QCOMPARE(field.hasInput(), to != from);
        }
    }

    /// However another value got into the box, it counts as input until it is taken or replaced.
    void setByAProgram()
    {
        Window window(makeField<IntegerField>());
        auto *field = static_cast<IntegerField *>(window.field);
        QSignalSpy ended(field, &QAbstractSpinBox::editingFinished);
        field->setValue(7);
        QVERIFY(field->hasInput());
        QCOMPARE(*field->entered(), Q_INT64_C(7));
        field->setLimits(0, 100); // as a refresh does
        QCOMPARE(field->text(), QStringLiteral("7"));
        window.press(&window.label);
        QCOMPARE(ended.count(), 1);
        field->load(7);
        QVERIFY(!field->hasInput());
        window.typeIn("7");
        QVERIFY(field->hasInput());
        QTest::keyClicks(field, QStringLiteral("00"));
        field->setLimits(0, 5);
        field->setSteps(2);
        QCOMPARE(field->text(), QStringLiteral("700"));
        QVERIFY(!field->entered());
    }
};

QTEST_MAIN(tst_NumberField)
#include "tst_NumberField.moc"
