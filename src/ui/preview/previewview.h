// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QWebEngineView>

// The settings window's preview: a web view that is looked at, not worked. It and the engine's
// own widget inside it take the focus on a click but stay out of the Tab chain, so that Tab runs
// through the window's controls and never gets caught in the page.
class PreviewView : public QWebEngineView
{
    Q_OBJECT

public:
    explicit PreviewView(QWidget *parent = nullptr);

protected:
    void childEvent(QChildEvent *event) override;
};
