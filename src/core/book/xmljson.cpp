// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "xmljson.h"

#include "numbertext.h"
#include "pluginsettingsinfo.h"
#include "xmlhelpers.h"

#include <QFileInfo>
#include <QXmlStreamReader>
#include <vector>

namespace {

int propertyTypeOf(QStringView name)
{
    static const QLatin1String names[] = {
        QLatin1String("text"), QLatin1String("number"), QLatin1String("color"),
        QLatin1String("bool"), QLatin1String("border"), QLatin1String("file"),
    };
    for (int code = PropertyText; code < PropertyNone; ++code) {
        if (name == names[code])
            return code;
    }
    return PropertyNone;
}

} // namespace

int propertyTypeFromString(const QString &name)
{
    return propertyTypeOf(name);
}

QString replaceStringForJS(const QString &text, char quote)
{
    QString result;
    result.reserve(text.size() + text.size() / 8 + 8);
    XmlJson::appendEscapedForJS(result, text, quote);
    return result;
}

namespace XmlJson {

namespace {

const QLatin1String kUnicodeMarker("${Unicode}");

bool startsWithAt(QStringView text, qsizetype at, QLatin1String what)
{
    return text.size() - at >= what.size() && text.mid(at, what.size()) == what;
}

// The text of an element; the common single text child is shared, not copied.
QString stringValue(const QDomElement &element)
{
    const QDomNode first = element.firstChild();
    if (first.isNull())
        return QString();
    if (first.nextSibling().isNull() &&
        (first.nodeType() == QDomNode::TextNode || first.nodeType() == QDomNode::CDATASectionNode))
        return first.nodeValue();
    return element.text();
}

void appendKey(QString &out, QStringView name)
{
    out += u'"';
    out += name;
    out += QLatin1String("\":");
}

// File values are written as JSON strings: a quote, a backslash, a control character and the
// two separators that end a line of script are escaped, and nothing else. So every legal file
// name (my "best" photo.png among them) gives valid script, and a name without those characters
// gives the very bytes it always did.
void appendFileText(QString &out, QStringView text)
{
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u == u'"' || u == u'\\') {
            out += u'\\';
            out += c;
        } else if (u < 0x20 || u == 0x2028 || u == 0x2029) {
            out += QString::asprintf("\\u%04x", unsigned(u));
        } else {
            out += c;
        }
    }
}

void appendQuotedFile(QString &out, QStringView value)
{
    out += u'"';
    appendFileText(out, value);
    out += u'"';
}

void appendColor(QString &out, QStringView value)
{
    out += u'"';
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] == u'0' && i + 1 < value.size() &&
            (value[i + 1] == u'x' || value[i + 1] == u'X')) {
            out += u'#';
            ++i;
        } else {
            out += value[i];
        }
    }
    out += u'"';
}

void appendBool(QString &out, QStringView value)
{
    const QString lower = value.toString().toLower();
    if (lower == QLatin1String("true") || lower == QLatin1String("false"))
        out += lower;
    else
        out += NumberText::intValue(lower) != 0 ? QLatin1String("true") : QLatin1String("false");
}

// An empty value joined to the workspace names the workspace itself, which exists: in the book
// it becomes the plugin's folder, which the book's loader takes for no image.
bool fileExists(const QString &value, const QString &workSpace)
{
    if (value.isEmpty())
        return QFileInfo::exists(workSpace);
    return QFileInfo::exists(value) || QFileInfo::exists(workSpace + u'/' + value);
}

void appendFile(QString &out, QStringView value, const QString &relatePath,
                const QString &workSpace)
{
    out += u'"';
    if (!relatePath.isEmpty() && fileExists(value.toString(), workSpace)) {
        QStringView base(relatePath);
        while (base.endsWith(u'/'))
            base.chop(1);
        QStringView leaf(value);
        while (leaf.startsWith(u'/'))
            leaf = leaf.mid(1);
        appendFileText(out, base);
        if (!leaf.isEmpty()) {
            out += u'/'; // appended as a path component: nothing is appended for nothing
            appendFileText(out, leaf);
        }
    } else {
        appendFileText(out, value);
    }
    out += u'"';
}

