<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Qel</name>
    <message>
        <location filename="../src/app/AboutWindow.cpp"/>
        <source>About Qel</source>
        <translation>Über Qel</translation>
    </message>
    <message>
        <location filename="../src/app/AboutWindow.cpp"/>
        <source>Allright</source>
        <translation>In Ordnung</translation>
    </message>
    <message>
        <location filename="../src/app/AboutWindow.cpp"/>
        <source>E-mail: %1</source>
        <translation>E-Mail: %1</translation>
    </message>
    <message>
        <location filename="../src/app/AboutWindow.cpp"/>
        <source>Home: %1</source>
        <translation>Im Netz: %1</translation>
    </message>
    <message>
        <location filename="../src/app/AboutWindow.cpp"/>
        <source>Version %1 x86</source>
        <translation>Version %1 x86</translation>
    </message>
    <message>
        <location filename="../src/app/AboutWindow.cpp"/>
        <source>Charts of what this machine is doing.</source>
        <translation>Diagramme dessen, was dieser Rechner tut.</translation>
    </message>
    <message>
        <location filename="../src/app/AboutWindow.cpp"/>
        <source>Made by %1.</source>
        <translation>Hergestellt von %1.</translation>
    </message>
    <message>
        <location filename="../src/app/AboutWindow.cpp"/>
        <source>Send your bug reports &amp; comments to:</source>
        <translation>Fehlerberichte und Anmerkungen bitte an:</translation>
    </message>
    <message>
        <location filename="../src/app/MainWindow.cpp"/>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <location filename="../src/app/MainWindow.cpp"/>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <location filename="../src/app/MainWindow.cpp"/>
        <source>About</source>
        <translation>Über Qel</translation>
    </message>
    <message>
        <location filename="../src/app/MainWindow.cpp"/>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <location filename="../src/app/MainWindow.cpp"/>
        <source>Uptime</source>
        <translation>Laufzeit</translation>
    </message>
    <message>
        <location filename="../src/app/MainWindow.cpp"/>
        <source>Charts</source>
        <translation>Diagramme</translation>
    </message>
    <message>
        <location filename="../src/app/QelApp.cpp"/>
        <source>Global preferences</source>
        <translation>Allgemeine Einstellungen</translation>
    </message>
    <message>
        <location filename="../src/app/Startup.cpp"/>
        <source>Qel:

The version of the saved preferences is older then the executable ! You may try to load it or use the defaults (but then the old settings will be overwritten at exit !)
(Loading the old prefs should not cause any harm, but if you get empty charts or similar I recommend loading the defaults !)
FOR VERSION 0.3.0: Use the defaults, the prefs format changed !!! Or read the readme for info on how to migrate your settings...</source>
        <translation>Qel:

Die gespeicherten Einstellungen sind von einer älteren Version als das Programm! Sie können versuchen, sie zu laden, oder die Vorgaben nehmen (dann werden die alten Einstellungen beim Beenden überschrieben!).
(Die alten Einstellungen zu laden sollte nicht schaden; erscheinen aber leere Diagramme oder Ähnliches, sind die Vorgaben besser!)
FÜR VERSION 0.3.0: Nehmen Sie die Vorgaben, das Format der Einstellungen hat sich geändert!!! Oder lesen Sie in der Anleitung, wie Sie Ihre Einstellungen übernehmen ...</translation>
    </message>
    <message>
        <location filename="../src/app/Startup.cpp"/>
        <source>Use defaults</source>
        <translation>Vorgaben nehmen</translation>
    </message>
    <message>
        <location filename="../src/app/Startup.cpp"/>
        <source>Load</source>
        <translation>Laden</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>one year </source>
        <translation>ein Jahr </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>%1 years </source>
        <translation>%1 Jahre </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>one month </source>
        <translation>ein Monat </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>%1 months </source>
        <translation>%1 Monate </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>one week </source>
        <translation>eine Woche </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>%1 weeks </source>
        <translation>%1 Wochen </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>one day </source>
        <translation>ein Tag </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>%1 days </source>
        <translation>%1 Tage </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Sun</source>
        <translation>So</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Mon</source>
        <translation>Mo</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Tue</source>
        <translation>Di</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Wed</source>
        <translation>Mi</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Thu</source>
        <translation>Do</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Fri</source>
        <translation>Fr</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Sat</source>
        <translation>Sa</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Jan</source>
        <translation>Jan</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Feb</source>
        <translation>Feb</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Mar</source>
        <translation>Mär</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Apr</source>
        <translation>Apr</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>May</source>
        <translation>Mai</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Jun</source>
        <translation>Jun</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Jul</source>
        <translation>Jul</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Aug</source>
        <translation>Aug</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Sep</source>
        <translation>Sep</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Oct</source>
        <translation>Okt</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Nov</source>
        <translation>Nov</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Dec</source>
        <translation>Dez</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>It's </source>
        <translation>Es ist </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Up since: </source>
        <translation>An seit: </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Current uptime: </source>
        <translation>Laufzeit: </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Total uptime: </source>
        <translation>Insgesamt: </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Average uptime: </source>
        <translation>Im Mittel: </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Number of reboots: </source>
        <translation>Zahl der Starts: </translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Top 10 uptimes:</source>
        <translation>Die 10 längsten Laufzeiten:</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>n/a</source>
        <translation>–</translation>
    </message>
    <message>
        <location filename="../src/app/UptimeText.cpp"/>
        <source>Booted at </source>
        <translation>Start: </translation>
    </message>
    <message>
        <location filename="../src/chart/ChartConnection.cpp"/>
        <source>Qel replicant:

