// SPDX-License-Identifier: MIT
#include <QComboBox>
#include <QListView>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTreeView>
#include <QtTest>

#include <stdexcept>

#include "CuratedPanel.h"
#include "ToolPage/CComboBox.h"
#include "support/BracketTranslator.h"

namespace {

constexpr const char *OutputFeatures[] = {"Left2DImage",   "Right2DImage",   "Left2DSrcImage", "Right2DSrcImage",
                                          "Left2.5DFront", "Right2.5DFront", "Left2.5DBack",   "Right2.5DBack"};

QStringList words(const char *text, const char *separator = " ")
{
    return QString::fromUtf8(text).split(QLatin1String(separator), Qt::SkipEmptyParts);
}

/// What the device and the host know, and what the panel shows and sends then.
struct Case
{
    const char *name, *on, *unknown, *shown, *sent;
};

void addCases(std::initializer_list<Case> cases)
{
    for (const char *column : {"on", "unknown", "shown", "sent"})
        QTest::addColumn<QString>(column);
    for (const Case &row : cases)
        QTest::newRow(row.name) << QString::fromLatin1(row.on) << QString::fromLatin1(row.unknown)
                                << QString::fromLatin1(row.shown) << QString::fromLatin1(row.sent);
}

} // namespace

class tst_StructuredLightPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        m_panel.reset();
        m_prepare = nullptr;
    }

    void pages();
    void missingFeatures();
    void start_data();
    void start();
    void everyOutput();
    void choosing();
    void refusedWrites();
    void throwingHost();
    void leavingDevice();
    void openShowTypes();
    void followsTheDevice_data();
    void followsTheDevice();
    void releasedPanel();

private:
    /// `on`: the features of the outputs that are on; the others are off, or unknown to the host if they are listed
    /// in `unknown`.
    void open(const QString &on = {}, const QString &unknown = {}, const CuratedFeatures &changes = {});
    void setOutputs(const QString &on, const QString &unknown = {});
    CComboBox *outputs() const { return m_panel->editor<CComboBox>("2D Acquisition Output"); }
    QComboBox *showTypes() const { return m_panel->editor<QComboBox>("2D Image Show"); }
    void toggle(int output);
    /// Does something at a call of the panel, once.
    void at(const char *call, std::function<void()> action);
    QStringList groupTitles() const;
    /// The entries to choose from, the chosen one in brackets.
    QString offered() const;
    /// What was read, written and sent by name since the last call, without the device.
    QString taken();

    std::unique_ptr<CuratedPanel> m_panel;
    std::function<void()> m_prepare; ///< called before the panel opens, when the host has its values
};

void tst_StructuredLightPages::open(const QString &on, const QString &unknown, const CuratedFeatures &changes)
{
    m_panel.reset();
    CuratedFeatures all = structuredLightFeatures();
    all.insert(all.end(), changes.begin(), changes.end());
    m_panel = std::make_unique<CuratedPanel>(all, PageSet::StructuredLight, [&](CuratedPanel &panel) {
        panel.messages.allow(QStringLiteral("^This plugin does not support"));
        setOutputs(on, unknown);
        panel.host.clearCalls();
        if (m_prepare)
            m_prepare();
    });
    m_panel->panel->show();
    QVERIFY(QTest::qWaitForWindowActive(m_panel->panel.get()));
}

void tst_StructuredLightPages::setOutputs(const QString &on, const QString &unknown)
{
    FakeHostCore &host = FakeHostCore::instance();
    for (const char *feature : OutputFeatures) {
        const QLatin1String name(feature);
        host.setNodeValue("cam", feature, words(on.toLatin1()).contains(name) ? "True" : "False");
        host.setReadResult("cam", feature, words(unknown.toLatin1()).contains(name) ? -1 : 0);
    }
}

/// With the mouse, as all the others here.
void tst_StructuredLightPages::toggle(int output)
{
    if (!outputs()->view()->isVisible())
        QTest::mouseClick(outputs(), Qt::LeftButton);
    QAbstractItemView *const list = outputs()->view();
    const QModelIndex entry = outputs()->model()->index(output + 1, 0);
    list->scrollTo(entry);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(entry).center());
}

void tst_StructuredLightPages::at(const char *call, std::function<void()> action)
{
    FakeHostCore::instance().setCallHook(
        [call = QString::fromLatin1(call), action = std::move(action)](const QString &line) mutable {
            if (line == call)
                std::exchange(action, [] {})();
        });
}

QStringList tst_StructuredLightPages::groupTitles() const
{
    QStringList titles;
    for (const char *toolBox : {"firstToolBox", "secondToolBox", "thirdToolBox"}) {
        const auto *const page = m_panel->panel->findChild<QWidget *>(QLatin1String(toolBox));
        for (const auto *bar : page->findChildren<QPushButton *>(QStringLiteral("pushButtonFold")))
            titles << bar->accessibleName();
    }
    return titles;
}

