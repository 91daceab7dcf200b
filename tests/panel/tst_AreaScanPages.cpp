// SPDX-License-Identifier: MIT
#include <map>
#include <set>

#include "CuratedPanel.h"
#include "PanelBase/TranslationTables.h"
#include "support/BracketTranslator.h"

class tst_AreaScanPages : public PanelFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { open(); }
    void cleanup() { m_panel.reset(); }

    void completeCamera()
    {
        QCOMPARE(m_panel->groups(),
                 words("Common Attribute|ISP|Transport Control|Acquisition Control|Digital IO Control|Image Format"
                       "|UserSet Control",
                       '|'));
        QCOMPARE(m_panel->labels("firstToolBox").size(), 13);
        QCOMPARE(m_panel->labels("secondToolBox").size(), 11);
        QCOMPARE(m_panel->labels("thirdToolBox").size(), 14); // the rows of the drawn region wait
        QCOMPARE(told(), QStringList());
    }

    void otherCameras()
    {
        const QStringList all = m_panel->labels();
        for (const auto &[name, missing, added, hidden] :
             {std::tuple("other names", "GammaEnable Gain AcquisitionFrameRate ExposureTime",
                         "EnableGamma GainRaw AcquisitionFrameRateAbs ExposureTimeRaw", ""),
              std::tuple("as they stand", "TriggerDelay Gamma", "TriggerDelayAbs", "TriggerDelay|Gamma"),
              std::tuple("no debouncer", "LineDebouncerTime", "", "LineDebouncerTime")}) {
            const InRow inRow(name);
            CuratedFeatures changes;
            for (const QString &feature : words(missing))
                changes.push_back({"", feature.toStdString(), ""});
            for (const QString &feature : words(added))
                changes.push_back({"Integer", feature.toStdString(), "<Min>0</Min><Max>10</Max>"});
            open(changes);
            QStringList gone = all;
            for (const QString &label : m_panel->labels())
                gone.removeOne(label);
            QCOMPARE(gone, words(hidden, '|'));
            const auto *const bars = m_panel->panel->findChild<QWidget *>(QStringLiteral("firstToolBox"));
            for (const QPushButton *bar : bars->findChildren<QPushButton *>(QStringLiteral("pushButtonFold")))
                QVERIFY(bar->isVisibleTo(bars)); // also that of the transport without features
        }
    }

    void liveRowsShowTheDevice()
    {
        m_panel->host.setNodeValue("cam", "ExposureAuto", "Continuous");
        m_panel->host.setNodeValue("cam", "ExposureTime", "7500");
        m_panel->host.clearCalls();
        panel()->onRealUpdateTimerTimeout();
        QCOMPARE(m_panel->host.calls(),
                 words("GetCameraNodeValue(cam, ExposureAuto)|GetCameraNodeValue(cam, ExposureTime)", '|'));
        QCOMPARE(editor<QComboBox>("Exposure Auto")->currentText(), "Continuous"_s);
        QCOMPARE(editor<QDoubleSpinBox>("Exposure Time(us)")->value(), 7500.0);
        QCOMPARE(m_panel->camera.written(), std::vector<std::string>());
    }

    void bothLanguages()
    {
        BracketTranslator translator;
        QCoreApplication::installTranslator(&translator);
        const QStringList english = m_panel->labels();
        panel()->retranslate(1);
        QCoreApplication::removeTranslator(&translator);
        QCOMPARE(m_panel->labels().size(), english.size());
        for (const QString &label : m_panel->labels())
            QVERIFY2(label.contains(QRegularExpression("\\p{Han}"_s)), qPrintable(label));
        QVERIFY(m_panel->groups().contains("图像格式"_s));
        const QStringList entries = zhTransEnMap.values(); // two keys for one make the way back ambiguous
        QCOMPARE(QSet<QString>(entries.begin(), entries.end()).size(), 34);
        for (const QPushButton *button : panel()->findChildren<QPushButton *>())
            QVERIFY2(button->text().isEmpty() || button->text() == "[Execute]"_s, qPrintable(button->accessibleName()));
    }

    void userSetLoads()
    {
        m_panel->host.setCallHook([&](const QString &line) {
            for (const char *feature : {"GevSCPD", "OffsetX", "TriggerMode"}) {
                if (line.startsWith("SetCameraNodeValue"_s))
                    m_panel->poke(feature, 1);
            }
        });
        m_panel->host.clearCalls();
        click("UserSetLoad");
        m_panel->host.setCallHook({});
        QCOMPARE(calls("SetCameraNodeValue"), QStringList("SetCameraNodeValue(cam, UserSetLoad, )"_s));
        QCOMPARE(number("GEV SCPD"), 1);
        QCOMPARE(number("OffsetX"), 1);
        QCOMPARE(editor<QComboBox>("TriggerMode")->currentText(), "On"_s);
    }

    void registersAreReadOnce()
    {
        panel()->show();
        // An offset bounds its size, whose row comes before its own.
        const std::set<int64_t> readForLimits = {m_panel->camera.address("OffsetX"),
                                                 m_panel->camera.address("OffsetY")};
        std::map<int64_t, int> reads;
        for (const MemoryPort::Access &access : port().accesses)
            ++reads[access.address];
        QVERIFY(reads.size() > 20);
        for (const auto &[address, count] : reads)
            QCOMPARE(std::pair(address, count), std::pair(address, readForLimits.count(address) ? 2 : 1));
    }

private:
    void open(const CuratedFeatures &changes = {})
    {
        m_panel.reset();
        m_panel = std::make_unique<CuratedPanel>(changes);
    }
};

QTEST_MAIN(tst_AreaScanPages)
#include "tst_AreaScanPages.moc"
