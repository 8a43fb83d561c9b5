#pragma once

#include "CSharedHandle.h"
#include "MatrixScreenInfo.h"

#include <QList>
#include <QMap>
#include <QMetaType>
#include <QSharedPointer>
#include <QString>

namespace kvms_matrix {

// One decoder. The IP text is its identity everywhere (registry, maps, files). Copies share the
// connection: it ends only when the last copy holding it is gone.
struct MatrixInfo {
    int type = -1;
    // A single U+FFFF rather than empty, so "never given an id" differs from "given an empty one".
    QString id = QString(QChar(0xFFFF));
    QString ip;
    int port = 0; // port used when the decoder is added
    int nvr_port = 0;
    int manager_port = 0; // port used to log in
    QString username;
    QString password;
    QList<MatrixScreenInfo> screenList;
    QSharedPointer<CSharedHandle> connection;
    int wallRow = -1; // reserved: the decoder's place on a TV wall
    int wallCol = -1;
    int status = 0;
    int location = 0; // place of a secondary decoder on its wall
    int screenCnt = 0;
    bool flag = false; // selection mark of the forms
    int connect_state = 0;
    void* userPtr = nullptr;
    QString version;
};

using MatrixInfoMap = QMap<QString, MatrixInfo>;
using MatrixInfoList = QList<MatrixInfo>;

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::MatrixInfo)
Q_DECLARE_METATYPE(kvms_matrix::MatrixInfoMap)
Q_DECLARE_METATYPE(kvms_matrix::MatrixInfoList)
