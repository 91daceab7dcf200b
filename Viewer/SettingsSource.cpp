// SPDX-License-Identifier: MIT
#include "Viewer/SettingsSource.h"

#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QSignalBlocker>

#include "Tools/BytesText.h"
#include "Tools/SettingsFile.h"
#include "Viewer/DeviceSettings.h"

namespace {

enum Role { DeviceRole = Qt::UserRole, FileRole };
constexpr int LettersOfBox = 24;

} // namespace

SettingsSource::SettingsSource(DeviceSettings &settings, QWidget *parent)
    : QWidget(parent), m_settings(settings), m_box(new QComboBox)
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_box);
    setFocusProxy(m_box);
    m_box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_box->setMinimumContentsLength(LettersOfBox);
    const QStringList devices = m_settings.openDevices({});
    for (const QString &id : devices) {
        m_box->addItem(m_settings.nameOf(id));
        m_box->setItemData(m_box->count() - 1, id, DeviceRole);
    }
    m_box->addItem(tr("File..."));
    m_box->setCurrentIndex(-1);
    connect(m_box, QOverload<int>::of(&QComboBox::activated), this, &SettingsSource::adoptChoice);
}

QString SettingsSource::nameOf(const Place &place) const
{
    return place.device.isEmpty() ? QFileInfo(place.file).fileName() : m_settings.nameOf(place.device);
}

SettingsSource::Place SettingsSource::placeAt(int row) const
{
    return {m_box->itemData(row, DeviceRole).toString(), m_box->itemData(row, FileRole).toString()};
}

void SettingsSource::adoptChoice(int row)
{
    const Place place = placeAt(row);
    if (!place.isNone())
        return choose(place);
    m_box->setCurrentIndex(rowOf(m_place)); // until there is a file
    askForFile();
}

void SettingsSource::askForFile()
{
    auto *dialog = new QFileDialog(this, tr("Settings File"), QString(), tr("Settings files (*.txt);;All files (*)"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    if (!m_place.file.isEmpty())
        dialog->selectFile(m_place.file);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &path) { choose({{}, path}); });
    dialog->open();
}

/// Adds a file that is new; -1 for none.
int SettingsSource::rowOf(const Place &place)
{
    if (place.isNone())
        return -1;
    for (int row = 0; row < m_box->count(); ++row) {
        if (placeAt(row) == place)
            return row;
    }
    const int row = m_box->count() - 1; // in front of the one that asks
    m_box->insertItem(row, QFileInfo(place.file).fileName());
    m_box->setItemData(row, place.device, DeviceRole);
    m_box->setItemData(row, place.file, FileRole);
    m_box->setItemData(row, place.file, Qt::ToolTipRole);
    return row;
}

/// What is left out is told in the log.
std::optional<Persistence::Settings> SettingsSource::read(const Place &place)
{
    std::optional<Persistence::Settings> settings = readAsItIs(place);
    for (const Persistence::Problem &problem : settings ? settings->problems : std::vector<Persistence::Problem>())
        m_settings.log(QStringLiteral("%1: %2").arg(nameOf(place), textOfBytes(problem.text)));
    return settings;
}

std::optional<Persistence::Settings> SettingsSource::readAsItIs(const Place &place)
{
    if (!place.device.isEmpty())
        return m_settings.read(place.device, window());
    QString error;
    std::optional<Persistence::Settings> file = SettingsFile::read(place.file, &error);
    if (!file)
        Q_EMIT failed(error);
    return file;
}

void SettingsSource::choose(const Place &place)
{
    std::optional<Persistence::Settings> content = place.isNone() ? std::nullopt : read(place);
    if (content) {
        m_place = place;
        m_content = std::move(*content);
    }
    m_box->setCurrentIndex(rowOf(m_place));
    m_box->setToolTip(m_place.file);
    if (content)
        Q_EMIT changed();
}
