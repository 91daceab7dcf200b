// SPDX-License-Identifier: MIT
#include <QLabel>
#include <QSignalSpy>

#include <stdexcept>

#include "Editors.h"
#include "FaultyNode.h"
#include "support/FakeHostCore.h"
#include "support/Input.h"
#include "support/Rows.h"

namespace {

const QStringList Names{QStringLiteral("Label"), QStringLiteral("标签")};
const QStringList Descriptions{QStringLiteral("Text"), QStringLiteral("说明")};

} // namespace

/// What a row shows, by itself and when the timer refreshes it; what it writes is the matter of tst_RowWriter.
class tst_ToolPageWidgetItem : public QObject
{
    Q_OBJECT
    std::unique_ptr<ToolPageWidgetItem> rowOf(TestCamera &camera, const char *nodeName)
    {
        auto row = ::rowOf(camera, nodeName, &m_page);
        row->deviceName = QStringLiteral("cam");
        return row;
    }
    static void set(const TestCamera &camera, const char *feature, int value)
    {
        GenApi::CIntegerPtr(camera.node(feature))->SetValue(value);
    }

    FakeHostCore &m_host = FakeHostCore::instance();
    QWidget m_page; ///< of rows whose visibility matters: a window of its own is hidden until it is shown

private Q_SLOTS:
    void init()
    {
        m_host.reset();
        m_page.hide();
    }

    /// They show what the feature has, then and at the next refresh.
    void editors()
    {
        const std::tuple<const char *, const char *, QVariant, QVariant, bool> rows[] = {
            {"integer", "Width", 48, 20, true},
            {"float", "Gain", 2.5, 7.25, true},
            {"boolean", "Power", true, false, true},
            {"enumeration", "Selector", QStringLiteral("Alpha"), QStringLiteral("Zulu"), true},
            {"command", "Start", QStringLiteral("Execute"), QStringLiteral("Execute"), true},
            {"read-only integer", "WidthMax", 100, 100, false},
            {"locked command", "StartLocked", QStringLiteral("Execute"), QStringLiteral("Execute"), false}};
        for (const auto &[name, node, shown, refreshed, isEnabled] : rows) {
            const InRow at(name);
            TestCamera camera;
            const auto set = [&camera](int width, double gain, int power, int selector) {
                camera.port.poke(TestCamera::Width, width);
                camera.port.pokeDouble(TestCamera::Gain, gain);
                camera.port.poke(TestCamera::Power, power);
                camera.port.poke(TestCamera::Selector, selector);
                camera.map->InvalidateNodes();
            };
            set(48, 2.5, 1, 1);
            const auto item = rowOf(camera, node);
            QSignalSpy written(item.get(), &ToolPageWidgetItem::valueChanged);
            QVERIFY(!item->isHidden());
            QCOMPARE(shownBy(*item), shown);
            bool available = false;
            QCOMPARE(item->getParameterWidget(camera.node(node), available)->isEnabled(), isEnabled);
            QVERIFY(available);
            set(20, 7.25, 0, 0);
            item->updateWidget(false);
            QCOMPARE(shownBy(*item), refreshed);
            QCOMPARE(int(camera.port.writes) + written.count(), 0);
            QVERIFY(m_host.calls().isEmpty());
        }
    }

    void withoutEditor()
    {
        TestCamera camera;
        for (const char *node :
             {"NoSuchNode", "Label", "Anything", "Image", "Invisible", "WidthReg", "WriteOnly", "Gated"}) {
            const auto row = rowOf(camera, node);
            QVERIFY2(row->isHidden() && !shownBy(*row).isValid(), node);
            ToolPageWidgetItem alwaysShown(&m_page);
            alwaysShown.setItemInfo(Names, Descriptions, camera.node(node), false);
            QVERIFY2(!alwaysShown.isHidden(), node);
        }
        QVERIFY(m_host.calls().isEmpty());
    }

    void editorAppearsWithItsFeature()
    {
        TestCamera camera;
        const auto row = rowOf(camera, "Gated");
        row->resize(400, 40);
        for (const int isThere : {0, 1, 0}) {
            set(camera, "Switch", isThere);
            row->updateWidget(false);
            QCOMPARE(row->isHidden(), isThere == 0);
            if (isThere == 0)
                continue;
            const auto *spinBox = row->findChild<QSpinBox *>();
            QCOMPARE(spinBox->value(), 1);
            QCOMPARE(spinBox->geometry().right(), row->width() - 10 - 1);
            QCOMPARE(spinBox->height(), 34);
        }
    }

