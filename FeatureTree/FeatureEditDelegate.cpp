// SPDX-License-Identifier: MIT
#include "FeatureTree/FeatureEditDelegate.h"

#include <functional>

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStyle>
#include <QTreeView>

#include "FeatureTree/FeatureEditors.h"
#include "FeatureTree/FeatureKinds.h"
#include "FeatureTree/FloatText.h"
#include "FeatureTree/TreeItem.h"
#include "FeatureTree/TreeModel.h"
#include "Features/NodeGuard.h"
#include "PanelBase/DeviceReading.h"
#include "PanelBase/HostCall.h"
#include "PanelBase/NumberInput.h"
#include "PanelBase/PressElsewhere.h"

namespace {

using FeatureKinds::EditorKind;

constexpr int ValueColumn = 1;

/// Null unless the node's value can be edited now. Throws what the node throws.
const EditorKind *usableEditor(GenApi::INode *node)
{
    const GenApi::EAccessMode mode = node->GetAccessMode();
    if (mode != GenApi::RW && mode != GenApi::WO)
        return nullptr;
    const EditorKind &kind = FeatureKinds::editorKind(node);
    return kind.make && (mode == GenApi::RW || !kind.needsReadable) ? &kind : nullptr;
}

QString grayText(const QVariant &value)
{
    return value.userType() == QMetaType::Double ? readOnlyFloatText(value.toDouble()) : value.toString();
}

void logFault(const char *message)
{
    logToHost("FeatureEditDelegate", message);
}

void logRefusal(GenApi::INode *node, const QString &reason)
{
    if (!reason.isEmpty())
        logFault(qUtf8Printable(
            QStringLiteral("Set %1 value failed, message = %2").arg(FeatureKinds::nodeName(node), reason)));
}

/// Passes on what it throws; a device that does not answer is not read.
void readFeature(TreeItem *item, const std::function<void()> &access)
{
    DeviceReading *const reading = item->reading();
    if (!reading)
        access();
    else if (!reading->isSilent())
        reading->read(item->GetFeaturePtr(), access);
}

void logGenICam(const GenICam::GenericException &error)
{
    logFault(error.GetDescription());
}

/// Addresses are shown for editing and never written: one line for each edit tells so.
void logDiscarded(QWidget *editor, const EditorKind &kind, const QString &name)
{
    auto *line = qobject_cast<QLineEdit *>(editor);
    if (!kind.isDiscarded || !line || !line->isModified())
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

/// What closes an editor by that key.
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
    : QStyledItemDelegate(parent), m_view(qobject_cast<QTreeView *>(parent))
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

bool FeatureEditDelegate::isShownGray(const QModelIndex &index) const
{
    return !qobject_cast<const TreeModel *>(index.model())->isEditable(itemAt(index));
}

QVariant FeatureEditDelegate::grayValue(const QModelIndex &index) const
{
    TreeItem *item = itemAt(index);
    const bool showsReadCells = qobject_cast<const TreeModel *>(index.model())->showsReadCells;
    return showsReadCells ? item->cell().value : item->data(index.column());
}

void FeatureEditDelegate::paint(QPainter *painter, const QStyleOptionViewItem &viewItem, const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, viewItem, index);
    if (!nodeAt(index) || !isShownGray(index))
        return;
    QStyle *style = QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1; // as Qt indents the text of other cells
    QPalette palette = viewItem.palette;
    palette.setBrush(QPalette::Text, Qt::gray);
    style->drawItemText(painter, viewItem.rect.adjusted(margin, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, palette,
                        true, grayText(grayValue(index)), QPalette::Text);
}

/// A command's button is transparent, so the text of a cell is left out while its editor is open. Numbers have no group
/// signs, as number fields take none. What stands in the cell is compared, since asking again would read the device.
void FeatureEditDelegate::initStyleOption(QStyleOptionViewItem *viewItem, const QModelIndex &index) const
{
    viewItem->locale.setNumberOptions(viewItem->locale.numberOptions() | QLocale::OmitGroupSeparator);
    QStyledItemDelegate::initStyleOption(viewItem, index);
    const TreeItem *item = itemAt(index);
    const QVariant value = item ? item->storedData(index.column()) : QVariant();
    if (m_view && m_view->indexWidget(index))
        viewItem->text.clear();
    else if (value.userType() == QMetaType::Double && viewItem->text == displayText(value, viewItem->locale))
        viewItem->text = floatText(value.toDouble(), viewItem->locale);
}

bool FeatureEditDelegate::isEditable(const QModelIndex &index) const
{
    bool isUsable = false;
    GenApi::INode *node = index.column() == ValueColumn ? nodeAt(index) : nullptr;
    if (node)
        guardNode([&] { readFeature(itemAt(index), [&] { isUsable = usableEditor(node); }); });
    return isUsable;
}

QWidget *FeatureEditDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                           const QModelIndex &index) const
{
    GenApi::INode *node = index.column() == ValueColumn ? nodeAt(index) : nullptr;
    if (!node)
        return nullptr;
    QWidget *editor = nullptr;
    const auto make = [&] {
        if (const EditorKind *kind = usableEditor(node))
            editor = FeatureEditors::make(*kind, FeatureKinds::nodeName(node), parent);
    };
    if (!guardNode([&] { readFeature(itemAt(index), make); }, logGenICam, logFault) || !editor)
        return nullptr;
    const_cast<FeatureEditDelegate *>(this)->watch(editor, index);
    return editor;
}

/// Connects what ends an edit, except for keys, which eventFilter() sees.
void FeatureEditDelegate::watch(QWidget *editor, const QModelIndex &index)
{
    m_openEditor = editor;
    m_openIndex = index;
    if (auto *button = qobject_cast<QPushButton *>(editor))
        connect(button, &QPushButton::clicked, this, &FeatureEditDelegate::CommandClicked);
    if (auto *list = qobject_cast<QComboBox *>(editor)) {
        connect(list, QOverload<int>::of(&QComboBox::activated), this, [this, list] {
            FeatureEditors::noteChoice(list);
            commit(list);
        });
    }
    if (auto *box = qobject_cast<QAbstractSpinBox *>(editor)) // by its arrows
        connect(box, &QAbstractSpinBox::editingFinished, this, [this, box] { commit(box); });
    auto *press = new PressElsewhere(
        editor, [this, editor] { end(editor, NoHint); }, editor);
    press->start();
}

void FeatureEditDelegate::commit(QWidget *editor)
{
    const QScopedValueRollback<bool> ending(m_isEnding, true);
    Q_EMIT commitData(editor);
}

void FeatureEditDelegate::end(QWidget *editor, EndEditHint hint)
{
    const QPointer<QWidget> open(editor);
    const QScopedValueRollback<bool> ending(m_isEnding, true);
    Q_EMIT commitData(editor);
    if (open)
        Q_EMIT closeEditor(editor, hint);
}

bool FeatureEditDelegate::mayEnd(QWidget *editor) const
{
    return m_isEnding || !editor || !FeatureEditors::hasInput(editor);
}

void FeatureEditDelegate::dropEditor()
{
    if (!m_openEditor)
        return;
    FeatureEditors::forgetInput(m_openEditor);
    Q_EMIT closeEditor(m_openEditor, RevertModelCache);
}

void FeatureEditDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    GenApi::INode *node = nodeAt(index);
    if (!node)
        return;
    const auto fill = [&] {
        if (FeatureKinds::isWritable(node))
            FeatureEditors::fill(FeatureKinds::editorKind(node), editor, node);
    };
    guardNode([&] { readFeature(itemAt(index), fill); });
}

void FeatureEditDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    QVariant value;
    GenApi::INode *node = nodeAt(index);
    if (node && FeatureEditors::hasInput(editor)) {
        guardNode([&] {
            const EditorKind &kind = FeatureKinds::editorKind(node);
            value = kind.value(editor);
            logDiscarded(editor, kind, FeatureKinds::nodeName(node));
            logRefusal(node, kind.refusal(editor));
        });
        FeatureEditors::forgetInput(editor); // the model shows it what the device has made of it
    }
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
    GenApi::INode *node = index.column() == ValueColumn ? nodeAt(index) : nullptr;
    m_isHovering = false;
    const auto ask = [&] {
        m_isHovering = node->IsFeature() && node->GetPrincipalInterfaceType() == GenApi::intfIBoolean
            && FeatureKinds::isWritable(node);
    };
    if (node)
        guardNode([&] { readFeature(itemAt(index), ask); });
    if (m_isHovering)
        m_hoverIndex = index;
    return m_isHovering;
}

bool FeatureEditDelegate::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Wheel:
        event->ignore();
        return true;
    case QEvent::FocusOut: // by whatever took the focus: the editor stays open
        return false;
    case QEvent::KeyPress:
        return handleKey(static_cast<QWidget *>(watched), *static_cast<QKeyEvent *>(event));
    default:
        return QStyledItemDelegate::eventFilter(watched, event);
    }
}

bool FeatureEditDelegate::handleKey(QWidget *editor, QKeyEvent &event)
{
    const EndEditHint hint = closingHint(event.key());
    const bool isTyped = qobject_cast<QLineEdit *>(editor) || NumberInput::of(editor);
    if (isTyped && hint != NoHint) {
        end(editor, hint);
        return true;
    }
    const QScopedValueRollback<bool> ending(m_isEnding, true); // Escape
    return QStyledItemDelegate::eventFilter(editor, &event);
}
