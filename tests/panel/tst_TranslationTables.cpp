// SPDX-License-Identifier: MIT
#include <QSet>
#include <QtTest>

#include "ParamterWidget/TranslationTables.h"

class tst_TranslationTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void entryNamesAreComplete();
    void showTypes();
};

/// Two keys for one entry would make the way back ambiguous.
void tst_TranslationTables::entryNamesAreComplete()
{
    QCOMPARE(zhTransEnMap.size(), 34);
    QCOMPARE(zhTransEnMap.value(QStringLiteral("长帧")), QStringLiteral("Long Frame"));
    QCOMPARE(zhTransEnMap.value(QStringLiteral("Full")), QString());
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
