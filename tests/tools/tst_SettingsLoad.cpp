// SPDX-License-Identifier: MIT
#include "Tools/SettingsLoad.h"

#include <QTest>

#include <set>

#include "Tools/SettingsStore.h"
#include "genapi/Camera.h"

using Load = SettingsLoad;

namespace {

constexpr int Features = 65;
constexpr int Positions = 20;
constexpr int64_t Values = 0x1000;
constexpr int64_t SelectorAddress = 0x10;

int64_t addressOf(int feature, int position)
{
    return Values + feature * 0x100 + position * 4;
}

/// Features with a value at each position of one selector.
std::string description()
{
    std::string root = "<Category Name=\"Root\"><pFeature>S</pFeature>";
    std::string nodes;
    std::string selected;
    for (int i = 0; i < Features; ++i) {
        const std::string name = "F" + std::to_string(i);
        const std::string address = std::to_string(addressOf(i, 0));
        nodes +=
            integer(name.c_str(), address.c_str(), "<Streamable>Yes</Streamable>", "<pIndex Offset=\"4\">S</pIndex>");
        selected += "<pSelected>" + name + "</pSelected>";
        root += "<pFeature>" + name + "</pFeature>";
    }
    return root + "</Category>" + nodes
        + integer("S", "0x10", "<Min>0</Min><Max>" + std::to_string(Positions - 1) + "</Max>" + selected);
}

/// Refuses writes to some addresses, and falls silent after some.
class ScriptedPort : public GenApi::IPort
{
public:
    explicit ScriptedPort(MemoryPort &target) : m_target(target) { }

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void *buffer, int64_t address, int64_t length) override
    {
        pass();
        m_target.Read(buffer, address, length);
    }
    void Write(const void *buffer, int64_t address, int64_t length) override
    {
        pass();
        if (refused.count(address))
            throw RUNTIME_EXCEPTION("no write to %lld today", static_cast<long long>(address));
        if (address >= Values && --writesLeft < 0)
            isSilent = true;
        pass();
        m_target.Write(buffer, address, length);
        valueWrites += address >= Values ? 1 : 0;
    }

    std::set<int64_t> refused;
    int writesLeft = 1 << 30; ///< of values
    bool isSilent = false;
    int valueWrites = 0;
    int silentAccesses = 0;

private:
    void pass()
    {
        silentAccesses += isSilent ? 1 : 0;
        if (isSilent)
            throw TIMEOUT_EXCEPTION("silence");
    }

    MemoryPort &m_target;
};

struct Device
{
    Device()
    {
        camera.map->Connect(&port);
        camera.port.poke(SelectorAddress, 7);
    }
    Camera camera{description()};
    ScriptedPort port{camera.port};
    GenApi::INodeMap &map() { return *camera.map; }
};

/// What a device holds in which every value is another one.
Persistence::Settings file()
{
    Device device;
    for (int i = 0; i < Features; ++i) {
        for (int k = 0; k < Positions; ++k)
            device.camera.port.poke(addressOf(i, k), static_cast<uint64_t>(i) * 100 + static_cast<uint64_t>(k) + 1);
    }
    return settingsOf(device.map());
}

std::size_t count(const Load &load, Load::Now now)
{
    return static_cast<std::size_t>(
        std::count_if(load.rows().begin(), load.rows().end(), [now](const Load::Row &row) { return row.now == now; }));
}

constexpr std::size_t All = Features * Positions;

} // namespace

