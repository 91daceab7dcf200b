// SPDX-License-Identifier: MIT
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QVBoxLayout>

#include "Resources/Icons.h"
#include "TestCamera.h"
#include "ToolPage/CToolBox.h"
#include "ToolPage/CToolPage.h"
#include "ToolPage/SelectedButton.h"
#include "ToolPage/ToolPageWidget.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/Input.h"

namespace {

QWidget *contextOf(CToolPage *page)
{
    return page->findChild<QWidget *>(QStringLiteral("widgetContext"));
}

QPushButton *titleBarOf(CToolPage *page)
{
    return page->findChild<QPushButton *>(QStringLiteral("pushButtonFold"));
}

QString titleOf(CToolPage *page)
{
    return titleBarOf(page)->findChildren<QLabel *>().last()->text();
}

bool shows(CToolPage &page, const QString &icon)
{
    const QImage shown = titleBarOf(&page)->findChild<QLabel *>()->pixmap(Qt::ReturnByValue).toImage();
    return shown.convertToFormat(QImage::Format_ARGB32) == QImage(icon).convertToFormat(QImage::Format_ARGB32);
}

/// A group with one row.
ToolPageWidgetItem *addGroup(CToolBox &box, const char *title, GenApi::INode *node)
{
    auto *group = new ToolPageWidget;
    auto *row = new ToolPageWidgetItem(group);
    row->setItemInfo({QStringLiteral("Width"), QStringLiteral("宽度")}, {}, node, true);
    group->addWidget(row);
    box.addWidget(QLatin1String(title), QStringLiteral("图像"), group);
    return row;
}

QWidget *fixedContent(int height)
{
    auto *content = new QWidget;
    content->setFixedHeight(height);
    return content;
}

} // namespace

