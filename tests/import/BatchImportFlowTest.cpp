// Batch import on a real window answering its dialogs; then decoding, the ways of cutting
// text into quotes, and export read back.
#include "core/Bundle.h"
#include "core/QuotesRepository.h"
#include "i18n/Translations.h"
#include "import/BatchImportDialogs.h"
#include "import/QuoteBatchImportHelper.h"
#include "import/QuoteExport.h"
#include "import/QuoteFile.h"
#include "import/TextFileReader.h"
#include "logging/Log.h"
#include "model/QuotesAutoSaver.h"
#include "ui/Alert.h"
#include "util/UndoManager.h"
#include "util/UserDefaults.h"
#include "util/UserMessages.h"

#include "TestHome.h"
#include "UrlRecorder.h"

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QMainWindow>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QtEndian>

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

QStringList column(const std::vector<CQuoteRecord>& records,
                   std::string CQuoteRecord::*field = &CQuoteRecord::mContent)
{
    QStringList values;
    for (const CQuoteRecord& record : records)
        values << QString::fromStdString(record.*field);
    return values;
}

QStringList savedContents()
{
    std::vector<CQuoteRecord> records;
    readQuotesFile(repository().mFilePath, records);
    return column(records);
}

// Ten quotes, every other one over two lines, none holding a blank line.
QStringList tenQuotes()
{
    QStringList quotes;
    for (int index = 0; index < 10; ++index)
        quotes << (index % 2 == 0 ? u"Quote %1, café"_s.arg(index)
                                  : u"Quote %1 over\n  two lines — Author %1"_s.arg(index));
    return quotes;
}

// Quotes as a file on disk (with |index| as its "quotes.dat") gives them back, with the
// way the import chose.
QStringList quotesOfFile(const QByteArray& bytes, QBSeparatorChoice* chosen = nullptr,
                         const QByteArray& index = {})
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"quotes"_s);
    EXPECT_TRUE(writeFileBytes(path, bytes));
    if (!index.isEmpty()) {
        EXPECT_TRUE(writeFileBytes(path + u".dat"_s, index));
    }
    const QBQuoteFile file = QBQuoteFile::load(path);
    EXPECT_TRUE(file.ok()) << file.error.toStdString();
    if (file.isCollection)
        return file.collectionQuotes;
    EXPECT_TRUE(file.analysis.clear);
    if (chosen != nullptr)
        *chosen = file.analysis.choices.value(0);
    return file.quotes(file.analysis.choices.value(0));
}

// A temporary quotes.db holding one quote, auto-saver, undo, the build's help and a browser stub.
class BatchImportFlowTest : public ::testing::Test
{
protected:
    BatchImportFlowTest()
    {
        QBUserDefaults::resetStandardUserDefaults();
        repository().removeAllQuotes();
        repository().mFilePath = home.stdPath(u"quotes.db"_s);
        QBBundle::setMainBundleResourcePath(QB_BUILD_SHARE_DIR);
        installTranslations(); // the questions and messages in English
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

    // A new file holding |bytes|.
    QString fileWith(const QByteArray& bytes)
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
        dialog->selectFile(path);
        static_cast<QDialog*>(dialog)->accept();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(window.findChild<QFileDialog*>(), nullptr);
        waitForReading();
    }
    // The files are read on the thread pool; what follows comes once they are.
    static void waitForReading()
    {
        EXPECT_TRUE(QTest::qWaitFor([] { return !H::isReadingFiles(); }, 20000));
    }
    void importText(const QString& text) { importFile(fileWith(text.toUtf8())); }

