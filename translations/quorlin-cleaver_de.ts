<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>Quorlin Cleaver 2.0</source>
        <translation>Quorlin Cleaver 2.0</translation>
    </message>
    <message>
        <source>Copyright 2026 The Quorlin Cleaver makers. Free software: GNU AGPL, version 3 or later.</source>
        <translation>Copyright 2026 The Quorlin Cleaver makers. Freie Software: GNU AGPL, Version 3 oder später.</translation>
    </message>
</context>
<context>
    <name>ManualWindow</name>
    <message>
        <source>Manual</source>
        <translation>Handbuch</translation>
    </message>
</context>
<context>
    <name>OpDialog</name>
    <message>
        <source>Option</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Eigene</translation>
    </message>
    <message>
        <source>Option pages</source>
        <translation>Optionsseiten</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>Fonts</source>
        <translation>Schriften</translation>
    </message>
    <message>
        <source>Security</source>
        <translation>Sicherheit</translation>
    </message>
    <message>
        <source>Annotation</source>
        <translation>Angaben</translation>
    </message>
    <message>
        <source>Color Image</source>
        <translation>Farbbilder</translation>
    </message>
    <message>
        <source>Downsample Type</source>
        <translation>Neuberechnung</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Subsample</source>
        <translation>Teilabtastung</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>Mittelwert</translation>
    </message>
    <message>
        <source>Bicubic</source>
        <translation>Bikubisch</translation>
    </message>
    <message>
        <source>Downsample Resolution</source>
        <translation>Auflösung</translation>
    </message>
    <message>
        <source>ppi</source>
        <translation>ppi</translation>
    </message>
    <message>
        <source>Compress Mode</source>
        <translation>Komprimierung</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Automatisch</translation>
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
        <translation>Graustufenbilder</translation>
    </message>
    <message>
        <source>Mono Image</source>
        <translation>Schwarzweißbilder</translation>
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
        <translation>CCITT Gruppe 4</translation>
    </message>
    <message>
        <source>Embed All Fonts</source>
        <translation>Alle Schriften einbetten</translation>
    </message>
    <message>
        <source>Compress Fonts</source>
        <translation>Schriften komprimieren</translation>
    </message>
    <message>
        <source>Subset Fonts</source>
        <translation>Nur benutzte Zeichen einbetten</translation>
    </message>
    <message>
        <source>User Password</source>
        <translation>Kennwort zum Öffnen</translation>
    </message>
    <message>
        <source>Owner Password</source>
        <translation>Kennwort für Rechte</translation>
    </message>
    <message>
        <source>Allow Printing Document</source>
        <translation>Drucken erlauben</translation>
    </message>
    <message>
        <source>Allow Modifying Contents of Document</source>
        <translation>Ändern des Inhalts erlauben</translation>
    </message>
    <message>
        <source>Allow Copying Text and Graphics from Document</source>
        <translation>Kopieren von Text und Bildern erlauben</translation>
    </message>
    <message>
        <source>Allow Adding or Modifying Text Annotations</source>
        <translation>Anmerkungen erlauben</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>Angaben</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>Verfasser</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Subject</source>
        <translation>Thema</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>Stichwörter</translation>
    </message>
    <message>
        <source>Creator</source>
        <translation>Anwendung</translation>
    </message>
    <message>
        <source>Producer</source>
        <translation>Erzeuger</translation>
    </message>
    <message>
        <source>Generate a PDF/A File</source>
        <translation>PDF/A-Datei erzeugen</translation>
    </message>
    <message>
        <source>The User Password have been set,
 and Mark function will fail.</source>
        <translation>Ein Kennwort zum Öffnen ist gesetzt:
Angaben sind dann nicht möglich.</translation>
    </message>
    <message>
        <source>User Password or Owner Password has been set, 
 and PDF/A function will fail.</source>
        <translation>Ein Kennwort ist gesetzt:
