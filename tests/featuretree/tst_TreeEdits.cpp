// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest>

#include <functional>
#include <memory>

#include "FeatureTree/FeatureTreeView.h"
#include "FeatureTree/IntegerSpinBox.h"
#include "FeatureTree/TreeModel.h"
#include "FindRow.h"
#include "PanelBase/PressElsewhere.h"
#include "TestCamera.h"
#include "support/FakeHostCore.h"

namespace {

class Panel : public QWidget, public EditScope
{ };

struct Kind
{
    const char *feature;
    const char *typed;
    int address;
    int length;
    quint64 before;
    quint64 after; ///< of the bytes at the address
};

const Kind Kinds[] = {{"Width", "64", TestCamera::Width, 4, 48, 64},
                      {"Gain", "0.5", TestCamera::Gain, 8, 0x4004000000000000, 0x3fe0000000000000},
                      {"Label", "ok", TestCamera::Label, 8, 0x74786574, 0x6b6f},
                      {"Flags", "1F", TestCamera::Flags, 8, 255, 0x1f}};

} // namespace

/// What ends an edit in the tree, and what does not.
class tst_TreeEdits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void leaving_data();
    void leaving();
    void editorsComeBack();
    void untouchedEditorsCloseByAPress();
    void dropsWhatCannotBeEdited_data();
    void dropsWhatCannotBeEdited();
    void whatIsTypedIsWritten_data();
    void whatIsTypedIsWritten();
    void theChosenEntryIsWritten();
    void refusedTexts_data();
    void refusedTexts();
    void arrows();

    // ways of leaving, by name
public:
    Q_INVOKABLE void pressReturn() { QTest::keyClick(m_editor, Qt::Key_Return); }
    Q_INVOKABLE void pressTab() { QTest::keyClick(m_editor, Qt::Key_Tab); }
    Q_INVOKABLE void pressOnAnotherRow() { press(cell("Address", 0)); }
    Q_INVOKABLE void pressBesideTheTree() { QTest::mouseClick(m_search, Qt::LeftButton); }
    Q_INVOKABLE void pressBesideThePanel() { QTest::mouseClick(m_host, Qt::LeftButton); }
    Q_INVOKABLE void anotherWindow();
    Q_INVOKABLE void panelStandsBack();
    Q_INVOKABLE void focusIsTaken() { m_search->setFocus(); }
    Q_INVOKABLE void currentRowMoves() { m_view->setCurrentIndex(cell("Address", 0)); }
    Q_INVOKABLE void otherLanguage() { m_model->setFeatureLanguage(1); }
    Q_INVOKABLE void filtered() { m_view->SetFilter(2, QString()); }
    Q_INVOKABLE void folded();
    Q_INVOKABLE void deviceChanges();

private:
    QModelIndex cell(const char *name, int column = 1) const { return findRow(*m_model, name, column); }
    void press(const QModelIndex &index);
    /// False unless an editor opened; all of its text is selected.
    bool open(const char *feature);
    quint64 stored(const Kind &kind) const { return m_camera->port.peek(kind.address, kind.length); }
    QStringList log() const { return FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")); }

    std::unique_ptr<TestCamera> m_camera;
    std::unique_ptr<TreeModel> m_model;
    std::unique_ptr<QWidget> m_window;
    Panel *m_panel = nullptr;
    QLineEdit *m_search = nullptr;
    QLineEdit *m_host = nullptr;
    FeatureTreeView *m_view = nullptr;
    QPointer<QWidget> m_editor;
};

void tst_TreeEdits::init()
{
    FakeHostCore::instance().reset();
    m_camera = std::make_unique<TestCamera>();
    for (const Kind &kind : Kinds)
        m_camera->port.poke(kind.address, kind.before, kind.length);
    m_camera->port.poke(TestCamera::Switch, 1);
    m_model = std::make_unique<TreeModel>(QStringList{QString(), QString()}, m_camera->nodes());
    m_model->AddModelData(m_camera->nodes(), QString());
    m_window = std::make_unique<QWidget>();
    m_panel = new Panel;
    m_search = new QLineEdit;
    m_host = new QLineEdit;
    m_view = new FeatureTreeView;
    auto *whole = new QVBoxLayout(m_window.get());
    auto *inner = new QVBoxLayout(m_panel);
    whole->addWidget(m_host);
    whole->addWidget(m_panel);
    inner->addWidget(m_search);
    inner->addWidget(m_view);
    m_view->setModel(m_model.get());
    m_view->expandAll();
    m_view->SetFilter(0, QString());
    m_window->resize(700, 1300);
    m_window->show();
    QApplication::setActiveWindow(m_window.get());
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_camera->port.resetCounters();
}

