<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AppConfigDataAccessWidget</name>
    <message>
        <source>Attribute monitor</source>
        <translation>Attributmonitor</translation>
    </message>
    <message>
        <source>Load</source>
        <translation>Laden</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Remove Selected Node</source>
        <translation>Ausgewählten Knoten entfernen</translation>
    </message>
    <message>
        <source>Select File</source>
        <translation>Datei auswählen</translation>
    </message>
    <message>
        <source> Project File (*.dap)</source>
        <translation> Projektdatei (*.dap)</translation>
    </message>
    <message>
        <source>Unable to Save</source>
        <translation>Speichern nicht möglich</translation>
    </message>
    <message>
        <source>Add %1 attributes to the monitor?</source>
        <translation>%1 Attribute zum Monitor hinzufügen?</translation>
    </message>
</context>
<context>
    <name>BusyWidget</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>ImageLabel</source>
        <translation>ImageLabel</translation>
    </message>
    <message>
        <source>StatusText</source>
        <translation>StatusText</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>%1: no plug-in shows a monitor</source>
        <translation>%1: kein Plugin zeigt einen Monitor</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::AdvancedAttributeModel</name>
    <message>
        <source>Changed last at %1; changes since it is watched: %2</source>
        <translation>Zuletzt geändert um %1; Änderungen, seit es beobachtet wird: %2</translation>
    </message>
    <message>
        <source>No such attribute. The row comes alive when it is created.</source>
        <translation>Dieses Attribut gibt es nicht. Die Zeile wird aktiv, sobald es angelegt ist.</translation>
    </message>
    <message>
        <source>Type: %1</source>
        <translation>Typ: %1</translation>
    </message>
    <message>
        <source>none yet</source>
        <translation>noch keiner</translation>
    </message>
    <message>
        <source>Access: %1</source>
        <translation>Zugriff: %1</translation>
    </message>
    <message>
        <source>, missing</source>
        <translation>, fehlt</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>The attribute&apos;s name, the last part of its path; read-only in italics</source>
        <translation>Der Name des Attributs, der letzte Teil seines Pfads; kursiv, wenn nur lesbar</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>The value as it is now; F2 or a double click edits it</source>
        <translation>Der jetzige Wert; F2 oder ein Doppelklick bearbeitet ihn</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>The type that the attribute&apos;s values have</source>
        <translation>Der Typ der Werte des Attributs</translation>
    </message>
    <message>
        <source>Last change</source>
        <translation>Letzte Änderung</translation>
    </message>
    <message>
        <source>When the value changed last, and how often it has since it is watched</source>
        <translation>Wann sich der Wert zuletzt geändert hat, und wie oft, seit er beobachtet wird</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
    <message>
        <source>The attribute&apos;s place in the tree</source>
        <translation>Die Stelle des Attributs im Baum</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::AttributeTreeViewModel</name>
    <message>
        <source>read-only</source>
        <translation>nur lesbar</translation>
    </message>
    <message>
        <source>write-only</source>
        <translation>nur schreibbar</translation>
    </message>
    <message>
        <source>read-write</source>
        <translation>les- und schreibbar</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keiner</translation>
    </message>
    <message>
        <source>backend</source>
        <translation>Backend</translation>
    </message>
    <message>
        <source>unsaved changes</source>
        <translation>ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>Type: %1</source>
        <translation>Typ: %1</translation>
    </message>
    <message>
        <source>none yet</source>
        <translation>noch keiner</translation>
    </message>
    <message>
        <source>Access: %1</source>
        <translation>Zugriff: %1</translation>
    </message>
    <message>
        <source>Validations: %1</source>
        <translation>Prüfungen: %1</translation>
    </message>
    <message>
        <source>Root of the backend: %1</source>
        <translation>Wurzel des Backends: %1</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>Datei: %1</translation>
    </message>
    <message>
        <source>Backend: %1</source>
        <translation>Backend: %1</translation>
    </message>
    <message>
        <source>Holds changes that are not saved</source>
        <translation>Enthält Änderungen, die nicht gespeichert sind</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>locked</source>
        <translation>gesperrt</translation>
    </message>
    <message>
        <source>Locked against changes</source>
        <translation>Gegen Änderungen gesperrt</translation>
    </message>
    <message>
        <source>State: %1</source>
        <translation>Zustand: %1</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::AttributeTreeViewModelUtils</name>
    <message>
        <source>it was cancelled</source>
        <translation>es wurde abgebrochen</translation>
    </message>
    <message>
        <source>%1 is not written: %2</source>
        <translation>%1 wird nicht geschrieben: %2</translation>
    </message>
    <message>
        <source>this repository exports nothing</source>
        <translation>dieses Repository exportiert nichts</translation>
    </message>
    <message>
        <source>Exporting %1</source>
        <translation>%1 wird exportiert</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not deleted: this repository deletes nothing</source>
        <translation>„%1“ wird nicht gelöscht: dieses Repository löscht nichts</translation>
    </message>
    <message>
        <source>Deleting %1</source>
        <translation>%1 wird gelöscht</translation>
    </message>
    <message>
        <source>Delete %1</source>
        <translation>%1 löschen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not copied: this repository copies nothing</source>
        <translation>„%1“ wird nicht kopiert: dieses Repository kopiert nichts</translation>
    </message>
    <message>
        <source>Copying %1 to %2</source>
        <translation>%1 wird nach %2 kopiert</translation>
    </message>
    <message>
        <source>Paste %1</source>
        <translation>%1 einfügen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not moved: this repository moves nothing</source>
        <translation>„%1“ wird nicht verschoben: dieses Repository verschiebt nichts</translation>
    </message>
    <message>
        <source>Moving %1 to %2</source>
        <translation>%1 wird nach %2 verschoben</translation>
    </message>
    <message>
        <source>Move %1</source>
        <translation>%1 verschieben</translation>
    </message>
    <message>
        <source>%1 is not imported: %2</source>
        <translation>%1 wird nicht importiert: %2</translation>
    </message>
    <message>
        <source>this repository imports nothing</source>
        <translation>dieses Repository importiert nichts</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>die Datei ist leer</translation>
    </message>
    <message>
        <source>Importing %1</source>
        <translation>%1 wird importiert</translation>
    </message>
    <message>
        <source>Import %1</source>
        <translation>%1 importieren</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::TextFile</name>
    <message>
        <source>it is not a text in UTF-8 (line %1)</source>
        <translation>es ist kein Text in UTF-8 (Zeile %1)</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>%1 lässt sich nicht lesen: %2</translation>
    </message>
    <message>
        <source>%1 is not saved: %2</source>
        <translation>%1 wird nicht gespeichert: %2</translation>
    </message>
    <message>
        <source>the text has a character that UTF-8 cannot hold</source>
        <translation>der Text enthält ein Zeichen, das UTF-8 nicht darstellen kann</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::Widgets::AttributeCreateDialog</name>
    <message>
        <source>New Attribute</source>
        <translation>Neues Attribut</translation>
    </message>
    <message>
        <source>A name, or a path such as limits.upper</source>
        <translation>Ein Name oder ein Pfad wie limits.upper</translation>
    </message>
    <message>
        <source>Below</source>
        <translation>Unterhalb von</translation>
    </message>
    <message>
        <source>&amp;Name</source>
        <translation>&amp;Name</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::Widgets::AttributeTreeModelInputDialogs</name>
    <message>
        <source>&amp;Below the selected attribute, as its child</source>
        <translation>&amp;Unterhalb des ausgewählten Attributs, als dessen Kind</translation>
    </message>
    <message>
        <source>Be&amp;side the selected attribute, at the same level</source>
        <translation>&amp;Neben dem ausgewählten Attribut, auf derselben Ebene</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::Widgets::AttributeTypeDialog</name>
    <message>
        <source>Change Type</source>
        <translation>Typ ändern</translation>
    </message>
    <message>
        <source>Attribute</source>
        <translation>Attribut</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::Widgets::BytesValueEditor</name>
    <message>
        <source>&quot;%1&quot; is not a hexadecimal digit (0 to 9, A to F).</source>
        <translation>„%1“ ist keine hexadezimale Ziffer (0 bis 9, A bis F).</translation>
    </message>
    <message>
        <source>The last byte has one digit only; each byte has two.</source>
        <translation>Das letzte Byte hat nur eine Ziffer; jedes Byte hat zwei.</translation>
    </message>
    <message>
        <source>This is not Base64: a sign is none of A to Z, a to z, 0 to 9, &quot;+&quot;, &quot;/&quot;, &quot;=&quot;.</source>
        <translation>Das ist kein Base64: ein Zeichen gehört nicht zu A bis Z, a bis z, 0 bis 9, „+“, „/“, „=“.</translation>
    </message>
    <message>
        <source>This is not Base64: its length is wrong; signs are missing at the end.</source>
        <translation>Das ist kein Base64: die Länge stimmt nicht; am Ende fehlen Zeichen.</translation>
    </message>
    <message>
        <source>Hexadecimal, as in 0a ff</source>
        <translation>Hexadezimal, wie 0a ff</translation>
    </message>
    <message>
        <source>Base64, as in Cv8=</source>
        <translation>Base64, wie Cv8=</translation>
    </message>
    <message>
        <source>Text with escapes, as in a\x00b</source>
        <translation>Text mit Escape-Sequenzen, wie a\x00b</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 Byte</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Bytes</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::Widgets::DateTimeValueEditor</name>
    <message>
        <source>local time, no zone</source>
        <translation>Ortszeit, ohne Zeitzone</translation>
    </message>
    <message>
        <source>The clocks are put forward over this time here; choose another time or a zone.</source>
        <translation>Diese Uhrzeit wird hier bei der Zeitumstellung übersprungen; wählen Sie eine andere Zeit oder eine Zeitzone.</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::Widgets::ListValueEditor</name>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>Move &amp;up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>Move &amp;down</source>
        <translation>Nach &amp;unten</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::Widgets::ProposingTextDialog</name>
    <message>
        <source>Proposals</source>
        <translation>Vorschläge</translation>
    </message>
    <message>
        <source>Proposal</source>
        <translation>Vorschlag</translation>
    </message>
    <message>
        <source>Asks for</source>
        <translation>Fragt nach</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::Widgets::TransferWindow</name>
    <message>
        <source>Cancelling ...</source>
        <translation>Wird abgebrochen ...</translation>
    </message>
    <message>
        <source>%1: a comment was left out because there is no place for it</source>
        <translation>%1: ein Kommentar fehlt darin, da für ihn kein Platz ist</translation>
    </message>
    <message>
        <source>%1: %2 comments were left out because there is no place for them</source>
        <translation>%1: %2 Kommentare fehlen darin, da für sie kein Platz ist</translation>
    </message>
    <message>
        <source>%1: tags were left out because there is no form for them</source>
        <translation>%1: Tags fehlen darin, da es für sie keine Form gibt</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::Widgets::TypedValueRows</name>
    <message>
        <source>Typ&amp;e</source>
        <translation>&amp;Typ</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
