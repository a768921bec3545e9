<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>Twinleaf</name>
    <message>
        <source> Copy</source>
        <translation> Kopie</translation>
    </message>
    <message>
        <source>%@ (default)</source>
        <translation>%@ (Standard)</translation>
    </message>
    <message>
        <source>%@ of %@</source>
        <translation>%@ von %@</translation>
    </message>
    <message>
        <source>%@ per second</source>
        <translation>%@ pro Sekunde</translation>
    </message>
    <message>
        <source>%i item(s)</source>
        <translation>%i Objekt(e)</translation>
    </message>
    <message>
        <source>Always open files of the type '%@' with '%@'?</source>
        <translation>Sollen Dateien der Art „%@“ immer mit „%@“ geöffnet werden?</translation>
    </message>
    <message>
        <source>Always open with</source>
        <translation>Immer öffnen mit</translation>
    </message>
    <message>
        <source>Application cannot open given file!</source>
        <translation>Programm kann die angegebene Datei nicht öffnen!</translation>
    </message>
    <message>
        <source>Cannot create file!</source>
        <translation>Die Datei kann nicht angelegt werden!</translation>
    </message>
    <message>
        <source>Cannot launch application!</source>
        <translation>Programm kann nicht gestartet werden!</translation>
    </message>
    <message>
        <source>Are you sure that you want to end the process '%@'?</source>
        <translation>Soll der Prozess „%@“ wirklich beendet werden?</translation>
    </message>
    <message>
        <source>Cannot open a terminal in this folder!</source>
        <translation>In diesem Ordner kann kein Terminal geöffnet werden!</translation>
    </message>
    <message>
        <source>Items of more than %i folders cannot be taken at once!</source>
        <translation>Objekte aus mehr als %i Ordnern können nicht auf einmal übernommen werden!</translation>
    </message>
    <message>
        <source>Please input new file name:</source>
        <translation>Bitte den Namen der neuen Datei eingeben:</translation>
    </message>
    <message>
        <source>Reading the clipboard...</source>
        <translation>Die Zwischenablage wird gelesen …</translation>
    </message>
    <message>
        <source>The default application cannot be set!</source>
        <translation>Das Standardprogramm kann nicht festgelegt werden!</translation>
    </message>
    <message>
        <source>The program that holds the clipboard does not answer.</source>
        <translation>Das Programm, dem die Zwischenablage gehört, antwortet nicht.</translation>
    </message>
    <message>
        <source>There are no files on the clipboard.</source>
        <translation>In der Zwischenablage sind keine Dateien.</translation>
    </message>
    <message>
        <source>Waiting for the administrator's password...</source>
        <translation>Warten auf das Passwort des Administrators …</translation>
    </message>
    <message>
        <source>Changing...</source>
        <translation>Wird geändert …</translation>
    </message>
    <message>
        <source>Process %i:</source>
        <translation>Prozess %i:</translation>
    </message>
    <message>
        <source>Cannot read bundle OS type of launch application!</source>
        <translation>Der Dokumenttyp des Startprogramms kann nicht gelesen werden!</translation>
    </message>
    <message>
        <source>Cannot read bundle signature of launch application!</source>
        <translation>Die Signatur des Startprogramms kann nicht gelesen werden!</translation>
    </message>
    <message>
        <source>No Access</source>
        <translation>Kein Zugriff</translation>
    </message>
    <message>
        <source>Execute only</source>
        <translation>Nur Ausführen</translation>
    </message>
    <message>
        <source>What lies on no disk of this computer cannot be pasted:</source>
        <translation>Was auf keinem Laufwerk dieses Computers liegt, kann nicht eingefügt werden:</translation>
    </message>
    <message>
        <source>Another disk is at its old place, or none.</source>
        <translation>An seinem früheren Ort ist ein anderes Laufwerk oder keines.</translation>
    </message>
    <message>
        <source>What was cut is being moved already.</source>
        <translation>Das Ausgeschnittene wird bereits bewegt.</translation>
    </message>
    <message>
        <source>What was cut is in this folder already.</source>
        <translation>Das Ausgeschnittene liegt bereits in diesem Ordner.</translation>
    </message>
    <message>
        <source>Write only</source>
        <translation>Nur Schreiben</translation>
    </message>
    <message>
        <source>Write &amp; Execute</source>
        <translation>Schreiben &amp; Ausführen</translation>
    </message>
    <message>
        <source>Read only</source>
        <translation>Nur Lesen</translation>
    </message>
    <message>
        <source>Read &amp; Execute</source>
        <translation>Lesen &amp; Ausführen</translation>
    </message>
    <message>
        <source>Read &amp; Write</source>
        <translation>Lesen &amp; Schreiben</translation>
    </message>
    <message>
        <source>Read &amp; Write &amp; Execute</source>
        <translation>Lesen, Schreiben &amp; Ausführen</translation>
    </message>
    <message>
        <source>Cannot launch installer or package!</source>
        <translation>Installationsprogramm oder Paket kann nicht gestartet werden!</translation>
    </message>
    <message>
        <source>about %i minute(s) left</source>
        <translation>noch etwa %i Minute(n)</translation>
    </message>
    <message>
        <source>about %i second(s) left</source>
        <translation>noch etwa %i Sekunde(n)</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Programme</translation>
    </message>
    <message>
        <source>Are you sure that you want to copy the item(s)?</source>
        <translation>Möchten Sie das Objekt (die Objekte) wirklich kopieren?</translation>
    </message>
    <message>
        <source>Are you sure that you want to create an alias from this item(s)?</source>
        <translation>Möchten Sie von diesem Objekt (diesen Objekten) wirklich einen Alias anlegen?</translation>
    </message>
    <message>
        <source>Are you sure that you want to move the item(s)?</source>
        <translation>Möchten Sie das Objekt (die Objekte) wirklich bewegen?</translation>
    </message>
    <message>
        <source>Are you sure that you want to move the selected %i item(s) to trash?</source>
        <translation>%i ausgewählte(s) Objekt(e) wirklich in den Papierkorb legen?</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Fett</translation>
    </message>
    <message>
        <source>Calculating...</source>
        <translation>Wird berechnet …</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Canceling progress...</source>
        <translation>Der Vorgang wird abgebrochen …</translation>
    </message>
    <message>
        <source>The item under way is finished first.</source>
        <translation>Das begonnene Objekt wird noch fertiggestellt.</translation>
    </message>
    <message>
        <source>The settings were damaged and begin anew; the old file is '%@'.</source>
        <translation>Die Einstellungen waren beschädigt und beginnen neu; die alte Datei heißt „%@“.</translation>
    </message>
    <message>
        <source>The settings cannot be stored and last until the program ends.</source>
        <translation>Die Einstellungen können nicht gespeichert werden und gelten bis zum Ende des Programms.</translation>
    </message>
    <message>
        <source>Cannot create folder!</source>
        <translation>Der Ordner kann nicht angelegt werden!</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Auswählen</translation>
    </message>
    <message>
        <source>Choose Application</source>
        <translation>Programm auswählen</translation>
    </message>
    <message>
        <source>Choose Folder</source>
        <translation>Ordner auswählen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy progress finished.</source>
        <translation>Das Kopieren ist abgeschlossen.</translation>
    </message>
    <message>
        <source>Copy progress of &apos;%@&apos; failed!</source>
        <translation>Das Kopieren von „%@“ ist fehlgeschlagen!</translation>
    </message>
    <message>
        <source>Copying &apos;%@&apos;</source>
        <translation>„%@“ wird kopiert</translation>
    </message>
    <message>
        <source>Create alias for &apos;%@&apos; failed!</source>
        <translation>Ein Alias für „%@“ konnte nicht angelegt werden!</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Delete failed!</source>
        <translation>Das Löschen ist fehlgeschlagen!</translation>
    </message>
    <message>
        <source>Document</source>
        <translation>Dokument</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplizieren</translation>
    </message>
    <message>
        <source>Duplicate failed!</source>
        <translation>Das Duplizieren ist fehlgeschlagen!</translation>
    </message>
    <message>
        <source>Existing item: %@</source>
        <translation>Vorhandenes Objekt: %@</translation>
    </message>
    <message>
        <source>File System</source>
        <translation>Dateisystem</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Folder already exists!</source>
        <translation>Der Ordner ist schon vorhanden!</translation>
    </message>
    <message>
        <source>Folder does not exists!</source>
        <translation>Der Ordner ist nicht vorhanden!</translation>
    </message>
    <message>
        <source>Hide Classic buttons</source>
        <translation>Classic-Tasten ausblenden</translation>
    </message>
    <message>
        <source>Hide system files</source>
        <translation>Systemdateien ausblenden</translation>
    </message>
    <message>
        <source>Icon</source>
        <translation>Symbol</translation>
    </message>
    <message>
        <source>Item(s) cannot copied in itself!</source>
        <translation>Objekte können nicht in sich selbst kopiert werden!</translation>
    </message>
    <message>
        <source>Item(s) cannot moved in itself!</source>
        <translation>Objekte können nicht in sich selbst bewegt werden!</translation>
    </message>
    <message>
        <source>Left files</source>
        <translation>Linke Dateiliste</translation>
    </message>
    <message>
        <source>Mini</source>
        <translation>Mini</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Bewegen</translation>
    </message>
    <message>
        <source>Move progress finished.</source>
        <translation>Das Bewegen ist abgeschlossen.</translation>
    </message>
    <message>
        <source>Move progress of &apos;%@&apos; failed!</source>
        <translation>Das Bewegen von „%@“ ist fehlgeschlagen!</translation>
    </message>
    <message>
        <source>Moving &apos;%@&apos;</source>
        <translation>„%@“ wird bewegt</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>Ziel</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Erstellt</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>Owner</source>
        <translation>Eigentümer</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>Others</source>
        <translation>Andere</translation>
    </message>
    <message>
        <source>Locked</source>
        <translation>Geschützt</translation>
    </message>
    <message>
        <source>Permissions: %@</source>
        <translation>Zugriffsrechte: %@</translation>
    </message>
    <message>
        <source>Give up rights</source>
        <translation>Rechte abgeben</translation>
    </message>
    <message>
        <source>Administrator...</source>
        <translation>Administrator ...</translation>
    </message>
    <message>
        <source>Give up the administrator's rights</source>
        <translation>Die Rechte des Administrators abgeben</translation>
    </message>
    <message>
        <source>Gain the administrator's rights</source>
        <translation>Die Rechte des Administrators erhalten</translation>
    </message>
    <message>
        <source>The item is still being read.</source>
        <translation>Das Objekt wird noch gelesen.</translation>
    </message>
    <message>
        <source>The item could not be reached.</source>
        <translation>Das Objekt war nicht zu erreichen.</translation>
    </message>
    <message>
        <source>Cannot change launch application!</source>
        <translation>Das Programm zum Öffnen kann nicht geändert werden!</translation>
    </message>
    <message>
        <source>Cannot set owner and group!</source>
        <translation>Eigentümer und Gruppe können nicht gesetzt werden!</translation>
    </message>
    <message>
        <source>There is no group '%@'.</source>
        <translation>Es gibt keine Gruppe „%@“.</translation>
    </message>
    <message>
        <source>There is no user '%@'.</source>
        <translation>Es gibt keinen Benutzer „%@“.</translation>
    </message>
    <message>
        <source>The administrator's rights were not granted.</source>
        <translation>Die Rechte des Administrators wurden nicht gewährt.</translation>
    </message>
    <message>
        <source>While the item is locked its permissions stay as they are.</source>
        <translation>Solange das Objekt geschützt ist, bleiben seine Zugriffsrechte, wie sie sind.</translation>
    </message>
    <message>
        <source>Cannot set permissions!</source>
        <translation>Die Zugriffsrechte können nicht gesetzt werden!</translation>
    </message>
    <message>
        <source>Cannot set lock state!</source>
        <translation>Der Schutz kann nicht gesetzt werden!</translation>
    </message>
    <message>
        <source>The item is no longer there.</source>
        <translation>Das Objekt ist nicht mehr da.</translation>
    </message>
    <message>
        <source>The item cannot be read: %@</source>
        <translation>Das Objekt kann nicht gelesen werden: %@</translation>
    </message>
    <message>
        <source>Another item has taken its place. Nothing was changed.</source>
        <translation>Ein anderes Objekt ist an seine Stelle getreten. Nichts wurde geändert.</translation>
    </message>
    <message>
        <source>Another item has taken its place.</source>
        <translation>Ein anderes Objekt ist an seine Stelle getreten.</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>New folder</source>
        <translation>Neuer Ordner</translation>
    </message>
    <message>
        <source>New item: %@</source>
        <translation>Neues Objekt: %@</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Not available</source>
        <translation>Nicht verfügbar</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Other...</source>
        <translation>Andere ...</translation>
    </message>
    <message>
        <source>Package</source>
        <translation>Paket</translation>
    </message>
    <message>
        <source>Please enter full path to folder:</source>
        <translation>Bitte den vollständigen Pfad des Ordners eingeben:</translation>
    </message>
    <message>
        <source>Please enter new name:</source>
        <translation>Bitte den neuen Namen eingeben:</translation>
    </message>
    <message>
        <source>Please input new folder name:</source>
        <translation>Bitte den Namen des neuen Ordners eingeben:</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Rename failed!</source>
        <translation>Das Umbenennen ist fehlgeschlagen!</translation>
    </message>
    <message>
        <source>Right files</source>
        <translation>Rechte Dateiliste</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Show Classic buttons</source>
        <translation>Classic-Tasten einblenden</translation>
    </message>
    <message>
        <source>Show system files</source>
        <translation>Systemdateien einblenden</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Small</source>
        <translation>Klein</translation>
    </message>
    <message>
        <source>Target &apos;%@&apos; already exists! Overwrite?</source>
        <translation>Das Ziel „%@“ ist schon vorhanden! Überschreiben?</translation>
    </message>
    <message>
        <source>The previous folder (&apos;..&apos;) cannot be worked on with! </source>
        <translation>Der übergeordnete Ordner („..“) kann nicht bearbeitet werden! </translation>
    </message>
    <message>
        <source>The previous folder (&apos;..&apos;) cannot be worked on with! Operation will be aborted!</source>
        <translation>Der übergeordnete Ordner („..“) kann nicht bearbeitet werden! Der Vorgang wird abgebrochen!</translation>
    </message>
    <message>
        <source>Twinleaf - Error</source>
        <translation>Twinleaf - Fehler</translation>
    </message>
    <message>
        <source>Twinleaf - Information</source>
        <translation>Twinleaf - Hinweis</translation>
    </message>
    <message>
        <source>Twinleaf - Warning</source>
        <translation>Twinleaf - Warnung</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Volumes</source>
        <translation>Volumes</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Sort by</source>
        <translation>Sortieren nach</translation>
    </message>
    <message>
        <source>&amp;Go</source>
        <translation>&amp;Gehe zu</translation>
    </message>
    <message>
        <source>Choose in Path</source>
        <translation>Im Pfad wählen</translation>
    </message>
    <message>
        <source>Folder of Other Pane</source>
        <translation>Ordner der anderen Seite</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Left path</source>
        <translation>Linker Pfad</translation>
    </message>
    <message>
        <source>Right path</source>
        <translation>Rechter Pfad</translation>
    </message>
    <message>
        <source>A file operation is still running. Stop it after the current item and quit?</source>
        <translation>Eine Dateioperation läuft noch. Nach dem aktuellen Objekt anhalten und beenden?</translation>
    </message>
    <message>
        <source>A file operation is still running. Stop it after the current item and end the session?</source>
        <translation>Eine Dateioperation läuft noch. Nach dem aktuellen Objekt anhalten und die Sitzung beenden?</translation>
    </message>
    <message>
        <source>The work has not come to an end yet. Quit without waiting for it?</source>
        <translation>Die Arbeit ist noch nicht zu Ende. Beenden, ohne auf sie zu warten?</translation>
    </message>
    <message>
        <source>What is unfinished is settled at the next start.</source>
        <translation>Was unfertig ist, wird beim nächsten Start in Ordnung gebracht.</translation>
    </message>
    <message>
        <source>'%@' does not exist</source>
        <translation>'%@' gibt es nicht</translation>
    </message>
    <message>
        <source>'%@' cannot be read (%@)</source>
        <translation>'%@' ist nicht lesbar (%@)</translation>
    </message>
    <message>
        <source>%@; the home folder is shown instead</source>
        <translation>%@; stattdessen wird der Benutzerordner gezeigt</translation>
    </message>
    <message>
        <source>Opens a window with two folders side by side. LEFT and RIGHT take the place
