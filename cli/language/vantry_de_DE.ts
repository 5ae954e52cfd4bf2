<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CommandLine</name>
    <message>
        <source>print what would change in the file as a diff, and write nothing</source>
        <translation>nur als Diff ausgeben, was sich in der Datei ändern würde, und nichts schreiben</translation>
    </message>
    <message>
        <source>VALUE is not given, but is what standard input holds, less a last line break</source>
        <translation>VALUE wird nicht angegeben, sondern ist, was die Standardeingabe enthält, ohne einen letzten Zeilenumbruch</translation>
    </message>
    <message>
        <source>the format of the second FILE, when its name does not decide it</source>
        <translation>das Format der zweiten FILE, wenn ihr Name es nicht bestimmt</translation>
    </message>
    <message>
        <source>print json, in the form that is described above</source>
        <translation>json ausgeben, in der oben beschriebenen Form</translation>
    </message>
    <message>
        <source>end each result with NUL, not a line break, and escape nothing</source>
        <translation>jedes Ergebnis mit NUL statt einem Zeilenumbruch beenden und nichts maskieren</translation>
    </message>
    <message>
        <source>replace a file that is there already</source>
        <translation>eine vorhandene Datei ersetzen</translation>
    </message>
    <message>
        <source>cannot complete for the shell &apos;%1&apos;%2</source>
        <translation>für die Shell „%1“ gibt es keine Vervollständigung%2</translation>
    </message>
    <message>
        <source>print a script for completion in a shell</source>
        <translation>ein Skript zur Vervollständigung in einer Shell ausgeben</translation>
    </message>
    <message>
        <source>Commands, options, files and the paths in a file are completed then. For bash, add this line to ~/.bashrc: eval &quot;$(vantry completion bash)&quot;</source>
        <translation>Vervollständigt werden dann Befehle, Optionen, Dateien und die Pfade in einer Datei. Für bash kommt diese Zeile in ~/.bashrc: eval &quot;$(vantry completion bash)&quot;</translation>
    </message>
    <message>
        <source>print what may come next</source>
        <translation>ausgeben, was als Nächstes kommen kann</translation>
    </message>
    <message>
        <source>The last WORD is the unfinished one. The first line is &quot;files&quot; when names of files may come, too, and what precedes the name in WORD, otherwise &quot;words&quot;.</source>
        <translation>Das letzte WORD ist das unfertige. Die erste Zeile ist &quot;files&quot;, wenn auch Namen von Dateien kommen können, und was in WORD vor dem Namen steht, sonst &quot;words&quot;.</translation>
    </message>
    <message>
        <source>add an attribute, and the groups that lead to it</source>
        <translation>ein Attribut anlegen, samt den Gruppen, die zu ihm führen</translation>
    </message>
    <message>
        <source>The new entry comes after its siblings, in the manner of the file. Without --type, VALUE is what a file would hold by that text: true and false, numbers, or else a text. A type which the file&apos;s format has no form of its own for is kept in a type tag that other programs take for a comment. An attribute that is there already is refused; a file that is not there is created. In an array the new element gets the index that PATH ends in, and those from there on move up; the number of its elements is the index after the last.</source>
        <translation>Der neue Eintrag steht nach seinen Geschwistern, in der Schreibweise der Datei. Ohne --type ist VALUE, was eine Datei mit diesem Text enthielte: true und false, Zahlen oder sonst ein Text. Ein Typ, für den das Format der Datei keine eigene Form hat, wird in einer Typangabe festgehalten, die andere Programme für einen Kommentar halten. Ein schon vorhandenes Attribut wird abgelehnt; eine fehlende Datei wird angelegt. In einem Array erhält das neue Element den Index, mit dem PATH endet, und die Elemente von dort an rücken auf; die Anzahl der Elemente ist der Index nach dem letzten.</translation>
    </message>
    <message>
        <source>the type of the attribute</source>
        <translation>der Typ des Attributs</translation>
    </message>
    <message>
        <source>add the groups that lead to it, which is done without it, too</source>
        <translation>die Gruppen anlegen, die zu ihm führen, was auch ohne diese Option geschieht</translation>
    </message>
    <message>
        <source>compare two files by attribute</source>
        <translation>zwei Dateien nach Attributen vergleichen</translation>
    </message>
    <message>
        <source>Order, comments and spelling do not count. A type does: 8080 is not the text &quot;8080&quot;. An array is another thing than a group of the same names, and an empty group than nothing, unless one of two formats cannot tell. &quot;-&quot; begins what the first file holds, &quot;+&quot; what the second holds. With paths, only what is below them is compared. The exit code is 1 when there is a difference.
With --json: an array of objects with &quot;change&quot; (changed, created or removed), &quot;path&quot;, and &quot;typeBefore&quot;, &quot;before&quot;, &quot;typeAfter&quot; and &quot;after&quot; as far as there are any.</source>
        <translation>Reihenfolge, Kommentare und Schreibweise zählen nicht. Ein Typ zählt: 8080 ist nicht der Text &quot;8080&quot;. Ein Array ist etwas anderes als eine Gruppe mit denselben Namen und eine leere Gruppe etwas anderes als nichts, es sei denn, eines der beiden Formate kann das nicht unterscheiden. Mit &quot;-&quot; beginnt, was die erste Datei enthält, mit &quot;+&quot;, was die zweite enthält. Mit Pfaden wird nur verglichen, was unter ihnen liegt. Bei einem Unterschied ist der Exit-Code 1.
