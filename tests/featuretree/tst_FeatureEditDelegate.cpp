// SPDX-License-Identifier: MIT
#include <memory>
#include <stdexcept>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeView>
#include <QWheelEvent>
#include <QtTest>

#include "FaultyNode.h"
#include "FeatureTree/FeatureEditDelegate.h"
#include "FeatureTree/IntegerSpinBox.h"
#include "FeatureTree/TreeItem.h"
#include "FeatureTree/TreeModel.h"
#include "FindRow.h"
#include "TestCamera.h"
#include "support/FakeHostCore.h"

class tst_FeatureEditDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void choosesEditor_data();
    void choosesEditor();
    void maskedEditors_data();
    void maskedEditors();
    void spinBoxes();
    void lists();
    void currentEntryThatIsGone();
    void commits_data();
    void commits();
    void unchangedEditorWritesNothing_data();
    void unchangedEditorWritesNothing();
    void editorOfAFailedReadWritesNothing();
    void choiceIsCommittedAtOnce();
    void unfinishedMaskCommitsOnEnter();
    void wheelChangesNothing();
    void commandButton();
    void paintsReadOnlyGray_data();
    void paintsReadOnlyGray();
    void numbersKeepTheirDigits();
    void hoversBooleans();
    void failingNode();
    void disabledTouchesNoNode();

private:
    QModelIndex cell(const char *name) const { return findRow(*m_model, name, 1); }
    QWidget *open(const char *name);
    template <class Editor>
    Editor *openAs(const char *name)
    {
        return qobject_cast<Editor *>(open(name));
    }
    QString shownText(const char *name, const QLocale &locale = QLocale::c()) const;
    QImage painted(const QModelIndex &index, const QString &overlay = {}) const;

    std::unique_ptr<TestCamera> m_camera;
    std::unique_ptr<TreeModel> m_model;
    std::unique_ptr<QWidget> m_window;
    std::unique_ptr<FeatureEditDelegate> m_delegate;
};

void tst_FeatureEditDelegate::init()
{
    FakeHostCore::instance().reset();
    m_camera = std::make_unique<TestCamera>();
    m_camera->port.poke(TestCamera::Width, 48);
    m_camera->port.pokeDouble(TestCamera::Gain, 2.5);
    m_camera->port.poke(TestCamera::Flags, 255, 8);
    m_camera->port.poke(TestCamera::Mask, 0xffffff00);
    m_camera->port.poke(TestCamera::Mac, 0x001a2b3c4d5e, 8);
    m_camera->port.poke(TestCamera::Selector, 1);
    m_camera->port.pokeText(TestCamera::Label, "text", 64);
    m_camera->port.pokeDouble(TestCamera::Temperature, 12.3456);
    m_model = std::make_unique<TreeModel>(QStringList{QString(), QString()}, m_camera->nodes());
    m_model->AddModelData(m_camera->nodes(), QString());
    m_window = std::make_unique<QWidget>();
    m_delegate = std::make_unique<FeatureEditDelegate>();
    m_camera->port.resetCounters();
}

void tst_FeatureEditDelegate::cleanup()
{
    m_delegate.reset();
    m_window.reset();
    m_model.reset();
    m_camera.reset();
}

/// A filled editor of that feature, with the delegate's event filter as a view would install it.
QWidget *tst_FeatureEditDelegate::open(const char *name)
{
    QWidget *editor = m_delegate->createEditor(m_window.get(), QStyleOptionViewItem(), cell(name));
    if (editor) {
        editor->installEventFilter(m_delegate.get());
        m_delegate->setEditorData(editor, cell(name));
    }
    return editor;
}

void tst_FeatureEditDelegate::choosesEditor_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("editor");
    const auto row = [](const char *name, const char *editor) {
        QTest::newRow(name) << QByteArray(name) << QByteArray(editor);
    };
    row("Width", "IntegerSpinBox");
    row("Gain", "QDoubleSpinBox");
    row("Power", "QComboBox");
    row("Selector", "QComboBox");
    row("Label", "QLineEdit");
    row("Start", "QPushButton");
    row("WriteOnlyGain", "QDoubleSpinBox");
    row("WriteOnly", "");
    row("Temperature", "");
    row("StartLocked", "");
    row("Anything", "");
    row("Image", "");
}

