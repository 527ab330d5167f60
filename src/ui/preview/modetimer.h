// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QTimer>

// The two run-loop modes the preview timer can keep to. Qt's event loop has no modes, so a
// ModeTimer asks on each tick whether its mode is running and lets the tick pass when it is not.
enum class RunLoopMode {
    Default,    // runs while no modal session does
    ModalPanel, // runs only while a modal session does
};

namespace RunLoop {
// Whether a timer kept to mode fires, given whether a modal session is running.
constexpr bool isRunning(RunLoopMode mode, bool modalSessionRuns)
{
    return modalSessionRuns == (mode == RunLoopMode::ModalPanel);
}
// A modal session runs while an application-modal window is up: a host's modal run of a window,
// an alert, a file panel without an owner window. A window-modal panel is a sheet on its window
// and leaves the mode as it was.
bool modalSessionRuns();
} // namespace RunLoop

// A repeating timer that fires only while its run-loop mode runs. Ticks that fall outside the
// mode are dropped, not queued: the next one in the mode comes at most one interval later.
class ModeTimer : public QObject
{
    Q_OBJECT
public:
    ModeTimer(RunLoopMode mode, int intervalMs, QObject *parent = nullptr);

    RunLoopMode mode() const { return m_mode; }
    int interval() const { return m_timer.interval(); }
    bool isActive() const { return m_timer.isActive(); }

    void start() { m_timer.start(); }
    void stop() { m_timer.stop(); }

signals:
    void timeout();

private:
    void tick();

    QTimer m_timer;
    RunLoopMode m_mode;
};
