// SPDX-License-Identifier: MIT
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QWheelEvent>

#include <functional>

#include "TestCamera.h"
#include "ToolPage/NumberField.h"
#include "ToolPage/SwitchButton.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/FakeHostCore.h"

using Interruption = std::function<void(ToolPageWidgetItem &row, const TestCamera &camera)>;
Q_DECLARE_METATYPE(Interruption)

/// What rows write, with the mouse and the keyboard.
class tst_ToolPageWidgetItemInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void integer();
    void refusedInteger();
    void floatShowsWhatTheDeviceTook();
    void leavingAnUntouchedEditorWritesNothing();
    void escapeRestores();
    void escapeRestoresCallersSpinBoxes_data();
    void escapeRestoresCallersSpinBoxes();
    void leaving_data();
    void leaving();
    void arrows_data();
    void arrows();
    void refusedTexts_data();
    void refusedTexts();
    void allDigitsAreWritten();
    void untouchedBeyond32Bits();
    void interruptedTyping_data();
    void interruptedTyping();
    void deletingARowWritesNothing();
    void releasedRowsLeaveTheDeviceAlone_data();
    void releasedRowsLeaveTheDeviceAlone();
    void buttons();
    void enumeration_data();
    void enumeration();
    void refusedInput_data();
    void refusedInput();
    void wheelOverAnUnfocusedEditorScrollsOnly();
    void setCurrentValue();

private:
    template <class Editor>
    Editor *editorOf(const char *nodeName);
    void type(QWidget *editor, const QString &text);
    QStringList log() const { return FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")); }

    std::unique_ptr<TestCamera> m_camera;
    std::unique_ptr<ToolPageWidgetItem> m_row;
    std::unique_ptr<QSignalSpy> m_written;
};

void tst_ToolPageWidgetItemInput::init()
{
    FakeHostCore::instance().reset();
    m_camera = std::make_unique<TestCamera>();
    m_camera->port.poke(TestCamera::Width, 48);
    m_camera->port.pokeDouble(TestCamera::Gain, 2.5);
}

void tst_ToolPageWidgetItemInput::cleanup()
{
    m_written.reset();
    m_row.reset();
    m_camera.reset();
}

/// The editor of a new row, shown in an active window.
template <class Editor>
Editor *tst_ToolPageWidgetItemInput::editorOf(const char *nodeName)
{
    m_row = std::make_unique<ToolPageWidgetItem>();
    m_row->setItemInfo({}, {}, m_camera->node(nodeName), true);
    m_row->show();
    QApplication::setActiveWindow(m_row.get());
    if (!QTest::qWaitForWindowActive(m_row.get()))
        return nullptr;
    m_row->findChild<Editor *>()->setFocus();
    m_written = std::make_unique<QSignalSpy>(m_row.get(), &ToolPageWidgetItem::valueChanged);
    m_camera->port.resetCounters();
    return m_row->findChild<Editor *>();
}

void tst_ToolPageWidgetItemInput::type(QWidget *editor, const QString &text)
{
    editor->findChild<QLineEdit *>()->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
}

void tst_ToolPageWidgetItemInput::integer()
{
    auto *spinBox = editorOf<QSpinBox>("Width");
    type(spinBox, QStringLiteral("96"));
    QCOMPARE(m_camera->port.peek(TestCamera::Width), uint64_t(96));
    QCOMPARE(m_camera->port.writes, 1u);
    QCOMPARE(spinBox->value(), 96);
    QVERIFY(!spinBox->hasFocus());
    QCOMPARE(m_written->count(), 1);
    QVERIFY(!m_written->first().first().isValid() || !m_written->first().first().value<QVariant>().isValid());
    QVERIFY(log().isEmpty());
}