    QMessageBox* openBox() { return window.findChild<QMessageBox*>(); }
    // The separator question, if open.
    QDialog* question()
    {
        const QWidget* choices = window.findChild<QWidget*>(u"separatorChoices"_s);
        return choices != nullptr ? qobject_cast<QDialog*>(choices->window()) : nullptr;
    }
    QStringList choices()
    {
        QStringList texts;
        for (const QRadioButton* button : question()->findChildren<QRadioButton*>())
            texts << button->text() + (button->isChecked() ? u" *"_s : QString());
        return texts;
    }
    QString preview() { return question()->findChild<QPlainTextEdit*>()->toPlainText(); }
    // Presses |key| where the keyboard is in the question, then lets the dialog go.
    void press(Qt::Key key)
    {
        QDialog* dialog = question();
        dialog->activateWindow(); // arrow keys move among the buttons of the focused window
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
        QWidget* focus = dialog->focusWidget();
        QTest::keyClick(focus != nullptr ? focus : dialog, key);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
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

const QString kRule = u"\n――――――――\n"_s;

QString lastMessageText()
{
    return QBUserMessages::shared().lastMessage().text;
}

TEST_F(BatchImportFlowTest, SeparatedFilesImportAtOnceWithAnyLineEndsAsOneUndoStep)
{
    const QStringList quotes = tenQuotes();
    for (const QString& lineEnd : {u"\n"_s, u"\r\n"_s, u"\r"_s}) {
        for (const QString& separator : {u"\n%\n"_s, u"\n\n"_s, u"\n* * *\n"_s, u"\n----\n"_s}) {
            SCOPED_TRACE(QString(separator + lineEnd).toUtf8().toPercentEncoding().toStdString());
            resetCollection();
            importText(QString(quotes.join(separator) + u'\n').replace(u'\n', lineEnd));
            EXPECT_EQ(question(), nullptr);
            EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s} + quotes);
        }
    }

    // One save, one summary in the message bar whose button takes the import back.
    EXPECT_EQ(logged(qblog::Level::Info).count(u"Saving quotes"_s), 1);
    const QBUserMessage& message = QBUserMessages::shared().lastMessage();
    EXPECT_EQ(message.kind, QBUserMessage::Kind::Success);
    EXPECT_EQ(message.text, u"Imported 10 quotes from “quotes %1.txt”."_s.arg(fileNumber));
    EXPECT_EQ(message.actionText, u"Undo"_s);
    const QStringList imported = column(repository().mQuotes, &CQuoteRecord::mUID);
    message.action();
    EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s});
    EXPECT_FALSE(undoManager.canUndo());
    undoManager.redo();
    EXPECT_EQ(column(repository().mQuotes, &CQuoteRecord::mUID), imported);
}

TEST_F(BatchImportFlowTest, TheQuestionCountsPreviewsAndAnswersToReturnAndEscape)
{
    const QString attributed = u"q1\n-- Anon\n\nq2\n-- Anon\n\nq3\n-- Anon"_s;
    importText(attributed);
    ASSERT_NE(question(), nullptr);
    EXPECT_EQ(question()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(choices(),
              QStringList({u"Blank lines — 3 quotes *"_s, u"Lines “-- Anon” — 3 quotes"_s,
                           u"One quote per line — 6 quotes"_s, u"The whole file as one quote"_s}));
    EXPECT_EQ(preview(), u"q1\n-- Anon"_s + kRule + u"q2\n-- Anon"_s + kRule + u"q3\n-- Anon"_s);
    EXPECT_EQ(repository().mQuotes.size(), 1u); // nothing before the answer
    question()->findChildren<QRadioButton*>().first()->setFocus();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(choices().at(2), u"One quote per line — 6 quotes *"_s);
    EXPECT_EQ(preview(), u"q1"_s + kRule + u"-- Anon"_s + kRule + u"q2"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(question(), nullptr);
    EXPECT_EQ(savedContents().size(), 1 + 6);

    resetCollection();
    importText(attributed);
    press(Qt::Key_Escape);
    EXPECT_EQ(question(), nullptr);
    EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s});
    EXPECT_FALSE(undoManager.canUndo());
    EXPECT_TRUE(logged(qblog::Level::Warning).value(0).startsWith(u"No choice selected in "_s));

    // A file holding one quote says so and imports it on Return.
    importText(u"Just one quote, wrapped\n"_s);
    EXPECT_EQ(question()->windowTitle(), u"Import a Single Quote"_s);
    EXPECT_TRUE(question()->findChildren<QRadioButton*>().isEmpty());
    EXPECT_EQ(preview(), u"Just one quote, wrapped"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(savedContents(), QStringList({u"Earlier quote"_s, u"Just one quote, wrapped"_s}));
}

TEST_F(BatchImportFlowTest, SeveralFilesAreOneStepAndRepeatedQuotesCanBeSkipped)
{
    const QStringList files{fileWith("Earlier quote\n%\nNew one\n"),
                            fileWith("New one\n\nAnother\n"), fileWith(QByteArray("\0\1\0\2", 4))};
    H::importFiles(files);
    waitForReading();
    const QStringList all{u"Earlier quote"_s, u"Earlier quote"_s, u"New one"_s, u"New one"_s,
                          u"Another"_s};
    EXPECT_EQ(savedContents(), all);
    EXPECT_EQ(lastMessageText(), u"Imported 4 quotes from 2 files. 1 of them was already in the "
                                 u"collection. 1 file could not be read."_s);
    EXPECT_EQ(openBox(), nullptr); // several files: no alert for the unreadable one
    const QBUserMessage message = QBUserMessages::shared().lastMessage();
    EXPECT_EQ(message.actionText, u"Skip Duplicates"_s);
    message.action(); // only what was there before the import goes
    EXPECT_EQ(savedContents(),
              QStringList({u"Earlier quote"_s, u"New one"_s, u"New one"_s, u"Another"_s}));
    undoManager.undo();
    EXPECT_EQ(savedContents(), all);
    undoManager.undo();
    EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s});
    EXPECT_FALSE(undoManager.canUndo());
}

