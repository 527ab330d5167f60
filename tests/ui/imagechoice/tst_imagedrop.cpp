// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// What a drop or paste gives the image choice: an image file of the chooser's types, an http(s)
// link, or a refusal with its reason; decided without a window.

#include "imagedrop.h"
#include "testenv.h"
#include "testimages.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>

#include <sys/stat.h>

Q_DECLARE_METATYPE(ImageDrop::Kind)
Q_DECLARE_METATYPE(ImageDrop::Reason)

class TestImageDrop : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void classifyDraggedData_data();
    void classifyDraggedData();
    void classifyPastedText_data();
    void classifyPastedText();
    void everyRefusalSaysWhy_data();
    void everyRefusalSaysWhy();

private:
    QString at(const QString &name) const { return m_dir.filePath(name); }
    QTemporaryDir m_dir;
};

void TestImageDrop::initTestCase()
{
    TestEnv::isolate();
    QVERIFY(m_dir.isValid());
    for (const char *name : {"photo.png", "SHOUT.JPG", "scan.jpeg", "anim.gif", "notes.txt",
                             "picture.png.txt", "with blank.png", "words.png"}) {
        QFile file(at(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const bool image = QFileInfo(at(name)).suffix() != "txt" && QLatin1String(name) != "words.png";
        file.write(image ? TestImages::bytes(name, name) : QByteArray("bytes"));
    }
    QVERIFY(QDir().mkpath(at("album")));
    QVERIFY(QDir().mkpath(at("folder.png")));
    QVERIFY(::mkfifo(QFile::encodeName(at("pipe.png")).constData(), 0600) == 0);
}

void TestImageDrop::classifyDraggedData_data()
{
    QTest::addColumn<QList<QUrl>>("urls");
    QTest::addColumn<QString>("text");
    QTest::addColumn<ImageDrop::Kind>("kind");
    QTest::addColumn<ImageDrop::Reason>("reason");
    QTest::addColumn<QString>("taken"); // the path or link taken
    using K = ImageDrop::Kind;
    using R = ImageDrop::Reason;
    const auto file = [this](const char *name) {
        return QUrl::fromLocalFile(at(name));
    };
    QTest::newRow("png file is an image file")
        << QList<QUrl>{file("photo.png")} << "" << K::ImageFile << R::None << at("photo.png");
    QTest::newRow("upper-case JPG is an image file")
        << QList<QUrl>{file("SHOUT.JPG")} << "" << K::ImageFile << R::None << at("SHOUT.JPG");
    QTest::newRow("jpeg file is an image file")
        << QList<QUrl>{file("scan.jpeg")} << "" << K::ImageFile << R::None << at("scan.jpeg");
    QTest::newRow("gif file is an image file")
        << QList<QUrl>{file("anim.gif")} << "" << K::ImageFile << R::None << at("anim.gif");
    QTest::newRow("file manager's text beside the file changes nothing")
        << QList<QUrl>{file("photo.png")} << at("photo.png") << K::ImageFile << R::None
        << at("photo.png");
    QTest::newRow("txt file is refused")
        << QList<QUrl>{file("notes.txt")} << "" << K::Refused << R::NotAnImageType << "";
    QTest::newRow("png.txt file is refused")
        << QList<QUrl>{file("picture.png.txt")} << "" << K::Refused << R::NotAnImageType << "";
    QTest::newRow("folder is refused")
        << QList<QUrl>{file("album")} << "" << K::Refused << R::Folder << "";
    QTest::newRow("folder named like a png is refused")
        << QList<QUrl>{file("folder.png")} << "" << K::Refused << R::Folder << "";
    QTest::newRow("text named like a png is refused: its bytes are no image")
        << QList<QUrl>{file("words.png")} << "" << K::Refused << R::NotAnImage << "";
    QTest::newRow("missing png is refused")
        << QList<QUrl>{file("gone.png")} << "" << K::Refused << R::Unreadable << "";
    QTest::newRow("fifo named like a png is refused")
        << QList<QUrl>{file("pipe.png")} << "" << K::Refused << R::Unreadable << "";
    QTest::newRow("two image files are refused") << QList<QUrl>{file("photo.png"), file("anim.gif")}
                                                 << "" << K::Refused << R::SeveralItems << "";
    QTest::newRow("http link from a browser fills the link")
        << QList<QUrl>{QUrl("http://example.org/a.png")} << "" << K::Link << R::None
        << "http://example.org/a.png";
    QTest::newRow("https link from a browser fills the link")
        << QList<QUrl>{QUrl("HTTPS://images.example.org/b.jpg?size=2")} << "" << K::Link << R::None
        << "https://images.example.org/b.jpg?size=2";
    QTest::newRow("ftp link is refused")
        << QList<QUrl>{QUrl("ftp://example.org/a.png")} << "" << K::Refused << R::OtherLink << "";
    QTest::newRow("mailto link is refused") << QList<QUrl>{QUrl("mailto:someone@example.org")} << ""
                                            << K::Refused << R::OtherLink << "";
    QTest::newRow("dragged https text fills the link")
        << QList<QUrl>{} << "  https://example.org/c.gif\n"
        << K::Link << R::None << "https://example.org/c.gif";
    QTest::newRow("dragged words are refused")
        << QList<QUrl>{} << "a nice picture" << K::Refused << R::NotALink << "";
    QTest::newRow("nothing at all is refused")
        << QList<QUrl>{} << "" << K::Refused << R::Nothing << "";
}

void TestImageDrop::classifyDraggedData()
{
    QFETCH(QList<QUrl>, urls);
    QFETCH(QString, text);
    QFETCH(ImageDrop::Kind, kind);
    QFETCH(ImageDrop::Reason, reason);
    QFETCH(QString, taken);
    QMimeData data;
    if (!urls.isEmpty())
        data.setUrls(urls);
    if (!text.isEmpty())
        data.setText(text);
    const ImageDrop::Verdict verdict = ImageDrop::classify(&data);
    QCOMPARE(verdict.kind, kind);
    QCOMPARE(verdict.reason, reason);
    QCOMPARE(kind == ImageDrop::Kind::Link ? verdict.link : verdict.path, taken);
}

void TestImageDrop::classifyPastedText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<ImageDrop::Kind>("kind");
    QTest::addColumn<ImageDrop::Reason>("reason");
    QTest::addColumn<QString>("taken");
    using K = ImageDrop::Kind;
    using R = ImageDrop::Reason;
    QTest::newRow("http link") << "http://example.org/x.png" << K::Link << R::None
                               << "http://example.org/x.png";
    QTest::newRow("https link with blanks around")
        << "\thttps://example.org/y.png  " << K::Link << R::None << "https://example.org/y.png";
    QTest::newRow("https link without a host is refused")
        << "https:///y.png" << K::Refused << R::OtherLink << "";
    QTest::newRow("ftp link is refused")
        << "ftp://example.org/z.png" << K::Refused << R::OtherLink << "";
    QTest::newRow("two links are refused") << "https://example.org/1.png\nhttps://example.org/2.png"
                                           << K::Refused << R::SeveralItems << "";
    QTest::newRow("copied path of a png is an image file")
        << at("with blank.png") << K::ImageFile << R::None << at("with blank.png");
    QTest::newRow("copied path of a folder is refused")
        << at("album") << K::Refused << R::Folder << "";
    QTest::newRow("a word is refused") << "picture" << K::Refused << R::NotALink << "";
    QTest::newRow("blank text is refused") << "  \n " << K::Refused << R::Nothing << "";
}

void TestImageDrop::classifyPastedText()
{
    QFETCH(QString, text);
    QFETCH(ImageDrop::Kind, kind);
    QFETCH(ImageDrop::Reason, reason);
    QFETCH(QString, taken);
    const ImageDrop::Verdict verdict = ImageDrop::classifyText(text);
    QCOMPARE(verdict.kind, kind);
    QCOMPARE(verdict.reason, reason);
    QCOMPARE(kind == ImageDrop::Kind::Link ? verdict.link : verdict.path, taken);
}

void TestImageDrop::everyRefusalSaysWhy_data()
{
    QTest::addColumn<ImageDrop::Reason>("reason");
    QTest::addColumn<QString>("mentions");
    using R = ImageDrop::Reason;
    QTest::newRow("no image type names the types") << R::NotAnImageType << ".png";
    QTest::newRow("folder") << R::Folder << "folder";
    QTest::newRow("several") << R::SeveralItems << "one";
    QTest::newRow("unreadable") << R::Unreadable << "read";
    QTest::newRow("not an image") << R::NotAnImage << "image";
    QTest::newRow("other link names the schemes") << R::OtherLink << "https";
    QTest::newRow("not a link") << R::NotALink << "link";
    QTest::newRow("nothing") << R::Nothing << "link";
    QTest::newRow("taken: nothing to say") << R::None << "";
}

void TestImageDrop::everyRefusalSaysWhy()
{
    QFETCH(ImageDrop::Reason, reason);
    QFETCH(QString, mentions);
    const QString text = ImageDrop::reasonText(reason);
    QCOMPARE(text.isEmpty(), mentions.isEmpty());
    QVERIFY2(text.contains(mentions), qPrintable(text));
}

QTEST_MAIN(TestImageDrop)
#include "tst_imagedrop.moc"
