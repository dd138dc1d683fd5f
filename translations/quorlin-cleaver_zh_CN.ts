<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About</source>
        <translation>关于</translation>
    </message>
    <message>
        <source>Quorlin Cleaver 2.0</source>
        <translation>Quorlin Cleaver 2.0</translation>
    </message>
    <message>
        <source>Copyright 2026 The Quorlin Cleaver makers. Free software: GNU AGPL, version 3 or later.</source>
        <translation>Copyright 2026 The Quorlin Cleaver makers. 自由软件：GNU AGPL 第 3 版或更高版本。</translation>
    </message>
</context>
<context>
    <name>ManualWindow</name>
    <message>
        <source>Manual</source>
        <translation>手册</translation>
    </message>
</context>
<context>
    <name>OpDialog</name>
    <message>
        <source>Option</source>
        <translation>选项</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>标准</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>自定义</translation>
    </message>
    <message>
        <source>Option pages</source>
        <translation>选项页</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>Fonts</source>
        <translation>字体</translation>
    </message>
    <message>
        <source>Security</source>
        <translation>安全</translation>
    </message>
    <message>
        <source>Annotation</source>
        <translation>注释</translation>
    </message>
    <message>
        <source>Color Image</source>
        <translation>彩色图像</translation>
    </message>
    <message>
        <source>Downsample Type</source>
        <translation>缩减采样方式</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Subsample</source>
        <translation>子采样</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>平均</translation>
    </message>
    <message>
        <source>Bicubic</source>
        <translation>双三次</translation>
    </message>
    <message>
        <source>Downsample Resolution</source>
        <translation>分辨率</translation>
    </message>
    <message>
        <source>ppi</source>
        <translation>ppi</translation>
    </message>
    <message>
        <source>Compress Mode</source>
        <translation>压缩方式</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>自动</translation>
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
        <translation>灰度图像</translation>
    </message>
    <message>
        <source>Mono Image</source>
        <translation>黑白图像</translation>
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
        <translation>嵌入所有字体</translation>
    </message>
    <message>
        <source>Compress Fonts</source>
        <translation>压缩字体</translation>
    </message>
    <message>
        <source>Subset Fonts</source>
        <translation>仅嵌入用到的字符</translation>
    </message>
    <message>
        <source>User Password</source>
        <translation>用户密码</translation>
    </message>
    <message>
        <source>Owner Password</source>
        <translation>所有者密码</translation>
    </message>
    <message>
        <source>Allow Printing Document</source>
        <translation>允许打印</translation>
    </message>
    <message>
        <source>Allow Modifying Contents of Document</source>
        <translation>允许修改内容</translation>
    </message>
    <message>
        <source>Allow Copying Text and Graphics from Document</source>
        <translation>允许复制文字和图像</translation>
    </message>
    <message>
        <source>Allow Adding or Modifying Text Annotations</source>
        <translation>允许添加或修改注释</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>文档信息</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>作者</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>标题</translation>
    </message>
    <message>
        <source>Subject</source>
        <translation>主题</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>关键字</translation>
    </message>
    <message>
        <source>Creator</source>
        <translation>创建程序</translation>
    </message>
    <message>
        <source>Producer</source>
        <translation>制作程序</translation>
    </message>
    <message>
        <source>Generate a PDF/A File</source>
        <translation>生成 PDF/A 文件</translation>
    </message>
    <message>
        <source>The User Password have been set,
 and Mark function will fail.</source>
        <translation>已设置用户密码，
无法使用文档信息。</translation>
    </message>
    <message>
        <source>User Password or Owner Password has been set, 
 and PDF/A function will fail.</source>
        <translation>已设置密码，