Unable to launch or estabilish connection to Qel !</source>
        <translation>Qel-Ableger:

Qel kann nicht gestartet oder nicht erreicht werden!</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartConnection.cpp"/>
        <source>Qel replicant error:</source>
        <translation>Fehler eines Qel-Ablegers:</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Chart</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Sources...</source>
        <translation>Quellen ...</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Preferences...</source>
        <translation>Einstellungen ...</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Reconnect</source>
        <translation>Neu verbinden</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Add new chart</source>
        <translation>Neues Diagramm</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Delete this chart</source>
        <translation>Dieses Diagramm löschen</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Synchronize others</source>
        <translation>Andere angleichen</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Save picture…</source>
        <translation>Bild speichern …</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Save values…</source>
        <translation>Werte speichern …</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Copy to desktop</source>
        <translation>Auf den Schreibtisch kopieren</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Go to desktop</source>
        <translation>Zum Schreibtisch gehen</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Copy settings</source>
        <translation>Einstellungen kopieren</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Remove from desktop</source>
        <translation>Vom Schreibtisch nehmen</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartMenu.cpp"/>
        <source>Paste color</source>
        <translation>Farbe einfügen</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartSaving.cpp"/>
        <source>The file could not be saved:

%1

%2</source>
        <translation>Die Datei konnte nicht gespeichert werden:

%1

%2</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewDesktop.cpp"/>
        <source>Drag this onto the desktop to keep the chart there</source>
        <translation>Auf den Schreibtisch ziehen, damit das Diagramm dort bleibt</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewDesktop.cpp"/>
        <source>The chart could not be put on the desktop: qel-desktop does not start.</source>
        <translation>Das Diagramm konnte nicht auf den Schreibtisch gelegt werden: qel-desktop startet nicht.</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewDesktop.cpp"/>
        <source>The chart could not be put on the desktop: qel-desktop does not answer, and many charts wait for it.</source>
        <translation>Das Diagramm konnte nicht auf den Schreibtisch gelegt werden: qel-desktop antwortet nicht, und viele Diagramme warten darauf.</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewDesktop.cpp"/>
        <source>The chart could not be put on the desktop: there are too many charts there.</source>
        <translation>Das Diagramm konnte nicht auf den Schreibtisch gelegt werden: Dort sind zu viele Diagramme.</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewDesktop.cpp"/>
        <source>Drag this to move the chart, or back into the window</source>
        <translation>Ziehen verschiebt das Diagramm oder bringt es ins Fenster zurück</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewDesktop.cpp"/>
        <source>Handle</source>
        <translation>Griff</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewDesktop.cpp"/>
        <source>About Qel...</source>
        <translation>Über Qel...</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewDrops.cpp"/>
        <source>The maximal number of sources
reached. Mail me if you need more !
(Because of your 16-way SMP box or sg. ;)</source>
        <translation>Mehr Quellen gehen nicht.
