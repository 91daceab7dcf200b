// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "Simulation/Firmware.h"
#include "tests/gentl/Description.h"
#include "tests/gentl/Frames.h"

namespace TestProducer {

/// What makes one camera different from another.
struct CameraModel
{
    const char *id;
    const char *interface;
    const char *transport;
    const char *description; ///< of the simulation's resources, with its power-up values
    Behaviours (*behaviours)();
    std::unique_ptr<FrameMaker> (*frames)(Firmware &);
};

/// A simulated camera on its cable. It runs, on a thread of its own, while a producer's device is open.
class Camera
{
public:
    using Receiver = std::function<void(Frame)>;
    /// What another program does with it.
    enum class Held { No, Controlled, Exclusive };

    explicit Camera(const CameraModel &model);
    ~Camera() { stop(); }
    Camera(const Camera &) = delete;
    Camera &operator=(const Camera &) = delete;

    const CameraModel &model() const { return m_model; }
    const Description &description() const { return m_description; }
    Firmware &inside() { return m_firmware; }
    /// Contents of a register of texts.
    std::string words(const char *name) const;

    /// The cable; plugged in, the camera has started anew.
    bool isPresent() const { return m_present; }
    void setPresent(bool present);
    /// How often it was plugged in.
    int plugs() const { return m_plugs; }
    Held held() const { return m_held; }
    void setHeld(Held held) { m_held = held; }
    /// Quick pictures at that rate, whatever the registers say; 0: as the registers say.
    void setRate(double rate) { m_rate = rate; }

    /// Frames go to `receiver`, on the camera's thread, until stop() returns.
    void start(Receiver receiver);
    void stop();

private:
    void run();
    /// Waits for time to pass, less when the camera must do something; returns the time that has passed.
    std::chrono::milliseconds pause();
    void wake();

    const CameraModel m_model;
    Description m_description;
    Firmware m_firmware;
    std::atomic_bool m_present{true};
    std::atomic<int> m_plugs{1};
    std::atomic<Held> m_held{Held::No};
    std::atomic<double> m_rate{0.0};

    std::mutex m_mutex; ///< of what follows
    std::condition_variable m_woken;
    bool m_isStopping = false;
    bool m_isDue = false;
    std::vector<int> m_triggers; ///< that have fired

    Receiver m_receiver;
    std::unique_ptr<FrameMaker> m_frames;
    std::chrono::steady_clock::time_point m_last;
    std::thread m_thread;
};

} // namespace TestProducer
