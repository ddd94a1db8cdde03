#include "core/Bundle.h"
#include "core/QuotesRepository.h"
#include "import/BatchImportDialogs.h"
#include "import/QuoteBatchImportHelper.h"
#include "import/TextFileReader.h"
#include "logging/Log.h"
#include "model/QuotesAutoSaver.h"
#include "ui/Alert.h"
#include "util/UndoManager.h"
#include "util/UserDefaults.h"

#include "TestHome.h"
#include "UrlRecorder.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using H = QBQuoteBatchImportHelper;

void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace {

CQuotesRepository& repository()
{
    return CQuotesRepository::getInstance();
}

QStringList column(const std::vector<CQuoteRecord>& records, std::string CQuoteRecord::*field)
{
    QStringList values;
    for (const CQuoteRecord& record : records)
        values << QString::fromStdString(record.*field);
    return values;
}
QStringList contents(const std::vector<CQuoteRecord>& records)
{
    return column(records, &CQuoteRecord::mContent);
}
QStringList uids(const std::vector<CQuoteRecord>& records)
{
    return column(records, &CQuoteRecord::mUID);
}

QStringList savedContents()
{
    std::vector<CQuoteRecord> records;
    readQuotesFile(repository().mFilePath, records);
    return contents(records);
}

// Ten quotes, some over two lines, none holding a blank line.
QStringList tenQuotes()
{
    QStringList quotes;
    for (int index = 0; index < 10; ++index)
        quotes << (index % 2 == 0 ? u"Quote %1, café"_s.arg(index)
                                  : u"Quote %1 over\n  two lines — Author %1"_s.arg(index));
    return quotes;
}

QString withLineEnds(QString text, const QString& lineEnd)
{
    return text.replace(u'\n', lineEnd);
}

// |count| lines "line <n>", with |key| on |repeated| of them and "Anon" on |anon|.
QString hundredLines(int percents, int anons)
{
    QStringList lines;
    for (int index = 0; index < 100; ++index) {
        if (index % 9 == 4 && percents-- > 0)
            lines << u"%"_s;
        else if (index % 9 == 7 && anons-- > 0)
            lines << u"Anon"_s;
        else
            lines << u"line %1"_s.arg(index);
    }
    return lines.join(u'\n');
}

// The real flow on a real window: a database in a temporary home with the auto-saver,
// the window's undo manager, the build's help book and a stand-in browser. Every test
// starts from a collection of one saved quote.
class BatchImportFlowTest : public ::testing::Test
{
protected:
    BatchImportFlowTest()
    {
        QBUserDefaults::resetStandardUserDefaults();
        repository().removeAllQuotes();
        repository().mFilePath = home.stdPath(u"quotes.db"_s);
        QBBundle::setMainBundleResourcePath(QB_BUILD_SHARE_DIR);
        H::setUndoManager(&undoManager);
        window.show();
        QBBatchImportDialogs::setParentWindow(&window);
        QBAlert::shared().setParentWindow(&window);
        resetCollection();
    }
    ~BatchImportFlowTest() override
    {
        QBAlert::shared().setParentWindow(nullptr);
        QBBatchImportDialogs::setParentWindow(nullptr);
        H::setUndoManager(nullptr);
        repository().removeAllQuotes();
        repository().mFilePath.clear();
    }

    void resetCollection()
    {
        repository().removeAllQuotes();
        repository().addNewQuote()->mContent = "Earlier quote";
        repository().saveQuotes();
        undoManager.removeAllActions();
        qblog::clearLogHistory();
    }

    QString writeFile(const QByteArray& bytes)
    {
        const QString path = home.filePath(u"import/quotes %1.txt"_s.arg(++fileNumber));
        EXPECT_TRUE(writeFileBytes(path, bytes));
        return path;
    }

    // Starts the import command and answers its file dialog with |path|.
    void importFile(const QString& path)
    {
        H::importFromTextFile();
        auto* dialog = window.findChild<QFileDialog*>();
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowModality(), Qt::WindowModal);
        EXPECT_TRUE(dialog->isVisible());
        dialog->selectFile(path);
        static_cast<QDialog*>(dialog)->accept();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(window.findChild<QFileDialog*>(), nullptr);
    }
    void importText(const QString& text) { importFile(writeFile(text.toUtf8())); }

    QMessageBox* openBox() { return window.findChild<QMessageBox*>(); }
    QStringList choices()
    {
        QStringList texts;
        for (const QRadioButton* button : openBox()->findChildren<QRadioButton*>())
            texts << button->text();
        return texts;
    }
    // Clicks the radio button showing |choice| (none when empty), then Import or Cancel.
    void answerSeparator(const QString& choice, bool import = true)
    {
        QMessageBox* box = openBox();
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowModality(), Qt::WindowModal);
        for (QRadioButton* button : box->findChildren<QRadioButton*>()) {
            // On the round indicator: a short title leaves the button's middle unclickable.
            if (button->text() == choice)
                QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
        }
        QAbstractButton* answer = import ? static_cast<QAbstractButton*>(box->defaultButton())
                                         : box->button(QMessageBox::Cancel);
        QTest::mouseClick(answer, Qt::LeftButton);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(openBox(), nullptr);
    }

    // Messages logged at |level| since the collection was last reset, oldest first.
    static QStringList logged(qblog::Level level)
    {
        QStringList messages;
        for (const std::string& line : qblog::recentLogLines(qblog::kMaxHistoryLines, level)) {
            const QString text = QString::fromStdString(line);
            messages.prepend(text.mid(text.indexOf(u"] :  "_s) + 5));
        }
        return messages;
    }

    QBTestHome home;
    QBQuotesAutoSaver autoSaver;
    QBUndoManager undoManager;
    QMainWindow window;
    QBUrlRecorder browser;
    int fileNumber = 0;
};

