// SPDX-License-Identifier: MIT
#include "ParamterWidget/ReadingSteps.h"

#include <algorithm>
#include <cstring>

#include <QScopedValueRollback>

#include "ParamterWidget/PanelContext.h"
#include "ToolPage/CToolBox.h"

ReadingSteps::~ReadingSteps()
{
    m_context.reading->forget(this);
}

void ReadingSteps::run(const std::vector<Step> &steps)
{
    for (const Step &step : steps) {
        const auto isSame = [&step](const Step &waiting) { return std::strcmp(waiting.name, step.name) == 0; };
        if (std::none_of(m_steps.begin(), m_steps.end(), isSame))
            m_steps.push_back(step);
    }
    while (!m_isTaking && !m_steps.empty() && m_context.reading->hasTime())
        readNext();
    if (!m_isTaking && !m_steps.empty())
        m_context.reading->later(this);
}

bool ReadingSteps::isInView() const
{
    return std::any_of(m_context.toolBoxes.begin(), m_context.toolBoxes.end(),
                       [](const CToolBox *page) { return page->isVisible(); });
}

bool ReadingSteps::readNext()
{
    if (m_steps.empty())
        return false;
    const QScopedValueRollback<bool> taking(m_isTaking, true);
    const Step step = m_steps.front();
    m_steps.erase(m_steps.begin());
    guarded("ReadingSteps", step.take);
    return !m_steps.empty();
}
