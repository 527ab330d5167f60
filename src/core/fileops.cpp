#include "fileops.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace FileOps {

namespace {

void collect(const QString &root, const QString &prefix, QStringList *out)
{
    const QDir dir(prefix.isEmpty() ? root : root + QLatin1Char('/') + prefix);
    const QFileInfoList entries = dir.entryInfoList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo &entry : entries) {
        const QString rel =
            prefix.isEmpty() ? entry.fileName() : prefix + QLatin1Char('/') + entry.fileName();
        out->append(rel);
        // Links are listed as themselves; following them could loop or leave the tree.
        if (entry.isDir() && !entry.isSymLink())
            collect(root, rel, out);
    }
}

} // namespace

QStringList subpaths(const QString &folder)
{
    QStringList out;
    if (folder.isEmpty() || !isDir(folder))
        return out;
    collect(folder, QString(), &out);
    return out;
}

bool exists(const QString &path)
{
    if (path.isEmpty())
        return false;
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

bool isDir(const QString &path)
{
    return !path.isEmpty() && QFileInfo(path).isDir();
}

bool removeItem(const QString &path)
{
    const QFileInfo info(path);
    if (path.isEmpty() || !(info.exists() || info.isSymLink()))
        return false;
    if (info.isDir() && !info.isSymLink())
        return QDir(path).removeRecursively();
    return QFile::remove(path);
}

bool copyItem(const QString &from, const QString &to)
{
    if (exists(to))
        return false;
    const QFileInfo info(from);
    if (!info.isDir() || info.isSymLink())
        return QFile::copy(from, to);
    if (!QDir().mkpath(to))
        return false;
    bool ok = true;
    for (const QString &rel : subpaths(from)) {
        const QString src = from + QLatin1Char('/') + rel;
        const QString dst = to + QLatin1Char('/') + rel;
        if (QFileInfo(src).isDir() && !QFileInfo(src).isSymLink())
            ok = QDir().mkpath(dst) && ok;
        else
            ok = QFile::copy(src, dst) && ok;
    }
    return ok;
}

bool readAll(const QString &path, QByteArray *data)
{
    if (path.isEmpty() || QFileInfo(path).isDir())
        return false;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    *data = file.readAll();
    return file.error() == QFileDevice::NoError;
}

bool writeAtomically(const QString &path, const QByteArray &data)
{
    if (path.isEmpty())
        return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (file.write(data) != data.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

} // namespace FileOps