TEST_F(BatchImportFlowTest, HundredsOfFilesAreReadOffTheWindowWithProgressAndCancel)
{
    // 400 fortune files of 25 quotes of about 1 KB: 10 MB, as many as Debian ships.
    const QString long1K = u"A line of a long quote, café — "_s.repeated(32);
    QStringList files;
    for (int file = 0; file < 400; ++file) {
        QStringList quotes;
        for (int index = 0; index < 25; ++index)
            quotes << u"%1.%2 %3"_s.arg(file).arg(index).arg(long1K);
        files << fileWith((quotes.join(u"\n%\n"_s) + u'\n').toUtf8());
    }

    // A timer queued on the window's thread fires while the files are still being read.
    bool timerFiredWhileReading = false;
    H::importFiles(files);
    EXPECT_TRUE(H::isReadingFiles());
    QTimer::singleShot(0, [&] { timerFiredWhileReading = H::isReadingFiles(); });
    waitForReading();
    EXPECT_TRUE(timerFiredWhileReading);
    ASSERT_EQ(repository().mQuotes.size(), 1u + 400 * 25);
    EXPECT_EQ(QString::fromStdString(repository().mQuotes[1].mContent), u"0.0 "_s + long1K);
    EXPECT_EQ(QString::fromStdString(repository().mQuotes.back().mContent), u"399.24 "_s + long1K);
    EXPECT_EQ(lastMessageText(), u"Imported 10,000 quotes from 400 files."_s);
    undoManager.undo(); // one step
    EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s});
    EXPECT_FALSE(undoManager.canUndo());

    // Reading that takes a while shows its progress; Cancel imports nothing.
    H::setProgressDelay(std::chrono::milliseconds(0));
    H::importFiles(files);
    QProgressDialog* progress = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        progress = window.findChild<QProgressDialog*>();
        return progress != nullptr && progress->isVisible();
    }));
    H::setProgressDelay(std::chrono::milliseconds(400));
    EXPECT_EQ(progress->windowModality(), Qt::WindowModal);
    EXPECT_EQ(progress->maximum(), 400);
    EXPECT_EQ(progress->labelText(), u"Reading 400 files…"_s);
    QTest::mouseClick(progress->findChild<QPushButton*>(), Qt::LeftButton);
    waitForReading();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window.findChild<QProgressDialog*>(), nullptr);
    EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s});
    EXPECT_EQ(repository().mQuotes.size(), 1u);
    EXPECT_FALSE(undoManager.canUndo());
    EXPECT_TRUE(logged(qblog::Level::Info).contains(u"Import of 400 files cancelled"_s));
}