TEST_F(BatchImportFlowTest, PercentFileImportsAtOnceKeepingEachNewlineAndIsOneUndoStep)
{
    const QStringList quotes = tenQuotes();
    const QString path = writeFile((quotes.join(u"\n%\n"_s) + u'\n').toUtf8());
    importFile(path);

    EXPECT_EQ(openBox(), nullptr); // one candidate: no question
    QStringList expected{u"Earlier quote"_s};
    for (const QString& quote : quotes)
        expected << quote + u'\n';
    EXPECT_EQ(contents(repository().mQuotes), expected);
    EXPECT_EQ(savedContents(), expected);
    EXPECT_EQ(logged(qblog::Level::Info).mid(0, 4),
              QStringList({u"Initiating batch import."_s, u"Importing data from '%1'"_s.arg(path),
                           u"Automatically detected 1 likely separators in input file"_s,
                           u"Importing 10 quotes from input file"_s}));
    EXPECT_TRUE(logged(qblog::Level::Warning).isEmpty());

    const QStringList imported = uids(repository().mQuotes);
    undoManager.undo();
    EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s});
    EXPECT_FALSE(undoManager.canUndo());
    undoManager.redo();
    EXPECT_EQ(uids(repository().mQuotes), imported); // the same records come back
    EXPECT_EQ(savedContents(), expected);
    undoManager.undo();
    EXPECT_EQ(contents(repository().mQuotes), QStringList{u"Earlier quote"_s});
}

TEST_F(BatchImportFlowTest, BlankLineAndPercentFilesGiveTheSameQuotesWithAnyLineEnds)
{
    const QStringList quotes = tenQuotes();
    const QString percentFile = quotes.join(u"\n%\n"_s) + u'\n';
    const QString blankLineFile = quotes.join(u"\n\n"_s) + u'\n';
    QStringList percentPieces{u"Earlier quote"_s};
    QStringList blankLinePieces{u"Earlier quote"_s};
    for (const QString& quote : quotes) {
        percentPieces << quote + u'\n';
        blankLinePieces << quote;
    }
    blankLinePieces.last() += u'\n'; // the last piece keeps the file's final newline

    for (const QString& lineEnd : {u"\n"_s, u"\r\n"_s, u"\r"_s}) {
        for (const auto& [file, pieces] :
             {std::pair{percentFile, percentPieces}, std::pair{blankLineFile, blankLinePieces}}) {
            SCOPED_TRACE(withLineEnds(file.left(12), u"|"_s).toStdString() +
                         (lineEnd.size() == 2  ? " CRLF"
                          : lineEnd == u"\r"_s ? " CR"
                                               : " LF"));
            resetCollection();
            importText(withLineEnds(file, lineEnd));
            EXPECT_EQ(openBox(), nullptr);
            EXPECT_EQ(savedContents(), pieces);
        }
    }
}

