<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>PluginLocale</name>
    <message>
        <source>Plugin Settings - %@</source>
        <translation>Plugin Settings - %@</translation>
    </message>
    <message>
        <source>Do you want to apply the settings?</source>
        <translation>Do you want to apply the settings?</translation>
    </message>
    <message>
        <source>PrivateV-Select a image file</source>
        <translation>Select a image file</translation>
    </message>
    <message>
        <source>PrivateV-Copy Failed!</source>
        <translation>Copy Failed!</translation>
    </message>
</context>
</TS>
