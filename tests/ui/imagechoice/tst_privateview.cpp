// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "localisation.h"
#include "modalanswer.h"
#include "privateview.h"
#include "privateviewdelete.h"
#include "roommark.h"
#include "simplecell.h"
#include "specialentries.h"
#include "testenv.h"
#include "testimages.h"
#include "uiloader.h"
#include "velpanel.h"
#include "xmlhelpers.h"

#include <QButtonGroup>
#include <QDomDocument>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <stdexcept>
#include <thread>

namespace {

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeAll(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray description(const QString &src)
{
    QString escaped = src.toHtmlEscaped();
    return QStringLiteral("<info><opacity type=\"number\">1</opacity><properties><basic/>"
                          "<extended><src type=\"file\">%1</src></extended></properties></info>")
        .arg(escaped)
        .toUtf8();
}

// The text of properties/extended/src of a description file; a null text when there is none.
QString srcOf(const QString &path)
{
    QDomDocument document;
    if (!document.setContent(readAll(path)))
        return QString();
    const QDomElement src = document.documentElement()
                                .lastChildElement("properties")
                                .lastChildElement("extended")
                                .lastChildElement("src");
    return src.isNull() ? QString() : src.text();
}

// The names in a folder that an older file was kept under: seconds since 1970, six decimals.
QStringList timeStampNames(const QString &folder)
{
    static const QRegularExpression stamp(QStringLiteral("^\\d+\\.\\d{6}$"));
    QStringList names;
    for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::NoDotAndDotDot))
        if (stamp.match(name).hasMatch())
            names << name;
    return names;
}

class Owner : public PrivateViewDelete
{
public:
    int saves = 0;
    enum Throw { Nothing, StdException, Other } throws = Nothing;
    void saveGlobalSettings() override
    {
        ++saves;
        if (throws == StdException)
            throw std::runtime_error("settings file is busy");
        if (throws == Other)
            throw 42;
    }
};

} // namespace

class TestPrivateView : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void loadDispInfoFindsTheControlsAndChoosesTheLocalFile();
    void loadDispInfoFillsAMissingWorkspaceFromTheBundle();
    void absoluteSrcSelectsTheFileCopiesItAndShowsOnlyItsName();
    void srcInTheWorkspaceSelectsTheFileAndShowsTheNameUnchanged();
    void srcThatIsNeitherSelectsTheLink();
    void descriptionWithoutExtendedShowsNothing();
    void choosingASourceEnablesItsControls();
    void typingInTheLinkSavesAfterEveryCharacterButNotWhenEmptied();
    void firstSaveWithoutWorkspaceDescriptionStartsFromTheBundles();
    void savesEditTheTreeTheyLastReadOrWrote();
    void descriptionChangedSinceTheLastSaveIsReadAgain_data();
    void descriptionChangedSinceTheLastSaveIsReadAgain();
    void descriptionDeclaringAnotherEncodingIsReadAgainAsBytes();
    void saveWritesTheChoiceIntoSrcExactly_data();
    void saveWritesTheChoiceIntoSrcExactly();
    void brokenWorkspaceDescriptionFallsBackToTheBundles_data();
    void brokenWorkspaceDescriptionFallsBackToTheBundles();
    void specialWorkspaceDescriptionFallsBackToTheBundles_data();
    void specialWorkspaceDescriptionFallsBackToTheBundles();
    void bundleDescriptionThatIsAFifoIsNoFallback();
    void saveDoesNothingWithoutWorkspaceOrDescription();
    void ownersStdExceptionsAreSwallowedOthersPass();
    void saveButtonSaves();
    void choosingAnImageWithAClashingNameKeepsTheOldFileUnderATimeStamp();
    void choosingAFileInsideTheWorkspaceCopiesNothing();
    void oddFileNamesAreCopiedAsTheyAre_data();
    void oddFileNamesAreCopiedAsTheyAre();
    void unwritableWorkspaceShowsCopyFailedAndLosesNoFile();
    void failedCopyRestoresTheFileAtTheDestination();
    void choosingWhatIsNoRegularFileCopiesNothing_data();
    void choosingWhatIsNoRegularFileCopiesNothing();
    void browsingRunsTheImageChooserAndCopiesTheChosenFile();
    void endBrowseImageLeavesTheFileWorkToTheMainThread();
    void viewDrawsItsRoundedGreyBorder();
    void answersForTheWindowAndThePreview();
    void fieldsThatCannotBeTypedInLookReadOnly();
    void linkThatWillNotWorkIsMarkedButSaved_data();
    void linkThatWillNotWorkIsMarkedButSaved();
    void fileThatIsNoImageIsRefusedWhenChosen_data();
    void fileThatIsNoImageIsRefusedWhenChosen();
    void imageFactsShowBesideTheName_data();
    void imageFactsShowBesideTheName();

private:
    std::unique_ptr<PrivateView> makeView(const QString &workspace, Owner *owner,
                                          const QString &bundle = QString());
    QString image(const QString &name, const QByteArray &content = "image");

    QTemporaryDir m_bundleRoot;
    QString m_bundle;
    QString m_resources;
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_workspace;
};

void TestPrivateView::initTestCase()
{
    TestEnv::isolate();
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    // A bundle with the English window description, the default description and a German
    // strings table; the language stays German for the whole process.
    m_bundle = m_bundleRoot.filePath("img.bundle");
    m_resources = m_bundle + "/Contents/Resources";
    QVERIFY(
        writeAll(m_resources + "/data/img.xml", readAll(IMG_SOURCE_DIR "/resources/data/img.xml")));
    QVERIFY(writeAll(m_resources + "/html/index.html", "<html></html>"));
    QVERIFY(writeAll(m_resources + "/en.lproj/PrivateView.ui",
                     readAll(IMG_SOURCE_DIR "/resources/en.lproj/PrivateView.ui")));
    QVERIFY(writeAll(m_resources + "/de.lproj/PluginLocale.qm", readAll(PRIVATEVIEW_DE_QM)));
    setDefaultBundlePath(m_bundle);
    setDefaultLanguageCode("de");
    QDir().mkpath(PrivateView::importFilePath());
}

