// SPDX-License-Identifier: MIT
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTextBrowser>
#include <QToolButton>
#include <QtTest>

#include "CuratedPanel.h"
#include "FeatureTree/FeatureTreeView.h"
#include "FeatureTree/TreeModel.h"
#include "PanelDescription.h"
#include "ParamterWidget/AttributeTab.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ToolPage/SwitchButton.h"
#include "support/FakeHostCore.h"
#include "support/FatalMessages.h"

/// The attribute tab as a person uses it: through the widgets of a panel.
class tst_AttributeTab : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void levelTexts_data();
    void levelTexts();
    void opensWithTheStoredLevel();
    void choosingALevel();
    void languageKeepsTheLevel();
    void languageKeepsTheDescription();
    void searchUnfoldsLevelDoesNot();
    void withoutNodeMapOnlyTheLevelIsStored();
    void cardsAskForTheirOwnNodeMap();
    void describesTheSelectedFeature();
    void rowsWithoutNodeLeaveThePane();
    void buildingAgainFreesTheModel();
    void downLeadsFromTheSearchIntoTheTree();
    void editorOpenWhilePanelGoes();
    void followsThePages_data();
    void followsThePages();

private:
    void open(const char *storedLevel = "0");
    /// The names of the features (not categories) whose rows are shown, in tree order.
    QStringList shownFeatures(const QModelIndex &parent = QModelIndex()) const;
    QModelIndex indexOf(const QString &name) const;
    /// Those with children.
    int expandedRows(const QModelIndex &parent = QModelIndex()) const;

    FakeHostCore &m_host = FakeHostCore::instance();
    std::unique_ptr<FatalMessages> m_messages;
    std::unique_ptr<PanelCamera> m_camera;
    std::unique_ptr<ParamterWidget> m_panel;
    FeatureTreeView *m_tree = nullptr;
    QComboBox *m_level = nullptr;
    QLineEdit *m_search = nullptr;
    QToolButton *m_fold = nullptr;
    QTextBrowser *m_pane = nullptr;
};

using PanelAction = std::function<void(CuratedPanel &)>;
Q_DECLARE_METATYPE(PanelAction)
Q_DECLARE_METATYPE(PageSet)

namespace {

const QStringList BeginnerFeatures = {
    QStringLiteral("Width"),   QStringLiteral("WidthMax"),       QStringLiteral("Flags"),     QStringLiteral("Height"),
    QStringLiteral("GainRaw"), QStringLiteral("ExposureTime"),   QStringLiteral("FrameRate"), QStringLiteral("Mode"),
    QStringLiteral("Name"),    QStringLiteral("TriggerSoftware")};

} // namespace

void tst_AttributeTab::init()
{
    m_host.reset();
    m_messages = std::make_unique<FatalMessages>();
    m_camera = std::make_unique<PanelCamera>();
    m_host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", m_camera->map);
    m_host.setCameraInfo("cam", HostCore::CAM_INFO_TYPE_CODE, "4");
}

void tst_AttributeTab::cleanup()
{
    m_panel.reset();
    m_camera.reset();
    m_messages.reset();
}

void tst_AttributeTab::open(const char *storedLevel)
{
    m_host.setParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, storedLevel);
    m_panel = std::make_unique<ParamterWidget>();
    m_panel->initUI(QStringLiteral("cam"));
    m_tree = m_panel->findChild<FeatureTreeView *>();
    m_level = m_panel->findChild<QComboBox *>(QStringLiteral("cboboxLevel"));
    m_search = m_panel->findChild<QLineEdit *>(QStringLiteral("edit_search"));
    m_fold = m_panel->findChild<QToolButton *>(QStringLiteral("toolButton"));
    m_pane = m_panel->findChild<QTextBrowser *>();
    m_host.clearCalls();
}

QStringList tst_AttributeTab::shownFeatures(const QModelIndex &parent) const
{
    QStringList names;
    const QAbstractItemModel *const model = m_tree->model();
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex index = model->index(row, 0, parent);
        if (m_tree->isRowHidden(row, parent))
            continue;
        if (model->hasChildren(index))
            names += shownFeatures(index);
        else
            names << index.data().toString();
    }
    return names;
}

QModelIndex tst_AttributeTab::indexOf(const QString &name) const
{
    const QAbstractItemModel *const model = m_tree->model();
    return model->match(model->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive).value(0);
}

int tst_AttributeTab::expandedRows(const QModelIndex &parent) const
{
    int count = 0;
    for (int row = 0; row < m_tree->model()->rowCount(parent); ++row) {
        const QModelIndex index = m_tree->model()->index(row, 0, parent);
        count += (m_tree->isExpanded(index) && m_tree->model()->hasChildren(index) ? 1 : 0) + expandedRows(index);
    }
    return count;
}