// The value of a typed setting, after its key.
void appendTypedValue(QString &out, int code, QStringView value, const QString &relatePath,
                      const QString &workSpace)
{
    switch (code) {
    case PropertyText:
        out += u'"';
        appendEscapedForJS(out, value, '"');
        out += u'"';
        break;
    case PropertyNumber:
        out += value; // deliberately unchecked: the page sees the number as it was stored
        break;
    case PropertyColor:
    case PropertyBorder:
        appendColor(out, value);
        break;
    case PropertyBool:
        appendBool(out, value);
        break;
    case PropertyFile:
        if (relatePath.isEmpty())
            appendQuotedFile(out, value);
        else
            appendFile(out, value, relatePath, workSpace);
        break;
    }
}

// Writes a typed value member; false when the element is not a value.
bool appendValue(QString &out, const QDomElement &element, const QString &relatePath,
                 const QString &workSpace)
{
    static const QString typeName = QStringLiteral("type");
    const QDomAttr type = QDomElement(element).attributeNode(typeName); // a handle, not a copy
    if (type.isNull())
        return false;
    const int code = propertyTypeFromString(type.value());
    if (code == PropertyNone)
        return false;
    appendKey(out, element.tagName());
    appendTypedValue(out, code, stringValue(element), relatePath, workSpace);
    return true;
}

struct Frame
{
    QDomElement container;
    QDomElement child;
    char16_t close;
};

bool isAnonymous(QStringView name)
{
    return name == QLatin1String("info") || name == QLatin1String("item");
}

// Writes the opening of element (or the whole of a value) and answers the closing character
// still owed, or 0 when the element is complete.
char16_t open(QString &out, const QDomElement &element, const QString &relatePath,
              const QString &workSpace)
{
    static const QString itemName = QStringLiteral("item");
    const QString name = element.tagName();
    if (isAnonymous(name)) {
        out += u'{';
        return u'}';
    }
    if (!element.firstChildElement(itemName).isNull()) {
        appendKey(out, name);
        out += u'[';
        return u']';
    }
    if (appendValue(out, element, relatePath, workSpace))
        return 0;
    appendKey(out, name);
    out += u'{';
    return u'}';
}

// The one-pass reading keeps, per open element, where its opening brace went: a keyed object
// turns into a list by patching that brace once an "item" child shows up, since both write
// their members the same way.
struct StreamFrame
{
    enum Kind : quint8 { Anonymous, Keyed, Value };
    // Where the element stands for a position written into the description.
    enum Role : quint8 { Other, Properties, Basic, Place };
    explicit StreamFrame(Kind k)
        : kind(k)
    {}
    Kind kind;
    Role role = Other;
    bool hasMembers = false;
    bool isList = false;
    qsizetype brace = 0;      // of a keyed object
    int code = PropertyNone;  // of a value
    qsizetype firstPlace = 0; // of a place, and of the latest "basic" of a "properties"
    bool hasBasic = false;    // of a "properties"
};

using StreamResult = TextReading;

// The places a position fills, found while the one pass reads; see PositionPlace.
class PlaceFinder
{
public:
    explicit PlaceFinder(std::vector<PositionPlace> *places)
        : m_places(places)
    {}

    // Called for an element about to open under stack, its member starting at begin.
    void open(std::vector<StreamFrame> &stack, QStringView name, int code, qsizetype begin,
              StreamFrame &frame)
    {
        if (!m_places)
            return;
        PositionField field;
        if (stack.size() == 1 && name == QLatin1String("properties")) {
            frame.role = StreamFrame::Properties;
        } else if (stack.size() == 2 && stack.back().role == StreamFrame::Properties &&
                   name == QLatin1String("basic")) {
            // Only the last "basic" of a "properties" takes the position: an earlier one's places
            // (the newest ones found) go again.
            StreamFrame &properties = stack.back();
            if (properties.role == StreamFrame::Properties && properties.hasBasic)
                m_places->resize(size_t(properties.firstPlace));
            properties.hasBasic = true;
            properties.firstPlace = qsizetype(m_places->size());
            frame.role = StreamFrame::Basic;
        } else if (placeField(stack, name, &field)) {
            frame.role = StreamFrame::Place;
            frame.firstPlace = qsizetype(m_places->size());
            m_places->push_back({begin, begin, field, code, name.toString()});
        }
    }

