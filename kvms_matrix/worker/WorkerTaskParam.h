#pragma once

#include "CSharedHandle.h"

#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QVariant>

namespace kvms_matrix {

// Kinds of queued task. The numbers are fixed: forms, handlers and logs refer to them. Gaps
// (22-25, 36, 44) are kinds that have no handler and are dropped when dequeued.
namespace TaskKind {
enum : int {
    None = -1,
    ConnectMatrix = 0,
    DisconnectMatrix = 1,
    SearchMatrix = 2,
    GetWindowInfo = 3,
    AddWindowInfo = 4,
    RemoveWindow = 5,
    GetLayout = 6,
    SetLayout = 7,
    GetScene = 8,
    SaveScene = 9,
    RemoveScene = 10,
    RestoreScene = 11,
    ModifyScene = 12,
    GetLoopInfo = 13,
    SetLoopInfo = 14,
    RemoveLoopInfo = 15,
    RestoreLoopInfo = 16,
    CheckScreen = 17,
    SetWindowSplit = 18,
    ClearWindow = 19,
    SetFullWindow = 20,
    SetWindowSignalSource = 21,
    MoveFloatingWindow = 26,
    SetBanner = 27,
    RemoveBanner = 28,
    GetMatrixNetwork = 29,
    SetMatrixNetwork = 30,
    UpdateMatrix = 31,
    FactoryReset = 32,
    GetMatrixResolution = 33,
    SetMatrixResolution = 34,
    SetStreamSwitch = 35, // queued, never handled: a stream switch does not reach the decoder
    UserPasswordModify = 37,
    SetAudioOutputEnable = 38,
    GetAudioOutputEnable = 39,
    ImportMatrixConfig = 40,
    ExportMatrixConfig = 41,
    GetLog = 42,
    RefreshHdmiStatus = 43,
    GetDevPlayFileList = 45,
    StartPlayDevFile = 46,
    StopPlayDevFile = 47,
    StartPlayHdmiVideo = 48,
    StartPlayVideoStream = 49,
    ActiveDecoder = 50,
    GetMatrixScreenColor = 51,
    SetMatrixScreenColor = 52,
    GetWallSnapshot = 53, // the wall as one picture, for the canvas's mimic
    Count = 54, // kinds run from 0 to Count - 1
    // The worker's own work, queued behind the forms' tasks; run outside the table.
    RemoveMdHandle = 1000,
};
} // namespace TaskKind

// One queued request of the worker.
struct WorkerTaskParam {
    int taskType = TaskKind::None; // which handler runs; -1 runs nothing
    int taskValue = -1; // spare integer argument of some kinds
    QSharedPointer<CSharedHandle> handle; // the connection the task is for; null for connect and search
    QMap<QString, QVariant> params; // named arguments, keys in TaskKeys
    void* userData = nullptr; // the caller's opaque pointer, or a heap record the handler deletes
};

} // namespace kvms_matrix
