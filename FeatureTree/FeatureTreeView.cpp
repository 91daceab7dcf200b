// SPDX-License-Identifier: MIT
#include "FeatureTree/FeatureTreeView.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QLoggingCategory>
#include <QPointer>
#include <QResizeEvent>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QThread>
#include <QTimer>

#include "FeatureTree/FeatureEditDelegate.h"
#include "FeatureTree/FeatureKinds.h"
#include "FeatureTree/ShownRows.h"
#include "FeatureTree/TreeItem.h"
#include "FeatureTree/TreeModel.h"
#include "FeatureTree/TreeReader.h"
#include "Features/NodeGuard.h"
#include "PanelBase/DeviceReading.h"
#include "PanelBase/HostCall.h"
#include "PanelBase/NodeWrites.h"

Q_LOGGING_CATEGORY(LOG_FeatureTreeView, "GeniCamera")

namespace {

constexpr const char *Module = "FeatureTreeView";

constexpr int NameColumn = 0;
constexpr int ValueColumn = 1;
constexpr int RefreshMs = 1000;
constexpr int CalmMs = 250;
constexpr unsigned long CommandPauseMs = 100;

TreeItem *itemAt(const QModelIndex &index)
{
    const auto *model = qobject_cast<const TreeModel *>(index.model());
    return model && index.isValid() ? model->getItem(index) : nullptr;
}

GenApi::INode *nodeAt(const QModelIndex &index)
{
    const TreeItem *item = itemAt(index);
    return item ? item->GetFeaturePtr() : nullptr;
}

/// Of an item with a feature. Passes on what the node throws.
bool isWritable(TreeItem *item)
{
    bool isWritable = false;
    const auto ask = [&] { isWritable = FeatureKinds::isWritable(item->GetFeaturePtr()); };
    DeviceReading *const reading = item->reading();
    reading ? reading->read(item->GetFeaturePtr(), ask) : ask();
    return isWritable;
}

void logFault(const char *message)
{
    logToHost(Module, message);
}

void logGenICam(const GenICam::GenericException &error)
{
    logFault(error.GetDescription());
}

} // namespace

FeatureTreeView::FeatureTreeView(QWidget *parent)
    : QTreeView(parent), m_refreshTimer(new QTimer(this)), m_passTimer(new QTimer(this)),
      m_delegate(new FeatureEditDelegate(this)), m_reader(std::make_unique<TreeReader>(*this, m_pass))
{
    setSelectionBehavior(SelectRows);
    setItemDelegateForColumn(ValueColumn, m_delegate);
    setItemDelegateForColumn(NameColumn, nullptr);
    setUniformRowHeights(true);

    connect(m_refreshTimer, &QTimer::timeout, this, [this] {
        if (!m_reader->isBehind()) // else the device is slower than the beat
            viewport()->update();
        dropUneditable();
    });
    m_refreshTimer->start(RefreshMs);
    m_passTimer->setSingleShot(true);
    connect(m_passTimer, &QTimer::timeout, this, &FeatureTreeView::updateAllVisibility);
    connect(m_delegate, &FeatureEditDelegate::CommandClicked, this, &FeatureTreeView::onCommandClicked);
    connect(this, &QTreeView::expanded, this, &FeatureTreeView::onExpanded);
    connect(this, &QTreeView::collapsed, this, &FeatureTreeView::leaveVanishedRow);

    header()->setSectionResizeMode(QHeaderView::Fixed);
    header()->setStretchLastSection(false);
    setEditTriggers(AllEditTriggers);
    setFocusPolicy(Qt::NoFocus);
}

FeatureTreeView::~FeatureTreeView()
{
    m_refreshTimer->stop();
}

void FeatureTreeView::setModel(QAbstractItemModel *newModel)
{
    for (const QMetaObject::Connection &connection : m_modelConnections)
        disconnect(connection);
    m_modelConnections.clear();
    QTreeView::setModel(newModel);
    m_reader->setModel(qobject_cast<TreeModel *>(newModel));
    if (!newModel)
        return;
    m_modelConnections = {
        connect(newModel, &QAbstractItemModel::dataChanged, this, &FeatureTreeView::onModelDataChanged),
        connect(newModel, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this] { m_reader->dropRows(); }),
        connect(newModel, &QAbstractItemModel::rowsRemoved, this, [this] { m_reader->adoptRows(); }),
        connect(newModel, &QAbstractItemModel::modelReset, this, [this] { m_reader->adoptRows(); }),
    };
}

void FeatureTreeView::SetFilter(const int &level, const QString &filter)
{
    m_visibilityLevel = level;
    m_filterText = filter;
    releasePasses();
}

