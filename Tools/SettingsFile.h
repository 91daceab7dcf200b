// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QByteArray>
#include <QString>

#include <GenApi/PersistenceFile.h>

/// Settings files on a disk.
namespace SettingsFile {

/// What the file holds; lines that make no sense are left out and told, with their numbers, in Settings::problems.
/// Nothing, with a sentence in `error`, when there is no file, when it cannot be read or when it is no settings file.
std::optional<Persistence::Settings> read(const QString &path, QString *error);

/// Writes all or nothing: until the new file is complete on the disk the old one stays as it is, also when the disk is
/// full, the folder read-only or the program killed. A link stays a link; what is no file (a pipe, a terminal) is
/// written to as it stands. False with a sentence in `error` on failure.
bool write(const QString &path, const Persistence::Settings &settings, QString *error);

/// The same of any content, for other files that belong to the settings.
bool writeBytes(const QString &path, const QByteArray &content, QString *error);

/// The file as bytes, for who writes it to another place than a disk.
QByteArray bytes(const Persistence::Settings &settings);
/// read() of such bytes.
std::optional<Persistence::Settings> parse(const QByteArray &bytes, QString *error);

} // namespace SettingsFile
