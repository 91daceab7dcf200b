// SPDX-License-Identifier: MIT
#include <QSet>
#include <QtTest>

#include "PanelBase/TranslationTables.h"

class tst_TranslationTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void entryNamesAreComplete();
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

QTEST_GUILESS_MAIN(tst_TranslationTables)
#include "tst_TranslationTables.moc"