void tst_AttributeTab::levelTexts_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<int>("level");
    QTest::newRow("Guru") << QByteArray("2") << 2;
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("leading blanks") << QByteArray(" \t1") << 1;
    QTest::newRow("trailing text") << QByteArray("1x") << 1;
    QTest::newRow("sign") << QByteArray("+2") << 2;
    QTest::newRow("no number") << QByteArray("Guru") << 0;
    QTest::newRow("too high") << QByteArray("3") << 2;
    QTest::newRow("negative") << QByteArray("-1") << 0;
    QTest::newRow("huge") << QByteArray("99999999999999999999999") << 2;
    QTest::newRow("hugely negative") << QByteArray("-99999999999999999999999") << 0;
    QTest::newRow("beyond 32 bits") << QByteArray("4294967296") << 2;
    QTest::newRow("hexadecimal") << QByteArray("0x2") << 0;
}

void tst_AttributeTab::levelTexts()
{
    QFETCH(QByteArray, stored);
    QTEST(attributeLevelFromText(stored.toStdString()), "level");
}

void tst_AttributeTab::opensWithTheStoredLevel()
{
    const QStringList experts = {QStringLiteral("Gamma")};
    const QStringList all = {QStringLiteral("BlackLevel"), QStringLiteral("Gamma"), QStringLiteral("Secret")};
    const std::pair<const char *, QStringList> levels[] = {{"", {}}, {"1", experts}, {"7", all}};
    for (const auto &[stored, more] : levels) {
        open(stored);
        QStringList expected = BeginnerFeatures + more;
        QStringList actual = shownFeatures();
        actual.sort();
        expected.sort();
        QCOMPARE(actual, expected);
        QCOMPARE(m_level->currentIndex(), attributeLevelFromText(stored));
        QCOMPARE(m_host.callsTo(QStringLiteral("SetParamterInfo")), QStringList());
        QCOMPARE(m_tree->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
        QCOMPARE(expandedRows(), 1);
    }
}

void tst_AttributeTab::choosingALevel()
{
    open("2");
    QVERIFY(shownFeatures().contains(QStringLiteral("Secret")));
    m_level->setCurrentIndex(0);
    QCOMPARE(shownFeatures(), BeginnerFeatures);
    QCOMPARE(m_host.callsTo(QStringLiteral("SetParamterInfo")),
             QStringList({QStringLiteral("SetParamterInfo(24, 0)")}));

    m_host.setParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, "1");
    m_panel->updateAttributeLevel();
    QVERIFY(shownFeatures().contains(QStringLiteral("Gamma")));

    open("2");
    m_panel->retranslate(1); // selects the first level; meanwhile another panel stored it
    m_host.setParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, "0");
    m_panel->updateAttributeLevel();
    QCOMPARE(shownFeatures(), BeginnerFeatures);
}

/// New texts select the first level without a choice: neither the tree nor the host follows it, unless it is chosen.
void tst_AttributeTab::languageKeepsTheLevel()
{
    const auto stored = [this] { return m_host.paramterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL); };
    open("2");
    m_panel->retranslate(1);
    QCOMPARE(m_level->currentIndex(), 0);
    m_search->setText(QStringLiteral("s"));
    QCOMPARE(stored(), std::string("2"));
    QCOMPARE(m_level->currentIndex(), 2);
    QVERIFY(shownFeatures().contains(QStringLiteral("Secret")));

    m_panel->retranslate(0);
    Q_EMIT m_level->activated(0);
    QCOMPARE(stored(), std::string("0"));
    QVERIFY(!shownFeatures().contains(QStringLiteral("Secret")));
    m_search->clear();
    QCOMPARE(stored(), std::string("0"));

    m_panel->retranslate(1);
    m_level->setCurrentIndex(1);
    m_search->setText(QStringLiteral("gam"));
    QCOMPARE(stored(), std::string("1"));
}

/// What was selected last is described, in the language of the panel where there is one.
void tst_AttributeTab::languageKeepsTheDescription()
{
    m_messages.reset();
    CuratedPanel curated;
    auto *const tree = curated.panel->findChild<FeatureTreeView *>();
    auto *const pane = curated.panel->findChild<QTextBrowser *>();
    ToolPageWidgetItem *const row = curated.row("Gain Auto");
    QVERIFY(row);
    Q_EMIT row->itemClicked();
    tree->setCurrentIndex(tree->model()->index(0, 0, tree->model()->index(0, 0)));
    const QString feature = pane->toPlainText();
    QVERIFY2(feature.startsWith(QStringLiteral("AcquisitionFrameRateEnable")), qPrintable(feature));
    curated.panel->retranslate(1);
    QCOMPARE(pane->toPlainText(), feature);
    Q_EMIT row->itemClicked();
    QCOMPARE(pane->toPlainText(), row->getDescription(1));
    curated.panel->retranslate(0);
    QCOMPARE(pane->toPlainText(), row->getDescription(0));
}

