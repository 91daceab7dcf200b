// SPDX-License-Identifier: MIT
#include "Tools/WriteLog.h"

#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QByteArray Nasty[] = {"640",      "",          " ",           "it's",         "\"$HOME\" `ls` \\ !",
                            "-n",       "*",         "~",           "a;b&c|d",      "M\xc3\xbcller",
                            "\xfc\xff", "a\tb\nc\r", "\x01'\\\x7f", "# no comment", "a=b [c] {d}"};

QByteArray run(const QString &program, const QStringList &arguments, const QString &path = QString())
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!path.isEmpty())
        environment.insert(QStringLiteral("PATH"), path + QStringLiteral(":") + qEnvironmentVariable("PATH"));
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    return process.waitForFinished() ? process.readAllStandardOutput() : QByteArray("it did not run");
}

} // namespace

class tst_WriteLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bashReadsWordsAsTheyWere()
    {
        for (const QByteArray &bytes : Nasty) {
            QTemporaryDir folder;
            QFile script(folder.filePath(QStringLiteral("script")));
            QVERIFY(script.open(QIODevice::WriteOnly));
            script.write("printf '%s' " + shellWord(bytes));
            script.close();
            QCOMPARE(run(QStringLiteral("bash"), {script.fileName()}), bytes);
        }
    }

    /// A program of the name prints its arguments.
    void theScriptReplaysWhatWasTaken()
    {
        WriteLog log;
        QByteArray expected;
        for (const QByteArray &bytes : Nasty) {
            log.append(QStringLiteral("a camera"), {"Name", {{"S", "1"}}, bytes.toStdString()});
            log.append(QStringLiteral("a camera"), {"Width", {}, "9"}, QStringLiteral("too\nlarge"));
            expected += "<set><a camera><Name[S=1]=" + bytes + ">";
        }
        log.append(QStringLiteral("b"), {"S", {}, "2"});
        log.append(QStringLiteral("b"), {"Run", {}, ""});
        log.append(QStringLiteral("-c"), {"S", {}, "-1"});
        expected += "<set><b><S=2><Run=><set><--><-c><S=-1>";
        QTemporaryDir folder;
        QFile program(folder.filePath(QStringLiteral("paramter")));
        QVERIFY(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/bash\nprintf '<%s>' \"$@\"\n");
        program.setPermissions(program.permissions() | QFile::ExeOwner);
        program.close();
        QFile script(folder.filePath(QStringLiteral("script")));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write(log.script());
        script.close();
        QCOMPARE(run(QStringLiteral("bash"), {script.fileName()}, folder.path()), expected);
        QVERIFY(program.open(QIODevice::WriteOnly | QIODevice::Truncate));
        program.write("#!/bin/bash\necho \"$2\"; exit 4\n");
        program.close();
        QCOMPARE(run(QStringLiteral("bash"), {script.fileName()}, folder.path()), QByteArray("a camera\n"));
        QVERIFY(log.script().contains("# refused: too large\n#   paramter set 'a camera' Width=9\n"));
    }

    void theTextHasALineForEachWrite()
    {
        WriteLog log(2);
        const QSignalSpy told(&log, &WriteLog::appended);
        const QDateTime time(QDate(2026, 1, 2), QTime(3, 4, 5, 6));
        log.append({time, QStringLiteral("a"), {"Old", {}, "0"}, {}});
        log.append({time, QStringLiteral("a"), {"Gain", {{"S", "Red"}}, "1\t2"}, {}});
        log.append({time, QStringLiteral("b"), {"Width", {}, "9"}, QStringLiteral("too\nlarge")});
        QCOMPARE(log.text(),
                 QStringLiteral("# 1 older writes are left out\n"
                                "2026-01-02T03:04:05.006\ta\tGain[S=Red]\t1 2\tok\n"
                                "2026-01-02T03:04:05.006\tb\tWidth\t9\ttoo large\n"));
        QCOMPARE(told.size(), 3);
        QCOMPARE(told.last().first().toBool(), true);
        QVERIFY(log.script().contains("older writes"));
    }
};

QTEST_GUILESS_MAIN(tst_WriteLog)
#include "tst_WriteLog.moc"