Mit --json: ein Array von Objekten mit &quot;change&quot; (changed, created oder removed), &quot;path&quot; sowie &quot;typeBefore&quot;, &quot;before&quot;, &quot;typeAfter&quot; und &quot;after&quot;, soweit es sie gibt.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not an index from 0 to %2</source>
        <translation>„%1“ ist kein Index von 0 bis %2</translation>
    </message>
    <message>
        <source>it is not a list, which alone has elements</source>
        <translation>es ist keine Liste, und nur Listen haben Elemente</translation>
    </message>
    <message>
        <source>; &apos;vantry create --type list&apos; adds it</source>
        <translation>; „vantry create --type list“ legt es an</translation>
    </message>
    <message>
        <source>add elements at the end of a list</source>
        <translation>Elemente am Ende einer Liste anfügen</translation>
    </message>
    <message>
        <source>PATH is a list or an array. The other elements stay as they are written. In an array that holds more than texts, VALUE is what &quot;create&quot; makes of it.</source>
        <translation>PATH ist eine Liste oder ein Array. Die übrigen Elemente bleiben, wie sie geschrieben sind. In einem Array, das nicht nur Texte enthält, ist VALUE, was &quot;create&quot; daraus macht.</translation>
    </message>
    <message>
        <source>add an element to a list before another</source>
        <translation>ein Element vor einem anderen in eine Liste einfügen</translation>
    </message>
    <message>
        <source>The element with the number INDEX, of which the first is 0, and those after it move by one. The number of elements is the index after the last. In an array that holds more than texts, VALUE is what &quot;create&quot; makes of it.</source>
        <translation>Das Element mit der Nummer INDEX, von denen die erste 0 ist, und die folgenden rücken um eins weiter. Die Anzahl der Elemente ist der Index nach dem letzten. In einem Array, das nicht nur Texte enthält, ist VALUE, was &quot;create&quot; daraus macht.</translation>
    </message>
    <message>
        <source>standard output</source>
        <translation>Standardausgabe</translation>
    </message>
    <message>
        <source>the name of a file is empty</source>
        <translation>der Name einer Datei ist leer</translation>
    </message>
    <message>
        <source>give its format with --to-format</source>
        <translation>das Format ist mit --to-format anzugeben</translation>
    </message>
    <message>
        <source>its name does not decide its format; give it with --to-format</source>
        <translation>der Name bestimmt das Format nicht; es ist mit --to-format anzugeben</translation>
    </message>
    <message>
        <source>it exists already; --force replaces it</source>
        <translation>die Datei ist schon vorhanden; --force ersetzt sie</translation>
    </message>
    <message>
        <source>%1 is not saved: %2</source>
        <translation>%1 ist nicht gespeichert: %2</translation>
    </message>
    <message>
        <source>write what a file holds as a file of another format</source>
        <translation>den Inhalt einer Datei als Datei eines anderen Formats schreiben</translation>
    </message>
    <message>
        <source>write a group as a file of its own</source>
        <translation>eine Gruppe als eigene Datei schreiben</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; was not matched: it takes more steps or memory than are allowed; simplify the expression</source>
        <translation>%1: „%2“ wurde nicht verglichen: das braucht mehr Schritte oder Speicher, als erlaubt ist; der Ausdruck ist zu vereinfachen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is taken as PATTERN; after several files, &apos;*&apos; stands for all of their paths</source>
        <translation>„%1“ gilt als PATTERN; nach mehreren Dateien steht „*“ für alle ihre Pfade</translation>
    </message>
    <message>
        <source>print the paths that match a pattern</source>
        <translation>die Pfade ausgeben, die zu einem Muster passen</translation>
    </message>
    <message>
        <source>In PATTERN and TEXT &quot;*&quot; stands for any run of characters, &quot;.&quot; included; everything else stands for itself. Without PATTERN all are looked at. Paths are printed in the order of the file. Groups are found as attributes are, unless a value or type is asked for. The exit code is 1 when there is none.
Of several files a line is &quot;FILE: PATH&quot;, and with --lines &quot;FILE:LINE: PATH&quot;; that of a group is the LINE of its first value.
CONDITION is value, name, path or type, then = != &lt; &lt;= &gt; &gt;= ~ or !~, then a text, in quotes when blanks at its ends count. Numbers are compared as numbers, moments as moments, and all else as text; a number is neither less nor greater than a text. &quot;~&quot; asks whether a regular expression matches a part of it. Types are those that &quot;get --type&quot; prints, and group.
With --json: an array of objects with &quot;path&quot;, &quot;type&quot; and, where there is one, &quot;value&quot;; also &quot;file&quot; of several files, and &quot;file&quot;, &quot;line&quot; and &quot;column&quot; with --lines.</source>
        <translation>In PATTERN und TEXT steht &quot;*&quot; für eine beliebige Folge von Zeichen, auch &quot;.&quot;; alles andere steht für sich selbst. Ohne PATTERN werden alle betrachtet. Pfade werden in der Reihenfolge der Datei ausgegeben. Gruppen werden gefunden wie Attribute, es sei denn, nach einem Wert oder Typ ist gefragt. Der Exit-Code ist 1, wenn es keine gibt.
Bei mehreren Dateien ist eine Zeile &quot;FILE: PATH&quot;, mit --lines &quot;FILE:LINE: PATH&quot;; die einer Gruppe ist die LINE ihres ersten Werts.
CONDITION ist value, name, path oder type, dann = != &lt; &lt;= &gt; &gt;= ~ oder !~, dann ein Text, in Anführungszeichen, wenn Leerzeichen an seinen Enden zählen. Zahlen werden als Zahlen verglichen, Zeitpunkte als Zeitpunkte und alles andere als Text; eine Zahl ist weder kleiner noch größer als ein Text. &quot;~&quot; fragt, ob ein regulärer Ausdruck zu einem Teil davon passt. Typen sind die, die &quot;get --type&quot; ausgibt, und group.
Mit --json: ein Array von Objekten mit &quot;path&quot;, &quot;type&quot; und, wo es einen gibt, &quot;value&quot;; bei mehreren Dateien auch &quot;file&quot;, mit --lines &quot;file&quot;, &quot;line&quot; und &quot;column&quot;.</translation>
    </message>
    <message>
        <source>only attributes whose value matches TEXT; of a list, all of it or one of its elements</source>
        <translation>nur Attribute, deren Wert zu TEXT passt; bei einer Liste als Ganzes oder eines ihrer Elemente</translation>
    </message>
    <message>
        <source>TEXT is a regular expression, which matches a part of the value</source>
        <translation>TEXT ist ein regulärer Ausdruck, der zu einem Teil des Werts passt</translation>
    </message>
    <message>
        <source>only what meets CONDITION; when repeated, all of them</source>
        <translation>nur, was CONDITION erfüllt; mehrfach angegeben, alle davon</translation>
    </message>
    <message>
        <source>print where it is, too</source>
        <translation>auch ausgeben, wo es steht</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is a group without a value of its own; &apos;vantry ls&apos; shows what is in it</source>
        <translation>%1: „%2“ ist eine Gruppe ohne eigenen Wert; „vantry ls“ zeigt, was darin ist</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is write-only</source>
        <translation>%1: „%2“ darf nur geschrieben werden</translation>
    </message>
    <message>
        <source>print the value of an attribute</source>
        <translation>den Wert eines Attributs ausgeben</translation>
    </message>
    <message>
        <source>The value is printed as it is, followed by a line break. A list is printed with &quot;;&quot; between its elements, &quot;\&quot; before a &quot;;&quot; or &quot;\&quot; of an element; bytes with &quot;\x&quot; and two hex digits where they are not text; dates and times in ISO 8601.
A group has no value: the exit code is 1. With --json it is an object of all that is in it, and a value is one of json; bytes, dates and times are texts.</source>
        <translation>Der Wert wird ausgegeben, wie er ist, gefolgt von einem Zeilenumbruch. Eine Liste wird mit &quot;;&quot; zwischen ihren Elementen ausgegeben, &quot;\&quot; vor einem &quot;;&quot; oder &quot;\&quot; eines Elements; Bytes mit &quot;\x&quot; und zwei Hexadezimalziffern, wo sie kein Text sind; Datum und Zeit nach ISO 8601.
Eine Gruppe hat keinen Wert: der Exit-Code ist 1. Mit --json ist sie ein Objekt aus allem, was darin ist, und ein Wert ist einer von json; Bytes, Datum und Zeit sind Texte.</translation>
    </message>
    <message>
        <source>print the name of its type instead</source>
        <translation>stattdessen den Namen des Typs ausgeben</translation>
    </message>
    <message>
        <source>unknown command &apos;%1&apos;%2</source>
        <translation>unbekannter Befehl „%1“%2</translation>
    </message>
    <message>
        <source>show this help, or that of a command</source>
        <translation>diese Hilfe zeigen oder die eines Befehls</translation>
    </message>
    <message>
        <source>The same as --help.</source>
        <translation>Dasselbe wie --help.</translation>
    </message>
    <message>
        <source>print the manual page</source>
        <translation>die Handbuchseite ausgeben</translation>
    </message>
    <message>
        <source>add what another file holds below a path</source>
        <translation>unter einem Pfad hinzufügen, was eine andere Datei enthält</translation>
    </message>
    <message>
        <source>the format of JSON, when its name does not decide it</source>
        <translation>das Format von JSON, wenn der Name es nicht bestimmt</translation>
    </message>
    <message>
        <source>list what is in a group</source>
        <translation>auflisten, was in einer Gruppe ist</translation>
    </message>
    <message>
        <source>Prints the paths right below PATH, one a line, in the order of the file; without PATH, those at the top. An attribute with nothing below it lists itself.
