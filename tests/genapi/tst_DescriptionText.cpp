// SPDX-License-Identifier: MIT
#include <QTemporaryDir>
#include <QtTest>

#include <Base/GCException.h>

#include <utility>

#include "GenApi/src/DescriptionText.h"
#include "TableRows.h"

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

// Each number in as many bytes as stands behind it.
QByteArray numbers(std::initializer_list<std::pair<quint64, int>> values)
{
    QByteArray bytes;
    for (const auto &[value, count] : values) {
        for (int i = 0; i < count; ++i)
            bytes += char(value >> (8 * i) & 0xFF);
    }
    return bytes;
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
    for (const auto &[name, content] : entries) {
        const quint64 size = quint64(content.size());
        const QByteArray common = // what the local header and the directory share
            numbers({{20, 2}, {0, 8}, {crc32(content), 4}, {size, 4}, {size, 4}, {quint64(name.size()), 2}, {0, 2}});
        const QByteArray place = numbers({{quint64(files.size()), 4}});
        directory += "PK\1\2" + numbers({{20, 2}}) + common + QByteArray(10, '\0') + place + name;
        files += "PK\3\4" + common + name + content;
    }
    const quint64 count = quint64(entries.size());
    return files + directory + "PK\5\6"
        + numbers({{0, 4}, {count, 2}, {count, 2}, {quint64(directory.size()), 4}, {quint64(files.size()), 4}, {0, 2}});
}

} // namespace

class tst_DescriptionText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wrappings()
    {
        const QByteArray bare = "<RegisterDescription a=\"<?xm\"/>";
        const QByteArray outOfReach = "<a>" + QByteArray(5000, 'x') + Xml;
        const std::pair<QByteArray, QByteArray> rows[] = {{Xml, Xml},
                                                          {"\xEF\xBB\xBF" + Xml, Xml},
                                                          {" \r\n\t" + Xml, Xml},
                                                          {"Device <A & B>, rev 2\n" + Xml, Xml},
                                                          {Xml + QByteArray(4096, '\0'), Xml},
                                                          {QByteArray("<a>1\0002</a>", 11), "<a>1 2</a>"},
                                                          {bare, bare},
                                                          {"\n " + bare, bare},
                                                          {outOfReach, outOfReach}};
        for (const auto &[bytes, expected] : rows)
            COMPARE_ROW(bytes.toStdString(), textOf(bytes).toStdString(), expected.toStdString());
    }

    void encodings()
    {
        const QString text = QStringLiteral("<a>\u00B0C \u00B5s \u66DD\u5149 \U0001F4F7</a>");
        const QString halfPair = QStringLiteral("<a>") + QChar(0xD83D) + QLatin1String("b");
        const std::pair<QByteArray, QString> rows[] = {
            {text.toUtf8(), text},
            {utf16(QChar(0xFEFF) + text, false), text},
            {utf16(QChar(0xFEFF) + text, true), text},
            {utf16(text, false), text},
            {utf16(text, true), text},
            {utf16(text, false) + QByteArray(6, '\0'), text},
            {utf16(halfPair, false), QStringLiteral("<a>\uFFFDb")},
            {"<?xml encoding='ISO-8859-15'?>\xC2\xB0", QStringLiteral("<?xml encoding='ISO-8859-15'?>\u00B0")},
            // what is no UTF-8 is taken for Latin-1
            {"<a>\xC2\xB0 \xB0 \xC3</a>", QStringLiteral("<a>\u00B0 \u00B0 \u00C3</a>")},
            {"<a>\xC0\xAF", QStringLiteral("<a>\u00C0\u00AF")},
            {"<a>\xED\xA0\x80", QStringLiteral("<a>\u00ED\u00A0\u20AC")},
            {"<a>\xF4\x90\x80\x80", QStringLiteral("<a>\u00F4\u0090\u20AC\u20AC")},
            {"<a>\xE6\x9B", QStringLiteral("<a>\u00E6\u203A")},
            {QByteArray("<?xml encoding='latin1'\0\x81", 25), QStringLiteral("<?xml encoding='latin1' \u0081")}};
        for (const auto &[bytes, expected] : rows)
            COMPARE_ROW(bytes.toHex(' ').toStdString(), textOf(bytes).toStdString(), expected.toStdString());
        for (const char *name : {"ISO-8859-1", "iso-8859-1", "Latin1", "Windows-1252"}) {
            const QByteArray declared = QByteArray("<?xml encoding='") + name + "'?>";
            COMPARE_ROW(name, textOf(declared + "\xB0 \xB5 \x80").toStdString(),
                        (declared + "\xC2\xB0 \xC2\xB5 \xE2\x82\xAC").toStdString());
        }
    }

    void archives()
    {
        const QByteArray rows[] = {
            zipped({{"camera.xml", Xml}}),
            zipped({{"a/CAMERA.XML", Xml}}),
            zipped({{"readme.txt", "<no/>"}, {"xml", "<no/>"}, {"b.xml", Xml}, {"c.xml", "<no/>"}}),
            zipped({{"__MACOSX/._b.xml", "<no/>"}, {"b.xml", Xml}}),
            zipped({{"a/__MACOSX/b.xml", "<no/>"}, {"b.xml", Xml}}),
            zipped({{"camera.xml", "\xEF\xBB\xBF" + Xml + QByteArray(3, '\0')}}),
            zipped({{"camera.xml", Xml}}) + QByteArray(300, '\0')};
        for (const QByteArray &bytes : rows)
            COMPARE_ROW(bytes.toStdString(), textOf(bytes).toStdString(), Xml.toStdString());
    }

    void errors()
    {
        QByteArray damaged = zipped({{"camera.xml", Xml}});
        damaged[50] = '!';
        const std::pair<QByteArray, const char *> rows[] = {
            {"", "holds no XML"},
            {QByteArray(64, '\0'), "holds no XML"},
            {"\xFF\xFE\1", "holds no XML"},
            {zipped({{"camera.xml", Xml}}).left(60), "cannot be opened"},
            {damaged, "damaged: CRC error"},
            {zipped({}), "holds no .xml file"},
            {zipped({{"a.txt", Xml}}), "holds no .xml file"},
            {zipped({{"a.xml", zipped({{"b.txt", ""}})}}), "holds no XML"}};
        for (const auto &row : rows) {
            const QByteArray error = errorOf([&row] { textOf(row.first); });
            QVERIFY2(error.contains(row.second), (row.second + (" is not in: " + error)).constData());
        }
    }

    void files()
    {
        QTemporaryDir folder;
        const QString name = folder.filePath(QStringLiteral("\u66DD\u5149.zip"));
        const auto text = [](const QString &path) {
            return QByteArray::fromStdString(descriptionTextOfFile(QFile::encodeName(path).toStdString()));
        };
        const auto error = [&](const QString &path) { return errorOf([&] { text(path); }); };
        QVERIFY2(error(name).contains(".zip' cannot be read: No such file"), error(name).constData());
        QVERIFY2(error(folder.path()).contains("cannot be read: Is a directory"), error(folder.path()).constData());
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY2(error(name).contains(".zip' cannot be loaded: The description holds no XML."),
                 error(name).constData());
        const QByteArray large = Xml + "<!--" + QByteArray(300000, 'x') + "-->";
        QVERIFY(file.write(zipped({{"camera.xml", large}})) > large.size());
        file.close();
        QCOMPARE(text(name), large);
    }
};

QTEST_APPLESS_MAIN(tst_DescriptionText)
#include "tst_DescriptionText.moc"
