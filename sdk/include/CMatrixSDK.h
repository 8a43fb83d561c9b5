/*
 * CMatrixSDK - client library for video wall decoders.
 *
 * Conventions
 *  - Every function returns an int: 0 (CMATRIX_OK) on success, otherwise one of the
 *    negative CMATRIX_ERR_* codes below. Functions that return a list return the
 *    number of entries (>= 0) on success.
 *  - Lists returned through an out-pointer are allocated by the SDK and must be
 *    released with CMatrix_Free (logs with CMatrix_FreeLog) on the same handle.
 *  - Calls block until the decoder answers or the call times out
 *    (CMATRIX_ERR_TIMEOUT). Calls on one handle from several threads are safe.
 *  - Callbacks run on the SDK's own threads.
 *  - Records are packed to the byte layouts given beside them; integers are
 *    little-endian as on the decoder, texts NUL-terminated UTF-8 unless noted.
 */
#ifndef CMATRIX_SDK_H
#define CMATRIX_SDK_H

#include <stddef.h>
#include <stdint.h>
#ifndef __cplusplus
#include <stdbool.h>
#endif

#if defined(_WIN32)
#define CMATRIX_API __declspec(dllexport)
#else
#define CMATRIX_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------ */
/* Result codes                                                        */
/* ------------------------------------------------------------------ */
#define CMATRIX_OK 0
#define CMATRIX_ERR_FAILED -1            /* general failure / no connection */
#define CMATRIX_ERR_INVALID_PARAM -2     /* an argument is out of range or null */
#define CMATRIX_ERR_INVALID_HANDLE -3    /* the handle is unknown or destroyed */
#define CMATRIX_ERR_TIMEOUT -4           /* the decoder did not answer in time */
#define CMATRIX_ERR_CONNECT -5           /* the TCP connection could not be made */
#define CMATRIX_ERR_NOT_LOGGED_IN -6     /* request before a successful login */
#define CMATRIX_ERR_PASSWORD -7          /* wrong user name or password */
#define CMATRIX_ERR_USER_LOCKED -8       /* account locked after failed logins */
#define CMATRIX_ERR_NOT_ACTIVATED -9     /* factory-new unit, activate it first */
#define CMATRIX_ERR_DISCONNECTED -10     /* the connection was closed */
#define CMATRIX_ERR_PROTOCOL -11         /* malformed message */
#define CMATRIX_ERR_TOO_LARGE -12        /* message larger than the protocol allows */
#define CMATRIX_ERR_NO_MEMORY -13        /* allocation failed */
#define CMATRIX_ERR_NOT_SUPPORTED -14    /* request not supported by the decoder */
#define CMATRIX_ERR_WINDOW_NOT_FOUND -15 /* no window with that id */
#define CMATRIX_ERR_DIVISION -16         /* division not offered by the decoder */
#define CMATRIX_ERR_SCENE_NOT_FOUND -17  /* no scene with that id */
#define CMATRIX_ERR_SCHEME_NOT_FOUND -18 /* no display-in-turn scheme with that id */
#define CMATRIX_ERR_LIMIT -19            /* a capacity of the decoder is exhausted */
#define CMATRIX_ERR_BUSY -20             /* another maintenance job is running */
#define CMATRIX_ERR_FILE_NOT_FOUND -21   /* file does not exist */
#define CMATRIX_ERR_FILE_IO -22          /* file could not be read or written */
#define CMATRIX_ERR_FIRMWARE -23         /* firmware image rejected */
#define CMATRIX_ERR_ALREADY_ACTIVE -24   /* unit already activated */
#define CMATRIX_ERR_AUTH -25             /* discovery request not authenticated */
#define CMATRIX_ERR_MEDIA_NOT_FOUND -26  /* unknown media distribution */
#define CMATRIX_ERR_DECODE -27           /* media payload could not be decoded */
#define CMATRIX_ERR_FRAME -28            /* media frame envelope invalid */
#define CMATRIX_ERR_SUBWINDOW -29        /* sub-window out of range */
#define CMATRIX_ERR_GEOMETRY -30         /* rectangle outside the wall */
#define CMATRIX_ERR_WINDOW_EXISTS -31    /* window id already in use */
#define CMATRIX_ERR_NAME -32             /* name empty or too long */
#define CMATRIX_ERR_WEAK_PASSWORD -33    /* new password does not meet the policy */
#define CMATRIX_ERR_CONFIG -34           /* configuration file rejected */
#define CMATRIX_ERR_DEVICE_NOT_FOUND -35 /* no device answered to that id */
#define CMATRIX_ERR_LOOP_RUNNING -36     /* the window displays in turn: its sources are the loop's */
#define CMATRIX_ERR_SOURCE_ON_WALL -37   /* the camera is already shown in a window of the wall */

