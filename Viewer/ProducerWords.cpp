// SPDX-License-Identifier: MIT
#include "Viewer/ProducerWords.h"

#include <QDir>
#include <QStringList>

namespace {

/// The standard's names, and how people call them.
struct TransportName
{
    const char *standard;
    const char *people;
};

constexpr TransportName TransportNames[] = {
    {"GEV", "GigE Vision"}, {"U3V", "USB3 Vision"},     {"CXP", "CoaXPress"}, {"CL", "Camera Link"},
    {"IIDC", "IIDC"},       {"CLHS", "Camera Link HS"}, {"UVC", "UVC"},
};

constexpr const char *OtherTransports[] = {
    QT_TRANSLATE_NOOP("ProducerWords", "Mixed"),
    QT_TRANSLATE_NOOP("ProducerWords", "Custom"),
};

/// What a search says about the access to a camera.
constexpr const char *Accesses[] = {
    QT_TRANSLATE_NOOP("ProducerWords", "free"),
    QT_TRANSLATE_NOOP("ProducerWords", "readable only"),
    QT_TRANSLATE_NOOP("ProducerWords", "not accessible"),
    QT_TRANSLATE_NOOP("ProducerWords", "in use by another program"),
    QT_TRANSLATE_NOOP("ProducerWords", "open in this program"),
};

/// The translation of one of these words; others stay as they are.
template <std::size_t count>
QString translated(const char *const (&words)[count], const QString &text)
{
    for (const char *word : words) {
        if (text == QLatin1String(word))
            return ProducerWords::tr(word);
    }
    return text;
}

QString transportName(const QString &standard)
{
    for (const TransportName &name : TransportNames) {
        if (standard == QLatin1String(name.standard))
            return QLatin1String(name.people);
    }
    return translated(OtherTransports, standard);
}

QString joined(QStringList words, const QString &between)
{
    words.removeAll(QString());
    return words.join(between);
}

const QString Space = QStringLiteral(" ");
const QString Comma = QStringLiteral(", ");

} // namespace

QString ProducerWords::transports(const KnownProducer &producer)
{
    if (!producer.report)
        return {};
    QStringList names;
    for (const ProducerReport::SeenInterface &seen : producer.report->interfaces)
        names << transportName(seen.transport);
    names.removeDuplicates();
    const QString ofInterfaces = joined(names, Comma);
    return ofInterfaces.isEmpty() ? transportName(producer.report->transport) : ofInterfaces;
}

QString ProducerWords::origin(Producers::Origin origin)
{
    switch (origin) {
    case Producers::Origin::Environment:
        return tr("Environment");
    case Producers::Origin::CommandLine:
        return tr("Command line");
    default:
        return tr("Settings");
    }
}

QString ProducerWords::state(const KnownProducer &producer)
{
    if (!producer.file.isOn)
        return tr("Switched off");
    if (!producer.report)
        return producer.isSearching ? tr("Searching...") : tr("Not searched yet");
    if (!producer.report->problem.isEmpty())
        return tr("Not used: %1").arg(producer.report->problem);
    std::size_t cameras = 0;
    QStringList problems;
    for (const ProducerReport::SeenInterface &seen : producer.report->interfaces) {
        cameras += seen.devices.size();
        if (!seen.problem.isEmpty())
            problems << tr("%1: %2").arg(seen.name, seen.problem);
    }
    problems.prepend(tr("Interfaces: %1, cameras: %2").arg(producer.report->interfaces.size()).arg(cameras));
    return problems.join(QLatin1String("; "));
}

QString ProducerWords::details(const KnownProducer &producer)
{
    QStringList lines{QDir::toNativeSeparators(producer.file.path)};
    if (!producer.report || !producer.report->problem.isEmpty()) {
        lines << state(producer);
        return lines.join(QLatin1Char('\n'));
    }
    const ProducerReport &report = *producer.report;
    lines << joined({report.vendor, report.model, report.version}, Space);
    if (report.interfaces.empty())
        lines << tr("It has no interfaces.");
    for (const ProducerReport::SeenInterface &seen : report.interfaces)
        lines << interfaceLines(seen);
    return joined(lines, QStringLiteral("\n"));
}

QString ProducerWords::interfaceLines(const ProducerReport::SeenInterface &seen)
{
    QStringList lines{joined({seen.name, transportName(seen.transport)}, Comma)};
    for (const ProducerReport::SeenDevice &device : seen.devices)
        lines << deviceLine(device);
    if (!seen.problem.isEmpty())
        lines << seen.problem;
    else if (seen.devices.empty())
        lines << tr("no cameras");
    return lines.join(QLatin1String("\n    "));
}

QString ProducerWords::deviceLine(const ProducerReport::SeenDevice &seen)
{
    const QString name = joined({seen.vendor, seen.model, seen.serial}, Space);
    return joined({name.isEmpty() ? seen.id : name, translated(Accesses, seen.access)}, Comma);
}