void TestPrivateView::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_workspace = m_dir->filePath("Save/img");
}

void TestPrivateView::cleanup()
{
    while (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
        dialog->reject();
        QCoreApplication::processEvents();
    }
    m_dir.reset();
}

std::unique_ptr<PrivateView> TestPrivateView::makeView(const QString &workspace, Owner *owner,
                                                       const QString &bundle)
{
    UiLoader loader;
    const QString path = localizedResourcePath(m_resources, "PrivateView.ui");
    std::unique_ptr<PrivateView> view(qobject_cast<PrivateView *>(loader.loadFile(path)));
    if (!view)
        return view;
    view->setWorkSpace(workspace);
    view->setOwer(owner);
    view->setBundlePath(bundle.isNull() ? m_bundle : bundle);
    view->loadDispInfo();
    return view;
}

QByteArray imageBytes(const QByteArray &content, const QString &name)
{
    return TestImages::bytes(content, name);
}

QString TestPrivateView::image(const QString &name, const QByteArray &content)
{
    const QString path = m_dir->filePath("outside/" + name);
    writeAll(path, imageBytes(content, name));
    return path;
}

void TestPrivateView::loadDispInfoFindsTheControlsAndChoosesTheLocalFile()
{
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QVERIFY(view);
    QVERIFY(view->mxtChoose() && view->btnBrowse() && view->btnSave() && view->txtLink() &&
            view->txtFile());
    QCOMPARE(view->mxtChoose()->button(0)->objectName(), QStringLiteral("rdoLink"));
    QCOMPARE(view->mxtChoose()->button(1)->objectName(), QStringLiteral("rdoFile"));
    QCOMPARE(view->mxtChoose()->button(0)->minimumSize(), QSize(114, 47));
    // The default description's empty src keeps the local file chosen.
    QCOMPARE(view->selectedTag(), 1);
    QVERIFY(view->btnBrowse()->isEnabled());
    QVERIFY(view->txtLink()->isReadOnly());
    QVERIFY(view->txtFile()->isReadOnly());
    QVERIFY(view->txtFile()->text().isEmpty());
    QVERIFY(view->locateFiles().isEmpty());
    for (QAbstractButton *button : {view->btnBrowse(), view->btnSave()})
        QVERIFY(qobject_cast<SimpleCell *>(button)->showsBorderOnlyWhileMouseInside());
    QCOMPARE(owner.saves, 0);
}

void TestPrivateView::loadDispInfoFillsAMissingWorkspaceFromTheBundle()
{
    QVERIFY(!QFileInfo::exists(m_workspace));
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QVERIFY(view);
    QCOMPARE(readAll(m_workspace + "/img.xml"), readAll(m_resources + "/data/img.xml"));
    QVERIFY(QFileInfo::exists(m_workspace + "/index.html"));
}

void TestPrivateView::absoluteSrcSelectsTheFileCopiesItAndShowsOnlyItsName()
{
    const QString outside = image("holiday.png", "picture bytes");
    QVERIFY(writeAll(m_workspace + "/img.xml", description(outside)));
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QCOMPARE(view->selectedTag(), 1);
    QCOMPARE(readAll(m_workspace + "/holiday.png"), imageBytes("picture bytes", "holiday.png"));
    QCOMPARE(view->txtFile()->text(), QStringLiteral("holiday.png"));
    QCOMPARE(view->locateFiles(), QStringList{"holiday.png"});
    QVERIFY(view->btnBrowse()->isEnabled());
    QVERIFY(QFileInfo::exists(outside));
}

void TestPrivateView::srcInTheWorkspaceSelectsTheFileAndShowsTheNameUnchanged()
{
    QVERIFY(writeAll(m_workspace + "/img.xml", description("pics/cover.png")));
    QVERIFY(writeAll(m_workspace + "/pics/cover.png", "x"));
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QCOMPARE(view->selectedTag(), 1);
    QCOMPARE(view->txtFile()->text(), QStringLiteral("pics/cover.png"));
    QCOMPARE(view->locateFiles(), QStringList{"pics/cover.png"});
    QVERIFY(timeStampNames(m_workspace).isEmpty());
}

void TestPrivateView::srcThatIsNeitherSelectsTheLink()
{
    QVERIFY(writeAll(m_workspace + "/img.xml", description("https://example.com/a.png")));
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QCOMPARE(view->selectedTag(), 0);
    QCOMPARE(view->txtLink()->text(), QStringLiteral("https://example.com/a.png"));
    QVERIFY(!view->btnBrowse()->isEnabled());
    QVERIFY(!view->txtLink()->isReadOnly());
    QVERIFY(view->locateFiles().isEmpty());
    QCOMPARE(owner.saves, 0);
}

void TestPrivateView::descriptionWithoutExtendedShowsNothing()
{
    QVERIFY(writeAll(m_workspace + "/img.xml", "<info><properties><basic/></properties></info>"));
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QCOMPARE(view->selectedTag(), 1);
    QVERIFY(view->txtLink()->text().isEmpty());
    // Saving leaves such a description as it is.
    QVERIFY(view->onSave());
    QCOMPARE(readAll(m_workspace + "/img.xml"),
             QByteArray("<info><properties><basic/></properties></info>"));
    QCOMPARE(owner.saves, 1);
}

void TestPrivateView::choosingASourceEnablesItsControls()
{
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    qobject_cast<QRadioButton *>(view->mxtChoose()->button(0))->click();
    QCOMPARE(view->selectedTag(), 0);
    QVERIFY(!view->btnBrowse()->isEnabled());
    QVERIFY(!view->txtLink()->isReadOnly());
    qobject_cast<QRadioButton *>(view->mxtChoose()->button(1))->click();
    QCOMPARE(view->selectedTag(), 1);
    QVERIFY(view->btnBrowse()->isEnabled());
    QVERIFY(view->txtLink()->isReadOnly());
    // chooseLocate alone changes the controls, not the choice.
    view->chooseLocate(0);
    QVERIFY(!view->btnBrowse()->isEnabled());
    QCOMPARE(view->selectedTag(), 1);
    // Each choice the author clicked was saved at once; chooseLocate alone saves nothing.
    QCOMPARE(owner.saves, 2);
}