typedef struct CMatrixErrorInfo {
    int code;
    const char* description; /* English text, as in ErrorCodeInfo.xml */
} CMatrixErrorInfo;

/* The whole result-code table; returns its length. */
CMATRIX_API int CMatrix_GetErrorTable(const CMatrixErrorInfo** table);
/* Text of one code, or NULL for an unknown code. */
CMATRIX_API const char* CMatrix_GetErrorText(int code);

/* ------------------------------------------------------------------ */
/* Records                                                             */
/* ------------------------------------------------------------------ */
/* Every field sits at its natural alignment, so no packing pragma is needed;
 * the static_asserts at the end pin each layout. */

/* Device descriptor: a window source, and a decoder found by discovery. (2328 bytes) */
typedef struct DeviceInfo_t {
    union {
        int32_t subWindow; /* 0: 1-based sub-window number (window sources) */
        int32_t devType;   /* 0: device type, 9 = decoder (discovery) */
    };
    char devId[32]; /* 4 */
    union {
        int32_t channel;    /* 36 */
        int32_t modelClass; /* 36: 1, 2 small units, 4 large (discovery) */
    };
    union {
        int32_t stream;   /* 40: 0 main, 1 sub, -1 unknown; HDMI input number */
        int32_t modelSub; /* 40: model variant (discovery) */
    };
    char name[100];       /* 44: display name; discovery: firmware version */
    int32_t protocol;     /* 144 */
    char ip[16];          /* 148 */
    int32_t port;         /* 164 */
    char mainUrl[1024];   /* 168 */
    char subUrl[1024];    /* 1192 */
    char userName[32];    /* 2216 */
    char password[32];    /* 2248 */
    int32_t mode;         /* 2280: 2 camera, display and picture sources */
    uint8_t flag;         /* 2284: discovery: 1 when the unit is activated */
    uint8_t reserved[43]; /* 2285 */
} DeviceInfo_t;

/* Network settings of a decoder. (380 bytes) */
typedef struct DeviceNetworkCfg_t {
    char devId[32];      /* 0 */
    char mac[20];        /* 32 */
    char model[32];      /* 52 */
    int32_t dhcp;        /* 84 */
    char ipv4[16];       /* 88 */
    char mask[16];       /* 104 */
    char gateway[16];    /* 120 */
    char ipv6[48];       /* 136 */
    int32_t prefixV6;    /* 184 */
    char gatewayV6[48];  /* 188 */
    char dns[16];        /* 236 */
    char dns2[16];       /* 252 */
    int32_t httpPort;    /* 268 */
    int32_t controlPort; /* 272 */
    uint8_t reserved[104];
} DeviceNetworkCfg_t;

/* One screen of a wall as given to CMatrix_SetScreens. (232 bytes) */
typedef struct ScreenInfo_t {
    char name[32];         /* 0: decoder name */
    uint8_t reserved[100]; /* 32 */
    char ip[20];           /* 132 */
    uint16_t port;         /* 152 */
    char userName[32];     /* 154 */
    char password[32];     /* 186 */
    uint8_t reserved2[2];  /* 218 */
    int32_t outputIndex;   /* 220 */
    int32_t outputType;    /* 224 */
    int32_t position;      /* 228 */
} ScreenInfo_t;

/* A window as created or moved. Rectangles in wall units (0..32768). (24 bytes) */
typedef struct MatrixWindow_t {
    uint32_t id;        /* 0 */
    uint8_t floating;   /* 4 */
    uint8_t pad[3];     /* 5 */
    int32_t x, y, w, h; /* 8, 12, 16, 20 */
} MatrixWindow_t;

