<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name></name>
    <message id="QuotesCannotBeSavedMessage">
        <source>The quotes database at %1 could not be read (%2), so your changes cannot be saved until the file is fixed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="DuplicatesDetectedTitle">
        <source>Duplicates Detected</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CollectionContainsDuplicatesAskRemove">
        <source>Your collection contains duplicate quotes. Do you want to remove them?</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CurrentSignature.txt">
        <source>CurrentSignature.txt</source>
        <extracomment>Default name of the output signature file</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="AlertYesButton">
        <source>Yes</source>
        <extracomment>Yes field in dialog</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="AlertNoButton">
        <source>No</source>
        <extracomment>No field in dialog</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineHelpOption">
        <source>Show this summary of the options and exit.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineVersionOption">
        <source>Show the version and exit.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineDescription">
        <source>Keeps a collection of quotes and turns one of them into an e-mail signature.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineUnexpectedArgument">
        <source>Unexpected argument &apos;%1&apos;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineTryHelp">
        <source>Try &apos;%1 --help&apos; for more information.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="AlreadyRunningBroughtToFront">
        <source>Quillbox2 is already running; its window has been brought to the front.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="AlreadyRunningNoAnswer">
        <source>Quillbox2 is already running but does not answer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="AboutWindowTitle">
        <source>About %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="AboutVersion">
        <source>Version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="AboutDescription">
        <source>Keeps your collection of quotes and turns one of them at a time into the plain-text signature file your mail client reads.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="AboutCopyright">
        <source>Copyright © 2026 The Quillbox2 developers</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="AboutLicenseName">
        <source>GNU General Public License, version 3 or later</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="AboutLicense">
        <source>Free software under the %1 (GPL-3.0-or-later): you may share and change it under its terms. It comes without any warranty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="AboutSampleCredits">
        <source>The sample collection holds classic quotations in the public domain, by William Shakespeare, William Blake, Emily Dickinson, Walt Whitman, John Donne, William Wordsworth, John Keats, Alexander Pope, Jane Austen, Charles Dickens, Herman Melville, Henry David Thoreau, Benjamin Franklin, Abraham Lincoln, Patrick Henry, Francis Bacon, Johann Wolfgang von Goethe, René Descartes, Blaise Pascal, Jean-Jacques Rousseau, Voltaire, Dante Alighieri, Miguel de Cervantes, Julius Caesar, Horace, Terence, Augustus, Socrates and the Delphic maxims.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="MenuHelpBook">
        <source>%1 &amp;Help</source>
        <oldsource>%1 Help</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="AboutQtButton">
        <source>About Qt</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="EditorFontMonospaced">
        <source>Monospaced</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="EditorFontSystem">
        <source>System</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="EditorFontSerif">
        <source>Serif</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="EditorFontPopupToolTip">
        <source>Font of the quote editor</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="EditorCancelEdit">
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="EditorConfirmEdit">
        <source>Confirm</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="EditorNoQuotePlaceholder">
        <source>Select a quote in the list, or add one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandChooseQuote">
        <source>&amp;Use as Signature</source>
        <oldsource>Use as Signature</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandAddQuote">
        <source>&amp;Add Quote</source>
        <oldsource>Add Quote</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandRemoveQuote">
        <source>&amp;Remove Quote</source>
        <oldsource>Remove Quote</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandRemoveAllQuotes">
        <source>Remove A&amp;ll Quotes</source>
        <oldsource>Remove All Quotes</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandEditQuote">
        <source>&amp;Edit Quote</source>
        <oldsource>Edit Quote</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandImportQuotes">
        <source>&amp;Import Quotes…</source>
        <oldsource>Import Quotes…</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandSettings">
        <source>&amp;Settings…</source>
        <oldsource>Settings…</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandFindQuotes">
        <source>&amp;Find Quotes</source>
        <oldsource>Find Quotes</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="MenuQuotes">
        <source>&amp;Quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuotesFilterPlaceholder">
        <source>Filter quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="WindowTitleFormatString">
        <source>%1 – %L2 quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="NoOutputFileSpecified">
        <source>No Output File Specified</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="PleaseSpecifyOutputFile">
        <source>Please specify an output file</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="PleaseChooseDifferentLocation">
        <source>Please Choose Different Location</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ICloudDriveNotYetSupported">
        <source>iCloud Drive Not Yet Supported</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="BatchImportChooseFileTitle">
        <source>Import Quotes from a Text File</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="BatchImportSelectSeparatorTitle">
        <source>Select the Separator</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="BatchImportSelectSeparatorDescription">
        <source>How are the quotes in “%1” separated? The first quotes of the chosen way are shown below.</source>
        <oldsource>Which line separates one quote from the next? These lines occur most often in the file (⏎ stands for a blank line).</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="BatchImportImportButton">
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="FileNotText">
        <source>File not Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="TheProvidedFileDoesNotLookLikeTextFile">
        <source>The provided file does not look like a text file</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="FileTooLarge">
        <source>File Too Large</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="TheProvidedFileIsTooLargeToImport">
        <source>The provided file is larger than 64 MiB. Split it into smaller files and import them one by one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuotesListEmptyQuote">
        <source>New Quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ButtonRemoveAllQuotes">
        <source>Remove &amp;All</source>
        <oldsource>Remove All</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="ButtonImportQuotes">
        <source>&amp;Import…</source>
        <oldsource>Import…</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="ButtonSettings">
        <source>Se&amp;ttings…</source>
        <oldsource>Settings…</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="MenuFile">
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="MenuFileSave">
        <source>&amp;Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="MenuFileQuit">
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="MenuEdit">
        <source>&amp;Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="MenuEditUndo">
        <source>&amp;Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="MenuEditRedo">
        <source>&amp;Redo</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="MenuHelp">
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="MenuAbout">
        <source>&amp;About %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelperCommandLineDescription">
        <source>Changes the e-mail signature file of Quillbox2 to another quote at the interval set in Quillbox2, while automatic changes are on.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelperCommandLinePrintOption">
        <source>Print the next quote to standard output and exit (for mail clients that run a command for the signature).</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="AboutQtText">
        <source>&lt;h3&gt;About Qt&lt;/h3&gt;&lt;p&gt;This program uses Qt version %1.&lt;/p&gt;&lt;p&gt;Qt is a C++ toolkit for cross-platform application development, available under the GNU Lesser General Public License version 3 and under commercial licences. See &lt;a href=&quot;https://www.qt.io/&quot;&gt;qt.io&lt;/a&gt;.&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="EditorEmptyQuotePlaceholder">
        <source>Type the quote here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuoteListEmpty">
        <source>No quotes yet. Add one, or import many from a text file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuoteListNoMatch">
        <source>No quote matches “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineImportOption">
        <source>Add the quotes of FILE to the collection, without a window.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineSeparatorOption">
        <source>How --import cuts text into quotes: a separator line such as &quot;%&quot;, or &quot;blank&quot; (blank lines), &quot;line&quot; (one quote per line), &quot;whole&quot; (one quote).</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineDryRunOption">
        <source>With --import: say how each file would be cut and how many quotes it holds, and change nothing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineExportOption">
        <source>Write the collection to FILE, without a window.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineFormatOption">
        <source>With --export: fortune, text or json (default: by FILE&apos;s extension, else fortune).</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineFilesArgument">
        <source>Files to import into the running window (or the one this starts).</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineUnknownFormat">
        <source>Unknown format &apos;%1&apos;; use fortune, text or json.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineEmptySeparator">
        <source>An empty separator cuts nothing; use &quot;blank&quot; for blank lines.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="AlreadyRunningImports">
        <source>Quillbox2 is already running; it imports the files.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineOptionWithoutCommand">
        <source>--separator and --dry-run go with --import, --format with --export.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandExportQuotes">
        <source>E&amp;xport Quotes…</source>
        <oldsource>Export Quotes…</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="BatchImportSingleQuoteTitle">
        <source>Import a Single Quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="BatchImportSingleQuoteDescription">
        <source>“%1” holds a single quote. Import it?</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="BatchImportChoiceLine" numerus="yes">
        <source>Lines “%1” — %Ln quote(s)</source>
        <translation>
            <numerusform>Lines “%1” — %Ln quote</numerusform>
            <numerusform>Lines “%1” — %Ln quotes</numerusform>
        </translation>
    </message>
    <message id="BatchImportChoiceBlankLine" numerus="yes">
        <source>Blank lines — %Ln quote(s)</source>
        <translation>
            <numerusform>Blank lines — %Ln quote</numerusform>
            <numerusform>Blank lines — %Ln quotes</numerusform>
        </translation>
    </message>
    <message id="BatchImportChoiceOnePerLine" numerus="yes">
        <source>One quote per line — %Ln quote(s)</source>
        <translation>
            <numerusform>One quote per line — %Ln quote</numerusform>
            <numerusform>One quote per line — %Ln quotes</numerusform>
        </translation>
    </message>
    <message id="BatchImportChoiceWholeFile">
        <source>The whole file as one quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ExportChooseFileTitle">
        <source>Export Quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ExportFormatFortune">
        <source>Fortune file, quotes between “%” lines (*.fortune *)</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ExportFormatText">
        <source>Plain text, quotes between blank lines (*.txt)</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ExportFormatJson">
        <source>Quillbox2 collection (*.json)</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ExportDefaultFileName">
        <source>quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ExportSelectionOnly">
        <source>Only the selected quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ExportFailed">
        <source>The quotes could not be exported to “%1”: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ExportSummary" numerus="yes">
        <source>Exported %Ln quote(s) to “%1”.</source>
        <translation>
            <numerusform>Exported %Ln quote to “%1”.</numerusform>
            <numerusform>Exported %Ln quotes to “%1”.</numerusform>
        </translation>
    </message>
    <message id="ImportSummaryOneFile" numerus="yes">
        <source>Imported %Ln quote(s) from “%1”.</source>
        <translation>
            <numerusform>Imported %Ln quote from “%1”.</numerusform>
            <numerusform>Imported %Ln quotes from “%1”.</numerusform>
        </translation>
    </message>
    <message id="ImportSummaryFiles" numerus="yes">
        <source>Imported %Ln quote(s) from %1 files.</source>
        <translation>
            <numerusform>Imported %Ln quote from %1 files.</numerusform>
            <numerusform>Imported %Ln quotes from %1 files.</numerusform>
        </translation>
    </message>
    <message id="ImportSummaryDuplicates" numerus="yes">
        <source>%Ln of them were already in the collection.</source>
        <translation>
            <numerusform>%Ln of them was already in the collection.</numerusform>
            <numerusform>%Ln of them were already in the collection.</numerusform>
        </translation>
    </message>
    <message id="ImportSummaryUnreadableFiles" numerus="yes">
        <source>%Ln file(s) could not be read.</source>
        <translation>
            <numerusform>%Ln file could not be read.</numerusform>
            <numerusform>%Ln files could not be read.</numerusform>
        </translation>
    </message>
    <message id="ImportSkipDuplicatesButton">
        <source>Skip Duplicates</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ImportUndoButton">
        <source>Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineCannotImport">
        <source>%1: cannot import: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineDryRun" numerus="yes">
        <source>%1: %Ln quote(s), separator “%2”</source>
        <translation>
            <numerusform>%1: %Ln quote, separator “%2”</numerusform>
            <numerusform>%1: %Ln quotes, separator “%2”</numerusform>
        </translation>
    </message>
    <message id="CommandLineNoCollection">
        <source>no place for the collection (is $HOME set?)</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineCollectionUnreadable">
        <source>%1: the collection cannot be read, so it is left alone</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineCollectionNotSaved">
        <source>%1: the collection could not be saved</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandLineCannotExport">
        <source>%1: cannot export: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SignatureLongerThanLimit">
        <source>The quote takes %1 lines, more than the signature&apos;s limit of %2; it was written all the same.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuotesListOnlyTooLong">
        <source>Only quotes too long for the signature</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuotesListTooLongNote">
        <source>Longer than the signature&apos;s line limit: the automatic changes pass over it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsSignatureWrapColumns">
        <source>%1 characters</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsSignatureSection">
        <source>Signature</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsSignatureTemplateToolTip">
        <source>Your own lines, with {quote} where the quote goes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsSignatureWrapOff">
        <source>Off</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsSignatureNoLineLimit">
        <source>No limit</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsSignaturePreviewDescription">
        <source>Exactly what the signature file receives for the selected quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsSignatureTemplateLabel">
        <source>Te&amp;mplate:</source>
        <oldsource>&amp;Template:</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsSignatureWrapLabel">
        <source>&amp;Wrap the quote at:</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsSignatureMaxLinesLabel">
        <source>&amp;Longest quote, in lines:</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsSignaturePreviewLabel">
        <source>Preview:</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsSignatureTemplateRefused">
        <source>The template needs {quote} where the quote goes; until then the last template with it stays in use.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsSignaturePreviewExample">
        <source>Select a quote in the list to see its signature here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsSignatureQuoteTooLong">
        <source>This quote takes %1 lines, more than %2: the automatic changes pass over it, and Use as Signature writes it all the same.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CollectionDamagedMessage">
        <source>Your quotes file could not be read; what could be read is shown. The file as it was is kept at %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="FirstRunHint">
        <source>First choose where your signature file goes, then point your mail program at it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ChooseSignatureFileButton">
        <source>Choose Signature File…</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="FirstRunHintLink">
        <source>How?</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CollectionSaveFailed">
        <source>Your changes could not be saved: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="TryAgainButton">
        <source>Try Again</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="MenuEditUndoNamed">
        <source>&amp;Undo %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="MenuEditRedoNamed">
        <source>&amp;Redo %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuoteRemovedResult">
        <source>Removed “%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="RemoveAllQuestionTitle" numerus="yes">
        <source>Remove all %n quote(s)?</source>
        <translation>
            <numerusform>Remove %n quote?</numerusform>
            <numerusform>Remove all %n quotes?</numerusform>
        </translation>
    </message>
    <message id="RemoveAllQuestionMessage">
        <source>Edit ▸ Undo brings them back.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="RemovedAllResult" numerus="yes">
        <source>Removed all %n quote(s)</source>
        <translation>
            <numerusform>Removed %n quote</numerusform>
            <numerusform>Removed all %n quotes</numerusform>
        </translation>
    </message>
    <message id="SignatureUpdatedResult">
        <source>Signature updated</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SignatureWriteFailed">
        <source>The signature file %1 could not be written. %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ChooseAnotherSignatureFileButton">
        <source>Choose Another File…</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="UndoNameEditQuote">
        <source>Edit Quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="UndoNameAddQuote">
        <source>Add Quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="UndoNameRemoveDuplicates">
        <source>Remove Duplicates</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="DuplicatesRemovedResult" numerus="yes">
        <source>Removed %n duplicate(s)</source>
        <translation>
            <numerusform>Removed %n duplicate</numerusform>
            <numerusform>Removed %n duplicates</numerusform>
        </translation>
    </message>
    <message id="UndoNameRemoveQuote">
        <source>Remove Quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="UndoNameRemoveAll">
        <source>Remove All</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SignatureFileReplacedReason">
        <source>Another file has taken its place since it was chosen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SignatureNoFileReason">
        <source>No signature file is chosen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelperStartFailed">
        <source>The quote helper could not be started: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelperStopFailed">
        <source>The quote helper could not be stopped: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelperStopped">
        <source>The quote helper stopped, so the signature no longer changes by itself.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelperNotRunning">
        <source>The signature is set to change by itself, but the quote helper is not running.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelperStartButton">
        <source>Start Helper</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ReplaceForeignFileTitle">
        <source>Replace “%1”?</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ReplaceForeignFileMessage">
        <source>“%1” already exists and was not written by %2. Its contents will be replaced by your quotes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ReplaceForeignFileButton">
        <source>Replace</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelpShownInAppMessage">
        <source>No web browser could open the help, so it is shown in a window of %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelpWindowBack">
        <source>Back</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelpWindowForward">
        <source>Forward</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelpWindowContents">
        <source>Contents</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="MessageCloseButton">
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="MessageUndoButton">
        <source>Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuotesConflictCopyKeptMessage">
        <source>Another program changed your quotes while Quillbox2 had them open. Its version was kept at %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandNextQuoteNow">
        <source>&amp;Next Quote Now</source>
        <oldsource>Next Quote Now</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="NextQuoteNoSignatureFile">
        <source>Choose a signature file first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="StatusBarChooseSignatureFile">
        <source>Choose…</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="NextQuoteNotWritten">
        <source>The next quote could not be put into the signature file: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="StatusBarChooseSignatureFileTip">
        <source>Choose the file your mail program reads as its signature</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="StatusBarNoSignatureFile">
        <source>No signature file chosen</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelperCommandLineNextOption">
        <source>Put the next quote into the signature file now, print it and exit.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelperCommandLinePrintAndNext">
        <source>--print and --next cannot be used together.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuotesListCurrentSignature">
        <source>Current signature: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SignatureStateHelperMissing">
        <source>the helper program %1 is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SignatureStateEveryHours" numerus="yes">
        <source>every %n hour(s)</source>
        <translation>
            <numerusform>every %n hour</numerusform>
            <numerusform>every %n hours</numerusform>
        </translation>
    </message>
    <message id="SignatureStateEveryMinutes" numerus="yes">
        <source>every %n minute(s)</source>
        <translation>
            <numerusform>every %n minute</numerusform>
            <numerusform>every %n minutes</numerusform>
        </translation>
    </message>
    <message id="SignatureStateRotationOff">
        <source>Automatic quote changes are off</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SignatureStateRotating">
        <source>New quote %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SignatureStateRotatingNext">
        <source>New quote %1, next at %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SignatureStateHelperNotRunning">
        <source>Automatic changes are on, but the helper is not running</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SignatureStateHelperNotRunningBecause">
        <source>Automatic changes are on, but the helper is not running: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="EditorFontAccessibleName">
        <source>Editor Font</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="EditorQuoteTextAccessibleName">
        <source>Quote Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuotesFilterAccessibleName">
        <source>Filter Quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuotesListAccessibleName">
        <source>Quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="BatchImportSeparatorBlankLine">
        <source>Blank line</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="BatchImportSeparatorPercentLine">
        <source>Percent sign line</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="BatchImportSeparatorOtherLine">
        <source>Line “%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuoteListPlaceholderAddQuote">
        <source>Add Quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuoteListPlaceholderImport">
        <source>Import…</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="HelpWindowTitle">
        <source>%1 Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="BatchImportPreviewAccessibleName">
        <source>Preview of the first quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandChooseSignatureFile">
        <source>&amp;Choose Signature File…</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ImportProgressTitle">
        <source>Importing Quotes</source>
        <translation>Importing Quotes</translation>
    </message>
    <message id="ImportProgressReading" numerus="yes">
        <source>Reading %Ln file(s)…</source>
        <translation>
            <numerusform>Reading %Ln file…</numerusform>
            <numerusform>Reading %Ln files…</numerusform>
        </translation>
    </message>
    <message id="ExportLosingTitle">
        <source>Some Quotes Would Change</source>
        <translation>Some Quotes Would Change</translation>
    </message>
    <message id="ExportLosingFortune" numerus="yes">
        <source>%Ln of the %1 quotes would not read back as they are from a fortune file, where a line “%” separates quotes.</source>
        <translation>
            <numerusform>%Ln of the %1 quotes would not read back as it is from a fortune file, where a line “%” separates quotes.</numerusform>
            <numerusform>%Ln of the %1 quotes would not read back as they are from a fortune file, where a line “%” separates quotes.</numerusform>
        </translation>
    </message>
    <message id="ExportLosingText" numerus="yes">
        <source>%Ln of the %1 quotes would not read back as they are from plain text, where blank lines (or another line repeated between quotes) separate quotes.</source>
        <translation>
            <numerusform>%Ln of the %1 quotes would not read back as it is from plain text, where blank lines (or another line repeated between quotes) separate quotes.</numerusform>
            <numerusform>%Ln of the %1 quotes would not read back as they are from plain text, where blank lines (or another line repeated between quotes) separate quotes.</numerusform>
        </translation>
    </message>
    <message id="ExportLosingJsonKeepsAll">
        <source>The Quillbox2 collection format (JSON) keeps every quote exactly.</source>
        <translation>The Quillbox2 collection format (JSON) keeps every quote exactly.</translation>
    </message>
    <message id="ExportLosingAsJson">
        <source>Export as &amp;JSON</source>
        <translation>Export as &amp;JSON</translation>
    </message>
    <message id="ExportLosingAnyway">
        <source>Export &amp;Anyway</source>
        <translation>Export &amp;Anyway</translation>
    </message>
    <message id="ExportQuotesNotReadingBack" numerus="yes">
        <source>%Ln of them will not read back as they are.</source>
        <translation>
            <numerusform>%Ln of them will not read back as it is.</numerusform>
            <numerusform>%Ln of them will not read back as they are.</numerusform>
        </translation>
    </message>
    <message id="CommandLineExportNotReadingBack" numerus="yes">
        <source>%1: %Ln quote(s) will not read back as they are from this format; --format json keeps every quote.</source>
        <translation>
            <numerusform>%1: %Ln quote will not read back as it is from this format; --format json keeps every quote.</numerusform>
            <numerusform>%1: %Ln quotes will not read back as they are from this format; --format json keeps every quote.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QBQuotesEditorView</name>
    <message id="EditorFontLabel">
        <source>F&amp;ont:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QBSettingsView</name>
    <message id="SettingsOutputFileLabel">
        <source>&amp;Signature file:</source>
        <oldsource>Signature file:</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsOutputFileToolTip">
        <source>Choose the file your mail client reads as its signature</source>
        <oldsource>Click to choose the file your mail client reads as its signature</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsIntervalLabel">
        <source>Change the quote e&amp;very:</source>
        <oldsource>Change the quote every:</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="IntervalOneMinute">
        <source>1 minute</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="IntervalTwoMinutes">
        <source>2 minutes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="IntervalFiveMinutes">
        <source>5 minutes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="IntervalTenMinutes">
        <source>10 minutes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="IntervalFifteenMinutes">
        <source>15 minutes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="IntervalThirtyMinutes">
        <source>30 minutes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="IntervalOneHour">
        <source>1 hour</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="IntervalTwoHours">
        <source>2 hours</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="IntervalFourHours">
        <source>4 hours</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="IntervalEightHours">
        <source>8 hours</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="IntervalTwelveHours">
        <source>12 hours</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="IntervalOneDay">
        <source>1 day</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsAutoRandomize">
        <source>Change the si&amp;gnature automatically</source>
        <oldsource>Change the signature automatically</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsClearTrailingEmptyLines">
        <source>&amp;Remove empty lines at the end of quotes</source>
        <oldsource>Remove empty lines at the end of quotes</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsWarnForDuplicates">
        <source>Warn about &amp;duplicate quotes</source>
        <oldsource>&amp;Warn about duplicate quotes</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsHelpButton">
        <source>Hel&amp;p</source>
        <oldsource>Help</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsShareUsageStatistics">
        <source>Share an&amp;onymous usage statistics</source>
        <oldsource>Share anonymous usage statistics</oldsource>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsUsageStatisticsUnavailable">
        <source>This build of Quillbox2 has no statistics service to send to, so it never sends usage statistics.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsNoOutputFileChosen">
        <source>No signature file chosen</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsChooseOutputFile">
        <source>&amp;Choose…</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsChooseOutputFileAccessibleName">
        <source>Choose Signature File</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsIntervalAccessibleName">
        <source>Change Interval</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
