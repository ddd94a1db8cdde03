<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name></name>
    <message id="QuotesCannotBeSavedTitle">
        <source>Changes Cannot Be Saved</source>
        <translation>Änderungen können nicht gespeichert werden</translation>
    </message>
    <message id="QuotesCannotBeSavedMessage">
        <source>The quotes database at %1 could not be read (%2), so your changes cannot be saved until the file is fixed.</source>
        <translation>Die Zitatdatenbank unter %1 konnte nicht gelesen werden (%2). Ihre Änderungen können erst gespeichert werden, wenn die Datei repariert ist.</translation>
    </message>
    <message id="CommandLineHelpOption">
        <source>Show this summary of the options and exit.</source>
        <translation>Diese Übersicht der Optionen anzeigen und beenden.</translation>
    </message>
    <message id="CommandLineVersionOption">
        <source>Show the version and exit.</source>
        <translation>Die Version anzeigen und beenden.</translation>
    </message>
    <message id="CommandLineDescription">
        <source>Keeps a collection of quotes and turns one of them into an e-mail signature.</source>
        <translation>Verwaltet eine Sammlung von Zitaten und macht eines davon zur E-Mail-Signatur.</translation>
    </message>
    <message id="CommandLineUnexpectedArgument">
        <source>Unexpected argument &apos;%1&apos;.</source>
        <translation>Unerwartetes Argument „%1“.</translation>
    </message>
    <message id="CommandLineTryHelp">
        <source>Try &apos;%1 --help&apos; for more information.</source>
        <translation>„%1 --help“ zeigt weitere Informationen.</translation>
    </message>
    <message id="MenuFile">
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message id="MenuFileSave">
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message id="MenuFileQuit">
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message id="MenuEdit">
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message id="MenuEditUndo">
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message id="MenuEditRedo">
        <source>&amp;Redo</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message id="MenuHelp">
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message id="MenuHelpBook">
        <source>%1 &amp;Help</source>
        <translation>%1-&amp;Hilfe</translation>
    </message>
    <message id="MenuAbout">
        <source>&amp;About %1</source>
        <translation>Ü&amp;ber %1</translation>
    </message>
    <message id="EditorFontMonospaced">
        <source>Monospaced</source>
        <translation>Festbreite</translation>
    </message>
    <message id="EditorFontSystem">
        <source>System</source>
        <translation>System</translation>
    </message>
    <message id="EditorFontSerif">
        <source>Serif</source>
        <translation>Serifen</translation>
    </message>
    <message id="EditorFontPopupToolTip">
        <source>Font of the quote editor</source>
        <translation>Schrift des Zitat-Editors</translation>
    </message>
    <message id="EditorCancelEdit">
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message id="EditorConfirmEdit">
        <source>Confirm</source>
        <translation>Übernehmen</translation>
    </message>
    <message id="EditorNoQuotePlaceholder">
        <source>Select a quote in the list, or add one.</source>
        <translation>Wählen Sie ein Zitat in der Liste aus oder fügen Sie eines hinzu.</translation>
    </message>
    <message id="CommandChooseQuote">
        <source>&amp;Use as Signature</source>
        <translation>&amp;Als Signatur verwenden</translation>
    </message>
    <message id="CommandAddQuote">
        <source>&amp;Add Quote</source>
        <translation>Zitat &amp;hinzufügen</translation>
    </message>
    <message id="CommandRemoveQuote">
        <source>&amp;Remove Quote</source>
        <translation>Zitat &amp;entfernen</translation>
    </message>
    <message id="CommandRemoveAllQuotes">
        <source>Remove A&amp;ll Quotes</source>
        <translation>A&amp;lle Zitate entfernen</translation>
    </message>
    <message id="CommandEditQuote">
        <source>&amp;Edit Quote</source>
        <translation>Zitat &amp;bearbeiten</translation>
    </message>
    <message id="CommandImportQuotes">
        <source>&amp;Import Quotes…</source>
        <translation>Zitate &amp;importieren …</translation>
    </message>
    <message id="CommandSettings">
        <source>&amp;Settings…</source>
        <translation>Einstellu&amp;ngen …</translation>
    </message>
    <message id="CommandFindQuotes">
        <source>&amp;Find Quotes</source>
        <translation>Zitate &amp;suchen</translation>
    </message>
    <message id="ButtonRemoveAllQuotes">
        <source>Remove &amp;All</source>
        <translation>Alle e&amp;ntfernen</translation>
    </message>
    <message id="ButtonImportQuotes">
        <source>&amp;Import…</source>
        <translation>&amp;Importieren …</translation>
    </message>
    <message id="ButtonSettings">
        <source>Se&amp;ttings…</source>
        <translation>Einstellun&amp;gen …</translation>
    </message>
    <message id="MenuQuotes">
        <source>&amp;Quotes</source>
        <translation>&amp;Zitate</translation>
    </message>
    <message id="QuotesFilterPlaceholder">
        <source>Filter quotes</source>
        <translation>Zitate filtern</translation>
    </message>
    <message id="WindowTitleFormatString">
        <source>%1 – %L2 quotes</source>
        <translation>%1 – %L2 Zitate</translation>
    </message>
    <message id="QuotesSuccessfullyImportedTitle">
        <source>Quotes Imported</source>
        <translation>Zitate importiert</translation>
    </message>
    <message id="QuotesImported" numerus="yes">
        <source>%n quote(s) were added to your collection.</source>
        <translation>
            <numerusform>%n Zitat wurde Ihrer Sammlung hinzugefügt.</numerusform>
            <numerusform>%n Zitate wurden Ihrer Sammlung hinzugefügt.</numerusform>
        </translation>
    </message>
    <message id="NoOutputFileSpecified">
        <source>No Output File Specified</source>
        <translation>Keine Ausgabedatei festgelegt</translation>
    </message>
    <message id="PleaseSpecifyOutputFile">
        <source>Please specify an output file</source>
        <translation>Bitte legen Sie eine Ausgabedatei fest</translation>
    </message>
    <message id="AlreadyRunningBroughtToFront">
        <source>Quillbox2 is already running; its window has been brought to the front.</source>
        <translation>Quillbox2 läuft bereits; sein Fenster wurde in den Vordergrund geholt.</translation>
    </message>
    <message id="AlreadyRunningNoAnswer">
        <source>Quillbox2 is already running but does not answer.</source>
        <translation>Quillbox2 läuft bereits, antwortet aber nicht.</translation>
    </message>
    <message id="HelperCommandLineDescription">
        <source>Changes the e-mail signature file of Quillbox2 to another quote at the interval set in Quillbox2, while automatic changes are on.</source>
        <translation>Ersetzt die E-Mail-Signaturdatei von Quillbox2 in dem in Quillbox2 eingestellten Abstand durch ein anderes Zitat, solange der automatische Wechsel eingeschaltet ist.</translation>
    </message>
    <message id="HelperCommandLinePrintOption">
        <source>Print the next quote to standard output and exit (for mail clients that run a command for the signature).</source>
        <translation>Das nächste Zitat auf der Standardausgabe ausgeben und beenden (für E-Mail-Programme, die für die Signatur einen Befehl ausführen).</translation>
    </message>
    <message id="BatchImportChooseFileTitle">
        <source>Import Quotes from a Text File</source>
        <translation>Zitate aus einer Textdatei importieren</translation>
    </message>
    <message id="BatchImportSelectSeparatorTitle">
        <source>Select the Separator</source>
        <translation>Trennzeile wählen</translation>
    </message>
    <message id="BatchImportSelectSeparatorDescription">
        <source>Which line separates one quote from the next? These lines occur most often in the file (⏎ stands for a blank line).</source>
        <translation>Welche Zeile trennt ein Zitat vom nächsten? Diese Zeilen kommen in der Datei am häufigsten vor (⏎ steht für eine Leerzeile).</translation>
    </message>
    <message id="BatchImportImportButton">
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message id="FileTooLarge">
        <source>File Too Large</source>
        <translation>Datei zu groß</translation>
    </message>
    <message id="TheProvidedFileIsTooLargeToImport">
        <source>The provided file is larger than 64 MiB. Split it into smaller files and import them one by one.</source>
        <translation>Die gewählte Datei ist größer als 64 MiB. Teilen Sie sie in kleinere Dateien auf und importieren Sie diese einzeln.</translation>
    </message>
    <message id="FileNotText">
        <source>File not Text</source>
        <translation>Keine Textdatei</translation>
    </message>
    <message id="TheProvidedFileDoesNotLookLikeTextFile">
        <source>The provided file does not look like a text file</source>
        <translation>Die gewählte Datei scheint keine Textdatei zu sein</translation>
    </message>
    <message id="DuplicatesDetectedTitle">
        <source>Duplicates Detected</source>
        <translation>Doppelte Zitate gefunden</translation>
    </message>
    <message id="CollectionContainsDuplicatesAskRemove">
        <source>Your collection contains duplicate quotes. Do you want to remove them?</source>
        <translation>Ihre Sammlung enthält doppelte Zitate. Möchten Sie sie entfernen?</translation>
    </message>
    <message id="QuotesListEmptyQuote">
        <source>New Quote</source>
        <translation>Neues Zitat</translation>
    </message>
    <message id="CurrentSignature.txt">
        <source>CurrentSignature.txt</source>
        <extracomment>Default name of the output signature file</extracomment>
        <translation>AktuelleSignatur.txt</translation>
    </message>
    <message id="PleaseChooseDifferentLocation">
        <source>Please Choose Different Location</source>
        <translation>Bitte wählen Sie einen anderen Ort</translation>
    </message>
    <message id="ICloudDriveNotYetSupported">
        <source>iCloud Drive Not Yet Supported</source>
        <translation>iCloud Drive wird noch nicht unterstützt</translation>
    </message>
    <message id="AboutWindowTitle">
        <source>About %1</source>
        <translation>Über %1</translation>
    </message>
    <message id="AboutVersion">
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message id="AboutDescription">
        <source>Keeps your collection of quotes and turns one of them at a time into the plain-text signature file your mail client reads.</source>
        <translation>Verwaltet Ihre Zitatsammlung und schreibt jeweils eines der Zitate in die Signaturdatei im Klartext, die Ihr E-Mail-Programm liest.</translation>
    </message>
    <message id="AboutCopyright">
        <source>Copyright © 2026 The Quillbox2 developers</source>
        <translation>Copyright © 2026 Die Entwickler von Quillbox2</translation>
    </message>
    <message id="AboutLicenseName">
        <source>GNU General Public License, version 3 or later</source>
        <translation>GNU General Public License, Version 3 oder neuer</translation>
    </message>
    <message id="AboutLicense">
        <source>Free software under the %1 (GPL-3.0-or-later): you may share and change it under its terms. It comes without any warranty.</source>
        <translation>Freie Software unter der %1 (GPL-3.0-or-later): Sie dürfen sie zu deren Bedingungen weitergeben und verändern. Sie wird ohne jede Gewährleistung bereitgestellt.</translation>
    </message>
    <message id="AboutSampleCredits">
        <source>The sample collection holds classic quotations in the public domain, by William Shakespeare, William Blake, Emily Dickinson, Walt Whitman, John Donne, William Wordsworth, John Keats, Alexander Pope, Jane Austen, Charles Dickens, Herman Melville, Henry David Thoreau, Benjamin Franklin, Abraham Lincoln, Patrick Henry, Francis Bacon, Johann Wolfgang von Goethe, René Descartes, Blaise Pascal, Jean-Jacques Rousseau, Voltaire, Dante Alighieri, Miguel de Cervantes, Julius Caesar, Horace, Terence, Augustus, Socrates and the Delphic maxims.</source>
        <translation>Die Beispielsammlung enthält klassische, gemeinfreie Zitate von William Shakespeare, William Blake, Emily Dickinson, Walt Whitman, John Donne, William Wordsworth, John Keats, Alexander Pope, Jane Austen, Charles Dickens, Herman Melville, Henry David Thoreau, Benjamin Franklin, Abraham Lincoln, Patrick Henry, Francis Bacon, Johann Wolfgang von Goethe, René Descartes, Blaise Pascal, Jean-Jacques Rousseau, Voltaire, Dante Alighieri, Miguel de Cervantes, Julius Caesar, Horaz, Terenz, Augustus, Sokrates sowie die delphischen Maximen.</translation>
    </message>
    <message id="AboutQtButton">
        <source>About Qt</source>
        <translation>Über Qt</translation>
    </message>
    <message id="AlertYesButton">
        <source>Yes</source>
        <extracomment>Yes field in dialog</extracomment>
        <translation>Ja</translation>
    </message>
    <message id="AlertNoButton">
        <source>No</source>
        <extracomment>No field in dialog</extracomment>
        <translation>Nein</translation>
    </message>
    <message id="AboutQtText">
        <source>&lt;h3&gt;About Qt&lt;/h3&gt;&lt;p&gt;This program uses Qt version %1.&lt;/p&gt;&lt;p&gt;Qt is a C++ toolkit for cross-platform application development, available under the GNU Lesser General Public License version 3 and under commercial licences. See &lt;a href=&quot;https://www.qt.io/&quot;&gt;qt.io&lt;/a&gt;.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;Über Qt&lt;/h3&gt;&lt;p&gt;Dieses Programm verwendet Qt in Version %1.&lt;/p&gt;&lt;p&gt;Qt ist ein C++-Werkzeugkasten für plattformübergreifende Anwendungsentwicklung, erhältlich unter der GNU Lesser General Public License Version 3 und unter kommerziellen Lizenzen. Siehe &lt;a href=&quot;https://www.qt.io/&quot;&gt;qt.io&lt;/a&gt;.&lt;/p&gt;</translation>
    </message>
    <message id="EditorEmptyQuotePlaceholder">
        <source>Type the quote here.</source>
        <translation>Geben Sie hier das Zitat ein.</translation>
    </message>
    <message id="EditorFontAccessibleName">
        <source>Editor Font</source>
        <translation>Schrift des Editors</translation>
    </message>
    <message id="EditorQuoteTextAccessibleName">
        <source>Quote Text</source>
        <translation>Zitattext</translation>
    </message>
    <message id="QuotesFilterAccessibleName">
        <source>Filter Quotes</source>
        <translation>Zitate filtern</translation>
    </message>
    <message id="QuotesListAccessibleName">
        <source>Quotes</source>
        <translation>Zitate</translation>
    </message>
    <message id="BatchImportSeparatorBlankLine">
        <source>Blank line</source>
        <translation>Leerzeile</translation>
    </message>
    <message id="BatchImportSeparatorPercentLine">
        <source>Percent sign line</source>
        <translation>Zeile mit Prozentzeichen</translation>
    </message>
    <message id="BatchImportSeparatorOtherLine">
        <source>Line “%1”</source>
        <translation>Zeile „%1“</translation>
    </message>