class tst_SettingsLoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSecondLoadWritesNothing()
    {
        Device device;
        Load load(file());
        QCOMPARE(load.rows().size(), All + 1); // the selector
        QCOMPARE(load.compare(device.map()), Load::End::Complete);
        QCOMPARE(count(load, Load::Now::Differs), All);
        QCOMPARE(device.port.valueWrites, 0);
        QCOMPARE(load.apply(device.map()), Load::End::Complete);
        QCOMPARE(load.written().size(), All);
        QVERIFY(load.refused().empty() && load.notTried().empty() && load.problems().isEmpty());
        QCOMPARE(device.camera.port.peek(SelectorAddress), uint64_t(7));
        device.port.valueWrites = 0;
        Load again(file());
        QCOMPARE(again.compare(device.map()), Load::End::Complete);
        QCOMPARE(again.apply(device.map()), Load::End::Complete);
        QCOMPARE(device.port.valueWrites, 0);
        QVERIFY(again.written().empty() && again.refused().empty());
    }

    /// With and without a comparison before.
    void refusedWritesAreListedAndNothingElseIsLost()
    {
        for (bool isCompared : {false, true}) {
            Device device;
            std::set<QString> expected;
            for (int i = 0; i < static_cast<int>(All); i += 100) {
                device.port.refused.insert(addressOf(i % Features, i % Positions));
                expected.insert(QStringLiteral("F%1[S=%2]").arg(i % Features).arg(i % Positions));
            }
            Load load(file());
            if (isCompared)
                QCOMPARE(load.compare(device.map()), Load::End::Complete);
            QCOMPARE(load.apply(device.map()), Load::End::Complete);
            std::set<QString> refused;
            for (std::size_t i : load.refused()) {
                const Load::Row &row = load.rows()[i];
                refused.insert(QStringLiteral("%1[%2]").arg(row.feature, row.position));
                QVERIFY2(load.complaint(i).contains(QLatin1String("no write to")), qPrintable(load.complaint(i)));
                QVERIFY(!row.isWritten);
            }
            QVERIFY2(refused == expected, qPrintable(QString::number(refused.size())));
            Load check(file());
            QCOMPARE(check.compare(device.map()), Load::End::Complete);
            QCOMPARE(count(check, Load::Now::Same), All + 1 - expected.size());
            QCOMPARE(device.camera.port.peek(SelectorAddress), uint64_t(7));
        }
    }

    void aLostDeviceEndsIt()
    {
        constexpr int Before = 500;
        Device device;
        device.port.writesLeft = Before;
        Load load(file());
        QCOMPARE(load.apply(device.map()), Load::End::Lost);
        QCOMPARE(load.written().size(), std::size_t(Before));
        QCOMPARE(load.written().size() + load.refused().size() + load.notTried().size(), All + 1);
        QVERIFY2(load.refused().size() <= 3, "the device was asked on and on");
        QVERIFY2(device.port.silentAccesses < 20, qPrintable(QString::number(device.port.silentAccesses)));
    }

    void theUserEndsItAndTheSelectorsAreBack()
    {
        for (Load::Phase phase : {Load::Phase::Comparing, Load::Phase::Writing, Load::Phase::Verifying}) {
            Device device;
            Load load(file());
            const auto step = [&](const Load::Progress &progress) {
                return progress.phase != phase || progress.done < 300;
            };
            Load::End end = load.compare(device.map(), step);
            if (end == Load::End::Complete)
                end = load.apply(device.map(), step);
            QCOMPARE(end, Load::End::Cancelled);
            QCOMPARE(device.camera.port.peek(SelectorAddress), uint64_t(7));
            const std::size_t written = phase == Load::Phase::Comparing ? 0 : phase == Load::Phase::Writing ? 300 : All;
            QCOMPARE(load.written().size(), written);
            QCOMPARE(device.port.valueWrites, static_cast<int>(written));
            QVERIFY(load.refused().empty());
        }
    }

    void onlyChosenRowsAreWritten()
    {
        Device device;
        Load load(file());
        for (std::size_t i = 0; i < load.rows().size(); ++i)
            load.choose(i, load.rows()[i].position == QLatin1String("S=3"));
        QCOMPARE(load.apply(device.map()), Load::End::Complete);
        QCOMPARE(load.written().size(), std::size_t(Features));
        QCOMPARE(device.camera.port.peek(addressOf(5, 3)), uint64_t(504));
        QCOMPARE(device.camera.port.peek(addressOf(5, 4)), uint64_t(0));
    }

    /// A write that changes another setting, which was as it should be.
    void whatAWriteDisturbsIsWrittenAgain()
    {
        Device device;
        device.camera.port.poke(addressOf(1, 0), 101);
        device.camera.port.onWrite[addressOf(2, 0)] = [](MemoryPort &port) { port.poke(addressOf(1, 0), 5); };
        Load load(file());
        QCOMPARE(load.compare(device.map()), Load::End::Complete);
        QCOMPARE(load.apply(device.map()), Load::End::Complete);
        QCOMPARE(device.camera.port.peek(addressOf(1, 0)), uint64_t(101));
        QCOMPARE(load.written().size(), All);
    }

    void aFileOfAnotherModelIsTold()
    {
        Device device;
        Persistence::Settings settings = file();
        QVERIFY(Load(settings).models(device.map()).isSame);
        settings.device.vendor = "Maker";
        settings.device.model = "Other";
        const Load::Models models = Load(settings).models(device.map());
        QVERIFY(!models.isSame);
        QCOMPARE(models.file, QStringLiteral("Maker Other"));
        QCOMPARE(models.device, QStringLiteral("Test"));
    }

    /// Not even a description that marks nothing leaves an empty file.
    void settingsThatAreNotMarkedAreStored()
    {
        std::string unmarked = description();
        for (std::size_t at = 0; (at = unmarked.find("<Streamable>Yes</Streamable>")) != std::string::npos;)
            unmarked.erase(at, 28);
        Camera camera(unmarked);
        const Persistence::Settings settings = settingsOf(*camera.map);
        QCOMPARE(settings.entries.size(), All + Features);
        QCOMPARE(settings.problems.size(), std::size_t(1));
        QVERIFY(settings.problems.front().severity == Persistence::Severity::Note);
    }
};

QTEST_APPLESS_MAIN(tst_SettingsLoad)
#include "tst_SettingsLoad.moc"
