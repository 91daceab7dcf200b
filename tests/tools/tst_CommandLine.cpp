// SPDX-License-Identifier: MIT
#include "support/FakeCamera.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <limits>

namespace {

struct Result
{
    int code = -1;
    QByteArray out;
    QByteArray err;

    QByteArray text() const { return "code " + QByteArray::number(code) + "\n" + out.left(2000) + err; }
};

Result finished(QProcess &process)
{
    Result result;
    if (!process.waitForFinished(60'000))
        return result;
    result.code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}

QJsonDocument parsed(const QByteArray &text)
{
    return QJsonDocument::fromJson(text);
}

int countOf(const QByteArray &json, const char *state)
{
    int count = 0;
    for (const QJsonValue &one : parsed(json).object()[QLatin1String("settings")].toArray())
        count += one.toObject()[QLatin1String("state")].toString() == QLatin1String(state) ? 1 : 0;
    return count;
}

} // namespace

/// The program as its user meets it.
class tst_CommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void exitCodesAndOutputs()
    {
        struct Case
        {
            const char *arguments; ///< separated by bars
            int code;
            const char *out; ///< a part of it
            const char *err;
        };
        const Case cases[] = {
            {"--help", 0, "Exit codes:", ""},
            {"load|--help", 0, "Examples:", ""},
            {"--version", 0, ".", ""},
            {"", 2, "", "subcommand"},
            {"fly", 2, "", ""},
            {"get|SIM-AREA-01", 2, "", "missing"},
            {"list|SIM-AREA-01", 2, "", ""},
            {"set|SIM-AREA-01|Width", 2, "", "FEATURE=VALUE"},
            {"get|SIM-AREA-99|Width", 3, "", "no device SIM-AREA-99"},
            {"dump|--genicam|missing.xml", 3, "", "cannot be opened"},
            {"get|SIM-AREA-01|Width|Height", 0, "Width=2448\nHeight=2048\n", ""},
            {"get|-n|SIM-AREA-01|Width", 0, "2448\n", ""},
            {"get|SIM-AREA-01|TriggerMode[TriggerSelector=FrameBurstStart]|TriggerSelector", 0,
             "\nTriggerSelector=FrameStart\n", ""},
            {"get|SIM-AREA-01|Nope", 4, "", "no such feature"},
            {"set|SIM-AREA-01|Width=640|Gamma=-99|Height=480", 4, "Width=640\n", "Height: not tried"},
            {"set|SIM-AREA-01|UserSetSelector=Default|UserSetLoad=", 0, "UserSetLoad=\n", ""},
            {"set|SIM-AREA-01|TriggerMode[TriggerSelector=FrameStart]=On|TriggerSelector=FrameStart", 0,
             "TriggerMode[TriggerSelector=FrameStart]=On\n", ""},
            {"save|SIM-AREA-01|area.txt", 0, "", ""},
            {"save|SIM-CARD-01|card.txt", 0, "", ""},
            {"save|SIM-AREA-01|/nowhere/area.txt", 5, "", "/nowhere/area.txt"},
            {"save|SIM-AREA-01|/dev/full", 5, "", "/dev/full"},
            {"load|SIM-AREA-01|area.txt", 0, "0 of 1", ""},
            {"load|SIM-AREA-01|missing.txt", 5, "", "missing.txt"},
            {"load|SIM-AREA-01|bad.txt", 4, "Width: 2448 -> 640\n", "(line 3)"},
            {"load|SIM-AREA-01|bad.txt|--dry-run", 4, "2 of 2 settings would be written", "Line 4"},
            {"load|SIM-CARD-01|area.txt", 7, "", "Demo AreaScanCamera"},
            {"compare|area.txt|SIM-AREA-01", 0, "", ""},
            {"compare|area.txt|card.txt", 1, "< Width: 2448\n", ""},
            {"xml|SIM-AREA-01|area.xml", 0, "", ""},
            {"get|--genicam|area.xml|Width", 0, "Width=", ""},
            {"set|file:area.xml|ReverseX=1", 0, "ReverseX=1\n", ""},
            {"compare|file:area.xml|area.txt", 4, "", "PixelFormat"},
            {"watch|SIM-AREA-01|Width|--rounds|2|--interval|0.01", 0, "Width=2448", ""},
            {"get|--all-of|AreaScanCamera|Width|--json", 0, "SIM-AREA-02", ""},
            {"watch|--all-of|AreaScanCamera|Width|--rounds|1", 0, "\tSIM-AREA-02\tWidth=640\n", ""},
            {"save|--all-of|AreaScanCamera|all.txt", 2, "", "{id}"},
            {"save|--all-of|AreaScanCamera|all-{id}.txt", 0, "", ""},
            {"compare|all-SIM-AREA-02.txt|SIM-AREA-02", 0, "", ""},
        };
        write("bad.txt", "# {05D8C294-F295-4dfb-9D01-096BD04049F4}\nWidth\t640\nHeight\t99999\nbroken\n");
        for (const Case &one : cases) {
            const Result result = run(QString::fromUtf8(one.arguments).split(QLatin1Char('|'), Qt::SkipEmptyParts));
            const QByteArray what = QByteArray(one.arguments) + ": " + result.text();
            QVERIFY2(result.code == one.code, what);
            QVERIFY2(result.out.contains(one.out) && result.err.contains(one.err), what);
        }
    }

    void dataIsJson()
    {
        for (const char *arguments : {"list", "dump|SIM-AREA-01", "get|SIM-AREA-01|Width", "set|SIM-AREA-01|Width=64",
                                      "load|SIM-AREA-01|area.txt", "compare|SIM-AREA-01|card.txt"}) {
            const Result result =
                run(QString::fromUtf8(arguments).split(QLatin1Char('|')) + QStringList{QStringLiteral("--json")});
            QVERIFY2(!parsed(result.out).isNull(), QByteArray(arguments) + ": " + result.text());
        }
    }

    void watchPrintsJsonInLines()
    {
        const QByteArray out =
            run(QStringLiteral("watch --json --rounds 1 --all-of AreaScanCamera Width Height").split(QLatin1Char(' ')))
                .out;
        const QList<QByteArray> lines = out.trimmed().split('\n');
        QVERIFY2(lines.size() == 4, out);
        for (const QByteArray &line : lines)
            QVERIFY2(parsed(line).object().contains(QLatin1String("device")), line);
    }

    void eachDeviceTakesTheStandardInput()
    {
        QProcess process;
        process.setStandardInputFile(m_folder.filePath(QStringLiteral("area.txt")));
        process.start(QLatin1String(PROGRAM),
                      QStringLiteral("load --dry-run --all-of AreaScanCamera -").split(QLatin1Char(' ')));
        const Result result = finished(process);
        QVERIFY2(result.code == 0 && result.out.contains("Width: 640 -> 2448"), result.text());
    }

    /// The file system is full in the middle of the file.
    void aFullDiskLeavesTheOldFile()
    {
        const QByteArray before = read("area.txt");
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.start(
            QStringLiteral("bash"),
            {QStringLiteral("-c"),
             QStringLiteral("ulimit -f 4; trap '' XFSZ; '%1' save SIM-AREA-01 area.txt").arg(QLatin1String(PROGRAM))});
        const Result result = finished(process);
        QVERIFY2(result.code == 5 && result.err.contains("area.txt"), result.text());
        QVERIFY(before.size() > 8192 && read("area.txt") == before);
    }

    void bashCompletesWhatThereIs()
    {
        const auto completed = [](const char *line) {
            QProcess bash;
            const QString script = QStringLiteral(
                "paramter() { '%1' \"$@\"; }; . '%2'; COMP_WORDS=(%3); COMP_CWORD=$((${#COMP_WORDS[@]}-1));"
                "_paramter paramter \"${COMP_WORDS[-1]}\" \"${COMP_WORDS[-2]}\"; echo \"${COMPREPLY[@]}\"");
            bash.start(QStringLiteral("bash"),
                       {QStringLiteral("-c"),
                        script.arg(QLatin1String(PROGRAM), QLatin1String(COMPLETION), QLatin1String(line))});
            return finished(bash).out;
        };
        QCOMPARE(completed("paramter l"), QByteArray("list load\n"));
        QCOMPARE(completed("paramter get SIM-AREA"), QByteArray("SIM-AREA-01 SIM-AREA-02\n"));
        QCOMPARE(completed("paramter load --d"), QByteArray("--dry-run\n"));
    }

    void listIsQuick()
    {
        qint64 shortest = std::numeric_limits<qint64>::max();
        for (int i = 0; i < 3; ++i) { // others use the machine, too
            QElapsedTimer timer;
            timer.start();
            const Result result = run({QStringLiteral("list")});
            shortest = std::min(shortest, timer.elapsed());
            QVERIFY2(result.code == 0 && result.out.contains("SIM-CARD-01"), result.text());
        }
        QVERIFY2(shortest < 1500, QByteArray::number(shortest) + " ms; a search takes 1000 ms");
    }

    void ctrlCEndsAWatchInOrder()
    {
        QProcess process;
        process.start(QLatin1String(PROGRAM),
                      {QStringLiteral("watch"), QStringLiteral("SIM-AREA-01"), QStringLiteral("Width")});
        QVERIFY(process.waitForReadyRead(20'000));
        ::kill(static_cast<pid_t>(process.processId()), SIGINT);
        QCOMPARE(finished(process).code, 0);
    }

    /// A camera on the network keeps its settings as long as it runs.
    void aFileGoesIntoAFreshCamera()
    {
        if (!FakeCamera::isInstalled())
            QSKIP("the fake GigE Vision camera is not installed");
        const QString camera = FakeCamera::address();
        FakeCamera cable;
        QVERIFY(plugged(cable));
        QCOMPARE(
            run({QStringLiteral("set"), camera, QStringLiteral("Width=128"), QStringLiteral("ExposureTimeAbs=124")})
                .text(),
            QByteArray("code 0\nWidth=128\nExposureTimeAbs=124\n"));
        QCOMPARE(run({QStringLiteral("save"), camera, QStringLiteral("gige.txt")}).code, 0);
        const QByteArray dump = run({QStringLiteral("dump"), camera}).out;
        QVERIFY2(dump.contains("Width\tInteger\tRW\tBeginner\t128\n"), dump);
        QVERIFY(cable.unplug() && plugged(cable));
        QVERIFY(run({QStringLiteral("dump"), camera}).out != dump);
        const QStringList load{QStringLiteral("load"), camera, QStringLiteral("gige.txt"), QStringLiteral("--json")};
        const Result first = run(load);
        QVERIFY2(first.code == 0 && countOf(first.out, "written") == 2, first.text());
        QCOMPARE(run({QStringLiteral("dump"), camera}).out, dump);
        const Result second = run(load);
        QVERIFY2(second.code == 0 && countOf(second.out, "written") == 0, second.text());
        const Result list = run({QStringLiteral("list")});
        QVERIFY2(list.out.contains(camera.toUtf8()), list.text());
    }

    void aLostCameraEndsAWatch()
    {
        if (!FakeCamera::isInstalled())
            QSKIP("the fake GigE Vision camera is not installed");
        FakeCamera cable;
        QVERIFY(plugged(cable));
        QProcess process;
        process.start(QLatin1String(PROGRAM),
                      {QStringLiteral("watch"), FakeCamera::address(), QStringLiteral("Width")});
        QVERIFY(process.waitForReadyRead(20'000));
        QVERIFY(cable.unplug());
        const Result result = finished(process);
        QVERIFY2(result.code == 6 && result.err.contains("is lost"), result.text());
    }

private:
    Result run(const QStringList &arguments)
    {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.start(QLatin1String(PROGRAM), arguments);
        return finished(process);
    }

    /// Plugs the camera in and waits until it answers.
    bool plugged(FakeCamera &cable)
    {
        const QStringList get{QStringLiteral("get"), FakeCamera::address(), QStringLiteral("Width")};
        if (!cable.plug())
            return false;
        return QTest::qWaitFor([&] { return run(get).code == 0; }, 20'000);
    }

    void write(const char *name, const QByteArray &content)
    {
        QFile file(m_folder.filePath(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    QByteArray read(const char *name)
    {
        QFile file(m_folder.filePath(QLatin1String(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_CommandLine)
#include "tst_CommandLine.moc"
