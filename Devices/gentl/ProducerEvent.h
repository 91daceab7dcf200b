// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>

#include <QByteArray>

#include "Devices/gentl/Modules.h"

/// One kind of event of a module, registered for as long as this lives.
class ProducerEvent
{
public:
    enum class Outcome { Came, Nothing, Failed };

    /// `source`: the module's handle, or that of its camera's port. Throws a GentlError.
    ProducerEvent(std::shared_ptr<Module> owner, GenTL::EVENTSRC_HANDLE source, GenTL::EVENT_TYPE type);
    ~ProducerEvent();

    ProducerEvent(const ProducerEvent &) = delete;
    ProducerEvent &operator=(const ProducerEvent &) = delete;

    /// Waits for the next one and puts its data into `data`.
    Outcome next(QByteArray *data, std::chrono::milliseconds time);
    /// Ends a wait, for good. Any thread.
    void kill();
    /// What the data of an event that came tell.
    InfoAnswer info(const QByteArray &data, GenTL::EVENT_DATA_INFO_CMD command) const;
    /// How the last wait failed.
    GenTL::GC_ERROR code() const { return m_code; }

private:
    const Producer &gentl() const { return *m_module->producer(); }

    const std::shared_ptr<Module> m_module;
    const GenTL::EVENTSRC_HANDLE m_source;
    const GenTL::EVENT_TYPE m_type;
    GenTL::EVENT_HANDLE m_handle = nullptr;
    GenTL::GC_ERROR m_code = GenTL::GC_ERR_SUCCESS;
};
