<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>CompareDialog</name>
    <message>
        <source>not there</source>
        <translation>不存在</translation>
    </message>
    <message>
        <source>Compare Settings</source>
        <translation>比较设置</translation>
    </message>
    <message>
        <source>Copy to the &amp;Right</source>
        <translation>复制到右侧(&amp;R)</translation>
    </message>
    <message>
        <source>Copy to the &amp;Left</source>
        <translation>复制到左侧(&amp;L)</translation>
    </message>
    <message>
        <source>Copy from the Left to &amp;All of the Model</source>
        <translation>从左侧复制到所有同型号设备(&amp;A)</translation>
    </message>
    <message>
        <source>L&amp;eft:</source>
        <translation>左侧(&amp;E)：</translation>
    </message>
    <message>
        <source>R&amp;ight:</source>
        <translation>右侧(&amp;I)：</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>左侧</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>右侧</translation>
    </message>
    <message>
        <source>copied</source>
        <translation>已复制</translation>
    </message>
    <message>
        <source>Choose what is to be compared.</source>
        <translation>请选择要比较的对象。</translation>
    </message>
    <message>
        <source>No differences.</source>
        <translation>没有差异。</translation>
    </message>
    <message>
        <source>Settings that differ: %1</source>
        <translation>不同的设置：%1</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>关闭(&amp;C)</translation>
    </message>
    <message>
        <source>Left out of %1: %2 (see the log).</source>
        <translation>%1 中被略去的设置：%2（见日志）。</translation>
    </message>
</context>
<context>
    <name>DeviceSettings</name>
    <message>
        <source>%1 was closed or lost while its settings were read.</source>
        <translation>读取设置时，%1 已被关闭或丢失。</translation>
    </message>
    <message>
        <source>Reading the settings of %1 was cancelled.</source>
        <translation>已取消读取 %1 的设置。</translation>
    </message>
    <message>
        <source>Settings of %1</source>
        <translation>%1 的设置</translation>
    </message>
    <message>
        <source>%1 is not open.</source>
        <translation>%1 未打开。</translation>
    </message>
    <message>
        <source>Reading settings...</source>
        <translation>正在读取设置...</translation>
    </message>
    <message>
        <source>Reading what the device has...</source>
        <translation>正在读取设备的当前值...</translation>
    </message>
    <message>
        <source>Writing settings...</source>
        <translation>正在写入设置...</translation>
    </message>
    <message>
        <source>Reading back...</source>
        <translation>正在回读...</translation>
    </message>
    <message>
        <source>%1: settings written: %2, did not take: %3.</source>
        <translation>%1：已写入 %2 项设置，未生效 %3 项。</translation>
    </message>
    <message>
        <source> The device was closed or lost; not tried: %1.</source>
        <translation>设备已被关闭或丢失；未尝试 %1 项。</translation>
    </message>
    <message>
        <source> Cancelled; not tried: %1.</source>
        <translation>已取消；未尝试 %1 项。</translation>
    </message>
    <message>
        <source>%1 is not written: it has lines that make no sense, which would be lost.</source>
        <translation>未写入 %1：其中有无法识别的行，写入会使其丢失。</translation>
    </message>
    <message>
        <source>%1 does not answer: its settings were not read.</source>
        <translation>%1 无应答：未能读取其设置。</translation>
    </message>
