// SPDX-License-Identifier: MIT
#include "Viewer/DeviceTree.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include "Devices/Device.h"
#include "Host/HostContext.h"
#include "Viewer/GlyphIcons.h"

namespace {

constexpr int IdRole = Qt::UserRole;

struct GroupSpec
{
    Device::Transport transport; ///< of the cameras in the group
    const char *title;
};

constexpr GroupSpec Groups[] = {
    {Device::Transport::Simulated, QT_TRANSLATE_NOOP("DeviceTree", "Simulated Cameras")},
    {Device::Transport::GigEVision, QT_TRANSLATE_NOOP("DeviceTree", "GigE Vision Cameras")},
    {Device::Transport::Usb3Vision, QT_TRANSLATE_NOOP("DeviceTree", "USB3 Vision Cameras")},
    {Device::Transport::Fake, QT_TRANSLATE_NOOP("DeviceTree", "Test Cameras")},
    {Device::Transport::DescriptionFile, QT_TRANSLATE_NOOP("DeviceTree", "Description Files")},
    {Device::Transport::Other, QT_TRANSLATE_NOOP("DeviceTree", "Other Cameras")},
    {Device::Transport::Other, QT_TRANSLATE_NOOP("DeviceTree", "Cards")},
};
constexpr int CardGroup = int(std::size(Groups)) - 1;
constexpr int OtherGroup = CardGroup - 1;

struct StateSpec
{
    DeviceTree::State state;
    const char *text;
    QRgb mark; ///< of the icon; 0: none
};

constexpr StateSpec States[] = {
    {DeviceTree::State::Closed, QT_TRANSLATE_NOOP("DeviceTree", "Closed"), 0},
    {DeviceTree::State::Opening, QT_TRANSLATE_NOOP("DeviceTree", "Opening..."), 0},
    {DeviceTree::State::Open, QT_TRANSLATE_NOOP("DeviceTree", "Open"), 0xff5dbd93},
    {DeviceTree::State::Acquiring, QT_TRANSLATE_NOOP("DeviceTree", "Acquiring"), 0xff2f7fd1},
    {DeviceTree::State::Lost, QT_TRANSLATE_NOOP("DeviceTree", "Lost"), 0xffc8453b},
};

/// Shows the text colours of rows on the current row, too.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const QVariant colour = index.data(Qt::ForegroundRole);
        if (colour.isValid())
            option->palette.setBrush(QPalette::HighlightedText, colour.value<QBrush>());
    }
};

int groupOf(const Device &device)
{
    if (device.kind() == Device::Kind::Card)
        return CardGroup;
    for (int group = 0; group < OtherGroup; ++group) {
        if (device.transport() == Groups[group].transport)
            return group;
    }
    return OtherGroup;
}

} // namespace

DeviceTree::DeviceTree(HostContext &context, QWidget *parent) : QTreeWidget(parent), m_context(context)
{
    setObjectName(QStringLiteral("deviceTree"));
    setColumnCount(2);
    setRootIsDecorated(false);
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
    setFrameShape(NoFrame);
    setIconSize({20, 20});
    setIndentation(12);
    setItemDelegate(new RowDelegate(this));
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    connect(&m_context.devices(), &KnownDevices::listChanged, this, &DeviceTree::rebuild);
    connect(&m_context.sessions(), &DeviceSessions::stateChanged, this, &DeviceTree::adoptState);
    connect(&m_context.sessions().openings(), &Openings::progressed, this, &DeviceTree::updateItem);
    connect(&m_context.deviceReturn(), &DeviceReturn::changed, this, &DeviceTree::adoptState);
    connect(&m_context.silentDevices(), &SilentDevices::changed, this, &DeviceTree::updateItem);
    connect(this, &QTreeWidget::currentItemChanged, this, &DeviceTree::announceCurrent);
    retranslate();
    rebuild();
}

DeviceTree::State DeviceTree::state(const QString &id) const
{
    const Device *device = m_context.devices().device(id);
    if (m_context.devices().isOpening(id))
        return State::Opening;
    if (m_context.deviceReturn().isLost(id))
        return State::Lost;
    if (!device || !m_context.devices().isReady(id))
        return State::Closed;
    return device->isAcquiring() ? State::Acquiring : State::Open;
}

Device *DeviceTree::currentDevice() const
{
    const QTreeWidgetItem *item = currentItem();
    return item ? m_context.devices().device(item->data(0, IdRole).toString()) : nullptr;
}

bool DeviceTree::select(const QString &id)
{
    QTreeWidgetItem *item = itemOf(id);
    if (item)
        setCurrentItem(item);
    return item != nullptr;
}

QTreeWidgetItem *DeviceTree::itemOf(const QString &id) const
{
    return m_items.value(id);
}

void DeviceTree::announceCurrent()
{
    const Device *device = currentDevice();
    m_context.focus().set(device ? device->id() : QString());
}