void tst_ToolPageWidgetItemInput::refusedInteger()
{
    auto *spinBox = editorOf<QSpinBox>("Width");
    m_camera->port.writeFault = MemoryPort::Fault::Refused;
    type(spinBox, QStringLiteral("80"));
    QCOMPARE(spinBox->value(), 48); // the initial value
    QCOMPARE(log().size(), 1);
    const QString prefix = QStringLiteral("VLogInfo(ToolPageWidgetItem, Set Width value failed, message = ");
    QVERIFY2(log().first().startsWith(prefix), qPrintable(log().first()));
    QVERIFY2(log().first().contains(QLatin1String("memory port: refused")), qPrintable(log().first()));

    m_camera->port.writeFault = MemoryPort::Fault::None;
    type(spinBox, QStringLiteral("60"));
    m_written->clear();
    m_camera->port.writeFault = MemoryPort::Fault::Foreign;
    spinBox->setFocus();
    type(spinBox, QStringLiteral("64"));
    QVERIFY(log().last().contains(QLatin1String("memory port: foreign error")));
    m_camera->port.writeFault = MemoryPort::Fault::Refused;
    spinBox->setFocus();
    type(spinBox, QStringLiteral("80"));
    QCOMPARE(spinBox->value(), 60); // the value written last
    QCOMPARE(m_written->count(), 0);
    QCOMPARE(log().size(), 3);
}

void tst_ToolPageWidgetItemInput::floatShowsWhatTheDeviceTook()
{
    auto *spinBox = editorOf<QDoubleSpinBox>("Gain");
    m_camera->port.onWrite[TestCamera::Gain] = [](MemoryPort &port) { port.pokeDouble(TestCamera::Gain, 7.5); };
    type(spinBox, QStringLiteral("7.3"));
    QCOMPARE(spinBox->value(), 7.5);
    QVERIFY(!spinBox->hasFocus());
    QCOMPARE(m_written->count(), 1);
}

void tst_ToolPageWidgetItemInput::leavingAnUntouchedEditorWritesNothing()
{
    m_camera->port.pokeDouble(TestCamera::Gain, 1.23456789);
    auto *spinBox = editorOf<QDoubleSpinBox>("Gain");
    spinBox->clearFocus();
    QCOMPARE(m_camera->port.writes, 0u);
    QCOMPARE(m_written->count(), 0);

    spinBox->setFocus();
    QTest::keyClick(spinBox, Qt::Key_Up);
    spinBox->clearFocus();
    QCOMPARE(m_camera->port.writes, 1u);
    QCOMPARE(m_written->count(), 1);
}

void tst_ToolPageWidgetItemInput::escapeRestores()
{
    for (const char *typed : {"", "64"}) { // no number yet, and one
        m_camera->port.poke(TestCamera::Width, 48);
        auto *spinBox = editorOf<QSpinBox>("Width");
        spinBox->selectAll();
        QTest::keyClick(spinBox, Qt::Key_Delete);
        QTest::keyClicks(spinBox, QLatin1String(typed));
        m_camera->port.poke(TestCamera::Width, 52);
        m_camera->map->InvalidateNodes();
        QTest::keyClick(spinBox, Qt::Key_Escape);
        QCOMPARE(spinBox->text(), QStringLiteral("52"));
        QVERIFY(spinBox->hasFocus());
        spinBox->clearFocus();
        QCOMPARE(m_camera->port.writes, 0u);
    }
}

void tst_ToolPageWidgetItemInput::escapeRestoresCallersSpinBoxes_data()
{
    QTest::addColumn<bool>("inContainer");
    QTest::newRow("alone") << false;
    QTest::newRow("beside a button") << true;
}

