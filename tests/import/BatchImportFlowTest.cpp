// Batch import on a real window answering its dialogs; then decoding and separator rules.
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
#include <QBuffer>
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

// |count| lines, |repeated| of them |key| and |otherRepeated| |other|, spread out.
QString linesWith(int count, const QString& key, int repeated, const QString& other = {},
                  int otherRepeated = 0)
{
    QStringList lines;
    for (int index = 0; index < count; ++index) {
        if (index % 9 == 4 && repeated-- > 0)
            lines << key;
        else if (index % 9 == 7 && otherRepeated-- > 0)
            lines << other;
        else
            lines << u"line %1"_s.arg(index);
    }
    return lines.join(u'\n');
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
    }
    void importText(const QString& text) { importFile(fileWith(text.toUtf8())); }

    QMessageBox* openBox() { return window.findChild<QMessageBox*>(); }
    QStringList choices()
    {
        QStringList texts;
        for (const QRadioButton* button : openBox()->findChildren<QRadioButton*>())
            texts << button->text();
        return texts;
    }
    // Clicks the radio button showing |choice| (none when empty), then Import or Cancel.
    void answer(const QString& choice, bool import = true)
    {
        QMessageBox* box = openBox();
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowModality(), Qt::WindowModal);
        for (QRadioButton* button : box->findChildren<QRadioButton*>()) {
            // On the round indicator: a short title leaves the button's middle unclickable.
            if (button->text() == choice)
                QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
        }
        QAbstractButton* end = import ? static_cast<QAbstractButton*>(box->defaultButton())
                                      : box->button(QMessageBox::Cancel);
        QTest::mouseClick(end, Qt::LeftButton);
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

TEST_F(BatchImportFlowTest, PercentAndBlankLineFilesImportAtOnceWithAnyLineEndsAsOneUndoStep)
{
    const QStringList quotes = tenQuotes();
    QStringList afterPercent{u"Earlier quote"_s};
    for (const QString& quote : quotes)
        afterPercent << quote + u'\n'; // each piece keeps the newline before the "%"
    QStringList afterBlankLine = QStringList{u"Earlier quote"_s} + quotes;
    afterBlankLine.last() += u'\n'; // the last piece keeps the file's final newline

    for (const QString& lineEnd : {u"\n"_s, u"\r\n"_s, u"\r"_s}) {
        for (const auto& [separator, expected] :
             {std::pair{u"\n%\n"_s, afterPercent}, std::pair{u"\n\n"_s, afterBlankLine}}) {
            SCOPED_TRACE(QString(separator + lineEnd).toUtf8().toPercentEncoding().toStdString());
            resetCollection();
            importText(QString(quotes.join(separator) + u'\n').replace(u'\n', lineEnd));
            EXPECT_EQ(openBox(), nullptr); // one candidate: no question
            EXPECT_EQ(savedContents(), expected);
        }
    }

    // The last import is written by one save and undone in one step.
    EXPECT_EQ(logged(qblog::Level::Info).count(u"Saving quotes"_s), 1);
    const QStringList imported = column(repository().mQuotes, &CQuoteRecord::mUID);
    undoManager.undo();
    EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s});
    EXPECT_FALSE(undoManager.canUndo());
    undoManager.redo();
    EXPECT_EQ(column(repository().mQuotes, &CQuoteRecord::mUID), imported);
    EXPECT_EQ(savedContents(), afterBlankLine);
}

TEST_F(BatchImportFlowTest, ATenthOfTheLinesMakesACandidateTwoAlwaysAskAndNoChoiceAborts)
{
    // "Anon" 9 times in 100 lines: below the threshold, so "%" alone and no question.
    importText(linesWith(100, u"%"_s, 10, u"Anon"_s, 9));
    EXPECT_EQ(openBox(), nullptr);
    EXPECT_EQ(repository().mQuotes.size(), 1u + 11u);

    resetCollection();
    importText(linesWith(100, u"%"_s, 10, u"Anon"_s, 10)); // 10 times: both lines qualify
    EXPECT_EQ(choices(), QStringList({u"%"_s, u"Anon"_s}));
    EXPECT_EQ(repository().mQuotes.size(), 1u); // nothing before the answer
    answer(u"Anon"_s);
    EXPECT_EQ(repository().mQuotes.size(), 1u + 11u);

    // Far apart counts still ask and the choice decides the split; a blank line shows as
    // "⏎"; no choice, Cancel or no candidate at all abort. Aborting changes nothing.
    const QString farApart = u"a\n%\nb\nAnon\n%\nc\nAnon\n%\nd"_s;
    const QStringList twoOffered{u"%"_s, u"Anon"_s};
    const struct
    {
        const char* name;
        QString text;
        QStringList offered;
        QString choice;
        bool import;
        QStringList pieces; // none: aborted
    } cases[] = {
        {"far apart, %",
         farApart,
         twoOffered,
         u"%"_s,
         true,
         {u"a\n"_s, u"b\nAnon\n"_s, u"c\nAnon\n"_s, u"d"_s}},
        {"far apart, Anon",
         farApart,
         twoOffered,
         u"Anon"_s,
         true,
         {u"a\n%\nb\n"_s, u"%\nc\n"_s, u"%\nd"_s}},
        {"blank line",
         u"a\n\nb\n\nc\nx\nx\nx"_s,
         {u"x"_s, u"⏎"_s},
         u"⏎"_s,
         true,
         {u"a"_s, u"b"_s, u"c\nx\nx\nx"_s}},
        {"no choice", farApart, twoOffered, {}, true, {}},
        {"cancelled choice", farApart, twoOffered, u"%"_s, false, {}},
        {"zero candidates", u"a\nb\nc"_s, {}, {}, true, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        resetCollection();
        importText(c.text);
        EXPECT_EQ(choices(), c.offered);
        answer(c.choice, c.import);
        EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s} + c.pieces);
        EXPECT_EQ(undoManager.canUndo(), !c.pieces.isEmpty());
    }
}

