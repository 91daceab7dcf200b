// SPDX-License-Identifier: MIT
#include <QComboBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QtTest>

#include <functional>
#include <stdexcept>

#include "CuratedPanel.h"
#include "ToolPage/SelectedButton.h"
#include "ToolPage/SwitchButton.h"

namespace {

using Names = std::vector<std::string>;

const QStringList CameraRows = {QStringLiteral("Width"), QStringLiteral("Height"), QStringLiteral("OffsetX"),
                                QStringLiteral("OffsetY")};
const QStringList DrawnRows = {QStringLiteral("Draw-Width"), QStringLiteral("Draw-Height"),
                               QStringLiteral("Draw-OffsetX"), QStringLiteral("Draw-OffsetY")};

} // namespace

using Event = std::function<void(ParamterWidget &panel)>;
Q_DECLARE_METATYPE(Event)

class tst_RoiDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { open(); }
    void cleanup() { m_panel.reset(); }

    void starts();
    void staysIdle_data();
    void staysIdle();
    void cancelWritesNothing();
    void hostMoves_data();
    void hostMoves();
    void typedNumbers();
    void panelsOwnMoveIsNotEchoed();
    void appliesInOrder();
    void appliesWhatTheCameraTakes();
    void incrementFromTheMinimum();
    void incrementOfZero();
    void restoresInOrder();
    void restoreSkipsUnknownMaxima();
    void acquisitionEndsDrawing();
    void otherImageEndsDrawing_data();
    void otherImageEndsDrawing();
    void eventsWithinHostCalls_data();
    void eventsWithinHostCalls();
    void rowsStayHiddenWhileDrawing();
    void missingFeaturesHaveNoRows();

private:
    void open(const CuratedFeatures &changes = {});
    void draw() { m_panel->editor<QPushButton>("DrawRoi")->click(); }
    bool isDrawing() const { return m_panel->editor<SelectedButton>("DrawRoi")->isSelected(); }
    QSpinBox *drawn(const char *what) const
    {
        return m_panel->editor<QSpinBox>(QByteArray("Draw-").append(what).constData());
    }
    /// Width, height and offsets of the drawn region.
    QList<int> region() const;
    /// The size rows that are shown.
    QStringList sizeRows() const;
    QStringList hostCalls(const char *function) const { return m_panel->host.callsTo(QString::fromLatin1(function)); }

    std::unique_ptr<CuratedPanel> m_panel;
};

void tst_RoiDrawing::open(const CuratedFeatures &changes)
{
    m_panel.reset();
    m_panel = std::make_unique<CuratedPanel>(changes);
    m_panel->host.setNodeValue("cam", "Width", "1280");
    m_panel->host.setNodeValue("cam", "Height", "1024");
    m_panel->host.setRoiAnswer({0, 7, true});
    m_panel->host.clearCalls();
    m_panel->camera.port.resetCounters();
}

QList<int> tst_RoiDrawing::region() const
{
    return {drawn("Width")->value(), drawn("Height")->value(), drawn("OffsetX")->value(), drawn("OffsetY")->value()};
}

QStringList tst_RoiDrawing::sizeRows() const
{
    QStringList shown;
    for (const QString &label : m_panel->labels("thirdToolBox")) {
        if (CameraRows.contains(label) || DrawnRows.contains(label))
            shown << label;
    }
    return shown;
}

