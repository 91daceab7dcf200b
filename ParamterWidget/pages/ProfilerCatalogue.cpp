// SPDX-License-Identifier: MIT
#include "ParamterWidget/pages/ProfilerCatalogue.h"

namespace {

constexpr RowSpec TriggerSettingRows[] = {
    {Lookup::Custom,
     "",
     {"FrameTriggerMode", "帧触发模式"},
     {"intrigger: According to the frame trigger period and frame trigger delay, the camera internal clock gives a "
      "pulse signal to trigger.\nextrigger: When external trigger is selected, wait for the external trigger signal to "
      "start image collection.When the frame number of image collection is equal to the set frame number, the sensor "
      "stops the current collectiontaskand waits for the next external input trigger signal to activate the collection "
      "again.",
      "ContinuousTrigger（连续触发）：由相机内部时钟触发，按帧触发周期和帧触发延时给出脉冲信号。\n"
      "ExternalTrigger（外部触发）：等待外部触发信号，收到后开始采集图像。采集的帧数达到设定帧数后，"
      "传感器停止本次采集，等待下一个外部触发信号再次启动采集。"},
     RowId::FrameTriggerMode},
    {Lookup::Custom,
     "",
     {"TriggerSource", "触发源"},
     {"Select Line1, Line2, Software input source for frame trigger.",
      "选择帧触发的输入源：Line1、Line2或Software（软触发）。"},
     RowId::FrameTriggerSource},
    {Lookup::Custom,
     "",
     {"TriggerSoftware", "生成软触发"},
     {"Click to generate a soft signal.", "点击生成一个软触发信号。"},
     RowId::FrameTriggerSoftware},
};

constexpr RowSpec LineScanModeRows[] = {
    {Lookup::Custom,
     "",
     {"TriggerMode", "行扫描模式"},
     {"Continuous: Automatically activates and triggers according to the time, and continuously performs "
      "sampling.\nEncoder: The pulse signal through the encoder input terminal is used as the trigger signal, and the "
      "trigger is activated at any time to perform sampling.",
      "Continuous（时间间隔）：按时间自动触发，连续采样。\n"
      "Encoder（编码器）：以编码器输入端的脉冲信号作为触发信号，收到脉冲即触发采样。"},
     RowId::LineScanMode},
    {Lookup::Direct,
     "AcquisitionLineRate",
     {"AcquisitionLineRate", "扫描速度(Hz)"},
     {"Setting the trigger mode to time interval activates the row trigger frequency based on the frequency set by the "
      "scan speed.",
      "行扫描模式为Continuous（时间间隔）时，按扫描速度设定的频率触发每一行。"},
     RowId::AcquisitionLineRate,
     RowSpec::AlwaysShown},
    {Lookup::Direct,
     "EncoderDivider",
     {"EncoderDivider", "编码器分割(次/行)"},
     {"Set the input parameters according to the sensor X-axis data interval and the encoder pulse signal meter value, "
      "and adjust the sample contour display 1:1.When the encoder output speed is too fast, it can be activated after "
      "setting the interval.",
      "根据传感器X轴数据间隔和编码器脉冲当量设定输入参数，使被测物轮廓按1:"
      "1显示。编码器输出过快时，可设定间隔后再触发。"},
     RowId::EncoderDivider,
     RowSpec::AlwaysShown},
    {Lookup::Direct,
     "EncoderOutputMode",
     {"EncoderOutputMode", "编码器模式"},
     {"Triggered by connecting the encoder to match the motion mechanism, encoder trigger supports five modes.",
      "连接编码器，与运动机构配合触发。编码器触发支持五种模式：PositionUp（跟踪前移）、PositionDown（跟踪后移）、"
      "DirectionUp（忽略前移）、DirectionDown（忽略后移）和Motion（双向）。"},
     RowId::EncoderOutputMode,
     RowSpec::AlwaysShown},
    {Lookup::Direct,
     "EncoderMode",
     {"EncoderMode", "编码器输入模式"},
     {"",
      "根据所用编码器选择：OneCycleFourPulse（2相4递增）、OneCycleTwoPulse（2相2递增）或"
      "OneCycleOnePulse（2相1递增）。"},
     RowId::EncoderMode,
     RowSpec::AlwaysShown},
};

constexpr RowSpec EndFrameSettingRows[] = {
    {Lookup::Direct, "EndFrameMode", {"EndFrameMode", "帧结束模式"}, {"", ""}},
    {Lookup::Direct,
     "AcquisitionLineCount",
     {"AcquisitionLineCount", "采集总行数"},
     {"Set the total number of rows collected in the current capture screen.", "设定一幅画面采集的总行数。"}},
};

constexpr RowSpec AdvanceSettingRows[] = {
    {Lookup::Custom, "", {"AcqDataSource", "采集数据源"}, {"", ""}, RowId::AcquisitionDataSource},
    {Lookup::Custom, "", {"BatchTransmitMode", "批处理传输模式"}, {"", ""}, RowId::BatchMode},
};

constexpr GroupSpec TriggerGroups[] = {
    {{"Trigger Setting", "触发设置"}, TriggerSettingRows},
    {{"Line Scan Mode", "行扫描模式"}, LineScanModeRows},
    {{"End Frame Setting", "帧结束设置"}, EndFrameSettingRows},
    {{"Advance Setting", "高级设置"}, AdvanceSettingRows},
};

constexpr RowSpec GrabRangeSettingRows[] = {
    {Lookup::Direct,
     "ReverseX",
     {"ReverseX", "X方向镜像"},
     {"Select On or off to mirror the captured contour in the X-direction.", "打开或关闭，使采集的轮廓沿X方向镜像。"}},
    {Lookup::Custom,
     "",
     {"GrabRangeCompression", "采集范围压缩"},
     {"The measurement range can be customized according to ROI, and the selected camera only captures images within "
      "the current range.",
      "可用ROI自定义测量范围，相机只采集该范围内的图像。"},
     RowId::MeasureRange},
    {Lookup::Nothing,
     "",
     {"ShieldAreaSetting", "屏蔽区域设置"},
     {"The shielding area is set by ROI on the shooting image, so that the stray lightreceived by the shooting element "
      "is invalid, thus eliminating the influence of stray light.",
      "在拍摄图像上用ROI设定屏蔽区域，使受光元件接收到的杂散光无效，从而消除杂散光的影响。"}},
    {Lookup::Custom, "", {"  Mask1", "  Mask1"}, {"", ""}, RowId::Mask1},
    {Lookup::Custom, "", {"  Mask2", "  Mask2"}, {"", ""}, RowId::Mask2},
    {Lookup::Custom, "", {"  Mask3", "  Mask3"}, {"", ""}, RowId::Mask3},
};

constexpr RowSpec DisplayRows[] = {
    {Lookup::Custom,
     "",
     {"IntensityEnable", "灰度图显示"},
     {"Select Open or close to display the captured grayscale image.", "打开或关闭，显示采集的灰度图。"},
     RowId::GrayImage},
    {Lookup::Custom,
     "",
     {"ContourSpacer", "3D轮廓显示间距"},
     {"Set the display interval between rows in the Y direction of the 3D point cloud image.The correct 3D display can "
      "be achieved by setting the actual acquisition interval.",
      "设定3D点云图在Y方向的行显示间距。设为实际采集间距，即可正确显示3D图像。"},
     RowId::ContourSpacing},
    {Lookup::Custom,
     "",
     {"Z Range", "Z方向显示调节范围"},
     {"Automatically adjust the size of the image Z direction display range", "自动调节图像Z方向的显示范围。"},
     RowId::ZRange},
    {Lookup::Custom,
     "",
     {"ZUpSizeInfo", "最大值"},
     {"Displays the maximum value of the Z-direction display adjustment range.", "Z方向显示调节范围的最大值。"},
     RowId::ZMaximum},
    {Lookup::Custom,
     "",
     {"ZDownSizeInfo", "最小值"},
     {"Displays the minimum value of the Z-direction display adjustment range.", "Z方向显示调节范围的最小值。"},
     RowId::ZMinimum},
    {Lookup::Custom,
     "",
     {"Sampling Rate", "采样率"},
     {"Set the data sampling rate and select values 1, 2, 4, 8 to reduce the number of rows or columns of the camera "
      "used to capture the laser profile The amount, thereby reducing the resolution.",
      "设定数据采样率。选择1、2、4、8等值，可减少相机采集激光轮廓所用的行数或列数，从而降低分辨率。"},
     RowId::SamplingRate},
};

constexpr GroupSpec ImageGroups[] = {
    {{"Grab Range Setting", "采集范围设置"}, GrabRangeSettingRows},
    {{"3D Show", "3D显示"}, DisplayRows},
};

constexpr RowSpec ImageProcessingRows[] = {
    {Lookup::Direct,
     "SensingMode",
     {"HDR", "HDR功能"},
     {"According to the object, select the sensitivity characteristics of the shooting element from the high precision "
      "and high dynamic range.",
      "根据被测物，选择受光元件的感光特性：LinearSensing（高精度）或HDRLevel1至HDRLevel3（高动态范围）。"}},
    {Lookup::Direct,
     "ExposureTime",
     {"ExposureTime", "曝光时间(us)"},
     {"Sets the maximum exposure time of the shooting element in microseconds.",
      "设定受光元件的最大曝光时间，单位为微秒。"}},
    {Lookup::Custom,
     "",
     {"LaserAdjustMode", "自动光亮控制"},
     {"Set the brightness value or adjustment range, which is determined by the combination of laser light amount and "
      "exposure time, and choose Auto or Manual.",
      "设定亮度值或调节范围，亮度由激光光量和曝光时间共同决定。可选Auto（自动）或Manual（手动）。"},
     RowId::LaserAdjustMode},
    {Lookup::Direct,
     "LowerBound",
     {"LowerBound", "下限值"},
     {"Set the brightness value or lower limit of the adjustment range.", "设定亮度值或调节范围的下限。"},
     RowId::LowerBound,
     RowSpec::AlwaysShown},
    {Lookup::Direct,
     "UpperBound",
     {"UpperBound", "上限值"},
     {"Set the brightness value or upper limit of the adjustment range.", "设定亮度值或调节范围的上限。"},
     RowId::UpperBound,
     RowSpec::AlwaysShown},
    {Lookup::Direct,
     "Lasersetting",
     {"Lasersetting", "亮度"},
     {"Adjust intensity value.", "调节亮度值。"},
     RowId::LaserSetting,
     RowSpec::AlwaysShown},
};

constexpr RowSpec ContourProcessingRows[] = {
    {Lookup::Direct,
     "InvalidPointNum",
     {"InvalidPointNum", "无效数据补间点数"},
     {"The main missing contour data is considered undetectable due to too much or not enough light.",
      "用于补间因光量过强或不足而无法检测、缺失的轮廓数据。"}},
    {Lookup::Direct,
     "Threshold",
     {"Threshold", "峰值灵敏度"},
     {"Set the \"detection difficulty\" for detecting the peak value of each X coordinate when converting image data "
      "to contour data. The larger the value, the lower the sensitivity and the less easy it is to detect the peak "
      "value.",
      "设定由图像数据转换为轮廓数据时，检测各X坐标峰值的“检测难度”。值越大，灵敏度越低，越不容易检测到峰值。"}},
    {Lookup::Direct, "LaserWidthLower", {"LaserWidthLower", "最小峰值宽度过滤器"}, {"", ""}},
    {Lookup::Direct, "LaserWidthUpper", {"LaserWidthUpper", "最大峰值宽度过滤器"}, {"", ""}},
    {Lookup::Direct,
     "ExtractionMode",
     {"ExtractionMode", "选择峰值"},
     {"It means that when there are multiple peaks on the same X coordinate, a certain peak is selected.\nMaximum: "
      "Maximum peak.\nNear : The peak value of the nearest end(near the sensing head).\nFar : The peak value of the "
      "farthest end(far the sensing head).",
      "同一X坐标上有多个峰值时，选择其中一个。\nMaximum（标准）：最大的峰值。\nNear（近端）：离传感头最近的峰值。\n"
      "Far（远端）：离传感头最远的峰值。"}},
    {Lookup::Direct, "ContinuousMode", {"ContinuousMode", "连续模式"}, {"", ""}},
};

constexpr RowSpec FilterSettingRows[] = {
    {Lookup::Direct,
     "AvgFilterWinLen",
     {"AvgFilterWinLen", "X方向平滑值"},
     {"Apply moving window averaging to reduce random interference. ", "使用滑动窗口平均，减小随机干扰。"}},
    {Lookup::Direct,
     "MidFilterWinLen",
     {"MidFilterWinLen", "X方向中间值"},
     {"Replaces the value of the data point with the median value within the specified window in which the data point "
      "is located.Apply the median filter to the contour, set the range to [OFF,3,5,7,9].",
      "用数据点所在指定窗口内的中间值替换该数据点的值。对轮廓进行中值滤波，设置范围为[OFF,3,5,7,9]。"}},
    {Lookup::Direct,
     "TimeAxisAvgFltWinLen",
     {"TimeAxisAvgFltWinLen", "Y方向平滑值"},
     {"Apply moving window averaging to reduce random interference. ", "使用滑动窗口平均，减小随机干扰。"}},
    {Lookup::Direct,
     "TimeAxisMedFltWinLen",
     {"TimeAxisMedFltWinLen", "Y方向中间值"},
     {"Replaces the value of the data point with the median value within the specified window in which the data point "
      "is located.Apply the median filter to the contour, set the range to [OFF,3,5,7,9].",
      "用数据点所在指定窗口内的中间值替换该数据点的值。对轮廓进行中值滤波，设置范围为[OFF,3,5,7,9]。"}},
};

constexpr GroupSpec ContourGroups[] = {
    {{"Image Processing", "图像处理"}, ImageProcessingRows},
    {{"Contour Processing", "轮廓处理"}, ContourProcessingRows},
    {{"Filter Setting", "过滤器处理"}, FilterSettingRows},
};

constexpr RowSpec SupplementAndCorrectRows[] = {
    {Lookup::Direct,
     "XCoorOffset",
     {"XCoorOffset", "X方向偏移(mm)"},
     {"The sensor is set to adjust the image contour data to translate along the X-axis in millimeters.",
      "使轮廓数据沿X轴平移，单位为毫米。"}},
    {Lookup::Direct,
     "ZCoorOffset",
     {"ZCoorOffset", "Z方向偏移(mm)"},
     {"The sensor is set to adjust the image contour data to translate along the Z-axis in millimeters.",
      "使轮廓数据沿Z轴平移，单位为毫米。"}},
    {Lookup::Custom,
     "",
     {"TiltCorrection", "倾斜矫正"},
     {"Correct tilting errors in the X-axis direction caused by tilting of the sensing head Settings, object objects, "
      "or object object placement tables.",
      "校正因传感头安装、被测物或放置台倾斜造成的X轴方向的倾斜误差。"},
     RowId::TiltCorrection},
    {Lookup::Custom,
     "",
     {"HighCorrection", "高度矫正"},
     {"Correct height errors in the Z-axis direction caused by tilting of the sensing head Settings,object objects, or "
      "object object placement tables.",
      "校正因传感头安装、被测物或放置台倾斜造成的Z轴方向的高度误差。"},
     RowId::HeightCorrection},
};

constexpr RowSpec SchemeSettingRows[] = {
    {Lookup::Direct,
     "UserSetSelector",
     {"UserSetSelector", "参数选择"},
     {"The selection of parameters for trigger Settings, shooting Settings, contour Settings, and remediation "
      "Settingsis saved to UserSet1, UserSet2, UserSet3, and UserSet4 in the options.",
      "触发设置、拍摄设置、轮廓设置和补正设置的参数，保存到所选的UserSet1、UserSet2、UserSet3或UserSet4。"}},
    {Lookup::Custom,
     "",
     {"UserSetLoad", "参数加载"},
     {"Loads the User Set specified by UserSetSelector to the device and makes it active.",
      "将UserSetSelector指定的用户设置加载到设备并使其生效。"},
     RowId::UserSetLoad},
    {Lookup::Direct,
     "UserSetSave",
     {"UserSetSave", "参数保存"},
     {"Click the button to save the parameter Settings.", "点击按钮保存参数设置。"}},
    {Lookup::Direct, "UserSetDefault", {"UserSetDefault", "默认方案选择"}, {"", ""}},
};

constexpr RowSpec OtherSettingRows[] = {
    {Lookup::Direct,
     "LaserSwitch",
     {"LaserSwitch", "激光"},
     {"Enable the button to turn on the laser; Turn off the button to turn off the laser.",
      "打开开关，激光开启；关闭开关，激光关闭。"}},
    {Lookup::Direct,
     "LaserControlMode",
     {"LaserControlMode", "自动激光控制"},
     {"AlwaysOn: When the camera is connected, the laser is enabled and steady on; \nAcqTrigger: The laser is enabled "
      "only during the collection process and turned off after the collection is complete.",
      "AlwaysOn（常亮）：相机连接后激光开启并保持常亮；\n"
      "AcqTrigger（仅采集）：仅在采集过程中开启激光，采集完成后关闭。"}},
};

constexpr GroupSpec OthersGroups[] = {
    {{"Supplement And Correct", "补正"}, SupplementAndCorrectRows},
    {{"Scheme Setting", "方案设置"}, SchemeSettingRows},
    {{"Other Setting", "其他设置"}, OtherSettingRows},
};

} // namespace

const TabSpec ProfilerCatalogue::Trigger = {TriggerGroups};
const TabSpec ProfilerCatalogue::Image = {ImageGroups};
const TabSpec ProfilerCatalogue::Contour = {ContourGroups};
const TabSpec ProfilerCatalogue::Others = {OthersGroups};
