// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDomElement>
#include <QString>

#include <vector>

// The settings object of the page, built from the description XML by plain string building:
// no spaces, no line breaks, members in document order, keys never escaped.

// The kind of a setting named by its "type" attribute, compared case-sensitively.
enum PropertyType : int {
    PropertyText = 0,
    PropertyNumber = 1,
    PropertyColor = 2,
    PropertyBool = 3,
    PropertyBorder = 4,
    PropertyFile = 5,
    PropertyNone = 6, // not a value: the element is a keyed object
};

int propertyTypeFromString(const QString &name);

// Text made safe inside a script string enclosed by quote ('\'' or '"'; any other character
// escapes no quote). Line breaks become "<br/>", a written "\u" escape survives the doubling of
// backslashes (a "\U" comes back as "\u"), and "&lt;", "&gt;", "&amp;" are turned back into
// characters, "&amp;" last.
QString replaceStringForJS(const QString &text, char quote);

namespace XmlJson {

// Appends to out what replaceStringForJS(text, quote) answers, without temporaries.
void appendEscapedForJS(QString &out, QStringView text, char quote);

// Appends the JSON of element to out. Files named by "file" values are looked for as given and
// under workSpace; one that exists is written under relatePath. Works without recursion, so
// any depth of nesting is safe.
void appendJson(QString &out, const QDomElement &element, const QString &relatePath,
                const QString &workSpace);

// The JSON of the root element of a description text: what appendJson gives for the parsed
// document, read in one pass without building a tree. A null string when the text is not
// well-formed XML or nests deeper than MaxDescriptionDepth (as for a document that does not
// parse).
QString jsonFromXmlText(const QByteArray &xml, const QString &relatePath, const QString &workSpace);

// The members a position writes into a description: "opacity" and "layout" under the root, and
// "left", "top", "width" and "height" in the last "basic" of every "properties" under the root.
enum class PositionField : quint8 { Opacity, Layout, Left, Top, Width, Height };

// Where one of them sits in the JSON of a description: the characters from begin to end are
// the member as the description has it. Written with a position, the element holds one text
// and the member becomes appendTextMember(name, code, that text).
struct PositionPlace
{
    qsizetype begin = 0;
    qsizetype end = 0;
    PositionField field = PositionField::Opacity;
    int code = PropertyNone; // of the element's "type"; PropertyNone for a container
    QString name;
};

enum class TextReading { Done, Malformed, NeedsTree };

// The JSON of the root element of an already decoded description (an encoding it declares is
// ignored), read in one pass for the preview (no relative path), with the places of the position
// in document order. NeedsTree for the rare shapes that only the parsed tree converts (a DTD, an
// entity reference, an element inside a typed one); json and places are then unusable.
TextReading jsonWithPositionPlaces(const QString &text, QString *json,
                                   std::vector<PositionPlace> *places);

// Appends the member of an element of this name and type code whose only content is text.
void appendTextMember(QString &out, const QString &name, int code, const QString &text);

} // namespace XmlJson
