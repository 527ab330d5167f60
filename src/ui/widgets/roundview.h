// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QWidget>

// A container with a thin rounded grey frame and nothing else: no fill, the children draw on top.
class RoundView : public QWidget
{
    Q_OBJECT
public:
    explicit RoundView(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
