// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QPointer>
#include <QSizeF>
#include <QWidget>

// Holds one widget at fixed proportions, as large as the box allows and centred in it. The box
// itself takes no focus and draws nothing; the widget inside is what the user works with.
class AspectBox : public QWidget
{
    Q_OBJECT

public:
    explicit AspectBox(QSizeF proportions, QWidget *parent = nullptr);

    // Takes content as its child and places it; the box owns it from now on.
    void setContent(QWidget *content);
    QWidget *content() const { return m_content; }
    QSizeF proportions() const { return m_proportions; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeContent();

    QSizeF m_proportions;
    QPointer<QWidget> m_content;
};
