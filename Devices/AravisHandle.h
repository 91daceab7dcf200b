// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <arv.h>

#include <GenApi/GenApi.h>

struct AravisUnreference
{
    void operator()(gpointer object) const { g_object_unref(object); }
};
/// A counted reference to an object of Aravis.
template <class Object>
using AravisHandle = std::unique_ptr<Object, AravisUnreference>;

/// A GLib error as an out parameter.
class AravisError
{
public:
    AravisError() = default;
    ~AravisError() { g_clear_error(&m_error); }
    AravisError(const AravisError &) = delete;
    AravisError &operator=(const AravisError &) = delete;

    GError **out() { return &m_error; }
    const char *text() const { return m_error ? m_error->message : "unknown failure"; }

    /// As a GenICam exception.
    void throwIfSet() const
    {
        if (!m_error)
            return;
        if (g_error_matches(m_error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_TIMEOUT))
            throw TIMEOUT_EXCEPTION("%s", m_error->message);
        throw RUNTIME_EXCEPTION("%s", m_error->message);
    }

private:
    GError *m_error = nullptr;
};
