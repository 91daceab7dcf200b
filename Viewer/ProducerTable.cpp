// SPDX-License-Identifier: MIT
#include "Viewer/ProducerTable.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>

namespace {

/// Of a column but the last.
constexpr int MostLetters = 26;
constexpr int LettersBetween = 2;

Qt::CheckState boxOf(bool on)
{
    return on ? Qt::Checked : Qt::Unchecked;
}

} // namespace

ProducerTable::ProducerTable(QWidget *parent) : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("producerTable"));
    setAccessibleName(tr("Producers"));
    setHeaderLabels({tr("File"), tr("Vendor"), tr("Version"), tr("Transport"), tr("From"), tr("State")});
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    header()->setSectionsMovable(false);
    connect(this, &QTreeWidget::itemChanged, this, &ProducerTable::adoptBox);
    connect(this, &QTreeWidget::currentItemChanged, this, &ProducerTable::producerChanged);
}

void ProducerTable::setProducers(const QList<KnownProducer> &producers)
{
    const KnownProducer *const before = current();
    const QString file = before ? before->file.path : QString();
    {
        const QSignalBlocker quiet(this);
        m_producers = producers;
        while (topLevelItemCount() > producers.size())
            delete takeTopLevelItem(topLevelItemCount() - 1);
        while (topLevelItemCount() < producers.size())
            addTopLevelItem(new QTreeWidgetItem);
        int row = qMin(0, topLevelItemCount() - 1);
        for (int each = 0; each < producers.size(); ++each) {
            fill(topLevelItem(each), producers[each]);
            if (producers[each].file.path == file)
                row = each;
        }
        if (row >= 0)
            setCurrentItem(topLevelItem(row), FileColumn);
    }
    fitColumns();
    Q_EMIT producerChanged();
}

/// Nothing changes while the texts stay the same.
void ProducerTable::fitColumns()
{
    for (int column = 0; column < StateColumn; ++column) {
        const int letter = fontMetrics().averageCharWidth();
        resizeColumnToContents(column);
        setColumnWidth(column, qMin(columnWidth(column) + LettersBetween * letter, MostLetters * letter));
    }
}

void ProducerTable::fill(QTreeWidgetItem *item, const KnownProducer &producer)
{
    const ProducerReport report = producer.report.value_or(ProducerReport());
    item->setText(FileColumn, QFileInfo(producer.file.path).fileName());
    item->setText(VendorColumn, report.vendor);
    item->setText(VersionColumn, report.version);
    item->setText(TransportColumn, ProducerWords::transports(producer));
    item->setText(OriginColumn, ProducerWords::origin(producer.file.origin));
    item->setText(StateColumn, ProducerWords::state(producer));
    item->setCheckState(FileColumn, boxOf(producer.file.isOn));
    const bool isFixed = producer.file.origin == Producers::Origin::CommandLine;
    item->setFlags(isFixed ? item->flags() & ~Qt::ItemIsUserCheckable : item->flags() | Qt::ItemIsUserCheckable);
    for (int column = 0; column < columnCount(); ++column)
        item->setToolTip(column, item->text(column));
    item->setToolTip(FileColumn, QDir::toNativeSeparators(producer.file.path));
    if (isFixed)
        item->setToolTip(OriginColumn, tr("What the command line names is always used."));
    item->setToolTip(StateColumn, ProducerWords::details(producer));
}

const KnownProducer *ProducerTable::current() const
{
    const int row = indexOfTopLevelItem(currentItem());
    return row >= 0 && row < m_producers.size() ? &m_producers[row] : nullptr;
}

void ProducerTable::adoptBox(QTreeWidgetItem *item)
{
    const int row = indexOfTopLevelItem(item);
    const bool on = item->checkState(FileColumn) == Qt::Checked;
    if (row >= 0 && row < m_producers.size() && m_producers[row].file.isOn != on)
        Q_EMIT switched(m_producers[row].file.path, on);
}

void ProducerTable::keyPressEvent(QKeyEvent *event)
{
    QTreeWidgetItem *const item = currentItem();
    if (event->key() == Qt::Key_Space && item && item->flags().testFlag(Qt::ItemIsUserCheckable))
        item->setCheckState(FileColumn, boxOf(item->checkState(FileColumn) != Qt::Checked));
    else
        QTreeWidget::keyPressEvent(event);
}
