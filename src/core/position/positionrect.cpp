// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "positionrect.h"

#include "fileops.h"

QRectF PositionRect::getObjectFrameWithOutlineSize(QSizeF outline) const
{
    return getObjectFrameWith(*this, outline);
}

QRectF PositionRect::getObjectFrameWith(const PositionRect &rect, QSizeF outline)
{
    // Single precision throughout, dividing by 100 last, so that the canvas and the saved
    // margins agree to the same float rounding everywhere.
    const float w = float(outline.width());
    const float h = float(outline.height());
    const float x = w * rect.left() / 100.0f;
    const float y = h * rect.bottom() / 100.0f;
    const float width = w * (100.0f - rect.left() - rect.right()) / 100.0f;
    const float height = h * (100.0f - rect.top() - rect.bottom()) / 100.0f;
    return QRectF(x, y, width, height);
}

PositionRect PositionRect::convertObjectFrame(QRectF frame, QSizeF outline)
{
    const double w = outline.width();
    const double h = outline.height();
    // The far edges are summed in single precision before the division, as the canvas does.
    const float farX = float(frame.x()) + float(frame.width());
    const float farY = float(frame.y()) + float(frame.height());
    PositionRect rect;
    rect.setLeft(float(frame.x() * 100.0 / w));
    rect.setBottom(float(frame.y() * 100.0 / h));
    rect.setRight(float(100.0 - double(farX) * 100.0 / w));
    rect.setTop(float(100.0 - double(farY) * 100.0 / h));
    return rect;
}

QByteArray PositionRect::toText() const
{
    // QString::asprintf always uses the C locale, so the decimal mark is a point everywhere.
    return QString::asprintf("%.1f\n%.1f\n%.1f\n%.1f\n%.1f\n%i", double(m_left), double(m_top),
                             double(m_right), double(m_bottom), double(m_transparency), m_layer)
        .toUtf8();
}

bool PositionRect::saveToFile(const QString &path) const
{
    return FileOps::writeAtomically(path, toText());
}

bool operator==(const PositionRect &a, const PositionRect &b)
{
    return a.m_left == b.m_left && a.m_top == b.m_top && a.m_right == b.m_right &&
           a.m_bottom == b.m_bottom && a.m_transparency == b.m_transparency &&
           a.m_layer == b.m_layer;
}

QString PositionRect::toDebugText() const
{
    const auto number = [](float value) { return QString::number(double(value), 'g', 9); };
    return QStringLiteral("PositionRect(%1, %2, %3, %4, %5, %6)")
        .arg(number(m_left), number(m_top), number(m_right), number(m_bottom),
             number(m_transparency), QString::number(m_layer));
}

QDebug operator<<(QDebug debug, const PositionRect &rect)
{
    const QDebugStateSaver saver(debug);
    debug.noquote().nospace() << rect.toDebugText();
    return debug;
}

char *toString(const PositionRect &rect)
{
    return qstrdup(rect.toDebugText().toUtf8().constData());
}
