// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCTypes.h>

#include <cstddef>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

/// Settings files below CFeatureBag: an extension that needs the standard library and the standard's interface only, so
/// it also stands on another implementation. This header knows files, PersistenceDevice.h node maps.
namespace Persistence {

struct GENICAM_DECL SelectorPosition
{
    std::string selector;
    std::string position; ///< the selector's value as text

    bool operator==(const SelectorPosition &other) const
    {
        return selector == other.selector && position == other.position;
    }
};

/// Where the selectors of a feature stand, the outermost first; empty for a feature that is not selected.
using Selection = std::vector<SelectorPosition>;

/// "{A=0<tab>B=X}", empty for no selectors.
GENICAM_DECL std::string fileText(const Selection &selection);
/// "A=0, B=X", for people.
GENICAM_DECL std::string displayText(const Selection &selection);

/// One setting. Texts are bytes as the device has them.
struct GENICAM_DECL Entry
{
    std::string feature;
    Selection selection;
    std::string value;
    std::size_t line = 0; ///< in the file, from 1; 0 if it comes from a device

    /// Feature and selection as one text: two entries are of the same setting if these are equal.
    std::string place() const { return feature + '\t' + fileText(selection); }
};

enum class Severity {
    Note, ///< everything is loaded, but it may not be what was meant
    Error ///< a setting is left out
};

struct GENICAM_DECL Problem
{
    std::size_t line; ///< from 1; 0 for what comes from a device
    std::string text; ///< names the line, too
    Severity severity = Severity::Error;
    bool isSilence = false; ///< the device did not answer
};

struct GENICAM_DECL DeviceInfo
{
    std::string vendor;
    std::string model;
    std::string toolTip;
    std::string version;
    std::string productGuid;
    std::string versionGuid;
};

/// What a file holds, or a device.
struct GENICAM_DECL Settings
{
    DeviceInfo device;
    std::string interfaceVersion; ///< "3.4.0"
    std::vector<std::string> comments; ///< those behind the two lines of the head, without "# "
    std::vector<Entry> entries; ///< in the order of the file
    std::vector<Problem> problems; ///< what is not among the entries, or doubtful
};

/// Lines that cannot be understood are left out and told in `problems`.
/// \throws GenICam::RuntimeException if the stream does not hold a settings file
GENICAM_DECL Settings readSettings(std::istream &stream);
/// Every entry has to be storable. Problems are not written.
GENICAM_DECL void writeSettings(std::ostream &stream, const Settings &settings);

/// Why a reader would not get this entry back as it is; empty if it would.
GENICAM_DECL std::string whyNotStorable(const Entry &entry);

} // namespace Persistence
