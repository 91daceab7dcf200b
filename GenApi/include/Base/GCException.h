// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCString.h>

#include <cstdarg>
#include <cstdio>
#include <string>

namespace GENICAM_NAMESPACE {

/// Base of all exceptions of the standard; not a std::exception.
class GENICAM_DECL GenericException
{
public:
    GenericException(const char *description, const char *file, int line) { set(description, file, line, "", "", ""); }
    GenericException(const char *description, const char *file, int line, const char *type)
    {
        set(description, file, line, "", "", type);
    }
    /// `entryPoint` is the call as the user made it ("Width.SetValue()"), `node` the node that refused.
    GenericException(const char *description, const char *file, int line, const char *entryPoint, const char *node,
                     const char *type)
    {
        set(description, file, line, entryPoint, node, type);
    }
    virtual ~GenericException() { }

    /// The sentence alone.
    const char *GetDescription() const throw() { return m_description.c_str(); }
    const char *GetSourceFileName() const throw() { return m_file.c_str(); }
    unsigned int GetSourceLine() const throw() { return m_line; }
    /// The sentence with exception type, node, call and place in the source.
    const char *what() const throw() { return m_what.c_str(); }

private:
    static std::string text(const char *value) { return value ? value : ""; }

    void set(const char *description, const char *file, int line, const char *entryPoint, const char *node,
             const char *type)
    {
        m_description = text(description);
        m_file = text(file);
        m_line = static_cast<unsigned int>(line);
        m_what = m_description;
        if (!text(type).empty())
            m_what += " : " + text(type) + " thrown";
        if (!text(node).empty())
            m_what += " in node '" + text(node) + "'";
        if (!text(entryPoint).empty())
            m_what += " while calling '" + text(entryPoint) + "'";
        const size_t slash = m_file.find_last_of("/\\");
        const std::string name = slash == std::string::npos ? m_file : m_file.substr(slash + 1);
        m_what += " (file '" + name + "', line " + std::to_string(m_line) + ")";
    }

    std::string m_description;
    std::string m_file;
    std::string m_what;
    unsigned int m_line;
};

#define GENICAM_EXCEPTION_CLASS(name)                                                                                  \
    class GENICAM_DECL name : public GenericException                                                                  \
    {                                                                                                                  \
    public:                                                                                                            \
        name(const char *description, const char *file, int line) : GenericException(description, file, line) { }      \
        name(const char *description, const char *file, int line, const char *type)                                    \
            : GenericException(description, file, line, type)                                                          \
        { }                                                                                                            \
        name(const char *description, const char *file, int line, const char *entryPoint, const char *node,            \
             const char *type)                                                                                         \
            : GenericException(description, file, line, entryPoint, node, type)                                        \
        { }                                                                                                            \
    }

GENICAM_EXCEPTION_CLASS(BadAllocException);
GENICAM_EXCEPTION_CLASS(InvalidArgumentException);
GENICAM_EXCEPTION_CLASS(OutOfRangeException);
GENICAM_EXCEPTION_CLASS(PropertyException);
GENICAM_EXCEPTION_CLASS(RuntimeException);
GENICAM_EXCEPTION_CLASS(LogicalErrorException);
GENICAM_EXCEPTION_CLASS(AccessException);
GENICAM_EXCEPTION_CLASS(TimeoutException);
GENICAM_EXCEPTION_CLASS(DynamicCastException);

/// Makes an exception of type E with a printf-formatted description; behind the `..._EXCEPTION` macros.
template <class E>
class ExceptionReporter
{
public:
    ExceptionReporter(const char *file, int line, const char *type) : m_file(file), m_line(line), m_type(type) { }

#if defined(__GNUC__)
    __attribute__((format(printf, 2, 3)))
#endif
    E
    Report(const char *format, ...) const
    {
        char buffer[1024];
        va_list arguments;
        va_start(arguments, format);
        vsnprintf(buffer, sizeof buffer, format, arguments);
        va_end(arguments);
        return E(buffer, m_file, m_line, m_type);
    }

private:
    const char *m_file;
    int m_line;
    const char *m_type;
};

} // namespace GENICAM_NAMESPACE

#define GENICAM_REPORT(type)                                                                                           \
    GENICAM_NAMESPACE::ExceptionReporter<GENICAM_NAMESPACE::type>(__FILE__, __LINE__, #type).Report
#define GENERIC_EXCEPTION GENICAM_REPORT(GenericException)
#define BAD_ALLOC_EXCEPTION GENICAM_REPORT(BadAllocException)
#define INVALID_ARGUMENT_EXCEPTION GENICAM_REPORT(InvalidArgumentException)
#define OUT_OF_RANGE_EXCEPTION GENICAM_REPORT(OutOfRangeException)
#define PROPERTY_EXCEPTION GENICAM_REPORT(PropertyException)
#define RUNTIME_EXCEPTION GENICAM_REPORT(RuntimeException)
#define LOGICAL_ERROR_EXCEPTION GENICAM_REPORT(LogicalErrorException)
#define ACCESS_EXCEPTION GENICAM_REPORT(AccessException)
#define TIMEOUT_EXCEPTION GENICAM_REPORT(TimeoutException)
#define DYNAMICCAST_EXCEPTION GENICAM_REPORT(DynamicCastException)