void tst_ToolPageWidgetItemInput::escapeRestoresCallersSpinBoxes()
{
    QFETCH(bool, inContainer);
    ToolPageWidgetItem row;
    auto *container = new QWidget(&row);
    auto *spinBox = new IntegerField(inContainer ? container : &row, NumberInput::Beyond::Nearest);
    const QString label = QStringLiteral("Period");
    row.setItemInfo({label, label}, {}, inContainer ? container : spinBox);
    row.setLanguage(0);
    QCOMPARE(spinBox->accessibleName(), label);
    spinBox->load(7);
    row.show();
    QApplication::setActiveWindow(&row);
    QVERIFY(QTest::qWaitForWindowActive(&row));

    spinBox->setFocus();
    spinBox->selectAll();
    QTest::keyClicks(spinBox, QStringLiteral("42"));
    QTest::keyClick(spinBox, Qt::Key_Escape);
    QCOMPARE(spinBox->value(), 7);
    spinBox->selectAll();
    QTest::keyClicks(spinBox, QStringLiteral("42"));
    QTest::keyClick(spinBox, Qt::Key_Return);
    QTest::keyClicks(spinBox, QStringLiteral("1"));
    QTest::keyClick(spinBox, Qt::Key_Escape);
    QCOMPARE(spinBox->value(), 42);
    QTest::keyClicks(spinBox, QStringLiteral("x"));
    QTest::keyClick(spinBox, Qt::Key_Return);
    QCOMPARE(log(),
             QStringList(QStringLiteral("VLogInfo(ToolPageWidgetItem, Set Period value failed, message = "
                                        "\"4x2\" is no integer from 0 to 99, 0)")));
}

void tst_ToolPageWidgetItemInput::leaving_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<Interruption>("leave");
    QTest::addColumn<int>("writes");
    using Row = ToolPageWidgetItem;
    const auto editor = [](const Row &row) { return row.findChild<QAbstractSpinBox *>(); };
    const std::tuple<const char *, Interruption, int> ways[] = {
        {"Enter", [=](Row &row, auto &) { QTest::keyClick(editor(row), Qt::Key_Enter); }, 1},
        {"Tab", [=](Row &row, auto &) { QTest::keyClick(editor(row), Qt::Key_Tab); }, 1},
        {"press on the label",
         [=](Row &row, auto &) {
             QTest::mouseClick(&row, Qt::LeftButton, {}, {2, 2});
         },
         1},
        {"focus taken", [=](Row &row, auto &) { row.setFocus(); }, 0},
        {"hidden window", [=](Row &row, auto &) { row.hide(), row.show(); }, 0},
        {"live refresh", [=](Row &row, auto &) { row.setFocus(), row.updateWidget(true); }, 0},
        {"device's event",
         [=](Row &row, const TestCamera &camera) {
             row.setFocus();
             camera.map->InvalidateNodes();
             row.updateWidget(false);
         },
         0}};
    for (const char *node : {"Width", "Gain"}) {
        for (const auto &[name, way, writes] : ways)
            QTest::addRow("%s: %s", node, name) << QByteArray(node) << way << writes;
    }
}

/// Half a number is written by those ways alone that end an edit. All others leave it in its place.
void tst_ToolPageWidgetItemInput::leaving()
{
    QFETCH(QByteArray, node);
    QFETCH(Interruption, leave);
    QFETCH(int, writes);
    auto *spinBox = editorOf<QAbstractSpinBox>(node);
    FakeHostCore::instance().setNodeValue("", node.toStdString(), "12.5");
    spinBox->selectAll();
    QTest::keyClicks(spinBox, QStringLiteral("16"));
    QCOMPARE(m_camera->port.writes, 0u);
    leave(*m_row, *m_camera);
    QCOMPARE(int(m_camera->port.writes), writes);
    QCOMPARE(m_written->count(), writes);
    QCOMPARE(spinBox->property("value").toDouble(), writes > 0 ? 16 : node == "Width" ? 48 : 2.5);
    if (writes == 0)
        QCOMPARE(spinBox->text(), QStringLiteral("16"));
    QVERIFY(log().isEmpty());
}

