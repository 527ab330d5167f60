// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "xmlhelpers.h"

#include <QXmlStreamReader>

namespace {

// The line of the first element nested deeper than MaxDescriptionDepth, or 0 when there is none
// (text that is not well-formed ends the pass early; the parser then says why). Names are read
// as the parser reads them, without namespaces, so both stop at the same error.
template<typename Text> int lineTooDeep(const Text &xml)
{
    QXmlStreamReader reader(xml);
    reader.setNamespaceProcessing(false);
    int depth = 0;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement && ++depth > MaxDescriptionDepth)
            return int(reader.lineNumber());
        if (token == QXmlStreamReader::EndElement)
            --depth;
    }
    return 0;
}

} // namespace

QDomElement generateXmlWithType(QDomDocument &doc, const QString &name, const QString &value,
                                const QString &type)
{
    QDomElement element = doc.createElement(name);
    element.setAttribute(QStringLiteral("type"), type);
    if (!value.isEmpty())
        element.appendChild(doc.createTextNode(value));
    return element;
}

QVariantMap xml2dict(const QDomElement &element)
{
    QVariantMap dict;
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.childNodes().size() < 2)
            dict.insert(child.tagName(), child.text());
        else
            dict.insert(child.tagName(), xml2dict(child));
    }
    return dict;
}

QDomElement dict2xml(QDomDocument &doc, const QVariantMap &dict, const QString &name)
{
    QDomElement element = doc.createElement(name);
    for (auto it = dict.cbegin(); it != dict.cend(); ++it) {
        if (it.value().typeId() == QMetaType::QVariantMap) {
            element.appendChild(dict2xml(doc, it.value().toMap(), it.key()));
            continue;
        }
        QDomElement child = doc.createElement(it.key());
        const QString text = it.value().toString();
        if (!text.isEmpty())
            child.appendChild(doc.createTextNode(text));
        element.appendChild(child);
    }
    return element;
}

QString replaceStringForXML(const QString &text)
{
    QString result;
    result.reserve(text.size() + 16);
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '\r':
        case '\n':
            break;
        case '<':
            result += QLatin1String("&lt;");
            break;
        case '>':
            result += QLatin1String("&gt;");
            break;
        default:
            result += c;
        }
    }
    return result;
}

QDomDocument parseDescriptionXml(const QByteArray &xml)
{
    QDomDocument doc;
    if (lineTooDeep(xml) || !doc.setContent(xml))
        return QDomDocument();
    return doc;
}

QDomDocument parseDescriptionXml(const QString &text, QString *errorMessage, int *errorLine)
{
    if (const int line = lineTooDeep(text)) {
        *errorMessage = QStringLiteral("elements nested deeper than %1").arg(MaxDescriptionDepth);
        *errorLine = line;
        return QDomDocument();
    }
    QDomDocument doc;
    if (!doc.setContent(text, false, errorMessage, errorLine))
        return QDomDocument();
    return doc;
}
