<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>PluginLocale</name>
    <message>
        <source>PrivateV-Select a image file</source>
        <translation>Bilddatei wählen</translation>
    </message>
    <message>
        <source>PrivateV-Copy Failed!</source>
        <translation>Kopieren fehlgeschlagen!</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <translation>%1 × %2 Pixel</translation>
    </message>
    <message>
        <source>The image file is missing.</source>
        <translation>Die Bilddatei fehlt.</translation>
    </message>
    <message>
        <source>This file is not an image that can be read.</source>
        <translation>Diese Datei ist kein lesbares Bild.</translation>
    </message>
</context>
</TS>
