// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "log.h"
#include "testenv.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QtTest>

namespace {

QStringList captured;

void capture(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtWarningMsg)
        captured << message;
}

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// A file of exactly size bytes, made of whole lines.
QByteArray logOfSize(qsizetype size)
{
    QByteArray bytes(size, 'x');
    for (qsizetype i = 79; i < size; i += 80)
        bytes[i] = '\n';
    return bytes;
}

QString stamp(const QDateTime &time, const char *format)
{
    return time.toString(QLatin1String(format));
}

const QRegularExpression
    LinePattern(QStringLiteral("^(\\d{4}-\\d{2}-\\d{2} \\d{2}:\\d{2}:\\d{2})\\{bundle\\}:(.*)$"),
                QRegularExpression::DotMatchesEverythingOption);

} // namespace

class TestLog : public QObject
{
    Q_OBJECT

private:
    QString m_folder;
    QString m_log;
    QString m_backups;

    QStringList backupNames() const
    {
        QStringList names;
        QDirIterator it(m_backups, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext())
            names << QDir(m_backups).relativeFilePath(it.next());
        names.sort();
        return names;
    }

    // Names of the backup files a rotation between the two times may have made.
    static QStringList possibleStamps(const QDateTime &before, const QDateTime &after)
    {
        QStringList names;
        for (QDateTime t = before.addMSecs(-before.time().msec()); t <= after; t = t.addSecs(1))
            names << stamp(t, "yyyyMMdd_HHmmss") + ".txt";
        return names;
    }

    // Checks that text is one log line made between before and after, and answers its message.
    static QString messageOf(const QString &line, const QDateTime &before, const QDateTime &after)
    {
        const QRegularExpressionMatch match = LinePattern.match(line);
        if (!match.hasMatch())
            return QStringLiteral("<not a log line: %1>").arg(line);
        const QDateTime when =
            QDateTime::fromString(match.captured(1), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        if (when < before.addMSecs(-before.time().msec()) || when > after)
            return QStringLiteral("<stamp %1 out of range>").arg(match.captured(1));
        return match.captured(2);
    }

private slots:
    void initTestCase()
    {
        const QString isolated = TestEnv::isolate();
        m_folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                   "/Kelvara/bundle";
        QVERIFY(m_folder.startsWith(QDir::homePath()) || m_folder.startsWith(isolated));
        QVERIFY(QDir::homePath().startsWith(isolated));
        m_log = m_folder + "/Log.txt";
        m_backups = m_folder + "/backupLog";
    }

    void init()
    {
        QDir(m_folder).removeRecursively();
        QVERIFY(QDir().mkpath(m_folder));
        captured.clear();
    }

    void cleanup() { qInstallMessageHandler(nullptr); }

    void missingFolderWritesNothing()
    {
        QVERIFY(QDir(m_folder).removeRecursively());
        logSave("nothing %d", 1);
        QVERIFY(!QFile::exists(m_folder));
        QVERIFY(!QFile::exists(m_log));
    }

    void firstLineHasNoLeadingNewline()
    {
        const QDateTime before = QDateTime::currentDateTime();
        logSave("Saving settings");
        const QDateTime after = QDateTime::currentDateTime();
        const QByteArray bytes = readBytes(m_log);
        QVERIFY(!bytes.startsWith('\n'));
        QVERIFY(!bytes.endsWith('\n'));
        QCOMPARE(bytes.size(), qsizetype(19 + 9 + 15));
        QCOMPARE(messageOf(QString::fromUtf8(bytes), before, after),
                 QStringLiteral("Saving settings"));
    }

    void lineIsStampBundleMessageExactly()
    {
        logSave("x");
        const QByteArray bytes = readBytes(m_log);
        QCOMPARE(bytes.mid(19), QByteArray("{bundle}:x"));
        QCOMPARE(bytes.at(4), '-');
        QCOMPARE(bytes.at(10), ' ');
        QCOMPARE(bytes.at(13), ':');
    }

    void secondLineIsPrefixedWithNewline()
    {
        const QDateTime before = QDateTime::currentDateTime();
        logSave("first");
        logSave("second %s", "line");
        const QDateTime after = QDateTime::currentDateTime();
        const QStringList lines = QString::fromUtf8(readBytes(m_log)).split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 2);
        QCOMPARE(messageOf(lines.at(0), before, after), QStringLiteral("first"));
        QCOMPARE(messageOf(lines.at(1), before, after), QStringLiteral("second line"));
    }

