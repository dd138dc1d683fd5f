<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About</source>
        <translation>情報</translation>
    </message>
    <message>
        <source>Quorlin Cleaver 2.0</source>
        <translation>Quorlin Cleaver 2.0</translation>
    </message>
    <message>
        <source>Copyright 2026 The Quorlin Cleaver makers. Free software: GNU AGPL, version 3 or later.</source>
        <translation>Copyright 2026 The Quorlin Cleaver makers. 自由ソフトウェア: GNU AGPL バージョン 3 以降。</translation>
    </message>
</context>
<context>
    <name>ManualWindow</name>
    <message>
        <source>Manual</source>
        <translation>マニュアル</translation>
    </message>
</context>
<context>
    <name>OpDialog</name>
    <message>
        <source>Option</source>
        <translation>オプション</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>標準</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>カスタム</translation>
    </message>
    <message>
        <source>Option pages</source>
        <translation>オプションのページ</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>Fonts</source>
        <translation>フォント</translation>
    </message>
    <message>
        <source>Security</source>
        <translation>セキュリティ</translation>
    </message>
    <message>
        <source>Annotation</source>
        <translation>注釈</translation>
    </message>
    <message>
        <source>Color Image</source>
        <translation>カラー画像</translation>
    </message>
    <message>
        <source>Downsample Type</source>
        <translation>ダウンサンプル方式</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>なし</translation>
    </message>
    <message>
        <source>Subsample</source>
        <translation>サブサンプル</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>平均</translation>
    </message>
    <message>
        <source>Bicubic</source>
        <translation>バイキュービック</translation>
    </message>
    <message>
        <source>Downsample Resolution</source>
        <translation>解像度</translation>
    </message>
    <message>
        <source>ppi</source>
        <translation>ppi</translation>
    </message>
    <message>
        <source>Compress Mode</source>
        <translation>圧縮方式</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>自動</translation>
    </message>
    <message>
        <source>JPEG</source>
        <translation>JPEG</translation>
    </message>
    <message>
        <source>ZIP</source>
        <translation>ZIP</translation>
    </message>
    <message>
        <source>Gray Image</source>
        <translation>グレー画像</translation>
    </message>
    <message>
        <source>Mono Image</source>
        <translation>モノクロ画像</translation>
    </message>
    <message>
        <source>RLE</source>
        <translation>RLE</translation>
    </message>
    <message>
        <source>JBIG2</source>
        <translation>JBIG2</translation>
    </message>
    <message>
        <source>CCITT Group 4</source>
        <translation>CCITT Group 4</translation>
    </message>
    <message>
        <source>Embed All Fonts</source>
        <translation>すべてのフォントを埋め込む</translation>
    </message>
    <message>
        <source>Compress Fonts</source>
        <translation>フォントを圧縮する</translation>
    </message>
    <message>
        <source>Subset Fonts</source>
        <translation>使用文字だけを埋め込む</translation>
    </message>
    <message>
        <source>User Password</source>
        <translation>ユーザーパスワード</translation>
    </message>
    <message>
        <source>Owner Password</source>
        <translation>所有者パスワード</translation>
    </message>
    <message>
        <source>Allow Printing Document</source>
        <translation>印刷を許可する</translation>
    </message>
    <message>
        <source>Allow Modifying Contents of Document</source>
        <translation>内容の変更を許可する</translation>
    </message>
    <message>
        <source>Allow Copying Text and Graphics from Document</source>
        <translation>テキストと画像のコピーを許可する</translation>
    </message>
    <message>
        <source>Allow Adding or Modifying Text Annotations</source>
        <translation>注釈の追加と変更を許可する</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>文書情報</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>作成者</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>タイトル</translation>
    </message>
    <message>
        <source>Subject</source>
        <translation>サブタイトル</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>キーワード</translation>
    </message>
    <message>
        <source>Creator</source>
        <translation>アプリケーション</translation>
    </message>
    <message>
        <source>Producer</source>
        <translation>PDF 変換</translation>
    </message>
    <message>
        <source>Generate a PDF/A File</source>
        <translation>PDF/A ファイルを作成する</translation>
    </message>
    <message>
        <source>The User Password have been set,
 and Mark function will fail.</source>
        <translation>ユーザーパスワードが設定されているため、
文書情報は使えません。</translation>
    </message>
    <message>
        <source>User Password or Owner Password has been set, 
 and PDF/A function will fail.</source>
        <translation>パスワードが設定されているため、
PDF/A は使えません。</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>適用</translation>
    </message>
