// SPDX-License-Identifier: MIT
#include "Tools/SettingsFile.h"

#include <sstream>

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <Base/GCException.h>

#include "Tools/BytesText.h"

namespace SettingsFile {

namespace {

constexpr qint64 LargestFile = 256 << 20;

QString failure(const char *what, const QString &path, const QString &reason)
{
    return QStringLiteral("%1 %2: %3").arg(QLatin1String(what), path, reason);
}

/// What cannot be replaced as a whole: a pipe, a terminal.
bool isNoPlainFile(const QFileInfo &file)
{
    return file.exists() && !file.isFile() && !file.isDir();
}

bool writeAll(QFileDevice &file, QIODevice::OpenMode mode, const QByteArray &content)
{
    return file.open(mode) && file.write(content) == content.size() && file.flush();
}

bool writeInPlace(const QString &path, const QByteArray &content, QString *error)
{
    QFile file(path);
    const bool isWritten = writeAll(file, QIODevice::WriteOnly | QIODevice::Unbuffered, content);
    if (!isWritten)
        *error = failure("Cannot write", path, file.errorString());
    return isWritten;
}

} // namespace

QByteArray bytes(const Persistence::Settings &settings)
{
    std::ostringstream stream;
    Persistence::writeSettings(stream, settings);
    return QByteArray::fromStdString(stream.str());
}

std::optional<Persistence::Settings> parse(const QByteArray &bytes, QString *error)
{
    std::istringstream stream(bytes.toStdString());
    try {
        return Persistence::readSettings(stream);
    } catch (const GenICam::GenericException &exception) {
        *error = textOfBytes(exception.GetDescription());
    }
    return std::nullopt;
}

std::optional<Persistence::Settings> read(const QString &path, QString *error)
{
    QFile file(path);
    if (QFileInfo(path).isDir()) {
        *error = failure("Cannot read", path, QStringLiteral("it is a folder"));
        return std::nullopt;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        *error = failure("Cannot read", path, file.errorString());
        return std::nullopt;
    }
    const QByteArray content = file.read(LargestFile + 1);
    if (file.error() != QFileDevice::NoError) {
        *error = failure("Cannot read", path, file.errorString());
        return std::nullopt;
    }
    if (content.size() > LargestFile) {
        *error = failure("Cannot read", path, QStringLiteral("it is too large for a settings file"));
        return std::nullopt;
    }
    QString reason;
    std::optional<Persistence::Settings> settings = parse(content, &reason);
    if (!settings)
        *error = failure("Cannot read", path, reason);
    return settings;
}

bool write(const QString &path, const Persistence::Settings &settings, QString *error)
{
    return writeBytes(path, bytes(settings), error);
}

bool writeBytes(const QString &path, const QByteArray &content, QString *error)
{
    if (isNoPlainFile(QFileInfo(path)))
        return writeInPlace(path, content, error);
    QSaveFile file(path);
    const bool isWritten = writeAll(file, QIODevice::WriteOnly, content) && file.commit();
    if (!isWritten)
        *error = failure("Cannot write", path, file.errorString());
    return isWritten;
}

} // namespace SettingsFile
