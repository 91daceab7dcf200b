// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

#include <stdexcept>

#include "FaultyNode.h"
#include "TestCamera.h"
#include "ToolPage/SelectedButton.h"
#include "ToolPage/SwitchButton.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/FakeHostCore.h"

namespace {

/// What the row's editor shows; invalid without an editor.
QVariant shownBy(const ToolPageWidgetItem &row)
{
    if (const auto *integer = row.findChild<QSpinBox *>())
        return integer->value();
    if (const auto *number = row.findChild<QDoubleSpinBox *>())
        return number->value();
    if (const auto *enumeration = row.findChild<QComboBox *>())
        return enumeration->currentText();
    if (const auto *boolean = row.findChild<SwitchButton *>())
        return boolean->isOn();
    if (const auto *command = row.findChild<QPushButton *>())
        return command->text();
    return QVariant();
}

const QStringList Names{QStringLiteral("Label"), QStringLiteral("标签")};
const QStringList Descriptions{QStringLiteral("Text"), QStringLiteral("说明")};

} // namespace

/// What a row shows; what it writes is the matter of tst_ToolPageWidgetItemInput.
class tst_ToolPageWidgetItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void editors_data();
    void editors();
    void withoutEditor_data();
    void withoutEditor();
    void followsItsFeature();
    void editorAppearsWithItsFeature();
    void enabling();
    void refreshesWhenShown();
    void pagesHideRows();
    void readFaultIsLoggedOnce();
    void faultyNodes_data();
    void faultyNodes();
    void texts();

private:
    std::unique_ptr<ToolPageWidgetItem> rowOf(TestCamera &camera, const char *nodeName);

    QWidget m_page; ///< of rows whose visibility matters: a window of its own is hidden until it is shown
};

void tst_ToolPageWidgetItem::init()
{
    FakeHostCore::instance().reset();
    m_page.hide();
}

std::unique_ptr<ToolPageWidgetItem> tst_ToolPageWidgetItem::rowOf(TestCamera &camera, const char *nodeName)
{
    auto row = std::make_unique<ToolPageWidgetItem>(&m_page);
    row->setItemInfo(Names, Descriptions, camera.node(nodeName), true);
    row->deviceName = QStringLiteral("cam");
    return row;
}

void tst_ToolPageWidgetItem::editors_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<QVariant>("shown");
    QTest::addColumn<bool>("isEnabled");
    QTest::newRow("integer") << QByteArray("Width") << QVariant(48) << true;
    QTest::newRow("float") << QByteArray("Gain") << QVariant(2.5) << true;
    QTest::newRow("boolean") << QByteArray("Power") << QVariant(true) << true;
    QTest::newRow("enumeration") << QByteArray("Selector") << QVariant(QStringLiteral("Alpha")) << true;
    QTest::newRow("command") << QByteArray("Start") << QVariant(QStringLiteral("Execute")) << true;
    QTest::newRow("read-only integer") << QByteArray("WidthMax") << QVariant(100) << false;
    QTest::newRow("locked command") << QByteArray("StartLocked") << QVariant(QStringLiteral("Execute")) << false;
}

void tst_ToolPageWidgetItem::editors()
{
    TestCamera camera;
    camera.port.poke(TestCamera::Width, 48);
    camera.port.pokeDouble(TestCamera::Gain, 2.5);
    camera.port.poke(TestCamera::Power, 1);
    camera.port.poke(TestCamera::Selector, 1);
    QFETCH(QByteArray, node);
    const auto row = rowOf(camera, node);
    QVERIFY(!row->isHidden());
    QTEST(shownBy(*row), "shown");
    bool available = false;
    QTEST(row->getParameterWidget(camera.node(node), available)->isEnabled(), "isEnabled");
    QVERIFY(available);
    QCOMPARE(camera.port.writes, 0u);
    QVERIFY(FakeHostCore::instance().calls().isEmpty());
}

void tst_ToolPageWidgetItem::withoutEditor_data()
{
    QTest::addColumn<QByteArray>("node");
    for (const char *node : {"NoSuchNode", "Label", "Anything", "Image", "Invisible", "WidthReg", "WriteOnly", "Gated"})
        QTest::newRow(node) << QByteArray(node);
}

void tst_ToolPageWidgetItem::withoutEditor()
{
    TestCamera camera;
    QFETCH(QByteArray, node);
    const auto row = rowOf(camera, node);
    QVERIFY(row->isHidden());
    QVERIFY(!shownBy(*row).isValid());

    ToolPageWidgetItem alwaysShown(&m_page);
    alwaysShown.setItemInfo(Names, Descriptions, camera.node(node), false);
    QVERIFY(!alwaysShown.isHidden());
    QVERIFY(FakeHostCore::instance().calls().isEmpty());
}

void tst_ToolPageWidgetItem::followsItsFeature()
{
    TestCamera camera;
    const auto width = rowOf(camera, "Width");
    const auto selector = rowOf(camera, "Selector");
    const auto power = rowOf(camera, "Power");
    const auto gain = rowOf(camera, "Gain");
    GenApi::CIntegerPtr(camera.node("Width"))->SetValue(20);
    GenApi::CEnumerationPtr(camera.node("Selector"))->FromString("Alpha");
    GenApi::CBooleanPtr(camera.node("Power"))->SetValue(true);
    GenApi::CFloatPtr(camera.node("Gain"))->SetValue(7.25);
    camera.port.resetCounters();
    for (const auto *row : {&width, &selector, &power, &gain}) {
        QSignalSpy written(row->get(), &ToolPageWidgetItem::valueChanged);
        (*row)->updateWidget(false);
        QCOMPARE(written.count(), 0);
    }
    QCOMPARE(camera.port.writes, 0u);
    QCOMPARE(shownBy(*width), QVariant(20));
    QCOMPARE(shownBy(*selector), QVariant(QStringLiteral("Alpha")));
    QCOMPARE(shownBy(*power), QVariant(true));
    QCOMPARE(shownBy(*gain), QVariant(7.25));
}

