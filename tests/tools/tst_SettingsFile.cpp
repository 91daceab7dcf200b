// SPDX-License-Identifier: MIT
#include "Tools/SettingsFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const QByteArray Magic = "# {05D8C294-F295-4dfb-9D01-096BD04049F4}\n";

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

Persistence::Settings settingsWith(const std::string &value)
{
    Persistence::Settings settings;
    settings.interfaceVersion = "3.4.0";
    for (int i = 0; i < 5000; ++i)
        settings.entries.push_back({"Feature" + std::to_string(i), {}, value});
    return settings;
}

/// Tells each write before it begins.
[[noreturn]] void writeInTurn(const QString &path, const Persistence::Settings (&both)[2], int channel)
{
    QString error;
    int i = 0;
    while (::write(channel, "x", 1) == 1 && SettingsFile::write(path, both[++i % 2], &error)) { }
    _exit(1);
}

} // namespace

class tst_SettingsFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void badFilesAreToldWithTheirNames()
    {
        struct Case
        {
            const char *name;
            QByteArray content;
            const char *reason;
        };
        const Case cases[] = {
            {"empty", "", "Line 1"},
            {"text", "Width\t640\n", "Line 1"},
            {"another tool's", "# {0-1}\nWidth\t640\n", "another tool"},
        };
        for (const Case &one : cases) {
            const QString path = m_folder.filePath(QLatin1String(one.name));
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(one.content) == one.content.size());
            file.close();
            QString error;
            QVERIFY2(!SettingsFile::read(path, &error), one.name);
            QVERIFY2(error.contains(path), qPrintable(error));
            const bool isTold =
                error.contains(QLatin1String(one.reason)) || error.contains(QLatin1String("other tool"));
            QVERIFY2(isTold, qPrintable(error));
        }
        for (const QString &path : {m_folder.path(), m_folder.filePath(QStringLiteral("missing"))}) {
            QString error;
            QVERIFY(!SettingsFile::read(path, &error));
            QVERIFY2(error.contains(path), qPrintable(error));
        }
    }

    void linesThatMakeNoSenseAreLeftOut()
    {
        QString error;
        const auto settings = SettingsFile::parse(Magic + "Width\t640\r\nHeight\nGain\t{A=\t1\nTable\t"
                                                      + QByteArray(10'000'000, 'f') + "\nName\tM\xfcller\n",
                                                  &error);
        QVERIFY2(settings, qPrintable(error));
        QCOMPARE(settings->entries.size(), std::size_t(3));
        QCOMPARE(settings->entries[1].value.size(), std::size_t(10'000'000));
        QCOMPARE(settings->entries[2].value, std::string("M\xfcller"));
        std::vector<std::size_t> lines;
        for (const Persistence::Problem &problem : settings->problems)
            lines.push_back(problem.line);
        QCOMPARE(lines, (std::vector<std::size_t>{3, 4}));
    }

    void aFileThatCannotBeWrittenIsTold()
    {
        for (const char *path : {"/proc/settings.txt", "/nowhere/settings.txt", "/dev/full"}) {
            QString error;
            QVERIFY2(!SettingsFile::write(QLatin1String(path), settingsWith("1"), &error), path);
            QVERIFY2(error.contains(QLatin1String(path)), qPrintable(error));
        }
        QVERIFY(!QFileInfo(QStringLiteral("/dev/full")).isFile());
    }

    /// A child writes two contents in turn and is killed; then the file must be one of the two.
    void aKilledProgramLeavesAWholeFile()
    {
        const QString path = m_folder.filePath(QStringLiteral("killed.txt"));
        const Persistence::Settings both[] = {settingsWith("left"), settingsWith("a longer text")};
        QString error;
        QVERIFY2(SettingsFile::write(path, both[0], &error), qPrintable(error));
        for (int round = 1; round <= 20; ++round) {
            int pipe[2];
            QVERIFY(::pipe(pipe) == 0);
            const pid_t child = fork();
            if (child == 0)
                writeInTurn(path, both, pipe[1]);
            char byte = 0;
            for (int i = 0; i < round; ++i)
                QVERIFY(::read(pipe[0], &byte, 1) == 1);
            ::kill(child, SIGKILL);
            int status = 0;
            QCOMPARE(::waitpid(child, &status, 0), child);
            ::close(pipe[0]);
            ::close(pipe[1]);
            QVERIFY2(WIFSIGNALED(status), "the child could not write");
            const QByteArray content = contentOf(path);
            const bool isWhole = content == SettingsFile::bytes(both[0]) || content == SettingsFile::bytes(both[1]);
            QVERIFY2(isWhole, qPrintable(QStringLiteral("%1 bytes in round %2").arg(content.size()).arg(round)));
        }
    }

    void aLinkStaysALink()
    {
        const QString file = m_folder.filePath(QStringLiteral("file"));
        const QString link = m_folder.filePath(QStringLiteral("link"));
        QString error;
        QVERIFY(SettingsFile::write(file, settingsWith("1"), &error) && QFile::link(file, link));
        QVERIFY2(SettingsFile::write(link, settingsWith("2"), &error), qPrintable(error));
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(contentOf(file), SettingsFile::bytes(settingsWith("2")));
    }

private:
    QTemporaryDir m_folder;
};

QTEST_APPLESS_MAIN(tst_SettingsFile)
#include "tst_SettingsFile.moc"
