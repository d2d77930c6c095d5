<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>velt::desktop::PaletteModel</name>
    <message numerus="yes">
        <source>%n of them</source>
        <translation>
            <numerusform>%n of them</numerusform>
            <numerusform>%n of them</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>velt::desktop::PalettePane</name>
    <message numerus="yes">
        <source>%n changed</source>
        <translation>
            <numerusform>%n changed</numerusform>
            <numerusform>%n changed</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n unchanged</source>
        <translation>
            <numerusform>%n unchanged</numerusform>
            <numerusform>%n unchanged</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n locked</source>
        <translation>
            <numerusform>%n locked</numerusform>
            <numerusform>%n locked</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n skipped</source>
        <translation>
            <numerusform>%n skipped</numerusform>
            <numerusform>%n skipped</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n refused</source>
        <translation>
            <numerusform>%n refused</numerusform>
            <numerusform>%n refused</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n not reached</source>
        <translation>
            <numerusform>%n not reached</numerusform>
            <numerusform>%n not reached</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n of the entities are on locked layers and are not written to.</source>
        <translation>
            <numerusform>%n of the entities is on a locked layer and is not written to.</numerusform>
            <numerusform>%n of the entities are on locked layers and are not written to.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n of them only as shown, with fewer digits.</source>
        <translation>
            <numerusform>%n of them only as shown, with fewer digits.</numerusform>
            <numerusform>%n of them only as shown, with fewer digits.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Show these %n entities</source>
        <translation>
            <numerusform>Show this entity</numerusform>
            <numerusform>Show these %n entities</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>&amp;Show these %n entities</source>
        <translation>
            <numerusform>&amp;Show this entity</numerusform>
            <numerusform>&amp;Show these %n entities</numerusform>
        </translation>
    </message>
</context>
</TS>