QString tst_StructuredLightPages::offered() const
{
    QStringList names;
    for (int entry = 0; entry < showTypes()->count(); ++entry) {
        const QString name = showTypes()->itemText(entry);
        names << (entry == showTypes()->currentIndex() ? QStringLiteral("[%1]").arg(name) : name);
    }
    return names.join(QLatin1Char('|'));
}

QString tst_StructuredLightPages::taken()
{
    QStringList lines;
    for (QString call : m_panel->host.callsTo(words("GetCameraNodeValue SetCameraNodeValue SetSLImageShowMode")))
        lines << call.remove(QLatin1String("cam, ")).remove(QLatin1String("CameraNodeValue"));
    m_panel->host.clearCalls();
    return lines.join(QLatin1Char(' '));
}

void tst_StructuredLightPages::pages()
{
    open();
    QVERIFY(!m_panel->panel->isAreaScan());
    const auto titles = [this] {
        QStringList texts;
        for (int tab = 0; tab < m_panel->innerTabs()->count(); ++tab)
            texts << m_panel->innerTabs()->tabText(tab);
        return texts;
    };
    QCOMPARE(titles(), words("Shoot Image Advance"));
    QCOMPARE(m_panel->labels("firstToolBox"),
             words("AcquisitionMode|TriggerSoftware|SensorMethod|2D Acquisition Output|2D Image Show|Binning", "|"));
    QCOMPARE(groupTitles(), words("Trigger Control|Image Control|Brightness Control|Imgage Process|User Control", "|"));
    QVERIFY(m_panel->panel->findChild<QTreeView *>(QStringLiteral("widget_featrue"))->model()->rowCount() > 0);
    const QStringList image = m_panel->labels("secondToolBox");
    QCOMPARE(image.size(), 23);
    QCOMPARE(m_panel->labels("thirdToolBox"), words("UserSetSelector UserSetLoad UserSetSave UserSetDefault"));
    for (const QString &label : m_panel->labels("thirdToolBox"))
        QCOMPARE(m_panel->row(label.toLatin1().constData())->getDescription(0).isEmpty(),
                 label != QLatin1String("UserSetLoad"));

    m_panel->camera.port.resetCounters();
    for (int tab : {0, 1, 2}) // every feature row writes the feature that it is named after
        m_panel->innerTabs()->setCurrentIndex(tab);
    for (QSpinBox *field : m_panel->innerTabs()->findChildren<QSpinBox *>()) {
        field->setValue(field->value() + 1);
        Q_EMIT field->editingFinished();
    }
    QStringList written;
    for (const std::string &feature : m_panel->camera.written())
        written << QString::fromStdString(feature);
    QCOMPARE(written,
             words("SensorMethod Bining") + image.filter(QRegularExpression(QStringLiteral("^(?!Denoising)"))));

    BracketTranslator translator;
    QCoreApplication::installTranslator(&translator);
    m_panel->panel->retranslate(1);
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(titles(), words("[Shoot] [Image] [Advance]"));
    QCOMPARE(m_panel->labels("firstToolBox"), words("触发模式选择 生成软触发 光机选择 2D采集输出 2D采集显示 Binning"));
    QCOMPARE(groupTitles(), words("触发控制 图像控制 光亮控制 图像处理 用户控制"));
    QCOMPARE(outputs()->accessibleName(), QStringLiteral("2D采集输出"));
}

