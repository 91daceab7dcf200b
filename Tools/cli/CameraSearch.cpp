// SPDX-License-Identifier: MIT
#include "Tools/cli/CameraSearch.h"

#include <cstdio>
#include <memory>

#include <QSettings>
#include <QUrl>

#include "Devices/AravisDevice.h"
#include "Devices/MergedFinder.h"
#include "Devices/gentl/GentlFinder.h"
#include "Tools/cli/Options.h"

namespace {

/// What became of trying producers, for the next time that the program runs.
QSettings verdicts()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("ParamterWnd"),
                     QStringLiteral("producers"));
}

QString keyOf(const QString &file)
{
    return QStringLiteral("tried/") + QString::fromLatin1(QUrl::toPercentEncoding(file));
}

QStringList filesOf(const Options &options)
{
    QStringList files;
    for (const std::string &file : options.producers)
        files << QString::fromStdString(file);
    return files + producersOfEnvironment();
}

} // namespace

DeviceFinder cameraFinder(const Options &options)
{
    ProducerSearch::Options wanted;
    wanted.files = [files = filesOf(options)] { return files; };
    wanted.verdicts.read = [](const QString &file) { return verdicts().value(keyOf(file)).toByteArray(); };
    wanted.verdicts.write = [](const QString &file, const QByteArray &verdict) {
        verdicts().setValue(keyOf(file), verdict);
    };
    wanted.report = [](const QString &line) { std::fprintf(stderr, "paramter: %s\n", line.toUtf8().constData()); };
    return mergedFinder(aravisFinder(true), gentlFinder(std::make_shared<ProducerSearch>(wanted)));
}