void tst_RoiDrawing::starts()
{
    auto *const apply = m_panel->editor<QPushButton>("ROIEffective");
    auto *const restore = m_panel->editor<QPushButton>("Restore Image Size");
    QCOMPARE(sizeRows(), CameraRows);
    QVERIFY(!apply->isEnabled());

    m_panel->camera.port.poke(m_panel->camera.address("OffsetX"), 100);
    m_panel->camera.port.poke(m_panel->camera.address("OffsetY"), 50);
    m_panel->camera.map->InvalidateNodes();
    draw();
    QVERIFY(isDrawing());
    QCOMPARE(m_panel->host.callsTo({QStringLiteral("GetCameraNodeValue"), QStringLiteral("DrawROI")}),
             QStringList({QStringLiteral("GetCameraNodeValue(cam, Width)"),
                          QStringLiteral("GetCameraNodeValue(cam, Height)"),
                          QStringLiteral("DrawROI(cam, 0, 0, 1280, 1024, 0, false, 0, 0)")}));
    QCOMPARE(sizeRows(), DrawnRows);
    QCOMPARE(region(), QList<int>({1280, 1024, 100, 50}));
    const std::tuple<const char *, int, int, int> ranges[] = {
        {"Width", 16, 1280, 4}, {"Height", 16, 1024, 2}, {"OffsetX", 100, 100, 4}, {"OffsetY", 50, 50, 2}};
    for (const auto &[name, minimum, maximum, step] : ranges) {
        QCOMPARE(std::make_tuple(name, drawn(name)->minimum(), drawn(name)->maximum(), drawn(name)->singleStep()),
                 std::make_tuple(name, minimum, maximum, step));
    }
    QVERIFY(apply->isEnabled());
    QVERIFY(!restore->isEnabled());
    QCOMPARE(hostCalls("SetROIPos"), QStringList());
}

void tst_RoiDrawing::staysIdle_data()
{
    QTest::addColumn<QByteArray>("unreadable");
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<int>("lines");
    QTest::newRow("Width cannot be read") << QByteArray("Width") << 0 << true << 0;
    QTest::newRow("Height cannot be read") << QByteArray("Height") << 0 << true << 0;
    QTest::newRow("the host fails") << QByteArray() << -1 << true << 1;
    QTest::newRow("the host refuses") << QByteArray() << 0 << false << 1;
}

void tst_RoiDrawing::staysIdle()
{
    QFETCH(QByteArray, unreadable);
    QFETCH(int, result);
    QFETCH(bool, accepted);
    m_panel->host.setReadResult("cam", unreadable.toStdString(), -1);
    m_panel->host.setRoiAnswer({result, 7, accepted});
    draw();
    QVERIFY(!isDrawing());
    QCOMPARE(sizeRows(), CameraRows);
    QVERIFY(!m_panel->editor<QPushButton>("ROIEffective")->isEnabled());
    QVERIFY(m_panel->editor<QPushButton>("Restore Image Size")->isEnabled());
    QCOMPARE(hostCalls("RomoveROI"), QStringList());
    QTEST(int(hostCalls("VLogInfo").size()), "lines");
}

void tst_RoiDrawing::cancelWritesNothing()
{
    draw();
    m_panel->panel->setDrawRoiPos(100, 50, 740, 530);
    draw();
    QVERIFY(!isDrawing());
    QCOMPARE(hostCalls("RomoveROI"), QStringList({QStringLiteral("RomoveROI(cam, 7)")}));
    QCOMPARE(sizeRows(), CameraRows);
    QVERIFY(!m_panel->editor<QPushButton>("ROIEffective")->isEnabled());
    QVERIFY(m_panel->editor<QPushButton>("Restore Image Size")->isEnabled());
    QCOMPARE(m_panel->camera.written(), Names());
    m_panel->panel->setDrawRoiPos(0, 0, 100, 100); // too late
    QCOMPARE(region(), QList<int>({640, 480, 100, 50}));
}

void tst_RoiDrawing::hostMoves_data()
{
    QTest::addColumn<QList<int>>("corners");
    QTest::addColumn<QList<int>>("shown");
    QTest::addColumn<QString>("corrected"); // what the host gets in place of what the camera cannot have
    const auto row = [](const char *name, const QList<int> &corners, const QList<int> &shown,
                        const char *corrected = "") {
        QTest::newRow(name) << corners << shown << QString::fromLatin1(corrected);
    };
    row("inside", {100, 50, 740, 530}, {640, 480, 100, 50});
    row("swapped corners", {740, 530, 100, 50}, {640, 480, 100, 50});
    row("any pixel", {1, 3, 644, 484}, {643, 481, 1, 3});
    row("everything", {0, 0, 1280, 1024}, {1280, 1024, 0, 0});
    row("at the far corner", {1180, 924, 1280, 1024}, {100, 100, 1180, 924});
    row("smaller than the camera can", {8, 8, 9, 9}, {16, 16, 8, 8}, "SetROIPos(cam, 7, 8, 8, 24, 24)");
    row("smaller, at the edge", {1275, 8, 1280, 100}, {16, 92, 1264, 8}, "SetROIPos(cam, 7, 1264, 8, 1280, 100)");
    row("beyond the image", {-50, -50, 9999, 9999}, {1280, 1024, 0, 0}, "SetROIPos(cam, 7, 0, 0, 1280, 1024)");
}

