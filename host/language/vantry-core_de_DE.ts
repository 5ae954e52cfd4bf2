<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>FrameworkCore::AppConfig::Outcome</name>
    <message>
        <source>&apos;%1&apos; was not set to %2</source>
        <translation>„%1“ wurde nicht auf %2 gesetzt</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was not set</source>
        <translation>„%1“ wurde nicht gesetzt</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was left as it is</source>
        <translation>„%1“ blieb unverändert</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was not given the validation &apos;%2&apos;</source>
        <translation>„%1“ erhielt die Prüfung „%2“ nicht</translation>
    </message>
    <message>
        <source>The backend &apos;%1&apos; was not created</source>
        <translation>Das Backend „%1“ wurde nicht angelegt</translation>
    </message>
    <message>
        <source>The backend &apos;%1&apos; was not saved</source>
        <translation>Das Backend „%1“ wurde nicht gespeichert</translation>
    </message>
    <message>
        <source>The backend &apos;%1&apos; was not reloaded</source>
        <translation>Das Backend „%1“ wurde nicht neu geladen</translation>
    </message>
    <message>
        <source>The backend &apos;%1&apos; was not closed</source>
        <translation>Das Backend „%1“ wurde nicht geschlossen</translation>
    </message>
    <message>
        <source>The file of the backend &apos;%1&apos; has changed</source>
        <translation>Die Datei des Backends „%1“ hat sich geändert</translation>
    </message>
    <message>
        <source>The changes of the backend &apos;%1&apos; were not listed</source>
        <translation>Die Änderungen des Backends „%1“ wurden nicht aufgelistet</translation>
    </message>
    <message>
        <source>The changes of the backend &apos;%1&apos; were not shown</source>
        <translation>Die Änderungen des Backends „%1“ wurden nicht gezeigt</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was not reverted</source>
        <translation>„%1“ wurde nicht zurückgesetzt</translation>
    </message>
    <message>
        <source>The conflict at &apos;%1&apos; was not resolved</source>
        <translation>Der Konflikt bei „%1“ wurde nicht gelöst</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was not undone</source>
        <translation>„%1“ wurde nicht rückgängig gemacht</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was not done again</source>
        <translation>„%1“ wurde nicht wiederholt</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was not matched</source>
        <translation>„%1“ wurde nicht verglichen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no place in a text</source>
        <translation>„%1“ hat keine Stelle in einem Text</translation>
    </message>
    <message>
        <source> and %1 more</source>
        <translation> und %1 weitere</translation>
    </message>
    <message>
        <source>a value of the type %1</source>
        <translation>ein Wert des Typs %1</translation>
    </message>
    <message>
        <source>, %1 characters long</source>
        <translation>, %1 Zeichen lang</translation>
    </message>
    <message>
        <source>&apos;%1&apos;</source>
        <translation>„%1“</translation>
    </message>
    <message>
        <source>&apos;%1&apos; (%2)</source>
        <translation>„%1“ (%2)</translation>
    </message>
    <message>
        <source>The backend &apos;%1&apos; was not locked</source>
        <translation>Das Backend „%1“ wurde nicht gesperrt</translation>
    </message>
