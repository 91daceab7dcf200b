// SPDX-License-Identifier: MIT
#include "ParamterWnd/HostEventBridges.h"

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
    Q_EMIT updateCams(source, textsOf(cardList), textsOf(camList), finishFlag);
    for (int poll = 0; poll < FinishPolls && !isFinished(*finishFlag); ++poll)
        QThread::msleep(FinishPollMs);
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