void FeatureTreeView::releasePasses()
{
    m_isHeld = false;
    updateAllVisibility();
}

void FeatureTreeView::filterExpanded(int depth, int level, const QString &filter)
{
    m_expansion = Expanding;
    QTreeView::expandToDepth(depth);
    m_expansion = Idle;
    SetFilter(level, filter);
}

void FeatureTreeView::updateAllVisibility()
{
    m_passTimer->stop();
    if (model())
        updateViewItemVisiable(model()->index(0, 0));
}

void FeatureTreeView::adoptDeviceChange()
{
    m_passTimer->start(isVisible() ? 0 : CalmMs);
}

/// Paints what was read for it.
void FeatureTreeView::paintEvent(QPaintEvent *event)
{
    auto *tree = qobject_cast<TreeModel *>(model());
    if (!tree) {
        QTreeView::paintEvent(event);
        return;
    }
    m_reader->readRows(event->region());
    const QScopedValueRollback<bool> cells(tree->showsReadCells, true);
    QTreeView::paintEvent(event);
}

void FeatureTreeView::showEvent(QShowEvent *event)
{
    if (m_passTimer->isActive())
        updateAllVisibility();
    QTreeView::showEvent(event);
}

void FeatureTreeView::updateViewItemVisiable(const QModelIndex &parent)
{
    if (m_delegate->dataDisabled || m_isHeld || !itemAt(parent))
        return;
    m_pass.restart(m_visibilityLevel, m_filterText);
    ShownRows::apply(*this, parent.siblingAtColumn(NameColumn), m_pass);
    m_reader->adoptPass();
    leaveVanishedRow();
}

void FeatureTreeView::showSwitched()
{
    VisibilityPass known = m_pass;
    known.isKnownOnly = true;
    ShownRows::apply(*this, model()->index(0, NameColumn), known);
    leaveVanishedRow();
}

void FeatureTreeView::showSilence()
{
    viewport()->update();
}

void FeatureTreeView::onExpanded(const QModelIndex &index)
{
    if (m_expansion == Idle)
        updateViewItemVisiable(index);
    else
        m_expansion = Expanded;
}

/// What was being typed in a row that is hidden is dropped, since it cannot be written any more; in a folded category
/// it waits. The keyboard, also while another window is in front, goes on in the nearest row.
void FeatureTreeView::leaveVanishedRow()
{
    const QWidget *focus = window()->focusWidget();
    const bool hasKeyboard = focus && (focus == this || isAncestorOf(focus));
    const QModelIndex edited = m_delegate->editedIndex();
    const bool isFolded = ShownRows::nearest(*this, edited) != edited;
    if (ShownRows::isHidden(*this, edited) || (isFolded && m_delegate->mayEnd(m_delegate->editor())))
        m_delegate->dropEditor();
    const QModelIndex row = ShownRows::nearest(*this, currentIndex());
    if (!hasKeyboard || row == currentIndex())
        return;
    setCurrentIndex(row.siblingAtColumn(NameColumn));
    setFocus(Qt::OtherFocusReason);
}

void FeatureTreeView::expandAll()
{
    m_expansion = Expanding;
    QTreeView::expandAll();
    updateAfterExpanding();
}

void FeatureTreeView::expandToDepth(int depth)
{
    m_expansion = Expanding;
    QTreeView::expandToDepth(depth);
    updateAfterExpanding();
}

void FeatureTreeView::updateAfterExpanding()
{
    const bool hasOpened = m_expansion == Expanded;
    m_expansion = Idle;
    if (hasOpened)
        updateAllVisibility();
}

void FeatureTreeView::setViewDataDisable()
{
    m_delegate->dataDisabled = true;
    m_delegate->dropEditor();
}

void FeatureTreeView::onModelDataChanged(const QModelIndex &topLeft, const QModelIndex &, const QVector<int> &)
{
    if (nodeAt(topLeft))
        updateAllVisibility();
}

void FeatureTreeView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    if (!selected.isEmpty())
        Q_EMIT SigSelectItem(selected.indexes().constFirst());
}

/// A vertical scroll bar takes its room from the value column.
void FeatureTreeView::resizeEvent(QResizeEvent *event)
{
    const int half = width() / 2;
    setColumnWidth(NameColumn, half);
    setColumnWidth(ValueColumn, verticalScrollBar()->isVisible() ? viewport()->width() - half : half);
    QTreeView::resizeEvent(event);
}

