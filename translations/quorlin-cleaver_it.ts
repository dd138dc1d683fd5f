<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About</source>
        <translation>Informazioni</translation>
    </message>
    <message>
        <source>Quorlin Cleaver 2.0</source>
        <translation>Quorlin Cleaver 2.0</translation>
    </message>
    <message>
        <source>Copyright 2026 The Quorlin Cleaver makers. Free software: GNU AGPL, version 3 or later.</source>
        <translation>Copyright 2026 The Quorlin Cleaver makers. Software libero: GNU AGPL, versione 3 o successiva.</translation>
    </message>
</context>
<context>
    <name>ManualWindow</name>
    <message>
        <source>Manual</source>
        <translation>Manuale</translation>
    </message>
</context>
<context>
    <name>OpDialog</name>
    <message>
        <source>Option</source>
        <translation>Opzioni</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Impostazioni</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Personalizzato</translation>
    </message>
    <message>
        <source>Option pages</source>
        <translation>Pagine delle opzioni</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Immagini</translation>
    </message>
    <message>
        <source>Fonts</source>
        <translation>Caratteri</translation>
    </message>
    <message>
        <source>Security</source>
        <translation>Sicurezza</translation>
    </message>
    <message>
        <source>Annotation</source>
        <translation>Annotazione</translation>
    </message>
    <message>
        <source>Color Image</source>
        <translation>Immagini a colori</translation>
    </message>
    <message>
        <source>Downsample Type</source>
        <translation>Ricampionamento</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>Nessuno</translation>
    </message>
    <message>
        <source>Subsample</source>
        <translation>Sottocampionamento</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>Media</translation>
    </message>
    <message>
        <source>Bicubic</source>
        <translation>Bicubico</translation>
    </message>
    <message>
        <source>Downsample Resolution</source>
        <translation>Risoluzione</translation>
    </message>
    <message>
        <source>ppi</source>
        <translation>ppi</translation>
    </message>
    <message>
        <source>Compress Mode</source>
        <translation>Compressione</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Automatico</translation>
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
        <translation>Immagini in grigio</translation>
    </message>
    <message>
        <source>Mono Image</source>
        <translation>Immagini in bianco e nero</translation>
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
        <translation>CCITT gruppo 4</translation>
    </message>
    <message>
        <source>Embed All Fonts</source>
        <translation>Incorpora tutti i caratteri</translation>
    </message>
    <message>
        <source>Compress Fonts</source>
        <translation>Comprimi i caratteri</translation>
    </message>
    <message>
        <source>Subset Fonts</source>
        <translation>Incorpora solo i glifi usati</translation>
    </message>
    <message>
        <source>User Password</source>
        <translation>Password utente</translation>
    </message>
    <message>
        <source>Owner Password</source>
        <translation>Password proprietario</translation>
    </message>
    <message>
        <source>Allow Printing Document</source>
        <translation>Consenti la stampa</translation>
    </message>
    <message>
        <source>Allow Modifying Contents of Document</source>
        <translation>Consenti la modifica del contenuto</translation>
    </message>
    <message>
        <source>Allow Copying Text and Graphics from Document</source>
        <translation>Consenti la copia di testo e immagini</translation>
    </message>
    <message>
        <source>Allow Adding or Modifying Text Annotations</source>
        <translation>Consenti le annotazioni</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>Dati</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>Autore</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titolo</translation>
    </message>
    <message>
        <source>Subject</source>
        <translation>Oggetto</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>Parole chiave</translation>
    </message>
    <message>
        <source>Creator</source>
        <translation>Applicazione</translation>
    </message>
    <message>
        <source>Producer</source>
        <translation>Produttore</translation>
    </message>
    <message>
        <source>Generate a PDF/A File</source>
        <translation>Genera un file PDF/A</translation>
    </message>
    <message>
        <source>The User Password have been set,
 and Mark function will fail.</source>
        <translation>È impostata una password utente:
i dati non sono possibili.</translation>
    </message>
    <message>
        <source>User Password or Owner Password has been set, 
 and PDF/A function will fail.</source>
        <translation>È impostata una password:
PDF/A non è possibile.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Applica</translation>
    </message>
