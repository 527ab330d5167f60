// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "workspacewriter.h"

#include <QMutex>
#include <QSemaphore>
#include <QSignalSpy>
#include <QThread>
#include <QtTest>

#include <atomic>

// The ordered writer without a window: saves as closures that log what they write.
class TestWorkspaceWriter : public QObject
{
    Q_OBJECT

private slots:
    void savesRunInTheOrderHandedIn();
    void savesRunOffTheCallersThread();
    void aWaitingSaveOfTheSameFileIsReplacedByTheNewest_data();
    void aWaitingSaveOfTheSameFileIsReplacedByTheNewest();
    void writtenReachesEachGenerationInOrder();
    void destructionWritesWhatIsQueued();
    void waitForAllWritersWaitsForEveryWriter();

private:
    struct Log
    {
        QMutex mutex;
        QStringList entries;
        void add(const QString &entry)
        {
            const QMutexLocker lock(&mutex);
            entries.append(entry);
        }
    };
};

void TestWorkspaceWriter::savesRunInTheOrderHandedIn()
{
    Log log;
    WorkspaceWriter writer;
    for (int i = 0; i < 50; ++i) {
        const QString entry = QString::number(i);
        writer.submit(QStringLiteral("file%1").arg(i), [&log, entry] { log.add(entry); });
    }
    writer.waitForAll();
    QStringList expected;
    for (int i = 0; i < 50; ++i)
        expected.append(QString::number(i));
    QCOMPARE(log.entries, expected);
    QVERIFY(writer.isSettled());
}

void TestWorkspaceWriter::savesRunOffTheCallersThread()
{
    WorkspaceWriter writer;
    std::atomic<QThread *> ranOn{nullptr};
    writer.submit(QStringLiteral("settings.dat"), [&ranOn] { ranOn = QThread::currentThread(); });
    writer.waitForAll();
    QVERIFY(ranOn.load() != nullptr);
    QVERIFY(ranOn.load() != QThread::currentThread());
}

void TestWorkspaceWriter::aWaitingSaveOfTheSameFileIsReplacedByTheNewest_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("written");
    // The first save holds the writer, so that the others wait behind it.
    QTest::newRow("three states of one file: the newest alone is written")
        << QStringList{"pos", "pos", "pos"} << QStringList{"hold", "pos:2"};
    QTest::newRow("a replaced save moves behind what came after it")
        << QStringList{"pos", "xml", "pos"} << QStringList{"hold", "xml:1", "pos:2"};
    QTest::newRow("different files are all written, in order")
        << QStringList{"pos", "xml", "js"} << QStringList{"hold", "pos:0", "xml:1", "js:2"};
}

void TestWorkspaceWriter::aWaitingSaveOfTheSameFileIsReplacedByTheNewest()
{
    QFETCH(QStringList, names);
    QFETCH(QStringList, written);
    Log log;
    QSemaphore started;
    QSemaphore release;
    WorkspaceWriter writer;
    writer.submit(QStringLiteral("hold"), [&] {
        log.add(QStringLiteral("hold"));
        started.release();
        release.acquire();
    });
    QVERIFY(started.tryAcquire(1, 10000));
    for (int i = 0; i < names.size(); ++i) {
        const QString entry = names.at(i) + QLatin1Char(':') + QString::number(i);
        writer.submit(names.at(i), [&log, entry] { log.add(entry); });
    }
    QCOMPARE(writer.submitted(), quint64(names.size() + 1));
    QCOMPARE(writer.written(), quint64(0));
    release.release();
    writer.waitForAll();
    QCOMPARE(log.entries, written);
    // The replaced saves count as written with the ones that replaced them.
    QCOMPARE(writer.written(), writer.submitted());
}

void TestWorkspaceWriter::writtenReachesEachGenerationInOrder()
{
    WorkspaceWriter writer;
    QSignalSpy spy(&writer, &WorkspaceWriter::generationWritten);
    quint64 last = 0;
    for (int i = 0; i < 5; ++i)
        last = writer.submit(QStringLiteral("f%1").arg(i), [] { QThread::msleep(2); });
    QCOMPARE(last, quint64(5));
    writer.waitForAll();
    QTRY_COMPARE(spy.size(), 5);
    for (int i = 0; i < 5; ++i)
        QCOMPARE(spy.at(i).first().toULongLong(), quint64(i + 1));
}

void TestWorkspaceWriter::destructionWritesWhatIsQueued()
{
    Log log;
    {
        WorkspaceWriter writer;
        for (int i = 0; i < 10; ++i) {
            const QString entry = QString::number(i);
            writer.submit(entry, [&log, entry] {
                QThread::msleep(1);
                log.add(entry);
            });
        }
    }
    QCOMPARE(log.entries.size(), 10);
}

void TestWorkspaceWriter::waitForAllWritersWaitsForEveryWriter()
{
    std::atomic<int> done{0};
    WorkspaceWriter first;
    WorkspaceWriter second;
    for (WorkspaceWriter *writer : {&first, &second})
        writer->submit(QStringLiteral("slow"), [&done] {
            QThread::msleep(50);
            ++done;
        });
    WorkspaceWriter::waitForAllWriters();
    QCOMPARE(done.load(), 2);
}

QTEST_GUILESS_MAIN(TestWorkspaceWriter)
#include "tst_workspacewriter.moc"
