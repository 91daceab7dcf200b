// SPDX-License-Identifier: MIT
#include "FeatureTree/FeatureEditDelegate.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QTreeView>

#include "FeatureTree/FeatureEditors.h"
#include "FeatureTree/FeatureKinds.h"
#include "FeatureTree/FloatText.h"
#include "FeatureTree/NodeWarning.h"
#include "FeatureTree/TreeItem.h"
#include "FeatureTree/TreeModel.h"
#include "ToolPage/HostCall.h"
#include "ToolPage/NodeGuard.h"

using FeatureKinds::EditorKind;

namespace {

constexpr int valueColumn = 1;
/// Property of an editor: the value that it was filled with.
constexpr char loadedValue[] = "loadedValue";

/// The editor's kind if the node's value can be edited now, else None. Throws what the node throws.
EditorKind usableEditor(GenApi::INode *node)
{
    const GenApi::EAccessMode mode = node->GetAccessMode();
    const bool isInteger = node->GetPrincipalInterfaceType() == GenApi::intfIInteger;
    const bool isUsable = mode == GenApi::RW || (mode == GenApi::WO && !isInteger);
    return isUsable ? FeatureKinds::editorKind(node) : EditorKind::None;
}

QString grayText(const QVariant &value)
{
    if (value.userType() == QMetaType::Double)
        return QString::number(static_cast<double>(value.toFloat()), 'f', 3);
    return value.toString();
}

void logFault(const char *message)
{
    logToHost("FeatureEditDelegate", message);
}

void logGenICam(const GenICam::GenericException &error)
{
    logFault(error.GetDescription());
}

/// Addresses are shown for editing and never written: one line for each edit tells so.
void logDiscarded(QWidget *editor, EditorKind kind, const QString &name)
{
    auto *line = qobject_cast<QLineEdit *>(editor);
    if (!line || !line->isModified() || (kind != EditorKind::MacMask && kind != EditorKind::Ipv4Mask))
        return;
    line->setModified(false);
    const QString text = QStringLiteral("%1: addresses are not written, \"%2\" is discarded").arg(name, line->text());
    logFault(text.toUtf8().constData());
}

/// Whether the widget or one that it lies in is painting itself: a tree whose rows have changed lays itself out then.
bool isBeingPainted(const QWidget *widget)
{
    while (widget && !widget->testAttribute(Qt::WA_WState_InPaintEvent))
        widget = widget->parentWidget();
    return widget;
}

/// What closes an editor whose mask is not filled up; Qt leaves those keys to a validator.
QAbstractItemDelegate::EndEditHint closingHint(int key)
{
    switch (key) {
    case Qt::Key_Tab:
        return QAbstractItemDelegate::EditNextItem;
    case Qt::Key_Backtab:
        return QAbstractItemDelegate::EditPreviousItem;
    case Qt::Key_Enter:
    case Qt::Key_Return:
        return QAbstractItemDelegate::SubmitModelCache;
    default:
        return QAbstractItemDelegate::NoHint;
    }
}

} // namespace

FeatureEditDelegate::FeatureEditDelegate(QObject *parent)
    : QStyledItemDelegate(parent), view(qobject_cast<QTreeView *>(parent))
{ }

TreeItem *FeatureEditDelegate::itemAt(const QModelIndex &index) const
{
    const auto *model = qobject_cast<const TreeModel *>(index.model());
    return model && index.isValid() ? model->getItem(index) : nullptr;
}

GenApi::INode *FeatureEditDelegate::nodeAt(const QModelIndex &index) const
{
    const TreeItem *item = dataDisabled ? nullptr : itemAt(index);
    return item ? item->GetFeaturePtr() : nullptr;
}

bool FeatureEditDelegate::isShownGray(TreeItem *item) const
{
    bool isGray = true;
    const auto isNew = [item](const char *message) { return item->isNewFault(message); };
    guardNode([&] { isGray = !item->GetFeaturePtr()->IsFeature() || !FeatureKinds::isWritable(item->GetFeaturePtr()); },
              [&](const GenICam::GenericException &error) {
                  if (isNew(error.GetDescription()))
                      warnNodeError(error);
              },
              [&](const char *message) {
                  if (isNew(message))
                      logFault(message);
              });
    return isGray;
}

void FeatureEditDelegate::paint(QPainter *painter, const QStyleOptionViewItem &viewItem, const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, viewItem, index);
    if (!nodeAt(index) || !isShownGray(itemAt(index)))
        return;
    QStyle *style = QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1; // as Qt indents the text of other cells
    QPalette palette = viewItem.palette;
    palette.setBrush(QPalette::Text, Qt::gray);
    style->drawItemText(painter, viewItem.rect.adjusted(margin, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, palette,
                        true, grayText(itemAt(index)->data(index.column())), QPalette::Text);
}