</context>
<context>
    <name>Process</name>
    <message>
        <source>Empty input</source>
        <translation>入力がありません</translation>
    </message>
    <message>
        <source>Please choose files to split.</source>
        <translation>分割するファイルを選んでください。</translation>
    </message>
    <message>
        <source>The file changed after its pages were counted. Remove it from the list, then add it again.</source>
        <translation>ページを数えた後にファイルが変わりました。一覧から外して、もう一度追加してください。</translation>
    </message>
    <message>
        <source>Add File</source>
        <translation>ファイルの追加</translation>
    </message>
    <message>
        <source>PDF File(*.pdf);;ALL files(*.*)</source>
        <translation>PDF ファイル(*.pdf);;すべてのファイル(*.*)</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存先</translation>
    </message>
    <message>
        <source>Add File(s)</source>
        <translation>ファイルを追加</translation>
    </message>
    <message>
        <source>View PDF File</source>
        <translation>PDF ファイルを表示</translation>
    </message>
    <message>
        <source>Delete Selected Item(s)</source>
        <translation>選択した項目を外す</translation>
    </message>
    <message>
        <source>Delete All Item(s)</source>
        <translation>すべて外す</translation>
    </message>
    <message>
        <source>Add files to the list (%1)</source>
        <translation>一覧にファイルを追加します (%1)</translation>
    </message>
    <message>
        <source>Remove the selected files from the list (%1)</source>
        <translation>選択したファイルを一覧から外します (%1)</translation>
    </message>
    <message>
        <source>Split the files in the list (%1)</source>
        <translation>一覧のファイルを分割します (%1)</translation>
    </message>
    <message>
        <source>About this program. %1 opens the manual.</source>
        <translation>このプログラムについて。%1 でマニュアルを開きます。</translation>
    </message>
    <message>
        <source>About</source>
        <translation>情報</translation>
    </message>
    <message>
        <source>Quorlin Cleaver</source>
        <translation>Quorlin Cleaver</translation>
    </message>
</context>
<context>
    <name>Rules</name>
    <message>
        <source>Rule</source>
        <translation>ルール</translation>
    </message>
    <message>
        <source>Enlarge</source>
        <translation>拡大</translation>
    </message>
    <message>
        <source>Shrink</source>
        <translation>縮小</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <translation>前のページ</translation>
    </message>
    <message>
        <source>Next Page</source>
        <translation>次のページ</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>ページ</translation>
    </message>
    <message>
        <source>Rule Content</source>
        <translation>ルールの内容</translation>
    </message>
    <message>
        <source>Save Rule As</source>
        <translation>名前を付けて保存</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>ルール名</translation>
    </message>
    <message>
        <source>Page %1 cannot be shown: it could not be read.</source>
        <translation>ページ %1 は読み取れなかったため、表示できません。</translation>
    </message>
    <message>
        <source>The first file of the list is gone: %1</source>
        <translation>一覧の最初のファイルがなくなっています: %1</translation>
    </message>
    <message>
        <source>The list is empty. Add a file, then open the rule editor again.</source>
        <translation>一覧が空です。ファイルを追加してから、もう一度ルールエディターを開いてください。</translation>
    </message>
    <message>
        <source>The first file of the list cannot be read (damaged, protected by a password, or no PDF file): %1</source>
        <translation>一覧の最初のファイルを読み取れません (破損、パスワード保護、または PDF 以外): %1</translation>
    </message>
    <message>
        <source>This page is too large to be shown at %1 %.</source>
        <translation>このページは大きすぎるため、%1 % では表示できません。</translation>
    </message>
    <message>
        <source>This page cannot be shown at %1 %. It stays at %2 %.</source>
        <translation>このページは %1 % では表示できません。%2 % のままにします。</translation>
    </message>
    <message>
        <source>Empty Rule Name</source>
        <translation>ルール名がありません</translation>
    </message>
    <message>
        <source>Please input rule name</source>
        <translation>ルール名を入力してください。</translation>
    </message>
    <message>
        <source>Existed Rule Name</source>
        <translation>同じ名前のルールがあります</translation>
    </message>
    <message>
        <source>The rule name has been used, Please input another one</source>
        <translation>この名前のルールはすでにあります。別の名前を入力してください。</translation>
    </message>
    <message>
        <source>Page Preview</source>
        <translation>ページのプレビュー</translation>
    </message>
    <message>
        <source>Make it be the rule</source>
        <translation>これをルールにする</translation>
    </message>
</context>
<context>
    <name>SecDialog</name>
    <message>
        <source>Dialog</source>
        <translation>ダイアログ</translation>
    </message>
</context>
<context>
    <name>floatform</name>
    <message>
        <source>Form</source>
        <translation>フォーム</translation>
    </message>
</context>
<context>
    <name>process</name>
    <message>
        <source>Quorlin Cleaver</source>
        <translation>Quorlin Cleaver</translation>
    </message>
    <message>
        <source>File List</source>
        <translation>ファイル一覧</translation>
    </message>
    <message>
        <source>PDF File</source>
        <translation>PDF ファイル</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>ページ数</translation>
    </message>
    <message>
        <source>File Size</source>
        <translation>サイズ</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>結果</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>追加</translation>
    </message>
    <message>
        <source>Romove</source>
        <translation>外す</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>クリア</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>上へ</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>下へ</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>ルール</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>分割</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>ルール名</translation>
    </message>
    <message>
        <source>Output Folder</source>
        <translation>出力フォルダー</translation>
    </message>
    <message>
        <source>Choose Output Folder</source>
        <translation>出力フォルダーを選ぶ</translation>
    </message>
    <message>
        <source>Split Method</source>
        <translation>分割方法</translation>
    </message>
    <message>
        <source>1. Split when the next page has differet text in the specified position.</source>
        <translation>1. 指定位置の文字が次のページで変わるところで分割する。</translation>
    </message>
    <message>
        <source>2. Split when the next page has text in the specified position.</source>
        <translation>2. 次のページの指定位置に文字があるところで分割する。</translation>
    </message>
    <message>
        <source>3. Use Method 1 and group pages containing the same text together.</source>
        <translation>3. 方法 1 に加え、同じ文字のページをまとめる。</translation>
    </message>
    <message>
        <source>Progress Status</source>
        <translation>進行状況</translation>
    </message>
</context>
</TS>
