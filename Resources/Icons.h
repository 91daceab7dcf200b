// SPDX-License-Identifier: MIT
#pragma once

#include "Resources/Latin1.h"

/// Resource paths of the images that code names. Images that only style texts name are found there and in
/// style/panel.qss; render-icons lists every image with its size.
namespace Icons {

inline constexpr QLatin1String SwitchOn = ":/Resources/icon/switch/switchON.png"_L1;
inline constexpr QLatin1String SwitchOnDisabled = ":/Resources/icon/switch/switchON-disable.png"_L1;
inline constexpr QLatin1String SwitchOff = ":/Resources/icon/switch/switchOFF.png"_L1;
inline constexpr QLatin1String SwitchOffDisabled = ":/Resources/icon/switch/switchOFF-disable.png"_L1;

/// A folded and an unfolded group or branch, 20 x 20. The host registers these; without them groups show no icon.
inline constexpr QLatin1String Fold = ":/Resources/icons/camera/fold.png"_L1;
inline constexpr QLatin1String Unfold = ":/Resources/icons/camera/unfold.png"_L1;

/// The panel's style sheet.
inline constexpr QLatin1String PanelStyleSheet = ":/Resources/style/panel.qss"_L1;

} // namespace Icons
