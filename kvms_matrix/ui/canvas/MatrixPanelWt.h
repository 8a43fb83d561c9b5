#pragma once

#include "MatrixSubWindowInfo.h"

#include <QImage>
#include <QString>
#include <QWidget>

namespace kvms_matrix {

// One sub-window of a wall window: the bound source's kind and name, or its live picture once
// one is given. Mouse and drag events are left to the canvas, which knows the windows.
class MatrixPanelWt : public QWidget {
    Q_OBJECT

public:
    enum class SourceKind { Empty, Camera, Stream, Picture, Hdmi, UsbFile, Desktop, Recording };

    explicit MatrixPanelWt(int windowId, int subWindowId, int windowType, QWidget* parent = nullptr);

    int windowId() const { return m_windowId; }
    int subWindowId() const { return m_subWindowId; }
    int windowType() const { return m_windowType; }
    void setIds(int windowId, int subWindowId, int windowType);

    void setSubWindow(const MatrixSubWindowInfo& subWindow);
    const MatrixSubWindowInfo& subWindow() const { return m_subWindow; }
    SourceKind sourceKind() const { return m_kind; }
    QString sourceName() const { return m_name; }

    // A short line drawn at the top-left corner, for panels that have no title strip.
    void setCaption(const QString& caption);

    // A live picture drawn instead of the source's description; a null image removes it. `part`
    // is the region of `picture` that belongs to this panel (the whole picture when empty): the
    // wall's one picture is shared by every panel, not copied into each.
    void setPicture(const QImage& picture, const QRect& part = QRect());
    bool hasPicture() const { return !m_picture.isNull(); }

    static SourceKind kindOf(const MatrixSubWindowInfo& subWindow);
    static QString nameOf(const MatrixSubWindowInfo& subWindow);
    static QString kindText(SourceKind kind);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_windowId;
    int m_subWindowId;
    int m_windowType;
    MatrixSubWindowInfo m_subWindow;
    SourceKind m_kind = SourceKind::Empty;
    QString m_name;
    QString m_caption;
    QImage m_picture;
    QRect m_part;
};

} // namespace kvms_matrix
