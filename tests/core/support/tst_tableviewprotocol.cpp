// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "tableviewprotocol.h"
#include "testenv.h"

#include <QDomDocument>
#include <QItemSelectionModel>
#include <QMutex>
#include <QThread>
#include <QtTest>

#include <atomic>

namespace {

QDomElement parse(QDomDocument &document, const QString &xml)
{
    document.setContent(xml);
    return document.documentElement();
}

const QString kTwoItems =
    QStringLiteral("<list>"
                   "<item><name>a</name><title>t</title></item>"
                   "<item><name>b</name><title>u</title><extra>x</extra></item>"
                   "</list>");

} // namespace

// Records the selection changes forwarded to it.
class SelectionOwner : public QObject
{
    Q_OBJECT
public:
    std::atomic<int> calls{0};
    QMutex mutex;
    QThread *thread = nullptr;
    QObject *object = nullptr;

    Q_INVOKABLE void tableViewSelectionDidChange(QObject *notificationObject)
    {
        QMutexLocker lock(&mutex);
        thread = QThread::currentThread();
        object = notificationObject;
        ++calls;
    }
};

class TestTableViewProtocol : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { TestEnv::isolate(); }

    void listWithoutChildrenGivesNoRowsAndNoKeys();
    void childElementsBecomeFieldsAndKeys();
    void attributesAreReadWithTypeOne();
    void itemWithChildrenButNoAttributesGivesAnEmptyRowWithTypeOne();
    void otherTypesGiveEmptyRows();
    void columnIdentifiers_data();
    void columnIdentifiers();
    void emptyValueLeavesTheCellWithoutTitle();
    void rowsReadAfterTheFirstNeverAddColumns();
    void laterListsKeepTheFirstColumnsUntilKeysAreCleared();
    void repeatedFieldNameAddsTheKeyTwiceAndKeepsTheLastValue();
    void keysAndTitlesCanBeReplaced();
    void modelServesTheTableByColumnNumber();
    void selectionChangeReachesTheOwnerOnAnotherThread();
    void selectionChangeWithoutOwnerDoesNothing();
};

void TestTableViewProtocol::listWithoutChildrenGivesNoRowsAndNoKeys()
{
    QDomDocument document;
    TableViewProtocol model(parse(document, "<list/>"), TableViewProtocol::ChildElements, nullptr);
    QCOMPARE(model.numberOfRowsInTableView(), 0);
    QCOMPARE(model.rowCount(), 0);
    QVERIFY(model.getKeys().isEmpty());
    QCOMPARE(model.columnCount(), 0);
}

void TestTableViewProtocol::childElementsBecomeFieldsAndKeys()
{
    QDomDocument document;
    TableViewProtocol model(
        parse(document, "<list><item><name>a</name><title>t</title></item></list>"), 0, nullptr);
    QCOMPARE(model.numberOfRowsInTableView(), 1);
    const TableViewProtocol::Row expected{{"name", "a"}, {"title", "t"}};
    QCOMPARE(model.list().first(), expected);
    QCOMPARE(model.getKeys(), QStringList({"name", "title"}));
    QCOMPARE(model.objectValueForTableColumn("1", 0), QVariant(QStringLiteral("t")));
    QCOMPARE(model.objectValueForTableColumn("0", 0), QVariant(QStringLiteral("a")));
    const QMap<QString, QString> titles{{"name", "name"}, {"title", "title"}};
    QCOMPARE(model.getTitles(), titles);
}

void TestTableViewProtocol::attributesAreReadWithTypeOne()
{
    QDomDocument document;
    TableViewProtocol model(parse(document, "<list><item name=\"a\" title=\"t\"/></list>"),
                            TableViewProtocol::Attributes, nullptr);
    const TableViewProtocol::Row expected{{"name", "a"}, {"title", "t"}};
    QCOMPARE(model.list().first(), expected);
    QCOMPARE(model.getKeys().size(), 2);
    QVERIFY(model.getKeys().contains("name") && model.getKeys().contains("title"));
}

