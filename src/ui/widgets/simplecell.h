// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QAbstractButton>
#include <QRectF>

// A flat button that draws itself: a thin rounded grey frame, a light blue hover ring while the
// mouse is inside (enabled buttons only), a grey gradient while pressed, the icon at the left
// edge and the title in the rest of the width.
class SimpleCell : public QAbstractButton
{
    Q_OBJECT
    Q_PROPERTY(ImagePosition imagePosition READ imagePosition WRITE setImagePosition)
    Q_PROPERTY(bool transparent READ isTransparent WRITE setTransparent)
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment)
    Q_PROPERTY(bool showsBorderOnlyWhileMouseInside READ showsBorderOnlyWhileMouseInside WRITE
                   setShowsBorderOnlyWhileMouseInside)
public:
    // Whether an image and a title are drawn. Every position except NoImage draws the image at
    // the left edge; every position except ImageOnly draws the title.
    enum ImagePosition {
        NoImage,
        ImageOnly,
        ImageLeft,
        ImageRight,
        ImageBelow,
        ImageAbove,
        ImageOverlaps
    };
    Q_ENUM(ImagePosition)

    // Where a frame puts its image and its title.
    struct Layout
    {
        bool drawsImage = false;
        bool drawsTitle = false;
        QRectF image; // empty when no image is drawn
        QRectF title;
    };
    static Layout layoutFor(const QRectF &frame, ImagePosition position, bool hasTitle);

    explicit SimpleCell(QWidget *parent = nullptr);

    ImagePosition imagePosition() const { return m_imagePosition; }
    void setImagePosition(ImagePosition position);
    // A transparent button draws nothing at all but still takes clicks.
    bool isTransparent() const { return m_transparent; }
    void setTransparent(bool transparent);
    Qt::Alignment alignment() const { return m_alignment; }
    void setAlignment(Qt::Alignment alignment);
    // Switches the tracking of the mouse on: only then does the button know when the mouse is
    // inside it and show the hover ring.
    bool showsBorderOnlyWhileMouseInside() const { return m_tracksMouse; }
    void setShowsBorderOnlyWhileMouseInside(bool shows);

    // True while the mouse is inside the button (with tracking on).
    bool mouseStatus() const { return m_isMouseInsize; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    void mouseEntered();
    void mouseExited();

    bool m_isMouseInsize = false;
    bool m_transparent = false;
    bool m_tracksMouse = false;
    ImagePosition m_imagePosition = NoImage;
    Qt::Alignment m_alignment = Qt::AlignCenter;
};
