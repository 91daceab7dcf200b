// SPDX-License-Identifier: MIT
#include <cstdio>
#include <exception>
#include <iostream>

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QLoggingCategory>

#include <GenApi/GenApi.h>

#include "Rows.h"

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

int measured(const QString &jsonFile)
{
    silencePanel();
    BenchReport report;
    addEngineRows(report);
    addPanelRows(report);
    addPageRows(report);
    std::fputs(report.table().c_str(), stdout);
    if (!jsonFile.isEmpty() && !isSaved(jsonFile, report.json())) {
        std::fprintf(stderr, "panel_bench: %s cannot be written\n", qUtf8Printable(jsonFile));
        return 2;
    }
    return report.isReached() ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Measures the panel and the GenApi layer on made-up cameras. Exits with 1 if a figure misses its bound."));
    parser.addHelpOption();
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Also write the figures to <file>."),
                                  QStringLiteral("file"));
    parser.addOption(json);
    parser.process(application);
    try {
        return measured(parser.value(json));
    } catch (const GenICam::GenericException &error) {
        std::fprintf(stderr, "panel_bench: %s\n", error.what());
    } catch (const std::exception &error) {
        std::fprintf(stderr, "panel_bench: %s\n", error.what());
    }
    return 2;
}
