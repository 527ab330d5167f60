<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>PluginLocale</name>
    <message>
        <source>Plugin Settings - %@</source>
        <translation>插件设置 - %@</translation>
    </message>
    <message>
        <source>Do you want to apply the settings?</source>
        <translation>是否应用这些设置？</translation>
    </message>
    <message>
        <source>PrivateV-Select a image file</source>
        <translation>选择图像文件</translation>
    </message>
    <message>
        <source>PrivateV-Copy Failed!</source>
        <translation>复制失败！</translation>
    </message>
    <message>
        <source>The workspace could not be backed up.</source>
        <translation>无法备份工作区。</translation>
    </message>
    <message>
        <source>Your changes are still saved as you make them, but Cancel will not be able to undo them.</source>
        <translation>您的更改仍会立即保存，但“取消”将无法撤销这些更改。</translation>
    </message>
    <message>
        <source>Nothing could be undone.</source>
        <translation>无法撤销任何更改。</translation>
    </message>
    <message>
        <source>There is no complete backup of the workspace, so it stays as it is.</source>
        <translation>工作区没有完整的备份，因此保持不变。</translation>
    </message>
    <message>
        <source>The workspace could not be restored.</source>
        <translation>无法恢复工作区。</translation>
    </message>
    <message>
        <source>It stays as it is. The backup is kept and offered again the next time the window opens.</source>
        <translation>工作区保持不变。备份将被保留，并在下次打开窗口时再次提供。</translation>
    </message>
    <message>
        <source>The settings window closed unexpectedly last time.</source>
        <translation>上次设置窗口意外关闭。</translation>
    </message>
    <message>
        <source>Go back to the workspace as it was before that window opened, or keep it as it is now?</source>
        <translation>要将工作区恢复到打开该窗口之前的状态，还是保持现在的状态？</translation>
    </message>
    <message>
        <source>Go Back</source>
        <translation>恢复</translation>
    </message>
    <message>
        <source>Keep As It Is</source>
        <translation>保持现状</translation>
    </message>
    <message>
        <source>Restoring the workspace…</source>
        <translation>正在恢复工作区…</translation>
    </message>
    <message>
        <source>Left %1 %, top %2 %, right %3 %, bottom %4 %</source>
        <translation>左 %1 %，上 %2 %，右 %3 %，下 %4 %</translation>
    </message>
    <message>
        <source>No settings to preview yet</source>
        <translation>尚无可预览的设置</translation>
    </message>
    <message>
        <source>No image chosen</source>
        <translation>未选择图像</translation>
    </message>
    <message>
        <source>The image cannot be loaded</source>
        <translation>无法加载图像</translation>
    </message>
    <message>
        <source>The workspace could not be created.</source>
        <translation>无法创建工作区。</translation>
    </message>
    <message>
        <source>Changes made in this window cannot be saved.</source>
        <translation>无法保存在此窗口中所做的更改。</translation>
    </message>
    <message>
        <source>Fit to image</source>
        <translation>适合图像</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>重做</translation>
    </message>
    <message>
        <source>The left and right margins add up to 100 % or more: the image has no width left on the page.</source>
        <translation>左右边距之和达到 100% 或以上：页面上已没有留给图像的宽度。</translation>
    </message>
    <message>
        <source>The top and bottom margins add up to 100 % or more: the image has no height left on the page.</source>
        <translation>上下边距之和达到 100% 或以上：页面上已没有留给图像的高度。</translation>
    </message>
    <message>
        <source>The image file is missing.</source>
        <translation>找不到图像文件。</translation>
    </message>
    <message>
        <source>This file is not an image that can be read.</source>
        <translation>此文件不是可读取的图像。</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <translation>%1 × %2 像素</translation>
    </message>
    <message>
        <source>Only an image file or an http or https link can be dropped here.</source>
        <translation>此处只能放入图像文件或 http、https 链接。</translation>
    </message>
    <message>
        <source>Drop one image file or link at a time.</source>
        <translation>请一次只放入一个图像文件或链接。</translation>
    </message>
    <message>
        <source>A folder cannot be used: drop one image file.</source>
        <translation>不能使用文件夹：请放入一个图像文件。</translation>
    </message>
    <message>
        <source>Only JPEG, GIF and PNG image files (.jpg, .jpeg, .gif, .png) can be used.</source>
        <translation>只能使用 JPEG、GIF 和 PNG 图像文件（.jpg、.jpeg、.gif、.png）。</translation>
    </message>
    <message>
        <source>This file cannot be read.</source>
        <translation>无法读取此文件。</translation>
    </message>
    <message>
        <source>Only http and https links can be used.</source>
        <translation>只能使用 http 和 https 链接。</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Discard Changes</source>
        <translation>放弃更改</translation>
    </message>
    <message>
        <source>Keep Editing</source>
        <translation>继续编辑</translation>
    </message>
    <message>
        <source>Alert-Image Plugin</source>
        <translation>Image Plugin</translation>
    </message>
    <message>
        <source>Alert-OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Alert-Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Alert-YES</source>
        <translation>是</translation>
    </message>
    <message>
        <source>Alert-NO</source>
        <translation>否</translation>
    </message>
    <message>
        <source>The book will not show the image. Publish anyway?</source>
        <translation>书中将不会显示该图像。仍要发布吗？</translation>
    </message>
    <message>
        <source>Publish Anyway</source>
        <translation>仍然发布</translation>
    </message>
    <message>
        <source>Readers' books open only http and https links: this link will not show the image.</source>
        <translation>读者的书只能打开 http 和 https 链接：此链接无法显示图像。</translation>
    </message>
    <message>
        <source>This link names no web server: readers' books will not find the image.</source>
        <translation>此链接未指明网络服务器：读者的书将找不到图像。</translation>
    </message>
    <message>
        <source>This link has blanks in it: readers' books will not find the image.</source>
        <translation>此链接中含有空格：读者的书将找不到图像。</translation>
    </message>
    <message>
        <source>A file: link points to a file on this computer, which readers do not have. Choose Local file instead.</source>
        <translation>file: 链接指向本计算机上的文件，读者没有该文件。请改为选择“本地文件”。</translation>
    </message>
