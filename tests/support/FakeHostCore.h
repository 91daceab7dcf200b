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
        m_nodeMaps.set({deviceKey, type}, nodeMap);
    }
    void setCameraInfo(const std::string &key, int item, const std::string &value)
    {
        m_cameraInfo.set({key, item}, value);
    }
    void setCardInfo(const std::string &key, int item, const std::string &value) { m_cardInfo.set({key, item}, value); }
    void setParamterInfo(int item, const std::string &value) { m_paramterInfo.set(item, value); }
    void setNodeValue(const std::string &key, const std::string &node, const std::string &value)
    {
        m_nodeValues.set({key, node}, value);
    }

    /// What is stored; empty, or null, when unknown.
    GenApi::INodeMap *nodeMap(int type, const std::string &key) const { return m_nodeMaps.value({key, type}); }
    std::string cameraInfo(const std::string &key, int item) const { return m_cameraInfo.value({key, item}); }
    std::string cardInfo(const std::string &key, int item) const { return m_cardInfo.value({key, item}); }
    std::string paramterInfo(int item) const { return m_paramterInfo.value(item); }
    std::string nodeValue(const std::string &key, const std::string &node) const
    {
        return m_nodeValues.value({key, node});
    }

    /// What reading or writing that node by name returns from now on; 0 by default. Without a stored value a
    /// read fails with -1. A failing write stores nothing.
    void setReadResult(const std::string &key, const std::string &node, int result)
    {
        m_readResults.set({key, node}, result);
    }
    void setWriteResult(const std::string &key, const std::string &node, int result)
    {
        m_writeResults.set({key, node}, result);
    }
    int readNode(const std::string &key, const std::string &node, std::string &value) const;
    int writeNode(const std::string &key, const std::string &node, const std::string &value);

    /// Runs inside every HostCore call with its log line, on the caller's thread. It may call HostCore and the panel.
    void setCallHook(std::function<void(const QString &line)> hook) { m_callHook.set(0, std::move(hook)); }

    /// Adds a line to the log, then runs the hook.
    void record(const char *function, const QStringList &arguments);
    /// The lines of all calls so far, or of the calls to the given functions only, in order.
    QStringList calls() const { return m_calls.value(0); }
    QStringList callsTo(const QStringList &functions) const;
    QStringList callsTo(const QString &function) const { return callsTo(QStringList{function}); }
    void clearCalls() { m_calls.set(0, {}); }

    Listeners listeners;
    RoiAnswer roiAnswer;
    void *correctionField = nullptr; ///< the last argument of the last NotifyCorrection(), set before the call hook

private:
    /// A map for all threads.
    template <class Key, class Value>
    class Store
    {
    public:
        void set(const Key &key, Value value)
        {
            const std::lock_guard lock(m_mutex);
            m_values[key] = std::move(value);
        }
        void append(const Key &key, const QString &line)
        {
            const std::lock_guard lock(m_mutex);
            m_values[key] << line;
        }
        bool contains(const Key &key) const
        {
            const std::lock_guard lock(m_mutex);
            return m_values.count(key) > 0;
        }
        Value value(const Key &key) const
        {
            const std::lock_guard lock(m_mutex);
            const auto found = m_values.find(key);
            return found == m_values.end() ? Value() : found->second;
        }
        void clear()
        {
            const std::lock_guard lock(m_mutex);
            m_values.clear();
        }

    private:
        mutable std::mutex m_mutex;
        std::map<Key, Value> m_values;
    };
    using NodeKey = std::pair<std::string, std::string>;
    using ItemKey = std::pair<std::string, int>;

    Store<int, QStringList> m_calls;
    Store<int, std::function<void(const QString &)>> m_callHook;
    Store<ItemKey, GenApi::INodeMap *> m_nodeMaps;
    Store<ItemKey, std::string> m_cameraInfo;
    Store<ItemKey, std::string> m_cardInfo;
    Store<int, std::string> m_paramterInfo;
    Store<NodeKey, std::string> m_nodeValues;
    Store<NodeKey, int> m_readResults;
    Store<NodeKey, int> m_writeResults;
};
