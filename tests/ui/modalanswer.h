// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

// Answers the next modal window that opens: polls from the event loop (also from inside a
// nested modal loop) until an application- or window-modal widget shows, then hands it to
// answer. Gives up after timeoutMs so that a missing dialog fails the test instead of hanging.
namespace ModalAnswer {

inline void next(std::function<void(QWidget *)> answer, int timeoutMs = 5000)
{
    auto clock = std::make_shared<QElapsedTimer>();
    clock->start();
    auto poll = std::make_shared<std::function<void()>>();
    *poll = [answer, clock, poll, timeoutMs] {
        QWidget *modal = QApplication::activeModalWidget();
        if (modal && modal->isVisible()) {
            answer(modal);
            // Break the cycle once this call has returned: the running closure lives in poll.
            QTimer::singleShot(0, [poll] { *poll = nullptr; });
            // A dialog that the answer did not close is closed later, so that the test fails
            // instead of hanging in the modal loop.
            QPointer<QDialog> dialog = qobject_cast<QDialog *>(modal);
            QTimer::singleShot(timeoutMs, [dialog] {
                if (dialog && dialog->isVisible())
                    dialog->reject();
            });
            return;
        }
        if (clock->elapsed() > timeoutMs) {
            QTimer::singleShot(0, [poll] { *poll = nullptr; });
            return;
        }
        QTimer::singleShot(10, [poll] {
            if (*poll)
                (*poll)();
        });
    };
    QTimer::singleShot(0, [poll] {
        if (*poll)
            (*poll)();
    });
}

// The button of a dialog with the given text, or null.
inline QAbstractButton *buttonTitled(QWidget *dialog, const QString &title)
{
    const auto buttons = dialog->findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons)
        if (button->text() == title)
            return button;
    return nullptr;
}

} // namespace ModalAnswer