void tst_FeatureEditDelegate::choosesEditor()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, editor);
    const QWidget *widget = open(name);
    QCOMPARE(QByteArray(widget ? widget->metaObject()->className() : ""), editor);
    QCOMPARE(m_delegate->isEditable(cell(name)), !editor.isEmpty());
    QVERIFY(!m_delegate->createEditor(m_window.get(), QStyleOptionViewItem(), cell(name).siblingAtColumn(0)));
}

void tst_FeatureEditDelegate::maskedEditors_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("address");
    QTest::addColumn<quint64>("written");
    const QString ipv4 = QStringLiteral("000.000.000.000;_");
    const QString mac = QStringLiteral("HH:HH:HH:HH:HH:HH;_");
    const QString hex = QStringLiteral("HHHHHHHHHHHHHHHH");
    QTest::newRow("subnet mask") << QByteArray("GevCurrentSubnetMask") << ipv4 << "255.255.255.0"
                                 << "1.2.3.4" << int(TestCamera::Mask) << quint64(0xffffff00);
    QTest::newRow("MAC") << QByteArray("GevMACAddress") << mac << "02:64:36:07:79:4"
                         << "00:11:22:33:44:55" << int(TestCamera::Mac) << quint64(0x001a2b3c4d5e);
    QTest::newRow("IPv4") << QByteArray("Address") << ipv4 << "0.0.0.0"
                          << "1.2.3.4" << int(TestCamera::Address4) << quint64(0);
    QTest::newRow("hex") << QByteArray("Flags") << hex << "ff"
                         << "1F" << int(TestCamera::Flags) << quint64(0x1f);
    QTest::newRow("64 bits") << QByteArray("Flags") << hex << "ff"
                             << "FFFFFFFFFFFFFFFE" << int(TestCamera::Flags) << quint64(0xfffffffffffffffe);
}

void tst_FeatureEditDelegate::maskedEditors()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, mask);
    QFETCH(QString, text);
    QFETCH(QString, typed);
    QFETCH(int, address);
    QFETCH(quint64, written);
    const QString hex = QStringLiteral("HHHHHHHHHHHHHHHH");
    auto *line = openAs<QLineEdit>(name);
    QVERIFY(line);
    QCOMPARE(line->inputMask(), mask);
    QCOMPARE(line->text(), text);
    m_delegate->setModelData(line, m_model.get(), cell(name));
    QCOMPARE(FakeHostCore::instance().calls(), QStringList());
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, typed);
    m_delegate->setModelData(line, m_model.get(), cell(name));
    m_delegate->setModelData(line, m_model.get(), cell(name)); // once more when the editor closes
    const QString discarded = QStringLiteral("VLogInfo(FeatureEditDelegate, %1: addresses are not written, \"%2\" is "
                                             "discarded, 0)")
                                  .arg(QString::fromUtf8(name), line->text());
    QCOMPARE(FakeHostCore::instance().calls(), mask == hex ? QStringList() : QStringList(discarded));
    const int length = address == TestCamera::Mask || address == TestCamera::Address4 ? 4 : 8;
    QCOMPARE(quint64(m_camera->port.peek(address, length)), written);
}

void tst_FeatureEditDelegate::spinBoxes()
{
    const auto *width = openAs<QDoubleSpinBox>("Width");
    QVERIFY(width);
    QCOMPARE(width->minimum(), 0.0);
    QCOMPARE(width->maximum(), 100.0);
    QCOMPARE(width->singleStep(), 4.0);
    QCOMPARE(width->decimals(), 0);
    QCOMPARE(width->value(), 48.0);
    QCOMPARE(width->contextMenuPolicy(), Qt::NoContextMenu);

    const auto *gain = openAs<QDoubleSpinBox>("Gain");
    QVERIFY(gain);
    QCOMPARE(gain->maximum(), 100.0);
    QCOMPARE(gain->singleStep(), 0.1);
    QCOMPARE(gain->decimals(), 4);
    QCOMPARE(gain->value(), 2.5);

    const auto *big = openAs<QDoubleSpinBox>("Big");
    QVERIFY(big && big->sizeHint().width() < 400);
    const auto *sine = openAs<QDoubleSpinBox>("SinData");
    QVERIFY(sine);
    QCOMPARE(sine->decimals(), 6);
    QVERIFY(sine->maximum() > 1e300);
    QVERIFY2(sine->sizeHint().width() < 400, qPrintable(QString::number(sine->sizeHint().width())));
}

