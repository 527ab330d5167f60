// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

// The tool run as a separate process, as a shell would run it.
namespace ToolRun {

struct Result
{
    int exitCode = -1;
    bool crashed = true;
    QByteArray out;
    QByteArray err;
};

struct Setup
{
    QByteArray input;        // standard input, closed after it
    QString workingDir;      // the current folder; the test's when empty
    QString standardOutFile; // standard output goes to this file when set ("/dev/full")
};

inline Result run(const QStringList &args, const Setup &setup = Setup())
{
    QProcess process;
    if (!setup.workingDir.isEmpty())
        process.setWorkingDirectory(setup.workingDir);
    if (!setup.standardOutFile.isEmpty())
        process.setStandardOutputFile(setup.standardOutFile);
    process.start(QStringLiteral(IMG_TOOL_PATH), args);
    process.write(setup.input);
    process.closeWriteChannel();
    Result result;
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return result;
    }
    result.crashed = process.exitStatus() != QProcess::NormalExit;
    result.exitCode = process.exitCode();
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}

} // namespace ToolRun