</context>
<context>
    <name>DeviceTree</name>
    <message>
        <source>Simulated Cameras</source>
        <translation>模拟相机</translation>
    </message>
    <message>
        <source>GigE Vision Cameras</source>
        <translation>GigE Vision 相机</translation>
    </message>
    <message>
        <source>USB3 Vision Cameras</source>
        <translation>USB3 Vision 相机</translation>
    </message>
    <message>
        <source>Test Cameras</source>
        <translation>测试相机</translation>
    </message>
    <message>
        <source>Description Files</source>
        <translation>描述文件</translation>
    </message>
    <message>
        <source>Other Cameras</source>
        <translation>其他相机</translation>
    </message>
    <message>
        <source>Cards</source>
        <translation>采集卡</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>已关闭</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>已打开</translation>
    </message>
    <message>
        <source>Acquiring</source>
        <translation>采集中</translation>
    </message>
    <message>
        <source>Lost</source>
        <translation>已丢失</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Devices</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>Opening...</source>
        <translation>正在打开...</translation>
    </message>
    <message>
        <source>Cancelling...</source>
        <translation>正在取消...</translation>
    </message>
    <message>
        <source>Opening... %1 %</source>
        <translation>正在打开... %1 %</translation>
    </message>
    <message>
        <source>Not answering</source>
        <translation>无响应</translation>
    </message>
    <message>
        <source>It is opened again as soon as it is there.</source>
        <translation>一旦重新出现，将自动打开。</translation>
    </message>
    <message>
        <source>The last try to open it failed: %1</source>
        <translation>上次打开失败：%1</translation>
    </message>
    <message>
        <source>Reached through %1</source>
        <translation>通过 %1 访问</translation>
    </message>
    <message>
        <source>Found in several ways: another one can be chosen in the menu.</source>
        <translation>可通过多种途径访问：可在菜单中选择其他途径。</translation>
    </message>
</context>
<context>
    <name>DeviceViews</name>
    <message>
        <source>No image of this size yet. Drag the region by its edges and corners.</source>
        <translation>尚无此尺寸的图像。请拖动区域的边和角进行调整。</translation>
    </message>
    <message>
        <source>Select a device.</source>
        <translation>请选择一个设备。</translation>
    </message>
    <message>
        <source>%1 is closed. Double-click it to open it.</source>
        <translation>%1 已关闭。双击即可打开。</translation>
    </message>
    <message>
        <source>%1 could not be opened: %2</source>
        <translation>无法打开 %1：%2</translation>
    </message>
    <message>
        <source>Opening %1...</source>
        <translation>正在打开 %1...</translation>
    </message>
    <message>
        <source>%1 does not answer any more. Double-click it to open it again.</source>
        <translation>%1 已无响应。双击可重新打开。</translation>
    </message>
    <message>
        <source>Waiting for images...</source>
        <translation>正在等待图像...</translation>
    </message>
    <message>
        <source>Start the acquisition to see images.</source>
        <translation>开始采集后即可看到图像。</translation>
    </message>
    <message>
        <source>This device has no images.</source>
        <translation>该设备没有图像。</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>Sensor</source>
        <translation>传感器</translation>
    </message>
    <message>
        <source>%1 does not answer any more. It is opened again as soon as it is there; close it to give it up.</source>
        <translation>%1 不再响应。一旦重新出现，将自动打开；若不再需要，请将其关闭。</translation>
    </message>
    <message>
        <source>%1
The last try failed: %2</source>
        <translation>%1
上次尝试失败：%2</translation>
    </message>
</context>
<context>
    <name>DeviceWays</name>
    <message>
        <source>Built-in search</source>
        <translation>内置搜索</translation>
    </message>
    <message>
        <source>Reach T&amp;hrough</source>
        <translation>访问途径(&amp;H)</translation>
    </message>
    <message>
        <source>Open %1</source>
        <translation>打开%1</translation>
    </message>
    <message>
        <source>device module</source>
        <translation>设备模块</translation>
    </message>
    <message>
        <source>stream %1</source>
        <translation>数据流 %1</translation>
    </message>
</context>
<context>
    <name>FrameStatus</name>
    <message>
        <source>%1 fps</source>
        <translation>%1 帧/秒</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>%1 lost</source>
        <translation>丢失 %1</translation>
    </message>
    <message>
        <source>%1 incomplete</source>
        <translation>不完整 %1</translation>
    </message>
    <message>
        <source>%1 too large</source>
        <translation>过大 %1</translation>
    </message>
    <message>
        <source>Frames of this acquisition that are not shown, beside %1 good ones.
Lost: the camera sent them, nothing of them came.
Incomplete: only some of their packets came, or not in time.
Too large: the camera sent more than it had announced; the acquisition starts anew with the new size.</source>
        <translation>本次采集中未显示的帧，另有 %1 帧正常。
丢失：相机已发送，但主机什么也没有收到。
不完整：只收到部分数据包，或未及时收到。
过大：相机发送的数据多于其声明的大小；采集按新的大小重新开始。</translation>
    </message>