void tst_TreeEdits::cleanup()
{
    m_window.reset();
    m_model.reset();
    m_camera.reset();
}

void tst_TreeEdits::press(const QModelIndex &index)
{
    QTest::mouseClick(m_view->viewport(), Qt::LeftButton, {}, m_view->visualRect(index).center());
}

bool tst_TreeEdits::open(const char *feature)
{
    press(cell(feature));
    m_editor = m_view->indexWidget(cell(feature));
    if (auto *line = m_editor ? m_editor->findChild<QLineEdit *>() : nullptr)
        line->selectAll();
    else if (auto *whole = qobject_cast<QLineEdit *>(m_editor))
        whole->selectAll();
    return m_editor && m_editor->hasFocus();
}

void tst_TreeEdits::anotherWindow()
{
    QWidget other;
    other.show();
    QApplication::setActiveWindow(&other);
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QVERIFY(!m_editor || !m_editor->hasFocus());
    QApplication::setActiveWindow(m_window.get());
    QVERIFY(!m_editor || m_editor->hasFocus());
}

void tst_TreeEdits::panelStandsBack()
{
    m_panel->hide();
    m_host->setFocus();
    m_panel->show();
}

void tst_TreeEdits::folded()
{
    m_view->collapseAll();
    QCoreApplication::processEvents();
    m_view->expandAll();
}

void tst_TreeEdits::deviceChanges()
{
    m_camera->port.poke(TestCamera::Width, 52);
    m_camera->map->InvalidateNodes();
    m_camera->port.poke(TestCamera::Width, 48);
    m_view->viewport()->repaint();
}

void tst_TreeEdits::leaving_data()
{
    QTest::addColumn<QByteArray>("way");
    QTest::addColumn<bool>("ends");
    for (const auto &[way, ends] :
         {std::pair("pressReturn", true), std::pair("pressTab", true), std::pair("pressOnAnotherRow", true),
          std::pair("pressBesideTheTree", true), std::pair("pressBesideThePanel", false),
          std::pair("anotherWindow", false), std::pair("panelStandsBack", false), std::pair("focusIsTaken", false),
          std::pair("currentRowMoves", false), std::pair("otherLanguage", false), std::pair("filtered", false),
          std::pair("folded", false), std::pair("deviceChanges", false)})
        QTest::newRow(way) << QByteArray(way) << ends;
}

/// Whatever is no way to end an edit leaves the editor, of every kind, open with its text.
void tst_TreeEdits::leaving()
{
    QFETCH(QByteArray, way);
    QFETCH(bool, ends);
    for (const Kind &kind : Kinds) {
        QVERIFY2(open(kind.feature), kind.feature);
        QTest::keyClicks(m_editor, QLatin1String(kind.typed));
        const auto *whole = qobject_cast<QLineEdit *>(m_editor);
        const QLineEdit *line = whole ? whole : m_editor->findChild<QLineEdit *>();
        const QString text = line->text();
        QVERIFY(QMetaObject::invokeMethod(this, way));
        QCOMPARE(stored(kind), ends ? kind.after : kind.before);
        QCOMPARE(m_camera->port.writes, ends ? 1u : 0u);
        if (!ends) {
            QVERIFY2(m_editor && m_editor->isVisible(), kind.feature);
            QCOMPARE(line->text(), text);
            m_editor->setFocus();
            QTest::keyClick(m_editor, Qt::Key_Escape);
        }
        QTRY_VERIFY(!m_editor || m_view->indexWidget(cell(kind.feature)) != m_editor);
        init();
    }
}

/// The view hands the focus on to its open editor.
void tst_TreeEdits::editorsComeBack()
{
    QVERIFY(open("Width"));
    QTest::keyClicks(m_editor, QStringLiteral("6"));
    m_search->setFocus();
    m_view->setFocus();
    QVERIFY(m_editor && m_editor->hasFocus());
    QTest::keyClicks(m_editor, QStringLiteral("4"));
    QTest::keyClick(m_editor, Qt::Key_Return);
    QCOMPARE(m_camera->port.peek(TestCamera::Width), quint64(64));
}

void tst_TreeEdits::untouchedEditorsCloseByAPress()
{
    for (const char *feature : {"Width", "Gain", "Label", "Flags", "Selector", "Start"}) {
        QVERIFY2(open(feature), feature);
        anotherWindow();
        QVERIFY(m_editor);
        pressBesideTheTree();
        QTRY_VERIFY2(!m_editor, feature);
    }
    QCOMPARE(m_camera->port.writes, 0u);
}

void tst_TreeEdits::dropsWhatCannotBeEdited_data()
{
    QTest::addColumn<bool>("isClosed");
    QTest::newRow("locked") << false;
    QTest::newRow("device closed") << true;
}

