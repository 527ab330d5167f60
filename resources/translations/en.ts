<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
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
    <message>
        <source>Left %1 %, top %2 %, right %3 %, bottom %4 %</source>
        <translation>Left %1 %, top %2 %, right %3 %, bottom %4 %</translation>
    </message>
    <message>
        <source>No settings to preview yet</source>
        <translation>No settings to preview yet</translation>
    </message>
    <message>
        <source>No image chosen</source>
        <translation>No image chosen</translation>
    </message>
    <message>
        <source>The image cannot be loaded</source>
        <translation>The image cannot be loaded</translation>
    </message>
    <message>
        <source>The workspace could not be created.</source>
        <translation>The workspace could not be created.</translation>
    </message>
    <message>
        <source>Changes made in this window cannot be saved.</source>
        <translation>Changes made in this window cannot be saved.</translation>
    </message>
    <message>
        <source>Fit to image</source>
        <translation>Fit to image</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Redo</translation>
    </message>
    <message>
        <source>The left and right margins add up to 100 % or more: the image has no width left on the page.</source>
        <translation>The left and right margins add up to 100 % or more: the image has no width left on the page.</translation>
    </message>
    <message>
        <source>The top and bottom margins add up to 100 % or more: the image has no height left on the page.</source>
        <translation>The top and bottom margins add up to 100 % or more: the image has no height left on the page.</translation>
    </message>
    <message>
        <source>The image file is missing.</source>
        <translation>The image file is missing.</translation>
    </message>
    <message>
        <source>This file is not an image that can be read.</source>
        <translation>This file is not an image that can be read.</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <translation>%1 × %2 pixels</translation>
    </message>
    <message>
        <source>Only an image file or an http or https link can be dropped here.</source>
        <translation>Only an image file or an http or https link can be dropped here.</translation>
    </message>
    <message>
        <source>Drop one image file or link at a time.</source>
        <translation>Drop one image file or link at a time.</translation>
    </message>
    <message>
        <source>A folder cannot be used: drop one image file.</source>
        <translation>A folder cannot be used: drop one image file.</translation>
    </message>
    <message>
        <source>Only JPEG, GIF and PNG image files (.jpg, .jpeg, .gif, .png) can be used.</source>
        <translation>Only JPEG, GIF and PNG image files (.jpg, .jpeg, .gif, .png) can be used.</translation>
    </message>
    <message>
        <source>This file cannot be read.</source>
        <translation>This file cannot be read.</translation>
    </message>
    <message>
        <source>Only http and https links can be used.</source>
        <translation>Only http and https links can be used.</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Apply</translation>
    </message>
    <message>
        <source>Discard Changes</source>
        <translation>Discard Changes</translation>
    </message>
    <message>
        <source>Keep Editing</source>
        <translation>Keep Editing</translation>
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
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Alert-YES</source>
        <translation>YES</translation>
    </message>
    <message>
        <source>Alert-NO</source>
        <translation>NO</translation>
    </message>
    <message>
        <source>The book will not show the image. Publish anyway?</source>
        <translation>The book will not show the image. Publish anyway?</translation>
    </message>
    <message>
        <source>Publish Anyway</source>
        <translation>Publish Anyway</translation>
    </message>
    <message>
        <source>Readers' books open only http and https links: this link will not show the image.</source>
        <translation>Readers' books open only http and https links: this link will not show the image.</translation>
    </message>
    <message>
        <source>This link names no web server: readers' books will not find the image.</source>
        <translation>This link names no web server: readers' books will not find the image.</translation>
    </message>
    <message>
        <source>This link has blanks in it: readers' books will not find the image.</source>
        <translation>This link has blanks in it: readers' books will not find the image.</translation>
    </message>
    <message>
        <source>A file: link points to a file on this computer, which readers do not have. Choose Local file instead.</source>
        <translation>A file: link points to a file on this computer, which readers do not have. Choose Local file instead.</translation>
    </message>
