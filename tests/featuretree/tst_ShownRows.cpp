// SPDX-License-Identifier: MIT
#include <functional>

#include <QApplication>
#include <QComboBox>
#include <QPointer>
#include <QPushButton>
#include <QtTest>

#include "FeatureTree/IntegerSpinBox.h"
#include "ShownTree.h"

Q_DECLARE_METATYPE(std::function<void(FeatureTreeView &, const QModelIndex &)>)

/// Which rows the tree shows, when it looks again, and where that leaves the keyboard.
class tst_ShownRows : public QObject, private ShownTree
{
    Q_OBJECT

private Q_SLOTS:
    void init() { open(); }
    void cleanup() { close(); }
    void levels();
    void filters();
    void availabilityIsReadOncePerPass();
    void aPassFollowsEveryWrite_data();
    void aPassFollowsEveryWrite();
    void aPassFollowsEveryCommand();
    void onePassForAllThatChanges();
    void choiceThatHidesRows_data();
    void choiceThatHidesRows();
    void keyboardStaysNearAVanishedRow_data();
    void keyboardStaysNearAVanishedRow();
    void keyboardComesBackNearAHiddenRow();
};

/// A category goes with its last shown feature.
void tst_ShownRows::levels()
{
    const QStringList levels[] = {{},
                                  {QStringLiteral("Experts"), QStringLiteral("Expert")},
                                  {QStringLiteral("Experts"), QStringLiteral("Expert"), QStringLiteral("Guru")}};
    for (int level = 0; level <= 2; ++level) {
        m_view->SetFilter(level, QString());
        QVERIFY(isShown("Width"));
        QStringList shown;
        for (const char *name : {"Experts", "Expert", "Guru"}) {
            if (isShown(name))
                shown << QLatin1String(name);
        }
        QCOMPARE(shown, levels[level]);
    }
}

void tst_ShownRows::filters()
{
    m_view->SetFilter(0, QStringLiteral("GAIN"));
    QVERIFY(isShown("Gain"));
    QVERIFY(isShown("WriteOnlyGain"));
    QVERIFY(!isShown("Width"));
    QVERIFY(!isShown("Deeper"));
    QVERIFY(!isShown("Kinds"));
    m_view->SetFilter(0, QStringLiteral("no such feature"));
    QVERIFY(m_view->isRowHidden(0, QModelIndex()));
    m_view->SetFilter(0, QString());
    QVERIFY(isShown("Width"));
    QVERIFY(isShown("Deeper"));
    QVERIFY(isShown("Kinds"));
}

void tst_ShownRows::availabilityIsReadOncePerPass()
{
    m_view->SetFilter(0, QStringLiteral("g"));
    QCOMPARE(m_camera->port.readsOf(TestCamera::Switch), 1u);
    QVERIFY(isShown("Gated"));
    m_camera->port.poke(TestCamera::Switch, 0);
    m_view->collapseAll();
    m_camera->port.resetCounters();
    m_view->expandAll();
    QCOMPARE(m_camera->port.readsOf(TestCamera::Switch), 1u);
    QVERIFY(!isShown("Gated"));
    m_camera->port.poke(TestCamera::Switch, 1);
    m_view->collapse(cell("Access", 0));
    m_view->expand(cell("Access", 0));
    QVERIFY(isShown("Gated"));
    m_camera->port.poke(TestCamera::Switch, 0);
    m_view->collapse(cell("Access", 0));
    m_view->expand(cell("Access", 0));
    QVERIFY(!isShown("Gated"));
    QVERIFY(!isShown("GatedToo"));
    QVERIFY(!isShown("Temperature"));
}

void tst_ShownRows::aPassFollowsEveryWrite_data()
{
    QTest::addColumn<QByteArray>("feature");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("address");
    QTest::newRow("entry") << QByteArray("Selector") << QVariant(QStringLiteral("Alpha")) << int(TestCamera::Selector);
    QTest::newRow("boolean") << QByteArray("Power") << QVariant(true) << int(TestCamera::Power);
    QTest::newRow("integer") << QByteArray("Width") << QVariant(52) << int(TestCamera::Width);
    QTest::newRow("float") << QByteArray("Gain") << QVariant(2.5) << int(TestCamera::Gain);
    QTest::newRow("text") << QByteArray("Label") << QVariant(QStringLiteral("x")) << int(TestCamera::Label);
}

/// What is switched may be anywhere in the tree, whichever row is the current one.
void tst_ShownRows::aPassFollowsEveryWrite()
{
    QFETCH(QByteArray, feature);
    QFETCH(QVariant, value);
    QFETCH(int, address);
    quint64 isOn = 0;
    m_camera->port.onWrite[address] = [&isOn](MemoryPort &port) { port.poke(TestCamera::Switch, isOn); };
    m_view->setCurrentIndex(cell(feature, 0));
    QVERIFY(m_model->setData(cell(feature), value, Qt::EditRole));
    QVERIFY(!isShown("Gated"));
    m_view->setCurrentIndex(m_model->index(0, 0));
    isOn = 1;
    QVERIFY(m_model->setData(cell(feature), value, Qt::EditRole));
    QVERIFY(isShown("Gated"));
}

void tst_ShownRows::aPassFollowsEveryCommand()
{
    for (const auto &[name, address] :
         {std::pair("Start", TestCamera::Start), std::pair("TriggerSoftware", TestCamera::TriggerSoftware)}) {
        m_camera->port.poke(TestCamera::Switch, 1);
        m_view->SetFilter(0, QString());
        m_camera->port.onWrite[address] = [](MemoryPort &port) { port.poke(TestCamera::Switch, 0); };
        QPushButton *button = openCommand(name);
        QVERIFY(button);
        QTest::mouseClick(button, Qt::LeftButton);
        QTRY_VERIFY2(!isShown("Gated"), name);
    }
}