</context>
<context>
    <name>Utilities::ModelViews::Widgets::ValueEditor</name>
    <message>
        <source>A number is missing.</source>
        <translation>Es fehlt eine Zahl.</translation>
    </message>
    <message>
        <source>The first value that is written gives the attribute its type.</source>
        <translation>Der erste geschriebene Wert gibt dem Attribut seinen Typ.</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>True or false</source>
        <translation>Wahr oder falsch</translation>
    </message>
    <message>
        <source>Integer</source>
        <translation>Ganze Zahl</translation>
    </message>
    <message>
        <source>Unsigned integer</source>
        <translation>Ganze Zahl ohne Vorzeichen</translation>
    </message>
    <message>
        <source>Real number</source>
        <translation>Reelle Zahl</translation>
    </message>
    <message>
        <source>List of texts</source>
        <translation>Liste von Texten</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Uhrzeit</translation>
    </message>
    <message>
        <source>Date and time</source>
        <translation>Datum und Uhrzeit</translation>
    </message>
    <message>
        <source>No value yet</source>
        <translation>Noch kein Wert</translation>
    </message>
</context>
<context>
    <name>Utilities::Worker</name>
    <message>
        <source>there is not enough memory</source>
        <translation>der Arbeitsspeicher reicht nicht aus</translation>
    </message>
    <message>
        <source>the system starts no further thread; close other programs, and try again</source>
        <translation>das System startet keinen weiteren Thread; schließen Sie andere Programme, und versuchen Sie es noch einmal</translation>
    </message>
    <message>
        <source>it failed for an unknown reason</source>
        <translation>es ist aus unbekanntem Grund fehlgeschlagen</translation>
    </message>
</context>
<context>
    <name>Vantry::ActionList</name>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Type a part of what is to be done</source>
        <translation>Geben Sie einen Teil dessen ein, was getan werden soll</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Edit the value of the selected row</source>
        <translation>Wert der ausgewählten Zeile bearbeiten</translation>
    </message>
    <message>
        <source>F2</source>
        <translation>F2</translation>
    </message>
    <message>
        <source>Find: go to the list, then to the node</source>
        <translation>Suchen: zur Liste gehen, dann zum Knoten</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Find: check or uncheck the selected rows</source>
        <translation>Suchen: ausgewählte Zeilen an- oder abwählen</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leertaste</translation>
    </message>
    <message>
        <source>Esc</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Lists: copy the selected rows</source>
        <translation>Listen: ausgewählte Zeilen kopieren</translation>
    </message>
    <message>
        <source>Ctrl+C</source>
        <translation>Strg+C</translation>
    </message>
    <message>
        <source>To the next field or list, or back</source>
        <translation>Zum nächsten Feld oder zur nächsten Liste, oder zurück</translation>
    </message>
    <message>
        <source>Tab, Shift+Tab</source>
        <translation>Tab, Umschalt+Tab</translation>
    </message>
    <message>
        <source>Log, Find and others below or beside: close</source>
        <translation>Protokoll, Suchen und andere unten oder daneben: schließen</translation>
    </message>
</context>
<context>
    <name>Vantry::ApplicationHost</name>
    <message>
        <source>Ending the application %1 failed: %2</source>
        <translation>Die Anwendung %1 ließ sich nicht beenden: %2</translation>
    </message>
    <message>
        <source>The application %1 failed: %2</source>
        <translation>Die Anwendung %1 ist fehlgeschlagen: %2</translation>
    </message>
</context>
<context>
    <name>Vantry::BackendChooser</name>
    <message>
        <source>Choose Files</source>
        <translation>Dateien auswählen</translation>
    </message>
    <message>
        <source>Part of a name or folder</source>
        <translation>Teil eines Namens oder Ordners</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Open files</source>
        <translation>Offene Dateien</translation>
    </message>
    <message>
        <source>&amp;Files that are open:</source>
        <translation>Offene &amp;Dateien:</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>Vantry::BackendFiles</name>
    <message>
        <source>Not Saved</source>
        <translation>Nicht gespeichert</translation>
    </message>
    <message>
        <source>Resolve conflicts of %1</source>
        <translation>Konflikte von %1 lösen</translation>
    </message>
    <message>
        <source>Revert</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>&amp;Revert</source>
        <translation>&amp;Zurücksetzen</translation>
    </message>
    <message>
        <source>Not Reverted</source>
        <translation>Nicht zurückgesetzt</translation>
    </message>
    <message>
        <source>Not Reloaded</source>
        <translation>Nicht neu geladen</translation>
    </message>
    <message>
        <source>%1 holds changes that are not saved. Save them before it is closed?</source>
        <translation>%1 enthält Änderungen, die nicht gespeichert sind. Sollen sie vor dem Schließen gespeichert werden?</translation>
    </message>
    <message>
        <source>%1 files hold changes that are not saved. Save them before they are closed?</source>
        <translation>%1 Dateien enthalten Änderungen, die nicht gespeichert sind. Sollen sie vor dem Schließen gespeichert werden?</translation>
    </message>
    <message>
        <source>Not Closed</source>
        <translation>Nicht geschlossen</translation>
    </message>
    <message>
        <source>%1 holds changes that are not saved. Save them before the window closes?</source>
        <translation>%1 enthält Änderungen, die nicht gespeichert sind. Sollen sie gespeichert werden, bevor sich das Fenster schließt?</translation>
    </message>
    <message>
        <source>%1 files hold changes that are not saved. Save them before the window closes?</source>
        <translation>%1 Dateien enthalten Änderungen, die nicht gespeichert sind. Sollen sie gespeichert werden, bevor sich das Fenster schließt?</translation>
    </message>
    <message>
        <source>The changes of %1 were not saved: the program was told to end</source>
        <translation>Die Änderungen von %1 wurden nicht gespeichert: das Programm sollte sich beenden</translation>
    </message>
    <message>
        <source>. They are kept in %1</source>
        <translation>. Sie sind in %1 aufbewahrt</translation>
    </message>
    <message>
        <source>, and they are lost: %1</source>
        <translation>, und sie sind verloren: %1</translation>
    </message>
    <message>
        <source>Not Applied</source>
        <translation>Nicht übernommen</translation>
    </message>
    <message>
        <source>Apply kept changes of %1</source>
        <translation>Aufbewahrte Änderungen von %1 übernehmen</translation>
    </message>
    <message>
        <source>%1 of %2 changes were not put into %3 and stay kept.</source>
        <translation>%1 von %2 Änderungen wurden nicht in %3 übernommen und bleiben aufbewahrt.</translation>
    </message>
    <message>
        <source>Not All Applied</source>
        <translation>Nicht alle übernommen</translation>
    </message>
    <message>
        <source>Give up the unsaved changes of these files?

%1</source>
        <translation>Die ungespeicherten Änderungen dieser Dateien aufgeben?

%1</translation>
    </message>
    <message>
        <source>What is unsaved stays open: save it again once this is mended.</source>
        <translation>Was nicht gespeichert ist, bleibt offen: es lässt sich erneut speichern, sobald dies behoben ist.</translation>
    </message>
    <message>
        <source>The log tells of %1 more.</source>
        <translation>Das Protokoll nennt %1 weitere.</translation>
    </message>
    <message>
        <source>Saving %1</source>
        <translation>%1 wird gespeichert</translation>
    </message>
    <message>
        <source>Comparing %1</source>
        <translation>%1 wird verglichen</translation>
    </message>
    <message>
        <source>Not Resolved</source>
        <translation>Nicht entschieden</translation>
    </message>
    <message>
        <source>Reloading %1</source>
        <translation>%1 wird neu geladen</translation>
    </message>
    <message>
        <source>Closing %1</source>
        <translation>%1 wird geschlossen</translation>
    </message>
    <message>
        <source>Revert %1</source>
        <translation>%1 zurücksetzen</translation>
    </message>
