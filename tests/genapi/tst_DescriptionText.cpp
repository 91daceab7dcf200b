// SPDX-License-Identifier: MIT
#include <QTemporaryDir>
#include <QtTest>

#include <Base/GCException.h>

#include <utility>

#include "GenApi/src/DescriptionText.h"

using NodeEngine::descriptionText;
using NodeEngine::descriptionTextOfFile;

namespace {

const QByteArray Xml = "<?xml version=\"1.0\"?>\n<RegisterDescription/>";

QByteArray textOf(const QByteArray &bytes)
{
    return QByteArray::fromStdString(descriptionText(bytes.constData(), size_t(bytes.size())));
}

template <class Call>
QByteArray errorOf(const Call &call)
{
    try {
        call();
    } catch (const GenICam::RuntimeException &error) {
        return error.GetDescription();
    }
    return "nothing thrown";
}

QByteArray utf16(const QString &text, bool bigEndian)
{
    QByteArray bytes;
    for (QChar unit : text) {
        const char high = char(unit.unicode() >> 8);
        const char low = char(unit.unicode() & 0xFF);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

void appendNumber(QByteArray &bytes, quint32 value, int count)
{
    for (int i = 0; i < count; ++i)
        bytes += char(value >> (8 * i) & 0xFF);
}

quint32 crc32(const QByteArray &bytes)
{
    quint32 crc = 0xFFFFFFFF;
    for (char byte : bytes) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

// A zip archive of stored entries.
QByteArray zipped(const QList<std::pair<QByteArray, QByteArray>> &entries)
{
    QByteArray files;
    QByteArray directory;
    for (const auto &entry : entries) {
        QByteArray common; // what the local header and the directory share
        appendNumber(common, 20, 2);
        common += QByteArray(8, '\0');
        appendNumber(common, crc32(entry.second), 4);
        appendNumber(common, quint32(entry.second.size()), 4);
        appendNumber(common, quint32(entry.second.size()), 4);
        appendNumber(common, quint32(entry.first.size()), 2);
        appendNumber(common, 0, 2);
        directory += "PK\1\2";
        appendNumber(directory, 20, 2);
        directory += common;
        directory += QByteArray(10, '\0');
        appendNumber(directory, quint32(files.size()), 4);
        directory += entry.first;
        files += "PK\3\4" + common + entry.first + entry.second;
    }
    QByteArray end("PK\5\6");
    appendNumber(end, 0, 4);
    appendNumber(end, quint32(entries.size()), 2);
    appendNumber(end, quint32(entries.size()), 2);
    appendNumber(end, quint32(directory.size()), 4);
    appendNumber(end, quint32(files.size()), 4);
    appendNumber(end, 0, 2);
    return files + directory + end;
}

} // namespace

class tst_DescriptionText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wrappings_data();
    void wrappings();
    void encodings_data();
    void encodings();
    void archives_data();
    void archives();
    void errors_data();
    void errors();
    void anyBytesGiveValidUtf8();
    void files();
    void unreadableFiles();
};

void tst_DescriptionText::wrappings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray bare = "<RegisterDescription a=\"<?xm\"/>";
    QTest::newRow("plain") << Xml << Xml;
    QTest::newRow("UTF-8 mark") << "\xEF\xBB\xBF" + Xml << Xml;
    QTest::newRow("leading blanks") << " \r\n\t" + Xml << Xml;
    QTest::newRow("text line before") << "Device <A & B>, rev 2\n" + Xml << Xml;
    QTest::newRow("trailing NULs") << Xml + QByteArray(4096, '\0') << Xml;
    QTest::newRow("NUL inside") << QByteArray("<a>1\0002</a>", 11) << QByteArray("<a>1 2</a>");
    QTest::newRow("no declaration") << bare << bare;
    QTest::newRow("blanks, no declaration") << "\n " + bare << bare;
    QTest::newRow("declaration out of reach")
        << "<a>" + QByteArray(5000, 'x') + Xml << "<a>" + QByteArray(5000, 'x') + Xml;
}

void tst_DescriptionText::wrappings()
{
    QFETCH(QByteArray, bytes);
    QTEST(textOf(bytes), "expected");
}

void tst_DescriptionText::encodings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");
    const QString text = QStringLiteral("<a>\u00B0C \u00B5s \u66DD\u5149 \U0001F4F7</a>");
    const QByteArray latin1 = "<?xml encoding='%1'?><a>\xB0 \xB5 \x80</a>";
    const QString fromLatin1 = QStringLiteral("<?xml encoding='%1'?><a>\u00B0 \u00B5 \u20AC</a>");
    QTest::newRow("UTF-8") << text.toUtf8() << text;
    QTest::newRow("UTF-16 LE") << utf16(QChar(0xFEFF) + text, false) << text;
    QTest::newRow("UTF-16 BE") << utf16(QChar(0xFEFF) + text, true) << text;
    QTest::newRow("UTF-16 LE unmarked") << utf16(text, false) << text;
    QTest::newRow("UTF-16 BE unmarked") << utf16(text, true) << text;
    QTest::newRow("UTF-16 LE, odd NULs behind") << utf16(text, false) + QByteArray(6, '\0') << text;
    QTest::newRow("UTF-16 half pair") << utf16(QStringLiteral("<a>") + QChar(0xD83D) + QLatin1String("b"), false)
                                      << QStringLiteral("<a>\uFFFDb");
    for (const char *name : {"ISO-8859-1", "iso-8859-1", "Latin1", "Windows-1252"}) {
        QTest::newRow(name) << QByteArray(latin1).replace("%1", name)
                            << QString(fromLatin1).replace(QLatin1String("%1"), QLatin1String(name));
    }
    QTest::newRow("Latin-9 is not Latin-1") << QByteArray("<?xml encoding='ISO-8859-15'?>\xC2\xB0")
                                            << QStringLiteral("<?xml encoding='ISO-8859-15'?>\u00B0");
    QTest::newRow("stray Latin-1 in UTF-8")
        << QByteArray("<a>\xC2\xB0 \xB0 \xC3</a>") << QStringLiteral("<a>\u00B0 \u00B0 \u00C3</a>");
    QTest::newRow("overlong slash") << QByteArray("<a>\xC0\xAF") << QStringLiteral("<a>\u00C0\u00AF");
    QTest::newRow("surrogate") << QByteArray("<a>\xED\xA0\x80") << QStringLiteral("<a>\u00ED\u00A0\u20AC");
    QTest::newRow("above U+10FFFF") << QByteArray("<a>\xF4\x90\x80\x80")
                                    << QStringLiteral("<a>\u00F4\u0090\u20AC\u20AC");
    QTest::newRow("cut off at the end") << QByteArray("<a>\xE6\x9B") << QStringLiteral("<a>\u00E6\u203A");
}

