<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>PluginLocale</name>
    <message>
        <source>Plugin Settings - %@</source>
        <translation>Plugin-Einstellungen - %@</translation>
    </message>
    <message>
        <source>Do you want to apply the settings?</source>
        <translation>Möchten Sie die Einstellungen übernehmen?</translation>
    </message>
    <message>
        <source>PrivateV-Select a image file</source>
        <translation>Bilddatei auswählen</translation>
    </message>
    <message>
        <source>PrivateV-Copy Failed!</source>
        <translation>Kopieren fehlgeschlagen!</translation>
    </message>
</context>
<context>
    <name>PluginSettingsDelegate</name>
    <message>
        <source>Plugin Settings - Image Plugin</source>
        <translation>Plugin-Einstellungen - Image Plugin</translation>
    </message>
    <message>
        <source>Position on the page</source>
        <translation>Position auf der Seite</translation>
    </message>
    <message>
        <source>Drag the box to move the image; drag its handles to resize it.</source>
        <translation>Ziehen Sie den Rahmen, um das Bild zu verschieben, oder seine Griffe, um die Größe zu ändern.</translation>
    </message>
    <message>
        <source>Left (%):</source>
        <translation>Links (%):</translation>
    </message>
    <message>
        <source>Top (%):</source>
        <translation>Oben (%):</translation>
    </message>
    <message>
        <source>Right (%):</source>
        <translation>Rechts (%):</translation>
    </message>
    <message>
        <source>Bottom (%):</source>
        <translation>Unten (%):</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Darstellung</translation>
    </message>
    <message>
        <source>Transparency (%):</source>
        <translation>Transparenz (%):</translation>
    </message>
    <message>
        <source>Layer:</source>
        <translation>Ebene:</translation>
    </message>
    <message>
        <source>Above the page content</source>
        <translation>Über dem Seiteninhalt</translation>
    </message>
    <message>
        <source>Below the page content</source>
        <translation>Unter dem Seiteninhalt</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Put the image back at its default position.</source>
        <translation>Setzt das Bild an seine Standardposition zurück.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>PrivateView</name>
    <message>
        <source>Link</source>
        <translation>Link</translation>
    </message>
    <message>
        <source>http://</source>
        <translation>http://</translation>
    </message>
    <message>
        <source>Local file</source>
        <translation>Lokale Datei</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
</context>
</TS>