void TestTableViewProtocol::itemWithChildrenButNoAttributesGivesAnEmptyRowWithTypeOne()
{
    QDomDocument document;
    TableViewProtocol model(parse(document, "<list><item><name>a</name></item></list>"), 1,
                            nullptr);
    QCOMPARE(model.numberOfRowsInTableView(), 1);
    QVERIFY(model.list().first().isEmpty());
    QVERIFY(model.getKeys().isEmpty());
}

void TestTableViewProtocol::otherTypesGiveEmptyRows()
{
    QDomDocument document;
    TableViewProtocol model(parse(document, kTwoItems), 7, nullptr);
    QCOMPARE(model.numberOfRowsInTableView(), 2);
    QVERIFY(model.list().at(0).isEmpty());
    QVERIFY(model.list().at(1).isEmpty());
    QVERIFY(model.getKeys().isEmpty());
}

void TestTableViewProtocol::columnIdentifiers_data()
{
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("column 0 shows the first key") << "0" << QVariant(QStringLiteral("a"));
    QTest::newRow("column 1 shows the second key") << "1" << QVariant(QStringLiteral("t"));
    QTest::newRow("an identifier that is no number reads as column 0")
        << "name" << QVariant(QStringLiteral("a"));
    QTest::newRow("a leading number counts") << " 1st" << QVariant(QStringLiteral("t"));
    QTest::newRow("column -1 shows nothing") << "-1" << QVariant();
    QTest::newRow("a column beyond the keys shows nothing") << "2" << QVariant();
    QTest::newRow("a null column shows nothing") << QString() << QVariant();
}

void TestTableViewProtocol::columnIdentifiers()
{
    QFETCH(QString, identifier);
    QFETCH(QVariant, value);
    QDomDocument document;
    TableViewProtocol model(parse(document, kTwoItems), 0, nullptr);
    QCOMPARE(model.objectValueForTableColumn(identifier, 0), value);
    QCOMPARE(model.dataCellTitle(identifier, 0), value.toString());
    QCOMPARE(model.dataCellTitle(identifier, 0).isNull(), !value.isValid());
}

void TestTableViewProtocol::emptyValueLeavesTheCellWithoutTitle()
{
    QDomDocument document;
    TableViewProtocol model(
        parse(document, "<list><item><name></name><title>t</title></item></list>"), 0, nullptr);
    QCOMPARE(model.objectValueForTableColumn("0", 0), QVariant(QString()));
    QVERIFY(model.dataCellTitle("0", 0).isNull());
    QVERIFY(!model.data(model.index(0, 0), Qt::DisplayRole).isValid());
    QCOMPARE(model.data(model.index(0, 1), Qt::DisplayRole), QVariant(QStringLiteral("t")));
    // The editable value is the empty text, not a missing one.
    QVERIFY(model.data(model.index(0, 0), Qt::EditRole).isValid());
}

void TestTableViewProtocol::rowsReadAfterTheFirstNeverAddColumns()
{
    QDomDocument document;
    TableViewProtocol model(parse(document, kTwoItems), 0, nullptr);
    QCOMPARE(model.getKeys(), QStringList({"name", "title"}));
    QCOMPARE(model.columnCount(), 2);
    // The second row keeps its extra field, but no column shows it.
    QCOMPARE(model.list().at(1).value("extra"), QStringLiteral("x"));
    QCOMPARE(model.objectValueForTableColumn("2", 1), QVariant());
    // A row without a field of a column shows nothing there.
    QDomDocument other;
    TableViewProtocol sparse(parse(other, "<list><item><name>a</name><title>t</title></item>"
                                          "<item><name>b</name></item></list>"),
                             0, nullptr);
    QCOMPARE(sparse.objectValueForTableColumn("1", 1), QVariant());
}

