<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
    <message>
        <source>Quorlin Cleaver 2.0</source>
        <translation>Quorlin Cleaver 2.0</translation>
    </message>
    <message>
        <source>Copyright 2026 The Quorlin Cleaver makers. Free software: GNU AGPL, version 3 or later.</source>
        <translation>Copyright 2026 The Quorlin Cleaver makers. Logiciel libre : GNU AGPL, version 3 ou ultérieure.</translation>
    </message>
</context>
<context>
    <name>ManualWindow</name>
    <message>
        <source>Manual</source>
        <translation>Manuel</translation>
    </message>
</context>
<context>
    <name>OpDialog</name>
    <message>
        <source>Option</source>
        <translation>Options</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Personnalisé</translation>
    </message>
    <message>
        <source>Option pages</source>
        <translation>Pages d’options</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Images</translation>
    </message>
    <message>
        <source>Fonts</source>
        <translation>Polices</translation>
    </message>
    <message>
        <source>Security</source>
        <translation>Sécurité</translation>
    </message>
    <message>
        <source>Annotation</source>
        <translation>Informations</translation>
    </message>
    <message>
        <source>Color Image</source>
        <translation>Images en couleur</translation>
    </message>
    <message>
        <source>Downsample Type</source>
        <translation>Rééchantillonnage</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>Aucun</translation>
    </message>
    <message>
        <source>Subsample</source>
        <translation>Sous-échantillonnage</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>Moyenne</translation>
    </message>
    <message>
        <source>Bicubic</source>
        <translation>Bicubique</translation>
    </message>
    <message>
        <source>Downsample Resolution</source>
        <translation>Résolution</translation>
    </message>
    <message>
        <source>ppi</source>
        <translation>ppp</translation>
    </message>
    <message>
        <source>Compress Mode</source>
        <translation>Compression</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Automatique</translation>
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
        <translation>Images en gris</translation>
    </message>
    <message>
        <source>Mono Image</source>
        <translation>Images en noir et blanc</translation>
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
        <translation>CCITT groupe 4</translation>
    </message>
    <message>
        <source>Embed All Fonts</source>
        <translation>Incorporer toutes les polices</translation>
    </message>
    <message>
        <source>Compress Fonts</source>
        <translation>Compresser les polices</translation>
    </message>
    <message>
        <source>Subset Fonts</source>
        <translation>N’incorporer que les caractères utilisés</translation>
    </message>
    <message>
        <source>User Password</source>
        <translation>Mot de passe d’ouverture</translation>
    </message>
    <message>
        <source>Owner Password</source>
        <translation>Mot de passe des droits</translation>
    </message>
    <message>
        <source>Allow Printing Document</source>
        <translation>Autoriser l’impression</translation>
    </message>
    <message>
        <source>Allow Modifying Contents of Document</source>
        <translation>Autoriser la modification du contenu</translation>
    </message>
    <message>
        <source>Allow Copying Text and Graphics from Document</source>
        <translation>Autoriser la copie du texte et des images</translation>
    </message>
    <message>
        <source>Allow Adding or Modifying Text Annotations</source>
        <translation>Autoriser les annotations</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>Informations</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>Auteur</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titre</translation>
    </message>
    <message>
        <source>Subject</source>
        <translation>Sujet</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>Mots-clés</translation>
    </message>
    <message>
        <source>Creator</source>
        <translation>Application</translation>
    </message>
    <message>
        <source>Producer</source>
        <translation>Producteur</translation>
    </message>
    <message>
        <source>Generate a PDF/A File</source>
        <translation>Créer un fichier PDF/A</translation>
    </message>
    <message>
        <source>The User Password have been set,
 and Mark function will fail.</source>
        <translation>Un mot de passe d’ouverture est défini :
les informations sont impossibles.</translation>
    </message>
    <message>
        <source>User Password or Owner Password has been set, 
 and PDF/A function will fail.</source>
        <translation>Un mot de passe est défini :
PDF/A est impossible.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Appliquer</translation>
    </message>
