// SPDX-License-Identifier: MIT
#include <array>

#include "Tools/cli/Commands.h"
#include "Tools/cli/DeviceChoice.h"

namespace {

using Cells = std::array<QString, 5>;

Cells cellsOf(const KnownDevice &known)
{
    const QString model = QStringLiteral("%1 %2").arg(known.vendor, known.model).trimmed();
    return {known.id, transportName(known.transport), model, known.serial, known.address};
}

QJsonObject recordOf(const KnownDevice &known)
{
    return {{QStringLiteral("id"), known.id},         {QStringLiteral("transport"), transportName(known.transport)},
            {QStringLiteral("vendor"), known.vendor}, {QStringLiteral("model"), known.model},
            {QStringLiteral("serial"), known.serial}, {QStringLiteral("address"), known.address}};
}

void printTable(const std::vector<Cells> &rows, Output &output)
{
    std::array<int, 5> widths{};
    for (const Cells &row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], static_cast<int>(row[i].size()));
    }
    for (const Cells &row : rows) {
        QString line;
        for (std::size_t i = 0; i < row.size(); ++i)
            line += row[i].leftJustified(widths[i] + 2);
        output.line(line.trimmed());
    }
}

} // namespace

ExitCode listDevices(Task &task)
{
    QString warning;
    std::vector<Cells> rows{{QStringLiteral("ID"), QStringLiteral("TRANSPORT"), QStringLiteral("MODEL"),
                             QStringLiteral("SERIAL"), QStringLiteral("ADDRESS")}};
    for (const KnownDevice &known : knownDevices(task.options, &warning)) {
        rows.push_back(cellsOf(known));
        task.output.add(recordOf(known));
    }
    if (!task.output.isJson())
        printTable(rows, task.output);
    if (!warning.isEmpty())
        task.output.note(warning);
    return warning.isEmpty() ? Done : NoDevice;
}
