// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QtTest>

#include "FaultyNode.h"
#include "FeatureTree/IntegerSpinBox.h"
#include "FeatureTree/TreeItem.h"
#include "ShownTree.h"
#include "support/BracketTranslator.h"

class tst_FeatureTreeView : public QObject, private ShownTree
{
    Q_OBJECT

private Q_SLOTS:
    void init() { open(); }
    void cleanup() { close(); }

    void withoutRowsOrModel()
    {
        FeatureTreeView empty;
        empty.SetFilter(2, QStringLiteral("x"));
        TreeModel noRows({QString(), QString()}, {});
        empty.setModel(&noRows);
        empty.SetFilter(0, QString());
        empty.updateViewItemVisiable(QModelIndex());
        noRows.setFeatureLanguage(1);
        QCOMPARE(noRows.rowCount(), 0);
        QStandardItemModel foreign(3, 2);
        empty.setModel(&foreign);
        empty.SetFilter(0, QStringLiteral("x"));
        QVERIFY(!empty.isRowHidden(0, QModelIndex()));
    }

    void columnsAreHalves()
    {
        for (const int height : {1200, 200}) {
            m_view->resize(601, height);
            QTRY_COMPARE(m_view->verticalScrollBar()->isVisible(), height == 200);
            QCOMPARE(m_view->columnWidth(0), 300);
            QCOMPARE(m_view->columnWidth(1) == 300, height == 1200);
        }
        QTRY_VERIFY(!m_view->horizontalScrollBar()->isVisible());
    }

    void languageRetitlesHeaders()
    {
        QPersistentModelIndex width = cell("Width");
        BracketTranslator brackets;
        QCoreApplication::installTranslator(&brackets);
        QTRY_COMPARE(m_model->headerData(0, Qt::Horizontal).toString(), QStringLiteral("[Feature]"));
        QCOMPARE(m_model->headerData(1, Qt::Horizontal).toString(), QStringLiteral("[Value]"));
        QVERIFY(width.isValid());
        QCoreApplication::removeTranslator(&brackets);
        QEvent change(QEvent::LanguageChange);
        FeatureTreeView withoutModel;
        QApplication::sendEvent(&withoutModel, &change);
    }

