// Drag steps through real mouse events on the page canvas: a press on the edit box, 10,000 moves,
// a release. Each step is timed from the moment its event is sent until the canvas's owner hears
// of the new margins. Prints the median, the 99th percentile and the worst step.
//   bench_positioneditor [steps]

#include "positionview.h"
#include "postionviewdelete.h"
#include "veleditview.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

class TimingOwner : public PostionViewDelete
{
public:
    explicit TimingOwner(const QElapsedTimer &clock)
        : m_clock(clock)
    {}
    void onChangePositionView() override
    {
        m_calledAt = m_clock.nsecsElapsed();
        ++m_calls;
    }
    void didChangedPositionView() override { ++m_ends; }
    qint64 calledAt() const { return m_calledAt; }
    int calls() const { return m_calls; }
    int ends() const { return m_ends; }

private:
    const QElapsedTimer &m_clock;
    qint64 m_calledAt = 0;
    int m_calls = 0;
    int m_ends = 0;
};

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
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int steps = argc > 1 ? std::max(1, atoi(argv[1])) : 10000;

    QWidget window;
    window.resize(500, 400);
    auto *canvas = new PositionView(&window);
    canvas->setGeometry(50, 50, 400, 300);
    canvas->setPositionRectWithLeft(10, 10, 10, 10, 0, 0);
    QElapsedTimer clock;
    TimingOwner owner(clock);
    canvas->setOwer(&owner);
    window.show();
    if (!QTest::qWaitForWindowExposed(&window)) {
        std::fprintf(stderr, "window not exposed\n");
        return 1;
    }
    canvas->repaint(); // places the box

    VelEditView *box = canvas->editView();
    const QPoint start = box->mapTo(&window, box->rect().center());
    clock.start();
    QTest::mousePress(box, Qt::LeftButton, {}, box->mapFrom(&window, start));
    std::vector<qint64> toOwner;
    toOwner.reserve(size_t(steps));
    std::vector<qint64> withPaint;
    withPaint.reserve(size_t(steps));
    QPoint pointer = start;
    for (int i = 0; i < steps; ++i) {
        pointer = start + pathOffset(i);
        const int callsBefore = owner.calls();
        const qint64 sent = clock.nsecsElapsed();
        // Positions are relative to the box, which moves under the pointer, as Qt delivers them.
        QTest::mouseMove(box, box->mapFrom(&window, pointer));
        if (owner.calls() != callsBefore + 1) {
            std::fprintf(stderr, "step %d did not reach the owner\n", i);
            return 1;
        }
        toOwner.push_back(owner.calledAt() - sent);
        // Let the window repaint as the event loop would between two pointer events.
        QCoreApplication::processEvents();
        withPaint.push_back(clock.nsecsElapsed() - sent);
    }
    QTest::mouseRelease(box, Qt::LeftButton, {}, box->mapFrom(&window, pointer));

    std::sort(toOwner.begin(), toOwner.end());
    std::sort(withPaint.begin(), withPaint.end());
    std::printf("position editor drag: %d steps (event sent -> owner called)\n", steps);
    std::printf("  median %.4f ms   p99 %.4f ms   max %.4f ms\n", percentile(toOwner, 0.5),
                percentile(toOwner, 0.99), double(toOwner.back()) / 1e6);
    std::printf("  with the repaint that follows: median %.4f ms   p99 %.4f ms\n",
                percentile(withPaint, 0.5), percentile(withPaint, 0.99));
    std::printf("  goal: median < 0.2 ms, p99 < 1 ms; releases reported: %d\n", owner.ends());
    return owner.ends() == 1 ? 0 : 1;
}