void TestPrivateView::typingInTheLinkSavesAfterEveryCharacterButNotWhenEmptied()
{
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    view->show();
    qobject_cast<QRadioButton *>(view->mxtChoose()->button(0))->click();
    const QString xml = m_workspace + "/img.xml";
    // Choosing the link is saved at once: the book has no image until a link is typed.
    QCOMPARE(owner.saves, 1);
    QCOMPARE(srcOf(xml), QString());
    QTest::keyClick(view->txtLink(), Qt::Key_A);
    QCOMPARE(owner.saves, 2);
    QCOMPARE(srcOf(xml), QStringLiteral("a"));
    QTest::keyClick(view->txtLink(), Qt::Key_B);
    QCOMPARE(owner.saves, 3);
    QCOMPARE(srcOf(xml), QStringLiteral("ab"));
    QTest::keyClick(view->txtLink(), Qt::Key_Backspace);
    QCOMPARE(owner.saves, 4);
    QCOMPARE(srcOf(xml), QStringLiteral("a"));
    QTest::keyClick(view->txtLink(), Qt::Key_Backspace);
    QCOMPARE(view->txtLink()->text(), QString());
    QCOMPARE(owner.saves, 4);
    QCOMPARE(srcOf(xml), QStringLiteral("a"));
    // Text set by the program is no edit, and only the link field's edits count.
    view->txtLink()->setText("http://set.example");
    view->controlTextDidChange(view->txtFile());
    QCOMPARE(owner.saves, 4);
    view->controlTextDidChange(view->txtLink());
    QCOMPARE(owner.saves, 5);
}

void TestPrivateView::firstSaveWithoutWorkspaceDescriptionStartsFromTheBundles()
{
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QVERIFY(QFile::remove(m_workspace + "/img.xml"));
    view->mxtChoose()->button(0)->click(); // saved at once, from the bundle's description
    view->txtLink()->setText("http://example.com/p.png");
    QVERIFY(view->onSave());
    QCOMPARE(owner.saves, 2);
    const QByteArray written = readAll(m_workspace + "/img.xml");
    QCOMPARE(written,
             QByteArray("<info><opacity type=\"number\">1</opacity><layout type=\"number\">1"
                        "</layout><properties><basic><left type=\"text\">10.0%</left><top "
                        "type=\"text\">26.0%</top><width type=\"text\">30.0%</width><height "
                        "type=\"text\">48.0%</height></basic><extended><src type=\"file\">"
                        "http://example.com/p.png</src></extended></properties></info>"));
    // The bundle's own file is never written.
    QCOMPARE(srcOf(m_resources + "/data/img.xml"), QString());
}

void TestPrivateView::savesEditTheTreeTheyLastReadOrWrote()
{
    const QByteArray before("<info><opacity type=\"number\">1</opacity><properties><basic/>"
                            "<extended><other a=\"1\" b=\"2\">x</other><src type=\"file\">"
                            "</src></extended></properties></info>");
    QVERIFY(writeAll(m_workspace + "/img.xml", before));
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    view->mxtChoose()->button(0)->click();
    for (const char *link : {"http://a.example", "http://b.example/long", "http://c.example"}) {
        view->txtLink()->setText(link);
        QVERIFY(view->onSave());
        // What a view that reads the file afresh writes from the same file.
        Owner otherOwner;
        auto fresh = makeView(m_dir->filePath("copy"), &otherOwner);
        QVERIFY(writeAll(m_dir->filePath("copy/img.xml"), readAll(m_workspace + "/img.xml")));
        fresh->mxtChoose()->button(0)->click();
        fresh->txtLink()->setText(link);
        const QByteArray written = readAll(m_workspace + "/img.xml");
        QVERIFY(fresh->onSave());
        QCOMPARE(written, readAll(m_dir->filePath("copy/img.xml")));
        QCOMPARE(srcOf(m_workspace + "/img.xml"), QString::fromLatin1(link));
    }
    // The tree the display was loaded from served the first save, the saved one the others.
    QCOMPARE(view->descriptionParses(), 0);
    QCOMPARE(owner.saves, 4); // three saves and the click that chose the link
}

void TestPrivateView::descriptionChangedSinceTheLastSaveIsReadAgain_data()
{
    QTest::addColumn<QByteArray>("changed");
    // As many bytes as before, written in place at once: the stamp may not move, the bytes do.
    QTest::newRow("same size, in place")
        << QByteArray("<info><properties><extended><other>2</other><src type=\"file\">a.png"
                      "</src></extended></properties></info>");
    QTest::newRow("another size") << QByteArray(
        "<info><properties><extended><other>22</other><src type=\"file\">"
        "a.png</src></extended></properties></info>");
}

void TestPrivateView::descriptionChangedSinceTheLastSaveIsReadAgain()
{
    QFETCH(QByteArray, changed);
    QVERIFY(writeAll(m_workspace + "/img.xml",
                     "<info><properties><extended><other>1</other><src type=\"file\">a.png"
                     "</src></extended></properties></info>"));
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    view->mxtChoose()->button(1)->click();
    view->txtFile()->setText("b.png");
    QVERIFY(view->onSave());
    QVERIFY(writeAll(m_workspace + "/img.xml", changed));
    QVERIFY(view->onSave());
    QCOMPARE(view->descriptionParses(), 1);
    QByteArray expected = changed;
    expected.replace("a.png", "b.png");
    QCOMPARE(readAll(m_workspace + "/img.xml"), expected);
    // Gone, then back: read again too.
    QVERIFY(QFile::remove(m_workspace + "/img.xml"));
    QVERIFY(view->onSave());
    QCOMPARE(srcOf(m_workspace + "/img.xml"), QStringLiteral("b.png"));
    QVERIFY(readAll(m_workspace + "/img.xml").contains("<left type=\"text\">10.0%</left>"));
}