</context>
<context>
    <name>PluginSettingsDelegate</name>
    <message>
        <source>Plugin Settings - Image Plugin</source>
        <translation>Plugin Settings - Image Plugin</translation>
    </message>
    <message>
        <source>&amp;Position on the page</source>
        <translation>&amp;Position on the page</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Page</translation>
    </message>
    <message>
        <source>Where the image lies on the page. Arrow keys move it by 1 %, with Shift by 10 %; with Alt they move its right or bottom edge.</source>
        <translation>Where the image lies on the page. Arrow keys move it by 1 %, with Shift by 10 %; with Alt they move its right or bottom edge.</translation>
    </message>
    <message>
        <source>Drag the box to move the image; drag its handles to resize it. Hold Ctrl or Alt while dragging to place it freely, without snapping.</source>
        <translation>Drag the box to move the image; drag its handles to resize it. Hold Ctrl or Alt while dragging to place it freely, without snapping.</translation>
    </message>
    <message>
        <source>&amp;Left (%):</source>
        <translation>&amp;Left (%):</translation>
    </message>
    <message>
        <source>Left margin (%)</source>
        <translation>Left margin (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's left edge, in percent of the page's width.</source>
        <translation>The image's distance from the page's left edge, in percent of the page's width.</translation>
    </message>
    <message>
        <source>&amp;Top (%):</source>
        <translation>&amp;Top (%):</translation>
    </message>
    <message>
        <source>Top margin (%)</source>
        <translation>Top margin (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's top edge, in percent of the page's height.</source>
        <translation>The image's distance from the page's top edge, in percent of the page's height.</translation>
    </message>
    <message>
        <source>&amp;Right (%):</source>
        <translation>&amp;Right (%):</translation>
    </message>
    <message>
        <source>Right margin (%)</source>
        <translation>Right margin (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's right edge, in percent of the page's width.</source>
        <translation>The image's distance from the page's right edge, in percent of the page's width.</translation>
    </message>
    <message>
        <source>&amp;Bottom (%):</source>
        <translation>&amp;Bottom (%):</translation>
    </message>
    <message>
        <source>Bottom margin (%)</source>
        <translation>Bottom margin (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's bottom edge, in percent of the page's height.</source>
        <translation>The image's distance from the page's bottom edge, in percent of the page's height.</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Appearance</translation>
    </message>
    <message>
        <source>Tr&amp;ansparency (%):</source>
        <translation>Tr&amp;ansparency (%):</translation>
    </message>
    <message>
        <source>Transparency</source>
        <translation>Transparency</translation>
    </message>
    <message>
        <source>How much of the page shows through the image, from 0 % (opaque) to 100 % (invisible).</source>
        <translation>How much of the page shows through the image, from 0 % (opaque) to 100 % (invisible).</translation>
    </message>
    <message>
        <source>Transparency (%)</source>
        <translation>Transparency (%)</translation>
    </message>
    <message>
        <source>The transparency in percent, from 0 to 100.</source>
        <translation>The transparency in percent, from 0 to 100.</translation>
    </message>
    <message>
        <source>La&amp;yer:</source>
        <translation>La&amp;yer:</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>Layer</translation>
    </message>
    <message>
        <source>Whether the image lies above or below the page's own content.</source>
        <translation>Whether the image lies above or below the page's own content.</translation>
    </message>
    <message>
        <source>Abo&amp;ve the page content</source>
        <translation>Abo&amp;ve the page content</translation>
    </message>
    <message>
        <source>The image covers the page's text.</source>
        <translation>The image covers the page's text.</translation>
    </message>
    <message>
        <source>Belo&amp;w the page content</source>
        <translation>Belo&amp;w the page content</translation>
    </message>
    <message>
        <source>The page's text covers the image.</source>
        <translation>The page's text covers the image.</translation>
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
        <source>The page as the book will show it, rebuilt shortly after each change.</source>
        <translation>The page as the book will show it, rebuilt shortly after each change.</translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>&amp;Default</translation>
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
        <source>Apply the settings and close the window.</source>
        <translation>Apply the settings and close the window.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Undo every change made in this window and close it.</source>
        <translation>Undo every change made in this window and close it.</translation>
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
        <translation>Use an image from the web.</translation>
    </message>
    <message>
        <source>Web address of the image</source>
        <translation>Web address of the image</translation>
    </message>
    <message>
        <source>An http or https address of the image.</source>
        <translation>An http or https address of the image.</translation>
    </message>
    <message>
        <source>http://</source>
        <translation>http://</translation>
    </message>
    <message>
        <source>Local &amp;file</source>
        <translation>Local &amp;file</translation>
    </message>
    <message>
        <source>Use an image file from this computer; it is copied into the book.</source>
        <translation>Use an image file from this computer; it is copied into the book.</translation>
    </message>
    <message>
        <source>Chosen image file</source>
        <translation>Chosen image file</translation>
    </message>
    <message>
        <source>The name of the image file copied into the book. Choose it with Browse.</source>
        <translation>The name of the image file copied into the book. Choose it with Browse.</translation>
    </message>
    <message>
        <source>Br&amp;owse...</source>
        <translation>Br&amp;owse...</translation>
    </message>
    <message>
        <source>Choose an image file from this computer.</source>
        <translation>Choose an image file from this computer.</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Save</translation>
    </message>
    <message>
        <source>Save the image choice.</source>
        <translation>Save the image choice.</translation>
    </message>
    <message>
        <source>Thumbnail of the chosen image</source>
        <translation>Thumbnail of the chosen image</translation>
    </message>
    <message>
        <source>A small picture of the chosen image file.</source>
        <translation>A small picture of the chosen image file.</translation>
    </message>
    <message>
        <source>The size of the chosen image in pixels, or why it cannot be shown.</source>
        <translation>The size of the chosen image in pixels, or why it cannot be shown.</translation>
    </message>
</context>
</TS>
