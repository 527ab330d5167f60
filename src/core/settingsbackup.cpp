#include "settingsbackup.h"

#include "fileops.h"

#include <QDir>
#include <QLoggingCategory>

#include <chrono>

Q_LOGGING_CATEGORY(lcBackup, "img.backup", QtWarningMsg)

namespace SettingsBackup {

QString backupPathFor(double secondsSince1970, const QString &tempDir)
{
    return QDir(tempDir).filePath(QString::asprintf("%f", secondsSince1970));
}

QString newBackupPath()
{
    using namespace std::chrono;
    const auto micros = duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
    const double now = double(micros) / 1e6;
    return backupPathFor(now, QDir::tempPath());
}

void createBackupFolder(const QString &path)
{
    if (path.isEmpty())
        return;
    if (FileOps::exists(path))
        FileOps::removeItem(path);
    if (!QDir().mkpath(path))
        qCDebug(lcBackup) << "cannot create the backup folder" << path;
}

void saveInitialSettings(const QString &workSpace, const QString &backup)
{
    if (workSpace.isEmpty() || !FileOps::isDir(backup))
        return;
    const QDir from(workSpace);
    const QDir to(backup);
    // A folder is copied whole on its first appearance; its entries then fail on existing
    // targets, which is harmless.
    for (const QString &sub : FileOps::subpaths(workSpace)) {
        if (!FileOps::exists(to.filePath(sub)))
            FileOps::copyItem(from.filePath(sub), to.filePath(sub));
    }
}

void undoSettings(const QString &workSpace, const QString &backup)
{
    // An empty path would name the current folder; there is nothing to restore into.
    if (!workSpace.isEmpty() && FileOps::isDir(backup)) {
        if (FileOps::exists(workSpace))
            FileOps::removeItem(workSpace);
        QDir().mkpath(workSpace);
        const QDir from(backup);
        const QDir to(workSpace);
        for (const QString &sub : FileOps::subpaths(backup)) {
            const QString target = to.filePath(sub);
            // Entries of a folder copied whole a moment ago are already in place.
            if (FileOps::exists(target))
                continue;
            if (!FileOps::copyItem(from.filePath(sub), target))
                qCDebug(lcBackup) << "cannot restore" << sub;
        }
    }
    clearBackupSettings(backup);
}

void clearBackupSettings(const QString &backup)
{
    if (FileOps::exists(backup))
        FileOps::removeItem(backup);
}

} // namespace SettingsBackup
