// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>

class QGridLayout;
class QVBoxLayout;
class QWidget;

/// The form of a window that does nothing but hold panels: one column without margins. The window owns it.
struct WindowForm
{
    QGridLayout *gridLayout = nullptr;
    QVBoxLayout *verticalLayout = nullptr;

    /// Builds the form into `window` and names it; `name` is an object name.
    void setupUi(QWidget *window, const char *name, QSize size);
};
