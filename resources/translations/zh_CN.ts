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
