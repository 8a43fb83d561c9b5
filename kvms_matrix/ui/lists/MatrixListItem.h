#pragma once

#include "KWidget.h"

#include <QStringList>

class QLabel;
class QMimeData;
class QLineEdit;
class QPushButton;

namespace kvms_matrix {

// One row of the scene or loop list: icon, name, and edit and delete buttons shown on hover.
// A scene is renamed in place; a loop's edit button asks the page to open its dialog. A loop
// row can be dragged onto the wall, carrying only its id.
class MatrixListItem : public KCOMMON::KWidget {
    Q_OBJECT

public:
    enum Look { Normal = 0, Hovered = 1, Pressed = 2 };

    MatrixListItem(int id, const QString& name, const QString& icon, bool renameInPlace, QWidget* parent = nullptr);

    int id() const { return m_id; }
    void setId(int id) { m_id = id; }
    QString name() const { return m_name; }
    void setName(const QString& name);
    QStringList idList() const { return m_idList; }
    void setIdList(const QStringList& ids) { m_idList = ids; }
    bool isSelected() const { return m_selected; }
    void setSelected(bool selected);
    bool isEditing() const { return m_editing; }
    // Sets the look: 0 normal, 1 hovered, 2 pressed.
    void setLook(int look);
    int look() const { return m_look; }
    // Starts renaming in place (the edit button's action on a scene row).
    void beginRename();
    // What a drag of the row carries: the format "matrixlistitem" with the id as decimal text.
    QMimeData* dragData() const;

    QLabel* nameLabel() const { return m_label; }
    QLineEdit* nameEdit() const { return m_edit; }
    QPushButton* editButton() const { return m_editBtn; }
    QPushButton* deleteButton() const { return m_deleteBtn; }

signals:
    void signalItemClicked(QWidget* item);
    void signalItemDoubleClicked(QWidget* item);
    void signalEditItemClicked(QWidget* item, QStringList);
    void signalEditItemName(QWidget* item, QString oldName, QString newName);
    void signalDeleteItem(QWidget* item);
    void signalNameEmpty(QWidget* item);

public slots:
    void slotEditItemBtClicked();
    void slotDeleteItemBtClicked();
    void slotEditingFinished();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    int m_id;
    QString m_name;
    QStringList m_idList;
    QLabel* m_icon = nullptr;
    QLabel* m_label = nullptr;
    QLineEdit* m_edit = nullptr;
    QPushButton* m_editBtn = nullptr;
    QPushButton* m_deleteBtn = nullptr;
    bool m_selected = false;
    bool m_renameInPlace;
    bool m_editing = false; // a key was typed in the name field
    bool m_dragCandidate = false;
    int m_look = Normal;
};

} // namespace kvms_matrix
