// SPDX-License-Identifier: MIT
#include <QSet>

#include "PanelBase/TranslationTables.h"
#include "support/Rows.h"

class tst_TranslationTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Two keys for one entry would make the way back ambiguous.
    void entryNamesAreComplete()
    {
        QCOMPARE(zhTransEnMap.size(), 34);
        QCOMPARE(zhTransEnMap.value("长帧"_s), "Long Frame"_s);
        QCOMPARE(zhTransEnMap.value("Full"_s), QString());
        const QStringList entries = zhTransEnMap.values();
        QCOMPARE(QSet<QString>(entries.begin(), entries.end()).size(), 34);
    }
};

QTEST_GUILESS_MAIN(tst_TranslationTables)
#include "tst_TranslationTables.moc"
