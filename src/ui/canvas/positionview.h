// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "positionrect.h"
#include "snapping.h"

#include <QColor>
#include <QImage>
#include <QPointer>
#include <QWidget>

class PostionViewDelete;
class QAction;
class QMenu;
class VelEditView;

// The page on which the user places the plugin: a filled rectangle with an outline, and on it the
// edit box. It is also a keyboard control: in the tab chain, with a focus frame, arrow keys moving
// or resizing the box as a short drag would. The canvas's own record is the master: every redraw
// places the box from its margins, and every drag step of the box writes margins back into it and
// tells the owner. While the box is dragged the canvas draws the lines it snapped to.
// The box shows the chosen image (or the link it comes from), which the owner tells the canvas.
class PositionView : public QWidget
{
    Q_OBJECT

public:
    // What moved the box last: the mouse (a drag, a resize, Fit to image) or an arrow key.
    enum class Edit { Gesture, Keys };

    explicit PositionView(QWidget *parent = nullptr);
    ~PositionView() override;

    // Copies the six values into the canvas's own record and redraws; the argument is not kept.
    void setPositionRect(const PositionRect &rect);
    void setPositionRectWithLeft(float left, float top, float right, float bottom,
                                 float transparency, int layer);
    // The canvas's own record, valid for the canvas's life; the owner may keep and edit it.
    PositionRect *positionRect() { return &m_positionRect; }
    const PositionRect *positionRect() const { return &m_positionRect; }

    // Not owned; told of every drag step and of each release.
    void setOwer(PostionViewDelete *ower) { m_ower = ower; }
    PostionViewDelete *ower() const { return m_ower; }

    VelEditView *editView() const { return m_objectView; }

    // Page colours. Unset (an invalid colour) follows the palette's base colour and a mid grey,
    // so the page follows light and dark themes; the getters answer the colour in use.
    QColor fillColor() const;
    void setFillColor(const QColor &color);
    QColor outlineColor() const;
    void setOutlineColor(const QColor &color);

    // The proportions of the page the canvas stands for; the box keeps an image's shape on that
    // page. Unset (empty), the canvas's own proportions are the page's.
    QSizeF pageProportions() const { return m_pageProportions; }
    void setPageProportions(QSizeF proportions);

    // The chosen image, shown in the box at the record's transparency. naturalSize is the
    // image's own size in pixels where the image given is a reduced copy; unset, the image's.
    // A null image shows none.
    void setImage(const QImage &image, QSize naturalSize = QSize());
    QSize imageSize() const { return m_imageSize; }
    // The host of a chosen link, shown with a link symbol when there is no image; empty for none.
    void setLinkHost(const QString &host);
    QString linkHost() const { return m_linkHost; }

    // What the box snapped to in the gesture under way; empty otherwise.
    const Snapping::Result &snapResult() const { return m_snap; }

    // The canvas's context menu, owned by parent: "Fit to image", enabled with an image, then
    // the window's undo and redo when it has given them.
    QMenu *createContextMenu(QWidget *parent);
    // The window's actions for undo and redo, not owned.
    void setHistoryActions(QAction *undo, QAction *redo);
    // Read by the owner when a gesture or key step ends, to tell a drag from a run of keys.
    Edit lastEdit() const { return m_lastEdit; }

    // The box's margins as the canvas announces them, in the window's language.
    QString marginsText() const;

signals:
    // The record's margins changed (set from outside, dragged, or stepped by a key). Assistive
    // technology hears the new value at the same moment.
    void marginsChanged();

public slots:
    // The box reports a drag step: its frame becomes the record's margins. Reports from any box
    // other than this canvas's own are ignored.
    void onChangeEditView(VelEditView *box);
    // The box reports a release: the owner hears the gesture ended.
    void onDidChangedEditView(VelEditView *box);
    // Sets the box's height from its width so that the image is undistorted on the page, and
    // tells the owner as a drag would (a step, then its end). Nothing happens without an image.
    void fitToImage();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    // Arrow keys move the box, Alt+arrows move its right or bottom edge; see EditGeometry.
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    // Takes margins from an edit of the canvas's own (a key, a menu action) as a short drag.
    void applyEdit(const PositionRect &next);
    void paintGuides(QPainter &painter) const;
    void updateKeptAspect();
    void placeEditView(const QRectF &frame);
    bool showsFocus() const;
    void paintFocusFrame(QPainter &painter);
    // Emits marginsChanged and tells assistive technology, when it listens.
    void announceMargins();

    PositionRect m_positionRect;
    VelEditView *m_objectView; // a child once placed; deleted by the canvas before that
    PostionViewDelete *m_ower = nullptr;
    QColor m_fillColor;
    QColor m_outlineColor;
    bool m_keyboardFocus = false; // the focus came by the keyboard, or a key was used here
    QSizeF m_pageProportions;
    QSize m_imageSize;
    QString m_linkHost;
    Snapping::Result m_snap;
    Edit m_lastEdit = Edit::Gesture;
    QPointer<QAction> m_undoAction;
    QPointer<QAction> m_redoAction;
};
