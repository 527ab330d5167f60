// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QUiLoader>

// Builds widgets from the bundle's window descriptions (Qt Designer .ui files read at run time),
// including the bundle's own widget classes: PrivateView, RoundView, TransitionBGView and
// SimpleCell are made by class name like any Qt widget.
class UiLoader : public QUiLoader
{
    Q_OBJECT
public:
    explicit UiLoader(QObject *parent = nullptr);

    QWidget *createWidget(const QString &className, QWidget *parent = nullptr,
                          const QString &name = QString()) override;

    // The class names this loader adds to Qt's own.
    static QStringList customWidgetClasses();

    // The top-level widget of the description at path, or null when the file is missing, not a
    // regular file (a link to one is followed) or broken. The caller owns the result (or its
    // parent does).
    QWidget *loadFile(const QString &path, QWidget *parent = nullptr);
};
