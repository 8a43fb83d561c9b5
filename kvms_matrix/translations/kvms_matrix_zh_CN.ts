<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>ClientWindow</name>
    <message>
        <source>Quit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>%1 - %2</source>
        <translation>%1 - %2</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::BannerConfigDlg</name>
    <message>
        <source>Banner</source>
        <translation>横幅</translation>
    </message>
    <message>
        <source>Right to left</source>
        <translation>从右到左</translation>
    </message>
    <message>
        <source>Left to right</source>
        <translation>从左到右</translation>
    </message>
    <message>
        <source>Still</source>
        <translation>静止</translation>
    </message>
    <message>
        <source>Show the banner on the wall</source>
        <translation>在电视墙上显示横幅</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文字</translation>
    </message>
    <message>
        <source>Font size (of the banner height)</source>
        <translation>字体大小（占横幅高度）</translation>
    </message>
    <message>
        <source>Text colour</source>
        <translation>文字颜色</translation>
    </message>
    <message>
        <source>Background colour</source>
        <translation>背景颜色</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>速度</translation>
    </message>
    <message>
        <source>Direction</source>
        <translation>方向</translation>
    </message>
    <message>
        <source>Choose a colour</source>
        <translation>选择颜色</translation>
    </message>
    <message>
        <source>The banner text cannot be empty.</source>
        <translation>横幅文字不能为空。</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::CanvasMenu</name>
    <message>
        <source>playback</source>
        <translation>回放</translation>
    </message>
    <message>
        <source>exitback</source>
        <translation>退出回放</translation>
    </message>
    <message>
        <source>window clear</source>
        <translation>清空窗口</translation>
    </message>
    <message>
        <source>fullScreen</source>
        <translation>全屏</translation>
    </message>
    <message>
        <source>unjoin</source>
        <translation>取消拼接</translation>
    </message>
    <message>
        <source>grab screen</source>
        <translation>投屏</translation>
    </message>
    <message>
        <source>set background</source>
        <translation>设置背景</translation>
    </message>
    <message>
        <source>open voice</source>
        <translation>打开声音</translation>
    </message>
    <message>
        <source>close voice</source>
        <translation>关闭声音</translation>
    </message>
    <message>
        <source>HD</source>
        <translation>高清</translation>
    </message>
    <message>
        <source>SD</source>
        <translation>标清</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>自动</translation>
    </message>
    <message>
        <source>Division</source>
        <translation>分屏</translation>
    </message>
    <message>
        <source>Exit fullScreen</source>
        <translation>退出全屏</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::CaptureSettingsDlg</name>
    <message>
        <source>Screen capture settings</source>
        <translation>投屏设置</translation>
    </message>
    <message>
        <source>Sending</source>
        <translation>发送方式</translation>
    </message>
    <message>
        <source>Pictures sent straight to the decoder</source>
        <translation>图片直接发送到解码器</translation>
    </message>
    <message>
        <source>ONVIF stream pulled by the decoder</source>
        <translation>由解码器拉取 ONVIF 码流</translation>
    </message>
    <message>
        <source>IPv4 address of the stream&apos;s publisher</source>
        <translation>发布码流的 IPv4 地址</translation>
    </message>
    <message>
        <source>Stream address</source>
        <translation>码流地址</translation>
    </message>
    <message>
        <source>Ask before each projection</source>
        <translation>每次投屏前询问</translation>
    </message>
    <message>
        <source>Name on the wall</source>
        <translation>墙上显示的名称</translation>
    </message>
    <message>
        <source>Source id</source>
        <translation>信号源编号</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>投屏</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>The decoder pulls rtsp://%1/0 (main stream) and rtsp://%1/1 (sub stream) from the encoder that publishes this desktop.</source>
        <translation>解码器从发布本桌面的编码器拉取 rtsp://%1/0（主码流）和 rtsp://%1/1（子码流）。</translation>
    </message>
    <message>
        <source>The primary screen with its pointer, as 1920 x 1080 JPEG pictures, up to 25 a second.</source>
        <translation>主屏幕（含鼠标指针），以 1920 x 1080 JPEG 图片发送，每秒最多 25 张。</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::ConnectErrorText</name>
    <message>
        <source>Decoder(%1) connection failed:Incorrect user name or password!</source>
        <translation>解码器(%1)连接失败：用户名或密码错误！</translation>
    </message>
    <message>
        <source>Decoder(%1) connection failed:Incorrect user name or password,%2 errors have been made,%3 errors will be locked for %4 minutes!</source>
        <translation>解码器(%1)连接失败：用户名或密码错误，已错误%2次，再错误%3次将锁定%4分钟！</translation>
    </message>
    <message>
        <source>Decoder(%1) has been locked,it will unlock after %2 seconds.</source>
        <translation>解码器(%1)已被锁定，%2秒后解锁。</translation>
    </message>
    <message>
        <source>Decoder(%1) connection failed:Device not active!</source>
        <translation>解码器(%1)连接失败：设备未激活！</translation>
    </message>
    <message>
        <source>Decoder(%1) connection failed:unknow error!</source>
        <translation>解码器(%1)连接失败：未知错误！</translation>
    </message>
    <message>
        <source>Decoder connect failed(-1, connect server failed).</source>
        <translation>解码器连接失败(-1，连接服务器失败)。</translation>
    </message>
    <message>
        <source>Decoder connect failed(%1, %2).</source>
        <translation>解码器连接失败(%1，%2)。</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::ControlMatrixWt</name>
    <message>
        <source>Window %1 · %2</source>
        <translation>窗口 %1 · %2</translation>
    </message>
    <message>
        <source>Only one roaming window at most</source>
        <translation>最多只能有一个漫游窗口</translation>
    </message>
    <message>
        <source>please select window</source>
        <translation>请选择窗口</translation>
    </message>
    <message>
        <source>Select two or more free cells to join.</source>
        <translation>请选择两个或更多空闲单元格进行拼接。</translation>
    </message>
    <message>
        <source>Only free cells making a rectangle can be joined.</source>
        <translation>只能拼接组成矩形的空闲单元格。</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::DecoderConfigDlg</name>
    <message>
        <source>%1:%2  user %3</source>
        <translation>%1:%2  用户 %3</translation>
    </message>
    <message>
        <source>Please add at least one decoder to the wall.</source>
        <translation>请至少为电视墙添加一台解码器。</translation>
    </message>
    <message>
        <source>Please enter the name of the wall.</source>
        <translation>请输入电视墙名称。</translation>
    </message>
    <message>
        <source>Logging in to the decoders...</source>
        <translation>正在登录解码器...</translation>
    </message>
    <message>
        <source>Laying out the TV wall...</source>
        <translation>正在布局电视墙...</translation>
    </message>
    <message>
        <source>Setting up the TV wall failed(%1, %2).</source>
        <translation>电视墙设置失败(%1，%2)。</translation>
    </message>
    <message>
        <source>The TV wall is saved.</source>
        <translation>电视墙已保存。</translation>
    </message>
    <message>
        <source>Decoder configuration</source>
        <translation>解码器配置</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>端口</translation>
    </message>
    <message>
        <source>Device id</source>
        <translation>设备编号</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Add to wall</source>
        <translation>添加到电视墙</translation>
    </message>
    <message>
        <source>Add by address...</source>
        <translation>按地址添加...</translation>
    </message>
    <message>
        <source>Activate...</source>
        <translation>激活...</translation>
    </message>
    <message>
        <source>Network settings...</source>
        <translation>网络设置...</translation>
    </message>
    <message>
        <source>Decoders found</source>
        <translation>已发现的解码器</translation>
    </message>
    <message>
        <source>Lay the grid out anew (clears the wall&apos;s windows, scenes and loops)</source>
        <translation>重新布局网格（清除电视墙的窗口、场景和轮巡）</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>rows by</source>
        <translation>行 ×</translation>
    </message>
    <message>
        <source>columns</source>
        <translation>列</translation>
    </message>
    <message>
        <source>Screens</source>
        <translation>屏幕</translation>
    </message>
    <message>
        <source>Decoders (the first is the main one)</source>
        <translation>解码器（第一台为主解码器）</translation>
    </message>
    <message>
        <source>TV wall</source>
        <translation>电视墙</translation>
    </message>
    <message>
        <source>Save and connect</source>
        <translation>保存并连接</translation>
    </message>
    <message>
        <source>Searching for decoders...</source>
        <translation>正在搜索解码器...</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>已激活</translation>
    </message>
    <message>
        <source>Not active</source>
        <translation>未激活</translation>
    </message>
    <message numerus="yes">
        <source>%n decoder(s) found.</source>
        <translation>
            <numerusform>发现%n台解码器。</numerusform>
        </translation>
    </message>
    <message>
        <source>Please select a decoder.</source>
        <translation>请选择一台解码器。</translation>
    </message>
    <message>
        <source>Activating %1...</source>
        <translation>正在激活%1...</translation>
    </message>
    <message>
        <source>The decoder is activated.</source>
        <translation>解码器已激活。</translation>
    </message>
    <message>
        <source>Activation failed(%1, %2).</source>
        <translation>激活失败(%1，%2)。</translation>
    </message>
    <message>
        <source>The decoder now answers at %1.</source>
        <translation>解码器的新地址为%1。</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::DecoderStatusStrip</name>
    <message>
        <source>%1: connecting</source>
        <translation>%1：正在连接</translation>
    </message>
    <message>
        <source>%1: connected</source>
        <translation>%1：已连接</translation>
    </message>
    <message>
        <source>%1: connection lost</source>
        <translation>%1：连接已断开</translation>
    </message>
    <message>
        <source>%1: reconnecting (attempt %2)</source>
        <translation>%1：正在重连（第%2次）</translation>
    </message>
    <message>
        <source>%1: login failed</source>
        <translation>%1：登录失败</translation>
    </message>
    <message>
        <source>%1: not connected</source>
        <translation>%1：未连接</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::DevFileDlg</name>
    <message>
        <source>USB video files</source>
        <translation>USB 视频文件</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>大小</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>时长</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>修改时间</translation>
    </message>
    <message>
        <source>%1 KiB</source>
        <translation>%1 KiB</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>播放</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::FloatingWt</name>
    <message>
        <source>playback</source>
        <translation>回放</translation>
    </message>
    <message>
        <source>window clear</source>
        <translation>清空窗口</translation>
    </message>
    <message>
        <source>delete window</source>
        <translation>删除窗口</translation>
    </message>
    <message>
        <source>Window %1 · roaming</source>
        <translation>窗口 %1 · 漫游</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::LoginDlg</name>
    <message>
        <source>Add decoder</source>
        <translation>添加解码器</translation>
    </message>
    <message>
        <source>Activate decoder</source>
        <translation>激活解码器</translation>
    </message>
    <message>
        <source>Decoder login</source>
        <translation>解码器登录</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>端口</translation>
    </message>
    <message>
        <source>User</source>
        <translation>用户名</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>Confirm password</source>
        <translation>确认密码</translation>
    </message>
    <message>
        <source>Please enter an IPv4 address.</source>
        <translation>请输入IPv4地址。</translation>
    </message>
    <message>
        <source>Please enter the user name.</source>
        <translation>请输入用户名。</translation>
    </message>
    <message>
        <source>The two passwords differ or are empty.</source>
        <translation>两次输入的密码不一致或为空。</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::LoopSettingsDlg</name>
    <message>
        <source>Edit Loop</source>
        <translation>编辑轮巡</translation>
    </message>
    <message>
        <source>New Loop</source>
        <translation>新建轮巡</translation>
    </message>
    <message>
        <source> s</source>
        <translation> 秒</translation>
    </message>
    <message>
        <source>Add &gt;</source>
        <translation>添加 &gt;</translation>
    </message>
    <message>
        <source>&lt; Remove</source>
        <translation>&lt; 移除</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Dwell time</source>
        <translation>停留时间</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>视频源</translation>
    </message>
    <message>
        <source>Shown in turn (drag to order)</source>
        <translation>轮巡顺序（拖动排序）</translation>
    </message>
    <message>
        <source>A loop shows at most %1 sources.</source>
        <translation>一个轮巡最多包含 %1 个视频源。</translation>
    </message>
    <message>
        <source>The loop name cannot be empty or all spaces.</source>
        <translation>轮巡名称不能为空或全为空格。</translation>
    </message>
    <message>
        <source>Loop name is repeat,please input again.</source>
        <translation>轮巡名称重复，请重新输入。</translation>
    </message>
    <message>
        <source>Choose at least one source to show in turn.</source>
        <translation>请至少选择一个轮巡视频源。</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::MainMatrixForm</name>
    <message>
        <source>TV wall</source>
        <translation>电视墙</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::MatrixBannerWt</name>
    <message>
        <source>Drag to move the banner; double-click for its settings</source>
        <translation>拖动可移动横幅；双击打开横幅设置</translation>
    </message>
    <message>
        <source>Banner settings</source>
        <translation>横幅设置</translation>
    </message>
    <message>
        <source>Delete banner</source>
        <translation>删除横幅</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::MatrixDefaultForm</name>
    <message>
        <source>No TV-wall configuration is available. Please configure the TV-wall first.</source>
        <translation>暂无电视墙配置，请先配置电视墙。</translation>
    </message>
    <message>
        <source>Connect the TV wall</source>
        <translation>连接电视墙</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::MatrixForm</name>
    <message>
        <source>Open window failed(%1).</source>
        <translation>开窗失败(%1)。</translation>
    </message>
    <message>
        <source>delete window failed</source>
        <translation>删除窗口失败</translation>
    </message>
    <message>
        <source>cut window failed</source>
        <translation>分割窗口失败</translation>
    </message>
    <message>
        <source>cls failed</source>
        <translation>清屏失败</translation>
    </message>
    <message>
        <source>full window failed</source>
        <translation>全屏失败</translation>
    </message>
    <message>
        <source>device %1 set signal source failed(%2).</source>
        <translation>设备%1设置信号源失败(%2)。</translation>
    </message>
    <message>
        <source>Roaming window</source>
        <translation>漫游窗口</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>Login</source>
        <translation>登录</translation>
    </message>
    <message>
        <source>Decoder configuration</source>
        <translation>解码器配置</translation>
    </message>
    <message>
        <source>Scenes</source>
        <translation>场景</translation>
    </message>
    <message>
        <source>Loops</source>
        <translation>轮巡</translation>
    </message>
    <message>
        <source>Decoder %1</source>
        <translation>解码器 %1</translation>
    </message>
    <message>
        <source>tvwall login...</source>
        <translation>电视墙登录中...</translation>
    </message>
    <message>
        <source>Decoder login failed!</source>
        <translation>解码器登录失败！</translation>
    </message>
    <message>
        <source>Geting tv wall info...</source>
        <translation>正在获取电视墙信息...</translation>
    </message>
    <message>
        <source>The connection to decoder %1 was lost.</source>
        <translation>与解码器%1的连接已断开。</translation>
    </message>
    <message>
        <source>The TV wall is not connected, please connect the TV wall first.</source>
        <translation>电视墙未连接，请先连接电视墙。</translation>
    </message>
    <message>
        <source>Laying out the TV wall...</source>
        <translation>正在布局电视墙...</translation>
    </message>
    <message>
        <source>Setting up the TV wall failed(%1, %2).</source>
        <translation>电视墙设置失败(%1，%2)。</translation>
    </message>
    <message>
        <source>Video sound control failed!</source>
        <translation>视频声音控制失败！</translation>
    </message>
    <message>
        <source>Fold the list</source>
        <translation>折叠列表</translation>
    </message>
    <message>
        <source>Save the wall as a new scene</source>
        <translation>将电视墙保存为新场景</translation>
    </message>
    <message>
        <source>New loop</source>
        <translation>新建轮巡</translation>
    </message>
    <message>
        <source>Hide the scene and loop lists</source>
        <translation>隐藏场景和轮巡列表</translation>
    </message>
    <message>
        <source>Show the scene and loop lists</source>
        <translation>显示场景和轮巡列表</translation>
    </message>
    <message>
        <source>The upper limit of the scene has been reached.</source>
        <translation>场景数量已达上限。</translation>
    </message>
    <message>
        <source>Scene %1</source>
        <translation>场景%1</translation>
    </message>
    <message>
        <source>Save scene failed(%1).</source>
        <translation>保存场景失败(%1)。</translation>
    </message>
    <message>
        <source>Restore scene failed(%1).</source>
        <translation>恢复场景失败(%1)。</translation>
    </message>
    <message>
        <source>The scene name cannot be empty or all spaces.</source>
        <translation>场景名称不能为空或全为空格。</translation>
    </message>
    <message>
        <source>Scene name is repeat,please input again.</source>
        <translation>场景名称重复，请重新输入。</translation>
    </message>
    <message>
        <source>Rename scene failed(%1).</source>
        <translation>重命名场景失败(%1)。</translation>
    </message>
    <message>
        <source>Delete scene</source>
        <translation>删除场景</translation>
    </message>
    <message>
        <source>Are you sure you want to delete scene:%1?</source>
        <translation>确定要删除场景：%1 吗？</translation>
    </message>
    <message>
        <source>Delete scene failed(%1).</source>
        <translation>删除场景失败(%1)。</translation>
    </message>
    <message>
        <source>please select window</source>
        <translation>请选择窗口</translation>
    </message>
    <message>
        <source>Save loop %1 failed(%2).</source>
        <translation>保存轮巡 %1 失败(%2)。</translation>
    </message>
    <message>
        <source>Delete loop</source>
        <translation>删除轮巡</translation>
    </message>
    <message>
        <source>Are you sure you want to delete loop:%1?</source>
        <translation>确定要删除轮巡：%1 吗？</translation>
    </message>
    <message>
        <source>Delete loop failed(%1).</source>
        <translation>删除轮巡失败(%1)。</translation>
    </message>
    <message>
        <source>The loop name cannot be empty or all spaces.</source>
        <translation>轮巡名称不能为空或全为空格。</translation>
    </message>
    <message>
        <source>Please add this background image after the background image was added last time.</source>
        <translation>请在上一张背景图片添加完成后再添加此背景图片。</translation>
    </message>
    <message>
        <source>Select Image Files</source>
        <translation>选择图片文件</translation>
    </message>
    <message>
        <source>Images (*.jpg)</source>
        <translation>图片 (*.jpg)</translation>
    </message>
    <message>
        <source>file name max len is 89!</source>
        <translation>文件名最长为89个字符！</translation>
    </message>
    <message>
        <source>The picture is not a JPEG image: %1</source>
        <translation>该图片不是 JPEG 图像：%1</translation>
    </message>
    <message>
        <source>Projection screen failed(%1).</source>
        <translation>投屏失败(%1)。</translation>
    </message>
    <message>
        <source>device %1 create stream source failed(over max channel number or other error).</source>
        <translation>设备 %1 创建流媒体源失败（超过最大通道数或其他错误）。</translation>
    </message>
    <message>
        <source>device %1 set stream source failed(%2).</source>
        <translation>设备 %1 设置流媒体源失败(%2)。</translation>
    </message>
    <message>
        <source>The loop %1 is no longer on the decoder.</source>
        <translation>轮巡 %1 已不在解码器上。</translation>
    </message>
    <message>
        <source>Start loop failed(%1).</source>
        <translation>启动轮巡失败(%1)。</translation>
    </message>
    <message>
        <source>Banner</source>
        <translation>横幅</translation>
    </message>
    <message>
        <source>Put a scrolling banner on the wall</source>
        <translation>在电视墙上放置滚动横幅</translation>
    </message>
    <message>
        <source>USB files</source>
        <translation>USB 文件</translation>
    </message>
    <message>
        <source>Play a video file of the decoder&apos;s USB storage in the selected window</source>
        <translation>在选中的窗口中播放解码器 USB 存储中的视频文件</translation>
    </message>
    <message>
        <source>Set banner failed(%1).</source>
        <translation>设置横幅失败(%1)。</translation>
    </message>
    <message>
        <source>Remove banner failed(%1).</source>
        <translation>移除横幅失败(%1)。</translation>
    </message>
    <message>
        <source>Video file fetch is empty!</source>
        <translation>获取的视频文件为空！</translation>
    </message>
    <message>
        <source>HDMI input</source>
        <translation>HDMI 输入</translation>
    </message>
    <message>
        <source>Show an HDMI input of the decoder in the selected window</source>
        <translation>在选中的窗口中显示解码器的 HDMI 输入</translation>
    </message>
    <message>
        <source>HDMI input %1</source>
        <translation>HDMI 输入 %1</translation>
    </message>
    <message>
        <source>Screen colour</source>
        <translation>屏幕颜色</translation>
    </message>
    <message>
        <source>Brightness, contrast, saturation and hue of the selected window&apos;s screen</source>
        <translation>选中窗口所在屏幕的亮度、对比度、饱和度和色调</translation>
    </message>
    <message>
        <source>Reading the screen colour failed.</source>
        <translation>读取屏幕颜色失败。</translation>
    </message>
    <message>
        <source>Set screen colour failed(%1).</source>
        <translation>设置屏幕颜色失败(%1)。</translation>
    </message>
    <message>
        <source>The capture settings could not be saved.</source>
        <translation>投屏设置无法保存。</translation>
    </message>
    <message>
        <source>Capture</source>
        <translation>投屏</translation>
    </message>
    <message>
        <source>How &quot;grab screen&quot; puts this desktop on the wall</source>
        <translation>设置“投屏”如何将本桌面显示到电视墙</translation>
    </message>
    <message>
        <source>HDMI input %1 (no signal)</source>
        <translation>HDMI 输入 %1（无信号）</translation>
    </message>
    <message>
        <source>The decoder has no HDMI input</source>
        <translation>该解码器没有 HDMI 输入</translation>
    </message>
    <message>
        <source>Cannot set signal source under group loop</source>
        <translation>群组轮巡中无法设置信号源</translation>
    </message>
    <message>
        <source>Failed to add a video source: %1 is a video source already on the wall</source>
        <translation>添加视频源失败：%1 已是电视墙上的视频源</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::MatrixListItem</name>
    <message>
        <source>Rename</source>
        <translation>重命名</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::MatrixPanelWt</name>
    <message>
        <source>Camera</source>
        <translation>摄像机</translation>
    </message>
    <message>
        <source>Stream</source>
        <translation>视频流</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>图片</translation>
    </message>
    <message>
        <source>HDMI</source>
        <translation>HDMI</translation>
    </message>
    <message>
        <source>USB file</source>
        <translation>USB文件</translation>
    </message>
    <message>
        <source>Desktop</source>
        <translation>桌面</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>回放</translation>
    </message>
    <message>
        <source>No source</source>
        <translation>无信号源</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::NetworkSettingsDlg</name>
    <message>
        <source>Network settings of %1</source>
        <translation>%1的网络设置</translation>
    </message>
    <message>
        <source>Reading the settings...</source>
        <translation>正在读取设置...</translation>
    </message>
    <message>
        <source>IPv4 address</source>
        <translation>IPv4地址</translation>
    </message>
    <message>
        <source>Subnet mask</source>
        <translation>子网掩码</translation>
    </message>
    <message>
        <source>Gateway</source>
        <translation>网关</translation>
    </message>
    <message>
        <source>DNS server</source>
        <translation>DNS服务器</translation>
    </message>
    <message>
        <source>User</source>
        <translation>用户名</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>The decoder did not send its settings.</source>
        <translation>解码器未返回其网络设置。</translation>
    </message>
    <message>
        <source>Please enter an IPv4 address.</source>
        <translation>请输入IPv4地址。</translation>
    </message>
    <message>
        <source>Sending the settings...</source>
        <translation>正在发送设置...</translation>
    </message>
    <message>
        <source>Changing the network settings failed(%1, %2).</source>
        <translation>修改网络设置失败(%1，%2)。</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::PlaybackBarWt</name>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Stop playback</source>
        <translation>停止回放</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>%1 (end)</source>
        <translation>%1（结束）</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::PlaybackDlg</name>
    <message>
        <source>Play back a recording</source>
        <translation>回放录像</translation>
    </message>
    <message>
        <source>Camera channel</source>
        <translation>摄像机通道</translation>
    </message>
    <message>
        <source>Begin</source>
        <translation>开始时间</translation>
    </message>
    <message>
        <source>End</source>
        <translation>结束时间</translation>
    </message>
    <message>
        <source>Play back</source>
        <translation>回放</translation>
    </message>
    <message>
        <source>Choose a camera channel.</source>
        <translation>请选择摄像机通道。</translation>
    </message>
    <message>
        <source>The begin time must be before the end time.</source>
        <translation>开始时间必须早于结束时间。</translation>
    </message>
    <message>
        <source>A playback covers one day at most.</source>
        <translation>一次回放最长一天。</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::PlayerbackPlayer</name>
    <message>
        <source>Unknown Error</source>
        <translation>未知错误</translation>
    </message>
    <message>
        <source>video connect Failed</source>
        <translation>视频连接失败</translation>
    </message>
    <message>
        <source>video connect broken</source>
        <translation>视频连接断开</translation>
    </message>
    <message>
        <source>dev login failed</source>
        <translation>设备登录失败</translation>
    </message>
    <message>
        <source>playback reach dev limit</source>
        <translation>回放达到设备上限</translation>
    </message>
    <message>
        <source>data receive timeout</source>
        <translation>数据接收超时</translation>
    </message>
    <message>
        <source>weak password,disable opening video</source>
        <translation>弱密码，禁止打开视频</translation>
    </message>
    <message>
        <source>device using default password,disable opening video</source>
        <translation>设备使用默认密码，禁止打开视频</translation>
    </message>
    <message>
        <source>device offline</source>
        <translation>设备离线</translation>
    </message>
    <message>
        <source>No Video Data</source>
        <translation>无视频数据</translation>
    </message>
    <message>
        <source>Video Data Decode Failed</source>
        <translation>视频数据解码失败</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::ScreenColourDlg</name>
    <message>
        <source>Screen colour (row %1, column %2)</source>
        <translation>屏幕颜色（第 %1 行，第 %2 列）</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>亮度</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>对比度</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>饱和度</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>色调</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::SourcePane</name>
    <message>
        <source>Filter by name</source>
        <translation>按名称筛选</translation>
    </message>
    <message>
        <source>Devices</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>Streams</source>
        <translation>视频流</translation>
    </message>
</context>
<context>
    <name>kvms_matrix::WallPlayback</name>
    <message>
        <source>please select window</source>
        <translation>请选择窗口</translation>
    </message>
</context>
</TS>
