// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <GenApi/GenApi.h>

class QTextStream;

/// Prints the feature tree of a device as the attribute tab shows it at the highest level and without a filter:
/// one row a line, with tabs between path, interface type, access mode, visibility, value text and editor ("-" where
/// there is none). Needs a QApplication.
void dumpFeatures(GenApi::INodeMap &map, QTextStream &out);