void tst_FeatureEditDelegate::lists()
{
    const auto *power = openAs<QComboBox>("Power");
    QVERIFY(power);
    QCOMPARE(power->count(), 2);
    QCOMPARE(power->itemText(1), QStringLiteral("True"));
    QCOMPARE(power->currentIndex(), 0);

    auto *selector = openAs<QComboBox>("Selector");
    QVERIFY(selector);
    QCOMPARE(selector->styleSheet(), QStringLiteral("QComboBox QAbstractItemView::item {height: 50px;}"));
    QCOMPARE(selector->itemText(0), QStringLiteral("Zulu"));
    QCOMPARE(selector->itemText(1), QStringLiteral("Alpha"));
    QCOMPARE(selector->currentText(), QStringLiteral("Alpha"));
    m_delegate->setEditorData(selector, cell("Selector"));
    QCOMPARE(selector->count(), 2);
}

void tst_FeatureEditDelegate::currentEntryThatIsGone()
{
    m_camera->port.poke(TestCamera::Selector, 2);
    m_camera->map->InvalidateNodes();
    auto *selector = openAs<QComboBox>("Selector");
    QVERIFY(selector);
    QCOMPARE(selector->count(), 2);
    m_delegate->setModelData(selector, m_model.get(), cell("Selector"));
    QCOMPARE(m_camera->port.writes, 0u);
}

void tst_FeatureEditDelegate::commits_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("address");
    QTest::addColumn<quint64>("written");
    QTest::newRow("integer") << QByteArray("Width") << QVariant(52.0) << int(TestCamera::Width) << quint64(52);
    QTest::newRow("boolean") << QByteArray("Power") << QVariant(1) << int(TestCamera::Power) << quint64(1);
    QTest::newRow("entry") << QByteArray("Selector") << QVariant(0) << int(TestCamera::Selector) << quint64(0);
    QTest::newRow("float") << QByteArray("Gain") << QVariant(0.5) << int(TestCamera::Gain)
                           << quint64(0x3fe0000000000000);
    QTest::newRow("text") << QByteArray("Label") << QVariant(QStringLiteral("abcdefgh")) << int(TestCamera::Label)
                          << quint64(0x6867666564636261);
}

void tst_FeatureEditDelegate::commits()
{
    QFETCH(QByteArray, name);
    QFETCH(QVariant, value);
    QFETCH(int, address);
    QFETCH(quint64, written);
    QWidget *editor = open(name);
    if (auto *box = qobject_cast<QDoubleSpinBox *>(editor))
        box->setValue(value.toDouble());
    else if (auto *list = qobject_cast<QComboBox *>(editor))
        list->setCurrentIndex(value.toInt());
    else if (auto *line = qobject_cast<QLineEdit *>(editor))
        line->setText(value.toString());
    m_delegate->setModelData(editor, m_model.get(), cell(name));
    QCOMPARE(quint64(m_camera->port.peek(address, 8)), written);
}

void tst_FeatureEditDelegate::unchangedEditorWritesNothing_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"Width", "Big", "Gain", "SinData", "Power", "Selector", "Label", "Flags", "Start",
                             "WriteOnlyGain", "GevMACAddress"})
        QTest::newRow(name) << QByteArray(name);
}

/// SinData has more digits than its editor and a later read must still show them all.
void tst_FeatureEditDelegate::unchangedEditorWritesNothing()
{
    QFETCH(QByteArray, name);
    m_camera->port.poke(TestCamera::Big, (quint64(1) << 53) + 1, 8);
    const QVariant before = m_model->getItem(cell(name))->data(1);
    QWidget *editor = open(name);
    QVERIFY(editor);
    m_delegate->setModelData(editor, m_model.get(), cell(name));
    QCOMPARE(m_camera->port.writes, 0u);
    QCOMPARE(m_model->getItem(cell(name))->data(1), before);
}