TEST_F(BatchImportFlowTest, EveryFileImportsItsTextOrGivesItsMessageChangingNothing)
{
    QImage picture(16, 16, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    QBuffer png;
    ASSERT_TRUE(png.open(QIODevice::WriteOnly) && picture.save(&png, "PNG"));
    const QString text = u"Ça va, naïve\n%\nÜber “alles”\n%\nc’est ça"_s;
    const QStringList quotes{u"Ça va, naïve\n"_s, u"Über “alles”\n"_s, u"c’est ça"_s};
    QByteArray brokenUtf16 = encodedText(text, QStringConverter::Utf16LE, true);
    brokenUtf16.chop(1);
    const QUrl importHelp = QUrl::fromLocalFile(QB_BUILD_SHARE_DIR u"/help/import.html"_s)
                                .resolved(u"#QB_BATCH_IMPORT"_s);
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
        QUrl help = {};       // page the help opens, if any
    } cases[] = {
        {"UTF-16 with mark", fileWith(encodedText(text, QStringConverter::Utf16LE, true)), quotes},
        {"UTF-16 without mark", fileWith(encodedText(text, QStringConverter::Utf16BE)), quotes},
        {"Latin-1 accents",
         fileWith("na\xEFve\n%\n\xC7"
                  "a\n%\nd\xE9j\xE0"),
         {u"naïve\n"_s, u"Ça\n"_s, u"déjà"_s}},
        {"invalid UTF-8 as Windows-1252",
         fileWith("caf\xC3(\n%\n\x93quoted\x94\n%\n"),
         {u"cafÃ(\n"_s, u"“quoted”\n"_s}},
        {"empty file", fileWith({}), {}, u"Failed to import: Contents of file empty?"_s},
        {"only blank pieces", fileWith("\n\n \n\n\t\n\n")},
        {"UTF-8 with a stray zero byte",
         fileWith(QByteArray(120, 'a') + "\n%\n" + QByteArray(1, '\0') + "b\n%\nc"),
         {},
         zeros,
         u"FileNotText"_s},
        {"image", fileWith(png.data()), {}, zeros, u"FileNotText"_s},
        {"broken UTF-16",
         fileWith(brokenUtf16),
         {},
         u"Failed to read file: the file starts with a byte-order mark but is not valid UTF-16LE "
         u"text"_s,
         u"FileNotText"_s},
        {"over 64 MiB",
         huge,
         {},
         u"Failed to read file: the file is larger than 64 MiB"_s,
         u"FileTooLarge"_s},
        {"separator never alone on its line",
         fileWith("a\n% \nb\n% \nc"),
         {},
         u"Failed to import: Quotes found in input file = 1"_s,
         {},
         importHelp},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        resetCollection();
        browser.opened.clear();
        importFile(c.path);
        EXPECT_EQ(savedContents(), QStringList{u"Earlier quote"_s} + c.imported);
        EXPECT_EQ(undoManager.canUndo(), !c.imported.isEmpty());
        EXPECT_EQ(logged(qblog::Level::Warning),
                  c.warning.isEmpty() ? QStringList{} : QStringList{c.warning});
        EXPECT_EQ(browser.opened, c.help.isEmpty() ? QList<QUrl>{} : QList<QUrl>{c.help});
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

TEST(ImportTextTest, CandidatesAreLinesSeenTwiceAndInATenthOfTheLines)
{
    const struct
    {
        const char* name;
        QString text;
        QStringList candidates;
    } cases[] = {
        {"101 lines: threshold still 10", linesWith(101, u"%"_s, 10), {u"%"_s}},
        {"110 lines: threshold 11", linesWith(110, u"%"_s, 10), {}},
        {"most frequent first", linesWith(100, u"a"_s, 10, u"b"_s, 11), {u"b"_s, u"a"_s}},
        {"spaces around count as the same", u"x\n  %\t\ny\n% \nz\n%"_s, {u"%"_s}},
        {"blank and white lines are one key", u"a\n\nb\n \t\nc"_s, {u"\n"_s}},
        {"other line breaks split lines", u"a\u2028%\u2029b\u0085%\vc"_s, {u"%"_s}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(H::detectCandidateSeparators(c.text), c.candidates);
    }
}

} // namespace
