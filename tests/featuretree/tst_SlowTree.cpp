// SPDX-License-Identifier: MIT
#include "FeatureTree/TreeItem.h"
#include "PanelBase/DeviceReading.h"
#include <QAbstractSpinBox>
#include <QLineEdit>

#include "ShownTree.h"
#include "TestRows.h"

namespace {

using namespace std::chrono_literals;

DeviceReading::Timing strict()
{
    DeviceReading::Timing timing;
    timing.budget = timing.slice = 0ms;
    return timing;
}

/// What the model keeps and the view shows, one line a row.
QStringList state(const FeatureTreeView &view, const QModelIndex &parent = {})
{
    const auto *model = qobject_cast<const TreeModel *>(view.model());
    QStringList lines;
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex index = model->index(row, 0, parent);
        const TreeItem *item = model->getItem(index);
        lines << item->storedData(0).toString() + QLatin1Char('=') + item->storedData(1).toString()
                + (view.isRowHidden(row, parent) ? QStringLiteral(" hidden") : QString());
        lines << state(view, index);
    }
    return lines;
}

} // namespace

/// The tree of a device that is slow: only one read has time in a turn of the event loop.
class tst_SlowTree : public QObject, private ShownTree
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeSlow();
        show();
    }
    void cleanup()
    {
        close();
        m_reading.reset();
    }

    /// All is there in the end, as it would be at once.
    void endsAsAtOnce()
    {
        const auto search = [](FeatureTreeView &view) { view.SetFilter(2, QStringLiteral("a")); };
        const std::tuple<const char *, void (*)(FeatureTreeView &)> rows[] = {
            {"opened", [](FeatureTreeView &) {}},
            {"searched", search},
            {"searched anew before the first search ended",
             [](FeatureTreeView &view) {
                 view.SetFilter(0, QStringLiteral("no such feature"));
                 view.SetFilter(2, QString());
             }},
            {"unfolded", [](FeatureTreeView &view) {
                 view.collapseAll();
                 view.expandAll();
             }}};
        for (const auto &[name, deed] : rows) {
            make(true);
            m_view->show();
            deed(*m_view);
            QTest::qWait(0);
            const QStringList expected = state(*m_view);
            makeSlow();
            m_view->show();
            deed(*m_view);
            QTRY_VERIFY2(!m_reading->isBusy(), name);
            QCOMPARE(state(*m_view), expected);
        }
    }

    /// Rows whose availability waits are shown as they were known, and in the end as they are.
    void switchesTakeTurns()
    {
        QTRY_VERIFY(!m_reading->isBusy());
        const QModelIndex top = m_model->index(0, 0);
        const auto pass = [&](bool isOn) {
            m_camera->port.poke(TestCamera::Switch, isOn);
            m_camera->map->InvalidateNodes();
            m_reading->read(nullptr, [] { QThread::usleep(100); }); // no time is left
            m_view->updateViewItemVisiable(top);
        };
        pass(false);
        QVERIFY(isShown("Gated"));
        m_view->updateViewItemVisiable(cell("Width", 0)); // does not make it forget the others
        QTRY_VERIFY(!isShown("Gated"));
        m_reading->read(nullptr, [] { QThread::usleep(100); });
        pass(true);
        QVERIFY2(!isShown("Gated"), "as it was known");
        QTRY_VERIFY(isShown("Gated"));
        pass(false);
        m_camera->port.resetCounters();
        m_view->SetFilter(0, QStringLiteral("width"));
        QTRY_VERIFY(!m_reading->isBusy());
        QVERIFY2(m_camera->port.readsOf(TestCamera::Switch) == 0, "of no row that is wanted");
    }

    /// Values that are read first are those that are seen; rows painted for what was read do not read again.
    void rowsInViewComeFirst()
    {
        QTRY_VERIFY(!m_reading->isBusy());
        m_view->resize(600, 200);
        m_view->scrollToBottom();
        m_camera->map->InvalidateNodes();
        m_camera->port.resetCounters();
        m_view->viewport()->repaint();
        const unsigned first = m_camera->port.reads;
        QVERIFY2(first <= 2, QByteArray::number(first));
        QTRY_VERIFY(!m_reading->isBusy());
        QCoreApplication::processEvents();
        std::map<int64_t, int> reads;
        for (const MemoryPort::Access &access : m_camera->port.accesses)
            ++reads[access.address];
        for (const auto &[address, count] : reads)
            QVERIFY2(count == 1, QByteArray::number(qlonglong(address), 16));
    }

    /// The last values in gray, no access, one line; the first answer makes rows live again.
    void silentDevice()
    {
        QTRY_VERIFY(!m_reading->isBusy());
        m_view->viewport()->repaint();
        QTRY_VERIFY(!m_reading->isBusy());
        const QModelIndex width = cell("Width");
        m_model->showsReadCells = true;
        QVERIFY(m_model->isEditable(m_model->getItem(width)));
        m_camera->port.readFault = MemoryPort::Fault::Timeout;
        m_camera->map->InvalidateNodes();
        m_camera->port.poke(TestCamera::Width, 64);
        FakeHostCore::instance().clearCalls();
        m_view->viewport()->repaint();
        QVERIFY(m_reading->isSilent());
        m_camera->port.resetCounters();
        m_view->viewport()->repaint();
        m_view->SetFilter(0, QStringLiteral("wid"));
        QCOMPARE(m_camera->port.reads, 0u);
        QVERIFY(isShown("Width") && !isShown("Gain"));
        QVERIFY(!m_model->isEditable(m_model->getItem(width)));
        QCOMPARE(m_model->getItem(width)->data(1).toInt(), 48);
        m_view->updateViewItemVisiable(m_model->index(0, 0));
        click("Width");
        QVERIFY2(!editor<QLineEdit>() && !editor<QAbstractSpinBox>(), "no editor opens");
        QCOMPARE(FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")).size(), 1);
        m_camera->port.readFault = MemoryPort::Fault::None;
        QTRY_VERIFY(m_reading->hasTime());
        m_view->viewport()->repaint();
        QTRY_COMPARE(m_model->getItem(width)->cell().value.toInt(), 64);
        QVERIFY(m_model->isEditable(m_model->getItem(width)));
    }

    /// What is being typed outlives the silence; the row that it is in is the first one that finds out.
    void typedTextIsKept()
    {
        QTRY_VERIFY(!m_reading->isBusy());
        click("Uncached");
        auto *const field = editor<QAbstractSpinBox>();
        QVERIFY(field);
        QTest::keyClicks(field, QStringLiteral("7"));
        m_camera->port.readFault = MemoryPort::Fault::Timeout;
        m_camera->map->InvalidateNodes();
        QTRY_VERIFY_WITH_TIMEOUT(m_reading->isSilent(), 3000);
        QTest::qWait(1200); // a beat of the view
        QCOMPARE(editor<QAbstractSpinBox>(), field);
        QVERIFY(field->text().contains(QLatin1Char('7')));
    }

    /// Rows that come into view for the first time in the silence show the values of the opening.
    void firstSeenInSilence()
    {
        m_view->hide();
        QTRY_VERIFY(!m_reading->isBusy());
        m_camera->port.readFault = MemoryPort::Fault::Timeout;
        m_camera->map->InvalidateNodes();
        QVERIFY_EXCEPTION_THROWN(m_reading->read(m_camera->node("Width"), [] { throw TIMEOUT_EXCEPTION("no answer"); }),
                                 GenICam::TimeoutException);
        const std::pair<const char *, const char *> rows[] = {{"Width", "48"}, {"Power", "False"}, {"Flags", "0xff"}};
        for (const auto &[name, text] : rows)
            QVERIFY2(m_model->getItem(cell(name))->cell().value.toString().startsWith(QLatin1String(text)),
                     qPrintable(m_model->getItem(cell(name))->cell().value.toString()));
    }

private:
    void makeSlow()
    {
        make(true);
        m_camera->port.latency = 50us; // the device keeps its reader waiting
        m_reading = std::make_unique<DeviceReading>(strict());
        m_model = std::make_unique<TreeModel>(QStringList{QStringLiteral("Feature"), QStringLiteral("Value")},
                                              m_camera->nodes());
        m_model->setReading(m_reading.get());
        m_model->AddModelData(m_camera->nodes(), QString());
        m_view->setModel(m_model.get());
        m_view->expandAll();
        m_view->SetFilter(0, QString());
    }

    std::unique_ptr<DeviceReading> m_reading;
};

QTEST_MAIN(tst_SlowTree)
#include "tst_SlowTree.moc"
