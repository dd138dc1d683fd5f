<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>process</name>
    <message><source>Split</source><translation>Teilen</translation></message>
</context>
<context>
    <name>Process</name>
    <message><source>Empty input</source><translation>Keine Eingabe</translation></message>
    <message><source>Invalid order</source><translation>Falscher Auftrag</translation></message>
    <message><source>Please specify an output folder.</source><translation>Bitte einen Ordner wählen.</translation></message>
    <message><source>Please choose files to split.</source><translation>Bitte Dateien wählen.</translation></message>
</context>
</TS>