</context>
<context>
    <name>Process</name>
    <message>
        <source>Empty input</source>
        <translation>Aucun fichier</translation>
    </message>
    <message>
        <source>Please choose files to split.</source>
        <translation>Choisissez des fichiers à découper.</translation>
    </message>
    <message>
        <source>The file changed after its pages were counted. Remove it from the list, then add it again.</source>
        <translation>Le fichier a changé après le comptage de ses pages. Retirez-le de la liste, puis ajoutez-le à nouveau.</translation>
    </message>
    <message>
        <source>Add File</source>
        <translation>Ajouter des fichiers</translation>
    </message>
    <message>
        <source>PDF File(*.pdf);;ALL files(*.*)</source>
        <translation>Fichiers PDF(*.pdf);;Tous les fichiers(*.*)</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Dossier de sortie</translation>
    </message>
    <message>
        <source>Add File(s)</source>
        <translation>Ajouter des fichiers</translation>
    </message>
    <message>
        <source>View PDF File</source>
        <translation>Afficher le fichier PDF</translation>
    </message>
    <message>
        <source>Delete Selected Item(s)</source>
        <translation>Retirer la sélection</translation>
    </message>
    <message>
        <source>Delete All Item(s)</source>
        <translation>Tout retirer</translation>
    </message>
    <message>
        <source>Add files to the list (%1)</source>
        <translation>Ajouter des fichiers à la liste (%1)</translation>
    </message>
    <message>
        <source>Remove the selected files from the list (%1)</source>
        <translation>Retirer de la liste les fichiers sélectionnés (%1)</translation>
    </message>
    <message>
        <source>Split the files in the list (%1)</source>
        <translation>Découper les fichiers de la liste (%1)</translation>
    </message>
    <message>
        <source>About this program. %1 opens the manual.</source>
        <translation>À propos de ce programme. %1 ouvre le manuel.</translation>
    </message>
    <message>
        <source>About</source>
        <translation>À propos</translation>
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
        <translation>Règle</translation>
    </message>
    <message>
        <source>Enlarge</source>
        <translation>Agrandir</translation>
    </message>
    <message>
        <source>Shrink</source>
        <translation>Réduire</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <translation>Page précédente</translation>
    </message>
    <message>
        <source>Next Page</source>
        <translation>Page suivante</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Page</translation>
    </message>
    <message>
        <source>Rule Content</source>
        <translation>Contenu de la règle</translation>
    </message>
    <message>
        <source>Save Rule As</source>
        <translation>Enregistrer sous</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>Règle</translation>
    </message>
    <message>
        <source>Page %1 cannot be shown: it could not be read.</source>
        <translation>La page %1 ne peut pas être affichée : elle n’a pas pu être lue.</translation>
    </message>
    <message>
        <source>The first file of the list is gone: %1</source>
        <translation>Le premier fichier de la liste n’existe plus : %1</translation>
    </message>
    <message>
        <source>The list is empty. Add a file, then open the rule editor again.</source>
        <translation>La liste est vide. Ajoutez un fichier, puis rouvrez l’éditeur de règles.</translation>
    </message>
    <message>
        <source>The first file of the list cannot be read (damaged, protected by a password, or no PDF file): %1</source>
        <translation>Le premier fichier de la liste est illisible (endommagé, protégé par mot de passe ou pas un PDF) : %1</translation>
    </message>
    <message>
        <source>This page is too large to be shown at %1 %.</source>
        <translation>Cette page est trop grande pour être affichée à %1 %.</translation>
    </message>
    <message>
        <source>This page cannot be shown at %1 %. It stays at %2 %.</source>
        <translation>Cette page ne peut pas être affichée à %1 %. Elle reste à %2 %.</translation>
    </message>
    <message>
        <source>Empty Rule Name</source>
        <translation>Nom manquant</translation>
    </message>
    <message>
        <source>Please input rule name</source>
        <translation>Saisissez un nom pour la règle.</translation>
    </message>
    <message>
        <source>Existed Rule Name</source>
        <translation>Nom déjà utilisé</translation>
    </message>
    <message>
        <source>The rule name has been used, Please input another one</source>
        <translation>Une règle porte déjà ce nom. Saisissez-en un autre.</translation>
    </message>
    <message>
        <source>Page Preview</source>
        <translation>Aperçu de la page</translation>
    </message>
    <message>
        <source>Make it be the rule</source>
        <translation>En faire la règle</translation>
    </message>
</context>
<context>
    <name>SecDialog</name>
    <message>
        <source>Dialog</source>
        <translation>Dialogue</translation>
    </message>
</context>
<context>
    <name>floatform</name>
    <message>
        <source>Form</source>
        <translation>Formulaire</translation>
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
        <translation>Liste des fichiers</translation>
    </message>
    <message>
        <source>PDF File</source>
        <translation>Fichier PDF</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Pages</translation>
    </message>
    <message>
        <source>File Size</source>
        <translation>Taille</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Résultat</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Ajouter</translation>
    </message>
    <message>
        <source>Romove</source>
        <translation>Retirer</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Vider</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Monter</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Descendre</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>Règle</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Découper</translation>
    </message>
    <message>
        <source>Rule Name</source>
        <translation>Règle</translation>
    </message>
    <message>
        <source>Output Folder</source>
        <translation>Dossier de sortie</translation>
    </message>
    <message>
        <source>Choose Output Folder</source>
        <translation>Choisir le dossier de sortie</translation>
    </message>
    <message>
        <source>Split Method</source>
        <translation>Méthode</translation>
    </message>
    <message>
        <source>1. Split when the next page has differet text in the specified position.</source>
        <translation>1. Découper quand la page suivante a un autre texte à cet endroit.</translation>
    </message>
    <message>
        <source>2. Split when the next page has text in the specified position.</source>
        <translation>2. Découper quand la page suivante a un texte à cet endroit.</translation>
    </message>
    <message>
        <source>3. Use Method 1 and group pages containing the same text together.</source>
        <translation>3. Comme 1, puis réunir les pages qui ont le même texte.</translation>
    </message>
    <message>
        <source>Progress Status</source>
        <translation>Progression</translation>
    </message>
</context>
</TS>
