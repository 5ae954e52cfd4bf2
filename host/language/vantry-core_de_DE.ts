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
</context>
</TS>