/* A window as reported by CMatrix_WindowGet. (36 bytes) */
typedef struct MatrixWindowStatus_t {
    MatrixWindow_t window; /* 0 */
    int32_t sourceKind;    /* 24: 1 = displaying in turn */
    int32_t turnIndex;     /* 28: 1-based index of the source shown */
    int32_t layer;         /* 32: stacking layer, 0 = none */
} MatrixWindowStatus_t;

/* (8 bytes) */
typedef struct WindowDivision_t {
    int32_t windowId;
    int32_t division;
} WindowDivision_t;

/* One sub-window of a window. (8 bytes) */
typedef struct WindowSlot_t {
    int32_t windowId;
    int32_t subWindowId;
} WindowSlot_t;

/* (104 bytes) */
typedef struct SceneInfo_t {
    uint32_t id;    /* 0 */
    char name[100]; /* 4 */
} SceneInfo_t;

/* Display-in-turn scheme. (112 bytes) */
typedef struct SchemeInfo_t {
    uint32_t id;       /* 0 */
    char name[100];    /* 4 */
    int32_t kind;      /* 104 */
    uint32_t interval; /* 108: seconds between sources */
} SchemeInfo_t;

/* One source of a scheme. (2312 bytes) */
typedef struct SchemeDevice_t {
    int32_t index;         /* 0: position in the scheme, filled by the decoder */
    char devId[32];        /* 4 */
    int32_t channel;       /* 36 */
    int32_t stream;        /* 40 */
    char name[100];        /* 44 */
    char protocolName[32]; /* 144 */
    char ip[16];           /* 176 */
    int32_t port;          /* 192 */
    char mainUrl[1024];    /* 196 */
    char subUrl[1024];     /* 1220 */
    char userName[32];     /* 2244 */
    char password[32];     /* 2276 */
    int32_t mode;          /* 2308 */
} SchemeDevice_t;

/* Scrolling banner. (1064 bytes) */
typedef struct BannerInfo_t {
    uint8_t show;        /* 0 */
    char message[1024];  /* 1 */
    uint8_t pad[3];      /* 1025 */
    int32_t direction;   /* 1028 */
    int32_t speed;       /* 1032 */
    int32_t x, y, w, h;  /* 1036, 1040, 1044, 1048 */
    int32_t fontSize;    /* 1052: wall units */
    uint32_t fontColor;  /* 1056: 0xAARRGGBB */
    uint32_t backColor;  /* 1060: 0xAARRGGBB */
} BannerInfo_t;

/* A file on the decoder's USB storage. (132 bytes) */
typedef struct DevPlayFile_t {
    int32_t index;        /* 0 */
    int32_t isDirectory;  /* 4 */
    int32_t sizeKiB;      /* 8 */
    int32_t durationSec;  /* 12: media files, 0 otherwise */
    char modified[20];    /* 16: "yyyy-MM-dd hh:mm:ss" */
    char format[32];      /* 36: "mp4", "jpg", ... */
    char fileName[64];    /* 68 */
} DevPlayFile_t;

/* Audio output of the wall. (44 bytes) */
typedef struct DeviceAudioInfo_t {
    char state[32];      /* 0: "open" or "close" */
    int32_t windowId;    /* 32: window whose audio is played */
    int32_t subWindowId; /* 36 */
    int32_t volume;      /* 40: 0..100 */
} DeviceAudioInfo_t;

/* Picture settings of one screen. (32 bytes) */
typedef struct ScreenColor {
    int32_t brightness; /* 0..100 */
    int32_t contrast;   /* 0..100 */
    int32_t saturation; /* 0..100 */
    int32_t hue;        /* 0..100 */
    uint8_t reserved[16];
} ScreenColor;

/* Output resolution. (16 bytes) */
typedef struct ScreenResolution_t {
    int32_t width;
    int32_t height;
    int32_t refreshRate;
    int32_t outputIndex; /* -1: all outputs */
} ScreenResolution_t;

/* HDMI connectors. (88 bytes) */
typedef struct HdmiStatus_t {
    int32_t inputCount;
    int32_t inputConnected[4];
    int32_t outputCount;
    int32_t outputConnected[16];
} HdmiStatus_t;

/* Firmware update progress. (44 bytes) */
typedef struct UpdateStatus_t {
    int32_t state;    /* UPDATE_STATE_* */
    int32_t progress; /* 0..100 */
    int32_t result;   /* CMATRIX_OK or an error code when failed */
    char version[32]; /* firmware version once finished */
} UpdateStatus_t;

