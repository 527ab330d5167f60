// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <cstdio>
#include <unistd.h>

// What the end-to-end suites do to a settings window from outside, as a user would.
namespace WindowDriver {

// Answers the next application-modal alert by pressing the button with the given text, and
// remembers the alert's text. The alert runs its own event loop, so the answer comes from a timer
// that looks for the active modal widget.
class AlertAnswerer : public QObject
{
public:
    explicit AlertAnswerer(const QString &buttonText)
        : m_buttonText(buttonText)
    {
        m_timer.setInterval(20);
        connect(&m_timer, &QTimer::timeout, this, &AlertAnswerer::poll);
        m_timer.start();
    }
    bool answered() const { return m_answered; }
    QString alertText() const { return m_text; }

private:
    void poll()
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        const QList<QAbstractButton *> buttons = box->buttons();
        for (QAbstractButton *button : buttons) {
            if (QString(button->text()).remove(QLatin1Char('&')) == m_buttonText) {
                m_text = box->text();
                m_answered = true;
                m_timer.stop();
                button->click();
                return;
            }
        }
    }

    QString m_buttonText;
    QString m_text;
    bool m_answered = false;
    QTimer m_timer;
};

// Collects what the process writes to its standard output between construction and text().
class StdoutCapture
{
public:
    StdoutCapture()
    {
        std::fflush(stdout);
        m_file = std::tmpfile();
        m_saved = dup(STDOUT_FILENO);
        if (m_file)
            dup2(fileno(m_file), STDOUT_FILENO);
    }
    ~StdoutCapture()
    {
        restore();
        if (m_file)
            std::fclose(m_file);
    }
    StdoutCapture(const StdoutCapture &) = delete;
    StdoutCapture &operator=(const StdoutCapture &) = delete;
    QByteArray text()
    {
        restore();
        QByteArray out;
        if (m_file) {
            std::rewind(m_file);
            char buffer[4096];
            size_t n;
            while ((n = std::fread(buffer, 1, sizeof buffer, m_file)) > 0)
                out.append(buffer, qsizetype(n));
            std::fclose(m_file);
            m_file = nullptr;
        }
        return out;
    }

private:
    void restore()
    {
        if (m_saved < 0)
            return;
        std::fflush(stdout);
        dup2(m_saved, STDOUT_FILENO);
        close(m_saved);
        m_saved = -1;
    }
    std::FILE *m_file = nullptr;
    int m_saved = -1;
};

} // namespace WindowDriver