Schreiben Sie mir, wenn Sie mehr brauchen!
(Wegen Ihres Rechners mit 16 Prozessoren zum Beispiel ;)</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewHolder.cpp"/>
        <source>Click here to add a chart.</source>
        <translation>Hier klicken für ein neues Diagramm.</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewMessages.cpp"/>
        <source>Save picture</source>
        <translation>Bild speichern</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewMessages.cpp"/>
        <source>PNG pictures</source>
        <translation>PNG-Bilder</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewMessages.cpp"/>
        <source>Save values</source>
        <translation>Werte speichern</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewMessages.cpp"/>
        <source>Tables of values</source>
        <translation>Wertetabellen</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewMouse.cpp"/>
        <source>Distribute position</source>
        <translation>Platz auf alle übertragen</translation>
    </message>
    <message>
        <location filename="../src/chart/ChartViewMouse.cpp"/>
        <source>Distribute pos.</source>
        <translation>Platz auf alle übertragen</translation>
    </message>
    <message>
        <location filename="../src/desktop/ReplicantWindow.cpp"/>
        <source>Qel chart</source>
        <translation>Qel-Diagramm</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Background</source>
        <translation>Grund</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Average</source>
        <translation>Mittel</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>&lt; none &gt;</source>
        <translation>&lt; nichts &gt;</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Border</source>
        <translation>Rand</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Colors</source>
        <translation>Farben</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Pick Desktop</source>
        <translation>Farbe der Arbeitsfläche</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Target:</source>
        <translation>Ziel:</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>AA target:</source>
        <translation>Übergang zu:</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Test on Desktop</source>
        <translation>Auf der Arbeitsfläche zeigen</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Transparent background</source>
        <translation>Durchsichtiger Grund</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Antialiasing (%)</source>
        <translation>Kantenglättung (%)</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Full</source>
        <translation>Voll</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Antialiasing</source>
        <translation>Kantenglättung</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Fun</source>
        <translation>Spaß</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source>Hey men, stop picking me or... !

&#9;&#9;&#9;&#9;- Desktop</source>
        <translation>He, lass das Auswählen, sonst ...!

