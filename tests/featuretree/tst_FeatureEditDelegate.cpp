// SPDX-License-Identifier: MIT
#include <stdexcept>

#include <QComboBox>
#include <QLineEdit>
#include <QPainter>

#include "FaultyNode.h"
#include "FeatureTree/FeatureEditDelegate.h"
#include "FeatureTree/IntegerSpinBox.h"
#include "FeatureTree/TreeItem.h"
#include "ShownTree.h"
#include "TestRows.h"

namespace {

constexpr char MacMask[] = "HH:HH:HH:HH:HH:HH;_";
constexpr char Ipv4Mask[] = "000.000.000.000;_";
constexpr char HexMask[] = "HHHHHHHHHHHHHHHH";

const struct
{
    const char *name, *feature, *mask, *text, *typed;
    bool isWritten;
    int address, length;
    quint64 after;
} MaskedEditors[] = {
    {"subnet mask", "GevCurrentSubnetMask", Ipv4Mask, "255.255.255.0", "1.2.3.4", false, TestCamera::Mask, 4,
     0xffffff00},
    {"MAC", "GevMACAddress", MacMask, "02:64:36:07:79:4", "00:11:22:33:44:55", false, TestCamera::Mac, 8,
     0x001a2b3c4d5e},
    {"IPv4", "Address", Ipv4Mask, "0.0.0.0", "1.2.3.4", false, TestCamera::Address4, 4, 0},
    {"hex", "Flags", HexMask, "ff", "1F", true, TestCamera::Flags, 8, 0x1f},
    {"64 bits", "Flags", HexMask, "ff", "FFFFFFFFFFFFFFFE", true, TestCamera::Flags, 8, 0xfffffffffffffffe},
};

} // namespace