无法使用 PDF/A。</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
</context>
<context>
    <name>Process</name>
    <message>
        <source>Empty input</source>
        <translation>没有输入</translation>
    </message>
    <message>
        <source>Please choose files to split.</source>
        <translation>请选择要拆分的文件。</translation>
    </message>
    <message>
        <source>The file changed after its pages were counted. Remove it from the list, then add it again.</source>
        <translation>统计页数之后文件已更改。请将其从列表中移除，然后重新添加。</translation>
    </message>
    <message>
        <source>Add File</source>
        <translation>添加文件</translation>
    </message>
    <message>
        <source>PDF File(*.pdf);;ALL files(*.*)</source>
        <translation>PDF 文件(*.pdf);;所有文件(*.*)</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存到</translation>
    </message>
    <message>
        <source>Add File(s)</source>
        <translation>添加文件</translation>
    </message>
    <message>
        <source>View PDF File</source>
        <translation>查看 PDF 文件</translation>
    </message>
    <message>
        <source>Delete Selected Item(s)</source>
        <translation>移除所选项</translation>
    </message>
    <message>
        <source>Delete All Item(s)</source>
        <translation>移除全部</translation>
    </message>
    <message>
        <source>Add files to the list (%1)</source>
        <translation>将文件添加到列表 (%1)</translation>
    </message>
    <message>
        <source>Remove the selected files from the list (%1)</source>
        <translation>从列表中移除所选文件 (%1)</translation>
    </message>
    <message>
        <source>Split the files in the list (%1)</source>
        <translation>拆分列表中的文件 (%1)</translation>
    </message>
    <message>
        <source>About this program. %1 opens the manual.</source>
        <translation>关于本程序。%1 打开手册。</translation>
    </message>
    <message>
        <source>About</source>
        <translation>关于</translation>
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
        <translation>规则</translation>
    </message>
    <message>
        <source>Enlarge</source>
        <translation>放大</translation>
    </message>
    <message>
        <source>Shrink</source>
        <translation>缩小</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <translation>上一页</translation>
    </message>
    <message>
        <source>Next Page</source>
        <translation>下一页</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>页</translation>
    </message>
    <message>
        <source>Rule Content</source>
        <translation>规则内容</translation>
    </message>
    <message>
        <source>Save Rule As</source>
        <translation>规则另存为</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>规则名</translation>
    </message>
    <message>
        <source>Page %1 cannot be shown: it could not be read.</source>
        <translation>无法显示第 %1 页：无法读取。</translation>
    </message>
    <message>
        <source>The first file of the list is gone: %1</source>
        <translation>列表中的第一个文件已不存在：%1</translation>
    </message>
    <message>
        <source>The list is empty. Add a file, then open the rule editor again.</source>
        <translation>列表为空。请添加文件，然后重新打开规则编辑器。</translation>
    </message>
    <message>
        <source>The first file of the list cannot be read (damaged, protected by a password, or no PDF file): %1</source>
        <translation>无法读取列表中的第一个文件（已损坏、受密码保护或不是 PDF 文件）：%1</translation>
    </message>
    <message>
        <source>This page is too large to be shown at %1 %.</source>
        <translation>此页太大，无法以 %1 % 显示。</translation>
    </message>
    <message>
        <source>This page cannot be shown at %1 %. It stays at %2 %.</source>
        <translation>此页无法以 %1 % 显示，保持 %2 %。</translation>
    </message>
    <message>
        <source>Empty Rule Name</source>
        <translation>规则名为空</translation>
    </message>
    <message>
        <source>Please input rule name</source>
        <translation>请输入规则名。</translation>
    </message>
    <message>
        <source>Existed Rule Name</source>
        <translation>规则名已存在</translation>
    </message>
    <message>
        <source>The rule name has been used, Please input another one</source>
        <translation>该规则名已被使用，请输入其他名称。</translation>
    </message>
    <message>
        <source>Page Preview</source>
        <translation>页面预览</translation>
    </message>
    <message>
        <source>Make it be the rule</source>
        <translation>设为规则</translation>
    </message>
</context>
<context>
    <name>SecDialog</name>
    <message>
        <source>Dialog</source>
        <translation>对话框</translation>
    </message>
</context>
<context>
    <name>floatform</name>
    <message>
        <source>Form</source>
        <translation>窗体</translation>
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
        <translation>文件列表</translation>
    </message>
    <message>
        <source>PDF File</source>
        <translation>PDF 文件</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>页数</translation>
    </message>
    <message>
        <source>File Size</source>
        <translation>文件大小</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>结果</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Romove</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清空</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>上移</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>下移</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>规则</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>拆分</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>规则名</translation>
    </message>
    <message>
        <source>Output Folder</source>
        <translation>输出文件夹</translation>
    </message>
    <message>
        <source>Choose Output Folder</source>
        <translation>选择输出文件夹</translation>
    </message>
    <message>
        <source>Split Method</source>
        <translation>拆分方式</translation>
    </message>
    <message>
        <source>1. Split when the next page has differet text in the specified position.</source>
        <translation>1. 下一页指定位置的文字不同时拆分。</translation>
    </message>
    <message>
        <source>2. Split when the next page has text in the specified position.</source>
        <translation>2. 下一页指定位置有文字时拆分。</translation>
    </message>
    <message>
        <source>3. Use Method 1 and group pages containing the same text together.</source>
        <translation>3. 使用方式 1，并将文字相同的页合并。</translation>
    </message>
    <message>
        <source>Progress Status</source>
        <translation>进度</translation>
    </message>
</context>
</TS>
