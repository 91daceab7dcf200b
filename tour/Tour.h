// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class ViewerWindow;

/// Walks through the viewer with mouse and keyboard as a person would, checks what is then shown and saves a
/// screenshot of each step ("01-start.png", ...).
class Tour
{
public:
    /// `directory` is made when it does not exist.
    Tour(ViewerWindow &window, const QString &directory);

    /// Takes all steps, even after a failed one. The exit code: 0 when every step did what it should.
    int run();

private:
    bool save(int number, const char *name);

    ViewerWindow &m_window;
    const QString m_directory;
};
