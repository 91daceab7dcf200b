// SPDX-License-Identifier: MIT
#include "tests/gentl/World.h"

#include <cstdio>

namespace TestProducer {

namespace {

constexpr CameraModel Cameras[] = {
    {"GEV-AREA", "GEV-IF", "GEV", "area_scan", areaScanBehaviours, areaScanFrames},
    {"GEV-PROFILER", "GEV-IF", "GEV", "profiler", profilerBehaviours, profilerFrames},
    {"CXP-SL", "CXP-IF", "CXP", "structured_light", structuredLightBehaviours, structuredLightFrames},
};

constexpr InterfaceModel Interfaces[] = {
    {"GEV-IF", "Test network adapter", "GEV"},
    {"CXP-IF", "Test frame grabber", "CXP"},
};

} // namespace

World &world()
{
    static World *const TheWorld = new World; // calls may hang in it when the process ends
    return *TheWorld;
}

void World::powerUp()
{
    if (!cameras.empty())
        return;
    for (const CameraModel &model : Cameras)
        cameras.push_back(std::make_shared<Camera>(model));
}

std::vector<InterfaceModel> World::interfaces() const
{
    std::vector<InterfaceModel> present;
    for (const InterfaceModel &model : Interfaces) {
        if (missingInterfaces.count(model.id) == 0)
            present.push_back(model);
    }
    return present;
}

std::shared_ptr<Camera> World::camera(const std::string &id) const
{
    for (const auto &camera : cameras) {
        if (id == camera->model().id)
            return camera;
    }
    return nullptr;
}

std::string World::idOf(const Camera &camera) const
{
    return std::string(camera.model().id) + (hasOddIds ? "\xFF\xE4" : "");
}

void World::complain(const std::string &words)
{
    complaints.push_back(words);
    std::fprintf(stderr, "test producer: %s\n", words.c_str());
}

void World::closeTree(const std::shared_ptr<Module> &module, std::vector<std::shared_ptr<LocalDevice>> &devices)
{
    for (const auto &child : handles.children<Module>(module.get())) {
        if (child->isToBeClosed())
            complain(module->name() + " is closed while " + child->name() + " is open");
        closeTree(child, devices);
    }
    module->closed();
    handles.remove(module.get());
    if (auto device = std::dynamic_pointer_cast<LocalDevice>(module))
        devices.push_back(std::move(device));
}

void World::close(const std::shared_ptr<Module> &module, Lock &lock)
{
    if (const auto stream = std::dynamic_pointer_cast<Stream>(module))
        stream->finish(lock);
    std::vector<std::shared_ptr<LocalDevice>> devices;
    closeTree(module, devices);
    for (const auto &device : devices)
        stopping.insert(&device->camera());
    changed.notify_all();
    lock.unlock();
    for (const auto &device : devices)
        device->camera().stop();
    lock.lock();
    for (const auto &device : devices)
        stopping.erase(&device->camera());
}

std::shared_ptr<Event> World::event(const Module *source, GenTL::EVENT_TYPE type) const
{
    for (const auto &event : handles.children<Event>(source)) {
        if (event->type() == type)
            return event;
    }
    return nullptr;
}

} // namespace TestProducer
