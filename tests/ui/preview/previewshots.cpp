// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// Renders the preview page of the bundle into PNG files for the documentation:
//   preview_screenshots <bundle html folder> <output folder>
// writes preview-image.png (a picture placed on the page) and preview-placeholder.png (no image
// chosen). Needs a display (run it under xvfb-run); nothing is fetched from the network.

#include "previewcontroller.h"
#include "previewpage.h"
#include "previewtesting.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QTemporaryDir>
#include <QTest>
#include <QWebEngineView>

namespace {

// A small landscape, so the screenshot shows a real picture rather than a test pattern.
QImage samplePicture()
{
    QImage image(640, 480, QImage::Format_RGB32);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, 300);
    sky.setColorAt(0, QColor(0x3c, 0x6e, 0xb4));
    sky.setColorAt(1, QColor(0xf3, 0xc9, 0x8b));
    p.fillRect(image.rect(), sky);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xff, 0xe6, 0x9a));
    p.drawEllipse(QPointF(450, 190), 55, 55);
    QPainterPath far;
    far.moveTo(0, 320);
    far.cubicTo(160, 220, 300, 330, 640, 250);
    far.lineTo(640, 480);
    far.lineTo(0, 480);
    p.setBrush(QColor(0x5a, 0x7d, 0x6a));
    p.drawPath(far);
    QPainterPath near;
    near.moveTo(0, 400);
    near.cubicTo(220, 330, 420, 430, 640, 360);
    near.lineTo(640, 480);
    near.lineTo(0, 480);
    p.setBrush(QColor(0x2f, 0x50, 0x3e));
    p.drawPath(near);
    return image;
}

bool writeConfig(const QString &workspace, const QString &src)
{
    QFile file(QDir(workspace).filePath(QStringLiteral("config.js")));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    const QString json =
        QStringLiteral("{\"opacity\":0.900000,\"layout\":1,\"properties\":{\"basic\":{"
                       "\"left\":\"16.0%\",\"top\":\"22.0%\",\"width\":\"68.0%\","
                       "\"height\":\"38.0%\"},\"extended\":{\"src\":\"%1\"}}}")
            .arg(src);
    file.write("\xEF\xBB\xBF");
    file.write(QStringLiteral("var config=%1;").arg(json).toUtf8());
    return true;
}

bool shoot(QWebEngineView &view, PreviewController &controller, const QString &path)
{
    bool isChange = true;
    controller.timerRepeat(isChange);
    // The shot is taken once the page says what it shows.
    const bool settled = PreviewTesting::waitFor(
        [&] {
            QString status;
            bool done = false;
            controller.page()->runJavaScript(
                QStringLiteral("window.previewState ? previewState().status : ''"),
                [&](const QVariant &v) {
                    status = v.toString();
                    done = true;
                });
            if (!PreviewTesting::waitFor([&] { return done; }, 2000))
                return false;
            return status == QLatin1String("image") || status == QLatin1String("placeholder");
        },
        15000);
    PreviewTesting::settle(300);
    return settled && view.grab().save(path);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc != 3) {
        qWarning("usage: preview_screenshots <bundle html folder> <output folder>");
        return 2;
    }
    const QString html = QString::fromLocal8Bit(argv[1]);
    const QString out = QString::fromLocal8Bit(argv[2]);
    QTemporaryDir workspace;
    for (const QString &name : QDir(html).entryList(QDir::Files))
        QFile::copy(QDir(html).filePath(name), workspace.filePath(name));
    QDir(workspace.path()).mkpath(QStringLiteral("files/plugin"));
    samplePicture().save(workspace.filePath(QStringLiteral("files/plugin/landscape.png")));

    QWebEngineView view;
    view.resize(420, 540);
    PreviewController controller(&view);
    controller.setWorkSpace(workspace.path());
    view.show();

    bool ok = writeConfig(workspace.path(), QStringLiteral("files/plugin/landscape.png")) &&
              shoot(view, controller, QDir(out).filePath(QStringLiteral("preview-image.png")));
    ok = ok && writeConfig(workspace.path(), QString()) &&
         shoot(view, controller, QDir(out).filePath(QStringLiteral("preview-placeholder.png")));
    return ok ? 0 : 1;
}
