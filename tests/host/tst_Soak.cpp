// SPDX-License-Identifier: MIT
#include <QtTest>

#include "soak/EventWatch.h"
#include "soak/SoakRun.h"
#include "soak/SoakSession.h"

namespace {

constexpr int Bound = 3000; ///< ms; of a run without a planted fault
constexpr int Steps = 80;

EventWatch &watch()
{
    return *static_cast<EventWatch *>(qApp);
}

/// Does something at the first resize of what it watches.
class Plant : public QObject
{
public:
    explicit Plant(std::function<void()> fault) : m_fault(std::move(fault)) { }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Resize && m_fault)
            std::exchange(m_fault, nullptr)();
        return false;
    }

private:
    std::function<void()> m_fault;
};

} // namespace

/// The driver of soak runs: what it finds can be found again.
class tst_Soak : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void seedsReplay()
    {
        const auto looks = [](quint64 seed) {
            SoakSession session(seed);
            SoakRun run(session.stage(), watch(), {0, Steps, Bound, 1});
            return run.run() ? run.looks() : QStringList{session.record().report()};
        };
        const QStringList first = looks(3);
        QVERIFY2(first.size() == Steps, qPrintable(first.join(QLatin1Char('\n'))));
        QCOMPARE(looks(3), first);
        QVERIFY(looks(4) != first);
    }

    void plantedFaultsAreFound()
    {
        const struct
        {
            const char *name, *reason;
            std::function<void(SoakSession &)> fault;
        } rows[] = {
            {"warning", "planted", [](SoakSession &) { qWarning("planted"); }},
            {"stall", "took", [](SoakSession &) { QThread::msleep(Bound + 300); }},
            {"dock", "docks", [](SoakSession &session) { session.stage().dock("logDock").parentWidget()->hide(); }},
        };
        for (const auto &row : rows) {
            SoakSession session(7);
            Plant plant([&] { row.fault(session); });
            session.stage().window().installEventFilter(&plant);
            SoakRun run(session.stage(), watch(), {0, 300, Bound, 1000});
            const bool passed = run.run();
            const QString report = session.record().report();
            QVERIFY2(!passed && report.contains(QLatin1String(row.reason)), row.name);
            QVERIFY2(report.contains(QLatin1String("seed 7, step")) && report.contains(QLatin1String("resize:")),
                     row.name);
        }
    }
};

int main(int argc, char **argv)
{
    EventWatch application(argc, argv);
    tst_Soak test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_Soak.moc"
