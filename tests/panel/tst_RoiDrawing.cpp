// SPDX-License-Identifier: MIT
#include <stdexcept>

#include "CuratedPanel.h"
#include "ToolPage/SelectedButton.h"

namespace {

using Names = std::vector<std::string>;
using Event = std::function<void(ParamterWidget &panel)>;

const QStringList CameraRows = words("Width Height OffsetX OffsetY");
const QStringList DrawnRows = words("Draw-Width Draw-Height Draw-OffsetX Draw-OffsetY");

} // namespace

class tst_RoiDrawing : public PanelFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { open(); }
    void cleanup() { m_panel.reset(); }

    void starts()
    {
        QCOMPARE(sizeRows(), CameraRows);
        QCOMPARE(enabled(), "DrawRoi|Restore Image Size"_s);
        m_panel->poke("OffsetX", 100);
        m_panel->poke("OffsetY", 50);
        draw();
        QVERIFY(isDrawing());
        QCOMPARE(calls("GetCameraNodeValue DrawROI SetROIPos"),
                 words("GetCameraNodeValue(cam, Width)|GetCameraNodeValue(cam, Height)"
                       "|DrawROI(cam, 0, 0, 1280, 1024, 0, false, 0, 0)",
                       '|'));
        QCOMPARE(sizeRows(), DrawnRows);
        QCOMPARE(region(), QList<int>({1280, 1024, 100, 50}));
        const std::tuple<const char *, int, int, int> ranges[] = {
            {"Width", 16, 1280, 4}, {"Height", 16, 1024, 2}, {"OffsetX", 100, 100, 4}, {"OffsetY", 50, 50, 2}};
        for (const auto &[name, minimum, maximum, step] : ranges)
            QCOMPARE(std::tuple(name, drawn(name)->minimum(), drawn(name)->maximum(), drawn(name)->singleStep()),
                     std::tuple(name, minimum, maximum, step));
        QCOMPARE(enabled(), "DrawRoi|ROIEffective"_s);
    }

    void staysIdle()
    {
        for (const auto &[name, unreadable, result, accepted, lines] :
             {std::tuple("no width", "Width", 0, true, 0), std::tuple("no height", "Height", 0, true, 0),
              std::tuple("the host fails", "", -1, true, 1), std::tuple("the host refuses", "", 0, false, 1)}) {
            const InRow inRow(name);
            open();
            m_panel->host.setReadResult("cam", unreadable, -1);
            m_panel->host.roiAnswer = {result, 7, accepted};
            draw();
            QVERIFY(!isDrawing());
            QCOMPARE(sizeRows(), CameraRows);
            QCOMPARE(enabled(), "DrawRoi|Restore Image Size"_s);
            QCOMPARE(calls("RomoveROI"), QStringList());
            QCOMPARE(told().size(), lines);
        }
    }

    void cancelWritesNothing()
    {
        draw();
        panel()->setDrawRoiPos(100, 50, 740, 530);
        draw();
        QVERIFY(!isDrawing());
        QCOMPARE(calls("RomoveROI"), QStringList("RomoveROI(cam, 7)"_s));
        QCOMPARE(sizeRows(), CameraRows);
        QCOMPARE(enabled(), "DrawRoi|Restore Image Size"_s);
        QCOMPARE(m_panel->camera.written(), Names());
        panel()->setDrawRoiPos(0, 0, 100, 100); // too late
        QCOMPARE(region(), QList<int>({640, 480, 100, 50}));
    }

    void hostMoves()
    {
        // The host's corners, what is shown, and what the host gets in place of what the camera cannot have.
        const std::tuple<const char *, std::array<int, 4>, QList<int>, QString> rows[] = {
            {"inside", {100, 50, 740, 530}, {640, 480, 100, 50}, {}},
            {"swapped corners", {740, 530, 100, 50}, {640, 480, 100, 50}, {}},
            {"any pixel", {1, 3, 644, 484}, {643, 481, 1, 3}, {}},
            {"too small", {8, 8, 9, 9}, {16, 16, 8, 8}, "SetROIPos(cam, 7, 8, 8, 24, 24)"_s},
            {"at the edge", {1275, 8, 1280, 100}, {16, 92, 1264, 8}, "SetROIPos(cam, 7, 1264, 8, 1280, 100)"_s},
            {"beyond", {-50, -50, 9999, 9999}, {1280, 1024, 0, 0}, "SetROIPos(cam, 7, 0, 0, 1280, 1024)"_s}};
        for (const auto &[name, corners, shown, corrected] : rows) {
            const InRow inRow(name);
            open();
            draw();
            drawn("OffsetX")->setValue(0);
            drawn("Width")->setValue(500);
            drawn("OffsetX")->setValue(400); // earlier limits must not bind the next move
            m_panel->host.clearCalls();
            panel()->setDrawRoiPos(corners[0], corners[1], corners[2], corners[3]);
            QCOMPARE(region(), shown);
            QCOMPARE(drawn("Width")->maximum(), 1280 - drawn("OffsetX")->value());
            QCOMPARE(calls("SetROIPos").join(QLatin1Char(' ')), corrected);
        }
    }

    void typedNumbers()
    {
        draw();
        drawn("Width")->setValue(700);
        QCOMPARE(drawn("OffsetX")->maximum(), 580);
        drawn("OffsetX")->setValue(400);
        QCOMPARE(drawn("Width")->maximum(), 880);
        drawn("Height")->setValue(24);
        drawn("OffsetY")->setValue(1001);
        QCOMPARE(drawn("OffsetY")->value(), 1000);
        QCOMPARE(calls("SetROIPos"),
                 words("SetROIPos(cam, 7, 0, 0, 700, 1024)|SetROIPos(cam, 7, 400, 0, 1100, 1024)"
                       "|SetROIPos(cam, 7, 400, 0, 1100, 24)|SetROIPos(cam, 7, 400, 1000, 1100, 1024)",
                       '|'));
        m_panel->host.clearCalls();
        drawn("Width")->selectAll();
        QTest::keyClicks(drawn("Width"), "1000"_s);
        QCOMPARE(calls("SetROIPos"), QStringList()); // of half a number
        QTest::keyClick(drawn("Width"), Qt::Key_Enter);
        QCOMPARE(drawn("Width")->value(), 880);
        QCOMPARE(calls("SetROIPos"), QStringList("SetROIPos(cam, 7, 400, 1000, 1280, 1024)"_s));
    }

    void panelsOwnMoveIsNotEchoed()
    {
        draw();
        at("SetROIPos", [](ParamterWidget &panel) { panel.setDrawRoiPos(0, 0, 50, 50); });
        drawn("Width")->setValue(700);
        QCOMPARE(drawn("Width")->value(), 700);
        QCOMPARE(calls("SetROIPos").size(), 1);
    }

    void appliesInOrder()
    {
        draw();
        panel()->setDrawRoiPos(100, 50, 740, 530);
        size_t writesBeforeRemoval = 99;
        at("RomoveROI", [&](ParamterWidget &) { writesBeforeRemoval = m_panel->camera.written().size(); });
        click("ROIEffective");
        QCOMPARE(writesBeforeRemoval, size_t(0));
        QVERIFY(!isDrawing());
        QCOMPARE(calls("RomoveROI").size(), 1);
        QCOMPARE(m_panel->camera.written(), Names({"Width", "Height", "OffsetX", "OffsetY"}));
        QCOMPARE(number("Width"), 640);
        QCOMPARE(number("OffsetY"), 50);
        QCOMPARE(told(), QStringList());
    }

    void appliesWhatTheCameraTakes()
    {
        draw();
        panel()->setDrawRoiPos(101, 50, 744, 531);
        port().writeFault = MemoryPort::Fault::Refused;
        port().faultFrom = m_panel->camera.address("OffsetY");
        port().faultTo = port().faultFrom + 4;
        click("ROIEffective");
        for (const auto &[row, value] :
             {std::pair("Width", 640), std::pair("Height", 480), std::pair("OffsetX", 100), std::pair("OffsetY", 0)})
            QCOMPARE(std::pair(row, number(row)), std::pair(row, value));
        QCOMPARE(told(),
                 words("VLogInfo(RoiDrawing, The camera refuses Width 643, it gets 640, 0)"
                       "|VLogInfo(RoiDrawing, The camera refuses Height 481, it gets 480, 0)"
                       "|VLogInfo(RoiDrawing, The camera refuses OffsetX 101, it gets 100, 0)"
                       "|VLogInfo(RoiDrawing, The camera refuses OffsetY 50, 0)",
                       '|'));
    }

    void increments()
    {
        open({{"Integer", "Width", "<Min>18</Min><pMax>WidthLimit</pMax><Inc>4</Inc>"}});
        draw();
        panel()->setDrawRoiPos(0, 0, 645, 480);
        click("ROIEffective");
        QCOMPARE(number("Width"), 642); // sizes step from the minimum on

        open({{"Integer", "Width", "<Min>16</Min><Max>2448</Max><Inc>0</Inc>"}});
        draw();
        drawn("Width")->stepDown();
        QCOMPARE(drawn("Width")->value(), 1279);
        port().writeFault = MemoryPort::Fault::Refused;
        click("ROIEffective");
        QVERIFY(told().contains("VLogInfo(RoiDrawing, The camera refuses Width 1279, 0)"_s));
    }

    void restoresInOrder()
    {
        m_panel->poke("OffsetX", 100);
        m_panel->poke("OffsetY", 50);
        // The host writes the offsets, which raises the maxima of the sizes.
        m_panel->host.setCallHook([this](const QString &line) {
            for (const char *feature : {"OffsetX", "OffsetY"}) {
                if (line == "SetCameraNodeValue(cam, %1, 0)"_s.arg(QLatin1String(feature)))
                    GenApi::CIntegerPtr(m_panel->camera.node(feature))->SetValue(0);
            }
        });
        click("Restore Image Size");
        m_panel->host.setCallHook({});
        QCOMPARE(calls("SetCameraNodeValue"),
                 words("SetCameraNodeValue(cam, OffsetY, 0)|SetCameraNodeValue(cam, OffsetX, 0)"
                       "|SetCameraNodeValue(cam, Height, 2048)|SetCameraNodeValue(cam, Width, 2448)",
                       '|'));
        QCOMPARE(number("OffsetX"), 0);

        open({{"", "Height", ""}, {"Float", "Width", ""}}); // whose maxima nobody knows
        click("Restore Image Size");
        QCOMPARE(calls("SetCameraNodeValue").size(), 2);
    }

    void acquisitionEndsDrawing()
    {
        draw();
        panel()->startAcquireOperation();
        panel()->updateWidget(false);
        QVERIFY(!isDrawing());
        QCOMPARE(calls("RomoveROI").size(), 1);
        QCOMPARE(sizeRows(), CameraRows);
        QCOMPARE(enabled(), QString());
        QVERIFY(!button("UserSetLoad")->isEnabled());
        panel()->stopAcquireOperation();
        QCOMPARE(enabled(), "DrawRoi|Restore Image Size"_s);
        QVERIFY(button("UserSetLoad")->isEnabled());

        draw();
        panel()->stopAcquireOperation(); // comes with every event of a device list
        QCOMPARE(enabled(), "DrawRoi|ROIEffective"_s);
    }

    /// The image becomes another one under the region: nothing of it may reach the camera.
    void otherImageEndsDrawing()
    {
        const std::pair<const char *, Event> causes[] = {
            {"import or reset", [](ParamterWidget &panel) { panel.updateWidget(true); }},
            {"user set", [](ParamterWidget &panel) { panel.onUserSetLoadButtonClicked(); }},
            {"edit in the attribute tab", [this](ParamterWidget &) { visitTree(); }}};
        for (const auto &[name, cause] : causes) {
            const InRow inRow(name);
            open();
            panel()->show();
            m_panel->innerTabs()->setCurrentIndex(2);
            draw();
            port().readFault = MemoryPort::Fault::Timeout;
            m_panel->camera.map->InvalidateNodes();
            cause(*panel());
            QVERIFY2(isDrawing(), "an image that is not known is no other one");
            port().readFault = MemoryPort::Fault::None;
            QCoreApplication::processEvents(); // the device is asked again in the next turn
            draw();
            for (const char *feature : {"Width", "OffsetY"}) {
                draw();
                panel()->setDrawRoiPos(100, 50, 740, 530);
                m_panel->host.clearCalls();
                m_panel->poke(feature, 600);
                port().resetCounters();
                cause(*panel());
                QVERIFY(!isDrawing());
                QCOMPARE(calls("RomoveROI"), QStringList("RomoveROI(cam, 7)"_s));
                QCOMPARE(sizeRows(), CameraRows);
                QCOMPARE(number(feature), 600);
                QCOMPARE(m_panel->camera.written(), Names());
            }
        }
    }

    /// The host may start acquisition, close the device or fail before it returns.
    void eventsWithinHostCalls()
    {
        const Event starts = [](ParamterWidget &panel) { panel.startAcquireOperation(); };
        const Event stops = [](ParamterWidget &panel) { panel.stopAcquireOperation(); };
        const Event closes = [](ParamterWidget &panel) { panel.setParamterViewDisable(); };
        const Event fails = [](ParamterWidget &) { throw std::runtime_error("no viewer"); };
        const QString idle = "DrawRoi|Restore Image Size"_s;
        // What happens in which call, the buttons that are enabled then, removals of the region and writes.
        const std::tuple<const char *, const char *, Event, QString, int, int> rows[] = {
            {"drawing starts acquisition", "DrawROI", starts, {}, 1, 0},
            {"drawing tells of no acquisition", "DrawROI", stops, "DrawRoi|ROIEffective"_s, 0, 0},
            {"drawing closes the device", "DrawROI", closes, {}, 1, 0},
            {"drawing throws", "DrawROI", fails, idle, 0, 0},
            {"reading closes the device", "GetCameraNodeValue", closes, {}, 0, 0},
            {"removing closes the device", "RomoveROI", closes, {}, 1, 0},
            {"removing throws", "RomoveROI", fails, idle, 1, 4}};
        for (const auto &[name, call, event, buttons, removals, writes] : rows) {
            const InRow inRow(name);
            open();
            at(call, event);
            draw();
            if (qstrcmp(call, "RomoveROI") == 0)
                click("ROIEffective");
            m_panel->host.setCallHook({});
            QCOMPARE(enabled(), buttons);
            QCOMPARE(isDrawing(), buttons.contains("ROIEffective"_s));
            QCOMPARE(sizeRows(), isDrawing() ? DrawnRows : CameraRows);
            QCOMPARE(calls("RomoveROI").size(), removals);
            QCOMPARE(int(m_panel->camera.written().size()), writes);
        }
    }

    void rowsStayHiddenWhileDrawing()
    {
        panel()->show();
        m_panel->innerTabs()->setCurrentIndex(2);
        draw();
        const std::function<void()> refreshes[] = {[this] { panel()->updateWidget(true); },
                                                   [this] { click("UserSetLoad"); },
                                                   [this] { choose("PixelFormat", 1); }, [this] { click("ReverseX"); },
                                                   [this] {
                                                       m_panel->innerTabs()->setCurrentIndex(0);
                                                       m_panel->innerTabs()->setCurrentIndex(2);
                                                   }};
        for (const auto &refresh : refreshes) {
            refresh();
            QCOMPARE(sizeRows(), DrawnRows);
        }
        draw();
        QCOMPARE(sizeRows(), CameraRows);
        for (const bool drawing : {true, false}) {
            panel()->setDrawRoiStatus(drawing);
            QCOMPARE(sizeRows(), drawing ? DrawnRows : CameraRows);
        }
    }

    /// A slow camera may tell only then that it has a value.
    void rowsAppearWhileDrawing()
    {
        open({{"Integer", "OffsetY", "<pIsAvailable>GainAutoReg</pIsAvailable><pMax>OffsetYLimit</pMax><Inc>2</Inc>"}});
        draw();
        QCOMPARE(sizeRows(), DrawnRows.mid(0, 3));
        m_panel->poke("GainAuto", 1);
        m_panel->row("OffsetY")->updateWidget(false);
        QCOMPARE(sizeRows(), DrawnRows);
    }

    void missingFeaturesHaveNoRows()
    {
        open({{"", "OffsetY", ""}});
        QCOMPARE(sizeRows(), CameraRows.mid(0, 3));
        draw();
        QCOMPARE(sizeRows(), DrawnRows.mid(0, 3));
        QVERIFY(!isHidden("Restore Image Size"));
        click("ROIEffective");
        QCOMPARE(m_panel->camera.written(), Names({"Width", "Height", "OffsetX"}));
        QCOMPARE(told(), QStringList());
    }