</context>
<context>
    <name>Vantry::ChangesDock</name>
    <message>
        <source>Changes</source>
        <translation>Änderungen</translation>
    </message>
    <message>
        <source>Nothing is unsaved.</source>
        <translation>Alles ist gespeichert.</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>&amp;Drop</source>
        <translation>&amp;Verwerfen</translation>
    </message>
    <message>
        <source>Keep &amp;Mine</source>
        <translation>&amp;Meine behalten</translation>
    </message>
    <message>
        <source>Of the selected conflicts, what is unsaved stays</source>
        <translation>Bei den ausgewählten Konflikten bleibt, was noch nicht gespeichert ist</translation>
    </message>
    <message>
        <source>Take &amp;Theirs</source>
        <translation>Fr&amp;emde übernehmen</translation>
    </message>
    <message>
        <source>Write the lines of the hunks with the cursor or the selection into the file</source>
        <translation>Schreibt die Zeilen der Abschnitte, in denen Cursor oder Auswahl stehen, in die Datei</translation>
    </message>
    <message>
        <source>D&amp;rop Hunk</source>
        <translation>Abschnitt ver&amp;werfen</translation>
    </message>
    <message>
        <source>Take the lines of these hunks from the file; Undo brings them back</source>
        <translation>Nimmt die Zeilen dieser Abschnitte aus der Datei; „Rückgängig“ bringt die Änderungen zurück</translation>
    </message>
    <message>
        <source>Changes (%1)</source>
        <translation>Änderungen (%1)</translation>
    </message>
    <message>
        <source>D&amp;rop %1 Hunks</source>
        <translation>%1 Abschnitte ver&amp;werfen</translation>
    </message>
    <message>
        <source>Drop changes</source>
        <translation>Änderungen verwerfen</translation>
    </message>
    <message>
        <source>Resolve conflicts</source>
        <translation>Konflikte lösen</translation>
    </message>
    <message>
        <source>Save H&amp;unk</source>
        <translation>Abschn&amp;itt speichern</translation>
    </message>
    <message>
        <source>Save %1 H&amp;unks</source>
        <translation>%1 Abschn&amp;itte speichern</translation>
    </message>
    <message>
        <source>Save the selected changes, of a selected file or store all of them</source>
        <translation>Speichert die ausgewählten Änderungen, von einer ausgewählten Datei oder einem Datenspeicher alle</translation>
    </message>
    <message>
        <source>Take back the selected changes, of a selected file or store all of them; Undo brings them back</source>
        <translation>Nimmt die ausgewählten Änderungen zurück, von einer ausgewählten Datei oder einem Datenspeicher alle; „Rückgängig“ bringt sie wieder</translation>
    </message>
    <message>
        <source>Of the selected conflicts, what the other program saved stays</source>
        <translation>Bei den ausgewählten Konflikten bleibt, was das andere Programm gespeichert hat</translation>
    </message>
    <message>
        <source>Take &amp;Base</source>
        <translation>Basis &amp;übernehmen</translation>
    </message>
    <message>
        <source>Of the selected conflicts, what both sides began with comes back</source>
        <translation>Bei den ausgewählten Konflikten kommt zurück, womit beide Seiten begonnen haben</translation>
    </message>
    <message>
        <source>Saving changes</source>
        <translation>Änderungen werden gespeichert</translation>
    </message>
</context>
<context>
    <name>Vantry::ChangesModel</name>
    <message>
        <source>(not there)</source>
        <translation>(nicht vorhanden)</translation>
    </message>
    <message>
        <source>(not shown)</source>
        <translation>(nicht gezeigt)</translation>
    </message>
    <message>
        <source>Attribute</source>
        <translation>Attribut</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Unsaved</source>
        <translation>Ungespeichert</translation>
    </message>
    <message>
        <source>1 change</source>
        <translation>1 Änderung</translation>
    </message>
    <message>
        <source>%1 changes</source>
        <translation>%1 Änderungen</translation>
    </message>
    <message>
        <source>conflict</source>
        <translation>Konflikt</translation>
    </message>
    <message>
        <source>new</source>
        <translation>neu</translation>
    </message>
    <message>
        <source>removed</source>
        <translation>entfernt</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>geändert</translation>
    </message>
    <message>
        <source>(the file is gone)</source>
        <translation>(die Datei ist weg)</translation>
    </message>
    <message>
        <source>(what is open)</source>
        <translation>(was offen ist)</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Gespeichert</translation>
    </message>
    <message>
        <source>Base</source>
        <translation>Basis</translation>
    </message>
</context>
<context>
    <name>Vantry::CommentNote</name>
    <message>
        <source>Comment of the file</source>
        <translation>Kommentar der Datei</translation>
    </message>
</context>
<context>
    <name>Vantry::Confirmation</name>
    <message>
        <source>Undo brings it back.</source>
        <translation>Rückgängig bringt es zurück.</translation>
    </message>
    <message>
        <source>It cannot be brought back.</source>
        <translation>Es lässt sich nicht zurückholen.</translation>
    </message>
    <message>
        <source>Do &amp;not ask again before this</source>
        <translation>Davor &amp;nicht mehr fragen</translation>
    </message>
</context>
<context>
    <name>Vantry::ConflictDialog</name>
    <message>
        <source>(not there)</source>
        <translation>(nicht vorhanden)</translation>
    </message>
    <message>
        <source>(not shown)</source>
        <translation>(nicht gezeigt)</translation>
    </message>
    <message>
        <source>Keep &amp;Mine</source>
        <translation>&amp;Meine behalten</translation>
    </message>
    <message>
        <source>Take &amp;Theirs</source>
        <translation>&amp;Fremde übernehmen</translation>
    </message>
    <message>
        <source>Changed by Another Program</source>
        <translation>Von einem anderen Programm geändert</translation>
    </message>
    <message>
        <source>Changed since Then</source>
        <translation>Seitdem geändert</translation>
    </message>
    <message>
        <source>%1 was not saved: another program has changed what was edited here. Choose for each attribute whose value is to stay; all others are merged.</source>
        <translation>%1 wurde nicht gespeichert: ein anderes Programm hat geändert, was hier bearbeitet wurde. Wählen Sie für jedes Attribut, wessen Wert bleiben soll; alle anderen werden zusammengeführt.</translation>
    </message>
    <message>
        <source>%1 has been changed since the kept changes were made. Choose for each attribute whose value is to stay; all others are applied.</source>
        <translation>%1 wurde geändert, seit die aufbewahrten Änderungen entstanden sind. Wählen Sie für jedes Attribut, wessen Wert bleiben soll; alle anderen werden übernommen.</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Jetzt</translation>
    </message>
    <message>
        <source>For the selected rows:</source>
        <translation>Für die ausgewählten Zeilen:</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Anwenden</translation>
    </message>
    <message>
        <source>Conflicts</source>
        <translation>Konflikte</translation>
    </message>
    <message>
        <source>Attribute</source>
        <translation>Attribut</translation>
    </message>
    <message>
        <source>Mine</source>
        <translation>Meiner</translation>
    </message>
    <message>
        <source>Choice</source>
        <translation>Wahl</translation>
    </message>
    <message>
        <source>take theirs</source>
        <translation>fremden übernehmen</translation>
    </message>
    <message>
        <source>what is open</source>
        <translation>was offen ist</translation>
    </message>
    <message>
        <source>the file is gone</source>
        <translation>die Datei ist weg</translation>
    </message>
    <message>
        <source>keep mine</source>
        <translation>meinen behalten</translation>
    </message>
    <message>
        <source>Theirs</source>
        <translation>Fremder</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>take base</source>
        <translation>Basis übernehmen</translation>
    </message>
    <message>
        <source>Take &amp;Base</source>
        <translation>Basis &amp;übernehmen</translation>
    </message>
    <message>
        <source>Base</source>
        <translation>Basis</translation>
    </message>
    <message>
        <source>the file as it was</source>
        <translation>die Datei, wie sie war</translation>
    </message>
</context>
<context>
    <name>Vantry::DeskApplication</name>
    <message>
        <source>It was not done: %1</source>
        <translation>Es wurde nicht ausgeführt: %1</translation>
    </message>
</context>
<context>
    <name>Vantry::DiffText</name>
    <message>
        <source>... and %1 more lines</source>
        <translation>... und %1 weitere Zeilen</translation>
    </message>
</context>
<context>
    <name>Vantry::DiffView</name>
    <message>
        <source>What would be written</source>
        <translation>Was geschrieben würde</translation>
    </message>
</context>
<context>
    <name>Vantry::EditMenu</name>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>Change &amp;Type...</source>
        <translation>&amp;Typ ändern...</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>&amp;Find...</source>
        <translation>&amp;Suchen...</translation>
    </message>
    <message>
        <source>R&amp;eplace...</source>
        <translation>&amp;Ersetzen...</translation>
    </message>
    <message>
        <source>Find &amp;Previous</source>
        <translation>&amp;Vorheriger Treffer</translation>
    </message>
    <message>
        <source>Find Ne&amp;xt</source>
        <translation>&amp;Nächster Treffer</translation>
    </message>
    <message>
        <source>Undoing %1</source>
        <translation>%1 wird rückgängig gemacht</translation>
    </message>
    <message>
        <source>Redoing %1</source>
        <translation>%1 wird wiederholt</translation>
    </message>
</context>
<context>
    <name>Vantry::EditorCommand</name>
    <message>
        <source>%1 was not opened: &apos;%2&apos; cannot be started; Edit &gt; Editor chooses another one</source>
        <translation>%1 wurde nicht geöffnet: „%2“ lässt sich nicht starten; „Bearbeiten &gt; Editor“ wählt einen anderen</translation>
    </message>
    <message>
        <source>%1 was not opened: the desktop has no program for it; Edit &gt; Editor chooses one</source>
        <translation>%1 wurde nicht geöffnet: die Arbeitsumgebung hat kein Programm dafür; „Bearbeiten &gt; Editor“ wählt eines</translation>
    </message>
</context>
<context>
    <name>Vantry::ExampleFiles</name>
    <message>
        <source>%1 cannot be made</source>
        <translation>%1 lässt sich nicht anlegen</translation>
    </message>
