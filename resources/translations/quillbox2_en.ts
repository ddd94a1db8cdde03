<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name></name>
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
        <source>Use as Signature</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandAddQuote">
        <source>Add Quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandRemoveQuote">
        <source>Remove Quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandRemoveAllQuotes">
        <source>Remove All Quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandEditQuote">
        <source>Edit Quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandImportQuotes">
        <source>Import Quotes…</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandSettings">
        <source>Settings…</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="CommandFindQuotes">
        <source>Find Quotes</source>
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
    <message id="QuotesListEmptyQuote">
        <source>New Quote</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ButtonRemoveAllQuotes">
        <source>Remove All</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ButtonImportQuotes">
        <source>Import…</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="ButtonSettings">
        <source>Settings…</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainMenu</name>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QBAboutWindow</name>
    <message>
        <source>About %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keeps your collection of quotes and turns one of them at a time into the plain-text signature file your mail client reads.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The sample collection holds classic quotations in the public domain, by William Shakespeare, William Blake, Emily Dickinson, Walt Whitman, John Donne, William Wordsworth, John Keats, Alexander Pope, Jane Austen, Charles Dickens, Herman Melville, Henry David Thoreau, Benjamin Franklin, Abraham Lincoln, Patrick Henry, Francis Bacon, Johann Wolfgang von Goethe, René Descartes, Blaise Pascal, Jean-Jacques Rousseau, Voltaire, Dante Alighieri, Miguel de Cervantes, Julius Caesar, Horace, Terence, Augustus, Socrates and the Delphic maxims.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
