<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About</source>
        <translation>Acerca de</translation>
    </message>
    <message>
        <source>Quorlin Cleaver 2.0</source>
        <translation>Quorlin Cleaver 2.0</translation>
    </message>
    <message>
        <source>Copyright 2026 The Quorlin Cleaver makers. Free software: GNU AGPL, version 3 or later.</source>
        <translation>Copyright 2026 The Quorlin Cleaver makers. Software libre: GNU AGPL, versión 3 o posterior.</translation>
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
        <translation>Opciones</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Estándar</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Personalizado</translation>
    </message>
    <message>
        <source>Option pages</source>
        <translation>Páginas de opciones</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Imágenes</translation>
    </message>
    <message>
        <source>Fonts</source>
        <translation>Fuentes</translation>
    </message>
    <message>
        <source>Security</source>
        <translation>Seguridad</translation>
    </message>
    <message>
        <source>Annotation</source>
        <translation>Anotación</translation>
    </message>
    <message>
        <source>Color Image</source>
        <translation>Imágenes en color</translation>
    </message>
    <message>
        <source>Downsample Type</source>
        <translation>Remuestreo</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>Ninguno</translation>
    </message>
    <message>
        <source>Subsample</source>
        <translation>Submuestreo</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>Promedio</translation>
    </message>
    <message>
        <source>Bicubic</source>
        <translation>Bicúbico</translation>
    </message>
    <message>
        <source>Downsample Resolution</source>
        <translation>Resolución</translation>
    </message>
    <message>
        <source>ppi</source>
        <translation>ppp</translation>
    </message>
    <message>
        <source>Compress Mode</source>
        <translation>Compresión</translation>
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
        <translation>Imágenes en gris</translation>
    </message>
    <message>
        <source>Mono Image</source>
        <translation>Imágenes en blanco y negro</translation>
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
        <translation>Incrustar todas las fuentes</translation>
    </message>
    <message>
        <source>Compress Fonts</source>
        <translation>Comprimir las fuentes</translation>
    </message>
    <message>
        <source>Subset Fonts</source>
        <translation>Incrustar solo los caracteres usados</translation>
    </message>
    <message>
        <source>User Password</source>
        <translation>Contraseña de usuario</translation>
    </message>
    <message>
        <source>Owner Password</source>
        <translation>Contraseña de propietario</translation>
    </message>
    <message>
        <source>Allow Printing Document</source>
        <translation>Permitir imprimir</translation>
    </message>
    <message>
        <source>Allow Modifying Contents of Document</source>
        <translation>Permitir modificar el contenido</translation>
    </message>
    <message>
        <source>Allow Copying Text and Graphics from Document</source>
        <translation>Permitir copiar texto e imágenes</translation>
    </message>
    <message>
        <source>Allow Adding or Modifying Text Annotations</source>
        <translation>Permitir las anotaciones</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>Datos</translation>
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
        <translation>Asunto</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>Palabras clave</translation>
    </message>
    <message>
        <source>Creator</source>
        <translation>Aplicación</translation>
    </message>
    <message>
        <source>Producer</source>
        <translation>Productor</translation>
    </message>
    <message>
        <source>Generate a PDF/A File</source>
        <translation>Generar un archivo PDF/A</translation>
    </message>
    <message>
        <source>The User Password have been set,
 and Mark function will fail.</source>
        <translation>Hay una contraseña de usuario:
los datos no son posibles.</translation>
    </message>
    <message>
        <source>User Password or Owner Password has been set, 
 and PDF/A function will fail.</source>
        <translation>Hay una contraseña:
