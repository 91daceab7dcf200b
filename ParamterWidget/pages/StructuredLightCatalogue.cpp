// SPDX-License-Identifier: MIT
#include "ParamterWidget/pages/StructuredLightCatalogue.h"

namespace {

/// A row of the feature that its English label names.
constexpr RowSpec feature(const char *name, const char *chinese)
{
    return {Lookup::Direct, name, {name, chinese}, {"", ""}};
}

constexpr RowSpec TriggerControlRows[] = {
    feature("AcquisitionMode", "触发模式选择"),
    feature("TriggerSoftware", "生成软触发"),
};

constexpr RowSpec ImageControlRows[] = {
    feature("SensorMethod", "光机选择"),
    {Lookup::Custom, "", {"2D Acquisition Output", "2D采集输出"}, {"", ""}, RowId::ImageOutputs},
    {Lookup::Custom, "", {"2D Image Show", "2D采集显示"}, {"", ""}, RowId::ImageShowType},
    {Lookup::Direct, "Bining", {"Binning", "Binning"}, {"", ""}},
};

constexpr RowSpec BrightnessControlRows[] = {
    feature("Light1Selector", "光源1选择"), feature("Light1Mode", "光源1模式"),    feature("Light1Value", "光源1值"),
    feature("Light2Selector", "光源2选择"), feature("Light2Mode", "光源2模式"),    feature("Light2Value", "光源2值"),
    feature("Light3Selector", "光源3选择"), feature("Light3Mode", "光源3模式"),    feature("Light3Value", "光源3值"),
    feature("SensorGain", "增益"),          feature("SensorExposure", "曝光时间"),
};

constexpr RowSpec ImageProcessRows[] = {
    feature("Contrast", "对比度"),
    feature("Modulation", "调制度"),
    feature("LowBrightness", "低亮度"),
    feature("HighBrightness", "高亮度"),
    feature("FilterThreshold", "滤波核阈值"),
    feature("HighFilteringThreshold", "高度过滤阈值"),
    feature("Radius", "搜索半径"),
    feature("Neighborhoods", "邻域数量"),
    feature("FillThreshold", "填充阈值"),
    feature("Denoising", "是否开启去噪功能"),
    feature("HighTruncation", "高度截取高阈值"),
    feature("LowTruncation", "高度截取低阈值"),
};

constexpr RowSpec UserControlRows[] = {
    feature("UserSetSelector", "参数方案选择"),
    {Lookup::Custom,
     "",
     {"UserSetLoad", "参数加载"},
     {"Loads the User Set specified by UserSetSelector to the device and makes it active.",
      "将UserSetSelector指定的用户设置加载到设备并使其生效。"},
     RowId::UserSetLoad},
    feature("UserSetSave", "参数保存"),
    feature("UserSetDefault", "启动配置"),
};

constexpr GroupSpec ShootGroups[] = {
    {{"Trigger Control", "触发控制"}, TriggerControlRows},
    {{"Image Control", "图像控制"}, ImageControlRows},
};

constexpr GroupSpec ImageGroups[] = {
    {{"Brightness Control", "光亮控制"}, BrightnessControlRows},
    {{"Imgage Process", "图像处理"}, ImageProcessRows},
};

constexpr GroupSpec AdvancedGroups[] = {
    {{"User Control", "用户控制"}, UserControlRows},
};

} // namespace

const TabSpec StructuredLightCatalogue::Shoot = {ShootGroups};
const TabSpec StructuredLightCatalogue::Image = {ImageGroups};
const TabSpec StructuredLightCatalogue::Advanced = {AdvancedGroups};
