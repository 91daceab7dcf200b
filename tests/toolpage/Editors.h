// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QSpinBox>
#include <QVariant>

#include <memory>
#include <string>

#include "TestCamera.h"
#include "ToolPage/SwitchButton.h"
#include "ToolPage/ToolPageWidgetItem.h"

/// What the editor in a row shows; invalid without an editor.
inline QVariant shownBy(const QWidget &row)
{
    if (const auto *number = row.findChild<QAbstractSpinBox *>())
        return number->property("value");
    if (const auto *enumeration = row.findChild<QComboBox *>())
        return enumeration->currentText();
    if (const auto *boolean = row.findChild<SwitchButton *>())
        return boolean->isOn();
    const auto *command = row.findChild<QPushButton *>();
    return command ? command->text() : QVariant();
}

/// A row, in a page or by itself, of the camera's feature.
inline std::unique_ptr<ToolPageWidgetItem> rowOf(const TestCamera &camera, const char *feature = "N",
                                                 QWidget *page = nullptr)
{
    auto row = std::make_unique<ToolPageWidgetItem>(page);
    row->setItemInfo({QStringLiteral("Label"), QStringLiteral("标签")}, {}, camera.node(feature), true);
    return row;
}

/// The description of a device with a feature N.
inline std::string descriptionWith(const std::string &nodes)
{
    return TestCamera::description("<Category Name=\"Root\"><pFeature>N</pFeature></Category>" + nodes);
}