PDF/A no es posible.</translation>
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
        <translation>Sin entrada</translation>
    </message>
    <message>
        <source>Please choose files to split.</source>
        <translation>Elija los archivos que desea dividir.</translation>
    </message>
    <message>
        <source>The file changed after its pages were counted. Remove it from the list, then add it again.</source>
        <translation>El archivo cambió después de contar sus páginas. Quítelo de la lista y vuelva a añadirlo.</translation>
    </message>
    <message>
        <source>Add File</source>
        <translation>Añadir archivos</translation>
    </message>
    <message>
        <source>PDF File(*.pdf);;ALL files(*.*)</source>
        <translation>Archivos PDF(*.pdf);;Todos los archivos(*.*)</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Carpeta de salida</translation>
    </message>
    <message>
        <source>Add File(s)</source>
        <translation>Añadir archivos</translation>
    </message>
    <message>
        <source>View PDF File</source>
        <translation>Ver el archivo PDF</translation>
    </message>
    <message>
        <source>Delete Selected Item(s)</source>
        <translation>Quitar los seleccionados</translation>
    </message>
    <message>
        <source>Delete All Item(s)</source>
        <translation>Quitar todos</translation>
    </message>
    <message>
        <source>Add files to the list (%1)</source>
        <translation>Añadir archivos a la lista (%1)</translation>
    </message>
    <message>
        <source>Remove the selected files from the list (%1)</source>
        <translation>Quitar de la lista los archivos seleccionados (%1)</translation>
    </message>
    <message>
        <source>Split the files in the list (%1)</source>
        <translation>Dividir los archivos de la lista (%1)</translation>
    </message>
    <message>
        <source>About this program. %1 opens the manual.</source>
        <translation>Acerca de este programa. %1 abre el manual.</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Acerca de</translation>
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
        <translation>Regla</translation>
    </message>
    <message>
        <source>Enlarge</source>
        <translation>Ampliar</translation>
    </message>
    <message>
        <source>Shrink</source>
        <translation>Reducir</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <translation>Página anterior</translation>
    </message>
    <message>
        <source>Next Page</source>
        <translation>Página siguiente</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Página</translation>
    </message>
    <message>
        <source>Rule Content</source>
        <translation>Contenido de la regla</translation>
    </message>
    <message>
        <source>Save Rule As</source>
        <translation>Guardar regla como</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>Regla</translation>
    </message>
    <message>
        <source>Page %1 cannot be shown: it could not be read.</source>
        <translation>No se puede mostrar la página %1: no se pudo leer.</translation>
    </message>
    <message>
        <source>The first file of the list is gone: %1</source>
        <translation>El primer archivo de la lista ya no existe: %1</translation>
    </message>
    <message>
        <source>The list is empty. Add a file, then open the rule editor again.</source>
        <translation>La lista está vacía. Añada un archivo y vuelva a abrir el editor de reglas.</translation>
    </message>
    <message>
        <source>The first file of the list cannot be read (damaged, protected by a password, or no PDF file): %1</source>
        <translation>No se puede leer el primer archivo de la lista (dañado, con contraseña o no es un PDF): %1</translation>
    </message>
    <message>
        <source>This page is too large to be shown at %1 %.</source>
        <translation>Esta página es demasiado grande para mostrarla al %1 %.</translation>
    </message>
    <message>
        <source>This page cannot be shown at %1 %. It stays at %2 %.</source>
        <translation>Esta página no se puede mostrar al %1 %. Se queda al %2 %.</translation>
    </message>
    <message>
        <source>Empty Rule Name</source>
        <translation>Falta el nombre</translation>
    </message>
    <message>
        <source>Please input rule name</source>
        <translation>Escriba un nombre para la regla.</translation>
    </message>
    <message>
        <source>Existed Rule Name</source>
        <translation>Nombre ya usado</translation>
    </message>
    <message>
        <source>The rule name has been used, Please input another one</source>
        <translation>Ya hay una regla con ese nombre. Escriba otro.</translation>
    </message>
    <message>
        <source>Page Preview</source>
        <translation>Vista previa</translation>
    </message>
    <message>
        <source>Make it be the rule</source>
        <translation>Usar como regla</translation>
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
        <translation>Formulario</translation>
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
        <translation>Lista de archivos</translation>
    </message>
    <message>
        <source>PDF File</source>
        <translation>Archivo PDF</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Páginas</translation>
    </message>
    <message>
        <source>File Size</source>
        <translation>Tamaño</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Resultado</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Añadir</translation>
    </message>
    <message>
        <source>Romove</source>
        <translation>Quitar</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Vaciar</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Subir</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Bajar</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>Regla</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Dividir</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>Regla</translation>
    </message>
    <message>
        <source>Output Folder</source>
        <translation>Carpeta de salida</translation>
    </message>
    <message>
        <source>Choose Output Folder</source>
        <translation>Elegir la carpeta de salida</translation>
    </message>
    <message>
        <source>Split Method</source>
        <translation>Método</translation>
    </message>
    <message>
        <source>1. Split when the next page has differet text in the specified position.</source>
        <translation>1. Dividir cuando la página siguiente tiene otro texto en esa posición.</translation>
    </message>
    <message>
        <source>2. Split when the next page has text in the specified position.</source>
        <translation>2. Dividir cuando la página siguiente tiene texto en esa posición.</translation>
    </message>
    <message>
        <source>3. Use Method 1 and group pages containing the same text together.</source>
        <translation>3. Como 1 y reunir las páginas que tienen el mismo texto.</translation>
    </message>
    <message>
        <source>Progress Status</source>
        <translation>Progreso</translation>
    </message>
</context>
</TS>
