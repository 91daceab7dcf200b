// SPDX-License-Identifier: MIT
#include "Viewer/CompareDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

#include "Viewer/DeviceSettings.h"
#include "Viewer/SettingsTable.h"

namespace {

SettingsModel::Cell cell(const QString &text, bool isThere)
{
    return isThere ? SettingsModel::Cell{text, false} : SettingsModel::Cell{CompareDialog::tr("not there"), true};
}

SettingsModel::Row tableRow(const SettingsDiff::Row &row)
{
    SettingsModel::Row shown;
    shown.feature = row.feature;
    shown.position = row.position;
    shown.left = cell(row.left, row.leftEntry);
    shown.right = cell(row.right, row.rightEntry);
    shown.isDifferent = row.state != SettingsDiff::State::Equal;
    return shown;
}

bool isSameModel(const Persistence::DeviceInfo &one, const Persistence::DeviceInfo &other)
{
    return one.vendor == other.vendor && one.model == other.model;
}

QPushButton *commandButton(const char *name)
{
    auto *button = new QPushButton;
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

} // namespace

CompareDialog::CompareDialog(DeviceSettings &settings, QWidget *parent)
    : QDialog(parent), m_settings(settings), m_left(new SettingsSource(settings)),
      m_right(new SettingsSource(settings)), m_table(new SettingsTable), m_state(new QLabel),
      m_toRight(commandButton("copyToRight")), m_toLeft(commandButton("copyToLeft")),
      m_toAll(commandButton("copyToAll")), m_diff(m_left->settings(), m_right->settings())
{
    setObjectName(QStringLiteral("compareDialog"));
    setWindowModality(Qt::WindowModal);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowTitle(tr("Compare Settings"));
    m_toRight->setText(tr("Copy to the &Right"));
    m_toLeft->setText(tr("Copy to the &Left"));
    m_toAll->setText(tr("Copy from the Left to &All of the Model"));
    m_state->setObjectName(QStringLiteral("compareState"));
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    layOut();
    connectParts();
    m_table->offerOnly(SettingsFilter::Only::Different, true);
    m_table->view().hideColumn(SettingsModel::ResultColumn);
    showNothingCopied();
    resize(m_table->dialogSize());
}

void CompareDialog::layOut()
{
    auto *left = new QLabel(tr("L&eft:"));
    auto *right = new QLabel(tr("R&ight:"));
    left->setBuddy(m_left);
    right->setBuddy(m_right);
    m_left->box().setAccessibleName(tr("Left"));
    m_right->box().setAccessibleName(tr("Right"));
    auto *places = new QHBoxLayout;
    places->addWidget(left);
    places->addWidget(m_left, 1);
    places->addSpacing(2 * fontMetrics().averageCharWidth());
    places->addWidget(right);
    places->addWidget(m_right, 1);
    auto *commands = new QHBoxLayout;
    commands->addWidget(m_toRight);
    commands->addWidget(m_toLeft);
    commands->addWidget(m_toAll);
    commands->addStretch();
    auto *buttons = new QDialogButtonBox;
    buttons->addButton(tr("&Close"), QDialogButtonBox::RejectRole)->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::rejected, this, &CompareDialog::reject);
    commands->addWidget(buttons);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(places);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_state);
    layout->addLayout(commands);
}

void CompareDialog::connectParts()
{
    for (const SettingsSource *side : {m_left, m_right}) {
        connect(side, &SettingsSource::changed, this, &CompareDialog::showNothingCopied);
        connect(side, &SettingsSource::failed, this, &CompareDialog::warn);
    }
    connect(&m_table->settings(), &SettingsModel::choiceChanged, this, &CompareDialog::showCommands);
    connect(m_toRight, &QPushButton::clicked, this, [this] { copy(*m_left, *m_right); });
    connect(m_toLeft, &QPushButton::clicked, this, [this] { copy(*m_right, *m_left); });
    connect(m_toAll, &QPushButton::clicked, this, &CompareDialog::copyToAll);
}