    void selectionIsReported()
    {
        QSignalSpy spy(m_view.get(), &FeatureTreeView::SigSelectItem);
        click("Width", 0);
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.at(0).at(0).toModelIndex(), cell("Width", 0));
        m_view->clearSelection();
        QCOMPARE(spy.size(), 1);
    }

    void escapeGivesTheOldValueBack()
    {
        click("Width", 0);
        m_view->setFocus();
        QTest::keyClick(m_view.get(), Qt::Key_F2); // on the name
        auto *box = editor<IntegerSpinBox>();
        QVERIFY(box);
        QTest::keyClicks(box, QStringLiteral("8"));
        QTest::keyClick(box, Qt::Key_Escape);
        QTRY_VERIFY(m_view->hasFocus());
        QCOMPARE(m_camera->port.writes, 0u);
        QCOMPARE(cell("Width").data().toInt(), 48);
        QTest::keyClick(m_view.get(), Qt::Key_Down);
        QCOMPARE(m_view->currentIndex(), cell("Gain", 0)); // which opens no editor
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
        QCOMPARE(m_view->currentIndex(), cell("Gain", 0));
        QCOMPARE(m_camera->port.writes, 0u);
    }

    void tabGoesToTheNextEditableValue()
    {
        QCOMPARE(m_view->focusPolicy(), Qt::NoFocus);
        click("Uncached");
        for (const auto &[key, next] : {std::pair(Qt::Key_Backtab, "Fragile"),
                                        {Qt::Key_Backtab, "WriteOnlyGain"},
                                        {Qt::Key_Backtab, "GatedToo"},
                                        {Qt::Key_Tab, "WriteOnlyGain"}}) {
            QVERIFY2(editor<QAbstractSpinBox>(), next);
            QTest::keyClick(QApplication::focusWidget(), key);
            QVERIFY2(m_view->currentIndex() == cell(next), next);
        }
        QCOMPARE(m_camera->port.writes, 0u);
    }

    void runsCommand()
    {
        QSignalSpy spy(m_view.get(), &FeatureTreeView::commandExecute);
        QPushButton *button = openCommand("Start");
        QVERIFY(button && button->text() == QLatin1String("Execute"));
        unsigned writesWhenAnnounced = 1;
        connect(m_view.get(), &FeatureTreeView::commandExecute, this, [&] {
            writesWhenAnnounced = m_camera->port.writes;
        }); // whoever hears of it may still prepare the device
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(writesWhenAnnounced, 0u);
        QCOMPARE(m_camera->port.peek(TestCamera::Start), quint64(1));
        QCOMPARE(m_camera->port.writes, 1u);
        QCOMPARE(spy, QList<QVariantList>{{QStringLiteral("Start")}});
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return})
            QTest::keyClick(button, key);
        QCOMPARE(m_camera->port.writes, 3u);
    }

    void triggerAndReset()
    {
        QSignalSpy spy(m_view.get(), &FeatureTreeView::commandExecute);
        QPushButton *trigger = openCommand("TriggerSoftware");
        QVERIFY(trigger);
        for (int i = 0; i < 2; ++i)
            QTest::mouseClick(trigger, Qt::LeftButton);
        QCOMPARE(m_camera->port.writes, 2u);
        QCOMPARE(spy.size(), 0);
        QPushButton *reset = openCommand("DeviceReset");
        QVERIFY(reset);
        QTest::mouseClick(reset, Qt::LeftButton);
        QCOMPARE(m_camera->port.writes, 2u);
        QCOMPARE(FakeHostCore::instance().calls(),
                 QStringList(QStringLiteral("SetCameraNodeValue(cam, DeviceReset, )")));
        QCOMPARE(spy, QList<QVariantList>{{QStringLiteral("DeviceReset")}});
    }

    /// The host may handle commandExecute() by pressing another button.
    void commandIsNotReentered()
    {
        QPushButton *button = openCommand("Start");
        QVERIFY(button);
        int runs = 0;
        connect(m_view.get(), &FeatureTreeView::commandExecute, this, [&] {
            if (++runs < 5)
                button->click();
        });
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(runs, 1);
        QCOMPARE(m_camera->port.writes, 1u);
    }

    /// The host may close the device or delete the view while a command is announced.
    void deviceGoesDuringCommand()
    {
        QPushButton *button = openCommand("Start");
        QVERIFY(button);
        QSignalSpy spy(m_view.get(), &FeatureTreeView::commandExecute);
        connect(m_view.get(), &FeatureTreeView::commandExecute, m_view.get(), [this] {
            m_model->dataDisabled = true;
            m_view->setViewDataDisable();
            m_camera.reset();
        });
        button->click();
        QCOMPARE(spy.size(), 1);

        init();
        button = openCommand("DeviceReset");
        QVERIFY(button);
        FakeHostCore::instance().setCallHook([this](const QString &) { m_view.reset(); });
        button->click();
        QVERIFY(!m_view);
    }

    void failingAndLockedCommands()
    {
        QPushButton *button = openCommand("Start");
        QVERIFY(button);
        for (const auto fault : {MemoryPort::Fault::Refused, MemoryPort::Fault::Foreign}) {
            m_camera->port.writeFault = fault;
            FakeHostCore::instance().clearCalls();
            QTest::mouseClick(button, Qt::LeftButton);
            const QStringList calls = FakeHostCore::instance().calls();
            QCOMPARE(calls.size(), 1);
            QVERIFY2(calls.at(0).startsWith(QStringLiteral("VLogInfo(FeatureTreeView, ")), qPrintable(calls.at(0)));
        }
        m_camera->port.writeFault = MemoryPort::Fault::None;
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(m_camera->port.peek(TestCamera::Start), quint64(1));
        m_camera->port.resetCounters();
        QVERIFY(!openCommand("StartLocked"));
        QMetaObject::invokeMethod(m_view->itemDelegateForColumn(1), "CommandClicked", Q_ARG(bool, false));
        QCOMPARE(m_camera->port.writes, 0u);
    }

    /// One read per second for each visible value that is not cached, none for the others.
    void repaintReadsOnlyWhatIsNotCached()
    {
        QTest::qWait(10);
        m_camera->port.resetCounters();
        QTRY_VERIFY(m_camera->port.readsOf(TestCamera::Uncached) > 0);
        QCOMPARE(m_camera->port.reads,
                 m_camera->port.readsOf(TestCamera::Uncached) + m_camera->port.readsOf(TestCamera::LineRate));
        m_view->hide();
        m_camera->port.resetCounters();
        QTest::qWait(1100);
        QCOMPARE(m_camera->port.reads, 0u);
    }

    void replacedModel()
    {
        auto next = std::make_unique<TreeModel>(QStringList{QString(), QString()}, m_camera->nodes());
        next->AddModelData(m_camera->nodes(), QString());
        m_view->setModel(next.get());
        m_model = std::move(next);
        m_view->expandAll();
        m_view->SetFilter(1, QString());
        QVERIFY(isShown("Expert"));
        click("Width");
        QVERIFY(editor<IntegerSpinBox>());
    }

    void disabledTouchesNoNode()
    {
        QPushButton *button = openCommand("Start");
        QVERIFY(button);
        m_model->dataDisabled = true;
        m_view->setViewDataDisable();
        m_camera.reset();
        QTest::mouseClick(button, Qt::LeftButton);
        m_view->SetFilter(2, QStringLiteral("x"));
        m_view->collapseAll();
        m_view->expandAll();
        click("Width");
        QVERIFY(!editor<IntegerSpinBox>());
        m_view->viewport()->repaint();
        QCOMPARE(cell("Width").data(), QVariant(qint64(48)));
        QVERIFY(!m_model->setData(cell("Width"), 52, Qt::EditRole));
        QCOMPARE(FakeHostCore::instance().calls(), QStringList());
    }
};

QTEST_MAIN(tst_FeatureTreeView)
#include "tst_FeatureTreeView.moc"
