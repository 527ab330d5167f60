// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "editgeometry.h"
#include "snapping.h"

#include <QCursor>
#include <QImage>
#include <QRectF>
#include <QString>
#include <QWidget>

class QPainter;

// The box that stands for the plugin on the page canvas: a translucent rectangle with a red
// outline and eight round handles. The interior moves it, the handles resize it; each step keeps
// it at least 15 x 15 and inside its parent, the canvas.
//
// Its frame lives in the parent's y-up coordinates (see EditGeometry) as exact reals; the widget
// geometry is the pixel rectangle that covers it. Pointer positions are taken in y-up window
// coordinates, so a drag is measured against the window and not against the box that moves.
//
// A drag follows the pointer on a frame of its own (the drag rules alone); what is shown is that
// frame snapped to the page's lines (see Snapping), or kept at the image's shape when a corner is
// dragged with Shift. Alt turns snapping off while it is held. Keeping the two apart lets the box
// come off a line again once the pointer has moved on, instead of sticking to it.
class VelEditView : public QWidget
{
    Q_OBJECT

public:
    // A 15 x 15 box at the origin.
    explicit VelEditView(QWidget *parent = nullptr);
    // A box on the given frame, grown to 15 points in each direction where it is smaller.
    explicit VelEditView(const QRectF &frame, QWidget *parent = nullptr);

    // The box in its parent's y-up coordinates. Setting it places the widget and rebuilds the
    // hit areas for the new size.
    QRectF frame() const { return m_frame; }
    void setFrame(const QRectF &frame);

    // Rebuilds the nine hit areas for a frame's size (its origin is ignored).
    void refreshArea(const QRectF &frame, qreal boxSize);
    // Rebuilds the hit areas for the current frame, after the canvas placed the box.
    void forceRefreshLayout();
    const EditGeometry::HitAreas &trackingAreas() const { return m_areas; }

    // The mouse type of one of the hit areas, against the box's current frame size.
    EditGeometry::MouseType mouseTypeForArea(const QRectF &area) const;
    // Whether a point in y-up window coordinates lies in a hit area, and the first such area
    // (a null rectangle when none does).
    bool isMatchArea(QPointF windowPoint) const;
    QRectF matchArea(QPointF windowPoint) const;
    // Conversions between y-up window coordinates and the box's own y-up coordinates.
    QPointF convertFromWindow(QPointF windowPoint) const;
    QPointF windowPointFor(QPointF widgetPosition) const;

    // The width-to-height ratio a corner drag keeps while Shift is held; 0 keeps none.
    qreal keptAspect() const { return m_keptAspect; }
    void setKeptAspect(qreal aspect) { m_keptAspect = aspect; }
    // What the last drag step snapped to; empty outside a gesture and while nothing is in reach.
    const Snapping::Result &snapResult() const { return m_snap; }

    // What the box shows inside its outline: a picture scaled to the box at the given opacity
    // (0 to 1), or else, with a host name, a link symbol and the name. Nothing shows for neither.
    void setPicture(const QImage &picture);
    QImage picture() const { return m_picture; }
    void setPictureOpacity(qreal opacity);
    qreal pictureOpacity() const { return m_pictureOpacity; }
    void setLinkHost(const QString &host);
    QString linkHost() const { return m_linkHost; }

    int mouseType() const { return m_mouseType; }
    bool isMouseDown() const { return m_isMouseDown; }
    // The pointer in y-up window coordinates at the press or the last drag step.
    QPointF orgPoint() const { return m_orgPoint; }

    // Set by the first drag step, never cleared by the box itself.
    bool isChange() const { return m_isChange; }
    void setIsChange(bool isChange) { m_isChange = isChange; }
    // Free for the owner's use.
    QString identifier() const { return m_identifier; }
    void setIdentifier(const QString &identifier) { m_identifier = identifier; }

    // The cursor shown for a mouse type; the only place that maps types to cursors.
    static QCursor cursorForMouseType(int type);
    // The three drawn cursor images, 16 x 16, black on transparent.
    static QImage drawDragIcon();
    static QImage drawRes1Icon();
    static QImage drawRes2Icon();

signals:
    // Every drag step that changed the frame. Connect directly: the canvas must see the new
    // frame before the step returns.
    void EditViewChangeNotification(VelEditView *box);
    // Every release after a press in the box, whether or not it moved.
    void EditViewDidChangedNotification(VelEditView *box);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void mouseEntered(QPointF windowPoint);
    void mouseExited();
    void cursorUpdate(QPointF windowPoint);
    void changeCursor(int type);
    void mouseDown(QPointF windowPoint);
    void mouseDragged(QPointF windowPoint, Qt::KeyboardModifiers modifiers = {});
    QRectF shownFrame(const QRectF &dragged, Qt::KeyboardModifiers modifiers);
    void paintContent(QPainter &painter, const QRectF &body) const;
    void paintLink(QPainter &painter, const QRectF &body) const;
    void mouseUp(QPointF windowPoint);

    void placeWidget();
    qreal flipHeight() const;
    QPointF originInWindow() const;
    bool canvasContains(QPointF windowPoint) const;

    QRectF m_frame;
    QRectF m_draggedFrame; // the drag rules' frame, before snapping or shaping
    Snapping::Result m_snap;
    qreal m_keptAspect = 0;
    QImage m_picture;
    qreal m_pictureOpacity = 1;
    QString m_linkHost;
    EditGeometry::HitAreas m_areas{};
    int m_mouseType = EditGeometry::MouseTypeNone;
    bool m_isMouseDown = false;
    QPointF m_orgPoint;
    bool m_isChange = false;
    QString m_identifier;
    int m_cursorType = -1; // the type whose cursor is set, so hovering does not reset it each move
};
