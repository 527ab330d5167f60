// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// Figures of the workspace backup, printed; never asserted.
//
//   backup_bench [DIR [COUNT...]]
//                        for workspaces of 10, 1,000 and 10,000 files (or the counts given) (50 KiB
//                        each: 500 MiB at 10,000), made under DIR (default: the temporary folder),
//                        each beside `cp -a` of the same tree in the same run:
//                          backup      opening to a complete backup (SettingsBackup::start until
//                                      waitForFinished);
//                          cancel      Cancel after one edit, the backup on the workspace's file
//                                      system (restored by renames);
//                          cancel-copy Cancel with the backup on another file system (a tmpfs
//                                      mounted by the benchmark; root only), which must copy;
//                          shown       imghost on that workspace, from process start until the
//                                      window is shown (--quit-when-shown), beside 10 files.
//                        Goals: backup and cancel-copy within 1.2 times `cp -a`, cancel within
//                        0.2 s, shown within 1.1 times the 10-file figure.
// Run under xvfb-run as root for every row (the tmpfs and the window).

#include "fileops.h"
#include "settingsbackup.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <vector>

namespace {

constexpr qint64 FileSize = 50 * 1024;
constexpr int Runs = 3;

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

// count files of FileSize bytes in folders of 100, as an author's workspace with many images.
void makeTree(const QString &root, int count)
{
    QByteArray block(FileSize, Qt::Uninitialized);
    for (qsizetype i = 0; i < block.size(); ++i)
        block[i] = char((i * 131 + count) & 0xff);
    for (int i = 0; i < count; ++i) {
        const QString folder = root + QStringLiteral("/part%1").arg(i / 100);
        QDir().mkpath(folder);
        QFile file(folder + QStringLiteral("/image%1.png").arg(i));
        if (file.open(QIODevice::WriteOnly))
            file.write(block);
    }
    QFile settings(root + QStringLiteral("/settings.dat"));
    if (settings.open(QIODevice::WriteOnly))
        settings.write("10.0\n20.0\n30.0\n15.0\n0.0\n1");
}

// Every timed run starts with nothing waiting to be written back, so that no run pays for the
// writes of the one before.
void settle()
{
    ::sync();
}

double timeCommand(const QString &program, const QStringList &args)
{
    settle();
    QElapsedTimer clock;
    clock.start();
    QProcess::execute(program, args);
    return double(clock.nsecsElapsed()) / 1e6;
}

double copyTime(const QString &from, const QString &to)
{
    std::vector<double> runs;
    for (int i = 0; i < Runs; ++i) {
        runs.push_back(timeCommand(QStringLiteral("cp"), {QStringLiteral("-a"), from, to}));
        QDir(to).removeRecursively();
    }
    return median(runs);
}

struct BackupFigures
{
    double backup = 0;
    double cancel = 0;
};

BackupFigures backupAndCancel(const QString &ws, const QString &temp)
{
    std::vector<double> backups;
    std::vector<double> cancels;
    for (int i = 0; i < Runs; ++i) {
        settle();
        SettingsBackup backup(ws, temp);
        QElapsedTimer clock;
        clock.start();
        backup.start();
        backup.waitForFinished();
        backups.push_back(double(clock.nsecsElapsed()) / 1e6);
        FileOps::writeAtomically(ws + QStringLiteral("/settings.dat"),
                                 "50.0\n20.0\n30.0\n15.0\n0.0\n1");
        settle();
        clock.restart();
        backup.restore();
        cancels.push_back(double(clock.nsecsElapsed()) / 1e6);
    }
    return {median(backups), median(cancels)};
}

double shownTime(const QString &host, const QString &bundle, const QString &ws)
{
    std::vector<double> runs;
    for (int i = 0; i < Runs; ++i) {
        settle();
        QProcess process;
        QElapsedTimer clock;
        clock.start();
        process.start(host, {QStringLiteral("--bundle"), bundle, QStringLiteral("--workspace"), ws,
                             QStringLiteral("--quit-when-shown")});
        double shown = 0;
        while (process.waitForReadyRead(60000)) {
            if (process.readAll().contains("window shown")) {
                shown = double(clock.nsecsElapsed()) / 1e6;
                break;
            }
        }
        process.waitForFinished(60000);
        runs.push_back(shown);
    }
    return median(runs);
}

bool mountTmpfs(const QString &dir)
{
    return geteuid() == 0 &&
           QProcess::execute(QStringLiteral("mount"),
                             {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                              QStringLiteral("size=2g"), QStringLiteral("tmpfs"), dir}) == 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QString base = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QDir::tempPath();
    QTemporaryDir root(base + QStringLiteral("/backupbench-XXXXXX"));
    const QString host = QStringLiteral(IMG_HOST_EXE);
    const QString bundle = QStringLiteral(IMG_BUNDLE_DIR);
    const QString temp = root.filePath(QStringLiteral("tmp"));
    const QString foreignTemp = root.filePath(QStringLiteral("tmpfs"));
    QDir().mkpath(temp);
    QDir().mkpath(foreignTemp);
    const bool haveTmpfs = mountTmpfs(foreignTemp);

    std::printf("%-8s %10s %10s %8s %10s %8s %12s %8s %10s %8s\n", "files", "cp -a ms", "backup",
                "x cp", "cancel", "", "cancel-copy", "x cp", "shown ms", "x 10");
    double shownTen = 0;
    std::vector<int> counts{10, 1000, 10000};
    if (argc > 2) {
        counts.clear();
        for (int i = 2; i < argc; ++i)
            counts.push_back(std::atoi(argv[i]));
    }
    for (const int count : counts) {
        const QString ws = root.filePath(QStringLiteral("ws%1/img").arg(count));
        makeTree(ws, count);
        const double cp = copyTime(ws, root.filePath(QStringLiteral("copy")));
        const BackupFigures same = backupAndCancel(ws, temp);
        double cpForeign = 0;
        BackupFigures foreign;
        if (haveTmpfs) {
            // Cancel copies from the backup's file system onto the workspace's: so does the
            // reference.
            const QString source = foreignTemp + QStringLiteral("/source");
            QProcess::execute(QStringLiteral("cp"), {QStringLiteral("-a"), ws, source});
            cpForeign = copyTime(source, root.filePath(QStringLiteral("copy")));
            QDir(source).removeRecursively();
            foreign = backupAndCancel(ws, foreignTemp);
        }
        const double shown = shownTime(host, bundle, ws);
        if (count == 10)
            shownTen = shown;
        std::printf("%-8d %10.1f %10.1f %8.2f %10.1f %8s %12.1f %8.2f %10.1f %8.2f\n", count, cp,
                    same.backup, same.backup / cp, same.cancel, "", foreign.cancel,
                    cpForeign > 0 ? foreign.cancel / cpForeign : 0.0, shown,
                    shownTen > 0 ? shown / shownTen : 0.0);
        std::fflush(stdout);
        QDir(root.filePath(QStringLiteral("ws%1").arg(count))).removeRecursively();
    }
    if (haveTmpfs)
        QProcess::execute(QStringLiteral("umount"), {foreignTemp});
    else
        std::printf("cancel-copy not measured: mounting a tmpfs needs root\n");
    return 0;
}
