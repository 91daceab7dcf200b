// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QString>

#include "Devices/gentl/GentlError.h"
#include "Devices/gentl/InfoRead.h"
#include "Devices/gentl/ProducerFunctions.h"

/// A GenTL producer: a library of a maker of hardware, loaded and initialised. Its modules hold it.
///
/// A library stays in the process to its end: threads of its own may still run in it. Every thread may call it.
class Producer
{
public:
    /// What it tells of itself; empty for what it does not.
    struct Info
    {
        QString vendor;
        QString model;
        QString version;
        QString transport; ///< the standard's name: GEV, U3V, CXP, CL, Mixed...
        QString name;
    };

    /// The producer of that file, of which there is one in the process. Throws std::runtime_error with a sentence for a
    /// person; see ProducerCheck for what to do before a file is loaded for the first time.
    static std::shared_ptr<Producer> load(const QString &file);
    ~Producer();

    Producer(const Producer &) = delete;
    Producer &operator=(const Producer &) = delete;

    /// Canonical path.
    const QString &file() const { return m_file; }
    const Info &info() const { return m_info; }

    const ProducerFunctions *operator->() const { return &m_functions; }

    /// Throws a GentlError with the producer's own words unless the code means success. To be called on the thread of
    /// the call and right after it: the words are kept for each thread.
    void check(const char *function, GenTL::GC_ERROR code) const;
    /// The same for an answer.
    const InfoAnswer &check(const char *function, const InfoAnswer &answer) const;
    /// For calls whose failures nobody can do anything about: those that close something. The failure is logged.
    void note(const char *function, GenTL::GC_ERROR code) const noexcept;

private:
    explicit Producer(const QString &canonicalFile);

    void open();
    std::string lastWords() const;
    Info readInfo() const;

    const QString m_file;
    ProducerFunctions m_functions;
    bool m_isInitialised = false;
    Info m_info;
};

/// Why a file cannot be the library of a producer, by a look at its first bytes; empty when it can.
QString libraryProblem(const QString &file);
