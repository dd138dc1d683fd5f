<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About</source>
        <translation>Sobre</translation>
    </message>
    <message>
        <source>Quorlin Cleaver 2.0</source>
        <translation>Quorlin Cleaver 2.0</translation>
    </message>
    <message>
        <source>Copyright 2026 The Quorlin Cleaver makers. Free software: GNU AGPL, version 3 or later.</source>
        <translation>Copyright 2026 The Quorlin Cleaver makers. Software livre: GNU AGPL, versão 3 ou posterior.</translation>
    </message>
</context>
<context>
    <name>ManualWindow</name>
    <message>
        <source>Manual</source>
        <translation>Manual</translation>
    </message>
</context>
<context>
    <name>OpDialog</name>
    <message>
        <source>Option</source>
        <translation>Opções</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Definições</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Padrão</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Personalizado</translation>
    </message>
    <message>
        <source>Option pages</source>
        <translation>Páginas de opções</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Imagens</translation>
    </message>
    <message>
        <source>Fonts</source>
        <translation>Fontes</translation>
    </message>
    <message>
        <source>Security</source>
        <translation>Segurança</translation>
    </message>
    <message>
        <source>Annotation</source>
        <translation>Anotação</translation>
    </message>
    <message>
        <source>Color Image</source>
        <translation>Imagens a cores</translation>
    </message>
    <message>
        <source>Downsample Type</source>
        <translation>Reamostragem</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>Nenhuma</translation>
    </message>
    <message>
        <source>Subsample</source>
        <translation>Subamostragem</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>Média</translation>
    </message>
    <message>
        <source>Bicubic</source>
        <translation>Bicúbica</translation>
    </message>
    <message>
        <source>Downsample Resolution</source>
        <translation>Resolução</translation>
    </message>
    <message>
        <source>ppi</source>
        <translation>ppp</translation>
    </message>
    <message>
        <source>Compress Mode</source>
        <translation>Compressão</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Automático</translation>
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
        <translation>Imagens em cinzento</translation>
    </message>
    <message>
        <source>Mono Image</source>
        <translation>Imagens a preto e branco</translation>
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
        <translation>CCITT grupo 4</translation>
    </message>
    <message>
        <source>Embed All Fonts</source>
        <translation>Incorporar todas as fontes</translation>
    </message>
    <message>
        <source>Compress Fonts</source>
        <translation>Comprimir as fontes</translation>
    </message>
    <message>
        <source>Subset Fonts</source>
        <translation>Incorporar só os caracteres usados</translation>
    </message>
    <message>
        <source>User Password</source>
        <translation>Senha de utilizador</translation>
    </message>
    <message>
        <source>Owner Password</source>
        <translation>Senha de proprietário</translation>
    </message>
    <message>
        <source>Allow Printing Document</source>
        <translation>Permitir imprimir</translation>
    </message>
    <message>
        <source>Allow Modifying Contents of Document</source>
        <translation>Permitir modificar o conteúdo</translation>
    </message>
    <message>
        <source>Allow Copying Text and Graphics from Document</source>
        <translation>Permitir copiar texto e imagens</translation>
    </message>
    <message>
        <source>Allow Adding or Modifying Text Annotations</source>
        <translation>Permitir anotações</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>Dados</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>Autor</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Título</translation>
    </message>
    <message>
        <source>Subject</source>
        <translation>Assunto</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>Palavras-chave</translation>
    </message>
    <message>
        <source>Creator</source>
        <translation>Aplicação</translation>
    </message>
    <message>
        <source>Producer</source>
        <translation>Produtor</translation>
    </message>
    <message>
        <source>Generate a PDF/A File</source>
        <translation>Gerar um ficheiro PDF/A</translation>
    </message>
    <message>
        <source>The User Password have been set,
 and Mark function will fail.</source>
        <translation>Há uma senha de utilizador:
os dados não são possíveis.</translation>
    </message>
    <message>
        <source>User Password or Owner Password has been set, 
 and PDF/A function will fail.</source>
        <translation>Há uma senha:
PDF/A não é possível.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Aplicar</translation>
    </message>