void tst_FeatureEditDelegate::editorOfAFailedReadWritesNothing()
{
    m_camera->port.readFault = MemoryPort::Fault::Timeout;
    QWidget *editor = open("Uncached");
    QVERIFY(editor);
    m_camera->port.readFault = MemoryPort::Fault::None;
    m_delegate->setModelData(editor, m_model.get(), cell("Uncached"));
    QCOMPARE(m_camera->port.writes, 0u);

    m_camera->port.poke(TestCamera::Switch, 1);
    m_camera->map->InvalidateNodes();
    editor = m_delegate->createEditor(m_window.get(), QStyleOptionViewItem(), cell("Gated"));
    QVERIFY(editor);
    m_camera->map->InvalidateNodes();
    m_camera->port.readFault = MemoryPort::Fault::Timeout;
    m_delegate->setEditorData(editor, cell("Gated"));
    m_camera->port.readFault = MemoryPort::Fault::None;
    m_delegate->setModelData(editor, m_model.get(), cell("Gated"));
    QCOMPARE(m_model->getItem(cell("Gated"))->data(1), QVariant(qint64(1)));
}

void tst_FeatureEditDelegate::choiceIsCommittedAtOnce()
{
    auto *selector = openAs<QComboBox>("Selector");
    QVERIFY(selector);
    QSignalSpy spy(m_delegate.get(), &FeatureEditDelegate::commitData);
    m_window->show();
    selector->show();
    selector->setFocus();
    QTest::keyClick(selector, Qt::Key_Up);
    QCOMPARE(spy.size(), 1);
    m_delegate->setModelData(selector, m_model.get(), cell("Selector"));
    QCOMPARE(m_camera->port.peek(TestCamera::Selector), quint64(0));
}

void tst_FeatureEditDelegate::unfinishedMaskCommitsOnEnter()
{
    const std::pair<Qt::Key, QAbstractItemDelegate::EndEditHint> keys[] = {
        {Qt::Key_Return, QAbstractItemDelegate::SubmitModelCache},
        {Qt::Key_Tab, QAbstractItemDelegate::EditNextItem},
        {Qt::Key_Backtab, QAbstractItemDelegate::EditPreviousItem}};
    auto *line = openAs<QLineEdit>("Flags");
    QVERIFY(line);
    for (const auto &[key, hint] : keys) {
        QSignalSpy commit(m_delegate.get(), &FeatureEditDelegate::commitData);
        QVector<QAbstractItemDelegate::EndEditHint> hints;
        QObject context;
        connect(m_delegate.get(), &FeatureEditDelegate::closeEditor, &context,
                [&hints](QWidget *, QAbstractItemDelegate::EndEditHint closing) { hints.append(closing); });
        QTest::keyClick(line, key);
        QCOMPARE(commit.size(), 1);
        QCOMPARE(hints, QVector<QAbstractItemDelegate::EndEditHint>{hint});
    }
}

void tst_FeatureEditDelegate::wheelChangesNothing()
{
    for (const char *name : {"Width", "Selector"}) {
        QWidget *editor = open(name);
        QVERIFY(editor);
        const QVariant before =
            editor->property("value").isValid() ? editor->property("value") : editor->property("currentIndex");
        QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(editor, &wheel);
        QCOMPARE(editor->property("value").isValid() ? editor->property("value") : editor->property("currentIndex"),
                 before);
    }
}

void tst_FeatureEditDelegate::commandButton()
{
    auto *button = openAs<QPushButton>("Start");
    QVERIFY(button);
    QCOMPARE(button->text(), QStringLiteral("Execute"));
    QSignalSpy spy(m_delegate.get(), &FeatureEditDelegate::CommandClicked);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(spy.size(), 1);
    m_delegate->setModelData(button, m_model.get(), cell("Start"));
    QCOMPARE(m_camera->port.writes, 0u);
}