void TestPrivateView::descriptionDeclaringAnotherEncodingIsReadAgainAsBytes()
{
    // Read as text the bytes are UTF-8; read as bytes they are what the declaration says.
    const QByteArray before = QString("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><info>"
                                      "<properties><extended><other>ä</other><src type=\"file\">"
                                      "</src></extended></properties></info>")
                                  .toUtf8();
    QVERIFY(writeAll(m_workspace + "/img.xml", before));
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    view->mxtChoose()->button(0)->click();
    view->txtLink()->setText("http://e.example");
    QVERIFY(view->onSave());
    QCOMPARE(view->descriptionParses(), 1);
    QDomDocument document;
    QVERIFY(document.setContent(before));
    QDomElement src = document.documentElement()
                          .firstChildElement("properties")
                          .firstChildElement("extended")
                          .firstChildElement("src");
    src.appendChild(document.createTextNode("http://e.example"));
    QString text;
    QTextStream stream(&text);
    document.documentElement().save(stream, -1);
    QCOMPARE(readAll(m_workspace + "/img.xml"), text.toUtf8());
}

void TestPrivateView::saveWritesTheChoiceIntoSrcExactly_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("the link text replaces src, escaped as XML")
        << QByteArray("<info><properties><extended><src type=\"file\">a.png</src></extended>"
                      "</properties></info>")
        << 0 << "http://e.com/?a=1&b=<2>"
        << QByteArray("<info><properties><extended><src type=\"file\">http://e.com/?a=1&amp;"
                      "b=&lt;2></src></extended></properties></info>");
    QTest::newRow("a missing src is added as a file value")
        << QByteArray("<info><properties><extended><other>1</other></extended></properties>"
                      "</info>")
        << 1 << "cover.png"
        << QByteArray("<info><properties><extended><other>1</other><src type=\"file\">cover.png"
                      "</src></extended></properties></info>");
    QTest::newRow("the last properties, extended and src are the ones written")
        << QByteArray("<info><properties/><properties><extended/><extended><src>1</src><src>2"
                      "</src></extended></properties></info>")
        << 1 << "b.png"
        << QByteArray("<info><properties/><properties><extended/><extended><src>1</src><src>"
                      "b.png</src></extended></properties></info>");
    QTest::newRow("an empty file name empties src")
        << QByteArray("<info><properties><extended><src type=\"file\">a.png</src></extended>"
                      "</properties></info>")
        << 1 << ""
        << QByteArray("<info><properties><extended><src type=\"file\"/></extended>"
                      "</properties></info>");
    QTest::newRow("non-ASCII text is written as UTF-8")
        << QByteArray("<info><properties><extended/></properties></info>") << 0
        << "http://例え.jp/ä"
        << QString("<info><properties><extended><src type=\"file\">http://例え.jp/ä</src>"
                   "</extended></properties></info>")
               .toUtf8();
}

void TestPrivateView::saveWritesTheChoiceIntoSrcExactly()
{
    QFETCH(QByteArray, before);
    QFETCH(int, tag);
    QFETCH(QString, text);
    QFETCH(QByteArray, after);
    QVERIFY(writeAll(m_workspace + "/img.xml", before));
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    view->mxtChoose()->button(tag)->click();
    (tag == 0 ? view->txtLink() : view->txtFile())->setText(text);
    QVERIFY(view->onSave());
    QCOMPARE(readAll(m_workspace + "/img.xml"), after);
    QCOMPARE(owner.saves, 2); // the click's save and this one
}

void TestPrivateView::brokenWorkspaceDescriptionFallsBackToTheBundles_data()
{
    QTest::addColumn<QByteArray>("broken");
    QTest::newRow("not well-formed") << QByteArray("<info><properties>");
    QTest::newRow("not UTF-8") << QByteArray("<info>\xff\xfe</info>");
    QTest::newRow("not UTF-8, though its declaration names the encoding it is in")
        << QByteArray("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><info><properties>"
                      "<extended><other>\xe4</other><src type=\"file\"></src></extended>"
                      "</properties></info>");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("nested one level past the limit")
        << "<info>" + QByteArray("<d>").repeated(MaxDescriptionDepth) +
               QByteArray("</d>").repeated(MaxDescriptionDepth) + "</info>";
}

void TestPrivateView::brokenWorkspaceDescriptionFallsBackToTheBundles()
{
    QFETCH(QByteArray, broken);
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QVERIFY(writeAll(m_workspace + "/img.xml", broken));
    view->txtFile()->setText("x.png");
    QVERIFY(view->onSave());
    QCOMPARE(srcOf(m_workspace + "/img.xml"), QStringLiteral("x.png"));
    QVERIFY(readAll(m_workspace + "/img.xml").contains("<left type=\"text\">10.0%</left>"));
}

void TestPrivateView::specialWorkspaceDescriptionFallsBackToTheBundles_data()
{
    using namespace SpecialEntries;
    QTest::addColumn<Kind>("kind");
    QTest::newRow("a FIFO is read as missing, without waiting for a writer") << Fifo;
    QTest::newRow("a link to a description outside is data, not read through") << LinkToFile;
    QTest::newRow("a link to a FIFO is read as missing") << LinkToFifo;
}

void TestPrivateView::specialWorkspaceDescriptionFallsBackToTheBundles()
{
    QFETCH(SpecialEntries::Kind, kind);
    const QString outside = m_dir->filePath("outside");
    const QByteArray linked = description("linked.png");
    QVERIFY(SpecialEntries::make(kind, m_workspace + "/img.xml", outside, linked));
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QVERIFY(view);
    QVERIFY(view->txtFile()->text().isEmpty());
    QVERIFY(view->txtLink()->text().isEmpty());
    view->txtFile()->setText("x.png");
    QVERIFY(view->onSave());
    QVERIFY(!QFileInfo(m_workspace + "/img.xml").isSymLink());
    QCOMPARE(srcOf(m_workspace + "/img.xml"), QStringLiteral("x.png"));
    QVERIFY(readAll(m_workspace + "/img.xml").contains("<left type=\"text\">10.0%</left>"));
    if (kind == SpecialEntries::LinkToFile)
        QCOMPARE(readAll(outside + "/img.xml.target"), linked);
}