&#9;&#9;&#9;&#9;– die Arbeitsfläche</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartColorTab.cpp"/>
        <source> FunFunFun  :) </source>
        <translation> Spaß, Spaß, Spaß  :) </translation>
    </message>
    <message>
        <location filename="../src/pages/ChartFontsTab.cpp"/>
        <source>Fonts</source>
        <translation>Schriften</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartFontsTab.cpp"/>
        <source>Families</source>
        <translation>Familien</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartFontsTab.cpp"/>
        <source>Styles</source>
        <translation>Schnitte</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartFontsTab.cpp"/>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartFontsTab.cpp"/>
        <source>Size %1</source>
        <translation>Größe %1</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Show Value</source>
        <translation>Wert zeigen</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Show Title</source>
        <translation>Titel zeigen</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Draw Border</source>
        <translation>Rand zeichnen</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>BgColor = Desktop</source>
        <translation>Grund = Arbeitsfläche</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>2nd </source>
        <translation>2. </translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>3rd </source>
        <translation>3. </translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>%1th </source>
        <translation>%1. </translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Title: </source>
        <translation>Titel: </translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Page size (%)</source>
        <translation>Seitenlänge (%)</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Scrolling</source>
        <translation>Rollend</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Solid</source>
        <translation>Gefüllt</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Gauge</source>
        <translation>Balken</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Horizontal</source>
        <translation>Waagerecht</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Vertical</source>
        <translation>Senkrecht</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Mode:</source>
        <translation>Darstellung:</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>PageSize</source>
        <translation>Seitenlänge</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Refresh at every %1sysinfo sample</source>
        <translation>Bei jedem %1Messwert zeichnen</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Draw value at every %1refresh</source>
        <translation>Wert bei jedem %1Zeichnen erneuern</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartGeneralTab.cpp"/>
        <source>Page size</source>
        <translation>Seitenlänge</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartPreferences.cpp"/>
        <source>Chart preferences</source>
        <translation>Einstellungen des Diagramms</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartSourcesTab.cpp"/>
        <source>Sources</source>
        <translation>Quellen</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartSourcesTab.cpp"/>
        <source>Find:</source>
        <translation>Suchen:</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartSourcesTab.cpp"/>
        <source>Add to chart</source>
        <translation>Ins Diagramm</translation>
    </message>
    <message>
        <location filename="../src/pages/ChartSourcesTab.cpp"/>
        <source>Drag a source or a group onto a chart, or copy it with Ctrl+C</source>
        <translation>Eine Quelle oder eine Gruppe auf ein Diagramm ziehen oder mit Strg+C kopieren</translation>
    </message>
    <message>
        <location filename="../src/pages/FontSample.cpp"/>
        <source>Sample of the font</source>
        <translation>Probe der Schrift</translation>
    </message>
    <message>
        <location filename="../src/pages/FontSample.cpp"/>
        <source>Drag the sample onto a caption of a chart, or copy it with Ctrl+C</source>
        <translation>Die Probe auf eine Beschriftung eines Diagramms ziehen oder mit Strg+C kopieren</translation>
    </message>
    <message>
        <location filename="../src/pages/SysinfoTab.cpp"/>
        <source>Sysinfo</source>
        <translation>Messung</translation>
    </message>
    <message>
        <location filename="../src/pages/SysinfoTab.cpp"/>
        <source>Average of</source>
        <translation>Mittel aus</translation>
    </message>
    <message>
        <location filename="../src/pages/SysinfoTab.cpp"/>
        <source>Delay</source>
        <translation>Abstand</translation>
    </message>
    <message>
        <location filename="../src/pages/SysinfoTab.cpp"/>
        <source>0.01 sec</source>
        <translation>0.01 s</translation>
    </message>
    <message>
        <location filename="../src/pages/SysinfoTab.cpp"/>
        <source>5 sec</source>
        <translation>5 s</translation>
    </message>
    <message>
        <location filename="../src/pages/SysinfoTab.cpp"/>
        <source>Use %1 samples to calculate averages</source>
        <translation>Mittelwerte aus %1 Messungen bilden</translation>
    </message>
    <message>
        <location filename="../src/pages/SysinfoTab.cpp"/>
        <source>Wait %1 sec between samples</source>
        <translation>%1 s zwischen zwei Messungen warten</translation>
    </message>
    <message>
        <location filename="../src/prefs/PrefsButtonView.cpp"/>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <location filename="../src/prefs/PrefsButtonView.cpp"/>
        <source>Revert</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <location filename="../src/prefs/PrefsButtonView.cpp"/>
        <source>Revert all</source>
        <translation>Alles zurücksetzen</translation>
    </message>
    <message>
        <location filename="../src/prefs/StoreAlerts.cpp"/>
        <source>Reason: %1</source>
        <translation>Grund: %1</translation>
    </message>
    <message>
        <location filename="../src/prefs/StoreAlerts.cpp"/>
        <source>The settings cannot be read now.</source>
        <translation>Die Einstellungen sind gerade nicht lesbar.</translation>
    </message>
    <message>
        <location filename="../src/prefs/StoreAlerts.cpp"/>
        <source>With the defaults, these settings are kept under another name as soon as something is saved.</source>
        <translation>Mit den Vorgaben bleiben diese Einstellungen unter einem anderen Namen erhalten, sobald etwas gespeichert wird.</translation>
    </message>
    <message>
        <location filename="../src/prefs/StoreAlerts.cpp"/>
        <source>Qel alert</source>
        <translation>Hinweis von Qel</translation>
    </message>
    <message>
        <location filename="../src/prefs/StoreAlerts.cpp"/>
        <source>Try again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <location filename="../src/prefs/StoreAlerts.cpp"/>
        <source>The settings could not be saved.</source>
        <translation>Die Einstellungen konnten nicht gespeichert werden.</translation>
    </message>
    <message>
        <location filename="../src/prefs/StoreAlerts.cpp"/>
        <source>Saving is tried again as long as the program runs.</source>
        <translation>Das Speichern wird weiter versucht, solange das Programm läuft.</translation>
    </message>
    <message>
        <location filename="../src/prefs/store/StoreNote.cpp"/>
        <source>Damaged, or no settings</source>
        <translation>Beschädigt oder keine Einstellungen</translation>
    </message>
    <message>
        <location filename="../src/prefs/store/StoreNote.cpp"/>
        <source>Locked by another program</source>
        <translation>Von einem anderen Programm gesperrt</translation>
    </message>
    <message>
        <location filename="../src/prefs/store/StoreNote.cpp"/>
        <source>A link that leads nowhere</source>
        <translation>Ein Verweis ins Leere</translation>
    </message>
    <message>
        <location filename="../src/prefs/store/StoreNote.cpp"/>
        <source>none: XDG_CONFIG_HOME is not set, and there is no home folder</source>
        <translation>keiner: XDG_CONFIG_HOME ist nicht gesetzt, und es gibt keinen Home-Ordner</translation>
    </message>
    <message>
        <location filename="../src/prefs/store/StoreNote.cpp"/>
        <source>Folder: %1
