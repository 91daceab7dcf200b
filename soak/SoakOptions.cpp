// SPDX-License-Identifier: MIT
#include "soak/SoakOptions.h"

#include <QCommandLineParser>
#include <QRandomGenerator>

namespace {

constexpr int Bound = 100; ///< ms, of an event of the release build on a machine that has nothing else to do

/// How much longer an event may take in a build than in the release.
struct Build
{
    const char *preset;
    int factor;
};
constexpr Build Builds[] = {{"release", 1}, {"dev", 4}, {"asan", 20}, {"tsan", 40}};

int factorOf(const QString &preset)
{
    for (const Build &build : Builds) {
        if (preset == QLatin1String(build.preset))
            return build.factor;
    }
    return 0;
}

} // namespace

SoakOptions SoakOptions::parse(const QCoreApplication &application)
{
    const auto option = [](const char *name, const char *text, const char *value, const char *standard = "") {
        return QCommandLineOption(QLatin1String(name), QLatin1String(text), QLatin1String(value),
                                  QLatin1String(standard));
    };
    const QCommandLineOption seconds = option("seconds", "How long.", "N", "60");
    const QCommandLineOption steps = option("steps", "Ends after so many steps, whatever time they take.", "N", "0");
    const QCommandLineOption cycles = option("cycles", "Only opens and closes, so many times.", "N", "0");
    const QCommandLineOption seed = option("seed", "Repeats the run with that seed.", "N");
    const QCommandLineOption preset = option("preset", "The build, which bounds the time of events.", "NAME", "asan");
    const QCommandLineOption network(QStringLiteral("network"), QStringLiteral("Also uses a camera on the network."));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({seconds, steps, cycles, seed, preset, network});
    parser.process(application);
    SoakOptions options;
    bool isSeed = false;
    options.seconds = parser.isSet(steps) ? 0 : parser.value(seconds).toInt();
    options.steps = parser.value(steps).toInt();
    options.cycles = parser.value(cycles).toInt();
    options.seed = parser.value(seed).toULongLong(&isSeed);
    if (!parser.isSet(seed))
        options.seed = QRandomGenerator::system()->generate();
    options.bound = Bound * factorOf(parser.value(preset));
    options.network = parser.isSet(network);
    if (options.bound == 0 || (parser.isSet(seed) && !isSeed) || !parser.positionalArguments().isEmpty())
        parser.showHelp(2);
    return options;
}