    void enabling()
    {
        TestCamera camera;
        const auto isEnabled = [](ToolPageWidgetItem &row) {
            row.updateWidget(false);
            return row.findChild<QSpinBox *>()->isEnabled();
        };
        const auto width = rowOf(camera, "Width");
        width->setWidgetItemEnable(false);
        QVERIFY(!isEnabled(*width));
        width->setWidgetItemEnable(true);
        QVERIFY(width->findChild<QSpinBox *>()->isEnabled());

        const auto readOnly = rowOf(camera, "WidthMax");
        readOnly->setWidgetItemEnable(true);
        QVERIFY(!isEnabled(*readOnly));

        const auto later = rowOf(camera, "Gated");
        later->setWidgetItemEnable(false);
        set(camera, "Switch", 1);
        QVERIFY(isEnabled(*later));
    }

    void refreshesWhenShown()
    {
        TestCamera camera;
        const auto row = rowOf(camera, "Uncached");
        camera.port.poke(TestCamera::Uncached, 12);
        m_page.show();
        QCOMPARE(shownBy(*row), QVariant(12));
    }

    void pagesHideRows()
    {
        TestCamera camera;
        const auto bound = rowOf(camera, "GatedByBoolean");
        const auto absent = rowOf(camera, "NoSuchNode");
        ToolPageWidgetItem custom(&m_page);
        custom.setItemInfo(Names, Descriptions, new QPushButton);
        const auto hidden = [&](bool isAvailable, bool visible) {
            GenApi::CBooleanPtr(camera.node("Power"))->SetValue(isAvailable);
            for (ToolPageWidgetItem *row : {bound.get(), absent.get(), &custom}) {
                row->setWidgetItemVisible(visible);
                m_page.show();
                row->updateWidget(false);
            }
            return QVector<bool>{bound->isHidden(), absent->isHidden(), custom.isHidden()};
        };
        QCOMPARE(hidden(true, false), (QVector<bool>{true, true, true}));
        QCOMPARE(hidden(true, true), (QVector<bool>{false, true, false}));
        QCOMPARE(hidden(false, true), (QVector<bool>{true, true, false}));
    }

    /// A row that cannot be read for once stays, with the value seen last.
    void readFaultIsLoggedOnce()
    {
        TestCamera camera;
        camera.port.poke(TestCamera::Uncached, 5);
        const auto row = rowOf(camera, "Uncached");
        camera.port.readFault = MemoryPort::Fault::Refused;
        for (int pass = 0; pass < 3; ++pass)
            row->updateWidget(false);
        QVERIFY(!row->isHidden());
        QVERIFY(!row->findChild<QSpinBox *>()->isEnabled());
        QCOMPARE(shownBy(*row), QVariant(5));
        const QStringList log = m_host.callsTo(QStringLiteral("VLogInfo"));
        QCOMPARE(log.size(), 1);
        QVERIFY(log.first().startsWith(QLatin1String("VLogInfo(ToolPageWidgetItem, Read Uncached failed, message = ")));

        camera.port.readFault = MemoryPort::Fault::None;
        camera.port.poke(TestCamera::Uncached, 6);
        row->updateWidget(false);
        QVERIFY(!row->isHidden());
        QVERIFY(row->findChild<QSpinBox *>()->isEnabled());
        QCOMPARE(shownBy(*row), QVariant(6));
    }

    void faultyNodes()
    {
        for (int kind = 0; kind < 4; ++kind) {
            init();
            FaultyNode node([kind] {
                if (kind < 2)
                    throw RUNTIME_EXCEPTION("broken");
                throw std::runtime_error("broken");
            });
            node.hasShape = kind % 2 != 0;
            ToolPageWidgetItem item(&m_page);
            item.setItemInfo(Names, Descriptions, &node, true);
            item.updateWidget(false);
            item.updateWidget(true);
            item.setCurrentValue();
            item.setLanguage(1);
            QVERIFY(item.isHidden() && !shownBy(item).isValid());
            bool available = true;
            QVERIFY(!item.getParameterWidget(&node, available) && !item.getFloatParamWidget(&node, available));
            QVERIFY2(m_host.calls().size() == (node.hasShape ? 0 : 1), QByteArray::number(kind));
        }
    }

