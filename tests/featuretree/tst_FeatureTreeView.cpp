// SPDX-License-Identifier: MIT
#include <functional>
#include <memory>

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QtTest>

#include "FaultyNode.h"
#include "FeatureTree/FeatureTreeView.h"
#include "FeatureTree/IntegerSpinBox.h"
#include "FeatureTree/TreeItem.h"
#include "FeatureTree/TreeModel.h"
#include "FindRow.h"
#include "TestCamera.h"
#include "support/BracketTranslator.h"
#include "support/FakeHostCore.h"
#include "support/FatalMessages.h"

namespace {

const QStringList headers{QStringLiteral("Feature"), QStringLiteral("Value")};

} // namespace

Q_DECLARE_METATYPE(std::function<void(FeatureTreeView &, const QModelIndex &)>)

class tst_FeatureTreeView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
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
    void withoutRowsOrModel();
    void columnsAreHalves();
    void languageRetitlesHeaders();
    void selectionIsReported();
    void editsByMouseAndKeyboard();
    void tabGoesToTheNextEditableValue();
    void editorsLeaveTheFocusToTheView();
    void refusedEditShowsTheOldValue();
    void choosesAnEntry();
    void runsCommand();
    void triggerAndReset();
    void lockedCommandDoesNotRun();
    void commandIsNotReentered();
    void deviceGoesDuringCommand();
    void failingCommandIsLogged();
    void repaintReadsOnlyWhatIsNotCached();
    void replacedModel();
    void disabledTouchesNoNode();

private:
    QModelIndex cell(const char *name, int column = 1) const { return findRow(*model, name, column); }
    bool isShown(const char *name) const;
    void click(const char *name, int column = 1);
    template <class Editor>
    Editor *editor() const
    {
        return qobject_cast<Editor *>(QApplication::focusWidget());
    }
    QPushButton *openCommand(const char *name);

    std::unique_ptr<FatalMessages> messages;
    std::unique_ptr<TestCamera> camera;
    std::unique_ptr<TreeModel> model;
    std::unique_ptr<FeatureTreeView> view;
};

void tst_FeatureTreeView::init()
{
    FakeHostCore::instance().reset();
    messages.reset();
    messages = std::make_unique<FatalMessages>();
    camera = std::make_unique<TestCamera>();
    camera->port.poke(TestCamera::Width, 48);
    camera->port.poke(TestCamera::Switch, 1);
    model = std::make_unique<TreeModel>(headers, camera->nodes());
    model->AddModelData(camera->nodes(), QString());
    view = std::make_unique<FeatureTreeView>();
    view->deviceName = QStringLiteral("cam");
    view->setModel(model.get());
    view->resize(600, 1200);
    view->expandAll();
    view->SetFilter(0, QString());
    view->show();
    QVERIFY(QTest::qWaitForWindowActive(view.get()));
    camera->port.resetCounters();
}

void tst_FeatureTreeView::cleanup()
{
    view.reset();
    model.reset();
    camera.reset();
    messages.reset();
}

bool tst_FeatureTreeView::isShown(const char *name) const
{
    for (QModelIndex index = cell(name, 0); index.isValid(); index = index.parent()) {
        if (view->isRowHidden(index.row(), index.parent()))
            return false;
    }
    return true;
}

void tst_FeatureTreeView::click(const char *name, int column)
{
    const QModelIndex index = cell(name, column);
    view->scrollTo(index);
    const QRect rect = view->visualRect(index);
    QVERIFY2(rect.isValid(), name);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
}

QPushButton *tst_FeatureTreeView::openCommand(const char *name)
{
    click(name);
    return editor<QPushButton>();
}