File: %2</source>
        <translation>Ordner: %1
Datei: %2</translation>
    </message>
    <message>
        <location filename="../src/prefs/store/StoreNote.cpp"/>
        <source>The backup of the settings could not be read.</source>
        <translation>Die Sicherung der Einstellungen konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <location filename="../src/prefs/store/StoreNote.cpp"/>
        <source>The settings could not be read.</source>
        <translation>Die Einstellungen konnten nicht gelesen werden.</translation>
    </message>
    <message>
        <location filename="../src/prefs/store/StoreNote.cpp"/>
        <source>What was found there is kept as %1.</source>
        <translation>Was dort lag, bleibt als %1 erhalten.</translation>
    </message>
    <message>
        <location filename="../src/prefs/store/StoreNote.cpp"/>
        <source>It could not be kept under another name: %1.</source>
        <translation>Es konnte nicht umbenannt werden: %1.</translation>
    </message>
    <message>
        <location filename="../src/prefs/store/StoreNote.cpp"/>
        <source>The settings saved before it are used instead.</source>
        <translation>Stattdessen gelten die zuvor gespeicherten Einstellungen.</translation>
    </message>
    <message>
        <location filename="../src/prefs/store/StoreNote.cpp"/>
        <source>The defaults are used instead.</source>
        <translation>Stattdessen gelten die Vorgaben.</translation>
    </message>
    <message>
        <location filename="../src/sampling/SourceTable.cpp"/>
        <source>CPUs</source>
        <translation>CPUs</translation>
    </message>
    <message>
        <location filename="../src/sampling/SourceTable.cpp"/>
        <source>CPU averages</source>
        <translation>CPUs, Mittel</translation>
    </message>
    <message>
        <location filename="../src/sampling/SourceTable.cpp"/>
        <source>CPU idles</source>
        <translation>CPUs untätig</translation>
    </message>
    <message>
        <location filename="../src/sampling/SourceTable.cpp"/>
        <source>CPU average idles</source>
        <translation>CPUs untätig, Mittel</translation>
    </message>
    <message>
        <location filename="../src/sampling/ValueProvider.cpp"/>
        <source>%1 (exp. averaged)</source>
        <translation>%1 (exp. geglättet)</translation>
    </message>
    <message>
        <location filename="../src/support/ui/ColorPreView.cpp"/>
        <source>Pick desktop color</source>
        <translation>Farbe der Arbeitsfläche nehmen</translation>
    </message>
    <message>
        <location filename="../src/support/ui/ColorPreView.cpp"/>
        <source>Drag the color onto a curve, a caption or the background of a chart, or onto the desktop, which keeps it. Ctrl+C copies it.</source>
        <translation>Die Farbe auf eine Kurve, eine Beschriftung oder den Grund eines Diagramms ziehen oder auf die Arbeitsfläche, die sie behält. Strg+C kopiert sie.</translation>
    </message>
    <message>
        <location filename="../src/support/ui/ShowAlert.cpp"/>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Counts.h"/>
        <source>Available teams</source>
        <translation>Freie Prozesse</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Counts.h"/>
        <source>Allocated teams</source>
        <translation>Laufende Prozesse</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Counts.h"/>
        <source>Available threads</source>
        <translation>Freie Threads</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Counts.h"/>
        <source>Allocated threads</source>
        <translation>Laufende Threads</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Counts.h"/>
        <source>Available semaphores</source>
        <translation>Freie Semaphore</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Counts.h"/>
        <source>Allocated semaphores</source>
        <translation>Belegte Semaphore</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Counts.h"/>
        <source>Available ports</source>
        <translation>Freie Sockets</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Counts.h"/>
        <source>Allocated ports</source>
        <translation>Belegte Sockets</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Memory.h"/>
        <source>Free memory</source>
        <translation>Freier Speicher</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Memory.h"/>
        <source>Used memory</source>
        <translation>Belegter Speicher</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Processors.h"/>
        <source>All CPUs</source>
        <translation>Alle CPUs</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Processors.h"/>
        <source>All CPUs average</source>
        <translation>Alle CPUs Mittel</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Processors.h"/>
        <source>All CPUs idle</source>
        <translation>Alle CPUs untätig</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Processors.h"/>
        <source>All CPUs average idle</source>
        <translation>Alle CPUs untätig, Mittel</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Processors.h"/>
        <source>CPU %1</source>
        <translation>CPU %1</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Processors.h"/>
        <source>CPU %1 average</source>
        <translation>CPU %1 Mittel</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Processors.h"/>
        <source>CPU %1 idle</source>
        <translation>CPU %1 untätig</translation>
    </message>
    <message>
        <location filename="../src/sampling/sources/Processors.h"/>
        <source>CPU %1 average idle</source>
        <translation>CPU %1 untätig, Mittel</translation>
    </message>
    <message>
        <location filename="../kits/interface/controls/AlertWidget.cpp"/>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <location filename="../kits/interface/controls/AlertWidget.cpp"/>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <location filename="../kits/interface/controls/AlertWidget.cpp"/>
        <source>Information</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>No error</source>
        <translation>Kein Fehler</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>General error</source>
        <translation>Allgemeiner Fehler</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Out of memory</source>
        <translation>Kein Speicher mehr frei</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Input or output error</source>
        <translation>Ein- oder Ausgabefehler</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Permission denied</source>
        <translation>Keine Berechtigung</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Index out of range</source>
        <translation>Index außerhalb des Bereichs</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Wrong type</source>
        <translation>Falscher Typ</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Invalid value</source>
        <translation>Ungültiger Wert</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Values do not fit together</source>
        <translation>Werte passen nicht zusammen</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Name not found</source>
        <translation>Name nicht gefunden</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Timed out</source>
        <translation>Zeit abgelaufen</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Interrupted</source>
        <translation>Unterbrochen</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Would have to wait</source>
        <translation>Müsste warten</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Cancelled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Not initialised</source>
        <translation>Nicht eingerichtet</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Busy</source>
        <translation>Belegt</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Not allowed</source>
        <translation>Nicht erlaubt</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>No such thread</source>
        <translation>Diesen Thread gibt es nicht</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>The thread is not in a state for this</source>
        <translation>Der Thread ist dafür nicht im rechten Zustand</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>No more threads available</source>
        <translation>Keine Threads mehr frei</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Invalid reply</source>
        <translation>Ungültige Antwort</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Replied to already</source>
        <translation>Schon beantwortet</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>No such handler</source>
        <translation>Diesen Empfänger gibt es nicht</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Already running</source>
        <translation>Läuft schon</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Launching failed</source>
        <translation>Start misslungen</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>File not usable</source>
        <translation>Datei nicht brauchbar</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>File not found</source>
        <translation>Datei nicht gefunden</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>File exists</source>
        <translation>Datei gibt es schon</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Name too long</source>
        <translation>Name zu lang</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Not a folder</source>
        <translation>Kein Ordner</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Folder not empty</source>
        <translation>Ordner nicht leer</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>No space left</source>
        <translation>Kein Platz mehr frei</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Only reading is possible there</source>
        <translation>Dort kann nur gelesen werden</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Is a folder</source>
        <translation>Ist ein Ordner</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Too many open files</source>
        <translation>Zu viele offene Dateien</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Not on the same file system</source>
        <translation>Nicht auf demselben Dateisystem</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Too many links</source>
        <translation>Zu viele Verknüpfungen</translation>
    </message>
    <message>
        <location filename="../kits/kernel/process/Errors.cpp"/>
        <source>Not supported</source>
        <translation>Nicht unterstützt</translation>
    </message>
    <message>
        <location filename="../kits/interface/controls/ColorWidget.cpp"/>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <location filename="../kits/interface/controls/ColorWidget.cpp"/>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <location filename="../kits/interface/controls/ColorWidget.cpp"/>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
</context>
</TS>
