#include "MatrixListItem.h"

#include <QApplication>
#include <QDrag>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QPushButton>

namespace kvms_matrix {

namespace {

const char* const kListItemFormat = "matrixlistitem";

// A flat button showing a page icon (a resource path) or a glyph.
QPushButton* rowButton(const QString& look, const QString& tip, QWidget* parent)
{
    auto* button = look.startsWith(QLatin1Char(':')) ? new QPushButton(QIcon(look), QString(), parent)
                                                     : new QPushButton(look, parent);
    button->setToolTip(tip);
    button->setFlat(true);
    button->setFixedSize(22, 22);
    button->setIconSize(QSize(14, 14));
    button->setFocusPolicy(Qt::NoFocus);
    button->hide();
    return button;
}

} // namespace

MatrixListItem::MatrixListItem(int id, const QString& name, const QString& icon, bool renameInPlace, QWidget* parent)
    : KCOMMON::KWidget(parent)
    , m_id(id)
    , m_name(name)
    , m_renameInPlace(renameInPlace)
{
    setObjectName(QStringLiteral("matrixListItem"));
    setAttribute(Qt::WA_Hover);
    m_icon = new QLabel(this);
    m_icon->setPixmap(QIcon(icon).pixmap(16, 16));
    m_label = new QLabel(name, this);
    m_label->setObjectName(QStringLiteral("matrixListItemName"));
    m_label->setTextFormat(Qt::PlainText);
    m_edit = new QLineEdit(name, this);
    m_edit->setObjectName(QStringLiteral("matrixListItemEdit"));
    // The decoder stores 100 bytes of UTF-8; 32 characters keep any script within them.
    m_edit->setMaxLength(32);
    m_edit->hide();
    m_edit->installEventFilter(this);
    m_editBtn = rowButton(QStringLiteral("\u270E"), renameInPlace ? tr("Rename") : tr("Edit"), this);
    m_deleteBtn = rowButton(QStringLiteral(":/page_icons/remove.png"), tr("Delete"), this);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 2, 4, 2);
    layout->setSpacing(4);
    layout->addWidget(m_icon);
    layout->addWidget(m_label, 1);
    layout->addWidget(m_edit, 1);
    layout->addWidget(m_editBtn);
    layout->addWidget(m_deleteBtn);
    connect(m_editBtn, &QPushButton::clicked, this, &MatrixListItem::slotEditItemBtClicked);
    connect(m_deleteBtn, &QPushButton::clicked, this, &MatrixListItem::slotDeleteItemBtClicked);
    setLook(Normal);
}

void MatrixListItem::setName(const QString& name)
{
    m_name = name;
    m_label->setText(name);
    m_edit->setText(name);
}

void MatrixListItem::setSelected(bool selected)
{
    m_selected = selected;
    setLook(selected ? Pressed : Normal);
}

void MatrixListItem::setLook(int look)
{
    m_look = look;
    static const char* const backgrounds[] = { "transparent", "#2a3a4e", "#0659a4" };
    setStyleSheet(QStringLiteral("#matrixListItem{background:%1;}")
                      .arg(QLatin1String(backgrounds[qBound(0, look, 2)])));
}

void MatrixListItem::enterEvent(QEvent* event)
{
    if (!m_selected)
        setLook(Hovered);
    m_editBtn->show();
    m_deleteBtn->show();
    KCOMMON::KWidget::enterEvent(event);
}

void MatrixListItem::leaveEvent(QEvent* event)
{
    if (!m_selected)
        setLook(Normal);
    m_editBtn->hide();
    m_deleteBtn->hide();
    KCOMMON::KWidget::leaveEvent(event);
}

void MatrixListItem::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_edit->isVisible()) {
        // A click beside the name field ends the renaming.
        if (!m_edit->geometry().contains(event->pos()))
            slotEditingFinished();
        return;
    }
    m_dragCandidate = true;
    emit signalItemClicked(this);
}

void MatrixListItem::mouseDoubleClickEvent(QMouseEvent*)
{
    m_dragCandidate = true;
    emit signalItemDoubleClicked(this);
}

void MatrixListItem::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_dragCandidate || !(event->buttons() & Qt::LeftButton) || m_edit->isVisible()) {
        KCOMMON::KWidget::mouseMoveEvent(event);
        return;
    }
    m_dragCandidate = false;
    const int before = m_look;
    setLook(Pressed);
    auto* drag = new QDrag(this);
    drag->setPixmap(grab());
    setLook(m_selected ? before : Normal);
    drag->setMimeData(dragData());
    drag->exec(Qt::MoveAction);
}

QMimeData* MatrixListItem::dragData() const
{
    auto* data = new QMimeData;
    data->setData(QLatin1String(kListItemFormat), QString::number(m_id).toLocal8Bit());
    return data;
}

void MatrixListItem::slotEditItemBtClicked()
{
    if (!m_renameInPlace) {
        emit signalEditItemClicked(this, m_idList);
        return;
    }
    beginRename();
}

void MatrixListItem::beginRename()
{
    m_editing = false;
    m_edit->setText(m_name);
    m_label->hide();
    m_edit->show();
    m_edit->selectAll();
    m_edit->setFocus(Qt::OtherFocusReason);
}

void MatrixListItem::slotDeleteItemBtClicked()
{
    emit signalDeleteItem(this);
}

void MatrixListItem::slotEditingFinished()
{
    if (!m_edit->isVisible())
        return;
    m_edit->hide();
    m_label->show();
    const QString oldName = m_name;
    const QString newName = m_edit->text();
    m_editing = false;
    emit signalEditItemName(this, oldName, newName);
}

bool MatrixListItem::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_edit && event->type() == QEvent::KeyPress) {
        m_editing = true;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Space && m_edit->text().trimmed().isEmpty()) {
            emit signalNameEmpty(this);
        } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            slotEditingFinished();
            return true;
        } else if (key == Qt::Key_Escape) {
            // Escape gives the old name back.
            m_edit->setText(m_name);
            slotEditingFinished();
            return true;
        }
    }
    return KCOMMON::KWidget::eventFilter(watched, event);
}

} // namespace kvms_matrix
