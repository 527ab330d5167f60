// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// imghost: a small stand-in for the publishing application. It loads the image plugin bundle at
// run time, opens its settings window modally or not, and prints the stop code and isCloseBundle
// once the window has closed.

#include "imgpluginfactory.h"
#include "pluginhost.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCommandLineParser>
#include <QDialog>
#include <QDir>
#include <QPixmap>
#include <QScreen>
#include <QTextStream>
#include <QTimer>
#include <QWindow>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

struct Options
{
    QString language;
    QString bundle;
    QString workspace;
    bool modal = true;
    QString screenshot;
    int screenshotDelay = 2500;
    bool quitWhenShown = false;
    bool quitWhenPreviewLoaded = false;
    int recovery = ImgSettingsController::AskTheAuthor;
};

Options parseOptions(const QCoreApplication &app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Opens the settings window of the image plugin bundle, as the publishing "
                       "application does, and prints how it was closed."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption language(
        {QStringLiteral("l"), QStringLiteral("language")},
        QStringLiteral("Language of the window: en, de, fr, ja or zh_CN."), QStringLiteral("code"),
        QStringLiteral("en"));
    const QCommandLineOption bundle(
        {QStringLiteral("b"), QStringLiteral("bundle")},
        QStringLiteral("The plugin bundle (default: %1).")
            .arg(QDir::toNativeSeparators(PluginHost::defaultBundlePath())),
        QStringLiteral("dir"), PluginHost::defaultBundlePath());
    const QCommandLineOption workspace({QStringLiteral("w"), QStringLiteral("workspace")},
                                       QStringLiteral("The plugin's workspace folder (default: the "
                                                      "per-user plugin save folder)."),
                                       QStringLiteral("dir"));
    const QCommandLineOption modeless(QStringLiteral("modeless"),
                                      QStringLiteral("Show the window without a modal run."));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral("Save a picture of the window to this PNG "
                       "file once it is shown, then close it with Cancel."),
        QStringLiteral("file"));
    const QCommandLineOption delay(
        QStringLiteral("screenshot-delay"),
        QStringLiteral("Milliseconds to wait before the picture (default 2500)."),
        QStringLiteral("ms"), QStringLiteral("2500"));
    const QCommandLineOption quitWhenShown(
        QStringLiteral("quit-when-shown"),
        QStringLiteral("Print \"window shown\" once the window is on screen with its settings "
                       "loaded, then close it with Cancel (for start-up measurements)."));
    const QCommandLineOption quitWhenPreviewLoaded(
        QStringLiteral("quit-when-preview-loaded"),
        QStringLiteral("Print \"window shown\" once the window is on screen and \"preview "
                       "loaded\" once its preview shows the settings (the page loaded and reloaded "
                       "once), then close it with Cancel (for start-up measurements)."));
    const QCommandLineOption recovery(
        QStringLiteral("recovery"),
        QStringLiteral("When an earlier window on the workspace died: \"ask\" the author, "
                       "\"go-back\" to the workspace as it was before that window, or \"keep\" "
                       "it as it is (default: ask; keep with --quit-when-shown, "
                       "--quit-when-preview-loaded or --screenshot)."),
        QStringLiteral("answer"));
    parser.addOptions({language, bundle, workspace, modeless, screenshot, delay, quitWhenShown,
                       quitWhenPreviewLoaded, recovery});
    parser.process(app);

    Options options;
    options.language = parser.value(language);
    options.bundle = QDir(parser.value(bundle)).absolutePath();
    if (parser.isSet(workspace))
        options.workspace = QDir(parser.value(workspace)).absolutePath();
    options.modal = !parser.isSet(modeless);
    if (parser.isSet(screenshot))
        options.screenshot = QDir::current().absoluteFilePath(parser.value(screenshot));
    options.screenshotDelay = parser.value(delay).toInt();
    options.quitWhenShown = parser.isSet(quitWhenShown);
    options.quitWhenPreviewLoaded = parser.isSet(quitWhenPreviewLoaded);
    const QStringList answers{QStringLiteral("ask"), QStringLiteral("go-back"),
                              QStringLiteral("keep")};
    if (parser.isSet(recovery)) {
        options.recovery = int(answers.indexOf(parser.value(recovery)));
        if (options.recovery < 0) {
            std::fprintf(stderr, "imghost: --recovery takes ask, go-back or keep\n");
            std::exit(2);
        }
    } else if (options.quitWhenShown || options.quitWhenPreviewLoaded ||
               !options.screenshot.isEmpty()) {
        options.recovery = ImgSettingsController::KeepAsItIs; // nobody is there to answer
    }
    return options;
}

// Grabs the window into a PNG and presses Cancel, so that a run without a display still shows
// the window working and leaves the workspace as it was.
void scheduleScreenshot(QDialog *window, const QString &file, int delayMs)
{
    QTimer::singleShot(delayMs, window, [window, file] {
        QTextStream out(stdout);
        // The screen's picture includes what the web view's compositor drew; a platform without
        // one (offscreen) falls back to the widgets' own rendering.
        QPixmap picture;
        if (QScreen *screen = window->screen())
            picture = screen->grabWindow(window->winId());
        if (picture.isNull())
            picture = window->grab();
        if (picture.save(file, "PNG"))
            out << "Screenshot of the settings window saved to " << QDir::toNativeSeparators(file)
                << Qt::endl;
        else
            out << "Could not save the screenshot to " << QDir::toNativeSeparators(file)
                << Qt::endl;
        if (auto *cancel = window->findChild<QAbstractButton *>(QStringLiteral("btnCancel")))
            cancel->click();
        else
            window->done(0);
    });
}