void FeatureTreeView::changeEvent(QEvent *event)
{
    if (event->type() != QEvent::LanguageChange) {
        QTreeView::changeEvent(event);
        return;
    }
    QAbstractItemModel *titles = header()->model();
    if (!titles)
        return;
    titles->setHeaderData(NameColumn, Qt::Horizontal, QCoreApplication::translate("ParamterWidget", "Feature"),
                          Qt::EditRole);
    titles->setHeaderData(ValueColumn, Qt::Horizontal, QCoreApplication::translate("ParamterWidget", "Value"),
                          Qt::EditRole);
}

int FeatureTreeView::sizeHintForColumn(int column) const
{
    return QTreeView::sizeHintForColumn(column);
}

/// F2 on a name edits the value beside it.
bool FeatureTreeView::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    const QModelIndex value = index.siblingAtColumn(ValueColumn);
    if (trigger != EditKeyPressed || index.column() != NameColumn || !m_delegate->isEditable(value))
        return QTreeView::edit(index, trigger, event);
    setCurrentIndex(value); // opens the editor
    return true;
}

/// Tab and Backtab in an editor go from one editable value to the next. All else walks over the names: a value that
/// becomes current opens its editor, and the next key would change it.
QModelIndex FeatureTreeView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (action != MoveNext && action != MovePrevious)
        return QTreeView::moveCursor(action, modifiers).siblingAtColumn(NameColumn);
    QModelIndex index = currentIndex().siblingAtColumn(NameColumn);
    do {
        index = action == MoveNext ? indexBelow(index) : indexAbove(index);
    } while (index.isValid() && !m_delegate->isEditable(index.siblingAtColumn(ValueColumn)));
    return index.siblingAtColumn(ValueColumn);
}

/// Hands the focus on to the open editor.
void FeatureTreeView::focusInEvent(QFocusEvent *event)
{
    leaveVanishedRow();
    QTreeView::focusInEvent(event);
    const QModelIndex edited = m_delegate->editedIndex();
    if (state() == EditingState && m_delegate->editor() && ShownRows::nearest(*this, edited) == edited)
        m_delegate->editor()->setFocus();
}

/// Qt commits an editor also when the current index moves; that must not write what is still being typed.
void FeatureTreeView::commitData(QWidget *editor)
{
    if (m_delegate->mayEnd(editor))
        QTreeView::commitData(editor);
}

void FeatureTreeView::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    if (!m_delegate->mayEnd(editor))
        return;
    const bool hadFocus = editor && editor == window()->focusWidget();
    QTreeView::closeEditor(editor, hint);
    if (hadFocus && state() != EditingState)
        setFocus(Qt::OtherFocusReason);
}

/// A feature that is being edited may be locked by the device meanwhile.
void FeatureTreeView::dropUneditable()
{
    const QModelIndex index = m_delegate->editedIndex();
    if (state() != EditingState || !isVisible() || !m_delegate->editor() || !itemAt(index))
        return;
    if (m_reader->readAhead(index) && !itemAt(index)->cell().isEditable)
        m_delegate->dropEditor();
}

void FeatureTreeView::onCommandClicked()
{
    static bool commandBusy = false;
    if (commandBusy || m_delegate->dataDisabled)
        return;
    const QPointer<FeatureTreeView> self(this);
    GenApi::INode *node = nodeAt(currentIndex());
    guardNode(
        [&] {
            TreeItem *const item = itemAt(currentIndex());
            if (!GenApi::CCommandPtr(node).IsValid() || !isWritable(item))
                return;
            DeviceReading *const reading = item->reading();
            const QString name = FeatureKinds::nodeName(node);
            if (name == QLatin1String("TriggerSoftware")) {
                NodeWrites::execute(reading, node);
                return;
            }
            const QScopedValueRollback<bool> busy(commandBusy, true);
            runCommand(name, node, reading);
        },
        logGenICam, logFault);
    if (self)
        adoptDeviceChange();
}

/// A reset goes through the host, which loses the device by it. The host and whoever hears of a command may close the
/// device or delete the view before they return.
void FeatureTreeView::runCommand(const QString &name, GenApi::INode *node, DeviceReading *reading)
{
    const QPointer<FeatureEditDelegate> silenced(m_delegate);
    const bool wasSilent = m_delegate->blockSignals(true);
    const auto unblock = qScopeGuard([&] {
        if (silenced)
            silenced->blockSignals(wasSilent);
    });
    if (name == QLatin1String("DeviceReset")) {
        callHost<HostCore::SetCameraNodeValue>(Module, deviceName.toStdString(), "DeviceReset", "");
        if (silenced)
            Q_EMIT commandExecute(name);
        return;
    }
    Q_EMIT commandExecute(name);
    if (!silenced || silenced->dataDisabled)
        return;
    NodeWrites::execute(reading, node);
    QThread::msleep(CommandPauseMs);
}
