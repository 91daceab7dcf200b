// SPDX-License-Identifier: MIT
#include "Viewer/RecordTable.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>

#include <algorithm>

#include "Viewer/GlyphIcons.h"

RecordTable::RecordTable(QWidget *parent)
    : QTableView(parent), m_copy(new QAction(glyphIcon(Glyph::Copy), QString(), this))
{
    setSelectionBehavior(SelectRows);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setFrameShape(QFrame::NoFrame);
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_copy->setShortcut(QKeySequence::Copy);
    m_copy->setShortcutContext(Qt::WidgetShortcut);
    connect(m_copy, &QAction::triggered, this, &RecordTable::copySelection);
    addAction(m_copy);
    retranslate();
}

void RecordTable::setModel(QAbstractItemModel *model)
{
    QTableView::setModel(model);
    connect(model, &QAbstractItemModel::rowsAboutToBeInserted, this,
            [this] { m_atEnd = verticalScrollBar()->value() == verticalScrollBar()->maximum(); });
    connect(model, &QAbstractItemModel::rowsInserted, this, &RecordTable::keepNewestInView);
}

void RecordTable::keepNewestInView()
{
    if (m_atEnd && isVisible())
        scrollToBottom();
}

void RecordTable::showEvent(QShowEvent *event)
{
    QTableView::showEvent(event);
    keepNewestInView();
}

void RecordTable::fitColumn(int column, const QString &text)
{
    constexpr int Margin = 24;
    setColumnWidth(column, fontMetrics().horizontalAdvance(text) + Margin);
}

void RecordTable::retranslate()
{
    m_copy->setText(tr("&Copy"));
}

void RecordTable::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QTableView::changeEvent(event);
}

void RecordTable::contextMenuEvent(QContextMenuEvent *event)
{
    m_copy->setEnabled(selectionModel()->hasSelection());
    QMenu::exec(actions(), event->globalPos(), nullptr, this);
    m_copy->setEnabled(true);
}

void RecordTable::copySelection()
{
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex &row : std::as_const(rows)) {
        QStringList cells;
        for (int column = 0; column < model()->columnCount(); ++column)
            cells << row.sibling(row.row(), column).data().toString();
        lines << cells.join(QLatin1Char('\t'));
    }
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}