void tst_StructuredLightPages::missingFeatures()
{
    CuratedFeatures missing = structuredLightFeatures();
    for (CuratedFeature &feature : missing)
        feature.kind.clear();
    missing.push_back({"Integer", "Binning", ""}); // the device calls it Bining
    open({}, QString::fromLatin1("Left2DImage Right2.5DBack"), missing);
    QCOMPARE(m_panel->labels("firstToolBox"), words("TriggerSoftware|2D Acquisition Output|2D Image Show", "|"));
    QCOMPARE(m_panel->labels("secondToolBox"), words("Contrast"));
    taken();
    toggle(0);
    QCOMPARE(taken(), QStringLiteral("Set(Left2DImage, 1)"));
    m_panel->panel->updateWidget(true);
    QCOMPARE(taken(), QString()); // asks for nothing that the device lacks
    QCOMPARE(offered(), QStringLiteral("[-]|2D Left"));

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

void tst_StructuredLightPages::start_data()
{
    addCases({{"none", "", "", "[-]", ""},
              {"one", "Left2DImage", "", "[-]|2D Left", ""},
              {"some", "Right2.5DBack Right2DImage Left2DSrcImage", "Left2DImage Left2DSrcImage",
               "[-]|2D Right|2.5D Right Reflex", ""}});
}

void tst_StructuredLightPages::start()
{
    QFETCH(QString, on);
    QFETCH(QString, unknown);
    QFETCH(QString, shown);
    open(on, unknown);
    QStringList reads;
    for (const char *feature : OutputFeatures)
        reads << QStringLiteral("Get(%1)").arg(QLatin1String(feature));
    QCOMPARE(taken(), reads.join(QLatin1Char(' ')));
    QCOMPARE(offered(), shown);
    QCOMPARE(outputs()->displayText(), shown.mid(4).replace(QLatin1Char('|'), QStringLiteral("、")));
}

void tst_StructuredLightPages::everyOutput()
{
    open();
    taken();
    const QStringList names =
        words("2D Left|2D Right|Left Streak|Right Streak|2.5D Left Shot|2.5D Right Shot|2.5D Left Reflex"
              "|2.5D Right Reflex",
              "|");
    for (int output = 0; output < names.size(); ++output) {
        const QString feature = QLatin1String(OutputFeatures[output]);
        toggle(output);
        QCOMPARE(taken(), QStringLiteral("Set(%1, 1)").arg(feature));
        QTest::keyClick(outputs()->view(), Qt::Key_Escape);
        showTypes()->setFocus();
        QTest::keyClick(showTypes(), Qt::Key_Down);
        QCOMPARE(taken(), QStringLiteral("SetSLImageShowMode(%1)").arg(output + 1));
        QCOMPARE(showTypes()->currentText(), names.at(output));
        toggle(output);
        QCOMPARE(taken(), QStringLiteral("Set(%1, 0) SetSLImageShowMode(0)").arg(feature));
        QCOMPARE(offered(), QStringLiteral("[-]"));
    }
}

/// Other outputs come and go around the one that is shown.
void tst_StructuredLightPages::choosing()
{
    open(QStringLiteral("Left2DImage Left2.5DFront"));
    showTypes()->setCurrentText(QStringLiteral("2.5D Left Shot"));
    taken();
    toggle(2);
    toggle(0);
    QCOMPARE(taken(), QStringLiteral("Set(Left2DSrcImage, 1) Set(Left2DImage, 0)"));
    QCOMPARE(offered(), QStringLiteral("-|Left Streak|[2.5D Left Shot]"));
    showTypes()->setCurrentIndex(0);
    QCOMPARE(taken(), QStringLiteral("SetSLImageShowMode(0)"));
    for (int output : {-1, 8})
        m_panel->panel->on2DGrabOutputChanged(output, true);
    QCOMPARE(taken(), QString());
    QCOMPARE(offered(), QStringLiteral("[-]|Left Streak|2.5D Left Shot"));
}

/// A refused tick goes back to what the device has, or stays if that cannot be read.
void tst_StructuredLightPages::refusedWrites()
{
    open(QStringLiteral("Left2.5DFront"));
    showTypes()->setCurrentText(QStringLiteral("2.5D Left Shot"));
    for (const char *feature : {"Right2DImage", "Left2DSrcImage", "Left2.5DFront"})
        m_panel->host.setWriteResult("cam", feature, -1);
    m_panel->host.setReadResult("cam", "Left2DSrcImage", -1);
    taken();
    for (int output : {0, 1, 2, 4})
        toggle(output);
    QCOMPARE(taken(),
             QStringLiteral("Set(Left2DImage, 1) Set(Right2DImage, 1) Get(Right2DImage) Set(Left2DSrcImage, 1)"
                            " Get(Left2DSrcImage) Set(Left2.5DFront, 0) Get(Left2.5DFront)"));
    QCOMPARE(offered(), QStringLiteral("-|2D Left|Left Streak|[2.5D Left Shot]"));
    QCOMPARE(outputs()->displayText(), QStringLiteral("2D Left、Left Streak、2.5D Left Shot"));
    QCOMPARE(m_panel->host.callsTo({QStringLiteral("VLogInfo")}), QStringList()); // the host reports the refusals
}

/// An exception costs the value that was asked for.
void tst_StructuredLightPages::throwingHost()
{
    const auto fail = [] { throw std::runtime_error("out of memory"); };
    m_prepare = [&] { at("GetCameraNodeValue(cam, Right2DSrcImage)", fail); };
    open(QStringLiteral("Left2DImage Right2DSrcImage Left2.5DFront"));
    QCOMPARE(m_panel->labels("firstToolBox").size(), 6);
    QCOMPARE(offered(), QStringLiteral("[-]|2D Left|2.5D Left Shot"));
    QVERIFY(!m_panel->host.callsTo({QStringLiteral("VLogInfo")}).isEmpty());

    setOutputs(QStringLiteral("Left2DImage Left2.5DFront Right2.5DBack"));
    at("GetCameraNodeValue(cam, Left2DImage)", fail);
    m_panel->panel->updateWidget(true);
    QCOMPARE(offered(), QStringLiteral("[-]|2D Left|2.5D Left Shot|2.5D Right Reflex"));

    showTypes()->setCurrentText(QStringLiteral("2.5D Left Shot"));
    taken();
    at("SetCameraNodeValue(cam, Left2.5DFront, 0)", fail);
    toggle(4);
    QCOMPARE(taken(), QStringLiteral("Set(Left2.5DFront, 0) Get(Left2.5DFront)"));
    QCOMPARE(offered(), QStringLiteral("-|2D Left|[2.5D Left Shot]|2.5D Right Reflex"));
}

/// The host may take the device away while it is called.
void tst_StructuredLightPages::leavingDevice()
{
    const auto leave = [this] { m_panel->panel->setParamterViewDisable(); };
    open(QStringLiteral("Left2DImage"));
    taken();
    at("GetCameraNodeValue(cam, Right2DImage)", leave);
    m_panel->panel->updateWidget(true);
    QCOMPARE(taken(), QStringLiteral("Get(Left2DImage) Get(Right2DImage)"));

    open(QStringLiteral("Left2DImage"));
    showTypes()->setCurrentText(QStringLiteral("2D Left"));
    taken();
    at("SetCameraNodeValue(cam, Left2DImage, 0)", leave);
    toggle(0);
    QCOMPARE(taken(), QStringLiteral("Set(Left2DImage, 0)"));
}

/// An open list goes with its entries.
void tst_StructuredLightPages::openShowTypes()
{
    open(QStringLiteral("Left2DImage"));
    showTypes()->setFocus();
    QTest::keyClick(showTypes(), Qt::Key_Space);
    m_panel->panel->updateWidget(true);
    QVERIFY(showTypes()->view()->isVisible());
    setOutputs(QStringLiteral("Left2DImage Left2.5DFront"));
    m_panel->panel->updateWidget(true);
    QVERIFY(!showTypes()->view()->isVisible());
    QCOMPARE(offered(), QStringLiteral("[-]|2D Left|2.5D Left Shot"));
}

void tst_StructuredLightPages::followsTheDevice_data()
{
    addCases({{"as before", "Left2DImage Left2.5DFront", "", "-|2D Left|[2.5D Left Shot]", ""},
              {"another one", "Left2.5DFront Right2.5DBack", "", "-|[2.5D Left Shot]|2.5D Right Reflex", ""},
              {"not the shown one", "Left2DImage", "", "[-]|2D Left", "SetSLImageShowMode(cam, 0)"},
              {"nothing is told", "", "Left2DImage Left2.5DFront", "-|2D Left|[2.5D Left Shot]", ""}});
}

void tst_StructuredLightPages::followsTheDevice()
{
    QFETCH(QString, on);
    QFETCH(QString, unknown);
    QFETCH(QString, shown);
    QFETCH(QString, sent);
    const std::function<void()> causes[] = {[this] { m_panel->panel->updateWidget(true); },
                                            [this] { m_panel->editor<QPushButton>("UserSetLoad")->click(); },
                                            [this] { // in the attribute tab
                                                auto *const tabs = m_panel->panel->findChild<QTabWidget *>(
                                                    QStringLiteral("tabMainWidget"));
                                                tabs->setCurrentIndex(1);
                                                tabs->setCurrentIndex(0);
                                            }};
    for (const auto &cause : causes) {
        open(QStringLiteral("Left2DImage Left2.5DFront"));
        showTypes()->setCurrentText(QStringLiteral("2.5D Left Shot"));
        setOutputs(on, unknown);
        taken();
        cause();
        QCOMPARE(offered(), shown);
        QStringList calls = m_panel->host.callsTo(words("SetCameraNodeValue SetSLImageShowMode"));
        calls.removeOne(QStringLiteral("SetCameraNodeValue(cam, UserSetLoad, )"));
        QCOMPARE(calls.join(QLatin1Char(' ')), sent);
    }
}

void tst_StructuredLightPages::releasedPanel()
{
    open(QStringLiteral("Left2DImage"));
    m_panel->panel->setParamterViewDisable();
    taken();
    QVERIFY(!outputs()->isEnabled());
    m_panel->panel->on2DGrabOutputChanged(0, false);
    showTypes()->setCurrentIndex(1);
    m_panel->panel->updateWidget(true);
    m_panel->panel->retranslate(1);
    QCOMPARE(taken(), QString());
}

QTEST_MAIN(tst_StructuredLightPages)
#include "tst_StructuredLightPages.moc"
