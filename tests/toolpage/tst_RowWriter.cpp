// SPDX-License-Identifier: MIT
#include <QAbstractItemView>
#include <QLayout>

#include "EditedRow.h"

/// What rows write, and what becomes of it when the device refuses.
class tst_RowWriter : public EditedRow
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void integer()
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

    void refusedInteger()
    {
        auto *spinBox = editorOf<QSpinBox>("Width");
        const auto refused = [&](MemoryPort::Fault fault, const char *typed) {
            m_camera->port.writeFault = fault;
            type(spinBox, QLatin1String(typed));
            return spinBox->value();
        };
        QCOMPARE(refused(MemoryPort::Fault::Refused, "80"), 48); // the initial value
        QCOMPARE(log().size(), 1);
        const QString prefix = QStringLiteral("VLogInfo(ToolPageWidgetItem, Set Width value failed, message = ");
        QVERIFY2(log().first().startsWith(prefix), qPrintable(log().first()));
        QVERIFY2(log().first().contains(QLatin1String("memory port: refused")), qPrintable(log().first()));

        QCOMPARE(refused(MemoryPort::Fault::None, "60"), 60);
        m_written->clear();
        refused(MemoryPort::Fault::Foreign, "64");
        QVERIFY(log().last().contains(QLatin1String("memory port: foreign error")));
        QCOMPARE(refused(MemoryPort::Fault::Refused, "80"), 60); // the value written last
        QCOMPARE(m_written->count(), 0);
        QCOMPARE(log().size(), 3);
    }

    /// A write that was taken is told as taken, although the row cannot read it back.
    void toldAsItWent()
    {
        DeviceReading reading;
        QStringList told;
        connect(&reading, &DeviceReading::written, this,
                [&](const QString &, const QString &feature, const QString &value, const QString &refusal) {
                    told << feature + QLatin1Char('=') + value;
                    const bool isTaken = m_camera->port.writeFault == MemoryPort::Fault::None;
                    QCOMPARE(refusal.contains(QLatin1String("memory port: refused")), !isTaken);
                    if (isTaken)
                        m_camera->port.readFault = MemoryPort::Fault::Refused;
                });
        for (const MemoryPort::Fault fault : {MemoryPort::Fault::None, MemoryPort::Fault::Refused}) {
            setUp();
            auto *spinBox = editorOf<QSpinBox>("Width");
            m_row->setReading(&reading);
            m_camera->port.writeFault = fault;
            type(spinBox, QStringLiteral("96"));
            QCOMPARE(log().size(), 1);
        }
        QCOMPARE(told, QStringList({QStringLiteral("Width=96"), QStringLiteral("Width=96")}));
    }

    void releasedRowsLeaveTheDeviceAlone()
    {
        for (const char *name : {"Width", "Gain", "Power", "Selector", "Start"}) {
            const InRow at(name);
            init();
            editorOf<QWidget>(name);
            auto *comboBox = m_row->findChild<QComboBox *>();
            auto *spinBox = m_row->findChild<QAbstractSpinBox *>();
            if (comboBox)
                comboBox->showPopup();
            if (spinBox)
                typeHalf(spinBox, "6");
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
    }

    void buttons()
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

    void enumeration()
    {
        // As it stands, and Chinese for the same name and for another one.
        const std::tuple<const char *, int> rows[] = {{"Encoder", 1}, {"编码器", 1}, {"双向", 2}};
        for (const auto &[name, written] : rows) {
            const InRow at(name);
            init();
            m_camera = std::make_unique<TestCamera>(
                descriptionWith("<Enumeration Name=\"N\"><EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry>"
                                "<EnumEntry Name=\"Encoder\"><Value>1</Value></EnumEntry><EnumEntry "
                                "Name=\"Motion\"><Value>2</Value></EnumEntry><Value>0</Value>"
                                "</Enumeration>"));
            auto *comboBox = editorOf<QComboBox>("N");
            QCOMPARE(comboBox->count(), 3);
            const QString chosen = QString::fromUtf8(name);
            if (comboBox->findText(chosen) < 0)
                comboBox->addItem(chosen);
            comboBox->setCurrentText(chosen);
            QCOMPARE(GenApi::CEnumerationPtr(m_camera->node("N"))->GetIntValue(), int64_t(written));
            QVERIFY(!comboBox->hasFocus());
            QCOMPARE(m_written->count(), 1);
            QVERIFY(log().isEmpty());
        }
    }

    /// The device, whose numbers have changed meanwhile, refuses: the row shows what the device has, or what it had.
    void refusedInput()
    {
        const std::tuple<const char *, const char *, bool, QVariant> rows[] = {
            {"integer", "Width", true, 12},
            {"integer, unreadable", "Width", false, 48},
            {"float", "Gain", true, 12.5},
            {"float, unreadable", "Gain", false, 2.5},
            {"boolean", "Power", true, false},
            {"boolean, unreadable", "Power", false, false},
            {"enumeration", "Selector", true, QStringLiteral("Zulu")},
            {"enumeration, unreadable", "Selector", false, QStringLiteral("Zulu")},
            {"command", "Start", true, QStringLiteral("Execute")}};
        for (const auto &[name, node, isReadable, shown] : rows) {
            const InRow at(name);
            init();
            QVERIFY(editorOf<QWidget>(node));
            MemoryPort &port = m_camera->port;
            port.poke(TestCamera::Width, 12);
            port.pokeDouble(TestCamera::Gain, 12.5);
            port.writeFault = MemoryPort::Fault::Refused;
            port.readFault = isReadable ? MemoryPort::Fault::None : MemoryPort::Fault::Timeout;
            if (auto *comboBox = m_row->findChild<QComboBox *>())
                comboBox->setCurrentIndex(1);
            else if (auto *spinBox = m_row->findChild<QAbstractSpinBox *>())
                type(spinBox, QStringLiteral("64"));
            else
                m_row->findChild<QPushButton *>()->click();
            QCOMPARE(shownBy(*m_row), shown);
            QCOMPARE(m_written->count(), 0);
            QCOMPARE(log().size(), 1);
            QVERIFY(log().first().contains(QStringLiteral("Set %1 value failed, message = ").arg(QLatin1String(node))));
        }
    }

    void wheelOverAnUnfocusedEditorScrollsOnly()
    {
        auto *comboBox = editorOf<QComboBox>("Selector");
        for (const bool hasFocus : {false, true}) {
            hasFocus ? comboBox->setFocus() : comboBox->clearFocus();
            QCOMPARE(turnWheel(*comboBox), hasFocus);
            QCOMPARE(comboBox->currentIndex(), hasFocus ? 1 : 0);
        }
    }

    void floats()
    {
        auto *spinBox = editorOf<QDoubleSpinBox>("Gain");
        m_camera->port.onWrite[TestCamera::Gain] = [](MemoryPort &port) { port.pokeDouble(TestCamera::Gain, 7.5); };
        type(spinBox, QStringLiteral("7.3"));
        QCOMPARE(spinBox->value(), 7.5); // what the device made of it
        QVERIFY(!spinBox->hasFocus());
        QCOMPARE(m_written->count(), 1);
        m_camera->port.onWrite.clear();
        spinBox->setValue(9.5);
        QCOMPARE(m_camera->port.writes, 1u);
        m_row->setCurrentValue();
        QCOMPARE(gain(), 9.5);
    }
};

QTEST_MAIN(tst_RowWriter)
#include "tst_RowWriter.moc"
