// SPDX-License-Identifier: MIT
#include <QHelpEvent>
#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QSignalSpy>

#include "Editors.h"
#include "ToolPage/RowLabel.h"
#include "ToolPage/SelectedButton.h"
#include "support/Input.h"
#include "support/Rows.h"

namespace {

QColor colorOf(ToolPageWidgetItem &row)
{
    return row.grab().toImage().pixelColor(1, 1);
}

} // namespace

/// Places and colours of a row, its label and its editor.
class tst_RowLooks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framesTheFocusedEditor()
    {
        TestCamera camera;
        ToolPageWidgetItem custom(&m_page);
        custom.setItemInfo({}, {}, new SelectedButton);
        QList<ToolPageWidgetItem *> rows{&custom};
        for (const char *feature : {"Width", "Power", "Selector", "Start"})
            rows.append(rowOf(camera, feature, &m_page).release()); // a child of the page
        QVERIFY(activate(m_page));
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
            const InRow at(name);
            const auto row = rowOf(camera, node);
            row->resize(width, 40);
            QVERIFY(activate(*row));
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
        row.setItemInfo({}, {}, static_cast<QWidget *>(nullptr));
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
        row.setItemInfo({}, {}, button);
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

    void toolTipTellsWhatIsHidden()
    {
        const char *const phrase = "Acquisition Frame Rate";
        const std::tuple<const char *, const char *, double, int, bool, const char *> rows[] = {
            {"fits on one line", phrase, 1.1, 1, false, nullptr},
            {"fits on two lines", phrase, 0.9, 2, false, nullptr},
            {"one line is too short", phrase, 0.8, 1, true, nullptr},
            {"two lines are too short", phrase, 0.3, 2, true, nullptr},
            // Its lines are half as tall again as its size.
            {"two lines of a tall font", phrase, 0.9, 2, false, "Noto Sans CJK SC"},
            {"breaks compound names", "AcquisitionFrameRateEnable", 0.65, 2, false, nullptr}};
        for (const auto &[name, text, widthShare, lines, isHidden, font] : rows) {
            const InRow at(name);
            RowLabel label;
            label.setText(QLatin1String(text));
            const int lineHeight = label.fontMetrics().height();
            if (font)
                label.setFont(QFont(QLatin1String(font), label.font().pointSize()));
            label.resize(int(label.fontMetrics().horizontalAdvance(label.text()) * widthShare), lineHeight * lines);
            QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), QPoint(1, 1));
            QCoreApplication::sendEvent(&label, &event);
            QCOMPARE(label.toolTip(), isHidden ? label.text() : QString());
        }
    }

private:
    QWidget m_page;
};

QTEST_MAIN(tst_RowLooks)
#include "tst_RowLooks.moc"
