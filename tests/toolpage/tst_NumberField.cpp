// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QTabBar>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QtTest>

#include <cfloat>
#include <functional>

#include "FeatureTree/IntegerSpinBox.h"
#include "PanelBase/NumberField.h"

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
        tabs.addTab(QStringLiteral("one"));
        for (QWidget *widget :
             {static_cast<QWidget *>(field), static_cast<QWidget *>(&line), static_cast<QWidget *>(&button),
              static_cast<QWidget *>(&label), static_cast<QWidget *>(&tabs)})
            panelLayout->addWidget(widget);
        whole->addWidget(&panel);
        whole->addWidget(&beside);
        window.show();
        QApplication::setActiveWindow(&window);
        isActive = QTest::qWaitForWindowActive(&window);
        field->setFocus();
        QObject::connect(field, &QAbstractSpinBox::editingFinished, &window, [box] { // as an owner takes the number
            box->interpretText();
            NumberInput::of(box)->settle();
        });
    }
    void key(int code) { QTest::keyClick(field, Qt::Key(code)); }
    void press(QWidget *widget) { QTest::mouseClick(widget, Qt::LeftButton, {}, {2, 2}); }

    QWidget window;
    QAbstractSpinBox *field;
    Panel panel;
    QLineEdit line;
    QPushButton button;
    QLabel label;
    QTabBar tabs;
    QLineEdit beside;
    bool isActive = false;
};

using Way = std::function<void(Window &window)>;

struct Leaving
{
    const char *name;
    Way leave;
    bool ends;
};

const Leaving Leavings[] = {
    {"Enter", [](Window &window) { window.key(Qt::Key_Enter); }, true},
    {"Return", [](Window &window) { window.key(Qt::Key_Return); }, true},
    {"Tab", [](Window &window) { window.key(Qt::Key_Tab); }, true},
    {"Backtab", [](Window &window) { window.key(Qt::Key_Backtab); }, true},
    {"press on a line", [](Window &window) { window.press(&window.line); }, true},
    {"press on a button", [](Window &window) { window.press(&window.button); }, true},
    {"press on a label", [](Window &window) { window.press(&window.label); }, true},
    {"press on a tab", [](Window &window) { window.press(&window.tabs); }, true},
    {"press on the panel", [](Window &window) { window.press(&window.panel); }, true},
    {"press beside the panel", [](Window &window) { window.press(&window.beside); }, false},
    {"press in the field", [](Window &window) { window.press(window.field->findChild<QLineEdit *>()); }, false},
    {"press on its frame",
     [](Window &window) {
         QTest::mouseClick(window.field, Qt::LeftButton, {}, {0, 0});
     },
     false},
    {"focus taken", [](Window &window) { window.line.setFocus(); }, false},
    {"focus given up", [](Window &window) { window.field->clearFocus(); }, false},
    {"another window",
     [](Window &) {
         QWidget other;
         other.show();
         QApplication::setActiveWindow(&other);
         QVERIFY(QTest::qWaitForWindowActive(&other));
     },
     false},
    {"panel hidden",
     [](Window &window) {
         window.panel.hide();
         window.panel.show();
     },
     false},
    {"window hidden",
     [](Window &window) {
         window.window.hide();
         window.window.show();
     },
     false},
    {"panel locked",
     [](Window &window) {
         window.panel.setEnabled(false);
         window.panel.setEnabled(true);
     },
     false},
    {"popup",
     [](Window &window) {
         QWidget popup(&window.window, Qt::Popup);
         popup.show();
         popup.setFocus();
     },
     false},
    {"locale", [](Window &window) { window.window.setLocale(QLocale(QLocale::German)); }, false},
};

QAbstractSpinBox *makeInteger()
{
    auto *field = new IntegerField;
    field->setLimits(0, 99999);
    field->load(48);
    return field;
}

QAbstractSpinBox *makeReal()
{
    auto *field = new RealField;
    field->setLimits(0, 99999);
    field->load(48);
    return field;
}

QAbstractSpinBox *makeExact()
{
    auto *field = new IntegerSpinBox;
    field->setLimits(0, 99999);
    field->load(48);
    return field;
}