With --json: an array of objects with &quot;path&quot;, &quot;type&quot; and, where there is one, &quot;value&quot;; the type of a group is group.</source>
        <translation>Gibt die Pfade direkt unter PATH aus, je Zeile einen, in der Reihenfolge der Datei; ohne PATH die obersten. Ein Attribut, unter dem nichts liegt, listet sich selbst auf.
Mit --json: ein Array von Objekten mit &quot;path&quot;, &quot;type&quot; und, wo es einen gibt, &quot;value&quot;; der Typ einer Gruppe ist group.</translation>
    </message>
    <message>
        <source>print names and values as a tree</source>
        <translation>Namen und Werte als Baum ausgeben</translation>
    </message>
    <message>
        <source>Prints PATH and all below it, a line each, two blanks deeper for each level, values after &quot; = &quot;.
With --json: an array of objects with &quot;name&quot;, &quot;type&quot; and, where there are any, &quot;value&quot; and &quot;children&quot;, an array of such objects.</source>
        <translation>Gibt PATH und alles darunter aus, je Zeile eines, für jede Ebene zwei Leerzeichen tiefer, Werte nach &quot; = &quot;.
Mit --json: ein Array von Objekten mit &quot;name&quot;, &quot;type&quot; und, wo es sie gibt, &quot;value&quot; und &quot;children&quot;, einem Array solcher Objekte.</translation>
    </message>
    <message>
        <source>print all paths with their values</source>
        <translation>alle Pfade mit ihren Werten ausgeben</translation>
    </message>
    <message>
        <source>Prints &quot;PATH = VALUE&quot; for each attribute at and below PATH, in the order of the file. VALUE is a word of the shell, in quotes where it needs them, so that it can be given to &quot;set&quot; again, after &quot;--&quot; where it begins with &quot;-&quot;.
With --null: PATH, a line break, and the value as &quot;get&quot; prints it. With --json: an array of objects with &quot;path&quot;, &quot;type&quot; and &quot;value&quot;.</source>
        <translation>Gibt &quot;PATH = VALUE&quot; für jedes Attribut bei und unter PATH aus, in der Reihenfolge der Datei. VALUE ist ein Wort der Shell, in Anführungszeichen, wo es sie braucht, sodass es wieder &quot;set&quot; gegeben werden kann, nach &quot;--&quot;, wenn es mit &quot;-&quot; beginnt.
Mit --null: PATH, ein Zeilenumbruch und der Wert, wie &quot;get&quot; ihn ausgibt. Mit --json: ein Array von Objekten mit &quot;path&quot;, &quot;type&quot; und &quot;value&quot;.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; names no line of a file; give FILE:LINE, or FILE and PATH</source>
        <translation>„%1“ nennt keine Zeile einer Datei; anzugeben ist FILE:LINE oder FILE und PATH</translation>
    </message>
    <message>
        <source>print where in its file a value is, or which value is there</source>
        <translation>ausgeben, wo ein Wert in seiner Datei steht oder welcher Wert dort steht</translation>
    </message>
    <message>
        <source>With FILE and PATH: prints &quot;FILE:LINE:COLUMN&quot;, where the value of the attribute begins; of a group the first value in it. Lines and columns count from 1, columns in characters.
With FILE:LINE:COLUMN or FILE:LINE: prints the path of the attribute whose value is there. Where none is, it is the next one on the line, or else the last one on it; on a line without any, as that of a comment, the next one in the file. The exit code is 1 when there is none.
With --json: an array of an object with &quot;path&quot;, &quot;file&quot;, &quot;line&quot;, &quot;column&quot; and &quot;comment&quot;, which is the lines of comments above the attribute and the one after it on its line.</source>
        <translation>Mit FILE und PATH: gibt &quot;FILE:LINE:COLUMN&quot; aus, wo der Wert des Attributs beginnt, bei einer Gruppe der erste Wert darin. Zeilen und Spalten zählen ab 1, Spalten in Zeichen.
Mit FILE:LINE:COLUMN oder FILE:LINE: gibt den Pfad des Attributs aus, dessen Wert dort steht. Wo keiner steht, ist es der nächste auf der Zeile oder sonst der letzte darauf; auf einer Zeile ohne Wert, etwa der eines Kommentars, der nächste in der Datei. Der Exit-Code ist 1, wenn es keinen gibt.
Mit --json: ein Array aus einem Objekt mit &quot;path&quot;, &quot;file&quot;, &quot;line&quot;, &quot;column&quot; und &quot;comment&quot;, das sind die Kommentarzeilen über dem Attribut und der Kommentar nach ihm auf seiner Zeile.</translation>
    </message>
    <message>
        <source>would be removed</source>
        <translation>würde(n) entfernt</translation>
    </message>
    <message>
        <source>removed</source>
        <translation>entfernt</translation>
    </message>
    <message>
        <source>%1: the path is empty</source>
        <translation>%1: der Pfad ist leer</translation>
    </message>
    <message>
        <source>remove an attribute or a group with all that is in it</source>
        <translation>ein Attribut entfernen oder eine Gruppe mit allem, was darin ist</translation>
    </message>
    <message>
        <source>The entry&apos;s own lines go, and comments only when they are on these or, of a group, between its first line and its last. Those above it stay, and in txt those between its entries, too.
With &quot;*&quot; in PATH, which stands for any run of characters, all that matches is removed, in one write of the file, or nothing. How many there are is said on stderr, where a group counts as one; the exit code is 1 when there is none.</source>
        <translation>Die eigenen Zeilen des Eintrags verschwinden, Kommentare nur, wenn sie auf diesen stehen oder, bei einer Gruppe, zwischen ihrer ersten Zeile und ihrer letzten. Die darüber bleiben, in txt auch die zwischen den Einträgen.
Mit &quot;*&quot; in PATH, das für eine beliebige Folge von Zeichen steht, wird alles entfernt, was dazu passt, in einem einzigen Schreiben der Datei, oder nichts. Wie viele es sind, steht auf stderr, wobei eine Gruppe als eines zählt; der Exit-Code ist 1, wenn es keines gibt.</translation>
    </message>
    <message>
        <source>would be changed</source>
        <translation>würde(n) geändert</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>geändert</translation>
    </message>
    <message>
        <source>%1: 1 value %2</source>
        <translation>%1: 1 Wert %2</translation>
    </message>
    <message>
        <source>%1: %2 values %3</source>
        <translation>%1: %2 Werte %3</translation>
    </message>
    <message>
        <source>TEXT is empty, and would be everywhere</source>
        <translation>TEXT ist leer und stünde überall</translation>
    </message>
    <message>
        <source>no value has &apos;%1&apos;</source>
        <translation>„%1“ steht in keinem Wert</translation>
    </message>
    <message>
        <source>replace a text in values</source>
        <translation>einen Text in Werten ersetzen</translation>
    </message>
    <message>
        <source>Puts NEW in place of TEXT wherever it is in a value that may be read, in the elements of a list as well. Names and comments stay. A value stays of the type that the file says it is of; where the file does not say, its type is what it looks like then. When one of the values cannot become what it would be, no file is written, and the exit code is 3. How many values there are in which file is said on stderr; the exit code is 1 when there is none.
