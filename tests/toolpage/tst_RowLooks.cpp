// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>

#include "FailedAt.h"
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
        QList<ToolPageWidgetItem *> rows{&custom};
        for (const char *feature : {"Width", "Power", "Selector", "Start"})
            rows.append(rowOf(camera, feature).release()); // a child of the page
        m_page.show();
        QApplication::setActiveWindow(&m_page);
        QVERIFY(QTest::qWaitForWindowActive(&m_page));
        QTest::keyClick(&m_page, Qt::Key_Tab); // a switch shows its focus once the keyboard is in use
        for (ToolPageWidgetItem *row : std::as_const(rows)) {
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

    void geometry()
    {
        TestCamera camera;
        const std::tuple<const char *, const char *, int, int, QSize> rows[] = {
            {"spin box", "Width", 601, 280, {150, 34}},
            {"combo box", "Selector", 400, 180, {150, 34}},
            {"switch", "Power", 320, 140, {44, 20}},
            {"narrow row", "Width", 320, -1, {150, 34}}};
        for (const auto &[name, node, width, labelWidth, minimumEditor] : rows) {
            const FailedAt at(name);
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
    }

    void colors()
    {
        ToolPageWidgetItem row;
        row.setItemInfo(Names, Descriptions, static_cast<QWidget *>(nullptr));
        QCOMPARE(colorOf(row), QColor(240, 240, 240));
        QSignalSpy clicked(&row, &ToolPageWidgetItem::itemClicked);
        QTest::mousePress(&row, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(colorOf(row), QColor(191, 231, 213));
        QTest::mouseRelease(&row, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&row, &leave);
        QCOMPARE(colorOf(row), QColor(240, 240, 240));
        QEnterEvent enter({}, {}, {});
        QCoreApplication::sendEvent(&row, &enter);
        QCOMPARE(colorOf(row), QColor(216, 216, 216));
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
