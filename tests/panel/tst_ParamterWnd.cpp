// SPDX-License-Identifier: MIT
#include <atomic>
#include <thread>

#include <QAbstractItemView>
#include <QComboBox>
#include <QScopeGuard>
#include <QTabWidget>
#include <QToolTip>
#include <QtTest>

#include "ManagerFixture.h"
#include "ParamterWnd/HostEventBridges.h"

/// What a host does with the window itself: its tabs, its properties, its end.
class tst_ParamterWnd : public ManagerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }
    void cleanup() { end(); }

    void pageSets();
    void typeCodeLists_data();
    void typeCodeLists();
    void windowHidesWithBothTabs();
    void newPanelsTakeTheTabsOver();
    void goingTakesNoEvent_data();
    void goingTakesNoEvent();
    void lightWhateverTheHostIs();

private:
    /// Widgets in the window with a light text or a dark ground.
    QStringList unreadable() const;
};

/// Hosts name the type codes of cameras with other pages; they count for panels opened from then on, never for cards.
void tst_ParamterWnd::pageSets()
{
    const auto firstPageOf = [this](const std::string &key, const std::string &type) {
        setCamera(key, true);
        m_host.setCameraInfo(key, HostCore::CAM_INFO_TYPE_CODE, type);
        sendDeviceList({}, {key});
        return panelOf(QString::fromStdString(key))->findChild<QTabWidget *>(QStringLiteral("tabWidget"))->tabText(0);
    };
    QCOMPARE(firstPageOf("before", "7"), QStringLiteral("Commom"));
    m_window->setProperty("profilerTypeCodes", QStringList({QStringLiteral("1"), QStringLiteral("7")}));
    m_window->setProperty("structuredLightTypeCodes", QStringList({QStringLiteral("1"), QStringLiteral("8")}));
    for (const auto &[type, page] : {std::pair("7", "Trigger"), std::pair("1", "Trigger"), std::pair("8", "Shoot"),
                                     std::pair("17", "Commom"), std::pair("5", "Commom")})
        QCOMPARE(firstPageOf(type, type), QLatin1String(page));
    QVERIFY(!panelOf(QStringLiteral("7"))->isAreaScan() && !panelOf(QStringLiteral("8"))->isAreaScan());
    setCard("card", true);
    m_host.setCameraInfo("card", HostCore::CAM_INFO_TYPE_CODE, "1");
    sendDeviceList({"card"}, {});
    QCOMPARE(panelOf(QStringLiteral("card"), true)->findChild<QTabWidget *>(QStringLiteral("tabWidget"))->count(), 3);
    m_window->setProperty("profilerTypeCodes", QVariant());
    for (const auto &[key, page] :
         {std::pair("before", "Commom"), std::pair("after", "Commom"), std::pair("7", "Trigger")})
        QCOMPARE(firstPageOf(key, "7"), QLatin1String(page));
}

void tst_ParamterWnd::typeCodeLists_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("open");
    QTest::addColumn<QStringList>("lines"); // each as it begins
    const auto row = [](const char *name, const char *property, const QVariant &value, bool open,
                        const QStringList &lines) {
        QTest::newRow(name) << QByteArray(property) << value << open << lines;
    };
    const auto codes = [](const char *list) { return QString::fromLatin1(list).split(QLatin1Char(' ')); };
    const char *const profiler = "profilerTypeCodes";
    const char *const structuredLight = "structuredLightTypeCodes";
    const QString late = QStringLiteral("%1 changes while cameras have panels");
    const QString type = QStringLiteral("%1 is no list of strings (QStringList) but %2");
    const QString both = QStringLiteral("%1 and %2 hold type code 7, which counts in profilerTypeCodes");
    row("right", profiler, codes("1 5 8"), false, {});
    row("removed", profiler, QVariant(), false, {});
    row("late", profiler, codes("8"), true, {late.arg(QLatin1String(profiler))});
    row("a text", profiler, QStringLiteral("7"), false, {type.arg(QLatin1String(profiler), QStringLiteral("QString"))});
    row("a number", structuredLight, 7, false, {type.arg(QLatin1String(structuredLight), QStringLiteral("int"))});
    row("none and without pages", profiler, codes("8  4"), true,
        {QStringLiteral("profilerTypeCodes holds an empty type code"),
         QStringLiteral("profilerTypeCodes holds type code 4, whose cameras have the attribute tab only"),
         late.arg(QLatin1String(profiler))});
    row("in both", structuredLight, codes("8 7"), false,
        {both.arg(QLatin1String(structuredLight), QLatin1String(profiler))});
    row("none of the lists", "typeCodes", 7, true, {});
}