TEST_F(BatchImportFlowTest, ATenthOfTheLinesMakesACandidateAndTwoCandidatesAlwaysAsk)
{
    // 100 lines: "%" 10 times and "Anon" 9 times: only "%" qualifies.
    importText(hundredLines(10, 9));
    EXPECT_EQ(openBox(), nullptr);
    EXPECT_EQ(repository().mQuotes.size(), 1u + 11u);

    // "Anon" 10 times too: both qualify, so the user chooses.
    resetCollection();
    importText(hundredLines(10, 10));
    ASSERT_NE(openBox(), nullptr);
    EXPECT_EQ(choices(), QStringList({u"%"_s, u"Anon"_s}));
    EXPECT_EQ(repository().mQuotes.size(), 1u); // nothing before the answer
    answerSeparator(u"Anon"_s);
    EXPECT_EQ(repository().mQuotes.size(), 1u + 11u);
    EXPECT_TRUE(logged(qblog::Level::Debug).contains(u"Selected button: 1"_s));

    // Far apart counts still ask; the choice decides the split.
    for (const auto& [choice, pieces] :
         {std::pair{u"%"_s, QStringList({u"a\n"_s, u"b\nAnon\n"_s, u"c\nAnon\n"_s, u"d"_s})},
          std::pair{u"Anon"_s, QStringList({u"a\n%\nb\n"_s, u"%\nc\n"_s, u"%\nd"_s})}}) {
        resetCollection();
        importText(u"a\n%\nb\nAnon\n%\nc\nAnon\n%\nd"_s);
        answerSeparator(choice);
        EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s} + pieces);
        EXPECT_TRUE(undoManager.canUndo());
    }

    // A blank line is offered in a visible form.
    resetCollection();
    importText(u"a\n\nb\n\nc\nx\nx\nx"_s);
    EXPECT_EQ(choices(), QStringList({u"x"_s, u"⏎"_s}));
    answerSeparator(u"⏎"_s);
    EXPECT_EQ(savedContents(), QStringList({u"Earlier quote"_s, u"a"_s, u"b"_s, u"c\nx\nx\nx"_s}));
}

TEST_F(BatchImportFlowTest, EndingTheQuestionWithoutAChoiceAbortsAndChangesNothing)
{
    struct Case
    {
        const char* name;
        QString text;
        QStringList offered;
        QString clicked;
        bool import;
    };
    const Case cases[] = {
        {"no choice", u"a\n%\nb\n%\nc\nq\nq"_s, {u"%"_s, u"q"_s}, {}, true},
        {"cancelled choice", u"a\n%\nb\n%\nc\nq\nq"_s, {u"%"_s, u"q"_s}, u"%"_s, false},
        {"zero candidates", u"a\nb\nc"_s, {}, {}, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        resetCollection();
        importText(c.text);
        EXPECT_TRUE(
            logged(qblog::Level::Info)
                .contains(u"Automatically detected %1 likely separators in input file"_s.arg(
                    c.offered.size())));
        ASSERT_NE(openBox(), nullptr);
        EXPECT_EQ(choices(), c.offered);
        answerSeparator(c.clicked, c.import);

        const QStringList warnings = logged(qblog::Level::Warning);
        ASSERT_EQ(warnings.size(), 1);
        EXPECT_TRUE(warnings[0].startsWith(u"No choice selected in QWidget(0x"_s))
            << warnings[0].toStdString();
        EXPECT_TRUE(warnings[0].contains(u"separatorChoices"_s));
        EXPECT_EQ(logged(qblog::Level::Info).last(),
                  u"No separator specified - Aborting import."_s);
        EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s});
        EXPECT_FALSE(undoManager.canUndo());
    }
}

