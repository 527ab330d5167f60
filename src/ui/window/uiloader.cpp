// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "uiloader.h"

#include "fileops.h"
#include "privateview.h"
#include "roundview.h"
#include "simplecell.h"
#include "transitionbgview.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcUiLoader, "img.uiloader", QtWarningMsg)

UiLoader::UiLoader(QObject *parent)
    : QUiLoader(parent)
{}

QStringList UiLoader::customWidgetClasses()
{
    return {QStringLiteral("PrivateView"), QStringLiteral("RoundView"),
            QStringLiteral("TransitionBGView"), QStringLiteral("SimpleCell")};
}

QWidget *UiLoader::createWidget(const QString &className, QWidget *parent, const QString &name)
{
    QWidget *widget = nullptr;
    if (className == QLatin1String("PrivateView"))
        widget = new PrivateView(parent);
    else if (className == QLatin1String("RoundView"))
        widget = new RoundView(parent);
    else if (className == QLatin1String("TransitionBGView"))
        widget = new TransitionBGView(parent);
    else if (className == QLatin1String("SimpleCell"))
        widget = new SimpleCell(parent);
    else
        return QUiLoader::createWidget(className, parent, name);
    widget->setObjectName(name);
    return widget;
}

QWidget *UiLoader::loadFile(const QString &path, QWidget *parent)
{
    // A file of the bundle: a packager's link is followed, but only to a regular file.
    QFile file;
    if (!FileOps::openForReading(&file, path, FileOps::ReadLinks::Follow)) {
        qCDebug(lcUiLoader) << "no window description at" << path;
        return nullptr;
    }
    setWorkingDirectory(QFileInfo(path).absoluteDir());
    QWidget *widget = load(&file, parent);
    if (!widget)
        qCDebug(lcUiLoader) << "broken window description" << path << errorString();
    return widget;
}
