// SPDX-License-Identifier: MIT
#include <map>
#include <set>

#include <QTextBrowser>

#include "CuratedPanel.h"
#include "ToolPage/CToolPage.h"
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
        struct Row
        {
            const char *name, *missing, *added, *hidden;
        };
        const QStringList all = m_panel->labels();
        for (const Row &row :
             {Row{"other names", "GammaEnable Gain AcquisitionFrameRate ExposureTime",
                  "EnableGamma GainRaw AcquisitionFrameRateAbs ExposureTimeRaw", ""},
              Row{"as they stand", "TriggerDelay Gamma", "TriggerDelayAbs", "TriggerDelay|Gamma"},
              Row{"no transport features", "GevSCPSPacketSize GevSCPD", "", "GEV SCPS Packet Size|GEV SCPD"},
              Row{"no debouncer", "LineDebouncerTime", "", "LineDebouncerTime"}}) {
            const InRow inRow(row.name);
            CuratedFeatures changes;
            for (const QString &name : words(row.missing))
                changes.push_back({"", name.toStdString(), ""});
            for (const QString &name : words(row.added))
                changes.push_back({"Integer", name.toStdString(), "<Min>0</Min><Max>10</Max>"});
            open(changes);
            QStringList gone = all;
            for (const QString &label : m_panel->labels())
                gone.removeOne(label);
            QCOMPARE(gone, words(row.hidden, '|'));
            const auto *const bars = m_panel->panel->findChild<QWidget *>(QStringLiteral("firstToolBox"));
            for (const QPushButton *bar : bars->findChildren<QPushButton *>(QStringLiteral("pushButtonFold")))
                QVERIFY(bar->isVisibleTo(bars)); // also that of the transport without features
        }
    }

    void unexpectedKinds()
    {
        struct Row
        {
            const char *feature, *kind, *label, *editor;
        };
        const char *const rate = "Acquisition Frame Rate";
        for (const Row &row :
             {Row{"Gain", "Category", "Gain", ""}, Row{"Gain", "String", "Gain", ""}, // a register behind it
              Row{"AcquisitionFrameRate", "Enumeration", rate, "QComboBox"},
              Row{"AcquisitionFrameRate", "Integer", rate, "QSpinBox"},
              Row{"AcquisitionFrameRateEnable", "Enumeration", "AcquisitionFrameRateEnable", "QComboBox"},
              Row{"UserSetSave", "Boolean", "UserSetSave", "SwitchButton"},
              Row{"Width", "Command", "Width", "QPushButton"}}) {
            const InRow inRow(row.kind);
            const bool isList = qstrcmp(row.kind, "Enumeration") == 0;
            open({{row.kind, row.feature, isList ? "<EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry>" : ""}});
            QCOMPARE(isHidden(row.label), !*row.editor);
            QStringList editors;
            for (const QWidget *child : m_panel->row(row.label)->findChildren<QWidget *>())
                editors << QLatin1String(child->metaObject()->className());
            QVERIFY(!*row.editor || editors.contains(QLatin1String(row.editor)));
            QCOMPARE(told(), QStringList());
        }
    }

    void aWriteRefreshesItsGroup()
    {
        auto *const exposure = editor<QDoubleSpinBox>("Exposure Time(us)");
        QCOMPARE(exposure->value(), 5000.0);
        for (const bool isAutomatic : {false, true, false}) {
            choose("Exposure Auto", isAutomatic ? 1 : 0);
            QCOMPARE(exposure->isEnabled(), !isAutomatic);
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

    void descriptions()
    {
        const auto description = [this] { return panel()->findChild<QTextBrowser *>()->toPlainText(); };
        panel()->show();
        QTest::mousePress(m_panel->row("Exposure Time(us)"), Qt::LeftButton, {}, QPoint(2, 2));
        QCOMPARE(description(), "Exposure time in us when Exposure Mode is Timed."_s);
        panel()->retranslate(1);
        QCOMPARE(description(), "曝光模式定时下的曝光时间。"_s);
        panel()->retranslate(0);
        editor<QComboBox>("Gain Auto")->setFocus();
        QTRY_COMPARE(description(), "Sets the automatic gain control (AGC) mode."_s);
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
        for (const QPushButton *button : panel()->findChildren<QPushButton *>())
            QVERIFY2(button->text().isEmpty() || button->text() == "[Execute]"_s, qPrintable(button->accessibleName()));
    }

    void userSetLoads()
    {
        for (CToolPage *page : panel()->findChildren<CToolPage *>()) {
            if (page->findChild<QPushButton *>("pushButtonFold"_s)->accessibleName() == "ISP"_s)
                page->collapse();
        }
        m_panel->host.setCallHook([&](const QString &line) {
            for (const char *feature : {"GevSCPD", "Contrast", "OffsetX", "TriggerMode"}) {
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
        QCOMPARE(number("Contrast"), 0); // folded
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

    /// The node map goes; neither the user nor the host's events may reach into it any more.
    void releasedCamera()
    {
        panel()->show();
        m_panel->innerTabs()->setCurrentIndex(2);
        click("DrawRoi");
        panel()->setParamterViewDisable();
        m_panel->host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", nullptr);
        m_panel->camera.map->InvalidateNodes();
        port().resetCounters();
        m_panel->host.clearCalls();

        panel()->startAcquireOperation();
        panel()->stopAcquireOperation();
        panel()->updateWidget(true);
        panel()->setDrawRoiPos(0, 0, 50, 50);
        panel()->onRealUpdateTimerTimeout();
        panel()->retranslate(1);
        for (int tab : {0, 1, 2})
            m_panel->innerTabs()->setCurrentIndex(tab);
        for (QPushButton *button : panel()->findChildren<QPushButton *>()) {
            if (!button->text().isEmpty())
                button->click();
        }
        QCOMPARE(m_panel->host.calls(), QStringList());
        QCOMPARE(port().accesses.size(), size_t(0));
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
