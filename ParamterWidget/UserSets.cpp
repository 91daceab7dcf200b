// SPDX-License-Identifier: MIT
#include "ParamterWidget/UserSets.h"

#include <QCoreApplication>
#include <QPushButton>

#include "PanelBase/HostCall.h"
#include "PanelBase/StyleSheets.h"
#include "ParamterWidget/PanelContext.h"
#include "ToolPage/ToolPageWidgetItem.h"

UserSets::UserSets(PanelContext &context, QWidget *controlsParent)
    : m_context(context), m_loadButton(new QPushButton(controlsParent))
{
    m_loadButton->setText(QCoreApplication::translate("ParamterWidget", "Execute"));
    m_loadButton->setStyleSheet(StyleSheets::PlainButton);
    context.controls[RowId::UserSetLoad] = m_loadButton;
}

void UserSets::load()
{
    m_context.reading->writeByName([this] {
        return callHost<HostCore::SetCameraNodeValue>("UserSets", m_context.deviceKey(), "UserSetLoad", std::string());
    });
    m_context.written();
    m_context.refreshPages();
}

void UserSets::setLoadable(bool loadable)
{
    if (ToolPageWidgetItem *const row = m_context.placed(RowId::UserSetLoad).row)
        row->setWidgetItemEnable(loadable);
}
