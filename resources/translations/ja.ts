<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>PluginLocale</name>
    <message>
        <source>Plugin Settings - %@</source>
        <translation>プラグイン設定 - %@</translation>
    </message>
    <message>
        <source>Do you want to apply the settings?</source>
        <translation>設定を適用しますか?</translation>
    </message>
    <message>
        <source>PrivateV-Select a image file</source>
        <translation>画像ファイルを選択</translation>
    </message>
    <message>
        <source>PrivateV-Copy Failed!</source>
        <translation>コピーに失敗しました!</translation>
    </message>
</context>
<context>
    <name>PluginSettingsDelegate</name>
    <message>
        <source>Plugin Settings - Image Plugin</source>
        <translation>プラグイン設定 - Image Plugin</translation>
    </message>
    <message>
        <source>Position on the page</source>
        <translation>ページ上の位置</translation>
    </message>
    <message>
        <source>Drag the box to move the image; drag its handles to resize it.</source>
        <translation>枠をドラッグすると画像を移動し、ハンドルをドラッグするとサイズを変更します。</translation>
    </message>
    <message>
        <source>Left (%):</source>
        <translation>左余白 (%):</translation>
    </message>
    <message>
        <source>Top (%):</source>
        <translation>上余白 (%):</translation>
    </message>
    <message>
        <source>Right (%):</source>
        <translation>右余白 (%):</translation>
    </message>
    <message>
        <source>Bottom (%):</source>
        <translation>下余白 (%):</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外観</translation>
    </message>
    <message>
        <source>Transparency (%):</source>
        <translation>透明度 (%):</translation>
    </message>
    <message>
        <source>Layer:</source>
        <translation>レイヤー:</translation>
    </message>
    <message>
        <source>Above the page content</source>
        <translation>ページの内容の前面</translation>
    </message>
    <message>
        <source>Below the page content</source>
        <translation>ページの内容の背面</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>プレビュー</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>デフォルト</translation>
    </message>
    <message>
        <source>Put the image back at its default position.</source>
        <translation>画像をデフォルトの位置に戻します。</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
</context>
<context>
    <name>PrivateView</name>
    <message>
        <source>Link</source>
        <translation>リンク</translation>
    </message>
    <message>
        <source>http://</source>
        <translation>http://</translation>
    </message>
    <message>
        <source>Local file</source>
        <translation>ファイル</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>参照...</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
</context>
</TS>
