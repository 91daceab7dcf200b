// SPDX-License-Identifier: MIT
#include "Viewer/LogView.h"

#include <QAction>
#include <QEvent>

#include "Viewer/GlyphIcons.h"
#include "Viewer/LogModel.h"

LogView::LogView(QWidget *parent)
    : RecordTable(parent), m_log(new LogModel(this)), m_clear(new QAction(glyphIcon(Glyph::Clear), QString(), this))
{
    setObjectName(QStringLiteral("logView"));
    setModel(m_log);
    fitColumn(LogModel::TimeColumn, QStringLiteral("00:00:00.000 "));
    fitColumn(LogModel::ModuleColumn, QString(14, QLatin1Char('M')));
    connect(m_clear, &QAction::triggered, m_log, &LogModel::clear);
    addAction(m_clear);
    retranslate();
}

void LogView::retranslate()
{
    m_clear->setText(tr("C&lear Log"));
    setAccessibleName(tr("Log"));
    m_log->retranslate();
}

void LogView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    RecordTable::changeEvent(event);
}

void LogView::contextMenuEvent(QContextMenuEvent *event)
{
    m_clear->setEnabled(m_log->rowCount() > 0);
    RecordTable::contextMenuEvent(event);
}
