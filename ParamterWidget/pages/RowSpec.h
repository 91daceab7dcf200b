// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// The curated pages as data: tabs of groups of rows. All texts are UTF-8 and live as long as the program.

/// Rows that a controller refers to, or whose editor it makes.
enum class RowId {
    None,
    SoftTriggerInterval,
    SoftTriggerSwitch,
    RoiSelect,
    Width,
    Height,
    OffsetX,
    OffsetY,
    DrawWidth,
    DrawHeight,
    DrawOffsetX,
    DrawOffsetY,
    RoiApply,
    RestoreImageSize,
    UserSetLoad,
    // Laser profilers
    FrameTriggerMode,
    FrameTriggerSource,
    FrameTriggerSoftware,
    LineScanMode,
    AcquisitionLineRate,
    EncoderDivider,
    EncoderOutputMode,
    EncoderMode,
    AcquisitionDataSource,
    BatchMode,
    MeasureRange,
    Mask1,
    Mask2,
    Mask3,
    GrayImage,
    ContourSpacing,
    ZRange,
    ZMaximum,
    ZMinimum,
    SamplingRate,
    LaserAdjustMode,
    LowerBound,
    UpperBound,
    LaserSetting,
    TiltCorrection,
    HeightCorrection,
    // Structured-light cameras
    ImageOutputs,
    ImageShowType,
};

/// How the feature of a row is found.
enum class Lookup {
    Direct, ///< under its name
    Alias, ///< under the name that this camera gives it; see FindNodeByLogicalName()
    Custom, ///< there is none: the editor is a control that is registered under the row's id
    Nothing, ///< there is none, nor an editor: the row heads those below it
};

/// A table of constants, as a range.
template <class Entry>
class Table
{
public:
    template <std::size_t Size>
    constexpr Table(const Entry (&entries)[Size]) : m_begin(entries), m_end(entries + Size)
    { }

    constexpr const Entry *begin() const { return m_begin; }
    constexpr const Entry *end() const { return m_end; }

private:
    const Entry *m_begin;
    const Entry *m_end;
};

struct BilingualText
{
    const char *english;
    const char *chinese;
};

struct RowSpec
{
    enum Flag {
        Plain, ///< hidden while the feature is not available
        Live, ///< the same; a float or an enumeration also keeps showing the device while the first page is in view
        AlwaysShown, ///< stays, without an editor, when the feature is not available
    };

    Lookup lookup;
    const char *feature; ///< empty for Lookup::Custom
    BilingualText label;
    BilingualText description;
    RowId id = RowId::None;
    Flag flag = Plain;
};

struct GroupSpec
{
    BilingualText title;
    Table<RowSpec> rows;
    bool titleStays = false; ///< also while no row shows, which hides other groups
};

struct TabSpec
{
    Table<GroupSpec> groups;
};