void tst_RoiDrawing::hostMoves()
{
    QFETCH(QList<int>, corners);
    draw();
    drawn("OffsetX")->setValue(0);
    drawn("Width")->setValue(500);
    drawn("OffsetX")->setValue(400); // earlier limits must not bind the next move
    m_panel->host.clearCalls();
    m_panel->panel->setDrawRoiPos(corners[0], corners[1], corners[2], corners[3]);
    QTEST(region(), "shown");
    QCOMPARE(drawn("Width")->maximum(), 1280 - drawn("OffsetX")->value());
    QTEST(hostCalls("SetROIPos").join(QLatin1Char(' ')), "corrected");
}

void tst_RoiDrawing::typedNumbers()
{
    draw();
    drawn("Width")->setValue(700);
    QCOMPARE(drawn("OffsetX")->maximum(), 580);
    drawn("OffsetX")->setValue(400);
    QCOMPARE(drawn("Width")->maximum(), 880);
    drawn("Height")->setValue(24);
    drawn("OffsetY")->setValue(1001);
    QCOMPARE(drawn("OffsetY")->value(), 1000);
    QCOMPARE(hostCalls("SetROIPos"),
             QStringList({QStringLiteral("SetROIPos(cam, 7, 0, 0, 700, 1024)"),
                          QStringLiteral("SetROIPos(cam, 7, 400, 0, 1100, 1024)"),
                          QStringLiteral("SetROIPos(cam, 7, 400, 0, 1100, 24)"),
                          QStringLiteral("SetROIPos(cam, 7, 400, 1000, 1100, 1024)")}));
    m_panel->host.clearCalls();
    drawn("Width")->selectAll();
    QTest::keyClicks(drawn("Width"), QStringLiteral("1000"));
    QCOMPARE(hostCalls("SetROIPos"), QStringList()); // of half a number
    QTest::keyClick(drawn("Width"), Qt::Key_Enter);
    QCOMPARE(drawn("Width")->value(), 880);
    QCOMPARE(hostCalls("SetROIPos"), QStringList(QStringLiteral("SetROIPos(cam, 7, 400, 1000, 1280, 1024)")));
}

void tst_RoiDrawing::panelsOwnMoveIsNotEchoed()
{
    draw();
    m_panel->host.setCallHook([this](const QString &line) {
        if (line.startsWith(QStringLiteral("SetROIPos")))
            m_panel->panel->setDrawRoiPos(0, 0, 50, 50);
    });
    drawn("Width")->setValue(700);
    QCOMPARE(drawn("Width")->value(), 700);
    QCOMPARE(hostCalls("SetROIPos").size(), 1);
    m_panel->host.setCallHook({});
}

void tst_RoiDrawing::appliesInOrder()
{
    draw();
    m_panel->panel->setDrawRoiPos(100, 50, 740, 530);
    size_t writesBeforeRemoval = 0;
    m_panel->host.setCallHook([&](const QString &line) {
        if (line.startsWith(QStringLiteral("RomoveROI")))
            writesBeforeRemoval = m_panel->camera.written().size();
    });
    m_panel->editor<QPushButton>("ROIEffective")->click();
    m_panel->host.setCallHook({});
    QCOMPARE(writesBeforeRemoval, size_t(0));
    QVERIFY(!isDrawing());
    QCOMPARE(hostCalls("RomoveROI").size(), 1);
    QCOMPARE(m_panel->camera.written(), Names({"Width", "Height", "OffsetX", "OffsetY"}));
    QCOMPARE(m_panel->editor<QSpinBox>("Width")->value(), 640);
    QCOMPARE(m_panel->editor<QSpinBox>("OffsetY")->value(), 50);
    QCOMPARE(hostCalls("VLogInfo"), QStringList());
}