void tst_TreeEdits::dropsWhatCannotBeEdited()
{
    QFETCH(bool, isClosed);
    QVERIFY(open("Gated"));
    QTest::keyClicks(m_editor, QStringLiteral("6"));
    if (isClosed) {
        m_view->setViewDataDisable();
        m_model->dataDisabled = true;
    } else {
        GenApi::CIntegerPtr(m_camera->node("Switch"))->SetValue(0);
        m_camera->port.resetCounters();
    }
    QTRY_VERIFY(!m_editor);
    QCOMPARE(m_camera->port.writes, 0u);
    QCOMPARE(log(), QStringList());
}

void tst_TreeEdits::whatIsTypedIsWritten_data()
{
    QTest::addColumn<int>("kind");
    for (int kind = 0; kind < int(std::size(Kinds)); ++kind)
        QTest::newRow(Kinds[kind].feature) << kind;
}

/// Also if it is what the editor opened with: the device may have something else by now.
void tst_TreeEdits::whatIsTypedIsWritten()
{
    QFETCH(int, kind);
    QVERIFY(open(Kinds[kind].feature));
    const auto *whole = qobject_cast<QLineEdit *>(m_editor);
    const QString shown = whole ? whole->text() : m_editor->findChild<QLineEdit *>()->text();
    QTest::keyClicks(m_editor, shown);
    m_camera->port.poke(Kinds[kind].address, Kinds[kind].after, Kinds[kind].length);
    QTest::keyClick(m_editor, Qt::Key_Return);
    QCOMPARE(m_camera->port.writes, 1u);
    QCOMPARE(stored(Kinds[kind]), Kinds[kind].before);

    QTest::keyClick(m_view, Qt::Key_F2);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // untouched
    QCOMPARE(m_camera->port.writes, 1u);
}

void tst_TreeEdits::theChosenEntryIsWritten()
{
    QVERIFY(open("Selector"));
    auto *list = qobject_cast<QComboBox *>(m_editor);
    m_camera->port.poke(TestCamera::Selector, 1);
    Q_EMIT list->activated(list->currentIndex());
    QCOMPARE(m_camera->port.peek(TestCamera::Selector), quint64(0));
    QCOMPARE(m_camera->port.writes, 1u);
    pressBesideTheTree();
    QCOMPARE(m_camera->port.writes, 1u);
}

void tst_TreeEdits::refusedTexts_data()
{
    QTest::addColumn<QByteArray>("feature");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("wanted");
    const QString integer = QStringLiteral("integer from 0 to 100");
    const QString number = QStringLiteral("number from 0 to 100");
    QTest::newRow("integer beyond") << QByteArray("Width") << QStringLiteral("1200") << integer;
    QTest::newRow("fraction") << QByteArray("Width") << QStringLiteral("33.1") << integer;
    QTest::newRow("groups") << QByteArray("Width") << QStringLiteral("1,234") << integer;
    QTest::newRow("real beyond") << QByteArray("Gain") << QStringLiteral("700") << number;
    QTest::newRow("real with groups") << QByteArray("Gain") << QStringLiteral("1,2.5") << number;
    QTest::newRow("no digits") << QByteArray("Flags") << QString() << QStringLiteral("hexadecimal number");
}

void tst_TreeEdits::refusedTexts()
{
    QFETCH(QByteArray, feature);
    QFETCH(QString, typed);
    QFETCH(QString, wanted);
    const QVariant before = cell(feature).data();
    QVERIFY(open(feature));
    QTest::keyClick(m_editor, Qt::Key_Delete);
    QTest::keyClicks(m_editor, typed);
    QTest::keyClick(m_editor, Qt::Key_Return);
    QTRY_VERIFY(!m_editor);
    QCOMPARE(m_camera->port.writes, 0u);
    QCOMPARE(cell(feature).data(), before);
    QCOMPARE(
        log(),
        QStringList(QStringLiteral("VLogInfo(FeatureEditDelegate, Set %1 value failed, message = \"%2\" is no %3, 0)")
                        .arg(QLatin1String(feature), typed, wanted)));
}

/// Each release writes, and the editor stays.
void tst_TreeEdits::arrows()
{
    QVERIFY(open("Width"));
    for (const quint64 value : {52, 56}) {
        QTest::keyClick(m_editor, Qt::Key_Up);
        QCOMPARE(m_camera->port.peek(TestCamera::Width), value);
        QVERIFY(m_editor && m_editor->hasFocus());
        QCOMPARE(qobject_cast<IntegerSpinBox *>(m_editor)->text(), QString::number(value));
    }
    QTest::keyClick(m_editor, Qt::Key_Return);
    QCOMPARE(m_camera->port.writes, 2u);
}

QTEST_MAIN(tst_TreeEdits)
#include "tst_TreeEdits.moc"