/// CToolPage and the stack of them, CToolBox.
class tst_CToolPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void foldsByItsTitleBar()
    {
        CToolPage page;
        QVERIFY(!page.isExpanded());
        QVERIFY(shows(page, Icons::Fold));
        page.addWidget(QStringLiteral("Group"), QString(), fixedContent(50));
        page.show();
        for (const bool isExpanded : {true, false, true}) {
            QCOMPARE(page.isExpanded(), isExpanded);
            QCOMPARE(contextOf(&page)->isVisible(), isExpanded);
            QVERIFY(shows(page, isExpanded ? Icons::Unfold : Icons::Fold));
            QTest::mouseClick(titleBarOf(&page), Qt::LeftButton);
        }
        const auto image = [](CToolPage &of) {
            return titleBarOf(&of)->findChild<QLabel *>()->pixmap(Qt::ReturnByValue);
        };
        CToolPage other;
        QVERIFY2(image(page).cacheKey() == image(other).cacheKey(), "each group keeps an image of its own");
    }

    void autoStretchMovesTheFreeHeight()
    {
        CToolPage page;
        page.setStretchEnable(true);
        page.setAutoStretchEnable(true);
        page.addWidget(QStringLiteral("Group"), QString(), new QWidget);
        page.resize(300, 400);
        page.show();
        QCOMPARE(contextOf(&page)->geometry().bottom(), 399);
        page.collapse();
        QTRY_COMPARE(titleBarOf(&page)->geometry().top(), 0);
        QVERIFY(titleBarOf(&page)->height() < 60);
        page.expand();
        QTRY_COMPARE(contextOf(&page)->geometry().bottom(), 399);
    }

    void languageOfTitles()
    {
        const QStringList titles{QStringLiteral("Image"), QStringLiteral("图像")};
        const QStringList labels{QStringLiteral("Width"), QStringLiteral("宽度")};
        CToolBox box;
        const ToolPageWidgetItem *row = addGroup(box, "Image", nullptr);
        for (const int language : {1, 0, 2}) {
            box.setLanguage(language);
            QCOMPARE(titleOf(box.findChild<CToolPage *>()), titles.at(language != 0));
            QCOMPARE(row->findChild<QLabel *>()->text(), labels.at(language != 0));
        }
    }

    /// They scroll without scroll bars.
    void boxStacksExpandedGroups()
    {
        CToolBox box;
        for (const char *title : {"one", "two", "three"})
            box.addWidget(QLatin1String(title), QString(), fixedContent(30));
        box.resize(300, 600);
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        QByteArray titles;
        int bottom = 0;
        for (CToolPage *page : box.findChildren<CToolPage *>()) {
            titles += titleOf(page).toUtf8() + ' ';
            QVERIFY(page->isExpanded());
            QCOMPARE(page->mapTo(&box, QPoint(0, 0)).y(), bottom);
            bottom += page->height();
        }
        QCOMPARE(titles, QByteArray("one two three "));
        QVERIFY(bottom < 300);
        box.resize(300, 100);
        const auto *area = box.findChild<QScrollArea *>();
        QTRY_VERIFY(area->verticalScrollBar()->maximum() > 0);
        QVERIFY(!area->verticalScrollBar()->isVisible());
        QCOMPARE(area->widget()->width(), 300);
    }

    void boxRefreshesExpandedGroupsOnly()
    {
        TestCamera camera;
        CToolBox box;
        const ToolPageWidgetItem *open = addGroup(box, "open", camera.node("Uncached"));
        const ToolPageWidgetItem *folded = addGroup(box, "folded", camera.node("Uncached"));
        box.findChildren<CToolPage *>().last()->collapse();
        camera.port.poke(TestCamera::Uncached, 7);
        box.updateWidget();
        QCOMPARE(open->findChild<QSpinBox *>()->value(), 7);
        QCOMPARE(folded->findChild<QSpinBox *>()->value(), 0);
    }

    /// They take no room. A row that shows brings its group back as it was folded.
    void emptyGroupsAreHidden()
    {
        TestCamera camera;
        CToolBox box;
        ToolPageWidgetItem *row = addGroup(box, "gated", camera.node("GatedByBoolean"));
        addGroup(box, "other", camera.node("Width"));
        const auto pages = box.findChildren<CToolPage *>();
        const auto hidden = [&pages] { return QVector<bool>{pages.first()->isHidden(), pages.last()->isHidden()}; };
        const QVector<bool> none{false, false};
        const QVector<bool> first{true, false};
        const auto setAvailable = [&](bool isAvailable) {
            GenApi::CBooleanPtr(camera.node("Power"))->SetValue(isAvailable);
        };
        QCOMPARE(hidden(), first);
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        QCOMPARE(pages.last()->y(), 0);
        setAvailable(true);
        box.updateWidget();
        QCOMPARE(hidden(), none);
        QVERIFY(pages.first()->isExpanded() && row->isVisible());
        QTRY_VERIFY(pages.last()->y() > 0);
        pages.first()->collapse();
        for (const bool isShown : {false, true}) {
            row->setWidgetItemVisible(isShown);
            QCOMPARE(hidden(), isShown ? none : first);
        }
        setAvailable(false);
        row->updateWidget(false);
        QCOMPARE(hidden(), first);
        box.hide();
        setAvailable(true);
        box.show();
        QCOMPARE(hidden(), none);
        QVERIFY(!pages.first()->isExpanded());
        pages.first()->expand();
        QVERIFY(row->isVisible());
    }

    /// Editors made before and after the rows included; the keyboard's place survives a write.
    void tabReadsFromTopToBottom()
    {
        TestCamera camera;
        QWidget window;
        auto *tool = new SelectedButton(&window);
        auto *before = new QLineEdit(&window);
        auto *box = new CToolBox(&window);
        auto *column = new QVBoxLayout(&window);
        column->addWidget(before);
        column->addWidget(box);
        QList<QByteArray> visited;
        const QList<QList<QByteArray>> groups{
            {"Width", "GatedByBoolean", "Tool"}, {"WidthMax", "Power"}, {"Selector", "Start", "Gain"}};
        for (const QList<QByteArray> &names : groups) {
            auto *group = new ToolPageWidget(&window);
            for (const QByteArray &name : names) {
                auto *row = new ToolPageWidgetItem(&window);
                if (name == "Tool")
                    row->setItemInfo({}, {}, tool);
                else
                    row->setItemInfo({}, {}, camera.node(name), true);
                group->addWidget(row);
                connect(row, &ToolPageWidgetItem::itemFocused, &window, [&visited, name] { visited.append(name); });
            }
            box->addWidget(QString(), QString(), group);
        }
        GenApi::CBooleanPtr(camera.node("Power"))->SetValue(true);
        box->updateWidget();
        window.resize(300, 160);
        QVERIFY(activate(window));
        const QWidget *group = box->findChild<ToolPageWidget *>();
        QTRY_COMPARE(group->height(), group->minimumSizeHint().height());

        const auto walk = [&](Qt::Key key) {
            visited.clear();
            before->setFocus();
            bool allSeen = true;
            do {
                QTest::keyClick(QApplication::focusWidget(), key);
                const QWidget *editor = QApplication::focusWidget();
                allSeen = allSeen && editor->visibleRegion().boundingRect() == editor->rect();
            } while (!before->hasFocus() && visited.size() < 20);
            return allSeen;
        };
        QList<QByteArray> order{"Width", "GatedByBoolean", "Tool", "Power", "Selector", "Start", "Gain"};
        QVERIFY(walk(Qt::Key_Tab));
        QCOMPARE(visited, order);
        QVERIFY(walk(Qt::Key_Backtab));
        std::reverse(order.begin(), order.end());
        QCOMPARE(visited, order);

        visited.clear();
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return, Qt::Key_Tab})
            QTest::keyClick(QApplication::focusWidget(), key);
        QTest::mouseClick(tool, Qt::LeftButton);
        QCOMPARE(visited, (QList<QByteArray>{"Width", "GatedByBoolean", "Tool"}));

        tool->setEnabled(false); // under the user's hands
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QCOMPARE(visited.last(), QByteArray("Tool"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(visited.last(), QByteArray("Power"));
    }
};

QTEST_MAIN(tst_CToolPage)
#include "tst_CToolPage.moc"