void TestTableViewProtocol::laterListsKeepTheFirstColumnsUntilKeysAreCleared()
{
    QDomDocument document;
    TableViewProtocol model(parse(document, kTwoItems), 0, nullptr);
    QDomDocument other;
    const QDomElement attributes = parse(other, "<list><item id=\"1\" label=\"one\"/></list>");
    model.listFromElement(attributes, 1);
    QCOMPARE(model.getKeys(), QStringList({"name", "title"}));
    QCOMPARE(model.objectValueForTableColumn("0", 0), QVariant());
    model.setKeys({});
    model.listFromElement(attributes, 1);
    QCOMPARE(model.getKeys().size(), 2);
    QVERIFY(model.getKeys().contains("id") && model.getKeys().contains("label"));
}

void TestTableViewProtocol::repeatedFieldNameAddsTheKeyTwiceAndKeepsTheLastValue()
{
    QDomDocument document;
    TableViewProtocol model(parse(document, "<list><item><v>1</v><v>2</v></item></list>"), 0,
                            nullptr);
    QCOMPARE(model.getKeys(), QStringList({"v", "v"}));
    QCOMPARE(model.list().first().value("v"), QStringLiteral("2"));
    QCOMPARE(model.objectValueForTableColumn("0", 0), QVariant(QStringLiteral("2")));
    QCOMPARE(model.objectValueForTableColumn("1", 0), QVariant(QStringLiteral("2")));
}

void TestTableViewProtocol::keysAndTitlesCanBeReplaced()
{
    QDomDocument document;
    TableViewProtocol model(parse(document, kTwoItems), 0, nullptr);
    QStringList keys{"title", "name"};
    model.setKeys(keys);
    keys.clear();
    QCOMPARE(model.getKeys(), QStringList({"title", "name"}));
    QCOMPARE(model.objectValueForTableColumn("0", 1), QVariant(QStringLiteral("u")));
    model.setTitles({{"title", "Title"}});
    const QMap<QString, QString> titles{{"title", "Title"}};
    QCOMPARE(model.getTitles(), titles);
    // Replacing the rows directly.
    model.setList({{{"title", "z"}}});
    QCOMPARE(model.numberOfRowsInTableView(), 1);
    QCOMPARE(model.objectValueForTableColumn("0", 0), QVariant(QStringLiteral("z")));
}

void TestTableViewProtocol::modelServesTheTableByColumnNumber()
{
    QDomDocument document;
    TableViewProtocol model(parse(document, kTwoItems), 0, nullptr);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.columnCount(), 2);
    QCOMPARE(model.data(model.index(1, 0)), QVariant(QStringLiteral("b")));
    QCOMPARE(model.data(model.index(1, 1)), QVariant(QStringLiteral("u")));
    QCOMPARE(model.rowCount(model.index(0, 0)), 0);
    QCOMPARE(model.data(QModelIndex()), QVariant());
    // Reading a new list resets the model for its views.
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.listFromElement(document.documentElement(), 0);
    QCOMPARE(reset.count(), 1);
}

void TestTableViewProtocol::selectionChangeReachesTheOwnerOnAnotherThread()
{
    QDomDocument document;
    SelectionOwner owner;
    TableViewProtocol model(parse(document, kTwoItems), 0, &owner);
    QCOMPARE(model.ower(), &owner);
    QItemSelectionModel selection(&model);
    model.observeSelection(&selection);
    selection.select(model.index(1, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QTRY_COMPARE(owner.calls.load(), 1);
    QMutexLocker lock(&owner.mutex);
    QVERIFY(owner.thread && owner.thread != qApp->thread());
    QCOMPARE(owner.object, &selection);
}

void TestTableViewProtocol::selectionChangeWithoutOwnerDoesNothing()
{
    QDomDocument document;
    TableViewProtocol model(parse(document, kTwoItems), 0, nullptr);
    model.tableViewSelectionDidChange(&model);
    // An owner without the handler is skipped as well.
    QObject plain;
    model.setOwer(&plain);
    model.tableViewSelectionDidChange(&model);
    QCOMPARE(model.ower(), &plain);
}

QTEST_MAIN(TestTableViewProtocol)
#include "tst_tableviewprotocol.moc"
