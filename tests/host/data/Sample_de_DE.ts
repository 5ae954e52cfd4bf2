<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Sample</name>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
</context>
</TS>