void DeviceTree::rebuild()
{
    const QString focus = m_context.focus().id();
    {
        const QSignalBlocker quiet(this);
        clear();
        m_items.clear();
        m_groups.clear();
        const QList<Device *> devices = m_context.devices().all();
        for (Device *device : devices)
            addRow(device);
        expandAll();
        if (!select(focus))
            select(otherWayTo(focus));
    }
    if (!focus.isEmpty() && (!currentItem() || currentDevice()->id() != focus))
        announceCurrent();
}

/// The device that a camera is listed as now; empty when there is none.
QString DeviceTree::otherWayTo(const QString &id) const
{
    const QStringList ids = m_items.keys();
    for (const QString &other : ids) {
        const FoundDevice *const found = m_context.devices().finding(other);
        if (found && found->isReachedBy(id))
            return other;
    }
    return {};
}

void DeviceTree::addRow(Device *device)
{
    auto *item = new QTreeWidgetItem(groupItem(groupOf(*device)));
    item->setText(0, device->displayName());
    item->setData(0, IdRole, device->id());
    m_items.insert(device->id(), item);
    updateItem(device->id());
}

int DeviceTree::rowOfGroup(int group) const
{
    int row = 0;
    for (int other = 0; other < group; ++other)
        row += m_groups.value(other) ? 1 : 0;
    return row;
}

QTreeWidgetItem *DeviceTree::groupItem(int group)
{
    QTreeWidgetItem *&item = m_groups[group];
    if (!item) {
        item = new QTreeWidgetItem({tr(Groups[group].title)});
        QFont font = item->font(0);
        font.setBold(true);
        item->setFont(0, font);
        insertTopLevelItem(rowOfGroup(group), item);
        item->setFirstColumnSpanned(true);
    }
    return item;
}

void DeviceTree::adoptState(const QString &id)
{
    updateItem(id);
    Q_EMIT stateChanged(id);
}

void DeviceTree::updateItem(const QString &id)
{
    QTreeWidgetItem *item = itemOf(id);
    const Device *device = m_context.devices().device(id);
    if (!item || !device)
        return;
    const StateSpec &spec = States[int(state(id))];
    const bool isSilent = m_context.silentDevices().contains(id);
    const bool isAway = isSilent || spec.state == State::Lost;
    const Glyph glyph = device->kind() == Device::Kind::Card ? Glyph::Card : Glyph::Camera;
    item->setIcon(0, glyphIcon(glyph, spec.mark && !isSilent ? QColor::fromRgb(spec.mark) : QColor()));
    item->setText(1, isSilent ? tr("Not answering") : stateText(id));
    for (int column = 0; column < columnCount(); ++column) {
        const QBrush gray = palette().brush(QPalette::Disabled, QPalette::Text);
        item->setData(column, Qt::ForegroundRole, isAway ? QVariant(gray) : QVariant());
        item->setToolTip(column, toolTipOf(*device));
    }
}

QString DeviceTree::stateText(const QString &id) const
{
    const State shown = state(id);
    const Openings &openings = m_context.sessions().openings();
    if (shown == State::Opening && openings.isCancelled(id))
        return tr("Cancelling...");
    if (shown == State::Opening && openings.percent(id) > 0)
        return tr("Opening... %1 %").arg(openings.percent(id));
    return tr(States[int(shown)].text);
}

QString DeviceTree::toolTipOf(const Device &device) const
{
    QStringList lines{device.displayName(), device.id()};
    const FoundDevice *const found = m_context.devices().finding(device.id());
    if (found && !found->route.isEmpty())
        lines << tr("Reached through %1").arg(found->route);
    if (found && found->routes.size() > 1)
        lines << tr("Found in several ways: another one can be chosen in the menu.");
    const QString error = m_context.devices().openingError(device.id());
    if (m_context.deviceReturn().isLost(device.id()) && m_context.deviceReturn().isEnabled())
        lines << tr("It is opened again as soon as it is there.");
    if (!error.isEmpty() && !m_context.devices().isReady(device.id()))
        lines << tr("The last try to open it failed: %1").arg(error);
    return lines.join(QLatin1Char('\n'));
}

void DeviceTree::retranslate()
{
    setHeaderLabels({tr("Device"), tr("State")});
    setAccessibleName(tr("Devices"));
    for (auto group = m_groups.cbegin(); group != m_groups.cend(); ++group)
        group.value()->setText(0, tr(Groups[group.key()].title));
    const QStringList ids = m_items.keys();
    for (const QString &id : ids)
        updateItem(id);
}

void DeviceTree::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QTreeWidget::changeEvent(event);
}

void DeviceTree::keyPressEvent(QKeyEvent *event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentDevice())
        Q_EMIT stepRequested();
    else if (event->key() == Qt::Key_Escape && currentDevice() && state(currentDevice()->id()) == State::Opening)
        m_context.sessions().close(currentDevice()->id());
    else
        QTreeWidget::keyPressEvent(event);
}

void DeviceTree::mouseDoubleClickEvent(QMouseEvent *event)
{
    QTreeWidget::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && itemAt(event->pos()) && currentDevice())
        Q_EMIT stepRequested();
}
