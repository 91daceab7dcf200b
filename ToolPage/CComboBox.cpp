// SPDX-License-Identifier: MIT
#include "ToolPage/CComboBox.h"

#include <algorithm>

#include <QAccessible>
#include <QFrame>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QListView>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStylePainter>
#include <QToolTip>
#include <QWindow>

#include "PanelBase/StyleSheets.h"
#include "ToolPage/AccessibleCheckList.h"
#include "ToolPage/CustomItemDelegate.h"
#include "ToolPage/CustomItemModel.h"

namespace {

constexpr int Placeholder = CustomItemModel::Placeholder; ///< model rows
constexpr int FirstEntry = Placeholder + 1;
constexpr int EntryData = Qt::UserRole + 1;
constexpr int EntriesInView = 8;
constexpr QChar Separator(0x3001); ///< ideographic comma
constexpr QMargins TextMargins(5, 2, 2, 2); // pixels
constexpr int TextRoomLess = 25; ///< pixels of the box that the text leaves free

void announce(QObject *object, QAccessible::State changed, int child = -1)
{
    QAccessibleStateChangeEvent change(object, changed);
    change.setChild(child);
    QAccessible::updateAccessibility(&change);
}

/// The room on the screen that the box lies on, which its window may leave for another one.
QRect roomOf(const QWidget &box)
{
    const QScreen *const screen = QGuiApplication::screenAt(box.mapToGlobal(box.rect().center()));
    return (screen ? screen : box.screen())->availableGeometry();
}

bool opensList(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Space:
    case Qt::Key_Select:
        return true;
    case Qt::Key_F4:
        return event.modifiers() == Qt::NoModifier;
    case Qt::Key_Down:
        return event.modifiers() & Qt::AltModifier;
    default:
        return false;
    }
}

bool closesList(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Escape:
    case Qt::Key_Enter:
    case Qt::Key_Return:
    case Qt::Key_F4:
    case Qt::Key_Back:
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        return event.modifiers() & Qt::AltModifier;
    default:
        return false;
    }
}

} // namespace

CComboBox::CComboBox(QWidget *parent)
    : QComboBox(parent), m_view(new QListView(this)), m_model(new CustomItemModel(this))
{
    AccessibleCheckList::install();
    auto *const delegate = new CustomItemDelegate(this);
    setStyleSheet(StyleSheets::CheckList);
    setMaxVisibleItems(EntriesInView + FirstEntry);
    setModel(m_model);
    setView(m_view);
    setItemDelegate(delegate);
    m_view->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded); // off for lists that open over their box
    m_popup = findChild<QFrame *>(QString(), Qt::FindDirectChildrenOnly);
    connect(m_view, &QListView::pressed, this, &CComboBox::onListViewClicked);
    connect(delegate, &CustomItemDelegate::pressed, this, &CComboBox::onListViewClicked);
    connect(
        this, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] { setCurrentIndex(Placeholder); },
        Qt::DirectConnection);
    m_focusWatch = connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow *focus) {
        if (focus != m_popup->windowHandle() && focus != window()->windowHandle())
            closeList();
    });
    addOption(QString(), false, QVariant());
    m_model->item(Placeholder)->setFlags(Qt::NoItemFlags); // the arrow keys pass over it
    for (QObject *watched : {static_cast<QObject *>(this), static_cast<QObject *>(m_popup),
                             static_cast<QObject *>(m_view), static_cast<QObject *>(m_view->viewport())})
        watched->installEventFilter(this);
}

/// The list, a child that is deleted later, moves the focus once more; that must not reach what is left of the box.
CComboBox::~CComboBox()
{
    disconnect(m_focusWatch);
}

void CComboBox::addOption(const QString &text, bool checked, QVariant userData)
{
    auto *const entry = new QStandardItem(text);
    entry->setCheckable(true);
    entry->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    entry->setData(userData, EntryData);
    m_model->appendRow(entry);
    updateText(m_model->rowCount() - 1);
}

void CComboBox::setItemChecked(int row, bool checked)
{
    QStandardItem *const entry = m_model->item(row);
    const Qt::CheckState state = checked ? Qt::Checked : Qt::Unchecked;
    if (!entry || entry->checkState() == state)
        return;
    {
        const QSignalBlocker blocker(this);
        entry->setCheckState(state);
    }
    updateText(row);
}

QStringList CComboBox::getCheckedItemsName() const
{
    QStringList names;
    for (int row = FirstEntry; row < m_model->rowCount(); ++row) {
        if (m_model->item(row)->checkState() == Qt::Checked)
            names << m_model->item(row)->data(EntryData).toString();
    }
    return names;
}

void CComboBox::updateText(int)
{
    QStringList texts;
    for (int row = FirstEntry; row < m_model->rowCount(); ++row) {
        if (m_model->item(row)->checkState() == Qt::Checked)
            texts << m_model->item(row)->text();
    }
    const QString text = texts.join(Separator);
    if (text == m_text)
        return;
    m_text = text;
    update();
    QAccessibleValueChangeEvent change(this, m_text);
    QAccessible::updateAccessibility(&change);
}

