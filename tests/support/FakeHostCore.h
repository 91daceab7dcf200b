// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>

#include <QString>
#include <QStringList>

#include "ParamterWnd/HostCore.h"

/// The host of the tests: implements every function of HostCore over one object that tests fill, read and reset.
///
/// Each call to HostCore appends one line to the call log, written as in C++ without quotes, for example
/// "SetCameraNodeValue(cam, OffsetX, 0)" or "VLogInfo(TreeItem, no answer, 0)"; listeners are not printed.
/// Enumerators are printed as numbers. The log may be written from any thread.
class FakeHostCore
{
public:
    /// The answer to every DrawROI(); roiId and status are written on result 0 only.
    struct RoiAnswer
    {
        int result = 0;
        int roiId = 1;
        bool status = true;
    };

    /// The listeners that are registered now; null where none is. Tests raise events through them.
    struct Listeners
    {
        HostCore::IDeviceListUpdate *deviceList = nullptr;
        HostCore::IFocusUpdate *focus = nullptr;
        HostCore::ILangUpdate *language = nullptr;
        HostCore::IROIDrawUpdate *roi = nullptr;
        HostCore::IImageModeUpdate *imageMode = nullptr;
        HostCore::IImportUpdate *import = nullptr;
    };

    /// The one fake host of the process.
    static FakeHostCore &instance();

    /// Forgets devices, values, answers, listeners and the call log. Call it before each test.
    void reset();

    /// Node maps stay the test's property and must outlive their use.
    void setNodeMap(HostCore::FOCUS_TYPE type, const std::string &deviceKey, GenApi::INodeMap *nodeMap);
    void setCameraInfo(const std::string &deviceKey, int item, const std::string &value);
    void setCardInfo(const std::string &deviceKey, int item, const std::string &value);
    void setParamterInfo(int item, const std::string &value);
    void setNodeValue(const std::string &deviceKey, const std::string &nodeName, const std::string &value);

    /// Stored texts; empty when unknown.
    std::string cameraInfo(const std::string &deviceKey, int item) const;
    std::string paramterInfo(int item) const;
    std::string nodeValue(const std::string &deviceKey, const std::string &nodeName) const;

    /// What reading or writing that node by name returns from now on; 0 by default. Without a stored value a
    /// read fails with -1. A failing write stores nothing.
    void setReadResult(const std::string &deviceKey, const std::string &nodeName, int result);
    void setWriteResult(const std::string &deviceKey, const std::string &nodeName, int result);
    void setRoiAnswer(const RoiAnswer &answer);

    /// Runs inside every HostCore call with its log line, on the caller's thread. It may call HostCore and the panel.
    void setCallHook(std::function<void(const QString &line)> hook);

    /// The lines of all calls so far, or of the calls to the given functions only, in order.
    QStringList calls() const;
    QStringList callsTo(const QStringList &functions) const;
    QStringList callsTo(const QString &function) const { return callsTo(QStringList{function}); }
    void clearCalls();

    Listeners listeners;
    void *correctionField = nullptr; ///< the last argument of the last NotifyCorrection(), set before the call hook

private:
    friend struct FakeHostAccess;
    using Key = std::pair<std::string, std::string>;
    using ItemKey = std::pair<std::string, int>;

    void record(const char *function, const QStringList &arguments);

    mutable std::recursive_mutex m_mutex;
    QStringList m_calls;
    std::function<void(const QString &)> m_callHook;
    std::map<ItemKey, GenApi::INodeMap *> m_nodeMaps;
    std::map<ItemKey, std::string> m_cameraInfo;
    std::map<ItemKey, std::string> m_cardInfo;
    std::map<int, std::string> m_paramterInfo;
    std::map<Key, std::string> m_nodeValues;
    std::map<Key, int> m_readResults;
    std::map<Key, int> m_writeResults;
    RoiAnswer m_roiAnswer;
};