#define UPDATE_STATE_UPLOADING 0
#define UPDATE_STATE_UPGRADING 1
#define UPDATE_STATE_FINISHED 2
#define UPDATE_STATE_FAILED 3

/* One entry of the operation log. (256 bytes) */
typedef struct LogInfo_t {
    uint32_t time;      /* seconds since 1970 UTC */
    int32_t type;       /* LOG_TYPE_* */
    char user[32];
    char content[216];
} LogInfo_t;

#define LOG_TYPE_ALL 0
#define LOG_TYPE_OPERATION 1
#define LOG_TYPE_ALARM 2
#define LOG_TYPE_SYSTEM 3

/* What a decoder can hold, as it declares at login. (48 bytes)
 * The SDK refuses any list answer longer than these (CMATRIX_ERR_TOO_LARGE) before it
 * keeps the list. A decoder that declares nothing, or more than CMATRIX_CAPACITY_CEILING
 * gives, is held to the ceiling. */
typedef struct MatrixCapacity_t {
    int32_t maxCols;          /* 0: grid columns */
    int32_t maxRows;          /* 4: grid rows */
    int32_t maxWindows;       /* 8: windows at once, floating ones included */
    int32_t maxDivision;      /* 12: sub-windows of one window */
    int32_t maxScreens;       /* 16 */
    int32_t maxScenes;        /* 20 */
    int32_t maxSchemes;       /* 24 */
    int32_t maxSchemeDevices; /* 28: sources of one scheme */
    int32_t maxFiles;         /* 32: entries of the USB file list */
    int32_t maxLogs;          /* 36: entries of one log answer */
    int32_t maxDistributions; /* 40: media distributions at once */
    int32_t reserved;         /* 44 */
} MatrixCapacity_t;

/* ------------------------------------------------------------------ */
/* Handles and callbacks                                               */
/* ------------------------------------------------------------------ */
typedef void* CMHANDLE;  /* one decoder connection */
typedef void* CMMDHANDLE; /* one media distribution */

#define CMATRIX_EVENT_DISCONNECTED 0 /* connection lost (peer closed, heartbeat missed) */

typedef void (*CMatrix_StatusCallback)(CMHANDLE handle, int event, void* user);
typedef void (*CMatrix_UpdateCallback)(const UpdateStatus_t* status, void* user);
typedef void (*Discovery_SearchCallback)(bool finished, const DeviceInfo_t* device, void* user);

/* ------------------------------------------------------------------ */
/* Connection                                                          */
/* ------------------------------------------------------------------ */
CMATRIX_API CMHANDLE CMatrix_Create(void);
CMATRIX_API int CMatrix_Destroy(CMHANDLE handle);
CMATRIX_API int CMatrix_RegisterCallback(CMHANDLE handle, CMatrix_StatusCallback callback, void* user);
CMATRIX_API int CMatrix_Connect(CMHANDLE handle, const char* ip, unsigned short port, const char* user,
                                const char* password, int timeoutMs);
/* JSON text describing the last failed login: {"ERRCODE":"...","PARAM":{...}} */
CMATRIX_API int CMatrix_GetLoginErrMsg(CMHANDLE handle, char* buffer, int size);
CMATRIX_API int CMatrix_SetTime(CMHANDLE handle, int year, int month, int day, int hour, int minute, int second);
CMATRIX_API int CMatrix_Disconnect(CMHANDLE handle);
/* Per-call timeout for later requests on this handle (default 5000 ms). */
CMATRIX_API int CMatrix_SetTimeout(CMHANDLE handle, int timeoutMs);
/* What the connected decoder can hold (the ceilings while not connected). No round trip. */
CMATRIX_API int CMatrix_GetCapacity(CMHANDLE handle, MatrixCapacity_t* capacity);
CMATRIX_API int CMatrix_Free(CMHANDLE handle, void* list);
CMATRIX_API int CMatrix_FreeLog(CMHANDLE handle, LogInfo_t* logs);

