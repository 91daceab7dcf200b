// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

class ViewerWindow;

/// Bytes of the heap that are in use, in the whole program: without what fills up to a bound in any case, the log, the
/// log of writes and Qt's cache of images, and without what Qt's style sheets keep of widgets that are gone (the line
/// of a spin box, the frame of a drop-down list) until they are set again. Clears all of it. Also tells under the
/// address sanitizer.
qint64 heapInUse(ViewerWindow &window);

/// Of the whole program, in bytes.
qint64 residentMemory();
