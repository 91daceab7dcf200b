// SPDX-License-Identifier: MIT
#include "Viewer/SettingsTable.h"

#include <QCheckBox>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include <algorithm>

namespace {

constexpr int RowSpace = 8; ///< above and below the text together
constexpr int WidestColumn = 40; ///< in letters
constexpr int NarrowestColumn = 10;
constexpr QSize Dialog(110, 34); ///< in letters and lines
constexpr double MostOfWindow = 0.9;

} // namespace

SettingsTable::SettingsTable(QWidget *parent)
    : QWidget(parent), m_settings(new SettingsModel(this)), m_filter(new SettingsFilter(*m_settings, this)),
      m_search(new QLineEdit), m_only(new QCheckBox), m_view(new QTableView), m_count(new QLabel),
      m_tick(new QPushButton), m_untick(new QPushButton)
{
    buildView();
    layOut();
    m_search->setObjectName(QStringLiteral("settingsSearch"));
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    m_only->setObjectName(QStringLiteral("settingsOnly"));
    m_count->setObjectName(QStringLiteral("settingsCount"));
    m_tick->setAutoDefault(false);
    m_untick->setAutoDefault(false);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_filter->setSearch(text);
        showCount();
    });
    connect(m_only, &QCheckBox::toggled, this, &SettingsTable::showOnly);
    connect(m_settings, &SettingsModel::choiceChanged, this, &SettingsTable::showCount);
    connect(m_tick, &QPushButton::clicked, this, [this] { m_settings->choose(shownRows(), true); });
    connect(m_untick, &QPushButton::clicked, this, [this] { m_settings->choose(shownRows(), false); });
    retranslate();
}

void SettingsTable::buildView()
{
    m_view->setObjectName(QStringLiteral("settingsTable"));
    m_view->setModel(m_filter);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setAlternatingRowColors(true);
    m_view->setShowGrid(false);
    m_view->setWordWrap(false);
    m_view->setTabKeyNavigation(false);
    m_view->setSortingEnabled(true);
    m_view->sortByColumn(-1, Qt::AscendingOrder); // as the rows come
    m_view->installEventFilter(this);
    QHeaderView *const rows = m_view->verticalHeader();
    rows->hide();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setDefaultSectionSize(fontMetrics().height() + RowSpace);
    QHeaderView *const columns = m_view->horizontalHeader();
    columns->setStretchLastSection(true);
    columns->setHighlightSections(false);
    columns->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void SettingsTable::layOut()
{
    auto *find = new QHBoxLayout;
    find->addWidget(m_search, 1);
    find->addWidget(m_only);
    auto *choice = new QHBoxLayout;
    choice->addWidget(m_tick);
    choice->addWidget(m_untick);
    choice->addStretch();
    choice->addWidget(m_count);
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addLayout(find);
    all->addWidget(m_view, 1);
    all->addLayout(choice);
}

void SettingsTable::offerOnly(SettingsFilter::Only only, bool isOn)
{
    m_offered = only;
    m_only->setChecked(isOn);
    retranslate();
    showOnly();
}

void SettingsTable::showOnly()
{
    m_filter->setOnly(m_only->isChecked() ? m_offered : SettingsFilter::Only::All);
    showCount();
}

void SettingsTable::fitColumns()
{
    const int letter = fontMetrics().averageCharWidth();
    m_view->horizontalHeader()->setResizeContentsPrecision(0); // what is in view
    for (int column = 0; column < SettingsModel::ResultColumn; ++column) {
        m_view->resizeColumnToContents(column);
        const int fitting = m_view->columnWidth(column) + letter;
        m_view->setColumnWidth(column, qBound(NarrowestColumn * letter, fitting, WidestColumn * letter));
    }
}

void SettingsTable::setChoosable(bool choosable)
{
    m_settings->setChoosable(choosable);
    m_tick->setVisible(choosable);
    m_untick->setVisible(choosable);
}

QSize SettingsTable::dialogSize() const
{
    const QSize wanted(Dialog.width() * fontMetrics().averageCharWidth(),
                       Dialog.height() * fontMetrics().lineSpacing());
    const QWidget *const behind = window()->parentWidget();
    return behind ? wanted.boundedTo(behind->window()->size() * MostOfWindow) : wanted;
}

void SettingsTable::showCount()
{
    const int all = m_settings->rowCount();
    const int shown = m_filter->rowCount();
    m_count->setText(m_tick->isHidden()
                         ? tr("%1 of %2 shown").arg(shown).arg(all)
                         : tr("%1 of %2 shown, %3 ticked").arg(shown).arg(all).arg(m_settings->chosenCount()));
}

QList<int> SettingsTable::shownRows() const
{
    QList<int> rows;
    for (int row = 0; row < m_filter->rowCount(); ++row)
        rows << m_filter->mapToSource(m_filter->index(row, 0)).row();
    return rows;
}

QList<int> SettingsTable::markedRows() const
{
    QModelIndexList marked = m_view->selectionModel()->selectedRows();
    std::sort(marked.begin(), marked.end());
    QList<int> rows;
    for (const QModelIndex &index : std::as_const(marked))
        rows << m_filter->mapToSource(index).row();
    return rows;
}

void SettingsTable::tickMarked()
{
    const QList<int> rows = markedRows();
    if (!rows.isEmpty())
        m_settings->choose(rows, !m_settings->rows()[std::size_t(rows.first())].isChosen);
}

void SettingsTable::copyMarked() const
{
    QStringList lines;
    const QList<int> rows = markedRows();
    for (int row : rows)
        lines << m_settings->rowText(row);
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

bool SettingsTable::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    const bool isEnter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (watched == m_search && (isEnter || key->key() == Qt::Key_Down))
        m_view->setFocus(Qt::OtherFocusReason); // Enter ends the search and nothing else
    else if (watched == m_view && key->key() == Qt::Key_Space)
        tickMarked();
    else if (watched == m_view && key->matches(QKeySequence::Copy))
        copyMarked();
    else
        return QWidget::eventFilter(watched, event);
    return true;
}

void SettingsTable::retranslate()
{
    m_search->setPlaceholderText(tr("Search"));
    m_search->setAccessibleName(tr("Search"));
    m_view->setAccessibleName(tr("Settings"));
    m_only->setText(m_offered == SettingsFilter::Only::Failed ? tr("Only what did &not take")
                                                              : tr("Only what &differs"));
    m_tick->setText(tr("&Tick Shown"));
    m_untick->setText(tr("&Untick Shown"));
    showCount();
}

void SettingsTable::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}
