#include "TaskKeys.h"

namespace kvms_matrix::TaskKeys {

const QString kUserId = QStringLiteral("user_id");
const QString kMatrixIp = QStringLiteral("matrix_ip");
const QString kMatrixPort = QStringLiteral("matrix_port");
const QString kUserName = QStringLiteral("user_name");
const QString kUserPassword = QStringLiteral("user_password");
const QString kMatrixType = QStringLiteral("matrix_type");
const QString kMatrixPortForAdd = QStringLiteral("matrix_port_for_add");
const QString kMatrixVersion = QStringLiteral("matrix_version");
const QString kSceneId = QStringLiteral("scene_id");
const QString kSceneName = QStringLiteral("scene_name");
const QString kLoopId = QStringLiteral("loop_id");
const QString kWindowId = QStringLiteral("window_id");
const QString kLayoutRow = QStringLiteral("layout_row");
const QString kLayoutCol = QStringLiteral("layout_col");
const QString kMatrixName = QStringLiteral("matrix_name");
const QString kOpenCheckScreen = QStringLiteral("open_check_screen");
const QString kMatrixWindowLocation = QStringLiteral("matrix_window_location");
const QString kWindowSplit = QStringLiteral("window_split");
const QString kSubWindowId = QStringLiteral("subwindw_id");
const QString kWindowType = QStringLiteral("window_type");
const QString kFilePath = QStringLiteral("file_path");
const QString kIsFullWindow = QStringLiteral("is_full_window");
const QString kMatrixAddingPicture = QStringLiteral("matrix_adding_picture");
const QString kMatrixNetworkIp = QStringLiteral("matrix_network_ip");
const QString kMatrixNetworkMask = QStringLiteral("matrix_network_mask");
const QString kMatrixNetworkDns = QStringLiteral("matrix_network_dns");
const QString kMatrixNetworkGw = QStringLiteral("matrix_network_gw");
const QString kMatrixNetworkIpV6 = QStringLiteral("matrix_network_ip_ipv6");
const QString kMatrixNetworkGwV6 = QStringLiteral("matrix_network_gw_ipv6");
const QString kMatrixNetworkPrefixV6 = QStringLiteral("matrix_network_prefix_ipv6");
const QString kMatrixResolutionSetAll = QStringLiteral("matrix_resolution_setall");
const QString kVideoStreamMode = QStringLiteral("video_stream_mode");
const QString kOldPassword = QStringLiteral("old_password");
const QString kVolume = QStringLiteral("volumn");
const QString kEnable = QStringLiteral("enbale");
const QString kBeginTime = QStringLiteral("begin_time");
const QString kEndTime = QStringLiteral("end_time");
const QString kLogType = QStringLiteral("log_type");
const QString kMatrixId = QStringLiteral("matirx_id");
const QString kMatrixStatus = QStringLiteral("matrix_status");
const QString kUpdateMatrixPath = QStringLiteral("update_matrix_path");
const QString kDevId = QStringLiteral("dev_id");

} // namespace kvms_matrix::TaskKeys