</context>
<context>
    <name>Vantry::FailureHint</name>
    <message>
        <source>&amp;Failure Message</source>
        <translation>&amp;Fehlermeldung</translation>
    </message>
    <message>
        <source>Change &amp;Type</source>
        <translation>&amp;Typ ändern</translation>
    </message>
    <message>
        <source>&amp;Copy Entry</source>
        <translation>Eingabe &amp;kopieren</translation>
    </message>
    <message>
        <source>Copy what was entered and not taken</source>
        <translation>Kopiert, was eingegeben und nicht angenommen wurde</translation>
    </message>
    <message>
        <source>&amp;Show Log</source>
        <translation>&amp;Protokoll zeigen</translation>
    </message>
    <message>
        <source>Open the log, which tells more</source>
        <translation>Öffnet das Protokoll, in dem mehr steht</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Close this message (Escape)</source>
        <translation>Diese Meldung schließen (Escape)</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was not changed; the log may tell why</source>
        <translation>„%1“ wurde nicht geändert; den Grund nennt vielleicht das Protokoll</translation>
    </message>
    <message>
        <source>%1; &quot;Change Type&quot; makes it hold %2</source>
        <translation>%1; mit „Typ ändern“ nimmt es %2 auf</translation>
    </message>
    <message>
        <source>Make &apos;%1&apos; hold %2, and write what was entered</source>
        <translation>„%1“ nimmt dann %2 auf, und was eingegeben wurde, wird geschrieben</translation>
    </message>
    <message>
        <source>Open the editor of &apos;%1&apos; with what was entered</source>
        <translation>Öffnet den Editor von „%1“ mit dem, was eingegeben wurde</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be edited in its cell</source>
        <translation>„%1“ lässt sich nicht in seiner Zelle bearbeiten</translation>
    </message>
    <message>
        <source>&apos;%1&apos; does not exist</source>
        <translation>„%1“ gibt es nicht</translation>
    </message>
    <message>
        <source>Edit &amp;Again</source>
        <translation>&amp;Erneut bearbeiten</translation>
    </message>
</context>
<context>
    <name>Vantry::FileLock</name>
    <message>
        <source>Loc&amp;k the File</source>
        <translation>Datei sp&amp;erren</translation>
    </message>
    <message>
        <source>Loc&amp;k %1</source>
        <translation>%1 sp&amp;erren</translation>
    </message>
    <message>
        <source>Without a selected file there is nothing to lock (%1)</source>
        <translation>Ohne ausgewählte Datei ist nichts zu sperren (%1)</translation>
    </message>
    <message>
        <source>%1 is locked against changes; unlock it (%2)</source>
        <translation>%1 ist gegen Änderungen gesperrt; entsperren (%2)</translation>
    </message>
    <message>
        <source>%1 can be changed; lock it (%2)</source>
        <translation>%1 lässt sich ändern; sperren (%2)</translation>
    </message>
</context>
<context>
    <name>Vantry::FileMenu</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Open Configuration Files...</source>
        <translation>&amp;Konfigurationsdateien öffnen...</translation>
    </message>
    <message>
        <source>Open &amp;Folder...</source>
        <translation>&amp;Ordner öffnen...</translation>
    </message>
    <message>
        <source>O&amp;pen As</source>
        <translation>Öffnen a&amp;ls</translation>
    </message>
    <message>
        <source>&amp;Save All</source>
        <translation>&amp;Alle speichern</translation>
    </message>
    <message>
        <source>Sa&amp;ve</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>R&amp;evert</source>
        <translation>Z&amp;urücksetzen</translation>
    </message>
    <message>
        <source>&amp;All of Them</source>
        <translation>&amp;Alle davon</translation>
    </message>
    <message>
        <source>Re&amp;load from Disk</source>
        <translation>&amp;Neu laden</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Close &amp;All</source>
        <translation>Alle sc&amp;hließen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>C&amp;hoose among %1...</source>
        <translation>Aus %1 aus&amp;wählen...</translation>
    </message>
    <message>
        <source>Open Configuration Files</source>
        <translation>Konfigurationsdateien öffnen</translation>
    </message>
    <message>
        <source>Open Configuration Files As %1</source>
        <translation>Konfigurationsdateien als %1 öffnen</translation>
    </message>
    <message>
        <source>All Files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Configuration Files (%1)</source>
        <translation>Konfigurationsdateien (%1)</translation>
    </message>
    <message>
        <source>%1 (missing)</source>
        <translation>%1 (fehlt)</translation>
    </message>
    <message>
        <source>None yet</source>
        <translation>Noch keine</translation>
    </message>
    <message>
        <source>&amp;Clear This List</source>
        <translation>Diese Liste &amp;leeren</translation>
    </message>
    <message>
        <source>Open S&amp;tore...</source>
        <translation>Datenspeicher ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>Open Store</source>
        <translation>Datenspeicher öffnen</translation>
    </message>
    <message>
        <source>Where the store is, as in etcd://HOST:PORT/NAME, or etcds:// with TLS.
Credentials, and what becomes of edits while it is away, come after it,
as in etcd://HOST:PORT/NAME?credentials=FILE&amp;&amp;offline=queue:</source>
        <translation>Wo der Datenspeicher ist, wie in etcd://HOST:PORT/NAME, oder etcds:// mit TLS.
Wer Sie sind und was aus Änderungen wird, während er fehlt, steht dahinter,
wie in etcd://HOST:PORT/NAME?credentials=DATEI&amp;&amp;offline=queue:</translation>
    </message>
</context>
<context>
    <name>Vantry::FileMounter</name>
    <message>
        <source>%1: no such file</source>
        <translation>%1: diese Datei gibt es nicht</translation>
    </message>
    <message>
        <source>%1: it is not a regular file</source>
        <translation>%1: das ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>%1: %2; Open As opens it as a type of your choice</source>
        <translation>%1: %2; „Öffnen als“ öffnet sie als einen Typ Ihrer Wahl</translation>
    </message>
    <message>
        <source>%1: it was not opened: %2</source>
        <translation>%1: wurde nicht geöffnet: %2</translation>
    </message>
    <message>
        <source>%1: %2; View &gt; Problems tells why</source>
        <translation>%1: %2; „Ansicht &gt; Probleme“ sagt, warum</translation>
    </message>
</context>
<context>
    <name>Vantry::FindDock</name>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Angehalten</translation>
    </message>
    <message>
        <source>more are not listed</source>
        <translation>weitere sind nicht aufgeführt</translation>
    </message>
    <message>
        <source>Type what is to be found</source>
        <translation>Geben Sie ein, was gesucht werden soll</translation>
    </message>
    <message>
        <source>%1 found</source>
        <translation>%1 gefunden</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Nichts gefunden</translation>
    </message>
    <message>
        <source>searching ...</source>
        <translation>Suche läuft ...</translation>
    </message>
    <message>
        <source>Replace &apos;%1&apos; by &apos;%2&apos;</source>
        <translation>„%1“ durch „%2“ ersetzen</translation>
    </message>
    <message>
        <source>1 value replaced</source>
        <translation>1 Wert ersetzt</translation>
    </message>
    <message>
        <source>%1 values replaced</source>
        <translation>%1 Werte ersetzt</translation>
    </message>
    <message>
        <source>St&amp;op</source>
        <translation>Anha&amp;lten</translation>
    </message>
    <message>
        <source>&amp;Replace 1 Value</source>
        <translation>1 Wert &amp;ersetzen</translation>
    </message>
    <message>
        <source>&amp;Replace %1 Values</source>
        <translation>%1 Werte &amp;ersetzen</translation>
    </message>
    <message>
        <source>Replace %1 values in %2 files?</source>
        <translation>%1 Werte in %2 Dateien ersetzen?</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>&amp;Ersetzen</translation>
    </message>
    <message>
        <source>Replace %1 values in one file?</source>
        <translation>%1 Werte in einer Datei ersetzen?</translation>
    </message>
