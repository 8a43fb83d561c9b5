#pragma once

#include <QMetaType>
#include <QString>

namespace kvms_matrix {

// A snapshot of a wall stored by the decoder under an id (from 1) and a name.
struct MatrixSceneInfo {
    int sceneId = -1;
    QString sceneName;
};

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::MatrixSceneInfo)