using Maker = QAbstractSpinBox *(*)();
constexpr std::pair<const char *, Maker> Makers[] = {
    {"integer", makeInteger}, {"real", makeReal}, {"64 bits", makeExact}};

} // namespace

Q_DECLARE_METATYPE(Way)
Q_DECLARE_METATYPE(Maker)

class tst_NumberField : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }
    void leaving_data();
    void leaving();
    void unfinishedInputSurvives_data();
    void unfinishedInputSurvives();
    void arrowsEndWithTheirRelease_data();
    void arrowsEndWithTheirRelease();
    void wheelIsInput();
    void anythingCanBeTyped_data();
    void anythingCanBeTyped();
    void nearestLimit_data();
    void nearestLimit();
    void moreDigitsThanShown();
    void steps_data();
    void steps();
    void beyondTheBox();
    void setByAProgram();
};

void tst_NumberField::leaving_data()
{
    QTest::addColumn<Maker>("make");
    QTest::addColumn<Way>("leave");
    QTest::addColumn<bool>("ends");
    for (const auto &[kind, make] : Makers) {
        for (const Leaving &leaving : Leavings)
            QTest::addRow("%s: %s", kind, leaving.name) << make << leaving.leave << leaving.ends;
    }
}

/// Half a number is taken by those ways alone that a person ends an edit by; whatever else happens leaves it as it is.
void tst_NumberField::leaving()
{
    QFETCH(Maker, make);
    QFETCH(Way, leave);
    QFETCH(bool, ends);
    for (const bool typed : {true, false}) {
        Window window(make());
        QVERIFY(window.isActive);
        QSignalSpy ended(window.field, &QAbstractSpinBox::editingFinished);
        if (typed) {
            window.field->selectAll();
            QTest::keyClicks(window.field, QStringLiteral("123"));
        }
        leave(window);
        const QByteArray way(QTest::currentDataTag());
        const bool isEnter = way.endsWith("Enter") || way.endsWith("Return");
        QCOMPARE(ended.count(), (typed && ends) || isEnter ? 1 : 0);
        QCOMPARE(NumberInput::of(window.field)->hasInput(), typed && !ends);
        if (typed && !ends)
            QCOMPARE(window.field->text(), QStringLiteral("123"));
    }
}

void tst_NumberField::unfinishedInputSurvives_data()
{
    QTest::addColumn<Maker>("make");
    for (const auto &[kind, make] : Makers)
        QTest::newRow(kind) << make;
}

/// The cursor stays, too, and the next key goes on.
void tst_NumberField::unfinishedInputSurvives()
{
    QFETCH(Maker, make);
    Window window(make());
    window.field->selectAll();
    QTest::keyClicks(window.field, QStringLiteral("13"));
    QTest::keyClick(window.field, Qt::Key_Left);
    {
        QWidget other;
        other.show();
        QApplication::setActiveWindow(&other);
        QVERIFY(QTest::qWaitForWindowActive(&other));
    }
    QApplication::setActiveWindow(&window.window);
    QVERIFY(window.field->hasFocus());
    window.window.hide();
    window.window.show();
    QApplication::setActiveWindow(&window.window);
    QVERIFY(window.field->hasFocus());
    QTest::keyClicks(window.field, QStringLiteral("2"));
    QCOMPARE(window.field->text(), QStringLiteral("123"));
    window.field->setEnabled(false);
    QVERIFY(!NumberInput::of(window.field)->hasInput());
    QVERIFY(window.field->text().startsWith(QLatin1String("48")));
}

void tst_NumberField::arrowsEndWithTheirRelease_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<double>("to");
    QTest::newRow("up") << int(Qt::Key_Up) << 49.0;
    QTest::newRow("down") << int(Qt::Key_Down) << 47.0;
    QTest::newRow("page up") << int(Qt::Key_PageUp) << 58.0;
    QTest::newRow("button") << 0 << 49.0;
}

