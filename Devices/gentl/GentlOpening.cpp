// SPDX-License-Identifier: MIT
#include "Devices/gentl/GentlOpening.h"

QString openingProblem(const GentlError &error)
{
    const QString details = QString::fromUtf8(error.what());
    switch (error.code()) {
    case GenTL::GC_ERR_RESOURCE_IN_USE:
    case GenTL::GC_ERR_ACCESS_DENIED:
    case GenTL::GC_ERR_BUSY:
        return QStringLiteral(
                   "it is in use by another program or computer: close it there, or wait until the device has "
                   "noticed that the other one is gone (%1)")
            .arg(details);
    case GenTL::GC_ERR_INVALID_ID:
    case GenTL::GC_ERR_NOT_AVAILABLE:
        return QStringLiteral("the producer does not find it any more: check power and cable, then search again (%1)")
            .arg(details);
    default:
        return details;
    }
}