class tst_FeatureEditDelegate : public QObject, private ShownTree
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        make(true);
        m_delegate = std::make_unique<FeatureEditDelegate>();
        m_camera->port.resetCounters();
    }

    void cleanup()
    {
        m_delegate.reset();
        close();
    }

    void choosesEditor()
    {
        for (const auto &[name, editor] : {std::pair("Width", "IntegerSpinBox"),
                                           {"Gain", "QDoubleSpinBox"},
                                           {"Power", "QComboBox"},
                                           {"Selector", "QComboBox"},
                                           {"Label", "QLineEdit"},
                                           {"Start", "QPushButton"},
                                           {"WriteOnlyGain", "QDoubleSpinBox"},
                                           {"WriteOnly", ""},
                                           {"Temperature", ""},
                                           {"StartLocked", ""},
                                           {"Anything", ""},
                                           {"Image", ""}}) {
            const QWidget *widget = open(name);
            QCOMPARE(std::pair(name, QByteArray(widget ? widget->metaObject()->className() : "")),
                     std::pair(name, QByteArray(editor)));
            QVERIFY2(m_delegate->isEditable(cell(name)) == (widget != nullptr), name);
            QVERIFY(!m_delegate->createEditor(m_view.get(), QStyleOptionViewItem(), cell(name).siblingAtColumn(0)));
        }
    }

    void maskedEditors_data() { addRows(MaskedEditors); }

    void maskedEditors()
    {
        const auto &row = currentRow(MaskedEditors);
        auto *line = openAs<QLineEdit>(row.feature);
        QVERIFY(line);
        QCOMPARE(line->inputMask(), QLatin1String(row.mask));
        QCOMPARE(line->text(), QLatin1String(row.text));
        commit(line, row.feature);
        QCOMPARE(FakeHostCore::instance().calls(), QStringList());
        line->selectAll();
        QTest::keyClick(line, Qt::Key_Delete);
        QTest::keyClicks(line, QLatin1String(row.typed));
        commit(line, row.feature);
        commit(line, row.feature); // once more when the editor closes
        const QString discarded =
            QStringLiteral("VLogInfo(FeatureEditDelegate, %1: addresses are not written, \"%2\" is discarded, 0)")
                .arg(QLatin1String(row.feature), line->text());
        QCOMPARE(FakeHostCore::instance().calls(), row.isWritten ? QStringList() : QStringList(discarded));
        QCOMPARE(quint64(m_camera->port.peek(row.address, row.length)), row.after);
    }

    void spinBoxes()
    {
        const auto limits = [this](const char *name) {
            const auto *box = openAs<QDoubleSpinBox>(name);
            return box ? QVector<double>{box->minimum(), box->maximum(), box->singleStep(), box->value()}
                       : QVector<double>();
        };
        QCOMPARE(limits("Width"), (QVector<double>{0, 100, 4, 48}));
        QCOMPARE(limits("Gain"), (QVector<double>{0, 100, 0.1, 2.5}));
        QCOMPARE(openAs<QDoubleSpinBox>("Gain")->decimals(), 4);
        QCOMPARE(openAs<QDoubleSpinBox>("SinData")->decimals(), 6);
        QVERIFY(openAs<QDoubleSpinBox>("SinData")->maximum() > 1e300);
        QCOMPARE(open("Width")->contextMenuPolicy(), Qt::NoContextMenu);
        for (const QWidget *box : {open("Big"), open("SinData")})
            QVERIFY2(box->sizeHint().width() < 400, qPrintable(QString::number(box->sizeHint().width())));
    }

    void lists()
    {
        auto *power = openAs<QComboBox>("Power");
        QVERIFY(power && power->count() == 2);
        QCOMPARE(power->itemText(1), QStringLiteral("True"));
        QCOMPARE(power->currentIndex(), 0);
        power->setCurrentIndex(1);
        commit(power, "Power");
        QCOMPARE(m_camera->port.peek(TestCamera::Power), quint64(1));

        auto *selector = openAs<QComboBox>("Selector");
        QVERIFY(selector);
        QCOMPARE(selector->styleSheet(), QStringLiteral("QComboBox QAbstractItemView::item {height: 50px;}"));
        QCOMPARE(selector->itemText(0), QStringLiteral("Zulu"));
        QCOMPARE(selector->currentText(), QStringLiteral("Alpha"));
        m_camera->port.poke(TestCamera::Selector, 2); // the current entry is gone
        m_camera->map->InvalidateNodes();
        m_camera->port.resetCounters();
        m_delegate->setEditorData(selector, cell("Selector"));
        QCOMPARE(selector->count(), 2);
        commit(selector, "Selector");
        QCOMPARE(m_camera->port.writes, 0u);
    }

    /// SinData has more digits than its editor and a later read must still show them all.
    void unchangedEditorWritesNothing()
    {
        m_camera->port.poke(TestCamera::Big, (quint64(1) << 53) + 1, 8);
        for (const char *name : {"Width", "Big", "Gain", "SinData", "Power", "Selector", "Label", "Flags", "Start",
                                 "WriteOnlyGain", "GevMACAddress"}) {
            const QVariant before = m_model->getItem(cell(name))->data(1);
            QWidget *editor = open(name);
            QVERIFY2(editor, name);
            commit(editor, name);
            QVERIFY2(m_camera->port.writes == 0, name);
            QCOMPARE(m_model->getItem(cell(name))->data(1), before);
        }
    }

    void editorOfAFailedReadWritesNothing()
    {
        m_camera->port.readFault = MemoryPort::Fault::Timeout;
        QWidget *editor = open("Uncached");
        QVERIFY(editor);
        m_camera->port.readFault = MemoryPort::Fault::None;
        commit(editor, "Uncached");
        QCOMPARE(m_camera->port.writes, 0u);

        editor = m_delegate->createEditor(m_view.get(), QStyleOptionViewItem(), cell("Gated"));
        QVERIFY(editor);
        m_camera->map->InvalidateNodes();
        m_camera->port.readFault = MemoryPort::Fault::Timeout;
        m_delegate->setEditorData(editor, cell("Gated"));
        m_camera->port.readFault = MemoryPort::Fault::None;
        commit(editor, "Gated");
        QCOMPARE(m_model->getItem(cell("Gated"))->data(1), QVariant(qint64(1)));
    }

    void wheelChangesNothing()
    {
        for (const auto &[name, property] : {std::pair("Width", "value"), {"Selector", "currentIndex"}}) {
            QWidget *editor = open(name);
            QVERIFY(editor);
            const QVariant before = editor->property(property);
            turnWheel(*editor, 120);
            QCOMPARE(editor->property(property), before);
        }
    }

    void paintsReadOnlyGray()
    {
        for (const auto &[name, text] : {std::pair("Temperature", "12.346"),
                                         {"PowerState", "False"},
                                         {"SelectorState", "Alpha"},
                                         {"WidthMax", "100"}})
            QVERIFY2(painted(cell(name)) == painted(cell(name), QLatin1String(text)), name);
        QVERIFY(painted(cell("Width")) != painted(cell("Width"), QStringLiteral("48")));
    }

    void numbersKeepTheirDigits()
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

    void hoversBooleans()
    {
        QVERIFY(m_delegate->cellEntered(cell("Power")));
        for (const QModelIndex &other : {cell("Power").siblingAtColumn(0), cell("PowerState"), cell("Width"), {}})
            QVERIFY(!m_delegate->cellEntered(other));
    }

    void failingNode()
    {
        FaultyNode node([] { throw std::runtime_error("broken"); });
        m_model->getItem(cell("Width"))->SetFeature(static_cast<GenApi::INode *>(&node));
        QVERIFY(!open("Width"));
        QLineEdit line;
        m_delegate->setEditorData(&line, cell("Width"));
        commit(&line, "Width");
        painted(cell("Width"));
        painted(cell("Width"));
        QCOMPARE(FakeHostCore::instance().calls().count(QStringLiteral("VLogInfo(FeatureEditDelegate, broken, 0)")), 1);
    }

private:
    /// A filled editor of that feature, with the delegate's event filter as a view would install it.
    QWidget *open(const char *name)
    {
        QWidget *editor = m_delegate->createEditor(m_view.get(), QStyleOptionViewItem(), cell(name));
        if (editor) {
            editor->installEventFilter(m_delegate.get());
            m_delegate->setEditorData(editor, cell(name));
        }
        return editor;
    }

    void commit(QWidget *editor, const char *name) { m_delegate->setModelData(editor, m_model.get(), cell(name)); }
    template <class Editor>
    Editor *openAs(const char *name)
    {
        return qobject_cast<Editor *>(open(name));
    }

    /// The text of the cell as the delegate paints it.
    QString shownText(const char *name, const QLocale &locale = QLocale::c()) const
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
    QImage painted(const QModelIndex &index, const QString &overlay = {}) const
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

    std::unique_ptr<FeatureEditDelegate> m_delegate;
};

QTEST_MAIN(tst_FeatureEditDelegate)
#include "tst_FeatureEditDelegate.moc"
