// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

class ViewerWindow;

/// Bytes of the heap that are in use, in the whole program, without what this empties before: the log and the log of
/// writes, which have bounds; Qt's cache of images; what line edits keep to be undone; and what Qt's style sheets keep
/// of widgets that are gone (the line of a spin box, the frame of a drop-down list) until they are set again. Also
/// tells under the address sanitizer.
qint64 heapInUse(ViewerWindow &window);

/// Of the whole program, in bytes.
qint64 residentMemory();
