// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

#include <chrono>
#include <functional>
#include <memory>

// The whole-workspace backup that makes Cancel possible: an exact, private image of the workspace
// as it was when the window opened, restored over the workspace on discard and deleted on apply.
//
// The backup is a folder of its own (mode 0700, created exclusively) in the temporary folder,
// named by the opening time ("%f" seconds since 1970, "-1", "-2", ... appended when that name is
// taken), with a QLockFile "<name>.lock" beside it that its window holds for as long as it lives.
// It holds:
//   owner     the workspace's absolute path, so that a later window can find a backup its
//             earlier window left behind when it died;
//   tree/     the image of the workspace;
//   complete  written once tree/ holds everything; a backup without it is never trusted;
//   kept      special files that could not be recreated (one relative path a line): a restore
//             leaves the workspace's own entries there alone;
//   cancel    written when the author chose to go back; a dead window's restore is finished by
//             the next opening without asking again;
//   restored  the identity ("device:inode") of the restored tree just before it is swapped in,
//             so that the next opening can tell whether the swap happened.
//
// The image is taken in the background; a change that the bundle makes to the workspace first
// calls preserve() (through WriteGuard), which puts the entry's opening state into the backup
// before anything touches it. The workspace is replaced only by a complete restored copy, swapped
// in by renames; after a crash at any moment the workspace is complete, old or restored.
class SettingsBackup
{
public:
    enum class State {
        Unavailable, // no backup folder could be made (temporary folder missing, read-only, full)
        Capturing,   // the image is being taken
        Complete,    // tree/ is an exact image of the workspace at opening
        Incomplete,  // the image could not be finished; nothing may be restored from it
    };
    enum class Outcome {
        Restored,      // the workspace is as it was at opening
        NothingToUndo, // the backup is not complete: the workspace was left as it is
        Failed,        // the restored copy could not be made: the workspace is as it was, the
                       // backup stays for the next opening
    };
    using Progress = std::function<void(qint64 done, qint64 total)>;

    // Makes the backup folder for workSpace in tempDir (the system's temporary folder by
    // default) and locks it; state() is Unavailable when that fails.
    explicit SettingsBackup(const QString &workSpace, const QString &tempDir = QString());
    // Stops the capture and unlocks the backup; the folder stays (a next opening offers it).
    ~SettingsBackup();
    SettingsBackup(const SettingsBackup &) = delete;
    SettingsBackup &operator=(const SettingsBackup &) = delete;

    // "%f" of secondsSince1970 in tempDir: the name a backup of that opening time takes.
    static QString backupPathFor(double secondsSince1970, const QString &tempDir);

    QString path() const;
    QString workSpace() const;
    State state() const;
    // Number of workspace entries in the image so far (the root folder counts).
    qint64 entryCount() const;

    // Starts taking the image on a thread of its own; finished (if set) is called on that thread
    // with Complete or Incomplete when it ends. With a hold, once the image holds
    // entriesBeforeHold entries it copies nothing more until proceed() or until the hold has
    // passed, so that a window can open without sharing the disk and the processors with the copy
    // of a large workspace; preserve() works throughout.
    void start(std::function<void(State)> finished = {},
               std::chrono::milliseconds hold = std::chrono::milliseconds::zero(),
               qint64 entriesBeforeHold = 0);
    // Ends a hold at once.
    void proceed();
    // Ends any hold and blocks until the image is complete or has failed; false on time-out.
    bool waitForFinished(int msecs = -1);

    // The bundle is about to create, replace or remove the entry at path: its state at opening
    // (or the fact that it did not exist) goes into the image first. Paths outside the workspace
    // and calls after the image is finished return at once.
    void preserve(const QString &path);

    // Cancel: replaces the workspace by the image and deletes the backup. progress is called on
    // the calling thread while a restored copy is being made.
    Outcome restore(const Progress &progress = {});
    // Apply: deletes the backup.
    void clear();

private:
    class Private;
    std::unique_ptr<Private> d;
};