void tst_RoiDrawing::appliesWhatTheCameraTakes()
{
    draw();
    m_panel->panel->setDrawRoiPos(101, 50, 744, 531);
    m_panel->camera.port.writeFault = MemoryPort::Fault::Refused;
    m_panel->camera.port.faultFrom = m_panel->camera.address("OffsetY");
    m_panel->camera.port.faultTo = m_panel->camera.port.faultFrom + 4;
    m_panel->editor<QPushButton>("ROIEffective")->click();
    QCOMPARE(m_panel->editor<QSpinBox>("Width")->value(), 640);
    QCOMPARE(m_panel->editor<QSpinBox>("Height")->value(), 480);
    QCOMPARE(m_panel->editor<QSpinBox>("OffsetX")->value(), 100);
    QCOMPARE(m_panel->editor<QSpinBox>("OffsetY")->value(), 0);
    QCOMPARE(hostCalls("VLogInfo"),
             QStringList({QStringLiteral("VLogInfo(RoiDrawing, The camera refuses Width 643, it gets 640, 0)"),
                          QStringLiteral("VLogInfo(RoiDrawing, The camera refuses Height 481, it gets 480, 0)"),
                          QStringLiteral("VLogInfo(RoiDrawing, The camera refuses OffsetX 101, it gets 100, 0)"),
                          QStringLiteral("VLogInfo(RoiDrawing, The camera refuses OffsetY 50, 0)")}));
}

/// Sizes step from the minimum on.
void tst_RoiDrawing::incrementFromTheMinimum()
{
    open({{"Integer", "Width", "<Min>18</Min><pMax>WidthLimit</pMax><Inc>4</Inc>"}});
    draw();
    m_panel->panel->setDrawRoiPos(0, 0, 645, 480);
    m_panel->editor<QPushButton>("ROIEffective")->click();
    QCOMPARE(m_panel->editor<QSpinBox>("Width")->value(), 642);
}

void tst_RoiDrawing::incrementOfZero()
{
    open({{"Integer", "Width", "<Min>16</Min><Max>2448</Max><Inc>0</Inc>"}});
    draw();
    drawn("Width")->stepDown();
    QCOMPARE(drawn("Width")->value(), 1279);
    m_panel->camera.port.writeFault = MemoryPort::Fault::Refused;
    m_panel->editor<QPushButton>("ROIEffective")->click();
    QVERIFY(hostCalls("VLogInfo").contains(QStringLiteral("VLogInfo(RoiDrawing, The camera refuses Width 1279, 0)")));
}

void tst_RoiDrawing::restoresInOrder()
{
    MemoryPort &port = m_panel->camera.port;
    for (const auto &[feature, value] : {std::pair("OffsetX", 100), std::pair("OffsetY", 50)})
        port.poke(m_panel->camera.address(feature), uint64_t(value));
    m_panel->camera.map->InvalidateNodes();
    // The host writes the offsets, which raises the maxima of the sizes.
    m_panel->host.setCallHook([this](const QString &line) {
        for (const char *feature : {"OffsetX", "OffsetY"}) {
            if (line == QStringLiteral("SetCameraNodeValue(cam, %1, 0)").arg(QLatin1String(feature)))
                GenApi::CIntegerPtr(m_panel->camera.node(feature))->SetValue(0);
        }
    });
    m_panel->editor<QPushButton>("Restore Image Size")->click();
    m_panel->host.setCallHook({});
    QCOMPARE(hostCalls("SetCameraNodeValue"),
             QStringList({QStringLiteral("SetCameraNodeValue(cam, OffsetY, 0)"),
                          QStringLiteral("SetCameraNodeValue(cam, OffsetX, 0)"),
                          QStringLiteral("SetCameraNodeValue(cam, Height, 2048)"),
                          QStringLiteral("SetCameraNodeValue(cam, Width, 2448)")}));
    QCOMPARE(m_panel->editor<QSpinBox>("OffsetX")->value(), 0);
}