    void appendsToAnExistingLog()
    {
        QVERIFY(writeBytes(m_log, "earlier"));
        logSave("later");
        const QByteArray bytes = readBytes(m_log);
        QVERIFY(bytes.startsWith("earlier\n"));
        QVERIFY(bytes.endsWith("{bundle}:later"));
        QCOMPARE(bytes.count('\n'), 1);
    }

    void formatsPrintfStyle()
    {
        logSave("x=%d name=%s pct=%.1f%%", 3, "caf\xC3\xA9", 12.34);
        const QByteArray bytes = readBytes(m_log);
        QVERIFY(bytes.endsWith("{bundle}:x=3 name=caf\xC3\xA9 pct=12.3%"));
        QVERIFY(!bytes.startsWith("\xEF\xBB\xBF"));
    }

    void nullFormatCreatesAnEmptyLog()
    {
        const char *none = nullptr;
        logSave(none);
        QVERIFY(QFile::exists(m_log));
        QCOMPARE(readBytes(m_log), QByteArray());
        logSave("after");
        QVERIFY(!readBytes(m_log).startsWith('\n'));
    }

    void nullFormatLeavesAnExistingLogAlone()
    {
        QVERIFY(writeBytes(m_log, "kept"));
        const char *none = nullptr;
        logSave(none);
        QCOMPARE(readBytes(m_log), QByteArray("kept"));
    }

    void exactlyTheLimitIsNotRotated()
    {
        const QByteArray old = logOfSize(4194304);
        QVERIFY(writeBytes(m_log, old));
        logSave("one more");
        const QByteArray bytes = readBytes(m_log);
        QVERIFY(bytes.startsWith(old));
        QVERIFY(bytes.mid(old.size()).startsWith('\n'));
        QVERIFY(bytes.endsWith("{bundle}:one more"));
        QVERIFY(!QFile::exists(m_backups));
    }

    void oneByteOverTheLimitIsRotated()
    {
        const QByteArray old = logOfSize(4194305);
        QVERIFY(writeBytes(m_log, old));
        const QDateTime before = QDateTime::currentDateTime();
        logSave("fresh start");
        const QDateTime after = QDateTime::currentDateTime();

        const QStringList backups = backupNames();
        QCOMPARE(backups.size(), 1);
        QVERIFY2(possibleStamps(before, after).contains(backups.first()),
                 qPrintable(backups.first()));
        QCOMPARE(readBytes(m_backups + "/" + backups.first()), old);
        const QByteArray bytes = readBytes(m_log);
        QVERIFY(!bytes.startsWith('\n'));
        QCOMPARE(messageOf(QString::fromUtf8(bytes), before, after), QStringLiteral("fresh start"));
    }

    void nullFormatRotatesAnOversizedLog()
    {
        QVERIFY(writeBytes(m_log, logOfSize(5 * 1024 * 1024)));
        const char *none = nullptr;
        logSave(none);
        QVERIFY(QFile::exists(m_log));
        QCOMPARE(QFileInfo(m_log).size(), qint64(0));
        QCOMPARE(backupNames().size(), 1);
        QCOMPARE(QFileInfo(m_backups + "/" + backupNames().first()).size(),
                 qint64(5 * 1024 * 1024));
    }

    void thirtyOneBackupsLoseTheFirstCaseInsensitively()
    {
        // 30 ".txt" files of any case, a sub-folder's included, plus the new backup make 31.
        // Case-insensitively "0a.txt" sorts before "0B.txt" (case-sensitively it would not).
        QStringList existing{"0a.txt", "0B.txt", "notes.TXT", "sub/x.Txt"};
        for (int i = 0; existing.size() < 30; ++i)
            existing << QStringLiteral("c%1.txt").arg(i, 2, 10, QLatin1Char('0'));
        for (const QString &name : existing)
            QVERIFY(writeBytes(m_backups + "/" + name, name.toUtf8()));
        QVERIFY(writeBytes(m_backups + "/00.log", "never counted"));
        QVERIFY(writeBytes(m_log, logOfSize(4194305)));

        logSave("rotated");

        const QStringList after = backupNames();
        QVERIFY(!after.contains("0a.txt"));
        QVERIFY(after.contains("0B.txt"));
        QVERIFY(after.contains("notes.TXT"));
        QVERIFY(after.contains("sub/x.Txt"));
        QVERIFY(after.contains("00.log"));
        QCOMPARE(after
                     .filter(QRegularExpression(QStringLiteral("\\.txt$"),
                                                QRegularExpression::CaseInsensitiveOption))
                     .size(),
                 30);
    }

