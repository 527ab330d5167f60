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
    <message>
        <source>The workspace could not be backed up.</source>
        <translation>Der Arbeitsbereich konnte nicht gesichert werden.</translation>
    </message>
    <message>
        <source>Your changes are still saved as you make them, but Cancel will not be able to undo them.</source>
        <translation>Ihre Änderungen werden weiterhin sofort gespeichert, aber „Abbrechen“ kann sie nicht rückgängig machen.</translation>
    </message>
    <message>
        <source>Nothing could be undone.</source>
        <translation>Es konnte nichts rückgängig gemacht werden.</translation>
    </message>
    <message>
        <source>There is no complete backup of the workspace, so it stays as it is.</source>
        <translation>Es gibt keine vollständige Sicherung des Arbeitsbereichs, daher bleibt er unverändert.</translation>
    </message>
    <message>
        <source>The workspace could not be restored.</source>
        <translation>Der Arbeitsbereich konnte nicht wiederhergestellt werden.</translation>
    </message>
    <message>
        <source>It stays as it is. The backup is kept and offered again the next time the window opens.</source>
        <translation>Er bleibt unverändert. Die Sicherung wird aufbewahrt und beim nächsten Öffnen des Fensters erneut angeboten.</translation>
    </message>
    <message>
        <source>The settings window closed unexpectedly last time.</source>
        <translation>Das Einstellungsfenster wurde beim letzten Mal unerwartet beendet.</translation>
    </message>
    <message>
        <source>Go back to the workspace as it was before that window opened, or keep it as it is now?</source>
        <translation>Zum Arbeitsbereich zurückkehren, wie er vor dem Öffnen jenes Fensters war, oder ihn so behalten, wie er jetzt ist?</translation>
    </message>
    <message>
        <source>Go Back</source>
        <translation>Zurückkehren</translation>
    </message>
    <message>
        <source>Keep As It Is</source>
        <translation>So behalten</translation>
    </message>
    <message>
        <source>Restoring the workspace…</source>
        <translation>Der Arbeitsbereich wird wiederhergestellt …</translation>
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