void TestPrivateView::bundleDescriptionThatIsAFifoIsNoFallback()
{
    const QString bundle = m_dir->filePath("fifo.bundle");
    const QString bundleXml = bundle + "/Contents/Resources/data/img.xml";
    QVERIFY(QDir().mkpath(QFileInfo(bundleXml).path()));
    QVERIFY(SpecialEntries::makeFifo(bundleXml));
    Owner owner;
    auto view = makeView(m_workspace, &owner, bundle);
    QVERIFY(view);
    QVERIFY(!QFileInfo::exists(m_workspace + "/img.xml"));
    QVERIFY(!view->onSave());
    QVERIFY(!QFileInfo::exists(m_workspace + "/img.xml"));
    QCOMPARE(owner.saves, 0);
}

void TestPrivateView::saveDoesNothingWithoutWorkspaceOrDescription()
{
    Owner owner;
    // No workspace folder.
    const QString missing = m_dir->filePath("blocker/img");
    QVERIFY(writeAll(m_dir->filePath("blocker"), "a file where the folder should be"));
    auto view = makeView(missing, &owner);
    QVERIFY(!view->onSave());
    view->setWorkSpace(QString());
    QVERIFY(!view->onSave());
    QCOMPARE(owner.saves, 0);

    // A broken description and a bundle without a default one.
    const QString emptyBundle = m_dir->filePath("empty.bundle");
    QDir().mkpath(emptyBundle);
    auto bare = makeView(m_workspace, &owner, emptyBundle);
    QVERIFY(writeAll(m_workspace + "/img.xml", "<broken"));
    QVERIFY(!bare->onSave());
    QCOMPARE(readAll(m_workspace + "/img.xml"), QByteArray("<broken"));
    QCOMPARE(owner.saves, 0);
}

void TestPrivateView::ownersStdExceptionsAreSwallowedOthersPass()
{
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    owner.throws = Owner::StdException;
    QVERIFY(view->onSave());
    QCOMPARE(owner.saves, 1);
    owner.throws = Owner::Other;
    bool passed = false;
    try {
        view->onSave();
    } catch (int) {
        passed = true;
    }
    QVERIFY(passed);
    // Without an owner the save still happens.
    view->setOwer(nullptr);
    view->txtFile()->setText("y.png");
    QVERIFY(view->onSave());
    QCOMPARE(srcOf(m_workspace + "/img.xml"), QStringLiteral("y.png"));
}

void TestPrivateView::saveButtonSaves()
{
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    view->txtFile()->setText("z.png");
    view->btnSave()->click();
    QCOMPARE(owner.saves, 1);
    QCOMPARE(srcOf(m_workspace + "/img.xml"), QStringLiteral("z.png"));
}

void TestPrivateView::choosingAnImageWithAClashingNameKeepsTheOldFileUnderATimeStamp()
{
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QVERIFY(writeAll(m_workspace + "/photo.png", "old"));
    const QString chosen = image("photo.png", "new");
    QSignalSpy refreshed(view.get(), &PrivateView::locateFileRefreshed);
    view->refreshLocateFile(chosen);
    QCOMPARE(readAll(m_workspace + "/photo.png"), imageBytes("new", "photo.png"));
    const QStringList kept = timeStampNames(m_workspace);
    QCOMPARE(kept.size(), 1);
    QCOMPARE(readAll(m_workspace + "/" + kept.first()), QByteArray("old"));
    QCOMPARE(view->txtFile()->text(), QStringLiteral("photo.png"));
    QCOMPARE(view->locateFiles(), QStringList{"photo.png"});
    QCOMPARE(refreshed.count(), 1);
    QCOMPARE(refreshed.first().at(1).toBool(), true);
    // The chosen image is saved at once, like every other edit.
    QCOMPARE(srcOf(m_workspace + "/img.xml"), QStringLiteral("photo.png"));
    QCOMPARE(owner.saves, 1);
}

void TestPrivateView::choosingAFileInsideTheWorkspaceCopiesNothing()
{
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QVERIFY(writeAll(m_workspace + "/pics/inside.png", imageBytes("in", "inside.png")));
    const QStringList before = QDir(m_workspace).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    QVERIFY(view->saveFile2Workspace(m_workspace + "/pics/inside.png"));
    view->refreshLocateFile(m_workspace + "/pics/inside.png");
    QCOMPARE(QDir(m_workspace).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), before);
    QCOMPARE(view->txtFile()->text(), QStringLiteral("inside.png"));
    QCOMPARE(view->locateFiles(), QStringList{"inside.png"});
}

void TestPrivateView::oddFileNamesAreCopiedAsTheyAre_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("spaces") << "my holiday photo.png";
    QTest::newRow("non-ASCII") << "Größe 写真.jpg";
    QTest::newRow("leading dot") << ".hidden.gif";
    QTest::newRow("very long") << QString(200, QLatin1Char('x')) + ".png";
}

void TestPrivateView::oddFileNamesAreCopiedAsTheyAre()
{
    QFETCH(QString, name);
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    view->refreshLocateFile(image(name, "odd"));
    QCOMPARE(readAll(m_workspace + "/" + name), imageBytes("odd", name));
    QCOMPARE(view->txtFile()->text(), name);
    QCOMPARE(view->locateFiles(), QStringList{name});
    view->btnSave()->click();
    QCOMPARE(srcOf(m_workspace + "/img.xml"), name);
}

