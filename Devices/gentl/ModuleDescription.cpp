// SPDX-License-Identifier: MIT
#include "Devices/gentl/ModuleDescription.h"

#include <algorithm>

#include <QFile>
#include <QRegularExpression>

#include "Devices/SilenceGuard.h"
#include "Features/NodeGuard.h"

namespace {

constexpr uint64_t LargestDescription = 64 * 1024 * 1024; // bytes; real ones stay below ten million
/// Some producers refuse to read more at once than their camera sends at once.
constexpr int64_t SmallRead = 512; // bytes

[[noreturn]] void fail(const QString &sentence)
{
    throw std::runtime_error(sentence.toStdString());
}

uint64_t hexNumber(const QString &text)
{
    QString digits = text.trimmed();
    if (digits.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        digits.remove(0, 2);
    bool isNumber = false;
    const qulonglong number = digits.toULongLong(&isNumber, 16);
    if (!isNumber)
        fail(QStringLiteral("“%1” is no hexadecimal number").arg(text));
    return number;
}

int schemaOf(const QString &query)
{
    static const QRegularExpression Form(QStringLiteral("SchemaVersion=(\\d{1,3})\\.(\\d{1,3})(?:\\.(\\d{1,3}))?"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch parts = Form.match(query);
    return (parts.captured(1).toInt() * 1000 + parts.captured(2).toInt()) * 1000 + parts.captured(3).toInt();
}

/// Without the slashes that may stand before a name.
QString withoutSlashes(QString text)
{
    while (text.startsWith(QLatin1Char('/')))
        text.remove(0, 1);
    return text;
}

PortUrl inRegisters(const QString &rest)
{
    const QStringList parts = withoutSlashes(rest).split(QLatin1Char(';'));
    if (parts.size() < 3)
        fail(QStringLiteral("it tells no address and length"));
    PortUrl url;
    url.address = hexNumber(parts[1]);
    url.length = hexNumber(parts[2]);
    if (url.length == 0 || url.length > LargestDescription)
        fail(QStringLiteral("it tells a length of %1 bytes").arg(url.length));
    return url;
}

/// `file:///dir/x.xml`, `file://localhost/dir/x.xml`, `file:/dir/x.xml`, `file:x.xml`; `C|` stands for `C:`.
PortUrl inFile(QString rest, const QDir &directory)
{
    static const QRegularExpression Host(QStringLiteral("^//(?:localhost)?(?=/)"));
    static const QRegularExpression Drive(QStringLiteral("^/*([A-Za-z])[|:]"));
    rest = QString::fromUtf8(QByteArray::fromPercentEncoding(rest.toUtf8()));
    rest.replace(QLatin1Char('\\'), QLatin1Char('/'));
    rest.remove(Host).replace(Drive, QStringLiteral("\\1:"));
    PortUrl url;
    url.place = PortUrl::Place::File;
    url.path = QDir::cleanPath(directory.absoluteFilePath(rest));
    return url;
}

QByteArray fileContents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail(QStringLiteral("%1: %2").arg(path, file.errorString()));
    if (file.size() > static_cast<qint64>(LargestDescription))
        fail(QStringLiteral("%1 is larger than 64 MB").arg(path));
    return file.readAll();
}

/// Throws what the last port throws.
QByteArray registerContents(const PortUrl &url, const DescriptionPorts &ports)
{
    const auto address = static_cast<int64_t>(url.address);
    const auto length = static_cast<int64_t>(url.length);
    QByteArray contents(static_cast<int>(length), '\0');
    for (const std::unique_ptr<GenApi::IPort> &port : ports) {
        if (guardSilence([&] { port->Read(contents.data(), address, length); }))
            return contents;
    }
    for (int64_t done = 0; done < length; done += SmallRead)
        ports.back()->Read(contents.data() + done, address + done, std::min(SmallRead, length - done));
    return contents;
}

/// The zeros that may fill up the last word of XML.
QByteArray withoutFinalZeros(QByteArray text)
{
    while (text.endsWith('\0'))
        text.chop(1);
    return text;
}

QByteArray contentsOf(const PortUrl &url, const DescriptionPorts &ports)
{
    const QByteArray contents =
        url.place == PortUrl::Place::File ? fileContents(url.path) : registerContents(url, ports);
    return contents.startsWith("PK") ? contents : withoutFinalZeros(contents);
}

} // namespace

PortUrl parsePortUrl(const QByteArray &url, const QDir &directory)
{
    const QString text = textForPeople(url).trimmed();
    const int query = text.indexOf(QLatin1Char('?'));
    const QString target = query < 0 ? text : text.left(query);
    const QString scheme = target.section(QLatin1Char(':'), 0, 0).toLower();
    const QString rest = target.section(QLatin1Char(':'), 1);
    PortUrl parsed;
    if (scheme == QLatin1String("local"))
        parsed = inRegisters(rest);
    else if (scheme == QLatin1String("file"))
        parsed = inFile(rest, directory);
    else if (scheme == QLatin1String("http") || scheme == QLatin1String("https"))
        fail(QStringLiteral("descriptions are not loaded from the network; save it to a file"));
    else
        fail(QStringLiteral("such URLs are not known"));
    parsed.schema = query < 0 ? 0 : schemaOf(text.mid(query));
    return parsed;
}

std::vector<QByteArray> portUrls(const Producer &gentl, GenTL::PORT_HANDLE port)
{
    constexpr std::uint32_t Most = 100;
    std::vector<QByteArray> urls;
    std::uint32_t number = 0;
    if (gentl->GCGetNumPortURLs(port, &number) != GenTL::GC_ERR_SUCCESS)
        number = 0;
    for (std::uint32_t index = 0; index < std::min(number, Most); ++index) {
        const auto ask = [&](GenTL::INFO_DATATYPE *type, void *buffer, std::size_t *size) {
            return gentl->GCGetPortURLInfo(port, index, GenTL::URL_INFO_URL, type, buffer, size);
        };
        if (const QByteArray url = askInfo(ask).text(); !url.isEmpty())
            urls.push_back(url);
    }
    const auto schema = [](const QByteArray &url) { return schemaOf(textForPeople(url)); };
    std::stable_sort(urls.begin(), urls.end(),
                     [&](const QByteArray &one, const QByteArray &other) { return schema(one) > schema(other); });
    if (!urls.empty())
        return urls;
    const auto ask = [&](GenTL::INFO_DATATYPE *, void *buffer, std::size_t *size) {
        return gentl->GCGetPortURL(port, static_cast<char *>(buffer), size);
    };
    const QByteArray url = gentl.check("GCGetPortURL", askInfo(ask)).text();
    if (!url.isEmpty())
        urls.push_back(url);
    return urls;
}

void useDescription(const std::vector<QByteArray> &urls, const QDir &directory, const DescriptionPorts &ports,
                    const std::function<void(const QByteArray &description, const PortUrl &url)> &use,
                    const std::function<void(const QString &line)> &report)
{
    for (const QByteArray &url : urls) {
        QString error;
        const auto attempt = [&] {
            const PortUrl parsed = parsePortUrl(url, directory);
            use(contentsOf(parsed, ports), parsed);
        };
        if (guarded(&error, attempt))
            return;
        report(QStringLiteral("the description at %1 cannot be used: %2").arg(textForPeople(url), error));
    }
    fail(urls.empty() ? QStringLiteral("the producer tells no place of its description")
                      : QStringLiteral("none of the places of its description can be used"));
}
