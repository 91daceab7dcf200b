// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QByteArray>

#include "tests/gentl/Answer.h"

namespace TestProducer {

/// Where a description is found.
struct Url
{
    std::string text;
    GenTL::URL_SCHEME_IDS scheme = GenTL::URL_SCHEME_LOCAL;
    int schemaMinor = 1;
    std::string file;
    std::uint64_t address = 0;
    std::uint64_t size = 0;

    /// Nothing for commands that it does not know.
    std::optional<Fact> info(GenTL::URL_INFO_CMD command) const;
};

/// The node map of a module as its port hands it out: above the registers, as text and zipped. The files lie beside the
/// producer, too.
class Description
{
public:
    /// `name`: of a resource, without its ending.
    Description(const QString &folder, const QString &name);
    /// Hands out another text than the resource's.
    void replace(const QByteArray &xml) { m_xml = xml; }

    const QByteArray &xml() const { return m_xml; }
    /// What the port tells, after the mode that the script has set: "local" (with ///), "plain" (without), "zip",
    /// "file", "several" (a useless one first), "http" or "none".
    std::vector<Url> urls(const std::string &mode) const;
    /// False when the address is none of the description's.
    bool read(std::uint64_t address, void *buffer, std::size_t size) const;

    /// Modes that urls() knows.
    static bool isMode(const std::string &mode);

private:
    Url local(const char *prefix, int schemaMinor) const;

    const std::string m_name;
    QByteArray m_xml;
    QByteArray m_zip;
};

/// The directory in which the producer's file lies, and that file.
std::string producerFolder();
std::string producerPath();

} // namespace TestProducer