/// What is wrong in a list is told and does not count.
void tst_ParamterWnd::typeCodeLists()
{
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);
    QFETCH(bool, open);
    QFETCH(QStringList, lines);
    setCamera("cam", open);
    sendDeviceList({}, {"cam"});
    const bool isSecond = property == "structuredLightTypeCodes";
    if (isSecond)
        m_window->setProperty("profilerTypeCodes", QStringList(QStringLiteral("7")));
    m_host.clearCalls();
    m_window->setProperty(property.constData(), value);
    const QStringList logged = m_host.callsTo(QStringLiteral("VLogInfo"));
    QCOMPARE(logged.size(), lines.size());
    for (int line = 0; line < lines.size(); ++line)
        QVERIFY2(logged[line].startsWith(QStringLiteral("VLogInfo(ParameterWidgetManager, ") + lines[line]),
                 qPrintable(logged[line]));
    setCamera("other", true);
    m_host.setCameraInfo("other", HostCore::CAM_INFO_TYPE_CODE, isSecond ? "7" : "4");
    sendDeviceList({}, {"other"});
    const auto *const tabs = panelOf(QStringLiteral("other"))->findChild<QTabWidget *>(QStringLiteral("tabWidget"));
    QCOMPARE(tabs->tabText(0), isSecond ? QStringLiteral("Trigger") : QStringLiteral("Commom"));
}

void tst_ParamterWnd::windowHidesWithBothTabs()
{
    m_window->setPanelWidgetVisiable(false);
    QVERIFY(m_window->isVisible());
    m_window->setAllDetailWidgetVisiable(false);
    QVERIFY(m_window->isHidden());
    m_window->setPanelWidgetVisiable(true);
    QVERIFY(m_window->isVisible());
    m_window->setPanelWidgetVisiable(false);
    m_window->setAllDetailWidgetVisiable(true);
    QVERIFY(m_window->isVisible());
    m_window->setAllDetailWidgetVisiable(false);
    QVERIFY(m_window->isHidden());
}

void tst_ParamterWnd::newPanelsTakeTheTabsOver()
{
    m_window->setPanelWidgetVisiable(false);
    setCamera("cam", true);
    sendDeviceList({}, {"cam"});
    const auto *tabs = panelOf(QStringLiteral("cam"))->findChild<QTabWidget *>(QStringLiteral("tabMainWidget"));
    QCOMPARE(tabs->count(), 1);
    QCOMPARE(tabs->tabText(0), QStringLiteral("All Attribute"));
    m_window->setPanelWidgetVisiable(true);
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->tabText(0), QStringLiteral("Common Attribute"));
}

void tst_ParamterWnd::goingTakesNoEvent_data()
{
    QTest::addColumn<bool>("serves");
    QTest::newRow("the host waits for its thread") << false;
    QTest::newRow("the host serves what is queued") << true;
}

/// A list that is queued when the window goes must not build a panel into what is left of it.
void tst_ParamterWnd::goingTakesNoEvent()
{
    QFETCH(bool, serves);
    setCamera("cam", true);
    std::atomic<bool> queued{false};
    connect(
        static_cast<DeviceListUpdate *>(m_host.listeners.deviceList), &DeviceListUpdate::updateCams, this,
        [&] { queued = true; }, Qt::DirectConnection);
    std::thread host([this] { sendDeviceList({}, {"cam"}); });
    while (!queued)
        QThread::msleep(1);
    m_host.clearCalls();
    m_host.setCallHook([&](const QString &line) {
        if (line.startsWith(QStringLiteral("UnRegisterDeviceList")) && serves)
            QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
        else if (line.startsWith(QStringLiteral("UnRegisterDeviceList")))
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

QStringList tst_ParamterWnd::unreadable() const
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
                    names << QLatin1String(widget->metaObject()->className()) + QLatin1Char(' ') + widget->objectName();
            }
        }
    }
    return names;
}

/// Everything in it, also what opens beside it, and when the application's colours or style sheets change.
void tst_ParamterWnd::lightWhateverTheHostIs()
{
    m_messages->allow(QStringLiteral("^This plugin does not support"));
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
    ParamterWidget *const panel = panelOf(QStringLiteral("cam"));
    panel->findChild<QTabWidget *>(QStringLiteral("tabMainWidget"))->setCurrentIndex(1);
    auto *const level = panel->findChild<QComboBox *>(QStringLiteral("cboboxLevel"));
    level->showPopup();
    QToolTip::showText(QPoint(9, 9), QStringLiteral("tip"), level);
    QVERIFY(level->view()->isVisible() && m_window->findChild<QWidget *>(QStringLiteral("qtooltip_label")));
    QCOMPARE(unreadable(), QStringList());
    const QImage shown = m_window->grab().toImage();
    QVERIFY(qGray(shown.pixel(shown.width() / 2, shown.height() - 2)) > 0xc0);
    darken(0xff303030);
    QCOMPARE(unreadable(), QStringList());
    panel->setStyleSheet(panel->styleSheet() + QStringLiteral("QLabel{margin:0}"));
    QCOMPARE(unreadable(), QStringList());
}

QTEST_MAIN(tst_ParamterWnd)
#include "tst_ParamterWnd.moc"
