// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The settings column in every language and every state of the image choice: nothing in it is
// cut at its right edge (the column scrolls down, never sideways) and no number field clips its
// value, at the smallest window size and at scale factor 2. Each language and scale runs in a
// process of its own: a process keeps the first strings table it reads, and the scale factor is
// read when the application starts.

#include "imgpluginfactory.h"
#include "pluginhost.h"
#include "testenv.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

class TestWindowLayout : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void settingsColumnShowsEveryControlWhole_data();
    void settingsColumnShowsEveryControlWhole();

private:
    void checkState(const QString &language, const QString &state);
    PluginHost m_host;
    QTemporaryDir m_tmp;
};

namespace {

const QStringList kStates{"no image", "a local file", "a link", "a file that is no image",
                          "a long file name"};

void writeBytes(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

// A workspace whose description names the state's image.
void prepare(const QString &ws, const QString &state)
{
    QString src;
    if (state == QLatin1String("a local file") || state == QLatin1String("a long file name")) {
        src = state == QLatin1String("a local file")
                  ? QStringLiteral("photo.jpg")
                  : QStringLiteral("a very long name of a holiday photo taken on the beach at "
                                   "sunset with the whole family.jpg");
        QImage picture(1200, 800, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        QDir().mkpath(ws);
        if (!picture.save(ws + "/" + src, "JPEG"))
            qFatal("cannot write the picture");
    } else if (state == QLatin1String("a file that is no image")) {
        src = QStringLiteral("notes.png");
        writeBytes(ws + "/" + src, "plain words, no pixels");
    } else if (state == QLatin1String("a link")) {
        src = QStringLiteral("https://example.com/pictures/a-picture-with-a-long-name.png");
    }
    QFile bundled(QStringLiteral(IMG_BUNDLE_DIR "/Contents/Resources/data/img.xml"));
    if (!bundled.open(QIODevice::ReadOnly))
        qFatal("no bundled description");
    QByteArray xml = bundled.readAll();
    xml.replace("<src type=\"file\"></src>", "<src type=\"file\">" + src.toUtf8() + "</src>");
    xml.replace("<src type=\"file\"/>", "<src type=\"file\">" + src.toUtf8() + "</src>");
    writeBytes(ws + "/img.xml", xml);
}

QString describe(const QWidget *w)
{
    QString text;
    if (auto *button = qobject_cast<const QAbstractButton *>(w))
        text = button->text();
    else if (auto *label = qobject_cast<const QLabel *>(w))
        text = label->text();
    else if (auto *edit = qobject_cast<const QLineEdit *>(w))
        text = edit->text();
    return QStringLiteral("%1 \"%2\"").arg(w->objectName(), text);
}

void checkColumn(QDialog *window, const QString &when)
{
    auto *area = window->findChild<QScrollArea *>(QStringLiteral("scrSettings"));
    QVERIFY(area && area->widget());
    QWidget *content = area->widget();
    QVERIFY2(!area->horizontalScrollBar()->isVisible(), qPrintable(when));
    QVERIFY2(content->width() <= area->viewport()->width(),
             qPrintable(QStringLiteral("%1: the column's content is %2 wide in %3")
                            .arg(when)
                            .arg(content->width())
                            .arg(area->viewport()->width())));
    const QRect visible(QPoint(0, 0), area->viewport()->size());
    for (QWidget *w : content->findChildren<QWidget *>()) {
        if (!w->isVisibleTo(window) || w->width() <= 0)
            continue;
        if (!qobject_cast<QLabel *>(w) && !qobject_cast<QAbstractButton *>(w) &&
            !qobject_cast<QLineEdit *>(w))
            continue;
        const QRect at(w->mapTo(area->viewport(), QPoint(0, 0)), w->size());
        QVERIFY2(at.left() >= visible.left() && at.right() <= visible.right(),
                 qPrintable(QStringLiteral("%1: %2 lies at x %3 to %4, the column shows 0 to %5")
                                .arg(when, describe(w))
                                .arg(at.left())
                                .arg(at.right())
                                .arg(visible.right())));
        QVERIFY2(w->width() >= w->minimumSizeHint().width(),
                 qPrintable(QStringLiteral("%1: %2 is %3 wide, needs %4")
                                .arg(when, describe(w))
                                .arg(w->width())
                                .arg(w->minimumSizeHint().width())));
    }
    // The number fields show their whole value.
    for (const char *name : {"txtLeft", "txtTop", "txtRight", "txtBottom", "txtTransparency"}) {
        auto *edit = window->findChild<QLineEdit *>(QLatin1String(name));
        QVERIFY(edit);
        const int textWidth = edit->fontMetrics().horizontalAdvance(edit->text());
        // A line edit keeps two pixels of its contents free on either side of the text.
        QVERIFY2(textWidth <= edit->contentsRect().width() - 4,
                 qPrintable(QStringLiteral("%1: %2 shows %3 px of text in %4 px")
                                .arg(when, describe(edit))
                                .arg(textWidth)
                                .arg(edit->contentsRect().width() - 4)));
    }
}

} // namespace

void TestWindowLayout::initTestCase()
{
    TestEnv::isolate();
    QVERIFY2(m_host.load(QStringLiteral(IMG_BUNDLE_DIR)), qPrintable(m_host.errorString()));
}

void TestWindowLayout::settingsColumnShowsEveryControlWhole_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("scale");
    for (const char *language : {"en", "de", "fr", "ja", "zh_CN"}) {
        QTest::addRow("%s at scale 1", language) << language << "1";
        QTest::addRow("%s at scale 2", language) << language << "2";
    }
}

void TestWindowLayout::settingsColumnShowsEveryControlWhole()
{
    QFETCH(QString, language);
    QFETCH(QString, scale);
    if (qEnvironmentVariable("IMG_LAYOUT_LANGUAGE") != language) {
        QProcess child;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("IMG_LAYOUT_LANGUAGE", language);
        env.insert("QT_SCALE_FACTOR", scale);
        child.setProcessEnvironment(env);
        child.setProcessChannelMode(QProcess::ForwardedChannels);
        child.start(QCoreApplication::applicationFilePath(),
                    {"settingsColumnShowsEveryControlWhole:"
                     + QString::fromLatin1(QTest::currentDataTag())});
        QVERIFY(child.waitForFinished(180000));
        QCOMPARE(child.exitCode(), 0);
        return;
    }
    for (const QString &state : kStates) {
        checkState(language, state);
        if (QTest::currentTestFailed())
            return;
    }
}

void TestWindowLayout::checkState(const QString &language, const QString &state)
{
    const QString ws = m_tmp.filePath(QString(state).replace(' ', '-'));
    prepare(ws, state);
    std::unique_ptr<ImgSettingsController> settings(
        m_host.factory()->createSettingsDelegate(language, QStringLiteral(IMG_BUNDLE_DIR)));
    QVERIFY(settings);
    settings->setModalMode(false);
    settings->setRecoveryAnswer(ImgSettingsController::KeepAsItIs);
    settings->setWorkSpace(ws);
    QDialog *window = settings->window();
    QVERIFY(window);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    QTest::qWait(50);
    checkColumn(window, state + ", opening size");
    if (QTest::currentTestFailed())
        return;
    window->resize(window->minimumSizeHint());
    QTest::qWait(50);
    checkColumn(window, state + ", smallest size");
    if (QTest::currentTestFailed())
        return;
    window->findChild<QAbstractButton *>(QStringLiteral("btnCancel"))->click();
}

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestWindowLayout suite;
    return QTest::qExec(&suite, argc, argv);
}

#include "tst_windowlayout.moc"
