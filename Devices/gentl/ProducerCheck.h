// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <mutex>

#include <QByteArray>
#include <QString>

/// Whether a file can be loaded into this process, and what it tells of itself.
struct ProducerVerdict
{
    bool isGood = false;
    QString problem; ///< a sentence for a person; empty when it is good
    QString vendor;
    QString model;
    QString version;
    QString transport; ///< the standard's name: GEV, U3V, CXP, CL, Mixed...
};

/// Lets a small program of its own try a producer before this process loads it: what crashes or hangs there does no
/// harm. It does so once for each file, as long as size and date stay the same. Thread-safe.
class ProducerCheck
{
public:
    /// Keeps verdicts for the next run, each as bytes that nobody else need understand. Called on any thread, one call
    /// at a time; an empty function keeps nothing.
    struct Store
    {
        std::function<QByteArray(const QString &file)> read;
        std::function<void(const QString &file, const QByteArray &verdict)> write; ///< empty: forget it
    };

    explicit ProducerCheck(Store store = {}, std::chrono::milliseconds timeLimit = std::chrono::seconds(10));

    /// Takes as long as the limit at most when the file has to be tried.
    ProducerVerdict verdict(const QString &file);
    /// The file is tried again when the next one asks.
    void forget(const QString &file);

private:
    /// `isTold`: the program came to its own end.
    ProducerVerdict tried(const QString &file, bool *isTold) const;

    const Store m_store;
    const std::chrono::milliseconds m_limit;
    std::mutex m_mutex; ///< guards what follows
    std::map<QString, QByteArray> m_verdicts; ///< by file
};

/// The program that tries producers: beside this program, or where the build puts it. Empty when there is none.
QString producerCheckProgram();