// Watches an opening window for start-up measurements. It prints "window shown" the moment the
// window is first exposed and, when the preview is awaited too, "preview loaded" the moment the
// preview first shows the settings. Once all it awaits has been printed it gives an observer a
// moment to look at the process, then presses Cancel.
class StartWatcher : public QObject
{
    Q_OBJECT
public:
    StartWatcher(QDialog *window, bool awaitPreview)
        : QObject(window)
        , m_window(window)
        , m_loaded(!awaitPreview)
    {
        m_poll.setInterval(1);
        connect(&m_poll, &QTimer::timeout, this, &StartWatcher::pollExposure);
        m_poll.start();
    }

    // The host knows the controller's signal by name only, as any host that does not link the
    // plugin. False when the controller has no such signal.
    bool watchPreview(QObject *controller)
    {
        return connect(controller, SIGNAL(previewLoaded()), this, SLOT(previewLoaded()));
    }

private slots:
    void previewLoaded()
    {
        if (m_loaded)
            return;
        m_loaded = true;
        report("preview loaded\n");
    }

private:
    void pollExposure()
    {
        if (!m_window->windowHandle() || !m_window->windowHandle()->isExposed())
            return;
        m_poll.stop();
        m_shown = true;
        report("window shown\n");
    }

    void report(const char *line)
    {
        std::fputs(line, stdout);
        std::fflush(stdout);
        if (m_shown && m_loaded)
            QTimer::singleShot(300, m_window, [window = m_window] { pressCancel(window); });
    }

    static void pressCancel(QDialog *window)
    {
        if (auto *cancel = window->findChild<QAbstractButton *>(QStringLiteral("btnCancel")))
            cancel->click();
        else
            window->done(0);
    }

    QDialog *m_window;
    QTimer m_poll;
    bool m_shown = false;
    bool m_loaded;
};

void printOutcome(const ImgSettingsController &settings)
{
    QTextStream out(stdout);
    out << "closeMode: " << settings.closeMode() << Qt::endl;
    out << "isCloseBundle: " << (settings.isCloseBundle() ? "true" : "false") << Qt::endl;
}

} // namespace

int main(int argc, char *argv[])
{
    // The web engine inside the plugin shares OpenGL contexts with the host's widgets; the
    // attribute must be set before the application object exists.
    // Help and version need no display: answer them before the widget application exists.
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        if (arg == "-h" || arg == "--help" || arg == "--help-all" || arg == "-?" || arg == "-v"
            || arg == "--version") {
            QCoreApplication core(argc, argv);
            QCoreApplication::setApplicationName(QStringLiteral("imghost"));
            QCoreApplication::setApplicationVersion(QStringLiteral(IMGPLUGIN_VERSION_STR));
            parseOptions(core);
            return 0;
        }
    }
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("imghost"));
    QApplication::setApplicationVersion(QStringLiteral(IMGPLUGIN_VERSION_STR));
    const Options options = parseOptions(app);

    PluginHost host;
    if (!host.load(options.bundle)) {
        std::fprintf(stderr, "imghost: %s\n", qPrintable(host.errorString()));
        return 2;
    }
    std::unique_ptr<ImgSettingsController> settings(
        host.factory()->createSettingsDelegate(options.language, options.bundle));
    if (!settings) {
        std::fprintf(stderr, "imghost: the bundle %s has no settings window\n",
                     qPrintable(options.bundle));
        return 2;
    }
    settings->setModalMode(options.modal);
    if (!options.workspace.isEmpty())
        settings->setWorkSpace(options.workspace);
    settings->setRecoveryAnswer(options.recovery);
    QDialog *window = settings->window();
    if (!window) {
        std::fprintf(stderr, "imghost: the settings window could not be loaded\n");
        return 2;
    }
    if (!options.screenshot.isEmpty())
        scheduleScreenshot(window, options.screenshot, options.screenshotDelay);
    if (options.quitWhenShown || options.quitWhenPreviewLoaded) {
        auto *watcher = new StartWatcher(window, options.quitWhenPreviewLoaded);
        if (options.quitWhenPreviewLoaded && !watcher->watchPreview(settings->object())) {
            std::fprintf(stderr, "imghost: the bundle %s does not report its preview\n",
                         qPrintable(options.bundle));
            return 2;
        }
    }

    if (options.modal) {
        const int code = window->exec();
        QTextStream(stdout) << "stop code: " << code << Qt::endl;
    } else {
        // QDialog::done() ends a modeless window too, with the same code as a modal run.
        QObject::connect(window, &QDialog::finished, &app, [](int code) {
            QTextStream(stdout) << "stop code: " << code << Qt::endl;
            QCoreApplication::quit();
        });
        window->show();
        app.exec();
    }
    printOutcome(*settings);
    return 0;
}

#include "main.moc"
