// SPDX-License-Identifier: MIT
#include "ParamterWnd/WindowForm.h"

#include <QGridLayout>
#include <QVBoxLayout>
#include <QWidget>

void WindowForm::setupUi(QWidget *window, const char *name, QSize size)
{
    window->setObjectName(QLatin1String(name));
    window->resize(size);
    window->setStyleSheet(QString());

    gridLayout = new QGridLayout(window);
    gridLayout->setObjectName(QStringLiteral("gridLayout"));
    gridLayout->setSpacing(0);
    gridLayout->setContentsMargins(0, 0, 0, 0);
    verticalLayout = new QVBoxLayout;
    verticalLayout->setObjectName(QStringLiteral("verticalLayout"));
    verticalLayout->setContentsMargins(0, -1, -1, -1);
    gridLayout->addLayout(verticalLayout, 0, 0);
}
