<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pl" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About</source>
        <translation>O programie</translation>
    </message>
    <message>
        <source>Quorlin Cleaver 2.0</source>
        <translation>Quorlin Cleaver 2.0</translation>
    </message>
    <message>
        <source>Copyright 2026 The Quorlin Cleaver makers. Free software: GNU AGPL, version 3 or later.</source>
        <translation>Copyright 2026 The Quorlin Cleaver makers. Wolne oprogramowanie: GNU AGPL, wersja 3 lub nowsza.</translation>
    </message>
</context>
<context>
    <name>ManualWindow</name>
    <message>
        <source>Manual</source>
        <translation>Podręcznik</translation>
    </message>
</context>
<context>
    <name>OpDialog</name>
    <message>
        <source>Option</source>
        <translation>Opcje</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ustawienia</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Standardowe</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Własne</translation>
    </message>
    <message>
        <source>Option pages</source>
        <translation>Strony opcji</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Obrazy</translation>
    </message>
    <message>
        <source>Fonts</source>
        <translation>Czcionki</translation>
    </message>
    <message>
        <source>Security</source>
        <translation>Ochrona</translation>
    </message>
    <message>
        <source>Annotation</source>
        <translation>Adnotacje</translation>
    </message>
    <message>
        <source>Color Image</source>
        <translation>Obrazy kolorowe</translation>
    </message>
    <message>
        <source>Downsample Type</source>
        <translation>Próbkowanie</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>Wyłączone</translation>
    </message>
    <message>
        <source>Subsample</source>
        <translation>Podpróbkowanie</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>Średnia</translation>
    </message>
    <message>
        <source>Bicubic</source>
        <translation>Dwusześcienne</translation>
    </message>
    <message>
        <source>Downsample Resolution</source>
        <translation>Rozdzielczość</translation>
    </message>
    <message>
        <source>ppi</source>
        <translation>ppi</translation>
    </message>
    <message>
        <source>Compress Mode</source>
        <translation>Kompresja</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Automatyczna</translation>
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
        <translation>Obrazy szare</translation>
    </message>
    <message>
        <source>Mono Image</source>
        <translation>Obrazy czarno-białe</translation>
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
        <translation>CCITT grupa 4</translation>
    </message>
    <message>
        <source>Embed All Fonts</source>
        <translation>Osadź wszystkie czcionki</translation>
    </message>
    <message>
        <source>Compress Fonts</source>
        <translation>Kompresuj czcionki</translation>
    </message>
    <message>
        <source>Subset Fonts</source>
        <translation>Osadź tylko użyte znaki</translation>
    </message>
    <message>
        <source>User Password</source>
        <translation>Hasło użytkownika</translation>
    </message>
    <message>
        <source>Owner Password</source>
        <translation>Hasło właściciela</translation>
    </message>
    <message>
        <source>Allow Printing Document</source>
        <translation>Zezwól na drukowanie</translation>
    </message>
    <message>
        <source>Allow Modifying Contents of Document</source>
        <translation>Zezwól na zmianę treści</translation>
    </message>
    <message>
        <source>Allow Copying Text and Graphics from Document</source>
        <translation>Zezwól na kopiowanie tekstu i obrazów</translation>
    </message>
    <message>
        <source>Allow Adding or Modifying Text Annotations</source>
        <translation>Zezwól na adnotacje</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>Dane</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>Autor</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Tytuł</translation>
    </message>
    <message>
        <source>Subject</source>
        <translation>Temat</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>Słowa kluczowe</translation>
    </message>
    <message>
        <source>Creator</source>
        <translation>Program</translation>
    </message>
    <message>
        <source>Producer</source>
        <translation>Producent</translation>
    </message>
    <message>
        <source>Generate a PDF/A File</source>
        <translation>Utwórz plik PDF/A</translation>
    </message>
    <message>
        <source>The User Password have been set,
 and Mark function will fail.</source>
        <translation>Ustawiono hasło użytkownika:
dane nie są możliwe.</translation>
    </message>
    <message>
        <source>User Password or Owner Password has been set, 
 and PDF/A function will fail.</source>
        <translation>Ustawiono hasło:
PDF/A nie jest możliwe.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Anuluj</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Zastosuj</translation>
    </message>
