// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// examplehost: the smallest host of the image plugin. It loads the plugin from the installed
// bundle, opens its settings window modally and prints the stop code once the window has closed.
//
//   examplehost [--language CODE] [--workspace DIR] [--cancel-when-shown]

#include <imgpluginfactory.h>
#include <imgsettingscontroller.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCommandLineParser>
#include <QDialog>
#include <QDir>
#include <QPluginLoader>
#include <QTimer>
#include <QWindow>

#include <cstdio>
#include <memory>

namespace {

// The bundle's binary folder may hold other libraries; the plugin is the one whose metadata
// names the factory interface, read without loading the library.
ImgPluginFactory *loadFactory(QPluginLoader &loader)
{
    const QDir binaries(QStringLiteral(EXAMPLE_PLUGIN_DIR));
    for (const QString &name : binaries.entryList(QDir::Files)) {
        loader.setFileName(binaries.filePath(name));
        if (loader.metaData().value(QStringLiteral("IID")).toString() !=
            QLatin1String(ImgPluginFactory_iid))
            continue;
        if (auto *factory = qobject_cast<ImgPluginFactory *>(loader.instance()))
            return factory;
    }
    return nullptr;
}

// Presses the window's Cancel button once the window is on screen, as a person would; Cancel
// leaves the workspace as it was when the window opened.
void cancelWhenShown(QDialog *window)
{
    auto *poll = new QTimer(window);
    poll->setInterval(20);
    QObject::connect(poll, &QTimer::timeout, window, [window, poll] {
        if (!window->windowHandle() || !window->windowHandle()->isExposed())
            return;
        poll->stop();
        if (auto *cancel = window->findChild<QAbstractButton *>(QStringLiteral("btnCancel")))
            cancel->click();
    });
    poll->start();
}

} // namespace

int main(int argc, char *argv[])
{
    // The web view inside the settings window needs this before the application object exists.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);

    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption language(QStringLiteral("language"),
                                      QStringLiteral("Language of the window."),
                                      QStringLiteral("code"), QStringLiteral("en"));
    const QCommandLineOption workspace(QStringLiteral("workspace"),
                                       QStringLiteral("Workspace folder."), QStringLiteral("dir"));
    const QCommandLineOption cancel(QStringLiteral("cancel-when-shown"),
                                    QStringLiteral("Press Cancel once the window is shown."));
    parser.addOptions({language, workspace, cancel});
    parser.process(app);

    QPluginLoader loader;
    ImgPluginFactory *factory = loadFactory(loader);
    if (!factory) {
        std::fprintf(stderr, "examplehost: no image plugin in %s\n", EXAMPLE_PLUGIN_DIR);
        return 2;
    }
    std::printf("plugin: %s\n", qPrintable(loader.fileName()));

    std::unique_ptr<ImgSettingsController> settings(factory->createSettingsDelegate(
        parser.value(language), QStringLiteral(EXAMPLE_BUNDLE_DIR)));
    if (!settings)
        return 2;
    settings->setModalMode(true);
    if (parser.isSet(workspace))
        settings->setWorkSpace(QDir(parser.value(workspace)).absolutePath());
    if (parser.isSet(cancel))
        settings->setRecoveryAnswer(2); // nobody is there to answer; keep the workspace as it is
    QDialog *window = settings->window();
    if (!window)
        return 2;
    if (parser.isSet(cancel))
        cancelWhenShown(window);

    const int stopCode = window->exec();
    std::printf("stop code: %d\nisCloseBundle: %s\n", stopCode,
                settings->isCloseBundle() ? "true" : "false");
    return 0;
}
