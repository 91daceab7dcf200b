// SPDX-License-Identifier: MIT
#include "Devices/MergedFinder.h"
#include "TestHost.h"
#include "TestProducer.h"

namespace {

/// A camera that the built-in way finds.
FoundDevice builtIn(const char *id, const FoundDevice &twin = {})
{
    FoundDevice found = twin;
    found.id = text(id);
    found.route.clear();
    found.create = [id] { return std::make_unique<TestDevice>(text(id)); };
    return found;
}

} // namespace

/// A host that searches with producers.
class tst_Producers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qputenv("GENICAM_GENTL64_PATH", m_folder.path().toUtf8());
        TestedProducer::tell("clear");
        m_host.renew();
        start();
    }
    void cleanup()
    {
        m_host.end();
        QCOMPARE(TestedProducer::leftovers(), QByteArray());
    }

    /// Each file once, with its origin; those that are off are not searched with.
    void filesAreKeptInTheSettings()
    {
        QFile broken(m_folder.filePath(text("broken.cti")));
        QVERIFY(broken.open(QFile::WriteOnly) && broken.write("no library") > 0);
        broken.close();
        const QString named = text("/nowhere/maker.cti");
        Producers &producers = m_host->producers();
        QCOMPARE(states(), text("broken.cti environment on"));
        producers.add(TestedProducer::file());
        producers.add(TestedProducer::file());
        producers.setOn(broken.fileName(), false);
        QCOMPARE(states(), text("broken.cti environment off, paramter-test.cti settings on"));
        start({}, {named, TestedProducer::file()});
        QCOMPARE(states(),
                 text("maker.cti command line on, paramter-test.cti command line on, "
                      "broken.cti environment off"));
        start();
        search();
        QCOMPARE(m_host->producers().reports().size(), std::size_t(1));
        QVERIFY(!ids().isEmpty());
        m_host->producers().setOn(broken.fileName(), true);
        m_host->producers().setOn(TestedProducer::file(), false);
        search();
        QCOMPARE(ids(), QStringList());
        QVERIFY2(m_host.log.filter(text("is not used")).size() == 1, qPrintable(m_host.log.join(QLatin1Char('\n'))));
        m_host->producers().remove(TestedProducer::file());
        QCOMPARE(states(), text("broken.cti environment on"));
        QVERIFY(broken.remove());
    }

    /// What became of trying a file is known to the next program, until the file is to be checked again.
    void aFileIsTriedOnce()
    {
        m_host->producers().add(TestedProducer::file());
        qputenv("PARAMTER_TEST_SCRIPT", "crash GCInitLib"); // in the program that tries it
        search();
        QVERIFY2(ids().isEmpty() && m_host.log.join(QString()).contains(text("is not used")),
                 qPrintable(m_host.log.join(QLatin1Char('\n'))));
        qunsetenv("PARAMTER_TEST_SCRIPT");
        start();
        search();
        QVERIFY2(ids().isEmpty(), "the verdict was not kept");
        m_host->producers().checkAgain(TestedProducer::file());
        search();
        QVERIFY(!ids().isEmpty());
    }

    /// A camera that is found twice is listed by the chosen way.
    void theWayToACameraIsChosen()
    {
        m_host->producers().add(TestedProducer::file());
        search();
        const auto isCamera = [](const FoundDevice &one) { return !one.isCard; };
        QVERIFY(findingOf(isCamera));
        const FoundDevice twin = *findingOf(isCamera);
        const auto finder = [twin] { return std::vector<FoundDevice>{builtIn("built-in-1", twin)}; };
        start(finder);
        search();
        QVERIFY(m_host.device("built-in-1") && !ids().contains(twin.id));
        const FoundDevice *const both = m_host->devices().finding(text("built-in-1"));
        QCOMPARE(both->routes.size(), std::size_t(2));
        m_host->producers().chooseRoute(cameraKey(*both), twin.id);
        start(finder);
        search();
        QVERIFY(!m_host.device("built-in-1") && ids().contains(twin.id));
    }

    /// The driver's own cards of a camera are there while it is open.
    void modulesGoWithTheirCamera()
    {
        m_host->producers().add(TestedProducer::file());
        search();
        const QString camera = TestedProducer::camera().place.key();
        for (const char *ending : {"closed", "lost"}) {
            m_host->sessions().openLater(camera);
            QTRY_VERIFY(m_host->devices().isReady(camera));
            const std::vector<FoundDevice> modules = m_host->devices().device(camera)->modules();
            QVERIFY(modules.size() >= 2);
            for (const FoundDevice &module : modules) {
                m_host->cameraModules().open(camera, module.id);
                QTRY_VERIFY2(m_host->devices().isReady(module.id), qPrintable(module.id));
            }
            if (qstrcmp(ending, "lost") == 0)
                TestedProducer::tell("vanish GEV-AREA");
            else
                m_host->sessions().close(camera);
            for (const FoundDevice &module : modules)
                QTRY_VERIFY2(!m_host->devices().device(module.id) && !m_host->deviceReturn().isLost(module.id), ending);
            QTRY_COMPARE(m_host->devices().state(camera), KnownDevices::State::Closed);
        }
        TestedProducer::tell("return GEV-AREA");
    }

private:
    void start(DeviceFinder finder = {}, const QStringList &given = {})
    {
        m_host.start(std::move(finder), OncePerMinute::steadyTime, given);
    }

    void search()
    {
        QSignalSpy ended(&m_host->devices(), &KnownDevices::searched);
        m_host->devices().refresh();
        QTRY_VERIFY_WITH_TIMEOUT(!ended.isEmpty(), 30'000);
    }

    QStringList ids() const
    {
        QStringList result;
        for (const Device *device : m_host->devices().all())
            result << device->id();
        return result;
    }

    template <class Predicate>
    const FoundDevice *findingOf(Predicate predicate) const
    {
        for (const Device *device : m_host->devices().all()) {
            const FoundDevice *const finding = m_host->devices().finding(device->id());
            if (finding && predicate(*finding))
                return finding;
        }
        return nullptr;
    }

    QString states() const
    {
        const char *const origins[] = {"environment", "command line", "settings"};
        QStringList result;
        for (const Producers::File &file : m_host->producers().files())
            result << text("%1 %2 %3")
                          .arg(QFileInfo(file.path).fileName(), text(origins[int(file.origin)]),
                               text(file.isOn ? "on" : "off"));
        return result.join(text(", "));
    }

    QTemporaryDir m_folder;
    TestHost m_host;
};

QTEST_GUILESS_MAIN(tst_Producers)
#include "tst_Producers.moc"
