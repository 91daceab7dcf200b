// SPDX-License-Identifier: MIT
#include "tests/gentl/Camera.h"

#include <algorithm>
#include <utility>

#include <QFile>

#include "tests/gentl/Chunks.h"

namespace TestProducer {

namespace {

constexpr std::chrono::milliseconds LongestPause{20};

QByteArray powerUpValues(const char *name)
{
    QFile file(QStringLiteral(":/simulation/%1.values").arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

Camera::Camera(const CameraModel &cameraModel)
    : m_model(cameraModel), m_description(QStringLiteral(":/simulation/"), QString::fromLatin1(m_model.description)),
      m_firmware(m_description.xml(), {powerUpValues(m_model.description)}, m_model.behaviours())
{
    m_description.replace(withChunkPort(m_description.xml())); // to the camera itself, all registers are its own
    QObject::connect(&m_firmware, &Firmware::acquisitionChanged, [this] { wake(); });
    QObject::connect(&m_firmware, &Firmware::triggered, [this](int kind) {
        const std::lock_guard<std::mutex> hold(m_mutex);
        m_triggers.push_back(kind);
        m_isDue = true;
        m_woken.notify_one();
    });
}

std::string Camera::words(const char *name) const
{
    return m_firmware.inspect([name](const RegisterMemory &memory) {
        const auto &all = memory.registers();
        const auto found =
            std::find_if(all.begin(), all.end(), [name](const Register &reg) { return reg.name == name; });
        return found == all.end() ? std::string() : std::string(memory.bytes(*found).constData());
    });
}

void Camera::setPresent(bool present)
{
    if (present && !m_present) {
        m_firmware.powerUp();
        ++m_plugs;
    }
    m_present = present;
}

void Camera::start(Receiver receiver)
{
    m_receiver = std::move(receiver);
    m_frames = m_model.frames(m_firmware);
    {
        const std::lock_guard<std::mutex> hold(m_mutex);
        m_isStopping = false;
        m_triggers.clear();
    }
    m_last = std::chrono::steady_clock::now();
    m_thread = std::thread([this] { run(); });
}

void Camera::stop()
{
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard<std::mutex> hold(m_mutex);
        m_isStopping = true;
        m_woken.notify_one();
    }
    m_thread.join();
    m_frames.reset();
    m_firmware.stopAcquisition(); // the last connection is gone
}

void Camera::wake()
{
    const std::lock_guard<std::mutex> hold(m_mutex);
    m_isDue = true;
    m_woken.notify_one();
}

std::chrono::milliseconds Camera::pause()
{
    const std::chrono::nanoseconds rest = std::min<std::chrono::nanoseconds>(m_frames->rest(), LongestPause);
    std::unique_lock<std::mutex> hold(m_mutex);
    m_woken.wait_for(hold, rest, [this] { return m_isStopping || m_isDue; });
    m_isDue = false;
    const auto passed =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - m_last);
    m_last += passed;
    return passed;
}

void Camera::run()
{
    bool acquiring = false;
    for (;;) {
        const std::chrono::milliseconds passed = pause();
        m_firmware.elapse(passed);
        const bool wanted =
            m_firmware.inspect([](const RegisterMemory &memory) { return memory.integer("Acquiring") == 1; });
        if (std::exchange(acquiring, wanted) != wanted)
            m_frames->setAcquiring(wanted);
        std::vector<int> fired;
        {
            const std::lock_guard<std::mutex> hold(m_mutex);
            if (m_isStopping)
                return;
            fired.swap(m_triggers);
        }
        for (const int kind : fired)
            m_frames->trigger(kind);
        if (auto frame = m_frames->take(passed, m_rate); frame && m_present)
            m_receiver(std::move(*frame));
    }
}

} // namespace TestProducer
