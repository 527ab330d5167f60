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

#include "tst_pluginfactory.moc"