void tst_NumberField::arrowsEndWithTheirRelease()
{
    QFETCH(int, key);
    QFETCH(double, to);
    for (const auto &[kind, make] : Makers) {
        Window window(make());
        QSignalSpy ended(window.field, &QAbstractSpinBox::editingFinished);
        bool keepsFocus = false;
        connect(window.field, &QAbstractSpinBox::editingFinished, this,
                [&] { keepsFocus = NumberInput::of(window.field)->keepsFocus(); });
        if (key == 0) {
            const QPoint up = arrowOf(window.field, QStyle::SC_SpinBoxUp);
            QTest::mousePress(window.field, Qt::LeftButton, {}, up);
            QCOMPARE(ended.count(), 0);
            QTest::mouseRelease(window.field, Qt::LeftButton, {}, up);
        } else {
            QTest::keyPress(window.field, Qt::Key(key));
            for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {
                QKeyEvent repeat(type, key, Qt::NoModifier, QString(), true);
                if (type == QEvent::KeyRelease)
                    QApplication::sendEvent(window.field, &repeat);
            }
            QCOMPARE(ended.count(), 0);
            QTest::keyRelease(window.field, Qt::Key(key));
        }
        QCOMPARE(ended.count(), 1);
        QVERIFY(keepsFocus && window.field->hasFocus());
        QCOMPARE(window.field->property("value").toDouble(), to);
    }
}

/// It ends nothing: a page may be meant to scroll.
void tst_NumberField::wheelIsInput()
{
    Window window(makeInteger());
    QSignalSpy ended(window.field, &QAbstractSpinBox::editingFinished);
    QWheelEvent wheel(QPointF(5, 5), window.field->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(window.field, &wheel);
    QCOMPARE(window.field->text(), QStringLiteral("49"));
    QCOMPARE(ended.count(), 0);
    window.press(&window.label);
    QCOMPARE(ended.count(), 1);
}

void tst_NumberField::anythingCanBeTyped_data()
{
    QTest::addColumn<Maker>("make");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("isTaken");
    const std::tuple<const char *, bool, bool> rows[] = {
        {"1200", true, true},  {"100000", false, false},  {"-5", false, false},
        {"4x2", false, false}, {"", false, false},        {"33.1", false, true},
        {"33,1", false, true}, {"1,234.5", false, false}, {"0.12345678", false, true}};
    for (const auto &[kind, make] : Makers) {
        for (const auto &[typed, asInteger, asReal] : rows)
            QTest::addRow("%s: %s", kind, typed)
                << make << QString::fromLatin1(typed) << (make == Maker(makeReal) ? asReal : asInteger);
    }
}

/// No key is dropped, which would make another number.
void tst_NumberField::anythingCanBeTyped()
{
    QFETCH(Maker, make);
    QFETCH(QString, typed);
    QFETCH(bool, isTaken);
    for (const QLocale &locale : {QLocale::c(), QLocale(QLocale::German)}) {
        std::unique_ptr<QAbstractSpinBox> field(make());
        field->setLocale(locale);
        field->selectAll();
        QTest::keyClick(field.get(), Qt::Key_Delete);
        QTest::keyClicks(field.get(), typed);
        QCOMPARE(field->text(), typed);
        const QString refusal = NumberInput::of(field.get())->refusal();
        QCOMPARE(refusal.isEmpty(), isTaken);
        if (!isTaken) {
            QVERIFY2(refusal.contains(QLatin1Char('"') + typed + QLatin1Char('"')), qPrintable(refusal));
            QVERIFY2(refusal.contains(QLatin1String("from 0 to 99999")), qPrintable(refusal));
        }
        field->interpretText();
        QVERIFY(field->property("value").toDouble() == 48.0 || isTaken);
    }
}

void tst_NumberField::nearestLimit_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("isRefused");
    QTest::newRow("inside") << QStringLiteral("7,5") << 7.5 << false;
    QTest::newRow("above") << QStringLiteral("70") << 60.0 << false;
    QTest::newRow("below") << QStringLiteral("-7000") << -60.0 << false;
    QTest::newRow("no number") << QStringLiteral("1,234.5") << 5.0 << true;
    QTest::newRow("as before, to the eye") << QStringLiteral("5.001") << 5.0 << false;
}

