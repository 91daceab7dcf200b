// SPDX-License-Identifier: MIT
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPointer>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

#include "FeatureTree/FeatureTreeView.h"
#include "PanelDescription.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ParamterWnd/ParamterWnd.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/FakeHostCore.h"
#include "support/FatalMessages.h"

using Interruption = void (*)(class tst_UnfinishedEdits &test);
Q_DECLARE_METATYPE(Interruption)

/// Half a number stands in a field of a row or of the tree while the host, the devices and other windows go on.
class tst_UnfinishedEdits : public QObject
{
    Q_OBJECT

public:
    void list(const std::vector<std::string> &cameras) { m_host.listeners.deviceList->OnUpdate(1, {}, cameras); }
    void focus(const std::string &camera) { m_host.listeners.focus->OnUpdate(HostCore::FOCUS_CAMERA, camera); }
    void acquire(const char *state)
    {
        m_host.setCameraInfo("cam", HostCore::CAM_INFO_ACQUISITION, state);
        list({"cam", "closed"});
        focus("cam");
    }
    void setReady(const std::string &key, bool ready)
    {
        m_host.setCameraInfo(key, HostCore::CAM_INFO_OPENED, ready ? "1" : "0");
        m_host.setCameraInfo(key, HostCore::CAM_INFO_READY, "1");
        m_host.setNodeMap(HostCore::FOCUS_CAMERA, key, m_camera->map);
    }
    void changeLanguage() { m_host.listeners.language->OnUpdate("中文"); }
    void import() { m_host.listeners.import->OnUpdate("cam"); }
    void toAnotherWindow()
    {
        QWidget other;
        other.show();
        QApplication::setActiveWindow(&other);
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(QApplication::focusWidget(), nullptr);
        QApplication::setActiveWindow(m_window.get());
    }
    void hideBothTabs()
    {
        for (const bool shown : {false, true}) {
            m_panels->setPanelWidgetVisiable(shown);
            m_panels->setAllDetailWidgetVisiable(shown);
        }
        currentTab(m_isInTree);
    }
    void lock()
    {
        m_window->setEnabled(false);
        QMouseEvent press(QEvent::MouseButtonPress, {4, 4}, Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(at("splitter"), &press);
        m_window->setEnabled(true);
    }

private Q_SLOTS:
    void init()
    {
        m_host.reset();
        m_messages = std::make_unique<FatalMessages>();
        m_camera = std::make_unique<PanelCamera>();
        m_window = std::make_unique<QWidget>();
        auto *layout = new QVBoxLayout(m_window.get());
        m_beside = new QLineEdit;
        m_panels = new ParamterWnd;
        layout->addWidget(m_beside);
        layout->addWidget(m_panels);
        m_window->resize(800, 900);
        m_window->show();
        QApplication::setActiveWindow(m_window.get());
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        setReady("cam", true);
        list({"cam"});
        focus("cam");
    }

    void cleanup()
    {
        m_window.reset();
        m_camera.reset();
        m_messages.reset();
    }

    void survive_data()
    {
        QTest::addColumn<bool>("isInTree");
        QTest::addColumn<Interruption>("interrupt");
        using Test = tst_UnfinishedEdits;
        const std::pair<const char *, Interruption> interruptions[] = {
            {"another camera opens",
             [](Test &test) {
                 test.setReady("other", true);
                 test.list({"cam", "other"});
             }},
            {"and gets the focus for a while",
             [](Test &test) {
                 test.setReady("other", true);
                 test.list({"cam", "other"});
                 test.focus("other");
                 test.focus("cam");
             }},
            {"a camera is closed",
             [](Test &test) {
                 test.setReady("closed", false);
                 test.list({"cam", "closed"});
                 test.focus("cam");
             }},
            {"acquisition starts", [](Test &test) { test.acquire("1"); }},
            {"acquisition stops", [](Test &test) { test.acquire("0"); }},
            {"import", [](Test &test) { test.import(); }},
            {"language", [](Test &test) { test.changeLanguage(); }},
            {"another window", [](Test &test) { test.toAnotherWindow(); }},
            {"both tabs hidden and shown", [](Test &test) { test.hideBothTabs(); }},
            {"window locked", [](Test &test) { test.lock(); }}};
        for (const bool isInTree : {false, true}) {
            for (const auto &[name, interruption] : interruptions)
                QTest::addRow("%s: %s", isInTree ? "tree" : "row", name) << isInTree << interruption;
        }
    }

    /// Nothing is written, the next keys go on with the number, and Enter writes it.
    void survive()
    {
        QFETCH(bool, isInTree);
        QFETCH(Interruption, interrupt);
        open(isInTree);
        for (int time = 0; time < 2; ++time) {
            interrupt(*this);
            QVERIFY(m_field);
            QCOMPARE(m_field->text(), "123"_s);
            QCOMPARE(written(), quint64(0));
            QVERIFY(m_field->isVisible());
            QVERIFY(m_field->hasFocus());
        }
        QTest::keyClicks(m_field, "45"_s);
        QTest::keyClick(m_field, Qt::Key_Return);
        QCOMPARE(written(), quint64(1));
        QCOMPARE(GenApi::CFloatPtr(m_camera->node("ExposureTime"))->GetValue(true, true), 12345.0);
        QCOMPARE(m_host.callsTo("VLogInfo"_s), QStringList());
    }

    void pressesInThePanelEndThem_data()
    {
        QTest::addColumn<bool>("isInTree");
        QTest::addColumn<QByteArray>("target");
        QTest::addColumn<bool>("ends");
        for (const char *target : {"pushButtonFold", "tabMainWidget", "widget_attrInfo", "splitter"})
            QTest::addRow("row: %s", target) << false << QByteArray(target) << true;
        for (const char *target : {"toolButton", "edit_search", "label", "tabMainWidget"})
            QTest::addRow("tree: %s", target) << true << QByteArray(target) << true;
        QTest::newRow("row: beside the panel") << false << QByteArray() << false;
        QTest::newRow("tree: beside the panel") << true << QByteArray() << false;
    }

    /// Also presses on what takes no focus.
    void pressesInThePanelEndThem()
    {
        QFETCH(bool, isInTree);
        QFETCH(QByteArray, target);
        QFETCH(bool, ends);
        open(isInTree);
        QWidget *pressed = m_beside;
        if (!target.isEmpty())
            pressed = at(target.constData());
        if (auto *tabs = qobject_cast<QTabWidget *>(pressed))
            pressed = tabs->tabBar();
        quint64 writtenBefore = 99; // when the press takes effect
        if (auto *button = qobject_cast<QAbstractButton *>(pressed))
            connect(button, &QAbstractButton::pressed, this, [&] { writtenBefore = written(); });
        QTest::mouseClick(pressed, Qt::LeftButton, {}, QPoint(4, 4));
        QCOMPARE(written(), quint64(ends ? 1 : 0));
        QVERIFY(writtenBefore == 99 || writtenBefore == 1);
        if (ends)
            QCOMPARE(GenApi::CFloatPtr(m_camera->node("ExposureTime"))->GetValue(true, true), 123.0);
        else
            QCOMPARE(m_field->text(), "123"_s);
    }

    void goneWithTheCamera()
    {
        for (const bool isInTree : {false, true}) {
            open(isInTree);
            setReady("cam", false);
            list({"cam"});
            QTRY_VERIFY(!m_field);
            QCOMPARE(written(), quint64(0));
            cleanup();
            init();
        }
    }

private:
    /// "123" of the exposure time 12345 is typed.
    void open(bool isInTree)
    {
        m_isInTree = isInTree;
        currentTab(isInTree);
        if (isInTree) {
            auto *tree = panel()->findChild<FeatureTreeView *>();
            tree->expandAll();
            const QModelIndex row = tree->model()
                                        ->match(tree->model()->index(0, 0), Qt::DisplayRole, "ExposureTime"_s, 1,
                                                Qt::MatchExactly | Qt::MatchRecursive)
                                        .value(0);
            tree->scrollTo(row);
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(row.siblingAtColumn(1)).center());
            m_field = tree->viewport()->findChild<QDoubleSpinBox *>();
        } else {
            m_field = panel()->findChild<ToolPageWidgetItem *>("Exposure Time(us)"_s)->findChild<QDoubleSpinBox *>();
            m_field->setFocus();
        }
        QVERIFY(m_field && m_field->hasFocus());
        m_field->selectAll();
        QTest::keyClicks(m_field, "123"_s);
        m_camera->port.resetCounters();
        m_host.clearCalls();
    }

    void currentTab(bool tree) { panel()->findChild<QTabWidget *>("tabMainWidget"_s)->setCurrentIndex(tree ? 1 : 0); }

    QWidget *at(const char *name) const { return panel()->findChild<QWidget *>(QLatin1String(name)); }

    ParamterWidget *panel() const
    {
        for (ParamterWidget *panel : m_panels->findChildren<ParamterWidget *>()) {
            if (panel->deviceName() == "cam"_s)
                return panel;
        }
        return nullptr;
    }

    quint64 written() const { return m_camera->port.writes; }

    FakeHostCore &m_host = FakeHostCore::instance();
    std::unique_ptr<FatalMessages> m_messages;
    std::unique_ptr<PanelCamera> m_camera;
    std::unique_ptr<QWidget> m_window;
    ParamterWnd *m_panels = nullptr;
    QLineEdit *m_beside = nullptr;
    QPointer<QAbstractSpinBox> m_field;
    bool m_isInTree = false;
};

QTEST_MAIN(tst_UnfinishedEdits)
#include "tst_UnfinishedEdits.moc"
