// SPDX-License-Identifier: MIT
#include "ParamterWnd/HostEventBridges.h"

#include <algorithm>

#include <QThread>

#include "ParamterWnd/ParameterWidgetManager.h"

namespace {

constexpr unsigned long FinishPollMs = 5;
constexpr int FinishPolls = 1000;

QStringList textsOf(const std::vector<std::string> &keys)
{
    QStringList texts;
    for (const std::string &key : keys)
        texts << QString::fromStdString(key);
    return texts;
}

} // namespace

void setFinished(bool &flag)
{
    __atomic_store_n(&flag, true, __ATOMIC_RELEASE);
}

bool isFinished(const bool &flag)
{
    return __atomic_load_n(&flag, __ATOMIC_ACQUIRE);
}

void DeviceListUpdate::OnUpdate(int source, std::vector<std::string> cardList, std::vector<std::string> camList)
{
    const QSharedPointer<bool> finishFlag(new bool(false));
    await(finishFlag);
    Q_EMIT updateCams(source, textsOf(cardList), textsOf(camList), finishFlag);
    for (int poll = 0; poll < FinishPolls && !isFinished(*finishFlag); ++poll)
        QThread::msleep(FinishPollMs);
}

/// The bridge may go while a call waits, which therefore looks at its flag alone.
void DeviceListUpdate::await(const QSharedPointer<bool> &finishFlag)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_awaited.erase(std::remove_if(m_awaited.begin(), m_awaited.end(), [](const auto &flag) { return flag.isNull(); }),
                    m_awaited.end());
    m_awaited.push_back(finishFlag);
    if (m_released)
        setFinished(*finishFlag);
}

void DeviceListUpdate::release()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_released = true;
    for (const QWeakPointer<bool> &awaited : m_awaited) {
        if (const QSharedPointer<bool> finishFlag = awaited.toStrongRef())
            setFinished(*finishFlag);
    }
}

void FocusUpdate::OnUpdate(HostCore::FOCUS_TYPE type, std::string id)
{
    Q_EMIT focusChanged(type, QString::fromStdString(id));
}

void LanguageUpdate::OnUpdate(std::string language)
{
    Q_EMIT languageChanged(language == "English" ? 0 : 1);
}

void ImageModeUpdate::OnUpdate(std::string id, int mode)
{
    Q_EMIT imageModeChanged(id, mode);
}

void ImportUpdate::OnUpdate(std::string id)
{
    Q_EMIT importUpdate(QString::fromStdString(id));
}

void ROIUpdate::OnUpdate(std::string id, int leftX, int leftY, int rightX, int rightY, int operation, int &roiId,
                         bool &status, int, int)
{
    m_manager->onROIPosChanged(id, leftX, leftY, rightX, rightY, operation, roiId, status);
}
