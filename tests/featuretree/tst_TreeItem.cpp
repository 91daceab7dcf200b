// SPDX-License-Identifier: MIT
#include <limits>
#include <memory>
#include <stdexcept>

#include <QtTest>

#include "FaultyNode.h"
#include "FeatureTree/TreeItem.h"
#include "FeatureTree/VisibilityPass.h"
#include "TestCamera.h"
#include "support/FakeHostCore.h"

namespace {

QVector<QVariant> cells(const QVariant &name, const QVariant &value = {})
{
    return {name, value};
}

QString log(const char *message)
{
    return QStringLiteral("VLogInfo(TreeItem, %1, 0)").arg(QLatin1String(message));
}

} // namespace

class tst_TreeItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void shows_data();
    void shows();
    void unreadableKeepsTheStoredCell();
    void failingReadShowsTheStoredCell();
    void foreignFaultIsLoggedOnce();
    void lineRateBypassesTheCache();
    void writes_data();
    void writes();
    void keepsAll64Bits();
    void refusedWriteRollsBack_data();
    void refusedWriteRollsBack();
    void foreignWriteFaultIsLogged();
    void writesNothing_data();
    void writesNothing();
    void writesWhatCannotBeRead();
    void storesWithoutNode();
    void visibility_data();
    void visibility();
    void availabilityFollowsTheDevice();
    void passReadsEachSwitchOnce();
    void brokenSwitch();
    void switchThatDoesNotExistShowsTheRow();
    void faultyNodeNeverThrows_data();
    void faultyNodeNeverThrows();

private:
    void bind(const char *name, const QVariant &stored = {});

    std::unique_ptr<TestCamera> m_camera;
    std::unique_ptr<TreeItem> m_item;
};

void tst_TreeItem::init()
{
    FakeHostCore::instance().reset();
    m_camera = std::make_unique<TestCamera>();
    m_item = std::make_unique<TreeItem>(cells(QStringLiteral("Name")));
}

void tst_TreeItem::cleanup()
{
    m_item.reset();
    m_camera.reset();
}

void tst_TreeItem::bind(const char *name, const QVariant &stored)
{
    QVERIFY2(m_camera->node(name), name);
    m_item = std::make_unique<TreeItem>(cells(QString::fromUtf8(name), stored));
    m_item->SetFeature(m_camera->node(name));
}

void tst_TreeItem::shows_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("value");
    const auto row = [](const char *name, const QVariant &value) { QTest::newRow(name) << QByteArray(name) << value; };
    row("Width", qint64(48));
    row("Big", std::numeric_limits<qint64>::min() + 1);
    row("Gain", 2.5);
    row("SinData", 0.123456789);
    row("Power", QStringLiteral("True"));
    row("Selector", QStringLiteral("Alpha"));
    row("Label", QString::fromUtf8("gr\xc3\xbc\xc3\x9f"));
    row("Start", QStringLiteral("{Execute}"));
    row("GevCurrentSubnetMask", QStringLiteral("255.255.255.0"));
    row("GevMACAddress", QStringLiteral("0.26.43.60.77.94"));
    row("OtherMac", QStringLiteral("0.26.43.60.77.94"));
    row("Address", QStringLiteral("10.0.0.1"));
    row("Flags", QStringLiteral("0xff"));
    row("Temperature", 12.3456);
    row("PowerState", QStringLiteral("True"));
    row("Anything", QStringLiteral("stored"));
    row("Image", QStringLiteral("stored"));
}

void tst_TreeItem::shows()
{
    QFETCH(QByteArray, name);
    QFETCH(QVariant, value);
    m_camera->port.poke(TestCamera::Width, 48);
    m_camera->port.poke(TestCamera::Big, quint64(1) << 63 | 1, 8);
    m_camera->port.pokeDouble(TestCamera::Gain, 2.5);
    m_camera->port.pokeDouble(TestCamera::Temperature, 12.3456);
    m_camera->port.poke(TestCamera::Power, 1);
    m_camera->port.poke(TestCamera::Selector, 1);
    m_camera->port.pokeText(TestCamera::Label, "gr\xc3\xbc\xc3\x9f", 64);
    m_camera->port.poke(TestCamera::Mask, 0xffffff00);
    m_camera->port.poke(TestCamera::Mac, 0x001a2b3c4d5e, 8);
    m_camera->port.poke(TestCamera::Address4, 0x0a000001);
    m_camera->port.poke(TestCamera::Flags, 0xff, 8);
    bind(name, QStringLiteral("stored"));
    QCOMPARE(m_item->data(1), value);
    QCOMPARE(m_item->storedData(1), value);
    m_camera->port.resetCounters();
    QCOMPARE(m_item->data(0), QVariant(QString::fromUtf8(name)));
    QCOMPARE(m_camera->port.reads, 0u);
}

