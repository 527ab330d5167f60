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
    <message>
        <source>Left %1 %, top %2 %, right %3 %, bottom %4 %</source>
        <translation>左 %1 %、上 %2 %、右 %3 %、下 %4 %</translation>
    </message>
    <message>
        <source>No settings to preview yet</source>
        <translation>プレビューする設定がまだありません</translation>
    </message>
    <message>
        <source>No image chosen</source>
        <translation>画像が選択されていません</translation>
    </message>
    <message>
        <source>The image cannot be loaded</source>
        <translation>画像を読み込めません</translation>
    </message>
    <message>
        <source>The workspace could not be created.</source>
        <translation>作業領域を作成できませんでした。</translation>
    </message>
    <message>
        <source>Changes made in this window cannot be saved.</source>
        <translation>このウィンドウで行った変更は保存できません。</translation>
    </message>
    <message>
        <source>Fit to image</source>
        <translation>画像に合わせる</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>元に戻す</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>やり直し</translation>
    </message>
    <message>
        <source>The left and right margins add up to 100 % or more: the image has no width left on the page.</source>
        <translation>左右の余白の合計が 100 % 以上のため、ページ上に画像の幅が残りません。</translation>
    </message>
    <message>
        <source>The top and bottom margins add up to 100 % or more: the image has no height left on the page.</source>
        <translation>上下の余白の合計が 100 % 以上のため、ページ上に画像の高さが残りません。</translation>
    </message>
    <message>
        <source>The image file is missing.</source>
        <translation>画像ファイルが見つかりません。</translation>
    </message>
    <message>
        <source>This file is not an image that can be read.</source>
        <translation>このファイルは読み込める画像ではありません。</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <translation>%1 × %2 ピクセル</translation>
    </message>
    <message>
        <source>Only an image file or an http or https link can be dropped here.</source>
        <translation>ここにドロップできるのは画像ファイル、または http か https のリンクだけです。</translation>
    </message>
    <message>
        <source>Drop one image file or link at a time.</source>
        <translation>画像ファイルまたはリンクは一度に 1 つずつドロップしてください。</translation>
    </message>
    <message>
        <source>A folder cannot be used: drop one image file.</source>
        <translation>フォルダーは使用できません。画像ファイルを 1 つドロップしてください。</translation>
    </message>
    <message>
        <source>Only JPEG, GIF and PNG image files (.jpg, .jpeg, .gif, .png) can be used.</source>
        <translation>使用できるのは JPEG、GIF、PNG の画像ファイル（.jpg、.jpeg、.gif、.png）だけです。</translation>
    </message>
    <message>
        <source>This file cannot be read.</source>
        <translation>このファイルは読み込めません。</translation>
    </message>
    <message>
        <source>Only http and https links can be used.</source>
        <translation>使用できるのは http と https のリンクだけです。</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>適用</translation>
    </message>
    <message>
        <source>Discard Changes</source>
        <translation>変更を破棄</translation>
    </message>
    <message>
        <source>Keep Editing</source>
        <translation>編集を続ける</translation>
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
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Alert-YES</source>
        <translation>はい</translation>
    </message>
    <message>
        <source>Alert-NO</source>
        <translation>いいえ</translation>
    </message>
    <message>
        <source>The book will not show the image. Publish anyway?</source>
        <translation>本には画像が表示されません。それでも公開しますか？</translation>
    </message>
    <message>
        <source>Publish Anyway</source>
        <translation>それでも公開</translation>
    </message>
    <message>
        <source>Readers' books open only http and https links: this link will not show the image.</source>
        <translation>読者の本が開けるのは http と https のリンクだけです。このリンクでは画像が表示されません。</translation>
    </message>
    <message>
        <source>This link names no web server: readers' books will not find the image.</source>
        <translation>このリンクにはウェブサーバーが含まれていません。読者の本では画像が見つかりません。</translation>
    </message>
    <message>
        <source>This link has blanks in it: readers' books will not find the image.</source>
        <translation>このリンクには空白が含まれています。読者の本では画像が見つかりません。</translation>
    </message>
    <message>
        <source>A file: link points to a file on this computer, which readers do not have. Choose Local file instead.</source>
        <translation>file: リンクはこのコンピューター上のファイルを指しており、読者はそのファイルを持っていません。代わりに「ファイル」を選んでください。</translation>
    </message>