/// A category goes with its last shown feature.
void tst_FeatureTreeView::levels()
{
    const QStringList levels[] = {{},
                                  {QStringLiteral("Experts"), QStringLiteral("Expert")},
                                  {QStringLiteral("Experts"), QStringLiteral("Expert"), QStringLiteral("Guru")}};
    for (int level = 0; level <= 2; ++level) {
        view->SetFilter(level, QString());
        QVERIFY(isShown("Width"));
        QStringList shown;
        for (const char *name : {"Experts", "Expert", "Guru"}) {
            if (isShown(name))
                shown << QLatin1String(name);
        }
        QCOMPARE(shown, levels[level]);
    }
}

void tst_FeatureTreeView::filters()
{
    view->SetFilter(0, QStringLiteral("GAIN"));
    QVERIFY(isShown("Gain"));
    QVERIFY(isShown("WriteOnlyGain"));
    QVERIFY(!isShown("Width"));
    QVERIFY(!isShown("Deeper"));
    QVERIFY(!isShown("Kinds"));
    view->SetFilter(0, QStringLiteral("no such feature"));
    QVERIFY(view->isRowHidden(0, QModelIndex()));
    view->SetFilter(0, QString());
    QVERIFY(isShown("Width"));
    QVERIFY(isShown("Deeper"));
    QVERIFY(isShown("Kinds"));
}

void tst_FeatureTreeView::availabilityIsReadOncePerPass()
{
    view->SetFilter(0, QStringLiteral("g"));
    QCOMPARE(camera->port.readsOf(TestCamera::Switch), 1u);
    QVERIFY(isShown("Gated"));
    camera->port.poke(TestCamera::Switch, 0);
    view->collapseAll();
    camera->port.resetCounters();
    view->expandAll();
    QCOMPARE(camera->port.readsOf(TestCamera::Switch), 1u);
    QVERIFY(!isShown("Gated"));
    camera->port.poke(TestCamera::Switch, 1);
    view->collapse(cell("Access", 0));
    view->expand(cell("Access", 0));
    QVERIFY(isShown("Gated"));
    camera->port.poke(TestCamera::Switch, 0);
    view->collapse(cell("Access", 0));
    view->expand(cell("Access", 0));
    QVERIFY(!isShown("Gated"));
    QVERIFY(!isShown("GatedToo"));
    QVERIFY(!isShown("Temperature"));
}

void tst_FeatureTreeView::aPassFollowsEveryWrite_data()
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
void tst_FeatureTreeView::aPassFollowsEveryWrite()
{
    QFETCH(QByteArray, feature);
    QFETCH(QVariant, value);
    QFETCH(int, address);
    quint64 isOn = 0;
    camera->port.onWrite[address] = [&isOn](MemoryPort &port) { port.poke(TestCamera::Switch, isOn); };
    view->setCurrentIndex(cell(feature, 0));
    QVERIFY(model->setData(cell(feature), value, Qt::EditRole));
    QVERIFY(!isShown("Gated"));
    view->setCurrentIndex(model->index(0, 0));
    isOn = 1;
    QVERIFY(model->setData(cell(feature), value, Qt::EditRole));
    QVERIFY(isShown("Gated"));
}

void tst_FeatureTreeView::aPassFollowsEveryCommand()
{
    for (const auto &[name, address] :
         {std::pair("Start", TestCamera::Start), std::pair("TriggerSoftware", TestCamera::TriggerSoftware)}) {
        camera->port.poke(TestCamera::Switch, 1);
        view->SetFilter(0, QString());
        camera->port.onWrite[address] = [](MemoryPort &port) { port.poke(TestCamera::Switch, 0); };
        QPushButton *button = openCommand(name);
        QVERIFY(button);
        QTest::mouseClick(button, Qt::LeftButton);
        QTRY_VERIFY2(!isShown("Gated"), name);
    }
}