void tst_ToolPageWidgetItemInput::arrows_data()
{
    QTest::addColumn<QByteArray>("feature");
    QTest::addColumn<int>("key");
    QTest::addColumn<double>("written");
    const QByteArray real("<Float Name=\"N\"><Value>2.5</Value><Min>-1</Min><Max>60</Max><Inc>0.5</Inc></Float>");
    const QByteArray integer("<Integer Name=\"N\"><Value>50</Value><Min>2</Min><Max>100</Max><Inc>4</Inc></Integer>");
    QTest::newRow("real, up") << real << int(Qt::Key_Up) << 3.0;
    QTest::newRow("real, down") << real << int(Qt::Key_Down) << 2.0;
    QTest::newRow("real, page") << real << int(Qt::Key_PageUp) << 7.5;
    QTest::newRow("integer") << integer << int(Qt::Key_Up) << 54.0;
    QTest::newRow("integer, page") << integer << int(Qt::Key_PageUp) << 90.0;
    QTest::newRow("no increment") << QByteArray("<Float Name=\"N\"><Value>2.5</Value></Float>") << int(Qt::Key_Up)
                                  << 2.51;
}

/// They lead to the next value that the feature can take, before and after a refresh; the focus stays.
void tst_ToolPageWidgetItemInput::arrows()
{
    QFETCH(QByteArray, feature);
    QFETCH(int, key);
    QFETCH(double, written);
    m_camera = std::make_unique<TestCamera>(TestCamera::description(
        std::string("<Category Name=\"Root\"><pFeature>N</pFeature></Category>") + feature.toStdString()));
    for (const bool isRefreshed : {false, true}) {
        auto *spinBox = editorOf<QAbstractSpinBox>("N");
        const QString before = spinBox->text();
        if (isRefreshed)
            m_row->updateWidget(false);
        QTest::keyClick(spinBox, Qt::Key(key));
        QCOMPARE(GenApi::CFloatPtr(m_camera->node("N")).IsValid()
                     ? GenApi::CFloatPtr(m_camera->node("N"))->GetValue()
                     : double(GenApi::CIntegerPtr(m_camera->node("N"))->GetValue()),
                 written);
        QCOMPARE(m_written->count(), 1);
        QVERIFY(spinBox->hasFocus());
        spinBox->selectAll();
        type(spinBox, before);
    }
    QVERIFY(log().isEmpty());
}

void tst_ToolPageWidgetItemInput::refusedTexts_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *node, const char *typed, const char *reason) {
        QTest::newRow(typed) << QByteArray(node) << QString::fromLatin1(typed)
                             << QStringLiteral("\"%1\" is no %2").arg(QLatin1String(typed), QLatin1String(reason));
    };
    row("Width", "1200", "integer from 0 to 100");
    row("Width", "33.1", "integer from 0 to 100");
    row("Width", "1,234", "integer from 0 to 100");
    row("Gain", "700", "number from 0 to 100");
    row("Gain", "1,2.5", "number from 0 to 100");
    row("Gain", "", "number from 0 to 100");
}

