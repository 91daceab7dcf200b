// SPDX-License-Identifier: MIT
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextBrowser>
#include <QtTest>

#include <map>
#include <set>

#include "CuratedPanel.h"
#include "ToolPage/CToolPage.h"
#include "ToolPage/SwitchButton.h"
#include "support/BracketTranslator.h"

namespace {

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char('|'), Qt::SkipEmptyParts);
}

const char *const ToolBoxes[] = {"firstToolBox", "secondToolBox", "thirdToolBox"};

} // namespace

class tst_AreaScanPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { open(); }
    void cleanup() { m_panel.reset(); }

    void completeCamera();
    void otherCameras_data();
    void otherCameras();
    void unexpectedKinds_data();
    void unexpectedKinds();
    void aWriteRefreshesItsGroup();
    void liveRowsFollowTheDevice();
    void descriptions();
    void bothLanguages();
    void userSetLoads();
    void registersAreReadOnce();
    void releasedCamera();

private:
    void open(const CuratedFeatures &changes = {})
    {
        m_panel.reset();
        m_panel = std::make_unique<CuratedPanel>(changes);
    }
    CToolPage *group(const char *title) const;
    QStringList hostCalls(const char *function) const { return m_panel->host.callsTo(QString::fromLatin1(function)); }
    QString description() const { return m_panel->panel->findChild<QTextBrowser *>()->toPlainText(); }

    std::unique_ptr<CuratedPanel> m_panel;
};

CToolPage *tst_AreaScanPages::group(const char *title) const
{
    for (CToolPage *page : m_panel->panel->findChildren<CToolPage *>()) {
        const auto *const bar = page->findChild<QPushButton *>(QStringLiteral("pushButtonFold"));
        if (bar->accessibleName() == QString::fromUtf8(title))
            return page;
    }
    return nullptr;
}

void tst_AreaScanPages::completeCamera()
{
    const std::pair<const char *, QStringList> groups[] = {
        {"firstToolBox", words("Common Attribute|ISP|Transport Control")},
        {"secondToolBox", words("Acquisition Control|Digital IO Control")},
        {"thirdToolBox", words("Image Format|UserSet Control")},
    };
    for (const auto &[name, titles] : groups) {
        QStringList found;
        for (const QPushButton *bar : m_panel->panel->findChild<QWidget *>(QString::fromLatin1(name))
                                          ->findChildren<QPushButton *>(QStringLiteral("pushButtonFold")))
            found << bar->accessibleName();
        QCOMPARE(found, titles);
    }
    QCOMPARE(m_panel->labels("firstToolBox").size(), 13);
    QCOMPARE(m_panel->labels("secondToolBox").size(), 11);
    QCOMPARE(m_panel->labels("thirdToolBox").size(), 14); // the rows of the drawn region wait
    QCOMPARE(hostCalls("VLogInfo"), QStringList());
}

void tst_AreaScanPages::otherCameras_data()
{
    QTest::addColumn<QStringList>("missing");
    QTest::addColumn<QStringList>("added");
    QTest::addColumn<QStringList>("hidden");
    const QStringList nothing;
    QTest::newRow("other names") << words("GammaEnable|Gain|AcquisitionFrameRate|ExposureTime")
                                 << words("EnableGamma|GainRaw|AcquisitionFrameRateAbs|ExposureTimeRaw") << nothing;
    QTest::newRow("names that count as they stand")
        << words("TriggerDelay|Gamma") << words("TriggerDelayAbs") << words("TriggerDelay|Gamma");
    QTest::newRow("no transport features")
        << words("GevSCPSPacketSize|GevSCPD") << nothing << words("GEV SCPS Packet Size|GEV SCPD");
    QTest::newRow("no debouncer") << words("LineDebouncerTime") << nothing << words("LineDebouncerTime");
}

void tst_AreaScanPages::otherCameras()
{
    QFETCH(QStringList, missing);
    QFETCH(QStringList, added);
    QFETCH(QStringList, hidden);
    const QStringList all = m_panel->labels();
    CuratedFeatures changes;
    for (const QString &name : missing)
        changes.push_back({"", name.toStdString(), ""});
    for (const QString &name : added)
        changes.push_back({"Integer", name.toStdString(), "<Min>0</Min><Max>10</Max>"});
    open(changes);
    QStringList gone;
    for (const QString &label : all) {
        if (!m_panel->labels().contains(label))
            gone << label;
    }
    QCOMPARE(gone, hidden);
    QCOMPARE(group("Transport Control")->isHidden(), missing.contains(QStringLiteral("GevSCPD")));
}

