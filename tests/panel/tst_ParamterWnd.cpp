// SPDX-License-Identifier: MIT
#include <atomic>
#include <thread>

#include <QAbstractItemView>
#include <QComboBox>
#include <QScopeGuard>
#include <QTabWidget>
#include <QToolTip>

#include "ManagerFixture.h"
#include "ParamterWnd/HostEventBridges.h"

/// What a host does with the window itself: its tabs, its properties, its end.
class tst_ParamterWnd : public ManagerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }
    void cleanup() { end(); }

    /// Hosts name the type codes of cameras with other pages; they count for panels opened from then on, never for
    /// cards.
    void pageSets()
    {
        const auto firstPageOf = [this](const std::string &key, const std::string &type) {
            setCamera(key, true);
            m_host.setCameraInfo(key, HostCore::CAM_INFO_TYPE_CODE, type);
            sendDeviceList({}, {key});
            return tabsOf(panelOf(key), "tabWidget")->tabText(0);
        };
        QCOMPARE(firstPageOf("before", "7"), "Commom"_s);
        m_window->setProperty("profilerTypeCodes", QStringList({"1"_s, "7"_s}));
        m_window->setProperty("structuredLightTypeCodes", QStringList({"1"_s, "8"_s}));
        for (const auto &[type, page] : {std::pair("7", "Trigger"), std::pair("1", "Trigger"), std::pair("8", "Shoot"),
                                         std::pair("17", "Commom"), std::pair("5", "Commom")})
            QCOMPARE(firstPageOf(type, type), QLatin1String(page));
        QVERIFY(!panelOf("7")->isAreaScan() && !panelOf("8")->isAreaScan());
        setCard("card", true);
        m_host.setCameraInfo("card", HostCore::CAM_INFO_TYPE_CODE, "1");
        sendDeviceList({"card"}, {});
        QCOMPARE(tabsOf(panelOf("card", true), "tabWidget")->count(), 3);
        m_window->setProperty("profilerTypeCodes", QVariant());
        for (const auto &[key, page] :
             {std::pair("before", "Commom"), std::pair("after", "Commom"), std::pair("7", "Trigger")})
            QCOMPARE(firstPageOf(key, "7"), QLatin1String(page));
    }

    /// What is wrong in a list is told and does not count.
    void typeCodeLists()
    {
        struct Row
        {
            const char *name, *property;
            QVariant value;
            bool open;
            QStringList lines; ///< each as it begins
        };
        const auto codes = [](const char *list) { return QString::fromLatin1(list).split(QLatin1Char(' ')); };
        const char *const profiler = "profilerTypeCodes";
        const char *const structuredLight = "structuredLightTypeCodes";
        const QString late = "%1 changes while cameras have panels"_s;
        const QString type = "%1 is no list of strings (QStringList) but %2"_s;
        const QString both = "%1 and %2 hold type code 7, which counts in profilerTypeCodes"_s;
        const Row rows[] = {
            {"right", profiler, codes("1 5 8"), false, {}},
            {"removed", profiler, QVariant(), false, {}},
            {"late", profiler, codes("8"), true, {late.arg(QLatin1String(profiler))}},
            {"a text", profiler, "7"_s, false, {type.arg(QLatin1String(profiler), "QString"_s)}},
            {"a number", structuredLight, 7, false, {type.arg(QLatin1String(structuredLight), "int"_s)}},
            {"none and without pages",
             profiler,
             codes("8  4"),
             true,
             {"profilerTypeCodes holds an empty type code"_s,
              "profilerTypeCodes holds type code 4, whose cameras have the attribute tab only"_s,
              late.arg(QLatin1String(profiler))}},
            {"in both",
             structuredLight,
             codes("8 7"),
             false,
             {both.arg(QLatin1String(structuredLight), QLatin1String(profiler))}},
            {"none of the lists", "typeCodes", 7, true, {}}};
        for (const Row &row : rows) {
            const InRow inRow(row.name);
            end();
            start();
            setCamera("cam", row.open);
            sendDeviceList({}, {"cam"});
            const bool isSecond = row.property == structuredLight;
            if (isSecond)
                m_window->setProperty(profiler, QStringList("7"_s));
            m_host.clearCalls();
            m_window->setProperty(row.property, row.value);
            const QStringList logged = m_host.callsTo("VLogInfo"_s);
            QCOMPARE(logged.size(), row.lines.size());
            for (int line = 0; line < row.lines.size(); ++line)
                QVERIFY2(logged[line].startsWith("VLogInfo(ParameterWidgetManager, "_s + row.lines[line]),
                         qPrintable(logged[line]));
            setCamera("other", true);
            m_host.setCameraInfo("other", HostCore::CAM_INFO_TYPE_CODE, isSecond ? "7" : "4");
            sendDeviceList({}, {"other"});
            QCOMPARE(tabsOf(panelOf("other"), "tabWidget")->tabText(0), isSecond ? "Trigger"_s : "Commom"_s);
        }
    }

    void windowHidesWithBothTabs()
    {
        struct Step
        {
            bool panel, detail;
        };
        for (const Step &step :
             {Step{false, true}, Step{false, false}, Step{true, false}, Step{false, true}, Step{false, false}}) {
            m_window->setPanelWidgetVisiable(step.panel);
            m_window->setAllDetailWidgetVisiable(step.detail);
            QCOMPARE(m_window->isVisible(), step.panel || step.detail);
        }
    }

    void newPanelsTakeTheTabsOver()
    {
        m_window->setPanelWidgetVisiable(false);
        setCamera("cam", true);
        sendDeviceList({}, {"cam"});
        const auto *tabs = tabsOf(panelOf("cam"), "tabMainWidget");
        QCOMPARE(tabs->count(), 1);
        QCOMPARE(tabs->tabText(0), "All Attribute"_s);
        m_window->setPanelWidgetVisiable(true);
        QCOMPARE(tabs->count(), 2);
        QCOMPARE(tabs->tabText(0), "Common Attribute"_s);
    }

    /// A list that is queued when the window goes must not build a panel into what is left of it.
    void goingTakesNoEvent()
    {
        for (const bool serves : {false, true}) {
            const InRow inRow(serves ? "the host serves what is queued" : "the host waits for its thread");
            end();
            start();
            setCamera("cam", true);
            std::atomic<bool> queued{false};
            connect(
                static_cast<DeviceListUpdate *>(m_host.listeners.deviceList), &DeviceListUpdate::updateCams, this,
                [&queued] { queued = true; }, Qt::DirectConnection);
            std::thread host([this] { sendDeviceList({}, {"cam"}); });
            while (!queued)
                QThread::msleep(1);
            m_host.clearCalls();
            m_host.setCallHook([&](const QString &line) {
                if (line.startsWith("UnRegisterDeviceList"_s) && serves)
                    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
                else if (line.startsWith("UnRegisterDeviceList"_s))
                    host.join();
            });
            QElapsedTimer timer;
            timer.start();
            m_window.reset();
            if (host.joinable())
                host.join();
            QVERIFY2(timer.elapsed() < 2000, "the host's thread waited for nobody");
            QCOMPARE(m_host.calls().size(), 6); // the listeners
        }
    }

    /// Everything in it, also what opens beside it, and when the application's colours or style sheets change.
    void lightWhateverTheHostIs()
    {
        m_messages->allow("^This plugin does not support"_s);
        const auto restore = qScopeGuard([colours = QApplication::palette(), tips = QToolTip::palette()] {
            QApplication::setPalette(colours);
            QToolTip::setPalette(tips);
        });
        const auto darken = [](QRgb ground) { QApplication::setPalette(QPalette(QColor(ground), QColor(ground))); };
        darken(0xff202020);
        QPalette tips;
        for (int role = 0; role < QPalette::NColorRoles; ++role)
            tips.setColor(QPalette::ColorRole(role), role == QPalette::ToolTipText ? Qt::white : Qt::black);
        QToolTip::setPalette(tips);
        m_window.reset();
        m_window = std::make_unique<ParamterWnd>();
        m_window->show();
        setCamera("cam", true);
        sendDeviceList({}, {"cam"});
        sendFocus(3, "cam");
        ParamterWidget *const panel = panelOf("cam");
        panel->findChild<QTabWidget *>("tabMainWidget"_s)->setCurrentIndex(1);
        auto *const level = panel->findChild<QComboBox *>("cboboxLevel"_s);
        level->showPopup();
        QToolTip::showText(QPoint(9, 9), "tip"_s, level);
        QVERIFY(level->view()->isVisible() && m_window->findChild<QWidget *>("qtooltip_label"_s));
        QCOMPARE(unreadable(), QStringList());
        const QImage shown = m_window->grab().toImage();
        QVERIFY(qGray(shown.pixel(shown.width() / 2, shown.height() - 2)) > 0xc0);
        darken(0xff303030);
        QCOMPARE(unreadable(), QStringList());
        panel->setStyleSheet(panel->styleSheet() + "QLabel{margin:0}"_s);
        QCOMPARE(unreadable(), QStringList());
    }

private:
    static QTabWidget *tabsOf(const QWidget *panel, const char *name)
    {
        return panel->findChild<QTabWidget *>(QLatin1String(name));
    }

    /// Widgets in the window with a light text or a dark ground.
    QStringList unreadable() const
    {
        constexpr std::pair<QPalette::ColorRole, QPalette::ColorRole> Pairs[] = {
            {QPalette::WindowText, QPalette::Window},
            {QPalette::Text, QPalette::Base},
            {QPalette::ButtonText, QPalette::Button},
            {QPalette::ToolTipText, QPalette::ToolTipBase}};
        QStringList names;
        for (const QWidget *widget : m_window->findChildren<QWidget *>()) {
            for (const auto &[text, ground] : Pairs) {
                for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
                    const QColor under = widget->palette().color(group, ground);
                    const bool isDark = under.alpha() == 255 && qGray(under.rgb()) < 0x90;
                    if (isDark || qGray(widget->palette().color(group, text).rgb()) > 0xd0)
                        names << QLatin1String(widget->metaObject()->className()) + QLatin1Char(' ')
                                + widget->objectName();
                }
            }
        }
        return names;
    }
};

QTEST_MAIN(tst_ParamterWnd)
#include "tst_ParamterWnd.moc"