</context>
<context>
    <name>Process</name>
    <message>
        <source>Empty input</source>
        <translation>Nessun file</translation>
    </message>
    <message>
        <source>Please choose files to split.</source>
        <translation>Scegliere i file da dividere.</translation>
    </message>
    <message>
        <source>The file changed after its pages were counted. Remove it from the list, then add it again.</source>
        <translation>Il file è cambiato dopo il conteggio delle pagine. Rimuoverlo dall’elenco e aggiungerlo di nuovo.</translation>
    </message>
    <message>
        <source>Add File</source>
        <translation>Aggiungi file</translation>
    </message>
    <message>
        <source>PDF File(*.pdf);;ALL files(*.*)</source>
        <translation>File PDF(*.pdf);;Tutti i file(*.*)</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Cartella di uscita</translation>
    </message>
    <message>
        <source>Add File(s)</source>
        <translation>Aggiungi file</translation>
    </message>
    <message>
        <source>View PDF File</source>
        <translation>Visualizza il file PDF</translation>
    </message>
    <message>
        <source>Delete Selected Item(s)</source>
        <translation>Rimuovi i selezionati</translation>
    </message>
    <message>
        <source>Delete All Item(s)</source>
        <translation>Rimuovi tutti</translation>
    </message>
    <message>
        <source>Add files to the list (%1)</source>
        <translation>Aggiungi file all’elenco (%1)</translation>
    </message>
    <message>
        <source>Remove the selected files from the list (%1)</source>
        <translation>Rimuovi dall’elenco i file selezionati (%1)</translation>
    </message>
    <message>
        <source>Split the files in the list (%1)</source>
        <translation>Dividi i file dell’elenco (%1)</translation>
    </message>
    <message>
        <source>About this program. %1 opens the manual.</source>
        <translation>Informazioni sul programma. %1 apre il manuale.</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Informazioni</translation>
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
        <translation>Regola</translation>
    </message>
    <message>
        <source>Enlarge</source>
        <translation>Ingrandisci</translation>
    </message>
    <message>
        <source>Shrink</source>
        <translation>Riduci</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <translation>Pagina precedente</translation>
    </message>
    <message>
        <source>Next Page</source>
        <translation>Pagina successiva</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Pagina</translation>
    </message>
    <message>
        <source>Rule Content</source>
        <translation>Contenuto della regola</translation>
    </message>
    <message>
        <source>Save Rule As</source>
        <translation>Salva regola come</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>Regola</translation>
    </message>
    <message>
        <source>Page %1 cannot be shown: it could not be read.</source>
        <translation>La pagina %1 non può essere mostrata: non è stato possibile leggerla.</translation>
    </message>
    <message>
        <source>The first file of the list is gone: %1</source>
        <translation>Il primo file dell’elenco non esiste più: %1</translation>
    </message>
    <message>
        <source>The list is empty. Add a file, then open the rule editor again.</source>
        <translation>L’elenco è vuoto. Aggiungere un file e riaprire l’editor delle regole.</translation>
    </message>
    <message>
        <source>The first file of the list cannot be read (damaged, protected by a password, or no PDF file): %1</source>
        <translation>Impossibile leggere il primo file dell’elenco (danneggiato, protetto da password o non PDF): %1</translation>
    </message>
    <message>
        <source>This page is too large to be shown at %1 %.</source>
        <translation>Questa pagina è troppo grande per essere mostrata al %1 %.</translation>
    </message>
    <message>
        <source>This page cannot be shown at %1 %. It stays at %2 %.</source>
        <translation>Questa pagina non può essere mostrata al %1 %. Resta al %2 %.</translation>
    </message>
    <message>
        <source>Empty Rule Name</source>
        <translation>Nome mancante</translation>
    </message>
    <message>
        <source>Please input rule name</source>
        <translation>Inserire un nome per la regola.</translation>
    </message>
    <message>
        <source>Existed Rule Name</source>
        <translation>Nome già in uso</translation>
    </message>
    <message>
        <source>The rule name has been used, Please input another one</source>
        <translation>Esiste già una regola con questo nome. Inserirne un altro.</translation>
    </message>
    <message>
        <source>Page Preview</source>
        <translation>Anteprima della pagina</translation>
    </message>
    <message>
        <source>Make it be the rule</source>
        <translation>Usa come regola</translation>
    </message>
</context>
<context>
    <name>SecDialog</name>
    <message>
        <source>Dialog</source>
        <translation>Dialogo</translation>
    </message>
</context>
<context>
    <name>floatform</name>
    <message>
        <source>Form</source>
        <translation>Modulo</translation>
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
        <translation>Elenco dei file</translation>
    </message>
    <message>
        <source>PDF File</source>
        <translation>File PDF</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Pagine</translation>
    </message>
    <message>
        <source>File Size</source>
        <translation>Dimensione</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Risultato</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Aggiungi</translation>
    </message>
    <message>
        <source>Romove</source>
        <translation>Rimuovi</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Svuota</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Su</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Giù</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>Regola</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Dividi</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>Regola</translation>
    </message>
    <message>
        <source>Output Folder</source>
        <translation>Cartella di uscita</translation>
    </message>
    <message>
        <source>Choose Output Folder</source>
        <translation>Scegli la cartella di uscita</translation>
    </message>
    <message>
        <source>Split Method</source>
        <translation>Metodo</translation>
    </message>
    <message>
        <source>1. Split when the next page has differet text in the specified position.</source>
        <translation>1. Dividere quando la pagina successiva ha un altro testo in quel punto.</translation>
    </message>
    <message>
        <source>2. Split when the next page has text in the specified position.</source>
        <translation>2. Dividere quando la pagina successiva ha un testo in quel punto.</translation>
    </message>
    <message>
        <source>3. Use Method 1 and group pages containing the same text together.</source>
        <translation>3. Come 1, poi riunire le pagine con lo stesso testo.</translation>
    </message>
    <message>
        <source>Progress Status</source>
        <translation>Avanzamento</translation>
    </message>
</context>
</TS>
