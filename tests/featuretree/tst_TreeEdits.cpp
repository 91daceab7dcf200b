// SPDX-License-Identifier: MIT
#include <QComboBox>
#include <QLineEdit>
#include <QVBoxLayout>

#include "FeatureTree/IntegerSpinBox.h"
#include "PanelBase/PressElsewhere.h"
#include "ShownTree.h"
#include "TestRows.h"

namespace {

class Panel : public QWidget, public EditScope
{ };

const struct Kind
{
    const char *name, *typed;
    int address, length;
    quint64 before, after; ///< of the bytes at the address
} Kinds[] = {{"Width", "64", TestCamera::Width, 4, 48, 64},
             {"Gain", "0.5", TestCamera::Gain, 8, 0x4004000000000000, 0x3fe0000000000000},
             {"Label", "ok", TestCamera::Label, 8, 0x74786574, 0x6b6f},
             {"Flags", "1F", TestCamera::Flags, 8, 255, 0x1f}};

constexpr char Integer[] = "integer from 0 to 100";
constexpr char Number[] = "number from 0 to 100";

const struct
{
    const char *name, *feature, *typed, *wanted;
} RefusedTexts[] = {{"integer beyond", "Width", "1200", Integer},  {"fraction", "Width", "33.1", Integer},
                    {"groups", "Width", "1,234", Integer},         {"real beyond", "Gain", "700", Number},
                    {"real with groups", "Gain", "1,2.5", Number}, {"no digits", "Flags", "", "hexadecimal number"}};

} // namespace

/// What ends an edit in the tree, and what does not.
class tst_TreeEdits : public QObject, private ShownTree
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        make();
        for (const Kind &kind : Kinds)
            m_camera->port.poke(kind.address, kind.before, kind.length);
        m_camera->map->InvalidateNodes();
        m_window = std::make_unique<QWidget>();
        m_panel = new Panel;
        m_search = new QLineEdit;
        m_host = new QLineEdit;
        auto *whole = new QVBoxLayout(m_window.get());
        auto *inner = new QVBoxLayout(m_panel);
        whole->addWidget(m_host);
        whole->addWidget(m_panel);
        inner->addWidget(m_search);
        inner->addWidget(m_view.get());
        m_window->resize(700, 1300);
        show(m_window.get());
    }

    void cleanup() { close(); }

    void leaving_data()
    {
        QTest::addColumn<QByteArray>("way");
        for (const char *way : {"pressReturn", "pressTab", "pressOnAnotherRow", "pressBesideTheTree",
                                "pressBesideThePanel", "anotherWindow", "panelStandsBack", "focusIsTaken",
                                "currentRowMoves", "otherLanguage", "filtered", "folded", "deviceChanges"})
            QTest::newRow(way) << QByteArray(way);
    }

    /// Whatever is no way to end an edit leaves the editor, of every kind, open with its text.
    void leaving()
    {
        QFETCH(QByteArray, way);
        const bool ends = way.startsWith("press") && way != "pressBesideThePanel";
        for (const Kind &kind : Kinds) {
            QVERIFY2(open(kind.name), kind.name);
            QTest::keyClicks(m_editor, QLatin1String(kind.typed));
            const QString text = line()->text();
            QVERIFY(QMetaObject::invokeMethod(this, way));
            QCOMPARE(stored(kind), ends ? kind.after : kind.before);
            QCOMPARE(m_camera->port.writes, ends ? 1u : 0u);
            if (!ends) {
                QVERIFY2(m_editor && m_editor->isVisible(), kind.name);
                QCOMPARE(line()->text(), text);
                m_editor->setFocus();
                QTest::keyClick(m_editor, Qt::Key_Escape);
            }
            QTRY_VERIFY(!m_editor || m_view->indexWidget(cell(kind.name)) != m_editor);
            init();
        }
    }

    /// The view hands the focus on to its open editor.
    void editorsComeBack()
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

    void untouchedEditorsCloseByAPress()
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

    void dropsWhatCannotBeEdited()
    {
        for (const bool isClosed : {false, true}) {
            init();
            QVERIFY(open("Gated"));
            QTest::keyClicks(m_editor, QStringLiteral("6"));
            if (isClosed) {
                m_view->setViewDataDisable();
                m_model->dataDisabled = true;
            } else {
                GenApi::CIntegerPtr(m_camera->node("Switch"))->SetValue(0);
                m_camera->port.resetCounters();
            }
            QTRY_VERIFY2(!m_editor, isClosed ? "device closed" : "locked");
            QCOMPARE(m_camera->port.writes, 0u);
            QCOMPARE(log(), QStringList());
        }
    }

    void whatIsTypedIsWritten_data() { addRows(Kinds); }

    /// Also if it is what the editor opened with: the device may have something else by now.
    void whatIsTypedIsWritten()
    {
        const Kind &kind = currentRow(Kinds);
        QVERIFY(open(kind.name));
        QTest::keyClicks(m_editor, line()->text());
        m_camera->port.poke(kind.address, kind.after, kind.length);
        QTest::keyClick(m_editor, Qt::Key_Return);
        QCOMPARE(m_camera->port.writes, 1u);
        QCOMPARE(stored(kind), kind.before);

        QTest::keyClick(m_view.get(), Qt::Key_F2);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // untouched
        QCOMPARE(m_camera->port.writes, 1u);
    }

    void theChosenEntryIsWritten()
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

    void refusedTexts_data() { addRows(RefusedTexts); }

    void refusedTexts()
    {
        const auto &row = currentRow(RefusedTexts);
        const QVariant before = cell(row.feature).data();
        QVERIFY(open(row.feature));
        QTest::keyClick(m_editor, Qt::Key_Delete);
        QTest::keyClicks(m_editor, QLatin1String(row.typed));
        QTest::keyClick(m_editor, Qt::Key_Return);
        QTRY_VERIFY(!m_editor);
        QCOMPARE(m_camera->port.writes, 0u);
        QCOMPARE(cell(row.feature).data(), before);
        const QString line =
            QStringLiteral("VLogInfo(FeatureEditDelegate, Set %1 value failed, message = \"%2\" is no %3, 0)");
        QCOMPARE(
            log(),
            QStringList(line.arg(QLatin1String(row.feature), QLatin1String(row.typed), QLatin1String(row.wanted))));
    }

    /// Each release writes, and the editor stays.
    void arrows()
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

    // ways of leaving, by name
