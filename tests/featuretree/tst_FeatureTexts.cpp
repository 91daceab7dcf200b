// SPDX-License-Identifier: MIT
#include <QTemporaryFile>
#include <QtTest>

#include "FeatureTree/FeatureTexts.h"

using Texts = QHash<QString, QString>;

namespace {

Texts pair(const char *text, const char *translation)
{
    return {{QString::fromUtf8(text), QString::fromUtf8(translation)}};
}

} // namespace

class tst_FeatureTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lines_data();
    void lines();
    void missingFile();
};

void tst_FeatureTexts::lines_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<Texts>("texts");
    QTest::newRow("pair") << QByteArray("Gain>X\n") << pair("Gain", "X");
    QTest::newRow("UTF-8") << QByteArray("Gain>\xe5\xa2\x9e\xe7\x9b\x8a\n") << pair("Gain", "\xe5\xa2\x9e\xe7\x9b\x8a");
    QTest::newRow("last line without line feed") << QByteArray("plain\nB>2") << pair("B", "2");
    QTest::newRow("too many or no separators") << QByteArray("a>b>c\nplain\n\nA>1\n") << pair("A", "1");
    QTest::newRow("empty translation") << QByteArray("Gain>\n") << pair("Gain", "");
    QTest::newRow("carriage return and blanks stay") << QByteArray(" A > 1 \r\n") << pair(" A ", " 1 \r");
    QTest::newRow("the later line wins") << QByteArray("A>1\nA>2\n") << pair("A", "2");
    QTest::newRow("text ends at NUL") << QByteArray("A\0x>1\0y\n", 8) << pair("A", "1");
    QTest::newRow("empty file") << QByteArray() << Texts{};
    QTest::newRow("not UTF-8") << QByteArray("A>\xff\n") << pair("A", "\xef\xbf\xbd");
}

void tst_FeatureTexts::lines()
{
    QFETCH(QByteArray, content);
    QFETCH(Texts, texts);
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write(content);
    file.close();
    QCOMPARE(readFeatureTexts(file.fileName()), texts);
}

void tst_FeatureTexts::missingFile()
{
    QVERIFY(readFeatureTexts(QStringLiteral("/no/such/feature.txt")).isEmpty());
}

QTEST_GUILESS_MAIN(tst_FeatureTexts)
#include "tst_FeatureTexts.moc"
