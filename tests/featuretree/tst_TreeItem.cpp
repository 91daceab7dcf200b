// SPDX-License-Identifier: MIT
#include <memory>
#include <stdexcept>

#include "FaultyNode.h"
#include "FeatureTree/TreeItem.h"
#include "TestCamera.h"
#include "TestRows.h"
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

const struct
{
    const char *name;
    QVariant value;
} Shown[] = {
    // clang-format off
    {"Width", qint64(48)}, {"Big", std::numeric_limits<qint64>::min() + 1}, {"Gain", 2.5}, {"SinData", 0.123456789},
    {"Power", QStringLiteral("True")}, {"Selector", QStringLiteral("Alpha")}, {"Temperature", 12.3456},
    {"Label", QString::fromUtf8("gr\xc3\xbc\xc3\x9f")}, {"Start", QStringLiteral("{Execute}")},
    {"GevCurrentSubnetMask", QStringLiteral("255.255.255.0")}, {"GevMACAddress", QStringLiteral("0.26.43.60.77.94")},
    {"OtherMac", QStringLiteral("0.26.43.60.77.94")}, {"Address", QStringLiteral("10.0.0.1")},
    {"Flags", QStringLiteral("0xff")}, {"Anything", QStringLiteral("stored")}, {"Image", QStringLiteral("stored")}
    // clang-format on
};

const struct
{
    const char *name;
    QVariant value;
    int address;
    quint64 pattern;
    QVariant stored;
} Written[] = {
    {"Width", 52.0, TestCamera::Width, 52, qint64(52)},
    {"Selector", QStringLiteral("Alpha"), TestCamera::Selector, 1, {}},
    {"Big", (qint64(1) << 53) + 1, TestCamera::Big, (quint64(1) << 53) + 1, (qint64(1) << 53) + 1},
    {"Gain", 0.1, TestCamera::Gain, 0x3fb99999a0000000, static_cast<double>(0.1f)}, // in single precision
    {"Label", QString::fromUtf8("\xc3\xbc"), TestCamera::Label, 0xbcc3, QString::fromUtf8("\xc3\xbc")},
    {"WriteOnlyGain", 4.0, TestCamera::WriteOnlyGain, 0x4010000000000000, {}},
};

const struct
{
    const char *name, *feature, *reason;
    QVariant value, old;
    MemoryPort::Fault fault = MemoryPort::Fault::None;
} RefusedWrites[] = {
    {"increment", "Width", "50", 50, qint64(48)},
    {"range", "Width", "200", 200, qint64(48)},
    {"device", "Power", "refused", true, false, MemoryPort::Fault::Refused},
    {"read-only", "Temperature", "writable", 1.0, 0.0},
    {"unverified float", "Gain", "500", 500.0, 2.0},
    {"no old value", "Selector", "refused", QStringLiteral("Alpha"), {}, MemoryPort::Fault::Refused},
};

} // namespace

