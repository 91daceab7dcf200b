// SPDX-License-Identifier: MIT
#include <QLineEdit>
#include <QPointer>
#include <QTextBrowser>
#include <QToolButton>

#include "CuratedPanel.h"
#include "FeatureTree/FeatureTreeView.h"
#include "FindRow.h"
#include "PanelCameraFixture.h"
#include "ParamterWidget/AttributeTab.h"

namespace {

const QStringList BeginnerFeatures =
    words("Width WidthMax Flags Height GainRaw ExposureTime FrameRate Mode Name TriggerSoftware");

} // namespace

/// The attribute tab as a person uses it: through the widgets of a panel.
class tst_AttributeTab : public PanelCameraFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        start();
        m_host.setCameraInfo("cam", HostCore::CAM_INFO_TYPE_CODE, "4");
    }
    void cleanup() { end(); }

    void levelTexts()
    {
        for (const auto &[stored, level] :
             {std::pair("2", 2), std::pair("", 0), std::pair(" \t1", 1), std::pair("1x", 1), std::pair("+2", 2),
              std::pair("Guru", 0), std::pair("3", 2), std::pair("-1", 0), std::pair("99999999999999999999999", 2),
              std::pair("-99999999999999999999999", 0), std::pair("4294967296", 2), std::pair("0x2", 0)})
            QCOMPARE(std::pair(stored, attributeLevelFromText(stored)), std::pair(stored, level));
    }

    void opensWithTheStoredLevel()
    {
        for (const auto &[stored, level] : {std::pair("", 0), std::pair("1", 1), std::pair("7", 2)}) {
            open(stored);
            QCOMPARE(m_level->currentIndex(), level);
            QCOMPARE(shownFeatures() == BeginnerFeatures, level == 0);
            QCOMPARE(shownFeatures().contains("Gamma"_s), level > 0);
            QCOMPARE(shownFeatures().contains("Secret"_s), level > 1);
            QCOMPARE(stores(), QStringList());
            QCOMPARE(expandedRows(), 1);
        }
    }

    void choosingALevel()
    {
        open("2");
        QVERIFY(shownFeatures().contains("Secret"_s));
        m_level->setCurrentIndex(0);
        QCOMPARE(shownFeatures(), BeginnerFeatures);
        QCOMPARE(stores(), QStringList("SetParamterInfo(24, 0)"_s));

        m_host.setParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, "1");
        m_panel->updateAttributeLevel();
        QVERIFY(shownFeatures().contains("Gamma"_s));

        open("2");
        m_panel->retranslate(1); // selects the first level; meanwhile another panel stored it
        m_host.setParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, "0");
        m_panel->updateAttributeLevel();
        QCOMPARE(shownFeatures(), BeginnerFeatures);
    }

    /// New texts select the first level without a choice: neither the tree nor the host follows it, unless it is
    /// chosen.
    void languageKeepsTheLevel()
    {
        const auto stored = [this] { return m_host.paramterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL); };
        open("2");
        m_panel->retranslate(1);
        QCOMPARE(m_level->currentIndex(), 0);
        QVERIFY(shownFeatures().contains("Secret"_s));
        m_search->setText("s"_s);
        QCOMPARE(stored(), std::string("2"));
        QCOMPARE(m_level->currentIndex(), 2);
        QVERIFY(shownFeatures().contains("Secret"_s));

        m_panel->retranslate(0);
        Q_EMIT m_level->activated(0);
        QCOMPARE(stored(), std::string("0"));
        QVERIFY(!shownFeatures().contains("Secret"_s));
        m_search->clear();
        QCOMPARE(stored(), std::string("0"));

        m_panel->retranslate(1);
        m_level->setCurrentIndex(1);
        m_search->setText("gam"_s);
        QCOMPARE(stored(), std::string("1"));
    }

    /// What was selected last is described, in the language of the panel where there is one.
    void languageKeepsTheDescription()
    {
        m_messages.reset();
        CuratedPanel curated;
        curated.panel->show();
        auto *const tree = curated.panel->findChild<FeatureTreeView *>();
        auto *const pane = curated.panel->findChild<QTextBrowser *>();
        ToolPageWidgetItem *const row = curated.row("Gain Auto");
        QTest::mousePress(row, Qt::LeftButton, {}, QPoint(2, 2));
        QCOMPARE(pane->toPlainText(), "Sets the automatic gain control (AGC) mode."_s);
        tree->setCurrentIndex(tree->model()->index(0, 0, tree->model()->index(0, 0)));
        const QString feature = pane->toPlainText();
        QVERIFY2(feature.startsWith("AcquisitionFrameRateEnable"_s), qPrintable(feature));
        curated.panel->retranslate(1);
        QCOMPARE(pane->toPlainText(), feature);
        curated.editor<QComboBox>("Gain Auto")->setFocus();
        QTRY_COMPARE(pane->toPlainText(), row->getDescription(1));
        curated.panel->retranslate(0);
        QCOMPARE(pane->toPlainText(), row->getDescription(0));
    }

    void searchUnfoldsLevelDoesNot()
    {
        open();
        m_level->setCurrentIndex(1);
        QCOMPARE(expandedRows(), 1);
        QCOMPARE(m_fold->text(), "Expand"_s);
        QCOMPARE(m_fold->property("collapse"), QVariant(true));
        m_fold->click();
        QCOMPARE(expandedRows(), 4);
        m_fold->click();
        QCOMPARE(expandedRows(), 1);

        m_search->setText("widt"_s);
        QCOMPARE(shownFeatures(), words("Width WidthMax"));
        QCOMPARE(m_fold->text(), "Collapse"_s);
        QCOMPARE(m_fold->property("collapse"), QVariant(false));
        QCOMPARE(expandedRows(), 5);
        m_fold->click();
        QCOMPARE(m_fold->text(), "Expand"_s);
        m_level->setCurrentIndex(0);
        QCOMPARE(m_fold->text(), "Expand"_s);
        QCOMPARE(expandedRows(), 1);
        m_search->clear();
        QCOMPARE(shownFeatures(), BeginnerFeatures);
    }

    void withoutNodeMapOnlyTheLevelIsStored()
    {
        open();
        m_host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", nullptr);
        m_search->setText("gain"_s);
        m_level->setCurrentIndex(2);
        QCOMPARE(shownFeatures(), BeginnerFeatures);
        QCOMPARE(m_fold->text(), "Expand"_s);
        QCOMPARE(stores(), words("SetParamterInfo(24, 0)|SetParamterInfo(24, 2)", '|'));
    }

    void describesTheSelectedFeature()
    {
        open();
        m_tree->expandAll();
        m_tree->setCurrentIndex(indexOf("Width"));
        const QString text = m_pane->toPlainText();
        QVERIFY2(text.startsWith("Width\nWidth of the image <in pixels>, 宽度."_s), qPrintable(text));
        m_tree->model()->insertRows(0, 1, indexOf("Analog")); // a row without a node
        m_tree->setCurrentIndex(m_tree->model()->index(0, 0, indexOf("Analog")));
        QVERIFY(m_tree->currentIndex().isValid());
        m_panel->onSigSelectItemClick(QModelIndex());
        QCOMPARE(m_pane->toPlainText(), text);
    }

    void downLeadsFromTheSearchIntoTheTree()
    {
        open();
        m_search->setFocus();
        QTest::keyClick(m_search, Qt::Key_Down);
        QVERIFY(m_tree->hasFocus());
        QCOMPARE(m_tree->currentIndex(), m_tree->model()->index(0, 0));
        QVERIFY(m_tree->selectionModel()->isSelected(m_tree->currentIndex()));
    }

    void editorOpenWhilePanelGoes()
    {
        open();
        const auto typeInto = [this](const char *name) {
            m_tree->expandAll();
            m_tree->setCurrentIndex(indexOf(name).siblingAtColumn(1));
            QTest::keyClicks(QApplication::focusWidget(), "1"_s);
            return QApplication::focusWidget()->parentWidget() == m_tree->viewport();
        };
        m_camera->port.resetCounters();
        QVERIFY(typeInto("Width"));
        const QPointer<QAbstractItemModel> before = m_tree->model();
        m_panel->parameterTreeViewInit(m_camera->map);
        QVERIFY(before.isNull());
        QCOMPARE(shownFeatures(), BeginnerFeatures);
        QVERIFY(typeInto("Width"));
        m_panel->setParamterViewDisable();
        m_search->setFocus();
        QCOMPARE(m_camera->port.writes, 0U);
        GenApi::INodeMap *const gone = m_camera->map;
        m_camera.reset();
        m_panel->parameterTreeViewInit(gone);
        const QPointer<QAbstractItemModel> last = m_tree->model();
        m_panel.reset();
        QVERIFY(last.isNull());
    }

    /// What is switched on the curated pages shows in the tree as soon as it is seen.
    void showsWhatThePagesWrote()
    {
        const std::tuple<const char *, PageSet, void (*)(CuratedPanel &)> rows[] = {
            {"nothing", PageSet::AreaScan, [](CuratedPanel &) {}},
            {"row", PageSet::AreaScan, [](CuratedPanel &one) { one.editor<QPushButton>("ReverseX")->click(); }},
            {"command", PageSet::AreaScan, [](CuratedPanel &one) { one.editor<QPushButton>("UserSetSave")->click(); }},
            {"user set", PageSet::AreaScan, [](CuratedPanel &one) { one.panel->onUserSetLoadButtonClicked(); }},
            {"image", PageSet::AreaScan, [](CuratedPanel &one) { one.panel->onResetImageSizeButtonClicked(); }},
            {"region", PageSet::AreaScan, [](CuratedPanel &one) { one.panel->onExecDrawButtonClicked(); }},
            {"by name", PageSet::AreaScan, [](CuratedPanel &one) { one.panel->setCameraNodeValue("Width"_s, 640); }},
            {"import", PageSet::AreaScan, [](CuratedPanel &one) { one.panel->updateWidget(true); }},
            {"output", PageSet::StructuredLight, [](CuratedPanel &one) { one.panel->on2DGrabOutputChanged(0, true); }},
            {"interlocked", PageSet::Profiler, [](CuratedPanel &one) {
                 auto *const mode = one.editor<QComboBox>("TriggerMode");
                 mode->setCurrentIndex(1 - mode->currentIndex());
             }}};
        m_messages.reset();
        for (const auto &[name, pages, act] : rows) {
            const InRow inRow(name);
            CuratedFeatures features = pages == PageSet::Profiler ? profilerFeatures() : structuredLightFeatures();
            features.push_back({"Integer", "Switch", ""});
            features.push_back({"Integer", "Gated", "<pIsAvailable>SwitchReg</pIsAvailable>"});
            CuratedPanel curated(features, pages, [](CuratedPanel &panel) { panel.poke("Switch", 1); });
            curated.panel->show();
            auto *const tree = curated.panel->findChild<FeatureTreeView *>();
            const auto isGatedHidden = [&] {
                const QModelIndex root = tree->model()->index(0, 0);
                return tree->isRowHidden(tree->model()->rowCount(root) - 1, root);
            };
            curated.mainTabs()->setCurrentIndex(1); // what opening has written is shown
            curated.mainTabs()->setCurrentIndex(0);
            QVERIFY(!isGatedHidden());
            curated.camera.port.poke(curated.camera.address("Switch"), 0);
            act(curated);
            curated.mainTabs()->setCurrentIndex(1);
            QCOMPARE(isGatedHidden(), qstrcmp(name, "nothing") != 0);
        }
    }

