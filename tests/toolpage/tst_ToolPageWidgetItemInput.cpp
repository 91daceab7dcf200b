// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QWheelEvent>

#include "TestCamera.h"
#include "ToolPage/SwitchButton.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/FakeHostCore.h"

/// What rows write, with the mouse and the keyboard.
class tst_ToolPageWidgetItemInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void integer();
    void refusedInteger_data();
    void refusedInteger();
    void floatShowsWhatTheDeviceTook();
    void refusedFloat();
    void leavingAnUntouchedEditorWritesNothing();
    void boolean();
    void enumeration_data();
    void enumeration();
    void refusedChoices_data();
    void refusedChoices();
    void command();
    void foreignFault();
    void wheelOverAnUnfocusedEditorScrollsOnly();
    void setCurrentValue();

private:
    template <class Editor>
    Editor *editorOf(const char *nodeName);
    void type(QWidget *editor, const QString &text);
    QStringList log() const { return FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")); }

    std::unique_ptr<TestCamera> m_camera;
    std::unique_ptr<ToolPageWidgetItem> m_row;
    std::unique_ptr<QSignalSpy> m_written;
};

void tst_ToolPageWidgetItemInput::init()
{
    FakeHostCore::instance().reset();
    m_camera = std::make_unique<TestCamera>();
    m_camera->port.poke(TestCamera::Width, 48);
    m_camera->port.pokeDouble(TestCamera::Gain, 2.5);
}

void tst_ToolPageWidgetItemInput::cleanup()
{
    m_written.reset();
    m_row.reset();
    m_camera.reset();
}

/// The editor of a new row, shown in an active window.
template <class Editor>
Editor *tst_ToolPageWidgetItemInput::editorOf(const char *nodeName)
{
    m_row = std::make_unique<ToolPageWidgetItem>();
    m_row->setItemInfo({}, {}, m_camera->node(nodeName), true);
    m_row->show();
    QApplication::setActiveWindow(m_row.get());
    if (!QTest::qWaitForWindowActive(m_row.get()))
        return nullptr;
    m_row->findChild<Editor *>()->setFocus();
    m_written = std::make_unique<QSignalSpy>(m_row.get(), &ToolPageWidgetItem::valueChanged);
    m_camera->port.resetCounters();
    return m_row->findChild<Editor *>();
}

void tst_ToolPageWidgetItemInput::type(QWidget *editor, const QString &text)
{
    editor->findChild<QLineEdit *>()->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
}

void tst_ToolPageWidgetItemInput::integer()
{
    auto *spinBox = editorOf<QSpinBox>("Width");
    type(spinBox, QStringLiteral("96"));
    QCOMPARE(m_camera->port.peek(TestCamera::Width), uint64_t(96));
    QCOMPARE(m_camera->port.writes, 1u);
    QCOMPARE(spinBox->value(), 96);
    QVERIFY(!spinBox->hasFocus());
    QCOMPARE(m_written->count(), 1);
    QVERIFY(!m_written->first().first().isValid() || !m_written->first().first().value<QVariant>().isValid());
    QVERIFY(log().isEmpty());
}

void tst_ToolPageWidgetItemInput::refusedInteger_data()
{
    QTest::addColumn<int>("acceptedBefore");
    QTest::newRow("back to the initial value") << 48;
    QTest::newRow("back to the value written last") << 60;
}

void tst_ToolPageWidgetItemInput::refusedInteger()
{
    QFETCH(int, acceptedBefore);
    auto *spinBox = editorOf<QSpinBox>("Width");
    if (acceptedBefore != 48)
        type(spinBox, QString::number(acceptedBefore));
    m_written->clear();
    m_camera->port.writeFault = MemoryPort::Fault::Refused;
    spinBox->setFocus();
    type(spinBox, QStringLiteral("80"));
    QCOMPARE(spinBox->value(), acceptedBefore);
    QCOMPARE(m_written->count(), 0);
    QCOMPARE(log().size(), 1);
    const QString prefix = QStringLiteral("VLogInfo(ToolPageWidgetItem, Set Width value failed, message = ");
    QVERIFY2(log().first().startsWith(prefix), qPrintable(log().first()));
    QVERIFY2(log().first().contains(QLatin1String("memory port: refused")), qPrintable(log().first()));
}

void tst_ToolPageWidgetItemInput::floatShowsWhatTheDeviceTook()
{
    auto *spinBox = editorOf<QDoubleSpinBox>("Gain");
    m_camera->port.onWrite[TestCamera::Gain] = [](MemoryPort &port) { port.pokeDouble(TestCamera::Gain, 7.5); };
    type(spinBox, QStringLiteral("7.3"));
    QCOMPARE(spinBox->value(), 7.5);
    QVERIFY(!spinBox->hasFocus());
    QCOMPARE(m_written->count(), 1);
}

void tst_ToolPageWidgetItemInput::refusedFloat()
{
    auto *spinBox = editorOf<QDoubleSpinBox>("Gain");
    m_camera->port.writeFault = MemoryPort::Fault::Timeout;
    type(spinBox, QStringLiteral("7.3"));
    QCOMPARE(spinBox->value(), 2.5);
    QCOMPARE(m_written->count(), 0);
    QCOMPARE(log().size(), 1);
    QVERIFY(log().first().contains(QLatin1String("Set Gain value failed, message = ")));
}

