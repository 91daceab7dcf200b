// SPDX-License-Identifier: MIT
#include <QtTest>

#include "Devices/MergedFinder.h"
#include "Devices/gentl/GentlFinder.h"
#include "Devices/gentl/ModuleDescription.h"
#include "tests/host/TestProducer.h"

namespace {

using TestedProducer::tell;

/// What a search sees of the test producer and of other files, with what it says.
struct Search
{
    explicit Search(QStringList producers = {TestedProducer::file()},
                    std::chrono::milliseconds limit = std::chrono::seconds(5))
        : files(std::move(producers)),
          search({[this] { return files; },
                  {[this](const QString &file) { return kept.value(file); },
                   [this](const QString &file, const QByteArray &verdict) { kept[file] = verdict; }},
                  [this](const QString &line) {
                      const std::lock_guard<std::mutex> lock(mutex);
                      log << line;
                  },
                  limit,
                  limit})
    { }

    QStringList ids()
    {
        QStringList ids;
        for (const FoundDevice &found : search.find())
            ids << found.id.section(QLatin1Char('/'), -1);
        return ids;
    }

    QStringList files;
    QHash<QString, QByteArray> kept;
    std::mutex mutex;
    QStringList log;
    ProducerSearch search;
};

const QStringList Everything{QStringLiteral("paramter-test.cti"), QStringLiteral("GEV-IF"), QStringLiteral("GEV-AREA"),
                             QStringLiteral("GEV-PROFILER"),      QStringLiteral("CXP-IF"), QStringLiteral("CXP-SL")};

/// For the program that tries producers.
class Environment
{
public:
    explicit Environment(const QByteArray &script) { qputenv("PARAMTER_TEST_SCRIPT", script); }
    ~Environment() { qunsetenv("PARAMTER_TEST_SCRIPT"); }
};

/// A library that is no producer.
QString qtLibrary()
{
    Dl_info info{};
    dladdr(reinterpret_cast<void *>(&qVersion), &info);
    return QFile::decodeName(info.dli_fname);
}

FoundDevice camera(const char *vendor, const char *model, const char *serial, const char *address, const char *route)
{
    FoundDevice found;
    found.vendor = QString::fromLatin1(vendor);
    found.model = QString::fromLatin1(model);
    found.serial = QString::fromLatin1(serial);
    found.hardwareAddress = normalHardwareAddress(QString::fromLatin1(address));
    found.route = QString::fromLatin1(route);
    found.id = found.route + found.serial;
    return found;
}

} // namespace

