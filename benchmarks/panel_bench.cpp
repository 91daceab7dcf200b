// SPDX-License-Identifier: MIT
#include <QString>

#include "BenchMain.h"
#include "Rows.h"

int main(int argc, char *argv[])
{
    const QString description = QStringLiteral(
        "Measures the panel and the GenApi layer on made-up cameras. Exits with 1 if a figure misses its bound.");
    return benchMain(argc, argv, description, [](BenchReport &report) {
        addEngineRows(report);
        addPanelRows(report);
        addPageRows(report);
    });
}
