// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

// Runs a build or inspection command to its end and keeps what it printed. A command that cannot
// start, times out or fails shows up in ok() and in the message the tests print.
struct KitProcess
{
    int exitCode = -1;
    bool finished = false;
    QByteArray out;
    QByteArray err;
    QString command;

    bool ok() const { return finished && exitCode == 0; }
    QByteArray report() const
    {
        return (command + QStringLiteral(" (exit %1)\n").arg(exitCode)).toUtf8() + out + err;
    }

    static KitProcess run(const QString &program, const QStringList &arguments,
                          int timeoutMs = 120000, const QString &workingDir = QString(),
                          const QProcessEnvironment &env = QProcessEnvironment::systemEnvironment())
    {
        KitProcess result;
        result.command = program + QLatin1Char(' ') + arguments.join(QLatin1Char(' '));
        QProcess process;
        process.setProcessEnvironment(env);
        if (!workingDir.isEmpty())
            process.setWorkingDirectory(workingDir);
        process.start(program, arguments);
        result.finished =
            process.waitForFinished(timeoutMs) && process.exitStatus() == QProcess::NormalExit;
        if (!result.finished)
            process.kill();
        process.waitForFinished(5000);
        result.exitCode = process.exitCode();
        result.out = process.readAllStandardOutput();
        result.err = process.readAllStandardError();
        return result;
    }
};