</context>
<context>
    <name>HeightDisplay</name>
    <message>
        <source>no data</source>
        <translation>无数据</translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation>%1 mm</translation>
    </message>
    <message>
        <source>row %1, X %2 mm: %3</source>
        <translation>第 %1 行，X %2 mm：%3</translation>
    </message>
</context>
<context>
    <name>LoadDialog</name>
    <message>
        <source>Load Settings</source>
        <translation>加载设置</translation>
    </message>
    <message>
        <source>Acquisition is stopped for the load: start it &amp;again after it</source>
        <translation>加载时会停止采集：加载后重新开始采集(&amp;A)</translation>
    </message>
    <message>
        <source>%1, to be loaded into %2</source>
        <translation>将 %1 加载到 %2</translation>
    </message>
    <message>
        <source>&amp;Load</source>
        <translation>加载(&amp;L)</translation>
    </message>
    <message>
        <source>Problems of the file</source>
        <translation>文件中的问题</translation>
    </message>
    <message>
        <source>In the device</source>
        <translation>设备中</translation>
    </message>
    <message>
        <source>In the file</source>
        <translation>文件中</translation>
    </message>
    <message>
        <source>%1 is not open.</source>
        <translation>%1 未打开。</translation>
    </message>
    <message>
        <source>Nothing is to be written.</source>
        <translation>没有要写入的设置。</translation>
    </message>
    <message>
        <source>written</source>
        <translation>已写入</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>关闭(&amp;C)</translation>
    </message>
    <message>
        <source>The device was closed or does not answer any more. %1</source>
        <translation>设备已被关闭或不再响应。%1</translation>
    </message>
    <message>
        <source>Cancelled. %1</source>
        <translation>已取消。%1</translation>
    </message>
    <message>
        <source>Settings to be written: %1</source>
        <translation>将写入的设置：%1</translation>
    </message>
    <message>
        <source>Written: %1. Did not take: %2. Not tried: %3.</source>
        <translation>已写入：%1。未生效：%2。未尝试：%3。</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>取消(&amp;C)</translation>
    </message>
</context>
<context>
    <name>LoadStatus</name>
    <message>
        <source>longest event %1 ms, %2 accesses/s, %3 time-outs</source>
        <translation>最长事件 %1 ms，每秒访问 %2 次，超时 %3 次</translation>
    </message>
</context>
<context>
    <name>LogModel</name>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Module</source>
        <translation>模块</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>消息</translation>
    </message>
</context>
<context>
    <name>LogView</name>
    <message>
        <source>C&amp;lear Log</source>
        <translation>清空日志(&amp;L)</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>日志</translation>
    </message>
</context>
<context>
    <name>MissingFrames</name>
    <message>
        <source>Trigger: TriggerMode is On, so the camera waits for a trigger.</source>
        <translation>触发：TriggerMode 为 On，相机正在等待触发。</translation>
    </message>
    <message>
        <source>Trigger: TriggerMode is On, so the camera waits for a trigger from %1 (TriggerSource).</source>
        <translation>触发：TriggerMode 为 On，相机正在等待来自 %1（TriggerSource）的触发。</translation>
    </message>
    <message>
        <source>No image for %1 seconds. What to look at:</source>
        <translation>已有 %1 秒没有图像。请检查：</translation>
    </message>
    <message>
        <source>Packet size: GevSCPSPacketSize is %1; every part of the network must let such packets pass.</source>
        <translation>数据包大小：GevSCPSPacketSize 为 %1；网络的每一部分都必须允许这样大小的数据包通过。</translation>
    </message>
    <message>
        <source>Another controller: a program that controls the camera can keep its images from coming here.</source>
        <translation>其他控制者：控制该相机的程序可能使图像无法到达此处。</translation>
    </message>
</context>
<context>
    <name>ProducerTable</name>
    <message>
        <source>Producers</source>
        <translation>Producer 列表</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Vendor</source>
        <translation>厂商</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>Transport</source>
        <translation>传输层</translation>
    </message>
    <message>
        <source>From</source>
        <translation>来源</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>What the command line names is always used.</source>
        <translation>命令行指定的文件始终使用。</translation>
    </message>