TEST_F(BatchImportFlowTest, AnExportThatWouldChangeQuotesSaysSoFirstAndOffersJson)
{
    repository().addNewQuote()->mContent = "Art\n%\nwith a percent line";
    const QStringList collection{u"Earlier quote"_s, u"Art\n%\nwith a percent line"_s};
    const QString fortunePath = home.filePath(u"all.fortune"_s);
    ASSERT_TRUE(writeFileBytes(home.filePath(u"all.json"_s), "taken"));
    for (const QString& answer : {u"Cancel"_s, u"Export as JSON"_s, u"Export Anyway"_s}) {
        SCOPED_TRACE(answer.toStdString());
        QFile::remove(fortunePath); // no question about replacing it
        H::exportFromWindow({});
        auto* dialog = window.findChild<QFileDialog*>();
        ASSERT_NE(dialog, nullptr);
        dialog->selectNameFilter(dialog->nameFilters().first()); // fortune
        dialog->selectFile(fortunePath);
        static_cast<QDialog*>(dialog)->accept();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        // Asked before anything is written (once the export is read back off the window).
        ASSERT_TRUE(QTest::qWaitFor([this] { return openBox() != nullptr; }, 10000));
        QMessageBox* box = openBox();
        EXPECT_EQ(box->windowModality(), Qt::WindowModal);
        EXPECT_EQ(box->text(), u"1 of the 2 quotes would not read back as it is from a fortune "
                               u"file, where a line “%” separates quotes."_s);
        EXPECT_EQ(box->defaultButton()->text(), u"Export as &JSON"_s);
        EXPECT_FALSE(QFile::exists(fortunePath));
        QAbstractButton* button = nullptr;
        for (QAbstractButton* candidate : box->buttons()) {
            if (candidate->text().remove(u'&') == answer)
                button = candidate;
        }
        ASSERT_NE(button, nullptr);
        QTest::mouseClick(button, Qt::LeftButton);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(openBox(), nullptr);
        EXPECT_EQ(QFile::exists(fortunePath), answer == u"Export Anyway"_s);
        if (answer == u"Export as JSON"_s) {
            EXPECT_EQ(lastMessageText(), u"Exported 2 quotes to “all 2.json”."_s);
        }
        if (answer == u"Export Anyway"_s) {
            EXPECT_EQ(lastMessageText(), u"Exported 2 quotes to “all.fortune”. 1 of them will "
                                         u"not read back as it is."_s);
        }
    }
    // Anyway: the fortune file, and the message says what it will not give back.
    EXPECT_EQ(quotesOfFile(readFileBytes(fortunePath)),
              QStringList({u"Earlier quote"_s, u"Art"_s, u"with a percent line"_s}));
    // As JSON: beside it, without replacing the "all.json" already there.
    std::vector<CQuoteRecord> json;
    readQuotesFile(home.stdPath(u"all 2.json"_s), json);
    EXPECT_EQ(column(json), collection);
    EXPECT_EQ(readFileBytes(home.filePath(u"all.json"_s)), "taken");
}

