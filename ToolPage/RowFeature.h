// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QPointer>
#include <QString>

#include <GenApi/GenApi.h>

#include "PanelBase/DeviceReading.h"

/// The feature of a row: guards what reads and writes it, and reports to the host's log what fails.
class RowFeature
{
public:
    /// The module of the row's log lines.
    static constexpr const char *Module = "ToolPageWidgetItem";

    /// How the device of the feature is read; null: at once, however long it takes.
    void setReading(DeviceReading *reading) { m_reading = reading; }
    DeviceReading *reading() const { return m_reading; }
    bool isSilent() const { return m_reading && m_reading->isSilent(); }

    /// What log lines call the feature until its own name is known.
    void setLabel(const QString &label) { m_label = label; }
    /// A node that is no feature, or an Invisible one, counts as none.
    void bind(GenApi::INode *node);
    /// Lets go of the feature for good: nothing is read or written any more.
    void release();
    /// The device connection's; null without a feature.
    GenApi::INode *node() const { return m_node; }
    bool isReleased() const { return m_isReleased; }

    /// Takes over the name of a node and returns its type; intfIBase when the node cannot be asked.
    GenApi::EInterfaceType identify(GenApi::INode *node);
    /// Empty until a node was identified.
    QString name() const { return m_name; }

    /// Runs `read` and logs what it throws, once per cause; true when it ran to its end. Of a silent device the reading
    /// tells once for all rows.
    bool guardRead(const std::function<void()> &read);
    /// Whether the last fault of a read still holds.
    bool hasReadFault() const { return !m_readFault.isEmpty(); }
    /// From now on every fault is a new one.
    void clearReadFault() { m_readFault.clear(); }

    /// Runs `write`; true when it ran to its end. What it throws is logged, and calls `onRefused` if it is a GenICam
    /// exception. A released feature is not written.
    bool guardWrite(const std::function<void()> &write, const std::function<void()> &onRefused);
    void logRefusal(const QString &reason) const;
    static void log(const QString &message);

private:
    GenApi::INode *m_node = nullptr;
    QPointer<DeviceReading> m_reading;
    QString m_name;
    QString m_label;
    QString m_readFault; ///< logged last; empty after a successful refresh
    bool m_isReleased = false;
};