</context>
<context>
    <name>Process</name>
    <message>
        <source>Empty input</source>
        <translation>Brak plików</translation>
    </message>
    <message>
        <source>Please choose files to split.</source>
        <translation>Wybierz pliki do podziału.</translation>
    </message>
    <message>
        <source>The file changed after its pages were counted. Remove it from the list, then add it again.</source>
        <translation>Plik zmienił się po policzeniu stron. Usuń go z listy i dodaj ponownie.</translation>
    </message>
    <message>
        <source>Add File</source>
        <translation>Dodaj pliki</translation>
    </message>
    <message>
        <source>PDF File(*.pdf);;ALL files(*.*)</source>
        <translation>Pliki PDF(*.pdf);;Wszystkie pliki(*.*)</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Folder wyjściowy</translation>
    </message>
    <message>
        <source>Add File(s)</source>
        <translation>Dodaj pliki</translation>
    </message>
    <message>
        <source>View PDF File</source>
        <translation>Pokaż plik PDF</translation>
    </message>
    <message>
        <source>Delete Selected Item(s)</source>
        <translation>Usuń zaznaczone</translation>
    </message>
    <message>
        <source>Delete All Item(s)</source>
        <translation>Usuń wszystkie</translation>
    </message>
    <message>
        <source>Add files to the list (%1)</source>
        <translation>Dodaj pliki do listy (%1)</translation>
    </message>
    <message>
        <source>Remove the selected files from the list (%1)</source>
        <translation>Usuń z listy zaznaczone pliki (%1)</translation>
    </message>
    <message>
        <source>Split the files in the list (%1)</source>
        <translation>Podziel pliki z listy (%1)</translation>
    </message>
    <message>
        <source>About this program. %1 opens the manual.</source>
        <translation>O programie. %1 otwiera podręcznik.</translation>
    </message>
    <message>
        <source>About</source>
        <translation>O programie</translation>
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
        <translation>Reguła</translation>
    </message>
    <message>
        <source>Enlarge</source>
        <translation>Powiększ</translation>
    </message>
    <message>
        <source>Shrink</source>
        <translation>Pomniejsz</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <translation>Poprzednia strona</translation>
    </message>
    <message>
        <source>Next Page</source>
        <translation>Następna strona</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Strona</translation>
    </message>
    <message>
        <source>Rule Content</source>
        <translation>Treść reguły</translation>
    </message>
    <message>
        <source>Save Rule As</source>
        <translation>Zapisz regułę jako</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>Reguła</translation>
    </message>
    <message>
        <source>Page %1 cannot be shown: it could not be read.</source>
        <translation>Nie można pokazać strony %1: nie udało się jej odczytać.</translation>
    </message>
    <message>
        <source>The first file of the list is gone: %1</source>
        <translation>Pierwszego pliku z listy już nie ma: %1</translation>
    </message>
    <message>
        <source>The list is empty. Add a file, then open the rule editor again.</source>
        <translation>Lista jest pusta. Dodaj plik i ponownie otwórz edytor reguł.</translation>
    </message>
    <message>
        <source>The first file of the list cannot be read (damaged, protected by a password, or no PDF file): %1</source>
        <translation>Nie można odczytać pierwszego pliku z listy (uszkodzony, chroniony hasłem lub nie jest to PDF): %1</translation>
    </message>
    <message>
        <source>This page is too large to be shown at %1 %.</source>
        <translation>Ta strona jest za duża, aby pokazać ją w skali %1 %.</translation>
    </message>
    <message>
        <source>This page cannot be shown at %1 %. It stays at %2 %.</source>
        <translation>Tej strony nie można pokazać w skali %1 %. Pozostaje %2 %.</translation>
    </message>
    <message>
        <source>Empty Rule Name</source>
        <translation>Brak nazwy</translation>
    </message>
    <message>
        <source>Please input rule name</source>
        <translation>Podaj nazwę reguły.</translation>
    </message>
    <message>
        <source>Existed Rule Name</source>
        <translation>Nazwa już zajęta</translation>
    </message>
    <message>
        <source>The rule name has been used, Please input another one</source>
        <translation>Reguła o tej nazwie już istnieje. Podaj inną nazwę.</translation>
    </message>
    <message>
        <source>Page Preview</source>
        <translation>Podgląd strony</translation>
    </message>
    <message>
        <source>Make it be the rule</source>
        <translation>Użyj jako reguły</translation>
    </message>
</context>
<context>
    <name>SecDialog</name>
    <message>
        <source>Dialog</source>
        <translation>Okno</translation>
    </message>
</context>
<context>
    <name>floatform</name>
    <message>
        <source>Form</source>
        <translation>Formularz</translation>
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
        <translation>Lista plików</translation>
    </message>
    <message>
        <source>PDF File</source>
        <translation>Plik PDF</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Strony</translation>
    </message>
    <message>
        <source>File Size</source>
        <translation>Rozmiar</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Wynik</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Dodaj</translation>
    </message>
    <message>
        <source>Romove</source>
        <translation>Usuń</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Wyczyść</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>W górę</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>W dół</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>Reguła</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Podziel</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>Reguła</translation>
    </message>
    <message>
        <source>Output Folder</source>
        <translation>Folder wyjściowy</translation>
    </message>
    <message>
        <source>Choose Output Folder</source>
        <translation>Wybierz folder wyjściowy</translation>
    </message>
    <message>
        <source>Split Method</source>
        <translation>Metoda</translation>
    </message>
    <message>
        <source>1. Split when the next page has differet text in the specified position.</source>
        <translation>1. Podziel, gdy następna strona ma w tym miejscu inny tekst.</translation>
    </message>
    <message>
        <source>2. Split when the next page has text in the specified position.</source>
        <translation>2. Podziel, gdy następna strona ma w tym miejscu tekst.</translation>
    </message>
    <message>
        <source>3. Use Method 1 and group pages containing the same text together.</source>
        <translation>3. Jak 1, a strony z tym samym tekstem razem.</translation>
    </message>
    <message>
        <source>Progress Status</source>
        <translation>Postęp</translation>
    </message>
</context>
</TS>