</context>
<context>
    <name>FrameworkCore::Values</name>
    <message>
        <source>%1 is neither true nor false</source>
        <translation>%1 ist weder true noch false</translation>
    </message>
    <message>
        <source>%1 is outside of %2 to %3</source>
        <translation>%1 liegt nicht zwischen %2 und %3</translation>
    </message>
    <message>
        <source>%1 is not a whole number</source>
        <translation>%1 ist keine ganze Zahl</translation>
    </message>
    <message>
        <source>%1 is too large or too small for a double</source>
        <translation>%1 ist zu groß oder zu klein für ein Double</translation>
    </message>
    <message>
        <source>%1 is not a number</source>
        <translation>%1 ist keine Zahl</translation>
    </message>
    <message>
        <source>%1 has more digits than a double can hold</source>
        <translation>%1 hat mehr Stellen, als ein Double fasst</translation>
    </message>
    <message>
        <source>a &quot;\&quot; in a list must be followed by &quot;;&quot; or &quot;\&quot;</source>
        <translation>auf &quot;\&quot; muss in einer Liste &quot;;&quot; oder &quot;\&quot; folgen</translation>
    </message>
    <message>
        <source>a &quot;\&quot; in bytes must be followed by &quot;\&quot; or &quot;x&quot; and two hex digits</source>
        <translation>auf &quot;\&quot; muss in Bytes &quot;\&quot; folgen oder &quot;x&quot; und zwei Hexadezimalziffern</translation>
    </message>
    <message>
        <source>%1 is not a date as in %2</source>
        <translation>%1 ist kein Datum wie %2</translation>
    </message>
    <message>
        <source>%1 is not a time as in %2</source>
        <translation>%1 ist keine Uhrzeit wie %2</translation>
    </message>
    <message>
        <source>%1 is not a date and time as in %2</source>
        <translation>%1 ist kein Zeitpunkt wie %2</translation>
    </message>
    <message>
        <source>%1 is more than nothing</source>
        <translation>%1 ist mehr als nichts</translation>
    </message>
    <message>
        <source>a group</source>
        <translation>eine Gruppe</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>true oder false</translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation>eine ganze Zahl</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>eine Zahl</translation>
    </message>
    <message>
        <source>a text</source>
        <translation>ein Text</translation>
    </message>
    <message>
        <source>a list of texts</source>
        <translation>eine Liste von Texten</translation>
    </message>
    <message>
        <source>bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>a date</source>
        <translation>ein Datum</translation>
    </message>
    <message>
        <source>a time</source>
        <translation>eine Uhrzeit</translation>
    </message>
    <message>
        <source>a date and time</source>
        <translation>ein Zeitpunkt</translation>
    </message>
    <message>
        <source>%1 from %2 to %3</source>
        <translation>%1 von %2 bis %3</translation>
    </message>
    <message>
        <source>%1 has more than three digits of a second</source>
        <translation>%1 hat mehr als drei Nachkommastellen der Sekunde</translation>
    </message>
    <message>
        <source>%1 is beyond the end of the array: its only index can be 0</source>
        <translation>%1 liegt hinter dem Ende des Arrays: sein einziger Index kann 0 sein</translation>
    </message>
    <message>
        <source>%1 is beyond the end of the array: the greatest index can be %2</source>
        <translation>%1 liegt hinter dem Ende des Arrays: der größte Index kann %2 sein</translation>
    </message>
    <message>
        <source>The file notes its type in a comment line above it, as in &quot;# @type ...&quot;.</source>
        <translation>Die Datei vermerkt den Typ in einer Kommentarzeile darüber, etwa &quot;# @type ...&quot;.</translation>
    </message>
    <message>
        <source>the text holds half a character, which UTF-8 cannot hold</source>
        <translation>der Text enthält ein halbes Zeichen, das UTF-8 nicht darstellen kann</translation>
    </message>
    <message>
        <source>the file is ISO-8859-1, which has no %1</source>
        <translation>die Datei ist in ISO-8859-1, wo es %1 nicht gibt</translation>
    </message>
    <message>
        <source>the file is ISO-8859-1, where these characters would be taken for others in UTF-8</source>
        <translation>die Datei ist in ISO-8859-1, und dort würden diese Zeichen für andere in UTF-8 gehalten</translation>
    </message>
    <message>
        <source>%1 would read %2 back as %3, not as %4</source>
        <translation>%1 würde %2 als %3 zurücklesen, nicht als %4</translation>
    </message>
    <message>
        <source>%1 would read %2 back as %3</source>
        <translation>%1 würde %2 als %3 zurücklesen</translation>
    </message>
    <message>
        <source>%1 cannot hold %2 at this place</source>
        <translation>%1 kann %2 an dieser Stelle nicht enthalten</translation>
    </message>
    <message>
        <source>it is %1 and has no value</source>
        <translation>es ist %1 und hat keinen Wert</translation>
    </message>
    <message>
        <source>no such entry</source>
        <translation>es gibt keinen solchen Eintrag</translation>
    </message>
    <message>
        <source>there is already an entry %1</source>
        <translation>es gibt schon einen Eintrag %1</translation>
    </message>
    <message>
        <source>%1 cannot hold %2 of the path %3 there</source>
        <translation>%2 mit dem Pfad %3 passt dort nicht in die Datei (%1)</translation>
    </message>
    <message>
        <source>it would be read otherwise</source>
        <translation>es würde anders gelesen</translation>
    </message>
    <message>
        <source>%1 cannot hold the name %2 there: %3</source>
        <translation>%1 kann dort den Namen %2 nicht enthalten: %3</translation>
    </message>
    <message>
        <source>%1 of more than 4 GB is not read</source>
        <translation>%1 von mehr als 4 GB wird nicht gelesen</translation>
    </message>
    <message>
        <source>%1 cannot hold the value at this place</source>
        <translation>%1 kann den Wert an dieser Stelle nicht enthalten</translation>
    </message>
    <message>
        <source>without its type tag the entry would get the one above it</source>
        <translation>ohne seine Typangabe bekäme der Eintrag die darüber</translation>
    </message>
    <message>
        <source>the file is ISO-8859-1; in a path, the bytes of a name of it are percent-encoded, as in %F6</source>
        <translation>die Datei ist in ISO-8859-1; im Pfad stehen die Bytes eines solchen Namens prozentkodiert, etwa %F6</translation>
    </message>
    <message>
        <source>%1 would not read it there</source>
        <translation>%1 würde es dort nicht lesen</translation>
    </message>
    <message>
        <source>the file would begin like a file of another encoding</source>
        <translation>die Datei würde beginnen wie eine in einer anderen Kodierung</translation>
    </message>
    <message>
        <source>there is no entry %1</source>
        <translation>es gibt keinen Eintrag %1</translation>
    </message>
    <message>
        <source>%1 is a group, which has no value of its own</source>
        <translation>%1 ist eine Gruppe und hat keinen eigenen Wert</translation>
    </message>
    <message>
        <source>%1 has a value and cannot become a group</source>
        <translation>%1 hat einen Wert und kann keine Gruppe werden</translation>
    </message>
    <message>
        <source>the text is UTF-32; save it as UTF-8 to have it read</source>
        <translation>der Text ist in UTF-32; zum Lesen als UTF-8 speichern</translation>
    </message>
    <message>
        <source>the text is UTF-16; save it as UTF-8 to have it read</source>
        <translation>der Text ist in UTF-16; zum Lesen als UTF-8 speichern</translation>
    </message>
    <message>
        <source>the UTF-16 text ends in the middle of a character</source>
        <translation>der UTF-16-Text endet mitten in einem Zeichen</translation>
    </message>
    <message>
        <source>the bytes from here are not %1 that could be written back</source>
        <translation>die Bytes ab hier lassen sich nicht als %1 lesen und wieder schreiben</translation>
    </message>
    <message>
        <source>the file is UTF-16, which has no place for bytes that are not characters</source>
        <translation>die Datei ist in UTF-16, wo Bytes, die keine Zeichen sind, keinen Platz haben</translation>
    </message>
    <message>
        <source>the file is UTF-16, where these two halves would become one character</source>
        <translation>die Datei ist in UTF-16, wo aus diesen beiden Hälften ein Zeichen würde</translation>
    </message>
    <message>
        <source>the file is %1, which has no %2</source>
        <translation>die Datei ist in %1, wo es %2 nicht gibt</translation>
    </message>
    <message>
        <source>the file is %1, which has no place for bytes that are not characters</source>
        <translation>die Datei ist in %1, wo Bytes, die keine Zeichen sind, keinen Platz haben</translation>
    </message>
    <message>
        <source>the file is %1, from which %2 would be read back as another character</source>
        <translation>die Datei ist in %1, woraus %2 als ein anderes Zeichen zurückgelesen würde</translation>
    </message>
    <message>
        <source>the file is larger than 1 GiB, which is the most for %1</source>
        <translation>die Datei ist größer als 1 GiB, das Höchste für %1</translation>
    </message>
    <message>
        <source>there is not enough memory for a file of this size</source>
        <translation>für eine Datei dieser Größe reicht der Speicher nicht</translation>
    </message>
    <message>
        <source>a git configuration</source>
        <translation>eine git-Konfiguration</translation>
    </message>
    <message>
        <source>a desktop entry</source>
        <translation>ein Desktop-Eintrag</translation>
    </message>
    <message>
        <source>a systemd file</source>
        <translation>eine systemd-Datei</translation>
    </message>
    <message>
        <source>a KConfig file</source>
        <translation>eine KConfig-Datei</translation>
    </message>
    <message>
        <source>a Samba configuration</source>
        <translation>eine Samba-Konfiguration</translation>
    </message>
    <message>
        <source>a MySQL option file</source>
        <translation>eine MySQL-Optionsdatei</translation>
    </message>
    <message>
        <source>a php.ini</source>
        <translation>eine php.ini</translation>
    </message>
    <message>
        <source>a configparser file</source>
        <translation>eine configparser-Datei</translation>
    </message>
    <message>
        <source>an editorconfig file</source>
        <translation>eine editorconfig-Datei</translation>
    </message>
    <message>
        <source>a Kerberos profile</source>
        <translation>ein Kerberos-Profil</translation>
    </message>
    <message>
        <source>a properties file</source>
        <translation>eine properties-Datei</translation>
    </message>
    <message>
        <source>an ini file</source>
        <translation>eine ini-Datei</translation>
    </message>
    <message>
        <source>a txt file</source>
        <translation>eine txt-Datei</translation>
    </message>
    <message>
        <source>for some programs a &quot;%&quot; refers to another value in a file of configparser, and for others it is a mere character</source>
        <translation>&quot;%&quot; verweist für manche Programme auf einen anderen Wert einer configparser-Datei und ist für andere ein bloßes Zeichen</translation>
    </message>
    <message>
        <source>there is such a group already</source>
        <translation>es gibt schon eine solche Gruppe</translation>
    </message>
    <message>
        <source>there is such an entry already</source>
        <translation>es gibt schon einen solchen Eintrag</translation>
    </message>
    <message>
        <source>there is no %1 before it</source>
        <translation>davor fehlt %1</translation>
    </message>
    <message>
        <source>%1 has groups in braces only within a section, and there is no %2</source>
        <translation>%1 hat Gruppen in Klammern nur innerhalb eines Abschnitts, und %2 gibt es nicht</translation>
    </message>
    <message>
        <source>%1 cannot hold a group %2</source>
        <translation>%1 kann keine Gruppe %2 enthalten</translation>
    </message>
    <message>
        <source>%1 cannot hold %2 as %3</source>
        <translation>%1 kann %2 nicht als %3 enthalten</translation>
    </message>
    <message>
        <source>the text holds a NUL character, which no text file has</source>
        <translation>der Text enthält ein NUL-Zeichen, das in keiner Textdatei steht</translation>
    </message>
    <message>
        <source>an ini entry has a value; this file has no keys without one</source>
        <translation>ein ini-Eintrag hat einen Wert; in dieser Datei gibt es keine Schlüssel ohne Wert</translation>
    </message>
    <message>
        <source>no mark above the entry says that it is %1</source>
        <translation>keine Angabe über dem Eintrag nennt seinen Typ (%1)</translation>
    </message>
    <message>
        <source>a value of %1 ends with its line; the text has line breaks</source>
        <translation>ein Wert endet mit seiner Zeile (%1); der Text hat Zeilenumbrüche</translation>
    </message>
    <message>
        <source>this ini file</source>
        <translation>diese ini-Datei</translation>
    </message>
    <message>
        <source>a section</source>
        <translation>ein Abschnitt</translation>
    </message>
    <message>
        <source>the root of a file is not removed</source>
        <translation>die Wurzel einer Datei wird nicht entfernt</translation>
    </message>
    <message>
        <source>%1 is not a line of this entry</source>
        <translation>%1 ist keine Zeile dieses Eintrags</translation>
    </message>
    <message>
        <source>%1 has %2 there, which its program takes for the same key</source>
        <translation>%1 hat dort schon %2, was ihr Programm für denselben Schlüssel hält</translation>
    </message>
    <message>
        <source>%1 would read other entries otherwise</source>
        <translation>%1 würde andere Einträge anders lesen</translation>
    </message>
    <message>
        <source>there are NUL characters: it is a binary file, or UTF-16 without its mark</source>
        <translation>es gibt NUL-Zeichen: die Datei ist binär, oder UTF-16 ohne Kennung</translation>
    </message>
    <message>
        <source>sections lie in each other more than %1 deep</source>
        <translation>Abschnitte liegen mehr als %1 Stufen tief ineinander</translation>
    </message>
    <message>
        <source>the sections up to here, lying deep in each other, take too much memory</source>
        <translation>die Abschnitte bis hier liegen tief ineinander und brauchen zu viel Speicher</translation>
    </message>
    <message>
        <source>a group in braces is in a section, and none has begun yet</source>
        <translation>eine Gruppe in Klammern steht in einem Abschnitt, und noch hat keiner begonnen</translation>
    </message>
    <message>
        <source>groups lie in each other more than %1 deep</source>
        <translation>Gruppen liegen mehr als %1 Stufen tief ineinander</translation>
    </message>
    <message>
        <source>it would close the quote that another value of the file leaves open</source>
        <translation>es würde das Anführungszeichen schließen, das ein anderer Wert der Datei offen lässt</translation>
    </message>
    <message>
        <source>without its type tag the line would belong to the one above it</source>
        <translation>ohne ihre Typangabe gehörte die Zeile zu der darüber</translation>
    </message>
    <message>
        <source>without a separator the line would belong to the one above it</source>
        <translation>ohne Trennzeichen gehörte die Zeile zu der darüber</translation>
    </message>
    <message>
        <source>with this value the line would belong to the one above it</source>
        <translation>mit diesem Wert gehörte die Zeile zu der darüber</translation>
    </message>
    <message>
        <source>the line below it would be read as part of the value</source>
        <translation>die Zeile darunter würde als Teil des Wertes gelesen</translation>
    </message>
    <message>
        <source>%1 is not a path</source>
        <translation>%1 ist kein Pfad</translation>
    </message>
    <message>
        <source>there is such a section already</source>
        <translation>es gibt schon einen solchen Abschnitt</translation>
    </message>
    <message>
        <source>%1 is not how a key is written in a path; write %2</source>
        <translation>so wie %1 wird in einem Pfad kein Schlüssel geschrieben; schreiben Sie %2</translation>
    </message>
    <message>
        <source>the entry would be read as part of the one above it</source>
        <translation>der Eintrag würde als Teil des Eintrags darüber gelesen</translation>
    </message>
    <message>
        <source>there is no section %1 before it</source>
        <translation>davor fehlt der Abschnitt %1</translation>
    </message>
    <message>
        <source>%1 cannot hold a section of the path %2</source>
        <translation>%1 kann keinen Abschnitt mit dem Pfad %2 enthalten</translation>
    </message>
    <message>
        <source>the last value of the file ends in a backslash, by which it would go on in what is added</source>
        <translation>der letzte Wert der Datei endet mit einem Backslash, durch den er in dem Angefügten weiterginge</translation>
    </message>
    <message>
        <source>%1 cannot hold the key %2</source>
        <translation>%1 kann den Schlüssel %2 nicht enthalten</translation>
    </message>
    <message>
        <source>without it the line below would be read as part of the value above</source>
        <translation>ohne es würde die Zeile darunter als Teil des Wertes darüber gelesen</translation>
    </message>
    <message>
        <source>without it the file would begin like a file of another encoding</source>
        <translation>ohne es würde die Datei beginnen wie eine in einer anderen Kodierung</translation>
    </message>
    <message>
        <source>the name of a section is not closed by &quot;]&quot;</source>
        <translation>der Name eines Abschnitts ist nicht mit &quot;]&quot; abgeschlossen</translation>
    </message>
    <message>
        <source>only a comment may follow the &quot;]&quot; of a section</source>
        <translation>nach dem &quot;]&quot; eines Abschnitts darf nur ein Kommentar folgen</translation>
    </message>
    <message>
        <source>the text is not valid UTF-8, which json demands</source>
        <translation>der Text ist kein gültiges UTF-8, das json verlangt</translation>
    </message>
    <message>
        <source>json has no number for infinity and &quot;not a number&quot;</source>
        <translation>json hat keine Zahl für unendlich und &quot;keine Zahl&quot;</translation>
    </message>
    <message>
        <source>json has no form for %1</source>
        <translation>json hat keine Form für diesen Typ: %1</translation>
    </message>
    <message>
        <source>json would read %1 back as %2, not as %3</source>
        <translation>json würde %1 als %2 zurücklesen, nicht als %3</translation>
    </message>
    <message>
        <source>%1 is a list with comments, which would be lost</source>
        <translation>%1 ist eine Liste mit Kommentaren, die verloren gingen</translation>
    </message>
    <message>
        <source>%1 lies too deep to become a list</source>
        <translation>%1 liegt zu tief, um eine Liste zu werden</translation>
    </message>
    <message>
        <source>%1 cannot become a text: all elements of its array would be texts, which json holds as one list</source>
        <translation>%1 kann kein Text werden: alle Elemente des Arrays wären Texte, und das ist in json eine Liste</translation>
    </message>
    <message>
        <source>there is no value %1</source>
        <translation>es gibt keinen Wert %1</translation>
    </message>
    <message>
        <source>%1 is not how json spells a value</source>
        <translation>so wie %1 schreibt json keinen Wert</translation>
    </message>
    <message>
        <source>an object in the array would have a name twice, or one that json cannot hold</source>
        <translation>ein Objekt im Array hätte einen Namen zweimal, oder einen, den json nicht darstellen kann</translation>
    </message>
    <message>
        <source>the whole document cannot be removed</source>
        <translation>das ganze Dokument lässt sich nicht entfernen</translation>
    </message>
    <message>
        <source>without it, &quot;%1&quot; would be read as the types of other entries</source>
        <translation>ohne es würde &quot;%1&quot; als die Typen anderer Einträge gelesen</translation>
    </message>
    <message>
        <source>%1 lies too deep</source>
        <translation>%1 liegt zu tief</translation>
    </message>
    <message>
        <source>with %1 in it, &quot;%2&quot; would be read as the types of other entries</source>
        <translation>mit %1 darin würde &quot;%2&quot; als die Typen anderer Einträge gelesen</translation>
    </message>
    <message>
        <source>The file notes its type in &quot;$types&quot;, since json has no form for it.</source>
        <translation>Die Datei vermerkt den Typ in &quot;$types&quot;, da json keine Form für ihn hat.</translation>
    </message>
    <message>
        <source>json has no form for %1, and only in a file whose root is an object &quot;%2&quot; can say what it is</source>
        <translation>json hat keine Form für diesen Typ (%1), und nur in einer Datei, deren Wurzel ein Objekt ist, kann &quot;%2&quot; ihn nennen</translation>
    </message>
    <message>
        <source>json has no form for %1, and &quot;%2&quot;, which could say what it is, holds something else in this file</source>
        <translation>json hat keine Form für diesen Typ (%1), und &quot;%2&quot;, das ihn nennen könnte, enthält in dieser Datei etwas anderes</translation>
    </message>
    <message>
        <source>%1 is not a path: its parts between the dots must not be empty</source>
        <translation>%1 ist kein Pfad: zwischen den Punkten darf kein Teil leer sein</translation>
    </message>
    <message>
        <source>%1 is an array, which cannot have a value of its own</source>
        <translation>%1 ist ein Array und kann keinen eigenen Wert haben</translation>
    </message>
    <message>
        <source>%1 lies too deep: more than %2 objects and arrays would lie within each other</source>
        <translation>%1 liegt zu tief: mehr als %2 Objekte und Arrays lägen ineinander</translation>
    </message>
    <message>
        <source>%1 cannot be added to an array, whose next element is %2</source>
        <translation>%1 lässt sich keinem Array hinzufügen, dessen nächstes Element %2 ist</translation>
    </message>
    <message>
        <source>a group is in the member &quot;#value&quot;, where the value of its own would go</source>
        <translation>im Element &quot;#value&quot;, wo der eigene Wert stünde, ist eine Gruppe</translation>
    </message>
    <message>
        <source>the key %1 is not valid UTF-8, which json demands</source>
        <translation>der Schlüssel %1 ist kein gültiges UTF-8, das json verlangt</translation>
    </message>
    <message>
        <source>the key &quot;#value&quot; is kept for values of groups</source>
        <translation>der Schlüssel &quot;#value&quot; ist den Werten von Gruppen vorbehalten</translation>
    </message>
    <message>
        <source>the key &quot;$types&quot; is kept for the types of entries</source>
        <translation>der Schlüssel &quot;$types&quot; ist den Typen der Einträge vorbehalten</translation>
    </message>
    <message>
        <source>the key %1 would be in one object twice, of which other readers see one</source>
        <translation>der Schlüssel %1 stünde zweimal in einem Objekt, und andere Leser sähen nur einen davon</translation>
    </message>
    <message>
        <source>a control character</source>
        <translation>ein Steuerzeichen</translation>
    </message>
    <message>
        <source>the file is larger than the 4 GB that can be opened</source>
        <translation>die Datei ist größer als die 4 GB, die sich öffnen lassen</translation>
    </message>
    <message>
        <source>the file is encoded as UTF-16, but json is UTF-8: save it as UTF-8</source>
        <translation>die Datei ist in UTF-16, json aber ist UTF-8: als UTF-8 speichern</translation>
    </message>
    <message>
        <source>the json parser gave up: %1</source>
        <translation>das Lesen von json gab auf: %1</translation>
    </message>
    <message>
        <source>%1 is not a number in json</source>
        <translation>%1 ist in json keine Zahl</translation>
    </message>
    <message>
        <source>found %1 where %2 was expected: texts are in double quotes, and the only words are true, false and null</source>
        <translation>%1 steht, wo %2 erwartet wird: Texte stehen in doppelten Anführungszeichen, und die einzigen Wörter sind true, false und null</translation>
    </message>
    <message>
        <source>%1 begins no escape that json allows</source>
        <translation>%1 beginnt keine Escape-Folge, die json erlaubt</translation>
    </message>
    <message>
        <source>more than %1 objects and arrays lie within each other here, which is too deep</source>
        <translation>hier liegen mehr als %1 Objekte und Arrays ineinander, und das ist zu tief</translation>
    </message>
    <message>
        <source>the bytes from here are not UTF-8, the encoding of json</source>
        <translation>die Bytes ab hier sind kein UTF-8, die Kodierung von json</translation>
    </message>
    <message>
        <source>a text holds a control character, which must be written as an escape such as &quot;\t&quot;</source>
        <translation>ein Text enthält ein Steuerzeichen, das als Escape-Folge wie &quot;\t&quot; geschrieben werden muss</translation>
    </message>
    <message>
        <source>the text that begins here has no closing quote on its line</source>
        <translation>der Text, der hier beginnt, hat auf seiner Zeile kein schließendes Anführungszeichen</translation>
    </message>
    <message>
        <source>the file ends within a text</source>
        <translation>die Datei endet in einem Text</translation>
    </message>
    <message>
        <source>the file ends where %1 was expected</source>
        <translation>die Datei endet, wo %1 erwartet wird</translation>
    </message>
    <message>
        <source>the comment that begins here has no end</source>
        <translation>der Kommentar, der hier beginnt, hat kein Ende</translation>
    </message>
    <message>
        <source>found %1 where %2 was expected</source>
        <translation>%1 steht, wo %2 erwartet wird</translation>
    </message>
    <message>
        <source>a value or &quot;]&quot;</source>
        <translation>ein Wert oder &quot;]&quot;</translation>
    </message>
    <message>
        <source>a key in double quotes or &quot;}&quot;</source>
        <translation>ein Schlüssel in doppelten Anführungszeichen oder &quot;}&quot;</translation>
    </message>
    <message>
        <source>&quot;:&quot; after the key</source>
        <translation>&quot;:&quot; nach dem Schlüssel</translation>
    </message>
    <message>
        <source>&quot;,&quot; or &quot;}&quot;</source>
        <translation>&quot;,&quot; oder &quot;}&quot;</translation>
    </message>
    <message>
        <source>&quot;,&quot; or &quot;]&quot;</source>
        <translation>&quot;,&quot; oder &quot;]&quot;</translation>
    </message>
    <message>
        <source>the end of the file</source>
        <translation>das Ende der Datei</translation>
    </message>
    <message>
        <source>a value</source>
        <translation>ein Wert</translation>
    </message>
    <message>
        <source>the key %1 is not valid UTF-8, which TOML demands</source>
        <translation>der Schlüssel %1 ist kein gültiges UTF-8, das TOML verlangt</translation>
    </message>
    <message>
        <source>the key &quot;#value&quot; is kept for values of tables</source>
        <translation>der Schlüssel &quot;#value&quot; ist den Werten von Tabellen vorbehalten</translation>
    </message>
    <message>
        <source>the key %1 would be in one table twice, which TOML forbids</source>
        <translation>der Schlüssel %1 stünde zweimal in einer Tabelle, was TOML verbietet</translation>
    </message>
    <message>
        <source>in %1, TOML has no form for %2, and in an array or an inline table no comment can tag its type</source>
        <translation>in %1 hat TOML keine Form für diesen Typ (%2), und in einem Array oder einer Inline-Tabelle kann kein Kommentar ihn nennen</translation>
    </message>
    <message>
        <source>more than %1 arrays and inline tables would lie within each other</source>
        <translation>mehr als %1 Arrays und Inline-Tabellen lägen ineinander</translation>
    </message>
    <message>
        <source>TOML has no form for %1, and no comment above this entry tags its type</source>
        <translation>TOML hat keine Form für diesen Typ (%1), und kein Kommentar über dem Eintrag nennt ihn</translation>
    </message>
    <message>
        <source>%1 cannot become a text: all elements of its array would be texts, which are one list</source>
        <translation>%1 kann kein Text werden: alle Elemente des Arrays wären Texte, und das ist eine Liste</translation>
    </message>
    <message>
        <source>%1 is not how TOML spells a value</source>
        <translation>so wie %1 schreibt TOML keinen Wert</translation>
    </message>
    <message>
        <source>%1 lies too deep: more than %2 tables would lie within each other</source>
        <translation>%1 liegt zu tief: mehr als %2 Tabellen lägen ineinander</translation>
    </message>
    <message>
        <source>a value of several lines cannot lie in an inline table</source>
        <translation>ein Wert aus mehreren Zeilen kann nicht in einer Inline-Tabelle liegen</translation>
    </message>
    <message>
        <source>a table of its own comes in another place</source>
        <translation>eine eigene Tabelle steht an einer anderen Stelle</translation>
    </message>
    <message>
        <source>an element of an array of tables has to be a table</source>
        <translation>ein Element eines Arrays von Tabellen muss eine Tabelle sein</translation>
    </message>
    <message>
        <source>%1 (in this %2)</source>
        <translation>%1 (hier: %2)</translation>
    </message>
    <message>
        <source>%1; that is TOML 1.1, and Vantry reads TOML 1.0</source>
        <translation>%1; das ist TOML 1.1, und Vantry liest TOML 1.0</translation>
    </message>
    <message>
        <source>a second byte-order mark</source>
        <translation>eine zweite Bytereihenfolge-Marke</translation>
    </message>
    <message>
        <source>more than %1 tables lie within each other</source>
        <translation>mehr als %1 Tabellen liegen ineinander</translation>
    </message>
    <message>
        <source>the text is not valid UTF-8, which TOML demands</source>
        <translation>der Text ist kein gültiges UTF-8, das TOML verlangt</translation>
    </message>
    <message>
        <source>a value of a txt file ends with its line; the text has line breaks</source>
        <translation>ein Wert einer txt-Datei endet mit seiner Zeile; der Text hat Zeilenumbrüche</translation>
    </message>
    <message>
        <source>a txt file would read these bytes back as a text, or cut them</source>
        <translation>eine txt-Datei würde diese Bytes als Text zurücklesen oder abschneiden</translation>
    </message>
    <message>
        <source>a txt file would not read %1 as the value of one entry</source>
        <translation>eine txt-Datei würde %1 nicht als Wert eines Eintrags lesen</translation>
    </message>
    <message>
        <source>the path has more than %1 components</source>
        <translation>der Pfad hat mehr als %1 Teile</translation>
    </message>
    <message>
        <source>a txt file has no place for a group without entries</source>
        <translation>in einer txt-Datei hat eine Gruppe ohne Einträge keinen Platz</translation>
    </message>
    <message>
        <source>a txt file cannot hold the path %1</source>
        <translation>eine txt-Datei kann den Pfad %1 nicht enthalten</translation>
    </message>
    <message>
        <source>without it the mark above would be that of the line below</source>
        <translation>ohne es wäre die Angabe darüber die der Zeile darunter</translation>
    </message>
    <message>
        <source>there is a NUL character: it is a binary file, or UTF-16 without its mark</source>
        <translation>es gibt ein NUL-Zeichen: die Datei ist binär, oder UTF-16 ohne Kennung</translation>
    </message>
    <message>
        <source>without its type tag the line would be read as part of the value above</source>
        <translation>ohne ihre Typangabe würde die Zeile als Teil des Wertes darüber gelesen</translation>
    </message>
    <message>
        <source>the encoding %1 is not known; save the file as UTF-8</source>
        <translation>die Kodierung %1 ist unbekannt; die Datei als UTF-8 speichern</translation>
    </message>
    <message>
        <source>with it, other values of the file would be read with other blanks</source>
        <translation>damit würden andere Werte der Datei mit anderen Leerzeichen gelesen</translation>
    </message>
    <message>
        <source>%1 does not spell a value: %2</source>
        <translation>%1 stellt keinen Wert dar: %2</translation>
    </message>
    <message>
        <source>%1 is the root element, without which the comments and declarations around it would not be XML</source>
        <translation>%1 ist das Wurzelelement, ohne das die Kommentare und Deklarationen darum kein XML wären</translation>
    </message>
    <message>
        <source>The file notes its type in an instruction &lt;?vantry type=...?&gt; before it.</source>
        <translation>Die Datei vermerkt den Typ in einer Anweisung &lt;?vantry type=...?&gt; davor.</translation>
    </message>
    <message>
        <source>%1 has no siblings to follow</source>
        <translation>%1 hat keine Geschwister, auf die es folgen könnte</translation>
    </message>
    <message>
        <source>%1 holds elements; a text beside them is an entry %2 of its own</source>
        <translation>%1 enthält Elemente; ein Text daneben ist ein eigener Eintrag %2</translation>
    </message>
    <message>
        <source>a file of xml has one root element, here %1; everything else lies in it</source>
        <translation>eine xml-Datei hat ein einziges Wurzelelement, hier %1; alles andere liegt darin</translation>
    </message>
    <message>
        <source>more than %1 elements would lie within each other</source>
        <translation>mehr als %1 Elemente lägen ineinander</translation>
    </message>
    <message>
        <source>%1 is not how a name is written in a path</source>
        <translation>so wie %1 wird in einem Pfad kein Name geschrieben</translation>
    </message>
    <message>
        <source>%1 is an attribute or a text, which holds no other entries</source>
        <translation>%1 ist ein Attribut oder ein Text und enthält keine anderen Einträge</translation>
    </message>
    <message>
        <source>%1 needs an element to be in</source>
        <translation>%1 braucht ein Element, in dem es liegt</translation>
    </message>
    <message>
        <source>an attribute or a text of xml holds no other entries</source>
        <translation>ein Attribut oder ein Text in xml enthält keine anderen Einträge</translation>
    </message>
    <message>
        <source>the element above %1 has a value, and xml has no place for both a value and elements</source>
        <translation>das Element über %1 hat einen Wert, und für einen Wert und Elemente zugleich hat xml keinen Platz</translation>
    </message>
    <message>
        <source>%1 can only be added after %2, which is not there</source>
        <translation>%1 lässt sich nur nach %2 hinzufügen, und das gibt es nicht</translation>
    </message>
    <message>
        <source>%1 would become part of the text before it</source>
        <translation>%1 würde Teil des Textes davor</translation>
    </message>
    <message>
        <source>%1 cannot be a name in xml: names are of letters, digits, &quot;-&quot;, &quot;_&quot;, &quot;.&quot; and one &quot;:&quot;, and begin with a letter or &quot;_&quot;</source>
        <translation>%1 kann in xml kein Name sein: Namen bestehen aus Buchstaben, Ziffern, &quot;-&quot;, &quot;_&quot;, &quot;.&quot; und einem &quot;:&quot; und beginnen mit einem Buchstaben oder &quot;_&quot;</translation>
    </message>
    <message>
        <source>the encoding of the file lacks a character of the name %1</source>
        <translation>der Kodierung der Datei fehlt ein Zeichen des Namens %1</translation>
    </message>
    <message>
        <source>the prefix of %1 is not declared: add the attribute %2 to an element around it first</source>
        <translation>das Präfix von %1 ist nicht deklariert: zuerst einem Element darum das Attribut %2 hinzufügen</translation>
    </message>
    <message>
        <source>the file is larger than 2 GB, the most that is read</source>
        <translation>die Datei ist größer als 2 GB, mehr wird nicht gelesen</translation>
    </message>
    <message>
        <source>more than %1 entities refer to others, which is more than is read</source>
        <translation>mehr als %1 Entities verweisen aufeinander, mehr wird nicht gelesen</translation>
    </message>
    <message>
        <source>more than %1 elements lie within each other, which is more than is read</source>
        <translation>mehr als %1 Elemente liegen ineinander, mehr wird nicht gelesen</translation>
    </message>
    <message>
        <source>the file ends without a root element</source>
        <translation>die Datei endet ohne ein Wurzelelement</translation>
    </message>
    <message>
        <source>the file ends inside of %1</source>
        <translation>die Datei endet innerhalb von %1</translation>
    </message>
    <message>
        <source>this end tag does not belong to %1, which is still open</source>
        <translation>dieses End-Tag gehört nicht zu %1, das noch offen ist</translation>
    </message>
    <message>
        <source>the file ends inside of a tag, comment or reference that begins here</source>
        <translation>die Datei endet in einem Tag, Kommentar oder Verweis, der hier beginnt</translation>
    </message>
    <message>
        <source>nothing but comments may follow the root element</source>
        <translation>auf das Wurzelelement dürfen nur Kommentare folgen</translation>
    </message>
    <message>
        <source>this tag has an attribute twice</source>
        <translation>dieses Tag hat ein Attribut zweimal</translation>
    </message>
    <message>
        <source>the entity %1 is not declared</source>
        <translation>die Entity %1 ist nicht deklariert</translation>
    </message>
    <message>
        <source>an entity refers to itself</source>
        <translation>eine Entity verweist auf sich selbst</translation>
    </message>
    <message>
        <source>the entities grow to more than a hundred times of what the file holds, as in an attack</source>
        <translation>die Entities wachsen auf mehr als das Hundertfache dessen, was die Datei enthält, wie bei einem Angriff</translation>
    </message>
    <message>
        <source>this is not well-formed XML: %1</source>
        <translation>das ist kein wohlgeformtes XML: %1</translation>
    </message>
    <message>
        <source>bytes that are not valid text</source>
        <translation>Bytes, die kein gültiger Text sind</translation>
    </message>
    <message>
        <source>the line must not end here</source>
        <translation>die Zeile darf hier nicht enden</translation>
    </message>
    <message>
        <source>%1 is not allowed here</source>
        <translation>%1 ist hier nicht erlaubt</translation>
    </message>
    <message>
        <source>the root element</source>
        <translation>das Wurzelelement</translation>
    </message>
    <message>
        <source>&lt;%1&gt; of line %2</source>
        <translation>&lt;%1&gt; in Zeile %2</translation>
    </message>
    <message>
        <source>%1 declares a prefix that is used in its element</source>
        <translation>%1 deklariert ein Präfix, das in seinem Element benutzt wird</translation>
    </message>
    <message>
        <source>xml cannot hold bytes that are not valid UTF-8</source>
        <translation>xml kann keine Bytes enthalten, die kein gültiges UTF-8 sind</translation>
    </message>
    <message>
        <source>xml has no place for the character U+%1, not even in an escaped form</source>
        <translation>für das Zeichen U+%1 hat xml keinen Platz, auch nicht als Escape-Folge</translation>
    </message>
    <message>
        <source>%1 would be read as %2 again, since no type tag in the file gives the type of this entry</source>
        <translation>%1 würde als %2 zurückgelesen, da keine Typangabe in der Datei den Typ des Eintrags nennt</translation>
    </message>
    <message>
        <source>xml cannot hold such a value in this place</source>
        <translation>xml kann einen solchen Wert an dieser Stelle nicht enthalten</translation>
    </message>
    <message>
        <source>no type tag gives a value to an element with nothing in it</source>
        <translation>keine Typangabe gibt einem Element, in dem nichts ist, einen Wert</translation>
    </message>
    <message>
        <source>the encoding of the file lacks a character of it</source>
        <translation>der Kodierung der Datei fehlt ein Zeichen davon</translation>
    </message>
    <message>
        <source>there is more than one value in it</source>
        <translation>es ist mehr als ein Wert darin</translation>
    </message>
    <message>
        <source>blanks around a value do not belong to it</source>
        <translation>Leerzeichen um einen Wert gehören nicht zu ihm</translation>
    </message>
    <message>
        <source>the file declares no entity %1</source>
        <translation>die Datei deklariert keine Entity %1</translation>
    </message>
    <message>
        <source>it has no value</source>
        <translation>es hat keinen Wert</translation>
    </message>
    <message>
        <source>more than %1 maps and lists lie within each other</source>
        <translation>mehr als %1 Maps und Listen liegen ineinander</translation>
    </message>
    <message>
        <source>a tab indents a line in brackets, where YAML wants blanks</source>
        <translation>ein Tabulator rückt eine Zeile in Klammern ein, wo YAML Leerzeichen will</translation>
    </message>
    <message>
        <source>a &quot;:&quot; below its key is not indented more than what is around the brackets</source>
        <translation>ein &quot;:&quot; unter seinem Schlüssel ist nicht weiter eingerückt als das, was um die Klammern steht</translation>
    </message>
    <message>
        <source>its tag, %1, says what it is, so that it stays a text</source>
        <translation>sein Tag, %1, legt fest, was es ist, sodass es ein Text bleibt</translation>
    </message>
    <message>
        <source>the list cannot be written without losing a comment in it</source>
        <translation>die Liste lässt sich nicht schreiben, ohne dass ein Kommentar darin verloren geht</translation>
    </message>
    <message>
        <source>the text is not valid UTF-8, which YAML demands</source>
        <translation>der Text ist kein gültiges UTF-8, das YAML verlangt</translation>
    </message>
    <message>
        <source>YAML has no form for %1, and no comment above this entry tags its type</source>
        <translation>YAML hat keine Form für diesen Typ (%1), und kein Kommentar über dem Eintrag nennt ihn</translation>
    </message>
    <message>
        <source>YAML would read something else there, because of what is around it</source>
        <translation>YAML würde dort etwas anderes lesen, wegen dessen, was darum steht</translation>
    </message>
    <message>
        <source>%1 is not how YAML spells a value</source>
        <translation>so wie %1 schreibt YAML keinen Wert</translation>
    </message>
    <message>
        <source>a document before directives would take them over</source>
        <translation>ein Dokument vor Direktiven würde diese übernehmen</translation>
    </message>
    <message>
        <source>directives and &quot;...&quot; stay where they are, and so do the documents around them</source>
        <translation>Direktiven und &quot;...&quot; bleiben, wo sie sind, und damit auch die Dokumente darum</translation>
    </message>
    <message>
        <source>an entry between brackets without braces of its own can have no other beside it</source>
        <translation>neben einem Eintrag zwischen Klammern, der keine eigenen geschweiften hat, kann kein anderer stehen</translation>
    </message>
    <message>
        <source>a comment has no place there</source>
        <translation>ein Kommentar hat dort keinen Platz</translation>
    </message>
    <message>
        <source>nothing can be added there</source>
        <translation>dort lässt sich nichts hinzufügen</translation>
    </message>
    <message>
        <source>its key has no &quot;:&quot;, after which its entries would come</source>
        <translation>dem Schlüssel fehlt der &quot;:&quot;, nach dem seine Einträge kämen</translation>
    </message>
    <message>
        <source>a comment above it tags its type, so that no entry can go below it</source>
        <translation>ein Kommentar darüber nennt den Typ, sodass kein Eintrag darunter stehen kann</translation>
    </message>
    <message>
        <source>its value is written over several lines, below which no entry can go</source>
        <translation>der Wert ist über mehrere Zeilen geschrieben, unter denen kein Eintrag stehen kann</translation>
    </message>
    <message>
        <source>its elements are not further in than it is, so that no entry can go below it</source>
        <translation>die Elemente sind nicht weiter eingerückt als es selbst, sodass darunter kein Eintrag stehen kann</translation>
    </message>
    <message>
        <source>its end</source>
        <translation>seinem Ende</translation>
    </message>
    <message>
        <source>line %1</source>
        <translation>Zeile %1</translation>
    </message>
    <message>
        <source>with it, the entry at %1 would go</source>
        <translation>damit fiele der Eintrag bei %1 weg</translation>
    </message>
    <message>
        <source>with it, YAML would read other entries differently, from %1 on</source>
        <translation>damit würde YAML andere Einträge anders lesen, ab %1</translation>
    </message>
    <message>
        <source>elsewhere</source>
        <translation>anderswo</translation>
    </message>
    <message>
        <source>%1 at line %2</source>
        <translation>%1 in Zeile %2</translation>
    </message>
    <message>
        <source>%1 comes with &quot;&lt;&lt;&quot; from %2; change or remove that instead</source>
        <translation>%1 kommt durch &quot;&lt;&lt;&quot; von %2; stattdessen das ändern oder entfernen</translation>
    </message>
    <message>
        <source>%1 is shown by the alias %2 at line %3 and comes from %4; change that instead, or remove the alias %5 and create it anew</source>
        <translation>%1 wird vom Alias %2 in Zeile %3 gezeigt und kommt von %4; stattdessen das ändern, oder den Alias %5 entfernen und neu anlegen</translation>
    </message>
    <message>
        <source>the anchor of element %1 is used at line %2</source>
        <translation>der Anker von Element %1 wird in Zeile %2 benutzt</translation>
    </message>
    <message>
        <source>a NUL, which is in no text</source>
        <translation>ein NUL, das in keinem Text steht</translation>
    </message>
    <message>
        <source>this is not valid UTF-8</source>
        <translation>das ist kein gültiges UTF-8</translation>
    </message>
    <message>
        <source>a control character, which YAML forbids</source>
        <translation>ein Steuerzeichen, das YAML verbietet</translation>
    </message>
    <message>
        <source>the text is not YAML</source>
        <translation>der Text ist kein YAML</translation>
    </message>
    <message>
        <source>the first element is on the line of another one, behind its &quot;-&quot;</source>
        <translation>das erste Element steht auf der Zeile eines anderen, hinter dessen &quot;-&quot;</translation>
    </message>
    <message>
        <source>YAML would read it as something else there</source>
        <translation>YAML würde es dort als etwas anderes lesen</translation>
    </message>
    <message>
        <source>the file would begin like one in another encoding</source>
        <translation>die Datei würde beginnen wie eine in anderer Kodierung</translation>
    </message>
    <message>
        <source>the file would not be YAML any more: %1</source>
        <translation>die Datei wäre kein YAML mehr: %1</translation>
    </message>
    <message>
        <source>moved, YAML would read it differently</source>
        <translation>verschoben würde YAML es anders lesen</translation>
    </message>
    <message>
        <source>an anchor in %1 is used at line %2; remove what uses it, or give that a value of its own, first</source>
        <translation>ein Anker in %1 wird in Zeile %2 benutzt; zuerst entfernen, was ihn benutzt, oder dem einen eigenen Wert geben</translation>
    </message>
    <message>
        <source>%1 would lie below an alias</source>
        <translation>%1 läge unter einem Alias</translation>
    </message>
    <message>
        <source>of two documents none can be removed, since the paths of all entries would change, which in a file of one document do not begin with its number; edit the text instead</source>
        <translation>von zwei Dokumenten lässt sich keines entfernen, da sich die Pfade aller Einträge ändern würden, die in einer Datei mit einem Dokument nicht mit dessen Nummer beginnen; stattdessen den Text bearbeiten</translation>
    </message>
    <message>
        <source>the key of %1 is not a plain text, so that it keeps its name</source>
        <translation>der Schlüssel von %1 ist kein einfacher Text, sodass der Name bleibt</translation>
    </message>
    <message>
        <source>its map has the key of %1 more than once</source>
        <translation>die Map hat den Schlüssel von %1 mehr als einmal</translation>
    </message>
    <message>
        <source>it has no place there as it is written</source>
        <translation>es hat dort keinen Platz, so wie es geschrieben ist</translation>
    </message>
    <message>
        <source>%1 says a type by a %TAG directive, where it is not understood; write %2</source>
        <translation>%1 nennt einen Typ durch eine %TAG-Direktive und wird dort nicht verstanden; schreiben Sie %2</translation>
    </message>
    <message>
        <source>%1 names what is merged into its map; change that instead</source>
        <translation>%1 nennt, was in die Map übernommen wird; stattdessen das ändern</translation>
    </message>
    <message>
        <source>the key of %1 has no &quot;:&quot; that a value could follow</source>
        <translation>dem Schlüssel von %1 fehlt der &quot;:&quot;, auf den ein Wert folgen könnte</translation>
    </message>
    <message>
        <source>%1 is also a key, by its alias at line %2, whose entry would get another name</source>
        <translation>%1 ist durch den Alias in Zeile %2 auch ein Schlüssel, dessen Eintrag einen anderen Namen bekäme</translation>
    </message>
    <message>
        <source>an element of %1 is an alias or has one, which would be lost</source>
        <translation>ein Element von %1 ist ein Alias oder hat einen, der verloren ginge</translation>
    </message>
    <message>
        <source>%1 cannot become a text: all elements of its list would be texts, which are one value</source>
        <translation>%1 kann kein Text werden: alle Elemente der Liste wären Texte, und das ist ein Wert</translation>
    </message>
    <message>
        <source>%1 is indented by a tab, behind which no value can have quotes or a tag; indent it by blanks</source>
        <translation>%1 ist mit einem Tabulator eingerückt, hinter dem kein Wert Anführungszeichen oder ein Tag haben kann; mit Leerzeichen einrücken</translation>
    </message>
    <message>
        <source>%1 is a block with %2 on its first line, which would be lost, since what it would become cannot be one</source>
        <translation>%1 ist ein Block mit %2 auf der ersten Zeile, das verloren ginge, da das Neue kein Block sein kann</translation>
    </message>
    <message>
        <source>the key %1 is not valid UTF-8, which YAML demands</source>
        <translation>der Schlüssel %1 ist kein gültiges UTF-8, das YAML verlangt</translation>
    </message>
    <message>
        <source>the key %1 would be in one map twice, which YAML forbids</source>
        <translation>der Schlüssel %1 stünde zweimal in einer Map, was YAML verbietet</translation>
    </message>
    <message>
        <source>the key %1 has a line break, which a key of YAML should not have</source>
        <translation>der Schlüssel %1 hat einen Zeilenumbruch, den ein Schlüssel in YAML nicht haben soll</translation>
    </message>
    <message>
        <source>the key is longer than %1 bytes, which readers of YAML refuse</source>
        <translation>der Schlüssel ist länger als %1 Bytes, was Leser von YAML ablehnen</translation>
    </message>
    <message>
        <source>YAML has no form for %1, and between brackets no comment can tag its type</source>
        <translation>YAML hat keine Form für diesen Typ (%1), und zwischen Klammern kann kein Kommentar ihn nennen</translation>
    </message>
    <message>
        <source>an array cannot have a value of its own</source>
        <translation>ein Array kann keinen eigenen Wert haben</translation>
    </message>
    <message>
        <source>its folder cannot be listed: %1</source>
        <translation>der Ordner lässt sich nicht auflisten: %1</translation>
    </message>
    <message>
        <source>a save of it was interrupted; it holds again what another program wrote meanwhile</source>
        <translation>ein Speichern der Datei wurde unterbrochen; sie enthält wieder, was ein anderes Programm inzwischen geschrieben hat</translation>
    </message>
    <message>
        <source>a save into its folder was interrupted; what another program wrote meanwhile is in %1: look at it and remove it</source>
        <translation>ein Speichern in ihrem Ordner wurde unterbrochen; was ein anderes Programm inzwischen geschrieben hat, ist in %1: ansehen und entfernen</translation>
    </message>
    <message>
        <source>an interrupted save cannot be undone by %1: %2</source>
        <translation>ein unterbrochenes Speichern lässt sich mit %1 nicht zurücknehmen: %2</translation>
    </message>
    <message>
        <source>it is another user&apos;s</source>
        <translation>sie gehört einem anderen Benutzer</translation>
    </message>
    <message>
        <source>a save into its folder was interrupted, which cannot be undone by %1: %2</source>
        <translation>ein Speichern in ihrem Ordner wurde unterbrochen und lässt sich mit %1 nicht zurücknehmen: %2</translation>
    </message>
    <message>
        <source>it is damaged</source>
        <translation>sie ist beschädigt</translation>
    </message>
    <message>
        <source>a save of it by another user (%1) was interrupted, so it may be half written; what it held before comes back from %2 when that user reads it, or when it is saved next</source>
        <translation>ein Speichern der Datei durch einen anderen Benutzer (%1) wurde unterbrochen, sodass sie halb geschrieben sein kann; was sie vorher enthielt, kommt aus %2 zurück, wenn dieser Benutzer sie liest oder sobald sie wieder gespeichert wird</translation>
    </message>
    <message>
        <source>it is being written by another program, which keeps its former content in %1</source>
        <translation>ein anderes Programm schreibt sie gerade und bewahrt ihren früheren Inhalt in %1</translation>
    </message>
    <message>
        <source>it cannot be examined: %1</source>
        <translation>sie lässt sich nicht untersuchen: %1</translation>
    </message>
    <message>
        <source>an interrupted save was undone, but %1 cannot be removed: %2</source>
        <translation>ein unterbrochenes Speichern wurde zurückgenommen, aber %1 lässt sich nicht entfernen: %2</translation>
    </message>
    <message>
        <source>it cannot be read: %1</source>
        <translation>sie lässt sich nicht lesen: %1</translation>
    </message>
    <message>
        <source>a save of it was interrupted; it holds again what it held before</source>
        <translation>ein Speichern der Datei wurde unterbrochen; sie enthält wieder, was sie vorher enthielt</translation>
    </message>
    <message>
        <source>it is a folder</source>
        <translation>es ist ein Ordner</translation>
    </message>
    <message>
        <source>it is not a regular file</source>
        <translation>es ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>it cannot be opened: %1</source>
        <translation>sie lässt sich nicht öffnen: %1</translation>
    </message>
    <message>
        <source>there is not enough memory to read it</source>
        <translation>zum Lesen reicht der Speicher nicht</translation>
    </message>
    <message>
        <source>the new content cannot be written: %1</source>
        <translation>der neue Inhalt lässt sich nicht schreiben: %1</translation>
    </message>
    <message>
        <source>it cannot be cut off after the new content: %1</source>
        <translation>nach dem neuen Inhalt lässt sie sich nicht abschneiden: %1</translation>
    </message>
    <message>
        <source>the new content cannot be brought onto the disk: %1</source>
        <translation>der neue Inhalt lässt sich nicht auf die Platte bringen: %1</translation>
    </message>
    <message>
        <source>the new content was not written to its end: %1</source>
        <translation>der neue Inhalt wurde nicht bis zum Ende geschrieben: %1</translation>
    </message>
    <message>
        <source>a new file cannot be created in its folder</source>
        <translation>im Ordner lässt sich keine neue Datei anlegen</translation>
    </message>
    <message>
        <source>the new content cannot be written</source>
        <translation>der neue Inhalt lässt sich nicht schreiben</translation>
    </message>
    <message>
        <source>the new file cannot be examined</source>
        <translation>die neue Datei lässt sich nicht untersuchen</translation>
    </message>
    <message>
        <source>its owner and group cannot be kept</source>
        <translation>Eigentümer und Gruppe lassen sich nicht beibehalten</translation>
    </message>
    <message>
        <source>its permissions cannot be kept</source>
        <translation>die Zugriffsrechte lassen sich nicht beibehalten</translation>
    </message>
    <message>
        <source>the extended attributes could not be read: %1</source>
        <translation>die erweiterten Attribute ließen sich nicht lesen: %1</translation>
    </message>
    <message>
        <source>the extended attribute %1 could not be kept: %2</source>
        <translation>das erweiterte Attribut %1 ließ sich nicht beibehalten: %2</translation>
    </message>
    <message>
        <source>the folder&apos;s access list could not be kept off it: %1</source>
        <translation>die Zugriffsliste des Ordners ließ sich nicht von ihr fernhalten: %1</translation>
    </message>
    <message>
        <source>the new content cannot be brought onto the disk</source>
        <translation>der neue Inhalt lässt sich nicht auf die Platte bringen</translation>
    </message>
    <message>
        <source>the new content was not written to its end</source>
        <translation>der neue Inhalt wurde nicht bis zum Ende geschrieben</translation>
    </message>
    <message>
        <source>the new file cannot take its place</source>
        <translation>die neue Datei kann ihren Platz nicht einnehmen</translation>
    </message>
    <message>
        <source>the new file cannot be renamed</source>
        <translation>die neue Datei lässt sich nicht umbenennen</translation>
    </message>
    <message>
        <source>whether another program has written it meanwhile cannot be seen: %1; what it held is in %2 until it is read next</source>
        <translation>ob ein anderes Programm sie inzwischen geschrieben hat, lässt sich nicht sehen: %1; was sie enthielt, ist in %2, bis sie wieder gelesen wird</translation>
    </message>
    <message>
        <source>it cannot be read</source>
        <translation>sie lässt sich nicht lesen</translation>
    </message>
    <message>
        <source>what another program wrote meanwhile cannot be put back: %1; it is in %2</source>
        <translation>was ein anderes Programm inzwischen geschrieben hat, lässt sich nicht zurückstellen: %1; es ist in %2</translation>
    </message>
    <message>
        <source>other programs write it at the same time; what one of them wrote is in %1 beside it: look at it and remove it</source>
        <translation>andere Programme schreiben sie zur selben Zeit; was eines davon geschrieben hat, ist daneben in %1: ansehen und entfernen</translation>
    </message>
    <message>
        <source>its folder cannot be opened: %1</source>
        <translation>der Ordner lässt sich nicht öffnen: %1</translation>
    </message>
    <message>
        <source>other programs keep changing it</source>
        <translation>andere Programme ändern sie ständig</translation>
    </message>
    <message>
        <source>it has been deleted since it was read</source>
        <translation>sie wurde gelöscht, seit sie gelesen wurde</translation>
    </message>
    <message>
        <source>it is not writable: %1</source>
        <translation>sie ist nicht schreibbar: %1</translation>
    </message>
    <message>
        <source>another program has changed it since it was read</source>
        <translation>ein anderes Programm hat sie geändert, seit sie gelesen wurde</translation>
    </message>
    <message>
        <source>another program has created it meanwhile</source>
        <translation>ein anderes Programm hat sie inzwischen angelegt</translation>
    </message>
    <message>
        <source>it has %1 names (hard links)</source>
        <translation>sie hat %1 Namen (harte Links)</translation>
    </message>
    <message>
        <source>it is saved, but may be the old one after a power cut: %1</source>
        <translation>sie ist gespeichert, kann aber nach einem Stromausfall die alte sein: %1</translation>
    </message>
    <message>
        <source>%1 (it would have been written in place, since %2)</source>
        <translation>%1 (sie wäre an Ort und Stelle geschrieben worden, denn: %2)</translation>
    </message>
    <message>
        <source>it was written in place, since %1</source>
        <translation>sie wurde an Ort und Stelle geschrieben, denn: %1</translation>
    </message>
    <message>
        <source>%1 is not saved: %2</source>
        <translation>%1 wurde nicht gespeichert: %2</translation>
    </message>
    <message>
        <source>it was asked for</source>
        <translation>es wurde so verlangt</translation>
    </message>
    <message>
        <source>it is not watched but looked at every few seconds: %1</source>
        <translation>sie wird nicht überwacht, sondern alle paar Sekunden angesehen: %1</translation>
    </message>
    <message>
        <source>it was changed, but not looked at: %1</source>
        <translation>sie wurde geändert, aber nicht angesehen: %1</translation>
    </message>
    <message>
        <source>it is not watched until another file is opened: its thread was not started: %1</source>
        <translation>sie wird nicht überwacht, bis eine andere Datei geöffnet wird: der Thread dafür ließ sich nicht starten: %1</translation>
    </message>
    <message>
        <source>it lies more than %1 folders below the one that was opened</source>
        <translation>es liegt mehr als %1 Ordner unter dem, der geöffnet wurde</translation>
    </message>
    <message>
        <source>%1 may be written by other machines</source>
        <translation>andere Rechner können in %1 schreiben</translation>
    </message>
    <message>
        <source>its permissions could not be kept: %1</source>
        <translation>die Zugriffsrechte ließen sich nicht beibehalten: %1</translation>
    </message>
    <message>
        <source>the copy of its former content, %1, cannot be removed: %2</source>
        <translation>die Kopie des früheren Inhalts, %1, lässt sich nicht entfernen: %2</translation>
    </message>
    <message>
        <source>it may be the old one after a power cut: %1</source>
        <translation>nach einem Stromausfall kann sie die alte sein: %1</translation>
    </message>
    <message>
        <source>no copy of its content can be kept meanwhile: %1</source>
        <translation>unterdessen lässt sich keine Kopie ihres Inhalts aufbewahren: %1</translation>
    </message>
    <message>
        <source>%1 exists already</source>
        <translation>%1 gibt es schon</translation>
    </message>
    <message>
        <source>it cannot be brought onto the disk: %1</source>
        <translation>sie lässt sich nicht auf die Platte bringen: %1</translation>
    </message>
    <message>
        <source>; it is damaged until it is read next, when its former content comes back from %1</source>
        <translation>; sie ist beschädigt, bis sie wieder gelesen wird und ihr früherer Inhalt aus %1 zurückkommt</translation>
    </message>
    <message>
        <source>it is larger than the limit of %1 MiB, which %2 (in MiB) raises</source>
        <translation>sie ist größer als die Grenze von %1 MiB, die %2 (in MiB) anhebt</translation>
    </message>
    <message>
        <source>it is larger than the limit of %1 MiB</source>
        <translation>sie ist größer als die Grenze von %1 MiB</translation>
    </message>
    <message>
        <source>neither XDG_STATE_HOME nor HOME names a place</source>
        <translation>weder XDG_STATE_HOME noch HOME nennt einen Ort</translation>
    </message>
    <message>
        <source>%1 cannot be opened: %2</source>
        <translation>%1 lässt sich nicht öffnen: %2</translation>
    </message>
    <message>
        <source>%1 belongs to another user</source>
        <translation>%1 gehört einem anderen Benutzer</translation>
    </message>
    <message>
        <source>%1 cannot be closed to other users: %2</source>
        <translation>%1 lässt sich für andere Benutzer nicht schließen: %2</translation>
    </message>
    <message>
        <source>%1 cannot be made: %2</source>
        <translation>%1 lässt sich nicht anlegen: %2</translation>
    </message>
    <message>
        <source>the store was written by a newer version of this program</source>
        <translation>der Store wurde von einer neueren Version dieses Programms geschrieben</translation>
    </message>
    <message>
        <source>the store is another one than before</source>
        <translation>der Store ist ein anderer als vorher</translation>
    </message>
    <message>
        <source>the store has ended the connection</source>
        <translation>der Store hat die Verbindung beendet</translation>
    </message>
    <message>
        <source>what it shows is not there</source>
        <translation>was er zeigt, ist nicht da</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no place in what the file holds now: %2</source>
        <translation>„%1“ hat in dem, was die Datei jetzt enthält, keinen Platz: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no place in what the file holds now</source>
        <translation>„%1“ hat in dem, was die Datei jetzt enthält, keinen Platz</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was changed there, too, and is at another place</source>
        <translation>„%1“ wurde auch dort geändert und steht an einer anderen Stelle</translation>
    </message>
    <message>
        <source>the comment %1 has no place in what the file holds now</source>
        <translation>der Kommentar %1 hat in dem, was die Datei jetzt enthält, keinen Platz</translation>
    </message>
    <message>
        <source>&apos;%1&apos; would change with what was edited</source>
        <translation>„%1“ würde sich mit dem ändern, was bearbeitet wurde</translation>
    </message>
    <message>
        <source>there was not enough memory for an edit before; revert the file or open it anew</source>
        <translation>für eine frühere Änderung reichte der Speicher nicht; die Datei zurücksetzen oder neu öffnen</translation>
    </message>
    <message>
        <source>%1; revert all of the file instead</source>
        <translation>%1; stattdessen die ganze Datei zurücksetzen</translation>
    </message>
    <message>
        <source>%1; save all of the file instead</source>
        <translation>%1; stattdessen die ganze Datei speichern</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be written there as it is elsewhere</source>
        <translation>„%1“ lässt sich dort nicht so schreiben, wie es anderswo steht</translation>
    </message>
    <message>
        <source>the comments after it have no place where it is to go, and would be lost; copy it, and remove it here</source>
        <translation>die Kommentare danach haben am Ziel keinen Platz und gingen verloren; stattdessen kopieren und hier entfernen</translation>
    </message>
    <message>
        <source>it is not read alike there</source>
        <translation>es wird dort nicht ebenso gelesen</translation>
    </message>
    <message>
        <source>its name is not in the file</source>
        <translation>sein Name steht nicht in der Datei</translation>
    </message>
    <message>
        <source>it has comments between its lines, which would be lost</source>
        <translation>er hat Kommentare zwischen seinen Zeilen, die verloren gingen</translation>
    </message>
    <message>
        <source>%1 would be a list of texts, in which json cannot say that %2 is %3</source>
        <translation>%1 wäre eine Liste von Texten, in der json nicht sagen kann, dass %2 %3 ist</translation>
    </message>
    <message>
        <source>%1 must not be within a comment, and the one that begins in line %2 has not ended</source>
        <translation>%1 darf nicht in einem Kommentar stehen, und der, der in Zeile %2 beginnt, ist nicht zu Ende</translation>
    </message>
    <message>
        <source>a map cannot begin on the line of its key</source>
        <translation>eine Map kann nicht in der Zeile ihres Schlüssels beginnen</translation>
    </message>
    <message>
        <source>directives end with a line &quot;---&quot;, which is missing</source>
        <translation>Direktiven enden mit einer Zeile &quot;---&quot;, die fehlt</translation>
    </message>
    <message>
        <source>YAML would still read it there</source>
        <translation>YAML würde es dort weiterhin lesen</translation>
    </message>
    <message>
        <source>a GLib key file</source>
        <translation>eine Schlüsseldatei von GLib</translation>
    </message>
    <message>
        <source>a key of git is a letter, then letters, digits and hyphens</source>
        <translation>ein Schlüssel von git ist ein Buchstabe, gefolgt von Buchstaben, Ziffern und Bindestrichen</translation>
    </message>
    <message>
        <source>a section of git has letters, digits and hyphens only</source>
        <translation>ein Abschnitt von git hat nur Buchstaben, Ziffern und Bindestriche</translation>
    </message>
    <message>
        <source>a key of a Kerberos profile has no blanks</source>
        <translation>ein Schlüssel eines Kerberos-Profils hat keine Leerzeichen</translation>
    </message>
    <message>
        <source>PHP does not take that for a key</source>
        <translation>PHP nimmt das nicht als Schlüssel</translation>
    </message>
    <message>
        <source>PHP does not take that for the name of a section</source>
        <translation>PHP nimmt das nicht als Namen eines Abschnitts</translation>
    </message>
    <message>
        <source>%1 cannot hold the key %2: %3</source>
        <translation>%1 kann den Schlüssel %2 nicht enthalten: %3</translation>
    </message>
    <message>
        <source>brackets in a key are for a language, as in &quot;Name[de]&quot;</source>
        <translation>Klammern in einem Schlüssel stehen für eine Sprache, wie in „Name[de]“</translation>
    </message>
    <message>
        <source>its program takes no brackets in the name of a section</source>
        <translation>sein Programm nimmt im Namen eines Abschnitts keine Klammern</translation>
    </message>
    <message>
        <source>%1 has no keys outside of a section</source>
        <translation>%1 hat keine Schlüssel außerhalb eines Abschnitts</translation>
    </message>
    <message>
        <source>%1 is read in lines of %2 bytes at most</source>
        <translation>%1 wird in Zeilen von höchstens %2 Bytes gelesen</translation>
    </message>
    <message>
        <source>MySQL does not take that for a name</source>
        <translation>MySQL nimmt das nicht als Namen</translation>
    </message>
    <message>
        <source>no etcd answers there, but another program</source>
        <translation>dort antwortet kein etcd, sondern ein anderes Programm</translation>
    </message>
    <message>
        <source>no etcd answers there</source>
        <translation>dort antwortet kein etcd</translation>
    </message>
    <message>
        <source>it breaks off the connection, as where TLS is on one side only, or where it asks for a certificate</source>
        <translation>er bricht die Verbindung ab, wie dort, wo nur eine Seite TLS spricht oder ein Zertifikat verlangt wird</translation>
    </message>
    <message>
        <source>the name of its host is not known</source>
        <translation>der Name seines Rechners ist nicht bekannt</translation>
    </message>
    <message>
        <source>no TLS is spoken there, but that is what etcds:// asks for</source>
        <translation>dort wird kein TLS gesprochen, aber das verlangt etcds://</translation>
    </message>
    <message>
        <source>the server is full; compact and defragment it, then disarm its alarm (%1)</source>
        <translation>der Server ist voll; komprimieren und defragmentieren Sie ihn und schalten Sie dann seinen Alarm ab (%1)</translation>
    </message>
    <message>
        <source>no answer in time</source>
        <translation>keine rechtzeitige Antwort</translation>
    </message>
    <message>
        <source>the connection is being closed</source>
        <translation>die Verbindung wird geschlossen</translation>
    </message>
    <message>
        <source>no sign of life</source>
        <translation>kein Lebenszeichen</translation>
    </message>
    <message>
        <source>it has ended the connection</source>
        <translation>er hat die Verbindung beendet</translation>
    </message>
    <message>
        <source>its history from there on is gone</source>
        <translation>seine Geschichte von dort an ist nicht mehr da</translation>
    </message>
    <message>
        <source>this comment is between elements that would go; remove them one by one instead</source>
        <translation>dieser Kommentar steht zwischen Elementen, die entfielen; entfernen Sie sie stattdessen einzeln</translation>
    </message>
    <message>
        <source>a fail2ban configuration</source>
        <translation>eine fail2ban-Konfiguration</translation>
    </message>
    <message>
        <source>an Ansible configuration</source>
        <translation>eine Ansible-Konfiguration</translation>
    </message>
    <message>
        <source>a Supervisor configuration</source>
        <translation>eine Supervisor-Konfiguration</translation>
    </message>
    <message>
        <source>comments follow its lines, which would be lost</source>
        <translation>seinen Zeilen folgen Kommentare, die verloren gingen</translation>
    </message>
    <message>
        <source>no anchor above has the name %1; a text that begins with &quot;*&quot; must be in quotes</source>
        <translation>kein Anker darüber hat den Namen %1; ein Text, der mit &quot;*&quot; beginnt, muss in Anführungszeichen stehen</translation>
    </message>
    <message>
        <source>a text that begins with &quot;%1&quot; must be in quotes</source>
        <translation>ein Text, der mit &quot;%1&quot; beginnt, muss in Anführungszeichen stehen</translation>
    </message>
    <message>
        <source>a second &quot;:&quot; on this line; a text that has a &quot;:&quot; and a space in it must be in quotes</source>
        <translation>ein zweiter &quot;:&quot; in dieser Zeile; ein Text, in dem auf &quot;:&quot; ein Leerzeichen folgt, muss in Anführungszeichen stehen</translation>
    </message>
    <message>
        <source>this text would go on in the next line and be a key there; either a space behind a &quot;:&quot; is missing here, or the next line is indented too far</source>
        <translation>dieser Text ginge in der nächsten Zeile weiter und wäre dort ein Schlüssel; entweder fehlt hier ein Leerzeichen hinter einem &quot;:&quot;, oder die nächste Zeile ist zu weit eingerückt</translation>
    </message>
    <message>
        <source>this is not an entry, for which it needs a key and &quot;:&quot;</source>
        <translation>das ist kein Eintrag; dafür braucht es einen Schlüssel und &quot;:&quot;</translation>
    </message>
    <message>
        <source>something follows the quote that ends the text; one within it is written twice</source>
        <translation>hinter dem Anführungszeichen, das den Text beendet, folgt etwas; eines im Text wird doppelt geschrieben</translation>
    </message>
    <message>
        <source>something follows the quote that ends the text; one within it is written as \&quot;</source>
        <translation>hinter dem Anführungszeichen, das den Text beendet, folgt etwas; eines im Text wird als \&quot; geschrieben</translation>
    </message>
    <message>
        <source>a comment needs a space in front of its &quot;#&quot;</source>
        <translation>ein Kommentar braucht vor dem &quot;#&quot; ein Leerzeichen</translation>
    </message>
    <message>
        <source>a tab indents this line, where YAML takes only spaces</source>
        <translation>ein Tabulator rückt diese Zeile ein, wo YAML nur Leerzeichen nimmt</translation>
    </message>
    <message>
        <source>this line is indented unlike all entries above it</source>
        <translation>diese Zeile ist anders eingerückt als alle Einträge darüber</translation>
    </message>
    <message>
        <source>a list in lines begins on the line after its key</source>
        <translation>eine Liste in Zeilen beginnt in der Zeile nach ihrem Schlüssel</translation>
    </message>
    <message>
        <source>a comma is missing here, or the bracket that closes what is above</source>
        <translation>hier fehlt ein Komma, oder die Klammer, die schließt, was darüber steht</translation>
    </message>
    <message>
        <source>only YAML of version 1 is read, as 1.2 is</source>
        <translation>nur YAML der Version 1 wird gelesen, wie 1.2</translation>
    </message>
    <message>
        <source>the digit of a block of text is one from 1 to 9</source>
        <translation>die Ziffer eines Textblocks ist eine von 1 bis 9</translation>
    </message>
    <message>
        <source>%1; a template is YAML only once it is filled in</source>
        <translation>%1; eine Vorlage ist erst YAML, wenn sie ausgefüllt ist</translation>
    </message>
    <message>
        <source>%1; a text needs quotes around it</source>
        <translation>%1; ein Text braucht Anführungszeichen</translation>
    </message>
    <message>
        <source>%1; its line ends before the quotes close</source>
        <translation>%1; die Zeile endet vor dem schließenden Anführungszeichen</translation>
    </message>
    <message>
        <source>%1; in double quotes a backslash is written twice, in single quotes once</source>
        <translation>%1; zwischen doppelten Anführungszeichen wird ein umgekehrter Schrägstrich doppelt geschrieben, zwischen einfachen nur einmal</translation>
    </message>
    <message>
        <source>%1, which is not closed</source>
        <translation>%1, das nicht geschlossen ist</translation>
    </message>
    <message>
        <source>%1; a merge has left a mark of its conflicts</source>
        <translation>%1; das Zusammenführen hat ein Zeichen seiner Konflikte hinterlassen</translation>
    </message>
    <message>
        <source>%1; a comment begins with #</source>
        <translation>%1; ein Kommentar beginnt mit #</translation>
    </message>
    <message>
        <source>its value is on the line of &quot;---&quot;, below which no entry can go</source>
        <translation>der Wert steht in der Zeile von „---“, unter der kein Eintrag stehen kann</translation>
    </message>
    <message>
        <source>this line is not indented more than the entry above, to which it would belong</source>
        <translation>diese Zeile ist nicht weiter eingerückt als der Eintrag darüber, zu dem sie gehören würde</translation>
    </message>
