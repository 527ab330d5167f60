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
</context>
</TS>