/// Changes beside the tree are counted together, and wait until the tree is seen.
void tst_FeatureTreeView::onePassForAllThatChanges()
{
    const auto change = [this](quint64 isOn) {
        camera->port.poke(TestCamera::Switch, isOn);
        camera->port.resetCounters();
        for (int i = 0; i < 3; ++i)
            view->followDevice();
    };
    change(0);
    QCOMPARE(camera->port.readsOf(TestCamera::Switch), 0u);
    QTRY_VERIFY(!isShown("Gated"));
    QCOMPARE(camera->port.readsOf(TestCamera::Switch), 1u);
    view->hide();
    change(1);
    QCoreApplication::processEvents();
    QCOMPARE(camera->port.readsOf(TestCamera::Switch), 0u);
    view->show();
    QVERIFY(isShown("Gated"));
    QCoreApplication::processEvents();
    view->hide();
    view->show();
    QCOMPARE(camera->port.readsOf(TestCamera::Switch), 1u);
}

void tst_FeatureTreeView::choiceThatHidesRows_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<QByteArray>("editedAfterwards");
    QTest::newRow("others") << QByteArray("Selector") << QByteArray("Selector");
    QTest::newRow("its own") << QByteArray("GatedSelector") << QByteArray();
}

/// The rows are laid out anew while the tree paints; the editor moves along, or goes with its row.
void tst_FeatureTreeView::choiceThatHidesRows()
{
    QFETCH(QByteArray, list);
    QFETCH(QByteArray, editedAfterwards);
    camera->port.onWrite[TestCamera::Selector] = [](MemoryPort &port) { port.poke(TestCamera::Switch, 0); };
    click(list);
    QPointer<QComboBox> box = editor<QComboBox>();
    QVERIFY(box);
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(camera->port.writes, 1u);
    QTRY_VERIFY(!view->visualRect(cell("Gated")).isValid());
    view->viewport()->repaint();
    if (editedAfterwards.isEmpty()) {
        QTRY_VERIFY(!box);
        QVERIFY(view->hasFocus());
        QCOMPARE(view->currentIndex(), cell("Label", 0));
    } else {
        QCOMPARE(box->geometry(), view->visualRect(cell(editedAfterwards)));
        QVERIFY(box->hasFocus());
    }
    QCOMPARE(camera->port.writes, 1u);
}

void tst_FeatureTreeView::keyboardStaysNearAVanishedRow_data()
{
    using Change = std::function<void(FeatureTreeView &, const QModelIndex &)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<QByteArray>("current");
    QTest::addColumn<quint64>("written");
    const auto row = [](const char *name, const char *current, quint64 written, const Change &change) {
        QTest::newRow(name) << change << QByteArray(current) << written;
    };
    row("its category is folded", "Access", 0x21,
        [](FeatureTreeView &tree, const QModelIndex &index) { tree.collapse(index.parent()); });
    row("all is folded", "Access", 0x21, [](FeatureTreeView &tree, const QModelIndex &) { tree.expandToDepth(0); });
    row("another category is folded", "Fragile", 0x20,
        [](FeatureTreeView &tree, const QModelIndex &index) { tree.collapse(index.parent().siblingAtRow(1)); });
    row("rows beside it stay", "Uncached", 0x20,
        [](FeatureTreeView &tree, const QModelIndex &) { tree.SetFilter(0, QStringLiteral("unc")); });
    row("its category is hidden", "Kinds", 0x20,
        [](FeatureTreeView &tree, const QModelIndex &) { tree.SetFilter(0, QStringLiteral("sindata")); });
    row("nothing is shown", "", 0x20,
        [](FeatureTreeView &tree, const QModelIndex &) { tree.SetFilter(0, QStringLiteral("no such feature")); });
}

/// What was typed is written by a click that folds, and dropped with a row that is hidden.
void tst_FeatureTreeView::keyboardStaysNearAVanishedRow()
{
    using Change = std::function<void(FeatureTreeView &, const QModelIndex &)>;
    QFETCH(Change, change);
    QFETCH(QByteArray, current);
    QFETCH(quint64, written);
    camera->port.poke(TestCamera::Fragile, 0x20);
    click("Fragile");
    const QPointer<IntegerSpinBox> box = editor<IntegerSpinBox>();
    QVERIFY(box);
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("33"));
    const bool stays = current == "Fragile";
    change(*view, cell("Fragile", 0));
    QTRY_COMPARE(box.isNull(), !stays);
    QCOMPARE(quint64(camera->port.peek(TestCamera::Fragile)), written);
    QCOMPARE(view->currentIndex(), current.isEmpty() ? QModelIndex() : cell(current, stays ? 1 : 0));
    QVERIFY(stays ? box->hasFocus() : view->hasFocus());
    QCOMPARE(stays ? box->text() : QString(), stays ? QStringLiteral("33") : QString());
}