/// The text of the cell as the delegate paints it.
QString tst_FeatureEditDelegate::shownText(const char *name, const QLocale &locale) const
{
    struct Delegate : FeatureEditDelegate
    {
        using FeatureEditDelegate::initStyleOption;
    };
    QStyleOptionViewItem option;
    option.locale = locale;
    Delegate().initStyleOption(&option, cell(name));
    return option.text;
}

/// The cell as the delegate paints it, or as a plain one with `overlay` in gray.
QImage tst_FeatureEditDelegate::painted(const QModelIndex &index, const QString &overlay) const
{
    QImage image(200, 35, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.state = QStyle::State_Enabled;
    if (overlay.isNull()) {
        m_delegate->paint(&painter, option, index);
    } else {
        painter.setPen(Qt::gray);
        const int margin = QApplication::style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1;
        painter.drawText(option.rect.adjusted(margin, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, overlay);
    }
    return image;
}

void tst_FeatureEditDelegate::paintsReadOnlyGray_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("float") << QByteArray("Temperature") << "12.346";
    QTest::newRow("boolean") << QByteArray("PowerState") << "False";
    QTest::newRow("enumeration") << QByteArray("SelectorState") << "Alpha";
    QTest::newRow("integer") << QByteArray("WidthMax") << "100";
}

void tst_FeatureEditDelegate::paintsReadOnlyGray()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, text);
    QCOMPARE(painted(cell(name)), painted(cell(name), text));
    QVERIFY(painted(cell("Width")) != painted(cell("Width"), QStringLiteral("48")));
}

void tst_FeatureEditDelegate::numbersKeepTheirDigits()
{
    const QLocale german(QLocale::German);
    m_camera->port.pokeDouble(TestCamera::Gain, 1000000.5);
    m_camera->map->InvalidateNodes();
    QCOMPARE(shownText("Gain"), QStringLiteral("1000000.5"));
    QCOMPARE(shownText("Gain", german), QStringLiteral("1000000,5"));
    QCOMPARE(cell("Gain").data(), QVariant(1000000.5));
    m_camera->port.poke(TestCamera::Big, 1234567, 8);
    QCOMPARE(shownText("Big", german), QStringLiteral("1234567"));
}

void tst_FeatureEditDelegate::hoversBooleans()
{
    QVERIFY(m_delegate->cellEntered(cell("Power")));
    QVERIFY(!m_delegate->cellEntered(cell("Power").siblingAtColumn(0)));
    QVERIFY(!m_delegate->cellEntered(cell("PowerState")));
    QVERIFY(!m_delegate->cellEntered(cell("Width")));
    QVERIFY(!m_delegate->cellEntered(QModelIndex()));
}

void tst_FeatureEditDelegate::failingNode()
{
    FaultyNode node([] { throw std::runtime_error("broken"); });
    m_model->getItem(cell("Width"))->SetFeature(static_cast<GenApi::INode *>(&node));
    QVERIFY(!open("Width"));
    QLineEdit line;
    m_delegate->setEditorData(&line, cell("Width"));
    m_delegate->setModelData(&line, m_model.get(), cell("Width"));
    painted(cell("Width"));
    painted(cell("Width"));
    QCOMPARE(FakeHostCore::instance().calls().count(QStringLiteral("VLogInfo(FeatureEditDelegate, broken, 0)")), 1);
}

void tst_FeatureEditDelegate::disabledTouchesNoNode()
{
    auto *box = openAs<QDoubleSpinBox>("Width");
    QVERIFY(box);
    const QModelIndex width = cell("Width");
    const QModelIndex temperature = cell("Temperature");
    box->setValue(52.0);
    m_model->dataDisabled = true;
    m_delegate->dataDisabled = true;
    m_camera.reset();
    m_delegate->setModelData(box, m_model.get(), width);
    m_delegate->setEditorData(box, width);
    QVERIFY(!m_delegate->createEditor(m_window.get(), QStyleOptionViewItem(), width));
    QVERIFY(!m_delegate->cellEntered(width));
    painted(temperature);
}

QTEST_MAIN(tst_FeatureEditDelegate)
#include "tst_FeatureEditDelegate.moc"