void tst_ToolPageWidgetItemInput::refusedTexts()
{
    QFETCH(QByteArray, node);
    QFETCH(QString, typed);
    QFETCH(QString, reason);
    auto *spinBox = editorOf<QAbstractSpinBox>(node);
    const QString before = spinBox->text();
    QTest::keyClick(spinBox, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(spinBox, Qt::Key_Delete);
    QTest::keyClicks(spinBox, typed);
    QCOMPARE(spinBox->text(), typed);
    QTest::keyClick(spinBox, Qt::Key_Enter);
    QCOMPARE(m_camera->port.writes, 0u);
    QCOMPARE(spinBox->text(), before);
    QCOMPARE(log(),
             QStringList(QStringLiteral("VLogInfo(ToolPageWidgetItem, Set %1 value failed, message = %2, 0)")
                             .arg(QLatin1String(node), reason)));
    QCOMPARE(m_written->count(), 0);
}

/// The field shows them rounded. Both decimal signs are understood, whatever the locale.
void tst_ToolPageWidgetItemInput::allDigitsAreWritten()
{
    QLocale::setDefault(QLocale(QLocale::German));
    auto *spinBox = editorOf<QDoubleSpinBox>("Gain");
    QLocale::setDefault(QLocale::c());
    for (const char *typed : {"33.123456789", "33,123456789"}) {
        m_camera->port.pokeDouble(TestCamera::Gain, 0);
        spinBox->setFocus();
        type(spinBox, QLatin1String(typed));
        QCOMPARE(GenApi::CFloatPtr(m_camera->node("Gain"))->GetValue(true, true), 33.123456789);
        QCOMPARE(spinBox->text(), QStringLiteral("33,1235"));
    }
    m_camera->port.resetCounters();
    spinBox->setFocus();
    QTest::keyClick(spinBox, Qt::Key_Enter); // untouched
    QCOMPARE(m_camera->port.writes, 1u);
    QCOMPARE(GenApi::CFloatPtr(m_camera->node("Gain"))->GetValue(true, true), 33.123456789);
}

void tst_ToolPageWidgetItemInput::untouchedBeyond32Bits()
{
    const quint64 value = 5000000000;
    m_camera->port.poke(TestCamera::Big, value, 8);
    auto *spinBox = editorOf<QSpinBox>("Big");
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Tab, Qt::Key_Enter})
        QTest::keyClick(spinBox, key);
    QCOMPARE(m_camera->port.writes, 0u);
    QCOMPARE(log(),
             QStringList(QStringLiteral("VLogInfo(ToolPageWidgetItem, Nothing is written to Big: its value is beyond "
                                        "this field; the tab \"All Attribute\" edits it exactly, 0)")));
    spinBox->setFocus();
    type(spinBox, QStringLiteral("700"));
    QCOMPARE(m_camera->port.peek(TestCamera::Big, 8), quint64(700));
}

void tst_ToolPageWidgetItemInput::interruptedTyping_data()
{
    using Row = ToolPageWidgetItem;
    QTest::addColumn<Interruption>("interruption");
    QTest::addColumn<int>("shown");
    const auto set = [](const char *feature, int value) {
        return Interruption([=](Row &row, const TestCamera &camera) {
            GenApi::CIntegerPtr(camera.node(feature))->SetValue(value);
            row.updateWidget(false);
        });
    };
    QTest::newRow("refreshed") << set("Other", 6) << 64;
    QTest::newRow("limits") << set("Most", 50) << 64;
    QTest::newRow("locked by the device") << set("Lock", 1) << 4;
    QTest::newRow("not available") << set("There", 0) << 0;
    QTest::newRow("disabled") << Interruption([](Row &row, auto &) { row.setWidgetItemEnable(false); }) << 0;
    QTest::newRow("hidden") << Interruption([](Row &row, auto &) { row.setWidgetItemVisible(false); }) << 0;
}

/// What is typed stays while the row can be edited, and is dropped without a word when it cannot.
void tst_ToolPageWidgetItemInput::interruptedTyping()
{
    m_camera = std::make_unique<TestCamera>(TestCamera::description(
        "<Category Name=\"Root\"><pFeature>N</pFeature></Category><Integer Name=\"Lock\"><Value>0</Value></Integer>"
        "<Integer Name=\"There\"><Value>1</Value></Integer><Integer Name=\"Other\"><Value>1</Value></Integer>"
        "<Integer Name=\"N\"><pIsAvailable>There</pIsAvailable><pIsLocked>Lock</pIsLocked><Value>4</Value>"
        "<pMax>Most</pMax></Integer><Integer Name=\"Most\"><Value>1000</Value></Integer>"));
    QFETCH(Interruption, interruption);
    QFETCH(int, shown);
    auto *spinBox = editorOf<QSpinBox>("N");
    spinBox->selectAll();
    QTest::keyClicks(spinBox, QStringLiteral("64"));
    interruption(*m_row, *m_camera);
    if (shown != 0)
        QCOMPARE(spinBox->text(), QString::number(shown));
    QCOMPARE(spinBox->hasFocus(), shown == 64);
    QCOMPARE(m_written->count(), 0);
    QVERIFY(log().isEmpty());
}