</context>
<context>
    <name>PluginSettingsDelegate</name>
    <message>
        <source>Plugin Settings - Image Plugin</source>
        <translation>プラグイン設定 - Image Plugin</translation>
    </message>
    <message>
        <source>&amp;Position on the page</source>
        <translation>ページ上の位置(&amp;P)</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>ページ</translation>
    </message>
    <message>
        <source>Where the image lies on the page. Arrow keys move it by 1 %, with Shift by 10 %; with Alt they move its right or bottom edge.</source>
        <translation>ページ上の画像の位置です。矢印キーで 1 %、Shift キーを押しながらで 10 % 移動します。Alt キーを押しながらだと右端または下端を移動します。</translation>
    </message>
    <message>
        <source>Drag the box to move the image; drag its handles to resize it. Hold Ctrl or Alt while dragging to place it freely, without snapping.</source>
        <translation>枠をドラッグすると画像を移動し、ハンドルをドラッグするとサイズを変更します。Ctrl または Alt を押しながらドラッグすると、スナップせずに自由に配置できます。</translation>
    </message>
    <message>
        <source>&amp;Left (%):</source>
        <translation>左余白(&amp;L) (%):</translation>
    </message>
    <message>
        <source>Left margin (%)</source>
        <translation>左余白 (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's left edge, in percent of the page's width.</source>
        <translation>ページの左端から画像までの距離 (ページの幅に対するパーセント)。</translation>
    </message>
    <message>
        <source>&amp;Top (%):</source>
        <translation>上余白(&amp;T) (%):</translation>
    </message>
    <message>
        <source>Top margin (%)</source>
        <translation>上余白 (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's top edge, in percent of the page's height.</source>
        <translation>ページの上端から画像までの距離 (ページの高さに対するパーセント)。</translation>
    </message>
    <message>
        <source>&amp;Right (%):</source>
        <translation>右余白(&amp;R) (%):</translation>
    </message>
    <message>
        <source>Right margin (%)</source>
        <translation>右余白 (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's right edge, in percent of the page's width.</source>
        <translation>ページの右端から画像までの距離 (ページの幅に対するパーセント)。</translation>
    </message>
    <message>
        <source>&amp;Bottom (%):</source>
        <translation>下余白(&amp;B) (%):</translation>
    </message>
    <message>
        <source>Bottom margin (%)</source>
        <translation>下余白 (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's bottom edge, in percent of the page's height.</source>
        <translation>ページの下端から画像までの距離 (ページの高さに対するパーセント)。</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外観</translation>
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
        <translation>画像を通してページがどれだけ見えるか。0 % (不透明) から 100 % (非表示) まで。</translation>
    </message>
    <message>
        <source>Transparency (%)</source>
        <translation>透明度 (%)</translation>
    </message>
    <message>
        <source>The transparency in percent, from 0 to 100.</source>
        <translation>透明度 (パーセント、0 から 100)。</translation>
    </message>
    <message>
        <source>La&amp;yer:</source>
        <translation>レイヤー(&amp;Y):</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>レイヤー</translation>
    </message>
    <message>
        <source>Whether the image lies above or below the page's own content.</source>
        <translation>画像をページの内容の前面に置くか背面に置くか。</translation>
    </message>
    <message>
        <source>Abo&amp;ve the page content</source>
        <translation>ページの内容の前面(&amp;V)</translation>
    </message>
    <message>
        <source>The image covers the page's text.</source>
        <translation>画像がページの文字を覆います。</translation>
    </message>
    <message>
        <source>Belo&amp;w the page content</source>
        <translation>ページの内容の背面(&amp;W)</translation>
    </message>
    <message>
        <source>The page's text covers the image.</source>
        <translation>ページの文字が画像を覆います。</translation>
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
        <source>The page as the book will show it, rebuilt shortly after each change.</source>
        <translation>本に表示されるとおりのページ。変更のたびにすぐ更新されます。</translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>デフォルト(&amp;D)</translation>
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
        <source>Apply the settings and close the window.</source>
        <translation>設定を適用してウィンドウを閉じます。</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Undo every change made in this window and close it.</source>
        <translation>このウィンドウで行ったすべての変更を取り消して閉じます。</translation>
    </message>
</context>
<context>
    <name>PrivateView</name>
    <message>
        <source>Lin&amp;k</source>
        <translation>リンク(&amp;K)</translation>
    </message>
    <message>
        <source>Use an image from the web.</source>
        <translation>Web 上の画像を使用します。</translation>
    </message>
    <message>
        <source>Web address of the image</source>
        <translation>画像の Web アドレス</translation>
    </message>
    <message>
        <source>An http or https address of the image.</source>
        <translation>画像の http または https アドレス。</translation>
    </message>
    <message>
        <source>http://</source>
        <translation>http://</translation>
    </message>
    <message>
        <source>Local &amp;file</source>
        <translation>ファイル(&amp;F)</translation>
    </message>
    <message>
        <source>Use an image file from this computer; it is copied into the book.</source>
        <translation>このコンピュータの画像ファイルを使用します。ファイルは本にコピーされます。</translation>
    </message>
    <message>
        <source>Chosen image file</source>
        <translation>選択した画像ファイル</translation>
    </message>
    <message>
        <source>The name of the image file copied into the book. Choose it with Browse.</source>
        <translation>本にコピーされる画像ファイルの名前。「参照」で選択します。</translation>
    </message>
    <message>
        <source>Br&amp;owse...</source>
        <translation>参照(&amp;O)...</translation>
    </message>
    <message>
        <source>Choose an image file from this computer.</source>
        <translation>このコンピュータの画像ファイルを選択します。</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Save the image choice.</source>
        <translation>画像の選択を保存します。</translation>
    </message>
    <message>
        <source>Thumbnail of the chosen image</source>
        <translation>選択した画像のサムネイル</translation>
    </message>
    <message>
        <source>A small picture of the chosen image file.</source>
        <translation>選択した画像ファイルの小さな表示です。</translation>
    </message>
    <message>
        <source>The size of the chosen image in pixels, or why it cannot be shown.</source>
        <translation>選択した画像のピクセル単位のサイズ、または表示できない理由です。</translation>
    </message>
</context>
</TS>