public:
    Q_INVOKABLE void pressReturn() { QTest::keyClick(m_editor, Qt::Key_Return); }
    Q_INVOKABLE void pressTab() { QTest::keyClick(m_editor, Qt::Key_Tab); }
    Q_INVOKABLE void pressOnAnotherRow() { click("Address", 0); }
    Q_INVOKABLE void pressBesideTheTree() { QTest::mouseClick(m_search, Qt::LeftButton); }
    Q_INVOKABLE void pressBesideThePanel() { QTest::mouseClick(m_host, Qt::LeftButton); }

    Q_INVOKABLE void anotherWindow()
    {
        QWidget other;
        QVERIFY(activate(other));
        QVERIFY(!m_editor || !m_editor->hasFocus());
        QApplication::setActiveWindow(m_window.get());
        QVERIFY(!m_editor || m_editor->hasFocus());
    }

    Q_INVOKABLE void panelStandsBack()
    {
        m_panel->hide();
        m_host->setFocus();
        m_panel->show();
    }

    Q_INVOKABLE void focusIsTaken() { m_search->setFocus(); }
    Q_INVOKABLE void currentRowMoves() { m_view->setCurrentIndex(cell("Address", 0)); }
    Q_INVOKABLE void otherLanguage() { m_model->setFeatureLanguage(1); }
    Q_INVOKABLE void filtered() { m_view->SetFilter(2, QString()); }

    Q_INVOKABLE void folded()
    {
        m_view->collapseAll();
        QCoreApplication::processEvents();
        m_view->expandAll();
    }

    Q_INVOKABLE void deviceChanges()
    {
        m_camera->port.poke(TestCamera::Width, 52);
        m_camera->map->InvalidateNodes();
        m_camera->port.poke(TestCamera::Width, 48);
        m_view->viewport()->repaint();
    }

private:
    /// What the open editor types into; null for what is no number field or line.
    QLineEdit *line() const
    {
        auto *whole = qobject_cast<QLineEdit *>(m_editor);
        return whole || !m_editor ? whole : m_editor->findChild<QLineEdit *>();
    }

    /// False unless an editor opened; all of its text is selected.
    bool open(const char *feature)
    {
        click(feature);
        m_editor = m_view->indexWidget(cell(feature));
        if (line())
            line()->selectAll();
        return m_editor && m_editor->hasFocus();
    }

    quint64 stored(const Kind &kind) const { return m_camera->port.peek(kind.address, kind.length); }
    QStringList log() const { return FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")); }

    std::unique_ptr<QWidget> m_window;
    Panel *m_panel = nullptr;
    QLineEdit *m_search = nullptr;
    QLineEdit *m_host = nullptr;
    QPointer<QWidget> m_editor;
};

QTEST_MAIN(tst_TreeEdits)
#include "tst_TreeEdits.moc"
