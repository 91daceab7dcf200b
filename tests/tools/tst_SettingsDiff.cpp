// SPDX-License-Identifier: MIT
#include "Tools/Place.h"
#include "Tools/SettingsDiff.h"

#include <QElapsedTimer>
#include <QTest>

namespace {

Persistence::Settings settingsOf(const std::vector<const char *> &assignments)
{
    Persistence::Settings settings;
    for (const char *text : assignments)
        settings.entries.push_back(*parseAssignment(text));
    return settings;
}

QString textOf(const SettingsDiff &diff)
{
    const QString signs = QStringLiteral("=!<>");
    QStringList rows;
    for (const SettingsDiff::Row &row : diff.rows())
        rows +=
            QStringLiteral("%1[%2]%3%4%5")
                .arg(row.feature, row.position, row.left, QString(signs.at(static_cast<int>(row.state))), row.right);
    return rows.join(QLatin1Char(' '));
}

} // namespace

class tst_SettingsDiff : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsOfTheSameValueAreEqual()
    {
        struct Case
        {
            const char *left;
            const char *right;
            bool isSame;
        };
        const Case cases[] = {
            {"16", "0x10", true},
            {"0xAB", "0xab", true},
            {"1e+06", "1000000", true},
            {"0.00001", "1e-05", true},
            {"-1", "0xffffffffffffffff", true},
            {"7", "007", false},
            {"1.1", "1.10", false},
            {"1", "2", false},
            {"", "0", false},
            {"Mono8", "mono8", false},
            {"9223372036854775807", "9223372036854775806", false},
            {"nan", "nan", true},
            {"0x", "0", false},
            {"-0x1", "-1", false},
            {"1.5e3", "1500", true},
            {"1.", "1", false},
            {"1e5x", "1e5", false},
        };
        for (const Case &one : cases) {
            const QByteArray name = QByteArray(one.left) + " and " + one.right;
            QVERIFY2(isSameSettingText(one.left, one.right) == one.isSame, name);
            QVERIFY2(isSameSettingText(one.right, one.left) == one.isSame, name);
        }
    }

    void rowsAreInTheOrderOfBothSides()
    {
        const Persistence::Settings left = settingsOf({"A=1", "G[S=0]=1", "G[S=1]=2", "S=0", "B=1", "S=1", "C=1"});
        const Persistence::Settings right = settingsOf({"X=1", "A=0x1", "G[S=1]=3", "Y=2", "S=1", "B=2"});
        const SettingsDiff diff(left, right);
        QCOMPARE(textOf(diff), QStringLiteral("X[]>1 A[]1=0x1 G[S=0]1< G[S=1]2!3 Y[]>2 B[]1!2 S[]1=1 C[]1<"));
        QVERIFY(!diff.isEqual());
        QVERIFY(SettingsDiff(left, left).isEqual());
    }

    void placesAreReadAndWritten()
    {
        for (const char *text : {"Gain", "Gain[S=0]", "Gain[S=A,T=-1]"}) {
            const auto place = parsePlace(text);
            QVERIFY2(place, text);
            QCOMPARE(placeText(place->feature, place->selection), std::string(text));
            const auto entry = parseAssignment(std::string(text) + "=a]=b[c=d]");
            QVERIFY2(entry && entry->value == "a]=b[c=d]" && entry->place() == place->place(), text);
        }
        for (const char *text : {"", "[A=1]", "G[", "G[]", "G[A]", "G[A=]", "G[=1]", "G]", "G[A=1]x"})
            QVERIFY2(!parsePlace(text), text);
        for (const char *text : {"", "Gain", "=1", "[A=1]=2", "G[A=1]"})
            QVERIFY2(!parseAssignment(text), text);
    }

    void manyRowsAreComparedQuickly()
    {
        Persistence::Settings left;
        for (int i = 0; i < 5000; ++i)
            left.entries.push_back({"Feature" + std::to_string(i / 10), {{"S", std::to_string(i % 10)}}, "0x10"});
        Persistence::Settings right = left;
        for (Persistence::Entry &entry : right.entries)
            entry.value = "16";
        QElapsedTimer timer;
        timer.start();
        const SettingsDiff diff(left, right);
        qInfo("5000 rows, all written in another way: %lld ms", timer.elapsed());
        QVERIFY(diff.isEqual());
        QVERIFY2(timer.elapsed() < 2000, "comparing is slower than the number of rows explains");
    }
};

QTEST_APPLESS_MAIN(tst_SettingsDiff)
#include "tst_SettingsDiff.moc"
