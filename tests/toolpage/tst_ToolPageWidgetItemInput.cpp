// SPDX-License-Identifier: MIT
#include <QAbstractItemView>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLayout>
#include <QPushButton>
#include <QSpinBox>
#include <QWheelEvent>

#include "EditedRow.h"
#include "PanelBase/NumberField.h"
#include "ToolPage/SwitchButton.h"

/// What rows write, with the mouse and the keyboard.
class tst_ToolPageWidgetItemInput : public EditedRow
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }
    void integer();
    void refusedInteger();
    void floatShowsWhatTheDeviceTook();
    void leavingAnUntouchedEditorWritesNothing();
    void escapeRestores();
    void escapeRestoresCallersSpinBoxes_data();
    void escapeRestoresCallersSpinBoxes();
    void failedReadsKeepWhatIsTyped();
    void deletingARowWritesNothing();
    void releasedRowsLeaveTheDeviceAlone_data();
    void releasedRowsLeaveTheDeviceAlone();
    void buttons();
    void enumeration_data();
    void enumeration();
    void refusedInput_data();
    void refusedInput();
    void wheelOverAnUnfocusedEditorScrollsOnly();
    void setCurrentValue();
};

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

void tst_ToolPageWidgetItemInput::refusedInteger()
{
    auto *spinBox = editorOf<QSpinBox>("Width");
    m_camera->port.writeFault = MemoryPort::Fault::Refused;
    type(spinBox, QStringLiteral("80"));
    QCOMPARE(spinBox->value(), 48); // the initial value
    QCOMPARE(log().size(), 1);
    const QString prefix = QStringLiteral("VLogInfo(ToolPageWidgetItem, Set Width value failed, message = ");
    QVERIFY2(log().first().startsWith(prefix), qPrintable(log().first()));
    QVERIFY2(log().first().contains(QLatin1String("memory port: refused")), qPrintable(log().first()));

    m_camera->port.writeFault = MemoryPort::Fault::None;
    type(spinBox, QStringLiteral("60"));
    m_written->clear();
    m_camera->port.writeFault = MemoryPort::Fault::Foreign;
    spinBox->setFocus();
    type(spinBox, QStringLiteral("64"));
    QVERIFY(log().last().contains(QLatin1String("memory port: foreign error")));
    m_camera->port.writeFault = MemoryPort::Fault::Refused;
    spinBox->setFocus();
    type(spinBox, QStringLiteral("80"));
    QCOMPARE(spinBox->value(), 60); // the value written last
    QCOMPARE(m_written->count(), 0);
    QCOMPARE(log().size(), 3);
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

void tst_ToolPageWidgetItemInput::escapeRestores()
{
    for (const char *typed : {"", "64"}) { // no number yet, and one
        m_camera->port.poke(TestCamera::Width, 48);
        auto *spinBox = editorOf<QSpinBox>("Width");
        spinBox->selectAll();
        QTest::keyClick(spinBox, Qt::Key_Delete);
        QTest::keyClicks(spinBox, QLatin1String(typed));
        m_camera->port.poke(TestCamera::Width, 52);
        m_camera->map->InvalidateNodes();
        QTest::keyClick(spinBox, Qt::Key_Escape);
        QCOMPARE(spinBox->text(), QStringLiteral("52"));
        QVERIFY(spinBox->hasFocus());
        spinBox->clearFocus();
        QCOMPARE(m_camera->port.writes, 0u);
    }
}

void tst_ToolPageWidgetItemInput::escapeRestoresCallersSpinBoxes_data()
{
    QTest::addColumn<bool>("inContainer");
    QTest::newRow("alone") << false;
    QTest::newRow("beside a button") << true;
}

void tst_ToolPageWidgetItemInput::escapeRestoresCallersSpinBoxes()
{
    QFETCH(bool, inContainer);
    ToolPageWidgetItem row;
    auto *container = new QWidget(&row);
    auto *spinBox = new IntegerField(inContainer ? container : &row, NumberInput::Beyond::Nearest);
    const QString label = QStringLiteral("Period");
    row.setItemInfo({label, label}, {}, inContainer ? container : spinBox);
    row.setLanguage(0);
    QCOMPARE(spinBox->accessibleName(), label);
    spinBox->load(7);
    row.show();
    QApplication::setActiveWindow(&row);
    QVERIFY(QTest::qWaitForWindowActive(&row));

    spinBox->setFocus();
    spinBox->selectAll();
    QTest::keyClicks(spinBox, QStringLiteral("42"));
    QTest::keyClick(spinBox, Qt::Key_Escape);
    QCOMPARE(spinBox->value(), 7);
    spinBox->selectAll();
    QTest::keyClicks(spinBox, QStringLiteral("42"));
    QTest::keyClick(spinBox, Qt::Key_Return);
    QTest::keyClicks(spinBox, QStringLiteral("1"));
    QTest::keyClick(spinBox, Qt::Key_Escape);
    QCOMPARE(spinBox->value(), 42);
    QTest::keyClicks(spinBox, QStringLiteral("x"));
    QTest::keyClick(spinBox, Qt::Key_Return);
    QCOMPARE(log(),
             QStringList(QStringLiteral("VLogInfo(ToolPageWidgetItem, Set Period value failed, message = "
                                        "\"4x2\" is no integer from 0 to 99, 0)")));
}

void tst_ToolPageWidgetItemInput::failedReadsKeepWhatIsTyped()
{
    auto *spinBox = editorOf<QSpinBox>("Uncached");
    spinBox->selectAll();
    QTest::keyClicks(spinBox, QStringLiteral("64"));
    m_camera->port.readFault = MemoryPort::Fault::Timeout;
    m_row->updateWidget(false);
    m_camera->port.readFault = MemoryPort::Fault::None;
    QCOMPARE(spinBox->text(), QStringLiteral("64"));
    QTest::keyClick(spinBox, Qt::Key_Return);
    QCOMPARE(m_camera->port.peek(TestCamera::Uncached), uint64_t(64));
}

void tst_ToolPageWidgetItemInput::deletingARowWritesNothing()
{
    auto *spinBox = editorOf<QSpinBox>("Width");
    QVERIFY(spinBox);
    spinBox->selectAll();
    QTest::keyClicks(spinBox, QStringLiteral("64"));
    m_written.reset();
    m_row.reset();
    QCOMPARE(m_camera->port.writes, 0u);
}

void tst_ToolPageWidgetItemInput::releasedRowsLeaveTheDeviceAlone_data()
{
    QTest::addColumn<QByteArray>("node");
    for (const char *node : {"Width", "Gain", "Power", "Selector", "Start"})
        QTest::newRow(node) << QByteArray(node);
}

void tst_ToolPageWidgetItemInput::releasedRowsLeaveTheDeviceAlone()
{
    QFETCH(QByteArray, node);
    editorOf<QWidget>(node);
    auto *comboBox = m_row->findChild<QComboBox *>();
    auto *spinBox = m_row->findChild<QAbstractSpinBox *>();
    if (comboBox)
        comboBox->showPopup();
    if (spinBox) {
        spinBox->setFocus();
        QTest::keyClicks(spinBox, QStringLiteral("6"));
    }
    m_row->releaseNode();
    QCOMPARE(m_camera->port.writes, 0u);
    m_camera.reset();

    m_row->hide();
    m_row->show();
    m_row->updateWidget(true);
    m_row->setWidgetItemEnable(true);
    QVERIFY(m_row->isVisible());
    m_row->setCurrentValue();
    if (comboBox) {
        QVERIFY(!comboBox->view()->isVisible());
        comboBox->setCurrentIndex(1);
    } else if (spinBox) {
        Q_EMIT spinBox->editingFinished();
    } else {
        Q_EMIT m_row->findChild<QPushButton *>()->clicked();
    }
    QVERIFY(!m_row->layout()->itemAt(m_row->layout()->count() - 1)->widget()->isEnabled());
    QCOMPARE(m_written->count(), 0);
    QCOMPARE(FakeHostCore::instance().calls(), QStringList());
}

void tst_ToolPageWidgetItemInput::buttons()
{
    auto *button = editorOf<SwitchButton>("Power");
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(m_camera->port.peek(TestCamera::Power), uint64_t(1));
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(m_camera->port.peek(TestCamera::Power), uint64_t(0));
    QCOMPARE(m_written->count(), 2);

    QTest::keyClick(editorOf<QPushButton>("Start"), Qt::Key_Space);
    QCOMPARE(m_camera->port.peek(TestCamera::Start), uint64_t(1));
    QCOMPARE(m_written->count(), 0);
    QVERIFY(log().isEmpty());
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

void tst_ToolPageWidgetItemInput::refusedInput_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<bool>("isReadable");
    QTest::addColumn<QVariant>("shown");
    const QVariant nothing;
    QTest::newRow("integer") << QByteArray("Width") << true << QVariant(12);
    QTest::newRow("integer, unreadable") << QByteArray("Width") << false << QVariant(48);
    QTest::newRow("float") << QByteArray("Gain") << true << QVariant(12.5);
    QTest::newRow("float, unreadable") << QByteArray("Gain") << false << QVariant(2.5);
    QTest::newRow("boolean") << QByteArray("Power") << true << QVariant(false);
    QTest::newRow("boolean, unreadable") << QByteArray("Power") << false << QVariant(false);
    QTest::newRow("enumeration") << QByteArray("Selector") << true << QVariant(0);
    QTest::newRow("enumeration, unreadable") << QByteArray("Selector") << false << QVariant(0);
    QTest::newRow("command") << QByteArray("Start") << true << nothing;
}

/// The device, whose numbers have changed meanwhile, refuses: the row shows what the device has, or what it had before.
void tst_ToolPageWidgetItemInput::refusedInput()
{
    QFETCH(QByteArray, node);
    QFETCH(bool, isReadable);
    auto *editor = editorOf<QWidget>(node);
    QVERIFY(editor);
    MemoryPort &port = m_camera->port;
    port.poke(TestCamera::Width, 12);
    port.pokeDouble(TestCamera::Gain, 12.5);
    port.writeFault = MemoryPort::Fault::Refused;
    port.readFault = isReadable ? MemoryPort::Fault::None : MemoryPort::Fault::Timeout;
    auto *comboBox = m_row->findChild<QComboBox *>();
    auto *spinBox = m_row->findChild<QAbstractSpinBox *>();
    auto *button = m_row->findChild<SwitchButton *>();
    if (comboBox)
        comboBox->setCurrentIndex(1);
    else if (spinBox)
        type(spinBox, QStringLiteral("64"));
    else
        m_row->findChild<QPushButton *>()->click();
    QTEST(comboBox      ? QVariant(comboBox->currentIndex())
              : spinBox ? spinBox->property("value")
              : button  ? QVariant(button->isOn())
                        : QVariant(),
          "shown");
    QCOMPARE(m_written->count(), 0);
    QCOMPARE(log().size(), 1);
    QVERIFY(log().first().contains(QStringLiteral("Set %1 value failed, message = ").arg(QLatin1String(node))));
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