With --regex, &quot;\1&quot; to &quot;\9&quot; in NEW are what the groups of the expression have matched, &quot;\0&quot; is all of it, and &quot;\\&quot; a backslash.</source>
        <translation>Setzt NEW an die Stelle von TEXT, wo immer er in einem lesbaren Wert steht, auch in den Elementen einer Liste. Namen und Kommentare bleiben. Ein Wert behält den Typ, den die Datei nennt; wo sie keinen nennt, ist der Typ dann der, nach dem der Wert aussieht. Kann einer der Werte nicht werden, was er würde, so wird keine Datei geschrieben, und der Exit-Code ist 3. Wie viele Werte es in welcher Datei sind, steht auf stderr; der Exit-Code ist 1, wenn es keinen gibt.
Mit --regex sind &quot;\1&quot; bis &quot;\9&quot; in NEW, wozu die Gruppen des Ausdrucks gepasst haben, &quot;\0&quot; alles davon und &quot;\\&quot; ein umgekehrter Schrägstrich.</translation>
    </message>
    <message>
        <source>only in attributes whose path matches PATTERN, in which &quot;*&quot; stands for any run of characters</source>
        <translation>nur in Attributen, deren Pfad zu PATTERN passt, worin &quot;*&quot; für eine beliebige Folge von Zeichen steht</translation>
    </message>
    <message>
        <source>TEXT is a regular expression</source>
        <translation>TEXT ist ein regulärer Ausdruck</translation>
    </message>
    <message>
        <source>only where TEXT is all of the value, or of the element of a list</source>
        <translation>nur, wo TEXT der ganze Wert ist oder ein ganzes Element einer Liste</translation>
    </message>
    <message>
        <source>the scratch copy failed: %1</source>
        <translation>die Kopie zum Vergleich ist misslungen: %1</translation>
    </message>
    <message>
        <source>test that files survive loading and saving byte for byte</source>
        <translation>prüfen, ob Dateien Laden und Speichern Byte für Byte überstehen</translation>
    </message>
    <message>
        <source>Loads each file, edits some of its values and takes that back, saves a scratch copy and compares the bytes. Prints a line a file: &quot;FILE: same&quot;, &quot;FILE: differs at LINE:COLUMN&quot; or &quot;FILE: refused: REASON&quot;, where the reason begins with LINE:COLUMN when it has a place in the file. The files themselves are only read. The exit code is 1 when one differs, otherwise 4 when one is refused.</source>
        <translation>Lädt jede Datei, ändert einige ihrer Werte und nimmt das zurück, speichert eine Kopie und vergleicht die Bytes. Gibt je Datei eine Zeile aus: &quot;FILE: same&quot;, &quot;FILE: differs at LINE:COLUMN&quot; oder &quot;FILE: refused: REASON&quot;, wobei der Grund mit LINE:COLUMN beginnt, wenn er eine Stelle in der Datei hat. Die Dateien selbst werden nur gelesen. Der Exit-Code ist 1, wenn eine abweicht, sonst 4, wenn eine abgelehnt wird.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is a pattern, and --create needs the path of the attribute</source>
        <translation>„%1“ ist ein Muster, und --create braucht den Pfad des Attributs</translation>
    </message>
    <message>
        <source>would be set</source>
        <translation>würde(n) gesetzt</translation>
    </message>
    <message>
        <source>set</source>
        <translation>gesetzt</translation>
    </message>
    <message>
        <source>; &apos;vantry create&apos; or --create adds it</source>
        <translation>; „vantry create“ oder --create legt es an</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is a group without a value of its own</source>
        <translation>%1: „%2“ ist eine Gruppe ohne eigenen Wert</translation>
    </message>
    <message>
        <source>change the value of an attribute</source>
        <translation>den Wert eines Attributs ändern</translation>
    </message>
    <message>
        <source>Where the file says of which type the attribute is, as json does, by quotes or by a type tag, VALUE is read as that type, in the form in which &quot;get&quot; prints it, and the type stays. Elsewhere VALUE is written as it is, and its type is what it looks like: true and false, numbers, or else a text; so it is for a null, which the word null leaves as it is. With --type, the attribute gets that type, if the file can hold it. Only the bytes of the value change in the file, and those of its type tag with the type. When another program has changed other attributes since the file was read, both changes are in it; when it has changed the same one, nothing is written and the exit code is 3. An attribute that is not there is not created, unless --create is given; then PATH, VALUE and T are those of &quot;create&quot;.
With &quot;*&quot; in PATH, which stands for any run of characters, all attributes that match are set, in one write of the file, or none of them. How many there are is said on stderr; the exit code is 1 when there is none.</source>
        <translation>Wo die Datei sagt, von welchem Typ das Attribut ist, wie json es tut, durch Anführungszeichen oder eine Typangabe, wird VALUE als dieser Typ gelesen, in der Form, in der &quot;get&quot; ihn ausgibt, und der Typ bleibt. Sonst wird VALUE geschrieben, wie er ist, und sein Typ ist der, nach dem er aussieht: true und false, Zahlen oder sonst ein Text; so auch bei einem Null-Wert, den das Wort null lässt, wie er ist. Mit --type erhält das Attribut diesen Typ, wenn die Datei ihn fassen kann. Nur die Bytes des Werts ändern sich in der Datei, und mit dem Typ die seiner Typangabe. Hat ein anderes Programm seit dem Lesen der Datei andere Attribute geändert, so sind beide Änderungen darin; hat es dasselbe geändert, wird nichts geschrieben, und der Exit-Code ist 3. Ein Attribut, das es nicht gibt, wird nicht angelegt, außer mit --create; dann sind PATH, VALUE und T die von &quot;create&quot;.
Mit &quot;*&quot; in PATH, das für eine beliebige Folge von Zeichen steht, werden alle passenden Attribute gesetzt, in einem einzigen Schreiben der Datei, oder keines. Wie viele es sind, steht auf stderr; der Exit-Code ist 1, wenn es keines gibt.</translation>
    </message>
    <message>
        <source>the type of VALUE, and of the attribute from then on</source>
        <translation>der Typ von VALUE und fortan der des Attributs</translation>
    </message>
    <message>
        <source>create the attribute when it is not there</source>
        <translation>das Attribut anlegen, wenn es fehlt</translation>
    </message>
    <message>
        <source>%1: what was moved is in %2, and still here, too</source>
        <translation>%1: was verschoben wurde, ist in %2 und auch noch hier</translation>
    </message>
    <message>
        <source>copy an attribute or a group, also into a file of another format</source>
        <translation>ein Attribut oder eine Gruppe kopieren, auch in eine Datei eines anderen Formats</translation>
    </message>
    <message>
        <source>move or rename an attribute or a group, also into another file</source>
        <translation>ein Attribut oder eine Gruppe verschieben oder umbenennen, auch in eine andere Datei</translation>
    </message>
    <message>
        <source>--rule needs PATH=NAME, not &apos;%1&apos;</source>
        <translation>--rule braucht PATH=NAME, nicht „%1“</translation>
    </message>
    <message>
        <source>validate needs a --rule PATH=NAME</source>
        <translation>validate braucht ein --rule PATH=NAME</translation>
    </message>
    <message>
        <source>%1: attribute &apos;%2&apos; not found</source>
        <translation>%1: Attribut „%2“ nicht gefunden</translation>
    </message>
    <message>
        <source>check values against rules</source>
        <translation>Werte gegen Regeln prüfen</translation>
    </message>
    <message>
        <source>In PATH, &quot;*&quot; stands for any run of characters. NAME is one of %1, where the arguments are examples. Each value that breaks a rule is reported on stderr with its place in the file; the exit code is 3 then, and 1 when a rule has no attribute to check. An expression that takes too many steps for a value is given up, which is reported, and the exit code is 2 when no value breaks a rule.
