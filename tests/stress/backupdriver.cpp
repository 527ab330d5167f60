// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// backupdriver: does to a workspace's files what the settings window does, step by step, and says
// on standard output when each step is done, so that a test can kill it at a chosen moment and
// check what the next opening finds. No window, no display: only the core the window uses.
//
//   backupdriver --workspace DIR --temp DIR --images DIR --phases open[,wait][,edit][,cancel|ok]
//                [--pending go-back|keep] [--saves N] [--gap-ms MS] [--linger-ms MS]
//                [--hold-ms MS --spare N --proceed-ms MS]
//
// open    settles what a dead window left ("settled N"), answers the pending backups as told
//         ("answered keep" or "answered go-back OUTCOME"), makes this opening's backup and starts
//         taking it ("opened PATH"; "captured STATE" follows whenever the image is done)
//         With --hold-ms the image holds, as the window's does, after --spare entries until
//         --proceed-ms after the opening (the window's first preview) or the hold has passed.
// wait    waits until the image is taken ("waited"), like an author who is slow to start
// edit    the saves of WindowEdits, one "saved N" after each
// cancel  restores the workspace ("cancelled OUTCOME"); ok: deletes the backup ("applied")
// Then "done", and the process lingers, as a window would stay open, until it is killed.

#include "backuprecovery.h"
#include "fileops.h"
#include "settingsbackup.h"
#include "windowedits.h"

#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QThread>

#include <chrono>
#include <cstdio>
#include <memory>
#include <mutex>
#include <thread>
#include <unistd.h>

namespace {

struct Options
{
    QString workSpace;
    QString temp;
    QString images;
    QStringList phases;
    bool goBack = false;
    int saves = 15;
    int gapMs = 2;
    int lingerMs = 60000; // a driver whose test died must not stay for ever
    int holdMs = 0;
    int spare = 0;
    int proceedMs = -1; // never
};

// One write() a line: the line is wholly in the pipe or not at all when the kill comes, and the
// capture thread's line never tears the main thread's.
void say(const QByteArray &line)
{
    static std::mutex mutex;
    const std::lock_guard<std::mutex> lock(mutex);
    const QByteArray text = line + '\n';
    if (::write(STDOUT_FILENO, text.constData(), size_t(text.size())) != text.size())
        std::perror("backupdriver: stdout");
}

const char *stateName(SettingsBackup::State state)
{
    switch (state) {
    case SettingsBackup::State::Unavailable:
        return "Unavailable";
    case SettingsBackup::State::Capturing:
        return "Capturing";
    case SettingsBackup::State::Complete:
        return "Complete";
    case SettingsBackup::State::Incomplete:
        return "Incomplete";
    }
    return "?";
}

const char *outcomeName(SettingsBackup::Outcome outcome)
{
    switch (outcome) {
    case SettingsBackup::Outcome::Restored:
        return "Restored";
    case SettingsBackup::Outcome::NothingToUndo:
        return "NothingToUndo";
    case SettingsBackup::Outcome::Failed:
        return "Failed";
    }
    return "?";
}

bool parse(int argc, char *argv[], Options *o)
{
    for (int i = 1; i + 1 < argc; i += 2) {
        const QByteArray key(argv[i]);
        const QString value = QString::fromLocal8Bit(argv[i + 1]);
        if (key == "--workspace")
            o->workSpace = QDir(value).absolutePath();
        else if (key == "--temp")
            o->temp = QDir(value).absolutePath();
        else if (key == "--images")
            o->images = QDir(value).absolutePath();
        else if (key == "--phases")
            o->phases = value.split(QLatin1Char(','));
        else if (key == "--pending")
            o->goBack = value == QLatin1String("go-back");
        else if (key == "--saves")
            o->saves = value.toInt();
        else if (key == "--gap-ms")
            o->gapMs = value.toInt();
        else if (key == "--linger-ms")
            o->lingerMs = value.toInt();
        else if (key == "--hold-ms")
            o->holdMs = value.toInt();
        else if (key == "--spare")
            o->spare = value.toInt();
        else if (key == "--proceed-ms")
            o->proceedMs = value.toInt();
        else
            return false;
    }
    return (argc % 2) == 1 && !o->workSpace.isEmpty() && !o->temp.isEmpty() && !o->phases.isEmpty();
}

// As the window answers: going back takes the oldest backup, the one from before the first
// window that died; every other one is let go.
void answerPending(const Options &o, const QList<BackupRecovery::Pending> &pending)
{
    for (const BackupRecovery::Pending &entry : pending) {
        if (!o.goBack || entry.backupPath != pending.first().backupPath)
            BackupRecovery::keep(entry.backupPath);
    }
    if (!o.goBack) {
        say("answered keep");
        return;
    }
    const auto outcome = BackupRecovery::goBack(o.workSpace, pending.first().backupPath);
    say(QByteArray("answered go-back ") + outcomeName(outcome));
}

std::unique_ptr<SettingsBackup> open(const Options &o)
{
    const QList<BackupRecovery::Pending> pending = BackupRecovery::settle(o.workSpace, o.temp);
    say("settled " + QByteArray::number(pending.size()));
    if (!pending.isEmpty())
        answerPending(o, pending);
    auto backup = std::make_unique<SettingsBackup>(o.workSpace, o.temp);
    backup->start([](SettingsBackup::State end) { say(QByteArray("captured ") + stateName(end)); },
                  std::chrono::milliseconds(o.holdMs), o.spare);
    say("opened " + QFile::encodeName(backup->path()));
    return backup;
}

// As the private view brings in a chosen image: an entry already under that name is moved
// aside first, then the image is copied in.
bool chooseImage(const Options &o, int save)
{
    const QDir ws(o.workSpace);
    const QString dest = ws.filePath(WindowEdits::targetOf(save));
    if (FileOps::exists(dest) &&
        !FileOps::renameItem(dest, ws.filePath(WindowEdits::asideOf(save))))
        return false;
    return FileOps::copyItem(QDir(o.images).filePath(WindowEdits::targetOf(save)), dest);
}

bool save(const Options &o, int n)
{
    if (WindowEdits::kindOf(n) == WindowEdits::Kind::Image)
        return chooseImage(o, n);
    return FileOps::writeAtomically(QDir(o.workSpace).filePath(WindowEdits::targetOf(n)),
                                    WindowEdits::contentOf(n));
}

void edit(const Options &o)
{
    for (int n = 1; n <= o.saves; ++n) {
        say((save(o, n) ? "saved " : "save failed ") + QByteArray::number(n));
        if (o.gapMs > 0)
            QThread::msleep(ulong(o.gapMs));
    }
    say("edited");
}

} // namespace

