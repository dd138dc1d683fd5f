<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>process</name>
    <message><source>Split</source><translation>Teilen</translation></message>
</context>
<context>
    <name>Process</name>
    <message><source>Please choose files to split.</source><translation>Bitte Dateien wählen.</translation></message>
</context>
</TS>
