#pragma once

#include "positionrect.h"

#include <QColor>
#include <QWidget>

class PostionViewDelete;
class VelEditView;

// The page on which the user places the plugin: a filled rectangle with an outline, and on it the
// edit box. It is also a keyboard control: in the tab chain, with a focus frame, arrow keys moving
// or resizing the box as a short drag would. The canvas's own record is the master: every redraw
// places the box from its margins, and every drag step of the box writes margins back into it and
// tells the owner.
class PositionView : public QWidget
{
    Q_OBJECT

public:
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

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    // Arrow keys move the box, Alt+arrows move its right or bottom edge; see EditGeometry.
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
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
};