/* ------------------------------------------------------------------ */
/* Wall and windows                                                    */
/* ------------------------------------------------------------------ */
CMATRIX_API int CMatrix_GetMatrix(CMHANDLE handle, int* cols, int* rows, char* name, int nameSize);
CMATRIX_API int CMatrix_SetMatrix(CMHANDLE handle, int cols, int rows, const char* name);
CMATRIX_API int CMatrix_GetScreens(CMHANDLE handle, ScreenInfo_t** screens);
CMATRIX_API int CMatrix_SetScreens(CMHANDLE handle, const ScreenInfo_t* screens, int count, bool reset);
/* Role of the decoder in a wall: 0 alone, 1 main, 2 secondary of the decoder at masterIp. */
CMATRIX_API int CMatrix_SetStatus(CMHANDLE handle, int status, const char* masterIp);

CMATRIX_API int CMatrix_WindowAdd(CMHANDLE handle, const MatrixWindow_t* windows, int count, bool replace);
CMATRIX_API int CMatrix_WindowDel(CMHANDLE handle, const uint32_t* windowIds, int count);
CMATRIX_API int CMatrix_WindowGet(CMHANDLE handle, MatrixWindowStatus_t** windows);
CMATRIX_API int CMatrix_WindowMove(CMHANDLE handle, const MatrixWindow_t* window);
CMATRIX_API int CMatrix_WindowSetFullScreen(CMHANDLE handle, int windowId, int subWindowId, int full);
CMATRIX_API int CMatrix_WindowGetDivision(CMHANDLE handle, WindowDivision_t** divisions);
CMATRIX_API int CMatrix_WindowSetDivision(CMHANDLE handle, int windowId, int division);
CMATRIX_API int CMatrix_WindowDeviceAdd(CMHANDLE handle, int windowId, const DeviceInfo_t* devices, int count,
                                        bool reset);
CMATRIX_API int CMatrix_WindowDeviceDel(CMHANDLE handle, int windowId, const DeviceInfo_t* devices, int count);
CMATRIX_API int CMatrix_WindowDeviceGet(CMHANDLE handle, int windowId, DeviceInfo_t** devices);

/* ------------------------------------------------------------------ */
/* Scenes and display-in-turn schemes                                  */
/* ------------------------------------------------------------------ */
CMATRIX_API int CMatrix_SceneCreate(CMHANDLE handle, uint32_t sceneId, const char* name);
CMATRIX_API int CMatrix_SceneGet(CMHANDLE handle, SceneInfo_t** scenes);
CMATRIX_API int CMatrix_SceneApply(CMHANDLE handle, uint32_t sceneId);
CMATRIX_API int CMatrix_SceneDelete(CMHANDLE handle, const uint32_t* sceneIds, int count);

CMATRIX_API int CMatrix_SchemeSet(CMHANDLE handle, const SchemeInfo_t* scheme);
CMATRIX_API int CMatrix_SchemeGet(CMHANDLE handle, SchemeInfo_t** schemes);
CMATRIX_API int CMatrix_SchemeDel(CMHANDLE handle, const uint32_t* schemeIds, int count);
CMATRIX_API int CMatrix_SchemeAddDevices(CMHANDLE handle, uint32_t schemeId, const SchemeDevice_t* devices, int count,
                                         bool reset);
CMATRIX_API int CMatrix_SchemeGetDevices(CMHANDLE handle, uint32_t schemeId, SchemeDevice_t** devices);
/* Starts the scheme in the window; startIndex is the 0-based source shown first. */
CMATRIX_API int CMatrix_SchemeSelect(CMHANDLE handle, int windowId, uint32_t schemeId, int startIndex);
/* enable 0 stops a window's display in turn. */
CMATRIX_API int CMatrix_WindowSetDisplayInTurn(CMHANDLE handle, int windowId, int enable);

/* ------------------------------------------------------------------ */
/* Banner, inputs, files, colour, audio                                */
/* ------------------------------------------------------------------ */
CMATRIX_API int CMatrix_DisplayBanner(CMHANDLE handle, const BannerInfo_t* banner);
CMATRIX_API int CMatrix_GetBanner(CMHANDLE handle, BannerInfo_t* banner);
CMATRIX_API int CMatrix_GetHdmiIn_OutStatus(CMHANDLE handle, HdmiStatus_t* status);
CMATRIX_API int CMatrix_WindowPlayHdmiIn(CMHANDLE handle, const WindowSlot_t* window, int input);
CMATRIX_API int CMatrix_GetFileList(CMHANDLE handle, DevPlayFile_t** files);
CMATRIX_API int CMatrix_WindowPlayFile(CMHANDLE handle, const WindowSlot_t* window, const char* path);
CMATRIX_API int CMatrix_GetScreenColor(CMHANDLE handle, int col, int row, ScreenColor* color);
CMATRIX_API int CMatrix_SetScreenColor(CMHANDLE handle, int col, int row, const ScreenColor* color);
CMATRIX_API int CMatrix_GetAudioStatus(CMHANDLE handle, DeviceAudioInfo_t* audio);
CMATRIX_API int CMatrix_SetAudioStatus(CMHANDLE handle, const DeviceAudioInfo_t* audio);