of the folders shown last; a file opens its folder with the file selected.</source>
        <translation>Öffnet ein Fenster mit zwei Ordnern nebeneinander. LEFT und RIGHT treten an die
Stelle der zuletzt gezeigten Ordner; eine Datei öffnet ihren Ordner und ist ausgewählt.</translation>
    </message>
    <message>
        <source>shows this text</source>
        <translation>zeigt diesen Text</translation>
    </message>
    <message>
        <source>shows the version</source>
        <translation>zeigt die Version</translation>
    </message>
    <message>
        <source>unknown option &apos;%@&apos;; see --help</source>
        <translation>unbekannte Option &apos;%@&apos;; siehe --help</translation>
    </message>
    <message>
        <source>there are two panes; %i more folder(s) are not shown</source>
        <translation>es gibt zwei Fensterhälften; %i weitere Ordner werden nicht gezeigt</translation>
    </message>
    <message>
        <source>there is no display to open a window on</source>
        <translation>es gibt keine Anzeige für ein Fenster</translation>
    </message>
    <message>
        <source>there is one window only: --new-window is not offered</source>
        <translation>es gibt nur ein Fenster: --new-window wird nicht angeboten</translation>
    </message>
    <message>
        <source>the Twinleaf that is open did not take it: %@</source>
        <translation>das offene Twinleaf hat es nicht angenommen: %@</translation>
    </message>
    <message>
        <source>the Twinleaf that is open does not answer; this is another one</source>
        <translation>das geöffnete Twinleaf antwortet nicht; dies ist ein weiteres</translation>
    </message>
    <message>
        <source>'%@' is hidden in its folder.</source>
        <translation>'%@' ist in seinem Ordner ausgeblendet.</translation>
    </message>
    <message>
        <source>%i more folder(s) are not shown: there are two panes.</source>
        <translation>%i weitere Ordner werden nicht gezeigt: Es gibt zwei Fensterhälften.</translation>
    </message>
    <message>
        <source>%i item(s) of further folders are not shown: there are two panes.</source>
        <translation>%i Objekt(e) weiterer Ordner werden nicht gezeigt: Es gibt zwei Fensterhälften.</translation>
    </message>
    <message>
        <source>Of %i more item(s) no information is shown.</source>
        <translation>Von %i weiteren Objekt(en) wird keine Information angezeigt.</translation>
    </message>
    <message>
        <source>%i of %i</source>
        <translation>%i von %i</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Activity</source>
        <translation>Aktivität</translation>
    </message>
    <message>
        <source>Cannot download version informations! Is the computer connected to the internet?</source>
        <translation>Die Versionsinformationen können nicht geladen werden! Ist der Computer mit dem Internet verbunden?</translation>
    </message>
    <message>
        <source>Your version of Twinleaf is up to date, you have the newest version!</source>
        <translation>Ihre Version von Twinleaf ist aktuell, Sie haben die neueste Version!</translation>
    </message>
    <message>
        <source>Cannot calculate version informations. Please try again!</source>
        <translation>Die Versionsinformationen sind nicht zu berechnen. Bitte versuchen Sie es noch einmal!</translation>
    </message>
    <message>
        <source>A newer version is available! Do you want to download it?</source>
        <translation>Es gibt eine neuere Version! Möchten Sie sie herunterladen?</translation>
    </message>
    <message>
        <source>Add bookmark...</source>
        <translation>Lesezeichen hinzufügen ...</translation>
    </message>
    <message>
        <source>Enter path for bookmark:</source>
        <translation>Pfad für das Lesezeichen eingeben:</translation>
    </message>
    <message>
        <source>Folder doesn&apos;t exists or it&apos;s not a folder!</source>
        <translation>Der Ordner existiert nicht oder ist kein Ordner!</translation>
    </message>
    <message>
        <source>The program &apos;zip&apos;, which packs archives, is not installed.</source>
        <translation>Das Programm &apos;zip&apos;, das Archive packt, ist nicht installiert.</translation>
    </message>
    <message>
        <source>No terminal is installed.</source>
        <translation>Es ist kein Terminal installiert.</translation>
    </message>
    <message>
        <source>The service that ejects volumes (udisks2) is not there.</source>
        <translation>Der Dienst, der Datenträger auswirft (udisks2), ist nicht da.</translation>
    </message>
    <message>
        <source>&apos;%@&apos; could not be ejected!</source>
        <translation>&apos;%@&apos; konnte nicht ausgeworfen werden!</translation>
    </message>
    <message>
        <source>Open with</source>
        <translation>Öffnen mit</translation>
    </message>
    <message>
        <source>Show package contents</source>
        <translation>Paketinhalt zeigen</translation>
    </message>
    <message>
        <source>Create archive...</source>
        <translation>Archiv erstellen ...</translation>
    </message>
    <message>
        <source>Unpack</source>
        <translation>Entpacken</translation>
    </message>
    <message>
        <source>Eject</source>
        <translation>Auswerfen</translation>
    </message>
    <message>
        <source>Home folder</source>
        <translation>Benutzerordner</translation>
    </message>
    <message>
        <source>Other folder...</source>
        <translation>Anderer Ordner ...</translation>
    </message>
    <message>
        <source>Folder of other pane</source>
        <translation>Ordner der anderen Seite</translation>
    </message>
    <message>
        <source>Copy path</source>
        <translation>Pfad kopieren</translation>
    </message>
    <message>
        <source>Copy path as shown</source>
        <translation>Pfad wie gezeigt kopieren</translation>
    </message>
    <message>
        <source>Left pane</source>
        <translation>Linke Seite</translation>
    </message>
    <message>
        <source>Right pane</source>
        <translation>Rechte Seite</translation>
    </message>
    <message>
        <source>&amp;Select</source>
        <translation>Aus&amp;wahl</translation>
    </message>
    <message>
        <source>&amp;Bookmarks</source>
        <translation>&amp;Lesezeichen</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;Werkzeuge</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Terminal</source>
        <translation>Terminal</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>Systemprotokoll</translation>
    </message>
    <message>
        <source>Activity monitor</source>
        <translation>Systemüberwachung</translation>
    </message>
    <message>
        <source>Disk utility</source>
        <translation>Laufwerke</translation>
    </message>
    <message>
        <source>Keychain</source>
        <translation>Schlüsselbund</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>Users</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>System information</source>
        <translation>Systeminformationen</translation>
    </message>
    <message>
        <source>Check for newer version...</source>
        <translation>Nach neuerer Version suchen ...</translation>
    </message>
    <message>
        <source>About Twinleaf</source>
        <translation>Über Twinleaf</translation>
    </message>
    <message>
        <source>Choose in path</source>
        <translation>Im Pfad wählen</translation>
    </message>
    <message>
        <source>Select all</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Select same</source>
        <translation>Gleiche auswählen</translation>
    </message>
    <message>
        <source>Group selection...</source>
        <translation>Gruppe auswählen ...</translation>
    </message>
    <message>
        <source>Group deselection...</source>
        <translation>Gruppe abwählen ...</translation>
    </message>
    <message>
        <source>Compare folders</source>
        <translation>Ordner vergleichen</translation>
    </message>
    <message>
        <source>Find...</source>
        <translation>Suchen ...</translation>
    </message>
    <message>
        <source>Find next</source>
        <translation>Weitersuchen</translation>
    </message>
    <message>
        <source>The makers of Twinleaf</source>
        <translation>Die Macher von Twinleaf</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Donate...</source>
        <translation>Spenden ...</translation>
    </message>
    <message>
        <source>Column</source>
        <translation>Spalte</translation>
    </message>
    <message>
        <source>Comparison</source>
        <translation>Vergleich</translation>
    </message>
    <message>
        <source>contains</source>
        <translation>enthält</translation>
    </message>
    <message>
        <source>begins with</source>
        <translation>beginnt mit</translation>
    </message>
    <message>
        <source>ends with</source>
        <translation>endet mit</translation>
    </message>
    <message>
        <source>equals</source>
        <translation>ist gleich</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Case sensitive</source>
        <translation>Groß-/Kleinschreibung beachten</translation>
    </message>
    <message>
        <source>Part of a name, or a pattern such as *.txt</source>
        <translation>Teil eines Namens oder ein Muster wie *.txt</translation>
    </message>
    <message>
        <source>Left filter</source>
        <translation>Filter links</translation>
    </message>
    <message>
        <source>Right filter</source>
        <translation>Filter rechts</translation>
    </message>
    <message>
        <source>Show all items</source>
        <translation>Alle Objekte zeigen</translation>
    </message>
    <message>
        <source>%@ of %@ items</source>
        <translation>%@ von %@ Objekten</translation>
    </message>
    <message>
        <source>Filtering...</source>
        <translation>Filtern ...</translation>
    </message>
    <message>
        <source>* stands for any text, ? for one character.</source>
        <translation>* steht für beliebigen Text, ? für ein Zeichen.</translation>
    </message>
    <message>
        <source>No name fits the filter</source>
        <translation>Kein Name passt zum Filter</translation>
    </message>
    <message>
        <source>Group selection</source>
        <translation>Gruppe auswählen</translation>
    </message>
    <message>
        <source>Group deselection</source>
        <translation>Gruppe abwählen</translation>
    </message>
    <message>
        <source>Please enter search term(s):</source>
        <translation>Bitte Suchbegriff(e) eingeben:</translation>
    </message>
    <message>
        <source>Archiving to %@...</source>
        <translation>Archivieren nach %@ …</translation>
    </message>
    <message>
        <source>Archiving failed! Result code: %i</source>
        <translation>Archivieren fehlgeschlagen! Rückgabewert: %i</translation>
    </message>
    <message>
        <source>Unpacking '%@'...</source>
        <translation>'%@' wird entpackt …</translation>
    </message>
    <message>
        <source>Unpacking failed!</source>
        <translation>Entpacken fehlgeschlagen!</translation>
    </message>
    <message>
        <source>'%@' is the archive that would be replaced, and is itself among the items to be packed. Nothing was changed.</source>
        <translation>„%@“ ist das Archiv, das ersetzt würde, und gehört selbst zu dem, was gepackt werden soll. Es wurde nichts verändert.</translation>
    </message>
    <message>
        <source>'%@' could not be read.</source>
        <translation>„%@“ war nicht zu lesen.</translation>
    </message>
    <message>
        <source>The archive holds everything else.</source>
        <translation>Alles andere ist im Archiv.</translation>
    </message>
    <message>
        <source>The archive that it replaces is in the Trash.</source>
        <translation>Das Archiv, das es ersetzt, liegt im Papierkorb.</translation>
    </message>
    <message>
        <source>'%@' leads in a circle: the links of the item are packed as links.</source>
        <translation>„%@“ führt im Kreis: Die Verknüpfungen des Objekts sind als Verknüpfungen gepackt.</translation>
    </message>
    <message>
        <source>Not everything could be packed.</source>
        <translation>Nicht alles konnte gepackt werden.</translation>
    </message>
    <message>
        <source>Links were packed as links.</source>
        <translation>Verknüpfungen wurden als Verknüpfungen gepackt.</translation>
    </message>
    <message>
        <source>A folder has this name.</source>
        <translation>Ein Ordner trägt diesen Namen.</translation>
    </message>
    <message>
        <source>The archive that has this name is locked.</source>
        <translation>Das Archiv dieses Namens ist geschützt.</translation>
    </message>
    <message>
        <source>It came there, or was changed, while the new one was packed. "No" keeps it and discards the new one.</source>
        <translation>Es kam dorthin oder wurde verändert, während das neue gepackt wurde. „Nein“ behält es und verwirft das neue.</translation>
    </message>
    <message>
        <source>Unpacking '%@' was interrupted; what had not arrived was removed.</source>
        <translation>Das Entpacken von „%@“ wurde unterbrochen; was noch nicht angekommen war, wurde entfernt.</translation>
    </message>
    <message>
        <source>Please enter archive name:</source>
        <translation>Bitte Namen des Archivs eingeben:</translation>
    </message>
    <message>
        <source>Archive already exists! Override?</source>
        <translation>Das Archiv existiert bereits! Überschreiben?</translation>
    </message>
    <message>
        <source>'%@' is not an archive!</source>
        <translation>'%@' ist kein Archiv!</translation>
    </message>
    <message>
        <source>The existing item was made by the same run.</source>
        <translation>Das vorhandene Objekt stammt aus demselben Durchgang.</translation>
    </message>
    <message>
        <source>Something was left behind.</source>
        <translation>Etwas ist zurückgeblieben.</translation>
    </message>
    <message>
        <source>Not every attribute of '%@' came along: %@</source>
        <translation>Nicht alle Attribute von '%@' kamen mit: %@</translation>
    </message>
    <message>
        <source>'%@' was not found</source>
        <translation>„%@“ wurde nicht gefunden</translation>
    </message>
    <message>
        <source>'%@' and '%@' have changed places.</source>
        <translation>'%@' und '%@' haben die Plätze getauscht.</translation>
    </message>
    <message>
        <source>What is left of an interrupted operation on '%@' could not be removed.</source>
        <translation>Der Rest einer unterbrochenen Arbeit an '%@' konnte nicht entfernt werden.</translation>
    </message>
    <message>
        <source>Not everything could be written to the disk.</source>
        <translation>Nicht alles konnte auf den Datenträger geschrieben werden.</translation>
    </message>
    <message>
        <source>After &quot;No&quot; the next item is taken without a question; what it replaces goes to the Trash.</source>
        <translation>Nach „Nein“ wird das nächste Objekt ohne Frage übernommen; was es ersetzt, kommt in den Papierkorb.</translation>
    </message>
    <message>
        <source>Interrupted work was settled.</source>
        <translation>Unterbrochene Arbeit wurde abgeschlossen.</translation>
    </message>
    <message>
        <source>&apos;%@&apos; is what it was; replacing it was interrupted.</source>
        <translation>„%@“ ist, was es war; das Ersetzen wurde unterbrochen.</translation>
    </message>
    <message>
        <source>An unfinished copy of &apos;%@&apos; was removed.</source>
        <translation>Eine unfertige Kopie von „%@“ wurde entfernt.</translation>
    </message>
    <message>
        <source>&apos;%@&apos; was replaced; the old item is in the Trash.</source>
        <translation>„%@“ wurde ersetzt; das alte Objekt liegt im Papierkorb.</translation>
    </message>
    <message>
        <source>&apos;%@&apos; is the old item of a replacement.</source>
        <translation>„%@“ ist das alte Objekt einer Ersetzung.</translation>
    </message>
    <message>
        <source>&apos;%@&apos; was copied but is still there; moving it was interrupted.</source>
        <translation>„%@“ wurde kopiert, ist aber noch da; das Bewegen wurde unterbrochen.</translation>
    </message>
    <message>
        <source>&apos;%@&apos; stays at the source, its copy may not be whole: %@</source>
        <translation>„%@“ bleibt an der Quelle, die Kopie ist vielleicht nicht vollständig: %@</translation>
    </message>
    <message>
        <source>&apos;%@&apos; stays at the source: it is new, was changed, or cannot be removed.</source>
        <translation>„%@“ bleibt an der Quelle: Es ist neu, wurde geändert oder lässt sich nicht entfernen.</translation>
    </message>
    <message>
        <source>What is left of it is in the Trash.</source>
        <translation>Was davon übrig ist, liegt im Papierkorb.</translation>
    </message>
    <message>
        <source>What is left of it stands beside it as &apos;%@&apos;.</source>
        <translation>Was davon übrig ist, steht daneben als „%@“.</translation>
    </message>
    <message>
        <source>What is left of it is in &apos;%@&apos;.</source>
        <translation>Was davon übrig ist, liegt in „%@“.</translation>
    </message>
    <message>
        <source>The replaced item &apos;%@&apos; could not be removed: %@</source>
        <translation>Das ersetzte Objekt „%@“ konnte nicht entfernt werden: %@</translation>
    </message>
    <message>
        <source>The item is locked.</source>
        <translation>Das Objekt ist geschützt.</translation>
    </message>
    <message>
        <source>A folder cannot be put into itself.</source>
        <translation>Ein Ordner kann nicht in sich selbst gelegt werden.</translation>
    </message>
    <message>
        <source>Both are the same item.</source>
        <translation>Beides ist dasselbe Objekt.</translation>
    </message>
    <message>
        <source>The existing item is locked.</source>
        <translation>Das vorhandene Objekt ist geschützt.</translation>
    </message>
    <message>
        <source>The existing item holds the new one.</source>
        <translation>Das vorhandene Objekt enthält das neue.</translation>
    </message>
    <message>
        <source>and %i more</source>
        <translation>und %i weitere</translation>
    </message>
    <message>
        <source>Everything else of it was copied.</source>
        <translation>Alles andere darin wurde kopiert.</translation>
    </message>
    <message>
        <source>The copy is not whole; the item stays where it was.</source>
        <translation>Die Kopie ist nicht vollständig; das Objekt bleibt, wo es war.</translation>
    </message>
    <message>
        <source>The existing item cannot be moved to the Trash.</source>
        <translation>Das vorhandene Objekt kann nicht in den Papierkorb bewegt werden.</translation>
    </message>
    <message>
        <source>Copying %@ to %@</source>
        <translation>%@ wird nach %@ kopiert</translation>
    </message>
    <message>
        <source>Moving %@ to %@</source>
        <translation>%@ wird nach %@ bewegt</translation>
    </message>
    <message>
        <source>Copying %i items to %@</source>
        <translation>%i Objekte werden nach %@ kopiert</translation>
    </message>
    <message>
        <source>Moving %i items to %@</source>
        <translation>%i Objekte werden nach %@ bewegt</translation>
    </message>
    <message>
        <source>Cancel '%@'</source>
        <translation>Abbrechen: %@</translation>
    </message>
    <message>
        <source>&amp;Running</source>
        <translation>&amp;Laufend</translation>
    </message>
    <message>
        <source>%i waiting</source>
        <translation>%i warten</translation>
    </message>
    <message>
        <source>Cancel all that wait</source>
        <translation>Alle wartenden abbrechen</translation>
    </message>
    <message>
        <source>Copy and move</source>
        <translation>Kopieren und Bewegen</translation>
    </message>
    <message>
        <source>More folders</source>
        <translation>Weitere Ordner</translation>
    </message>
    <message>
        <source>It is no folder.</source>
        <translation>Das ist kein Ordner.</translation>
    </message>
    <message>
        <source>It is no item.</source>
        <translation>Das ist kein Objekt.</translation>
    </message>
    <message>
        <source>It does not exist.</source>
        <translation>Es ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>It lies in the Trash already.</source>
        <translation>Es liegt schon im Papierkorb.</translation>
    </message>
    <message>
        <source>It is a volume, the home folder or the Trash, or holds one of them.</source>
        <translation>Es ist ein Volume, der Benutzerordner oder der Papierkorb oder enthält eines davon.</translation>
    </message>
    <message>
        <source>Its name is too long for the Trash.</source>
        <translation>Der Name ist zu lang für den Papierkorb.</translation>
    </message>
    <message>
        <source>There is no Trash on its volume, or no right to move it there.</source>
        <translation>Auf dem Volume gibt es keinen Papierkorb oder kein Recht, es dorthin zu bewegen.</translation>
    </message>
    <message>
        <source>Reading %@...</source>
        <translation>%@ wird gelesen …</translation>
    </message>
    <message>
        <source>%@ items</source>
        <translation>%@ Objekte</translation>
    </message>
    <message>
        <source>'%@' does not answer.</source>
        <translation>„%@“ antwortet nicht.</translation>
    </message>
    <message>
        <source>Sorting...</source>
        <translation>Wird sortiert …</translation>
    </message>
    <message>
        <source>'%@' is not there, '%@' is shown instead.</source>
        <translation>„%@“ gibt es nicht, stattdessen wird „%@“ gezeigt.</translation>
    </message>
    <message>
        <source>Comparing...</source>
        <translation>Wird verglichen …</translation>
    </message>
    <message>
        <source>Searching...</source>
        <translation>Wird gesucht …</translation>
    </message>
    <message>
        <source>This folder cannot be read: %@</source>
        <translation>Dieser Ordner kann nicht gelesen werden: %@</translation>
    </message>
    <message>
        <source>Start &apos;%@&apos;?</source>
        <translation>„%@“ starten?</translation>
    </message>
    <message>
        <source>It was not installed on this computer, and could do everything that you can.</source>
        <translation>Es wurde nicht auf diesem Computer installiert und könnte alles tun, was Sie können.</translation>
    </message>
    <message>
        <source>The folder holds no program that can be started here. &apos;Show package contents&apos; shows what is in it.</source>
        <translation>Der Ordner enthält kein Programm, das hier gestartet werden kann. „Paketinhalt zeigen“ zeigt, was darin ist.</translation>
    </message>
    <message>
        <source>No installed program is set up to open it.</source>
        <translation>Kein installiertes Programm ist dafür eingerichtet, es zu öffnen.</translation>
    </message>
    <message>
        <source>%i items</source>
        <translation>%i Objekte</translation>
    </message>
    <message>
        <source>from %@ to %@</source>
        <translation>von %@ nach %@</translation>
    </message>
    <message>
        <source>from %@</source>
        <translation>von %@</translation>
    </message>
    <message>
        <source>to %@</source>
        <translation>nach %@</translation>
    </message>
    <message>
        <source>A name is neither empty nor &apos;.&apos; nor &apos;..&apos;, and holds no &apos;/&apos;.</source>
        <translation>Ein Name ist weder leer noch „.“ oder „..“ und enthält kein „/“.</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Informationen</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>Einstellungen ...</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
    <message>
        <source>Real path</source>
        <translation>Wirklicher Pfad</translation>
    </message>
    <message>
        <source>Folder:</source>
        <translation>Ordner:</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>Auswählen ...</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Bookmarks</source>
        <translation>Lesezeichen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Favorite applications</source>
        <translation>Bevorzugte Programme</translation>
    </message>
    <message>
        <source>Offered to open files with:</source>
        <translation>Zum Öffnen von Dateien werden angeboten:</translation>
    </message>
    <message>
        <source>Add...</source>
        <translation>Hinzufügen ...</translation>
    </message>
    <message>
        <source>Questions:</source>
        <translation>Fragen:</translation>
    </message>
    <message>
        <source>Ask before file operations</source>
        <translation>Vor Dateioperationen fragen</translation>
    </message>
    <message>
        <source>Window:</source>
        <translation>Fenster:</translation>
    </message>
    <message>
        <source>Flat look</source>
        <translation>Flaches Aussehen</translation>
    </message>
    <message>
        <source>Path navigators:</source>
        <translation>Pfadleisten:</translation>
    </message>
    <message>
        <source>Font of the paths:</source>
        <translation>Schrift der Pfade:</translation>
    </message>
    <message>
        <source> points</source>
        <translation> Punkt</translation>
    </message>
    <message>
        <source>Font size of the paths:</source>
        <translation>Schriftgröße der Pfade:</translation>
    </message>
    <message>
        <source>Frame color:</source>
        <translation>Rahmenfarbe:</translation>
    </message>
    <message>
        <source>Text color:</source>
        <translation>Textfarbe:</translation>
    </message>
    <message>
        <source>This key finds names.</source>
        <translation>Diese Taste sucht Namen.</translation>
    </message>
    <message>
        <source>This key opens the context menu.</source>
        <translation>Diese Taste öffnet das Kontextmenü.</translation>
    </message>
    <message>
        <source>Same key as &apos;%@&apos;.</source>
        <translation>Wie „%@“.</translation>
    </message>
    <message>
        <source>Key %i</source>
        <translation>Taste %i</translation>
    </message>
    <message>
        <source>New keys count from the next start on.</source>
        <translation>Neue Tasten gelten ab dem nächsten Start.</translation>
    </message>
    <message>
        <source>Key of &apos;%@&apos;</source>
        <translation>Taste für „%@“</translation>
    </message>
    <message>
        <source>Modifier of &apos;%@&apos;</source>
        <translation>Zusatztaste für „%@“</translation>
    </message>
    <message>
        <source>Any modifier</source>
        <translation>Beliebige Zusatztaste</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Umschalt</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Ctrl</source>
        <translation>Strg</translation>
    </message>
    <message>
        <source>Items:</source>
        <translation>Objekte:</translation>
    </message>
    <message>
        <source>Show each item&apos;s own icon</source>
        <translation>Eigenes Symbol jedes Objekts zeigen</translation>
    </message>
    <message>
        <source>Show tool tips</source>
        <translation>Kurzinfos zeigen</translation>
    </message>
    <message>
        <source>Links:</source>
        <translation>Verknüpfungen:</translation>
    </message>
    <message>
        <source>Follow symbolic links</source>
        <translation>Symbolischen Verknüpfungen folgen</translation>
    </message>
    <message>
        <source>Dates:</source>
        <translation>Datum:</translation>
    </message>
    <message>
        <source>Long format</source>
        <translation>Langes Format</translation>
    </message>
    <message>
        <source>Align on the right</source>
        <translation>Rechtsbündig</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Lists</source>
        <translation>Listen</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Info bars</source>
        <translation>Infoleisten</translation>
    </message>
    <message>
        <source>Start folders</source>
        <translation>Startordner</translation>
    </message>
    <message>
        <source>At the start:</source>
        <translation>Beim Start:</translation>
    </message>
    <message>
        <source>Show the folders that were open last</source>
        <translation>Die zuletzt offenen Ordner zeigen</translation>
    </message>
    <message>
        <source>Choose left folder</source>
        <translation>Linken Ordner auswählen</translation>
    </message>
    <message>
        <source>Choose right folder</source>
        <translation>Rechten Ordner auswählen</translation>
    </message>
    <message>
        <source>Left folder:</source>
        <translation>Linker Ordner:</translation>
    </message>
    <message>
        <source>Right folder:</source>
        <translation>Rechter Ordner:</translation>
    </message>
    <message>
        <source>&apos;%@&apos; is not there.</source>
        <translation>„%@“ ist nicht da.</translation>
    </message>
    <message>
        <source>Hide toolbar</source>
        <translation>Symbolleiste ausblenden</translation>
    </message>
    <message>
        <source>Customize Toolbar...</source>
        <translation>Symbolleiste anpassen ...</translation>
    </message>
    <message>
        <source>Show toolbar</source>
        <translation>Symbolleiste einblenden</translation>
    </message>
    <message>
        <source>Choose in toolbar</source>
        <translation>In der Symbolleiste wählen</translation>
    </message>
    <message>
        <source>Toolbar</source>
        <translation>Symbolleiste</translation>
    </message>
    <message>
        <source>More items</source>
        <translation>Weitere Symbole</translation>
    </message>
    <message>
        <source>Copy items</source>
        <translation>Objekte kopieren</translation>
    </message>
    <message>
        <source>Move items</source>
        <translation>Objekte verschieben</translation>
    </message>
    <message>
        <source>Create new folder</source>
        <translation>Neuen Ordner anlegen</translation>
    </message>
    <message>
        <source>Delete items</source>
        <translation>Objekte löschen</translation>
    </message>
    <message>
        <source>Rename item</source>
        <translation>Objekt umbenennen</translation>
    </message>
    <message>
        <source>Twinleaf image browser</source>
        <translation>Bildbetrachter von Twinleaf</translation>
    </message>
    <message>
        <source>Twinleaf internal terminal</source>
        <translation>Internes Terminal von Twinleaf</translation>
    </message>
    <message>
        <source>You access the UNIX operating system (Darwin) by entering commands</source>
        <translation>Sie bedienen das UNIX-Betriebssystem (Darwin), indem Sie Befehle eingeben</translation>
    </message>
    <message>
        <source>You can examine the messages logged by your system and software</source>
        <translation>Sie können die Meldungen ansehen, die Ihr System und Ihre Programme aufgezeichnet haben</translation>
    </message>
    <message>
        <source>Activity Monitor</source>
        <translation>Systemüberwachung</translation>
    </message>
    <message>
        <source>See what's happening within your computer's processor, hard disk, memory, and network</source>
        <translation>Sehen Sie, was in Prozessor, Festplatte, Speicher und Netzwerk Ihres Computers vorgeht</translation>
    </message>
    <message>
        <source>Disk Utility</source>
        <translation>Laufwerke</translation>
    </message>
    <message>
        <source>Configure and manage disks</source>
        <translation>Datenträger einrichten und verwalten</translation>
    </message>
    <message>
        <source>Keychain accesss</source>
        <translation>Schlüsselbund</translation>
    </message>
    <message>
        <source>Manage your passwords and securely store notes, account numbers, and other confidential information</source>
        <translation>Verwalten Sie Ihre Passwörter, und bewahren Sie Notizen, Kontonummern und andere vertrauliche Angaben sicher auf</translation>
    </message>
    <message>
        <source>Network Utility</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>Information and troubleshooting tools to help you with your network</source>
        <translation>Auskunft und Hilfsmittel, wenn es im Netzwerk hakt</translation>
    </message>
    <message>
        <source>NetInfo Manager</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>Easy editing of unix releated system files</source>
        <translation>UNIX-Systemdateien einfach bearbeiten</translation>
    </message>
    <message>
        <source>System Profiler</source>
        <translation>Systeminformationen</translation>
    </message>
    <message>
        <source>Get detailed information about your computer hardware, software, and network</source>
        <translation>Genaue Angaben über Hardware, Software und Netzwerk Ihres Computers</translation>
    </message>
    <message>
        <source>Separator</source>
        <translation>Trennlinie</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Abstand</translation>
    </message>
    <message>
        <source>Flexible space</source>
        <translation>Flexibler Abstand</translation>
    </message>
    <message>
        <source>Customize Toolbar</source>
        <translation>Symbolleiste anpassen</translation>
    </message>
    <message>
        <source>Drag items between the two lists; the toolbar follows.</source>
        <translation>Ziehen Sie Symbole von Liste zu Liste; die Symbolleiste folgt.</translation>
    </message>
    <message>
        <source>Available items</source>
        <translation>Verfügbare Symbole</translation>
    </message>
    <message>
        <source>In the toolbar</source>
        <translation>In der Symbolleiste</translation>
    </message>
    <message>
        <source>Restore defaults</source>
        <translation>Standard wiederherstellen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Move up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Move down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <source>Icon and label</source>
        <translation>Symbol und Text</translation>
    </message>
    <message>
        <source>Icon only</source>
        <translation>Nur Symbol</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Anzeigen</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansehen</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>New file...</source>
        <translation>Neue Datei ...</translation>
    </message>
    <message>
        <source>Delete permanently...</source>
        <translation>Endgültig löschen ...</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Copy to clipboard</source>
        <translation>In die Zwischenablage</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Copy name</source>
        <translation>Namen kopieren</translation>
    </message>
    <message>
        <source>Copy path of item</source>
        <translation>Pfad des Objekts kopieren</translation>
    </message>
    <message>
        <source>Filter...</source>
        <translation>Filtern ...</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vorwärts</translation>
    </message>
    <message>
        <source>Swap panes</source>
        <translation>Seiten tauschen</translation>
    </message>
    <message>
        <source>Same folder in both panes</source>
        <translation>Gleicher Ordner auf beiden Seiten</translation>
    </message>
    <message>
        <source>Trash...</source>
        <translation>Papierkorb ...</translation>
    </message>
    <message>
        <source>Open terminal here</source>
        <translation>Terminal hier öffnen</translation>
    </message>
    <message>
        <source>Bookmark manager</source>
        <translation>Lesezeichen verwalten</translation>
    </message>
    <message>
        <source>Image browser</source>
        <translation>Bildbetrachter</translation>
    </message>
    <message>
        <source>There are no images in this folder.</source>
        <translation>In diesem Ordner gibt es keine Bilder.</translation>
    </message>
    <message>
        <source>Select an image in the list.</source>
        <translation>Wählen Sie ein Bild in der Liste aus.</translation>
    </message>
    <message>
        <source>This picture cannot be shown.</source>
        <translation>Dieses Bild kann nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>Dimensions</source>
        <translation>Abmessungen</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Scale down</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Scale to fit</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <source>Stretch</source>
        <translation>Strecken</translation>
    </message>
    <message>
        <source>Actual size</source>
        <translation>Originalgröße</translation>
    </message>
    <message>
        <source>Animate</source>
        <translation>Animieren</translation>
    </message>
    <message>
        <source>0 images</source>
        <translation>0 Bilder</translation>
    </message>
    <message>
        <source>%i images</source>
        <translation>%i Bilder</translation>
    </message>
    <message>
        <source>Internal terminal</source>
        <translation>Internes Terminal</translation>
    </message>
    <message>
        <source>Command:</source>
        <translation>Befehl:</translation>
    </message>
    <message>
        <source>Current folder:</source>
        <translation>Aktueller Ordner:</translation>
    </message>
    <message>
        <source>Folder of the active pane</source>
        <translation>Ordner der aktiven Seite</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgabe</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Running: %i</source>
        <translation>Läuft: %i</translation>
    </message>
    <message>
        <source>Exit status %i</source>
        <translation>Rückgabewert %i</translation>
    </message>
    <message>
        <source>Ended by signal %i</source>
        <translation>Beendet durch Signal %i</translation>
    </message>
    <message>
        <source>[The output is cut here: there was more.]</source>
        <translation>[Die Ausgabe ist hier abgeschnitten: Es war mehr.]</translation>
    </message>
    <message>
        <source>[Older output was removed.]</source>
        <translation>[Ältere Ausgaben wurden entfernt.]</translation>
    </message>
    <message>
        <source>%@: Command not found</source>
        <translation>%@: Befehl nicht gefunden</translation>
    </message>
    <message>
        <source>Error: Error: Directory does not exists!</source>
        <translation>Fehler: Fehler: Ordner existiert nicht!</translation>
    </message>
    <message>
        <source>Error: Directory does not exists!
