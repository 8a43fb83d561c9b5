#pragma once

#include <QJsonObject>
#include <QString>

namespace vdec {

// state.json in the state directory, replaced atomically on every save so a crash
// mid-write leaves the previous state, never half of one.
class StateFile {
public:
    enum class Load { Loaded, Missing, Corrupt };

    explicit StateFile(const QString& directory);

    bool enabled() const { return !directory_.isEmpty(); }
    QString path() const;
    Load load(QJsonObject& out, QString* error);
    bool save(const QJsonObject& object, QString* error);
    // Moves an unusable file out of the way, to state.json.corrupt, where it can be looked at.
    void setAside();

private:
    QString directory_;
};

} // namespace vdec