    void thirtyBackupsAreAllKept()
    {
        QStringList existing;
        for (int i = 0; i < 29; ++i)
            existing << QStringLiteral("0old%1.txt").arg(i, 2, 10, QLatin1Char('0'));
        for (const QString &name : existing)
            QVERIFY(writeBytes(m_backups + "/" + name, "x"));
        QVERIFY(writeBytes(m_backups + "/0extra.log", "x"));
        QVERIFY(writeBytes(m_log, logOfSize(4194305)));
        logSave("rotated");
        const QStringList after = backupNames();
        QCOMPARE(after.size(), 31); // 29 old, the new backup, the .log
        for (const QString &name : existing)
            QVERIFY(after.contains(name));
    }

    void onlyOneBackupIsDeletedPerRotation()
    {
        for (int i = 0; i < 40; ++i)
            QVERIFY(writeBytes(
                m_backups + QStringLiteral("/0old%1.txt").arg(i, 2, 10, QLatin1Char('0')), "x"));
        QVERIFY(writeBytes(m_log, logOfSize(4194305)));
        logSave("rotated");
        const QStringList after = backupNames();
        QCOMPARE(after.size(), 40);
        QVERIFY(!after.contains("0old00.txt"));
        QVERIFY(after.contains("0old01.txt"));
    }

    void rotationOntoAnExistingBackupRestartsTheLog()
    {
        // Two rotations within one second: the second copy fails, the log starts over anyway.
        const QDateTime now = QDateTime::currentDateTime();
        for (int s = 0; s < 3; ++s)
            QVERIFY(writeBytes(m_backups + "/" + stamp(now.addSecs(s), "yyyyMMdd_HHmmss") + ".txt",
                               "earlier backup"));
        QVERIFY(writeBytes(m_log, logOfSize(4194305)));
        logSave("after the lost log");
        for (const QString &name : backupNames())
            QCOMPARE(readBytes(m_backups + "/" + name), QByteArray("earlier backup"));
        QVERIFY(readBytes(m_log).endsWith("{bundle}:after the lost log"));
        QVERIFY(!readBytes(m_log).contains('\n'));
    }

    void consoleMessages_data()
    {
        QTest::addColumn<int>("which");
        QTest::addColumn<QString>("expected");
        QTest::newRow("logError with a null format prints Error:nil") << 0 << "Error:nil";
        QTest::newRow("logWarn with x=%d and 3 prints Warn:x=3") << 1 << "Warn:x=3";
        QTest::newRow("percent in the message is not interpreted twice")
            << 2 << "Error:100%s done %d";
        QTest::newRow("logWarn with a null format prints Warn:nil") << 3 << "Warn:nil";
        QTest::newRow("UTF-8 message") << 4 << QString::fromUtf8("Error:\xC3\xA9t\xC3\xA9");
    }

    void consoleMessages()
    {
        QFETCH(int, which);
        QFETCH(QString, expected);
        const char *none = nullptr;
        qInstallMessageHandler(capture);
        switch (which) {
        case 0:
            logError(none);
            break;
        case 1:
            logWarn("x=%d", 3);
            break;
        case 2:
            logError("%s", "100%s done %d");
            break;
        case 3:
            logWarn(none);
            break;
        case 4:
            logError("%s", "\xC3\xA9t\xC3\xA9");
            break;
        }
        qInstallMessageHandler(nullptr);
        QCOMPARE(captured, QStringList{expected});
        QVERIFY(!QFile::exists(m_log)); // the console only, never Log.txt
    }

    void logDebugDoesNothing()
    {
        const char *none = nullptr;
        qInstallMessageHandler(capture);
        logDebug("debug %d", 1);
        logDebug(none);
        qInstallMessageHandler(nullptr);
        QVERIFY(captured.isEmpty());
        QVERIFY(!QFile::exists(m_log));
        QVERIFY(QDir(m_folder).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestLog)
#include "tst_log.moc"
