// SPDX-License-Identifier: MIT
#include "FeatureTree/NodeWarning.h"

#include <QtGlobal>

void warnNodeError(const GenICam::GenericException &error)
{
    qWarning("An error is raised: file: %s,line no:%d, error info:%s", error.GetSourceFileName(),
             static_cast<int>(error.GetSourceLine()), error.GetDescription());
}