/// What makes a producer one, and what a search sees through it.
class tst_GentlProducer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { tell("clear"); }
    void cleanup()
    {
        tell("release");
        QCOMPARE(TestedProducer::leftovers(), QByteArray());
    }

    void everythingIsFound()
    {
        Search one;
        QCOMPARE(one.ids(), Everything);
        const std::vector<FoundDevice> found = one.search.find();
        QVERIFY(found[1].isCard && !found[2].isCard);
        QCOMPARE(found[2].card, found[1].id);
        QCOMPARE(found[2].serial, QStringLiteral("SIM-AREA-01"));
        QCOMPARE(found[2].route, QStringLiteral("paramter-test.cti, Test network adapter"));
        QCOMPARE(found[2].create()->id(), found[2].id);
        QCOMPARE(found[1].create()->kind(), Device::Kind::Card);
        const ProducerReport report = one.search.reports().at(0);
        QVERIFY(report.problem.isEmpty() && !report.vendor.isEmpty() && !report.version.isEmpty());
        QCOMPARE(report.interfaces[1].devices[0].access, QStringLiteral("free"));
        QCOMPARE(one.log, QStringList());
        tell("fail TLUpdateInterfaceList -1011; fail IFUpdateDeviceList -1011"); // then it is what was found until then
        QCOMPARE(one.ids(), Everything);
        one.files.clear(); // switched off
        QCOMPARE(one.ids(), QStringList());
        QCOMPARE(TestedProducer::leftovers(), QByteArray());
    }

    /// Lists that a producer spoils in one way or another, and what is still found.
    void faultsSpoilNoMoreThanTheirs_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("found");
        const struct
        {
            const char *script;
            const char *found;
        } rows[] = {
            {"lack TLGetInterfaceInfo", "*"},
            {"lack IFGetDeviceInfo", "*"},
            {"unterminated IFGetDeviceID; unterminated TLGetInterfaceID; unterminated IFGetDeviceInfo", "*"},
            {"size IFGetDeviceID 0; size TLGetInterfaceID 0", "*"},
            {"grow IFGetDeviceID 2", "*"},
            {"size IFGetDeviceInfo 0x8000000000000000", "*"},
            {"fail TLUpdateInterfaceList -1001 1", ""},
            {"fail IFUpdateDeviceList -1001 1", "paramter-test.cti GEV-IF CXP-IF CXP-SL"},
            {"value IFGetNumDevices 5", "*"}, // there are fewer when they are asked for
            {"value IFGetNumDevices 1", "paramter-test.cti GEV-IF GEV-AREA CXP-IF CXP-SL"},
            {"value TLGetNumInterfaces 4000000000", "*"},
            {"fail TLOpenInterface -1004 1", "paramter-test.cti GEV-IF CXP-IF CXP-SL"},
            {"fail IFGetDeviceID -1007 1", "paramter-test.cti GEV-IF GEV-PROFILER CXP-IF CXP-SL"},
            {"vanish GEV-PROFILER; vanish CXP-IF", "paramter-test.cti GEV-IF GEV-AREA"},
            {"odd-ids on", "paramter-test.cti GEV-IF GEV-AREA%FF%E4 GEV-PROFILER%FF%E4 CXP-IF CXP-SL%FF%E4"},
            {"fail TLOpen -1004", ""},
            {"fail GCInitLib -1010", ""},
        };
        for (const auto &row : rows)
            QTest::newRow(row.script) << QByteArray(row.script) << QString::fromLatin1(row.found);
    }
    void faultsSpoilNoMoreThanTheirs()
    {
        QFETCH(QByteArray, script);
        QFETCH(QString, found);
        Search one;
        one.files = QStringList();
        one.ids();
        one.files = QStringList{TestedProducer::file()};
        tell(script);
        QCOMPARE(one.ids().join(QLatin1Char(' ')),
                 found == QLatin1String("*") ? Everything.join(QLatin1Char(' ')) : found);
        QVERIFY(!found.isEmpty() || one.log.join(QString()).contains(QLatin1String("is not used: ")));
        tell("clear");
        QCOMPARE(one.ids(), Everything);
    }

    void whatHangsIsLeftAlone_data()
    {
        QTest::addColumn<QByteArray>("function");
        for (const char *function : {"GCInitLib", "TLOpen", "TLUpdateInterfaceList", "TLOpenInterface",
                                     "IFUpdateDeviceList", "IFGetDeviceInfo"})
            QTest::newRow(function) << QByteArray(function);
    }
    void whatHangsIsLeftAlone()
    {
        QFETCH(QByteArray, function);
        Search one({TestedProducer::file()}, std::chrono::milliseconds(400));
        tell("hang " + function);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(one.ids(), QStringList());
        QCOMPARE(one.ids(), QStringList());
        QVERIFY2(timer.elapsed() < 7000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(one.log.size(), 1);
        QVERIFY2(one.log[0].contains(QLatin1String("does not come back while it")), qPrintable(one.log[0]));
        QVERIFY(!one.search.reports().at(0).problem.isEmpty());
        tell("release");
        QTRY_COMPARE(one.ids(), Everything);
        QVERIFY2(one.log.last().contains(QLatin1String("has come back")), qPrintable(one.log.last()));
    }

    /// Files that are tried, but not loaded here.
    void badFilesAreNamed_data()
    {
        QTest::addColumn<QByteArray>("content"); // of a file that is made, if any
        QTest::addColumn<QByteArray>("script"); // in the program that tries it
        QTest::addColumn<QString>("problem");
        QByteArray foreign(64, '\0');
        foreign.replace(0, 20,
                        QByteArray("\x7f"
                                   "ELF\x02\x01\x01\0\0\0\0\0\0\0\0\0\x03\0\x15\x7f",
                                   20));
        const struct
        {
            const char *name;
            QByteArray content;
            const char *script;
            const char *problem;
        } rows[] = {
            {"missing", {}, "", "there is no such file"},
            {"text", "no library", "", "it is no shared library"},
            {"foreign", foreign, "", "it is made for another kind of processor"},
            {"broken", {}, "", "it cannot be loaded: |it crashes while it is loaded"},
            {"other", {}, "", "it is no complete GenTL producer: it lacks GCInitLib, GCCloseLib"},
            {"crash", {}, "crash GCInitLib", "it crashes while it is loaded and initialised"},
            {"crash2", {}, "crash IFUpdateDeviceList", "it crashes while it looks for devices"},
            {"hang", {}, "hang TLOpen", "it does not come back while it opens its system"},
            {"refuse", {}, "fail GCInitLib -1021", "GCInitLib failed with GC_ERR_OUT_OF_MEMORY"},
        };
        for (const auto &row : rows)
            QTest::newRow(row.name) << row.content << QByteArray(row.script) << QString::fromLatin1(row.problem);
    }
    void badFilesAreNamed()
    {
        QFETCH(QByteArray, content);
        QFETCH(QByteArray, script);
        QFETCH(QString, problem);
        const QString name = QString::fromLatin1(QTest::currentDataTag());
        QTemporaryDir directory;
        QString file = directory.filePath(name + QStringLiteral(".cti"));
        const QString library = qtLibrary();
        QFile original(name == QLatin1String("broken") || name == QLatin1String("other") ? library
                                                                                         : TestedProducer::file());
        QVERIFY(original.open(QIODevice::ReadOnly));
        QFile copy(file);
        if (name != QLatin1String("missing")) {
            QVERIFY(copy.open(QIODevice::WriteOnly));
            copy.write(name == QLatin1String("broken") ? original.read(5000)
                           : content.isEmpty()         ? original.readAll()
                                                       : content);
            copy.close();
        }
        const Environment environment(script);
        Search one({file}, std::chrono::seconds(2));
        QCOMPARE(one.ids(), QStringList());
        QVERIFY2(one.search.reports()[0].problem.contains(QRegularExpression(problem)),
                 qPrintable(one.search.reports()[0].problem));
        QCOMPARE(one.log.size(), 1);
        QVERIFY(one.ids().isEmpty() && one.log.size() == 1); // told once
    }

    void aVerdictLastsUntilTheFileChanges()
    {
        QHash<QString, QByteArray> kept;
        const ProducerCheck::Store store{[&](const QString &file) { return kept.value(file); },
                                         [&](const QString &file, const QByteArray &verdict) { kept[file] = verdict; }};
        const QString file = TestedProducer::file();
        QVERIFY(ProducerCheck(store).verdict(file).isGood);
        const Environment environment("crash GCInitLib");
        ProducerCheck later(store);
        QVERIFY(later.verdict(file).isGood);
        later.forget(file);
        QVERIFY(!later.verdict(file).isGood);
        QVERIFY(!ProducerCheck(store).verdict(file).isGood);
        qunsetenv("PARAMTER_TEST_SCRIPT");
        QVERIFY(!ProducerCheck(store).verdict(file).isGood);
        kept[file].replace("\"file\":\"", "\"file\":\"1"); // as if it had had another size
        QVERIFY(ProducerCheck(store).verdict(file).isGood);
    }

    void urlsAreUnderstood_data()
    {
        QTest::addColumn<QByteArray>("url");
        QTest::addColumn<QString>("meaning"); // address, length, path, schema; or the complaint
        const struct
        {
            const char *url;
            const char *meaning;
        } rows[] = {
            {"Local:a.zip;F0F00000;3BF?SchemaVersion=1.1.0", "f0f00000 3bf  1001000"},
            {"local:///a.xml;0x10;20", "10 20  0"},
            {"LOCAL:/a b.xml; 8000000000000000 ;1 ", "8000000000000000 1  0"},
            {"Local:a.xml;10", "it tells no address and length"},
            {"Local:a.xml;10;xyz", "is no hexadecimal number"},
            {"Local:a.xml;10;0", "it tells a length of 0 bytes"},
            {"Local:a.xml;10;ffffffffffffffff", "it tells a length of"},
            {"File:///opt/my%20maker/x.xml?SchemaVersion=1.0.1", "0 0 /opt/my maker/x.xml 1000001"},
            {"file://localhost/opt/x.zip", "0 0 /opt/x.zip 0"},
            {"file:/opt/../x.xml", "0 0 /x.xml 0"},
            {"File:x.xml", "0 0 /cti/x.xml 0"},
            {"File:///C|\\maker\\x.xml", "0 0 /cti/C:/maker/x.xml 0"},
            {"http://example.com/x.xml", "descriptions are not loaded from the network"},
            {"gopher:x", "such URLs are not known"},
            {"", "such URLs are not known"},
        };
        for (const auto &row : rows)
            QTest::newRow(row.url) << QByteArray(row.url) << QString::fromLatin1(row.meaning);
    }
    void urlsAreUnderstood()
    {
        QFETCH(QByteArray, url);
        QFETCH(QString, meaning);
        QString understood;
        try {
            const PortUrl parsed = parsePortUrl(url, QDir(QStringLiteral("/cti")));
            understood = QStringLiteral("%1 %2 %3 %4")
                             .arg(parsed.address, 0, 16)
                             .arg(parsed.length, 0, 16)
                             .arg(parsed.path)
                             .arg(parsed.schema);
        } catch (const std::runtime_error &error) {
            understood = QString::fromUtf8(error.what());
        }
        QVERIFY2(understood.contains(meaning), qPrintable(understood));
    }

    void aCameraIsListedOnce()
    {
        const FoundDevice builtIn = camera("Example", "Cam 12", "00-A7", "00:11:22:aa:bb:cc", "");
        const struct
        {
            const char *what;
            FoundDevice other;
            bool isSame;
        } rows[] = {
            {"as it is written", camera("EXAMPLE AG", "CAM12", "00-a7", "", "x.cti, eth0"), true},
            {"by its hardware address", camera("", "", "", "DEV_001122AABBCC", "x.cti, eth0"), false},
            {"by its hardware address", camera("Other", "Cam", "", "001122AABBCC", "x.cti, eth0"), true},
            {"another serial number", camera("Example", "Cam 12", "00-A8", "", "x.cti, eth0"), false},
            {"no serial number", camera("Example", "Cam 12", "", "", "x.cti, eth0"), false},
            {"another model", camera("Example", "Cam 13", "00-A7", "", "x.cti, eth0"), false},
            {"another vendor", camera("Somebody", "Cam 12", "00-A7", "", "x.cti, eth0"), false},
        };
        for (const auto &row : rows) {
            const std::vector<FoundDevice> merged = mergedDevices({builtIn, row.other}, {});
            QVERIFY2(merged.size() == (row.isSame ? 1 : 2), row.what);
            QCOMPARE(merged[0].id, builtIn.id);
            QCOMPARE(int(merged[0].routes.size()), row.isSame ? 2 : 0);
        }
        const auto chosen = [](const QString &key, const std::vector<DeviceRoute> &routes) {
            return key == QLatin1String("cam12/00-a7") ? routes.at(1).id : QString();
        };
        const DeviceFinder finder = mergedFinder([&] { return std::vector<FoundDevice>{builtIn}; },
                                                 [&] { return std::vector<FoundDevice>{rows[0].other}; }, chosen);
        QCOMPARE(finder().at(0).id, rows[0].other.id);
        QCOMPARE(finder().at(0).routes.at(0).name, QStringLiteral("built-in"));
    }

    void answersAreReadWithCare()
    {
        QCOMPARE(textForPeople("gr\xc3\xbcn"), QString::fromUtf8("grün"));
        QCOMPARE(textForPeople("gr\xfcn"), QString::fromUtf8("grün"));
        const quint64 bytes = 0xfffffffffffffff0;
        QCOMPARE(numberOf(GenTL::INFO_DATATYPE_INT32, &bytes, 4).value(), quint64(-16));
        QCOMPARE(numberOf(GenTL::INFO_DATATYPE_SIZET, &bytes, 4).value(), quint64(0xfffffff0)); // told by its size
        QCOMPARE(numberOf(GenTL::INFO_DATATYPE_UNKNOWN, &bytes, 1).value(), quint64(0xf0));
        QVERIFY(!numberOf(GenTL::INFO_DATATYPE_STRING, &bytes, 8));
        QVERIFY(!numberOf(GenTL::INFO_DATATYPE_UINT64, &bytes, 0));
    }
};

QTEST_GUILESS_MAIN(tst_GentlProducer)
#include "tst_GentlProducer.moc"