/// A command's button is transparent, so the text of a cell is left out while its editor is open. Numbers have no group
/// signs, as number fields take none. What stands in the cell is compared, since asking again would read the device.
void FeatureEditDelegate::initStyleOption(QStyleOptionViewItem *viewItem, const QModelIndex &index) const
{
    viewItem->locale.setNumberOptions(viewItem->locale.numberOptions() | QLocale::OmitGroupSeparator);
    QStyledItemDelegate::initStyleOption(viewItem, index);
    const TreeItem *item = itemAt(index);
    const QVariant value = item ? item->storedData(index.column()) : QVariant();
    if (view && view->indexWidget(index))
        viewItem->text.clear();
    else if (value.userType() == QMetaType::Double && viewItem->text == displayText(value, viewItem->locale))
        viewItem->text = floatText(value.toDouble(), viewItem->locale);
}

bool FeatureEditDelegate::isEditable(const QModelIndex &index) const
{
    bool isUsable = false;
    if (GenApi::INode *node = index.column() == valueColumn ? nodeAt(index) : nullptr)
        guardNode([&] { isUsable = usableEditor(node) != EditorKind::None; });
    return isUsable;
}

QWidget *FeatureEditDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                           const QModelIndex &index) const
{
    GenApi::INode *node = index.column() == valueColumn ? nodeAt(index) : nullptr;
    if (!node)
        return nullptr;
    QWidget *editor = nullptr;
    EditorKind kind = EditorKind::None;
    const auto make = [&] {
        kind = usableEditor(node);
        editor = FeatureEditors::make(kind, FeatureKinds::nodeName(node), parent);
    };
    if (!guardNode(make, logGenICam, logFault) || !editor)
        return nullptr;
    editor->setProperty(loadedValue, FeatureEditors::value(editor, kind));
    auto *self = const_cast<FeatureEditDelegate *>(this);
    if (auto *button = qobject_cast<QPushButton *>(editor))
        connect(button, &QPushButton::clicked, this, &FeatureEditDelegate::CommandClicked);
    if (auto *list = qobject_cast<QComboBox *>(editor))
        connect(list, QOverload<int>::of(&QComboBox::activated), self, [self, list] { self->commitChoice(list); });
    return editor;
}

void FeatureEditDelegate::commitChoice(QWidget *list)
{
    list->setProperty(loadedValue, QVariant());
    Q_EMIT commitData(list);
}

void FeatureEditDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    GenApi::INode *node = nodeAt(index);
    if (!node)
        return;
    EditorKind kind = EditorKind::None;
    guardNode([&] {
        if (!FeatureKinds::isWritable(node))
            return;
        kind = FeatureKinds::editorKind(node);
        FeatureEditors::fill(editor, kind, node);
    });
    if (kind != EditorKind::None)
        editor->setProperty(loadedValue, FeatureEditors::value(editor, kind));
}

void FeatureEditDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    QVariant value;
    if (GenApi::INode *node = nodeAt(index)) {
        guardNode([&] {
            const EditorKind kind = FeatureKinds::editorKind(node);
            value = FeatureEditors::value(editor, kind);
            logDiscarded(editor, kind, FeatureKinds::nodeName(node));
        });
    }
    if (value == editor->property(loadedValue))
        value.clear();
    model->setData(index, value, Qt::EditRole);
}

void FeatureEditDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &viewItem,
                                               const QModelIndex &) const
{
    editor->setGeometry(viewItem.rect);
    if (isBeingPainted(editor))
        editor->update();
    else
        editor->repaint();
}

QString FeatureEditDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    return QStyledItemDelegate::displayText(value, locale);
}

bool FeatureEditDelegate::cellEntered(const QModelIndex &index)
{
    GenApi::INode *node = index.column() == valueColumn ? nodeAt(index) : nullptr;
    isHovering = false;
    if (node) {
        guardNode([&] {
            isHovering = node->IsFeature() && node->GetPrincipalInterfaceType() == GenApi::intfIBoolean
                && FeatureKinds::isWritable(node);
        });
    }
    if (isHovering)
        hoverIndex = index;
    return isHovering;
}

bool FeatureEditDelegate::eventFilter(QObject *editor, QEvent *event)
{
    if (event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    auto *line = qobject_cast<QLineEdit *>(editor);
    if (event->type() != QEvent::KeyPress || !line || line->hasAcceptableInput())
        return QStyledItemDelegate::eventFilter(editor, event);
    const EndEditHint hint = closingHint(static_cast<QKeyEvent *>(event)->key());
    if (hint == NoHint)
        return QStyledItemDelegate::eventFilter(editor, event);
    Q_EMIT commitData(line);
    Q_EMIT closeEditor(line, hint);
    return true;
}
