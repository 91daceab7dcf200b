// SPDX-License-Identifier: MIT
#include "Devices/gentl/FeatureEvents.h"

#include <mutex>
#include <utility>
#include <vector>

#include "Features/NodeGuard.h"

namespace {

/// A feature, and the registers that its value comes from.
void invalidate(GenApi::INode &node)
{
    GenApi::NodeList_t sources;
    node.GetChildren(sources, GenApi::ctTerminalNodes);
    for (GenApi::INode *source : sources)
        source->InvalidateNode();
    node.InvalidateNode();
}

/// With or without the name space that stands before it. An unknown or empty one may mean any node.
void invalidate(GenApi::INodeMap &map, const QByteArray &name)
{
    GenApi::INode *node = map.GetNode(name.mid(name.lastIndexOf(':') + 1).constData());
    guardNode([&] { node ? invalidate(*node) : map.InvalidateNodes(); });
}

} // namespace

class FeatureEvents::Listening : public EventPump::Work
{
public:
    Listening(ModulePort::Target target, const std::shared_ptr<LoadedNodeMap> &nodes, std::shared_ptr<DeviceLine> line)
        : m_target(std::move(target)), m_nodes(nodes), m_line(std::move(line))
    { }

    ProducerEvent &begin() override
    {
        try {
            m_event = std::make_unique<ProducerEvent>(m_target.module, m_target.handle, Type);
        } catch (const GentlError &) { // some offer the events of a camera at its module only
            m_event = std::make_unique<ProducerEvent>(m_target.module, m_target.module->handle(), Type);
        }
        return *m_event;
    }

    void take(const QByteArray &data) override
    {
        const InfoAnswer name = m_event->info(data, GenTL::EVENT_DATA_ID);
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_names.push_back(name.isGood() ? name.text() : InfoAnswer{GenTL::GC_ERR_SUCCESS, 0, data}.text());
        if (m_isLive)
            tell();
    }

    void fail(GenTL::GC_ERROR code) override
    {
        m_line->report(QStringLiteral("changed features are no longer told: ")
                       + QString::fromStdString(gentlCodeName(code)));
    }

    void end() override
    {
        m_event.reset();
        m_target.module.reset();
    }

    void goLive()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isLive = true;
        tell();
    }

private:
    static constexpr GenTL::EVENT_TYPE Type = GenTL::EVENT_FEATURE_INVALIDATE;

    /// Under the lock.
    void tell()
    {
        for (const QByteArray &name : std::exchange(m_names, {})) {
            m_line->post([weak = m_nodes, name] {
                if (const std::shared_ptr<LoadedNodeMap> nodes = weak.lock())
                    invalidate(*nodes->get(), name);
            });
        }
    }

    ModulePort::Target m_target;
    const std::weak_ptr<LoadedNodeMap> m_nodes;
    const std::shared_ptr<DeviceLine> m_line;
    std::unique_ptr<ProducerEvent> m_event;
    std::mutex m_mutex; ///< guards what follows
    std::vector<QByteArray> m_names; ///< of features that have changed
    bool m_isLive = false;
};

FeatureEvents::FeatureEvents(const ModulePort::Target &target, std::shared_ptr<LoadedNodeMap> nodes,
                             std::shared_ptr<DeviceLine> line)
    : m_work(std::make_shared<Listening>(target, nodes, std::move(line)))
{
    guardNode([this] { m_pump = std::make_unique<EventPump>(m_work); });
}

FeatureEvents::~FeatureEvents() = default;

void FeatureEvents::goLive()
{
    m_work->goLive();
}
