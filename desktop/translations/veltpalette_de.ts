<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>velt::desktop::DrawingPane</name>
    <message>
        <source>Drawing</source>
        <translation>Zeichnung</translation>
    </message>
    <message>
        <source>Model space and layouts</source>
        <translation>Modellbereich und Layouts</translation>
    </message>
</context>
<context>
    <name>velt::desktop::EntityModel</name>
    <message>
        <source>Handle</source>
        <translation>Referenz</translation>
    </message>
    <message>
        <source>Class</source>
        <translation>Klasse</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>Layer</translation>
    </message>
</context>
<context>
    <name>velt::desktop::MainWindow</name>
    <message>
        <source>Drawings (*.dxf)</source>
        <translation>Zeichnungen (*.dxf)</translation>
    </message>
    <message>
        <source>Entities</source>
        <translation>Objekte</translation>
    </message>
    <message>
        <source>What was done</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>%1 was changed by another program.</source>
        <translation>%1 wurde von einem anderen Programm geändert.</translation>
    </message>
    <message>
        <source>Read it again</source>
        <translation>Neu einlesen</translation>
    </message>
    <message>
        <source>Keep what is shown</source>
        <translation>Angezeigtes behalten</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>Ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>Read it a&amp;gain</source>
        <translation>&amp;Neu einlesen</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save &amp;as...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>&amp;Export the palette...</source>
        <translation>&amp;Palette exportieren...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Select &amp;all</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>Select &amp;nothing</source>
        <translation>&amp;Nichts auswählen</translation>
    </message>
    <message>
        <source>&amp;Back to the whole selection</source>
        <translation>&amp;Zurück zur ganzen Auswahl</translation>
    </message>
    <message>
        <source>&amp;Find a property</source>
        <translation>Eigenschaft &amp;suchen</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Fit</source>
        <translation>&amp;Einpassen</translation>
    </message>
    <message>
        <source>&amp;Dark background</source>
        <translation>&amp;Dunkler Hintergrund</translation>
    </message>
    <message>
        <source>&amp;What was done</source>
        <translation>&amp;Verlauf</translation>
    </message>
    <message>
        <source>&amp;Next part of the window</source>
        <translation>&amp;Nächster Teil des Fensters</translation>
    </message>
    <message>
        <source>The entities cannot be selected</source>
        <translation>Die Objekte können nicht ausgewählt werden</translation>
    </message>
    <message>
        <source>%1[*] - Properties</source>
        <translation>%1[*] - Eigenschaften</translation>
    </message>
    <message>
        <source>New drawing</source>
        <translation>Neue Zeichnung</translation>
    </message>
    <message>
        <source>%1 of %2 selected</source>
        <translation>%1 von %2 ausgewählt</translation>
    </message>
    <message>
        <source>&amp;Undo &quot;%1&quot;</source>
        <translation>„%1“ &amp;rückgängig machen</translation>
    </message>
    <message>
        <source>&amp;Redo &quot;%1&quot;</source>
        <translation>„%1“ &amp;wiederholen</translation>
    </message>
    <message>
        <source>As it was opened</source>
        <translation>Wie geöffnet</translation>
    </message>
    <message>
        <source>Undone</source>
        <translation>Rückgängig gemacht</translation>
    </message>
    <message>
        <source>The drawing cannot be opened</source>
        <translation>Die Zeichnung kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Open a drawing</source>
        <translation>Zeichnung öffnen</translation>
    </message>
    <message>
        <source>Save the drawing as</source>
        <translation>Zeichnung speichern unter</translation>
    </message>
    <message>
        <source>The file was changed</source>
        <translation>Die Datei wurde geändert</translation>
    </message>
    <message>
        <source>Saving replaces the other change. To keep both, save under another name.</source>
        <translation>Das Speichern ersetzt die andere Änderung. Um beide zu behalten, unter einem anderen Namen speichern.</translation>
    </message>
    <message>
        <source>Replace it</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>The drawing was not saved</source>
        <translation>Die Zeichnung wurde nicht gespeichert</translation>
    </message>
    <message>
        <source>Saved.</source>
        <translation>Gespeichert.</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Gespeichert</translation>
    </message>
    <message>
        <source>Export the palette</source>
        <translation>Palette exportieren</translation>
    </message>
    <message>
        <source>Tables (*.csv)</source>
        <translation>Tabellen (*.csv)</translation>
    </message>
    <message>
        <source>Category</source>
        <translation>Kategorie</translation>
    </message>
    <message>
        <source>Property</source>
        <translation>Eigenschaft</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>The palette was not exported</source>
        <translation>Die Palette wurde nicht exportiert</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>Ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>The drawing has changes that were not saved.</source>
        <translation>Die Zeichnung hat Änderungen, die nicht gespeichert sind.</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Reading the properties</source>
        <translation>Die Eigenschaften werden gelesen</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>%1 wird gelesen</translation>
    </message>
    <message>
        <source>Saving</source>
        <translation>Die Zeichnung wird gespeichert</translation>
    </message>
    <message>
        <source>All on the same &amp;layer</source>
        <translation>Alle auf demselben &amp;Layer</translation>
    </message>
    <message>
        <source>All of the same &amp;class</source>
        <translation>Alle derselben &amp;Klasse</translation>
    </message>
    <message>
        <source>Selecting</source>
        <translation>Auswählen</translation>
    </message>
    <message>
        <source>All on &amp;layer %1</source>
        <translation>Alle auf &amp;Layer %1</translation>
    </message>
    <message>
        <source>All of &amp;class %1</source>
        <translation>Alle der &amp;Klasse %1</translation>
    </message>
