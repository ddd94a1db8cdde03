<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name></name>
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
        <source>How are the quotes in “%1” separated? The first quotes of the chosen way are shown below.</source>
        <translation>Wie sind die Zitate in „%1“ getrennt? Die ersten Zitate der gewählten Art stehen unten.</translation>
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
    <message id="QuoteListEmpty">
        <source>No quotes yet. Add one, or import many from a text file.</source>
        <translation>Noch keine Zitate. Fügen Sie eines hinzu oder importieren Sie viele aus einer Textdatei.</translation>
    </message>
    <message id="QuoteListNoMatch">
        <source>No quote matches “%1”.</source>
        <translation>Kein Zitat passt zu „%1“.</translation>
    </message>
    <message id="CommandLineImportOption">
        <source>Add the quotes of FILE to the collection, without a window.</source>
        <translation>Die Zitate aus FILE ohne Fenster zur Sammlung hinzufügen.</translation>
    </message>
    <message id="CommandLineSeparatorOption">
        <source>How --import cuts text into quotes: a separator line such as &quot;%&quot;, or &quot;blank&quot; (blank lines), &quot;line&quot; (one quote per line), &quot;whole&quot; (one quote).</source>
        <translation>Wie --import Text in Zitate teilt: eine Trennzeile wie &quot;%&quot; oder &quot;blank&quot; (Leerzeilen), &quot;line&quot; (ein Zitat pro Zeile), &quot;whole&quot; (ein Zitat).</translation>
    </message>
    <message id="CommandLineDryRunOption">
        <source>With --import: say how each file would be cut and how many quotes it holds, and change nothing.</source>
        <translation>Mit --import: für jede Datei sagen, wie sie geteilt würde und wie viele Zitate sie enthält, ohne etwas zu ändern.</translation>
    </message>
    <message id="CommandLineExportOption">
        <source>Write the collection to FILE, without a window.</source>
        <translation>Die Sammlung ohne Fenster in FILE schreiben.</translation>
    </message>
    <message id="CommandLineFormatOption">
        <source>With --export: fortune, text or json (default: by FILE&apos;s extension, else fortune).</source>
        <translation>Mit --export: fortune, text oder json (sonst nach der Endung von FILE, andernfalls fortune).</translation>
    </message>
    <message id="CommandLineFilesArgument">
        <source>Files to import into the running window (or the one this starts).</source>
        <translation>Dateien, die das laufende (oder hiermit gestartete) Fenster importiert.</translation>
    </message>
    <message id="CommandLineUnknownFormat">
        <source>Unknown format &apos;%1&apos;; use fortune, text or json.</source>
        <translation>Unbekanntes Format „%1“; fortune, text oder json verwenden.</translation>
    </message>
    <message id="CommandLineEmptySeparator">
        <source>An empty separator cuts nothing; use &quot;blank&quot; for blank lines.</source>
        <translation>Ein leeres Trennzeichen teilt nichts; für Leerzeilen &quot;blank&quot; verwenden.</translation>
    </message>
    <message id="AlreadyRunningImports">
        <source>Quillbox2 is already running; it imports the files.</source>
        <translation>Quillbox2 läuft bereits; es importiert die Dateien.</translation>
    </message>
    <message id="CommandLineOptionWithoutCommand">
        <source>--separator and --dry-run go with --import, --format with --export.</source>
        <translation>--separator und --dry-run gehören zu --import, --format zu --export.</translation>
    </message>
    <message id="CommandExportQuotes">
        <source>E&amp;xport Quotes…</source>
        <oldsource>Export Quotes…</oldsource>
        <translation>Zitate e&amp;xportieren …</translation>
    </message>
    <message id="BatchImportSingleQuoteTitle">
        <source>Import a Single Quote</source>
        <translation>Ein einzelnes Zitat importieren</translation>
    </message>
    <message id="BatchImportSingleQuoteDescription">
        <source>“%1” holds a single quote. Import it?</source>
        <translation>„%1“ enthält ein einzelnes Zitat. Importieren?</translation>
    </message>
    <message id="BatchImportChoiceLine" numerus="yes">
        <source>Lines “%1” — %Ln quote(s)</source>
        <translation>
            <numerusform>Zeilen „%1“ – %Ln Zitat</numerusform>
            <numerusform>Zeilen „%1“ – %Ln Zitate</numerusform>
        </translation>
    </message>
    <message id="BatchImportChoiceBlankLine" numerus="yes">
        <source>Blank lines — %Ln quote(s)</source>
        <translation>
            <numerusform>Leerzeilen – %Ln Zitat</numerusform>
            <numerusform>Leerzeilen – %Ln Zitate</numerusform>
        </translation>
    </message>
    <message id="BatchImportChoiceOnePerLine" numerus="yes">
        <source>One quote per line — %Ln quote(s)</source>
        <translation>
            <numerusform>Ein Zitat pro Zeile – %Ln Zitat</numerusform>
            <numerusform>Ein Zitat pro Zeile – %Ln Zitate</numerusform>
        </translation>
    </message>
    <message id="BatchImportChoiceWholeFile">
        <source>The whole file as one quote</source>
        <translation>Die ganze Datei als ein Zitat</translation>
    </message>
    <message id="ExportChooseFileTitle">
        <source>Export Quotes</source>
        <translation>Zitate exportieren</translation>
    </message>
    <message id="ExportFormatFortune">
        <source>Fortune file, quotes between “%” lines (*.fortune *)</source>
        <translation>Fortune-Datei, Zitate zwischen „%“-Zeilen (*.fortune *)</translation>
    </message>
    <message id="ExportFormatText">
        <source>Plain text, quotes between blank lines (*.txt)</source>
        <translation>Klartext, Zitate zwischen Leerzeilen (*.txt)</translation>
    </message>
    <message id="ExportFormatJson">
        <source>Quillbox2 collection (*.json)</source>
        <translation>Quillbox2-Sammlung (*.json)</translation>
    </message>
    <message id="ExportDefaultFileName">
        <source>quotes</source>
        <translation>zitate</translation>
    </message>
    <message id="ExportSelectionOnly">
        <source>Only the selected quotes</source>
        <translation>Nur die ausgewählten Zitate</translation>
    </message>
    <message id="ExportFailed">
        <source>The quotes could not be exported to “%1”: %2</source>
        <translation>Die Zitate konnten nicht nach „%1“ exportiert werden: %2</translation>
    </message>
    <message id="ExportSummary" numerus="yes">
        <source>Exported %Ln quote(s) to “%1”.</source>
        <translation>
            <numerusform>%Ln Zitat nach „%1“ exportiert.</numerusform>
            <numerusform>%Ln Zitate nach „%1“ exportiert.</numerusform>
        </translation>
    </message>
    <message id="ImportSummaryOneFile" numerus="yes">
        <source>Imported %Ln quote(s) from “%1”.</source>
        <translation>
            <numerusform>%Ln Zitat aus „%1“ importiert.</numerusform>
            <numerusform>%Ln Zitate aus „%1“ importiert.</numerusform>
        </translation>
    </message>
    <message id="ImportSummaryFiles" numerus="yes">
        <source>Imported %Ln quote(s) from %1 files.</source>
        <translation>
            <numerusform>%Ln Zitat aus %1 Dateien importiert.</numerusform>
            <numerusform>%Ln Zitate aus %1 Dateien importiert.</numerusform>
        </translation>
    </message>
    <message id="ImportSummaryDuplicates" numerus="yes">
        <source>%Ln of them were already in the collection.</source>
        <translation>
            <numerusform>%Ln davon war schon in der Sammlung.</numerusform>
            <numerusform>%Ln davon waren schon in der Sammlung.</numerusform>
        </translation>
    </message>
    <message id="ImportSummaryUnreadableFiles" numerus="yes">
        <source>%Ln file(s) could not be read.</source>
        <translation>
            <numerusform>%Ln Datei konnte nicht gelesen werden.</numerusform>
            <numerusform>%Ln Dateien konnten nicht gelesen werden.</numerusform>
        </translation>
    </message>
    <message id="ImportSkipDuplicatesButton">
        <source>Skip Duplicates</source>
        <translation>Doppelte überspringen</translation>
    </message>
    <message id="ImportUndoButton">
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message id="CommandLineCannotImport">
        <source>%1: cannot import: %2</source>
        <translation>%1: Import nicht möglich: %2</translation>
    </message>
    <message id="CommandLineDryRun" numerus="yes">
        <source>%1: %Ln quote(s), separator “%2”</source>
        <translation>
            <numerusform>%1: %Ln Zitat, Trennzeichen „%2“</numerusform>
            <numerusform>%1: %Ln Zitate, Trennzeichen „%2“</numerusform>
        </translation>
    </message>
    <message id="CommandLineNoCollection">
        <source>no place for the collection (is $HOME set?)</source>
        <translation>kein Ort für die Sammlung (ist $HOME gesetzt?)</translation>
    </message>
    <message id="CommandLineCollectionUnreadable">
        <source>%1: the collection cannot be read, so it is left alone</source>
        <translation>%1: Die Sammlung kann nicht gelesen werden und bleibt unverändert</translation>
    </message>
    <message id="CommandLineCollectionNotSaved">
        <source>%1: the collection could not be saved</source>
        <translation>%1: Die Sammlung konnte nicht gesichert werden</translation>
    </message>
    <message id="CommandLineCannotExport">
        <source>%1: cannot export: %2</source>
        <translation>%1: Export nicht möglich: %2</translation>
    </message>
    <message id="SignatureLongerThanLimit">
        <source>The quote takes %1 lines, more than the signature&apos;s limit of %2; it was written all the same.</source>
        <translation>Das Zitat hat %1 Zeilen, mehr als die Grenze der Signatur von %2; es wurde trotzdem geschrieben.</translation>
    </message>
    <message id="QuotesListOnlyTooLong">
        <source>Only quotes too long for the signature</source>
        <translation>Nur Zitate, die für die Signatur zu lang sind</translation>
    </message>
    <message id="QuotesListTooLongNote">
        <source>Longer than the signature&apos;s line limit: the automatic changes pass over it.</source>
        <translation>Länger als die Zeilengrenze der Signatur: der automatische Wechsel übergeht es.</translation>
    </message>
    <message id="SettingsSignatureWrapColumns">
        <source>%1 characters</source>
        <translation>%1 Zeichen</translation>
    </message>
    <message id="SettingsSignatureSection">
        <source>Signature</source>
        <translation>Signatur</translation>
    </message>
    <message id="SettingsSignatureTemplateToolTip">
        <source>Your own lines, with {quote} where the quote goes</source>
        <translation>Ihre eigenen Zeilen, mit {quote} an der Stelle des Zitats</translation>
    </message>
    <message id="SettingsSignatureWrapOff">
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message id="SettingsSignatureNoLineLimit">
        <source>No limit</source>
        <translation>Keine Grenze</translation>
    </message>
    <message id="SettingsSignaturePreviewDescription">
        <source>Exactly what the signature file receives for the selected quote</source>
        <translation>Genau das, was die Signaturdatei für das ausgewählte Zitat erhält</translation>
    </message>
    <message id="SettingsSignatureTemplateLabel">
        <source>Te&amp;mplate:</source>
        <oldsource>&amp;Template:</oldsource>
        <translation>V&amp;orlage:</translation>
    </message>
    <message id="SettingsSignatureWrapLabel">
        <source>&amp;Wrap the quote at:</source>
        <translation>Zitat umb&amp;rechen bei:</translation>
    </message>
    <message id="SettingsSignatureMaxLinesLabel">
        <source>&amp;Longest quote, in lines:</source>
        <translation>&amp;Maximale Zitatlänge in Zeilen:</translation>
    </message>
    <message id="SettingsSignaturePreviewLabel">
        <source>Preview:</source>
        <translation>Vorschau:</translation>
    </message>
    <message id="SettingsSignatureTemplateRefused">
        <source>The template needs {quote} where the quote goes; until then the last template with it stays in use.</source>
        <translation>Die Vorlage braucht {quote} an der Stelle des Zitats; bis dahin bleibt die letzte Vorlage mit {quote} in Gebrauch.</translation>
    </message>
    <message id="SettingsSignaturePreviewExample">
        <source>Select a quote in the list to see its signature here.</source>
        <translation>Wählen Sie ein Zitat in der Liste, um hier seine Signatur zu sehen.</translation>
    </message>
    <message id="SettingsSignatureQuoteTooLong">
        <source>This quote takes %1 lines, more than %2: the automatic changes pass over it, and Use as Signature writes it all the same.</source>
        <translation>Dieses Zitat hat %1 Zeilen, mehr als %2: der automatische Wechsel übergeht es, und „Als Signatur verwenden“ schreibt es trotzdem.</translation>
    </message>
    <message id="CollectionDamagedMessage">
        <source>Your quotes file could not be read; what could be read is shown. The file as it was is kept at %1.</source>
        <translation>Ihre Zitatdatei konnte nicht gelesen werden; angezeigt wird, was sich lesen ließ. Die Datei, wie sie war, ist unter %1 aufbewahrt.</translation>
    </message>
    <message id="FirstRunHint">
        <source>First choose where your signature file goes, then point your mail program at it.</source>
        <translation>Wählen Sie zuerst, wo Ihre Signaturdatei liegen soll, und richten Sie dann Ihr E-Mail-Programm auf sie ein.</translation>
    </message>
    <message id="ChooseSignatureFileButton">
        <source>Choose Signature File…</source>
        <translation>Signaturdatei wählen …</translation>
    </message>
    <message id="FirstRunHintLink">
        <source>How?</source>
        <translation>Wie?</translation>
    </message>
    <message id="CollectionSaveFailed">
        <source>Your changes could not be saved: %1</source>
        <translation>Ihre Änderungen konnten nicht gesichert werden: %1</translation>
    </message>
    <message id="TryAgainButton">
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message id="MenuEditUndoNamed">
        <source>&amp;Undo %1</source>
        <translation>&amp;Rückgängig: %1</translation>
    </message>
    <message id="MenuEditRedoNamed">
        <source>&amp;Redo %1</source>
        <translation>&amp;Wiederholen: %1</translation>
    </message>
    <message id="QuoteRemovedResult">
        <source>Removed “%1”</source>
        <translation>„%1“ entfernt</translation>
    </message>
    <message id="RemoveAllQuestionTitle" numerus="yes">
        <source>Remove all %n quote(s)?</source>
        <translation>
            <numerusform>%n Zitat entfernen?</numerusform>
            <numerusform>Alle %n Zitate entfernen?</numerusform>
        </translation>
    </message>
    <message id="RemoveAllQuestionMessage">
        <source>Edit ▸ Undo brings them back.</source>
        <translation>Mit Bearbeiten ▸ Rückgängig holen Sie sie zurück.</translation>
    </message>
    <message id="RemovedAllResult" numerus="yes">
        <source>Removed all %n quote(s)</source>
        <translation>
            <numerusform>%n Zitat entfernt</numerusform>
            <numerusform>Alle %n Zitate entfernt</numerusform>
        </translation>
    </message>
    <message id="SignatureUpdatedResult">
        <source>Signature updated</source>
        <translation>Signatur aktualisiert</translation>
    </message>
    <message id="SignatureWriteFailed">
        <source>The signature file %1 could not be written. %2</source>
        <translation>Die Signaturdatei %1 konnte nicht geschrieben werden. %2</translation>
    </message>
    <message id="ChooseAnotherSignatureFileButton">
        <source>Choose Another File…</source>
        <translation>Andere Datei wählen …</translation>
    </message>
    <message id="UndoNameEditQuote">
        <source>Edit Quote</source>
        <translation>Zitat bearbeiten</translation>
    </message>
    <message id="UndoNameAddQuote">
        <source>Add Quote</source>
        <translation>Zitat hinzufügen</translation>
    </message>
    <message id="UndoNameRemoveDuplicates">
        <source>Remove Duplicates</source>
        <translation>Doppelte entfernen</translation>
    </message>
    <message id="DuplicatesRemovedResult" numerus="yes">
        <source>Removed %n duplicate(s)</source>
        <translation>
            <numerusform>%n doppeltes Zitat entfernt</numerusform>
            <numerusform>%n doppelte Zitate entfernt</numerusform>
        </translation>
    </message>
    <message id="UndoNameRemoveQuote">
        <source>Remove Quote</source>
        <translation>Zitat entfernen</translation>
    </message>
    <message id="UndoNameRemoveAll">
        <source>Remove All</source>
        <translation>Alle entfernen</translation>
    </message>
    <message id="SignatureFileReplacedReason">
        <source>Another file has taken its place since it was chosen.</source>
        <translation>Seit sie gewählt wurde, steht eine andere Datei an ihrer Stelle.</translation>
    </message>
    <message id="SignatureNoFileReason">
        <source>No signature file is chosen.</source>
        <translation>Es ist keine Signaturdatei gewählt.</translation>
    </message>
    <message id="HelperStartFailed">
        <source>The quote helper could not be started: %1</source>
        <translation>Der Zitat-Helfer konnte nicht gestartet werden: %1</translation>
    </message>
    <message id="HelperStopFailed">
        <source>The quote helper could not be stopped: %1</source>
        <translation>Der Zitat-Helfer konnte nicht beendet werden: %1</translation>
    </message>
    <message id="HelperStopped">
        <source>The quote helper stopped, so the signature no longer changes by itself.</source>
        <translation>Der Zitat-Helfer wurde beendet, daher wechselt die Signatur nicht mehr von selbst.</translation>
    </message>
    <message id="HelperNotRunning">
        <source>The signature is set to change by itself, but the quote helper is not running.</source>
        <translation>Die Signatur soll von selbst wechseln, aber der Zitat-Helfer läuft nicht.</translation>
    </message>
    <message id="HelperStartButton">
        <source>Start Helper</source>
        <translation>Helfer starten</translation>
    </message>
    <message id="ReplaceForeignFileTitle">
        <source>Replace “%1”?</source>
        <translation>„%1“ ersetzen?</translation>
    </message>
    <message id="ReplaceForeignFileMessage">
        <source>“%1” already exists and was not written by %2. Its contents will be replaced by your quotes.</source>
        <translation>„%1“ gibt es schon, und %2 hat sie nicht geschrieben. Ihr Inhalt wird durch Ihre Zitate ersetzt.</translation>
    </message>
    <message id="ReplaceForeignFileButton">
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message id="HelpShownInAppMessage">
        <source>No web browser could open the help, so it is shown in a window of %1.</source>
        <translation>Kein Webbrowser konnte die Hilfe öffnen, daher zeigt %1 sie in einem eigenen Fenster.</translation>
    </message>
    <message id="HelpWindowBack">
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message id="HelpWindowForward">
        <source>Forward</source>
        <translation>Vor</translation>
    </message>
    <message id="HelpWindowContents">
        <source>Contents</source>
        <translation>Inhalt</translation>
    </message>
    <message id="MessageCloseButton">
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message id="MessageUndoButton">
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message id="QuotesConflictCopyKeptMessage">
        <source>Another program changed your quotes while Quillbox2 had them open. Its version was kept at %1.</source>
        <translation>Ein anderes Programm hat Ihre Zitate geändert, während Quillbox2 sie geöffnet hatte. Dessen Fassung wurde unter %1 aufbewahrt.</translation>
    </message>
    <message id="CommandNextQuoteNow">
        <source>&amp;Next Quote Now</source>
        <oldsource>Next Quote Now</oldsource>
        <translation>Nächstes Zitat &amp;jetzt</translation>
    </message>
    <message id="NextQuoteNoSignatureFile">
        <source>Choose a signature file first.</source>
        <translation>Wählen Sie zuerst eine Signaturdatei aus.</translation>
    </message>
    <message id="StatusBarChooseSignatureFile">
        <source>Choose…</source>
        <translation>Auswählen…</translation>
    </message>
    <message id="NextQuoteNotWritten">
        <source>The next quote could not be put into the signature file: %1</source>
        <translation>Das nächste Zitat konnte nicht in die Signaturdatei geschrieben werden: %1</translation>
    </message>
    <message id="StatusBarChooseSignatureFileTip">
        <source>Choose the file your mail program reads as its signature</source>
        <translation>Die Datei auswählen, die Ihr E-Mail-Programm als Signatur liest</translation>
    </message>
    <message id="StatusBarNoSignatureFile">
        <source>No signature file chosen</source>
        <translation>Keine Signaturdatei ausgewählt</translation>
    </message>
    <message id="HelperCommandLineNextOption">
        <source>Put the next quote into the signature file now, print it and exit.</source>
        <translation>Das nächste Zitat sofort in die Signaturdatei schreiben, es ausgeben und beenden.</translation>
    </message>
    <message id="HelperCommandLinePrintAndNext">
        <source>--print and --next cannot be used together.</source>
        <translation>--print und --next können nicht zusammen verwendet werden.</translation>
    </message>
    <message id="QuotesListCurrentSignature">
        <source>Current signature: %1</source>
        <translation>Aktuelle Signatur: %1</translation>
    </message>
    <message id="SignatureStateHelperMissing">
        <source>the helper program %1 is missing</source>
        <translation>das Hilfsprogramm %1 fehlt</translation>
    </message>
    <message id="SignatureStateEveryHours" numerus="yes">
        <source>every %n hour(s)</source>
        <translation>
            <numerusform>alle %n Std.</numerusform>
            <numerusform>alle %n Std.</numerusform>
        </translation>
    </message>
    <message id="SignatureStateEveryMinutes" numerus="yes">
        <source>every %n minute(s)</source>
        <translation>
            <numerusform>alle %n Min.</numerusform>
            <numerusform>alle %n Min.</numerusform>
        </translation>
    </message>
    <message id="SignatureStateRotationOff">
        <source>Automatic quote changes are off</source>
        <translation>Automatischer Zitatwechsel ist aus</translation>
    </message>
    <message id="SignatureStateRotating">
        <source>New quote %1</source>
        <translation>Neues Zitat %1</translation>
    </message>
    <message id="SignatureStateRotatingNext">
        <source>New quote %1, next at %2</source>
        <translation>Neues Zitat %1, nächstes um %2</translation>
    </message>
    <message id="SignatureStateHelperNotRunning">
        <source>Automatic changes are on, but the helper is not running</source>
        <translation>Automatischer Wechsel ist an, aber das Hilfsprogramm läuft nicht</translation>
    </message>
    <message id="SignatureStateHelperNotRunningBecause">
        <source>Automatic changes are on, but the helper is not running: %1</source>
        <translation>Automatischer Wechsel ist an, aber das Hilfsprogramm läuft nicht: %1</translation>
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
    <message id="QuoteListPlaceholderAddQuote">
        <source>Add Quote</source>
        <translation>Zitat hinzufügen</translation>
    </message>
    <message id="QuoteListPlaceholderImport">
        <source>Import…</source>
        <translation>Importieren …</translation>
    </message>
    <message id="HelpWindowTitle">
        <source>%1 Help</source>
        <translation>%1-Hilfe</translation>
    </message>
    <message id="BatchImportPreviewAccessibleName">
        <source>Preview of the first quotes</source>
        <translation>Vorschau der ersten Zitate</translation>
    </message>
    <message id="CommandChooseSignatureFile">
        <source>&amp;Choose Signature File…</source>
        <translation>Signaturdatei &amp;wählen …</translation>
    </message>
    <message id="ImportProgressTitle">
        <source>Importing Quotes</source>
        <translation>Zitate werden importiert</translation>
    </message>
    <message id="ImportProgressReading" numerus="yes">
        <source>Reading %Ln file(s)…</source>
        <translation>
            <numerusform>%Ln Datei wird gelesen…</numerusform>
            <numerusform>%Ln Dateien werden gelesen…</numerusform>
        </translation>
    </message>
    <message id="ExportLosingTitle">
        <source>Some Quotes Would Change</source>
        <translation>Einige Zitate würden sich ändern</translation>
    </message>
    <message id="ExportLosingFortune" numerus="yes">
        <source>%Ln of the %1 quotes would not read back as they are from a fortune file, where a line “%” separates quotes.</source>
        <translation>
            <numerusform>%Ln der %1 Zitate käme aus einer Fortune-Datei nicht unverändert zurück, denn dort trennt eine Zeile „%“ die Zitate.</numerusform>
            <numerusform>%Ln der %1 Zitate kämen aus einer Fortune-Datei nicht unverändert zurück, denn dort trennt eine Zeile „%“ die Zitate.</numerusform>
        </translation>
    </message>
    <message id="ExportLosingText" numerus="yes">
        <source>%Ln of the %1 quotes would not read back as they are from plain text, where blank lines (or another line repeated between quotes) separate quotes.</source>
        <translation>
            <numerusform>%Ln der %1 Zitate käme aus reinem Text nicht unverändert zurück, denn dort trennen Leerzeilen (oder eine andere zwischen den Zitaten wiederholte Zeile) die Zitate.</numerusform>
            <numerusform>%Ln der %1 Zitate kämen aus reinem Text nicht unverändert zurück, denn dort trennen Leerzeilen (oder eine andere zwischen den Zitaten wiederholte Zeile) die Zitate.</numerusform>
        </translation>
    </message>
    <message id="ExportLosingJsonKeepsAll">
        <source>The Quillbox2 collection format (JSON) keeps every quote exactly.</source>
        <translation>Das Sammlungsformat von Quillbox2 (JSON) bewahrt jedes Zitat genau.</translation>
    </message>
    <message id="ExportLosingAsJson">
        <source>Export as &amp;JSON</source>
        <translation>Als &amp;JSON exportieren</translation>
    </message>
    <message id="ExportLosingAnyway">
        <source>Export &amp;Anyway</source>
        <translation>&amp;Trotzdem exportieren</translation>
    </message>
    <message id="ExportQuotesNotReadingBack" numerus="yes">
        <source>%Ln of them will not read back as they are.</source>
        <translation>
            <numerusform>%Ln davon kommt beim Einlesen nicht unverändert zurück.</numerusform>
            <numerusform>%Ln davon kommen beim Einlesen nicht unverändert zurück.</numerusform>
        </translation>
    </message>
    <message id="CommandLineExportNotReadingBack" numerus="yes">
        <source>%1: %Ln quote(s) will not read back as they are from this format; --format json keeps every quote.</source>
        <translation>
            <numerusform>%1: %Ln Zitat kommt aus diesem Format nicht unverändert zurück; --format json bewahrt jedes Zitat.</numerusform>
            <numerusform>%1: %Ln Zitate kommen aus diesem Format nicht unverändert zurück; --format json bewahrt jedes Zitat.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QBQuotesEditorView</name>
    <message id="EditorFontLabel">
        <source>F&amp;ont:</source>
        <translation>&amp;Schrift:</translation>
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
        <translation>Leerzeilen am Zitatende &amp;entfernen</translation>
    </message>
    <message id="SettingsWarnForDuplicates">
        <source>Warn about &amp;duplicate quotes</source>
        <oldsource>&amp;Warn about duplicate quotes</oldsource>
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
