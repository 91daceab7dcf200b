// SPDX-License-Identifier: MIT
#include <QString>

#include "BenchMain.h"
#include "Rows.h"

int main(int argc, char *argv[])
{
    const QString description = QStringLiteral(
        "Measures the panel on slow and silent cameras, for about two and a half minutes. Exits with 1 if a "
        "figure misses its bound.");
    return benchMain(argc, argv, description, addFaultRows);
}
