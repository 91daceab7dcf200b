// SPDX-License-Identifier: MIT
#include <QtTest>

#include "Devices/gentl/GentlModule.h"
#include "Features/NodeGuard.h"
#include "Features/NodeText.h"
#include "tests/host/TestProducer.h"

namespace {

using TestedProducer::tell;

const QString Width = QStringLiteral("Width");

/// A camera with what it says.
struct Opened
{
    explicit Opened(GentlIdentity identity = TestedProducer::camera()) : camera(std::move(identity))
    {
        QObject::connect(
            &camera, &Device::reported, &camera, [this](const QString &line) { log << line; }, Qt::DirectConnection);
    }

    bool open()
    {
        const std::atomic_bool cancelled{false};
        camera.reach(cancelled, {});
        return camera.open(&error);
    }
    GenApi::INodeMap &nodes() { return *camera.nodeMap(); }
    /// The failure of reading a feature anew; empty when there is none.
    QString refusal(const QString &feature)
    {
        QString refusal;
        guarded(&refusal, [&] {
            nodes().InvalidateNodes();
            readNodeText(nodes(), feature);
        });
        return refusal;
    }
    bool hasLogged(const char *words) const { return log.join(QLatin1Char('\n')).contains(QLatin1String(words)); }

    GentlCamera camera;
    QString error;
    QStringList log;
};

} // namespace

