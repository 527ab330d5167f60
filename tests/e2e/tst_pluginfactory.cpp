// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The plugin's factory as a host that forgot to share OpenGL contexts meets it: no window and a
// warning that names the fix, where the window's web view would otherwise take the host down.

#include "imgpluginfactory.h"
#include "pluginhost.h"
#include "testenv.h"

#include <QApplication>
#include <QRegularExpression>
#include <QtTest>

#include <memory>

class TestPluginFactory : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }
    void withoutSharedContextsGivesNoWindowAndSaysWhy();
    void interfaceIdCarriesTheKitsMajorAndMinorVersion();
};

void TestPluginFactory::withoutSharedContextsGivesNoWindowAndSaysWhy()
{
    QVERIFY(!QCoreApplication::testAttribute(Qt::AA_ShareOpenGLContexts));
    PluginHost host;
    QVERIFY2(host.load(QStringLiteral(IMG_BUNDLE_DIR)), qPrintable(host.errorString()));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression("setAttribute\\(Qt::AA_ShareOpenGLContexts\\) before "
                                            "it creates its QApplication"));
    const std::unique_ptr<ImgSettingsController> settings(
        host.factory()->createSettingsDelegate(QStringLiteral("en"), IMG_BUNDLE_DIR));
    QVERIFY(!settings);
}

int main(int argc, char *argv[])
{
    // Deliberately without Qt::AA_ShareOpenGLContexts, as the careless host.
    QApplication app(argc, argv);
    TestPluginFactory test;
    return QTest::qExec(&test, argc, argv);
}

// The numbers hosts built against 1.0 pass as plain ints keep their meaning.
static_assert(ImgSettingsController::Discard == 0 && ImgSettingsController::Apply == 1);
static_assert(ImgSettingsController::AskTheAuthor == 0 && ImgSettingsController::GoBack == 1
              && ImgSettingsController::KeepAsItIs == 2);
static_assert(ImgSettingsController::WorkspaceUnavailable == 1
              && ImgSettingsController::BackupUnavailable == 2
              && ImgSettingsController::RestoreFailed == 4);

void TestPluginFactory::interfaceIdCarriesTheKitsMajorAndMinorVersion()
{
    // A host built against these headers asks for this IID; it must name the kit's version.
    const QString iid = QString::fromLatin1(ImgPluginFactory_iid);
    const QString majorMinor = QStringLiteral("/%1.%2")
                                   .arg(IMGPLUGIN_VERSION_MAJOR)
                                   .arg(IMGPLUGIN_VERSION_MINOR);
    QVERIFY2(iid.endsWith(majorMinor), qPrintable(iid + " against " + majorMinor));
    QCOMPARE(QStringLiteral(IMGPLUGIN_VERSION_STR),
             QStringLiteral("%1.%2.%3")
                 .arg(IMGPLUGIN_VERSION_MAJOR)
                 .arg(IMGPLUGIN_VERSION_MINOR)
                 .arg(IMGPLUGIN_VERSION_PATCH));
    QCOMPARE(QStringLiteral(IMGPLUGIN_VERSION_STR), QStringLiteral(IMG_PROJECT_VERSION));
}

#include "tst_pluginfactory.moc"