void CComboBox::onListViewClicked(const QModelIndex &index)
{
    QStandardItem *const entry = index.row() >= FirstEntry ? m_model->itemFromIndex(index) : nullptr;
    if (!entry)
        return;
    const bool checked = entry->checkState() != Qt::Checked;
    entry->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    updateText(index.row());
    QAccessible::State toggled;
    toggled.checked = true;
    announce(m_view, toggled, index.row());
    Q_EMIT itemCheckedStatusChanged(index.row() - FirstEntry, checked);
}

void CComboBox::showPopup()
{
    if (m_model->rowCount() <= FirstEntry)
        return;
    m_view->setAccessibleName(accessibleName());
    m_popup->setMinimumWidth(std::min(listWidth(), roomOf(*this).width()));
    QComboBox::showPopup();
    placeList();
    m_hideAllowed = false;
    m_view->setCurrentIndex(m_model->index(FirstEntry, 0));
}

/// Wide enough for the longest entry, even where the box is narrower.
int CComboBox::listWidth() const
{
    return m_view->sizeHintForColumn(0) + m_view->verticalScrollBar()->sizeHint().width()
        + 2 * (m_view->frameWidth() + m_popup->frameWidth());
}

/// Aligned with the start of the box, as far as the screen has room: the toolkit assumes that a list is no wider than
/// its box.
void CComboBox::placeList()
{
    const QRect room = roomOf(*this);
    const int start = mapToGlobal(QPoint()).x() + (isRightToLeft() ? width() - m_popup->width() : 0);
    m_popup->move(std::max(room.left(), std::min(start, room.right() + 1 - m_popup->width())), m_popup->y());
}

void CComboBox::hidePopup()
{
    if (m_hideAllowed)
        QComboBox::hidePopup();
}

void CComboBox::closeList()
{
    m_hideAllowed = true;
    hidePopup();
}

bool CComboBox::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_popup && event->type() == QEvent::MouseButtonPress) {
        const QRect frame(m_popup->mapToGlobal(QPoint()), m_popup->size());
        if (!frame.contains(static_cast<QMouseEvent *>(event)->globalPos()))
            m_hideAllowed = true;
    }
    if (watched == m_popup && (event->type() == QEvent::Show || event->type() == QEvent::Hide)) {
        QAccessible::State opened;
        opened.expanded = true;
        announce(this, opened);
    }
    if (watched == m_view && event->type() == QEvent::KeyPress)
        return takeListKey(*static_cast<QKeyEvent *>(event));
    if (watched == m_view->viewport())
        return takeListMouse(*event);
    if (watched == this && event->type() == QEvent::ToolTip)
        return showFullText(*event);
    return QComboBox::eventFilter(watched, event);
}

bool CComboBox::takeListKey(const QKeyEvent &event)
{
    if (closesList(event)) {
        closeList();
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Space:
    case Qt::Key_Select:
        if (!event.isAutoRepeat())
            onListViewClicked(m_view->currentIndex());
        return true;
    case Qt::Key_Home: // the view would go to the placeholder
        m_view->setCurrentIndex(m_model->index(FirstEntry, 0));
        return true;
    default:
        return false;
    }
}

/// A release would choose the entry, or toggle it once more when it lies on the check mark. The second press of a
/// double click comes as an event of its own.
bool CComboBox::takeListMouse(const QEvent &event)
{
    if (event.type() == QEvent::MouseButtonDblClick)
        onListViewClicked(m_view->indexAt(static_cast<const QMouseEvent &>(event).pos()));
    return event.type() == QEvent::MouseButtonDblClick || event.type() == QEvent::MouseButtonRelease;
}

bool CComboBox::showFullText(const QEvent &event)
{
    if (shownText() == m_text)
        return false;
    QToolTip::showText(static_cast<const QHelpEvent &>(event).globalPos(), m_text, this);
    return true;
}

QString CComboBox::shownText() const
{
    return fontMetrics().elidedText(m_text, Qt::ElideRight, width() - TextRoomLess);
}

void CComboBox::paintEvent(QPaintEvent *event)
{
    QComboBox::paintEvent(event);
    if (currentIndex() < 0)
        return;
    QStylePainter painter(this);
    const QRect room = QStyle::visualRect(layoutDirection(), rect(), rect().marginsRemoved(TextMargins));
    const int side = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
    painter.drawItemText(room, side, palette(), isEnabled(), shownText(), QPalette::ButtonText);
}

/// The other keys choose an entry of a combo box; there is nothing to choose here.
void CComboBox::keyPressEvent(QKeyEvent *event)
{
    if (opensList(*event))
        showPopup();
    else
        event->ignore();
}

void CComboBox::wheelEvent(QWheelEvent *event)
{
    event->accept();
}

void CComboBox::hideEvent(QHideEvent *event)
{
    m_hideAllowed = true;
    QComboBox::hideEvent(event);
}

void CComboBox::changeEvent(QEvent *event)
{
    m_hideAllowed = m_hideAllowed || (event->type() == QEvent::EnabledChange && !isEnabled());
    QComboBox::changeEvent(event);
}
