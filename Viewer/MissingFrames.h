// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include "Devices/Device.h"

/// Notices that an acquiring camera sends no frames, and says what to look at.
class MissingFrames : public QObject
{
    Q_OBJECT

public:
    static constexpr int Patience = 3000; ///< ms

    explicit MissingFrames(QObject *parent);

    /// The camera whose frames are expected from now on; null: none are. Naming the same one again changes nothing.
    void watch(Device *device);
    void noteFrame();
    /// In the application's language; empty while nothing is missing.
    QString text() const;

Q_SIGNALS:
    /// The text is another one.
    void changed();

private:
    /// What a device tells that may keep its frames from coming; empty texts where it has no such feature.
    struct Causes
    {
        QString triggerMode, triggerSource, packetSize;
    };

    void look();
    void setMissing(bool missing);
    QString triggerText() const;

    QPointer<Device> m_device;
    QTimer m_timer; ///< runs out when frames have not come for so long, and again as long as they do not
    bool m_isMissing = false;
    Causes m_causes;
};
