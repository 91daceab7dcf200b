// SPDX-License-Identifier: MIT
#pragma once

#include "Resources/Latin1.h"

/// Style texts of single widgets of the panel's form. All others are in the panel's style sheet.
namespace StyleSheets {

inline constexpr QLatin1String MainTabs = "background-color:rgb(245,245,245);"_L1;

inline constexpr QLatin1String SearchButton =
    "QPushButton{image: url(:/Resources/icon/search/normal.png);border: none;}"_L1;

inline constexpr QLatin1String FoldButton = "QToolButton{border: 1px solid rgb(216, 216, 216);border-radius: 2px;"
                                            "background-color: rgb(216, 216, 216);padding-left: 5px;}"
                                            "QToolButton::hover{background-color: rgb(180, 180, 180);}"_L1;

} // namespace StyleSheets