void tst_ToolPageWidgetItemInput::deletingARowWritesNothing()
{
    auto *spinBox = editorOf<QSpinBox>("Width");
    QVERIFY(spinBox);
    spinBox->selectAll();
    QTest::keyClicks(spinBox, QStringLiteral("64"));
    m_written.reset();
    m_row.reset();
    QCOMPARE(m_camera->port.writes, 0u);
}

void tst_ToolPageWidgetItemInput::releasedRowsLeaveTheDeviceAlone_data()
{
    QTest::addColumn<QByteArray>("node");
    for (const char *node : {"Width", "Gain", "Power", "Selector", "Start"})
        QTest::newRow(node) << QByteArray(node);
}

void tst_ToolPageWidgetItemInput::releasedRowsLeaveTheDeviceAlone()
{
    QFETCH(QByteArray, node);
    editorOf<QWidget>(node);
    auto *comboBox = m_row->findChild<QComboBox *>();
    auto *spinBox = m_row->findChild<QAbstractSpinBox *>();
    if (comboBox)
        comboBox->showPopup();
    if (spinBox) {
        spinBox->setFocus();
        QTest::keyClicks(spinBox, QStringLiteral("6"));
    }
    m_row->releaseNode();
    QCOMPARE(m_camera->port.writes, 0u);
    m_camera.reset();

    m_row->hide();
    m_row->show();
    m_row->updateWidget(true);
    m_row->setWidgetItemEnable(true);
    QVERIFY(m_row->isVisible());
    m_row->setCurrentValue();
    if (comboBox) {
        QVERIFY(!comboBox->view()->isVisible());
        comboBox->setCurrentIndex(1);
    } else if (spinBox) {
        Q_EMIT spinBox->editingFinished();
    } else {
        Q_EMIT m_row->findChild<QPushButton *>()->clicked();
    }
    QVERIFY(!m_row->layout()->itemAt(m_row->layout()->count() - 1)->widget()->isEnabled());
    QCOMPARE(m_written->count(), 0);
    QCOMPARE(FakeHostCore::instance().calls(), QStringList());
}

void tst_ToolPageWidgetItemInput::buttons()
{
    auto *button = editorOf<SwitchButton>("Power");
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(m_camera->port.peek(TestCamera::Power), uint64_t(1));
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(m_camera->port.peek(TestCamera::Power), uint64_t(0));
    QCOMPARE(m_written->count(), 2);

    QTest::keyClick(editorOf<QPushButton>("Start"), Qt::Key_Space);
    QCOMPARE(m_camera->port.peek(TestCamera::Start), uint64_t(1));
    QCOMPARE(m_written->count(), 0);
    QVERIFY(log().isEmpty());
}

void tst_ToolPageWidgetItemInput::enumeration_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<int>("written");
    QTest::newRow("as it stands") << QStringLiteral("Encoder") << 1;
    QTest::newRow("Chinese") << QStringLiteral("编码器") << 1;
    QTest::newRow("Chinese of another name") << QStringLiteral("双向") << 2;
}

void tst_ToolPageWidgetItemInput::enumeration()
{
    m_camera = std::make_unique<TestCamera>(TestCamera::description(
        "<Category Name=\"Root\"><pFeature>E</pFeature></Category><Enumeration Name=\"E\">"
        "<EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry><EnumEntry Name=\"Encoder\"><Value>1</Value></EnumEntry>"
        "<EnumEntry Name=\"Motion\"><Value>2</Value></EnumEntry><Value>0</Value></Enumeration>"));
    auto *comboBox = editorOf<QComboBox>("E");
    QCOMPARE(comboBox->count(), 3);
    QFETCH(QString, chosen);
    QFETCH(int, written);
    if (comboBox->findText(chosen) < 0)
        comboBox->addItem(chosen);
    comboBox->setCurrentText(chosen);
    QCOMPARE(GenApi::CEnumerationPtr(m_camera->node("E"))->GetIntValue(), int64_t(written));
    QVERIFY(!comboBox->hasFocus());
    QCOMPARE(m_written->count(), 1);
    QVERIFY(log().isEmpty());
}

