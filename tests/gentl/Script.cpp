// SPDX-License-Identifier: MIT
// What a test tells the producer.
#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "tests/gentl/Call.h"
#include "tests/gentl/TestScript.h"

namespace TestProducer {

namespace {

using Words = std::vector<std::string>;

struct OddLine
{ };

void expect(bool holds)
{
    if (!holds)
        throw OddLine();
}

/// The entry of a table whose name it is.
template <class Entry, std::size_t count>
const Entry &named(const Entry (&table)[count], const std::string &name)
{
    const auto found =
        std::find_if(std::begin(table), std::end(table), [&name](const Entry &entry) { return name == entry.name; });
    expect(found != std::end(table));
    return *found;
}

template <class Value>
struct Named
{
    const char *name;
    Value value;
};

constexpr Named<Camera::Held> HeldNames[] = {
    {"no", Camera::Held::No}, {"control", Camera::Held::Controlled}, {"exclusive", Camera::Held::Exclusive}};

constexpr Named<FrameFault> FaultNames[] = {{"good", FrameFault::Good},  {"incomplete", FrameFault::Incomplete},
                                            {"lost", FrameFault::Lost},  {"empty", FrameFault::Empty},
                                            {"huge", FrameFault::Huge},  {"alien", FrameFault::Alien},
                                            {"grown", FrameFault::Grown}};

Camera &camera(World &world, const std::string &id)
{
    world.powerUp();
    const auto found = world.camera(id);
    expect(found != nullptr);
    return *found;
}

/// A camera, or an interface.
void setPresent(World &world, const std::string &id, bool present)
{
    world.powerUp();
    if (const auto found = world.camera(id))
        found->setPresent(present);
    else if (present)
        world.missingInterfaces.erase(id);
    else
        world.missingInterfaces.insert(id);
}

std::string vanish(World &world, const Words &words)
{
    setPresent(world, words[1], false);
    return {};
}

std::string comeBack(World &world, const Words &words)
{
    setPresent(world, words[1], true);
    return {};
}

std::string hold(World &world, const Words &words)
{
    camera(world, words[1]).setHeld(named(HeldNames, words[2]).value);
    return {};
}

std::string setRate(World &world, const Words &words)
{
    camera(world, words[1]).setRate(std::atof(words[2].c_str()));
    return {};
}

std::string spoilFrames(World &world, const Words &words)
{
    const int every = words.size() > 3 ? std::max(1, std::atoi(words[3].c_str())) : 1;
    camera(world, words[1]);
    world.spoiling[words[1]] = {named(FaultNames, words[2]).value, std::uint64_t(every)};
    return {};
}

std::string setUrls(World &world, const Words &words)
{
    expect(Description::isMode(words[1]));
    world.urlMode = words[1];
    return {};
}

std::string setOddIds(World &world, const Words &words)
{
    world.hasOddIds = words[1] == "on";
    return {};
}

std::string setRegister(World &world, const Words &words)
{
    camera(world, words[1]).inside().change([&words](RegisterMemory &memory) {
        expect(memory.contains(words[2].c_str()));
        memory.setNumber(words[2].c_str(), std::atof(words[3].c_str()));
    });
    return {};
}

/// Raises an event for a camera, at its remote port and its local device, or for an interface. Returns at how many.
std::string raise(World &world, const std::string &id, GenTL::EVENT_TYPE type, const std::string &data)
{
    int raised = 0;
    for (const auto &event : world.handles.all<Event>()) {
        const auto port = std::dynamic_pointer_cast<Port>(event->parent());
        if (event->type() != type || !port || port->identity().id != id)
            continue;
        event->post(data);
        ++raised;
    }
    world.changed.notify_all();
    return std::to_string(raised);
}

std::string invalidate(World &world, const Words &words)
{
    return raise(world, words[1], GenTL::EVENT_FEATURE_INVALIDATE, words[2] + '\0');
}

std::string change(World &world, const Words &words)
{
    return raise(world, words[1], GenTL::EVENT_FEATURE_CHANGE, words[2] + '\0');
}

std::string raiseRemote(World &world, const Words &words)
{
    const QByteArray value = QByteArray::fromHex(QByteArray::fromStdString(words.size() > 3 ? words[3] : ""));
    return raise(world, words[1], GenTL::EVENT_REMOTE_DEVICE,
                 remoteEventData(std::strtoull(words[2].c_str(), nullptr, 0), value.toStdString()));
}

std::string joined(const Words &words)
{
    std::string all;
    for (const std::string &word : words)
        all += (all.empty() ? "" : "; ") + word;
    return all;
}

std::string complaints(World &world, const Words &)
{
    return joined(world.complaints);
}

/// The names of all that is open.
std::string openModules(World &world, const Words &)
{
    Words names;
    for (const auto &module : world.handles.all<Module>())
        names.push_back(module->name());
    return joined(names);
}

std::string calls(World &, const Words &words)
{
    return std::to_string(Faults::instance().calls(words[1]));
}

std::string release(World &, const Words &)
{
    Faults::instance().release();
    return {};
}

/// All is well again.
std::string clear(World &world, const Words &)
{
    Faults::instance().clear();
    world.complaints.clear();
    world.spoiling.clear();
    world.missingInterfaces.clear();
    world.urlMode = "local";
    world.hasOddIds = false;
    for (const auto &camera : world.cameras) {
        camera->setPresent(true);
        camera->setHeld(Camera::Held::No);
        camera->setRate(0.0);
    }
    return {};
}

std::string powerUp(World &world, const Words &)
{
    for (const auto &camera : world.cameras)
        camera->inside().powerUp();
    return {};
}

struct Order
{
    const char *name;
    std::size_t words; ///< at least, with its name
    std::string (*obey)(World &, const Words &);
};

/// CAMERA is "GEV-AREA", "GEV-PROFILER" or "CXP-SL"; the interfaces are "GEV-IF" and "CXP-IF".
constexpr Order Orders[] = {
    {"clear", 1, clear}, // all is well again, but registers keep their values
    {"power-up", 1, powerUp}, // registers of all cameras have their power-up values
    {"release", 1, release}, // what hangs returns
    {"vanish", 2, vanish}, // ID of a camera or an interface: it is unplugged
    {"return", 2, comeBack}, // ID: it is plugged in again, a camera with its power-up values
    {"hold", 3, hold}, // CAMERA no|control|exclusive: another program has it
    {"rate", 3, setRate}, // CAMERA HZ: the area-scan camera sends quick pictures at that rate; 0: as its registers say
    {"frames", 3, spoilFrames}, // CAMERA good|incomplete|lost|empty|huge|alien|grown [N]: each N-th frame
    {"urls", 2, setUrls}, // local|plain|zip|file|several|http|none
    {"odd-ids", 2, setOddIds}, // on|off: ids of cameras that are not UTF-8
    {"register", 4, setRegister}, // CAMERA NAME NUMBER: changes a register behind everybody's back
    {"invalidate", 3, invalidate}, // ID FEATURE: EVENT_FEATURE_INVALIDATE; tells how many modules raised it
    {"change", 3, change}, // ID FEATURE: EVENT_FEATURE_CHANGE
    {"remote-event", 3, raiseRemote}, // CAMERA NUMBER [HEX]: EVENT_REMOTE_DEVICE with that value
    {"complaints", 1, complaints}, // asks what the consumer did that the standard does not allow
    {"open", 1, openModules}, // asks what has a handle
    {"calls", 2, calls}, // FUNCTION: asks how often it was called since "clear"
};

/// Empty for a comment.
Words split(const std::string &line)
{
    std::istringstream stream(line);
    Words words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

std::string obey(const std::string &line)
{
    const Words words = split(line);
    if (words.empty() || Faults::instance().add(words))
        return {};
    const Order &order = named(Orders, words[0]);
    expect(words.size() >= order.words);
    const Lock lock(world().mutex);
    return order.obey(world(), words);
}

} // namespace

} // namespace TestProducer

const char *paramter_test_script(const char *line)
{
    static thread_local std::string answer;
    answer.clear();
    std::istringstream lines(line);
    for (std::string one; std::getline(lines, one, ';');) {
        try {
            answer = TestProducer::obey(one);
        } catch (const TestProducer::OddLine &) {
            answer = "error: " + one;
            break;
        }
    }
    return answer.c_str();
}
