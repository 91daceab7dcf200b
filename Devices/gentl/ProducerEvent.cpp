// SPDX-License-Identifier: MIT
#include "Devices/gentl/ProducerEvent.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int LargestData = 64 * 1024; // bytes of one event

} // namespace

ProducerEvent::ProducerEvent(std::shared_ptr<Module> owner, GenTL::EVENTSRC_HANDLE source, GenTL::EVENT_TYPE type)
    : m_module(std::move(owner)), m_source(source), m_type(type)
{
    gentl().check("GCRegisterEvent", gentl()->GCRegisterEvent(m_source, m_type, &m_handle));
}

ProducerEvent::~ProducerEvent()
{
    gentl().note("GCUnregisterEvent", gentl()->GCUnregisterEvent(m_source, m_type));
}

ProducerEvent::Outcome ProducerEvent::next(QByteArray *data, std::chrono::milliseconds time)
{
    data->resize(LargestData);
    std::size_t size = LargestData;
    m_code = gentl()->EventGetData(m_handle, data->data(), &size, static_cast<std::uint64_t>(time.count()));
    const bool isOver = m_code == GenTL::GC_ERR_TIMEOUT || m_code == GenTL::GC_ERR_NO_DATA;
    if (m_code != GenTL::GC_ERR_SUCCESS)
        return isOver ? Outcome::Nothing : Outcome::Failed;
    data->resize(static_cast<int>(std::min<std::size_t>(size, LargestData)));
    return Outcome::Came;
}

void ProducerEvent::kill()
{
    gentl().note("EventKill", gentl()->EventKill(m_handle));
}

InfoAnswer ProducerEvent::info(const QByteArray &data, GenTL::EVENT_DATA_INFO_CMD command) const
{
    return askInfo([&](GenTL::INFO_DATATYPE *type, void *buffer, std::size_t *size) {
        return gentl()->EventGetDataInfo(m_handle, data.constData(), static_cast<std::size_t>(data.size()), command,
                                         type, buffer, size);
    });
}