/* ------------------------------------------------------------------ */
/* Media                                                               */
/* ------------------------------------------------------------------ */
/* Opens a media distribution for a local source; returns its handle, NULL on failure.
 * The stream address the decoder pulls is written to url (at most urlSize bytes). */
CMATRIX_API CMMDHANDLE CMatrix_StartMediaDistribute(CMHANDLE handle, const char* sourceName, int channel, char* url,
                                                    int urlSize);
CMATRIX_API int CMatrix_StopMediaDistribute(CMMDHANDLE media);
CMATRIX_API int CMatrix_SendMediaFrame(CMMDHANDLE media, const unsigned char* frame, int length);
/* Shows one packed media frame in a window's sub-window (channel = sub-window number). */
CMATRIX_API int CMatrix_DisplayFrame(CMHANDLE handle, int windowId, int channel, const unsigned char* frame,
                                     int length);
/* The whole wall as its screens show it, as one JPEG picture of width x height pixels
 * (16..3840 by 16..2160): for a live mimic of the wall, one call per refresh. Returns
 * the JPEG's size in bytes; *jpeg is released with CMatrix_Free on the same handle. */
CMATRIX_API int CMatrix_GetWallSnapshot(CMHANDLE handle, int width, int height, unsigned char** jpeg);
/* As CMatrix_DisplayFrame, but gives up after timeoutMs (CMATRIX_ERR_TIMEOUT): the frame is dropped.
 * For live pictures, where a late frame is worth nothing. */
CMATRIX_API int CMatrix_DisplayFrameWithin(CMHANDLE handle, int windowId, int channel, const unsigned char* frame,
                                           int length, int timeoutMs);

/* ------------------------------------------------------------------ */
/* Maintenance                                                         */
/* ------------------------------------------------------------------ */
/* Uploads the firmware image and returns; progress arrives through the callback. */
CMATRIX_API int CMatrix_FirmwareUpdate(CMHANDLE handle, const char* path, CMatrix_UpdateCallback callback,
                                       void* user);
CMATRIX_API int CMatrix_FactoryReset(CMHANDLE handle);
CMATRIX_API int CMatrix_GetResolution(CMHANDLE handle, ScreenResolution_t* resolution);
CMATRIX_API int CMatrix_SetResolution(CMHANDLE handle, const ScreenResolution_t* resolution, int setAll);
CMATRIX_API int CMatrix_AccountPasswdModify(CMHANDLE handle, const char* user, const char* oldPassword,
                                            const char* newPassword);
CMATRIX_API int CMatrix_ImportConfig(CMHANDLE handle, const char* path);
CMATRIX_API int CMatrix_ExportConfig(CMHANDLE handle, const char* path);
/* Operation log between two times (seconds since 1970); returns the count. */
CMATRIX_API int CMatrix_GetLog(CMHANDLE handle, int type, uint32_t beginTime, uint32_t endTime, LogInfo_t** logs);
/* Saves the decoder's run log as a text file at path. */
CMATRIX_API int CMatrix_GetRunLog(CMHANDLE handle, const char* path);

/* ------------------------------------------------------------------ */
/* Discovery and set-up over UDP                                       */
/* ------------------------------------------------------------------ */
/* Where probes go: "host:port[,host:port...]". The default is the value of the
 * CMATRIX_DISCOVERY_TARGETS environment variable, else "127.0.0.1:37020". */
CMATRIX_API int Discovery_SetTargets(const char* targets);
/* One round: probes are sent `probes` times, answers are collected for
 * waitCentis * 10 ms; one callback per answer, then one with finished = true. */