void tst_ToolPageWidgetItem::editorAppearsWithItsFeature()
{
    TestCamera camera;
    const auto row = rowOf(camera, "Gated");
    row->resize(400, 40);
    row->updateWidget(false);
    QVERIFY(row->isHidden());
    GenApi::CIntegerPtr(camera.node("Switch"))->SetValue(1);
    row->updateWidget(false);
    QVERIFY(!row->isHidden());
    const auto *spinBox = row->findChild<QSpinBox *>();
    QCOMPARE(spinBox->value(), 1);
    QCOMPARE(spinBox->geometry().right(), row->width() - 10 - 1);
    QCOMPARE(spinBox->height(), 34);

    GenApi::CIntegerPtr(camera.node("Switch"))->SetValue(0);
    row->updateWidget(false);
    QVERIFY(row->isHidden());
}

void tst_ToolPageWidgetItem::enabling()
{
    TestCamera camera;
    const auto width = rowOf(camera, "Width");
    width->setWidgetItemEnable(false);
    width->updateWidget(false);
    QVERIFY(!width->findChild<QSpinBox *>()->isEnabled());
    width->setWidgetItemEnable(true);
    QVERIFY(width->findChild<QSpinBox *>()->isEnabled());

    const auto readOnly = rowOf(camera, "WidthMax");
    readOnly->setWidgetItemEnable(true);
    readOnly->updateWidget(false);
    QVERIFY(!readOnly->findChild<QSpinBox *>()->isEnabled());

    const auto later = rowOf(camera, "Gated");
    later->setWidgetItemEnable(false);
    GenApi::CIntegerPtr(camera.node("Switch"))->SetValue(1);
    later->updateWidget(false);
    QVERIFY(later->findChild<QSpinBox *>()->isEnabled());
}

void tst_ToolPageWidgetItem::refreshesWhenShown()
{
    TestCamera camera;
    const auto row = rowOf(camera, "Uncached");
    camera.port.poke(TestCamera::Uncached, 12);
    m_page.show();
    QCOMPARE(shownBy(*row), QVariant(12));
}

void tst_ToolPageWidgetItem::pagesHideRows()
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
void tst_ToolPageWidgetItem::readFaultIsLoggedOnce()
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
    const QStringList log = FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo"));
    QCOMPARE(log.size(), 1);
    QVERIFY(log.first().startsWith(QLatin1String("VLogInfo(ToolPageWidgetItem, Read Uncached failed, message = ")));

    camera.port.readFault = MemoryPort::Fault::None;
    camera.port.poke(TestCamera::Uncached, 6);
    row->updateWidget(false);
    QVERIFY(!row->isHidden());
    QVERIFY(row->findChild<QSpinBox *>()->isEnabled());
    QCOMPARE(shownBy(*row), QVariant(6));
}

void tst_ToolPageWidgetItem::faultyNodes_data()
{
    QTest::addColumn<bool>("isGenICam");
    QTest::addColumn<bool>("hasShape");
    QTest::newRow("GenICam, every call") << true << false;
    QTest::newRow("GenICam, value calls") << true << true;
    QTest::newRow("foreign, every call") << false << false;
    QTest::newRow("foreign, value calls") << false << true;
}

void tst_ToolPageWidgetItem::faultyNodes()
{
    QFETCH(bool, isGenICam);
    QFETCH(bool, hasShape);
    FaultyNode node([isGenICam] {
        if (isGenICam)
            throw RUNTIME_EXCEPTION("broken");
        throw std::runtime_error("broken");
    });
    node.hasShape = hasShape;
    ToolPageWidgetItem row(&m_page);
    row.setItemInfo(Names, Descriptions, &node, true);
    row.updateWidget(false);
    row.updateWidget(true);
    row.setCurrentValue();
    row.setLanguage(1);
    QVERIFY(row.isHidden());
    QVERIFY(!shownBy(row).isValid());
    bool available = true;
    QVERIFY(!row.getParameterWidget(&node, available));
    QVERIFY(!row.getFloatParamWidget(&node, available));
    QCOMPARE(FakeHostCore::instance().calls().size(), hasShape ? 0 : 1);
}

void tst_ToolPageWidgetItem::texts()
{
    TestCamera camera;
    const auto row = rowOf(camera, "Power");
    const auto *label = row->findChild<QLabel *>();
    QCOMPARE(label->text(), QString());
    for (const int language : {1, 7, 0}) {
        row->setLanguage(language);
        QCOMPARE(label->text(), Names.at(language != 0));
        QCOMPARE(row->findChild<SwitchButton *>()->accessibleName(), label->text());
    }
    QCOMPARE(rowOf(camera, "Gain")->findChild<QDoubleSpinBox *>()->accessibleDescription(), QStringLiteral("dB"));
    QCOMPARE(rowOf(camera, "Width")->findChild<QSpinBox *>()->accessibleDescription(), QString());
    QCOMPARE(row->getDescription(1), Descriptions.at(1));
    QCOMPARE(row->getDescription(5), QString());
    QCOMPARE(row->getDescription(-1), QString());

    ToolPageWidgetItem oneName;
    oneName.setItemInfo({QStringLiteral("only")}, {}, static_cast<QWidget *>(nullptr));
    oneName.setLanguage(1);
    QCOMPARE(oneName.findChild<QLabel *>()->text(), QString());
}

QTEST_MAIN(tst_ToolPageWidgetItem)
#include "tst_ToolPageWidgetItem.moc"
