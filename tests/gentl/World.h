// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <map>
#include <mutex>
#include <set>

#include "tests/gentl/Modules.h"
#include "tests/gentl/Stream.h"

namespace TestProducer {

/// How the frames of a camera are spoilt: each so many-th one.
struct FrameSpoiling
{
    FrameFault fault = FrameFault::Good;
    std::uint64_t every = 1;
};

/// Everything that there is: the cameras, the open modules, and what the script says of them. To be used locked.
struct World
{
    std::mutex mutex;
    /// Something has changed that a call may wait for.
    std::condition_variable changed;

    bool isInitialised = false;
    Handles handles;
    std::vector<std::shared_ptr<Camera>> cameras;
    /// What the consumer did that the standard does not allow.
    std::vector<std::string> complaints;

    std::string urlMode = "local";
    bool hasOddIds = false; ///< ids of cameras end in bytes that are no UTF-8
    std::set<std::string> missingInterfaces;
    std::map<std::string, FrameSpoiling> spoiling; ///< by camera
    std::set<const Camera *> stopping; ///< whose threads are about to end

    void powerUp();
    std::vector<InterfaceModel> interfaces() const;
    /// The camera with this id, or null; the script knows it by its plain id.
    std::shared_ptr<Camera> camera(const std::string &id) const;
    std::string idOf(const Camera &camera) const;
    void complain(const std::string &words);
    /// Closes a module with all that is open below it; unlocks meanwhile.
    void close(const std::shared_ptr<Module> &module, Lock &lock);
    /// The event of that kind that somebody has registered for this module, or null.
    std::shared_ptr<Event> event(const Module *source, GenTL::EVENT_TYPE type) const;

private:
    void closeTree(const std::shared_ptr<Module> &module, std::vector<std::shared_ptr<LocalDevice>> &devices);
};

World &world();

} // namespace TestProducer
