// SPDX-License-Identifier: MIT
#include "Viewer/LoadDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <utility>

#include "Host/HostContext.h"
#include "Tools/BytesText.h"
#include "Viewer/DeviceSettings.h"
#include "Viewer/SettingsTable.h"

namespace {

constexpr int ProblemLines = 4;

SettingsModel::Row tableRow(const SettingsLoad::Row &row)
{
    SettingsModel::Row shown;
    shown.feature = row.feature;
    shown.position = row.position;
    shown.left = {row.now == SettingsLoad::Now::Unknown ? row.unreadable : row.present,
                  row.now == SettingsLoad::Now::Unknown};
    shown.right.text = row.wanted;
    shown.isChosen = row.isChosen;
    shown.isDifferent = row.now != SettingsLoad::Now::Same;
    return shown;
}

} // namespace

LoadDialog::LoadDialog(HostContext &context, DeviceSettings &settings, const Subject &subject, SettingsLoad load,
                       QWidget *parent)
    : QDialog(parent), m_context(context), m_settings(settings), m_subject(subject), m_load(std::move(load)),
      m_table(new SettingsTable), m_state(new QLabel), m_acquiresAgain(new QCheckBox)
{
    setObjectName(QStringLiteral("loadDialog"));
    setWindowModality(Qt::WindowModal);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowTitle(tr("Load Settings"));
    layOut();
    m_acquiresAgain->setObjectName(QStringLiteral("acquiresAgain"));
    m_acquiresAgain->setText(tr("Acquisition is stopped for the load: start it &again after it"));
    m_acquiresAgain->setChecked(m_settings.isAcquiringAgain());
    connect(m_acquiresAgain, &QCheckBox::toggled, &m_settings, &DeviceSettings::setAcquiringAgain);
    connect(&m_table->settings(), &SettingsModel::choiceChanged, this, &LoadDialog::showState);
    connect(&m_context.sessions(), &DeviceSessions::stateChanged, this, &LoadDialog::showState);
    showPlan();
    resize(m_table->dialogSize());
    m_table->view().setFocus();
}

void LoadDialog::layOut()
{
    auto *title = new QLabel(
        tr("%1, to be loaded into %2").arg(QFileInfo(m_subject.file).fileName(), m_settings.nameOf(m_subject.device)));
    title->setTextFormat(Qt::PlainText);
    m_state->setObjectName(QStringLiteral("loadState"));
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    auto *buttons = new QDialogButtonBox;
    m_apply = buttons->addButton(tr("&Load"), QDialogButtonBox::AcceptRole);
    m_close = buttons->addButton(tr("&Cancel"), QDialogButtonBox::RejectRole);
    m_apply->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &LoadDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &LoadDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(title);
    if (QWidget *problems = problemList())
        layout->addWidget(problems);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_state);
    layout->addWidget(m_acquiresAgain);
    layout->addWidget(buttons);
}

/// Null when the file has none.
QWidget *LoadDialog::problemList() const
{
    QStringList lines;
    for (const Persistence::Problem &problem : m_load.file().problems)
        lines << textOfBytes(problem.text);
    if (lines.isEmpty())
        return nullptr;
    auto *list = new QPlainTextEdit(lines.join(QLatin1Char('\n')));
    list->setObjectName(QStringLiteral("fileProblems"));
    list->setReadOnly(true);
    list->setTabChangesFocus(true);
    list->setAccessibleName(tr("Problems of the file"));
    const int shown = qMin(lines.size(), ProblemLines) + 1;
    list->setFixedHeight(shown * fontMetrics().lineSpacing() + 2 * list->frameWidth());
    return list;
}

void LoadDialog::showPlan()
{
    std::vector<SettingsModel::Row> rows;
    for (const SettingsLoad::Row &row : m_load.rows())
        rows.push_back(tableRow(row));
    m_table->settings().setTitles(tr("In the device"), tr("In the file"));
    m_table->view().hideColumn(SettingsModel::ResultColumn);
    m_table->settings().setRows(std::move(rows));
    m_table->offerOnly(SettingsFilter::Only::Different, true);
    m_table->fitColumns();
}

void LoadDialog::showState()
{
    const Device *const device = m_context.devices().device(m_subject.device);
    const bool isOpen = m_settings.isOpen(m_subject.device);
    m_acquiresAgain->setVisible(!m_isDone && isOpen && device->isAcquiring());
    if (m_isDone || m_isRunning)
        return;
    int due = 0;
    for (const SettingsModel::Row &row : m_table->settings().rows())
        due += row.isChosen && row.isDifferent;
    m_apply->setEnabled(isOpen && due > 0);
    m_state->setText(!isOpen       ? tr("%1 is not open.").arg(m_settings.nameOf(m_subject.device))
                         : due > 0 ? tr("Settings to be written: %1").arg(due)
                                   : tr("Nothing is to be written."));
}

void LoadDialog::accept()
{
    if (m_isRunning || m_isDone || !m_apply->isEnabled())
        return;
    const std::vector<SettingsModel::Row> &rows = m_table->settings().rows();
    for (std::size_t row = 0; row < rows.size(); ++row)
        m_load.choose(row, rows[row].isChosen);
    m_isRunning = true;
    m_apply->setEnabled(false);
    const SettingsLoad::End end = m_settings.apply(m_load, m_subject.device, this);
    m_isRunning = false;
    m_isDone = true;
    showResults(end);
}

void LoadDialog::reject()
{
    if (!m_isRunning)
        QDialog::reject();
}

void LoadDialog::showResults(SettingsLoad::End end)
{
    std::vector<SettingsModel::Row> rows;
    bool hasFailures = false;
    for (const SettingsLoad::Row &row : m_load.rows()) {
        SettingsModel::Row shown = tableRow(row);
        const bool isTried = row.outcome.result != Persistence::Result::NotTried;
        shown.isDifferent = row.isToBeWritten();
        shown.isFailed = !row.outcome.isDone() && (isTried || row.isToBeWritten());
        shown.result = shown.isFailed ? wordsOf(row.outcome) : row.isWritten ? tr("written") : QString();
        hasFailures |= shown.isFailed;
        rows.push_back(std::move(shown));
    }
    m_table->setChoosable(false);
    m_table->settings().setRows(std::move(rows));
    m_table->view().showColumn(SettingsModel::ResultColumn);
    const bool isFailureTheNews = hasFailures && end == SettingsLoad::End::Complete; // else also what was written
    m_table->offerOnly(isFailureTheNews ? SettingsFilter::Only::Failed : SettingsFilter::Only::Different, true);
    m_table->fitColumns();
    m_state->setText(sentence(end));
    m_acquiresAgain->hide();
    m_apply->hide();
    m_close->setText(tr("&Close"));
    m_close->setDefault(true);
    m_close->setFocus();
}

QString LoadDialog::sentence(SettingsLoad::End end) const
{
    const QString counts = tr("Written: %1. Did not take: %2. Not tried: %3.")
                               .arg(m_load.written().size())
                               .arg(m_load.refused().size())
                               .arg(m_load.notTried().size());
    if (end == SettingsLoad::End::Lost)
        return tr("The device was closed or does not answer any more. %1").arg(counts);
    return end == SettingsLoad::End::Cancelled ? tr("Cancelled. %1").arg(counts) : counts;
}
