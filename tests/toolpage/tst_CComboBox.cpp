// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>
#include <QWindow>

#include <functional>

#include "ToolPage/CComboBox.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/FatalMessages.h"
#include "support/Input.h"
#include "support/Rows.h"

/// Runs a function when the watched widget hides.
class HideWatch : public QObject
{
public:
    explicit HideWatch(std::function<void()> onHide) : m_onHide(std::move(onHide)) { }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Hide)
            m_onHide();
        return false;
    }

private:
    const std::function<void()> m_onHide;
};

constexpr int Middle = 300; // of the screen, which is 800 pixels wide

/// Input travels the way of real input: through the windows, with the popup rules of the toolkit.
class tst_CComboBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        cleanup();
        m_messages = std::make_unique<FatalMessages>();
        m_messages->allow(QStringLiteral("^This plugin does not support"));
        m_window = std::make_unique<QWidget>();
        m_window->setStyleSheet(QStringLiteral("QComboBox{color: black;}")); // panels have a style sheet too
        m_box = new CComboBox(m_window.get());
        m_box->addOption(QStringLiteral("red"), true, 1);
        m_box->addOption(QStringLiteral("green"), false, 2);
        m_box->addOption(QStringLiteral("blue"), true, 3);
        m_toggled = std::make_unique<QSignalSpy>(m_box, &CComboBox::itemCheckedStatusChanged);
        m_window->resize(300, 200);
        m_box->setGeometry(20, 20, 200, 34);
        (new QLineEdit(m_window.get()))->setGeometry(20, 160, 200, 30);
        QVERIFY(activate(*m_window));
        m_box->setFocus();
    }

    void cleanup()
    {
        m_window.reset();
        m_messages.reset();
    }

    void texts()
    {
        QCOMPARE(m_box->displayText(), QStringLiteral("red、blue"));
        QCOMPARE(m_box->getCheckedItemsName(), QStringList({QStringLiteral("1"), QStringLiteral("3")}));
        m_box->setItemChecked(2, true);
        m_box->setItemChecked(1, false);
        QCOMPARE(m_box->displayText(), QStringLiteral("green、blue"));
        for (int row : {-1, 0, 4}) // no entries
            m_box->setItemChecked(row, true);
        m_box->onListViewClicked(m_box->model()->index(0, 0));
        m_box->onListViewClicked({});
        QCOMPARE(m_box->getCheckedItemsName(), QStringList({QStringLiteral("2"), QStringLiteral("3")}));
        QCOMPARE(m_toggled->count(), 0);
        QCOMPARE(m_box->currentIndex(), 0);
    }

    void clicksToggleOnce()
    {
        QSignalSpy chosen(m_box, qOverload<int>(&QComboBox::activated));
        click(m_box, m_box->rect().center());
        QVERIFY(isOpen());
        clickEntry(2);
        QCOMPARE(m_box->displayText(), QStringLiteral("red、green、blue"));
        const QPoint onMark = entry(1).topLeft() + QPoint(12, entry(1).height() / 2);
        click(view()->viewport(), onMark);
        QCOMPARE(checked(), QStringLiteral("gb"));
        clickEntry(3, 2);
        QCOMPARE(checked(), QStringLiteral("gb"));
        const QList<QVariantList> toggles = *m_toggled;
        QCOMPARE(toggles, QList<QVariantList>({{1, true}, {0, false}, {2, false}, {2, true}}));
        QVERIFY(isOpen());
        QCOMPARE(m_box->currentIndex(), 0);
        QCOMPARE(chosen.count(), 0);
    }

    void clicksBesideTheListCloseIt()
    {
        for (const QPoint &place : {QPoint(290, 190), m_box->geometry().center()}) {
            click(m_box, m_box->rect().center());
            QVERIFY(isOpen());
            m_box->hidePopup();
            QVERIFY(isOpen());
            click(m_window.get(), place);
            QVERIFY(!isOpen());
            QVERIFY(m_box->hasFocus());
        }
        QCOMPARE(m_toggled->count(), 0);
    }

    /// Nothing is ever chosen in the closed box.
    void boxKeys()
    {
        QSignalSpy current(m_box, qOverload<int>(&QComboBox::currentIndexChanged));
        const auto opens = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
            m_box->closeList();
            type(key, modifiers);
            return isOpen();
        };
        QVERIFY(opens(Qt::Key_Space));
        QVERIFY(opens(Qt::Key_Down, Qt::AltModifier));
        QVERIFY(opens(Qt::Key_F4));
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown, Qt::Key_G,
                                  Qt::Key_Enter, Qt::Key_Escape})
            QVERIFY2(!opens(key), qPrintable(QKeySequence(key).toString()));
        QCOMPARE(m_box->currentIndex(), 0);
        QCOMPARE(current.count() + m_toggled->count(), 0);
    }

    void listKeys()
    {
        type(Qt::Key_Space);
        const auto rowAfter = [this](Qt::Key key) {
            type(key);
            return view()->currentIndex().row();
        };
        QCOMPARE(view()->currentIndex().row(), 1);
        const std::pair<Qt::Key, int> moves[] = {{Qt::Key_Up, 1},   {Qt::Key_Down, 2},   {Qt::Key_End, 3},
                                                 {Qt::Key_Down, 3}, {Qt::Key_Home, 1},   {Qt::Key_B, 3},
                                                 {Qt::Key_Left, 3}, {Qt::Key_PageUp, 1}, {Qt::Key_Down, 2}};
        for (const auto &[key, row] : moves)
            QCOMPARE(std::pair(key, rowAfter(key)), std::pair(key, row));
        type(Qt::Key_Space);
        QCOMPARE(checked(), QStringLiteral("rgb"));
        type(Qt::Key_Space);
        QCOMPARE(checked(), QStringLiteral("rb"));
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
        QCoreApplication::sendEvent(view(), &held);
        QCOMPARE(QList<QVariantList>(*m_toggled), QList<QVariantList>({{1, true}, {1, false}}));

        const std::pair<Qt::Key, Qt::KeyboardModifier> closing[] = {
            {Qt::Key_Escape, Qt::NoModifier}, {Qt::Key_Return, Qt::NoModifier}, {Qt::Key_Enter, Qt::KeypadModifier},
            {Qt::Key_F4, Qt::NoModifier},     {Qt::Key_Up, Qt::AltModifier},    {Qt::Key_Down, Qt::AltModifier}};
        for (const auto &[key, modifier] : closing) {
            if (!isOpen())
                type(Qt::Key_F4);
            type(key, modifier);
            QVERIFY2(!isOpen(), qPrintable(QKeySequence(key).toString()));
            QVERIFY(m_box->hasFocus());
        }
        QCOMPARE(m_toggled->count(), 2);
    }

    void closesWithItsBox()
    {
        QWidget otherWindow;
        const std::pair<const char *, std::function<void()>> ends[] = {
            {"hidden", [this] { m_box->hide(); }},
            {"window hidden", [this] { m_window->hide(); }},
            {"disabled", [this] { m_window->setEnabled(false); }},
            {"deleted", [this] { delete m_box; }},
            {"other window", [&] { otherWindow.activateWindow(); }}};
        for (const auto &[name, end] : ends) {
            const InRow at(name);
            init();
            otherWindow.hide();
            QVERIFY(activate(otherWindow) && activate(*m_window));
            type(Qt::Key_Space);
            const QPointer<QWidget> list = QApplication::activePopupWidget();
            QVERIFY(list);
            end();
            QTRY_VERIFY(!list || !list->isVisible());
            QVERIFY(!QApplication::activePopupWidget());
        }
    }

    void manyEntries()
    {
        CComboBox empty(m_window.get());
        empty.show();
        empty.showPopup();
        QVERIFY(!QApplication::activePopupWidget());

        for (int entry = 4; entry <= 40; ++entry)
            m_box->addOption(QString::number(entry), false, entry);
        type(Qt::Key_Space);
        QCOMPARE(view()->itemDelegate()->sizeHint({}, m_box->model()->index(0, 0)).height(), 0);
        QVERIFY(view()->viewport()->height() >= 8 * entry(1).height());
        QVERIFY(view()->height() < 9 * entry(1).height());
        QVERIFY(view()->verticalScrollBar()->isVisible());
        QVERIFY(view()->window()->y() >= m_box->mapToGlobal(QPoint(0, m_box->height())).y() - 1);
        type(Qt::Key_End);
        QVERIFY(view()->viewport()->rect().contains(entry(40).center()));
        clickEntry(40);
        QCOMPARE(m_toggled->value(0), QVariantList({39, true}));
        QVERIFY(view()->viewport()->rect().contains(entry(40).center()));
    }

    /// The list shows all of its texts, on the screen; a tool tip tells those that the box cannot show.
    void narrowBox()
    {
        for (const auto &[direction, windowX] : {std::pair(Qt::LeftToRight, Middle),
                                                 {Qt::RightToLeft, Middle},
                                                 {Qt::LeftToRight, 700},
                                                 {Qt::RightToLeft, 0}}) {
            const InRow at(direction == Qt::LeftToRight ? "left to right" : "right to left");
            init();
            const auto tellsFullText = [this] {
                QHelpEvent hover(QEvent::ToolTip, QPoint(5, 5), m_box->mapToGlobal(QPoint(5, 5)));
                QCoreApplication::sendEvent(m_box, &hover);
                return QToolTip::text() == m_box->displayText();
            };
            QVERIFY(!tellsFullText());
            m_box->setLayoutDirection(direction);
            m_box->resize(70, 34);
            m_window->move(windowX, 100);
            m_box->addOption(QStringLiteral("a rather long entry"), true, 4);
            QVERIFY(tellsFullText());
            QToolTip::hideText();
            type(Qt::Key_Space);
            QVERIFY(view()->viewport()->width() >= view()->sizeHintForColumn(0));
            const QRect list = view()->window()->geometry();
            QVERIFY(m_box->screen()->geometry().contains(list));
            const QRect box(m_box->mapToGlobal(QPoint()), m_box->size());
            if (windowX == Middle)
                QCOMPARE(direction == Qt::LeftToRight ? list.left() : list.right(),
                         direction == Qt::LeftToRight ? box.left() : box.right());
        }
    }

    /// Where the text's ink is, seen from the side where reading starts.
    void paintsTheTexts()
    {
        for (int pass = 0; pass < 4; ++pass) {
            const InRow at(pass < 2 ? "left to right" : "right to left");
            const Qt::LayoutDirection direction = pass < 2 ? Qt::LeftToRight : Qt::RightToLeft;
            const bool isElided = pass % 2 == 1;
            CComboBox box(m_window.get());
            box.setLayoutDirection(direction);
            box.resize(120, 34);
            const QImage before = box.grab().toImage();
            box.addOption(QString(isElided ? 80 : 2, QLatin1Char('I')), true, {});
            const QImage after = box.grab().toImage();
            QVector<int> ink;
            for (int x = 0; x < after.width(); ++x) {
                const int column = direction == Qt::LeftToRight ? x : after.width() - 1 - x;
                for (int y = 0; y < after.height(); ++y) {
                    if (before.pixel(column, y) != after.pixel(column, y) && (ink.isEmpty() || ink.last() != x))
                        ink << x;
                }
            }
            QVERIFY(!ink.isEmpty());
            QVERIFY2(ink.first() >= 5 && ink.first() <= 9, QByteArray::number(ink.first()).constData());
            QVERIFY2(ink.last() < 120 - 20, QByteArray::number(ink.last()).constData());
            QCOMPARE(ink.last() > 120 - 40, isElided);
        }
    }

    /// Neither the box nor the page around it moves, whether the box has the focus or not.
    void wheel()
    {
        ToolPageWidgetItem row(m_window.get());
        row.setItemInfo({QStringLiteral("Colours")}, {}, m_box);
        row.show();
        QSignalSpy current(m_box, qOverload<int>(&QComboBox::currentIndexChanged));
        for (bool focused : {false, true}) {
            focused ? m_box->setFocus() : m_box->clearFocus();
            QVERIFY(turnWheel(*m_box));
        }
        QCOMPARE(current.count() + m_toggled->count(), 0);
    }

    void assistiveTechnology()
    {
        m_box->setAccessibleName(QStringLiteral("Colours"));
        QAccessibleInterface *const box = QAccessible::queryAccessibleInterface(m_box);
        QCOMPARE(box->role(), QAccessible::ComboBox);
        QCOMPARE(box->text(QAccessible::Name), QStringLiteral("Colours"));
        QCOMPARE(box->text(QAccessible::Value), QStringLiteral("red、blue"));
        QVERIFY(box->state().expandable && !box->state().expanded);
        box->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
        QVERIFY(box->state().expanded);
        QAccessibleInterface *const list = box->child(0);
        QCOMPARE(list->text(QAccessible::Name), QStringLiteral("Colours"));
        type(Qt::Key_Down);
        type(Qt::Key_Space);
        QCOMPARE(box->text(QAccessible::Value), QStringLiteral("red、green、blue"));
        QVERIFY(list->child(1)->state().checked && list->child(2)->state().checked);
        QVERIFY(!view()->isRowHidden(0)); // a view counts no hidden rows when it announces an entry by its number
        QCOMPARE(list->child(2)->text(QAccessible::Name), QStringLiteral("green"));
        bool wasOpen = true; // when the list has just gone
        HideWatch watch([&] { wasOpen = box->state().expanded; });
        view()->window()->installEventFilter(&watch);
        box->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(!wasOpen && !box->state().expanded);
    }