void tst_AreaScanPages::unexpectedKinds_data()
{
    QTest::addColumn<QByteArray>("feature");
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<QByteArray>("editor");
    const auto row = [](const char *feature, const char *kind, const char *label, const char *editor) {
        QTest::addRow("%s as %s", feature, kind)
            << QByteArray(feature) << QByteArray(kind) << QByteArray(label) << QByteArray(editor);
    };
    row("Gain", "Category", "Gain", "");
    row("Gain", "Register", "Gain", "");
    row("AcquisitionFrameRate", "Enumeration", "Acquisition Frame Rate", "QComboBox");
    row("AcquisitionFrameRate", "Integer", "Acquisition Frame Rate", "QSpinBox");
    row("AcquisitionFrameRateEnable", "Enumeration", "AcquisitionFrameRateEnable", "QComboBox");
    row("UserSetSave", "Boolean", "UserSetSave", "SwitchButton");
    row("Width", "Command", "Width", "QPushButton");
}

void tst_AreaScanPages::unexpectedKinds()
{
    QFETCH(QByteArray, feature);
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, label);
    QFETCH(QByteArray, editor);
    const bool isRegister = kind == "Register"; // its element is another one
    open({{isRegister ? "String" : kind.toStdString(), feature.toStdString(),
           kind == "Enumeration" ? "<EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry>" : ""}});
    const ToolPageWidgetItem *const row = m_panel->row(label.constData());
    QCOMPARE(row->isHidden(), editor.isEmpty());
    bool found = editor.isEmpty();
    for (const QWidget *child : row->findChildren<QWidget *>())
        found = found || child->metaObject()->className() == editor;
    QVERIFY(found);
    QCOMPARE(hostCalls("VLogInfo"), QStringList());
}

void tst_AreaScanPages::aWriteRefreshesItsGroup()
{
    auto *const exposure = m_panel->editor<QDoubleSpinBox>("Exposure Time(us)");
    QVERIFY(exposure->isEnabled());
    QCOMPARE(exposure->value(), 5000.0);
    m_panel->editor<QComboBox>("Exposure Auto")->setCurrentText(QStringLiteral("Continuous"));
    QVERIFY(!exposure->isEnabled());
    m_panel->editor<QComboBox>("Exposure Auto")->setCurrentText(QStringLiteral("Off"));
    QVERIFY(exposure->isEnabled());
}

void tst_AreaScanPages::liveRowsFollowTheDevice()
{
    m_panel->host.setNodeValue("cam", "ExposureAuto", "Continuous");
    m_panel->host.setNodeValue("cam", "ExposureTime", "7500");
    m_panel->host.clearCalls();
    m_panel->panel->onRealUpdateTimerTimeout();
    QCOMPARE(m_panel->host.calls(),
             QStringList({QStringLiteral("GetCameraNodeValue(cam, ExposureAuto)"),
                          QStringLiteral("GetCameraNodeValue(cam, ExposureTime)")}));
    QCOMPARE(m_panel->editor<QComboBox>("Exposure Auto")->currentText(), QStringLiteral("Continuous"));
    QCOMPARE(m_panel->editor<QDoubleSpinBox>("Exposure Time(us)")->value(), 7500.0);
    QCOMPARE(m_panel->camera.written(), std::vector<std::string>());
}

void tst_AreaScanPages::descriptions()
{
    m_panel->panel->show();
    QTest::mousePress(m_panel->row("Exposure Time(us)"), Qt::LeftButton, {}, QPoint(2, 2));
    QCOMPARE(description(), QStringLiteral("Exposure time in us when Exposure Mode is Timed."));
    m_panel->panel->retranslate(1);
    QCOMPARE(description(), QStringLiteral("曝光模式定时下的曝光时间。"));
    m_panel->panel->retranslate(0);
    m_panel->editor<QComboBox>("Gain Auto")->setFocus();
    QTRY_COMPARE(description(), QStringLiteral("Sets the automatic gain control (AGC) mode."));
}

