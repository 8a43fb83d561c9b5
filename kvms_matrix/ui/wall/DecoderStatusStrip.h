#pragma once

#include "MatrixInfo.h"
#include "MatrixPageState.h"

#include <QMap>
#include <QWidget>

class QHBoxLayout;
class QLabel;

namespace kvms_matrix {

// One line along the bottom of the page: each configured decoder and the state of its link.
class DecoderStatusStrip : public QWidget {
    Q_OBJECT

public:
    explicit DecoderStatusStrip(QWidget* parent = nullptr);

    void setDecoders(const QList<MatrixInfo>& decoders);
    void setLink(const QString& ip, MatrixPageState::Link link, int attempts);
    // What the strip says about one decoder (empty when it is not listed).
    QString text(const QString& ip) const;

    static QString linkText(const QString& ip, MatrixPageState::Link link, int attempts);

private:
    QHBoxLayout* m_layout = nullptr;
    QMap<QString, QLabel*> m_labels;
};

} // namespace kvms_matrix