void tst_ToolPageWidgetItemInput::refusedInput_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<bool>("isReadable");
    QTest::addColumn<QVariant>("shown");
    const QVariant nothing;
    QTest::newRow("integer") << QByteArray("Width") << true << QVariant(12);
    QTest::newRow("integer, unreadable") << QByteArray("Width") << false << QVariant(48);
    QTest::newRow("float") << QByteArray("Gain") << true << QVariant(12.5);
    QTest::newRow("float, unreadable") << QByteArray("Gain") << false << QVariant(2.5);
    QTest::newRow("boolean") << QByteArray("Power") << true << QVariant(false);
    QTest::newRow("boolean, unreadable") << QByteArray("Power") << false << QVariant(false);
    QTest::newRow("enumeration") << QByteArray("Selector") << true << QVariant(0);
    QTest::newRow("enumeration, unreadable") << QByteArray("Selector") << false << QVariant(0);
    QTest::newRow("command") << QByteArray("Start") << true << nothing;
}

/// The device, whose numbers have changed meanwhile, refuses: the row shows what the device has, or what it had before.
void tst_ToolPageWidgetItemInput::refusedInput()
{
    QFETCH(QByteArray, node);
    QFETCH(bool, isReadable);
    auto *editor = editorOf<QWidget>(node);
    QVERIFY(editor);
    MemoryPort &port = m_camera->port;
    port.poke(TestCamera::Width, 12);
    port.pokeDouble(TestCamera::Gain, 12.5);
    port.writeFault = MemoryPort::Fault::Refused;
    port.readFault = isReadable ? MemoryPort::Fault::None : MemoryPort::Fault::Timeout;
    auto *comboBox = m_row->findChild<QComboBox *>();
    auto *spinBox = m_row->findChild<QAbstractSpinBox *>();
    auto *button = m_row->findChild<SwitchButton *>();
    if (comboBox)
        comboBox->setCurrentIndex(1);
    else if (spinBox)
        type(spinBox, QStringLiteral("64"));
    else
        m_row->findChild<QPushButton *>()->click();
    QTEST(comboBox      ? QVariant(comboBox->currentIndex())
              : spinBox ? spinBox->property("value")
              : button  ? QVariant(button->isOn())
                        : QVariant(),
          "shown");
    QCOMPARE(m_written->count(), 0);
    QCOMPARE(log().size(), 1);
    QVERIFY(log().first().contains(QStringLiteral("Set %1 value failed, message = ").arg(QLatin1String(node))));
}

void tst_ToolPageWidgetItemInput::wheelOverAnUnfocusedEditorScrollsOnly()
{
    auto *comboBox = editorOf<QComboBox>("Selector");
    const auto turnWheel = [comboBox] {
        QWheelEvent wheel(QPointF(5, 5), comboBox->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(comboBox, &wheel);
    };
    comboBox->clearFocus();
    turnWheel();
    QCOMPARE(comboBox->currentIndex(), 0);
    comboBox->setFocus();
    turnWheel();
    QCOMPARE(comboBox->currentIndex(), 1);
}

void tst_ToolPageWidgetItemInput::setCurrentValue()
{
    auto *spinBox = editorOf<QDoubleSpinBox>("Gain");
    spinBox->setValue(9.5);
    QCOMPARE(m_camera->port.writes, 0u);
    m_row->setCurrentValue();
    QCOMPARE(GenApi::CFloatPtr(m_camera->node("Gain"))->GetValue(), 9.5);
}

QTEST_MAIN(tst_ToolPageWidgetItemInput)
#include "tst_ToolPageWidgetItemInput.moc"
