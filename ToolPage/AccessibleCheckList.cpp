// SPDX-License-Identifier: MIT
#include "ToolPage/AccessibleCheckList.h"

#include <QAbstractItemView>

#include "ToolPage/CComboBox.h"

namespace {

QAccessibleInterface *checkListOf(const QString &className, QObject *object)
{
    auto *const box = className == QLatin1String("CComboBox") ? qobject_cast<CComboBox *>(object) : nullptr;
    return box ? new AccessibleCheckList(box) : nullptr;
}

} // namespace

void AccessibleCheckList::install()
{
    QAccessible::installFactory(checkListOf);
}

AccessibleCheckList::AccessibleCheckList(CComboBox *box) : QAccessibleWidget(box, QAccessible::ComboBox), m_box(box) { }

QString AccessibleCheckList::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? m_box->displayText() : QAccessibleWidget::text(kind);
}

QAccessible::State AccessibleCheckList::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.expanded = m_box->view()->window()->isVisible(); // the view itself is, until its window has hidden
    return state;
}

QAccessibleInterface *AccessibleCheckList::child(int index) const
{
    return index == 0 ? QAccessible::queryAccessibleInterface(m_box->view()) : nullptr;
}

int AccessibleCheckList::indexOfChild(const QAccessibleInterface *child) const
{
    return child && child->object() == m_box->view() ? 0 : -1;
}

QStringList AccessibleCheckList::actionNames() const
{
    return QAccessibleWidget::actionNames() << showMenuAction() << pressAction();
}

void AccessibleCheckList::doAction(const QString &name)
{
    if (name != showMenuAction() && name != pressAction())
        QAccessibleWidget::doAction(name);
    else if (m_box->view()->isVisible())
        m_box->closeList();
    else
        m_box->showPopup();
}
