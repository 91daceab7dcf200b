// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include <QString>

#include "Simulation/RegisterMemory.h"

class Firmware;

/// One write of the host to one position of one register, before or after it is stored.
struct RegisterWrite
{
    const Register *reg = nullptr;
    int position = 0;
    double value = 0.0; ///< the number written; 0 for texts and bytes

    bool is(const char *name) const { return reg->name == name; }
};

/// One thing that a simulated device does by itself. Every call is made with the firmware locked, on the thread of
/// the host's access or on the device's own thread; it must be short.
class Behaviour
{
public:
    Behaviour() = default;
    virtual ~Behaviour() = default;
    Behaviour(const Behaviour &) = delete;
    Behaviour &operator=(const Behaviour &) = delete;

    /// The device was switched on; the registers hold their power-up values.
    virtual void powerUp(Firmware &) { }
    /// The device's own words for refusing a write; empty to accept it. The memory still holds the old value.
    virtual QString objection(const Firmware &, const RegisterWrite &) const { return {}; }
    /// The host's write is stored.
    virtual void written(Firmware &, const RegisterWrite &) { }
    /// Time has passed since the last call.
    virtual void elapsed(Firmware &, std::chrono::milliseconds) { }
    /// An image was taken.
    virtual void frameTaken(Firmware &) { }
};

using Behaviours = std::vector<std::unique_ptr<Behaviour>>;

/// What area-scan cameras do.
Behaviours areaScanBehaviours();
/// What laser profilers do.
Behaviours profilerBehaviours();
/// What structured-light cameras do.
Behaviours structuredLightBehaviours();
/// What the input card does.
Behaviours cardBehaviours();

/// Parts of the above, by subject.
void addDeviceBehaviours(Behaviours &behaviours);
/// The entries of UserSetSelector: Default, then UserSet`first` to UserSet`last`.
void addUserSetBehaviours(Behaviours &behaviours, int first, int last);
void addImageBehaviours(Behaviours &behaviours);
void addAcquisitionBehaviours(Behaviours &behaviours);
/// Starts and stops acquisitions and ends those that take a fixed number of images; part of the one above.
void addAcquisitionControl(Behaviours &behaviours);