    void close(const StreamFrame &frame, qsizetype end)
    {
        if (m_places && frame.role == StreamFrame::Place)
            (*m_places)[size_t(frame.firstPlace)].end = end;
    }

private:
    static bool placeField(const std::vector<StreamFrame> &stack, QStringView name,
                           PositionField *field)
    {
        if (stack.size() == 1) {
            if (name == QLatin1String("opacity"))
                *field = PositionField::Opacity;
            else if (name == QLatin1String("layout"))
                *field = PositionField::Layout;
            else
                return false;
            return true;
        }
        if (stack.size() != 3 || stack.back().role != StreamFrame::Basic)
            return false;
        if (name == QLatin1String("left"))
            *field = PositionField::Left;
        else if (name == QLatin1String("top"))
            *field = PositionField::Top;
        else if (name == QLatin1String("width"))
            *field = PositionField::Width;
        else if (name == QLatin1String("height"))
            *field = PositionField::Height;
        else
            return false;
        return true;
    }

    std::vector<PositionPlace> *m_places;
};

StreamResult streamJson(QString &out, QXmlStreamReader &reader, const QString &relatePath,
                        const QString &workSpace, std::vector<PositionPlace> *places = nullptr)
{
    static const QString typeName = QStringLiteral("type");
    // Names are read as written, prefix and all, as the tree reads them.
    reader.setNamespaceProcessing(false);
    PlaceFinder finder(places);
    std::vector<StreamFrame> stack;
    QString value;
    bool rootSeen = false;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: {
            const QStringView name = reader.qualifiedName();
            if (!stack.empty()) {
                StreamFrame &parent = stack.back();
                // An element inside a typed one (its text joins the value, or an "item" makes
                // it a list) is a rare shape the one pass leaves to the tree.
                if (parent.kind == StreamFrame::Value)
                    return StreamResult::NeedsTree;
                if (parent.hasMembers)
                    out += u',';
                parent.hasMembers = true;
                if (parent.kind == StreamFrame::Keyed && !parent.isList &&
                    name == QLatin1String("item")) {
                    parent.isList = true;
                    out[parent.brace] = u'[';
                }
            } else if (rootSeen) {
                return StreamResult::Malformed;
            }
            // Nested past the limit the description is damaged, as parseDescriptionXml says too.
            if (stack.size() >= size_t(MaxDescriptionDepth))
                return StreamResult::Malformed;
            rootSeen = true;
            const qsizetype begin = out.size();
            if (isAnonymous(name)) {
                out += u'{';
                StreamFrame frame(StreamFrame::Anonymous);
                finder.open(stack, name, PropertyNone, begin, frame);
                stack.push_back(std::move(frame));
                break;
            }
            const QXmlStreamAttributes attributes = reader.attributes();
            const int code = propertyTypeOf(attributes.value(typeName));
            if (code != PropertyNone) {
                StreamFrame frame(StreamFrame::Value);
                frame.code = code;
                // The key goes out at once; the value follows at the element's end.
                appendKey(out, name);
                finder.open(stack, name, code, begin, frame);
                stack.push_back(std::move(frame));
                value.resize(0); // keeps the buffer for the next value
                break;
            }
            appendKey(out, name);
            out += u'{';
            StreamFrame frame(StreamFrame::Keyed);
            frame.brace = out.size() - 1;
            finder.open(stack, name, PropertyNone, begin, frame);
            stack.push_back(std::move(frame));
            break;
        }
        case QXmlStreamReader::EndElement: {
            const StreamFrame &frame = stack.back();
            if (frame.kind == StreamFrame::Value)
                appendTypedValue(out, frame.code, value, relatePath, workSpace);
            else
                out += frame.isList ? u']' : u'}';
            finder.close(frame, out.size());
            stack.pop_back();
            break;
        }
        case QXmlStreamReader::Characters:
            // Blank text (by character, references included) is no node of the tree either; a
            // container's text is never written.
            if (!stack.empty() && stack.back().kind == StreamFrame::Value &&
                (reader.isCDATA() || !reader.text().trimmed().isEmpty()))
                value += reader.text();
            break;
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
            return StreamResult::NeedsTree;
        default:
            break;
        }
    }
    return reader.hasError() || !rootSeen ? StreamResult::Malformed : StreamResult::Done;
}

} // namespace