private:
    QRect entry(int row) const { return view()->visualRect(m_box->model()->index(row, 0)); }
    QListView *view() const { return static_cast<QListView *>(m_box->view()); }
    bool isOpen() const { return view()->isVisible(); }
    /// The checked entries, as the list marks them.
    QString checked() const
    {
        QString initials;
        for (int row = 1; row < m_box->count(); ++row) {
            if (m_box->itemData(row, Qt::CheckStateRole) == Qt::Checked)
                initials += m_box->itemText(row).at(0);
        }
        return initials;
    }

    /// One click, or the two of a double click.
    void click(const QWidget *widget, const QPoint &position, int times = 1) const
    {
        QWindow *const window = widget->window()->windowHandle();
        const QPoint place = widget->mapTo(widget->window(), position);
        if (times == 1)
            QTest::mouseClick(window, Qt::LeftButton, {}, place);
        else
            QTest::mouseDClick(window, Qt::LeftButton, {}, place);
    }

    void clickEntry(int row, int times = 1) const { click(view()->viewport(), entry(row).center(), times); }

    /// To the list while it is open, else to the box.
    void type(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        const QWidget *const popup = QApplication::activePopupWidget();
        QTest::keyClick((popup ? popup : m_window.get())->windowHandle(), key, modifiers);
    }

    std::unique_ptr<FatalMessages> m_messages;
    std::unique_ptr<QWidget> m_window;
    CComboBox *m_box = nullptr;
    std::unique_ptr<QSignalSpy> m_toggled;
};

QTEST_MAIN(tst_CComboBox)
#include "tst_CComboBox.moc"
