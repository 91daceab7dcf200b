// SPDX-License-Identifier: MIT
#include "ParamterWnd/HostLink.h"

#include <QCoreApplication>

#include "PanelBase/HostCall.h"

namespace {

constexpr const char *Module = "ParameterWidgetManager"; ///< as a host's log knows it

} // namespace

HostLink::HostLink(ParameterWidgetManager *manager) : region(manager)
{
    callHost<HostCore::RegisterDeviceListUpdateListener>(Module, &deviceList);
    callHost<HostCore::RegisterFocusUpdateListener>(Module, &focus);
    callHost<HostCore::RegisterLangUpdateListener>(Module, &language);
    callHost<HostCore::RegisterROIUpdateListener>(Module, &region);
    callHost<HostCore::RegisterImageModeUpdateListener>(Module, &imageMode);
    callHost<HostCore::RegisterImportUpdateListener>(Module, &import);
}

HostLink::~HostLink()
{
    callHost<HostCore::UnRegisterFocusUpdateListener>(Module, &focus);
    callHost<HostCore::UnRegisterDeviceListUpdateListener>(Module, &deviceList);
    callHost<HostCore::UnRegisterLangUpdateListener>(Module, &language);
    callHost<HostCore::UnRegisterROIUpdateListener>(Module, &region);
    callHost<HostCore::UnRegisterImageModeUpdateListener>(Module, &imageMode);
    callHost<HostCore::UnRegisterImportUpdateListener>(Module, &import);
}

void HostLink::release(QObject *receiver)
{
    toGui.close(); // before the connection goes through which the host's threads come here
    for (const QObject *bridge :
         std::initializer_list<const QObject *>{&deviceList, &focus, &language, &imageMode, &import})
        bridge->disconnect(receiver);
    QCoreApplication::removePostedEvents(receiver, QEvent::MetaCall);
    deviceList.release();
}