void tst_DescriptionText::encodings()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, expected);
    QCOMPARE(textOf(bytes), expected.toUtf8());
}

void tst_DescriptionText::archives_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("one entry") << zipped({{"camera.xml", Xml}});
    QTest::newRow("upper case, in a folder") << zipped({{"a/CAMERA.XML", Xml}});
    QTest::newRow("among others") << zipped(
        {{"readme.txt", "<no/>"}, {"xml", "<no/>"}, {"b.xml", Xml}, {"c.xml", "<no/>"}});
    QTest::newRow("resource fork first") << zipped({{"__MACOSX/._b.xml", "<no/>"}, {"b.xml", Xml}});
    QTest::newRow("resource fork in a folder") << zipped({{"a/__MACOSX/b.xml", "<no/>"}, {"b.xml", Xml}});
    QTest::newRow("with mark and NULs") << zipped({{"camera.xml", "\xEF\xBB\xBF" + Xml + QByteArray(3, '\0')}});
    QTest::newRow("NULs behind the archive") << zipped({{"camera.xml", Xml}}) + QByteArray(300, '\0');
}

void tst_DescriptionText::archives()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(textOf(bytes), Xml);
}

void tst_DescriptionText::errors_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("part");
    QByteArray damaged = zipped({{"camera.xml", Xml}});
    damaged[50] = '!';
    QTest::newRow("empty") << QByteArray() << QByteArray("holds no XML");
    QTest::newRow("NULs only") << QByteArray(64, '\0') << QByteArray("holds no XML");
    QTest::newRow("no markup") << QByteArray("\xFF\xFE\1") << QByteArray("holds no XML");
    QTest::newRow("cut archive") << zipped({{"camera.xml", Xml}}).left(60) << QByteArray("cannot be opened");
    QTest::newRow("damaged archive") << damaged << QByteArray("damaged: CRC error");
    QTest::newRow("empty archive") << zipped({}) << QByteArray("holds no .xml file");
    QTest::newRow("archive of others") << zipped({{"a.txt", Xml}}) << QByteArray("holds no .xml file");
    QTest::newRow("archive of an archive")
        << zipped({{"a.xml", zipped({{"b.txt", ""}})}}) << QByteArray("holds no XML");
}

void tst_DescriptionText::errors()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, part);
    const QByteArray error = errorOf([&bytes] { textOf(bytes); });
    QVERIFY2(error.contains(part), error.constData());
}

void tst_DescriptionText::anyBytesGiveValidUtf8()
{
    quint32 state = 1;
    for (int round = 0; round < 500; ++round) {
        QByteArray bytes = round % 2 == 0 ? "<" : "<?xml encoding='latin1'";
        for (int i = 0; i < 200; ++i) {
            state = state * 1664525 + 1013904223;
            bytes += char(state >> 24);
        }
        const QByteArray text = textOf(bytes);
        QVERIFY(!text.contains('\0'));
        QCOMPARE(QString::fromUtf8(text).toUtf8(), text);
    }
}

void tst_DescriptionText::files()
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("\u66DD\u5149.zip")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const QByteArray large = Xml + "<!--" + QByteArray(300000, 'x') + "-->";
    QVERIFY(file.write(zipped({{"camera.xml", large}})) > large.size());
    file.close();
    QCOMPARE(QByteArray::fromStdString(descriptionTextOfFile(QFile::encodeName(file.fileName()).toStdString())), large);
}

void tst_DescriptionText::unreadableFiles()
{
    QTemporaryDir folder;
    const std::string missing = folder.filePath(QStringLiteral("missing.xml")).toStdString();
    const QByteArray absent = errorOf([&] { descriptionTextOfFile(missing); });
    QVERIFY2(absent.contains("missing.xml' cannot be read: No such file"), absent.constData());
    const QByteArray notAFile = errorOf([&] { descriptionTextOfFile(folder.path().toStdString()); });
    QVERIFY2(notAFile.contains("cannot be read: Is a directory"), notAFile.constData());
    QFile empty(QString::fromStdString(missing));
    QVERIFY(empty.open(QIODevice::WriteOnly));
    const QByteArray noText = errorOf([&] { descriptionTextOfFile(missing); });
    QVERIFY2(noText.contains("missing.xml' cannot be loaded: The description holds no XML."), noText.constData());
}

QTEST_APPLESS_MAIN(tst_DescriptionText)
#include "tst_DescriptionText.moc"