int main(int argc, char *argv[])
{
    Options o;
    if (!parse(argc, argv, &o)) {
        std::fputs("usage: backupdriver --workspace DIR --temp DIR --images DIR --phases "
                   "open[,wait][,edit][,cancel|ok] [--pending go-back|keep] [--saves N] "
                   "[--gap-ms MS] [--linger-ms MS] [--hold-ms MS --spare N --proceed-ms MS]\n",
                   stderr);
        return 2;
    }
    std::unique_ptr<SettingsBackup> backup;
    std::thread preview; // lets a held image go on, as the window's first preview does
    for (const QString &phase : std::as_const(o.phases)) {
        if (phase == QLatin1String("open")) {
            backup = open(o);
            if (o.proceedMs >= 0) {
                SettingsBackup *opened = backup.get();
                preview = std::thread([opened, &o] {
                    QThread::msleep(ulong(o.proceedMs));
                    opened->proceed();
                });
            }
        } else if (!backup) {
            std::fprintf(stderr, "backupdriver: %s before open\n", qPrintable(phase));
            return 2;
        } else if (phase == QLatin1String("wait")) {
            backup->waitForFinished();
            say("waited");
        } else if (phase == QLatin1String("edit")) {
            edit(o);
        } else if (phase == QLatin1String("cancel")) {
            say(QByteArray("cancelled ") + outcomeName(backup->restore()));
        } else if (phase == QLatin1String("ok")) {
            backup->clear();
            say("applied");
        } else {
            std::fprintf(stderr, "backupdriver: unknown phase %s\n", qPrintable(phase));
            if (preview.joinable())
                preview.join();
            return 2;
        }
    }
    say("done");
    if (preview.joinable())
        preview.join();
    QThread::msleep(ulong(o.lingerMs));
    return 0;
}
