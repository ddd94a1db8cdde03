<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name></name>
    <message id="QuotesCannotBeSavedTitle">
        <source>Changes Cannot Be Saved</source>
        <translation type="unfinished"></translation>
    </message>
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
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandAddQuote">
        <source>&amp;Add Quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandRemoveQuote">
        <source>&amp;Remove Quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandRemoveAllQuotes">
        <source>Remove A&amp;ll Quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandEditQuote">
        <source>&amp;Edit Quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandImportQuotes">
        <source>&amp;Import Quotes…</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandSettings">
        <source>&amp;Settings…</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandFindQuotes">
        <source>&amp;Find Quotes</source>
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
    <message id="QuotesSuccessfullyImportedTitle">
        <source>Quotes Imported</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="QuotesImported" numerus="yes">
        <source>%n quote(s) were added to your collection.</source>
        <translation>
            <numerusform>%n quote was added to your collection.</numerusform>
            <numerusform>%n quotes were added to your collection.</numerusform>
        </translation>
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
        <source>Which line separates one quote from the next? These lines occur most often in the file (⏎ stands for a blank line).</source>
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
        <translation type="unfinished"></translation>
    </message>
    <message id="ButtonImportQuotes">
        <source>&amp;Import…</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ButtonSettings">
        <source>Se&amp;ttings…</source>
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
</context>
<context>
    <name>QBSettingsView</name>
    <message id="SettingsOutputFileLabel">
        <source>&amp;Signature file:</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsOutputFileToolTip">
        <source>Choose the file your mail client reads as its signature</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsIntervalLabel">
        <source>Change the quote e&amp;very:</source>
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
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsClearTrailingEmptyLines">
        <source>&amp;Remove empty lines at the end of quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsWarnForDuplicates">
        <source>&amp;Warn about duplicate quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsHelpButton">
        <source>Hel&amp;p</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="SettingsShareUsageStatistics">
        <source>Share an&amp;onymous usage statistics</source>
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