/// Changes beside the tree are counted together, those behind other pages longer, or until the tree is seen.
void tst_ShownRows::onePassForAllThatChanges()
{
    const auto change = [this](quint64 isOn) {
        m_camera->port.poke(TestCamera::Switch, isOn);
        m_camera->port.resetCounters();
        for (int i = 0; i < 3; ++i)
            m_view->adoptDeviceChange();
    };
    change(0);
    QCOMPARE(m_camera->port.readsOf(TestCamera::Switch), 0u);
    QTRY_VERIFY(!isShown("Gated"));
    QCOMPARE(m_camera->port.readsOf(TestCamera::Switch), 1u);
    m_view->hide();
    change(1);
    QCoreApplication::processEvents();
    QCOMPARE(m_camera->port.readsOf(TestCamera::Switch), 0u);
    m_view->show();
    QVERIFY(isShown("Gated"));
    QCoreApplication::processEvents();
    m_view->hide();
    m_view->show();
    QCOMPARE(m_camera->port.readsOf(TestCamera::Switch), 1u);
    m_view->hide();
    change(0);
    QTRY_VERIFY(!isShown("Gated"));
    m_view->show();
    QCOMPARE(m_camera->port.readsOf(TestCamera::Switch), 1u);
}

void tst_ShownRows::choiceThatHidesRows_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<QByteArray>("editedAfterwards");
    QTest::newRow("others") << QByteArray("Selector") << QByteArray("Selector");
    QTest::newRow("its own") << QByteArray("GatedSelector") << QByteArray();
}

/// The rows are laid out anew while the tree paints; the editor moves along, or goes with its row.
void tst_ShownRows::choiceThatHidesRows()
{
    QFETCH(QByteArray, list);
    QFETCH(QByteArray, editedAfterwards);
    m_camera->port.onWrite[TestCamera::Selector] = [](MemoryPort &port) { port.poke(TestCamera::Switch, 0); };
    click(list);
    QPointer<QComboBox> box = editor<QComboBox>();
    QVERIFY(box);
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(m_camera->port.writes, 1u);
    QTRY_VERIFY(!m_view->visualRect(cell("Gated")).isValid());
    m_view->viewport()->repaint();
    if (editedAfterwards.isEmpty()) {
        QTRY_VERIFY(!box);
        QVERIFY(m_view->hasFocus());
        QCOMPARE(m_view->currentIndex(), cell("Label", 0));
    } else {
        QCOMPARE(box->geometry(), m_view->visualRect(cell(editedAfterwards)));
        QVERIFY(box->hasFocus());
    }
    QCOMPARE(m_camera->port.writes, 1u);
}

void tst_ShownRows::keyboardStaysNearAVanishedRow_data()
{
    using Change = std::function<void(FeatureTreeView &, const QModelIndex &)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<QByteArray>("current");
    QTest::addColumn<bool>("isKept");
    const auto row = [](const char *name, const char *current, bool isKept, const Change &change) {
        QTest::newRow(name) << change << QByteArray(current) << isKept;
    };
    row("its category is folded", "Access", true,
        [](FeatureTreeView &tree, const QModelIndex &index) { tree.collapse(index.parent()); });
    row("all is folded", "Access", true, [](FeatureTreeView &tree, const QModelIndex &) { tree.expandToDepth(0); });
    row("another category is folded", "Fragile", true,
        [](FeatureTreeView &tree, const QModelIndex &index) { tree.collapse(index.parent().siblingAtRow(1)); });
    row("rows beside it stay", "Uncached", false,
        [](FeatureTreeView &tree, const QModelIndex &) { tree.SetFilter(0, QStringLiteral("unc")); });
    row("its category is hidden", "Kinds", false,
        [](FeatureTreeView &tree, const QModelIndex &) { tree.SetFilter(0, QStringLiteral("sindata")); });
    row("nothing is shown", "", false,
        [](FeatureTreeView &tree, const QModelIndex &) { tree.SetFilter(0, QStringLiteral("no such feature")); });
}

/// What was typed waits in a folded category, and is dropped with a row that is hidden.
void tst_ShownRows::keyboardStaysNearAVanishedRow()
{
    using Change = std::function<void(FeatureTreeView &, const QModelIndex &)>;
    QFETCH(Change, change);
    QFETCH(QByteArray, current);
    QFETCH(bool, isKept);
    m_camera->port.poke(TestCamera::Fragile, 0x20);
    click("Fragile");
    const QPointer<IntegerSpinBox> box = editor<IntegerSpinBox>();
    QVERIFY(box);
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("33"));
    const bool stays = current == "Fragile";
    change(*m_view, cell("Fragile", 0));
    QTRY_COMPARE(box.isNull(), !isKept);
    QCOMPARE(m_camera->port.writes, 0u);
    QCOMPARE(m_view->currentIndex(), current.isEmpty() ? QModelIndex() : cell(current, stays ? 1 : 0));
    QVERIFY(stays ? box->hasFocus() : m_view->hasFocus());
    QCOMPARE(isKept ? box->text() : QString(), isKept ? QStringLiteral("33") : QString());
}

/// Searching leaves the current row alone until the keyboard comes back to the tree.
void tst_ShownRows::keyboardComesBackNearAHiddenRow()
{
    m_view->setCurrentIndex(cell("Fragile", 0));
    m_view->SetFilter(0, QStringLiteral("unc"));
    QCOMPARE(m_view->currentIndex(), cell("Fragile", 0));
    m_view->setFocus();
    QCOMPARE(m_view->currentIndex(), cell("Uncached", 0));
}

QTEST_MAIN(tst_ShownRows)
#include "tst_ShownRows.moc"
