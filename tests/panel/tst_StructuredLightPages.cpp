// SPDX-License-Identifier: MIT
#include <stdexcept>

#include <QListView>
#include <QTreeView>

#include "CuratedPanel.h"
#include "ToolPage/CComboBox.h"
#include "support/BracketTranslator.h"

namespace {

constexpr const char *OutputFeatures[] = {"Left2DImage",   "Right2DImage",   "Left2DSrcImage", "Right2DSrcImage",
                                          "Left2.5DFront", "Right2.5DFront", "Left2.5DBack",   "Right2.5DBack"};

} // namespace

class tst_StructuredLightPages : public PanelFixture
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        m_panel.reset();
        m_prepare = nullptr;
    }

    void pages()
    {
        open();
        QVERIFY(!panel()->isAreaScan());
        QCOMPARE(m_panel->innerTitles(), words("Shoot Image Advance"));
        QCOMPARE(
            m_panel->labels("firstToolBox"),
            words("AcquisitionMode|TriggerSoftware|SensorMethod|2D Acquisition Output|2D Image Show|Binning", '|'));
        QCOMPARE(m_panel->groups(),
                 words("Trigger Control|Image Control|Brightness Control|Imgage Process|User Control", '|'));
        QVERIFY(panel()->findChild<QTreeView *>("widget_featrue"_s)->model()->rowCount() > 0);
        const QStringList image = m_panel->labels("secondToolBox");
        QCOMPARE(image.size(), 23);
        QCOMPARE(m_panel->labels("thirdToolBox"), words("UserSetSelector UserSetLoad UserSetSave UserSetDefault"));
        for (const QString &label : m_panel->labels("thirdToolBox"))
            QCOMPARE(m_panel->row(label.toLatin1().constData())->getDescription(0).isEmpty(), label != "UserSetLoad"_s);

        port().resetCounters();
        for (int tab : {0, 1, 2}) // every feature row writes the feature that it is named after
            m_panel->innerTabs()->setCurrentIndex(tab);
        for (QSpinBox *field : m_panel->innerTabs()->findChildren<QSpinBox *>()) {
            field->setValue(field->value() + 1);
            Q_EMIT field->editingFinished();
        }
        QStringList written;
        for (const std::string &feature : m_panel->camera.written())
            written << QString::fromStdString(feature);
        QCOMPARE(written, words("SensorMethod Bining") + image.filter(QRegularExpression("^(?!Denoising)"_s)));

        BracketTranslator translator;
        QCoreApplication::installTranslator(&translator);
        panel()->retranslate(1);
        QCoreApplication::removeTranslator(&translator);
        QCOMPARE(m_panel->innerTitles(), words("[Shoot] [Image] [Advance]"));
        QCOMPARE(m_panel->labels("firstToolBox"),
                 words("触发模式选择 生成软触发 光机选择 2D采集输出 2D采集显示 Binning"));
        QCOMPARE(m_panel->groups(), words("触发控制 图像控制 光亮控制 图像处理 用户控制"));
        QCOMPARE(outputs()->accessibleName(), "2D采集输出"_s);
    }

    void missingFeatures()
    {
        CuratedFeatures missing = structuredLightFeatures();
        for (CuratedFeature &feature : missing)
            feature.kind.clear();
        missing.push_back({"Integer", "Binning", ""}); // the device calls it Bining
        open("", "Left2DImage Right2.5DBack", missing);
        QCOMPARE(m_panel->labels("firstToolBox"), words("TriggerSoftware|2D Acquisition Output|2D Image Show", '|'));
        QCOMPARE(m_panel->labels("secondToolBox"), words("Contrast"));
        taken();
        toggle(0);
        QCOMPARE(taken(), "Set(Left2DImage, 1)"_s);
        panel()->updateWidget(true);
        QCOMPARE(taken(), QString()); // asks for nothing that the device lacks
        QCOMPARE(offered(), "[-]|2D Left"_s);

        m_panel.reset();
        CuratedPanel closed({}, PageSet::StructuredLight,
                            [](CuratedPanel &panel) { panel.host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", nullptr); });
        QCOMPARE(closed.innerTabs()->count(), 3);
        QCOMPARE(closed.labels(), QStringList());
        closed.panel->on2DGrabOutputChanged(0, true);
        closed.panel->on2DShowTypeChanged(0);
        closed.panel->update2DShowTypeComboBox();
        QCOMPARE(closed.host.callsTo(words("SetCameraNodeValue SetSLImageShowMode")), QStringList());
    }

    void start()
    {
        QStringList reads;
        for (const char *feature : OutputFeatures)
            reads << "Get(%1)"_s.arg(QLatin1String(feature));
        for (const auto &[on, unknown, types] :
             {std::tuple("", "", "[-]"), std::tuple("Left2DImage", "", "[-]|2D Left"),
              std::tuple("Right2.5DBack Right2DImage Left2DSrcImage", "Left2DImage Left2DSrcImage",
                         "[-]|2D Right|2.5D Right Reflex")}) {
            const InRow inRow(on);
            open(on, unknown);
            QCOMPARE(taken(), reads.join(QLatin1Char(' ')));
            QCOMPARE(offered(), QLatin1String(types));
            QCOMPARE(outputs()->displayText(), offered().mid(4).replace(QLatin1Char('|'), "、"_s));
        }
    }

    void everyOutput()
    {
        open();
        taken();
        const QStringList names =
            words("2D Left|2D Right|Left Streak|Right Streak|2.5D Left Shot|2.5D Right Shot|2.5D Left Reflex"
                  "|2.5D Right Reflex",
                  '|');
        for (int output = 0; output < names.size(); ++output) {
            const QString feature = QLatin1String(OutputFeatures[output]);
            toggle(output);
            QCOMPARE(taken(), "Set(%1, 1)"_s.arg(feature));
            QTest::keyClick(outputs()->view(), Qt::Key_Escape);
            showTypes()->setFocus();
            QTest::keyClick(showTypes(), Qt::Key_Down);
            QCOMPARE(taken(), "SetSLImageShowMode(%1)"_s.arg(output + 1));
            QCOMPARE(showTypes()->currentText(), names.at(output));
            toggle(output);
            QCOMPARE(taken(), "Set(%1, 0) SetSLImageShowMode(0)"_s.arg(feature));
            QCOMPARE(offered(), "[-]"_s);
        }
    }

    /// Other outputs come and go around the one that is shown.
    void choosing()
    {
        open("Left2DImage Left2.5DFront");
        showTypes()->setCurrentText("2.5D Left Shot"_s);
        taken();
        toggle(2);
        toggle(0);
        QCOMPARE(taken(), "Set(Left2DSrcImage, 1) Set(Left2DImage, 0)"_s);
        QCOMPARE(offered(), "-|Left Streak|[2.5D Left Shot]"_s);
        showTypes()->setCurrentIndex(0);
        QCOMPARE(taken(), "SetSLImageShowMode(0)"_s);
        for (int output : {-1, 8})
            panel()->on2DGrabOutputChanged(output, true);
        QCOMPARE(taken(), QString());
        QCOMPARE(offered(), "[-]|Left Streak|2.5D Left Shot"_s);
    }

    /// A refused tick goes back to what the device has, or stays if that cannot be read.
    void refusedWrites()
    {
        open("Left2.5DFront");
        showTypes()->setCurrentText("2.5D Left Shot"_s);
        for (const char *feature : {"Right2DImage", "Left2DSrcImage", "Left2.5DFront"})
            m_panel->host.setWriteResult("cam", feature, -1);
        m_panel->host.setReadResult("cam", "Left2DSrcImage", -1);
        taken();
        for (int output : {0, 1, 2, 4})
            toggle(output);
        QCOMPARE(taken(),
                 "Set(Left2DImage, 1) Set(Right2DImage, 1) Get(Right2DImage) Set(Left2DSrcImage, 1)"
                 " Get(Left2DSrcImage) Set(Left2.5DFront, 0) Get(Left2.5DFront)"_s);
        QCOMPARE(offered(), "-|2D Left|Left Streak|[2.5D Left Shot]"_s);
        QCOMPARE(outputs()->displayText(), "2D Left、Left Streak、2.5D Left Shot"_s);
        QCOMPARE(told(), QStringList()); // the host reports the refusals
    }

    /// An exception costs the value that was asked for.
    void throwingHost()
    {
        const auto fail = [] { throw std::runtime_error("out of memory"); };
        m_prepare = [&] { at("GetCameraNodeValue(cam, Right2DSrcImage)", fail); };
        open("Left2DImage Right2DSrcImage Left2.5DFront");
        QCOMPARE(m_panel->labels("firstToolBox").size(), 6);
        QCOMPARE(offered(), "[-]|2D Left|2.5D Left Shot"_s);
        QVERIFY(!told().isEmpty());

        setOutputs("Left2DImage Left2.5DFront Right2.5DBack");
        at("GetCameraNodeValue(cam, Left2DImage)", fail);
        panel()->updateWidget(true);
        QCOMPARE(offered(), "[-]|2D Left|2.5D Left Shot|2.5D Right Reflex"_s);

        showTypes()->setCurrentText("2.5D Left Shot"_s);
        taken();
        at("SetCameraNodeValue(cam, Left2.5DFront, 0)", fail);
        toggle(4);
        QCOMPARE(taken(), "Set(Left2.5DFront, 0) Get(Left2.5DFront)"_s);
        QCOMPARE(offered(), "-|2D Left|[2.5D Left Shot]|2.5D Right Reflex"_s);
    }

    /// The host may take the device away while it is called.
    void leavingDevice()
    {
        const auto leave = [this] { panel()->setParamterViewDisable(); };
        open("Left2DImage");
        taken();
        at("GetCameraNodeValue(cam, Right2DImage)", leave);
        panel()->updateWidget(true);
        QCOMPARE(taken(), "Get(Left2DImage) Get(Right2DImage)"_s);

        open("Left2DImage");
        showTypes()->setCurrentText("2D Left"_s);
        taken();
        at("SetCameraNodeValue(cam, Left2DImage, 0)", leave);
        toggle(0);
        QCOMPARE(taken(), "Set(Left2DImage, 0)"_s);
    }

    /// An open list goes with its entries.
    void openShowTypes()
    {
        open("Left2DImage");
        showTypes()->setFocus();
        QTest::keyClick(showTypes(), Qt::Key_Space);
        panel()->updateWidget(true);
        QVERIFY(showTypes()->view()->isVisible());
        setOutputs("Left2DImage Left2.5DFront");
        panel()->updateWidget(true);
        QVERIFY(!showTypes()->view()->isVisible());
        QCOMPARE(offered(), "[-]|2D Left|2.5D Left Shot"_s);
    }

    void showsTheDevice()
    {
        // Outputs that are on, and unknown, then the types to choose from, and what is told to the host.
        const std::tuple<const char *, const char *, const char *, const char *, const char *> rows[] = {
            {"as before", "Left2DImage Left2.5DFront", "", "-|2D Left|[2.5D Left Shot]", ""},
            {"another one", "Left2.5DFront Right2.5DBack", "", "-|[2.5D Left Shot]|2.5D Right Reflex", ""},
            {"not the shown one", "Left2DImage", "", "[-]|2D Left", "SetSLImageShowMode(cam, 0)"},
            {"nothing is told", "", "Left2DImage Left2.5DFront", "-|2D Left|[2.5D Left Shot]", ""}};
        const std::function<void()> causes[] = {[this] { panel()->updateWidget(true); },
                                                [this] { click("UserSetLoad"); }, [this] { visitTree(); }};
        for (const auto &[name, on, unknown, types, told] : rows) {
            const InRow inRow(name);
            for (const auto &cause : causes) {
                open("Left2DImage Left2.5DFront");
                showTypes()->setCurrentText("2.5D Left Shot"_s);
                setOutputs(on, unknown);
                taken();
                cause();
                QCOMPARE(offered(), QLatin1String(types));
                QStringList sent = calls("SetCameraNodeValue SetSLImageShowMode");
                sent.removeOne("SetCameraNodeValue(cam, UserSetLoad, )"_s);
                QCOMPARE(sent.join(QLatin1Char(' ')), QLatin1String(told));
            }
        }
    }

private:
    /// `on`: the features of the outputs that are on; the others are off, or unknown to the host if they are listed
    /// in `unknown`.
    void open(const char *on = "", const char *unknown = "", const CuratedFeatures &changes = {})
    {
        m_panel.reset();
        CuratedFeatures all = structuredLightFeatures();
        all.insert(all.end(), changes.begin(), changes.end());
        m_panel = std::make_unique<CuratedPanel>(all, PageSet::StructuredLight, [&](CuratedPanel &panel) {
            panel.messages.allow("^This plugin does not support"_s);
            setOutputs(on, unknown);
            panel.host.clearCalls();
            if (m_prepare)
                m_prepare();
        });
        panel()->show();
        QVERIFY(QTest::qWaitForWindowActive(m_panel->panel.get()));
    }

    void setOutputs(const char *on, const char *unknown = "")
    {
        FakeHostCore &host = FakeHostCore::instance();
        for (const char *feature : OutputFeatures) {
            const QLatin1String name(feature);
            host.setNodeValue("cam", feature, words(on).contains(name) ? "True" : "False");
            host.setReadResult("cam", feature, words(unknown).contains(name) ? -1 : 0);
        }
    }

    CComboBox *outputs() const { return editor<CComboBox>("2D Acquisition Output"); }
    QComboBox *showTypes() const { return editor<QComboBox>("2D Image Show"); }

    /// With the mouse, as all the others here.
    void toggle(int output)
    {
        if (!outputs()->view()->isVisible())
            QTest::mouseClick(outputs(), Qt::LeftButton);
        QAbstractItemView *const list = outputs()->view();
        const QModelIndex entry = outputs()->model()->index(output + 1, 0);
        list->scrollTo(entry);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(entry).center());
    }

    /// Does something at a call of the panel, once.
    void at(const char *call, std::function<void()> action)
    {
        FakeHostCore::instance().setCallHook(
            [call = QString::fromLatin1(call), action = std::move(action)](const QString &line) mutable {
                if (line == call)
                    std::exchange(action, [] {})();
            });
    }

    /// The entries to choose from, the chosen one in brackets.
    QString offered() const
    {
        QStringList names;
        for (int entry = 0; entry < showTypes()->count(); ++entry) {
            const QString name = showTypes()->itemText(entry);
            names << (entry == showTypes()->currentIndex() ? "[%1]"_s.arg(name) : name);
        }
        return names.join(QLatin1Char('|'));
    }

    /// What was read, written and sent by name since the last call, without the device.
    QString taken()
    {
        QStringList lines;
        for (QString call : calls("GetCameraNodeValue SetCameraNodeValue SetSLImageShowMode"))
            lines << call.remove("cam, "_s).remove("CameraNodeValue"_s);
        m_panel->host.clearCalls();
        return lines.join(QLatin1Char(' '));
    }

    std::function<void()> m_prepare; ///< called before the panel opens, when the host has its values
};

QTEST_MAIN(tst_StructuredLightPages)
#include "tst_StructuredLightPages.moc"
