// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// What a host developer hears when the path passed as the bundle is not one: each usual mistake
// named in one line, and nothing for a whole bundle.

#include "bundlepaths.h"
#include "testenv.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestBundlePaths : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }
    void problemWithNamesTheMistake_data();
    void problemWithNamesTheMistake();

private:
    // A bundle at dir/img.bundle with the given files (relative to Contents/Resources).
    static QString makeBundle(const QString &dir, const QStringList &resources);
    QTemporaryDir m_tmp;
};

QString TestBundlePaths::makeBundle(const QString &dir, const QStringList &resources)
{
    const QString bundle = dir + QStringLiteral("/img.bundle");
    QDir().mkpath(bundle + QStringLiteral("/Contents/Linux"));
    QDir().mkpath(bundle + QStringLiteral("/Contents/Resources"));
    for (const QString &file : resources) {
        const QString path = bundle + QStringLiteral("/Contents/Resources/") + file;
        QDir().mkpath(QFileInfo(path).path());
        QFile out(path);
        if (!out.open(QIODevice::WriteOnly))
            qFatal("cannot write %s", qPrintable(path));
    }
    return bundle;
}

void TestBundlePaths::problemWithNamesTheMistake_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("problem"); // a part of the message; empty: no problem at all

    const QString root = m_tmp.path();
    const QStringList whole{QStringLiteral("en.lproj/PluginSettingsDelegate.ui"),
                            QStringLiteral("html/index.html")};
    const QString good = makeBundle(root + QStringLiteral("/good"), whole);
    QTest::newRow("a whole bundle has no problem") << good << QString();
    QTest::newRow("an empty path") << QString() << QStringLiteral("no bundle path was given");
    QTest::newRow("a missing folder")
        << root + QStringLiteral("/nowhere/img.bundle") << QStringLiteral("does not exist");
    QFile file(root + QStringLiteral("/file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QTest::newRow("a file") << file.fileName() << QStringLiteral("is a file");
    QTest::newRow("the binary folder instead of the bundle")
        << good + QStringLiteral("/Contents/Linux")
        << QStringLiteral("is a folder inside a bundle; expected the bundle folder itself: ") + good;
    QTest::newRow("the resource folder instead of the bundle")
        << good + QStringLiteral("/Contents/Resources")
        << QStringLiteral("is a folder inside a bundle; expected the bundle folder itself: ") + good;
    QTest::newRow("a folder that is no bundle")
        << root << QStringLiteral("has no Contents/Resources folder");
    QTest::newRow("a bundle without window descriptions")
        << makeBundle(root + QStringLiteral("/nodescription"), {QStringLiteral("html/index.html")})
        << QStringLiteral("has no window description; expected ");
    QTest::newRow("a bundle without its html folder")
        << makeBundle(root + QStringLiteral("/nohtml"),
                      {QStringLiteral("en.lproj/PluginSettingsDelegate.ui")})
        << QStringLiteral("has no preview page; expected ");
}

void TestBundlePaths::problemWithNamesTheMistake()
{
    QFETCH(QString, path);
    QFETCH(QString, problem);
    const QString found = BundlePaths::problemWith(path);
    if (problem.isEmpty()) {
        QVERIFY2(found.isNull(), qPrintable(found));
        return;
    }
    QVERIFY2(found.contains(problem), qPrintable(found));
    QVERIFY(!found.contains(QLatin1Char('\n')));
}

QTEST_GUILESS_MAIN(TestBundlePaths)
#include "tst_bundlepaths.moc"
