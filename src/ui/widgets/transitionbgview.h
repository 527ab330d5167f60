// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QWidget>

// A background with a soft vertical gradient, half-transparent white at the top fading to
// half-transparent light grey at the bottom, inside the thin rounded grey frame.
class TransitionBGView : public QWidget
{
    Q_OBJECT
public:
    explicit TransitionBGView(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