void tst_TreeItem::unreadableKeepsTheStoredCell()
{
    for (const char *name : {"WriteOnly", "WriteOnlyGain"}) {
        bind(name, 5);
        QCOMPARE(m_item->data(1), QVariant(QStringLiteral("{Not Available}")));
        QCOMPARE(m_item->storedData(1), QVariant(5));
    }
}

void tst_TreeItem::failingReadShowsTheStoredCell()
{
    bind("Uncached", 5);
    m_camera->port.readFault = MemoryPort::Fault::Timeout;
    QCOMPARE(m_item->data(1), QVariant(5));
    m_camera->port.readFault = MemoryPort::Fault::None;
    m_camera->port.poke(TestCamera::Uncached, 6);
    QCOMPARE(m_item->data(1), QVariant(qint64(6)));
    QCOMPARE(FakeHostCore::instance().calls(), QStringList());
}

void tst_TreeItem::foreignFaultIsLoggedOnce()
{
    FaultyNode node([] { throw std::runtime_error("cable pulled"); });
    node.hasShape = true;
    TreeItem root(cells(QString()));
    for (int i = 0; i < 2; ++i)
        root.appendChild(cells(QString(), 5))->SetFeature(static_cast<GenApi::INode *>(&node));
    for (int repaint = 0; repaint < 3; ++repaint) {
        QVERIFY(root.child(0)->getVisiable(2, QString()));
        QVERIFY(root.child(1)->getVisiable(2, QString()));
    }
    QCOMPARE(FakeHostCore::instance().calls(), QStringList(log("cable pulled")));
}

void tst_TreeItem::lineRateBypassesTheCache()
{
    bind("AcquisitionLineRate");
    m_item->data(1);
    m_camera->port.pokeDouble(TestCamera::LineRate, 80.0);
    QCOMPARE(m_item->data(1), QVariant(80.0));
    bind("Gain");
    m_item->data(1);
    m_camera->port.resetCounters();
    m_item->data(1);
    QCOMPARE(m_camera->port.reads, 0u);
}

void tst_TreeItem::writes_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("address");
    QTest::addColumn<quint64>("pattern");
    QTest::addColumn<QVariant>("stored");
    const auto row = [](const char *name, const QVariant &value, int address, quint64 pattern, const QVariant &stored) {
        QTest::newRow(name) << QByteArray(name) << value << address << pattern << stored;
    };
    row("Width", 52.0, TestCamera::Width, 52, qint64(52));
    row("Power", true, TestCamera::Power, 1, true);
    row("Selector", QStringLiteral("Alpha"), TestCamera::Selector, 1, QVariant());
    row("Flags", qint64(0x1f), TestCamera::Flags, 0x1f, qint64(0x1f));
    row("Gain", 0.5, TestCamera::Gain, 0x3fe0000000000000, 0.5);
    row("Label", QString::fromUtf8("\xc3\xbc"), TestCamera::Label, 0xbcc3, QString::fromUtf8("\xc3\xbc"));
}

void tst_TreeItem::writes()
{
    QFETCH(QByteArray, name);
    QFETCH(QVariant, value);
    QFETCH(int, address);
    QFETCH(quint64, pattern);
    QFETCH(QVariant, stored);
    bind(name);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(m_item->setData(1, value));
    QVERIFY(timer.elapsed() >= 50);
    QCOMPARE(quint64(m_camera->port.peek(address, 8)), pattern);
    QCOMPARE(m_item->storedData(1), stored);
}

/// Spin boxes hand their integer over as it is; floats go out in single precision.
void tst_TreeItem::keepsAll64Bits()
{
    const qint64 value = (qint64(1) << 53) + 1;
    bind("Big");
    QVERIFY(m_item->setData(1, value));
    QCOMPARE(qint64(m_camera->port.peek(TestCamera::Big, 8)), value);
    bind("Gain");
    QVERIFY(m_item->setData(1, 0.1));
    QCOMPARE(m_item->data(1), QVariant(static_cast<double>(0.1f)));
}