</context>
<context>
    <name>ProducerWords</name>
    <message>
        <source>Mixed</source>
        <translation>混合</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>自定义</translation>
    </message>
    <message>
        <source>free</source>
        <translation>空闲</translation>
    </message>
    <message>
        <source>readable only</source>
        <translation>只读</translation>
    </message>
    <message>
        <source>not accessible</source>
        <translation>无法访问</translation>
    </message>
    <message>
        <source>in use by another program</source>
        <translation>正被其他程序使用</translation>
    </message>
    <message>
        <source>open in this program</source>
        <translation>已在本程序中打开</translation>
    </message>
    <message>
        <source>Environment</source>
        <translation>环境变量</translation>
    </message>
    <message>
        <source>Command line</source>
        <translation>命令行</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Switched off</source>
        <translation>已停用</translation>
    </message>
    <message>
        <source>Searching...</source>
        <translation>正在搜索...</translation>
    </message>
    <message>
        <source>Not searched yet</source>
        <translation>尚未搜索</translation>
    </message>
    <message>
        <source>Not used: %1</source>
        <translation>未使用：%1</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>Interfaces: %1, cameras: %2</source>
        <translation>接口：%1，相机：%2</translation>
    </message>
    <message>
        <source>It has no interfaces.</source>
        <translation>没有接口。</translation>
    </message>
    <message>
        <source>no cameras</source>
        <translation>没有相机</translation>
    </message>