void tst_NumberField::nearestLimit()
{
    QFETCH(QString, typed);
    QFETCH(bool, isRefused);
    auto *field = new RealField(nullptr, NumberInput::Beyond::Nearest);
    field->setLimits(-60, 60);
    field->load(5);
    Window window(field);
    QStringList reasons;
    field->onRefused = [&](const QString &reason) { reasons << reason; };
    QSignalSpy changed(field, qOverload<double>(&QDoubleSpinBox::valueChanged));
    QSignalSpy ended(field, &QAbstractSpinBox::editingFinished);
    field->selectAll();
    QTest::keyClicks(field, typed);
    QCOMPARE(changed.count(), 0);
    window.key(Qt::Key_Tab);
    QTEST(field->value(), "value");
    QCOMPARE(changed.count(), isRefused ? 0 : 1);
    QCOMPARE(ended.count(), isRefused ? 0 : 1);
    QCOMPARE(reasons.size(), isRefused ? 1 : 0);
    QVERIFY(!field->hasInput());
}

void tst_NumberField::moreDigitsThanShown()
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

void tst_NumberField::steps_data()
{
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<double>("increment");
    QTest::addColumn<double>("from");
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("to");
    const auto row = [](const char *name, double minimum, double maximum, double increment, double from, int count,
                        double to) { QTest::newRow(name) << minimum << maximum << increment << from << count << to; };
    row("from value to value", 0, 60, 0.5, 2.5, 1, 3.0);
    row("down", 0, 60, 0.5, 2.5, -1, 2.0);
    row("onto the grid", 0, 60, 0.5, 2.6, 1, 3.0);
    row("onto the grid, down", 0, 60, 0.5, 2.6, -1, 2.5);
    row("the grid begins at the minimum", 0.3, 60, 0.5, 2.3, 1, 2.8);
    row("a page", 0, 60, 0.5, 2.5, 10, 7.5);
    row("last value", 0, 59.9, 0.5, 59.5, 1, 59.5);
    row("stops at the last value", 0, 59.9, 0.5, 58, 10, 59.5);
    row("stops at the minimum", 0.3, 60, 0.5, 0.8, -10, 0.3);
    row("tenths", 0, 10, 0.1, 0.2, 1, 0.3);
    row("finer than the digits", 0, 1, 0.00003, 0.00006, 1, 0.00009);
    row("no limits", -DBL_MAX, DBL_MAX, 0.5, 2.6, 1, 3.0);
    row("no increment", 0, 60, 0, 2.5, 1, 2.51);
    row("to a limit with more digits than shown", 0, 66.66666667, 0, 66.66, 10, 66.66666667);
}

void tst_NumberField::steps()
{
    QFETCH(double, minimum);
    QFETCH(double, maximum);
    QFETCH(double, increment);
    QFETCH(double, from);
    QFETCH(int, count);
    RealField field;
    field.setDecimals(4);
    field.setLimits(minimum, maximum);
    field.setSteps(static_cast<double>(0.01f), increment);
    field.load(from);
    field.stepBy(count);
    QTEST(field.number(), "to");
    QFETCH(double, to);
    QCOMPARE(field.hasInput(), to != from);
}

/// A field of 32 bits with a longer value does not step from what it shows.
void tst_NumberField::beyondTheBox()
{
    Window window(new IntegerField);
    auto *field = static_cast<IntegerField *>(window.field);
    const qint64 value = 5000000000;
    field->setLimits(0, std::numeric_limits<int>::max());
    field->load(value, 705032704);
    QVERIFY(!field->holdsLoaded() && !field->hasInput());
    window.key(Qt::Key_Up);
    QCOMPARE(field->number(), value);
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("7"));
    QCOMPARE(*field->entered(), Q_INT64_C(7));
    field->giveBack();
    QCOMPARE(field->number(), value);
}

/// However another value got into the box, it counts as input until it is taken or replaced.
void tst_NumberField::setByAProgram()
{
    Window window(makeInteger());
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
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("7"));
    QVERIFY(field->hasInput());
    QTest::keyClicks(field, QStringLiteral("00"));
    field->setLimits(0, 5);
    field->setSteps(2);
    QCOMPARE(field->text(), QStringLiteral("700"));
    QVERIFY(!field->entered());
}

QTEST_MAIN(tst_NumberField)
#include "tst_NumberField.moc"