TEST_F(BatchImportFlowTest, EveryFileImportsItsTextOrGivesItsMessageChangingNothing)
{
    QImage picture(16, 16, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    QBuffer png;
    ASSERT_TRUE(png.open(QIODevice::WriteOnly) && picture.save(&png, "PNG"));
    const QString text = u"Ça va, naïve\n%\nÜber “alles”\n%\nc’est ça"_s;
    const QStringList quotes{u"Ça va, naïve"_s, u"Über “alles”"_s, u"c’est ça"_s};
    QByteArray brokenUtf16 = encodedText(text, QStringConverter::Utf16LE, true);
    brokenUtf16.chop(1);
    const QString zeros = u"Failed to read file: the file holds binary data (zero bytes)"_s;
    const QString huge = fileWith({});
    ASSERT_TRUE(QFile(huge).resize(QBTextFileReader::kMaxFileSize + 1));
    const struct
    {
        const char* name;
        QString path;
        QStringList imported = {};
        QString warning = {}; // when nothing is imported
        QString alert = {};   // title of the alert that follows, if any
    } cases[] = {
        {"UTF-16 with mark", fileWith(encodedText(text, QStringConverter::Utf16LE, true)), quotes},
        {"UTF-16 without mark", fileWith(encodedText(text, QStringConverter::Utf16BE)), quotes},
        {"Latin-1 accents",
         fileWith("na\xEFve\n%\n\xC7"
                  "a\n%\nd\xE9j\xE0"),
         {u"naïve"_s, u"Ça"_s, u"déjà"_s}},
        {"invalid UTF-8 as Windows-1252",
         fileWith("caf\xC3(\n%\n\x93quoted\x94\n%\n"),
         {u"cafÃ("_s, u"“quoted”"_s}},
        {"separator with spaces after it", fileWith("a\n% \nb\n%\t\nc"), {u"a"_s, u"b"_s, u"c"_s}},
        {"empty file", fileWith({}), {}, u"Failed to import: Contents of file empty?"_s},
        {"only blank lines",
         fileWith("\n\n \n\n\t\n\n"),
         {},
         u"Failed to import: Quotes found in input file = 0"_s},
        {"UTF-8 with a stray zero byte",
         fileWith(QByteArray(120, 'a') + "\n%\n" + QByteArray(1, '\0') + "b\n%\nc"),
         {},
         zeros,
         u"File not Text"_s},
        {"image", fileWith(png.data()), {}, zeros, u"File not Text"_s},
        {"broken UTF-16",
         fileWith(brokenUtf16),
         {},
         u"Failed to read file: the file starts with a byte-order mark but is not valid UTF-16LE "
         u"text"_s,
         u"File not Text"_s},
        {"over 64 MiB",
         huge,
         {},
         u"Failed to read file: the file is larger than 64 MiB"_s,
         u"File Too Large"_s},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        resetCollection();
        importFile(c.path);
        EXPECT_EQ(question(), nullptr);
        EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s} + c.imported);
        EXPECT_EQ(undoManager.canUndo(), !c.imported.isEmpty());
        EXPECT_EQ(logged(qblog::Level::Warning),
                  c.warning.isEmpty() ? QStringList{} : QStringList{c.warning});
        EXPECT_EQ(openBox(), nullptr); // any alert waits for the file dialog to go
        if (!c.alert.isEmpty()) {
            ASSERT_TRUE(QTest::qWaitFor([this] { return openBox() != nullptr; }, 3000));
            EXPECT_EQ(openBox()->windowTitle(), c.alert);
            EXPECT_EQ(openBox()->icon(), QMessageBox::Warning);
            openBox()->close();
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
}

TEST(ImportTextTest, EncodingIsFoundFromTheBytes)
{
    const QString text = u"Ünïcödé “quotes” — 𝄞\n%\nsecond\n"_s;
    const struct
    {
        const char* name;
        QByteArray bytes;
        const char* encoding; // nullptr: not text
        QString text = {};
    } cases[] = {
        {"UTF-8 with mark", encodedText(text, QStringConverter::Utf8, true), "UTF-8", text},
        {"UTF-32LE with mark", encodedText(text, QStringConverter::Utf32LE, true), "UTF-32LE",
         text},
        {"Windows-1252 table",
         "\x93"
         "hi\x94 \x80 \x9F \x81",
         "Windows-1252", u"“hi” € Ÿ \u0081"_s},
        {"zero bytes both sides", QByteArray("ab\0\0cd\0\0", 8), nullptr},
        {"control bytes, 2 in 100", QByteArray(98, 'x') + "\x01\x08", nullptr},
        {"control bytes, 1 in 100 (overstrike)", QByteArray(98, 'x') + "_\b", "UTF-8",
         QString(98, u'x') + u"_\b"_s},
        {"UTF-16 holding a control", encodedText(u"a\u0002b"_s, QStringConverter::Utf16LE),
         nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const QBTextFileReader::Result result = QBTextFileReader::decodeText(c.bytes);
        EXPECT_EQ(result.ok(), c.encoding != nullptr) << result.error.toStdString();
        EXPECT_EQ(result.encoding, QString::fromLatin1(c.encoding));
        EXPECT_EQ(result.text, c.text);
    }
    EXPECT_EQ(QBTextFileReader::decodeText("a\x07").error,
              u"the file holds binary data (1 control characters in 2, the first 0x07 at "
              u"character 2)"_s);
}

TEST(ImportTextTest, FortuneFilesAreCutAtWholePercentLinesWhateverTheirShare)
{
    // A quote of 15 lines (so "%" stands in far fewer than a tenth of the lines) holding a
    // blank line and lines ending in "%"; "%" first and last, two in a row, one with spaces.
    QStringList longLines;
    for (int line = 0; line < 15; ++line)
        longLines << u"Line %1 of a long quote, café"_s.arg(line);
    longLines[5].clear();
    longLines[9] = u"grew by 100%"_s;
    longLines[10] = u"  % indented"_s;
    const QString longQuote = longLines.join(u'\n');
    const QString text = u"%\n"_s + longQuote + u"\n%  \n%\nSecond\tquote\n-- Someone\n%\n"_s;
    const QStringList expected{longQuote, u"Second\tquote\n-- Someone"_s};
    QBSeparatorChoice chosen;
    EXPECT_EQ(quotesOfFile(text.toUtf8(), &chosen), expected);
    EXPECT_EQ(chosen.line, u"%"_s);
    EXPECT_EQ(chosen.quoteCount, 2);
    EXPECT_EQ(quotesOfFile(QString(text).replace(u"\n"_s, u"\r\n"_s).toUtf8()), expected);
    EXPECT_EQ(quotesOfFile(text.toLatin1()), expected);
}

// The index strfile writes: version, count, longest, shortest, flags, the delimiter, then
// an offset per quote and one for the end (their values do not matter to the import).
QByteArray strfileIndex(quint32 count, quint32 flags, char delimiter = '%')
{
    QByteArray index;
    for (const quint32 word : {2u, count, 80u, 1u, flags}) {
        const quint32 bigEndian = qToBigEndian(word);
        index.append(reinterpret_cast<const char*>(&bigEndian), 4);
    }
    index += delimiter + QByteArray(3, '\0') + QByteArray(4 * (count + 1), '\0');
    return index;
}

TEST(ImportTextTest, AFortuneFilesIndexAndItsOwnRulesDecideTheQuotes)
{
    QStringList bannerLines;
    for (int line = 0; line < 12; ++line)
        bannerLines << u"  /__ banner line %1 __/"_s.arg(line);
    const QByteArray banner = bannerLines.join(u'\n').toUtf8() + '\n';
    QBSeparatorChoice chosen;
    // Indexed as one quote: the whole banner, not a quote per line.
    EXPECT_EQ(quotesOfFile(banner, &chosen, strfileIndex(1, 0)),
              QStringList{bannerLines.join(u'\n')});
    EXPECT_EQ(chosen.name(), u"%"_s);
    // An index marked ROT13 (the offensive collections) is decoded.
    EXPECT_EQ(quotesOfFile("Gur dhvpx oebja sbk, 100%\n%\nUryyb, Jbeyq!\n", nullptr,
                           strfileIndex(2, 0x4)),
              QStringList({u"The quick brown fox, 100%"_s, u"Hello, World!"_s}));
    // Another delimiter named by the index.
    EXPECT_EQ(quotesOfFile("one\n#\ntwo\n", nullptr, strfileIndex(2, 0, '#')),
              QStringList({u"one"_s, u"two"_s}));
    // A ".dat" of another kind (its size does not fit the count) is no index.
    QByteArray notIndex = strfileIndex(1, 0);
    notIndex.chop(1);
    EXPECT_EQ(quotesOfFile(banner, &chosen, notIndex), bannerLines);
    EXPECT_EQ(chosen.name(), u"line"_s);

    // Without an index: a "%" ending a single quote still makes a fortune file, and a
    // "%" with white space before it is art, not a separator.
    EXPECT_EQ(quotesOfFile("Only one\n-- Someone\n%\n", &chosen),
              QStringList{u"Only one\n-- Someone"_s});
    EXPECT_EQ(chosen.name(), u"%"_s);
    EXPECT_EQ(quotesOfFile("  (\n  %\n (#)\n%\nNext\n"),
              QStringList({u"  (\n  %\n (#)"_s, u"Next"_s}));
}

TEST(ImportTextTest, EveryWayOfCuttingIsCountedMostLikelyFirst)
{
    QStringList tenLines;
    for (int line = 0; line < 10; ++line)
        tenLines << u"Saying number %1"_s.arg(line);
    const struct
    {
        const char* name;
        QString text;
        QStringList choices; // name and count
        bool clear;
    } cases[] = {
        {"blank lines, one or more",
         u"a\nb\n\nc\n\n\n d\n"_s,
         {u"blank 3"_s, u"line 4"_s, u"whole 1"_s},
         true},
        {"a marked line beats blank lines",
         u"a\n\nb\n* * *\nc\n* * *\nd"_s,
         {u"* * * 3"_s, u"blank 2"_s, u"line 6"_s, u"whole 1"_s},
         true},
        {"a repeated text line makes it unclear",
         u"q1\n-- Anon\n\nq2\n-- Anon\n\nq3\n-- Anon"_s,
         {u"blank 3"_s, u"-- Anon 3"_s, u"line 6"_s, u"whole 1"_s},
         false},
        {"percent wins over everything",
         u"a\n-- X\n%\nb\n-- X\n\nc"_s,
         {u"% 2"_s, u"blank 2"_s, u"-- X 3"_s, u"line 6"_s, u"whole 1"_s},
         true},
        {"few lines without separators ask", u"a\nb\nc"_s, {u"line 3"_s, u"whole 1"_s}, false},
        {"ten lines are one per line", tenLines.join(u'\n'), {u"line 10"_s, u"whole 1"_s}, true},
        {"one line", u"  only this  \n"_s, {u"line 1"_s, u"whole 1"_s}, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const QBQuoteTextAnalysis analysis = QBQuoteTextAnalysis::analyze(c.text);
        QStringList choices;
        for (const QBSeparatorChoice& choice : analysis.choices)
            choices << u"%1 %2"_s.arg(choice.name()).arg(choice.quoteCount);
        EXPECT_EQ(choices, c.choices);
        EXPECT_EQ(analysis.clear, c.clear);
        EXPECT_EQ(analysis.isSingleQuote(), c.choices.size() == 2 && c.choices[0] == u"line 1");
        for (const QBSeparatorChoice& choice : analysis.choices)
            EXPECT_EQ(choice.split(c.text).size(), choice.quoteCount)
                << choice.name().toStdString();
    }
    EXPECT_EQ(QBSeparatorChoice::fromName(u"blank"_s).split(u"a\n\n\n b \n"_s),
              QStringList({u"a"_s, u" b "_s}));

    // ASCII art repeats many lines without letters: only the five most frequent are offered.
    QStringList art;
    for (int row = 0; row < 8; ++row) {
        for (int times = 0; times < row + 2; ++times)
            art << u"text %1.%2"_s.arg(row).arg(times) << QString(row + 3, u'*');
    }
    const QBQuoteTextAnalysis analysis = QBQuoteTextAnalysis::analyze(art.join(u'\n'));
    QStringList lines;
    for (const QBSeparatorChoice& choice : analysis.choices) {
        if (choice.kind == QBSeparatorChoice::Kind::Line)
            lines << choice.line;
    }
    EXPECT_EQ(lines, QStringList({u"**********"_s, u"*********"_s, u"********"_s, u"*******"_s,
                                  u"******"_s}));
}

TEST(ImportTextTest, ExportsReadBackAsTheSameQuotesByteForByteOrSaySoBeforehand)
{
    using Format = QBQuoteExport::Format;
    const auto records = [](std::initializer_list<const char*> texts) {
        std::vector<CQuoteRecord> quotes;
        for (const char* text : texts)
            quotes.emplace_back(text, "");
        return quotes;
    };
    const std::vector<CQuoteRecord> plain =
        records({"Plain", "Two\nlines", "  indented\n\twith a tab ", "Growth of 100%",
                 "Ünïcödé “quotes” — 𝄞", "Art\n  %\n (#)"});
    std::vector<CQuoteRecord> fortuneSafe = plain;
    for (const CQuoteRecord& quote :
         records({"Ends with a line break\n", "\nStarts with one", "Has\n\na blank line"}))
        fortuneSafe.push_back(quote);
    EXPECT_EQ(QBQuoteExport::exportedBytes(records({"Plain", "Ends\n"}), Format::Fortune),
              "Plain\n%\nEnds\n\n%\n");
    const auto readBack = [](const std::vector<CQuoteRecord>& quotes, Format format) {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"export"_s);
        EXPECT_EQ(QBQuoteExport::writeExport(path, quotes, format), std::nullopt);
        return quotesOfFile(readFileBytes(path));
    };
    // What is counted as safe comes back as it was, byte for byte.
    const struct
    {
        Format format;
        std::vector<CQuoteRecord> quotes;
    } safe[] = {{Format::Fortune, fortuneSafe},
                {Format::Fortune, records({"Two\nlines"})}, // one quote is still a fortune file
                {Format::Text, plain},
                {Format::Json, fortuneSafe}};
    for (const auto& [format, quotes] : safe) {
        SCOPED_TRACE(QBQuoteExport::fileSuffix(format).toStdString());
        EXPECT_EQ(QBQuoteExport::quotesNotReadingBack(quotes, format), 0);
        EXPECT_EQ(readBack(quotes, format), column(quotes));
    }
    // What is not is counted before it is written: the quotes that do not come back.
    std::vector<CQuoteRecord> withPercentLine = fortuneSafe;
    withPercentLine.emplace_back("Has\n%\na percent line", "");
    std::vector<CQuoteRecord> withBlankLine = plain;
    withBlankLine.emplace_back("Has\n\na blank line", "");
    const struct
    {
        const char* name;
        Format format;
        std::vector<CQuoteRecord> quotes;
        qsizetype lost;
    } losing[] = {
        {"fortune, a line \"%\"", Format::Fortune, withPercentLine, 1},
        {"text, a blank line", Format::Text, withBlankLine, 1},
        // A "%" line makes plain text a fortune file: every quote runs into the next.
        {"text, a line \"%\"", Format::Text, withPercentLine, 10},
        // A line repeated across quotes is taken for their separator.
        {"text, a repeated line", Format::Text, records({"a\n----\nb", "c\n----\nd", "e"}), 3},
        // A lone quote of several lines asks how to cut it.
        {"text, a single quote", Format::Text, records({"Two\nlines"}), 1},
        {"JSON, anything", Format::Json, withPercentLine, 0},
    };
    for (const auto& [name, format, quotes, lost] : losing) {
        SCOPED_TRACE(name);
        EXPECT_EQ(QBQuoteExport::quotesNotReadingBack(quotes, format), lost);
    }
    QStringList back = readBack(withBlankLine, Format::Text);
    EXPECT_EQ(back.mid(back.size() - 2), QStringList({u"Has"_s, u"a blank line"_s}));

    const std::optional<QString> refused =
        QBQuoteExport::writeExport(u"/nonexistent-folder/export"_s, plain, Format::Json);
    ASSERT_TRUE(refused.has_value());
    EXPECT_FALSE(QFile::exists(u"/nonexistent-folder/export"_s));
}

} // namespace
