// SPDX-License-Identifier: MIT
#include "Devices/gentl/Producer.h"

#include <dlfcn.h>
#include <elf.h>

#include <QFile>
#include <QFileInfo>

#include "Devices/gentl/SharedObjects.h"

namespace {

/// Where the makers' libraries bring other versions of libraries that this program has, too, they use their own. The
/// sanitizers cannot do with that.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int OwnSymbols = 0;
#else
constexpr int OwnSymbols = RTLD_DEEPBIND;
#endif

[[noreturn]] void fail(const QString &sentence)
{
    throw std::runtime_error(sentence.toStdString());
}

/// What tells of which kind a library is: magic number, width, byte order (e_ident) and processor.
struct LibraryKind
{
    QByteArray magic;
    char width = 0;
    char order = 0;
    quint16 machine = 0;

    bool isLibrary() const { return magic == QByteArray(ELFMAG, SELFMAG); }
    bool runsLike(const LibraryKind &other) const
    {
        return width == other.width && order == other.order && machine == other.machine;
    }
};

LibraryKind kindOf(const QString &file)
{
    QFile library(file);
    constexpr int MachineEnd = EI_NIDENT + 2 * sizeof(quint16); // both widths of file have it there
    const QByteArray begin = library.open(QIODevice::ReadOnly) ? library.read(MachineEnd) : QByteArray();
    if (begin.size() < MachineEnd)
        return {};
    LibraryKind kind{begin.left(SELFMAG), begin[EI_CLASS], begin[EI_DATA], 0};
    memcpy(&kind.machine, begin.constData() + EI_NIDENT + sizeof(quint16), sizeof kind.machine);
    return kind;
}

/// Never destroyed: threads that are left alone may come back at the very end.
SharedObjects<QString, Producer> &loadedProducers()
{
    static auto *const Loaded = new SharedObjects<QString, Producer>;
    return *Loaded;
}

} // namespace

QString libraryProblem(const QString &file)
{
    if (!QFileInfo(file).isFile())
        return QStringLiteral("there is no such file");
    const LibraryKind kind = kindOf(file);
    if (!kind.isLibrary())
        return QStringLiteral("it is no shared library");
    if (!kind.runsLike(kindOf(QStringLiteral("/proc/self/exe"))))
        return QStringLiteral("it is made for another kind of processor than this program");
    return {};
}

std::shared_ptr<Producer> Producer::load(const QString &file)
{
    const QString canonical = QFileInfo(file).canonicalFilePath();
    const QString problem = libraryProblem(file);
    if (!problem.isEmpty())
        fail(problem);
    return loadedProducers().get(canonical, [&canonical] {
        std::unique_ptr<Producer> producer(new Producer(canonical));
        producer->open();
        return producer;
    });
}

Producer::Producer(const QString &canonicalFile) : m_file(canonicalFile)
{
    const QByteArray path = QFile::encodeName(m_file);
    void *library = dlopen(path.constData(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE | OwnSymbols);
    if (!library)
        fail(QStringLiteral("it cannot be loaded: ") + QString::fromLocal8Bit(dlerror()));
    const std::vector<std::string> missing = m_functions.lookUp(library);
    if (missing.empty())
        return;
    QStringList names;
    for (const std::string &name : missing)
        names << QString::fromStdString(name);
    fail(QStringLiteral("it is no complete GenTL producer: it lacks ") + names.join(QStringLiteral(", ")));
}

void Producer::open()
{
    const GenTL::GC_ERROR code = m_functions.GCInitLib();
    if (code != GenTL::GC_ERR_RESOURCE_IN_USE) // it was initialised, and not by this class
        check("GCInitLib", code);
    m_isInitialised = true;
    m_info = readInfo();
}

Producer::~Producer()
{
    if (m_isInitialised)
        note("GCCloseLib", m_functions.GCCloseLib());
}

Producer::Info Producer::readInfo() const
{
    const auto text = [this](GenTL::TL_INFO_CMD command) {
        const auto ask = [&](GenTL::INFO_DATATYPE *type, void *buffer, std::size_t *size) {
            return m_functions.GCGetInfo(command, type, buffer, size);
        };
        return textForPeople(askInfo(ask).text());
    };
    return {text(GenTL::TL_INFO_VENDOR), text(GenTL::TL_INFO_MODEL), text(GenTL::TL_INFO_VERSION),
            text(GenTL::TL_INFO_TLTYPE), text(GenTL::TL_INFO_DISPLAYNAME)};
}

void Producer::check(const char *function, GenTL::GC_ERROR code) const
{
    if (code != GenTL::GC_ERR_SUCCESS)
        throw GentlError(function, code, lastWords());
}

const InfoAnswer &Producer::check(const char *function, const InfoAnswer &answer) const
{
    if (*answer.complaint)
        throw GentlError(function, answer.code, answer.complaint);
    check(function, answer.code);
    return answer;
}

void Producer::note(const char *function, GenTL::GC_ERROR code) const noexcept
{
    if (code == GenTL::GC_ERR_SUCCESS)
        return;
    qWarning("%s: %s failed with %s", qPrintable(QFileInfo(m_file).fileName()), function, gentlCodeName(code).c_str());
}

std::string Producer::lastWords() const
{
    const auto ask = [this](GenTL::INFO_DATATYPE *, void *buffer, std::size_t *size) {
        GenTL::GC_ERROR code = GenTL::GC_ERR_SUCCESS;
        return m_functions.GCGetLastError(&code, static_cast<char *>(buffer), size);
    };
    return textForPeople(askInfo(ask).text()).trimmed().toStdString();
}
