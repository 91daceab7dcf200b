// SPDX-License-Identifier: MIT
#include "DescriptionArchive.h"

#include <Base/GCException.h>

#include <zip.h>

#include <algorithm>
#include <memory>

namespace NodeEngine {

namespace {

using Archive = std::unique_ptr<zip_t, decltype(&zip_discard)>;
using Entry = std::unique_ptr<zip_file_t, decltype(&zip_fclose)>;

class ZipError
{
public:
    ZipError() { zip_error_init(&m_error); }
    ~ZipError() { zip_error_fini(&m_error); }
    ZipError(const ZipError &) = delete;
    ZipError &operator=(const ZipError &) = delete;

    zip_error_t *get() { return &m_error; }
    const char *text() { return zip_error_strerror(&m_error); }

private:
    zip_error_t m_error;
};

Archive openedArchive(std::string_view bytes)
{
    ZipError error;
    zip_source_t *source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, error.get());
    Archive archive(source ? zip_open_from_source(source, ZIP_RDONLY, error.get()) : nullptr, &zip_discard);
    if (!archive) {
        zip_source_free(source);
        throw RUNTIME_EXCEPTION("The zipped description cannot be opened: %s", error.text());
    }
    return archive;
}

bool isDescription(std::string_view name)
{
    const auto isSame = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; };
    const std::string_view ending = ".xml";
    return name.size() >= ending.size()
        && std::equal(ending.rbegin(), ending.rend(), name.rbegin(), [&](char a, char b) { return isSame(b, a); })
        && name.substr(0, 9) != "__MACOSX/" && name.find("/__MACOSX/") == std::string_view::npos;
}

Entry openedDescription(zip_t *archive)
{
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        const auto index = static_cast<zip_uint64_t>(i);
        const char *name = zip_get_name(archive, index, ZIP_FL_ENC_GUESS);
        if (!name || !isDescription(name))
            continue;
        Entry entry(zip_fopen_index(archive, index, 0), &zip_fclose);
        if (!entry)
            throw RUNTIME_EXCEPTION("'%s' in the zipped description cannot be opened: %s", name, zip_strerror(archive));
        return entry;
    }
    throw RUNTIME_EXCEPTION("The zipped description holds no .xml file.");
}

} // namespace

bool isArchive(std::string_view bytes)
{
    const std::string_view begin = bytes.substr(0, 4);
    return begin == std::string_view("PK\3\4") || begin == std::string_view("PK\5\6");
}

std::string descriptionInArchive(std::string_view archive, std::size_t largestSize)
{
    const Archive opened = openedArchive(archive);
    const Entry entry = openedDescription(opened.get());
    std::string text;
    char block[64 * 1024];
    zip_int64_t length;
    while ((length = zip_fread(entry.get(), block, sizeof block)) > 0) {
        text.append(block, static_cast<std::size_t>(length));
        if (text.size() > largestSize)
            throw RUNTIME_EXCEPTION("The zipped description is larger than %zu MiB.", largestSize >> 20);
    }
    if (length < 0)
        throw RUNTIME_EXCEPTION("The zipped description is damaged: %s", zip_file_strerror(entry.get()));
    return text;
}

} // namespace NodeEngine