void tst_RoiDrawing::restoreSkipsUnknownMaxima()
{
    open({{"", "Height", ""}, {"Float", "Width", ""}});
    m_panel->editor<QPushButton>("Restore Image Size")->click();
    QCOMPARE(hostCalls("SetCameraNodeValue").size(), 2);
}

void tst_RoiDrawing::acquisitionEndsDrawing()
{
    draw();
    m_panel->panel->startAcquireOperation();
    m_panel->panel->updateWidget(false);
    QVERIFY(!isDrawing());
    QCOMPARE(hostCalls("RomoveROI").size(), 1);
    QCOMPARE(sizeRows(), CameraRows);
    QVERIFY(!m_panel->editor<SelectedButton>("DrawRoi")->isEnabled());
    QVERIFY(!m_panel->editor<QPushButton>("Restore Image Size")->isEnabled());
    QVERIFY(!m_panel->editor<QPushButton>("UserSetLoad")->isEnabled());
    m_panel->panel->stopAcquireOperation();
    QVERIFY(m_panel->editor<SelectedButton>("DrawRoi")->isEnabled());
    QVERIFY(m_panel->editor<QPushButton>("Restore Image Size")->isEnabled());
    QVERIFY(m_panel->editor<QPushButton>("UserSetLoad")->isEnabled());

    draw();
    m_panel->panel->stopAcquireOperation(); // comes with every event of a device list
    QVERIFY(isDrawing());
    QVERIFY(!m_panel->editor<QPushButton>("Restore Image Size")->isEnabled());
}

/// The image becomes another one under the region: nothing of it may reach the camera.
void tst_RoiDrawing::otherImageEndsDrawing_data()
{
    QTest::addColumn<Event>("cause");
    QTest::newRow("import or reset") << Event([](ParamterWidget &panel) { panel.updateWidget(true); });
    QTest::newRow("user set") << Event([](ParamterWidget &panel) { panel.onUserSetLoadButtonClicked(); });
    QTest::newRow("edit in the attribute tab") << Event([](ParamterWidget &panel) {
        auto *const tabs = panel.findChild<QTabWidget *>(QStringLiteral("tabMainWidget"));
        tabs->setCurrentIndex(1);
        tabs->setCurrentIndex(0);
    });
}

void tst_RoiDrawing::otherImageEndsDrawing()
{
    QFETCH(Event, cause);
    m_panel->panel->show();
    m_panel->innerTabs()->setCurrentIndex(2);
    draw();
    m_panel->camera.port.readFault = MemoryPort::Fault::Timeout;
    m_panel->camera.map->InvalidateNodes();
    cause(*m_panel->panel);
    QVERIFY2(isDrawing(), "an image that is not known is no other one");
    m_panel->camera.port.readFault = MemoryPort::Fault::None;
    draw();
    for (const char *feature : {"Width", "OffsetY"}) {
        draw();
        m_panel->panel->setDrawRoiPos(100, 50, 740, 530);
        m_panel->host.clearCalls();
        m_panel->camera.port.poke(m_panel->camera.address(feature), 600);
        m_panel->camera.map->InvalidateNodes();
        m_panel->camera.port.resetCounters();
        cause(*m_panel->panel);
        QVERIFY(!isDrawing());
        QCOMPARE(hostCalls("RomoveROI"), QStringList(QStringLiteral("RomoveROI(cam, 7)")));
        QCOMPARE(sizeRows(), CameraRows);
        QCOMPARE(m_panel->editor<QSpinBox>(feature)->value(), 600);
        QCOMPARE(m_panel->camera.written(), Names());
    }
}

