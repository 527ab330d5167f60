// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QPointer>

class QScrollArea;

// Keeps a scroll area that scrolls only vertically (the settings column) at least as wide as its
// content needs, whenever the content's needs change: a chosen image's facts, a message, a
// language's longer labels. The column may scroll down, never sideways, and nothing in it is cut
// at its right edge. The scroll bar's width is kept free, so that its coming and going on a
// short screen never squeezes the content.
class ColumnFit : public QObject
{
    Q_OBJECT

public:
    // Watches area's widget from now on and fits area at once; a child of area.
    static ColumnFit *keep(QScrollArea *area);

    // The width area needs: its content's smallest width and the vertical scroll bar's.
    static int neededWidth(const QScrollArea *area);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit ColumnFit(QScrollArea *area);
    // The area while it is whole; null once it is being destroyed (its widget's last events
    // arrive while only its QWidget part is left).
    QScrollArea *area() const;
    void fit();

    QPointer<QWidget> m_area;
};
