// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDomDocument>
#include <QDomElement>
#include <QString>

// The plugin's workspace: a per-user folder filled from the bundle's "html" and "data" resources
// on first use and only topped up afterwards. Instances are made for one operation and dropped.
class PluginSettingsInfo
{
public:
    QString workSpace() const { return m_workSpace; }
    void setWorkSpace(const QString &path) { m_workSpace = path; }
    QString identifier() const { return m_identifier; }
    void setIdentifier(const QString &identifier) { m_identifier = identifier; }
    QString bundlePath() const { return m_bundlePath; }
    void setBundlePath(const QString &path) { m_bundlePath = path; }

    // The host's plugin save folder: <data>/Kelvara/<product id>_resource/Plugin/Save.
    static QString getSavePluginPath();
    // Copies every subpath of from into to; a top-level entry starting with "." is skipped
    // (with everything under it) unless withHiddenFiles. Existing files are left as they are.
    static void copyFromPath(const QString &from, const QString &to, bool withHiddenFiles);

    bool resetWorkspace();
    bool loadWorkspace();
    // The root element of "<identifier>.xml" in the workspace, or a null element. The element
    // belongs to a document this object keeps, so it stays editable for the object's life.
    QDomElement getXMLFromWorkspace();
    // The bytes of the file that the last getXMLFromWorkspace() parsed into its element; empty
    // when it gave none.
    QByteArray xmlBytes() const { return m_documentBytes; }
    bool convertPluginToPath(const QString &path);

    // The JSON text of an element of the description (book output).
    QString jsonFromXml(const QDomElement &element, const QString &relatePath) const;
    // Writes "config.js" (empty relatePath) or the scrambled "bookPlugin.js". False when nothing
    // was written: no readable description or position file, or a failed write.
    bool generateJSConfig(const QString &relatePath);

private:
    // Writes the default identifier "img" back into the field when it is empty.
    void ensureIdentifier();

    QString m_workSpace;
    QString m_identifier;
    QString m_bundlePath;
    QDomDocument m_document;
    QByteArray m_documentBytes;
};