class tst_TreeItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        FakeHostCore::instance().reset();
        m_camera = std::make_unique<TestCamera>();
        m_item = std::make_unique<TreeItem>(cells(QStringLiteral("Name")));
    }

    void cleanup()
    {
        m_item.reset();
        m_camera.reset();
    }

    void shows_data() { addRows(Shown); }

    void shows()
    {
        const auto &[name, value] = currentRow(Shown);
        m_camera->pokeValues();
        m_camera->port.poke(TestCamera::Big, quint64(1) << 63 | 1, 8);
        m_camera->port.poke(TestCamera::Power, 1);
        m_camera->port.poke(TestCamera::Address4, 0x0a000001);
        bind(name, QStringLiteral("stored"));
        QCOMPARE(m_item->data(1), value);
        QCOMPARE(m_item->storedData(1), value);
        m_camera->port.resetCounters();
        QCOMPARE(m_item->data(0), QVariant(QLatin1String(name)));
        QCOMPARE(m_camera->port.reads, 0u);
    }

    void unreadableKeepsTheStoredCell()
    {
        for (const char *name : {"WriteOnly", "WriteOnlyGain"}) {
            bind(name, 5);
            QCOMPARE(m_item->data(1), QVariant(QStringLiteral("{Not Available}")));
            QCOMPARE(m_item->storedData(1), QVariant(5));
        }
        bind("Uncached", 5);
        m_camera->port.readFault = MemoryPort::Fault::Timeout;
        QCOMPARE(m_item->data(1), QVariant(5));
        m_camera->port.readFault = MemoryPort::Fault::None;
        QCOMPARE(m_item->data(1), QVariant(qint64(0)));
        QCOMPARE(FakeHostCore::instance().calls(), QStringList());
    }

    void foreignFaultIsLoggedOnce()
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

    void lineRateBypassesTheCache()
    {
        for (const auto &[name, reads] : {std::pair("AcquisitionLineRate", 1u), {"Gain", 0u}}) {
            bind(name);
            m_item->data(1);
            m_camera->port.resetCounters();
            m_item->data(1);
            QCOMPARE(std::pair(name, m_camera->port.reads), std::pair(name, reads));
        }
    }

    void writes_data() { addRows(Written); }

    void writes()
    {
        const auto &row = currentRow(Written);
        bind(row.name);
        QElapsedTimer timer;
        timer.start();
        QVERIFY(m_item->setData(1, row.value));
        QVERIFY(timer.elapsed() >= 50);
        QCOMPARE(quint64(m_camera->port.peek(row.address, 8)), row.pattern);
        QCOMPARE(m_item->storedData(1), row.stored);
    }

    void refusedWriteRollsBack_data() { addRows(RefusedWrites); }

    void refusedWriteRollsBack()
    {
        const auto &row = currentRow(RefusedWrites);
        const QByteArray feature = row.feature;
        m_camera->port.poke(TestCamera::Width, 48);
        m_camera->port.pokeDouble(TestCamera::Gain, 2.0);
        m_camera->port.writeFault = row.fault;
        bind(feature, QStringLiteral("shown before"));
        QTest::ignoreMessage(QtDebugMsg, "Failed to set data for " + feature);
        QVERIFY(m_item->setData(1, row.value));
        QCOMPARE(m_item->storedData(1), row.old);
        const QString calls = FakeHostCore::instance().calls().join(QLatin1Char('|'));
        const QString line = log(("Set " + feature + " value failed, message = ").constData()).chopped(4);
        QVERIFY2(calls.startsWith(line) && calls.mid(line.size()).contains(QLatin1String(row.reason)),
                 qPrintable(calls));
        QCOMPARE(calls.count(QLatin1Char('|')), 0);
    }
    void foreignWriteFaultIsLogged()
    {
        bind("Power");
        m_camera->port.writeFault = MemoryPort::Fault::Foreign;
        for (int times = 1; times <= 2; ++times) {
            QVERIFY(m_item->setData(1, true));
            QCOMPARE(FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")).size(), times);
        }
    }

    void writesNothing()
    {
        for (const char *name : {"Selector", "Start", "Image", "Anything"}) {
            bind(name);
            QVERIFY(m_item->setData(1, QStringLiteral("NoSuchEntry")));
            QVERIFY2(m_camera->port.writes == 0, name);
        }
    }

    void storesWithoutNode()
    {
        QTest::ignoreMessage(QtDebugMsg, "Feature is invalid!");
        QVERIFY(m_item->setData(1, 7));
        QCOMPARE(m_item->data(1), QVariant(7));
        QVERIFY(m_item->setData(0, QStringLiteral("Other")));
        QCOMPARE(m_item->data(0), QVariant(QStringLiteral("Other")));
        const QVector<QPair<int, QVariant>> refused{{5, 1}, {-1, 1}, {1, QVariant()}, {0, QVariant()}};
        for (const auto &[column, invalid] : refused) {
            QTest::ignoreMessage(QtDebugMsg, "Data is invalid!");
            QVERIFY(!m_item->setData(column, invalid));
        }
        QVERIFY(!m_item->GetFeaturePtr());
        QVERIFY(!m_item->getVisiable(2, QString()));
        QString interfaceName = QStringLiteral("before");
        QVERIFY(!m_item->EnterEditMode(interfaceName));
        QCOMPARE(interfaceName, QStringLiteral("before"));
    }

    void visibility()
    {
        m_camera->port.poke(TestCamera::Power, 1);
        const struct
        {
            const char *feature;
            int level;
            const char *filter;
            bool isShown;
        } rows[] = {{"Expert", 0, "", false},
                    {"Expert", 1, "", true},
                    {"Guru", 1, "", false},
                    {"Guru", 2, "", true},
                    {"Invisible", 2, "", false},
                    {"Width", 0, "gain", false},
                    {"TriggerSoftware", 0, "gERsoft", true},
                    {"Image", 0, "gain", true},
                    {"Guru", 0, "guru", false},
                    {"GatedByBoolean", 0, "", false}};
        for (const auto &row : rows) {
            bind(row.feature);
            QVERIFY2(m_item->getVisiable(row.level, QLatin1String(row.filter)) == row.isShown,
                     QByteArray(row.feature) + QByteArray::number(row.level) + row.filter);
        }
    }

    void availabilityFollowsTheDevice()
    {
        bind("Gated");
        for (const quint64 isOn : {0, 2, 0}) {
            m_camera->port.poke(TestCamera::Switch, isOn);
            QCOMPARE(m_item->getVisiable(0, QString()), isOn != 0);
        }
    }

    void brokenSwitch()
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

    void switchThatDoesNotExistShowsTheRow()
    {
        const TestCamera other(TestCamera::description("<Category Name=\"Root\"><pFeature>Some</pFeature></Category>"
                                                       "<Integer Name=\"Some\"><pIsAvailable>Missing</pIsAvailable>"
                                                       "<Value>1</Value></Integer>"));
        TreeItem some(cells(QStringLiteral("Some")));
        some.SetFeature(other.node("Some"));
        QVERIFY(some.getVisiable(0, QString()));
    }

    void faultyNodeNeverThrows()
    {
        for (int kind = 0; kind < 6; ++kind) {
            FaultyNode node([kind] {
                if (kind < 2)
                    throw RUNTIME_EXCEPTION("faulty");
                if (kind < 4)
                    throw std::runtime_error("faulty");
                throw 42;
            });
            node.hasShape = kind % 2 != 0;
            m_item = std::make_unique<TreeItem>(cells(QStringLiteral("Faulty"), 5));
            m_item->SetFeature(static_cast<GenApi::INode *>(&node));
            QCOMPARE(m_item->data(1), QVariant(5));
            QVERIFY(m_item->setData(1, 6));
            QVERIFY2(m_item->getVisiable(2, QString()) == (kind >= 2), QByteArray::number(kind));
            QString interfaceName;
            QVERIFY(!m_item->EnterEditMode(interfaceName));
            QCOMPARE(m_item->GetFeaturePtr(), static_cast<GenApi::INode *>(&node));
        }
    }

private:
    void bind(const char *name, const QVariant &stored = {})
    {
        QVERIFY2(m_camera->node(name), name);
        m_item = std::make_unique<TreeItem>(cells(QString::fromUtf8(name), stored));
        m_item->SetFeature(m_camera->node(name));
    }

    std::unique_ptr<TestCamera> m_camera;
    std::unique_ptr<TreeItem> m_item;
};

QTEST_GUILESS_MAIN(tst_TreeItem)
#include "tst_TreeItem.moc"