With --null these reports are on stdout. With --json they are an array of objects with &quot;path&quot;, &quot;rule&quot;, &quot;value&quot;, &quot;reason&quot;, &quot;line&quot; and &quot;column&quot;.</source>
        <translation>In PATH steht &quot;*&quot; für eine beliebige Folge von Zeichen. NAME ist einer von %1, wobei die Argumente Beispiele sind. Jeder Wert, der eine Regel bricht, wird mit seiner Stelle in der Datei auf stderr gemeldet; der Exit-Code ist dann 3, und 1, wenn es für eine Regel kein Attribut gibt. Ein Ausdruck, der für einen Wert zu viele Schritte braucht, wird aufgegeben und das gemeldet, und der Exit-Code ist 2, wenn kein Wert eine Regel bricht.
Mit --null stehen diese Meldungen auf stdout. Mit --json sind sie ein Array von Objekten mit &quot;path&quot;, &quot;rule&quot;, &quot;value&quot;, &quot;reason&quot;, &quot;line&quot; und &quot;column&quot;.</translation>
    </message>
    <message>
        <source>the values of PATH must keep the rule NAME; may be repeated</source>
        <translation>die Werte von PATH müssen die Regel NAME einhalten; mehrfach möglich</translation>
    </message>
    <message>
        <source>%1: it cannot be watched: %2</source>
        <translation>%1: kann nicht beobachtet werden: %2</translation>
    </message>
    <message>
        <source>%1: only files can be watched</source>
        <translation>%1: nur Dateien können beobachtet werden</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a path or pattern: names joined by &quot;.&quot;, none of them empty</source>
        <translation>„%1“ ist kein Pfad und kein Muster: Namen, durch &quot;.&quot; verbunden, keiner davon leer</translation>
    </message>
    <message>
        <source>print changes as they happen, until interrupted</source>
        <translation>Änderungen ausgeben, sobald sie geschehen, bis zum Abbruch</translation>
    </message>
    <message>
        <source>Prints a line for each attribute that another program changes in the file: &quot;changed PATH = VALUE&quot;, &quot;created PATH = VALUE&quot; or &quot;removed PATH&quot;. In PATTERN &quot;*&quot; stands for any run of characters; without it all attributes are watched. Ctrl+C ends it with exit code 0.
With --json: an object a line, with &quot;change&quot; (changed, created or removed), &quot;path&quot; and, unless it is removed, &quot;type&quot; and &quot;value&quot;; &quot;origin&quot; is &quot;fleet&quot; for what comes from a store.</source>
        <translation>Gibt für jedes Attribut, das ein anderes Programm in der Datei ändert, eine Zeile aus: &quot;changed PATH = VALUE&quot;, &quot;created PATH = VALUE&quot; oder &quot;removed PATH&quot;. In PATTERN steht &quot;*&quot; für eine beliebige Folge von Zeichen; ohne PATTERN werden alle Attribute beobachtet. Strg+C beendet es mit dem Exit-Code 0.