</context>
<context>
    <name>ProducersDialog</name>
    <message>
        <source>GenTL Producers</source>
        <translation>GenTL Producer</translation>
    </message>
    <message>
        <source>A producer is a file (*.cti) that comes with the driver of a camera or frame grabber. The viewer searches with those that are ticked.</source>
        <translation>Producer 是随相机或采集卡驱动程序提供的文件 (*.cti)。查看器使用已勾选的文件进行搜索。</translation>
    </message>
    <message>
        <source>What the selected producer sees</source>
        <translation>所选 Producer 发现的设备</translation>
    </message>
    <message>
        <source>&amp;Add...</source>
        <translation>添加(&amp;A)...</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>移除(&amp;R)</translation>
    </message>
    <message>
        <source>Only producers that were added here can be removed; others are switched off.</source>
        <translation>只能移除在此处添加的 Producer；其他的可以停用。</translation>
    </message>
    <message>
        <source>Chec&amp;k Again</source>
        <translation>重新检查(&amp;K)</translation>
    </message>
    <message>
        <source>Try the file again, although it is known</source>
        <translation>重新检查已检查过的文件</translation>
    </message>
    <message>
        <source>&amp;Search Now</source>
        <translation>立即搜索(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>关闭(&amp;C)</translation>
    </message>
    <message>
        <source>Add Producers</source>
        <translation>添加 Producer</translation>
    </message>
    <message>
        <source>GenTL producers (*.cti);;All files (*)</source>
        <translation>GenTL Producer (*.cti);;所有文件 (*)</translation>
    </message>
    <message>
        <source>There is no producer yet: add the file that came with your hardware, or name its directory in the environment variable GENICAM_GENTL64_PATH.</source>
        <translation>还没有 Producer：请添加硬件附带的文件，或在环境变量 GENICAM_GENTL64_PATH 中指定其目录。</translation>
    </message>
</context>
<context>
    <name>RecordTable</name>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
</context>
<context>
    <name>RegionEditor</name>
    <message>
        <source>Measure range: %1</source>
        <translation>采集范围：%1</translation>
    </message>
    <message>
        <source>Mask %1: %2</source>
        <translation>屏蔽区域 %1：%2</translation>
    </message>
</context>
<context>
    <name>SettingsCommands</name>
    <message>
        <source>Save Settings</source>
        <translation>保存设置</translation>
    </message>
    <message>
        <source>Settings files (*.txt);;All files (*)</source>
        <translation>设置文件 (*.txt);;所有文件 (*)</translation>
    </message>
    <message>
        <source>Load Settings</source>
        <translation>加载设置</translation>
    </message>
    <message>
        <source>Settings are loaded into an open device: open one first.</source>
        <translation>设置只能加载到已打开的设备：请先打开一个设备。</translation>
    </message>
    <message>
        <source>The file is of another model.</source>
        <translation>该文件属于另一型号。</translation>
    </message>
    <message>
        <source>File: %1
Device: %2</source>
        <translation>文件：%1
设备：%2</translation>
    </message>
    <message>
        <source>&amp;Show What Would Change</source>
        <translation>显示将要更改的内容(&amp;S)</translation>
    </message>
    <message>
        <source>Settings of %2 were saved in %3: %1.</source>
        <translation>%2 的设置已保存到 %3：共 %1 项。</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>取消(&amp;C)</translation>
    </message>
    <message>
        <source>%1 is not open.</source>
        <translation>%1 未打开。</translation>
    </message>
</context>
<context>
    <name>SettingsLoad</name>
    <message>
        <source>not tried</source>
        <translation>未尝试</translation>
    </message>
    <message>
        <source>the device has no such feature</source>
        <translation>设备没有该参数</translation>
    </message>
    <message>
        <source>written, but it reads back as &apos;%1&apos;</source>
        <translation>已写入，但回读为“%1”</translation>
    </message>
    <message>
        <source>written, but it cannot be read back: %1</source>
        <translation>已写入，但无法回读：%1</translation>
    </message>
</context>
<context>
    <name>SettingsModel</name>
    <message>
        <source>Feature</source>
        <translation>参数</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>结果</translation>
    </message>
</context>
<context>
    <name>SettingsSource</name>
    <message>
        <source>File...</source>
        <translation>文件...</translation>
    </message>
    <message>
        <source>Settings File</source>
        <translation>设置文件</translation>
    </message>
    <message>
        <source>Settings files (*.txt);;All files (*)</source>
        <translation>设置文件 (*.txt);;所有文件 (*)</translation>
    </message>
</context>
<context>
    <name>SettingsTable</name>
    <message>
        <source>%1 of %2 shown</source>
        <translation>显示 %1 / %2</translation>
    </message>
    <message>
        <source>%1 of %2 shown, %3 ticked</source>
        <translation>显示 %1 / %2，已勾选 %3</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Only what did &amp;not take</source>
        <translation>仅显示未生效的项(&amp;N)</translation>
    </message>
    <message>
        <source>Only what &amp;differs</source>
        <translation>仅显示不同的项(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Tick Shown</source>
        <translation>勾选所显示的项(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Untick Shown</source>
        <translation>取消勾选所显示的项(&amp;U)</translation>
    </message>
</context>
<context>
    <name>ViewerCommands</name>
    <message>
        <source>&amp;Device</source>
        <translation>设备(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Developer</source>
        <translation>开发者(&amp;D)</translation>
    </message>
    <message>
        <source>Default Panel &amp;Mode</source>
        <translation>默认面板模式(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>语言(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Refresh Devices</source>
        <translation>刷新设备(&amp;R)</translation>
    </message>
    <message>
        <source>Search the network and the USB ports for cameras</source>
        <translation>在网络和 USB 端口上搜索相机</translation>
    </message>
    <message>
        <source>Open a GenICam camera description without a camera</source>
        <translation>不连接相机，打开 GenICam 相机描述文件</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>打开(&amp;O)</translation>
    </message>
    <message>
        <source>Open the selected device</source>
        <translation>打开所选设备</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>关闭(&amp;C)</translation>
    </message>
    <message>
        <source>Close the selected device</source>
        <translation>关闭所选设备</translation>
    </message>
    <message>
        <source>&amp;Start Acquisition</source>
        <translation>开始采集(&amp;S)</translation>
    </message>
    <message>
        <source>Let the selected camera acquire images</source>
        <translation>让所选相机采集图像</translation>
    </message>
    <message>
        <source>S&amp;top Acquisition</source>
        <translation>停止采集(&amp;T)</translation>
    </message>
    <message>
        <source>Stop acquiring images</source>
        <translation>停止采集图像</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Fit Image</source>
        <translation>适应窗口(&amp;F)</translation>
    </message>
    <message>
        <source>Show the whole image</source>
        <translation>显示整幅图像</translation>
    </message>
    <message>
        <source>Zoom &amp;100 %</source>
        <translation>原始大小(&amp;1)</translation>
    </message>
    <message>
        <source>Show one image pixel on one screen pixel</source>
        <translation>一个图像像素对应一个屏幕像素</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>放大(&amp;I)</translation>
    </message>
    <message>
        <source>Enlarge the image</source>
        <translation>放大图像</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>缩小(&amp;O)</translation>
    </message>
    <message>
        <source>Reduce the image</source>
        <translation>缩小图像</translation>
    </message>
    <message>
        <source>Show &amp;Common Attributes</source>
        <translation>显示常用属性(&amp;C)</translation>
    </message>
    <message>
        <source>Show the panel&apos;s tab of common attributes</source>
        <translation>显示面板的常用属性页</translation>
    </message>
    <message>
        <source>Show &amp;All Attributes</source>
        <translation>显示全部属性(&amp;A)</translation>
    </message>
    <message>
        <source>Show the panel&apos;s tab of all attributes</source>
        <translation>显示面板的全部属性页</translation>
    </message>
    <message>
        <source>Show &amp;Load</source>
        <translation>显示负载(&amp;L)</translation>
    </message>
    <message>
        <source>Show the longest event, the accesses a second and the time-outs in the status bar</source>
        <translation>在状态栏显示最长事件、每秒访问次数和超时次数</translation>
    </message>
    <message>
        <source>&amp;Disable Panel of Device</source>
        <translation>停用设备面板(&amp;D)</translation>
    </message>
    <message>
        <source>Let the panel of the focused camera stop reading it, until it is opened again</source>
        <translation>使当前相机的面板停止读取相机，直到相机重新打开</translation>
    </message>
    <message>
        <source>Mode &amp;0</source>
        <translation>模式 &amp;0</translation>
    </message>
    <message>
        <source>Mode &amp;1</source>
        <translation>模式 &amp;1</translation>
    </message>
    <message>
        <source>&amp;About...</source>
        <translation>关于(&amp;A)...</translation>
    </message>
    <message>
        <source>&amp;Search Automatically</source>
        <translation>自动搜索(&amp;S)</translation>
    </message>
    <message>
        <source>Show cameras as soon as they are connected</source>
        <translation>相机一连接即显示</translation>
    </message>
    <message>
        <source>&amp;Reopen Lost Devices</source>
        <translation>重新打开丢失的设备(&amp;R)</translation>
    </message>
    <message>
        <source>Open a device that was lost as soon as it is there again</source>
        <translation>丢失的设备一旦重新出现即自动打开</translation>
    </message>
    <message>
        <source>Acquire &amp;Again</source>
        <translation>恢复采集(&amp;A)</translation>
    </message>
    <message>
        <source>Let a camera that is back acquire images if it did when it was lost</source>
        <translation>相机恢复后，若丢失时正在采集则继续采集</translation>
    </message>
    <message>
        <source>&amp;Lose Frames</source>
        <translation>丢帧(&amp;L)</translation>
    </message>
    <message>
        <source>Let frames of the selected simulated camera get lost or come in part</source>
        <translation>使所选模拟相机的帧丢失或不完整</translation>
    </message>
    <message>
        <source>&amp;Enlarge Frames</source>
        <translation>放大帧(&amp;E)</translation>
    </message>
    <message>
        <source>Let the selected simulated camera send larger frames than it tells</source>
        <translation>使所选模拟相机发送比声明更大的帧</translation>
    </message>
    <message>
        <source>&amp;Unplug Device</source>
        <translation>拔出设备(&amp;U)</translation>
    </message>
    <message>
        <source>Take the link of the selected simulated device away</source>
        <translation>断开所选模拟设备的连接</translation>
    </message>
    <message>
        <source>&amp;Silence Device</source>
        <translation>设备静默(&amp;S)</translation>
    </message>
    <message>
        <source>Let the selected simulated device answer nothing</source>
        <translation>使所选模拟设备不作任何响应</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>Load &amp;Recent Settings</source>
        <translation>加载最近的设置(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Open Description File...</source>
        <translation>打开描述文件(&amp;O)...</translation>
    </message>
    <message>
        <source>&amp;Save Settings...</source>
        <translation>保存设置(&amp;S)...</translation>
    </message>
    <message>
        <source>Save the settings of the selected device in a file</source>
        <translation>将所选设备的设置保存到文件</translation>
    </message>
    <message>
        <source>&amp;Load Settings...</source>
        <translation>加载设置(&amp;L)...</translation>
    </message>
    <message>
        <source>Load settings from a file into the selected device</source>
        <translation>将文件中的设置加载到所选设备</translation>
    </message>
    <message>
        <source>&amp;Compare Settings...</source>
        <translation>比较设置(&amp;C)...</translation>
    </message>
    <message>
        <source>Compare the settings of devices and files</source>
        <translation>比较设备和文件的设置</translation>
    </message>
    <message>
        <source>GenTL &amp;Producers...</source>
        <translation>GenTL &amp;Producer...</translation>
    </message>
    <message>
        <source>Choose the makers&apos; drivers that the viewer searches with</source>
        <translation>选择查看器搜索时使用的厂商驱动程序</translation>
    </message>
</context>
<context>
    <name>ViewerWindow</name>
    <message>
        <source>Open Description File</source>
        <translation>打开描述文件</translation>
    </message>
    <message>
        <source>Camera descriptions (*.xml *.zip);;All files (*)</source>
        <translation>相机描述文件 (*.xml *.zip);;所有文件 (*)</translation>
    </message>
    <message>
        <source>About</source>
        <translation>关于</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Parameter Viewer %1&lt;/h3&gt;&lt;p&gt;Shows the features of GenICam cameras in the ParamterWnd panel.&lt;/p&gt;&lt;p&gt;MIT licence&lt;/p&gt;</source>
        <translation>&lt;h3&gt;参数查看器 %1&lt;/h3&gt;&lt;p&gt;在 ParamterWnd 面板中显示 GenICam 相机的属性。&lt;/p&gt;&lt;p&gt;MIT 许可证&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Searching for devices...</source>
        <translation>正在搜索设备...</translation>
    </message>
    <message>
        <source>Parameter Viewer</source>
        <translation>参数查看器</translation>
    </message>
    <message>
        <source>Devices</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>Parameters</source>
        <translation>参数</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>日志</translation>
    </message>
    <message>
        <source>Tool Bar</source>
        <translation>工具栏</translation>
    </message>
    <message>
        <source>There is no device %1.</source>
        <translation>没有设备 %1。</translation>
    </message>
</context>
<context>
    <name>WalkDialog</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1（%2）</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>取消(&amp;C)</translation>
    </message>
</context>
<context>
    <name>WriteLogDock</name>
    <message>
        <source>Save Write Log as Text</source>
        <translation>将写入日志保存为文本</translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation>文本文件 (*.txt);;所有文件 (*)</translation>
    </message>
    <message>
        <source>Save Write Log as Script</source>
        <translation>将写入日志保存为脚本</translation>
    </message>
    <message>
        <source>Shell scripts (*.sh);;All files (*)</source>
        <translation>Shell 脚本 (*.sh);;所有文件 (*)</translation>
    </message>
    <message>
        <source>Write Log</source>
        <translation>写入日志</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Search the write log</source>
        <translation>搜索写入日志</translation>
    </message>
    <message>
        <source>Save as &amp;Text...</source>
        <translation>保存为文本(&amp;T)...</translation>
    </message>
    <message>
        <source>Save a line for each write</source>
        <translation>每次写入保存为一行</translation>
    </message>
    <message>
        <source>Save as S&amp;cript...</source>
        <translation>保存为脚本(&amp;C)...</translation>
    </message>
    <message>
        <source>Save a shell script that does the writes again</source>
        <translation>保存可重新执行这些写入的 Shell 脚本</translation>
    </message>
    <message>
        <source>Clea&amp;r</source>
        <translation>清空(&amp;R)</translation>
    </message>
    <message>
        <source>Forget all writes</source>
        <translation>清除所有写入记录</translation>
    </message>
</context>
<context>
    <name>WriteLogModel</name>
    <message>
        <source>OK</source>
        <translation>成功</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>Feature</source>
        <translation>属性</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>值</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>结果</translation>
    </message>
</context>
</TS>
