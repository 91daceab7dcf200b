// SPDX-License-Identifier: MIT
#include "Viewer/SettingsCommands.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

#include "Host/HostContext.h"
#include "Tools/BytesText.h"
#include "Tools/SettingsFile.h"
#include "Tools/SettingsLoad.h"
#include "Viewer/CompareDialog.h"
#include "Viewer/DeviceSettings.h"
#include "Viewer/DeviceTree.h"
#include "Viewer/LoadDialog.h"
#include "Viewer/RecentFiles.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/WalkDialog.h"

namespace {

const QString FolderKey = QStringLiteral("Viewer/settingsFolder");

} // namespace

SettingsCommands::SettingsCommands(HostContext &context, const DeviceTree &devices, ViewerCommands &commands,
                                   QWidget *window)
    : QObject(window), m_context(context), m_devices(devices), m_commands(commands), m_window(window),
      m_settings(new DeviceSettings(context, this)),
      m_recent(new RecentFiles(context.settings(), commands.recentMenu()))
{
    connect(&m_commands, &ViewerCommands::triggered, this, &SettingsCommands::run);
    connect(&m_devices, &DeviceTree::currentItemChanged, this, &SettingsCommands::updateCommands);
    connect(&m_devices, &DeviceTree::stateChanged, this, &SettingsCommands::updateCommands);
    connect(m_recent, &RecentFiles::chosen, this, &SettingsCommands::load);
    connect(m_settings, &DeviceSettings::written, &m_context.writeLog(),
            qOverload<const QString &, const Persistence::Entry &, const QString &>(&WriteLog::append));
    updateCommands();
}

void SettingsCommands::run(Command command)
{
    switch (command) {
    case Command::SaveSettings:
        return askForSave();
    case Command::LoadSettings:
        return askForLoad();
    case Command::CompareSettings:
        return compareCurrent();
    default:
        return;
    }
}

void SettingsCommands::updateCommands()
{
    const bool isOpen = m_settings->isOpen(currentId());
    m_commands.action(Command::SaveSettings)->setEnabled(isOpen);
    m_commands.action(Command::LoadSettings)->setEnabled(isOpen);
}

bool SettingsCommands::isBusy() const
{
    return m_window->findChild<WalkDialog *>() != nullptr;
}

QString SettingsCommands::currentId() const
{
    const Device *const device = m_devices.currentDevice();
    return device ? device->id() : QString();
}

/// Of a file in the folder that was used last.
QString SettingsCommands::pathOf(const QString &file) const
{
    return QDir(m_context.settings().value(FolderKey, QDir::homePath()).toString()).filePath(file);
}

void SettingsCommands::keep(const QString &path)
{
    m_context.settings().setValue(FolderKey, QFileInfo(path).absolutePath());
    m_recent->add(path);
}

void SettingsCommands::askForSave()
{
    const QString id = currentId(); // which may be another one when there is a name
    const QString path =
        QFileDialog::getSaveFileName(m_window, tr("Save Settings"), pathOf(m_settings->fileNameFor(id)),
                                     tr("Settings files (*.txt);;All files (*)"));
    if (!path.isEmpty())
        save(id, path);
}

void SettingsCommands::save(const QString &id, const QString &path)
{
    if (!m_settings->isOpen(id))
        return warn(tr("Save Settings"), tr("%1 is not open.").arg(m_settings->nameOf(id)));
    const std::optional<Persistence::Settings> settings = m_settings->read(id, m_window);
    if (!settings)
        return;
    QString error;
    if (!SettingsFile::write(path, *settings, &error))
        return warn(tr("Save Settings"), error);
    m_settings->log(tr("Settings of %2 were saved in %3: %1.")
                        .arg(settings->entries.size())
                        .arg(m_settings->nameOf(id), QDir::toNativeSeparators(path)));
    for (const Persistence::Problem &problem : settings->problems)
        m_settings->log(textOfBytes(problem.text));
    keep(path);
}

void SettingsCommands::askForLoad()
{
    const QString path = QFileDialog::getOpenFileName(m_window, tr("Load Settings"), pathOf(QString()),
                                                      tr("Settings files (*.txt);;All files (*)"));
    if (!path.isEmpty())
        load(path);
}

void SettingsCommands::load(const QString &path)
{
    if (isBusy()) // a file was dropped
        return;
    const QString id = currentId();
    if (!m_settings->isOpen(id))
        return warn(tr("Load Settings"), tr("Settings are loaded into an open device: open one first."));
    QString error;
    std::optional<Persistence::Settings> file = SettingsFile::read(path, &error);
    if (!file) {
        m_recent->remove(path);
        return warn(tr("Load Settings"), error);
    }
    keep(path);
    askForModel(path, id, std::make_shared<SettingsLoad>(std::move(*file)));
}

/// Unless it is that of the device.
void SettingsCommands::askForModel(const QString &path, const QString &id, const std::shared_ptr<SettingsLoad> &load)
{
    const SettingsLoad::Models models = load->models(*m_context.devices().device(id)->nodeMap());
    if (models.isSame)
        return plan(path, id, *load);
    auto *box = new QMessageBox(QMessageBox::Question, tr("Load Settings"), tr("The file is of another model."),
                                QMessageBox::Cancel, m_window);
    box->setObjectName(QStringLiteral("otherModel"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(tr("File: %1\nDevice: %2").arg(models.file, models.device));
    QPushButton *const go = box->addButton(tr("&Show What Would Change"), QMessageBox::AcceptRole);
    box->setEscapeButton(box->addButton(tr("&Cancel"), QMessageBox::RejectRole));
    connect(box, &QMessageBox::buttonClicked, this, [=](QAbstractButton *pressed) {
        if (pressed == go)
            plan(path, id, *load);
    });
    box->open();
}

void SettingsCommands::plan(const QString &path, const QString &id, SettingsLoad &load)
{
    if (!m_settings->compare(load, id, m_window))
        return;
    auto *dialog = new LoadDialog(m_context, *m_settings, {id, path}, std::move(load), m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

/// With another open device, one of its model if there is one.
void SettingsCommands::compareCurrent()
{
    const QString left = m_settings->isOpen(currentId()) ? currentId() : QString();
    QStringList others = m_settings->openDevices(left);
    others.removeAll(left);
    QString right = others.value(0);
    const std::string model = m_settings->infoOf(left).model;
    for (const QString &other : std::as_const(others)) {
        if (m_settings->infoOf(other).model == model) {
            right = other;
            break;
        }
    }
    compare({left, {}}, {right, {}});
}

CompareDialog *SettingsCommands::compare(const SettingsSource::Place &left, const SettingsSource::Place &right)
{
    auto *dialog = new CompareDialog(*m_settings, m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
    dialog->left().choose(left);
    dialog->right().choose(right);
    return dialog;
}

void SettingsCommands::warn(const QString &title, const QString &sentence)
{
    m_settings->log(sentence);
    auto *box = new QMessageBox(QMessageBox::Warning, title, sentence, QMessageBox::Ok, m_window);
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}