void TestPrivateView::unwritableWorkspaceShowsCopyFailedAndLosesNoFile()
{
    // A workspace whose parent is a regular file cannot be written, not even by root.
    QVERIFY(writeAll(m_dir->filePath("blocker"), "a file where the folder should be"));
    const QString workspace = m_dir->filePath("blocker/img");
    Owner owner;
    auto view = makeView(workspace, &owner);
    view->txtFile()->setText("old.png");
    const QString chosen = image("new.png", "keep me");

    QString message = "none";
    QString informative = "none";
    QStringList buttons;
    ModalAnswer::next([&](QWidget *modal) {
        auto *box = qobject_cast<QMessageBox *>(modal);
        if (!box)
            return;
        message = box->text();
        informative = box->informativeText();
        for (QAbstractButton *button : box->buttons())
            buttons << button->text();
        QTest::keyClick(box, Qt::Key_Return);
    });
    QSignalSpy refreshed(view.get(), &PrivateView::locateFileRefreshed);
    view->refreshLocateFile(chosen);
    QCOMPARE(message, QStringLiteral("Kopieren fehlgeschlagen!"));
    QCOMPARE(informative, QString());
    QCOMPARE(buttons, QStringList{"OK"});
    QCOMPARE(view->txtFile()->text(), QStringLiteral("old.png"));
    // The list already names the new file, as it is.
    QCOMPARE(view->locateFiles(), QStringList{"new.png"});
    QCOMPARE(readAll(chosen), imageBytes("keep me", "new.png"));
    QCOMPARE(refreshed.count(), 1);
    QCOMPARE(refreshed.first().at(1).toBool(), false);
}

void TestPrivateView::failedCopyRestoresTheFileAtTheDestination()
{
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QVERIFY(writeAll(m_workspace + "/photo.png", "old"));
    view->txtFile()->setText("photo.png");
    // The chosen file vanished before it could be copied.
    const QString vanished = m_dir->filePath("outside/photo.png");
    QString message;
    ModalAnswer::next([&](QWidget *modal) {
        if (auto *box = qobject_cast<QMessageBox *>(modal)) {
            message = box->text();
            QTest::mouseClick(ModalAnswer::buttonTitled(box, "OK"), Qt::LeftButton);
        }
    });
    QVERIFY(!view->saveFile2Workspace(vanished));
    QCOMPARE(readAll(m_workspace + "/photo.png"), QByteArray("old"));
    view->refreshLocateFile(vanished);
    QCOMPARE(message, QStringLiteral("Kopieren fehlgeschlagen!"));
    QCOMPARE(readAll(m_workspace + "/photo.png"), QByteArray("old"));
    QVERIFY(timeStampNames(m_workspace).isEmpty());
    QCOMPARE(view->txtFile()->text(), QStringLiteral("photo.png"));

    // A folder cannot be copied as an image either; the file in its way stays.
    QDir().mkpath(m_dir->filePath("outside/folder.png"));
    QVERIFY(writeAll(m_workspace + "/folder.png", "kept"));
    QVERIFY(!view->saveFile2Workspace(m_dir->filePath("outside/folder.png")));
    QCOMPARE(readAll(m_workspace + "/folder.png"), QByteArray("kept"));
    QVERIFY(timeStampNames(m_workspace).isEmpty());

    // Paths without a file name never touch the workspace or its parent.
    const QStringList before = QDir(m_workspace).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const QString &nameless : {QString(), m_dir->filePath("outside/"),
                                    m_dir->filePath("outside/."), m_dir->filePath("outside/..")})
        QVERIFY2(!view->saveFile2Workspace(nameless), qPrintable(nameless));
    QCOMPARE(QDir(m_workspace).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), before);
    QVERIFY(QFileInfo(m_workspace).isDir());
}

// The copy would read the chosen file: a FIFO would wait for a writer, a device never end.
void TestPrivateView::choosingWhatIsNoRegularFileCopiesNothing_data()
{
    QTest::addColumn<QString>("chosen"); // "<fifo>": a FIFO named photo.png outside
    QTest::newRow("a FIFO") << "<fifo>";
    QTest::newRow("/dev/zero") << "/dev/zero";
    QTest::newRow("/dev/null") << "/dev/null";
}

void TestPrivateView::choosingWhatIsNoRegularFileCopiesNothing()
{
    QFETCH(QString, chosen);
    if (chosen == "<fifo>") {
        chosen = m_dir->filePath("outside/photo.png");
        QVERIFY(QDir().mkpath(QFileInfo(chosen).path()));
        QVERIFY(SpecialEntries::makeFifo(chosen));
    } else if (!QFileInfo::exists(chosen)) {
        QSKIP("no such device here");
    }
    // A description naming it by absolute path loads without copying it.
    QVERIFY(writeAll(m_workspace + "/img.xml", description(chosen)));
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QVERIFY(view);
    const QString name = QFileInfo(chosen).fileName();
    QVERIFY(!QFileInfo::exists(m_workspace + "/" + name));
    QVERIFY(writeAll(m_workspace + "/" + name, "old"));
    QVERIFY(!view->saveFile2Workspace(chosen));
    QCOMPARE(readAll(m_workspace + "/" + name), QByteArray("old"));
    QVERIFY(timeStampNames(m_workspace).isEmpty());
}

void TestPrivateView::browsingRunsTheImageChooserAndCopiesTheChosenFile()
{
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    view->show();
    const QString chosen = image("sunset.jpg", "sunset");

    QThread *refreshThread = nullptr;
    connect(
        view.get(), &PrivateView::locateFileRefreshed, this,
        [&refreshThread] { refreshThread = QThread::currentThread(); }, Qt::DirectConnection);
    QString title, prompt, directory;
    QStringList filters;
    Qt::WindowModality modality = Qt::NonModal;
    QWidget *parent = nullptr;
    ModalAnswer::next([&](QWidget *modal) {
        auto *dialog = qobject_cast<QFileDialog *>(modal);
        if (!dialog)
            return;
        title = dialog->windowTitle();
        prompt = dialog->labelText(QFileDialog::Accept);
        directory = dialog->directory().absolutePath();
        filters = dialog->nameFilters();
        modality = dialog->windowModality();
        parent = dialog->parentWidget();
        auto *field = dialog->findChild<QLineEdit *>("fileNameEdit");
        field->setText(chosen);
        QTest::keyClick(field, Qt::Key_Return);
    });
    view->btnBrowse()->click();
    QTRY_VERIFY(refreshThread);
    QCOMPARE(refreshThread, qApp->thread());
    QCOMPARE(title, QStringLiteral("Bilddatei wählen"));
    QCOMPARE(prompt, QStringLiteral("Bilddatei wählen"));
    QCOMPARE(directory, QDir::homePath() + "/Documents");
    QCOMPARE(modality, Qt::WindowModal);
    QCOMPARE(parent, view.get());
    QVERIFY2(filters.size() == 1 && filters.first().contains("*.jpg") &&
                 filters.first().contains("*.jpeg") && filters.first().contains("*.gif") &&
                 filters.first().contains("*.png"),
             qPrintable(filters.join('|')));
    QCOMPARE(readAll(m_workspace + "/sunset.jpg"), imageBytes("sunset", "sunset.jpg"));
    QCOMPARE(view->txtFile()->text(), QStringLiteral("sunset.jpg"));
    QCOMPARE(view->locateFiles(), QStringList{"sunset.jpg"});
    QCOMPARE(srcOf(m_workspace + "/img.xml"), QStringLiteral("sunset.jpg"));
    QCOMPARE(owner.saves, 1);
}

