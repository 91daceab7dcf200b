// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

#include <memory>

#include "TestCamera.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/FakeHostCore.h"

namespace {

QVariant shownBy(const ToolPageWidgetItem &row)
{
    if (const auto *enumeration = row.findChild<QComboBox *>())
        return enumeration->currentText();
    return row.findChild<QAbstractSpinBox *>()->property("value");
}

} // namespace

/// What the timer refreshes: the device changes it by itself.
class tst_LiveRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { FakeHostCore::instance().reset(); }
    void followTheAccessMode();
    void stayDisabledWhileUnreadable();
    void refresh_data();
    void refresh();
    void spareTheFocusedEditor();

private:
    std::unique_ptr<ToolPageWidgetItem> rowOf(TestCamera &camera, const char *nodeName);

    QWidget m_page; ///< of rows whose visibility matters: a window of its own is hidden until it is shown
};

std::unique_ptr<ToolPageWidgetItem> tst_LiveRows::rowOf(TestCamera &camera, const char *nodeName)
{
    auto row = std::make_unique<ToolPageWidgetItem>(&m_page);
    row->setItemInfo({}, {}, camera.node(nodeName), true);
    row->deviceName = QStringLiteral("cam");
    return row;
}

void tst_LiveRows::followTheAccessMode()
{
    TestCamera camera(TestCamera::description(
        "<Category Name=\"Root\"><pFeature>Time</pFeature></Category><Integer Name=\"Auto\"><Value>1</Value></Integer>"
        "<Integer Name=\"There\"><Value>1</Value></Integer><Float Name=\"Time\"><pIsAvailable>There</pIsAvailable>"
        "<pIsLocked>Auto</pIsLocked><Value>20</Value></Float>"));
    const auto row = rowOf(camera, "Time");
    const auto *spinBox = row->findChild<QDoubleSpinBox *>();
    const auto liveAfter = [&](const char *feature, int value) {
        GenApi::CIntegerPtr(camera.node(feature))->SetValue(value);
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
void tst_LiveRows::stayDisabledWhileUnreadable()
{
    TestCamera camera;
    const auto row = rowOf(camera, "Gain");
    camera.port.readFault = MemoryPort::Fault::Timeout;
    camera.map->InvalidateNodes();
    row->updateWidget(false);
    for (const bool isKnown : {false, true}) {
        if (isKnown)
            FakeHostCore::instance().setNodeValue("cam", "Gain", "12.5");
        row->updateWidget(true);
        QCOMPARE(row->findChild<QDoubleSpinBox *>()->isEnabled(), isKnown);
    }
    QCOMPARE(shownBy(*row), QVariant(12.5));
}

void tst_LiveRows::refresh_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("result");
    QTest::addColumn<QVariant>("shown");
    const QVariant zulu(QStringLiteral("Zulu"));
    QTest::newRow("float") << QByteArray("Gain") << QStringLiteral("12.5") << 0 << QVariant(12.5);
    QTest::newRow("float, failed read") << QByteArray("Gain") << QStringLiteral("12.5") << -1 << QVariant(1.0);
    QTest::newRow("float, no number") << QByteArray("Gain") << QStringLiteral("hot") << 0 << QVariant(1.0);
    QTest::newRow("float, not finite") << QByteArray("Gain") << QStringLiteral("nan") << 0 << QVariant(1.0);
    QTest::newRow("enumeration") << QByteArray("Selector") << QStringLiteral("Alpha") << 0
                                 << QVariant(QStringLiteral("Alpha"));
    QTest::newRow("enumeration, unknown") << QByteArray("Selector") << QStringLiteral("Omega") << 0 << zulu;
    QTest::newRow("enumeration, failed read") << QByteArray("Selector") << QStringLiteral("Alpha") << 1 << zulu;
    QTest::newRow("integer") << QByteArray("Width") << QStringLiteral("40") << 0 << QVariant(0);
}

void tst_LiveRows::refresh()
{
    TestCamera camera;
    camera.port.pokeDouble(TestCamera::Gain, 1.0);
    QFETCH(QByteArray, node);
    QFETCH(QString, text);
    QFETCH(int, result);
    const auto row = rowOf(camera, node);
    FakeHostCore::instance().setNodeValue("cam", node.toStdString(), text.toStdString());
    FakeHostCore::instance().setReadResult("cam", node.toStdString(), result);
    camera.port.resetCounters();
    QSignalSpy written(row.get(), &ToolPageWidgetItem::valueChanged);
    row->updateWidget(true);
    QTEST(shownBy(*row), "shown");
    QCOMPARE(written.count(), 0);
    QVERIFY(camera.port.accesses.empty());
}

void tst_LiveRows::spareTheFocusedEditor()
{
    TestCamera camera;
    const auto row = rowOf(camera, "Gain");
    row->setParent(nullptr);
    row->show();
    QApplication::setActiveWindow(row.get());
    QVERIFY(QTest::qWaitForWindowActive(row.get()));
    auto *spinBox = row->findChild<QDoubleSpinBox *>();
    spinBox->setFocus();
    QVERIFY(spinBox->hasFocus());
    FakeHostCore::instance().setNodeValue("cam", "Gain", "12.5");
    row->updateWidget(true);
    QCOMPARE(spinBox->value(), 0.0);
    spinBox->clearFocus();
    row->updateWidget(true);
    QCOMPARE(spinBox->value(), 12.5);
}

QTEST_MAIN(tst_LiveRows)
#include "tst_LiveRows.moc"