Mit --json: je Zeile ein Objekt mit &quot;change&quot; (changed, created oder removed), &quot;path&quot; und, außer nach removed, &quot;type&quot; und &quot;value&quot;; &quot;origin&quot; ist &quot;fleet&quot; für alles, was aus einem Speicherdienst kommt.</translation>
    </message>
    <message>
        <source>of a folder, only files whose names match, as &apos;*.conf&apos;; may be repeated</source>
        <translation>von einem Ordner nur Dateien, deren Namen passen, wie &apos;*.conf&apos;; mehrfach möglich</translation>
    </message>
    <message>
        <source>of a folder, no files and folders whose names match, or with a / their paths below it; may be repeated</source>
        <translation>von einem Ordner keine Dateien und Ordner, deren Namen passen, oder mit / deren Pfade darunter; mehrfach möglich</translation>
    </message>
    <message>
        <source>let NAME stand for FILE, read-only, write-only or (as without) read-write; may be repeated</source>
        <translation>NAME steht für FILE, nur zum Lesen, nur zum Schreiben oder (wie ohne Angabe) für beides; mehrfach möglich</translation>
    </message>
    <message>
        <source>the format of FILE, when its name does not decide it</source>
        <translation>das Format von FILE, wenn der Name es nicht bestimmt</translation>
    </message>
    <message>
        <source>read and write files of up to so many MiB instead of 256</source>
        <translation>Dateien von bis zu so vielen MiB lesen und schreiben statt 256</translation>
    </message>
    <message>
        <source>show help and messages in English (en) or German (de)</source>
        <translation>Hilfe und Meldungen in Englisch (en) oder Deutsch (de) zeigen</translation>
    </message>
    <message>
        <source>show help</source>
        <translation>Hilfe zeigen</translation>
    </message>
    <message>
        <source>show the version</source>
        <translation>die Version zeigen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a condition: value, name, path or type, then one of = != &lt; &lt;= &gt; &gt;= ~ !~, then a text</source>
        <translation>„%1“ ist keine Bedingung: value, name, path oder type, dann eines von = != &lt; &lt;= &gt; &gt;= ~ !~, dann ein Text</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a regular expression: %2</source>
        <translation>„%1“ ist kein regulärer Ausdruck: %2</translation>
    </message>
    <message>
        <source>; give its format</source>
        <translation>; ihr Format ist anzugeben</translation>
    </message>
    <message>
        <source>standard input cannot hold both the file and VALUE</source>
        <translation>die Standardeingabe kann nicht zugleich die Datei und VALUE enthalten</translation>
    </message>
    <message>
        <source>it is not UTF-8</source>
        <translation>das ist kein UTF-8</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a path: names joined by &quot;.&quot;, none of them empty, and none with &quot;*&quot; in it</source>
        <translation>„%1“ ist kein Pfad: Namen, durch &quot;.&quot; verbunden, keiner davon leer und keiner mit &quot;*&quot; darin</translation>
    </message>
    <message>
        <source>it is write-only</source>
        <translation>es darf nur geschrieben werden</translation>
    </message>
    <message>
        <source>%1: nothing there matches &apos;%2&apos;</source>
        <translation>%1: nichts darin passt zu „%2“</translation>
    </message>
    <message>
        <source>%1: 1 match of &apos;%2&apos; %3</source>
        <translation>%1: 1 Treffer von „%2“ %3</translation>
    </message>
    <message>
        <source>%1: %2 matches of &apos;%3&apos; %4</source>
        <translation>%1: %2 Treffer von „%3“ %4</translation>
    </message>
    <message>
        <source>unknown option %1%2</source>
        <translation>unbekannte Option %1%2</translation>
    </message>
    <message>
        <source>; what is not an option comes after --</source>
        <translation>; was keine Option ist, kommt nach --</translation>
    </message>
    <message>
        <source>%1 takes no value</source>
        <translation>%1 hat keinen Wert</translation>
    </message>
    <message>
        <source>%1 needs its %2</source>
        <translation>%1 braucht %2</translation>
    </message>
    <message>
        <source>%1 is given twice</source>
        <translation>%1 ist zweimal angegeben</translation>
    </message>
    <message>
        <source>; &apos;vantry help&apos; lists them</source>
        <translation>; „vantry help“ listet sie auf</translation>
    </message>
    <message>
        <source>%1: %2; usage: %3</source>
        <translation>%1: %2; Aufruf: %3</translation>
    </message>
    <message>
        <source> or </source>
        <translation> oder </translation>
    </message>
    <message>
        <source>&apos;%1&apos; is one word too many</source>
        <translation>„%1“ ist ein Wort zu viel</translation>
    </message>
    <message>
        <source>%1 is missing</source>
        <translation>%1 fehlt</translation>
    </message>
    <message>
        <source>%1 and %2 are missing</source>
        <translation>%1 und %2 fehlen</translation>
    </message>
    <message>
        <source>the output cannot be written: %1</source>
        <translation>die Ausgabe kann nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>; did you mean &apos;%1&apos;?</source>
        <translation>; ist „%1“ gemeint?</translation>
    </message>
    <message>
        <source>; &apos;vantry find&apos; prints what a pattern matches</source>
        <translation>; „vantry find“ gibt aus, was zu einem Muster passt</translation>
    </message>
    <message>
        <source>argument %1 is not UTF-8</source>
        <translation>Argument %1 ist kein UTF-8</translation>
    </message>
    <message>
        <source>--max-size needs a number of MiB from 1 to %1, not &apos;%2&apos;</source>
        <translation>--max-size braucht eine Anzahl MiB von 1 bis %1, nicht „%2“</translation>
    </message>
    <message>
        <source>a command is missing; &apos;vantry help&apos; lists them</source>
        <translation>ein Befehl fehlt; „vantry help“ listet sie auf</translation>
    </message>
    <message>
        <source>unknown language &apos;%1&apos;; valid languages: %2</source>
        <translation>unbekannte Sprache „%1“; möglich sind: %2</translation>
    </message>
    <message>
        <source>there is not enough memory for this</source>
        <translation>dafür reicht der Speicher nicht</translation>
    </message>
    <message>
        <source>take capital letters and small ones as the same</source>
        <translation>Groß- und Kleinbuchstaben gleich behandeln</translation>
    </message>
    <message>
        <source>only attributes of the type T; when repeated, of any of them</source>
        <translation>nur Attribute des Typs T; mehrfach angegeben, eines beliebigen davon</translation>
    </message>
    <message>
        <source>unknown format &apos;%1&apos;; valid formats: %2</source>
        <translation>unbekanntes Format „%1“; möglich sind: %2</translation>
    </message>
    <message>
        <source>--backend needs NAME=FILE, not &apos;%1&apos;</source>
        <translation>--backend braucht NAME=FILE, nicht „%1“</translation>
    </message>
    <message>
        <source>unknown access &apos;%1&apos; of the backend &apos;%2&apos;; valid are ro, wo and rw; after the name of a file that ends so add :rw</source>
        <translation>unbekannter Zugriff „%1“ des Backends „%2“; möglich sind ro, wo und rw; an den Namen einer Datei, der so endet, ist :rw anzuhängen</translation>
    </message>
    <message>
        <source>a backend cannot have the name &apos;%1&apos;</source>
        <translation>ein Backend kann nicht „%1“ heißen</translation>
    </message>
    <message>
        <source>the backend &apos;%1&apos; is declared twice</source>
        <translation>das Backend „%1“ ist zweimal angegeben</translation>
    </message>
    <message>
        <source>%1: its name does not decide its format; give it with %2</source>
        <translation>%1: der Name bestimmt das Format nicht; es ist mit %2 anzugeben</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>keine solche Datei</translation>
    </message>
    <message>
        <source>it is a folder, not a file</source>
        <translation>das ist ein Ordner, keine Datei</translation>
    </message>
    <message>
        <source>%1; give its format with %2</source>
        <translation>%1; das Format ist mit %2 anzugeben</translation>
    </message>
    <message>
        <source>it cannot be copied: %1</source>
        <translation>das Kopieren misslang: %1</translation>
    </message>
    <message>
        <source>%1: it was removed just now</source>
        <translation>%1: die Datei wurde soeben entfernt</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; not found%3</source>
        <translation>%1: „%2“ nicht gefunden%3</translation>
    </message>
    <message>
        <source>standard input</source>
        <translation>Standardeingabe</translation>
    </message>
    <message>
        <source>how it begins does not tell its format; give it with --format</source>
        <translation>der Anfang verrät das Format nicht; es ist mit --format anzugeben</translation>
    </message>
    <message>
        <source>unknown type &apos;%1&apos;%2; valid types: %3</source>
        <translation>unbekannter Typ „%1“%2; möglich sind: %3</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>FILE is the name of a file, or that of a backend which --backend declares; a file of that very name is given as ./NAME. A new file is created by the commands that add to it.</source>
        <translation>FILE ist der Name einer Datei oder der eines Backends, das --backend angibt; eine Datei mit eben diesem Namen wird als ./NAME angegeben. Eine neue Datei legen die Befehle an, die etwas hinzufügen.</translation>
    </message>
    <message>
        <source>It may also be a folder, for the commands that need no whole text: all files below it whose format is recognised, each at the path of its name, as in &quot;net%2Ed.a%2Ejson.port&quot;. Links are not followed; a file that cannot be read is reported, and left out.</source>
        <translation>Es kann auch ein Ordner sein, bei den Befehlen, die keinen ganzen Text brauchen: alle Dateien darunter, deren Format erkannt wird, jede unter dem Pfad ihres Namens, wie in &quot;net%2Ed.a%2Ejson.port&quot;. Verknüpfungen wird nicht gefolgt; eine Datei, die nicht gelesen werden kann, wird gemeldet und ausgelassen.</translation>
    </message>
    <message>
        <source>&quot;-&quot; is standard input, the format of which --format says, or else how it begins. What is edited in it goes to standard output as a whole, and nothing else does. As the file that &quot;convert&quot; and &quot;export&quot; write, &quot;-&quot; is standard output.</source>
        <translation>&quot;-&quot; ist die Standardeingabe, deren Format --format nennt oder sonst ihr Anfang. Was darin geändert wird, geht als Ganzes auf die Standardausgabe und sonst nichts. Als Datei, die &quot;convert&quot; und &quot;export&quot; schreiben, ist &quot;-&quot; die Standardausgabe.</translation>
    </message>
    <message>
        <source>The file&apos;s name decides the format: .json and .jsonc are json; .ini, .conf, .cfg, .desktop, .service and the like ini; .xml, .svg, .ui, .ts, .pom and the like xml; .txt and .properties txt; .toml toml; .yaml and .yml yaml. A .conf that begins as json or xml does, or is yaml or toml beyond doubt, is that, and so is a file whose name says nothing; one that looks like ini is ini, and anything else is refused. --format has the last word.</source>
        <translation>Der Name der Datei bestimmt das Format: .json und .jsonc sind json; .ini, .conf, .cfg, .desktop, .service und dergleichen ini; .xml, .svg, .ui, .ts, .pom und dergleichen xml; .txt und .properties txt; .toml toml; .yaml und .yml yaml. Eine .conf, die wie json oder xml beginnt oder ohne Zweifel yaml oder toml ist, ist das auch, ebenso eine Datei, deren Name nichts sagt; eine, die wie ini aussieht, ist ini, und alles andere wird abgelehnt. --format hat das letzte Wort.</translation>
    </message>
    <message>
        <source>Files of ini and txt are read as their own programs read them, which their names, places and first lines tell: .gitconfig as git does, .service as systemd does. --format names such a dialect, too, as in ini:git.</source>
        <translation>Dateien von ini und txt werden gelesen, wie ihre eigenen Programme sie lesen, was ihre Namen, Orte und ersten Zeilen verraten: .gitconfig wie git, .service wie systemd. --format nennt auch einen solchen Dialekt, wie in ini:git.</translation>
    </message>
    <message>
        <source>Files are replaced whole, at one moment, with their owner, mode and symbolic links kept. What another program has changed meanwhile is kept, too, or the command ends with exit code 3.</source>
        <translation>Dateien werden als Ganzes ersetzt, in einem Augenblick, und behalten Besitzer, Rechte und symbolische Verknüpfungen. Was ein anderes Programm inzwischen geändert hat, bleibt ebenfalls, oder der Befehl endet mit dem Exit-Code 3.</translation>
    </message>
    <message>
        <source>A file of more than 256 MiB is refused, so that none takes all memory. --max-size, or the variable VANTRY_MAX_FILE_SIZE of the environment, sets another limit, up to 2047 MiB.</source>
        <translation>Eine Datei von mehr als 256 MiB wird abgelehnt, damit keine den ganzen Speicher belegt. --max-size oder die Umgebungsvariable VANTRY_MAX_FILE_SIZE setzt eine andere Grenze, bis zu 2047 MiB.</translation>
    </message>
    <message>
        <source>Paths</source>
        <translation>Pfade</translation>
    </message>
    <message>
        <source>A path is the names that lead to an attribute, joined by &quot;.&quot;, as in server.port; &quot;&quot; or &quot;.&quot; is the whole file. In a name &quot;.&quot;, &quot;*&quot;, &quot;%&quot; and &quot;;&quot; are written as %2E, %2A, %25 and %3B. The elements of a json array are 0, 1, 2 ...; the second of several entries of one name is name[2]; @name is an attribute of xml, #text and #value are the text or value of an entry that has others below it.</source>
        <translation>Ein Pfad sind die Namen, die zu einem Attribut führen, durch &quot;.&quot; verbunden, wie in server.port; &quot;&quot; oder &quot;.&quot; ist die ganze Datei. In einem Namen werden &quot;.&quot;, &quot;*&quot;, &quot;%&quot; und &quot;;&quot; als %2E, %2A, %25 und %3B geschrieben. Die Elemente eines Arrays von json sind 0, 1, 2 ...; der zweite von mehreren Einträgen eines Namens ist name[2]; @name ist ein Attribut von xml, #text und #value sind der Text oder Wert eines Eintrags, unter dem weitere liegen.</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgabe</translation>
    </message>
    <message>
        <source>Results are on stdout, in UTF-8, paths relative to the file&apos;s root. Messages are on stderr, a line each: &quot;vantry: FILE:LINE:COLUMN: REASON&quot;, as far as there is a place.</source>
        <translation>Ergebnisse stehen auf stdout, in UTF-8, Pfade relativ zur Wurzel der Datei. Meldungen stehen auf stderr, je eine Zeile: &quot;vantry: FILE:LINE:COLUMN: REASON&quot;, soweit es eine Stelle gibt.</translation>
    </message>
    <message>
        <source>Where a value shares its line with a path, a backslash is written as &quot;\\&quot;. In messages and in output by lines a line break is written as &quot;\n&quot;, another control character as &quot;\x&quot; and two hex digits; control characters beyond ASCII, overrides of writing direction and characters without width as &quot;\u&quot; and four, or &quot;\U&quot; and eight hex digits. &quot;get&quot; and diffs are printed as they are, and with these escapes only on a terminal.</source>
        <translation>Wo ein Wert sich die Zeile mit einem Pfad teilt, wird ein umgekehrter Schrägstrich als &quot;\\&quot; geschrieben. In Meldungen und in zeilenweiser Ausgabe wird ein Zeilenumbruch als &quot;\n&quot; geschrieben, ein anderes Steuerzeichen als &quot;\x&quot; und zwei Hexadezimalziffern, Steuerzeichen jenseits von ASCII, Umkehrungen der Schreibrichtung und Zeichen ohne Breite als &quot;\u&quot; und vier oder &quot;\U&quot; und acht Hexadezimalziffern. &quot;get&quot; und Diffs werden ausgegeben, wie sie sind, und nur auf einem Terminal mit diesen Ersetzungen.</translation>
    </message>
    <message>
        <source>For other programs, --json prints json, and --null ends each result with NUL, as xargs -0 reads it; the help of a command says how its results look then.</source>
        <translation>Für andere Programme gibt --json json aus, und --null beendet jedes Ergebnis mit NUL, wie xargs -0 es liest; die Hilfe eines Befehls sagt, wie seine Ergebnisse dann aussehen.</translation>
    </message>
    <message>
        <source>Words after &quot;--&quot; are not options: vantry set app.ini offset -- --5. A negative number needs none.</source>
        <translation>Wörter nach &quot;--&quot; sind keine Optionen: vantry set app.ini offset -- --5. Eine negative Zahl braucht das nicht.</translation>
    </message>
    <message>
        <source>Exit codes</source>
        <translation>Exit-Codes</translation>
    </message>
    <message>
        <source>0: done.</source>
        <translation>0: erledigt.</translation>
    </message>
    <message>
        <source>1: not found, or there are differences.</source>
        <translation>1: nicht gefunden, oder es gibt Unterschiede.</translation>
    </message>
    <message>
        <source>2: the command line is wrong.</source>
        <translation>2: die Befehlszeile ist falsch.</translation>
    </message>
    <message>
        <source>3: refused for its type, a rule, access, or a conflict with another program.</source>
        <translation>3: abgelehnt wegen Typ, Regel, Zugriff oder eines Konflikts mit einem anderen Programm.</translation>
    </message>
    <message>
        <source>4: a file cannot be read, parsed or written.</source>
        <translation>4: eine Datei kann nicht gelesen, verstanden oder geschrieben werden.</translation>
    </message>
    <message>
        <source>Reads, edits, compares and converts configuration files (%1) by attribute.</source>
        <translation>Liest, ändert, vergleicht und verwandelt Konfigurationsdateien (%1) nach Attributen.</translation>
    </message>
    <message>
        <source>Usage: </source>
        <translation>Aufruf: </translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Options of all commands</source>
        <translation>Optionen aller Befehle</translation>
    </message>
    <message>
        <source>Examples</source>
        <translation>Beispiele</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>&apos;vantry COMMAND --help&apos; tells more of a command.</source>
        <translation>„vantry COMMAND --help“ sagt mehr zu einem Befehl.</translation>
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
        <source>read, edit, compare and convert configuration files</source>
        <translation>Konfigurationsdateien lesen, ändern, vergleichen und verwandeln</translation>
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
        <source>An edit of one value changes the bytes of that value; everything else in the file stays as its author left it.</source>
        <translation>Eine Änderung eines Werts ändert die Bytes dieses Werts; alles andere in der Datei bleibt, wie sein Autor es hinterlassen hat.</translation>
    </message>
    <message>
        <source>See also</source>
        <translation>Siehe auch</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos;: %3</source>
        <translation>%1: „%2“: %3</translation>
    </message>
    <message>
        <source>%1%2: &apos;%3&apos;: %4</source>
        <translation>%1%2: „%3“: %4</translation>
    </message>
    <message>
        <source>it is a store, not a file</source>
        <translation>das ist ein Store, keine Datei</translation>
    </message>
    <message>
        <source>a store is written at once, and has no --dry-run</source>
        <translation>ein Store wird sofort geschrieben und hat kein --dry-run</translation>
    </message>
    <message>
        <source>Or it is a part of a distributed store, for the same commands and for &quot;watch&quot;: etcd://HOST:PORT/NAME, or etcds:// with TLS, as docs/fleet.md tells. What is set there is written at once, and others who have it open see it.</source>
        <translation>Oder es ist ein Teil eines verteilten Stores, bei denselben Befehlen und bei &quot;watch&quot;: etcd://HOST:PORT/NAME oder etcds:// mit TLS, wie docs/fleet.md es beschreibt. Was dort gesetzt wird, wird sofort geschrieben, und andere, die ihn offen haben, sehen es.</translation>
    </message>
    <message>
        <source>The second FILE is written anew, in the format that its name says. Within one format it is as it was written; otherwise comments come along as far as the format has any, and types do, in type tags where the format has no form of its own for them. An array becomes a group of 0, 1, 2 ..., in xml of the elements &lt;_x0030_&gt;, &lt;_x0031_&gt; ...; a group of such names becomes an array of json, and an array of texts a list everywhere. Names that the format has no form for are written in codes, and the file says so: ini and txt in the line &quot;# @names encoded&quot;, json in &quot;$names&quot;, xml in &lt;?vantry names=&quot;encoded&quot;?&gt;. Converted back, such a file is what it was. What the format cannot hold is refused, and nothing is written.</source>
        <translation>Die zweite FILE wird neu geschrieben, in dem Format, das ihr Name angibt. Innerhalb eines Formats bleibt die Schreibweise; sonst kommen Kommentare mit, soweit das Format welche hat, und Typen, in Typangaben, wo das Format keine eigene Form für sie hat. Ein Array wird zu einer Gruppe aus 0, 1, 2 ..., in xml aus den Elementen &lt;_x0030_&gt;, &lt;_x0031_&gt; ...; eine Gruppe solcher Namen wird ein Array von json und ein Array von Texten überall eine Liste. Namen, für die das Format keine Form hat, werden verschlüsselt geschrieben, und die Datei sagt das: ini und txt in der Zeile &quot;# @names encoded&quot;, json in &quot;$names&quot;, xml in &lt;?vantry names=&quot;encoded&quot;?&gt;. Zurückverwandelt ist eine solche Datei, was sie war. Was das Format nicht fassen kann, wird abgelehnt, und nichts wird geschrieben.</translation>
    </message>
    <message>
        <source>OUT is written anew, in the format that its name says, within one format with its spelling, and with comments as far as the format has any; the paths in it are relative to PATH. &quot;&quot; is the path of the whole file.</source>
        <translation>OUT wird neu geschrieben, in dem Format, das der Name angibt, innerhalb eines Formats mit seiner Schreibweise, und mit Kommentaren, soweit das Format welche hat; die Pfade darin sind relativ zu PATH. &quot;&quot; ist der Pfad der ganzen Datei.</translation>
    </message>
    <message>
        <source>JSON is a file of json, or of any other format that its name tells. Its attributes are created below PATH (&quot;&quot; is the whole file); those that are there already are written. Groups are merged by name; an array or list replaces what is in its place, whole. Comments come along with what is new. All of them or none.</source>
        <translation>JSON ist eine Datei von json oder einem anderen Format, das ihr Name angibt. Ihre Attribute werden unter PATH angelegt (&quot;&quot; ist die ganze Datei); schon vorhandene werden geschrieben. Gruppen werden nach Namen zusammengeführt; ein Array oder eine Liste ersetzt als Ganzes, was an der Stelle steht. Kommentare kommen mit dem, was neu ist. Alle oder keines.</translation>
    </message>
    <message>
        <source>The second PATH is that of the copy. What is there already is not overwritten, and what the format cannot hold is refused; nothing is written then. The second FILE is created when it is not there. Within one format the copy is written as the original is, with the comments in it, right above it and after it on its line; otherwise names and values are copied, and comments as far as the format has any.</source>
        <translation>Der zweite PATH ist der der Kopie. Was dort schon ist, wird nicht überschrieben, und was das Format nicht fassen kann, wird abgelehnt; dann wird nichts geschrieben. Die zweite FILE wird angelegt, wenn sie fehlt. Innerhalb eines Formats wird die Kopie geschrieben wie das Original, mit den Kommentaren darin, direkt darüber und danach auf seiner Zeile; sonst werden Namen und Werte kopiert, und Kommentare, soweit das Format welche hat.</translation>
    </message>
    <message>
        <source>The second PATH is the new one. What is there already is not overwritten, and what the format cannot hold is refused; nothing is written then. Of two files, the second is written first. A new name in the same group changes only the name in the file. Elsewhere, within one format, it is written as it was, and the comments in it, right above it and after it on its line go along. Into another format names and values go with the comments; where that has no place for one of them, it is refused.</source>
        <translation>Der zweite PATH ist der neue. Was dort schon ist, wird nicht überschrieben, und was das Format nicht fassen kann, wird abgelehnt; dann wird nichts geschrieben. Von zwei Dateien wird die zweite zuerst geschrieben. Ein neuer Name in derselben Gruppe ändert nur den Namen in der Datei. Anderswo wird es innerhalb eines Formats geschrieben, wie es war, und die Kommentare darin, direkt darüber und danach auf seiner Zeile gehen mit. In ein anderes Format gehen Namen und Werte mit den Kommentaren; wo dort für einen davon kein Platz ist, wird es abgelehnt.</translation>
    </message>
    <message>
        <source>%1: a comment is left out, for which it has no place</source>
        <translation>%1: ein Kommentar fehlt darin, da für ihn kein Platz ist</translation>
    </message>
    <message>
        <source>%1: %2 comments are left out, for which it has no place</source>
        <translation>%1: %2 Kommentare fehlen darin, da für sie kein Platz ist</translation>
    </message>
    <message>
        <source>%1: it is a store, not a file; &apos;vantry import&apos; writes into it</source>
        <translation>%1: das ist ein Store, keine Datei; &apos;vantry import&apos; schreibt hinein</translation>
    </message>
    <message>
        <source>%1: tags are left out, for which it has no form</source>
        <translation>%1: Tags fehlen darin, da es für sie keine Form hat</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos;: &apos;%3&apos; was written as the number %4; with --type text, it stays as it is</source>
        <translation>%1: &apos;%2&apos;: &apos;%3&apos; wurde als die Zahl %4 geschrieben; mit --type text bleibt es, wie es ist</translation>
    </message>
</context>
</TS>