void TestPrivateView::endBrowseImageLeavesTheFileWorkToTheMainThread()
{
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    const QString chosen = image("dawn.png", "dawn");
    QThread *refreshThread = nullptr;
    connect(
        view.get(), &PrivateView::locateFileRefreshed, this,
        [&refreshThread] { refreshThread = QThread::currentThread(); }, Qt::DirectConnection);
    VelPanel panel;
    panel.setUrls({QUrl::fromLocalFile(chosen)});
    std::thread endThread([&] { view->endBrowseImage(&panel); });
    endThread.join();
    // Nothing is copied on the panel's thread.
    QVERIFY(!QFileInfo::exists(m_workspace + "/dawn.png"));
    QVERIFY(!refreshThread);
    QTRY_VERIFY(refreshThread);
    QCOMPARE(refreshThread, qApp->thread());
    QCOMPARE(readAll(m_workspace + "/dawn.png"), imageBytes("dawn", "dawn.png"));
    QCOMPARE(view->txtFile()->text(), QStringLiteral("dawn.png"));
}

void TestPrivateView::viewDrawsItsRoundedGreyBorder()
{
    PrivateView view;
    view.resize(60, 40);
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    view.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    // A 2.0 line centred on the edge covers the edge pixel fully.
    const QColor edge = image.pixelColor(0, 20);
    QVERIFY2(qAbs(edge.red() - 128) <= 3 && edge.alpha() >= 250,
             qPrintable(QString("%1 %2").arg(edge.red()).arg(edge.alpha())));
    QCOMPARE(image.pixelColor(30, 39).alpha(), 255);
    QCOMPARE(image.pixelColor(1, 20).alpha(), 0);
    QCOMPARE(image.pixelColor(30, 20).alpha(), 0);
    // The corner is rounded off: its outermost pixel is at most partly covered.
    QVERIFY(image.pixelColor(0, 0).alpha() < 128);
}

void TestPrivateView::answersForTheWindowAndThePreview()
{
    PrivateView bare;
    QVERIFY(!bare.ignoreOpenURL());
    QVERIFY(bare.locateFiles().isEmpty());
    QCOMPARE(PrivateView::importFilePath(), QDir::homePath() + "/Documents");
    // Without a window description a view has no controls and nothing breaks.
    bare.chooseLocate(0);
    QCOMPARE(bare.selectedTag(), -1);
    bare.setWorkSpace(m_workspace);
    QVERIFY(QDir().mkpath(m_workspace));
    // No description in the workspace and none in the running program's own resources.
    QVERIFY(!bare.onSave());
    QVERIFY(!QFileInfo::exists(m_workspace + "/img.xml"));
    QCOMPARE(bare.settingFileInWorkspace(), m_workspace + "/img.xml");
    bare.setBundlePath(m_bundle);
    QCOMPARE(bare.settingFileInApp(), m_resources + "/data/img.xml");
    QVERIFY(bare.onSave());
    QCOMPARE(srcOf(m_workspace + "/img.xml"), QString());
}

// The file's name is never typed, the link only while it is chosen: a field that takes no typing
// has the palette's read-only look and no stop for Tab, and gets both back when it is typable.
void TestPrivateView::fieldsThatCannotBeTypedInLookReadOnly()
{
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    view->show();
    const auto looksReadOnly = [](const QLineEdit *field) {
        return field->isReadOnly() && !(field->focusPolicy() & Qt::TabFocus) &&
               field->palette().color(QPalette::Base) == field->palette().color(QPalette::Window);
    };
    QCOMPARE(view->selectedTag(), int(PrivateView::FileTag));
    QVERIFY(looksReadOnly(view->txtFile()));
    QVERIFY(looksReadOnly(view->txtLink()));
    QTest::keyClicks(view->txtLink(), "typed");
    QCOMPARE(view->txtLink()->text(), QString());

    qobject_cast<QRadioButton *>(view->mxtChoose()->button(PrivateView::LinkTag))->click();
    QVERIFY(!looksReadOnly(view->txtLink()));
    QVERIFY(view->txtLink()->focusPolicy() & Qt::TabFocus);
    QCOMPARE(view->txtLink()->palette().color(QPalette::Base),
             view->palette().color(QPalette::Base));
    QVERIFY(looksReadOnly(view->txtFile()));

    // A marked link loses its mark, and becomes read-only, when the file is chosen again.
    view->txtLink()->setFocus();
    QTest::keyClicks(view->txtLink(), "javascript:x");
    QVERIFY(RoomMark::isMarked(view->txtLink()));
    qobject_cast<QRadioButton *>(view->mxtChoose()->button(PrivateView::FileTag))->click();
    QVERIFY(!RoomMark::isMarked(view->txtLink()));
    QVERIFY(looksReadOnly(view->txtLink()));
}