</context>
<context>
    <name>Vantry::FolderDialog</name>
    <message>
        <source>Open Folder</source>
        <translation>Ordner öffnen</translation>
    </message>
    <message>
        <source>Patterns of names, as *.conf, or of paths below the folder, as ssl/*.pem, separated by blanks.
* stands for any text, ? for one character.</source>
        <translation>Muster von Namen, wie *.conf, oder von Pfaden unterhalb des Ordners, wie ssl/*.pem, durch Leerzeichen getrennt.
* steht für beliebigen Text, ? für ein Zeichen.</translation>
    </message>
    <message>
        <source>all files that are recognised</source>
        <translation>alle Dateien, die erkannt werden</translation>
    </message>
    <message>
        <source>as in *.bak ssl</source>
        <translation>wie in *.bak ssl</translation>
    </message>
    <message>
        <source>of any size</source>
        <translation>beliebig groß</translation>
    </message>
    <message>
        <source>up to %1 MiB</source>
        <translation>bis %1 MiB</translation>
    </message>
    <message>
        <source>Files to open</source>
        <translation>Zu öffnende Dateien</translation>
    </message>
    <message>
        <source>&amp;Only:</source>
        <translation>&amp;Nur:</translation>
    </message>
    <message>
        <source>&amp;Without:</source>
        <translation>&amp;Ohne:</translation>
    </message>
    <message>
        <source>&amp;Size:</source>
        <translation>&amp;Größe:</translation>
    </message>
    <message>
        <source>the folder alone</source>
        <translation>nur der Ordner selbst</translation>
    </message>
    <message>
        <source>&amp;Depth:</source>
        <translation>&amp;Tiefe:</translation>
    </message>
    <message>
        <source>How many levels of folders below it are looked at</source>
        <translation>Wie viele Ebenen von Ordnern darunter angesehen werden</translation>
    </message>
    <message>
        <source>all folders below it</source>
        <translation>alle Ordner darunter</translation>
    </message>
</context>
<context>
    <name>Vantry::FormatMenu</name>
    <message>
        <source>%1 file, its dialect recognised</source>
        <translation>%1-Datei, Dialekt wird erkannt</translation>
    </message>
    <message>
        <source>%1 file</source>
        <translation>%1-Datei</translation>
    </message>
</context>
<context>
    <name>Vantry::GoMenu</name>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>&amp;Forward</source>
        <translation>&amp;Vorwärts</translation>
    </message>
    <message>
        <source>Bookmark the &amp;Selected Node</source>
        <translation>Lesezeichen für den &amp;ausgewählten Knoten setzen</translation>
    </message>
    <message>
        <source>Remove the Bookmark of the &amp;Selected Node</source>
        <translation>Lesezeichen des &amp;ausgewählten Knotens entfernen</translation>
    </message>
    <message>
        <source>&amp;Go</source>
        <translation>&amp;Gehe zu</translation>
    </message>
    <message>
        <source>&amp;Remove a Bookmark</source>
        <translation>Ein Lesezeichen &amp;entfernen</translation>
    </message>
</context>
<context>
    <name>Vantry::GoToDialog</name>
    <message>
        <source>Go To</source>
        <translation>Gehe zu</translation>
    </message>
    <message>
        <source>&amp;Path of an attribute, or FILE:LINE or FILE:LINE:COLUMN:</source>
        <translation>&amp;Pfad eines Attributs, oder DATEI:ZEILE oder DATEI:ZEILE:SPALTE:</translation>
    </message>
    <message>
        <source>&amp;Go</source>
        <translation>&amp;Hingehen</translation>
    </message>
    <message>
        <source>This is neither the path of an attribute nor a line of a file.</source>
        <translation>Es gibt kein Attribut mit diesem Pfad, und er nennt keine Zeile einer Datei.</translation>
    </message>
    <message>
        <source>%1 is not open; File &gt; Open opens it.</source>
        <translation>%1 ist nicht offen; „Datei &gt; Konfigurationsdateien öffnen“ öffnet sie.</translation>
    </message>
    <message>
        <source>%1 open files are called so: begin with more of the folders.</source>
        <translation>%1 offene Dateien heißen so: geben Sie davor mehr von den Ordnern an.</translation>
    </message>
</context>
<context>
    <name>Vantry::HitModel</name>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>New Value</source>
        <translation>Neuer Wert</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Stelle</translation>
    </message>
    <message>
        <source>(no longer there)</source>
        <translation>(nicht mehr da)</translation>
    </message>
</context>
<context>
    <name>Vantry::HitView</name>
    <message>
        <source>What was found</source>
        <translation>Was gefunden wurde</translation>
    </message>
</context>
<context>
    <name>Vantry::KeptChanges</name>
    <message>
        <source>%1 cannot be made</source>
        <translation>%1 lässt sich nicht anlegen</translation>
    </message>
    <message>
        <source>%1 is damaged</source>
        <translation>%1 ist beschädigt</translation>
    </message>
    <message>
        <source>%1 cannot be removed</source>
        <translation>%1 lässt sich nicht entfernen</translation>
    </message>
</context>
<context>
    <name>Vantry::KeptChangesBar</name>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>Ask again at the next start</source>
        <translation>Beim nächsten Start erneut fragen</translation>
    </message>
    <message>
        <source>Unsaved changes of %1 are kept from %2</source>
        <translation>Ungespeicherte Änderungen von %1 sind vom %2 aufbewahrt</translation>
    </message>
    <message>
        <source>%1
The program was told to end before they were saved</source>
        <translation>%1
Das Programm sollte sich beenden, bevor sie gespeichert waren</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>Apply Again</source>
        <translation>Wieder übernehmen</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Kept Changes</source>
        <translation>Aufbewahrte Änderungen</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Verwerfen</translation>
    </message>
    <message>
        <source>Not Discarded</source>
        <translation>Nicht verworfen</translation>
    </message>
    <message>
        <source>Discard the kept changes of %1?</source>
        <translation>Die aufbewahrten Änderungen von %1 verwerfen?</translation>
    </message>
</context>
<context>
    <name>Vantry::LanguageMenu</name>
    <message>
        <source>&amp;Language</source>
        <translation>S&amp;prache</translation>
    </message>
    <message>
        <source>&amp;As the System</source>
        <translation>Wie das &amp;System</translation>
    </message>
    <message>
        <source>Vantry is shown in the chosen language from its next start on.</source>
        <translation>Vantry erscheint ab dem nächsten Start in der gewählten Sprache.</translation>
    </message>
</context>
<context>
    <name>Vantry::LogDock</name>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Show lines of this type</source>
        <translation>Zeilen dieses Typs zeigen</translation>
    </message>
    <message>
        <source>Only lines with this text</source>
        <translation>Nur Zeilen mit diesem Text</translation>
    </message>
    <message>
        <source>C&amp;lear</source>
        <translation>&amp;Leeren</translation>
    </message>
    <message>
        <source>Empty this list; what comes is shown again</source>
        <translation>Leert diese Liste; was danach kommt, wird wieder gezeigt</translation>
    </message>
</context>
<context>
    <name>Vantry::LogModel</name>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>Outcome</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Failure</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Category</source>
        <translation>Kategorie</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
</context>
<context>
    <name>Vantry::LogView</name>
    <message>
        <source>Log lines</source>
        <translation>Zeilen des Protokolls</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
</context>
<context>
    <name>Vantry::MainWindow</name>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Navigation Area</source>
        <translation>&amp;Navigationsbereich</translation>
    </message>
    <message>
        <source>&amp;Reopen Files at Start</source>
        <translation>Dateien beim &amp;Start wieder öffnen</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About Vantry</source>
        <translation>&amp;Über Vantry</translation>
    </message>
    <message>
        <source>No plug-in was loaded, so there is nothing to show. View &gt; Plug-ins tells why.</source>
        <translation>Es wurde kein Plugin geladen, darum gibt es nichts zu zeigen. „Ansicht &gt; Plugins“ nennt den Grund.</translation>
    </message>
    <message>
        <source>The example was not opened: %1</source>
        <translation>Das Beispiel wurde nicht geöffnet: %1</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 und %2 weitere</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Vantry %1&lt;/h3&gt;&lt;p&gt;One window over all configuration of a system.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;Vantry %1&lt;/h3&gt;&lt;p&gt;Ein Fenster über die ganze Konfiguration eines Systems.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>About Vantry</source>
        <translation>Über Vantry</translation>
    </message>
    <message>
        <source>Not Written</source>
        <translation>Nicht geschrieben</translation>
    </message>
    <message>
        <source>%1

Close the window without it?</source>
        <translation>%1

Das Fenster ohne diese Eingabe schließen?</translation>
    </message>
    <message>
        <source>C&amp;lose</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>&amp;Commands...</source>
        <translation>&amp;Befehle...</translation>
    </message>
    <message>
        <source>&amp;Keys...</source>
        <translation>&amp;Tasten...</translation>
    </message>
    <message>
        <source>The tree shows everything again, since its search left out %1.</source>
        <translation>Der Baum zeigt wieder alles, da seine Suche %1 ausgelassen hat.</translation>
    </message>
    <message>
        <source>%1 is in no tree of this window.</source>
        <translation>%1 steht in keinem Baum dieses Fensters.</translation>
    </message>
    <message>
        <source>%1 (window %2)</source>
        <translation>%1 (Fenster %2)</translation>
    </message>
    <message>
        <source>Window %1</source>
        <translation>Fenster %1</translation>
    </message>
    <message>
        <source>&amp;Ask Before Everything Again</source>
        <translation>Vor allem wieder fra&amp;gen</translation>
    </message>
    <message>
        <source>&amp;Plug-ins</source>
        <translation>P&amp;lugins</translation>
    </message>
    <message>
        <source>Pr&amp;oblems</source>
        <translation>Pr&amp;obleme</translation>
    </message>
    <message>
        <source>F&amp;ind</source>
        <translation>S&amp;uchen</translation>
    </message>
    <message>
        <source>&amp;Changes</source>
        <translation>&amp;Änderungen</translation>
    </message>
    <message>
        <source>Lo&amp;g</source>
        <translation>Pro&amp;tokoll</translation>
    </message>
    <message>
        <source>&amp;Text</source>
        <translation>Te&amp;xt</translation>
    </message>
    <message>
        <source>%1 is in nothing that is open.</source>
        <translation>%1 ist in nichts, was geöffnet ist.</translation>
    </message>
</context>
<context>
    <name>Vantry::NavigationArea</name>
    <message>
        <source>Show this application</source>
        <translation>Diese Anwendung zeigen</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>Vantry::NodeActions</name>
    <message>
        <source>Re&amp;name...</source>
        <translation>Um&amp;benennen...</translation>
    </message>
    <message>
        <source>&amp;Move...</source>
        <translation>Vers&amp;chieben...</translation>
    </message>
    <message>
        <source>&amp;Duplicate...</source>
        <translation>Dup&amp;lizieren...</translation>
    </message>
    <message>
        <source>De&amp;lete...</source>
        <translation>Lösc&amp;hen...</translation>
    </message>
    <message>
        <source>&amp;Array Element</source>
        <translation>Array-Ele&amp;ment</translation>
    </message>
    <message>
        <source>Insert &amp;Before</source>
        <translation>&amp;Davor einfügen</translation>
    </message>
    <message>
        <source>Insert &amp;After</source>
        <translation>Da&amp;nach einfügen</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>Move &amp;Down</source>
        <translation>Nach &amp;unten</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>New name, in which a &quot;.&quot; is written %2E:</source>
        <translation>Neuer Name; ein „.“ darin wird %2E geschrieben:</translation>
    </message>
    <message>
        <source>Not Renamed</source>
        <translation>Nicht umbenannt</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is a path. In a name a &quot;.&quot; is written %2E; to put the node elsewhere, choose Move.</source>
        <translation>„%1“ ist ein Pfad. In einem Namen wird ein „.“ als %2E geschrieben; um den Knoten an eine andere Stelle zu setzen, wählen Sie „Verschieben“.</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>New path:</source>
        <translation>Neuer Pfad:</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplizieren</translation>
    </message>
    <message>
        <source>Name of the copy:</source>
        <translation>Name der Kopie:</translation>
    </message>
    <message>
        <source>&amp;Set to Null</source>
        <translation>Auf N&amp;ull setzen</translation>
    </message>
    <message>
        <source>Delete this?</source>
        <translation>Dies löschen?</translation>
    </message>
    <message>
        <source>Delete this and the more than %1 entries below it?</source>
        <translation>Dies und die mehr als %1 Einträge darunter löschen?</translation>
    </message>
    <message>
        <source>Delete this and the entry below it?</source>
        <translation>Dies und den Eintrag darunter löschen?</translation>
    </message>
    <message>
        <source>Delete this and the %1 entries below it?</source>
        <translation>Dies und die %1 Einträge darunter löschen?</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Re&amp;vert to What Is Saved</source>
        <translation>Auf d&amp;as Gespeicherte zurücksetzen</translation>
    </message>
</context>
<context>
    <name>Vantry::NoticeBar</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Close these messages</source>
        <translation>Diese Meldungen schließen</translation>
    </message>
    <message>
        <source>Open &amp;As</source>
        <translation>Öffnen a&amp;ls</translation>
    </message>
    <message>
        <source>Open %1 as a type of your choice</source>
        <translation>Öffnet %1 als einen Typ Ihrer Wahl</translation>
    </message>
    <message>
        <source>Open these %1 files as a type of your choice</source>
        <translation>Öffnet diese %1 Dateien als einen Typ Ihrer Wahl</translation>
    </message>
</context>
<context>
    <name>Vantry::OpeningProgress</name>
    <message>
        <source>Opening files</source>
        <translation>Dateien werden geöffnet</translation>
    </message>
    <message>
        <source>Opening %1 of %2 files</source>
        <translation>%1 von %2 Dateien werden geöffnet</translation>
    </message>
    <message>
        <source>Loading %1 of %2 entries</source>
        <translation>%1 von %2 Einträgen werden geladen</translation>
    </message>
</context>
<context>
    <name>Vantry::Options</name>
    <message>
        <source>Vantry: one window over all configuration of a system.</source>
        <translation>Vantry: ein Fenster über die ganze Konfiguration eines Systems.</translation>
    </message>
    <message>
        <source>Configuration files and folders to open.</source>
        <translation>Konfigurationsdateien und Ordner, die geöffnet werden.</translation>
    </message>
    <message>
        <source>Load plug-ins from DIR instead of the usual places.</source>
        <translation>Plugins aus DIR statt von den üblichen Orten laden.</translation>
    </message>
    <message>
        <source>Load plug-ins from DIR too, even though other users can change the files there and so have their own code run as yours.</source>
        <translation>Plugins auch aus DIR laden, obwohl andere Benutzer die Dateien dort ändern und so ihren eigenen Code als den Ihren ausführen lassen können.</translation>
    </message>
    <message>
        <source>Start without any plug-in, when one keeps Vantry from starting.</source>
        <translation>Ohne Plugins starten, wenn eines den Start von Vantry verhindert.</translation>
    </message>
    <message>
        <source>Draw the window into OUT.png when all is loaded, and end.</source>
        <translation>Das Fenster nach OUT.png zeichnen, sobald alles geladen ist, und enden.</translation>
    </message>
    <message>
        <source>Show this start in English (en) or German (de).</source>
        <translation>Diesen Start in Englisch (en) oder Deutsch (de) zeigen.</translation>
    </message>
    <message>
        <source>Show this help.</source>
        <translation>Diese Hilfe zeigen.</translation>
    </message>
    <message>
        <source>Show the version.</source>
        <translation>Die Version zeigen.</translation>
    </message>
    <message>
        <source>--picture needs the name of a file</source>
        <translation>--picture braucht den Namen einer Datei</translation>
    </message>
    <message>
        <source>unknown language &apos;%1&apos;; valid languages: %2</source>
        <translation>unbekannte Sprache „%1“; möglich sind: %2</translation>
    </message>
    <message>
        <source>User Commands</source>
        <translation>Dienstprogramme für Benutzer</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Bezeichnung</translation>
    </message>
    <message>
        <source>one window over all configuration of a system</source>
        <translation>ein Fenster über die ganze Konfiguration eines Systems</translation>
    </message>
    <message>
        <source>Synopsis</source>
        <translation>Übersicht</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Opens configuration files, and folders of them, as one tree of typed attributes, to be browsed, searched, watched and edited. An edit of one value changes the bytes of that value; everything else in the file stays as its author left it. Without FILE the window shows what it showed last, or ways to open files.</source>
        <translation>Öffnet Konfigurationsdateien und Ordner mit solchen als einen Baum typisierter Attribute, zum Ansehen, Durchsuchen, Beobachten und Bearbeiten. Eine Änderung eines Werts ändert die Bytes dieses Werts; alles andere in der Datei bleibt, wie sein Autor es hinterlassen hat. Ohne FILE zeigt das Fenster, was es zuletzt gezeigt hat, oder Wege, Dateien zu öffnen.</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>The options of all programs of Qt, as -platform, are understood, too.</source>
        <translation>Auch die Optionen aller Programme von Qt, wie -platform, werden verstanden.</translation>
    </message>
    <message>
        <source>Exit status</source>
        <translation>Exit-Status</translation>
    </message>
    <message>
        <source>The window was closed, or its picture drawn.</source>
        <translation>Das Fenster wurde geschlossen oder sein Bild gezeichnet.</translation>
    </message>
    <message>
        <source>No display was found, or a picture cannot be written or lacks a file that could not be opened.</source>
        <translation>Es gibt keine Anzeige, oder ein Bild kann nicht geschrieben werden, oder ihm fehlt eine Datei, die nicht geöffnet werden konnte.</translation>
    </message>
    <message>
        <source>The command line is wrong.</source>
        <translation>Die Befehlszeile ist falsch.</translation>
    </message>
    <message>
        <source>See also</source>
        <translation>Siehe auch</translation>
    </message>
    <message>
        <source>vantry-desk --help shows what it knows.</source>
        <translation>vantry-desk --help zeigt, was möglich ist.</translation>
    </message>
    <message>
        <source>cannot open a window without a display (DISPLAY and WAYLAND_DISPLAY are not set).</source>
        <translation>ohne Anzeige lässt sich kein Fenster öffnen (DISPLAY und WAYLAND_DISPLAY sind nicht gesetzt).</translation>
    </message>
    <message>
        <source>Use --picture OUT.png to draw the window into a file instead.</source>
        <translation>Mit --picture OUT.png wird das Fenster stattdessen in eine Datei gezeichnet.</translation>
    </message>
</context>
<context>
    <name>Vantry::PlaceButton</name>
    <message>
        <source>Place in the file: %1</source>
        <translation>Stelle in der Datei: %1</translation>
    </message>
    <message>
        <source>%1, not saved yet</source>
        <translation>%1, noch nicht gespeichert</translation>
    </message>
    <message>
        <source>Line %1 once it is saved</source>
        <translation>Zeile %1, sobald gespeichert ist</translation>
    </message>
</context>
<context>
    <name>Vantry::Places</name>
    <message>
        <source>&amp;Go To...</source>
        <translation>&amp;Gehe zu...</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Path</source>
        <translation>&amp;Pfad</translation>
    </message>
    <message>
        <source>&amp;Value</source>
        <translation>&amp;Wert</translation>
    </message>
    <message>
        <source>P&amp;lace in the File</source>
        <translation>&amp;Stelle in der Datei</translation>
    </message>
    <message>
        <source>Co&amp;mmand of vantry</source>
        <translation>&amp;Befehl für vantry</translation>
    </message>
    <message>
        <source>&amp;Open in Editor</source>
        <translation>Im Editor ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Ed&amp;itor...</source>
        <translation>E&amp;ditor...</translation>
    </message>
    <message>
        <source>%1 was not shown: the desktop has no program for folders</source>
        <translation>%1 wurde nicht gezeigt: die Arbeitsumgebung hat kein Programm für Ordner</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>Editor</translation>
    </message>
    <message>
        <source>Command that opens a file, in which {file}, {line} and {column} stand for the place.
Empty: the editor of the environment ($VISUAL, $EDITOR), or else of the desktop.</source>
        <translation>Befehl, der eine Datei öffnet; {file}, {line} und {column} stehen darin für die Stelle.
Leer: der Editor der Umgebung ($VISUAL, $EDITOR), sonst der der Arbeitsumgebung.</translation>
    </message>
    <message>
        <source>S&amp;how in Folder</source>
        <translation>Im Ordner &amp;zeigen</translation>
    </message>
</context>
<context>
    <name>Vantry::PluginDock</name>
    <message>
        <source>Plug-ins</source>
        <translation>Plugins</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>Plugin</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>&amp;Load at Next Start</source>
        <translation>Beim nächsten Start &amp;laden</translation>
    </message>
    <message>
        <source>Tries this plug-in again, although Vantry has ended in it</source>
        <translation>Versucht dieses Plugin noch einmal, obwohl sich Vantry darin beendet hat</translation>
    </message>
    <message>
        <source>loaded</source>
        <translation>geladen</translation>
    </message>
    <message>
        <source>is tried again at the next start</source>
        <translation>wird beim nächsten Start noch einmal versucht</translation>
    </message>
</context>
<context>
    <name>Vantry::PluginTexts</name>
    <message>
        <source>left out of this start, as --safe asks for</source>
        <translation>bei diesem Start ausgelassen, wie --safe es verlangt</translation>
    </message>
    <message>
        <source>left out of this start: plug-ins have ended the last two</source>
        <translation>bei diesem Start ausgelassen: Plugins haben die letzten beiden beendet</translation>
    </message>
    <message>
        <source>its application %1 is there already, from %2</source>
        <translation>die Anwendung %1 gibt es schon, aus %2</translation>
    </message>
    <message>
        <source>asking its application %1 failed: %2</source>
        <translation>die Frage nach der Anwendung %1 schlug fehl: %2</translation>
    </message>
    <message>
        <source>it does not say which contract it was built against; rebuild it with the headers of this version of Vantry, contract %1</source>
        <translation>es sagt nicht, gegen welchen Kontrakt es gebaut wurde; es ist mit den Headern dieser Version von Vantry neu zu bauen, Kontrakt %1</translation>
    </message>
    <message>
        <source>it was built against contract %1 and this version of Vantry has contract %2; install the build that belongs to this version</source>
        <translation>es wurde gegen Kontrakt %1 gebaut, und diese Version von Vantry hat Kontrakt %2; es ist der Build zu installieren, der zu dieser Version gehört</translation>
    </message>
    <message>
        <source>it is not a plug-in of Vantry: the entry point %1 is missing</source>
        <translation>es ist kein Plugin von Vantry: der Einsprungpunkt %1 fehlt</translation>
    </message>
    <message>
        <source>it cannot be loaded: %1</source>
        <translation>es lässt sich nicht laden: %1</translation>
    </message>
    <message>
        <source>naming its applications failed: %1</source>
        <translation>die Frage nach den Anwendungen schlug fehl: %1</translation>
    </message>
    <message>
        <source>it offers no application</source>
        <translation>es bietet keine Anwendung an</translation>
    </message>
    <message>
        <source>making its application %1 failed: %2</source>
        <translation>das Erzeugen der Anwendung %1 schlug fehl: %2</translation>
    </message>
    <message>
        <source>it did not make its application %1</source>
        <translation>es erzeugte die Anwendung %1 nicht</translation>
    </message>
    <message>
        <source>no such folder</source>
        <translation>kein solcher Ordner</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is a link that leads nowhere</source>
        <translation>„%1“ ist eine Verknüpfung, die nirgendwohin führt</translation>
    </message>
    <message>
        <source>other users can change &apos;%1&apos;; take away their permission to write there, or name the plug-in&apos;s folder with --shared-plugin-dir</source>
        <translation>andere Benutzer können „%1“ ändern; ihnen ist das Schreiben dort zu verbieten, oder der Ordner des Plugins ist mit --shared-plugin-dir zu nennen</translation>
    </message>
    <message>
        <source>ending</source>
        <translation>beim Beenden</translation>
    </message>
    <message>
        <source>loading</source>
        <translation>beim Laden</translation>
    </message>
    <message>
        <source>making an application of</source>
        <translation>beim Erzeugen einer Anwendung</translation>
    </message>
    <message>
        <source>showing</source>
        <translation>beim Zeigen</translation>
    </message>
    <message>
        <source>its file is larger than %1 MiB</source>
        <translation>die Datei ist größer als %1 MiB</translation>
    </message>
    <message>
        <source>the file cannot be read</source>
        <translation>die Datei kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>it did not finish at an earlier start; it is tried again when the file changes</source>
        <translation>bei einem früheren Start wurde es nicht fertig; es wird wieder versucht, wenn sich die Datei ändert</translation>
    </message>
    <message>
        <source>left out: an earlier start of Vantry ended in it</source>
        <translation>ausgelassen: ein früherer Start von Vantry endete darin</translation>
    </message>
    <message>
        <source>it could not be tried: %1</source>
        <translation>es konnte nicht versucht werden: %1</translation>
    </message>
    <message>
        <source>%1 it did not finish within %2 s</source>
        <translation>%1 wurde es nicht innerhalb von %2 s fertig</translation>
    </message>
    <message>
        <source>it is damaged: %1 it ends the program (signal %2)</source>
        <translation>es ist beschädigt: %1 beendet es das Programm (Signal %2)</translation>
    </message>
    <message>
        <source>it is damaged: %1 it ends the program with code %2</source>
        <translation>es ist beschädigt: %1 beendet es das Programm mit Code %2</translation>
    </message>
</context>
<context>
    <name>Vantry::ProblemsDock</name>
    <message>
        <source>Problems</source>
        <translation>Probleme</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Stelle</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>Grund</translation>
    </message>
    <message>
        <source>Problems (%1)</source>
        <translation>Probleme (%1)</translation>
    </message>
</context>
<context>
    <name>Vantry::RowCopy</name>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
</context>
<context>
    <name>Vantry::SearchForm</name>
    <message>
        <source>Text to find</source>
        <translation>Gesuchter Text</translation>
    </message>
    <message>
        <source>How the text is meant</source>
        <translation>Wie der Text gemeint ist</translation>
    </message>
    <message>
        <source>Plain text</source>
        <translation>Einfacher Text</translation>
    </message>
    <message>
        <source>Wildcard *</source>
        <translation>Platzhalter *</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>Regulärer Ausdruck</translation>
    </message>
    <message>
        <source>Look in:</source>
        <translation>Suchen in:</translation>
    </message>
    <message>
        <source>&amp;names</source>
        <translation>&amp;Namen</translation>
    </message>
    <message>
        <source>&amp;paths</source>
        <translation>&amp;Pfaden</translation>
    </message>
    <message>
        <source>val&amp;ues</source>
        <translation>&amp;Werten</translation>
    </message>
    <message>
        <source>of:</source>
        <translation>von:</translation>
    </message>
    <message>
        <source>Replace by</source>
        <translation>Ersetzen durch</translation>
    </message>
    <message>
        <source>With a regular expression, \1 to \9 are what its groups have matched, and \0 is all of it</source>
        <translation>Bei einem regulären Ausdruck stehen \1 bis \9 für das, was seine Gruppen gefunden haben, und \0 für alles</translation>
    </message>
    <message>
        <source>Match case</source>
        <translation>Groß-/Kleinschreibung</translation>
    </message>
    <message>
        <source>Whole &amp;text</source>
        <translation>Gan&amp;zer Text</translation>
    </message>
    <message>
        <source>t&amp;ypes</source>
        <translation>&amp;Typen</translation>
    </message>
</context>
<context>
    <name>Vantry::SearchScope</name>
    <message>
        <source>Where to search</source>
        <translation>Wo gesucht wird</translation>
    </message>
    <message>
        <source>&amp;Everywhere</source>
        <translation>&amp;Überall</translation>
    </message>
    <message>
        <source>At and &amp;Below the Selected Node</source>
        <translation>Ab dem &amp;ausgewählten Knoten</translation>
    </message>
    <message>
        <source>Everywhere</source>
        <translation>Überall</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 und %2 weitere</translation>
    </message>
</context>
<context>
    <name>Vantry::StartPage</name>
    <message>
        <source>&amp;Open Configuration Files...</source>
        <translation>&amp;Konfigurationsdateien öffnen...</translation>
    </message>
    <message>
        <source>INI, JSON, TOML, XML, YAML and text files</source>
        <translation>INI-, JSON-, TOML-, XML-, YAML- und Textdateien</translation>
    </message>
    <message>
        <source>Open the &amp;Example</source>
        <translation>&amp;Beispiel öffnen</translation>
    </message>
    <message>
        <source>A copy of your own of an imagined test bench, to try things out</source>
        <translation>Ihre eigene Kopie eines erdachten Prüfstands, zum Ausprobieren</translation>
    </message>
    <message>
        <source>Recent Files</source>
        <translation>Zuletzt geöffnete Dateien</translation>
    </message>
    <message>
        <source>No file is open</source>
        <translation>Keine Datei ist geöffnet</translation>
    </message>
    <message>
        <source>Drop configuration files anywhere onto this window, or:</source>
        <translation>Ziehen Sie Konfigurationsdateien irgendwo auf dieses Fenster, oder:</translation>
    </message>
</context>
<context>
    <name>Vantry::TextDock</name>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Select an attribute of a file to see its text.</source>
        <translation>Wählen Sie ein Attribut einer Datei, um deren Text zu sehen.</translation>
    </message>
</context>
<context>
    <name>Vantry::UnsavedChangesDialog</name>
    <message>
        <source>Unsaved Changes</source>
        <translation>Ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>Looking for the differences...</source>
        <translation>Unterschiede werden gesucht...</translation>
    </message>
    <message>
        <source>&amp;Save All</source>
        <translation>&amp;Alle speichern</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Verwerfen</translation>
    </message>
    <message>
        <source>The differences cannot be shown: %1</source>
        <translation>Die Unterschiede lassen sich nicht zeigen: %1</translation>
    </message>
    <message>
        <source>%1
Its differences cannot be shown: %2
</source>
        <translation>%1
Die Unterschiede lassen sich nicht zeigen: %2
</translation>
    </message>
    <message>
        <source>%1
Nothing that can be shown: its file is gone, or its values must not be read.
</source>
        <translation>%1
Nichts, was sich zeigen lässt: die Datei ist weg, oder ihre Werte dürfen nicht gelesen werden.
</translation>
    </message>
</context>
<context>
    <name>Vantry::WindowMenu</name>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>&amp;New Window</source>
        <translation>&amp;Neues Fenster</translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <translation>Fenster &amp;schließen</translation>
    </message>
</context>
<context>
    <name>Vantry::WindowPicture</name>
    <message>
        <source>the ending must name a kind of picture, as in .png</source>
        <translation>die Endung muss eine Art von Bild nennen, wie .png</translation>
    </message>
    <message>
        <source>the picture could not be written to %1: %2</source>
        <translation>das Bild konnte nicht nach %1 geschrieben werden: %2</translation>
    </message>
</context>
<context>
    <name>VantryApplication</name>
    <message>
        <source>Vantry</source>
        <translation>Vantry</translation>
    </message>
</context>
<context>
    <name>VantryControl</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Attributes</source>
        <translation>Attribute</translation>
    </message>
    <message>
        <source>flatStyle</source>
        <translation>flatStyle</translation>
    </message>
    <message>
        <source>Backends</source>
        <translation>Backends</translation>
    </message>
    <message>
        <source>Tests</source>
        <translation>Tests</translation>
    </message>
</context>
<context>
    <name>VantryMain</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Invalid browser mode, please select a proper value</source>
        <translation>Ungültiger Anzeigemodus, bitte wählen Sie einen gültigen</translation>
    </message>
    <message>
        <source>Browse Attributes</source>
        <translation>Attribute anzeigen</translation>
    </message>
    <message>
        <source>flatStyle</source>
        <translation>flatStyle</translation>
    </message>
    <message>
        <source>Browse Backends</source>
        <translation>Backends anzeigen</translation>
    </message>
    <message>
        <source>Tests</source>
        <translation>Tests</translation>
    </message>
</context>
<context>
    <name>Widgets::AttributeBrowserWidget</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Search path</source>
        <translation>Suchpfad</translation>
    </message>
    <message>
        <source>*</source>
        <translation>*</translation>
    </message>
    <message>
        <source>Auto completion</source>
        <translation>Autovervollständigung</translation>
    </message>
    <message>
        <source>Auto Completion Enabled</source>
        <translation>Autovervollständigung aktiviert</translation>
    </message>
    <message>
        <source>Read all attributes</source>
        <translation>Alle Attribute lesen</translation>
    </message>
    <message>
        <source>Hierarchy Level Filtering </source>
        <translation>Nach Hierarchieebenen filtern </translation>
    </message>
    <message>
        <source>Hierarchy level 1</source>
        <translation>Hierarchieebene 1</translation>
    </message>
    <message>
        <source>Hierarchy level 2</source>
        <translation>Hierarchieebene 2</translation>
    </message>
    <message>
        <source>Hierarchy level 3</source>
        <translation>Hierarchieebene 3</translation>
    </message>
    <message>
        <source>Hierarchy level 4</source>
        <translation>Hierarchieebene 4</translation>
    </message>
    <message>
        <source>Attribute tree</source>
        <translation>Attributbaum</translation>
    </message>
    <message>
        <source>Attribute Details</source>
        <translation>Attributdetails</translation>
    </message>
    <message>
        <source>Attribute details</source>
        <translation>Attributdetails</translation>
    </message>
    <message>
        <source>Attribute monitor</source>
        <translation>Attributmonitor</translation>
    </message>
    <message>
        <source>Nothing was done: &apos;%1&apos; has left the tree meanwhile</source>
        <translation>Es wurde nichts getan: „%1“ ist inzwischen nicht mehr im Baum</translation>
    </message>
    <message>
        <source>Attribute Name</source>
        <translation>Attributname</translation>
    </message>
    <message>
        <source>Do You Want To Delete The Attribute ?</source>
        <translation>Möchten Sie das Attribut löschen?</translation>
    </message>
    <message>
        <source>Validation Name</source>
        <translation>Name der Prüfung</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Json File(*.json);;Test File(*.txt)</source>
        <translation>JSON-Datei(*.json);;Textdatei(*.txt)</translation>
    </message>
    <message>
        <source>Select File</source>
        <translation>Datei auswählen</translation>
    </message>
    <message>
        <source>Json File (*.json)</source>
        <translation>JSON-Datei (*.json)</translation>
    </message>
    <message>
        <source>Import Path</source>
        <translation>Importpfad</translation>
    </message>
    <message>
        <source>Nothing matches &quot;%1&quot;.

A search path names an attribute or a group; &quot;*&quot; in it stands for any text, as in &quot;*name*&quot;.</source>
        <translation>Nichts passt zu „%1“.

Ein Suchpfad nennt ein Attribut oder eine Gruppe; „*“ steht darin für beliebigen Text, wie in „*name*“.</translation>
    </message>
</context>
<context>
    <name>Widgets::AttributeDetails</name>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Bytes</translation>
    </message>
    <message>
        <source>%1 items</source>
        <translation>%1 Elemente</translation>
    </message>
    <message>
        <source>%1 characters</source>
        <translation>%1 Zeichen</translation>
    </message>
    <message>
        <source>Only the beginning of the value is shown; it has %1.</source>
        <translation>Nur der Anfang des Werts wird gezeigt; er hat %1.</translation>
    </message>
    <message>
        <source>Show All</source>
        <translation>Alles zeigen</translation>
    </message>
    <message>
        <source>Copy Value</source>
        <translation>Wert kopieren</translation>
    </message>
</context>
<context>
    <name>Widgets::AttributeTestsWidget</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Number of attributes</source>
        <translation>Anzahl der Attribute</translation>
    </message>
    <message>
        <source>1000</source>
        <translation>1000</translation>
    </message>
    <message>
        <source>Register wildcard updates</source>
        <translation>Aktualisierungen mit Platzhaltern registrieren</translation>
    </message>
    <message>
        <source>Create Attributes</source>
        <translation>Attribute anlegen</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Read Counter</source>
        <translation>Zähler lesen</translation>
    </message>
    <message>
        <source>Invalid count entered</source>
        <translation>Ungültige Anzahl eingegeben</translation>
    </message>
    <message>
        <source>Created %1 attributes in %2 ms (counter =  %3)</source>
        <translation>%1 Attribute in %2 ms angelegt (Zähler =  %3)</translation>
    </message>
    <message>
        <source>Update %1 attributes in %2 ms (counter =  %3)</source>
        <translation>%1 Attribute in %2 ms aktualisiert (Zähler =  %3)</translation>
    </message>
    <message>
        <source>Counter: %1</source>
        <translation>Zähler: %1</translation>
    </message>
</context>
<context>
    <name>Widgets::BackendControlWidget</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Create / load backend</source>
        <translation>Backend anlegen / laden</translation>
    </message>
    <message>
        <source>Backend type</source>
        <translation>Backend-Typ</translation>
    </message>
    <message>
        <source>Refresh backend type list</source>
        <translation>Liste der Backend-Typen aktualisieren</translation>
    </message>
    <message>
        <source>Backend name</source>
        <translation>Backend-Name</translation>
    </message>
    <message>
        <source>test</source>
        <translation>test</translation>
    </message>
    <message>
        <source>Backend file</source>
        <translation>Backend-Datei</translation>
    </message>
    <message>
        <source>test.ini</source>
        <translation>test.ini</translation>
    </message>
    <message>
        <source>Access Mode</source>
        <translation>Zugriffsmodus</translation>
    </message>
    <message>
        <source>Read-Write</source>
        <translation>Read-Write</translation>
    </message>
    <message>
        <source>Read-Only</source>
        <translation>Read-Only</translation>
    </message>
    <message>
        <source>Write-Only</source>
        <translation>Write-Only</translation>
    </message>
    <message>
        <source>Create backend</source>
        <translation>Backend anlegen</translation>
    </message>
    <message>
        <source>Save selected backend</source>
        <translation>Ausgewähltes Backend speichern</translation>
    </message>
    <message>
        <source>Select backend name:</source>
        <translation>Backend-Namen wählen:</translation>
    </message>
    <message>
        <source>Refresh backend list</source>
        <translation>Backend-Liste aktualisieren</translation>
    </message>
    <message>
        <source>Save backend(s)</source>
        <translation>Backend(s) speichern</translation>
    </message>
</context>
<context>
    <name>Widgets::BackendCreateWidget</name>
    <message>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <source>Create New Backend</source>
        <translation>Neues Backend anlegen</translation>
    </message>
    <message>
        <source>Backend Type     </source>
        <translation>Backend-Typ     </translation>
    </message>
    <message>
        <source>Relative Path    </source>
        <translation>Relativer Pfad    </translation>
    </message>
    <message>
        <source>Backend File     </source>
        <translation>Backend-Datei     </translation>
    </message>
    <message>
        <source>Browse</source>
        <translation>Durchsuchen</translation>
    </message>
    <message>
        <source>Access Mode     </source>
        <translation>Zugriffsmodus     </translation>
    </message>
    <message>
        <source>read-only</source>
        <translation>read-only</translation>
    </message>
    <message>
        <source>write-only</source>
        <translation>write-only</translation>
    </message>
    <message>
        <source>read-write</source>
        <translation>read-write</translation>
    </message>
    <message>
        <source>Backend Description  </source>
        <translation>Backend-Beschreibung  </translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Create </source>
        <translation>Anlegen </translation>
    </message>
    <message>
        <source>Select File</source>
        <translation>Datei auswählen</translation>
    </message>
    <message>
        <source>(*.json *.txt *.ini *.xml)</source>
        <translation>(*.json *.txt *.ini *.xml)</translation>
    </message>
</context>
<context>
    <name>Widgets::CellEditor</name>
    <message>
        <source>A value of %1 characters is too long to be edited in a line</source>
        <translation>Ein Wert von %1 Zeichen ist zu lang, um in einer Zeile bearbeitet zu werden</translation>
    </message>
</context>
<context>
    <name>Widgets::ListWidget</name>
    <message>
        <source>Elements of the list</source>
        <translation>Elemente der Liste</translation>
    </message>
    <message>
        <source>Append an element</source>
        <translation>Ein Element anhängen</translation>
    </message>
    <message>
        <source>+</source>
        <translation>+</translation>
    </message>
    <message>
        <source>Remove the last element</source>
        <translation>Das letzte Element entfernen</translation>
    </message>
    <message>
        <source>-</source>
        <translation>-</translation>
    </message>
    <message>
        <source>Write</source>
        <translation>Schreiben</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>Widgets::RowHeader</name>
    <message>
        <source>Drag rows by their headers to move them, or press Alt+Up and Alt+Down</source>
        <translation>Ziehen Sie Zeilen an ihren Köpfen, um sie zu verschieben, oder drücken Sie Alt+Auf und Alt+Ab</translation>
    </message>
</context>
<context>
    <name>Widgets::ValueWindow</name>
    <message>
        <source>Value of %1</source>
        <translation>Wert von %1</translation>
    </message>
    <message>
        <source>Part of the value</source>
        <translation>Teil des Werts</translation>
    </message>
    <message>
        <source>Copy &amp;Value</source>
        <translation>&amp;Wert kopieren</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>Which part is shown</source>
        <translation>Welcher Teil gezeigt wird</translation>
    </message>
    <message>
        <source>Characters %1 to %2 of %3</source>
        <translation>Zeichen %1 bis %2 von %3</translation>
    </message>
</context>
</TS>