/// Cameras and modules through the test producer, and what goes wrong there.
class tst_GentlCamera : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { tell("clear; power-up; rate GEV-AREA 100"); }
    void cleanup()
    {
        tell("release");
        QCOMPARE(TestedProducer::leftovers(), QByteArray());
    }

    void writesArrive()
    {
        Opened one;
        QVERIFY2(one.open(), qPrintable(one.error));
        QCOMPARE(one.camera.transport(), Device::Transport::GigEVision);
        writeNodeText(one.nodes(), Width, QStringLiteral("640"));
        QCOMPARE(one.refusal(Width), QString());
        QCOMPARE(readNodeText(one.nodes(), Width), QStringLiteral("640"));
        one.camera.close();
        QVERIFY(!one.camera.nodeMap());
        QVERIFY2(one.camera.open(&one.error), qPrintable(one.error));
        QVERIFY(one.camera.description().contains("RegisterDescription"));
    }

    /// What makers' producers are known to lack, or to do otherwise: a frame comes all the same.
    void differencesAreTolerated_data()
    {
        QTest::addColumn<QByteArray>("script");
        for (const char *script : {"",
                                   "lack GCGetNumPortURLs",
                                   "lack GCGetPortURLInfo",
                                   "urls none",
                                   "urls file",
                                   "urls zip",
                                   "urls plain",
                                   "urls several",
                                   "lack GCGetPortInfo",
                                   "lack GCReadPortStacked",
                                   "lack GCGetLastError",
                                   "lack GCGetInfo",
                                   "lack TLGetInfo; lack TLGetInterfaceInfo",
                                   "lack DSGetNumBufferParts; lack DSGetBufferPartInfo",
                                   "lack DSGetBufferChunkData",
                                   "lack IFGetParentTL; lack DevGetParentIF; lack DSGetParentDev",
                                   "lack EventGetInfo; lack EventFlush",
                                   "unterminated GCGetPortURLInfo; unterminated GCGetPortURL",
                                   "size GCGetPortURLInfo:0 0",
                                   "size GCGetPortURLInfo:0 4",
                                   "grow GCGetPortURLInfo 2",
                                   "size GCGetPortURLInfo:0 0x8000000000000000",
                                   "short GCReadPort 512 1",
                                   "lack DSAnnounceBuffer",
                                   "fail DSAnnounceBuffer -1009",
                                   "type DSGetBufferInfo 6",
                                   "type DSGetInfo 6",
                                   "lack DSGetBufferInfo:10; lack DSGetBufferInfo:11; lack DSGetBufferInfo:20",
                                   "value DSGetBufferInfo:10 0; value DSGetBufferInfo:20 0",
                                   "lack DSGetBufferInfo:16",
                                   "lack DSGetBufferInfo:7; lack DSGetBufferInfo:9; lack DSGetBufferInfo:29",
                                   "lack DSGetBufferInfo:15",
                                   "value DSGetInfo:13 3",
                                   "lack DSGetInfo:12; lack DSGetInfo:13",
                                   "fail IFOpenDevice -1007 1",
                                   "fail IFOpenDevice -1003 1",
                                   "fail GCRegisterEvent:2 -1003",
                                   "odd-ids on",
                                   "fail DSStopAcquisition -1001 1",
                                   "fail DSFlushQueue -1001 1",
                                   "fail EventGetData -1008 5",
                                   "fail EventGetData -1010 3",
                                   "fail DSQueueBuffer -1010 0"})
            QTest::newRow(script) << QByteArray(script);
    }
    void differencesAreTolerated()
    {
        QFETCH(QByteArray, script);
        tell(script);
        Opened one(TestedProducer::camera("GEV-IF", script == "odd-ids on" ? "GEV-AREA\xFF\xE4" : "GEV-AREA"));
        QVERIFY2(one.open(), qPrintable(one.error));
        const QSignalSpy frames(&one.camera, &Device::frameReady);
        QVERIFY2(one.camera.startAcquisition(&one.error), qPrintable(one.error));
        QTRY_VERIFY2(frames.size() > 2, qPrintable(one.log.join(QLatin1Char('\n'))));
        QCOMPARE(frames.first().first().value<QImage>().width(), readNodeText(one.nodes(), Width).toInt());
        one.camera.close();
    }

    /// Functions that fail end in a sentence that names them, and in a camera that works when they do.
    void failuresAreTold_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<bool>("isOpening"); // else it is the acquisition that does not start
        QTest::addColumn<QString>("sentence");
        const struct
        {
            const char *script;
            bool isOpening;
            const char *sentence;
        } rows[] = {
            {"fail GCInitLib -1001", true, "GCInitLib failed with GC_ERR_ERROR: GCInitLib: GCInitLib fails as the"},
            {"fail GCInitLib -20001; lack GCGetLastError", true,
             "GCInitLib failed with the producer's own code -20001"},
            {"fail TLOpen -1010", true, "TLOpen failed with GC_ERR_IO"},
            {"fail TLOpenInterface -1007", true, "no longer|does not find it any more"},
            {"fail IFOpenDevice -1004", true, "in use by another program or computer"},
            {"hold GEV-AREA exclusive", true, "in use by another program or computer"},
            {"vanish GEV-AREA", true, "does not find it any more: check power and cable"},
            {"fail DevGetPort -1006", true, "DevGetPort failed with GC_ERR_INVALID_HANDLE"},
            {"fail GCReadPort -1011", true, "none of the places of its description can be used"},
            {"urls http", true, "none of the places of its description can be used"},
            {"lack GCGetNumPortURLs; lack GCGetPortURL", true, "GCGetPortURL failed with GC_ERR_NOT_IMPLEMENTED"},
            {"urls none; size GCGetPortURL 0x8000000000000000", true, "more than 16 MB is announced"},
            {"lack GCGetNumPortURLs; text GCGetPortURL nonsense", true, "can be used"},
            {"lack GCGetNumPortURLs; text GCGetPortURL Local:a.xml\\x3b0\\x3b8000000000000000", true, "can be used"},
            {"fail DevOpenDataStream -1005", false, "DevOpenDataStream failed with GC_ERR_ACCESS_DENIED"},
            {"fail GCRegisterEvent -1003", false, "GCRegisterEvent failed with GC_ERR_NOT_IMPLEMENTED"},
            {"fail DSAnnounceBuffer -1003; fail DSAllocAndAnnounceBuffer -1021", false,
             "DSAllocAndAnnounceBuffer failed with GC_ERR_OUT_OF_MEMORY"},
            {"fail DSQueueBuffer -1013", false, "DSQueueBuffer failed with GC_ERR_INVALID_BUFFER"},
            {"fail DSStartAcquisition -1020", false, "DSStartAcquisition failed with GC_ERR_RESOURCE_EXHAUSTED"},
            {"value DSGetInfo:9 1; value DSGetInfo:7 0", false, "frames of 0 bytes are announced"},
            {"value DSGetInfo:9 1; value DSGetInfo:7 0x8000000000000000", false, "bytes are announced"},
        };
        for (const auto &row : rows)
            QTest::newRow(row.script) << QByteArray(row.script) << row.isOpening << QString::fromLatin1(row.sentence);
    }
    void failuresAreTold()
    {
        QFETCH(QByteArray, script);
        QFETCH(bool, isOpening);
        QFETCH(QString, sentence);
        tell(script);
        Opened one;
        QVERIFY2(one.open() != isOpening, qPrintable(one.error));
        QVERIFY(isOpening || !one.camera.startAcquisition(&one.error));
        QVERIFY2(one.error.contains(QRegularExpression(sentence)), qPrintable(one.error));
        QVERIFY(!one.camera.isAcquiring());
        one.camera.close();
        tell("clear; rate GEV-AREA 100");
        QVERIFY2(one.open(), qPrintable(one.error));
        const QSignalSpy frames(&one.camera, &Device::frameReady);
        QVERIFY2(one.camera.startAcquisition(&one.error), qPrintable(one.error));
        QTRY_VERIFY(!frames.isEmpty());
    }

    /// No function that does not come back keeps the thread of the window.
    void nobodyWaitsForAHang_data()
    {
        QTest::addColumn<QByteArray>("script");
        for (const char *function : {"GCInitLib",         "TLOpen",
                                     "TLOpenInterface",   "IFOpenDevice",
                                     "GCReadPort",        "GCWritePort",
                                     "GCRegisterEvent",   "GCRegisterEvent:1",
                                     "EventGetData",      "DevOpenDataStream",
                                     "DSAnnounceBuffer",  "DSStartAcquisition",
                                     "DSGetBufferInfo",   "DSQueueBuffer",
                                     "DSStopAcquisition", "DSRevokeBuffer",
                                     "DSClose",           "DevClose",
                                     "IFClose",           "TLClose",
                                     "GCCloseLib",        "GCUnregisterEvent",
                                     "EventKill"})
            QTest::newRow(function) << QByteArray(function);
    }
    void nobodyWaitsForAHang()
    {
        QFETCH(QByteArray, script);
        GentlIdentity identity = TestedProducer::camera();
        identity.openLimit = std::chrono::milliseconds(300);
        const bool isWhileOpening =
            QByteArrayLiteral("GCInitLib TLOpen TLOpenInterface IFOpenDevice GCReadPort").split(' ').contains(script);
        Opened one(identity);
        if (isWhileOpening)
            tell("hang " + script);
        QVERIFY2(one.open() != isWhileOpening, qPrintable(one.error));
        QVERIFY2(!isWhileOpening || one.error.contains(QLatin1String("paramter-test.cti does not come back")),
                 qPrintable(one.error));
        tell("hang " + script);
        QElapsedTimer timer;
        timer.start();
        if (one.camera.isOpen() && one.camera.startAcquisition(&one.error))
            one.camera.stopAcquisition();
        one.camera.close();
        QVERIFY2(timer.elapsed() < 6000, qPrintable(QString::number(timer.elapsed()))); // 3 s for a stream that hangs
        tell("release");
        if (isWhileOpening) // on its thread it still succeeds, which nobody wants any more
            QTRY_VERIFY(tell("calls GCCloseLib").toInt() > 0);
    }

    void registersAreReadManyAtOnce()
    {
        QStringList values[3];
        int reads[3] = {};
        const char *const scripts[] = {"", "lack GCReadPortStacked", "hang GCReadPortStacked"};
        for (int i = 0; i < 3; ++i) {
            tell(QByteArray("clear; ") + scripts[i]);
            Opened one;
            QVERIFY2(one.open(), qPrintable(one.error));
            GenApi::NodeList_t nodes;
            one.nodes().GetNodes(nodes);
            reads[i] = tell("calls GCReadPort").toInt() + tell("calls GCReadPortStacked").toInt();
            for (GenApi::INode *node : nodes) {
                const QString name = QString::fromLatin1(node->GetName().c_str());
                if (node->GetPrincipalInterfaceType() == GenApi::intfIInteger && GenApi::IsWritable(node)
                    && GenApi::IsReadable(node))
                    values[i] << name + readNodeText(one.nodes(), name);
            }
            QVERIFY(values[i].size() > 10);
            tell("release");
        }
        QVERIFY2(reads[0] * 3 < reads[1], qPrintable(QStringLiteral("%1 of %2").arg(reads[0]).arg(reads[1])));
        QCOMPARE(values[0], values[1]);
        QCOMPARE(values[2], values[1]);
    }

    void aReadThatHangsFailsAndTheCameraReturns()
    {
        Opened one;
        QVERIFY2(one.open(), qPrintable(one.error));
        const QSignalSpy answering(&one.camera, &Device::answeringChanged);
        tell("hang GCReadPort");
        QElapsedTimer timer;
        timer.start();
        QVERIFY2(one.refusal(Width).contains(QLatin1String("answer")), qPrintable(one.refusal(Width)));
        QVERIFY(timer.elapsed() < 2000);
        QTRY_COMPARE(answering.size(), 1);
        tell("release");
        QTRY_COMPARE(answering.size(), 2);
        QCOMPARE(one.refusal(Width), QString());
        tell("hang GCReadPort");
        QVERIFY(!one.refusal(Width).isEmpty());
        timer.start();
        one.camera.close(); // while the read waits
        QVERIFY(timer.elapsed() < 1000);
    }

    void accessesAreRefusedInKind()
    {
        Opened one;
        QVERIFY2(one.open(), qPrintable(one.error));
        const struct
        {
            const char *script;
            const char *sentence;
        } rows[] = {
            {"fail GCReadPort -1015 1", "GC_ERR_INVALID_ADDRESS.*address 0x"},
            {"fail GCReadPort -1005 1", "GC_ERR_ACCESS_DENIED"},
            {"short GCReadPort 2 1", "GCReadPort moved 2 bytes of 4"},
            {"fail GCReadPort -1016 1", "GC_ERR_BUFFER_TOO_SMALL"},
        };
        for (const auto &row : rows) {
            tell(row.script);
            const QString refusal = one.refusal(Width);
            QVERIFY2(refusal.contains(QRegularExpression(QLatin1String(row.sentence))), qPrintable(refusal));
            QCOMPARE(one.refusal(Width), QString());
        }
    }

    void heldByAnotherItIsReadOnly()
    {
        tell("hold GEV-AREA control");
        Opened one;
        QVERIFY2(one.open(), qPrintable(one.error));
        QVERIFY(one.hasLogged("GEV-AREA: open for reading only"));
        QCOMPARE(one.refusal(Width), QString());
        QVERIFY(!GenApi::IsWritable(one.nodes().GetNode("Width")));
    }

    void pluggedOutItIsLostAndPluggedInItReturns()
    {
        Opened one;
        QVERIFY2(one.open(), qPrintable(one.error));
        QVERIFY2(one.camera.startAcquisition(&one.error), qPrintable(one.error));
        const QSignalSpy lost(&one.camera, &Device::lost);
        tell("vanish GEV-AREA"); // nobody asks it anything
        QTRY_COMPARE(lost.size(), 1);
        one.camera.close();
        QVERIFY(!one.open());
        tell("return GEV-AREA");
        QVERIFY2(one.open(), qPrintable(one.error));
        QCOMPARE(one.refusal(Width), QString());
    }

    void badFramesAreCounted()
    {
        const struct
        {
            const char *script;
            qint64 FrameCounts::*count;
        } rows[] = {
            {"frames GEV-AREA incomplete 2", &FrameCounts::incomplete},
            {"frames GEV-AREA empty 2", &FrameCounts::incomplete},
            {"frames GEV-AREA lost 2", &FrameCounts::lost},
            {"frames GEV-AREA huge 2", &FrameCounts::tooLarge},
            {"frames GEV-AREA grown 2", &FrameCounts::tooLarge},
            {"value DSGetBufferInfo:18 0x8000000000000000 2", &FrameCounts::tooLarge}, // where the image begins
            {"value DSGetBufferInfo:14 0x8000000000000000 2", &FrameCounts::tooLarge}, // bytes between its lines
            {"size EventGetData 0 1", &FrameCounts::good},
        };
        for (const auto &row : rows) {
            tell("clear; rate GEV-AREA 100");
            tell(row.script);
            Opened one;
            QVERIFY2(one.open() && one.camera.startAcquisition(&one.error), qPrintable(one.error));
            QTRY_VERIFY2(one.camera.frameCounts().*row.count > 0, row.script);
            QTRY_VERIFY2(one.camera.frameCounts().good > 1, row.script);
        }
    }

    void alienFormatsAreNotShown()
    {
        tell("frames GEV-AREA alien 1");
        Opened one;
        QVERIFY2(one.open() && one.camera.startAcquisition(&one.error), qPrintable(one.error));
        const QSignalSpy frames(&one.camera, &Device::frameReady);
        QTRY_VERIFY(one.camera.frameCounts().good + one.camera.frameCounts().tooLarge > 3);
        QCOMPARE(frames.size(), 0);
    }

    /// A multi-part frame, the size of which only the stream knows.
    void partsAreShown()
    {
        Opened one(TestedProducer::camera("CXP-IF", "CXP-SL"));
        QVERIFY2(one.open(), qPrintable(one.error));
        const QSignalSpy frames(&one.camera, &Device::frameReady);
        QVERIFY2(one.camera.startAcquisition(&one.error), qPrintable(one.error));
        QTRY_VERIFY_WITH_TIMEOUT(!frames.isEmpty(), 20000);
        QVERIFY(one.hasLogged("3D parts"));
    }

    void dataOfFramesAreFeatures()
    {
        tell("register GEV-AREA ChunkModeActive 1");
        Opened one;
        QVERIFY2(one.open(), qPrintable(one.error));
        const QString chunk = QStringLiteral("ChunkWidth");
        QVERIFY(!one.refusal(chunk).isEmpty()); // there is no frame yet
        writeNodeText(one.nodes(), Width, QStringLiteral("640"));
        QVERIFY2(one.camera.startAcquisition(&one.error), qPrintable(one.error));
        QTRY_COMPARE(one.refusal(chunk), QString());
        QCOMPARE(readNodeText(one.nodes(), chunk), QStringLiteral("640"));
        const QString id = QStringLiteral("ChunkFrameID");
        const QString first = readNodeText(one.nodes(), id);
        QTRY_VERIFY(readNodeText(one.nodes(), id) != first); // with the next frames
    }

    void changedFeaturesAreReadAnew()
    {
        Opened one;
        QVERIFY2(one.open(), qPrintable(one.error));
        const QString before = readNodeText(one.nodes(), Width);
        tell("register GEV-AREA Width 320");
        QCOMPARE(readNodeText(one.nodes(), Width), before);
        QVERIFY(tell("invalidate GEV-AREA Width").toInt() > 0);
        QTRY_COMPARE(readNodeText(one.nodes(), Width), QStringLiteral("320"));
    }

    void modulesAreCards()
    {
        Opened one;
        QVERIFY(one.camera.modules().empty());
        QVERIFY2(one.open(), qPrintable(one.error));
        std::vector<std::unique_ptr<Device>> cards;
        cards.push_back(
            std::make_unique<GentlModule>(GentlIdentity{{TestedProducer::file()}, QStringLiteral("system"), {}}));
        cards.push_back(std::make_unique<GentlModule>(
            GentlIdentity{{TestedProducer::file(), "GEV-IF"}, QStringLiteral("interface"), {}}));
        for (const FoundDevice &module : one.camera.modules())
            cards.push_back(module.create());
        QCOMPARE(int(cards.size()), 4);
        const char *const features[] = {"TLID", "InterfaceID", "DeviceID", "StreamID"};
        QSet<QString> ids{one.camera.id()};
        for (std::size_t i = 0; i < cards.size(); ++i) {
            QVERIFY2(cards[i]->open(&one.error), qPrintable(one.error));
            QCOMPARE(cards[i]->kind(), Device::Kind::Card);
            QVERIFY2(!readNodeText(*cards[i]->nodeMap(), QString::fromLatin1(features[i])).isEmpty(), features[i]);
            ids << cards[i]->id();
        }
        QCOMPARE(ids.size(), 5);
        const QSignalSpy lost(cards[3].get(), &Device::lost);
        one.camera.close();
        QCOMPARE(lost.size(), 1);
        cards.pop_back();
        cards.back()->close();
        QVERIFY(!cards.back()->open(&one.error));
        QVERIFY2(one.error.contains(QLatin1String("its camera is closed")), qPrintable(one.error));
    }
};

QTEST_GUILESS_MAIN(tst_GentlCamera)
#include "tst_GentlCamera.moc"