PDF/A ist dann nicht möglich.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
</context>
<context>
    <name>Process</name>
    <message>
        <source>Empty input</source>
        <translation>Keine Eingabe</translation>
    </message>
    <message>
        <source>Please choose files to split.</source>
        <translation>Bitte wählen Sie Dateien zum Aufteilen.</translation>
    </message>
    <message>
        <source>The file changed after its pages were counted. Remove it from the list, then add it again.</source>
        <translation>Die Datei wurde nach dem Zählen ihrer Seiten geändert. Entfernen Sie sie aus der Liste und fügen Sie sie wieder hinzu.</translation>
    </message>
    <message>
        <source>Add File</source>
        <translation>Dateien hinzufügen</translation>
    </message>
    <message>
        <source>PDF File(*.pdf);;ALL files(*.*)</source>
        <translation>PDF-Dateien(*.pdf);;Alle Dateien(*.*)</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Ausgabeordner</translation>
    </message>
    <message>
        <source>Add File(s)</source>
        <translation>Dateien hinzufügen</translation>
    </message>
    <message>
        <source>View PDF File</source>
        <translation>PDF-Datei ansehen</translation>
    </message>
    <message>
        <source>Delete Selected Item(s)</source>
        <translation>Ausgewählte entfernen</translation>
    </message>
    <message>
        <source>Delete All Item(s)</source>
        <translation>Alle entfernen</translation>
    </message>
    <message>
        <source>Add files to the list (%1)</source>
        <translation>Dateien in die Liste aufnehmen (%1)</translation>
    </message>
    <message>
        <source>Remove the selected files from the list (%1)</source>
        <translation>Ausgewählte Dateien aus der Liste entfernen (%1)</translation>
    </message>
    <message>
        <source>Split the files in the list (%1)</source>
        <translation>Dateien der Liste aufteilen (%1)</translation>
    </message>
    <message>
        <source>About this program. %1 opens the manual.</source>
        <translation>Über dieses Programm. %1 öffnet das Handbuch.</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
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
        <translation>Regel</translation>
    </message>
    <message>
        <source>Enlarge</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Shrink</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <translation>Vorige Seite</translation>
    </message>
    <message>
        <source>Next Page</source>
        <translation>Nächste Seite</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Seite</translation>
    </message>
    <message>
        <source>Rule Content</source>
        <translation>Inhalt der Regel</translation>
    </message>
    <message>
        <source>Save Rule As</source>
        <translation>Regel speichern als</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>Regelname</translation>
    </message>
    <message>
        <source>Page %1 cannot be shown: it could not be read.</source>
        <translation>Seite %1 kann nicht gezeigt werden: Sie ließ sich nicht lesen.</translation>
    </message>
    <message>
        <source>The first file of the list is gone: %1</source>
        <translation>Die erste Datei der Liste gibt es nicht mehr: %1</translation>
    </message>
    <message>
        <source>The list is empty. Add a file, then open the rule editor again.</source>
        <translation>Die Liste ist leer. Fügen Sie eine Datei hinzu und öffnen Sie den Regeleditor erneut.</translation>
    </message>
    <message>
        <source>The first file of the list cannot be read (damaged, protected by a password, or no PDF file): %1</source>
        <translation>Die erste Datei der Liste lässt sich nicht lesen (beschädigt, mit Kennwort geschützt oder keine PDF-Datei): %1</translation>
    </message>
    <message>
        <source>This page is too large to be shown at %1 %.</source>
        <translation>Diese Seite ist zu groß, um sie mit %1 % zu zeigen.</translation>
    </message>
    <message>
        <source>This page cannot be shown at %1 %. It stays at %2 %.</source>
        <translation>Diese Seite kann nicht mit %1 % gezeigt werden. Es bleibt bei %2 %.</translation>
    </message>
    <message>
        <source>Empty Rule Name</source>
        <translation>Kein Name</translation>
    </message>
    <message>
        <source>Please input rule name</source>
        <translation>Bitte geben Sie einen Namen für die Regel ein.</translation>
    </message>
    <message>
        <source>Existed Rule Name</source>
        <translation>Name schon vergeben</translation>
    </message>
    <message>
        <source>The rule name has been used, Please input another one</source>
        <translation>Es gibt schon eine Regel dieses Namens. Bitte geben Sie einen anderen ein.</translation>
    </message>
    <message>
        <source>Page Preview</source>
        <translation>Seitenvorschau</translation>
    </message>
    <message>
        <source>Make it be the rule</source>
        <translation>Als Regel nehmen</translation>
    </message>
</context>
<context>
    <name>SecDialog</name>
    <message>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
</context>
<context>
    <name>floatform</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
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
        <translation>Dateiliste</translation>
    </message>
    <message>
        <source>PDF File</source>
        <translation>PDF-Datei</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>File Size</source>
        <translation>Dateigröße</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Romove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Aufwärts</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Abwärts</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>Regel</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Aufteilen</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>Regelname</translation>
    </message>
    <message>
        <source>Output Folder</source>
        <translation>Ausgabeordner</translation>
    </message>
    <message>
        <source>Choose Output Folder</source>
        <translation>Ausgabeordner wählen</translation>
    </message>
    <message>
        <source>Split Method</source>
        <translation>Methode</translation>
    </message>
    <message>
        <source>1. Split when the next page has differet text in the specified position.</source>
        <translation>1. Aufteilen, wo die nächste Seite an der Stelle einen anderen Text hat.</translation>
    </message>
    <message>
        <source>2. Split when the next page has text in the specified position.</source>
        <translation>2. Aufteilen, wo die nächste Seite an der Stelle einen Text hat.</translation>
    </message>
    <message>
        <source>3. Use Method 1 and group pages containing the same text together.</source>
        <translation>3. Wie 1, dann Seiten mit gleichem Text zusammenfassen.</translation>
    </message>
    <message>
        <source>Progress Status</source>
        <translation>Fortschritt</translation>
    </message>
</context>
</TS>
