// SPDX-License-Identifier: MIT
#include <QComboBox>
#include <QPointer>
#include <QPushButton>

#include "FeatureTree/IntegerSpinBox.h"
#include "ShownTree.h"
#include "TestRows.h"

namespace {

const struct
{
    const char *name;
    const char *current; ///< the row where the keyboard goes on; null for none
    bool isKept; ///< what was typed
    void (*change)(FeatureTreeView &tree, const QModelIndex &index);
} Vanishings[] = {
    {"its category is folded", "Access", true,
     [](FeatureTreeView &tree, const QModelIndex &index) { tree.collapse(index.parent()); }},
    {"all is folded", "Access", true, [](FeatureTreeView &tree, const QModelIndex &) { tree.expandToDepth(0); }},
    {"another category is folded", "Fragile", true,
     [](FeatureTreeView &tree, const QModelIndex &index) { tree.collapse(index.parent().siblingAtRow(1)); }},
    {"rows beside it stay", "Uncached", false,
     [](FeatureTreeView &tree, const QModelIndex &) { tree.SetFilter(0, QStringLiteral("unc")); }},
    {"its category is hidden", "Kinds", false,
     [](FeatureTreeView &tree, const QModelIndex &) { tree.SetFilter(0, QStringLiteral("sindata")); }},
    {"nothing is shown", nullptr, false,
     [](FeatureTreeView &tree, const QModelIndex &) { tree.SetFilter(0, QStringLiteral("no such feature")); }},
};

const struct
{
    const char *name;
} Lists[] = {{"Selector"}, {"GatedSelector"}}; // which hides others, and itself

} // namespace

/// Which rows the tree shows, when it looks again, and where that leaves the keyboard.
class tst_ShownRows : public QObject, private ShownTree
{
    Q_OBJECT

private Q_SLOTS:
    void init() { open(); }
    void cleanup() { close(); }

    /// A category goes with its last shown feature.
    void filters()
    {
        const auto shown = [this](const char *filter, int level = 0) {
            m_view->SetFilter(level, QLatin1String(filter));
            QByteArray names;
            for (const char *name : {"Gain", "WriteOnlyGain", "Width", "Deeper", "Kinds", "Experts", "Expert", "Guru"})
                names += isShown(name) ? QByteArray(name) + ' ' : QByteArray();
            return names;
        };
        QCOMPARE(shown("GAIN"), QByteArray("Gain WriteOnlyGain "));
        QCOMPARE(shown("no such feature"), QByteArray());
        QVERIFY(m_view->isRowHidden(0, QModelIndex()));
        QCOMPARE(shown(""), QByteArray("Gain WriteOnlyGain Width Deeper Kinds "));
        QCOMPARE(shown("e", 1), QByteArray("WriteOnlyGain Kinds Experts Expert "));
        QCOMPARE(shown("gu", 2), QByteArray("Experts Guru "));
    }

    void availabilityIsReadOncePerPass()
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
        for (const bool isOn : {true, false}) {
            m_camera->port.poke(TestCamera::Switch, isOn);
            m_view->collapse(cell("Access", 0));
            m_view->expand(cell("Access", 0));
            QCOMPARE(isShown("Gated"), isOn);
        }
        QVERIFY(!isShown("GatedToo"));
        QVERIFY(!isShown("Temperature"));
    }

    /// What is switched may be anywhere in the tree, whichever row is the current one.
    void aPassFollowsEveryWrite()
    {
        using Write = std::tuple<const char *, QVariant, int>;
        for (const auto &[name, value, address] :
             {Write("Selector", QStringLiteral("Alpha"), TestCamera::Selector), Write("Power", true, TestCamera::Power),
              Write("Width", 52, TestCamera::Width), Write("Gain", 2.5, TestCamera::Gain),
              Write("Label", QStringLiteral("x"), TestCamera::Label)}) {
            for (const bool isOn : {false, true}) {
                m_camera->port.onWrite[address] = [isOn](MemoryPort &port) { port.poke(TestCamera::Switch, isOn); };
                m_view->setCurrentIndex(isOn ? m_model->index(0, 0) : cell(name, 0));
                QVERIFY(m_model->setData(cell(name), value, Qt::EditRole));
                QVERIFY2(isShown("Gated") == isOn, name);
            }
        }
    }

    void aPassFollowsEveryCommand()
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
    void onePassForAllThatChanges()
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

    void choiceThatHidesRows_data() { addRows(Lists); }

    /// The rows are laid out anew while the tree paints; the editor moves along, or goes with its row.
    void choiceThatHidesRows()
    {
        const char *const list = currentRow(Lists).name;
        m_camera->port.onWrite[TestCamera::Selector] = [](MemoryPort &port) { port.poke(TestCamera::Switch, 0); };
        click(list);
        QPointer<QComboBox> box = editor<QComboBox>();
        QVERIFY(box);
        QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(m_camera->port.writes, 1u);
        QTRY_VERIFY(!m_view->visualRect(cell("Gated")).isValid());
        m_view->viewport()->repaint();
        if (list == Lists[1].name) {
            QTRY_VERIFY(!box);
            QVERIFY(m_view->hasFocus());
            QCOMPARE(m_view->currentIndex(), cell("Label", 0));
        } else {
            QCOMPARE(box->geometry(), m_view->visualRect(cell(list)));
            QVERIFY(box->hasFocus());
        }
        QCOMPARE(m_camera->port.writes, 1u);
    }

    void keyboardStaysNearAVanishedRow_data() { addRows(Vanishings); }

    /// What was typed waits in a folded category, and is dropped with a row that is hidden.
    void keyboardStaysNearAVanishedRow()
    {
        const auto &row = currentRow(Vanishings);
        m_camera->port.poke(TestCamera::Fragile, 0x20);
        click("Fragile");
        const QPointer<IntegerSpinBox> box = editor<IntegerSpinBox>();
        QVERIFY(box);
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("33"));
        const bool stays = qstrcmp(row.current, "Fragile") == 0;
        row.change(*m_view, cell("Fragile", 0));
        QTRY_COMPARE(box.isNull(), !row.isKept);
        QCOMPARE(m_camera->port.writes, 0u);
        QCOMPARE(m_view->currentIndex(), row.current ? cell(row.current, stays ? 1 : 0) : QModelIndex());
        QVERIFY(stays ? box->hasFocus() : m_view->hasFocus());
        QVERIFY(!row.isKept || box->text() == QLatin1String("33"));
    }

    /// Searching leaves the current row alone until the keyboard comes back to the tree.
    void keyboardComesBackNearAHiddenRow()
    {
        m_view->setCurrentIndex(cell("Fragile", 0));
        m_view->SetFilter(0, QStringLiteral("unc"));
        QCOMPARE(m_view->currentIndex(), cell("Fragile", 0));
        m_view->setFocus();
        QCOMPARE(m_view->currentIndex(), cell("Uncached", 0));
    }
};

QTEST_MAIN(tst_ShownRows)
#include "tst_ShownRows.moc"
