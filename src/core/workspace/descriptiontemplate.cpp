// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "descriptiontemplate.h"

#include "scriptgenerator.h"
#include "utilityfunction.h"
#include "xmlhelpers.h"

#include <QStringDecoder>

namespace {

const QByteArray kScriptStart("var config=");

} // namespace

DescriptionTemplate DescriptionTemplate::fromBytes(const QByteArray &bytes)
{
    DescriptionTemplate result;
    // Read as the workspace reader reads it: strict UTF-8, an encoding it declares ignored.
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString text = decode(bytes);
    if (decode.hasError())
        return result;
    QString json;
    switch (XmlJson::jsonWithPositionPlaces(text, &json, &result.m_places)) {
    case XmlJson::TextReading::Malformed:
        return result;
    case XmlJson::TextReading::NeedsTree: {
        QString error;
        int line = 0;
        result.m_tree = parseDescriptionXml(text, &error, &line);
        if (!result.m_tree.isNull())
            result.m_kind = Kind::Tree;
        result.m_places.clear();
        return result;
    }
    case XmlJson::TextReading::Done:
        break;
    }
    // Places start and end at markup characters, so the UTF-8 of the pieces joined is the UTF-8
    // of the whole.
    qsizetype from = 0;
    for (const XmlJson::PositionPlace &place : result.m_places) {
        result.m_pieces.push_back(QStringView(json).mid(from, place.begin - from).toUtf8());
        from = place.end;
    }
    result.m_pieces.push_back(QStringView(json).mid(from).toUtf8());
    for (const QByteArray &piece : result.m_pieces)
        result.m_piecesSize += piece.size();
    result.m_kind = Kind::Pieces;
    return result;
}

QByteArray DescriptionTemplate::configScript(const PositionRect &position)
{
    switch (m_kind) {
    case Kind::Pieces:
        return piecesScript(position);
    case Kind::Tree:
        return treeScript(position);
    case Kind::None:
        break;
    }
    return QByteArray();
}

QByteArray DescriptionTemplate::piecesScript(const PositionRect &position) const
{
    const QByteArray &bom = UtilityFunction::header();
    QByteArray script;
    script.reserve(bom.size() + kScriptStart.size() + m_piecesSize +
                   64 * qsizetype(m_places.size()) + 1);
    script += bom;
    script += kScriptStart;
    QString member;
    for (size_t k = 0; k < m_places.size(); ++k) {
        script += m_pieces[k];
        const XmlJson::PositionPlace &place = m_places[k];
        member.resize(0);
        XmlJson::appendTextMember(member, place.name, place.code,
                                  ScriptGenerator::positionText(place.field, position));
        script += member.toUtf8();
    }
    script += m_pieces.back();
    script += ';';
    return script;
}

QByteArray DescriptionTemplate::treeScript(const PositionRect &position)
{
    // Writing the position replaces the same few texts every time, so the kept tree can take
    // each save's position in turn.
    QDomElement root = m_tree.documentElement();
    ScriptGenerator::applyPosition(root, position);
    QString json;
    json.reserve(4096);
    XmlJson::appendJson(json, root, QString(), QString());
    return UtilityFunction::header() + ScriptGenerator::configScript(json).toUtf8();
}