</context>
<context>
    <name>QBSettingsView</name>
    <message id="SettingsOutputFileLabel">
        <source>&amp;Signature file:</source>
        <translation>&amp;Signaturdatei:</translation>
    </message>
    <message id="SettingsOutputFileToolTip">
        <source>Choose the file your mail client reads as its signature</source>
        <translation>Die Datei wählen, die Ihr E-Mail-Programm als Signatur liest</translation>
    </message>
    <message id="SettingsIntervalLabel">
        <source>Change the quote e&amp;very:</source>
        <translation>Zitat wechseln a&amp;lle:</translation>
    </message>
    <message id="IntervalOneMinute">
        <source>1 minute</source>
        <translation>1 Minute</translation>
    </message>
    <message id="IntervalTwoMinutes">
        <source>2 minutes</source>
        <translation>2 Minuten</translation>
    </message>
    <message id="IntervalFiveMinutes">
        <source>5 minutes</source>
        <translation>5 Minuten</translation>
    </message>
    <message id="IntervalTenMinutes">
        <source>10 minutes</source>
        <translation>10 Minuten</translation>
    </message>
    <message id="IntervalFifteenMinutes">
        <source>15 minutes</source>
        <translation>15 Minuten</translation>
    </message>
    <message id="IntervalThirtyMinutes">
        <source>30 minutes</source>
        <translation>30 Minuten</translation>
    </message>
    <message id="IntervalOneHour">
        <source>1 hour</source>
        <translation>1 Stunde</translation>
    </message>
    <message id="IntervalTwoHours">
        <source>2 hours</source>
        <translation>2 Stunden</translation>
    </message>
    <message id="IntervalFourHours">
        <source>4 hours</source>
        <translation>4 Stunden</translation>
    </message>
    <message id="IntervalEightHours">
        <source>8 hours</source>
        <translation>8 Stunden</translation>
    </message>
    <message id="IntervalTwelveHours">
        <source>12 hours</source>
        <translation>12 Stunden</translation>
    </message>
    <message id="IntervalOneDay">
        <source>1 day</source>
        <translation>1 Tag</translation>
    </message>
    <message id="SettingsAutoRandomize">
        <source>Change the si&amp;gnature automatically</source>
        <translation>Signatur a&amp;utomatisch wechseln</translation>
    </message>
    <message id="SettingsClearTrailingEmptyLines">
        <source>&amp;Remove empty lines at the end of quotes</source>
        <translation>Leere Zeilen am Ende von Zitaten &amp;entfernen</translation>
    </message>
    <message id="SettingsWarnForDuplicates">
        <source>&amp;Warn about duplicate quotes</source>
        <translation>&amp;Vor doppelten Zitaten warnen</translation>
    </message>
    <message id="SettingsShareUsageStatistics">
        <source>Share an&amp;onymous usage statistics</source>
        <translation>Anonyme Nutzungsstatistiken &amp;teilen</translation>
    </message>
    <message id="SettingsUsageStatisticsUnavailable">
        <source>This build of Quillbox2 has no statistics service to send to, so it never sends usage statistics.</source>
        <translation>Diese Ausgabe von Quillbox2 hat keinen Statistikdienst, an den sie senden könnte, und sendet daher nie Nutzungsstatistiken.</translation>
    </message>
    <message id="SettingsHelpButton">
        <source>Hel&amp;p</source>
        <translation>Hil&amp;fe</translation>
    </message>
    <message id="SettingsNoOutputFileChosen">
        <source>No signature file chosen</source>
        <translation>Keine Signaturdatei gewählt</translation>
    </message>
    <message id="SettingsChooseOutputFile">
        <source>&amp;Choose…</source>
        <translation>&amp;Wählen…</translation>
    </message>
    <message id="SettingsChooseOutputFileAccessibleName">
        <source>Choose Signature File</source>
        <translation>Signaturdatei wählen</translation>
    </message>
    <message id="SettingsIntervalAccessibleName">
        <source>Change Interval</source>
        <translation>Wechselintervall</translation>
    </message>
</context>
</TS>
