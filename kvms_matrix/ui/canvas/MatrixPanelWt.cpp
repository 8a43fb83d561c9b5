#include "MatrixPanelWt.h"

#include <QFontMetrics>
#include <QPainter>

namespace kvms_matrix {

namespace {

const QColor kPanelBack("#111b2c");
const QColor kPanelBorder("#2e3b55");
const QColor kTextColor("#d8dee9");
const QColor kDimText("#6b7a96");

QColor kindColor(MatrixPanelWt::SourceKind kind)
{
    switch (kind) {
    case MatrixPanelWt::SourceKind::Camera:
        return QColor("#3d8bfd");
    case MatrixPanelWt::SourceKind::Stream:
        return QColor("#20c997");
    case MatrixPanelWt::SourceKind::Picture:
        return QColor("#e6a23c");
    case MatrixPanelWt::SourceKind::Hdmi:
        return QColor("#b37feb");
    case MatrixPanelWt::SourceKind::UsbFile:
        return QColor("#f56c9f");
    case MatrixPanelWt::SourceKind::Desktop:
        return QColor("#5cc8ff");
    case MatrixPanelWt::SourceKind::Recording:
        return QColor("#f5604c");
    case MatrixPanelWt::SourceKind::Empty:
        break;
    }
    return kDimText;
}

} // namespace

MatrixPanelWt::MatrixPanelWt(int windowId, int subWindowId, int windowType, QWidget* parent)
    : QWidget(parent)
    , m_windowId(windowId)
    , m_subWindowId(subWindowId)
    , m_windowType(windowType)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setObjectName(QStringLiteral("matrixPanelWt"));
}

void MatrixPanelWt::setIds(int windowId, int subWindowId, int windowType)
{
    m_windowId = windowId;
    m_subWindowId = subWindowId;
    m_windowType = windowType;
}

void MatrixPanelWt::setSubWindow(const MatrixSubWindowInfo& subWindow)
{
    const SourceKind kind = kindOf(subWindow);
    const QString name = nameOf(subWindow);
    m_subWindow = subWindow;
    if (kind == m_kind && name == m_name)
        return;
    m_kind = kind;
    m_name = name;
    if (kind == SourceKind::Empty)
        m_picture = QImage();
    update();
}

void MatrixPanelWt::setCaption(const QString& caption)
{
    if (caption == m_caption)
        return;
    m_caption = caption;
    update();
}

void MatrixPanelWt::setPicture(const QImage& picture, const QRect& part)
{
    m_picture = picture;
    m_part = part.isEmpty() ? picture.rect() : part;
    update();
}

MatrixPanelWt::SourceKind MatrixPanelWt::kindOf(const MatrixSubWindowInfo& subWindow)
{
    const MatrixDeviceInfo& device = subWindow.device;
    const QString name = nameOf(subWindow);
    switch (device.deviceType) {
    case 1:
    case 5:
    case 8:
        return SourceKind::Camera;
    case 2:
        // Recordings replayed onto the wall travel as display devices too.
        return name.startsWith(QLatin1String("rec_")) ? SourceKind::Recording : SourceKind::Desktop;
    case 3:
    case 4:
        return SourceKind::Picture;
    case 6:
        return SourceKind::Hdmi;
    case 7:
        return SourceKind::UsbFile;
    case 9:
        return SourceKind::Stream;
    default:
        return SourceKind::Empty;
    }
}

QString MatrixPanelWt::nameOf(const MatrixSubWindowInfo& subWindow)
{
    const MatrixDeviceInfo& device = subWindow.device;
    const bool display = device.deviceType >= 2 && device.deviceType <= 4;
    const QString& first = display ? device.displayName : device.deviceName;
    const QString& second = display ? device.deviceName : device.displayName;
    if (!first.isEmpty())
        return first;
    if (!second.isEmpty())
        return second;
    return device.deviceType == 9 ? device.mainUrl : QString();
}

