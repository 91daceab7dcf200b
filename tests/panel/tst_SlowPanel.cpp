// SPDX-License-Identifier: MIT
#include "CuratedPanel.h"
#include "FeatureTree/FeatureTreeView.h"
#include "support/Input.h"

namespace {

using namespace std::chrono_literals;

/// Far more than the budget of one turn of the event loop for all pages.
constexpr auto Latency = 4ms;

/// All shown rows, with what their editors show and permit.
QStringList state(const CuratedPanel &panel)
{
    QStringList lines;
    for (const QString &label : panel.labels()) {
        const QByteArray name = label.toUtf8();
        const QWidget *editor = nullptr;
        QString text;
        if (const auto *box = panel.editor<QAbstractSpinBox>(name)) {
            editor = box;
            text = box->text();
        } else if (const auto *list = panel.editor<QComboBox>(name)) {
            editor = list;
            text = list->currentText();
        } else if (const auto *button = panel.editor<SwitchButton>(name)) {
            editor = button;
            text = QString::number(button->isOn());
        }
        lines << label + QLatin1Char('=') + text + (editor && !editor->isEnabled() ? "-"_s : QString());
    }
    return lines;
}

void makeSlow(CuratedPanel &panel)
{
    panel.camera.port.latency = Latency;
}

} // namespace