CMATRIX_API int Discovery_Start(int waitCentis, int probes, Discovery_SearchCallback callback, void* user);
CMATRIX_API int Discovery_GetNetworkBC(const char* devId, DeviceNetworkCfg_t* cfg, int timeoutMs);
CMATRIX_API int Discovery_SetupNetworkBC(const DeviceNetworkCfg_t* cfg, const char* devId, const char* user,
                                         const char* password, int timeoutMs);
/* Sets the password of a factory-new unit named by device->devId (or device->ip). */
CMATRIX_API int Discovery_ActivateDevice(const DeviceInfo_t* device, int timeoutMs);
/* Shows (seconds > 0) or hides (0) the screen numbers of the decoder at device->ip. */
CMATRIX_API int Discovery_DisplayScreen(const DeviceInfo_t* device, int location, int seconds);

#ifdef __cplusplus
}
#endif

#ifdef __cplusplus
#define CMATRIX_CHECK_LAYOUT(T, size) static_assert(sizeof(T) == (size), #T " size")
#define CMATRIX_CHECK_OFFSET(T, f, off) static_assert(offsetof(T, f) == (off), #T "." #f " offset")
#else
#define CMATRIX_CHECK_LAYOUT(T, size) _Static_assert(sizeof(T) == (size), #T " size")
#define CMATRIX_CHECK_OFFSET(T, f, off) _Static_assert(offsetof(T, f) == (off), #T "." #f " offset")
#endif

CMATRIX_CHECK_LAYOUT(DeviceInfo_t, 2328);
CMATRIX_CHECK_OFFSET(DeviceInfo_t, devId, 4);
CMATRIX_CHECK_OFFSET(DeviceInfo_t, channel, 36);
CMATRIX_CHECK_OFFSET(DeviceInfo_t, stream, 40);
CMATRIX_CHECK_OFFSET(DeviceInfo_t, name, 44);
CMATRIX_CHECK_OFFSET(DeviceInfo_t, protocol, 144);
CMATRIX_CHECK_OFFSET(DeviceInfo_t, ip, 148);
CMATRIX_CHECK_OFFSET(DeviceInfo_t, port, 164);
CMATRIX_CHECK_OFFSET(DeviceInfo_t, mainUrl, 168);
CMATRIX_CHECK_OFFSET(DeviceInfo_t, subUrl, 1192);
CMATRIX_CHECK_OFFSET(DeviceInfo_t, userName, 2216);
CMATRIX_CHECK_OFFSET(DeviceInfo_t, password, 2248);
CMATRIX_CHECK_OFFSET(DeviceInfo_t, mode, 2280);
CMATRIX_CHECK_OFFSET(DeviceInfo_t, flag, 2284);

CMATRIX_CHECK_LAYOUT(DeviceNetworkCfg_t, 380);
CMATRIX_CHECK_OFFSET(DeviceNetworkCfg_t, ipv4, 88);
CMATRIX_CHECK_OFFSET(DeviceNetworkCfg_t, mask, 104);
CMATRIX_CHECK_OFFSET(DeviceNetworkCfg_t, gateway, 120);
CMATRIX_CHECK_OFFSET(DeviceNetworkCfg_t, ipv6, 136);
CMATRIX_CHECK_OFFSET(DeviceNetworkCfg_t, prefixV6, 184);
CMATRIX_CHECK_OFFSET(DeviceNetworkCfg_t, gatewayV6, 188);
CMATRIX_CHECK_OFFSET(DeviceNetworkCfg_t, dns, 236);

CMATRIX_CHECK_LAYOUT(ScreenInfo_t, 232);
CMATRIX_CHECK_OFFSET(ScreenInfo_t, ip, 132);
CMATRIX_CHECK_OFFSET(ScreenInfo_t, port, 152);
CMATRIX_CHECK_OFFSET(ScreenInfo_t, userName, 154);
CMATRIX_CHECK_OFFSET(ScreenInfo_t, password, 186);
CMATRIX_CHECK_OFFSET(ScreenInfo_t, outputIndex, 220);
CMATRIX_CHECK_OFFSET(ScreenInfo_t, outputType, 224);
CMATRIX_CHECK_OFFSET(ScreenInfo_t, position, 228);