    void texts()
    {
        TestCamera camera;
        ToolPageWidgetItem row;
        row.setItemInfo(Names, Descriptions, camera.node("Power"), true);
        const auto *label = row.findChild<QLabel *>();
        QCOMPARE(label->text(), QString());
        for (const int language : {1, 7, 0}) {
            row.setLanguage(language);
            QCOMPARE(label->text(), Names.at(language != 0));
            QCOMPARE(row.findChild<SwitchButton *>()->accessibleName(), label->text());
        }
        QCOMPARE(rowOf(camera, "Gain")->findChild<QDoubleSpinBox *>()->accessibleDescription(), QStringLiteral("dB"));
        QCOMPARE(rowOf(camera, "Width")->findChild<QSpinBox *>()->accessibleDescription(), QString());
        QCOMPARE(row.getDescription(1), Descriptions.at(1));
        QCOMPARE(row.getDescription(5) + row.getDescription(-1), QString());

        ToolPageWidgetItem oneName;
        oneName.setItemInfo({QStringLiteral("only")}, {}, static_cast<QWidget *>(nullptr));
        oneName.setLanguage(1);
        QCOMPARE(oneName.findChild<QLabel *>()->text(), QString());
    }

    void liveRowsShowTheAccess()
    {
        TestCamera camera(descriptionWith(
            "<Integer Name=\"Auto\"><Value>1</Value></Integer><Integer Name=\"There\"><Value>1</Value></Integer>"
            "<Float Name=\"N\"><pIsAvailable>There</pIsAvailable><pIsLocked>Auto</pIsLocked><Value>20</Value>"
            "</Float>"));
        const auto row = rowOf(camera, "N");
        const auto *spinBox = row->findChild<QDoubleSpinBox *>();
        const auto liveAfter = [&](const char *feature, int value) {
            set(camera, feature, value);
            row->updateWidget(true);
        };
        QVERIFY(!spinBox->isEnabled());
        liveAfter("Auto", 0);
        QVERIFY(spinBox->isEnabled());
        liveAfter("There", 0);
        QVERIFY(row->isHidden());
        liveAfter("There", 1);
        QVERIFY(!row->isHidden() && spinBox->isEnabled());
        row->setWidgetItemEnable(false);
        row->updateWidget(true);
        QVERIFY(!spinBox->isEnabled());
    }

    /// Until the host can read it.
    void liveRowsStayDisabledWhileUnreadable()
    {
        TestCamera camera;
        const auto row = rowOf(camera, "Gain");
        camera.port.readFault = MemoryPort::Fault::Timeout;
        camera.map->InvalidateNodes();
        row->updateWidget(false);
        for (const bool isKnown : {false, true}) {
            if (isKnown)
                m_host.setNodeValue("cam", "Gain", "12.5");
            row->updateWidget(true);
            QCOMPARE(row->findChild<QDoubleSpinBox *>()->isEnabled(), isKnown);
        }
        QCOMPARE(shownBy(*row), QVariant(12.5));
    }

    void liveValues()
    {
        const QString zulu = QStringLiteral("Zulu");
        const std::tuple<const char *, const char *, const char *, int, QVariant> rows[] = {
            {"float", "Gain", "12.5", 0, 12.5},
            {"float, failed read", "Gain", "12.5", -1, 1.0},
            {"float, no number", "Gain", "hot", 0, 1.0},
            {"float, not finite", "Gain", "nan", 0, 1.0},
            {"enumeration", "Selector", "Alpha", 0, QStringLiteral("Alpha")},
            {"enumeration, unknown", "Selector", "Omega", 0, zulu},
            {"enumeration, failed read", "Selector", "Alpha", 1, zulu},
            {"integer", "Width", "40", 0, 0}};
        for (const auto &[name, node, text, result, shown] : rows) {
            const InRow at(name);
            init();
            TestCamera camera;
            camera.port.pokeDouble(TestCamera::Gain, 1.0);
            const auto item = rowOf(camera, node);
            m_host.setNodeValue("cam", node, text);
            m_host.setReadResult("cam", node, result);
            camera.port.resetCounters();
            QSignalSpy written(item.get(), &ToolPageWidgetItem::valueChanged);
            item->updateWidget(true);
            QCOMPARE(shownBy(*item), shown);
            QCOMPARE(written.count(), 0);
            QVERIFY(camera.port.accesses.empty());
        }
    }

    void liveValuesSpareTheFocusedEditor()
    {
        TestCamera camera;
        const auto row = rowOf(camera, "Gain");
        row->setParent(nullptr);
        QVERIFY(activate(*row));
        auto *spinBox = row->findChild<QDoubleSpinBox *>();
        m_host.setNodeValue("cam", "Gain", "12.5");
        for (const bool isInUse : {true, false}) {
            isInUse ? spinBox->setFocus() : spinBox->clearFocus();
            QCOMPARE(spinBox->hasFocus(), isInUse);
            row->updateWidget(true);
            QCOMPARE(spinBox->value(), isInUse ? 0.0 : 12.5);
        }
    }
};

QTEST_MAIN(tst_ToolPageWidgetItem)
#include "tst_ToolPageWidgetItem.moc"