void tst_TreeItem::refusedWriteRollsBack_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("fault");
    QTest::addColumn<QVariant>("old");
    QTest::addColumn<QString>("reason");
    const int none = int(MemoryPort::Fault::None);
    const int refused = int(MemoryPort::Fault::Refused);
    QTest::newRow("increment") << QByteArray("Width") << QVariant(50) << none << QVariant(qint64(48)) << "50";
    QTest::newRow("range") << QByteArray("Width") << QVariant(200) << none << QVariant(qint64(48)) << "200";
    QTest::newRow("device") << QByteArray("Power") << QVariant(true) << refused << QVariant(false) << "refused";
    QTest::newRow("read-only") << QByteArray("Temperature") << QVariant(1.0) << none << QVariant(0.0) << "writable";
    QTest::newRow("unverified float") << QByteArray("Gain") << QVariant(500.0) << none << QVariant(2.0) << "500";
    QTest::newRow("no old value") << QByteArray("Selector") << QVariant(QStringLiteral("Alpha")) << refused
                                  << QVariant() << "refused";
}

void tst_TreeItem::refusedWriteRollsBack()
{
    QFETCH(QByteArray, name);
    QFETCH(QVariant, value);
    QFETCH(int, fault);
    QFETCH(QVariant, old);
    QFETCH(QString, reason);
    m_camera->port.poke(TestCamera::Width, 48);
    m_camera->port.pokeDouble(TestCamera::Gain, 2.0);
    m_camera->port.writeFault = static_cast<MemoryPort::Fault>(fault);
    bind(name, QStringLiteral("shown before"));
    QTest::ignoreMessage(QtDebugMsg, "Failed to set data for " + name);
    QVERIFY(m_item->setData(1, value));
    QCOMPARE(m_item->storedData(1), old);
    const QStringList calls = FakeHostCore::instance().calls();
    QCOMPARE(calls.size(), 1);
    const QString line = log(("Set " + name + " value failed, message = ").constData()).chopped(4);
    QVERIFY2(calls.first().startsWith(line) && calls.first().mid(line.size()).contains(reason),
             qPrintable(calls.first()));
}

void tst_TreeItem::foreignWriteFaultIsLogged()
{
    bind("Power");
    m_camera->port.writeFault = MemoryPort::Fault::Foreign;
    QVERIFY(m_item->setData(1, true));
    QVERIFY(m_item->setData(1, true));
    QCOMPARE(FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")).size(), 2);
}

void tst_TreeItem::writesNothing_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("unknown entry") << QByteArray("Selector") << QVariant(QStringLiteral("NoSuchEntry"));
    QTest::newRow("command") << QByteArray("Start") << QVariant(1);
    QTest::newRow("category") << QByteArray("Image") << QVariant(1);
    QTest::newRow("register") << QByteArray("Anything") << QVariant(1);
}

void tst_TreeItem::writesNothing()
{
    QFETCH(QByteArray, name);
    QFETCH(QVariant, value);
    bind(name);
    QVERIFY(m_item->setData(1, value));
    QCOMPARE(m_camera->port.writes, 0u);
}

void tst_TreeItem::writesWhatCannotBeRead()
{
    bind("WriteOnlyGain");
    QVERIFY(m_item->setData(1, 4.0));
    QCOMPARE(quint64(m_camera->port.peek(TestCamera::WriteOnlyGain, 8)), quint64(0x4010000000000000));
}

void tst_TreeItem::storesWithoutNode()
{
    QTest::ignoreMessage(QtDebugMsg, "Feature is invalid!");
    QVERIFY(m_item->setData(1, 7));
    QCOMPARE(m_item->data(1), QVariant(7));
    QVERIFY(m_item->setData(0, QStringLiteral("Other")));
    QCOMPARE(m_item->data(0), QVariant(QStringLiteral("Other")));
    const QVector<QPair<int, QVariant>> refused{{5, 1}, {-1, 1}, {1, QVariant()}, {0, QVariant()}};
    for (const auto &[column, value] : refused) {
        QTest::ignoreMessage(QtDebugMsg, "Data is invalid!");
        QVERIFY(!m_item->setData(column, value));
    }
    QVERIFY(!m_item->GetFeaturePtr());
    QVERIFY(!m_item->getVisiable(2, QString()));
    QString interfaceName = QStringLiteral("before");
    QVERIFY(!m_item->EnterEditMode(interfaceName));
    QCOMPARE(interfaceName, QStringLiteral("before"));
}