void tst_AttributeTab::searchUnfoldsLevelDoesNot()
{
    open();
    m_level->setCurrentIndex(1);
    QCOMPARE(expandedRows(), 1);
    QCOMPARE(m_fold->text(), QStringLiteral("Expand"));
    QCOMPARE(m_fold->property("collapse"), QVariant(true));
    m_fold->click();
    QCOMPARE(expandedRows(), 4);
    m_fold->click();
    QCOMPARE(expandedRows(), 1);

    m_search->setText(QStringLiteral("widt"));
    QCOMPARE(shownFeatures(), QStringList({QStringLiteral("Width"), QStringLiteral("WidthMax")}));
    QCOMPARE(m_fold->text(), QStringLiteral("Collapse"));
    QCOMPARE(m_fold->property("collapse"), QVariant(false));
    QCOMPARE(expandedRows(), 5);
    m_fold->click();
    QCOMPARE(m_fold->text(), QStringLiteral("Expand"));
    m_level->setCurrentIndex(0);
    QCOMPARE(m_fold->text(), QStringLiteral("Expand"));
    QCOMPARE(expandedRows(), 1);
    m_search->clear();
    QCOMPARE(shownFeatures(), BeginnerFeatures);
}

void tst_AttributeTab::withoutNodeMapOnlyTheLevelIsStored()
{
    open();
    m_host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", nullptr);
    m_search->setText(QStringLiteral("gain"));
    m_level->setCurrentIndex(2);
    QCOMPARE(shownFeatures(), BeginnerFeatures);
    QCOMPARE(m_fold->text(), QStringLiteral("Expand"));
    QCOMPARE(m_host.callsTo(QStringLiteral("SetParamterInfo")),
             QStringList({QStringLiteral("SetParamterInfo(24, 0)"), QStringLiteral("SetParamterInfo(24, 2)")}));
}

void tst_AttributeTab::cardsAskForTheirOwnNodeMap()
{
    m_host.setNodeMap(HostCore::FOCUS_CARD, "card", m_camera->map);
    m_panel = std::make_unique<ParamterWidget>();
    m_panel->setCard(true);
    m_panel->initUI(QStringLiteral("card"));
    m_host.clearCalls();
    m_panel->findChild<QLineEdit *>(QStringLiteral("edit_search"))->setText(QStringLiteral("a"));
    QCOMPARE(m_host.callsTo(QStringLiteral("GetAttrNodeMap")),
             QStringList({QStringLiteral("GetAttrNodeMap(2, card, 3)")}));
}

void tst_AttributeTab::describesTheSelectedFeature()
{
    open();
    m_tree->expandAll();
    m_tree->setCurrentIndex(indexOf(QStringLiteral("Width")));
    QString text = m_pane->toPlainText();
    QVERIFY2(text.startsWith(QStringLiteral("Width\nWidth of the image <in pixels>, 宽度.")), qPrintable(text));
    QVERIFY(text.trimmed().endsWith(QStringLiteral("Unit: px")));

    m_tree->setCurrentIndex(indexOf(QStringLiteral("Flags")));
    text = m_pane->toPlainText();
    QVERIFY(text.startsWith(QStringLiteral("Flags")));
    QVERIFY(!text.contains(QStringLiteral("Min:")));
}

void tst_AttributeTab::rowsWithoutNodeLeaveThePane()
{
    open();
    m_tree->setCurrentIndex(indexOf(QStringLiteral("Analog")));
    const QString before = m_pane->toHtml();
    m_tree->model()->insertRows(0, 1, indexOf(QStringLiteral("Analog")));
    m_tree->setCurrentIndex(m_tree->model()->index(0, 0, indexOf(QStringLiteral("Analog"))));
    QVERIFY(m_tree->currentIndex().isValid());
    QCOMPARE(m_pane->toHtml(), before);
    m_panel->onSigSelectItemClick(QModelIndex());
    QCOMPARE(m_pane->toHtml(), before);
}

void tst_AttributeTab::buildingAgainFreesTheModel()
{
    open();
    const QPointer<QAbstractItemModel> before = m_tree->model();
    m_panel->parameterTreeViewInit(m_camera->map);
    QVERIFY(before.isNull());
    QCOMPARE(shownFeatures(), BeginnerFeatures);
    const QPointer<QAbstractItemModel> last = m_tree->model();
    m_panel.reset();
    QVERIFY(last.isNull());
}