/// Searching leaves the current row alone until the keyboard comes back to the tree.
void tst_FeatureTreeView::keyboardComesBackNearAHiddenRow()
{
    view->setCurrentIndex(cell("Fragile", 0));
    view->SetFilter(0, QStringLiteral("unc"));
    QCOMPARE(view->currentIndex(), cell("Fragile", 0));
    view->setFocus();
    QCOMPARE(view->currentIndex(), cell("Uncached", 0));
}

void tst_FeatureTreeView::withoutRowsOrModel()
{
    FeatureTreeView empty;
    empty.SetFilter(2, QStringLiteral("x"));
    TreeModel noRows(headers, {});
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

void tst_FeatureTreeView::columnsAreHalves()
{
    view->resize(601, 1200);
    QCOMPARE(view->columnWidth(0), 300);
    QCOMPARE(view->columnWidth(1), 300);
    view->resize(601, 200);
    QTRY_VERIFY(view->verticalScrollBar()->isVisible());
    QCOMPARE(view->columnWidth(0), 300);
    QTRY_VERIFY(!view->horizontalScrollBar()->isVisible());
}

void tst_FeatureTreeView::languageRetitlesHeaders()
{
    QPersistentModelIndex width = cell("Width");
    BracketTranslator brackets;
    QCoreApplication::installTranslator(&brackets);
    QTRY_COMPARE(model->headerData(0, Qt::Horizontal).toString(), QStringLiteral("[Feature]"));
    QCOMPARE(model->headerData(1, Qt::Horizontal).toString(), QStringLiteral("[Value]"));
    QVERIFY(width.isValid());
    QCoreApplication::removeTranslator(&brackets);
    QEvent change(QEvent::LanguageChange);
    FeatureTreeView withoutModel;
    QApplication::sendEvent(&withoutModel, &change);
}

void tst_FeatureTreeView::selectionIsReported()
{
    QSignalSpy spy(view.get(), &FeatureTreeView::SigSelectItem);
    click("Width", 0);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).toModelIndex(), cell("Width", 0));
    view->clearSelection();
    QCOMPARE(spy.size(), 1);
}

void tst_FeatureTreeView::editsByMouseAndKeyboard()
{
    click("Width");
    auto *box = editor<IntegerSpinBox>();
    QVERIFY(box);
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("64"));
    QTest::keyClick(box, Qt::Key_Return);
    QTRY_COMPARE(camera->port.peek(TestCamera::Width), quint64(64));
    QCOMPARE(cell("Width").data().toInt(), 64);

    QTRY_VERIFY(view->hasFocus());
    QTest::keyClick(view.get(), Qt::Key_F2);
    QVERIFY(editor<IntegerSpinBox>());
    QTest::keyClicks(editor<IntegerSpinBox>(), QStringLiteral("8"));
    QTest::keyClick(editor<IntegerSpinBox>(), Qt::Key_Escape);
    QTest::qWait(1);
    QCOMPARE(camera->port.peek(TestCamera::Width), quint64(64));

    click("Label", 0);
    view->setFocus();
    QTest::keyClick(view.get(), Qt::Key_F2);
    auto *line = editor<QLineEdit>();
    QVERIFY(line);
    QTest::keyClicks(line, QStringLiteral("ok"));
    click("Width", 0);
    QTRY_COMPARE(camera->port.peekText(TestCamera::Label, 64), std::string("ok"));
}