void tst_TreeItem::visibility_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("beginner") << QByteArray("Width") << 0 << "" << true;
    QTest::newRow("expert as beginner") << QByteArray("Expert") << 0 << "" << false;
    QTest::newRow("expert as expert") << QByteArray("Expert") << 1 << "" << true;
    QTest::newRow("guru as expert") << QByteArray("Guru") << 1 << "" << false;
    QTest::newRow("guru as guru") << QByteArray("Guru") << 2 << "" << true;
    QTest::newRow("invisible") << QByteArray("Invisible") << 2 << "" << false;
    QTest::newRow("part of the name, any case") << QByteArray("TriggerSoftware") << 0 << "gERsoft" << true;
    QTest::newRow("other name") << QByteArray("Width") << 0 << "gain" << false;
    QTest::newRow("category, other name") << QByteArray("Image") << 0 << "gain" << true;
    QTest::newRow("level before name") << QByteArray("Guru") << 0 << "guru" << false;
    QTest::newRow("switched on") << QByteArray("Gated") << 0 << "" << true;
    QTest::newRow("switch is no integer") << QByteArray("GatedByBoolean") << 0 << "" << false;
}

void tst_TreeItem::visibility()
{
    QFETCH(QByteArray, name);
    QFETCH(int, level);
    QFETCH(QString, filter);
    QFETCH(bool, isShown);
    m_camera->port.poke(TestCamera::Switch, 1);
    m_camera->port.poke(TestCamera::Power, 1);
    bind(name);
    QCOMPARE(m_item->getVisiable(level, filter), isShown);
}

void tst_TreeItem::availabilityFollowsTheDevice()
{
    bind("Gated");
    QVERIFY(!m_item->getVisiable(0, QString()));
    m_camera->port.poke(TestCamera::Switch, 2);
    QVERIFY(m_item->getVisiable(0, QString()));
    m_camera->port.poke(TestCamera::Switch, 0);
    QVERIFY(!m_item->getVisiable(0, QString()));
}

void tst_TreeItem::passReadsEachSwitchOnce()
{
    TreeItem other(cells(QString()));
    other.SetFeature(m_camera->node("GatedToo"));
    bind("Gated");
    m_camera->port.poke(TestCamera::Switch, 1);
    m_camera->port.resetCounters();
    VisibilityPass pass{0, QString(), {}};
    QVERIFY(m_item->getVisiable(pass));
    QVERIFY(other.getVisiable(pass));
    QCOMPARE(m_camera->port.readsOf(TestCamera::Switch), 1u);
}

void tst_TreeItem::brokenSwitch()
{
    m_camera->port.poke(TestCamera::Switch, 1);
    bind("Gated");
    m_camera->port.readFault = MemoryPort::Fault::Timeout;
    QVERIFY(!m_item->getVisiable(0, QString()));
    QCOMPARE(FakeHostCore::instance().calls(), QStringList());
    m_camera->port.readFault = MemoryPort::Fault::Foreign;
    QVERIFY(m_item->getVisiable(0, QString()));
    QCOMPARE(FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")).size(), 1);
}

void tst_TreeItem::switchThatDoesNotExistShowsTheRow()
{
    const TestCamera other(TestCamera::description("<Category Name=\"Root\"><pFeature>Some</pFeature></Category>"
                                                   "<Integer Name=\"Some\"><pIsAvailable>Missing</pIsAvailable>"
                                                   "<Value>1</Value></Integer>"));
    TreeItem some(cells(QStringLiteral("Some")));
    some.SetFeature(other.node("Some"));
    QVERIFY(some.getVisiable(0, QString()));
}

void tst_TreeItem::faultyNodeNeverThrows_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("hasShape");
    for (const bool hasShape : {false, true}) {
        QTest::addRow("GenICam, shape %d", hasShape) << 0 << hasShape;
        QTest::addRow("standard, shape %d", hasShape) << 1 << hasShape;
        QTest::addRow("anything, shape %d", hasShape) << 2 << hasShape;
    }
}

void tst_TreeItem::faultyNodeNeverThrows()
{
    QFETCH(int, kind);
    QFETCH(bool, hasShape);
    FaultyNode node([kind] {
        if (kind == 0)
            throw RUNTIME_EXCEPTION("faulty");
        if (kind == 1)
            throw std::runtime_error("faulty");
        throw 42;
    });
    node.hasShape = hasShape;
    m_item = std::make_unique<TreeItem>(cells(QStringLiteral("Faulty"), 5));
    m_item->SetFeature(static_cast<GenApi::INode *>(&node));
    QCOMPARE(m_item->data(1), QVariant(5));
    QVERIFY(m_item->setData(1, 6));
    QCOMPARE(m_item->getVisiable(2, QString()), kind != 0);
    QString interfaceName;
    QVERIFY(!m_item->EnterEditMode(interfaceName));
    QCOMPARE(m_item->GetFeaturePtr(), static_cast<GenApi::INode *>(&node));
}

QTEST_GUILESS_MAIN(tst_TreeItem)
#include "tst_TreeItem.moc"
