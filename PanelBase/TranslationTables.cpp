// SPDX-License-Identifier: MIT
#include "PanelBase/TranslationTables.h"

#include <utility>

namespace {

template <class Value>
using Entry = std::pair<const char *, Value>;

constexpr Entry<const char *> EntryNames[] = {
    {"连续触发", "ContinuousTrigger"},
    {"外部触发", "ExternalTrigger"},
    {"时间间隔", "Continuous"},
    {"编码器", "Encoder"},
    {"Off", "Off"},
    {"跟踪前移", "PositionUp"},
    {"跟踪后移", "PositionDown"},
    {"忽略前移", "DirectionUp"},
    {"忽略后移", "DirectionDown"},
    {"双向", "Motion"},
    {"2相1递增", "OneCycleOnePulse"},
    {"2相2递增", "OneCycleTwoPulse"},
    {"2相4递增", "OneCycleFourPulse"},
    {"默认", "Default"},
    {"备份1", "UserSet1"},
    {"备份2", "UserSet2"},
    {"备份3", "UserSet3"},
    {"备份4", "UserSet4"},
    {"高精度", "LinearSensing"},
    {"高动态1", "HDRLevel1"},
    {"高动态2", "HDRLevel2"},
    {"高动态3", "HDRLevel3"},
    {"长帧", "Long Frame"},
    {"短帧", "Short Frame"},
    {"仅采集", "AcqTrigger"},
    {"常亮", "AlwaysOn"},
    {"自动", "Auto"},
    {"手动", "Manual"},
    {"标准", "Maximum"},
    {"近端", "Near"},
    {"远端", "Far"},
    {"普通", "Normal"},
    {"快速", "Fast"},
    {"全速", "Full"},
};

constexpr Entry<int> ShowTypes[] = {
    {"2D Left", 1},        {"2D Right", 2},        {"Left Streak", 3},      {"Right Streak", 4},
    {"2.5D Left Shot", 5}, {"2.5D Right Shot", 6}, {"2.5D Left Reflex", 7}, {"2.5D Right Reflex", 8},
};

QString stored(const char *text)
{
    return QString::fromUtf8(text);
}

int stored(int number)
{
    return number;
}

template <class Value, class Entries>
QMap<QString, Value> tableOf(const Entries &entries)
{
    QMap<QString, Value> table;
    for (const auto &entry : entries)
        table.insert(stored(entry.first), stored(entry.second));
    return table;
}

} // namespace

const QMap<QString, QString> zhTransEnMap = tableOf<QString>(EntryNames);
const QMap<QString, int> imgShowTypeMap = tableOf<int>(ShowTypes);