</context>
<context>
    <name>Process</name>
    <message>
        <source>Empty input</source>
        <translation>Sem entrada</translation>
    </message>
    <message>
        <source>Please choose files to split.</source>
        <translation>Escolha os ficheiros a dividir.</translation>
    </message>
    <message>
        <source>The file changed after its pages were counted. Remove it from the list, then add it again.</source>
        <translation>O ficheiro mudou depois de as páginas serem contadas. Remova-o da lista e adicione-o de novo.</translation>
    </message>
    <message>
        <source>Add File</source>
        <translation>Adicionar ficheiros</translation>
    </message>
    <message>
        <source>PDF File(*.pdf);;ALL files(*.*)</source>
        <translation>Ficheiros PDF(*.pdf);;Todos os ficheiros(*.*)</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Pasta de saída</translation>
    </message>
    <message>
        <source>Add File(s)</source>
        <translation>Adicionar ficheiros</translation>
    </message>
    <message>
        <source>View PDF File</source>
        <translation>Ver o ficheiro PDF</translation>
    </message>
    <message>
        <source>Delete Selected Item(s)</source>
        <translation>Remover os selecionados</translation>
    </message>
    <message>
        <source>Delete All Item(s)</source>
        <translation>Remover todos</translation>
    </message>
    <message>
        <source>Add files to the list (%1)</source>
        <translation>Adicionar ficheiros à lista (%1)</translation>
    </message>
    <message>
        <source>Remove the selected files from the list (%1)</source>
        <translation>Remover da lista os ficheiros selecionados (%1)</translation>
    </message>
    <message>
        <source>Split the files in the list (%1)</source>
        <translation>Dividir os ficheiros da lista (%1)</translation>
    </message>
    <message>
        <source>About this program. %1 opens the manual.</source>
        <translation>Sobre este programa. %1 abre o manual.</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Sobre</translation>
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
        <translation>Regra</translation>
    </message>
    <message>
        <source>Enlarge</source>
        <translation>Ampliar</translation>
    </message>
    <message>
        <source>Shrink</source>
        <translation>Reduzir</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <translation>Página anterior</translation>
    </message>
    <message>
        <source>Next Page</source>
        <translation>Página seguinte</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Página</translation>
    </message>
    <message>
        <source>Rule Content</source>
        <translation>Conteúdo da regra</translation>
    </message>
    <message>
        <source>Save Rule As</source>
        <translation>Guardar regra como</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>Regra</translation>
    </message>
    <message>
        <source>Page %1 cannot be shown: it could not be read.</source>
        <translation>A página %1 não pode ser mostrada: não foi possível lê-la.</translation>
    </message>
    <message>
        <source>The first file of the list is gone: %1</source>
        <translation>O primeiro ficheiro da lista já não existe: %1</translation>
    </message>
    <message>
        <source>The list is empty. Add a file, then open the rule editor again.</source>
        <translation>A lista está vazia. Adicione um ficheiro e volte a abrir o editor de regras.</translation>
    </message>
    <message>
        <source>The first file of the list cannot be read (damaged, protected by a password, or no PDF file): %1</source>
        <translation>Não é possível ler o primeiro ficheiro da lista (danificado, com senha ou não é PDF): %1</translation>
    </message>
    <message>
        <source>This page is too large to be shown at %1 %.</source>
        <translation>Esta página é demasiado grande para ser mostrada a %1 %.</translation>
    </message>
    <message>
        <source>This page cannot be shown at %1 %. It stays at %2 %.</source>
        <translation>Esta página não pode ser mostrada a %1 %. Fica a %2 %.</translation>
    </message>
    <message>
        <source>Empty Rule Name</source>
        <translation>Falta o nome</translation>
    </message>
    <message>
        <source>Please input rule name</source>
        <translation>Introduza um nome para a regra.</translation>
    </message>
    <message>
        <source>Existed Rule Name</source>
        <translation>Nome já usado</translation>
    </message>
    <message>
        <source>The rule name has been used, Please input another one</source>
        <translation>Já existe uma regra com esse nome. Introduza outro.</translation>
    </message>
    <message>
        <source>Page Preview</source>
        <translation>Pré-visualização</translation>
    </message>
    <message>
        <source>Make it be the rule</source>
        <translation>Usar como regra</translation>
    </message>
</context>
<context>
    <name>SecDialog</name>
    <message>
        <source>Dialog</source>
        <translation>Diálogo</translation>
    </message>
</context>
<context>
    <name>floatform</name>
    <message>
        <source>Form</source>
        <translation>Formulário</translation>
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
        <translation>Lista de ficheiros</translation>
    </message>
    <message>
        <source>PDF File</source>
        <translation>Ficheiro PDF</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Páginas</translation>
    </message>
    <message>
        <source>File Size</source>
        <translation>Tamanho</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Resultado</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Adicionar</translation>
    </message>
    <message>
        <source>Romove</source>
        <translation>Remover</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Limpar</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Subir</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Descer</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>Regra</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Dividir</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>Regra</translation>
    </message>
    <message>
        <source>Output Folder</source>
        <translation>Pasta de saída</translation>
    </message>
    <message>
        <source>Choose Output Folder</source>
        <translation>Escolher a pasta de saída</translation>
    </message>
    <message>
        <source>Split Method</source>
        <translation>Método</translation>
    </message>
    <message>
        <source>1. Split when the next page has differet text in the specified position.</source>
        <translation>1. Dividir quando a página seguinte tem outro texto nessa posição.</translation>
    </message>
    <message>
        <source>2. Split when the next page has text in the specified position.</source>
        <translation>2. Dividir quando a página seguinte tem texto nessa posição.</translation>
    </message>
    <message>
        <source>3. Use Method 1 and group pages containing the same text together.</source>
        <translation>3. Como 1 e juntar as páginas com o mesmo texto.</translation>
    </message>
    <message>
        <source>Progress Status</source>
        <translation>Progresso</translation>
    </message>
</context>
</TS>
