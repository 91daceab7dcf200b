// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QIcon>

/// The drawings of the viewer's icons.
enum class Glyph {
    None,
    Refresh,
    Open,
    Close,
    Start,
    Stop,
    File,
    Save,
    Load,
    Compare,
    ZoomFit,
    ZoomOriginal,
    ZoomIn,
    ZoomOut,
    Copy,
    Clear,
    Camera,
    Card
};

/// An icon drawn from line paths in the colours of the application's palette: crisp at any size and pixel ratio.
/// A valid `mark` adds a dot of that colour in the lower right corner.
QIcon glyphIcon(Glyph glyph, const QColor &mark = QColor());