/// What did not take stays ticked, with the reasons.
void CompareDialog::showDifferences(const SettingsCopy &copied)
{
    m_diff = SettingsDiff(m_left->settings(), m_right->settings());
    std::vector<SettingsModel::Row> rows;
    for (const SettingsDiff::Row &row : m_diff.rows()) {
        SettingsModel::Row shown = tableRow(row);
        const auto result = copied.results().find((row.leftEntry ? row.leftEntry : row.rightEntry)->place());
        if (result != copied.results().end()) {
            shown.isFailed = !result->second.failures.isEmpty();
            shown.isChosen = shown.isFailed;
            shown.result = shown.isFailed ? result->second.failures.join(QLatin1String("; ")) : tr("copied");
        }
        rows.push_back(std::move(shown));
    }
    const bool isComplete = !m_left->place().isNone() && !m_right->place().isNone();
    m_table->settings().setTitles(m_left->place().isNone() ? tr("Left") : m_left->name(),
                                  m_right->place().isNone() ? tr("Right") : m_right->name());
    m_table->settings().setRows(std::move(rows));
    m_table->view().setColumnHidden(SettingsModel::ResultColumn, copied.results().empty());
    m_table->fitColumns();
    const auto different = int(m_diff.rows().size() - m_diff.count(SettingsDiff::State::Equal));
    QStringList sentences{!isComplete         ? tr("Choose what is to be compared.")
                              : different > 0 ? tr("Settings that differ: %1").arg(different)
                                              : tr("No differences.")};
    for (const SettingsSource *side : {m_left, m_right}) {
        if (const std::size_t errors = errorsIn(side->settings()))
            sentences << tr("Left out of %1: %2 (see the log).").arg(side->name()).arg(errors);
    }
    m_state->setText(sentences.join(QLatin1Char('\n')));
}

void CompareDialog::showCommands()
{
    const bool isTicked = m_table->settings().chosenCount() > 0;
    const bool isComplete = !m_left->place().isNone() && !m_right->place().isNone();
    m_toRight->setEnabled(isTicked && isComplete && !tickedOf(*m_left).empty());
    m_toLeft->setEnabled(isTicked && isComplete && !tickedOf(*m_right).empty());
    m_toAll->setEnabled(m_toRight->isEnabled() && !devicesOfModel().isEmpty());
}

std::vector<Persistence::Entry> CompareDialog::tickedOf(const SettingsSource &side) const
{
    const std::vector<SettingsModel::Row> &rows = m_table->settings().rows();
    std::vector<Persistence::Entry> entries;
    for (std::size_t rank = 0; rank < rows.size() && rank < m_diff.rows().size(); ++rank) {
        const SettingsDiff::Row &row = m_diff.rows()[rank];
        const Persistence::Entry *const entry = &side == m_left ? row.leftEntry : row.rightEntry;
        if (entry && rows[rank].isChosen)
            entries.push_back(*entry);
    }
    return entries;
}

/// But the left one.
QStringList CompareDialog::devicesOfModel() const
{
    QStringList devices = m_settings.openDevices({});
    devices.erase(std::remove_if(devices.begin(), devices.end(),
                                 [this](const QString &id) {
                                     return id == m_left->place().device
                                         || !isSameModel(m_settings.infoOf(id), m_left->settings().device);
                                 }),
                  devices.end());
    return devices;
}

void CompareDialog::copy(const SettingsSource &from, SettingsSource &to)
{
    const std::vector<Persistence::Entry> entries = tickedOf(from);
    const SettingsSource::Place place = to.place();
    SettingsCopy copied(m_settings, this);
    QString error;
    m_isRunning = true;
    if (place.device.isEmpty() && !copied.toFile(place.file, to.settings(), entries, &error))
        warn(error);
    if (!place.device.isEmpty())
        copied.toDevice(place.device, entries);
    m_isRunning = false;
    refreshAfter(copied, {place});
}

void CompareDialog::copyToAll()
{
    const std::vector<Persistence::Entry> entries = tickedOf(*m_left);
    const QStringList devices = devicesOfModel();
    std::vector<SettingsSource::Place> written;
    SettingsCopy copied(m_settings, this);
    bool isCancelled = false;
    m_isRunning = true;
    for (const QString &id : devices) {
        written.push_back({id, {}});
        if (isCancelled)
            copied.noteNotTried(entries, m_settings.nameOf(id));
        else
            isCancelled = !copied.toDevice(id, entries, m_settings.nameOf(id)) && m_settings.isOpen(id);
    }
    m_isRunning = false;
    refreshAfter(copied, written);
}

void CompareDialog::refreshAfter(const SettingsCopy &copied, const std::vector<SettingsSource::Place> &written)
{
    for (SettingsSource *side : {m_left, m_right}) {
        if (std::find(written.begin(), written.end(), side->place()) != written.end())
            side->refresh();
    }
    showDifferences(copied);
}

void CompareDialog::warn(const QString &sentence)
{
    m_settings.log(sentence);
    auto *box = new QMessageBox(QMessageBox::Warning, windowTitle(), sentence, QMessageBox::Ok, this);
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void CompareDialog::reject()
{
    if (!m_isRunning)
        QDialog::reject();
}
