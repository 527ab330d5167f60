// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The plugin's factory as a host developer meets it with a wrong bundle path: no window, and a
// warning of the category "img.plugin" that says which path was wrong and what was expected.

#include "imgpluginfactory.h"
#include "pluginhost.h"
#include "testenv.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

class TestPluginRefusals : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void wrongBundleIsRefusedWithItsReason_data();
    void wrongBundleIsRefusedWithItsReason();
    void bundleWithoutPreviewPageOpensAndSaysSo();

private:
    PluginHost m_host;
    QTemporaryDir m_tmp;
};

void TestPluginRefusals::initTestCase()
{
    TestEnv::isolate();
    QVERIFY2(m_host.load(QStringLiteral(IMG_BUNDLE_DIR)), qPrintable(m_host.errorString()));
}

void TestPluginRefusals::wrongBundleIsRefusedWithItsReason_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason"); // a regular expression the warning must match

    const QString root = m_tmp.path();
    QTest::newRow("a missing folder")
        << root + QStringLiteral("/nowhere") << QStringLiteral("nowhere does not exist");
    QFile file(root + QStringLiteral("/file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QTest::newRow("a file") << file.fileName() << QStringLiteral("file is a file");
    QTest::newRow("the binary folder passed by mistake")
        << PluginHost::binaryFolder(QStringLiteral(IMG_BUNDLE_DIR))
        << QStringLiteral("is a folder inside a bundle; expected the bundle folder itself");
    const QString bare = root + QStringLiteral("/bare.bundle");
    QDir().mkpath(bare + QStringLiteral("/Contents/Resources/html"));
    QTest::newRow("a bundle without window descriptions")
        << bare << QStringLiteral("has no window description; expected .*en.lproj");
}

void TestPluginRefusals::wrongBundleIsRefusedWithItsReason()
{
    QFETCH(QString, path);
    QFETCH(QString, reason);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^no settings window: .*") + reason));
    const std::unique_ptr<ImgSettingsController> settings(
        m_host.factory()->createSettingsDelegate(QStringLiteral("en"), path));
    QVERIFY(!settings);
}

void TestPluginRefusals::bundleWithoutPreviewPageOpensAndSaysSo()
{
    // A copy of the built bundle's window descriptions, without its html folder.
    const QString bundle = m_tmp.filePath(QStringLiteral("nohtml.bundle"));
    const QString from = QStringLiteral(IMG_BUNDLE_DIR "/Contents/Resources/");
    const QString to = bundle + QStringLiteral("/Contents/Resources/");
    for (const QString &file : {QStringLiteral("en.lproj/PluginSettingsDelegate.ui"),
                                QStringLiteral("en.lproj/PrivateView.ui"),
                                QStringLiteral("data/img.xml"),
                                QStringLiteral("data/defaultsettings.dat")}) {
        QDir().mkpath(QFileInfo(to + file).path());
        QVERIFY(QFile::copy(from + file, to + file));
    }
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("has no preview page; expected .*")
                                            + QRegularExpression::escape("html/index.html")));
    const std::unique_ptr<ImgSettingsController> settings(
        m_host.factory()->createSettingsDelegate(QStringLiteral("en"), bundle));
    QVERIFY(settings);
}

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestPluginRefusals test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_pluginrefusals.moc"
