// SPDX-License-Identifier: MIT
#include <GenApi/PersistenceDevice.h>

#include "Guarded.h"

namespace Persistence {

namespace {

struct Pair
{
    const char *start;
    const char *end;
    bool isForStore;
};

constexpr Pair Pairs[] = {{"DeviceFeaturePersistenceStart", "DeviceFeaturePersistenceEnd", true},
                          {"DeviceRegistersStreamingStart", "DeviceRegistersStreamingEnd", false}};

bool execute(GenApi::INodeMap &map, const char *name)
{
    bool isExecuted = false;
    guarded([&] {
        const GenApi::CCommandPtr command = map.GetNode(name);
        if (GenApi::IsWritable(command)) {
            command->Execute();
            isExecuted = true;
        }
    });
    return isExecuted;
}

} // namespace

StreamingScope::StreamingScope(GenApi::INodeMap &map, Direction direction) : m_map(map)
{
    for (const Pair &pair : Pairs) {
        if ((direction == Direction::Load || pair.isForStore) && execute(map, pair.start))
            m_ends.push_back(pair.end);
    }
}

void StreamingScope::end()
{
    for (; !m_ends.empty(); m_ends.pop_back())
        execute(m_map, m_ends.back());
}

} // namespace Persistence