void tst_FeatureTreeView::tabGoesToTheNextEditableValue()
{
    click("Uncached");
    auto *box = editor<IntegerSpinBox>();
    QVERIFY(box);
    QTest::keyClick(box, Qt::Key_Backtab);
    QCOMPARE(view->currentIndex(), cell("Fragile"));
    QVERIFY(editor<IntegerSpinBox>());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    QCOMPARE(view->currentIndex(), cell("WriteOnlyGain"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    QCOMPARE(view->currentIndex(), cell("GatedToo"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(view->currentIndex(), cell("WriteOnlyGain"));
    QCOMPARE(camera->port.writes, 0u);
}

void tst_FeatureTreeView::editorsLeaveTheFocusToTheView()
{
    QCOMPARE(view->focusPolicy(), Qt::NoFocus);
    click("Width");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTRY_VERIFY(view->hasFocus());
    QTest::keyClick(view.get(), Qt::Key_Down);
    QCOMPARE(view->currentIndex(), cell("Gain", 0));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    QCOMPARE(view->currentIndex(), cell("Gain", 0));
    QCOMPARE(camera->port.writes, 0u);
}

void tst_FeatureTreeView::refusedEditShowsTheOldValue()
{
    click("Width");
    auto *box = editor<IntegerSpinBox>();
    QVERIFY(box);
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("50"));
    QTest::ignoreMessage(QtDebugMsg, "Failed to set data for Width");
    QTest::keyClick(box, Qt::Key_Return);
    QTRY_VERIFY(!editor<IntegerSpinBox>());
    QCOMPARE(cell("Width").data().toInt(), 48);
    QCOMPARE(camera->port.writes, 0u);
}

void tst_FeatureTreeView::choosesAnEntry()
{
    click("Selector");
    auto *list = editor<QComboBox>();
    QVERIFY(list);
    QTest::keyClick(list, Qt::Key_Down);
    QCOMPARE(camera->port.peek(TestCamera::Selector), quint64(1));
    QCOMPARE(list->count(), 2);
    QCOMPARE(list->currentText(), QStringLiteral("Alpha"));
    QCOMPARE(camera->port.writes, 1u);
}

void tst_FeatureTreeView::runsCommand()
{
    QSignalSpy spy(view.get(), &FeatureTreeView::commandExecute);
    QPushButton *button = openCommand("Start");
    QVERIFY(button);
    unsigned writesWhenAnnounced = 1;
    connect(view.get(), &FeatureTreeView::commandExecute, this,
            [&] { writesWhenAnnounced = camera->port.writes; }); // whoever hears of it may still prepare the device
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(writesWhenAnnounced, 0u);
    QCOMPARE(camera->port.peek(TestCamera::Start), quint64(1));
    QCOMPARE(camera->port.writes, 1u);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("Start"));
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(camera->port.writes, 2u);
    QTest::keyClick(button, Qt::Key_Return);
    QCOMPARE(camera->port.writes, 3u);
}

void tst_FeatureTreeView::triggerAndReset()
{
    QSignalSpy spy(view.get(), &FeatureTreeView::commandExecute);
    QPushButton *trigger = openCommand("TriggerSoftware");
    QVERIFY(trigger);
    QTest::mouseClick(trigger, Qt::LeftButton);
    QTest::mouseClick(trigger, Qt::LeftButton);
    QCOMPARE(camera->port.writes, 2u);
    QCOMPARE(spy.size(), 0);

    QPushButton *reset = openCommand("DeviceReset");
    QVERIFY(reset);
    QTest::mouseClick(reset, Qt::LeftButton);
    QCOMPARE(camera->port.writes, 2u);
    QCOMPARE(FakeHostCore::instance().calls(), QStringList(QStringLiteral("SetCameraNodeValue(cam, DeviceReset, )")));
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("DeviceReset"));
}

void tst_FeatureTreeView::lockedCommandDoesNotRun()
{
    click("StartLocked");
    QVERIFY(!editor<QPushButton>());
    auto *delegate = view->itemDelegateForColumn(1);
    QMetaObject::invokeMethod(delegate, "CommandClicked", Q_ARG(bool, false));
    QCOMPARE(camera->port.writes, 0u);
}

/// The host may handle commandExecute() by pressing another button.
void tst_FeatureTreeView::commandIsNotReentered()
{
    QPushButton *button = openCommand("Start");
    QVERIFY(button);
    int runs = 0;
    connect(view.get(), &FeatureTreeView::commandExecute, this, [&] {
        if (++runs < 5)
            button->click();
    });
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(runs, 1);
    QCOMPARE(camera->port.writes, 1u);
}

/// The host may close the device or delete the view while a command is announced.
void tst_FeatureTreeView::deviceGoesDuringCommand()
{
    QPushButton *button = openCommand("Start");
    QVERIFY(button);
    QSignalSpy spy(view.get(), &FeatureTreeView::commandExecute);
    connect(view.get(), &FeatureTreeView::commandExecute, view.get(), [this] {
        model->dataDisabled = true;
        view->setViewDataDisable();
        camera.reset();
    });
    button->click();
    QCOMPARE(spy.size(), 1);

    init();
    button = openCommand("DeviceReset");
    QVERIFY(button);
    FakeHostCore::instance().setCallHook([this](const QString &) { view.reset(); });
    button->click();
    QVERIFY(!view);
}

void tst_FeatureTreeView::failingCommandIsLogged()
{
    QPushButton *button = openCommand("Start");
    QVERIFY(button);
    for (const auto fault : {MemoryPort::Fault::Refused, MemoryPort::Fault::Foreign}) {
        camera->port.writeFault = fault;
        FakeHostCore::instance().clearCalls();
        QTest::mouseClick(button, Qt::LeftButton);
        const QStringList calls = FakeHostCore::instance().calls();
        QCOMPARE(calls.size(), 1);
        QVERIFY2(calls.at(0).startsWith(QStringLiteral("VLogInfo(FeatureTreeView, ")), qPrintable(calls.at(0)));
    }
    camera->port.writeFault = MemoryPort::Fault::None;
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(camera->port.peek(TestCamera::Start), quint64(1));
}

/// One read per second for each visible value that is not cached, none for the others.
void tst_FeatureTreeView::repaintReadsOnlyWhatIsNotCached()
{
    QTest::qWait(10);
    camera->port.resetCounters();
    QTRY_VERIFY(camera->port.readsOf(TestCamera::Uncached) > 0);
    QCOMPARE(camera->port.reads,
             camera->port.readsOf(TestCamera::Uncached) + camera->port.readsOf(TestCamera::LineRate));
    view->hide();
    camera->port.resetCounters();
    QTest::qWait(1100);
    QCOMPARE(camera->port.reads, 0u);
}

void tst_FeatureTreeView::replacedModel()
{
    auto next = std::make_unique<TreeModel>(headers, camera->nodes());
    next->AddModelData(camera->nodes(), QString());
    view->setModel(next.get());
    model = std::move(next);
    view->expandAll();
    view->SetFilter(1, QString());
    QVERIFY(isShown("Expert"));
    click("Width");
    QVERIFY(editor<IntegerSpinBox>());
}

void tst_FeatureTreeView::disabledTouchesNoNode()
{
    click("Start");
    QPushButton *button = editor<QPushButton>();
    QVERIFY(button);
    model->dataDisabled = true;
    view->setViewDataDisable();
    camera.reset();
    QTest::mouseClick(button, Qt::LeftButton);
    view->SetFilter(2, QStringLiteral("x"));
    view->collapseAll();
    view->expandAll();
    click("Width");
    QVERIFY(!editor<IntegerSpinBox>());
    view->viewport()->repaint();
    QCOMPARE(cell("Width").data().toInt(), 48);
    QCOMPARE(FakeHostCore::instance().calls(), QStringList());
}

QTEST_MAIN(tst_FeatureTreeView)
#include "tst_FeatureTreeView.moc"