/// The host may start acquisition, close the device or fail before it returns.
void tst_RoiDrawing::eventsWithinHostCalls_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<Event>("event");
    QTest::addColumn<QString>("enabled");
    QTest::addColumn<int>("removals");
    QTest::addColumn<int>("writes");
    const Event starts = [](ParamterWidget &panel) { panel.startAcquireOperation(); };
    const Event stops = [](ParamterWidget &panel) { panel.stopAcquireOperation(); };
    const Event closes = [](ParamterWidget &panel) { panel.setParamterViewDisable(); };
    const Event fails = [](ParamterWidget &) { throw std::runtime_error("no viewer"); };
    const QString draw = QStringLiteral("DrawROI");
    const QString remove = QStringLiteral("RomoveROI");
    const QString idle = QStringLiteral("DrawRoi|Restore Image Size|");
    QTest::newRow("drawing starts acquisition") << draw << starts << QString() << 1 << 0;
    QTest::newRow("drawing tells of no acquisition")
        << draw << stops << QStringLiteral("DrawRoi|ROIEffective|") << 0 << 0;
    QTest::newRow("drawing closes the device") << draw << closes << QString() << 1 << 0;
    QTest::newRow("drawing throws") << draw << fails << idle << 0 << 0;
    QTest::newRow("reading closes the device") << QStringLiteral("GetCameraNodeValue") << closes << QString() << 0 << 0;
    QTest::newRow("removing closes the device") << remove << closes << QString() << 1 << 0;
    QTest::newRow("removing throws") << remove << fails << idle << 1 << 4;
}

void tst_RoiDrawing::eventsWithinHostCalls()
{
    QFETCH(QString, call);
    QFETCH(Event, event);
    m_panel->host.setCallHook([&](const QString &line) {
        if (line.startsWith(call))
            event(*m_panel->panel);
    });
    draw();
    if (call == QStringLiteral("RomoveROI"))
        m_panel->editor<QPushButton>("ROIEffective")->click();
    m_panel->host.setCallHook({});
    QString enabled;
    for (const char *button : {"DrawRoi", "ROIEffective", "Restore Image Size"}) {
        if (m_panel->editor<QPushButton>(button)->isEnabled())
            enabled += QLatin1String(button) + QLatin1Char('|');
    }
    QTEST(enabled, "enabled");
    QCOMPARE(isDrawing(), enabled.contains(QStringLiteral("ROIEffective")));
    QCOMPARE(sizeRows(), isDrawing() ? DrawnRows : CameraRows);
    QTEST(int(hostCalls("RomoveROI").size()), "removals");
    QTEST(int(m_panel->camera.written().size()), "writes");
}

void tst_RoiDrawing::rowsStayHiddenWhileDrawing()
{
    m_panel->panel->show();
    m_panel->innerTabs()->setCurrentIndex(2);
    draw();
    m_panel->panel->updateWidget(true);
    QCOMPARE(sizeRows(), DrawnRows);
    m_panel->editor<QPushButton>("UserSetLoad")->click();
    QCOMPARE(sizeRows(), DrawnRows);
    m_panel->editor<QComboBox>("PixelFormat")->setCurrentIndex(1);
    m_panel->editor<SwitchButton>("ReverseX")->click();
    QCOMPARE(sizeRows(), DrawnRows);
    m_panel->innerTabs()->setCurrentIndex(0);
    m_panel->innerTabs()->setCurrentIndex(2);
    QCOMPARE(sizeRows(), DrawnRows);
    draw();
    QCOMPARE(sizeRows(), CameraRows);
    m_panel->panel->setDrawRoiStatus(true);
    QCOMPARE(sizeRows(), DrawnRows);
    m_panel->panel->setDrawRoiStatus(false);
    QCOMPARE(sizeRows(), CameraRows);
}

void tst_RoiDrawing::missingFeaturesHaveNoRows()
{
    open({{"", "OffsetY", ""}});
    QCOMPARE(sizeRows(), CameraRows.mid(0, 3));
    draw();
    QCOMPARE(sizeRows(), DrawnRows.mid(0, 3));
    QVERIFY(!m_panel->row("Restore Image Size")->isHidden());
    m_panel->editor<QPushButton>("ROIEffective")->click();
    QCOMPARE(m_panel->camera.written(), Names({"Width", "Height", "OffsetX"}));
    QCOMPARE(hostCalls("VLogInfo"), QStringList());
}

QTEST_MAIN(tst_RoiDrawing)
#include "tst_RoiDrawing.moc"