void tst_AttributeTab::downLeadsFromTheSearchIntoTheTree()
{
    open();
    m_panel->show();
    QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
    m_search->setFocus();
    QTest::keyClick(m_search, Qt::Key_Down);
    QVERIFY(m_tree->hasFocus());
    QCOMPARE(m_tree->currentIndex(), m_tree->model()->index(0, 0));
    QVERIFY(m_tree->selectionModel()->isSelected(m_tree->currentIndex()));
}

void tst_AttributeTab::editorOpenWhilePanelGoes()
{
    open();
    m_panel->show();
    QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
    const auto typeInto = [this](const QString &name) {
        m_tree->expandAll();
        m_tree->setCurrentIndex(indexOf(name).siblingAtColumn(1));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("1"));
        return QApplication::focusWidget()->parentWidget() == m_tree->viewport();
    };
    m_camera->port.resetCounters();
    QVERIFY(typeInto(QStringLiteral("Width")));
    m_panel->parameterTreeViewInit(m_camera->map);
    QVERIFY(typeInto(QStringLiteral("Width")));
    m_panel->setParamterViewDisable();
    m_search->setFocus();
    QCOMPARE(m_camera->port.writes, 0U);
    GenApi::INodeMap *const gone = m_camera->map;
    m_camera.reset();
    m_panel->parameterTreeViewInit(gone);
    m_panel.reset();
}

void tst_AttributeTab::followsThePages_data()
{
    QTest::addColumn<PageSet>("pages");
    QTest::addColumn<PanelAction>("action");
    QTest::addColumn<bool>("follows");
    const auto row = [](const char *name, PageSet pages, const PanelAction &action, bool follows = true) {
        QTest::newRow(name) << pages << action << follows;
    };
    row(
        "nothing", PageSet::AreaScan, [](CuratedPanel &) {}, false);
    row("a row", PageSet::AreaScan, [](CuratedPanel &panel) { panel.editor<SwitchButton>("ReverseX")->click(); });
    row("a command", PageSet::AreaScan, [](CuratedPanel &panel) { panel.editor<QPushButton>("UserSetSave")->click(); });
    row("a user set", PageSet::AreaScan, [](CuratedPanel &panel) { panel.panel->onUserSetLoadButtonClicked(); });
    row("the whole image", PageSet::AreaScan,
        [](CuratedPanel &panel) { panel.panel->onResetImageSizeButtonClicked(); });
    row("a drawn region", PageSet::AreaScan, [](CuratedPanel &panel) { panel.panel->onExecDrawButtonClicked(); });
    row("a number by name", PageSet::AreaScan,
        [](CuratedPanel &panel) { panel.panel->setCameraNodeValue(QStringLiteral("Width"), 640); });
    row("an import", PageSet::AreaScan, [](CuratedPanel &panel) { panel.panel->updateWidget(true); });
    row("an image that is sent", PageSet::StructuredLight,
        [](CuratedPanel &panel) { panel.panel->on2DGrabOutputChanged(0, true); });
    row("interlocked writes", PageSet::Profiler, [](CuratedPanel &panel) {
        auto *const mode = panel.editor<QComboBox>("TriggerMode");
        mode->setCurrentIndex(1 - mode->currentIndex());
    });
}

/// What is switched on the curated pages shows in the tree as soon as it is seen.
void tst_AttributeTab::followsThePages()
{
    QFETCH(PageSet, pages);
    QFETCH(PanelAction, action);
    QFETCH(bool, follows);
    m_messages.reset();
    CuratedFeatures features = pages == PageSet::Profiler ? profilerFeatures() : structuredLightFeatures();
    features.push_back({"Integer", "Switch", ""});
    features.push_back({"Integer", "Gated", "<pIsAvailable>SwitchReg</pIsAvailable>"});
    CuratedPanel curated(features, pages,
                         [](CuratedPanel &panel) { panel.camera.port.poke(panel.camera.address("Switch"), 1); });
    curated.panel->show();
    auto *const tree = curated.panel->findChild<FeatureTreeView *>();
    const auto isHidden = [&] {
        const QModelIndex root = tree->model()->index(0, 0);
        return tree->isRowHidden(tree->model()->rowCount(root) - 1, root);
    };
    auto *const tabs = curated.panel->findChild<QTabWidget *>(QStringLiteral("tabMainWidget"));
    tabs->setCurrentIndex(1); // what opening has written is followed
    tabs->setCurrentIndex(0);
    QVERIFY(!isHidden());
    curated.camera.port.poke(curated.camera.address("Switch"), 0);
    action(curated);
    tabs->setCurrentIndex(1);
    QVERIFY(tree->isVisible());
    QCOMPARE(isHidden(), follows);
}

QTEST_MAIN(tst_AttributeTab)
#include "tst_AttributeTab.moc"