</context>
<context>
    <name>velt::desktop::PaletteModel</name>
    <message>
        <source>(no category)</source>
        <translation>(ohne Kategorie)</translation>
    </message>
    <message numerus="yes">
        <source>%n of them</source>
        <translation>
            <numerusform>%n davon</numerusform>
            <numerusform>%n davon</numerusform>
        </translation>
    </message>
    <message>
        <source>Refused: %1</source>
        <translation>Abgelehnt: %1</translation>
    </message>
    <message>
        <source>Read-only.</source>
        <translation>Nur lesbar.</translation>
    </message>
    <message>
        <source>Read-only: %1.</source>
        <translation>Nur lesbar: %1.</translation>
    </message>
    <message>
        <source>Property</source>
        <translation>Eigenschaft</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>the host gives no reason</source>
        <translation>der Host nennt keinen Grund</translation>
    </message>
    <message>
        <source>Reading the values</source>
        <translation>Die Werte werden gelesen</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>Der Wert wird geschrieben</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>velt::desktop::PalettePane</name>
    <message numerus="yes">
        <source>%n changed</source>
        <translation>
            <numerusform>%n geändert</numerusform>
            <numerusform>%n geändert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n unchanged</source>
        <translation>
            <numerusform>%n unverändert</numerusform>
            <numerusform>%n unverändert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n locked</source>
        <translation>
            <numerusform>%n gesperrt</numerusform>
            <numerusform>%n gesperrt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n skipped</source>
        <translation>
            <numerusform>%n übersprungen</numerusform>
            <numerusform>%n übersprungen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n refused</source>
        <translation>
            <numerusform>%n abgelehnt</numerusform>
            <numerusform>%n abgelehnt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n not reached</source>
        <translation>
            <numerusform>%n nicht erreicht</numerusform>
            <numerusform>%n nicht erreicht</numerusform>
        </translation>
    </message>
    <message>
        <source>the host gives no reason</source>
        <translation>der Host nennt keinen Grund</translation>
    </message>
    <message>
        <source>Remark on the selection</source>
        <translation>Bemerkung zur Auswahl</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Outcome</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Explanation</source>
        <translation>Erklärung</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Class</source>
        <translation>Klasse</translation>
    </message>
    <message>
        <source>Search properties</source>
        <translation>Eigenschaften suchen</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>Eigenschaften</translation>
    </message>
    <message>
        <source>&amp;Edit the value</source>
        <translation>Wert &amp;bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Copy rows</source>
        <translation>Zeilen &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;Why is it so?</source>
        <translation>&amp;Warum ist das so?</translation>
    </message>
    <message>
        <source>Nothing selected</source>
        <translation>Nichts ausgewählt</translation>
    </message>
    <message>
        <source>All (%1)</source>
        <translation>Alle (%1)</translation>
    </message>
    <message>
        <source>Chosen (%1 of %2)</source>
        <translation>Gewählt (%1 von %2)</translation>
    </message>
    <message numerus="yes">
        <source>%n of the entities are on locked layers and are not written to.</source>
        <translation>
            <numerusform>%n der Objekte liegt auf einem gesperrten Layer und wird nicht geändert.</numerusform>
            <numerusform>%n der Objekte liegen auf gesperrten Layern und werden nicht geändert.</numerusform>
        </translation>
    </message>
    <message>
        <source>Why is there no row &quot;%1&quot;?</source>
        <translation>Warum gibt es keine Zeile „%1“?</translation>
    </message>
    <message numerus="yes">
        <source>%n of them only as shown, with fewer digits.</source>
        <translation>
            <numerusform>%n davon nur wie angezeigt, mit weniger Stellen.</numerusform>
            <numerusform>%n davon nur wie angezeigt, mit weniger Stellen.</numerusform>
        </translation>
    </message>
    <message>
        <source>Show:</source>
        <translation>Zeigen:</translation>
    </message>
    <message>
        <source>To do: %1.</source>
        <translation>Abhilfe: %1.</translation>
    </message>
    <message numerus="yes">
        <source>Show these %n entities</source>
        <translation>
            <numerusform>Dieses Objekt zeigen</numerusform>
            <numerusform>Diese %n Objekte zeigen</numerusform>
        </translation>
    </message>
    <message>
        <source>Show the others (%1)</source>
        <translation>Die anderen zeigen (%1)</translation>
    </message>
    <message numerus="yes">
        <source>&amp;Show these %n entities</source>
        <translation>
            <numerusform>Dieses Objekt &amp;zeigen</numerusform>
            <numerusform>Diese %n Objekte &amp;zeigen</numerusform>
        </translation>
    </message>
    <message>
        <source>Looking for the reason</source>
        <translation>Der Grund wird gesucht</translation>
    </message>
    <message>
        <source>Refused: %1</source>
        <translation>Abgelehnt: %1</translation>
    </message>
    <message>
        <source>A click on something in the drawing shows its properties; a drag shows those of several.</source>
        <translation>Ein Klick auf ein Objekt der Zeichnung zeigt seine Eigenschaften; Ziehen zeigt die von mehreren.</translation>
    </message>
</context>
<context>
    <name>velt::desktop::RowDelegate</name>
    <message>
        <source> of %1</source>
        <translation> von %1</translation>
    </message>
</context>
<context>
    <name>velt::desktop::ValuePictures</name>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>frozen</source>
        <translation>gefroren</translation>
    </message>
    <message>
        <source>locked</source>
        <translation>gesperrt</translation>
    </message>
</context>
</TS>
