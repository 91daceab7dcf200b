// SPDX-License-Identifier: MIT
#include <QDoubleSpinBox>
#include <QSpinBox>

#include <functional>

#include "EditedRow.h"

using Interruption = std::function<void(ToolPageWidgetItem &row, const TestCamera &camera)>;
Q_DECLARE_METATYPE(Interruption)

/// When rows write numbers, which, and what they refuse.
class tst_RowEdits : public EditedRow
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }
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
};

void tst_RowEdits::leaving_data()
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
void tst_RowEdits::leaving()
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

void tst_RowEdits::arrows_data()
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
void tst_RowEdits::arrows()
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

void tst_RowEdits::refusedTexts_data()
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

void tst_RowEdits::refusedTexts()
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
void tst_RowEdits::allDigitsAreWritten()
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

void tst_RowEdits::untouchedBeyond32Bits()
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
    for (const bool isRefusedByDevice : {false, true}) {
        m_camera->port.writeFault = isRefusedByDevice ? MemoryPort::Fault::Refused : MemoryPort::Fault::None;
        spinBox->setFocus();
        type(spinBox, isRefusedByDevice ? QStringLiteral("700") : QStringLiteral("9999999999"));
        m_camera->port.writeFault = MemoryPort::Fault::None;
        QTest::keyClick(spinBox, Qt::Key_Enter);
        QCOMPARE(m_camera->port.peek(TestCamera::Big, 8), value);
    }
    type(spinBox, QStringLiteral("700"));
    QCOMPARE(m_camera->port.peek(TestCamera::Big, 8), quint64(700));
}

void tst_RowEdits::interruptedTyping_data()
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
void tst_RowEdits::interruptedTyping()
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

QTEST_MAIN(tst_RowEdits)
#include "tst_RowEdits.moc"
