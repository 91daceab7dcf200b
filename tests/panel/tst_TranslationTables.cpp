// SPDX-License-Identifier: MIT
#include <QSet>
#include <QtTest>

#include "ParamterWidget/TranslationTables.h"

class tst_TranslationTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void entryNames_data();
    void entryNames();
    void entryNamesAreComplete();
    void showTypes();
};

void tst_TranslationTables::entryNames_data()
{
    QTest::addColumn<QString>("chinese");
    QTest::addColumn<QString>("entry");
    QTest::newRow("first") << QStringLiteral("连续触发") << QStringLiteral("ContinuousTrigger");
    QTest::newRow("last") << QStringLiteral("全速") << QStringLiteral("Full");
    QTest::newRow("digits") << QStringLiteral("2相4递增") << QStringLiteral("OneCycleFourPulse");
    QTest::newRow("entry with a blank") << QStringLiteral("长帧") << QStringLiteral("Long Frame");
    QTest::newRow("English key") << QStringLiteral("Off") << QStringLiteral("Off");
    QTest::newRow("entry name is no key") << QStringLiteral("Full") << QString();
    QTest::newRow("other case") << QStringLiteral("off") << QString();
    QTest::newRow("empty") << QString() << QString();
}

void tst_TranslationTables::entryNames()
{
    QFETCH(QString, chinese);
    QTEST(zhTransEnMap.value(chinese), "entry");
}

/// Two keys for one entry would make the way back ambiguous.
void tst_TranslationTables::entryNamesAreComplete()
{
    QCOMPARE(zhTransEnMap.size(), 34);
    const QStringList entries = zhTransEnMap.values();
    QCOMPARE(QSet<QString>(entries.begin(), entries.end()).size(), 34);
}

void tst_TranslationTables::showTypes()
{
    QList<int> numbers = imgShowTypeMap.values();
    std::sort(numbers.begin(), numbers.end());
    QCOMPARE(numbers, QList<int>({1, 2, 3, 4, 5, 6, 7, 8}));
    QCOMPARE(imgShowTypeMap.value(QStringLiteral("2D Left")), 1);
    QCOMPARE(imgShowTypeMap.value(QStringLiteral("2.5D Right Reflex")), 8);
}

QTEST_GUILESS_MAIN(tst_TranslationTables)
#include "tst_TranslationTables.moc"
