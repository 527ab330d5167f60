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
    <message>
        <source>The workspace could not be backed up.</source>
        <translation>The workspace could not be backed up.</translation>
    </message>
    <message>
        <source>Your changes are still saved as you make them, but Cancel will not be able to undo them.</source>
        <translation>Your changes are still saved as you make them, but Cancel will not be able to undo them.</translation>
    </message>
    <message>
        <source>Nothing could be undone.</source>
        <translation>Nothing could be undone.</translation>
    </message>
    <message>
        <source>There is no complete backup of the workspace, so it stays as it is.</source>
        <translation>There is no complete backup of the workspace, so it stays as it is.</translation>
    </message>
    <message>
        <source>The workspace could not be restored.</source>
        <translation>The workspace could not be restored.</translation>
    </message>
    <message>
        <source>It stays as it is. The backup is kept and offered again the next time the window opens.</source>
        <translation>It stays as it is. The backup is kept and offered again the next time the window opens.</translation>
    </message>
    <message>
        <source>The settings window closed unexpectedly last time.</source>
        <translation>The settings window closed unexpectedly last time.</translation>
    </message>
    <message>
        <source>Go back to the workspace as it was before that window opened, or keep it as it is now?</source>
        <translation>Go back to the workspace as it was before that window opened, or keep it as it is now?</translation>
    </message>
    <message>
        <source>Go Back</source>
        <translation>Go Back</translation>
    </message>
    <message>
        <source>Keep As It Is</source>
        <translation>Keep As It Is</translation>
    </message>
    <message>
        <source>Restoring the workspace…</source>
        <translation>Restoring the workspace…</translation>
    </message>
</context>
<context>
    <name>PluginSettingsDelegate</name>
    <message>
        <source>Plugin Settings - Image Plugin</source>
        <translation>Plugin Settings - Image Plugin</translation>
    </message>
    <message>
        <source>Position on the page</source>
        <translation>Position on the page</translation>
    </message>
    <message>
        <source>Drag the box to move the image; drag its handles to resize it.</source>
        <translation>Drag the box to move the image; drag its handles to resize it.</translation>
    </message>
    <message>
        <source>Left (%):</source>
        <translation>Left (%):</translation>
    </message>
    <message>
        <source>Top (%):</source>
        <translation>Top (%):</translation>
    </message>
    <message>
        <source>Right (%):</source>
        <translation>Right (%):</translation>
    </message>
    <message>
        <source>Bottom (%):</source>
        <translation>Bottom (%):</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Appearance</translation>
    </message>
    <message>
        <source>Transparency (%):</source>
        <translation>Transparency (%):</translation>
    </message>
    <message>
        <source>Layer:</source>
        <translation>Layer:</translation>
    </message>
    <message>
        <source>Above the page content</source>
        <translation>Above the page content</translation>
    </message>
    <message>
        <source>Below the page content</source>
        <translation>Below the page content</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Default</translation>
    </message>
    <message>
        <source>Put the image back at its default position.</source>
        <translation>Put the image back at its default position.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
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
        <translation>Local file</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Browse...</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
</context>
</TS>
