// SPDX-License-Identifier: MIT
#include "ParamterWnd/ParamterWnd.h"

#include <QCoreApplication>
#include <QVBoxLayout>

#include "ParamterWnd/ParameterWidgetManager.h"
#include "ParamterWnd/WindowColours.h"
#include "ParamterWnd/WindowForm.h"

ParamterWnd::ParamterWnd(QWidget *parent) : QWidget(parent), m_ui(std::make_unique<WindowForm>())
{
    m_ui->setupUi(this, "ParamterWnd", QSize(458, 377));
    setWindowTitle(QCoreApplication::translate("ParamterWnd", "Form"));
    setAttribute(Qt::WA_TranslucentBackground);
    new WindowColours(this);
    auto *const manager = new ParameterWidgetManager(this);
    manager->setAutoFillBackground(true); // the window itself lets the host's colour through
    connect(manager, &ParameterWidgetManager::written, this, &ParamterWnd::written);
    m_manager = manager;
    m_ui->verticalLayout->addWidget(m_manager);
}

ParamterWnd::~ParamterWnd() = default;

void ParamterWnd::setPanelWidgetVisiable(bool visible)
{
    if (auto *manager = dynamic_cast<ParameterWidgetManager *>(m_manager))
        manager->setPanelWidgetVisiable(visible);
}

void ParamterWnd::setAllDetailWidgetVisiable(bool visible)
{
    if (auto *manager = dynamic_cast<ParameterWidgetManager *>(m_manager))
        manager->setAllDetailWidgetVisiable(visible);
}

void ParamterWnd::setParamterViewDisable(QString id)
{
    if (auto *manager = dynamic_cast<ParameterWidgetManager *>(m_manager))
        manager->setParamterViewDisable(id);
}

void ParamterWnd::setDefaultParameterWndMode(int mode)
{
    if (auto *manager = dynamic_cast<ParameterWidgetManager *>(m_manager))
        manager->setDefaultParamterWidgetMode(mode);
}
