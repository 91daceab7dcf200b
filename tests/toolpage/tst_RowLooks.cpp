// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "TestCamera.h"
#include "ToolPage/SelectedButton.h"
#include "ToolPage/SwitchButton.h"
#include "ToolPage/ToolPageWidgetItem.h"

namespace {

QColor colorOf(ToolPageWidgetItem &row)
{
    return row.grab().toImage().pixelColor(1, 1);
}

const QStringList Names{QStringLiteral("Label"), QStringLiteral("标签")};
const QStringList Descriptions{QStringLiteral("Text"), QStringLiteral("说明")};
const QColor NormalColor(240, 240, 240);
const QColor HoverColor(216, 216, 216);
const QColor PressedColor(191, 231, 213);

} // namespace

/// Places and colours of a row and its editor.
class tst_RowLooks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framesTheFocusedEditor()
    {
        TestCamera camera;
        ToolPageWidgetItem custom(&m_page);
        custom.setItemInfo(Names, Descriptions, new SelectedButton);
        const auto width = rowOf(camera, "Width");
        const auto power = rowOf(camera, "Power");
        const auto selector = rowOf(camera, "Selector");
        const auto start = rowOf(camera, "Start");
        m_page.show();
        QApplication::setActiveWindow(&m_page);
        QVERIFY(QTest::qWaitForWindowActive(&m_page));
        QTest::keyClick(&m_page, Qt::Key_Tab); // a switch shows its focus once the keyboard is in use
        for (ToolPageWidgetItem *row : {&custom, width.get(), power.get(), selector.get(), start.get()}) {
            row->resize(300, 40);
            auto *switchButton = row->findChild<SwitchButton *>();
            QWidget *editor = switchButton ? switchButton : row->layout()->itemAt(1)->widget();
            const QPoint edge = editor->mapTo(row, QPoint(switchButton ? 0 : -1, editor->height() / 2));
            editor->setFocus(Qt::TabFocusReason);
            const int framed = row->grab().toImage().pixelColor(edge).lightness();
            editor->clearFocus();
            const int plain = row->grab().toImage().pixelColor(edge).lightness();
            QVERIFY2(framed < plain - 50, editor->metaObject()->className());
        }
    }

    void geometry_data()
    {
        QTest::addColumn<QByteArray>("node");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("labelWidth");
        QTest::addColumn<QSize>("minimumEditor");
        QTest::newRow("spin box") << QByteArray("Width") << 601 << 280 << QSize(150, 34);
        QTest::newRow("combo box") << QByteArray("Selector") << 400 << 180 << QSize(150, 34);
        QTest::newRow("switch") << QByteArray("Power") << 320 << 140 << QSize(44, 20);
        QTest::newRow("narrow row") << QByteArray("Width") << 320 << -1 << QSize(150, 34);
    }

    void geometry()
    {
        TestCamera camera;
        QFETCH(QByteArray, node);
        QFETCH(int, width);
        QFETCH(int, labelWidth);
        QFETCH(QSize, minimumEditor);
        const auto row = rowOf(camera, node);
        row->resize(width, 40);
        row->setParent(nullptr);
        row->show();
        QVERIFY(QTest::qWaitForWindowExposed(row.get()));
        QCOMPARE(row->size(), QSize(width, 40));
        const auto *label = row->findChild<QLabel *>();
        if (labelWidth >= 0)
            QCOMPARE(label->width(), labelWidth);
        QCOMPARE(label->x(), 30);
        const auto *button = row->findChild<SwitchButton *>();
        const QWidget *editor = button ? button : row->layout()->itemAt(row->layout()->count() - 1)->widget();
        const QRect place(editor->mapTo(row.get(), QPoint(0, 0)), editor->size());
        QCOMPARE(place.right(), width - 10 - 1);
        QVERIFY(place.left() > label->geometry().right());
        QCOMPARE(place.height(), minimumEditor.height());
        QVERIFY(place.width() >= minimumEditor.width());
    }

    void colors()
    {
        ToolPageWidgetItem row;
        row.setItemInfo(Names, Descriptions, static_cast<QWidget *>(nullptr));
        QCOMPARE(colorOf(row), NormalColor);
        QSignalSpy clicked(&row, &ToolPageWidgetItem::itemClicked);
        QTest::mousePress(&row, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(colorOf(row), PressedColor);
        QTest::mouseRelease(&row, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&row, &leave);
        QCOMPARE(colorOf(row), NormalColor);
        QEnterEvent enter({}, {}, {});
        QCoreApplication::sendEvent(&row, &enter);
        QCOMPARE(colorOf(row), HoverColor);
        row.setCurrentColor(Qt::red);
        QCOMPARE(colorOf(row), QColor(Qt::red));
    }

    void customSwitch()
    {
        ToolPageWidgetItem row;
        auto *button = new SwitchButton;
        row.setItemInfo(Names, Descriptions, button);
        row.resize(300, 40);
        row.show();
        QCOMPARE(button->size(), QSize(44, 20));
        QCOMPARE(button->mapTo(&row, QPoint(0, 0)).x(), 300 - 10 - 44);
        row.setWidgetItemEnable(false);
        QVERIFY(!button->isEnabled());
        button->setEnabled(true);
        row.setLanguage(0);
        QCOMPARE(button->text(), QString());
    }

private:
    std::unique_ptr<ToolPageWidgetItem> rowOf(TestCamera &camera, const char *nodeName)
    {
        auto row = std::make_unique<ToolPageWidgetItem>(&m_page);
        row->setItemInfo(Names, Descriptions, camera.node(nodeName), true);
        return row;
    }

    QWidget m_page;
};

QTEST_MAIN(tst_RowLooks)
#include "tst_RowLooks.moc"