void tst_AreaScanPages::bothLanguages()
{
    BracketTranslator translator;
    QCoreApplication::installTranslator(&translator);
    const QStringList english = m_panel->labels();
    m_panel->panel->retranslate(1);
    QCoreApplication::removeTranslator(&translator);
    const QStringList chinese = m_panel->labels();
    QCOMPARE(chinese.size(), english.size());
    for (int i = 0; i < english.size(); ++i) {
        const bool hasChinese = std::any_of(chinese[i].begin(), chinese[i].end(),
                                            [](QChar letter) { return letter.script() == QChar::Script_Han; });
        QVERIFY2(hasChinese, qPrintable(english[i]));
    }
    QVERIFY(group("图像格式"));
    for (const QPushButton *button : m_panel->panel->findChildren<QPushButton *>()) {
        if (!button->text().isEmpty())
            QVERIFY2(button->text() == QStringLiteral("[Execute]"), qPrintable(button->accessibleName()));
    }
}

void tst_AreaScanPages::userSetLoads()
{
    group("ISP")->collapse();
    MemoryPort &port = m_panel->camera.port;
    m_panel->host.setCallHook([&](const QString &line) {
        if (!line.startsWith(QStringLiteral("SetCameraNodeValue")))
            return;
        for (const char *feature : {"GevSCPD", "Contrast", "OffsetX", "TriggerMode"})
            port.poke(m_panel->camera.address(feature), 1);
        m_panel->camera.map->InvalidateNodes();
    });
    m_panel->host.clearCalls();
    m_panel->editor<QPushButton>("UserSetLoad")->click();
    m_panel->host.setCallHook({});
    QCOMPARE(hostCalls("SetCameraNodeValue"), QStringList({QStringLiteral("SetCameraNodeValue(cam, UserSetLoad, )")}));
    QCOMPARE(m_panel->editor<QSpinBox>("GEV SCPD")->value(), 1);
    QCOMPARE(m_panel->editor<QSpinBox>("OffsetX")->value(), 1);
    QCOMPARE(m_panel->editor<QComboBox>("TriggerMode")->currentText(), QStringLiteral("On"));
    QCOMPARE(m_panel->editor<QSpinBox>("Contrast")->value(), 0); // folded
}

void tst_AreaScanPages::registersAreReadOnce()
{
    m_panel->panel->show();
    // An offset bounds its size, whose row comes before its own.
    const std::set<int64_t> readForLimits = {m_panel->camera.address("OffsetX"), m_panel->camera.address("OffsetY")};
    std::map<int64_t, int> reads;
    for (const MemoryPort::Access &access : m_panel->camera.port.accesses)
        ++reads[access.address];
    QVERIFY(reads.size() > 20);
    for (const auto &[address, count] : reads)
        QCOMPARE(std::make_pair(address, count), std::make_pair(address, readForLimits.count(address) ? 2 : 1));
}

/// The node map goes; neither the user nor the host's events may reach into it any more.
void tst_AreaScanPages::releasedCamera()
{
    m_panel->panel->show();
    m_panel->innerTabs()->setCurrentIndex(2);
    m_panel->editor<QPushButton>("DrawRoi")->click();
    m_panel->panel->setParamterViewDisable();
    m_panel->host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", nullptr);
    m_panel->camera.map->InvalidateNodes();
    m_panel->camera.port.resetCounters();
    m_panel->host.clearCalls();

    m_panel->panel->startAcquireOperation();
    m_panel->panel->stopAcquireOperation();
    m_panel->panel->updateWidget(true);
    m_panel->panel->setDrawRoiPos(0, 0, 50, 50);
    m_panel->panel->onRealUpdateTimerTimeout();
    m_panel->panel->retranslate(1);
    for (int tab : {0, 1, 2})
        m_panel->innerTabs()->setCurrentIndex(tab);
    for (QPushButton *button : m_panel->panel->findChildren<QPushButton *>()) {
        if (!button->text().isEmpty())
            button->click();
    }
    QCOMPARE(m_panel->host.calls(), QStringList());
    QCOMPARE(m_panel->camera.port.accesses.size(), size_t(0));
}

QTEST_MAIN(tst_AreaScanPages)
#include "tst_AreaScanPages.moc"
