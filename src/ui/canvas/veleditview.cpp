// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "veleditview.h"

#include "proportions.h"

#include <QEnterEvent>
#include <QFontMetricsF>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

Q_LOGGING_CATEGORY(lcEditView, "img.editview", QtWarningMsg)

using namespace EditGeometry;

namespace {

// Half a handle: the outline runs through the handles' centres, on a pixel boundary for whole
// frames, so a 1-point line covers exactly one row of pixels.
constexpr qreal bodyInset = trackBoxSize / 2;
constexpr int iconSize = 16;
constexpr int iconHotSpot = 8;
// The link symbol's size, and the room it needs before the host name is written under it.
constexpr qreal linkSymbolSize = 14;
constexpr qreal linkTextRoom = 30;

QColor bodyFillColor()
{
    return QColor::fromRgbF(0.5f, 0.5f, 0.6f, 0.3f);
}

QImage blankIcon()
{
    QImage image(iconSize, iconSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

// The double-headed diagonal arrow of the corner cursors. Drawn y-up it points to the bottom-left
// and top-right corners, drawn y-down to the top-left and bottom-right ones. The first line
// crosses the arrow's shaft, which gives the cursor its X shape.
QImage drawResizeFigure(bool yUp)
{
    QImage image = blankIcon();
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    if (yUp)
        p.setTransform(flipTransform(iconSize));
    p.setPen(QPen(Qt::black, 1.5, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    p.setBrush(Qt::black);
    p.drawPolygon(QPolygonF({{2, 3}, {6, 3}, {2, 7}}));
    p.drawPolygon(QPolygonF({{12, 13}, {8, 13}, {12, 9}}));
    p.drawLine(QPointF(2, 13), QPointF(12, 3));
    p.drawLine(QPointF(3, 4), QPointF(11, 12));
    return image;
}

// Two rounded links of a chain, slanted, in a square of the given side centred on centre.
void drawLinkSymbol(QPainter &p, QPointF centre, qreal side)
{
    p.save();
    p.translate(centre);
    p.rotate(-45);
    const qreal length = side * 0.55;
    const qreal thickness = side * 0.36;
    p.setPen(QPen(QColor(60, 60, 60), 1.6));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(QRectF(-length + side * 0.12, -thickness / 2, length, thickness),
                      thickness / 2, thickness / 2);
    p.drawRoundedRect(QRectF(-side * 0.12, -thickness / 2, length, thickness), thickness / 2,
                      thickness / 2);
    p.restore();
}

QCursor drawnCursor(const QImage &image)
{
    return QCursor(QPixmap::fromImage(image), iconHotSpot, iconHotSpot);
}

} // namespace

VelEditView::VelEditView(QWidget *parent)
    : VelEditView(QRectF(), parent)
{}

VelEditView::VelEditView(const QRectF &frame, QWidget *parent)
    : QWidget(parent)
{
    // Hovering must reach the box without a button held, to classify the pointer.
    setMouseTracking(true);
    setFrame(withMinimumSize(frame));
}

void VelEditView::setFrame(const QRectF &frame)
{
    // The canvas sets the frame on every paint; repainting only on a real change keeps that from
    // scheduling another paint of the canvas beneath, and so on without end.
    const bool changed = frame != m_frame;
    m_frame = frame;
    placeWidget();
    if (changed)
        update();
    refreshArea(m_frame, trackBoxSize);
}

void VelEditView::setPicture(const QImage &picture)
{
    m_picture = picture;
    update();
}

void VelEditView::setPictureOpacity(qreal opacity)
{
    opacity = qBound(0.0, opacity, 1.0);
    if (opacity == m_pictureOpacity)
        return;
    m_pictureOpacity = opacity;
    if (!m_picture.isNull())
        update();
}

void VelEditView::setLinkHost(const QString &host)
{
    if (host == m_linkHost)
        return;
    m_linkHost = host;
    update();
}

void VelEditView::refreshArea(const QRectF &frame, qreal boxSize)
{
    const HitAreas areas = hitAreas(frame.size(), boxSize);
    if (areas == m_areas)
        return;
    m_areas = areas;
    update();
}

void VelEditView::forceRefreshLayout()
{
    refreshArea(m_frame, trackBoxSize);
}

MouseType VelEditView::mouseTypeForArea(const QRectF &area) const
{
    return EditGeometry::mouseTypeForArea(area, m_frame.size());
}

bool VelEditView::isMatchArea(QPointF windowPoint) const
{
    return matchAreaIndex(m_areas, convertFromWindow(windowPoint)) >= 0;
}

QRectF VelEditView::matchArea(QPointF windowPoint) const
{
    const int index = matchAreaIndex(m_areas, convertFromWindow(windowPoint));
    return index < 0 ? QRectF() : m_areas[index];
}

QPointF VelEditView::convertFromWindow(QPointF windowPoint) const
{
    return windowPoint - originInWindow();
}

QPointF VelEditView::windowPointFor(QPointF widgetPosition) const
{
    const QWidget *win = window();
    return pointerPoint(mapTo(win, widgetPosition), win->height());
}

// The parent's bottom-left corner in y-up window coordinates, plus the frame's origin.
QPointF VelEditView::originInWindow() const
{
    const QWidget *canvas = parentWidget();
    if (!canvas)
        return QPointF(0, 0); // a box on its own is its own window
    const QWidget *win = window();
    const QPointF canvasBottomLeft = canvas->mapTo(win, QPointF(0, canvas->height()));
    return flipped(canvasBottomLeft, win->height()) + m_frame.topLeft();
}

bool VelEditView::canvasContains(QPointF windowPoint) const
{
    const QWidget *canvas = parentWidget();
    if (!canvas)
        return false;
    const QRectF canvasInWindow(originInWindow() - m_frame.topLeft(), QSizeF(canvas->size()));
    return containsPoint(canvasInWindow, windowPoint);
}

// The widget covers the pixels the frame touches; painting makes up the fraction.
void VelEditView::placeWidget()
{
    setGeometry(flipped(m_frame, flipHeight()).toAlignedRect());
}

// The height the frame is flipped in: the canvas's, or for a box on its own its frame's top.
qreal VelEditView::flipHeight() const
{
    return parentWidget() ? parentWidget()->height() : m_frame.y() + m_frame.height();
}

QCursor VelEditView::cursorForMouseType(int type)
{
    switch (type) {
    case MouseTypeMove:
        return drawnCursor(drawDragIcon());
    case MouseTypeLeft:
    case MouseTypeRight:
        return QCursor(Qt::SizeHorCursor);
    case MouseTypeTop:
    case MouseTypeBottom:
        return QCursor(Qt::SizeVerCursor);
    case MouseTypeTopLeft:
    case MouseTypeBottomRight:
        return drawnCursor(drawRes1Icon());
    case MouseTypeTopRight:
    case MouseTypeBottomLeft:
        return drawnCursor(drawRes2Icon());
    default:
        return QCursor(Qt::ArrowCursor);
    }
}

// A cross with an arrowhead at each end, drawn y-up.
QImage VelEditView::drawDragIcon()
{
    QImage image = blankIcon();
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setTransform(flipTransform(iconSize));
    p.setPen(QPen(Qt::black, 1.0, Qt::SolidLine, Qt::FlatCap));
    p.drawLine(QPointF(4, 8), QPointF(12, 8));
    p.drawLine(QPointF(8, 4), QPointF(8, 12));
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::black);
    p.drawPolygon(QPolygonF({{1, 8}, {3, 6}, {3, 10}}));
    p.drawPolygon(QPolygonF({{8, 1}, {6, 3}, {10, 3}}));
    p.drawPolygon(QPolygonF({{15, 8}, {13, 6}, {13, 10}}));
    p.drawPolygon(QPolygonF({{8, 15}, {6, 13}, {10, 13}}));
    return image;
}

QImage VelEditView::drawRes1Icon()
{
    return drawResizeFigure(false);
}

QImage VelEditView::drawRes2Icon()
{
    return drawResizeFigure(true);
}

bool VelEditView::event(QEvent *event)
{
    // The widget's place depends on the parent's height (the flip), so follow a new parent.
    if (event->type() == QEvent::ParentChange)
        placeWidget();
    return QWidget::event(event);
}

void VelEditView::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.translate(flipped(m_frame, flipHeight()).topLeft() - QPointF(geometry().topLeft()));

    // The body is inset by the same amount on every side, so it is the same rectangle y-down;
    // the picture and the text are drawn y-down so that they stand upright.
    const QRectF body(bodyInset, bodyInset, m_frame.width() - 2 * bodyInset,
                      m_frame.height() - 2 * bodyInset);
    p.fillRect(body, bodyFillColor());
    paintContent(p, body);

    p.setWorldTransform(flipTransform(m_frame.height()), true);
    p.setPen(QPen(Qt::red, 1.0, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    p.setBrush(Qt::NoBrush);
    p.drawRect(body);

    p.setBrush(Qt::white);
    for (const QRectF &area : m_areas) {
        // The interior is the area at x = y = 7. The test is on either coordinate, so a handle
        // that lies at 7 (the middle handles of a box exactly 21 wide or tall) is not drawn.
        if (area.x() == trackBoxSize || area.y() == trackBoxSize)
            continue;
        p.drawEllipse(area);
    }
}

// The picture fills the body at its opacity; during a gesture it is scaled the quick way, and
// smoothly again once the box settles.
void VelEditView::paintContent(QPainter &p, const QRectF &body) const
{
    if (!m_picture.isNull()) {
        p.save();
        p.setOpacity(m_pictureOpacity);
        p.setRenderHint(QPainter::SmoothPixmapTransform, !m_isMouseDown);
        p.drawImage(body, m_picture);
        p.restore();
    } else if (!m_linkHost.isEmpty()) {
        paintLink(p, body);
    }
}

// A link is never fetched: the box shows a link symbol and the host the image would come from.
void VelEditView::paintLink(QPainter &p, const QRectF &body) const
{
    if (body.width() < linkSymbolSize || body.height() < linkSymbolSize)
        return;
    const bool withText = body.height() >= linkTextRoom && body.width() >= linkTextRoom;
    const QFontMetricsF metrics(font());
    const qreal textHeight = withText ? metrics.height() : 0;
    const qreal top = body.center().y() - (linkSymbolSize + textHeight) / 2;
    drawLinkSymbol(p, QPointF(body.center().x(), top + linkSymbolSize / 2), linkSymbolSize);
    if (!withText)
        return;
    const QRectF line(body.left() + 2, top + linkSymbolSize, body.width() - 4, textHeight);
    p.setPen(QColor(40, 40, 40));
    p.setFont(font());
    p.drawText(line, Qt::AlignCenter,
               metrics.elidedText(m_linkHost, Qt::ElideMiddle, line.width()));
}

void VelEditView::enterEvent(QEnterEvent *event)
{
    const QPointF point = windowPointFor(event->position());
    mouseEntered(point);
    cursorUpdate(point);
}

void VelEditView::leaveEvent(QEvent *)
{
    mouseExited();
    changeCursor(m_mouseType);
}

void VelEditView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    mouseDown(windowPointFor(event->position()));
}

void VelEditView::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF point = windowPointFor(event->position());
    if (m_isMouseDown && (event->buttons() & Qt::LeftButton)) {
        mouseDragged(point, event->modifiers());
        return;
    }
    // Hovering: passing between areas is leaving one and entering the next.
    if (isMatchArea(point))
        mouseEntered(point);
    else
        mouseExited();
    cursorUpdate(point);
}

void VelEditView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    mouseUp(windowPointFor(event->position()));
}

void VelEditView::mouseEntered(QPointF windowPoint)
{
    if (!m_isMouseDown && isMatchArea(windowPoint))
        m_mouseType = mouseTypeForArea(matchArea(windowPoint));
}

void VelEditView::mouseExited()
{
    if (!m_isMouseDown)
        m_mouseType = MouseTypeNone;
}

// While a button is held the type stays frozen; only the cursor is shown again.
void VelEditView::cursorUpdate(QPointF windowPoint)
{
    if (!m_isMouseDown && isMatchArea(windowPoint))
        m_mouseType = mouseTypeForArea(matchArea(windowPoint));
    changeCursor(m_mouseType);
}

void VelEditView::changeCursor(int type)
{
    if (type == m_cursorType)
        return;
    m_cursorType = type;
    setCursor(cursorForMouseType(type));
}

void VelEditView::mouseDown(QPointF windowPoint)
{
    m_isMouseDown = true;
    m_orgPoint = windowPoint;
    m_draggedFrame = m_frame;
    m_snap = {};
    // A press outside every area keeps the previous type, normally none after leaving the box.
    if (isMatchArea(windowPoint))
        m_mouseType = mouseTypeForArea(matchArea(windowPoint));
    changeCursor(m_mouseType);
}

void VelEditView::mouseDragged(QPointF windowPoint, Qt::KeyboardModifiers modifiers)
{
    // Outside the canvas nothing changes, not even the origin of the step, so coming back
    // applies the whole distance travelled meanwhile.
    if (!canvasContains(windowPoint))
        return;
    const qreal dx = windowPoint.x() - m_orgPoint.x();
    const qreal dy = windowPoint.y() - m_orgPoint.y();
    m_orgPoint = windowPoint;
    if (m_mouseType == MouseTypeNone)
        return;
    m_isChange = true;
    const std::optional<QRectF> next =
        dragStep(m_draggedFrame, m_mouseType, dx, dy, QSizeF(parentWidget()->size()));
    if (!next)
        return;
    qCDebug(lcEditView) << "drag" << m_mouseType << dx << dy << m_draggedFrame << "->" << *next;
    m_draggedFrame = *next;
    setFrame(shownFrame(*next, modifiers));
    emit EditViewChangeNotification(this);
}

// Shift on a corner keeps the picture's shape; otherwise the frame snaps, unless Ctrl (Cmd on
// macOS, where Qt calls it Control) or Alt is held. Many Linux desktops take Alt+drag for moving
// the whole window, so Alt alone would not reach the canvas there.
QRectF VelEditView::shownFrame(const QRectF &dragged, Qt::KeyboardModifiers modifiers)
{
    m_snap = {};
    const QSizeF canvas(parentWidget()->size());
    if ((modifiers & Qt::ShiftModifier) && m_keptAspect > 0 &&
        Proportions::isCornerType(m_mouseType))
        return Proportions::keepAspect(dragged, m_mouseType, m_keptAspect, canvas);
    if (modifiers & (Qt::AltModifier | Qt::ControlModifier))
        return dragged;
    m_snap = Snapping::snapFrame(dragged, m_mouseType, canvas);
    return m_snap.frame;
}

void VelEditView::mouseUp(QPointF windowPoint)
{
    m_snap = {}; // the guides go with the gesture
    if (m_isMouseDown) {
        emit EditViewDidChangedNotification(this);
        update(); // the picture is scaled smoothly again
    }
    m_isMouseDown = false;
    if (!isMatchArea(windowPoint)) {
        m_mouseType = MouseTypeNone;
        cursorUpdate(windowPoint);
        return;
    }
    const MouseType type = mouseTypeForArea(matchArea(windowPoint));
    if (type == m_mouseType)
        return;
    m_mouseType = type;
    cursorUpdate(windowPoint);
}
