// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QString>

#include "Resources/Icons.h"
#include "Resources/Latin1.h"

/// The style texts of the tool page kit. A widget's own style text wins over the panel's style sheet.
namespace StyleSheets {

/// Frames what has the keyboard focus; dark enough for every background of a row and beside a latched button.
inline constexpr QColor FocusColor(31, 128, 86);

/// Buttons that run something: "Execute" buttons and tools that are not latched.
inline constexpr QLatin1String PlainButton = "QPushButton{border: 1px solid rgb(55,56,58,60%);border-radius: 2px;}"
                                             "QPushButton::hover{background-color: rgb(216, 216, 216);}"
                                             "QPushButton::pressed{background-color: rgb(180, 180, 180);}"
                                             "QPushButton::disabled{border: 1px solid #CCCCCC;color: #CCCCCC;}"_L1;

/// A latched tool button.
inline constexpr QLatin1String SelectedButton =
    "QPushButton{background-color: rgb(75, 210, 149);border-radius: 2px;}"_L1;

/// The container that keeps a switch at the right end of its row.
inline constexpr QLatin1String SwitchContainer =
    "#widget{background: none;}QPushButton{background: none;border: none;}"_L1;

/// The drop-down list of an enumeration.
inline constexpr QLatin1String EnumerationList = "QComboBox QAbstractItemView::item {height: 50px;}"_L1;

/// The drop-down list of a choice that is no feature.
inline constexpr QLatin1String ChoiceList = "QComboBox QAbstractItemView:item { height: 50px; }"_L1;

/// A list of check boxes, which opens below its box: the box shows what is checked.
inline constexpr QLatin1String CheckList =
    "CComboBox{combobox-popup: 0;}QComboBox QAbstractItemView:item{height: 50px;}"_L1;

/// The title bar of a foldable group.
inline constexpr QLatin1String FoldableGroup = "QPushButton#pushButtonFold\n{\nborder: none;\n}"_L1;

/// A switch in the given state.
inline QString switchButton(bool on)
{
    constexpr QLatin1String Style = "QPushButton{border: none;image: url(%1);}"
                                    "QPushButton::disabled{border: none;image: url(%2);}"_L1;
    return on ? Style.arg(Icons::SwitchOn, Icons::SwitchOnDisabled)
              : Style.arg(Icons::SwitchOff, Icons::SwitchOffDisabled);
}

/// A button that is an image: `shown` at rest, `underMouse` under the mouse, `disabled` while disabled.
inline QString imageButton(const QString &shown, const QString &underMouse, const QString &disabled)
{
    constexpr QLatin1String Style = "QPushButton{border: none;image: url(%1);}"
                                    "QPushButton:hover{image: url(%2);}"
                                    "QPushButton:disabled{image: url(%3);}"_L1;
    return Style.arg(shown, underMouse, disabled);
}

} // namespace StyleSheets
