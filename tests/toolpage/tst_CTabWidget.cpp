// SPDX-License-Identifier: MIT
#include <QHoverEvent>
#include <QImage>
#include <QTabBar>
#include <QTest>

#include "ToolPage/CTabWidget.h"

namespace {

constexpr QRgb Baseline = qRgb(220, 220, 220);
constexpr QRgb Accent = qRgb(93, 189, 147);

/// The columns [first, last] of one colour in the picture's last line.
QVector<QPair<int, int>> runs(const QImage &picture, QRgb color)
{
    QVector<QPair<int, int>> runs;
    const int y = picture.height() - 1;
    for (int x = 0; x < picture.width(); ++x) {
        if (picture.pixel(x, y) != color)
            continue;
        if (runs.isEmpty() || runs.last().second != x - 1)
            runs.append({x, x});
        runs.last().second = x;
    }
    return runs;
}

} // namespace

/// CTabWidget with its CTabBar.
class tst_CTabWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_tabs = std::make_unique<CTabWidget>();
        for (const char *title : {"a", "b", "c", "d"})
            m_tabs->addTab(new QWidget, QLatin1String(title));
        m_tabs->resize(600, 300);
        m_tabs->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_tabs.get()));
        QHoverEvent leave(QEvent::HoverLeave, QPoint(-1, -1), QPoint(1, 1)); // the mouse may be where the window opened
        QCoreApplication::sendEvent(m_tabs->tabBar(), &leave);
    }

    void cleanup() { m_tabs.reset(); }

    void tabsShareTheWidth()
    {
        for (const int width : {600, 800, 320}) {
            m_tabs->resize(width, 300);
            for (int index = 0; index < 4; ++index)
                QCOMPARE(m_tabs->tabBar()->tabRect(index), QRect(index * width / 4, 0, width / 4, 40));
        }
        QVERIFY(m_tabs->minimumSizeHint().width() <= 320);
        m_tabs->clear();
        m_tabs->addTab(new QWidget, QStringLiteral("only"));
        QCOMPARE(m_tabs->tabBar()->tabRect(0).width(), 320);
    }

    void underlinesTheTabsSelectedAndUnderTheMouse()
    {
        using Runs = QVector<QPair<int, int>>;
        m_tabs->setCurrentIndex(1);
        const QImage calm = m_tabs->tabBar()->grab().toImage();
        QCOMPARE(runs(calm, Accent), (Runs{{175, 274}}));
        QCOMPARE(runs(calm, Baseline), (Runs{{0, 174}, {275, 599}}));
        QHoverEvent hover(QEvent::HoverMove, m_tabs->tabBar()->tabRect(2).center(), QPoint(-1, -1));
        QCoreApplication::sendEvent(m_tabs->tabBar(), &hover);
        QCOMPARE(runs(m_tabs->tabBar()->grab().toImage(), Accent), (Runs{{175, 274}, {325, 424}}));
    }

    void framesTheFocus()
    {
        m_tabs->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_tabs.get()));
        m_tabs->tabBar()->clearFocus();
        const QImage unfocused = m_tabs->tabBar()->grab().toImage();
        m_tabs->tabBar()->setFocus(Qt::TabFocusReason);
        const QImage first = m_tabs->tabBar()->grab().toImage();
        QVERIFY(first.copy(0, 0, 150, 36) != unfocused.copy(0, 0, 150, 36));
        QCOMPARE(first.copy(150, 0, 450, 40), unfocused.copy(150, 0, 450, 40));
        QTest::keyClick(m_tabs->tabBar(), Qt::Key_Right);
        QCOMPARE(m_tabs->tabBar()->grab(QRect(0, 0, 150, 36)).toImage(), unfocused.copy(0, 0, 150, 36));
    }

private:
    std::unique_ptr<CTabWidget> m_tabs;
};

QTEST_MAIN(tst_CTabWidget)
#include "tst_CTabWidget.moc"
