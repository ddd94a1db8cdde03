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
