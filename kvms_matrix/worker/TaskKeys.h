#pragma once

#include <QString>

namespace kvms_matrix {

// Names of the parameters a task carries in its map. The texts are fixed, misspellings
// included, because forms and handlers written apart must agree on them.
namespace TaskKeys {

extern const QString kUserId; // "user_id"
extern const QString kMatrixIp; // "matrix_ip"
extern const QString kMatrixPort; // "matrix_port": the management (login) port
extern const QString kUserName; // "user_name"
extern const QString kUserPassword; // "user_password"
extern const QString kMatrixType; // "matrix_type"
extern const QString kMatrixPortForAdd; // "matrix_port_for_add"
extern const QString kMatrixVersion; // "matrix_version"
extern const QString kSceneId; // "scene_id"
extern const QString kSceneName; // "scene_name"
extern const QString kLoopId; // "loop_id"
extern const QString kWindowId; // "window_id"
extern const QString kLayoutRow; // "layout_row"
extern const QString kLayoutCol; // "layout_col"
extern const QString kMatrixName; // "matrix_name"
extern const QString kOpenCheckScreen; // "open_check_screen"
extern const QString kMatrixWindowLocation; // "matrix_window_location"
extern const QString kWindowSplit; // "window_split"
extern const QString kSubWindowId; // "subwindw_id"
extern const QString kWindowType; // "window_type"
extern const QString kFilePath; // "file_path"
extern const QString kIsFullWindow; // "is_full_window"
extern const QString kMatrixAddingPicture; // "matrix_adding_picture"
extern const QString kMatrixNetworkIp; // "matrix_network_ip"
extern const QString kMatrixNetworkMask; // "matrix_network_mask"
extern const QString kMatrixNetworkDns; // "matrix_network_dns"
extern const QString kMatrixNetworkGw; // "matrix_network_gw"
extern const QString kMatrixNetworkIpV6; // "matrix_network_ip_ipv6"
extern const QString kMatrixNetworkGwV6; // "matrix_network_gw_ipv6"
extern const QString kMatrixNetworkPrefixV6; // "matrix_network_prefix_ipv6"
extern const QString kMatrixResolutionSetAll; // "matrix_resolution_setall"
extern const QString kVideoStreamMode; // "video_stream_mode"
extern const QString kOldPassword; // "old_password"
extern const QString kVolume; // "volumn"
extern const QString kEnable; // "enbale"
extern const QString kBeginTime; // "begin_time"
extern const QString kEndTime; // "end_time"
extern const QString kLogType; // "log_type"
extern const QString kMatrixId; // "matirx_id"
extern const QString kMatrixStatus; // "matrix_status"
extern const QString kUpdateMatrixPath; // "update_matrix_path"
extern const QString kDevId; // "dev_id"

} // namespace TaskKeys

} // namespace kvms_matrix
