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
    void setNodeMap(HostCore::FOCUS_TYPE type, const std::string &deviceKey, GenApi::INodeMap *nodeMap)
    {
        set(&State::nodeMaps, {deviceKey, type}, nodeMap);
    }
    void setCameraInfo(const std::string &key, int item, const std::string &value)
    {
        set(&State::cameraInfo, {key, item}, value);
    }
    void setCardInfo(const std::string &key, int item, const std::string &value)
    {
        set(&State::cardInfo, {key, item}, value);
    }
    void setParamterInfo(int item, const std::string &value) { set(&State::paramterInfo, item, value); }
    void setNodeValue(const std::string &key, const std::string &node, const std::string &value)
    {
        set(&State::nodeValues, {key, node}, value);
    }

    /// What is stored; empty, or null, when unknown.
    GenApi::INodeMap *nodeMap(int type, const std::string &key) const { return value(&State::nodeMaps, {key, type}); }
    std::string cameraInfo(const std::string &key, int item) const { return value(&State::cameraInfo, {key, item}); }
    std::string cardInfo(const std::string &key, int item) const { return value(&State::cardInfo, {key, item}); }
    std::string paramterInfo(int item) const { return value(&State::paramterInfo, item); }
    std::string nodeValue(const std::string &key, const std::string &node) const
    {
        return value(&State::nodeValues, {key, node});
    }

    /// What reading or writing that node by name returns from now on; 0 by default. Without a stored value a
    /// read fails with -1. A failing write stores nothing.
    void setReadResult(const std::string &key, const std::string &node, int result)
    {
        set(&State::readResults, {key, node}, result);
    }
    void setWriteResult(const std::string &key, const std::string &node, int result)
    {
        set(&State::writeResults, {key, node}, result);
    }
    int readNode(const std::string &key, const std::string &node, std::string &value) const;
    int writeNode(const std::string &key, const std::string &node, const std::string &value);

    /// Runs inside every HostCore call with its log line, on the caller's thread. It may call HostCore and the panel.
    void setCallHook(std::function<void(const QString &line)> hook) { set(&State::callHook, 0, std::move(hook)); }

    /// Adds a line to the log, then runs the hook.
    void record(const char *function, const QStringList &arguments);
    /// The lines of all calls so far, or of the calls to the given functions only, in order.
    QStringList calls() const { return value(&State::calls, 0); }
    QStringList callsTo(const QStringList &functions) const;
    QStringList callsTo(const QString &function) const { return callsTo(QStringList{function}); }
    void clearCalls() { set(&State::calls, 0, {}); }

    Listeners listeners;
    RoiAnswer roiAnswer;
    void *correctionField = nullptr; ///< the last argument of the last NotifyCorrection(), set before the call hook

private:
    using NodeKey = std::pair<std::string, std::string>;
    using ItemKey = std::pair<std::string, int>;
    struct State
    {
        std::map<int, QStringList> calls;
        std::map<int, std::function<void(const QString &)>> callHook;
        std::map<ItemKey, GenApi::INodeMap *> nodeMaps;
        std::map<ItemKey, std::string> cameraInfo, cardInfo;
        std::map<int, std::string> paramterInfo;
        std::map<NodeKey, std::string> nodeValues;
        std::map<NodeKey, int> readResults, writeResults;
    };

    // Of and for all threads.
    template <class Map>
    void set(Map State::*map, const typename Map::key_type &key, typename Map::mapped_type value)
    {
        const std::lock_guard lock(m_mutex);
        (m_state.*map)[key] = std::move(value);
    }
    template <class Map>
    typename Map::mapped_type value(Map State::*map, const typename Map::key_type &key) const
    {
        const std::lock_guard lock(m_mutex);
        const auto found = (m_state.*map).find(key);
        return found == (m_state.*map).end() ? typename Map::mapped_type() : found->second;
    }

    mutable std::mutex m_mutex;
    State m_state;
};