void TestPrivateView::linkThatWillNotWorkIsMarkedButSaved_data()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<bool>("marked");
    QTest::newRow("https is not marked") << "https://example.com/a.png" << false;
    QTest::newRow("javascript: is marked") << "javascript:alert(1)" << true;
    QTest::newRow("no scheme is marked") << "www.example.com/a.png" << true;
    QTest::newRow("a file: link is marked") << "file:///tmp/a.png" << true;
}

// The mark tells at once; the link is still saved as typed; choosing the file clears the mark.
void TestPrivateView::linkThatWillNotWorkIsMarkedButSaved()
{
    QFETCH(QString, link);
    QFETCH(bool, marked);
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    view->show();
    qobject_cast<QRadioButton *>(view->mxtChoose()->button(PrivateView::LinkTag))->click();
    view->txtLink()->setFocus();
    QTest::keyClicks(view->txtLink(), link);
    QCOMPARE(srcOf(m_workspace + "/img.xml"), link);
    QCOMPARE(RoomMark::isMarked(view->txtLink()), marked);
    QCOMPARE(view->txtLink()->toolTip().isEmpty(), !marked);
    qobject_cast<QRadioButton *>(view->mxtChoose()->button(PrivateView::FileTag))->click();
    QVERIFY(!RoomMark::isMarked(view->txtLink()));
}

void TestPrivateView::fileThatIsNoImageIsRefusedWhenChosen_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    const QString notAnImage = QStringLiteral("Diese Datei ist kein lesbares Bild.");
    QTest::newRow("text named .png") << "notes.png" << QByteArray("plain words, no pixels")
                                     << notAnImage;
    QTest::newRow("empty file named .jpg") << "empty.jpg" << QByteArray() << notAnImage;
    QTest::newRow("a PNG named .gif is still an image")
        << "swapped.gif" << imageBytes("swapped", "x.png") << QString();
    QTest::newRow("a BMP named .png is no image the book takes")
        << "bitmap.png" << QByteArray("BM") + QByteArray(60, '\0') << notAnImage;
}

// The image chooser's answer is checked as a drop is: a file that is no JPEG, GIF or PNG is
// refused with the drop's reason, in the window's language, and nothing reaches the workspace.
void TestPrivateView::fileThatIsNoImageIsRefusedWhenChosen()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    const QString chosen = m_dir->filePath("outside/" + name);
    QVERIFY(writeAll(chosen, bytes));
    const QStringList before = QDir(m_workspace).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    const QByteArray description = readAll(m_workspace + "/img.xml");
    QString message = "none";
    ModalAnswer::next([&](QWidget *modal) {
        if (auto *box = qobject_cast<QMessageBox *>(modal)) {
            message = box->text();
            QTest::keyClick(box, Qt::Key_Return);
        }
    });
    QSignalSpy refreshed(view.get(), &PrivateView::locateFileRefreshed);
    view->refreshLocateFile(chosen);
    QCOMPARE(refreshed.count(), 1);
    if (reason.isEmpty()) {
        QCOMPARE(refreshed.first().at(1).toBool(), true);
        QCOMPARE(readAll(m_workspace + "/" + name), bytes);
        return;
    }
    QCOMPARE(message, reason);
    QCOMPARE(refreshed.first().at(1).toBool(), false);
    QCOMPARE(QDir(m_workspace).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), before);
    QCOMPARE(readAll(m_workspace + "/img.xml"), description);
    QCOMPARE(view->txtFile()->text(), QString());
    QCOMPARE(owner.saves, 0);
}

void TestPrivateView::imageFactsShowBesideTheName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("format"); // empty: text bytes, not an image
    QTest::addColumn<QString>("then");      // what happens after the file was chosen
    QTest::addColumn<QString>("facts");
    QTest::addColumn<QSize>("thumbnail"); // empty: no thumbnail shown
    QTest::newRow("png: size in pixels and a thumbnail") << "wide.png" << QByteArray("PNG") << ""
                                                         << "64 × 48 Pixel" << QSize(32, 24);
    QTest::newRow("jpeg: size in pixels and a thumbnail") << "tall.jpeg" << QByteArray("JPG") << ""
                                                          << "30 × 60 Pixel" << QSize(16, 32);
    QTest::newRow("file gone from the workspace: says it is missing")
        << "wide.png" << QByteArray("PNG") << "remove"
        << "Die Bilddatei fehlt." << QSize();
    QTest::newRow("link chosen: nothing said") << "wide.png" << QByteArray("PNG") << "link"
                                               << "" << QSize();
}

void TestPrivateView::imageFactsShowBesideTheName()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, format);
    QFETCH(QString, then);
    QFETCH(QString, facts);
    QFETCH(QSize, thumbnail);
    Owner owner;
    auto view = makeView(m_workspace, &owner);
    QVERIFY(view && view->lblImageFacts() && view->lblThumbnail());
    QVERIFY(view->lblImageFacts()->text().isEmpty()); // nothing chosen yet
    QVERIFY(!view->lblThumbnail()->isVisibleTo(view.get()));

    const QSize size = name.startsWith("tall") ? QSize(30, 60) : QSize(64, 48);
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::darkRed);
    const QString chosen = image(name, QByteArray());
    QVERIFY(picture.save(chosen, format.constData()));
    view->refreshLocateFile(chosen);
    QCOMPARE(view->txtFile()->text(), name);
    if (then == "remove") {
        QVERIFY(QFile::remove(m_workspace + "/" + name));
        view->mxtChoose()->button(PrivateView::FileTag)->click();
    } else if (then == "link") {
        view->mxtChoose()->button(PrivateView::LinkTag)->click();
    }
    QCOMPARE(view->lblImageFacts()->text(), facts);
    QCOMPARE(view->lblThumbnail()->isVisibleTo(view.get()), !thumbnail.isEmpty());
    if (!thumbnail.isEmpty()) {
        const QPixmap shown = view->lblThumbnail()->pixmap();
        QCOMPARE(shown.deviceIndependentSize().toSize(), thumbnail);
        QCOMPARE(shown.toImage().pixelColor(thumbnail.width() / 2, thumbnail.height() / 2).red() >
                     100,
                 true);
    }
}

QTEST_MAIN(TestPrivateView)
#include "tst_privateview.moc"