CMATRIX_CHECK_LAYOUT(MatrixWindow_t, 24);
CMATRIX_CHECK_OFFSET(MatrixWindow_t, floating, 4);
CMATRIX_CHECK_OFFSET(MatrixWindow_t, x, 8);
CMATRIX_CHECK_OFFSET(MatrixWindow_t, h, 20);
CMATRIX_CHECK_LAYOUT(MatrixWindowStatus_t, 36);
CMATRIX_CHECK_OFFSET(MatrixWindowStatus_t, sourceKind, 24);
CMATRIX_CHECK_OFFSET(MatrixWindowStatus_t, turnIndex, 28);
CMATRIX_CHECK_OFFSET(MatrixWindowStatus_t, layer, 32);
CMATRIX_CHECK_LAYOUT(WindowDivision_t, 8);
CMATRIX_CHECK_LAYOUT(WindowSlot_t, 8);

CMATRIX_CHECK_LAYOUT(SceneInfo_t, 104);
CMATRIX_CHECK_OFFSET(SceneInfo_t, name, 4);
CMATRIX_CHECK_LAYOUT(SchemeInfo_t, 112);
CMATRIX_CHECK_OFFSET(SchemeInfo_t, kind, 104);
CMATRIX_CHECK_OFFSET(SchemeInfo_t, interval, 108);
CMATRIX_CHECK_LAYOUT(SchemeDevice_t, 2312);
CMATRIX_CHECK_OFFSET(SchemeDevice_t, devId, 4);
CMATRIX_CHECK_OFFSET(SchemeDevice_t, channel, 36);
CMATRIX_CHECK_OFFSET(SchemeDevice_t, stream, 40);
CMATRIX_CHECK_OFFSET(SchemeDevice_t, name, 44);
CMATRIX_CHECK_OFFSET(SchemeDevice_t, protocolName, 144);
CMATRIX_CHECK_OFFSET(SchemeDevice_t, ip, 176);
CMATRIX_CHECK_OFFSET(SchemeDevice_t, port, 192);
CMATRIX_CHECK_OFFSET(SchemeDevice_t, mainUrl, 196);
CMATRIX_CHECK_OFFSET(SchemeDevice_t, subUrl, 1220);
CMATRIX_CHECK_OFFSET(SchemeDevice_t, userName, 2244);
CMATRIX_CHECK_OFFSET(SchemeDevice_t, password, 2276);
CMATRIX_CHECK_OFFSET(SchemeDevice_t, mode, 2308);

CMATRIX_CHECK_LAYOUT(BannerInfo_t, 1064);
CMATRIX_CHECK_OFFSET(BannerInfo_t, message, 1);
CMATRIX_CHECK_OFFSET(BannerInfo_t, direction, 1028);
CMATRIX_CHECK_OFFSET(BannerInfo_t, speed, 1032);
CMATRIX_CHECK_OFFSET(BannerInfo_t, x, 1036);
CMATRIX_CHECK_OFFSET(BannerInfo_t, h, 1048);
CMATRIX_CHECK_OFFSET(BannerInfo_t, fontSize, 1052);
CMATRIX_CHECK_OFFSET(BannerInfo_t, fontColor, 1056);
CMATRIX_CHECK_OFFSET(BannerInfo_t, backColor, 1060);

CMATRIX_CHECK_LAYOUT(DevPlayFile_t, 132);
CMATRIX_CHECK_OFFSET(DevPlayFile_t, fileName, 68);
CMATRIX_CHECK_LAYOUT(DeviceAudioInfo_t, 44);
CMATRIX_CHECK_OFFSET(DeviceAudioInfo_t, windowId, 32);
CMATRIX_CHECK_OFFSET(DeviceAudioInfo_t, subWindowId, 36);
CMATRIX_CHECK_LAYOUT(ScreenColor, 32);
CMATRIX_CHECK_LAYOUT(ScreenResolution_t, 16);
CMATRIX_CHECK_LAYOUT(HdmiStatus_t, 88);
CMATRIX_CHECK_LAYOUT(UpdateStatus_t, 44);
CMATRIX_CHECK_LAYOUT(LogInfo_t, 256);
CMATRIX_CHECK_LAYOUT(MatrixCapacity_t, 48);
CMATRIX_CHECK_OFFSET(MatrixCapacity_t, maxDistributions, 40);

#endif /* CMATRIX_SDK_H */
