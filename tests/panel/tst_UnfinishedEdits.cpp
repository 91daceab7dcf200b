// SPDX-License-Identifier: MIT
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPointer>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "FeatureTree/FeatureTreeView.h"
#include "FindRow.h"
#include "ManagerFixture.h"
#include "ToolPage/ToolPageWidgetItem.h"

/// Half a number stands in a field of a row or of the tree while the host, the devices and other windows go on.
class tst_UnfinishedEdits : public ManagerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        start();
        m_frame = std::make_unique<QWidget>();
        auto *const layout = new QVBoxLayout(m_frame.get());
        layout->addWidget(m_beside = new QLineEdit);
        layout->addWidget(m_window.get());
        m_frame->resize(800, 900);
        m_frame->show();
        QApplication::setActiveWindow(m_frame.get());
        QVERIFY(QTest::qWaitForWindowActive(m_frame.get()));
        setCamera("cam", true);
        list({"cam"});
        sendFocus(3, "cam");
    }

    void cleanup()
    {
        end();
        m_frame.reset();
    }

    /// Nothing is written, the next keys go on with the number, and Enter writes it.
    void survive()
    {
        const auto acquire = [this](const char *state) {
            m_host.setCameraInfo("cam", HostCore::CAM_INFO_ACQUISITION, state);
            list({"cam", "closed"});
            sendFocus(3, "cam");
        };
        const std::pair<const char *, std::function<void()>> interruptions[] = {
            {"another camera opens, and gets the focus for a while",
             [this] {
                 setCamera("other", true);
                 list({"cam", "other"});
                 QVERIFY(isKept());
                 sendFocus(3, "other");
                 sendFocus(3, "cam");
             }},
            {"acquisition starts, a camera is closed", [&] { acquire("1"); }},
            {"acquisition stops", [&] { acquire("0"); }},
            {"import", [this] { m_host.listeners.import->OnUpdate("cam"); }},
            {"language", [this] { m_host.listeners.language->OnUpdate("中文"); }},
            {"another window", [this] { visitAnotherWindow(); }},
            {"both tabs hidden and shown", [this] { hideBothTabs(); }},
            {"window locked", [this] { lock(); }}};
        for (const bool isInTree : {false, true}) {
            for (const auto &[name, interrupt] : interruptions) {
                const InRow inRow(name);
                cleanup();
                init();
                open(isInTree);
                for (int time = 0; time < 2; ++time) {
                    interrupt();
                    QVERIFY2(isKept(), isInTree ? "in the tree" : "in a row");
                }
                QTest::keyClicks(m_field, "45"_s);
                QTest::keyClick(m_field, Qt::Key_Return);
                QCOMPARE(m_camera->port.writes, 1U);
                QCOMPARE(exposure(), 12345.0);
                QCOMPARE(m_host.callsTo("VLogInfo"_s), QStringList());
            }
        }
    }

    /// Also presses on what takes no focus; none beside the panel does.
    void pressesInThePanelEndThem()
    {
        const QStringList targets[] = {words("pushButtonFold tabMainWidget widget_attrInfo splitter beside"),
                                       words("toolButton edit_search label tabMainWidget beside")};
        const QStringList all = targets[0] + targets[1];
        for (int at = 0; at < all.size(); ++at) {
            const bool isInTree = at >= targets[0].size();
            const bool isBeside = all[at] == "beside"_s;
            const QByteArray name = all[at].toLatin1();
            const InRow inRow(name.constData());
            cleanup();
            init();
            open(isInTree);
            QWidget *pressed = isBeside ? m_beside : panel()->findChild<QWidget *>(all[at]);
            if (auto *tabs = qobject_cast<QTabWidget *>(pressed))
                pressed = tabs->tabBar();
            unsigned writtenBefore = 1; // when the press takes effect
            if (auto *button = qobject_cast<QAbstractButton *>(pressed))
                connect(button, &QAbstractButton::pressed, this, [&] { writtenBefore = m_camera->port.writes; });
            QTest::mouseClick(pressed, Qt::LeftButton, {}, QPoint(4, 4));
            QCOMPARE(m_camera->port.writes, isBeside ? 0U : 1U);
            QCOMPARE(writtenBefore, 1U);
            QCOMPARE(isBeside ? m_field->text() : QString::number(exposure()), "123"_s);
        }
    }

    void goneWithTheCamera()
    {
        for (const bool isInTree : {false, true}) {
            cleanup();
            init();
            open(isInTree);
            setCamera("cam", false);
            list({"cam"});
            QTRY_VERIFY(!m_field);
            QCOMPARE(m_camera->port.writes, 0U);
        }
    }

private:
    void list(const std::vector<std::string> &cameras) { sendDeviceList({}, cameras); }
    ParamterWidget *panel() const { return panelOf("cam"); }
    double exposure() const { return GenApi::CFloatPtr(m_camera->node("ExposureTime"))->GetValue(true, true); }

    /// "123" of the exposure time 12345 is typed.
    void open(bool isInTree)
    {
        m_isInTree = isInTree;
        showTab();
        if (isInTree) {
            auto *const tree = panel()->findChild<FeatureTreeView *>();
            tree->expandAll();
            const QModelIndex row = findRow(*tree->model(), "ExposureTime");
            tree->scrollTo(row);
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(row.siblingAtColumn(1)).center());
            m_field = tree->viewport()->findChild<QDoubleSpinBox *>();
        } else {
            auto *const row = panel()->findChild<ToolPageWidgetItem *>("Exposure Time(us)"_s);
            m_field = row->findChild<QDoubleSpinBox *>();
            m_field->setFocus();
        }
        QVERIFY(m_field && m_field->hasFocus());
        m_field->selectAll();
        QTest::keyClicks(m_field, "123"_s);
        m_camera->port.resetCounters();
        m_host.clearCalls();
    }

    bool isKept() const
    {
        return m_field && m_field->text() == "123"_s && m_camera->port.writes == 0 && m_field->isVisible()
            && m_field->hasFocus();
    }

    void showTab() { panel()->findChild<QTabWidget *>("tabMainWidget"_s)->setCurrentIndex(m_isInTree ? 1 : 0); }

    void visitAnotherWindow()
    {
        QWidget other;
        other.show();
        QApplication::setActiveWindow(&other);
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(QApplication::focusWidget(), nullptr);
        QApplication::setActiveWindow(m_frame.get());
    }

    void hideBothTabs()
    {
        for (const bool shown : {false, true}) {
            m_window->setPanelWidgetVisiable(shown);
            m_window->setAllDetailWidgetVisiable(shown);
        }
        showTab();
    }

    void lock()
    {
        m_frame->setEnabled(false);
        QMouseEvent press(QEvent::MouseButtonPress, {4, 4}, Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(panel()->findChild<QWidget *>("splitter"_s), &press);
        m_frame->setEnabled(true);
    }

    std::unique_ptr<QWidget> m_frame;
    QLineEdit *m_beside = nullptr;
    QPointer<QAbstractSpinBox> m_field;
    bool m_isInTree = false;
};

QTEST_MAIN(tst_UnfinishedEdits)
#include "tst_UnfinishedEdits.moc"
