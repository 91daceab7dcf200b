// SPDX-License-Identifier: MIT
#include "tests/gentl/Description.h"

#include <algorithm>
#include <cstring>
#include <dlfcn.h>

#include <QFile>
#include <QUrl>

using namespace GenTL;

namespace TestProducer {

namespace {

constexpr const char *FileFolder = "/descriptions as files/";
constexpr std::uint64_t TextBase = 0x100000;
constexpr std::uint64_t ZipBase = 0x8000000;
constexpr std::uint64_t NoBase = 0x4000000; // nothing can be read there

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::string hex(std::uint64_t number)
{
    return QByteArray::number(qulonglong(number), 16).toUpper().toStdString();
}

Url localUrl(const char *prefix, const std::string &file, std::uint64_t address, std::uint64_t size, int schemaMinor)
{
    const std::string schema = schemaMinor < 0 ? "" : "?SchemaVersion=1." + std::to_string(schemaMinor) + ".0";
    return {prefix + file + ";" + hex(address) + ";" + hex(size) + schema,
            URL_SCHEME_LOCAL,
            std::max(0, schemaMinor),
            file,
            address,
            size};
}

Url fileUrl(const std::string &name)
{
    const QString path = QString::fromStdString(producerFolder() + FileFolder + name + ".xml");
    // With three slashes, as users' reports have it
    const QByteArray encoded = "file://" + QUrl::fromLocalFile(path).path(QUrl::FullyEncoded).toUtf8();
    return {encoded.toStdString(), URL_SCHEME_FILE, 1, name + ".xml", 0, 0};
}

Url webUrl(const std::string &name)
{
    return {"http://localhost:9/" + name + ".xml", URL_SCHEME_HTTP, 1, name + ".xml", 0, 0};
}

bool readFrom(const QByteArray &data, std::uint64_t base, std::uint64_t address, void *buffer, std::size_t size)
{
    const auto length = std::uint64_t(data.size());
    if (address < base || size > length || address - base > length - size)
        return false;
    std::memcpy(buffer, data.constData() + (address - base), size);
    return true;
}

} // namespace

std::optional<Fact> Url::info(URL_INFO_CMD command) const
{
    switch (command) {
    case URL_INFO_URL:
        return TestProducer::text(text);
    case URL_INFO_SCHEMA_VER_MAJOR:
        return word(1);
    case URL_INFO_SCHEMA_VER_MINOR:
        return word(schemaMinor);
    case URL_INFO_FILE_VER_MAJOR:
        return word(1);
    case URL_INFO_FILE_VER_MINOR:
    case URL_INFO_FILE_VER_SUBMINOR:
        return word(0);
    case URL_INFO_FILE_REGISTER_ADDRESS:
        return longWord(address);
    case URL_INFO_FILE_SIZE:
        return longWord(size);
    case URL_INFO_SCHEME:
        return word(scheme);
    case URL_INFO_FILENAME:
        return TestProducer::text(file);
    default:
        return {};
    }
}

Description::Description(const QString &folder, const QString &name)
    : m_name(name.toStdString()), m_xml(contents(folder + name + QStringLiteral(".xml"))),
      m_zip(contents(QString::fromStdString(producerFolder() + FileFolder) + name + QStringLiteral(".zip")))
{ }

Url Description::local(const char *prefix, int schemaMinor) const
{
    return localUrl(prefix, m_name + ".xml", TextBase, std::uint64_t(m_xml.size()), schemaMinor);
}

bool Description::isMode(const std::string &mode)
{
    const char *const known[] = {"local", "plain", "zip", "file", "several", "http", "none"};
    return std::find(std::begin(known), std::end(known), mode) != std::end(known);
}

std::vector<Url> Description::urls(const std::string &mode) const
{
    if (mode == "plain")
        return {local("Local:", -1)};
    if (mode == "zip")
        return {localUrl("Local:///", m_name + ".zip", ZipBase, std::uint64_t(m_zip.size()), 1)};
    if (mode == "file")
        return {fileUrl(m_name)};
    if (mode == "several")
        return {webUrl(m_name), localUrl("Local:///", "old.xml", NoBase, 100, 0), local("local:///", 1)};
    if (mode == "http")
        return {webUrl(m_name)};
    if (mode == "none")
        return {};
    return {local("Local:///", 1)};
}

bool Description::read(std::uint64_t address, void *buffer, std::size_t size) const
{
    return readFrom(m_xml, TextBase, address, buffer, size) || readFrom(m_zip, ZipBase, address, buffer, size);
}

std::string producerPath()
{
    Dl_info info{};
    return dladdr(reinterpret_cast<const void *>(&producerFolder), &info) && info.dli_fname ? info.dli_fname : "";
}

std::string producerFolder()
{
    const std::string path = producerPath();
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash);
}

} // namespace TestProducer