QString MatrixPanelWt::kindText(SourceKind kind)
{
    switch (kind) {
    case SourceKind::Camera:
        return tr("Camera");
    case SourceKind::Stream:
        return tr("Stream");
    case SourceKind::Picture:
        return tr("Picture");
    case SourceKind::Hdmi:
        return tr("HDMI");
    case SourceKind::UsbFile:
        return tr("USB file");
    case SourceKind::Desktop:
        return tr("Desktop");
    case SourceKind::Recording:
        return tr("Playback");
    case SourceKind::Empty:
        break;
    }
    return tr("No source");
}

void MatrixPanelWt::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect area = rect();
    painter.fillRect(area, kPanelBack);
    if (!m_picture.isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform, area.width() < m_part.width());
        painter.drawImage(area, m_picture, m_part);
    }

    const QColor accent = kindColor(m_kind);
    // A strip along the left edge tells the source kind even where no text fits.
    if (m_kind != SourceKind::Empty && area.width() > 4)
        painter.fillRect(QRect(0, 0, qBound(2, area.width() / 60, 4), area.height()), accent);
    painter.setPen(kPanelBorder);
    painter.drawRect(area.adjusted(0, 0, -1, -1));

    if (area.width() < 18 || area.height() < 10)
        return;
    if (!m_caption.isEmpty() && area.height() >= 40) {
        QFont captionFont = painter.font();
        captionFont.setPixelSize(qBound(7, area.height() / 12, 12));
        painter.setFont(captionFont);
        painter.setPen(kDimText);
        painter.drawText(area.adjusted(6, 3, -4, -3), Qt::AlignTop | Qt::AlignLeft,
            QFontMetrics(captionFont).elidedText(m_caption, Qt::ElideRight, area.width() - 10));
    }
    if (!m_picture.isNull()) {
        // The picture's middle is where the wall writes why a source has no video: the name goes
        // to a translucent strip along the bottom instead.
        QFont stripFont = painter.font();
        stripFont.setPixelSize(qBound(7, area.height() / 10, 12));
        painter.setFont(stripFont);
        const QFontMetrics stripMetrics(stripFont);
        const QRect strip(0, area.height() - stripMetrics.height() - 2, area.width(), stripMetrics.height() + 2);
        painter.fillRect(strip, QColor(14, 22, 36, 170));
        painter.setPen(kTextColor);
        const QString label = m_name.isEmpty() ? kindText(m_kind) : m_name;
        painter.drawText(strip.adjusted(6, 0, -4, 0), Qt::AlignVCenter | Qt::AlignLeft,
            stripMetrics.elidedText(label, Qt::ElideMiddle, strip.width() - 10));
        return;
    }
    QFont font = painter.font();
    const int pixelSize = qBound(7, qMin(area.height() / 5, area.width() / 8), 14);
    font.setPixelSize(pixelSize);
    painter.setFont(font);
    const QFontMetrics metrics(font);
    const QRect textArea = area.adjusted(4, 2, -3, -2);
    const QString kind = kindText(m_kind);
    const QString name = metrics.elidedText(m_name, Qt::ElideMiddle, textArea.width());
    const bool twoLines = !name.isEmpty() && textArea.height() >= 2 * metrics.height() + 2;

    const auto drawLine = [&](const QRect& line, const QString& text, const QColor& color, bool bold) {
        QFont lineFont = font;
        lineFont.setBold(bold);
        painter.setFont(lineFont);
        painter.setPen(color);
        painter.drawText(line, Qt::AlignCenter, text);
    };
    if (twoLines) {
        const int h = metrics.height();
        const int top = textArea.center().y() - h;
        drawLine(QRect(textArea.x(), top, textArea.width(), h),
            metrics.elidedText(kind, Qt::ElideRight, textArea.width()), accent, true);
        drawLine(QRect(textArea.x(), top + h + 1, textArea.width(), h), name, kTextColor, false);
    } else {
        // An empty panel too small for a sentence shows which sub-window it is.
        const bool compact = m_kind == SourceKind::Empty && (area.width() < 90 || area.height() < 40);
        const QString line = compact ? QString::number(m_subWindowId) : name.isEmpty() ? kind : name;
        drawLine(textArea, metrics.elidedText(line, Qt::ElideMiddle, textArea.width()),
            m_kind == SourceKind::Empty ? kDimText : kTextColor, false);
    }
}

} // namespace kvms_matrix
