// SPDX-License-Identifier: MIT
#include "Viewer/WriteLogDock.h"

#include <QAction>
#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QSortFilterProxyModel>

#include "Tools/SettingsFile.h"
#include "Tools/WriteLog.h"
#include "Viewer/RecordTable.h"
#include "Viewer/WriteLogModel.h"

namespace {

/// The rows that contain a text.
class FoundRows : public QSortFilterProxyModel
{
public:
    FoundRows(WriteLogModel *model, QObject *parent) : QSortFilterProxyModel(parent), m_model(*model)
    {
        setSourceModel(model);
    }

    void search(const QString &text)
    {
        m_text = text.trimmed();
        invalidateFilter();
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex &) const override
    {
        return m_text.isEmpty() || m_model.contains(row, m_text);
    }

private:
    const WriteLogModel &m_model;
    QString m_text;
};

} // namespace

WriteLogDock::WriteLogDock(WriteLog &log, QWidget *parent)
    : QDockWidget(parent), m_log(log), m_model(new WriteLogModel(log, this)), m_table(new RecordTable),
      m_search(new QLineEdit), m_saveText(new QPushButton), m_saveScript(new QPushButton), m_clear(new QPushButton)
{
    setObjectName(QStringLiteral("writeLogDock"));
    m_table->setObjectName(QStringLiteral("writeLogView"));
    auto *const found = new FoundRows(m_model, this);
    m_table->setModel(found);
    m_table->fitColumn(WriteLogModel::TimeColumn, QStringLiteral("00:00:00.000 "));
    m_table->fitColumn(WriteLogModel::DeviceColumn, QString(10, QLatin1Char('M')));
    m_table->fitColumn(WriteLogModel::FeatureColumn, QString(21, QLatin1Char('M')));
    m_table->fitColumn(WriteLogModel::ValueColumn, QString(9, QLatin1Char('M')));
    auto *const content = new QWidget;
    auto *const layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(makeBar());
    layout->addWidget(m_table);
    setWidget(content);
    connect(m_search, &QLineEdit::textChanged, this, [found](const QString &text) { found->search(text); });
    connect(m_saveText, &QPushButton::clicked, this, &WriteLogDock::askForText);
    connect(m_saveScript, &QPushButton::clicked, this, &WriteLogDock::askForScript);
    connect(m_clear, &QPushButton::clicked, &log, &WriteLog::clear);
    connect(&log, &WriteLog::appended, this, &WriteLogDock::updateButtons);
    connect(&log, &WriteLog::cleared, this, &WriteLogDock::updateButtons);
    connect(toggleViewAction(), &QAction::triggered, this, &WriteLogDock::bringForward);
    addShortcuts();
    updateButtons();
    retranslate();
}

/// It may share its place with another dock, which may be too low for some rows.
void WriteLogDock::bringForward(bool isShown)
{
    if (!isShown)
        return;
    raise();
    const auto makeRoom = [this] {
        constexpr int LinesWanted = 11; // with title, search and tabs
        auto *const window = qobject_cast<QMainWindow *>(parentWidget());
        const int wanted = LinesWanted * fontMetrics().height();
        if (window && !isFloating() && height() < wanted)
            window->resizeDocks({this}, {wanted}, Qt::Vertical);
    };
    QMetaObject::invokeMethod(this, makeRoom, Qt::QueuedConnection); // it has its height by then
}

QHBoxLayout *WriteLogDock::makeBar()
{
    auto *const bar = new QHBoxLayout;
    bar->setContentsMargins(6, 4, 6, 4);
    m_search->setObjectName(QStringLiteral("writeLogSearch"));
    m_search->setClearButtonEnabled(true);
    bar->addWidget(m_search);
    const std::pair<QPushButton *, const char *> buttons[] = {
        {m_saveText, "writeLogSaveText"}, {m_saveScript, "writeLogSaveScript"}, {m_clear, "writeLogClear"}};
    for (const auto &[button, name] : buttons) {
        button->setObjectName(QLatin1String(name));
        bar->addWidget(button);
    }
    return bar;
}

void WriteLogDock::addShortcuts()
{
    auto *const find = new QShortcut(QKeySequence::Find, this);
    find->setContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QShortcut::activated, m_search, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });
}

bool WriteLogDock::saveText(const QString &path, QString *error) const
{
    return SettingsFile::writeBytes(path, m_log.text().toUtf8(), error);
}

bool WriteLogDock::saveScript(const QString &path, QString *error) const
{
    if (!SettingsFile::writeBytes(path, m_log.script(), error))
        return false;
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner | QFile::ExeUser);
    return true;
}

void WriteLogDock::askForText()
{
    ask(tr("Save Write Log as Text"), QStringLiteral("writes.txt"), tr("Text files (*.txt);;All files (*)"),
        &WriteLogDock::saveText);
}

void WriteLogDock::askForScript()
{
    ask(tr("Save Write Log as Script"), QStringLiteral("writes.sh"), tr("Shell scripts (*.sh);;All files (*)"),
        &WriteLogDock::saveScript);
}

void WriteLogDock::ask(const QString &title, const QString &name, const QString &filter,
                       bool (WriteLogDock::*save)(const QString &, QString *) const)
{
    const QString path = QFileDialog::getSaveFileName(this, title, name, filter);
    QString error;
    if (!path.isEmpty() && !(this->*save)(path, &error))
        QMessageBox::warning(this, title, error);
}

void WriteLogDock::updateButtons()
{
    for (QPushButton *button : {m_saveText, m_saveScript, m_clear})
        button->setEnabled(!m_log.entries().empty());
}

void WriteLogDock::retranslate()
{
    setWindowTitle(tr("Write Log"));
    m_table->setAccessibleName(tr("Write Log"));
    m_search->setPlaceholderText(tr("Search"));
    m_search->setAccessibleName(tr("Search the write log"));
    m_saveText->setText(tr("Save as &Text..."));
    m_saveText->setToolTip(tr("Save a line for each write"));
    m_saveScript->setText(tr("Save as S&cript..."));
    m_saveScript->setToolTip(tr("Save a shell script that does the writes again"));
    m_clear->setText(tr("Clea&r"));
    m_clear->setToolTip(tr("Forget all writes"));
    m_model->retranslate();
}

void WriteLogDock::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QDockWidget::changeEvent(event);
}