</context>
<context>
    <name>Repository</name>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message>
        <source>its backend is being closed</source>
        <translation>das Backend wird gerade geschlossen</translation>
    </message>
    <message>
        <source>there was not enough memory for an edit, which is only half done</source>
        <translation>für eine Änderung reichte der Speicher nicht, sie ist nur halb ausgeführt</translation>
    </message>
    <message>
        <source>revert the file or open it anew</source>
        <translation>die Datei zurücksetzen oder neu öffnen</translation>
    </message>
    <message>
        <source>another program has changed what was edited here</source>
        <translation>ein anderes Programm hat geändert, was hier bearbeitet wurde</translation>
    </message>
    <message>
        <source>keep yours or take theirs first</source>
        <translation>zuerst die eigene Fassung behalten oder die fremde übernehmen</translation>
    </message>
    <message>
        <source>(yours: %1, in the file: %2)</source>
        <translation>(hier: %1, in der Datei: %2)</translation>
    </message>
    <message>
        <source>there is no value</source>
        <translation>es gibt keinen Wert</translation>
    </message>
    <message>
        <source>there is no value at the line or after it</source>
        <translation>auf der Zeile und danach gibt es keinen Wert</translation>
    </message>
    <message>
        <source>the values of its file may not be read</source>
        <translation>die Werte der Datei dürfen nicht gelesen werden</translation>
    </message>
    <message>
        <source>its changes are others by now</source>
        <translation>die Änderungen sind inzwischen andere</translation>
    </message>
    <message>
        <source>look at them again</source>
        <translation>noch einmal ansehen</translation>
    </message>
    <message>
        <source>the file could not be read with these changes alone: </source>
        <translation>mit diesen Änderungen allein ließe sich die Datei nicht lesen: </translation>
    </message>
    <message>
        <source>what another program has written there cannot be read: </source>
        <translation>was ein anderes Programm dort geschrieben hat, lässt sich nicht lesen: </translation>
    </message>
    <message>
        <source>what is open stays as it was</source>
        <translation>was offen ist, bleibt, wie es war</translation>
    </message>
    <message>
        <source>another program has changed the file: </source>
        <translation>ein anderes Programm hat die Datei geändert: </translation>
    </message>
    <message>
        <source>the file has been deleted: what is open stays as it was</source>
        <translation>die Datei wurde gelöscht: was offen ist, bleibt, wie es war</translation>
    </message>
    <message>
        <source>keep yours, and it is written anew, or take theirs, and it stays away</source>
        <translation>die eigene Fassung behalten, dann wird sie neu geschrieben, oder die fremde übernehmen, dann bleibt sie weg</translation>
    </message>
    <message>
        <source>it is being closed already</source>
        <translation>es wird schon geschlossen</translation>
    </message>
    <message>
        <source>it has edits that are not saved</source>
        <translation>es hat ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>save or discard them first</source>
        <translation>sie zuerst speichern oder verwerfen</translation>
    </message>
    <message>
        <source>the file has been deleted since it was read</source>
        <translation>die Datei wurde gelöscht, seit sie gelesen wurde</translation>
    </message>
    <message>
        <source>the file could not be read without these changes: </source>
        <translation>ohne diese Änderungen ließe sich die Datei nicht lesen: </translation>
    </message>
    <message>
        <source>there is no conflict at or below it</source>
        <translation>dort und darunter gibt es keinen Konflikt</translation>
    </message>
    <message>
        <source>it is a binary file</source>
        <translation>es ist eine Binärdatei</translation>
    </message>
    <message>
        <source>neither its name nor how it begins tells that it is of a format known here</source>
        <translation>weder Name noch Anfang verraten ein hier bekanntes Format</translation>
    </message>
    <message>
        <source>a file of another kind</source>
        <translation>eine Datei anderer Art</translation>
    </message>
    <message>
        <source>it is a folder</source>
        <translation>es ist ein Ordner</translation>
    </message>
    <message>
        <source>it is not a regular file</source>
        <translation>es ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>it is a view of the kernel, which may have no end</source>
        <translation>es ist eine Sicht auf den Kernel, die womöglich kein Ende hat</translation>
    </message>
    <message>
        <source>there is not enough memory for it</source>
        <translation>dafür reicht der Speicher nicht</translation>
    </message>
    <message>
        <source>Write %1</source>
        <translation>%1 schreiben</translation>
    </message>
    <message>
        <source>a backend&apos;s name is the path of its root: names joined by &apos;.&apos;, none of them empty, without &apos;*&apos; and &apos;;&apos;</source>
        <translation>ein Backend heißt wie der Pfad seiner Wurzel: Namen, durch „.“ verbunden, keiner davon leer, ohne „*“ und „;“</translation>
    </message>
    <message>
        <source>the access mode must be read-only, write-only or read-write</source>
        <translation>der Zugriff muss Lesen, Schreiben oder beides sein (read-only, write-only, read-write)</translation>
    </message>
    <message>
        <source>a backend of that name exists already</source>
        <translation>ein Backend dieses Namens gibt es schon</translation>
    </message>
    <message>
        <source>a backend of that name exists with another file, type or access mode (%1, %2)</source>
        <translation>ein Backend dieses Namens gibt es mit anderer Datei, anderem Typ oder anderem Zugriff (%1, %2)</translation>
    </message>
    <message>
        <source>no file was named</source>
        <translation>es wurde keine Datei genannt</translation>
    </message>
    <message>
        <source>the file is already open as &apos;%1&apos;</source>
        <translation>die Datei ist schon offen als „%1“</translation>
    </message>
    <message>
        <source>the file is just being opened by another backend</source>
        <translation>ein anderes Backend öffnet die Datei gerade</translation>
    </message>
    <message>
        <source>%1 of its %2 files and folders could not be opened</source>
        <translation>%1 der %2 Dateien und Ordner darin ließen sich nicht öffnen</translation>
    </message>
    <message>
        <source>this user may not read it</source>
        <translation>dieser Benutzer darf sie nicht lesen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has edits that are not saved</source>
        <translation>„%1“ hat ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>a folder has no changes but those of its files</source>
        <translation>ein Ordner hat keine Änderungen als die seiner Dateien</translation>
    </message>
    <message>
        <source>a folder has no entries but those of its files</source>
        <translation>ein Ordner hat keine Einträge als die seiner Dateien</translation>
    </message>
    <message>
        <source>it is not a folder</source>
        <translation>es ist kein Ordner</translation>
    </message>
    <message>
        <source>no such folder</source>
        <translation>kein solcher Ordner</translation>
    </message>
    <message>
        <source>the depth must be a number from 0 to %1, not &apos;%2&apos;</source>
        <translation>die Tiefe muss eine Zahl von 0 bis %1 sein, nicht „%2“</translation>
    </message>
    <message>
        <source>there are attributes at or below it already</source>
        <translation>dort oder darunter gibt es schon Attribute</translation>
    </message>
    <message>
        <source>A callback that watches &apos;%1&apos; failed: %2</source>
        <translation>Ein Callback, der „%1“ beobachtet, ist fehlgeschlagen: %2</translation>
    </message>
    <message>
        <source>A callback that watches &apos;%1&apos; failed</source>
        <translation>Ein Callback, der „%1“ beobachtet, ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>Create %1</source>
        <translation>%1 anlegen</translation>
    </message>
    <message>
        <source>%1 is not an access mode</source>
        <translation>%1 ist kein Zugriff</translation>
    </message>
    <message>
        <source>1 is read-only, 2 write-only, 3 read-write</source>
        <translation>1 ist read-only, 2 write-only, 3 read-write</translation>
    </message>
    <message>
        <source>it exists already</source>
        <translation>es ist schon vorhanden</translation>
    </message>
    <message>
        <source>write to it, or choose another name</source>
        <translation>es schreiben oder einen anderen Namen wählen</translation>
    </message>
    <message>
        <source>create it first</source>
        <translation>es zuerst anlegen</translation>
    </message>
    <message>
        <source>it lies in no backend, so there is no file to read it from</source>
        <translation>es liegt in keinem Backend, also gibt es keine Datei, aus der es gelesen werden könnte</translation>
    </message>
    <message>
        <source>it is in no file</source>
        <translation>es steht in keiner Datei</translation>
    </message>
    <message>
        <source>it has been changed since</source>
        <translation>es wurde seitdem geändert</translation>
    </message>
    <message>
        <source>without a value</source>
        <translation>ohne Wert</translation>
    </message>
    <message>
        <source>is %1 now, and the step left it %2</source>
        <translation>ist jetzt %1, und der Schritt hinterließ %2</translation>
    </message>
    <message>
        <source>put that back first</source>
        <translation>das zuerst wiederherstellen</translation>
    </message>
    <message>
        <source>There is nothing to undo</source>
        <translation>Es gibt nichts rückgängig zu machen</translation>
    </message>
    <message>
        <source>There is nothing to redo</source>
        <translation>Es gibt nichts zu wiederholen</translation>
    </message>
    <message>
        <source>a backend of it is closed</source>
        <translation>ein Backend davon ist geschlossen</translation>
    </message>
    <message>
        <source>another backend owns it by now</source>
        <translation>es gehört inzwischen einem anderen Backend</translation>
    </message>
    <message>
        <source>other attributes have come below</source>
        <translation>darunter sind andere Attribute hinzugekommen</translation>
    </message>
    <message>
        <source>it takes more steps or memory than are allowed</source>
        <translation>das braucht mehr Schritte oder Speicher, als erlaubt ist</translation>
    </message>
    <message>
        <source>simplify the expression</source>
        <translation>den Ausdruck vereinfachen</translation>
    </message>
    <message>
        <source>it has changed since it was found</source>
        <translation>es hat sich seit der Suche geändert</translation>
    </message>
    <message>
        <source>search again</source>
        <translation>noch einmal suchen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a regular expression: %2</source>
        <translation>„%1“ ist kein regulärer Ausdruck: %2</translation>
    </message>
    <message>
        <source>it holds %1, which this cannot become without loss</source>
        <translation>sein Inhalt ist %1, was hieraus nicht ohne Verlust werden kann</translation>
    </message>
    <message>
        <source>an attribute holds true or false, a number, a text, a list of texts, bytes, a date or a time, and nothing else</source>
        <translation>ein Attribut enthält true oder false, eine Zahl, einen Text, eine Liste von Texten, Bytes, ein Datum oder eine Zeit und sonst nichts</translation>
    </message>
    <message>
        <source>created as read-only</source>
        <translation>nur zum Lesen angelegt</translation>
    </message>
    <message>
        <source>it is open as read-only</source>
        <translation>es ist nur zum Lesen geöffnet</translation>
    </message>
    <message>
        <source>open it for writing to change it</source>
        <translation>zum Ändern ist es mit Schreibzugriff zu öffnen</translation>
    </message>
    <message>
        <source>no such attribute</source>
        <translation>kein solches Attribut</translation>
    </message>
    <message>
        <source>it has more than %1 names, or too many characters for its depth</source>
        <translation>er hat mehr als %1 Namen oder zu viele Zeichen für seine Tiefe</translation>
    </message>
    <message>
        <source>a path is names joined by &apos;.&apos;, none of them empty and none with &apos;*&apos; in it</source>
        <translation>ein Pfad sind Namen, durch „.“ verbunden, keiner davon leer und keiner mit „*“ darin</translation>
    </message>
    <message>
        <source>it belongs to the repository itself, which alone changes it</source>
        <translation>es gehört dem Repository selbst, und nur dieses ändert es</translation>
    </message>
    <message>
        <source>its comments have no place where it is to go, and would be lost</source>
        <translation>die Kommentare haben am Ziel keinen Platz und gingen verloren</translation>
    </message>
    <message>
        <source>its tags have no form where it is to go, and would be lost</source>
        <translation>die Tags haben am Ziel keine Form und gingen verloren</translation>
    </message>
    <message>
        <source>it only names what is merged into its group</source>
        <translation>es nennt nur, was in seine Gruppe übernommen wird</translation>
    </message>
    <message>
        <source>copy the entries that it brings there</source>
        <translation>die Einträge kopieren, die dadurch dort stehen</translation>
    </message>
    <message>
        <source>copy it, and remove it here</source>
        <translation>es kopieren und hier entfernen</translation>
    </message>
    <message>
        <source>no backend has that name</source>
        <translation>kein Backend heißt so</translation>
    </message>
    <message>
        <source>unknown backend type &apos;%1&apos;</source>
        <translation>unbekannter Backend-Typ „%1“</translation>
    </message>
    <message>
        <source>its file has no form for the value at this place</source>
        <translation>die Datei hat an dieser Stelle keine Form für den Wert</translation>
    </message>
    <message>
        <source>a callback needs a function and a valid path or pattern to listen to</source>
        <translation>ein Callback braucht eine Funktion und einen gültigen Pfad oder ein Muster</translation>
    </message>
    <message>
        <source>its file holds a group, and is not replaced by an array</source>
        <translation>in der Datei ist es eine Gruppe, die nicht durch ein Array ersetzt wird</translation>
    </message>
    <message>
        <source>a value needs a path</source>
        <translation>ein Wert braucht einen Pfad</translation>
    </message>
    <message>
        <source>the list has %1 elements</source>
        <translation>die Liste hat %1 Elemente</translation>
    </message>
    <message>
        <source>the next one is %1</source>
        <translation>das nächste ist %1</translation>
    </message>
    <message>
        <source>Not all entries are in the order of their file: there is not enough memory to sort them; reload the backend</source>
        <translation>Nicht alle Einträge stehen in der Reihenfolge ihrer Datei: zum Sortieren reicht der Speicher nicht; das Backend neu laden</translation>
    </message>
    <message>
        <source>Not all watchers were notified of new attributes: there is not enough memory for it</source>
        <translation>Nicht alle Beobachter wurden von neuen Attributen benachrichtigt: dafür reicht der Speicher nicht</translation>
    </message>
    <message>
        <source>it holds the root of the backend</source>
        <translation>es enthält die Wurzel des Backends</translation>
    </message>
    <message>
        <source>close that backend instead</source>
        <translation>stattdessen dieses Backend schließen</translation>
    </message>
    <message>
        <source>a subtree cannot be put into itself</source>
        <translation>ein Teilbaum kann nicht in sich selbst liegen</translation>
    </message>
    <message>
        <source>choose another name</source>
        <translation>einen anderen Namen wählen</translation>
    </message>
    <message>
        <source>the elements of a list are texts</source>
        <translation>die Elemente einer Liste sind Texte</translation>
    </message>
    <message>
        <source>the text is not %1: line %2, column %3: %4</source>
        <translation>der Text ist kein %1: Zeile %2, Spalte %3: %4</translation>
    </message>
    <message>
        <source>Import %1</source>
        <translation>%1 importieren</translation>
    </message>
    <message>
        <source>it is write-only, and its value is not taken elsewhere</source>
        <translation>es darf nur geschrieben werden, und sein Wert wird nirgendwohin übernommen</translation>
    </message>
    <message>
        <source>Copy %1 to %2</source>
        <translation>%1 nach %2 kopieren</translation>
    </message>
    <message>
        <source>Move %1 to %2</source>
        <translation>%1 nach %2 verschieben</translation>
    </message>
    <message>
        <source>it was cancelled</source>
        <translation>es wurde abgebrochen</translation>
    </message>
    <message>
        <source>%1 at offset %2</source>
        <translation>%1 bei Zeichen %2</translation>
    </message>
    <message>
        <source>not empty</source>
        <translation>nicht leer</translation>
    </message>
    <message>
        <source>an integer</source>
        <translation>eine ganze Zahl</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>eine Zahl</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>true oder false</translation>
    </message>
    <message>
        <source>an IPv4 address</source>
        <translation>eine IPv4-Adresse</translation>
    </message>
    <message>
        <source>an IPv6 address</source>
        <translation>eine IPv6-Adresse</translation>
    </message>
    <message>
        <source>a host name</source>
        <translation>ein Rechnername</translation>
    </message>
    <message>
        <source>a URL with its scheme</source>
        <translation>eine URL mit ihrem Schema</translation>
    </message>
    <message>
        <source>a date and time as in 2024-05-31T08:00:00</source>
        <translation>ein Zeitpunkt wie 2024-05-31T08:00:00</translation>
    </message>
    <message>
        <source>range needs a lower and an upper bound, as in range(0,100)</source>
        <translation>range braucht eine untere und eine obere Grenze, wie range(0,100)</translation>
    </message>
    <message>
        <source>a number from %1 to %2</source>
        <translation>eine Zahl von %1 bis %2</translation>
    </message>
    <message>
        <source>unknown validation &apos;%1&apos;; known validations: %2</source>
        <translation>unbekannte Prüfung „%1“; bekannt sind: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; needs its argument in parentheses, as in %1(...)</source>
        <translation>„%1“ braucht das Argument in Klammern, wie %1(...)</translation>
    </message>
    <message>
        <source>the validation &apos;%1&apos; could not be checked: matching this text takes more steps or memory than are allowed; simplify the expression or shorten the text</source>
        <translation>die Prüfung „%1“ war nicht möglich: dieser Text braucht mehr Schritte oder Speicher, als erlaubt ist; den Ausdruck vereinfachen oder den Text kürzen</translation>
    </message>
    <message>
        <source>the validation &apos;%1&apos; asks for %2</source>
        <translation>die Prüfung „%1“ verlangt: %2</translation>
    </message>
    <message>
        <source>%1, not &apos;%2&apos;</source>
        <translation>%1, nicht „%2“</translation>
    </message>
    <message>
        <source>with these edits %1</source>
        <translation>mit diesen Änderungen: %1</translation>
    </message>
    <message>
        <source>with this text it would be taken for %1 when it is read again; give it a name that tells that it is %2</source>
        <translation>mit diesem Text gälte sie beim nächsten Lesen als %1; sie braucht einen Namen, der verrät, dass sie %2 ist</translation>
    </message>
    <message>
        <source>with this text it would be taken for %1 when it is read again; give it a name that ends with .%2</source>
        <translation>mit diesem Text gälte sie beim nächsten Lesen als %1; sie braucht einen Namen, der auf .%2 endet</translation>
    </message>
    <message>
        <source>%1 as in %2</source>
        <translation>%1 wie %2</translation>
    </message>
    <message>
        <source>valid types: %1</source>
        <translation>mögliche Typen: %1</translation>
    </message>
    <message>
        <source>remove it and create it as %1</source>
        <translation>es kann entfernt und als %1 neu angelegt werden</translation>
    </message>
    <message>
        <source>one of %1</source>
        <translation>eines von %1</translation>
    </message>
    <message>
        <source>a text that matches %1</source>
        <translation>ein Text, zu dem %1 passt</translation>
    </message>
    <message>
        <source>it is locked</source>
        <translation>es ist gesperrt</translation>
    </message>
    <message>
        <source>unlock it to change it</source>
        <translation>zum Ändern ist es zu entsperren</translation>
    </message>
    <message>
        <source>unknown condition &apos;%1&apos;; valid are include, exclude, depth and size</source>
        <translation>unbekannte Bedingung „%1“; möglich sind include, exclude, depth und size</translation>
    </message>
    <message>
        <source>the size must be a number of bytes, or end with K, M or G, not &apos;%1&apos;</source>
        <translation>die Größe muss eine Anzahl Bytes sein oder mit K, M oder G enden, nicht „%1“</translation>
    </message>
    <message>
        <source>a backend of it is locked</source>
        <translation>ein Backend davon ist gesperrt</translation>
    </message>
    <message>
        <source>unlock it first</source>
        <translation>es zuerst entsperren</translation>
    </message>
    <message>
        <source>it has more digits of a second than are shown, which would be lost</source>
        <translation>er hat mehr Nachkommastellen der Sekunde, als gezeigt werden, und sie gingen verloren</translation>
    </message>
    <message>
        <source>set it to another value first</source>
        <translation>zuerst auf einen anderen Wert setzen</translation>
    </message>
    <message>
        <source>%1; open for %2</source>
        <translation>%1; geöffnet von %2</translation>
    </message>
    <message>
        <source>another program has written it in a form that is not known here</source>
        <translation>ein anderes Programm hat es in einer Form geschrieben, die hier unbekannt ist</translation>
    </message>
    <message>
        <source>use that program to change it</source>
        <translation>zum Ändern jenes Programm benutzen</translation>
    </message>
    <message>
        <source>it is larger than 1 MiB, which a store does not take as one value</source>
        <translation>es ist größer als 1 MiB, und das nimmt ein Store nicht als einen Wert</translation>
    </message>
    <message>
        <source>the store has no such entry</source>
        <translation>im Store gibt es keinen solchen Eintrag</translation>
    </message>
    <message>
        <source>it was not spelt by a store</source>
        <translation>das hat kein Store geschrieben</translation>
    </message>
    <message>
        <source>it is not the text of a store</source>
        <translation>das ist nicht der Text eines Stores</translation>
    </message>
    <message>
        <source>it has edits that the store has not acknowledged</source>
        <translation>es gibt Änderungen, die der Store nicht bestätigt hat</translation>
    </message>
    <message>
        <source>(yours: %1, in the store: %2)</source>
        <translation>(hier: %1, im Store: %2)</translation>
    </message>
    <message>
        <source>the store refuses it: %1</source>
        <translation>der Store lehnt es ab: %1</translation>
    </message>
    <message>
        <source>the store has not acknowledged it yet; it is being sent</source>
        <translation>der Store hat es noch nicht bestätigt; es wird gerade gesendet</translation>
    </message>
    <message>
        <source>a store has no text with places in it</source>
        <translation>ein Store hat keinen Text mit Stellen darin</translation>
    </message>
    <message>
        <source>a store has no text</source>
        <translation>ein Store hat keinen Text</translation>
    </message>
    <message>
        <source>a store has no lines of text</source>
        <translation>ein Store hat keine Textzeilen</translation>
    </message>
    <message>
        <source>it has no thread to work on: %1</source>
        <translation>es gibt keinen Thread, der die Arbeit tun könnte: %1</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be read: %2</source>
        <translation>„%1“ lässt sich nicht lesen: %2</translation>
    </message>
    <message>
        <source>a store is given as etcd://HOST:PORT/NAME, or etcds://HOST:PORT/NAME with TLS</source>
        <translation>ein Store wird als etcd://HOST:PORT/NAME angegeben, mit TLS als etcds://HOST:PORT/NAME</translation>
    </message>
    <message>
        <source>the name of the store is missing, as in etcd://HOST:PORT/NAME</source>
        <translation>der Name des Stores fehlt, wie in etcd://HOST:PORT/NAME</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not HOST:PORT</source>
        <translation>„%1“ ist nicht HOST:PORT</translation>
    </message>
    <message>
        <source>offline is queue or refuse, not &apos;%1&apos;</source>
        <translation>offline ist queue oder refuse, nicht „%1“</translation>
    </message>
    <message>
        <source>it must not hold a password; give a file with it by ?credentials=FILE</source>
        <translation>darin darf kein Passwort stehen; die Datei, in der es steht, nennt ?credentials=DATEI</translation>
    </message>
    <message>
        <source>unknown option &apos;%1&apos;; valid are user, credentials, ca, cert, key and offline</source>
        <translation>unbekannte Option „%1“; möglich sind user, credentials, ca, cert, key und offline</translation>
    </message>
    <message>
        <source>others than you may use &apos;%1&apos;; take that from them by chmod 600</source>
        <translation>„%1“ ist für andere Benutzer zugänglich; chmod 600 ändert das</translation>
    </message>
    <message>
        <source>the module for it is not installed (%1); it comes with the package vantry-etcd</source>
        <translation>das Modul dafür ist nicht installiert (%1); es gehört zum Paket vantry-etcd</translation>
    </message>
    <message>
        <source>its module cannot be loaded: %1</source>
        <translation>das Modul dafür lässt sich nicht laden: %1</translation>
    </message>
    <message>
        <source>its module is of another version of this program; install the two together</source>
        <translation>das Modul gehört zu einer anderen Version dieses Programms; beide zusammen installieren</translation>
    </message>
    <message>
        <source>loading</source>
        <translation>lädt</translation>
    </message>
    <message>
        <source>connected</source>
        <translation>verbunden</translation>
    </message>
    <message>
        <source>stale since %1: %2</source>
        <translation>veraltet seit %1: %2</translation>
    </message>
    <message>
        <source>refused: %1</source>
        <translation>abgelehnt: %1</translation>
    </message>
    <message>
        <source>try again when it is, or open it with offline=queue to keep edits meanwhile</source>
        <translation>es versuchen, sobald er es ist, oder ihn mit offline=queue öffnen, sodass Änderungen inzwischen aufbewahrt werden</translation>
    </message>
    <message>
        <source>the store does not take edits: %1</source>
        <translation>der Store nimmt keine Änderungen an: %1</translation>
    </message>
    <message>
        <source>they stay unsaved; save them again when that is mended</source>
        <translation>sie bleiben ungespeichert; erneut speichern, sobald das behoben ist</translation>
    </message>
    <message>
        <source>it must not hold a user or a password; give the user by ?user=NAME and the password in a file by ?credentials=FILE</source>
        <translation>darin darf weder Benutzer noch Passwort stehen; den Benutzer nennt ?user=NAME, das Passwort steht in einer Datei, die ?credentials=DATEI nennt</translation>
    </message>
    <message>
        <source>&apos;%1&apos;: an IPv6 address stands in brackets, as in [::1]:2379</source>
        <translation>&apos;%1&apos;: eine IPv6-Adresse steht in eckigen Klammern, wie [::1]:2379</translation>
    </message>
    <message>
        <source>it was closed before it was loaded</source>
        <translation>er wurde geschlossen, bevor er geladen war</translation>
    </message>
    <message>
        <source>not reached yet: %1</source>
        <translation>noch nicht erreicht: %1</translation>
    </message>
    <message>
        <source>the store is not loaded yet (%1)</source>
        <translation>der Store ist noch nicht geladen (%1)</translation>
    </message>
    <message>
        <source>the store is not connected: %1; its values are those of %2</source>
        <translation>der Store ist nicht verbunden: %1; seine Werte sind die von %2</translation>
    </message>
    <message>
        <source>it is tried again all the time</source>
        <translation>es wird ständig wieder versucht</translation>
    </message>
    <message>
        <source>a name in it is not one that files can have</source>
        <translation>ein Name darin ist keiner, den Dateien haben können</translation>
    </message>
    <message>
        <source>write %, ; and control characters in names as %25, %3B and so on, with two upper-case hex digits</source>
        <translation>schreiben Sie %, ; und Steuerzeichen in Namen als %25, %3B und so weiter, mit zwei großen Hexadezimalziffern</translation>
    </message>
    <message>
        <source>some of it may be stored already; look when the store is there again</source>
        <translation>manches davon kann schon gespeichert sein; sehen Sie nach, wenn der Store wieder da ist</translation>
    </message>
    <message>
        <source>Revert %1</source>
        <translation>%1 zurücksetzen</translation>
    </message>
    <message>
        <source>Resolve %1</source>
        <translation>Konflikte von %1 lösen</translation>
    </message>
    <message>
        <source>Revert changes of %1</source>
        <translation>Änderungen von %1 zurücksetzen</translation>
    </message>
    <message>
        <source>the name of a store has no &quot;/&quot; in it, as &apos;%1&apos; has</source>
        <translation>der Name eines Stores enthält kein &quot;/&quot;, wie es &apos;%1&apos; tut</translation>
    </message>
</context>
</TS>
