// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "simplecell.h"

#include "framepainter.h"

#include <QPainter>

#include <algorithm>

SimpleCell::Layout SimpleCell::layoutFor(const QRectF &frame, ImagePosition position, bool hasTitle)
{
    Layout layout;
    if (position != NoImage) {
        layout.drawsImage = true;
        if (hasTitle) {
            // A square at the left edge, as tall as the frame allows.
            const qreal side = std::min(frame.width() - 4.0, frame.height() - 4.0);
            layout.image = QRectF(frame.x() + 2.0, frame.y() + 2.0, side, side);
        } else {
            layout.image = frame.adjusted(2.0, 2.0, -2.0, -2.0);
        }
    }
    if (position != ImageOnly) {
        layout.drawsTitle = hasTitle;
        // The title starts 2.0 after the image (itself 2.0 in from the edge), or 2.0 in when
        // there is none, and keeps 2.0 off the right edge beside the image.
        const qreal imageWidth = layout.image.width();
        const qreal start = layout.drawsImage ? imageWidth + 4.0 : 2.0;
        layout.title = QRectF(frame.x() + start, frame.y() + 2.0, frame.width() - imageWidth - 6.0,
                              frame.height() - 4.0);
    }
    return layout;
}

SimpleCell::SimpleCell(QWidget *parent)
    : QAbstractButton(parent)
{}

void SimpleCell::setImagePosition(ImagePosition position)
{
    m_imagePosition = position;
    update();
}

void SimpleCell::setTransparent(bool transparent)
{
    m_transparent = transparent;
    update();
}

void SimpleCell::setAlignment(Qt::Alignment alignment)
{
    m_alignment = alignment;
    update();
}

void SimpleCell::setShowsBorderOnlyWhileMouseInside(bool shows)
{
    m_tracksMouse = shows;
    if (!shows && m_isMouseInsize)
        mouseExited();
}

QSize SimpleCell::sizeHint() const
{
    const QSize text = fontMetrics().size(Qt::TextShowMnemonic, this->text());
    int width = text.width() + 16;
    const int height = std::max(text.height() + 10, 24);
    if (m_imagePosition != NoImage)
        width += height;
    return QSize(width, height);
}

void SimpleCell::paintEvent(QPaintEvent *)
{
    if (m_transparent)
        return;
    QPainter painter(this);
    const QRectF frame(rect());
    if (isDown()) {
        FramePainter::fillGradient(painter, frame, 90.0, QColor::fromRgbF(0.9, 0.9, 0.9, 0.5),
                                   QColor::fromRgbF(0.6, 0.6, 0.6, 0.5));
    } else if (m_isMouseInsize && isEnabled()) {
        FramePainter::strokeRoundedRect(painter, frame, 4.0, 4.0,
                                        QColor::fromRgbF(0.6, 0.8, 1.0, 1.0));
    }
    FramePainter::strokeRoundedRect(painter, frame, 4.0, 1.0, FramePainter::frameGrey());
    // Focus that came from the keyboard, as Qt's styles show it: a ring in the palette's
    // highlight just inside the grey border.
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange))
        FramePainter::strokeRoundedRect(painter, frame.adjusted(2, 2, -2, -2), 3.0, 2.0,
                                        palette().color(QPalette::Highlight));

    const Layout layout = layoutFor(frame, m_imagePosition, !text().isEmpty());
    if (layout.drawsImage && !icon().isNull()) {
        const QIcon::Mode mode = isEnabled() ? QIcon::Normal : QIcon::Disabled;
        icon().paint(&painter, layout.image.toAlignedRect(), Qt::AlignCenter, mode);
    }
    if (layout.drawsTitle) {
        painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                       QPalette::ButtonText));
        painter.drawText(layout.title, int(m_alignment) | Qt::TextShowMnemonic, text());
    }
}

void SimpleCell::enterEvent(QEnterEvent *event)
{
    if (m_tracksMouse)
        mouseEntered();
    QAbstractButton::enterEvent(event);
}

void SimpleCell::leaveEvent(QEvent *event)
{
    if (m_isMouseInsize)
        mouseExited();
    QAbstractButton::leaveEvent(event);
}

void SimpleCell::mouseEntered()
{
    m_isMouseInsize = true;
    update();
}

void SimpleCell::mouseExited()
{
    m_isMouseInsize = false;
    update();
}
