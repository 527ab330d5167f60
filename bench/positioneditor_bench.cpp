// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// Drag steps in the real settings window, its controller the canvas's owner: a press on the edit
// box, 10,000 moves, a release, all through real mouse events. Each step is timed from the moment
// its event is sent until it returns: the box moved, the canvas's record updated, and the owner
// done with the margin fields. Prints the median, the 99th percentile and the worst step, then
// the same with the repaint that follows each step.
//   bench_positioneditor [steps]          (under xvfb-run: the window holds a web view)

#include "pluginsettingsdelegate.h"
#include "positionview.h"
#include "veleditview.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

double percentile(const std::vector<qint64> &sorted, double p)
{
    const size_t index = std::min(sorted.size() - 1, size_t(p * double(sorted.size() - 1) + 0.5));
    return double(sorted[index]) / 1e6;
}

// A pointer path that keeps the box moving inside the canvas: 40 points right and down, then
// back, one point per step.
QPoint pathOffset(int step)
{
    const int phase = step % 80;
    const int d = phase < 40 ? phase + 1 : 79 - phase;
    return QPoint(d, d / 2);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    const int steps = argc > 1 ? std::max(1, atoi(argv[1])) : 10000;

    QTemporaryDir tmp;
    qputenv("XDG_DATA_HOME", QFile::encodeName(tmp.filePath("data")));
    auto delegate =
        PluginSettingsDelegate::create(QStringLiteral("en"), QStringLiteral(IMG_BUNDLE_DIR));
    if (!delegate)
        return 1;
    delegate->setWorkSpace(tmp.filePath("ws"));
    QDialog *window = delegate->window();
    PositionView *canvas = delegate->positionView();
    auto *leftField = window ? window->findChild<QLineEdit *>(QStringLiteral("txtLeft")) : nullptr;
    if (!window || !canvas || !leftField)
        return 1;
    window->show();
    if (!QTest::qWaitForWindowExposed(window)) {
        std::fprintf(stderr, "window not exposed\n");
        return 1;
    }
    canvas->repaint(); // places the box

    VelEditView *box = canvas->editView();
    const QPoint start = box->mapTo(window, box->rect().center());
    QTest::mousePress(box, Qt::LeftButton, {}, box->mapFrom(window, start));
    std::vector<qint64> toOwner;
    toOwner.reserve(size_t(steps));
    std::vector<qint64> withPaint;
    withPaint.reserve(size_t(steps));
    QElapsedTimer clock;
    clock.start();
    QPoint pointer = start;
    int fieldChanges = 0;
    for (int i = 0; i < steps; ++i) {
        pointer = start + pathOffset(i);
        const QString before = leftField->text();
        const qint64 sent = clock.nsecsElapsed();
        // Positions are relative to the box, which moves under the pointer, as Qt delivers them.
        QTest::mouseMove(box, box->mapFrom(window, pointer));
        toOwner.push_back(clock.nsecsElapsed() - sent);
        fieldChanges += leftField->text() != before ? 1 : 0;
        // Let the window repaint as the event loop would between two pointer events.
        QCoreApplication::processEvents();
        withPaint.push_back(clock.nsecsElapsed() - sent);
    }
    QTest::mouseRelease(box, Qt::LeftButton, {}, box->mapFrom(window, pointer));

    std::sort(toOwner.begin(), toOwner.end());
    std::sort(withPaint.begin(), withPaint.end());
    std::printf("position editor drag in the settings window: %d steps, the left field changed "
                "on %d (event sent -> owner done)\n",
                steps, fieldChanges);
    std::printf("  median %.4f ms   p99 %.4f ms   max %.4f ms\n", percentile(toOwner, 0.5),
                percentile(toOwner, 0.99), double(toOwner.back()) / 1e6);
    std::printf("  with the repaint that follows: median %.4f ms   p99 %.4f ms\n",
                percentile(withPaint, 0.5), percentile(withPaint, 0.99));
    std::printf("  goal: median <= 0.1 ms, p99 <= 0.5 ms\n");
    delegate->onCancel();
    return fieldChanges > 0 ? 0 : 1;
}
