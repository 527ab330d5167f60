// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// A window with a page canvas and its edit box, for looking at the position editor by eye.
//   positiondemo [--margins L,T,R,B] [--size WxH] [--transparency T] [--image FILE |
//   --sample-image]
//                [--link HOST] [--drag DX,DY] [--screenshot FILE] [--cursors FILE]
// With --screenshot the window is drawn once into FILE (PNG) and the program exits; run it with
// QT_QPA_PLATFORM=offscreen to do that without a display. --drag presses in the middle of the box
// and moves the pointer by DX, DY points (y up) without letting go, so the screenshot shows the
// box mid-gesture with its snapping guides. --sample-image shows a picture drawn by the program.
// --cursors saves the three drawn cursor images, enlarged eight times, and exits.

#include "positionview.h"
#include "postionviewdelete.h"
#include "veleditview.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLabel>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// Shows the margins as the settings window's fields would, and counts the saves a release makes.
class DemoOwner : public PostionViewDelete
{
public:
    DemoOwner(PositionView *view, QLabel *label)
        : m_view(view)
        , m_label(label)
    {
        show();
    }
    void onChangePositionView() override { show(); }
    void didChangedPositionView() override
    {
        ++m_saves;
        show();
    }

private:
    void show()
    {
        const PositionRect *r = m_view->positionRect();
        m_label->setText(QString::asprintf("Left %.1f   Top %.1f   Right %.1f   Bottom %.1f   "
                                           "(saved %d times)",
                                           double(r->left()), double(r->top()), double(r->right()),
                                           double(r->bottom()), m_saves));
    }

    PositionView *m_view;
    QLabel *m_label;
    int m_saves = 0;
};

bool saveCursorSheet(const QString &file)
{
    constexpr int scale = 8;
    const QImage icons[] = {VelEditView::drawDragIcon(), VelEditView::drawRes1Icon(),
                            VelEditView::drawRes2Icon()};
    QImage sheet(3 * 16 * scale + 4 * scale, 16 * scale + 2 * scale, QImage::Format_ARGB32);
    sheet.fill(Qt::white);
    QPainter p(&sheet);
    for (int i = 0; i < 3; ++i) {
        const QRect cell(scale + i * (16 * scale + scale), scale, 16 * scale, 16 * scale);
        p.fillRect(cell, QColor(235, 235, 235));
        p.drawImage(cell, icons[i]);
        // The hot spot.
        p.fillRect(QRect(cell.topLeft() + QPoint(8 * scale, 8 * scale), QSize(2, 2)), Qt::red);
    }
    p.end();
    return sheet.save(file, "PNG");
}

PositionRect parseMargins(const QString &text)
{
    PositionRect rect;
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() == 4) {
        rect.setLeft(parts[0].toFloat());
        rect.setTop(parts[1].toFloat());
        rect.setRight(parts[2].toFloat());
        rect.setBottom(parts[3].toFloat());
    }
    return rect;
}

// A landscape to show in the box: sky, sun and hills, 4:3.
QImage samplePicture()
{
    QImage image(400, 300, QImage::Format_RGB32);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, 300);
    sky.setColorAt(0, QColor(70, 130, 210));
    sky.setColorAt(1, QColor(190, 220, 245));
    p.fillRect(image.rect(), sky);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(250, 200, 60));
    p.drawEllipse(QPointF(300, 80), 40, 40);
    p.setBrush(QColor(70, 150, 80));
    p.drawEllipse(QPointF(100, 330), 220, 130);
    p.setBrush(QColor(50, 120, 60));
    p.drawEllipse(QPointF(330, 350), 200, 120);
    return image;
}

