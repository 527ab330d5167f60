// The floor for the settings window's start: a bare Qt program that opens an empty window holding
// a web view. Prints "window shown" once the window is exposed, then quits after 300 ms, as
// imghost --quit-when-shown does.

#include <QApplication>
#include <QTimer>
#include <QVBoxLayout>
#include <QWebEngineView>
#include <QWidget>
#include <QWindow>

#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(new QWebEngineView(&window));
    window.resize(960, 640);
    window.show();
    QTimer poll;
    poll.setInterval(1);
    QObject::connect(&poll, &QTimer::timeout, &window, [&] {
        if (!window.windowHandle() || !window.windowHandle()->isExposed())
            return;
        poll.stop();
        std::fputs("window shown\n", stdout);
        std::fflush(stdout);
        QTimer::singleShot(300, &app, &QCoreApplication::quit);
    });
    poll.start();
    return app.exec();
}
