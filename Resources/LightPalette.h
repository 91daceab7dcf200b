// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>

/// The colours that the panel's style sheet assumes around what it sets itself.
namespace LightPalette {

struct Colour
{
    QPalette::ColorRole role;
    QRgb normal;
    QRgb disabled;
};

inline constexpr Colour Colours[] = {
    {QPalette::Window, 0xfff0f0f0, 0xfff0f0f0},      {QPalette::WindowText, 0xff37383a, 0xff9a9b9d},
    {QPalette::Base, 0xffffffff, 0xfff5f5f5},        {QPalette::AlternateBase, 0xfff7f7f7, 0xfff7f7f7},
    {QPalette::Text, 0xff37383a, 0xff9a9b9d},        {QPalette::PlaceholderText, 0x8037383a, 0x809a9b9d},
    {QPalette::Button, 0xfff0f0f0, 0xfff0f0f0},      {QPalette::ButtonText, 0xff37383a, 0xffa8a9ab},
    {QPalette::BrightText, 0xffffffff, 0xffffffff},  {QPalette::Light, 0xffffffff, 0xffffffff},
    {QPalette::Midlight, 0xffcacaca, 0xffcacaca},    {QPalette::Mid, 0xffb8b8b8, 0xffb8b8b8},
    {QPalette::Dark, 0xff9f9f9f, 0xffbebebe},        {QPalette::Shadow, 0xff767676, 0xffb1b1b1},
    {QPalette::Highlight, 0xffbfe7d5, 0xffdedede},   {QPalette::HighlightedText, 0xff1f2021, 0xff6a6b6d},
    {QPalette::ToolTipBase, 0xfffbfbfb, 0xfffbfbfb}, {QPalette::ToolTipText, 0xff37383a, 0xff37383a},
    {QPalette::Link, 0xff22805a, 0xff22805a},        {QPalette::LinkVisited, 0xff5a5b5d, 0xff5a5b5d},
};

/// Every role is set: a widget with this palette takes no colour from its parent or from the application.
inline QPalette palette()
{
    static const QPalette Light = [] {
        QPalette colours;
        for (int role = 0; role < QPalette::NColorRoles; ++role)
            colours.setBrush(QPalette::All, QPalette::ColorRole(role), QBrush());
        for (const Colour &colour : Colours) {
            colours.setColor(QPalette::All, colour.role, QColor::fromRgba(colour.normal));
            colours.setColor(QPalette::Disabled, colour.role, QColor::fromRgba(colour.disabled));
        }
        return colours;
    }();
    return Light;
}

} // namespace LightPalette
