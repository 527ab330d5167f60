// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "modetimer.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

bool RunLoop::modalSessionRuns()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.cbegin(), windows.cend(), [](const QWindow *window) {
        return window->isVisible() && window->modality() == Qt::ApplicationModal;
    });
}

ModeTimer::ModeTimer(RunLoopMode mode, int intervalMs, QObject *parent)
    : QObject(parent)
    , m_mode(mode)
{
    m_timer.setInterval(intervalMs);
    connect(&m_timer, &QTimer::timeout, this, &ModeTimer::tick);
}

void ModeTimer::tick()
{
    if (RunLoop::isRunning(m_mode, RunLoop::modalSessionRuns()))
        emit timeout();
}
