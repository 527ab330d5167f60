// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "positionrect.h"
#include "xmljson.h"

#include <QByteArray>
#include <QDomDocument>

#include <vector>

// The workspace's description read once for the preview's script: its JSON in UTF-8 pieces with
// the places of the position left open, so that a save only fills in the new position. A
// description of a rare shape that only the parsed tree converts keeps its tree instead.
class DescriptionTemplate
{
public:
    // From the bytes of the description file; isNull() when they are no UTF-8 text or no
    // well-formed description, which gives no script at all.
    static DescriptionTemplate fromBytes(const QByteArray &bytes);

    bool isNull() const { return m_kind == Kind::None; }
    // True when the description is kept as a parsed tree.
    bool usesTree() const { return m_kind == Kind::Tree; }

    // The bytes of "config.js" with position written into the description: the byte-order mark
    // and "var config=<json>;" in UTF-8. Empty for a null template.
    QByteArray configScript(const PositionRect &position);

private:
    enum class Kind { None, Pieces, Tree };
    QByteArray piecesScript(const PositionRect &position) const;
    QByteArray treeScript(const PositionRect &position);

    Kind m_kind = Kind::None;
    // One piece more than places: piece k comes before place k, the last piece after them all.
    std::vector<QByteArray> m_pieces;
    std::vector<XmlJson::PositionPlace> m_places;
    qsizetype m_piecesSize = 0;
    QDomDocument m_tree;
};