</source>
        <translation>Fehler: Ordner existiert nicht!
</translation>
    </message>
    <message>
        <source>Twinleaf %@ internal terminal ready.
</source>
        <translation>Internes Terminal von Twinleaf %@ ist bereit.
</translation>
    </message>
    <message>
        <source>Search for:</source>
        <translation>Suchen nach:</translation>
    </message>
    <message>
        <source>Start search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Search of the desktop...</source>
        <translation>Suche des Desktops …</translation>
    </message>
    <message>
        <source>Search content</source>
        <translation>Inhalt durchsuchen</translation>
    </message>
    <message>
        <source>Ignore case</source>
        <translation>Groß-/Kleinschreibung egal</translation>
    </message>
    <message>
        <source>Ignore accents</source>
        <translation>Akzente egal</translation>
    </message>
    <message>
        <source>Whole words</source>
        <translation>Ganze Wörter</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>Found %d items</source>
        <translation>%d Objekte gefunden</translation>
    </message>
    <message>
        <source>Not complete yet: the index is being made.</source>
        <translation>Noch nicht vollständig: Der Index wird angelegt.</translation>
    </message>
    <message>
        <source>Nothing was found.</source>
        <translation>Nichts gefunden.</translation>
    </message>
    <message>
        <source>Nothing was found yet.</source>
        <translation>Noch nichts gefunden.</translation>
    </message>
    <message>
        <source>No result is selected.</source>
        <translation>Kein Ergebnis ausgewählt.</translation>
    </message>
    <message>
        <source>Spotlight search failed!</source>
        <translation>Spotlight-Suche fehlgeschlagen!</translation>
    </message>
    <message>
        <source>No search program of the desktop is installed, or it could not be started.</source>
        <translation>Es ist kein Suchprogramm des Desktops installiert, oder es konnte nicht gestartet werden.</translation>
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
        <source>Search home folder...</source>
        <translation>Benutzerordner durchsuchen …</translation>
    </message>
    <message>
        <source>Search for this name</source>
        <translation>Nach diesem Namen suchen</translation>
    </message>
    <message>
        <source>Nothing is known of it.</source>
        <translation>Darüber ist nichts bekannt.</translation>
    </message>
    <message>
        <source>Undo copy of &apos;%@&apos;</source>
        <translation>Kopieren von „%@“ rückgängig machen</translation>
    </message>
    <message>
        <source>Undo copy of %i items</source>
        <translation>Kopieren von %i Objekten rückgängig machen</translation>
    </message>
    <message>
        <source>Undo move of &apos;%@&apos;</source>
        <translation>Bewegen von „%@“ rückgängig machen</translation>
    </message>
    <message>
        <source>Undo move of %i items</source>
        <translation>Bewegen von %i Objekten rückgängig machen</translation>
    </message>
    <message>
        <source>Undo alias &apos;%@&apos;</source>
        <translation>Alias „%@“ rückgängig machen</translation>
    </message>
    <message>
        <source>Undo %i aliases</source>
        <translation>%i Aliasse rückgängig machen</translation>
    </message>
    <message>
        <source>Undo delete of &apos;%@&apos;</source>
        <translation>Löschen von „%@“ rückgängig machen</translation>
    </message>
    <message>
        <source>Undo delete of %i items</source>
        <translation>Löschen von %i Objekten rückgängig machen</translation>
    </message>
    <message>
        <source>Undo rename of &apos;%@&apos;</source>
        <translation>Umbenennen von „%@“ rückgängig machen</translation>
    </message>
    <message>
        <source>Undo new folder &apos;%@&apos;</source>
        <translation>Neuen Ordner „%@“ rückgängig machen</translation>
    </message>
    <message>
        <source>Undo new file &apos;%@&apos;</source>
        <translation>Neue Datei „%@“ rückgängig machen</translation>
    </message>
    <message>
        <source>Undo archive &apos;%@&apos;</source>
        <translation>Archiv „%@“ rückgängig machen</translation>
    </message>
    <message>
        <source>Nothing can be undone while something is under way.</source>
        <translation>Solange etwas im Gange ist, kann nichts rückgängig gemacht werden.</translation>
    </message>
    <message>
        <source>There is nothing to undo.</source>
        <translation>Es gibt nichts rückgängig zu machen.</translation>
    </message>
    <message>
        <source>Undo moves %i item(s) to the Trash. Are you sure?</source>
        <translation>Dabei kommen %i Objekt(e) in den Papierkorb. Sind Sie sicher?</translation>
    </message>
    <message>
        <source>Undo puts %i item(s) back from the Trash. Are you sure?</source>
        <translation>Dabei kommen %i Objekt(e) aus dem Papierkorb zurück. Sind Sie sicher?</translation>
    </message>
    <message>
        <source>Undo moves %i item(s) back. Are you sure?</source>
        <translation>Dabei kommen %i Objekt(e) dorthin zurück, wo sie waren. Sind Sie sicher?</translation>
    </message>
    <message>
        <source>Not everything could be undone.</source>
        <translation>Nicht alles konnte rückgängig gemacht werden.</translation>
    </message>
    <message>
        <source>Undo failed!</source>
        <translation>Rückgängigmachen fehlgeschlagen!</translation>
    </message>
    <message>
        <source>'%@' is back in '%@'.</source>
        <translation>'%@' ist wieder in '%@'.</translation>
    </message>
    <message>
        <source>%i items are back in '%@'.</source>
        <translation>%i Objekte sind wieder in '%@'.</translation>
    </message>
    <message>
        <source>Another item stands at its old place.</source>
        <translation>An seinem alten Platz steht ein anderes Objekt.</translation>
    </message>
    <message>
        <source>It is back, but what it had replaced is gone for good.</source>
        <translation>Es ist zurück, aber was es ersetzt hatte, ist endgültig fort.</translation>
    </message>
    <message>
        <source>What it had replaced is not back: %@</source>
        <translation>Was es ersetzt hatte, ist nicht zurück: %@</translation>
    </message>
    <message>
        <source>It stays, for what it has replaced is gone for good.</source>
        <translation>Es bleibt, denn was es ersetzt hat, ist endgültig fort.</translation>
    </message>
    <message>
        <source>Another item has come to its place.</source>
        <translation>An seinen Platz ist ein anderes Objekt gekommen.</translation>
    </message>
    <message>
        <source>It is not empty any more.</source>
        <translation>Er ist nicht mehr leer.</translation>
    </message>
    <message>
        <source>It was changed since, or something in it was.</source>
        <translation>Es, oder etwas darin, wurde seitdem geändert.</translation>
    </message>
    <message>
        <source>%i items cannot be edited!</source>
        <translation>%i Objekte können nicht bearbeitet werden!</translation>
    </message>
    <message>
        <source>Open %i files in the editor?</source>
        <translation>%i Dateien im Editor öffnen?</translation>
    </message>
    <message>
        <source>&apos;%@&apos; cannot be edited!</source>
        <translation>„%@“ kann nicht bearbeitet werden!</translation>
    </message>
    <message>
        <source>It is no file with a content of its own.</source>
        <translation>Es ist keine Datei mit eigenem Inhalt.</translation>
    </message>
    <message>
        <source>There is no editor of texts!</source>
        <translation>Es gibt kein Programm zum Bearbeiten von Texten!</translation>
    </message>
    <message>
        <source>No installed program is set up to edit plain texts.</source>
        <translation>Kein installiertes Programm ist zum Bearbeiten einfacher Texte eingerichtet.</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Bytes such as 0d 0a, or &quot;text&quot;</source>
        <translation>Bytes wie 0d 0a, oder &quot;Text&quot;</translation>
    </message>
    <message>
        <source>This file is empty.</source>
        <translation>Diese Datei ist leer.</translation>
    </message>
    <message>
        <source>This is a pipe. Reading it would take away what another program waits for.</source>
        <translation>Dies ist eine Pipe. Wer sie liest, nimmt weg, worauf ein anderes Programm wartet.</translation>
    </message>
    <message>
        <source>This is a socket. There is nothing in it to be shown.</source>
        <translation>Dies ist ein Socket. Darin gibt es nichts zu zeigen.</translation>
    </message>
    <message>
        <source>This is a device. Devices are not read.</source>
        <translation>Dies ist ein Gerät. Geräte werden nicht gelesen.</translation>
    </message>
    <message>
        <source>This file cannot be read: %@</source>
        <translation>Diese Datei kann nicht gelesen werden: %@</translation>
    </message>
    <message>
        <source>Searching... %@</source>
        <translation>Suche läuft ... %@</translation>
    </message>
    <message>
        <source>The search was stopped.</source>
        <translation>Die Suche wurde angehalten.</translation>
    </message>
    <message>
        <source>Only the start of the selection was copied.</source>
        <translation>Nur der Anfang der Auswahl wurde kopiert.</translation>
    </message>
    <message>
        <source>This encoding has no such characters.</source>
        <translation>Diese Kodierung hat solche Zeichen nicht.</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>Found from the start on</source>
        <translation>Vom Anfang an gefunden</translation>
    </message>
    <message>
        <source>Found from the end on</source>
        <translation>Vom Ende an gefunden</translation>
    </message>
    <message>
        <source>Waiting for the picture...</source>
        <translation>Es wird auf das Bild gewartet ...</translation>
    </message>
    <message>
        <source>Waiting for the disk...</source>
        <translation>Warten auf das Laufwerk ...</translation>
    </message>
    <message>
        <source>Byte %@ of %@</source>
        <translation>Byte %@ von %@</translation>
    </message>
    <message>
        <source>%@ bytes selected</source>
        <translation>%@ Bytes ausgewählt</translation>
    </message>
    <message>
        <source>Content</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Are you sure that you want to delete the selected %i item(s) for good? This cannot be undone.</source>
        <translation>%i ausgewählte(s) Objekt(e) wirklich endgültig löschen? Das lässt sich nicht widerrufen.</translation>
    </message>
    <message>
        <source>Deleting '%@' for good</source>
        <translation>„%@“ wird endgültig gelöscht</translation>
    </message>
    <message>
        <source>Deleting %i items for good</source>
        <translation>%i Objekte werden endgültig gelöscht</translation>
    </message>
    <message>
        <source>Deleting '%@' for good was interrupted; the rest of it was removed.</source>
        <translation>Das endgültige Löschen von „%@“ wurde unterbrochen; der Rest wurde entfernt.</translation>
    </message>
    <message>
        <source>It is not the item any more that was shown.</source>
        <translation>Es ist nicht mehr das Objekt, das angezeigt wurde.</translation>
    </message>
    <message>
        <source>Its Trash is gone.</source>
        <translation>Seinen Papierkorb gibt es nicht mehr.</translation>
    </message>
    <message>
        <source>It does not lie in the Trash any more.</source>
        <translation>Es liegt nicht mehr im Papierkorb.</translation>
    </message>
    <message>
        <source>It was not found in the Trash.</source>
        <translation>Es wurde im Papierkorb nicht gefunden.</translation>
    </message>
    <message>
        <source>Another item has taken its place in the Trash.</source>
        <translation>Ein anderes Objekt steht an seiner Stelle im Papierkorb.</translation>
    </message>
    <message>
        <source>Its folder '%@' is gone.</source>
        <translation>Seinen Ordner „%@“ gibt es nicht mehr.</translation>
    </message>
    <message>
        <source>Its record tells no place to which it could go back.</source>
        <translation>Sein Eintrag nennt keinen Ort, an den es zurück könnte.</translation>
    </message>
    <message>
        <source>Something stands at its place now.</source>
        <translation>An seinem Platz steht jetzt etwas anderes.</translation>
    </message>
    <message>
        <source>Its place lies on another volume than the Trash.</source>
        <translation>Sein Platz liegt auf einem anderen Volume als der Papierkorb.</translation>
    </message>
    <message>
        <source>Its record was changed.</source>
        <translation>Sein Eintrag wurde geändert.</translation>
    </message>
    <message>
        <source>The Trash knows it from another place.</source>
        <translation>Der Papierkorb kennt es von einem anderen Ort.</translation>
    </message>
    <message>
        <source>&apos;%@&apos; stays: %@. What else was in it may be gone.</source>
        <translation>„%@“ bleibt: %@. Was sonst darin war, ist vielleicht schon fort.</translation>
    </message>
    <message>
        <source>A volume is mounted in it.</source>
        <translation>Darin ist ein Volume eingehängt.</translation>
    </message>
    <message>
        <source>It belongs to somebody else.</source>
        <translation>Es gehört jemand anderem.</translation>
    </message>
    <message>
        <source>Everybody may write to it.</source>
        <translation>Jeder darf hineinschreiben.</translation>
    </message>
    <message>
        <source>It is a link, or no folder.</source>
        <translation>Es ist ein Verweis oder kein Ordner.</translation>
    </message>
    <message>
        <source>It lies in a folder that has no sticky bit.</source>
        <translation>Es liegt in einem Ordner ohne Sticky-Bit.</translation>
    </message>
    <message>
        <source>No record tells where it was.</source>
        <translation>Kein Eintrag nennt, wo es war.</translation>
    </message>
    <message>
        <source>Reading the Trash...</source>
        <translation>Der Papierkorb wird gelesen …</translation>
    </message>
    <message>
        <source>The Trash is empty.</source>
        <translation>Der Papierkorb ist leer.</translation>
    </message>
    <message>
        <source>Put back failed!</source>
        <translation>Zurücklegen fehlgeschlagen!</translation>
    </message>
    <message>
        <source>The folders that %i item(s) lay in are gone. Make them again?</source>
        <translation>Die Ordner von %i Objekt(en) gibt es nicht mehr. Sollen sie wieder angelegt werden?</translation>
    </message>
    <message>
        <source>Are you sure that you want to remove the %i item(s) (%@) in the Trash for good?</source>
        <translation>%i Objekt(e) (%@) im Papierkorb wirklich endgültig entfernen?</translation>
    </message>
    <message>
        <source>This cannot be undone.</source>
        <translation>Das lässt sich nicht widerrufen.</translation>
    </message>
    <message>
        <source>Origin</source>
        <translation>Herkunft</translation>
    </message>
    <message>
        <source>Deleted</source>
        <translation>Gelöscht</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>Papierkorb</translation>
    </message>
    <message>
        <source>Put Back</source>
        <translation>Zurücklegen</translation>
    </message>
    <message>
        <source>Empty...</source>
        <translation>Leeren ...</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>Show as</source>
        <translation>Anzeigen als</translation>
    </message>
    <message>
        <source>Encoding</source>
        <translation>Kodierung</translation>
    </message>
    <message>
        <source>Wrap lines</source>
        <translation>Zeilen umbrechen</translation>
    </message>
    <message>
        <source>%@ folder</source>
        <translation>%@ Ordner</translation>
    </message>
    <message>
        <source>%@ folders</source>
        <translation>%@ Ordner</translation>
    </message>
    <message>
        <source>%@ file</source>
        <translation>%@ Datei</translation>
    </message>
    <message>
        <source>%@ files</source>
        <translation>%@ Dateien</translation>
    </message>
    <message>
        <source>Empty folder</source>
        <translation>Leerer Ordner</translation>
    </message>
    <message>
        <source>%@, read-only</source>
        <translation>%@, schreibgeschützt</translation>
    </message>
    <message>
        <source>%@: left out, as it may not answer</source>
        <translation>%@: ausgelassen, da vielleicht niemand antwortet</translation>
    </message>
    <message>
        <source>%@ free of %@</source>
        <translation>%@ frei von %@</translation>
    </message>
    <message>
        <source>Contents of folder</source>
        <translation>Inhalt des Ordners</translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Freier Speicherplatz</translation>
    </message>
    <message>
        <source>There are more: the list is cut here.</source>
        <translation>Es gibt mehr: Die Liste ist hier abgeschnitten.</translation>
    </message>
    <message>
        <source>A search of the home folder does not go into these folders. A name without a slash stands for all folders of that name.</source>
        <translation>Eine Suche im Benutzerordner sieht in diese Ordner nicht hinein. Ein Name ohne Schrägstrich steht für alle Ordner dieses Namens.</translation>
    </message>
    <message>
        <source>Choose folder to leave out</source>
        <translation>Auszulassenden Ordner auswählen</translation>
    </message>
    <message>
        <source>Folders left out</source>
        <translation>Ausgelassene Ordner</translation>
    </message>
    <message>
        <source>Add folder to leave out</source>
        <translation>Auszulassenden Ordner hinzufügen</translation>
    </message>
    <message>
        <source>Delete folder left out</source>
        <translation>Ausgelassenen Ordner löschen</translation>
    </message>
</context>
</TS>
