#pragma once

#include "MatrixDeviceInfo.h"

#include <QWidget>

class QLineEdit;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace kvms_matrix {

// The video sources the operator drags onto the wall: the host's devices with their channels,
// and the host's streams, each in a tree of its own, filtered by name. Channels and streams
// are items of kind 2.
class SourcePane : public QWidget {
    Q_OBJECT

public:
    static constexpr int kChannelItem = 2;
    static constexpr int kDeviceItem = 1;

    explicit SourcePane(QWidget* parent = nullptr);

    QTabWidget* tabs() const { return m_tabs; }
    QTreeWidget* deviceTree() const { return m_devices; }
    QTreeWidget* streamTree() const { return m_streams; }
    QLineEdit* filterEdit() const { return m_filter; }

    // The current item of the current tab as a source; false (and an empty source id) when it
    // is not a channel or stream.
    bool currentSource(MatrixDeviceInfo* source) const;
    // The source an item of either tree stands for; false when it is not a channel or stream.
    bool sourceOfItem(const QTreeWidgetItem* item, MatrixDeviceInfo* source) const;

public slots:
    void reload();
    void applyFilter(const QString& text);

private:
    QTabWidget* m_tabs = nullptr;
    QTreeWidget* m_devices = nullptr;
    QTreeWidget* m_streams = nullptr;
    QLineEdit* m_filter = nullptr;
};

} // namespace kvms_matrix
