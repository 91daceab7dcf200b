// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "TestCamera.h"

/// A feature of CuratedCamera, with a register of its own unless it is a category.
struct CuratedFeature
{
    std::string kind; ///< the element's name; empty: there is no such feature
    std::string name;
    std::string elements; ///< what the element holds beside its value
};
using CuratedFeatures = std::vector<CuratedFeature>;

/// What CuratedCamera needs for the pages of laser profilers, Height included. The frame trigger is entry 1 of
/// TriggerSelector, the line trigger entry 2, but one register serves both.
CuratedFeatures profilerFeatures();
/// What it needs for the pages of structured-light cameras. Hosts answer for the outputs by name.
CuratedFeatures structuredLightFeatures();

/// A camera with every feature of the curated area-scan pages. It shows 1280 x 1024 pixels of a sensor with
/// 2448 x 2048; the region's maxima shrink with the offsets, its increments are 4 and 2. ExposureTime is locked
/// unless ExposureAuto is 0.
class CuratedCamera : public TestCamera
{
public:
    /// `changes` replace the features of their names, or come on top.
    explicit CuratedCamera(const CuratedFeatures &changes = {});

    /// Of the register behind a feature.
    int64_t address(const std::string &feature) const;
    /// The features whose registers were written since MemoryPort::resetCounters(), in order.
    std::vector<std::string> written() const;
    /// Calls `written` after every write to a register with the feature and the low 32 bits of its value.
    void watchWrites(const std::function<void(const std::string &feature, uint64_t value)> &written);

private:
    const CuratedFeatures m_features;
};
