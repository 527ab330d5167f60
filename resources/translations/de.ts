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
    <message>
        <source>Left %1 %, top %2 %, right %3 %, bottom %4 %</source>
        <translation>Links %1 %, oben %2 %, rechts %3 %, unten %4 %</translation>
    </message>
    <message>
        <source>No settings to preview yet</source>
        <translation>Noch keine Einstellungen für die Vorschau</translation>
    </message>
    <message>
        <source>No image chosen</source>
        <translation>Kein Bild gewählt</translation>
    </message>
    <message>
        <source>The image cannot be loaded</source>
        <translation>Das Bild kann nicht geladen werden</translation>
    </message>
    <message>
        <source>The workspace could not be created.</source>
        <translation>Der Arbeitsbereich konnte nicht angelegt werden.</translation>
    </message>
    <message>
        <source>Changes made in this window cannot be saved.</source>
        <translation>Änderungen in diesem Fenster können nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>Fit to image</source>
        <translation>An Bild anpassen</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>The left and right margins add up to 100 % or more: the image has no width left on the page.</source>
        <translation>Der linke und der rechte Rand ergeben zusammen 100 % oder mehr: Dem Bild bleibt auf der Seite keine Breite.</translation>
    </message>
    <message>
        <source>The top and bottom margins add up to 100 % or more: the image has no height left on the page.</source>
        <translation>Der obere und der untere Rand ergeben zusammen 100 % oder mehr: Dem Bild bleibt auf der Seite keine Höhe.</translation>
    </message>
    <message>
        <source>The image file is missing.</source>
        <translation>Die Bilddatei fehlt.</translation>
    </message>
    <message>
        <source>This file is not an image that can be read.</source>
        <translation>Diese Datei ist kein lesbares Bild.</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <translation>%1 × %2 Pixel</translation>
    </message>
    <message>
        <source>Only an image file or an http or https link can be dropped here.</source>
        <translation>Hier lassen sich nur eine Bilddatei oder ein http- oder https-Link ablegen.</translation>
    </message>
    <message>
        <source>Drop one image file or link at a time.</source>
        <translation>Bitte jeweils nur eine Bilddatei oder einen Link ablegen.</translation>
    </message>
    <message>
        <source>A folder cannot be used: drop one image file.</source>
        <translation>Ein Ordner lässt sich nicht verwenden: Bitte eine einzelne Bilddatei ablegen.</translation>
    </message>
    <message>
        <source>Only JPEG, GIF and PNG image files (.jpg, .jpeg, .gif, .png) can be used.</source>
        <translation>Nur JPEG-, GIF- und PNG-Bilddateien (.jpg, .jpeg, .gif, .png) lassen sich verwenden.</translation>
    </message>
    <message>
        <source>This file cannot be read.</source>
        <translation>Diese Datei lässt sich nicht lesen.</translation>
    </message>
    <message>
        <source>Only http and https links can be used.</source>
        <translation>Nur http- und https-Links lassen sich verwenden.</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Übernehmen</translation>
    </message>
    <message>
        <source>Discard Changes</source>
        <translation>Änderungen verwerfen</translation>
    </message>
    <message>
        <source>Keep Editing</source>
        <translation>Weiter bearbeiten</translation>
    </message>
    <message>
        <source>Alert-Image Plugin</source>
        <translation>Image Plugin</translation>
    </message>
    <message>
        <source>Alert-OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Alert-Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Alert-YES</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>Alert-NO</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>The book will not show the image. Publish anyway?</source>
        <translation>Das Buch wird das Bild nicht zeigen. Trotzdem veröffentlichen?</translation>
    </message>
    <message>
        <source>Publish Anyway</source>
        <translation>Trotzdem veröffentlichen</translation>
    </message>
    <message>
        <source>Readers' books open only http and https links: this link will not show the image.</source>
        <translation>Bücher öffnen bei ihren Lesern nur http- und https-Links: Dieser Link zeigt das Bild nicht.</translation>
    </message>
    <message>
        <source>This link names no web server: readers' books will not find the image.</source>
        <translation>Dieser Link nennt keinen Webserver: Die Bücher der Leser finden das Bild nicht.</translation>
    </message>
    <message>
        <source>This link has blanks in it: readers' books will not find the image.</source>
        <translation>Dieser Link enthält Leerzeichen: Die Bücher der Leser finden das Bild nicht.</translation>
    </message>
    <message>
        <source>A file: link points to a file on this computer, which readers do not have. Choose Local file instead.</source>
        <translation>Ein file:-Link zeigt auf eine Datei auf diesem Computer, die Leser nicht haben. Wählen Sie stattdessen „Lokale Datei“.</translation>
    </message>
