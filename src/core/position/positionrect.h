// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDebug>
#include <QRectF>
#include <QSizeF>
#include <QString>

// Where the plugin sits on the book page: four margins in percent of the page, a transparency in
// percent and a layer tag. Canvas rectangles have their origin at the bottom-left corner of the
// page outline with y growing upwards, which is why the bottom margin fixes the y origin.
// A value type: setters store what they are given, without clamping.
class PositionRect
{
public:
    PositionRect() = default;
    PositionRect(float left, float top, float right, float bottom, float transparency = 0,
                 int layer = 0)
        : m_left(left)
        , m_top(top)
        , m_right(right)
        , m_bottom(bottom)
        , m_transparency(transparency)
        , m_layer(layer)
    {
    }

    float left() const { return m_left; }
    void setLeft(float value) { m_left = value; }
    float top() const { return m_top; }
    void setTop(float value) { m_top = value; }
    float right() const { return m_right; }
    void setRight(float value) { m_right = value; }
    float bottom() const { return m_bottom; }
    void setBottom(float value) { m_bottom = value; }
    float transparency() const { return m_transparency; }
    void setTransparency(float value) { m_transparency = value; }
    int layer() const { return m_layer; }
    void setLayer(int value) { m_layer = value; }

    // Margins to a rectangle on an outline of the given size, in single precision.
    QRectF getObjectFrameWithOutlineSize(QSizeF outline) const;
    static QRectF getObjectFrameWith(const PositionRect &rect, QSizeF outline);
    // A rectangle on the outline back to margins; transparency and layer are left zero.
    static PositionRect convertObjectFrame(QRectF frame, QSizeF outline);

    // The six-line text form: five "%.1f" values and the layer as "%i", no trailing newline.
    QByteArray toText() const;
    // Writes toText() atomically; false when it could not be written (the window goes on).
    bool saveToFile(const QString &path) const;

    friend bool operator==(const PositionRect &a, const PositionRect &b);
    friend bool operator!=(const PositionRect &a, const PositionRect &b) { return !(a == b); }

    // "PositionRect(10, 26, 60, 26, 0, 1)": the values as given, for logs and failed tests.
    QString toDebugText() const;

private:
    float m_left = 0;
    float m_top = 0;
    float m_right = 0;
    float m_bottom = 0;
    float m_transparency = 0;
    int m_layer = 0;
};

QDebug operator<<(QDebug debug, const PositionRect &rect);
// QtTest prints a PositionRect that a QCOMPARE finds different with this (found by argument-
// dependent lookup); the caller frees the text, as QtTest does.
char *toString(const PositionRect &rect);
