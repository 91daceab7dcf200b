// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include <QStringList>

#include "Devices/DeviceDiscovery.h"
#include "Devices/gentl/ProducerCheck.h"
#include "Devices/gentl/ProducerReport.h"

/// Searches with the producers that a program uses. Each is searched on a thread of its own: one that hangs is named
/// once, and left alone until it comes back.
class ProducerSearch
{
public:
    struct Options
    {
        std::function<QStringList()> files; ///< those to be used; asked at each search, on its thread
        ProducerCheck::Store verdicts;
        std::function<void(const QString &line)> report; ///< for the log; any thread
        std::chrono::milliseconds stepLimit{5000}; ///< for each interface, beside a check of the file
        std::chrono::milliseconds checkLimit{10'000}; ///< for trying a file
    };

    explicit ProducerSearch(Options options);
    /// Nobody waits long for producers that do not come back.
    ~ProducerSearch();

    ProducerSearch(const ProducerSearch &) = delete;
    ProducerSearch &operator=(const ProducerSearch &) = delete;

    /// The modules that are cards, and the cameras. One search at a time.
    std::vector<FoundDevice> find();
    /// Of the last search, in the order of the files. Any thread.
    std::vector<ProducerReport> reports() const;
    /// The file is tried again by the next search, although it is known. Any thread.
    void checkAgain(const QString &file);

private:
    class Worker;

    void takeFiles();
    static void release(std::vector<std::shared_ptr<Worker>> workers);

    const Options m_options;
    const std::shared_ptr<ProducerCheck> m_check;
    std::vector<std::shared_ptr<Worker>> m_workers; ///< one for each file
    mutable std::mutex m_mutex; ///< guards what follows
    std::vector<ProducerReport> m_reports;
};

/// A finder of what producers reach.
DeviceFinder gentlFinder(std::shared_ptr<ProducerSearch> search);

/// The producers in a directory.
QStringList producersIn(const QString &directory);

/// The producers in the directories of the environment variable GENICAM_GENTL64_PATH.
QStringList producersOfEnvironment();