</context>
<context>
    <name>PluginSettingsDelegate</name>
    <message>
        <source>Plugin Settings - Image Plugin</source>
        <translation>插件设置 - Image Plugin</translation>
    </message>
    <message>
        <source>&amp;Position on the page</source>
        <translation>页面上的位置(&amp;P)</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>页面</translation>
    </message>
    <message>
        <source>Where the image lies on the page. Arrow keys move it by 1 %, with Shift by 10 %; with Alt they move its right or bottom edge.</source>
        <translation>图像在页面上的位置。方向键将其移动 1 %，按住 Shift 移动 10 %；按住 Alt 则移动其右边缘或下边缘。</translation>
    </message>
    <message>
        <source>Drag the box to move the image; drag its handles to resize it. Hold Ctrl or Alt while dragging to place it freely, without snapping.</source>
        <translation>拖动方框可移动图像，拖动其控点可调整大小。拖动时按住 Ctrl 或 Alt 可自由放置，不会吸附。</translation>
    </message>
    <message>
        <source>&amp;Left (%):</source>
        <translation>左边距(&amp;L) (%):</translation>
    </message>
    <message>
        <source>Left margin (%)</source>
        <translation>左边距 (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's left edge, in percent of the page's width.</source>
        <translation>图像与页面左边缘的距离，以页面宽度的百分比表示。</translation>
    </message>
    <message>
        <source>&amp;Top (%):</source>
        <translation>上边距(&amp;T) (%):</translation>
    </message>
    <message>
        <source>Top margin (%)</source>
        <translation>上边距 (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's top edge, in percent of the page's height.</source>
        <translation>图像与页面上边缘的距离，以页面高度的百分比表示。</translation>
    </message>
    <message>
        <source>&amp;Right (%):</source>
        <translation>右边距(&amp;R) (%):</translation>
    </message>
    <message>
        <source>Right margin (%)</source>
        <translation>右边距 (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's right edge, in percent of the page's width.</source>
        <translation>图像与页面右边缘的距离，以页面宽度的百分比表示。</translation>
    </message>
    <message>
        <source>&amp;Bottom (%):</source>
        <translation>下边距(&amp;B) (%):</translation>
    </message>
    <message>
        <source>Bottom margin (%)</source>
        <translation>下边距 (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's bottom edge, in percent of the page's height.</source>
        <translation>图像与页面下边缘的距离，以页面高度的百分比表示。</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外观</translation>
    </message>
    <message>
        <source>Tr&amp;ansparency (%):</source>
        <translation>透明度(&amp;A) (%):</translation>
    </message>
    <message>
        <source>Transparency</source>
        <translation>透明度</translation>
    </message>
    <message>
        <source>How much of the page shows through the image, from 0 % (opaque) to 100 % (invisible).</source>
        <translation>透过图像可以看到多少页面，从 0 %（不透明）到 100 %（不可见）。</translation>
    </message>
    <message>
        <source>Transparency (%)</source>
        <translation>透明度 (%)</translation>
    </message>
    <message>
        <source>The transparency in percent, from 0 to 100.</source>
        <translation>透明度百分比，从 0 到 100。</translation>
    </message>
    <message>
        <source>La&amp;yer:</source>
        <translation>图层(&amp;Y):</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>图层</translation>
    </message>
    <message>
        <source>Whether the image lies above or below the page's own content.</source>
        <translation>图像位于页面内容之上还是之下。</translation>
    </message>
    <message>
        <source>Abo&amp;ve the page content</source>
        <translation>位于页面内容之上(&amp;V)</translation>
    </message>
    <message>
        <source>The image covers the page's text.</source>
        <translation>图像覆盖页面文字。</translation>
    </message>
    <message>
        <source>Belo&amp;w the page content</source>
        <translation>位于页面内容之下(&amp;W)</translation>
    </message>
    <message>
        <source>The page's text covers the image.</source>
        <translation>页面文字覆盖图像。</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>预览</translation>
    </message>
    <message>
        <source>The page as the book will show it, rebuilt shortly after each change.</source>
        <translation>书中将显示的页面，每次更改后很快重建。</translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>默认(&amp;D)</translation>
    </message>
    <message>
        <source>Put the image back at its default position.</source>
        <translation>将图像恢复到默认位置。</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Apply the settings and close the window.</source>
        <translation>应用设置并关闭窗口。</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Undo every change made in this window and close it.</source>
        <translation>撤销在此窗口中所做的所有更改并关闭窗口。</translation>
    </message>
</context>
<context>
    <name>PrivateView</name>
    <message>
        <source>Lin&amp;k</source>
        <translation>链接(&amp;K)</translation>
    </message>
    <message>
        <source>Use an image from the web.</source>
        <translation>使用网络上的图像。</translation>
    </message>
    <message>
        <source>Web address of the image</source>
        <translation>图像的网址</translation>
    </message>
    <message>
        <source>An http or https address of the image.</source>
        <translation>图像的 http 或 https 地址。</translation>
    </message>
    <message>
        <source>http://</source>
        <translation>http://</translation>
    </message>
    <message>
        <source>Local &amp;file</source>
        <translation>本地文件(&amp;F)</translation>
    </message>
    <message>
        <source>Use an image file from this computer; it is copied into the book.</source>
        <translation>使用此计算机上的图像文件；它会被复制到书中。</translation>
    </message>
    <message>
        <source>Chosen image file</source>
        <translation>所选图像文件</translation>
    </message>
    <message>
        <source>The name of the image file copied into the book. Choose it with Browse.</source>
        <translation>复制到书中的图像文件的名称。使用“浏览”选择。</translation>
    </message>
    <message>
        <source>Br&amp;owse...</source>
        <translation>浏览(&amp;O)...</translation>
    </message>
    <message>
        <source>Choose an image file from this computer.</source>
        <translation>从此计算机选择图像文件。</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Save the image choice.</source>
        <translation>保存图像选择。</translation>
    </message>
    <message>
        <source>Thumbnail of the chosen image</source>
        <translation>所选图像的缩略图</translation>
    </message>
    <message>
        <source>A small picture of the chosen image file.</source>
        <translation>所选图像文件的小图预览。</translation>
    </message>
    <message>
        <source>The size of the chosen image in pixels, or why it cannot be shown.</source>
        <translation>所选图像的像素尺寸，或无法显示它的原因。</translation>
    </message>
</context>
</TS>