void tst_ToolPageWidgetItemInput::leavingAnUntouchedEditorWritesNothing()
{
    m_camera->port.pokeDouble(TestCamera::Gain, 1.23456789);
    auto *spinBox = editorOf<QDoubleSpinBox>("Gain");
    spinBox->clearFocus();
    QCOMPARE(m_camera->port.writes, 0u);
    QCOMPARE(m_written->count(), 0);

    spinBox->setFocus();
    QTest::keyClick(spinBox, Qt::Key_Up);
    spinBox->clearFocus();
    QCOMPARE(m_camera->port.writes, 1u);
    QCOMPARE(m_written->count(), 1);
}

void tst_ToolPageWidgetItemInput::boolean()
{
    auto *button = editorOf<SwitchButton>("Power");
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(m_camera->port.peek(TestCamera::Power), uint64_t(1));
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(m_camera->port.peek(TestCamera::Power), uint64_t(0));
    QCOMPARE(m_written->count(), 2);
}

void tst_ToolPageWidgetItemInput::enumeration_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<int>("written");
    QTest::newRow("as it stands") << QStringLiteral("Encoder") << 1;
    QTest::newRow("Chinese") << QStringLiteral("编码器") << 1;
    QTest::newRow("Chinese of another name") << QStringLiteral("双向") << 2;
}

void tst_ToolPageWidgetItemInput::enumeration()
{
    m_camera = std::make_unique<TestCamera>(TestCamera::description(
        "<Category Name=\"Root\"><pFeature>E</pFeature></Category><Enumeration Name=\"E\">"
        "<EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry><EnumEntry Name=\"Encoder\"><Value>1</Value></EnumEntry>"
        "<EnumEntry Name=\"Motion\"><Value>2</Value></EnumEntry><Value>0</Value></Enumeration>"));
    auto *comboBox = editorOf<QComboBox>("E");
    QCOMPARE(comboBox->count(), 3);
    QFETCH(QString, chosen);
    QFETCH(int, written);
    if (comboBox->findText(chosen) < 0)
        comboBox->addItem(chosen);
    comboBox->setCurrentText(chosen);
    QCOMPARE(GenApi::CEnumerationPtr(m_camera->node("E"))->GetIntValue(), int64_t(written));
    QVERIFY(!comboBox->hasFocus());
    QCOMPARE(m_written->count(), 1);
    QVERIFY(log().isEmpty());
}

void tst_ToolPageWidgetItemInput::refusedChoices_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::newRow("boolean") << QByteArray("Power");
    QTest::newRow("enumeration") << QByteArray("Selector");
    QTest::newRow("command") << QByteArray("Start");
}

void tst_ToolPageWidgetItemInput::refusedChoices()
{
    QFETCH(QByteArray, node);
    auto *editor = editorOf<QWidget>(node);
    m_camera->port.writeFault = MemoryPort::Fault::Refused;
    if (auto *comboBox = m_row->findChild<QComboBox *>())
        comboBox->setCurrentIndex(1);
    else
        m_row->findChild<QPushButton *>()->click();
    QVERIFY(editor);
    QCOMPARE(m_written->count(), 0);
    QCOMPARE(log().size(), 1);
    QVERIFY(log().first().contains(QStringLiteral("Set %1 value failed, message = ").arg(QLatin1String(node))));
}

void tst_ToolPageWidgetItemInput::command()
{
    auto *button = editorOf<QPushButton>("Start");
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(m_camera->port.peek(TestCamera::Start), uint64_t(1));
    QCOMPARE(m_written->count(), 0);
    QVERIFY(log().isEmpty());
}

void tst_ToolPageWidgetItemInput::foreignFault()
{
    auto *spinBox = editorOf<QSpinBox>("Width");
    m_camera->port.writeFault = MemoryPort::Fault::Foreign;
    type(spinBox, QStringLiteral("80"));
    QCOMPARE(m_written->count(), 0);
    QCOMPARE(log().size(), 1);
    QVERIFY(log().first().contains(QLatin1String("memory port: foreign error")));
}

void tst_ToolPageWidgetItemInput::wheelOverAnUnfocusedEditorScrollsOnly()
{
    auto *comboBox = editorOf<QComboBox>("Selector");
    const auto turnWheel = [comboBox] {
        QWheelEvent wheel(QPointF(5, 5), comboBox->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(comboBox, &wheel);
    };
    comboBox->clearFocus();
    turnWheel();
    QCOMPARE(comboBox->currentIndex(), 0);
    comboBox->setFocus();
    turnWheel();
    QCOMPARE(comboBox->currentIndex(), 1);
}

void tst_ToolPageWidgetItemInput::setCurrentValue()
{
    auto *spinBox = editorOf<QDoubleSpinBox>("Gain");
    spinBox->setValue(9.5);
    QCOMPARE(m_camera->port.writes, 0u);
    m_row->setCurrentValue();
    QCOMPARE(GenApi::CFloatPtr(m_camera->node("Gain"))->GetValue(), 9.5);
}

QTEST_MAIN(tst_ToolPageWidgetItemInput)
#include "tst_ToolPageWidgetItemInput.moc"
