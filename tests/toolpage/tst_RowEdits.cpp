// SPDX-License-Identifier: MIT
#include <functional>

#include "EditedRow.h"
#include "PanelBase/NumberField.h"

namespace {

QAbstractSpinBox *fieldOf(const Row &row)
{
    return row.findChild<QAbstractSpinBox *>();
}

struct Way
{
    const char *name;
    void (*leave)(Row &row, const TestCamera &camera);
    int writes;
};

void refreshAfterAnEvent(Row &row, const TestCamera &camera)
{
    row.setFocus();
    camera.map->InvalidateNodes();
    row.updateWidget(false);
}

void pressLabel(Row &row, const TestCamera &)
{
    QTest::mouseClick(&row, Qt::LeftButton, {}, {2, 2});
}

const Way Ways[] = {{"Enter", [](Row &row, auto &) { QTest::keyClick(fieldOf(row), Qt::Key_Enter); }, 1},
                    {"press on the label", pressLabel, 1},
                    {"live refresh", [](Row &row, auto &) { row.setFocus(), row.updateWidget(true); }, 0},
                    {"device's event", refreshAfterAnEvent, 0}};

} // namespace

/// When rows write numbers, which, and what they refuse.
class tst_RowEdits : public EditedRow
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    /// Half a number is written by those ways alone that end an edit. All others leave it in its place.
    void leaving()
    {
        for (const Way &row : Ways) {
            const InRow at(row.name);
            init();
            for (const char *node : {"Width", "Gain"}) {
                auto *spinBox = editorOf<QAbstractSpinBox>(node);
                const double before = spinBox->property("value").toDouble();
                FakeHostCore::instance().setNodeValue("", node, "12.5");
                typeHalf(spinBox, "16");
                QCOMPARE(m_camera->port.writes, 0u);
                row.leave(*m_row, *m_camera);
                QCOMPARE(int(m_camera->port.writes), row.writes);
                QCOMPARE(m_written->count(), row.writes);
                QCOMPARE(spinBox->property("value").toDouble(), row.writes > 0 ? 16 : before);
                QVERIFY(row.writes > 0 || spinBox->text() == QLatin1String("16"));
            }
            QVERIFY(log().isEmpty());
        }
    }

    /// They lead to the next value that the feature can take, before and after a refresh; the focus stays.
    void arrows()
    {
        const std::tuple<const char *, const char *, int, double> rows[] = {
            {"real, page", "<Float Name=\"N\"><Value>2.5</Value><Min>-1</Min><Max>60</Max><Inc>0.5</Inc></Float>",
             Qt::Key_PageUp, 7.5},
            {"integer, page", "<Integer Name=\"N\"><Value>50</Value><Min>2</Min><Max>100</Max><Inc>4</Inc></Integer>",
             Qt::Key_PageUp, 90},
            {"no increment", "<Float Name=\"N\"><Value>2.5</Value></Float>", Qt::Key_Up, 2.51}};
        for (const auto &[name, feature, key, written] : rows) {
            const InRow at(name);
            init();
            m_camera = std::make_unique<TestCamera>(descriptionWith(feature));
            for (const bool isRefreshed : {false, true}) {
                auto *spinBox = editorOf<QAbstractSpinBox>("N");
                const QString before = spinBox->text();
                if (isRefreshed)
                    m_row->updateWidget(false);
                QTest::keyClick(spinBox, Qt::Key(key));
                QCOMPARE(QString::fromUtf8(GenApi::CValuePtr(m_camera->node("N"))->ToString().c_str()).toDouble(),
                         written);
                QCOMPARE(m_written->count(), 1);
                QVERIFY(spinBox->hasFocus());
                type(spinBox, before);
            }
            QVERIFY(log().isEmpty());
        }
    }

    void refusedTexts()
    {
        const std::pair<const char *, const char *> rows[] = {{"1200", "Width"}, {"33.1", "Width"}, {"", "Gain"}};
        for (const auto &[name, node] : rows) {
            const InRow at(name);
            init();
            auto *spinBox = editorOf<QAbstractSpinBox>(node);
            const QString before = spinBox->text();
            typeHalf(spinBox, name);
            QCOMPARE(spinBox->text(), QLatin1String(name));
            QTest::keyClick(spinBox, Qt::Key_Enter);
            QCOMPARE(m_camera->port.writes, 0u);
            QCOMPARE(spinBox->text(), before);
            const QLatin1String kind(qobject_cast<QSpinBox *>(spinBox) ? "integer" : "number");
            QCOMPARE(log(),
                     QStringList(line(QStringLiteral("Set %1 value failed, message = \"%2\" is no %3 from 0 to 100")
                                          .arg(QLatin1String(node), QLatin1String(name), kind))));
            QCOMPARE(m_written->count(), 0);
        }
    }

    /// The field shows them rounded. Both decimal signs are understood, whatever the locale.
    void allDigitsAreWritten()
    {
        QLocale::setDefault(QLocale(QLocale::German));
        auto *spinBox = editorOf<QDoubleSpinBox>("Gain");
        QLocale::setDefault(QLocale::c());
        for (const char *typed : {"33.123456789", "33,123456789"}) {
            m_camera->port.pokeDouble(TestCamera::Gain, 0);
            type(spinBox, QLatin1String(typed));
            QCOMPARE(gain(), 33.123456789);
            QCOMPARE(spinBox->text(), QStringLiteral("33,1235"));
        }
        m_camera->port.resetCounters();
        spinBox->setFocus();
        QTest::keyClick(spinBox, Qt::Key_Enter); // untouched
        QCOMPARE(m_camera->port.writes, 1u);
        QCOMPARE(gain(), 33.123456789);
    }

    void untouchedBeyond32Bits()
    {
        const quint64 value = 5000000000;
        m_camera->port.poke(TestCamera::Big, value, 8);
        auto *spinBox = editorOf<QSpinBox>("Big");
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Tab, Qt::Key_Enter})
            QTest::keyClick(spinBox, key);
        QCOMPARE(m_camera->port.writes, 0u);
        QCOMPARE(log(),
                 QStringList(line(QStringLiteral("Nothing is written to Big: its value is beyond this field; the tab "
                                                 "\"All Attribute\" edits it exactly"))));
        for (const bool isRefusedByDevice : {false, true}) {
            m_camera->port.writeFault = isRefusedByDevice ? MemoryPort::Fault::Refused : MemoryPort::Fault::None;
            type(spinBox, isRefusedByDevice ? QStringLiteral("700") : QStringLiteral("9999999999"));
            m_camera->port.writeFault = MemoryPort::Fault::None;
            QTest::keyClick(spinBox, Qt::Key_Enter);
            QCOMPARE(m_camera->port.peek(TestCamera::Big, 8), value);
        }
        type(spinBox, QStringLiteral("700"));
        QCOMPARE(m_camera->port.peek(TestCamera::Big, 8), quint64(700));
    }

    /// What is typed stays while the row can be edited, and is dropped without a word when it cannot.
    void interruptedTyping()
    {
        const auto set = [](const char *feature, int value) {
            return [=](Row &row, const TestCamera &camera) {
                GenApi::CIntegerPtr(camera.node(feature))->SetValue(value);
                row.updateWidget(false);
            };
        };
        const std::tuple<const char *, std::function<void(Row & row, const TestCamera &camera)>, int> rows[] = {
            {"refreshed", set("Other", 6), 64},
            {"limits", set("Most", 50), 64},
            {"locked by the device", set("Lock", 1), 4},
            {"not available", set("There", 0), 0},
            {"disabled", [](Row &row, auto &) { row.setWidgetItemEnable(false); }, 0},
            {"hidden", [](Row &row, auto &) { row.setWidgetItemVisible(false); }, 0}};
        for (const auto &[name, interrupt, shown] : rows) {
            const InRow at(name);
            init();
            m_camera = std::make_unique<TestCamera>(descriptionWith(
                "<Integer Name=\"Lock\"><Value>0</Value></Integer><Integer Name=\"There\"><Value>1</Value></Integer>"
                "<Integer Name=\"Other\"><Value>1</Value></Integer><Integer Name=\"Most\"><Value>1000</Value></Integer>"
                "<Integer Name=\"N\"><pIsAvailable>There</pIsAvailable><pIsLocked>Lock</pIsLocked><Value>4</Value>"
                "<pMax>Most</pMax></Integer>"));
            auto *spinBox = editorOf<QSpinBox>("N");
            typeHalf(spinBox, "64");
            interrupt(*m_row, *m_camera);
            if (shown != 0)
                QCOMPARE(spinBox->text(), QString::number(shown));
            QCOMPARE(spinBox->hasFocus(), shown == 64);
            QCOMPARE(m_written->count(), 0);
            QVERIFY(log().isEmpty());
        }
    }

    void escapeRestores()
    {
        for (const char *typed : {"", "64"}) { // no number yet, and one
            m_camera->port.poke(TestCamera::Width, 48);
            auto *spinBox = editorOf<QSpinBox>("Width");
            typeHalf(spinBox, typed);
            m_camera->port.poke(TestCamera::Width, 52);
            m_camera->map->InvalidateNodes();
            QTest::keyClick(spinBox, Qt::Key_Escape);
            QCOMPARE(spinBox->text(), QStringLiteral("52"));
            QVERIFY(spinBox->hasFocus());
            spinBox->clearFocus();
            QCOMPARE(m_camera->port.writes, 0u);
        }
    }

    /// Alone, or beside others in a container.
    void escapeRestoresCallersSpinBoxes()
    {
        for (const bool inContainer : {false, true}) {
            FakeHostCore::instance().reset();
            Row row;
            auto *container = new QWidget(&row);
            auto *spinBox = new IntegerField(inContainer ? container : &row, NumberInput::Beyond::Nearest);
            const QString label = QStringLiteral("Period");
            row.setItemInfo({label, label}, {}, inContainer ? container : spinBox);
            row.setLanguage(0);
            QCOMPARE(spinBox->accessibleName(), label);
            spinBox->load(7);
            QVERIFY(activate(row));
            spinBox->setFocus();
            typeHalf(spinBox, "42");
            QTest::keyClick(spinBox, Qt::Key_Escape);
            QCOMPARE(spinBox->value(), 7);
            type(spinBox, QStringLiteral("42"));
            QTest::keyClicks(spinBox, QStringLiteral("1"));
            QTest::keyClick(spinBox, Qt::Key_Escape);
            QCOMPARE(spinBox->value(), 42);
            QTest::keyClicks(spinBox, QStringLiteral("x"));
            QTest::keyClick(spinBox, Qt::Key_Return);
            QCOMPARE(log(),
                     QStringList(line(
                         QStringLiteral("Set Period value failed, message = \"4x2\" is no integer from 0 to 99"))));
        }
    }

    void failedReadsKeepWhatIsTyped()
    {
        auto *spinBox = editorOf<QSpinBox>("Uncached");
        typeHalf(spinBox, "64");
        m_camera->port.readFault = MemoryPort::Fault::Timeout;
        m_row->updateWidget(false);
        m_camera->port.readFault = MemoryPort::Fault::None;
        QCOMPARE(spinBox->text(), QStringLiteral("64"));
        QTest::keyClick(spinBox, Qt::Key_Return);
        QCOMPARE(m_camera->port.peek(TestCamera::Uncached), uint64_t(64));
        typeHalf(spinBox, "65");
        m_written.reset();
        m_row.reset(); // which writes nothing
        QCOMPARE(m_camera->port.writes, 1u);
    }
};

QTEST_MAIN(tst_RowEdits)
#include "tst_RowEdits.moc"
