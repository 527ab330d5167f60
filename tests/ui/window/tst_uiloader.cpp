// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "privateview.h"
#include "roundview.h"
#include "simplecell.h"
#include "specialentries.h"
#include "testenv.h"
#include "transitionbgview.h"
#include "uiloader.h"

#include <QButtonGroup>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kPrivateViewUi = QStringLiteral(IMG_SOURCE_DIR "/resources/en.lproj/PrivateView.ui");

QString writeFile(const QTemporaryDir &dir, const QString &name, const QByteArray &bytes)
{
    const QString path = dir.filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
    return path;
}

} // namespace

class TestUiLoader : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { TestEnv::isolate(); }

    void createsTheBundlesWidgetsByClassName_data();
    void createsTheBundlesWidgetsByClassName();
    void leavesOtherClassesToQt();
    void privateViewDescriptionBuildsAPrivateViewWithItsControls();
    void drawnWidgetsInADescriptionAreBuilt();
    void missingOrBrokenDescriptionGivesNull_data();
    void missingOrBrokenDescriptionGivesNull();
    void descriptionThatIsNoRegularFile_data();
    void descriptionThatIsNoRegularFile();
};

void TestUiLoader::createsTheBundlesWidgetsByClassName_data()
{
    QTest::addColumn<QString>("className");
    for (const QString &name : UiLoader::customWidgetClasses())
        QTest::newRow(qPrintable(name)) << name;
}

void TestUiLoader::createsTheBundlesWidgetsByClassName()
{
    QFETCH(QString, className);
    UiLoader loader;
    std::unique_ptr<QWidget> widget(loader.createWidget(className, nullptr, "made"));
    QVERIFY(widget);
    QCOMPARE(QString::fromLatin1(widget->metaObject()->className()), className);
    QCOMPARE(widget->objectName(), QStringLiteral("made"));
}

void TestUiLoader::leavesOtherClassesToQt()
{
    UiLoader loader;
    std::unique_ptr<QWidget> label(loader.createWidget("QLabel", nullptr, "label"));
    QVERIFY(qobject_cast<QLabel *>(label.get()));
    QVERIFY(!loader.createWidget("NoSuchWidget", nullptr, "none"));
}

void TestUiLoader::privateViewDescriptionBuildsAPrivateViewWithItsControls()
{
    UiLoader loader;
    std::unique_ptr<QWidget> top(loader.loadFile(kPrivateViewUi));
    auto *view = qobject_cast<PrivateView *>(top.get());
    QVERIFY(view);
    auto *group = view->findChild<QButtonGroup *>("mxtChoose");
    QVERIFY(group);
    QCOMPARE(group->buttons().size(), 2);
    auto *link = view->findChild<QRadioButton *>("rdoLink");
    auto *file = view->findChild<QRadioButton *>("rdoFile");
    QVERIFY(link && file);
    QCOMPARE(link->property("tag").toInt(), 0);
    QCOMPARE(file->property("tag").toInt(), 1);
    QVERIFY(qobject_cast<SimpleCell *>(view->findChild<QWidget *>("btnBrowse")));
    QVERIFY(qobject_cast<SimpleCell *>(view->findChild<QWidget *>("btnSave")));
    QVERIFY(view->findChild<QLineEdit *>("txtLink"));
    QVERIFY(view->findChild<QLineEdit *>("txtFile"));
    QCOMPARE(view->findChild<SimpleCell *>("btnBrowse")->text(), QStringLiteral("Br&owse..."));
}

void TestUiLoader::drawnWidgetsInADescriptionAreBuilt()
{
    QTemporaryDir dir;
    const QString path = writeFile(dir, "panel.ui", R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>Panel</class>
 <widget class="TransitionBGView" name="Panel">
  <widget class="RoundView" name="frame"/>
  <widget class="SimpleCell" name="button">
   <property name="text"><string>Go</string></property>
  </widget>
 </widget>
</ui>
)");
    UiLoader loader;
    std::unique_ptr<QWidget> top(loader.loadFile(path));
    QVERIFY(qobject_cast<TransitionBGView *>(top.get()));
    QVERIFY(top->findChild<RoundView *>("frame"));
    auto *button = top->findChild<SimpleCell *>("button");
    QVERIFY(button);
    QCOMPARE(button->text(), QStringLiteral("Go"));
}

void TestUiLoader::missingOrBrokenDescriptionGivesNull_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("missing file") << QByteArray();
    QTest::newRow("empty file") << QByteArray("");
    QTest::newRow("not XML") << QByteArray::fromHex("0001626967ff00fe");
    QTest::newRow("truncated XML")
        << QByteArray("<?xml version=\"1.0\"?><ui version=\"4.0\"><widget");
}

void TestUiLoader::missingOrBrokenDescriptionGivesNull()
{
    QFETCH(QByteArray, content);
    QTemporaryDir dir;
    const QString path =
        content.isNull() ? dir.filePath("none.ui") : writeFile(dir, "broken.ui", content);
    UiLoader loader;
    QWidget *widget = loader.loadFile(path);
    QVERIFY(!widget);
    delete widget;
}

// A description is read without waiting: a FIFO is as good as missing, a packager's link to a
// regular file is followed.
void TestUiLoader::descriptionThatIsNoRegularFile_data()
{
    using namespace SpecialEntries;
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<bool>("builds");
    QTest::newRow("a FIFO gives null, without waiting for a writer") << Fifo << false;
    QTest::newRow("a link to a FIFO gives null") << LinkToFifo << false;
    QTest::newRow("a folder gives null") << Folder << false;
    QTest::newRow("a packager's link to a description is followed") << LinkToFile << true;
}

void TestUiLoader::descriptionThatIsNoRegularFile()
{
    QFETCH(SpecialEntries::Kind, kind);
    QFETCH(bool, builds);
    QFile source(kPrivateViewUi);
    QVERIFY(source.open(QIODevice::ReadOnly));
    QTemporaryDir dir;
    QVERIFY(SpecialEntries::make(kind, dir.filePath("PrivateView.ui"), dir.filePath("packaged"),
                                 source.readAll()));
    UiLoader loader;
    std::unique_ptr<QWidget> top(loader.loadFile(dir.filePath("PrivateView.ui")));
    QCOMPARE(bool(qobject_cast<PrivateView *>(top.get())), builds);
}

QTEST_MAIN(TestUiLoader)
#include "tst_uiloader.moc"
