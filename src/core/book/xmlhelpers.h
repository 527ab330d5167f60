// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDomDocument>
#include <QDomElement>
#include <QString>
#include <QVariantMap>

// Helpers around the description XML: every setting is an element whose text is its value and
// whose "type" attribute names its kind; an element without "type" is a container.
//
// A description nests a handful of levels (info/properties/basic/left). One nested deeper than
// MaxDescriptionDepth elements, the root counting as the first, is damaged, exactly like text
// that is not well-formed: parseDescriptionXml answers a null document for it and the one-pass
// JSON reading a null string. The limit keeps every walk over a document (parsing, saving,
// converting, xml2dict's recursion) short, and the check costs one pass that stops at the first
// element past it.
constexpr int MaxDescriptionDepth = 256;

// A new element of doc named name, with the attribute "type" and the text value (doc by
// reference: a null document is created on first use and must stay the caller's). It is not
// inserted anywhere; the caller appends it.
QDomElement generateXmlWithType(QDomDocument &doc, const QString &name, const QString &value,
                                const QString &type);

// The child elements of element as a map from name to value. A child with fewer than two child
// nodes is a leaf and gives its text; any other child gives a nested map. A later child of the
// same name replaces an earlier one; attributes are not carried over.
QVariantMap xml2dict(const QDomElement &element);

// A new element of doc named name with one child per key of dict, in the map's key order: a map
// value becomes a nested element, any other value an element holding the value's text form.
QDomElement dict2xml(QDomDocument &doc, const QVariantMap &dict, const QString &name);

// Text made safe as element content: line breaks dropped, "<" and ">" written as entities.
// The ampersand and quotes are left to the XML writer.
QString replaceStringForXML(const QString &text);

// The description parsed as one document without whitespace-only text nodes; a null document
// when the text is not well-formed XML or nests deeper than MaxDescriptionDepth.
QDomDocument parseDescriptionXml(const QByteArray &xml);
// The same for text already decoded (an encoding the text declares is then ignored), with why
// and where it failed in errorMessage and errorLine.
QDomDocument parseDescriptionXml(const QString &text, QString *errorMessage, int *errorLine);
