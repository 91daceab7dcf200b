// SPDX-License-Identifier: MIT
#pragma once

class QApplication;

/// To be called before the application object exists: scaled, crisp drawing on high-resolution screens.
void enableHighDpi();

/// Gives the application the light look that the panel is made for, whatever the desktop's theme.
void applyViewerStyle(QApplication &application);
