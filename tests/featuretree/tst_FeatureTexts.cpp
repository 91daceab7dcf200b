// SPDX-License-Identifier: MIT
#include <QTemporaryFile>

#include "FeatureTree/FeatureTexts.h"
#include "TestRows.h"

namespace {

const struct
{
    const char *name;
    QByteArray content;
    const char *text; ///< null: the table is empty
    const char *translation;
} Files[] = {
    {"UTF-8", "Gain>\xe5\xa2\x9e\xe7\x9b\x8a\n", "Gain", "\xe5\xa2\x9e\xe7\x9b\x8a"},
    {"last line without line feed", "plain\nB>2", "B", "2"},
    {"too many or no separators", "a>b>c\nplain\n\nA>1\n", "A", "1"},
    {"empty translation", "Gain>\n", "Gain", ""},
    {"carriage return and blanks stay", " A > 1 \r\n", " A ", " 1 \r"},
    {"the later line wins", "A>1\nA>2\n", "A", "2"},
    {"text ends at NUL", QByteArray("A\0x>1\0y\n", 8), "A", "1"},
    {"empty file", "", nullptr, nullptr},
    {"not UTF-8", "A>\xff\n", "A", "\xef\xbf\xbd"},
};

} // namespace

class tst_FeatureTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void files_data() { addRows(Files); }

    void files()
    {
        const auto &row = currentRow(Files);
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write(row.content);
        file.close();
        QHash<QString, QString> texts;
        if (row.text)
            texts.insert(QString::fromUtf8(row.text), QString::fromUtf8(row.translation));
        QCOMPARE(readFeatureTexts(file.fileName()), texts);
    }

    void missingFile() { QVERIFY(readFeatureTexts(QStringLiteral("/no/such/feature.txt")).isEmpty()); }
};

QTEST_GUILESS_MAIN(tst_FeatureTexts)
#include "tst_FeatureTexts.moc"
