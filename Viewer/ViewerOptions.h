// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// What the command line asks for.
struct ViewerOptions
{
    QString description; ///< a camera description to open without a camera
    QString device; ///< id of a device to open at the start
    QString language; ///< "English" or "Chinese"; empty: as last time
    QStringList producers; ///< files of GenTL producers to be searched with
    QString settings; ///< file for the settings; empty: the user's own
    bool dump = false;
    bool transports = false; ///< everything that a search sees, as text
    bool simulatedOnly = false;
    bool developer = false; ///< the View menu has the switches for developers
    bool help = false;
    bool version = false;
    QString error; ///< a sentence when the command line is wrong

    static ViewerOptions parse(const QStringList &arguments);
    /// The usage text; needs an application object.
    static QString helpText();

    /// Nothing will be shown on a screen.
    bool isTextOnly() const { return dump || transports || help || version || !error.isEmpty(); }
};
