// SPDX-License-Identifier: MIT
#include <cstdio>
#include <exception>
#include <iostream>

#include <QCommandLineParser>
#include <QFile>
#include <QLoggingCategory>

#include <GenApi/GenApi.h>

#include "BenchMain.h"
#include "BenchReport.h"
#include "Viewer/MeteredApplication.h"

namespace {

bool isSaved(const QString &fileName, const QByteArray &content)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

// The panel reports unreadable features on standard output and Qt comments on its style sheet; writing that to a
// terminal is no part of what is measured.
void silencePanel()
{
    std::cout.setstate(std::ios::failbit);
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false\ndefault.debug=false"));
}

int measured(void (*measure)(BenchReport &), const QString &jsonFile)
{
    silencePanel();
    BenchReport report;
    measure(report);
    std::fputs(report.table().c_str(), stdout);
    if (!jsonFile.isEmpty() && !isSaved(jsonFile, report.json())) {
        std::fprintf(stderr, "%s cannot be written\n", qUtf8Printable(jsonFile));
        return 2;
    }
    return report.isReached() ? 0 : 1;
}

} // namespace

int benchMain(int argc, char **argv, const QString &description, void (*measure)(BenchReport &))
{
    const MeteredApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(description);
    parser.addHelpOption();
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Also write the figures to <file>."),
                                  QStringLiteral("file"));
    parser.addOption(json);
    parser.process(application);
    try {
        return measured(measure, parser.value(json));
    } catch (const GenICam::GenericException &error) {
        std::fprintf(stderr, "%s\n", error.what());
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    return 2;
}
