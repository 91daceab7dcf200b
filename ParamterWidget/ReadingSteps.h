// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <vector>

#include "PanelBase/DeviceReading.h"

struct PanelContext;

/// What a panel reads by name, step by step and always in order: at once while there is time, in turns otherwise. GUI
/// thread only.
class ReadingSteps : public DeviceReading::Job
{
public:
    struct Step
    {
        const char *name; ///< a step of the same name that waits already stands for both
        std::function<void()> take; ///< reads no more than belongs together
    };

    explicit ReadingSteps(const PanelContext &context) : m_context(context) { }
    ~ReadingSteps() override;
    ReadingSteps(const ReadingSteps &) = delete;
    ReadingSteps &operator=(const ReadingSteps &) = delete;

    void run(const std::vector<Step> &steps);

    bool isInView() const override;
    bool readNext() override;

private:
    const PanelContext &m_context;
    std::vector<Step> m_steps; ///< that wait
    bool m_isTaking = false;
};