</context>
<context>
    <name>PluginSettingsDelegate</name>
    <message>
        <source>Plugin Settings - Image Plugin</source>
        <translation>Plugin-Einstellungen - Image Plugin</translation>
    </message>
    <message>
        <source>&amp;Position on the page</source>
        <translation>&amp;Position auf der Seite</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Seite</translation>
    </message>
    <message>
        <source>Where the image lies on the page. Arrow keys move it by 1 %, with Shift by 10 %; with Alt they move its right or bottom edge.</source>
        <translation>Wo das Bild auf der Seite liegt. Die Pfeiltasten verschieben es um 1 %, mit Umschalt um 10 %; mit Alt verschieben sie seinen rechten oder unteren Rand.</translation>
    </message>
    <message>
        <source>Drag the box to move the image; drag its handles to resize it. Hold Ctrl or Alt while dragging to place it freely, without snapping.</source>
        <translation>Ziehen Sie den Rahmen, um das Bild zu verschieben, oder seine Griffe, um die Größe zu ändern. Mit gedrückter Strg- oder Alt-Taste lässt es sich frei, ohne Einrasten platzieren.</translation>
    </message>
    <message>
        <source>&amp;Left (%):</source>
        <translation>&amp;Links (%):</translation>
    </message>
    <message>
        <source>Left margin (%)</source>
        <translation>Linker Rand (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's left edge, in percent of the page's width.</source>
        <translation>Der Abstand des Bildes vom linken Seitenrand, in Prozent der Seitenbreite.</translation>
    </message>
    <message>
        <source>&amp;Top (%):</source>
        <translation>&amp;Oben (%):</translation>
    </message>
    <message>
        <source>Top margin (%)</source>
        <translation>Oberer Rand (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's top edge, in percent of the page's height.</source>
        <translation>Der Abstand des Bildes vom oberen Seitenrand, in Prozent der Seitenhöhe.</translation>
    </message>
    <message>
        <source>&amp;Right (%):</source>
        <translation>&amp;Rechts (%):</translation>
    </message>
    <message>
        <source>Right margin (%)</source>
        <translation>Rechter Rand (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's right edge, in percent of the page's width.</source>
        <translation>Der Abstand des Bildes vom rechten Seitenrand, in Prozent der Seitenbreite.</translation>
    </message>
    <message>
        <source>&amp;Bottom (%):</source>
        <translation>&amp;Unten (%):</translation>
    </message>
    <message>
        <source>Bottom margin (%)</source>
        <translation>Unterer Rand (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's bottom edge, in percent of the page's height.</source>
        <translation>Der Abstand des Bildes vom unteren Seitenrand, in Prozent der Seitenhöhe.</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Darstellung</translation>
    </message>
    <message>
        <source>Tr&amp;ansparency (%):</source>
        <translation>&amp;Transparenz (%):</translation>
    </message>
    <message>
        <source>Transparency</source>
        <translation>Transparenz</translation>
    </message>
    <message>
        <source>How much of the page shows through the image, from 0 % (opaque) to 100 % (invisible).</source>
        <translation>Wie viel der Seite durch das Bild scheint, von 0 % (deckend) bis 100 % (unsichtbar).</translation>
    </message>
    <message>
        <source>Transparency (%)</source>
        <translation>Transparenz (%)</translation>
    </message>
    <message>
        <source>The transparency in percent, from 0 to 100.</source>
        <translation>Die Transparenz in Prozent, von 0 bis 100.</translation>
    </message>
    <message>
        <source>La&amp;yer:</source>
        <translation>&amp;Ebene:</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>Ebene</translation>
    </message>
    <message>
        <source>Whether the image lies above or below the page's own content.</source>
        <translation>Ob das Bild über oder unter dem Inhalt der Seite liegt.</translation>
    </message>
    <message>
        <source>Abo&amp;ve the page content</source>
        <translation>Über dem Seiten&amp;inhalt</translation>
    </message>
    <message>
        <source>The image covers the page's text.</source>
        <translation>Das Bild verdeckt den Text der Seite.</translation>
    </message>
    <message>
        <source>Belo&amp;w the page content</source>
        <translation>Unter dem Seiteninh&amp;alt</translation>
    </message>
    <message>
        <source>The page's text covers the image.</source>
        <translation>Der Text der Seite verdeckt das Bild.</translation>
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
        <source>The page as the book will show it, rebuilt shortly after each change.</source>
        <translation>Die Seite, wie das Buch sie zeigen wird, kurz nach jeder Änderung neu aufgebaut.</translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>&amp;Standard</translation>
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
        <source>Apply the settings and close the window.</source>
        <translation>Übernimmt die Einstellungen und schließt das Fenster.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Undo every change made in this window and close it.</source>
        <translation>Macht jede Änderung in diesem Fenster rückgängig und schließt es.</translation>
    </message>
</context>
<context>
    <name>PrivateView</name>
    <message>
        <source>Lin&amp;k</source>
        <translation>Lin&amp;k</translation>
    </message>
    <message>
        <source>Use an image from the web.</source>
        <translation>Ein Bild aus dem Web verwenden.</translation>
    </message>
    <message>
        <source>Web address of the image</source>
        <translation>Webadresse des Bildes</translation>
    </message>
    <message>
        <source>An http or https address of the image.</source>
        <translation>Eine http- oder https-Adresse des Bildes.</translation>
    </message>
    <message>
        <source>http://</source>
        <translation>http://</translation>
    </message>
    <message>
        <source>Local &amp;file</source>
        <translation>Lokale &amp;Datei</translation>
    </message>
    <message>
        <source>Use an image file from this computer; it is copied into the book.</source>
        <translation>Eine Bilddatei von diesem Computer verwenden; sie wird in das Buch kopiert.</translation>
    </message>
    <message>
        <source>Chosen image file</source>
        <translation>Gewählte Bilddatei</translation>
    </message>
    <message>
        <source>The name of the image file copied into the book. Choose it with Browse.</source>
        <translation>Der Name der Bilddatei, die in das Buch kopiert wird. Wählen Sie sie mit „Durchsuchen“.</translation>
    </message>
    <message>
        <source>Br&amp;owse...</source>
        <translation>Durchsuc&amp;hen...</translation>
    </message>
    <message>
        <source>Choose an image file from this computer.</source>
        <translation>Eine Bilddatei auf diesem Computer auswählen.</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>Spei&amp;chern</translation>
    </message>
    <message>
        <source>Save the image choice.</source>
        <translation>Die Bildauswahl speichern.</translation>
    </message>
    <message>
        <source>Thumbnail of the chosen image</source>
        <translation>Miniatur des gewählten Bildes</translation>
    </message>
    <message>
        <source>A small picture of the chosen image file.</source>
        <translation>Eine kleine Ansicht der gewählten Bilddatei.</translation>
    </message>
    <message>
        <source>The size of the chosen image in pixels, or why it cannot be shown.</source>
        <translation>Die Größe des gewählten Bildes in Pixeln oder der Grund, warum es sich nicht anzeigen lässt.</translation>
    </message>
</context>
</TS>
