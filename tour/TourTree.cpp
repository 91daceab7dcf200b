// SPDX-License-Identifier: MIT
#include "tour/TourTree.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QToolButton>
#include <QTreeView>

#include "tour/TourHand.h"
#include "tour/TourPanel.h"
#include "tour/TourVerdict.h"

namespace {

constexpr int EditorPatience = 1000; // ms; a click into the selected row opens its editor after a while

QModelIndex search(const QAbstractItemModel &model, const QModelIndex &parent, const QString &name)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        if (index.data().toString() == name)
            return index;
        const QModelIndex below = search(model, index, name);
        if (below.isValid())
            return below;
    }
    return QModelIndex();
}

} // namespace

QTreeView *TourTree::view() const
{
    return m_panel.part<QTreeView>("widget_featrue");
}

QLineEdit *TourTree::searchField() const
{
    return m_panel.part<QLineEdit>("edit_search");
}

QComboBox *TourTree::levelBox() const
{
    return m_panel.part<QComboBox>("cboboxLevel");
}

QToolButton *TourTree::foldButton() const
{
    return m_panel.part<QToolButton>("toolButton");
}

int TourTree::shownRows() const
{
    int count = 0;
    if (!view() || !view()->model())
        return 0;
    for (QModelIndex index = view()->model()->index(0, 0); index.isValid(); index = view()->indexBelow(index))
        ++count;
    return count;
}

QModelIndex TourTree::feature(const QString &name) const
{
    return view() && view()->model() ? search(*view()->model(), QModelIndex(), name) : QModelIndex();
}

bool TourTree::isShown(const QString &name) const
{
    const QModelIndex index = feature(name);
    return index.isValid() && !view()->isRowHidden(index.row(), index.parent());
}

QWidget *TourTree::editor() const
{
    if (!view())
        return nullptr;
    const QList<QWidget *> children =
        view()->viewport()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        if (child->isVisible())
            return child;
    }
    return nullptr;
}

QWidget *TourTree::openEditor(const QString &name)
{
    const QModelIndex index = feature(name);
    if (!index.isValid())
        return nullptr;
    TourHand::clickCell(view(), index.siblingAtColumn(1));
    TourHand::waitUntil([this] { return editor() != nullptr; }, EditorPatience);
    return editor();
}

bool TourTree::showEditor(const QString &name)
{
    QWidget *open = openEditor(name);
    if (qobject_cast<QComboBox *>(open))
        TourHand::click(open);
    return open != nullptr;
}

void TourTree::leaveEditor()
{
    while (QWidget *list = QApplication::activePopupWidget())
        list->close();
    if (QWidget *open = editor())
        TourHand::key(open, Qt::Key_Escape);
}

bool TourTree::edit(const QString &name, const QString &text)
{
    QWidget *open = openEditor(name);
    if (!m_verdict.expect(open, QStringLiteral("no editor opens for %1").arg(name)))
        return false;
    if (auto *box = qobject_cast<QComboBox *>(open)) {
        if (!m_verdict.expect(TourHand::choose(box, text), QStringLiteral("%1 does not offer %2").arg(name, text)))
            return false;
    } else {
        TourHand::retype(open, text);
    }
    if (QWidget *stillOpen = editor())
        TourHand::key(stillOpen, Qt::Key_Return);
    TourHand::pause(100);
    return true;
}