private:
    void open(const char *storedLevel = "0")
    {
        m_host.setParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, storedLevel);
        m_panel = std::make_unique<ParamterWidget>();
        m_panel->initUI("cam"_s);
        m_tree = m_panel->findChild<FeatureTreeView *>();
        m_level = m_panel->findChild<QComboBox *>("cboboxLevel"_s);
        m_search = m_panel->findChild<QLineEdit *>("edit_search"_s);
        m_fold = m_panel->findChild<QToolButton *>("toolButton"_s);
        m_pane = m_panel->findChild<QTextBrowser *>();
        m_panel->show();
        QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
        m_host.clearCalls();
    }

    /// The names of the features (not categories) whose rows are shown, in tree order.
    QStringList shownFeatures(const QModelIndex &parent = QModelIndex()) const
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

    QModelIndex indexOf(const char *name) const { return findRow(*m_tree->model(), name); }

    /// Those with children.
    int expandedRows(const QModelIndex &parent = QModelIndex()) const
    {
        int count = 0;
        for (int row = 0; row < m_tree->model()->rowCount(parent); ++row) {
            const QModelIndex index = m_tree->model()->index(row, 0, parent);
            count += (m_tree->isExpanded(index) && m_tree->model()->hasChildren(index) ? 1 : 0) + expandedRows(index);
        }
        return count;
    }

    QStringList stores() const { return m_host.callsTo("SetParamterInfo"_s); }

    FeatureTreeView *m_tree = nullptr;
    QComboBox *m_level = nullptr;
    QLineEdit *m_search = nullptr;
    QToolButton *m_fold = nullptr;
    QTextBrowser *m_pane = nullptr;
};

QTEST_MAIN(tst_AttributeTab)
#include "tst_AttributeTab.moc"
