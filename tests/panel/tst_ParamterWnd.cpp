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
        for (const auto &[key, type, isAreaScan] :
             {std::tuple("before", "7", true), std::tuple("type 1", "1", false), std::tuple("type 5", "5", false),
              std::tuple("type 15", "15", true), std::tuple("no type", "", true)}) {
            QCOMPARE(firstPageOf(key, type), "Commom"_s);
            QCOMPARE(panelOf(key)->isAreaScan(), isAreaScan);
        }
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
        const char *const profiler = "profilerTypeCodes";
        const char *const structuredLight = "structuredLightTypeCodes";
        // The property, its value, whether a camera is open, and how the lines begin.
        const std::tuple<const char *, QVariant, bool, const char *> rows[] = {
            {profiler, QStringList({"1"_s, "5"_s, "8"_s}), false, ""},
            {profiler, QStringList("8"_s), true, "profilerTypeCodes changes while cameras have panels"},
            {profiler, "7"_s, false, "profilerTypeCodes is no list of strings (QStringList) but QString"},
            {structuredLight, 7, false, "structuredLightTypeCodes is no list of strings (QStringList) but int"},
            {profiler, QStringList({"8"_s, QString(), "4"_s}), false,
             "profilerTypeCodes holds an empty type code"
             "|profilerTypeCodes holds type code 4, whose cameras have the attribute tab only"},
            {structuredLight, QStringList({"8"_s, "7"_s}), false,
             "structuredLightTypeCodes and profilerTypeCodes hold type code 7, which counts in profilerTypeCodes"},
            {"typeCodes", 7, true, ""}};
        for (const auto &[property, value, open, text] : rows) {
            const InRow inRow(*text ? text : property);
            const QStringList lines = words(text, '|');
            end();
            start();
            setCamera("cam", open);
            sendDeviceList({}, {"cam"});
            const bool isSecond = property == structuredLight;
            if (isSecond)
                m_window->setProperty(profiler, QStringList("7"_s));
            m_host.clearCalls();
            m_window->setProperty(property, value);
            const QStringList logged = m_host.callsTo("VLogInfo"_s);
            QCOMPARE(logged.size(), lines.size());
            for (int line = 0; line < lines.size(); ++line)
                QVERIFY2(logged[line].startsWith("VLogInfo(ParameterWidgetManager, "_s + lines[line]),
                         qPrintable(logged[line]));
            setCamera("other", true);
            m_host.setCameraInfo("other", HostCore::CAM_INFO_TYPE_CODE, isSecond ? "7" : "4");
            sendDeviceList({}, {"other"});
            QCOMPARE(tabsOf(panelOf("other"), "tabWidget")->tabText(0), isSecond ? "Trigger"_s : "Commom"_s);
        }
    }

    /// New panels take over which are hidden.
    void windowHidesWithBothTabs()
    {
        for (const auto &[panel, detail] : {std::tuple(false, true), std::tuple(false, false), std::tuple(true, false),
                                            std::tuple(false, true), std::tuple(false, false)}) {
            m_window->setPanelWidgetVisiable(panel);
            m_window->setAllDetailWidgetVisiable(detail);
            QCOMPARE(m_window->isVisible(), panel || detail);
        }
        m_window->setAllDetailWidgetVisiable(true);
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