/// The pages of a device that is slow, or silent.
class tst_SlowPanel : public PanelFixture
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_panel.reset(); }

    void pagesEndAsAtOnce()
    {
        const std::pair<const char *, PageSet> rows[] = {{"area-scan", PageSet::AreaScan},
                                                         {"profiler", PageSet::Profiler},
                                                         {"structured light", PageSet::StructuredLight}};
        for (const auto &[name, pageSet] : rows) {
            const InRow inRow(name);
            m_panel.reset();
            m_panel = std::make_unique<CuratedPanel>(CuratedFeatures{}, pageSet);
            const QStringList expected = state(*m_panel);
            m_panel.reset();
            m_panel = std::make_unique<CuratedPanel>(CuratedFeatures{}, pageSet, makeSlow);
            QVERIFY2(pageSet != PageSet::AreaScan || state(*m_panel).size() < expected.size(),
                     "rows are read in turns");
            QTRY_COMPARE(state(*m_panel), expected);
        }
    }

    /// What the user does comes before what waits, and is not undone by it.
    void editsComeFirst()
    {
        m_panel = std::make_unique<CuratedPanel>(CuratedFeatures{}, PageSet::AreaScan, makeSlow);
        panel()->show();
        QTRY_VERIFY(editor<QSpinBox>("Width"));
        panel()->updateWidget(true);
        auto *const field = editor<QSpinBox>("Width");
        QVERIFY(activate(*panel()));
        m_panel->innerTabs()->setCurrentIndex(2);
        field->setFocus();
        field->selectAll();
        port().resetCounters();
        QTest::keyClicks(field, "640"_s);
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(port().writes, 1u);
        QTRY_COMPARE(number("Width"), 640);
    }

    /// Live rows for which a beat has no time are read after it.
    void liveRowsTakeTurns()
    {
        m_panel = std::make_unique<CuratedPanel>(CuratedFeatures{}, PageSet::AreaScan, [](CuratedPanel &panel) {
            panel.host.setNodeValue("cam", "ExposureAuto", "Continuous");
            panel.host.setNodeValue("cam", "ExposureTime", "640");
        });
        m_panel->host.setCallHook([](const QString &call) {
            if (call.startsWith("GetCameraNodeValue"_s))
                QThread::msleep(60);
        });
        panel()->onRealUpdateTimerTimeout();
        QCOMPARE(calls("GetCameraNodeValue").size(), 1);
        QTRY_COMPARE_WITH_TIMEOUT(editor<QDoubleSpinBox>("Exposure Time(us)")->value(), 640.0, 1000);
        QCOMPARE(editor<QComboBox>("Exposure Auto")->currentText(), "Continuous"_s);
    }

    /// What is read by name is read in turns, too, in the same order.
    void namesTakeTurns()
    {
        const auto asked = [this] { return calls("GetCameraNodeValue SetCameraNodeValue"); };
        for (const PageSet pageSet : {PageSet::Profiler, PageSet::StructuredLight}) {
            m_panel.reset();
            m_panel = std::make_unique<CuratedPanel>(
                pageSet == PageSet::Profiler ? profilerFeatures() : structuredLightFeatures(), pageSet);
            m_panel->host.clearCalls();
            panel()->updateWidget(true);
            const QStringList expected = asked();
            QVERIFY(expected.size() > 5);
            m_panel->host.setCallHook([](const QString &call) {
                if (call.contains("CameraNodeValue"_s))
                    QThread::msleep(20);
            });
            m_panel->host.clearCalls();
            panel()->updateWidget(true);
            QVERIFY2(asked().size() < 5, "an event takes too long");
            QTRY_COMPARE(asked().size(), expected.size());
            QCOMPARE(asked(), expected);
        }
    }

    /// Whatever a person does with a silent device costs one time-out at most.
    void actionsInSilence()
    {
        using Deed = std::function<void(const CuratedPanel &)>;
        const auto press = [](const char *row) -> Deed {
            return [row](const CuratedPanel &panel) { panel.editor<QPushButton>(row)->click(); };
        };
        const std::tuple<const char *, PageSet, Deed> rows[] = {
            {"draw", PageSet::AreaScan, press("DrawRoi")},
            {"apply the region", PageSet::AreaScan, [](auto &shown) { shown.panel->onExecDrawButtonClicked(); }},
            {"restore the size", PageSet::AreaScan, press("Restore Image Size")},
            {"load a user set", PageSet::AreaScan, press("UserSetLoad")},
            {"choose a trigger", PageSet::Profiler,
             [](auto &shown) { shown.template editor<QComboBox>("FrameTriggerMode")->setCurrentIndex(1); }},
            {"adopt the device", PageSet::Profiler, [](auto &shown) { shown.panel->init3DParameters(); }},
            {"limit the range", PageSet::Profiler, press("GrabRangeCompression")},
            {"adopt the masks", PageSet::Profiler, [](auto &shown) { shown.panel->imageMaskWidgetUpdate(); }},
            {"show the page", PageSet::StructuredLight, [](auto &shown) { shown.panel->updateWidget(true); }}};
        for (const auto &[name, pageSet, deed] : rows) {
            const InRow inRow(name);
            m_panel.reset();
            m_panel = std::make_unique<CuratedPanel>(
                pageSet == PageSet::Profiler ? profilerFeatures() : CuratedFeatures{}, pageSet);
            port().latency = 60ms; // what costs nothing would be tried again soon
            port().readFault = port().writeFault = MemoryPort::Fault::Timeout;
            m_panel->camera.map->InvalidateNodes();
            panel()->updateWidget(false);
            QTRY_COMPARE(told().size(), 1);
            port().resetCounters();
            m_panel->host.clearCalls();
            deed(*m_panel);
            const int byName = calls("GetCameraNodeValue SetCameraNodeValue").size();
            QVERIFY2(int(port().reads + port().writes) + byName <= 1,
                     qPrintable(calls("GetCameraNodeValue SetCameraNodeValue").join(QLatin1Char(' '))));
        }
    }

    /// The first access that times out is the last one.
    void oneTimeOut()
    {
        const auto fallSilent = [](CuratedPanel &panel) {
            panel.camera.port.latency = 60ms;
            panel.camera.port.readFault = panel.camera.port.writeFault = MemoryPort::Fault::Timeout;
            panel.camera.port.resetCounters();
        };
        m_panel = std::make_unique<CuratedPanel>(CuratedFeatures{}, PageSet::AreaScan, fallSilent);
        QCOMPARE(port().reads, 1u);
        m_panel.reset();
        m_panel = std::make_unique<CuratedPanel>();
        fallSilent(*m_panel);
        auto *const field = editor<QSpinBox>("Width");
        field->setValue(640);
        Q_EMIT field->editingFinished();
        QCOMPARE(port().writes, 1u);
        QVERIFY2(port().reads == 0, "what puts the value back waits, too");
    }

    /// A closed device is not read any more, whatever waited.
    void nothingAfterClosing()
    {
        m_panel = std::make_unique<CuratedPanel>(CuratedFeatures{}, PageSet::AreaScan, makeSlow);
        panel()->setParamterViewDisable();
        port().resetCounters();
        QTest::qWait(50);
        QCOMPARE(port().reads, 0u);
    }

    /// The last values in gray, but for what is being typed; one line, no access; live again with the first answer.
    void silentDevice()
    {
        m_panel = std::make_unique<CuratedPanel>();
        QVERIFY(activate(*panel()));
        m_panel->innerTabs()->setCurrentIndex(2);
        const QStringList before = state(*m_panel);
        auto *const field = editor<QSpinBox>("Width");
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, "64"_s);
        m_panel->host.clearCalls();
        port().readFault = MemoryPort::Fault::Timeout;
        m_panel->camera.map->InvalidateNodes();
        m_panel->row("Height")->updateWidget(false);
        QTRY_VERIFY(!editor<QSpinBox>("OffsetX")->isEnabled());
        QVERIFY(!editor<QSpinBox>("Height")->isEnabled());
        QVERIFY(field->isEnabled());
        QCOMPARE(field->text(), "64"_s);
        QCOMPARE(told().size(), 1);
        panel()->onTriggerTimeout();
        QCOMPARE(calls("SetCameraNodeValue"), QStringList());
        m_panel->row("OffsetX")->updateWidget(false);
        port().readFault = MemoryPort::Fault::None;
        QTRY_VERIFY(editor<QSpinBox>("Height")->isEnabled());
        QCOMPARE(field->text(), "64"_s);
        QCOMPARE(told().size(), 2);
        QTest::keyClick(field, Qt::Key_Escape);
        QTRY_COMPARE(state(*m_panel), before);
    }

    /// A device that answers again is shown as it is now: in rows, in the tree, and in what is read by name.
    void whatChangedInSilence()
    {
        const auto isGatedHidden = [this] {
            const auto *const tree = panel()->findChild<FeatureTreeView *>();
            const QModelIndex root = tree->model()->index(0, 0);
            return tree->isRowHidden(tree->model()->rowCount(root) - 1, root);
        };
        const auto isReadByName = [this] { return !calls("GetCameraNodeValue").isEmpty(); };
        const std::tuple<const char *, int, std::function<bool()>> rows[] = {
            {"row", 0, [this] { return number("Threshold") == 480; }},
            {"tree", 1, isGatedHidden},
            {"by name", 0, isReadByName}};
        for (const auto &[name, tab, isShown] : rows) {
            const InRow inRow(name);
            CuratedFeatures features = profilerFeatures();
            features.push_back({"Integer", "Switch", ""});
            features.push_back({"Integer", "Gated", "<pIsAvailable>SwitchReg</pIsAvailable>"});
            m_panel.reset();
            m_panel = std::make_unique<CuratedPanel>(features, PageSet::Profiler,
                                                     [](CuratedPanel &one) { one.poke("Switch", 1); });
            QVERIFY(activate(*panel()));
            m_panel->mainTabs()->setCurrentIndex(tab);
            port().readFault = MemoryPort::Fault::Timeout;
            m_panel->camera.map->InvalidateNodes();
            m_panel->row("Threshold")->updateWidget(false);
            QTRY_COMPARE(told().size(), 1);
            m_panel->host.clearCalls();
            QVERIFY(!isShown());
            m_panel->poke("Threshold", 480);
            m_panel->poke("Switch", 0);
            port().readFault = MemoryPort::Fault::None;
            QTRY_VERIFY(isShown());
        }
    }
};

QTEST_MAIN(tst_SlowPanel)
#include "tst_SlowPanel.moc"