TEST_F(BatchImportFlowTest, FilesThatFailGiveTheirMessageAndChangeNothing)
{
    const QString image = home.filePath(u"picture.png"_s);
    QImage picture(16, 16, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    ASSERT_TRUE(picture.save(image));
    const QString huge = writeFile({});
    ASSERT_TRUE(QFile(huge).resize(QBTextFileReader::kMaxFileSize + 1));
    QByteArray oddUtf16 = encodedText(u"a\n%\nb\n%\nc"_s, QStringConverter::Utf16LE, true);
    oddUtf16.chop(1);

    struct Case
    {
        const char* name;
        QString path;
        QString warning;
        QString alert; // title of the alert that follows, if any
        QUrl help;     // page the help opens, if any
    };
    const QUrl importHelp = QUrl::fromLocalFile(QB_BUILD_SHARE_DIR u"/help/import.html"_s)
                                .resolved(u"#QB_BATCH_IMPORT"_s);
    const Case cases[] = {
        {"empty file", writeFile({}), u"Failed to import: Contents of file empty?"_s, {}, {}},
        {"image",
         image,
         u"Failed to read file: the file holds binary data (zero bytes)"_s,
         u"FileNotText"_s,
         {}},
        {"broken UTF-16",
         writeFile(oddUtf16),
         u"Failed to read file: the file starts with a byte-order mark but is not valid UTF-16LE "
         u"text"_s,
         u"FileNotText"_s,
         {}},
        {"over 64 MiB",
         huge,
         u"Failed to read file: the file is larger than 64 MiB"_s,
         u"FileTooLarge"_s,
         {}},
        {"separator never alone on its line",
         writeFile("a\n% \nb\n% \nc"),
         u"Failed to import: Quotes found in input file = 1"_s,
         {},
         importHelp},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        resetCollection();
        browser.opened.clear();
        importFile(c.path);
        EXPECT_EQ(logged(qblog::Level::Warning), QStringList{c.warning});
        EXPECT_EQ(browser.opened, c.help.isEmpty() ? QList<QUrl>{} : QList<QUrl>{c.help});
        EXPECT_EQ(openBox(), nullptr); // any alert waits for the file dialog to go
        if (!c.alert.isEmpty()) {
            ASSERT_TRUE(QTest::qWaitFor([this] { return openBox() != nullptr; }, 3000));
            EXPECT_EQ(openBox()->windowTitle(), c.alert);
            EXPECT_EQ(openBox()->icon(), QMessageBox::Warning);
            openBox()->close();
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s});
        EXPECT_FALSE(undoManager.canUndo());
    }
}

TEST_F(BatchImportFlowTest, TextInOtherEncodingsImportsAsTheSameCharacters)
{
    const QString text = u"Ça va, naïve\n%\nÜber “alles”\n%\nc’est ça"_s;
    const auto encode = [&](QStringConverter::Encoding encoding, bool mark) {
        return encodedText(text, encoding, mark);
    };
    struct Case
    {
        const char* name;
        QByteArray bytes;
        QStringList quotes;
    };
    const QStringList all{u"Ça va, naïve\n"_s, u"Über “alles”\n"_s, u"c’est ça"_s};
    const Case cases[] = {
        {"UTF-16 with mark", encode(QStringConverter::Utf16LE, true), all},
        {"UTF-16 without mark", encode(QStringConverter::Utf16BE, false), all},
        {"UTF-8 with mark", encode(QStringConverter::Utf8, true), all},
        {"Latin-1 with accents",
         "na\xEFve\n%\n\xC7"
         "a\n%\nd\xE9j\xE0",
         {u"naïve\n"_s, u"Ça\n"_s, u"déjà"_s}},
        {"invalid UTF-8 is read as Windows-1252",
         "caf\xC3(\n%\n\x93quoted\x94\n%\n",
         {u"cafÃ(\n"_s, u"“quoted”\n"_s}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        resetCollection();
        importFile(writeFile(c.bytes));
        EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s} + c.quotes);
    }
}

TEST_F(BatchImportFlowTest, WithoutAMainWindowNothingIsShown)
{
    QBBatchImportDialogs::setParentWindow(nullptr);
    H::importFromTextFile();
    bool answered = false;
    QBBatchImportDialogs::askUserForSeparatorToUse({u"%"_s},
                                                   [&](const QString&) { answered = true; });
    EXPECT_EQ(QApplication::topLevelWidgets(), QWidgetList{&window});
    EXPECT_EQ(window.findChildren<QDialog*>(), QList<QDialog*>{});
    EXPECT_FALSE(answered);
    EXPECT_EQ(logged(qblog::Level::Info), QStringList{u"Initiating batch import."_s});
}

} // namespace
