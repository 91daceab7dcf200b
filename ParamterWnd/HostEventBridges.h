// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QStringList>
#include <QWeakPointer>

#include "ParamterWnd/HostCore.h"

class ParameterWidgetManager;

// The bridges turn each call of the host into one signal; the caller's thread decides how it is delivered. They have
// no parent: a HostLink holds them.

/// The flag of a device-list event, set by the GUI thread and polled by the host's thread.
void setFinished(bool &flag);
bool isFinished(const bool &flag);

/// Device-list events. The host's call returns when a receiver has set the finish flag, after 5 s at the latest, and
/// when the bridge is released or goes.
class DeviceListUpdate : public QObject, public HostCore::IDeviceListUpdate
{
    Q_OBJECT

public:
    ~DeviceListUpdate() override { release(); }

    /// Sets the finish flags of all calls that wait, and of all to come, which nobody will handle. Any thread.
    void release();
    void OnUpdate(int source, std::vector<std::string> cardList, std::vector<std::string> camList) override;

Q_SIGNALS:
    void updateCams(int source, QStringList cardList, QStringList camList, QSharedPointer<bool> finishFlag);

private:
    void await(const QSharedPointer<bool> &finishFlag);

    std::mutex m_mutex;
    std::vector<QWeakPointer<bool>> m_awaited; ///< of the calls that are under way, and of some that have ended
    bool m_released = false;
};

/// Focus events. They do not cross threads: the type is not registered for queuing.
class FocusUpdate : public QObject, public HostCore::IFocusUpdate
{
    Q_OBJECT

public:
    void OnUpdate(HostCore::FOCUS_TYPE type, std::string id) override;

Q_SIGNALS:
    void focusChanged(HostCore::FOCUS_TYPE type, QString id);
};

/// Language events, as the language index: 0 for "English", 1 for every other name.
class LanguageUpdate : public QObject, public HostCore::ILangUpdate
{
    Q_OBJECT

public:
    void OnUpdate(std::string language) override;

Q_SIGNALS:
    void languageChanged(int language);
};

/// Image-mode events. They do not cross threads: the identifier's type is not registered for queuing.
class ImageModeUpdate : public QObject, public HostCore::IImageModeUpdate
{
    Q_OBJECT

public:
    void OnUpdate(std::string id, int mode) override;

Q_SIGNALS:
    void imageModeChanged(std::string id, int mode);
};

/// Import events.
class ImportUpdate : public QObject, public HostCore::IImportUpdate
{
    Q_OBJECT

public:
    void OnUpdate(std::string id) override;

Q_SIGNALS:
    void importUpdate(QString id);
};

/// Region events, handed to the manager on the caller's thread, which must be the GUI thread.
class ROIUpdate final : public HostCore::IROIDrawUpdate
{
public:
    /// `manager` must outlive the bridge.
    explicit ROIUpdate(ParameterWidgetManager *manager) : m_manager(manager) { }

    void OnUpdate(std::string id, int leftX, int leftY, int rightX, int rightY, int operation, int &roiId, bool &status,
                  int reserved1, int reserved2) override;

private:
    ParameterWidgetManager *m_manager;
};
