// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QAbstractTableModel>
#include <QDomElement>
#include <QList>
#include <QMap>
#include <QPointer>
#include <QStringList>

class QItemSelectionModel;

// Rows for a table out of a list element of a settings description: every child element of the
// list is one row, a map from field name to text. The field names of the first row read become
// the columns, addressed by number (column i shows the field named by the i-th key).
//
// Selection changes of a table showing the model are forwarded to the owner on a new, detached
// thread: the owner's invokable tableViewSelectionDidChange(QObject*) receives the selection
// model and must bring any interface work back to the main thread itself.
class TableViewProtocol : public QAbstractTableModel
{
    Q_OBJECT
public:
    // Where the fields of a row come from.
    enum SourceLayout { ChildElements = 0, Attributes = 1 };
    using Row = QMap<QString, QString>;

    explicit TableViewProtocol(QObject *parent = nullptr);
    TableViewProtocol(const QDomElement &element, int type, QObject *ower,
                      QObject *parent = nullptr);

    // Replaces the rows by those of the element's children, in document order. Columns found
    // before are kept; clear them with setKeys({}) when the new rows differ in shape.
    void listFromElement(const QDomElement &element, int type);
    // One row: the child elements (ChildElements) or the attributes (Attributes) of element as
    // name to text; any other type gives an empty row. Collects the keys and titles when none
    // are known yet.
    Row itemFromElement(const QDomElement &element, int type);

    QStringList getKeys() const { return m_keys; }
    void setKeys(const QStringList &keys);
    // A title per key, for the owner's use; filled with key = title.
    QMap<QString, QString> getTitles() const { return m_titles; }
    void setTitles(const QMap<QString, QString> &titles);

    QList<Row> list() const { return m_list; }
    void setList(const QList<Row> &list);
    // Not owned; must outlive the model.
    QObject *ower() const { return m_ower; }
    void setOwer(QObject *ower) { m_ower = ower; }

    int numberOfRowsInTableView() const { return int(m_list.size()); }
    // The value of the row's field for the column whose identifier is the decimal text of its
    // number (a text that is no number reads as 0); invalid for a null identifier, a column
    // outside the keys, a row outside the list or a row without that field.
    QVariant objectValueForTableColumn(const QString &identifier, int row) const;
    // The title a cell shows: the value when it is not empty, else a null text.
    QString dataCellTitle(const QString &identifier, int row) const;

    // Forwards a selection change to the owner on a detached thread.
    void tableViewSelectionDidChange(QObject *notificationObject);
    // Forwards the selection changes of a table's selection model from now on.
    void observeSelection(QItemSelectionModel *selection);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    // DisplayRole: dataCellTitle; EditRole: objectValueForTableColumn.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    QList<Row> m_list;
    QPointer<QObject> m_ower;
    QStringList m_keys;
    QMap<QString, QString> m_titles;
};
