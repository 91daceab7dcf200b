// SPDX-License-Identifier: MIT
#include "Viewer/LogView.h"

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
#include "Viewer/LogModel.h"

LogView::LogView(QWidget *parent) : QTableView(parent), m_log(new LogModel(this))
{
    setObjectName(QStringLiteral("logView"));
    setModel(m_log);
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
    setColumnWidth(LogModel::TimeColumn, fontMetrics().horizontalAdvance(QStringLiteral("00:00:00.000 ")) + 24);
    setColumnWidth(LogModel::ModuleColumn, fontMetrics().horizontalAdvance(QLatin1Char('M')) * 14);
    addActions();
    keepNewestLineInView();
    retranslate();
}

void LogView::addActions()
{
    m_copy = new QAction(glyphIcon(Glyph::Copy), QString(), this);
    m_copy->setShortcut(QKeySequence::Copy);
    m_copy->setShortcutContext(Qt::WidgetShortcut);
    m_clear = new QAction(glyphIcon(Glyph::Clear), QString(), this);
    connect(m_copy, &QAction::triggered, this, &LogView::copySelection);
    connect(m_clear, &QAction::triggered, m_log, &LogModel::clear);
    QTableView::addActions({m_copy, m_clear});
}

void LogView::keepNewestLineInView()
{
    connect(m_log, &QAbstractItemModel::rowsAboutToBeInserted, this,
            [this] { m_atEnd = verticalScrollBar()->value() == verticalScrollBar()->maximum(); });
    connect(m_log, &QAbstractItemModel::rowsInserted, this, [this] {
        if (m_atEnd)
            scrollToBottom();
    });
}

void LogView::retranslate()
{
    m_copy->setText(tr("&Copy"));
    m_clear->setText(tr("C&lear Log"));
    setAccessibleName(tr("Log"));
    m_log->retranslate();
}

void LogView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QTableView::changeEvent(event);
}

void LogView::contextMenuEvent(QContextMenuEvent *event)
{
    m_copy->setEnabled(selectionModel()->hasSelection());
    m_clear->setEnabled(m_log->rowCount() > 0);
    QMenu::exec(actions(), event->globalPos(), nullptr, this);
    m_copy->setEnabled(true);
}

void LogView::copySelection()
{
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex &index : std::as_const(rows))
        lines << m_log->lineText(index.row());
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}
