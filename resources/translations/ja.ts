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
    <message>
        <source>The workspace could not be backed up.</source>
        <translation>作業フォルダーをバックアップできませんでした。</translation>
    </message>
    <message>
        <source>Your changes are still saved as you make them, but Cancel will not be able to undo them.</source>
        <translation>変更はこれまでどおりすぐに保存されますが、「キャンセル」で元に戻すことはできません。</translation>
    </message>
    <message>
        <source>Nothing could be undone.</source>
        <translation>何も元に戻せませんでした。</translation>
    </message>
    <message>
        <source>There is no complete backup of the workspace, so it stays as it is.</source>
        <translation>作業フォルダーの完全なバックアップがないため、現在の状態のまま残ります。</translation>
    </message>
    <message>
        <source>The workspace could not be restored.</source>
        <translation>作業フォルダーを復元できませんでした。</translation>
    </message>
    <message>
        <source>It stays as it is. The backup is kept and offered again the next time the window opens.</source>
        <translation>現在の状態のまま残ります。バックアップは保持され、次にウィンドウを開いたときに再び提示されます。</translation>
    </message>
    <message>
        <source>The settings window closed unexpectedly last time.</source>
        <translation>前回、設定ウィンドウが予期せず終了しました。</translation>
    </message>
    <message>
        <source>Go back to the workspace as it was before that window opened, or keep it as it is now?</source>
        <translation>そのウィンドウを開く前の作業フォルダーに戻しますか？それとも現在の状態のままにしますか？</translation>
    </message>
    <message>
        <source>Go Back</source>
        <translation>元に戻す</translation>
    </message>
    <message>
        <source>Keep As It Is</source>
        <translation>このままにする</translation>
    </message>
    <message>
        <source>Restoring the workspace…</source>
        <translation>作業フォルダーを復元しています…</translation>
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
