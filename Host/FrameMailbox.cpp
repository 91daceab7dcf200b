// SPDX-License-Identifier: MIT
#include "Host/FrameMailbox.h"

bool FrameMailbox::put(const QImage &frame)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const bool full = waiting.size() == capacity;
    if (full)
        waiting.pop_front();
    waiting.push_back(frame);
    return !full;
}

QImage FrameMailbox::take()
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (waiting.empty())
        return {};
    const QImage frame = waiting.front();
    waiting.pop_front();
    return frame;
}
