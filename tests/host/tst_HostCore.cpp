// SPDX-License-Identifier: MIT
#include <atomic>
#include <thread>

#include <QtTest>

#include "TestHost.h"

/// What HostCore answers and does over a context, without listeners.
class tst_HostCore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_host.renew();
        m_device = m_host.add("cam");
        QVERIFY(m_host.open("cam"));
    }
    void cleanup() { m_host.end(); }

    void withoutContextNothingHappens()
    {
        m_host.end();
        QVERIFY(!HostContext::current());
        std::string value = "kept";
        QVERIFY(HostCore::GetCameraInfo("cam", HostCore::CAM_INFO_OPENED).empty());
        QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, "cam", HostCore::NODE_MAP_DEVICE));
        QVERIFY(HostCore::GetCameraNodeValue("cam", "Width", value) != 0);
        QVERIFY(HostCore::SetCameraNodeValue("cam", "Width", "1") != 0);
        QCOMPARE(value, std::string("kept"));
        HostCore::VLogInfo("module", "message", 0);
    }

    void infoItemsAreStored()
    {
        const auto store = [](const char *key, int item, const char *value) {
            HostCore::SetCameraInfo(key, static_cast<HostCore::CAM_INFO>(item), value);
        };
        const auto stored = [](const char *key, int item) {
            return QByteArray::fromStdString(HostCore::GetCameraInfo(key, static_cast<HostCore::CAM_INFO>(item)));
        };
        const char *odd = "Gerät/1 %2F";
        m_host.add(odd);
        QVERIFY(HostCore::GetParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL).empty());
        HostCore::SetParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, "2");
        store("cam", 50, "first");
        store(odd, 56, "ü, \"x\"");
        store("cam", 57, "no such item");
        store(odd, HostCore::CAM_INFO_OPENED, "1");
        m_host->setLanguage(text("Chinese"));
        m_host.start();
        m_host.add("cam");
        m_host.add(odd);
        QCOMPARE(HostCore::GetParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL), std::string("2"));
        QCOMPARE(stored("cam", 50), QByteArray("first"));
        QCOMPARE(stored(odd, 56), QByteArray("ü, \"x\""));
        QCOMPARE(stored(odd, 50) + stored("cam", 57) + stored("unknown", 50), QByteArray());
        QCOMPARE(stored(odd, HostCore::CAM_INFO_OPENED), QByteArray("0"));
        QCOMPARE(m_host->language(), text("Chinese"));
    }

    void nodesAreWrittenAsText()
    {
        const struct
        {
            const char *node, *written, *read;
        } rows[] = {{"Width", "64", "64"},      {"Gain", "2.25", "2.25"},        {"ReverseX", "1", "True"},
                    {"ReverseX", "0", "False"}, {"ReverseX", "True", "True"},    {"PixelFormat", "Mono16", "Mono16"},
                    {"PixelFormat", "8", "8"},  {"PixelFormat", "16", "Mono16"}, {"DeviceUserID", "links ü", "links ü"},
                    {"DeviceUserID", "", ""}};
        for (const auto &row : rows) {
            std::string value;
            QVERIFY2(HostCore::SetCameraNodeValue("cam", row.node, row.written) == 0, row.written);
            QCOMPARE(HostCore::GetCameraNodeValue("cam", row.node, value), 0);
            QCOMPARE(std::string(row.node) + ' ' + value, std::string(row.node) + ' ' + row.read);
        }
        QCOMPARE(HostCore::SetCameraNodeValue("cam", "TriggerSoftware", ""), 0);
        QCOMPARE(m_device->port.peek(TestDevice::CommandAddress), uint64_t(7));
    }

    void accessFailuresAreLogged()
    {
        const struct
        {
            const char *device, *node, *value;
        } rows[] = {{"nobody", "Width", "1"}, {"cam", "Height", "1"},
                    {"cam", "Width", "101"},  {"cam", "Width", "wide"},
                    {"cam", "Width", ""},     {"cam", "SensorWidth", "1"}, // read-only
                    {"cam", "Root", "1"},     {"cam", "PixelFormat", "Mono12"}};
        for (const auto &row : rows) {
            m_host.log.clear();
            QVERIFY2(HostCore::SetCameraNodeValue(row.device, row.node, row.value) != 0, row.node);
            QVERIFY2(m_host.log.size() == 1 && m_host.log.first().contains(text(row.node)), row.node);
        }
    }

    void callsComeFromAnyThread()
    {
        QSignalSpy log(&m_host->log(), &HostLog::lineAdded);
        HostCore::VLogInfo("Module", "Füße", 1);
        QCOMPARE(log.size(), 1);
        QCOMPARE(log.at(0).mid(1), QVariantList({text("Module"), text("Füße"), 1}));
        QThread *receiver = nullptr;
        connect(&m_host->log(), &HostLog::lineAdded, this, [&] { receiver = QThread::currentThread(); });
        std::thread([] { HostCore::VLogInfo("Worker", "message", 0); }).join();
        QTRY_COMPARE(log.size(), 2);
        QCOMPARE(receiver, thread());
        std::thread([] { HostCore::StartGrab("cam"); }).join();
        QVERIFY(!m_device->isAcquiring());
        QTRY_VERIFY(m_device->isAcquiring());
    }

    /// Panels start acquisition on a thread that nobody waits for.
    void contextMayGoWhileGrabsStart()
    {
        std::atomic<bool> over{false};
        const auto grab = [&] {
            while (!over)
                HostCore::StartGrab("cam");
        };
        std::thread workers[] = {std::thread(grab), std::thread(grab), std::thread(grab)};
        for (int i = 0; i < 300; ++i) {
            m_host.start();
            m_host.add("cam");
            std::this_thread::yield();
            m_host.end();
        }
        over = true;
        for (std::thread &worker : workers)
            worker.join();
        HostCore::StartGrab("cam");
        QCoreApplication::processEvents();
        QVERIFY(!HostContext::current());
    }

private:
    TestHost m_host;
    TestDevice *m_device = nullptr;
};

QTEST_GUILESS_MAIN(tst_HostCore)
#include "tst_HostCore.moc"