// Presses in the middle of the box and moves the pointer by (dx, dy), y up, keeping the button
// down, as a hand in the middle of a drag.
void holdDrag(VelEditView *box, QPointF delta)
{
    const QPoint from = box->rect().center();
    const QPoint to = from + QPoint(qRound(delta.x()), -qRound(delta.y()));
    QMouseEvent press(QEvent::MouseButtonPress, from, box->mapToGlobal(from), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(box, &press);
    QMouseEvent move(QEvent::MouseMove, to, box->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(box, &move);
}

QPointF parsePair(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    return parts.size() == 2 ? QPointF(parts[0].toDouble(), parts[1].toDouble()) : QPointF();
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption marginsOption(
        QStringLiteral("margins"), QStringLiteral("Margins in percent: L,T,R,B."),
        QStringLiteral("L,T,R,B"), QStringLiteral("20,15,30,25"));
    const QCommandLineOption sizeOption(QStringLiteral("size"), QStringLiteral("Canvas size."),
                                        QStringLiteral("WxH"), QStringLiteral("400x300"));
    const QCommandLineOption screenshotOption(QStringLiteral("screenshot"),
                                              QStringLiteral("Save the window as a PNG and exit."),
                                              QStringLiteral("FILE"));
    const QCommandLineOption cursorsOption(
        QStringLiteral("cursors"), QStringLiteral("Save the drawn cursors as a PNG and exit."),
        QStringLiteral("FILE"));
    const QCommandLineOption transparencyOption(QStringLiteral("transparency"),
                                                QStringLiteral("Transparency in percent."),
                                                QStringLiteral("T"), QStringLiteral("0"));
    const QCommandLineOption imageOption(QStringLiteral("image"),
                                         QStringLiteral("An image file to show in the box."),
                                         QStringLiteral("FILE"));
    const QCommandLineOption sampleOption(QStringLiteral("sample-image"),
                                          QStringLiteral("Show a picture drawn by the program."));
    const QCommandLineOption linkOption(QStringLiteral("link"),
                                        QStringLiteral("A link's host to show in the box."),
                                        QStringLiteral("HOST"));
    const QCommandLineOption dragOption(
        QStringLiteral("drag"), QStringLiteral("Hold a drag of the box by DX,DY points (y up)."),
        QStringLiteral("DX,DY"));
    parser.addOptions({marginsOption, sizeOption, screenshotOption, cursorsOption,
                       transparencyOption, imageOption, sampleOption, linkOption, dragOption});
    parser.process(app);
    if (parser.isSet(cursorsOption))
        return saveCursorSheet(parser.value(cursorsOption)) ? 0 : 1;

    QWidget window;
    window.setWindowTitle(QStringLiteral("Position editor"));
    auto *layout = new QVBoxLayout(&window);
    auto *canvas = new PositionView;
    const QStringList size = parser.value(sizeOption).split(QLatin1Char('x'));
    const QSize canvasSize =
        size.size() == 2 ? QSize(size[0].toInt(), size[1].toInt()) : QSize(400, 300);
    canvas->setFixedSize(canvasSize.expandedTo(QSize(40, 40)));
    auto *label = new QLabel;
    layout->addWidget(canvas, 0, Qt::AlignCenter);
    layout->addWidget(label);

    PositionRect margins = parseMargins(parser.value(marginsOption));
    margins.setTransparency(parser.value(transparencyOption).toFloat());
    canvas->setPositionRect(margins);
    canvas->setPageProportions(QSizeF(canvas->size()));
    if (parser.isSet(sampleOption))
        canvas->setImage(samplePicture());
    else if (parser.isSet(imageOption))
        canvas->setImage(QImage(parser.value(imageOption)));
    canvas->setLinkHost(parser.value(linkOption));
    DemoOwner owner(canvas, label);
    canvas->setOwer(&owner);
    window.show();

    if (parser.isSet(screenshotOption)) {
        const QString file = parser.value(screenshotOption);
        // The first paint places the box; grab after it.
        QTimer::singleShot(50, &app, [&] {
            if (parser.isSet(dragOption)) {
                holdDrag(canvas->editView(), parsePair(parser.value(dragOption)));
                canvas->repaint();
            }
            const bool saved = window.grab().save(file, "PNG");
            app.exit(saved ? 0 : 1);
        });
    }
    return app.exec();
}