void appendEscapedForJS(QString &out, QStringView text, char quote)
{
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = text[i].unicode();
        switch (c) {
        case u'\r':
            if (i + 1 < n && text[i + 1] == u'\n')
                ++i;
            out += QLatin1String("<br/>");
            break;
        case u'\n':
            out += QLatin1String("<br/>");
            break;
        case u'\\':
            // A written unicode escape passes as it is (capital U lowered); any other
            // backslash is doubled.
            if (i + 1 < n && (text[i + 1] == u'u' || text[i + 1] == u'U')) {
                out += QLatin1String("\\u");
                ++i;
            } else {
                out += QLatin1String("\\\\");
            }
            break;
        case u'\'':
        case u'"':
            if (quote == c)
                out += u'\\';
            out += QChar(c);
            break;
        case u'$':
            // A literal marker reads as an escape too: the marker shields escapes above.
            if (startsWithAt(text, i, kUnicodeMarker)) {
                out += QLatin1String("\\u");
                i += kUnicodeMarker.size() - 1;
            } else {
                out += QChar(c);
            }
            break;
        case u'&':
            if (startsWithAt(text, i, QLatin1String("&lt;"))) {
                out += u'<';
                i += 3;
            } else if (startsWithAt(text, i, QLatin1String("&gt;"))) {
                out += u'>';
                i += 3;
            } else if (startsWithAt(text, i, QLatin1String("&amp;"))) {
                out += u'&';
                i += 4;
            } else {
                out += QChar(c);
            }
            break;
        default:
            out += QChar(c);
        }
    }
}

void appendJson(QString &out, const QDomElement &element, const QString &relatePath,
                const QString &workSpace)
{
    if (element.isNull())
        return;
    std::vector<Frame> stack;
    if (const char16_t close = open(out, element, relatePath, workSpace))
        stack.push_back({element, QDomElement(), close});
    while (!stack.empty()) {
        Frame &frame = stack.back();
        const bool first = frame.child.isNull();
        QDomElement next =
            first ? frame.container.firstChildElement() : frame.child.nextSiblingElement();
        if (next.isNull()) {
            out += QChar(frame.close);
            stack.pop_back();
            continue;
        }
        if (!first)
            out += u',';
        frame.child = next;
        if (const char16_t close = open(out, next, relatePath, workSpace))
            stack.push_back({next, QDomElement(), close}); // frame is not used past this point
    }
}

QString jsonFromXmlText(const QByteArray &xml, const QString &relatePath, const QString &workSpace)
{
    QString json;
    // The JSON is a little shorter than the text: markup goes, keys and values stay.
    json.reserve(xml.size());
    QXmlStreamReader reader(xml);
    switch (streamJson(json, reader, relatePath, workSpace)) {
    case StreamResult::Done:
        return json;
    case StreamResult::Malformed:
        return QString();
    case StreamResult::NeedsTree:
        break;
    }
    json.clear();
    appendJson(json, parseDescriptionXml(xml).documentElement(), relatePath, workSpace);
    return json;
}

TextReading jsonWithPositionPlaces(const QString &text, QString *json,
                                   std::vector<PositionPlace> *places)
{
    json->clear();
    json->reserve(text.size());
    places->clear();
    // A reader of a string keeps to its text: an encoding the text declares is ignored.
    QXmlStreamReader reader(text);
    return streamJson(*json, reader, QString(), QString(), places);
}

void appendTextMember(QString &out, const QString &name, int code, const QString &text)
{
    appendKey(out, name);
    if (code == PropertyNone)
        out += QLatin1String("{}"); // a container's text is never written
    else
        appendTypedValue(out, code, text, QString(), QString());
}

} // namespace XmlJson

QString PluginSettingsInfo::jsonFromXml(const QDomElement &element, const QString &relatePath) const
{
    QString json;
    // Roughly the size of the source text: keys and values dominate both.
    json.reserve(4096);
    XmlJson::appendJson(json, element, relatePath, m_workSpace);
    return json;
}
