#pragma once

#include <QWidget>

namespace KCOMMON {

// Widget base whose style-sheet background, border and image are drawn, which a plain
// QWidget subclass does not do.
class KWidget : public QWidget {
    Q_OBJECT

public:
    explicit KWidget(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace KCOMMON
