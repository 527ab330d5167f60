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
</context>
<context>
    <name>PluginSettingsDelegate</name>
    <message>
        <source>Plugin Settings - Image Plugin</source>
        <translation>插件设置 - Image Plugin</translation>
    </message>
    <message>
        <source>Position on the page</source>
        <translation>页面上的位置</translation>
    </message>
    <message>
        <source>Drag the box to move the image; drag its handles to resize it.</source>
        <translation>拖动方框可移动图像，拖动其控点可调整大小。</translation>
    </message>
    <message>
        <source>Left (%):</source>
        <translation>左边距 (%):</translation>
    </message>
    <message>
        <source>Top (%):</source>
        <translation>上边距 (%):</translation>
    </message>
    <message>
        <source>Right (%):</source>
        <translation>右边距 (%):</translation>
    </message>
    <message>
        <source>Bottom (%):</source>
        <translation>下边距 (%):</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外观</translation>
    </message>
    <message>
        <source>Transparency (%):</source>
        <translation>透明度 (%):</translation>
    </message>
    <message>
        <source>Layer:</source>
        <translation>图层:</translation>
    </message>
    <message>
        <source>Above the page content</source>
        <translation>位于页面内容之上</translation>
    </message>
    <message>
        <source>Below the page content</source>
        <translation>位于页面内容之下</translation>
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
        <source>Default</source>
        <translation>默认</translation>
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
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>PrivateView</name>
    <message>
        <source>Link</source>
        <translation>链接</translation>
    </message>
    <message>
        <source>http://</source>
        <translation>http://</translation>
    </message>
    <message>
        <source>Local file</source>
        <translation>本地文件</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>浏览...</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
</context>
</TS>
