// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "tableviewprotocol.h"

#include "numbertext.h"

#include <QDomNamedNodeMap>
#include <QItemSelectionModel>
#include <QLoggingCategory>
#include <QMetaMethod>

#include <exception>
#include <thread>

Q_LOGGING_CATEGORY(lcTable, "img.table", QtWarningMsg)

TableViewProtocol::TableViewProtocol(QObject *parent)
    : QAbstractTableModel(parent)
{}

TableViewProtocol::TableViewProtocol(const QDomElement &element, int type, QObject *ower,
                                     QObject *parent)
    : QAbstractTableModel(parent)
{
    listFromElement(element, type);
    m_ower = ower;
}

void TableViewProtocol::listFromElement(const QDomElement &element, int type)
{
    beginResetModel();
    m_list.clear();
    for (QDomElement item = element.firstChildElement(); !item.isNull();
         item = item.nextSiblingElement())
        m_list.append(itemFromElement(item, type));
    endResetModel();
}

TableViewProtocol::Row TableViewProtocol::itemFromElement(const QDomElement &element, int type)
{
    // Only the first row read into an empty key list defines the columns.
    const bool collect = m_keys.isEmpty();
    if (collect) {
        m_keys.clear();
        m_titles.clear();
    }
    Row row;
    const auto addField = [&](const QString &name, const QString &value) {
        if (collect) {
            m_keys.append(name);
            m_titles.insert(name, name);
        }
        row.insert(name, value);
    };
    if (type == Attributes) {
        const QDomNamedNodeMap attributes = element.attributes();
        for (int i = 0; i < attributes.count(); ++i) {
            const QDomAttr attribute = attributes.item(i).toAttr();
            addField(attribute.name(), attribute.value());
        }
    } else if (type == ChildElements) {
        for (QDomElement child = element.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement())
            addField(child.tagName(), child.text());
    }
    return row;
}

void TableViewProtocol::setKeys(const QStringList &keys)
{
    beginResetModel();
    m_keys = keys;
    endResetModel();
}

void TableViewProtocol::setTitles(const QMap<QString, QString> &titles)
{
    m_titles = titles;
}

void TableViewProtocol::setList(const QList<Row> &list)
{
    beginResetModel();
    m_list = list;
    endResetModel();
}

QVariant TableViewProtocol::objectValueForTableColumn(const QString &identifier, int row) const
{
    if (identifier.isNull())
        return {};
    const int column = NumberText::intValue(identifier);
    if (column < 0 || column >= m_keys.size() || row < 0 || row >= m_list.size())
        return {};
    const Row &fields = m_list.at(row);
    const auto found = fields.constFind(m_keys.at(column));
    if (found == fields.constEnd())
        return {};
    return *found;
}

QString TableViewProtocol::dataCellTitle(const QString &identifier, int row) const
{
    const QString value = objectValueForTableColumn(identifier, row).toString();
    return value.isEmpty() ? QString() : value;
}

void TableViewProtocol::tableViewSelectionDidChange(QObject *notificationObject)
{
    QObject *owner = m_ower;
    if (!owner)
        return;
    const int index = owner->metaObject()->indexOfMethod("tableViewSelectionDidChange(QObject*)");
    if (index < 0) {
        qCDebug(lcTable) << "owner has no selection handler";
        return;
    }
    const QMetaMethod method = owner->metaObject()->method(index);
    try {
        std::thread([owner, method, notificationObject] {
            method.invoke(owner, Qt::DirectConnection, Q_ARG(QObject *, notificationObject));
        }).detach();
    } catch (const std::exception &error) {
        qCDebug(lcTable) << "could not start the selection call:" << error.what();
    }
}

void TableViewProtocol::observeSelection(QItemSelectionModel *selection)
{
    connect(selection, &QItemSelectionModel::selectionChanged, this,
            [this, selection] { tableViewSelectionDidChange(selection); });
}

int TableViewProtocol::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : numberOfRowsInTableView();
}

int TableViewProtocol::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_keys.size());
}

QVariant TableViewProtocol::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const QString identifier = QString::number(index.column());
    if (role == Qt::DisplayRole) {
        const QString title = dataCellTitle(identifier, index.row());
        return title.isNull() ? QVariant() : QVariant(title);
    }
    if (role == Qt::EditRole)
        return objectValueForTableColumn(identifier, index.row());
    return {};
}