private:
    void open(const CuratedFeatures &changes = {})
    {
        m_panel.reset();
        m_panel = std::make_unique<CuratedPanel>(changes);
        m_panel->host.setNodeValue("cam", "Width", "1280");
        m_panel->host.setNodeValue("cam", "Height", "1024");
        m_panel->host.roiAnswer = {0, 7, true};
        m_panel->host.clearCalls();
        port().resetCounters();
    }

    void draw() { click("DrawRoi"); }
    bool isDrawing() const { return editor<SelectedButton>("DrawRoi")->isSelected(); }
    QSpinBox *drawn(const char *what) const { return editor<QSpinBox>(QByteArray("Draw-").append(what).constData()); }

    /// The enabled ones among the three buttons.
    QString enabled() const
    {
        QStringList labels;
        for (const char *label : {"DrawRoi", "ROIEffective", "Restore Image Size"}) {
            if (button(label)->isEnabled())
                labels << QLatin1String(label);
        }
        return labels.join(QLatin1Char('|'));
    }

    /// Width, height and offsets of the drawn region.
    QList<int> region() const
    {
        QList<int> numbers;
        for (const char *what : {"Width", "Height", "OffsetX", "OffsetY"})
            numbers << drawn(what)->value();
        return numbers;
    }

    /// The size rows that are shown.
    QStringList sizeRows() const
    {
        return m_panel->labels("thirdToolBox").filter(QRegularExpression("^(Draw-)?(Width|Height|Offset[XY])$"_s));
    }

    /// Lets something happen within the calls of a function of the host.
    void at(const char *function, const Event &event)
    {
        m_panel->host.setCallHook([=](const QString &line) {
            if (line.startsWith(QLatin1String(function)))
                event(*panel());
        });
    }
};

QTEST_MAIN(tst_RoiDrawing)
#include "tst_RoiDrawing.moc"
