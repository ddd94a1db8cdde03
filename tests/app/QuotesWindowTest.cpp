// The quotes window driven by real clicks and keys, checked against quotes.db and the signature.
#include "app/EditorAreaViewController.h"
#include "app/QuoteListPlaceholder.h"
#include "app/QuotesEditorViewController.h"
#include "app/SignatureWriteReport.h"
#include "core/QuotesDBHelper.h"
#include "core/QuotesRepository.h"
#include "model/Notifications.h"
#include "model/QuoteEditHelper.h"
#include "signature/CurrentSignatureFileHelper.h"
#include "signature/SettingsKeys.h"
#include "signature/SignatureFileChooser.h"
#include "ui/HelpWindow.h"
#include "ui/MessageBar.h"
#include "util/CommandResults.h"
#include "util/NotificationCenter.h"
#include "util/UserDefaults.h"
#include "util/UserMessages.h"

#include "LaunchedAppFixture.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextBrowser>
#include <QTextEdit>
#include <QWindow>

#include <gtest/gtest.h>

namespace {

// The event loop turns as between two clicks, closing the undo group of the event.
void settle()
{
    QCoreApplication::processEvents();
}

class QuotesWindowTest : public ActiveWindowFixture
{
protected:
    void SetUp() override
    {
        ActiveWindowFixture::SetUp();
        if (HasFatalFailure())
            return;
        mEditor = mWindow->editorAreaViewController()->quotesEditorViewController();
        mList = mWindow->quotesListView();
        mText = mEditor->quoteTextView();
        mSeedCount = int(CQuotesRepository::getInstance().mQuotes.size());
    }
    void clickRow(int row) const
    {
        const QRect rect = mList->visualRect(mList->model()->index(row, 0));
        QTest::mouseClick(mList->viewport(), Qt::LeftButton, {}, rect.center());
        settle();
    }
    void click(const char* button) const
    {
        QTest::mouseClick(child<QAbstractButton>(button), Qt::LeftButton);
        settle();
    }
    void typeAtEnd(const QString& text) const
    {
        QTest::keyClick(mText, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClicks(mText, text);
    }
    void confirmWithKeys() const
    {
        QTest::keyClick(mText, Qt::Key_Return, Qt::ControlModifier);
        settle();
    }
    int rows() const { return mList->model()->rowCount(); }
    QString uidOfRow(int row) const
    {
        return mWindow->quotesArrayController().objectAtRow(row)->quoteUID();
    }

    // The quotes as saved: UID to text.
    std::map<QString, QString> savedQuotes() const
    {
        std::vector<CQuoteRecord> records;
        readQuotesFile(mDbPath.toStdString(), records);
        std::map<QString, QString> quotes;
        for (const CQuoteRecord& record : records)
            quotes[QString::fromStdString(record.mUID)] = QString::fromStdString(record.mContent);
        return quotes;
    }
    QMessageBox* openAlert() const { return mWindow->findChild<QMessageBox*>(); }
    QAction* findAction(const char* name) const { return child<QAction>(name); }
    QBMessageBar* bar() const { return mWindow->findChild<QBMessageBar*>(); }
    QString barText(const QString& topic) const
    {
        const QBMessageItem* item = bar()->item(topic);
        return item != nullptr ? item->text() : QString();
    }
    QAbstractButton* barButton(const QString& topic, const char* name) const
    {
        QCoreApplication::processEvents(); // laid out, as on screen
        const QBMessageItem* item = bar()->item(topic);
        return item != nullptr ? item->findChild<QAbstractButton*>(QString::fromLatin1(name))
                               : nullptr;
    }
    // Answers the open save dialog with |path|, after checking where it started.
    void chooseInDialog(const QString& offered, const QString& path) const
    {
        auto* dialog = mWindow->findChild<QFileDialog*>();
        ASSERT_NE(dialog, nullptr);
        if (!offered.isEmpty()) {
            EXPECT_EQ(dialog->selectedFiles().value(0), offered);
        }
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(name, nullptr);
        name->setText(path); // typed as a user would
        static_cast<QDialog*>(dialog)->accept();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        settle();
    }
    static QString signatureText(const QString& path)
    {
        QString text = QString::fromUtf8(readFileBytes(path));
        if (text.endsWith(QLatin1Char('\n')))
            text.chop(1); // the writer may end the file with one line break
        return text;
    }

    QBQuotesEditorViewController* mEditor = nullptr;
    QListView* mList = nullptr;
    QTextEdit* mText = nullptr;
    int mSeedCount = 0;
    const QString mDbPath = QString::fromStdString(*QBQuotesDBHelper::getPathToQuotesDb());
};

TEST_F(QuotesWindowTest, OpensUnselectedAddSelectsTheNewRowAndAConfirmedEditIsSavedAndUndone)
{
    ASSERT_GE(mSeedCount, 40);
    EXPECT_EQ(mWindow->selectionIndex(), -1);
    EXPECT_TRUE(mWindow->windowTitle().contains(QString::number(mSeedCount)))
        << mWindow->windowTitle().toStdString();
    EXPECT_TRUE(mText->isReadOnly()); // nothing to edit yet
    for (const char* disabled : {"removeQuoteAction", "chooseQuoteAction"})
        EXPECT_FALSE(child<QAction>(disabled)->isEnabled()) << disabled;

    click("addButton");
    ASSERT_EQ(rows(), mSeedCount + 1);
    EXPECT_EQ(mWindow->selectionIndex(), mSeedCount);
    EXPECT_TRUE(mText->hasFocus());
    const QString added = uidOfRow(mSeedCount);
    EXPECT_EQ(savedQuotes().at(added), QString()); // saved at once, empty
    QSignalSpy rowChanged(mList->model(), &QAbstractItemModel::dataChanged);
    QTest::keyClicks(mText, QStringLiteral("Brand new"));
    click("confirmButton");
    EXPECT_FALSE(mText->hasFocus());
    EXPECT_EQ(savedQuotes().at(added), QStringLiteral("Brand new"));
    ASSERT_FALSE(rowChanged.isEmpty()); // the row is repainted with the new text
    EXPECT_EQ(rowChanged.last().at(0).toModelIndex().row(), mSeedCount);
    EXPECT_TRUE(mWindow->windowTitle().contains(QString::number(mSeedCount + 1)));

    clickRow(0);
    const QString first = uidOfRow(0);
    const QString original = savedQuotes().at(first);
    EXPECT_EQ(mText->toPlainText(), original);
    mText->setFocus();
    typeAtEnd(QStringLiteral(" (edited)"));
    confirmWithKeys();
    EXPECT_EQ(savedQuotes().at(first), original + QStringLiteral(" (edited)"));

    QTest::keyClick(mWindow, Qt::Key_Z, Qt::ControlModifier); // Edit > Undo
    EXPECT_EQ(savedQuotes().at(first), original);
    EXPECT_EQ(mText->toPlainText(), original);
    QTest::keyClick(mWindow, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(savedQuotes().at(first), original + QStringLiteral(" (edited)"));
}

TEST_F(QuotesWindowTest, LeavingTheEditorKeepsTheTextAsOneUndoableChangeAndOnlyCancelDiscards)
{
    clickRow(2);
    const QString second = uidOfRow(2);
    const QString stored = savedQuotes().at(second);
    mText->setFocus();
    typeAtEnd(QStringLiteral(" kept"));
    QTest::keyClick(mText, Qt::Key_Return);
    QTest::keyClick(mText, Qt::Key_Return); // two presses make one blank line
    QTest::keyClicks(mText, QStringLiteral("-- me"));
    clickRow(3);
    const QString kept = stored + QStringLiteral(" kept\n\n-- me");
    EXPECT_EQ(savedQuotes().at(second), kept);
    EXPECT_EQ(mEditor->currentQuote()->quoteUID(), uidOfRow(3));
    QTest::keyClick(mWindow, Qt::Key_Z, Qt::ControlModifier); // one undo step
    EXPECT_EQ(savedQuotes().at(second), stored);

    const QString third = uidOfRow(3);
    const QString thirdText = savedQuotes().at(third) + QStringLiteral(" and more");
    mText->setFocus();
    typeAtEnd(QStringLiteral(" and more"));
    click("settingsButton");
    EXPECT_EQ(savedQuotes().at(third), thirdText);
    clickRow(3); // back to the editor
    mText->setFocus();
    typeAtEnd(QStringLiteral(" dropped"));
    QTest::keyClick(mText, Qt::Key_Escape); // cancel
    EXPECT_FALSE(mEditor->isEditing());
    EXPECT_EQ(mText->toPlainText(), thirdText);
    EXPECT_EQ(savedQuotes().at(third), thirdText);

    // Emptied and left: the row goes about 250 ms later; one undo brings the text back.
    mText->setFocus();
    QTest::keyClick(mText, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(mText, Qt::Key_Delete);
    QElapsedTimer clock;
    clock.start();
    clickRow(0);
    EXPECT_EQ(rows(), mSeedCount); // the row stays for a moment
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == mSeedCount - 1; }, 3000));
    EXPECT_GE(clock.elapsed(), 200);
    EXPECT_EQ(savedQuotes().count(third), 0u);
    QTest::keyClick(mWindow, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(savedQuotes().at(third), thirdText);
    EXPECT_EQ(mWindow->selectedQuote()->quoteUID(), third);
}

TEST_F(QuotesWindowTest, FilterAndListKeysUndoShowsHiddenQuotesAndEmptyListsSaySo)
{
    auto* filter = child<QLineEdit>("filterField");
    auto* placeholder = child<QBQuoteListPlaceholder>("quoteListPlaceholder");
    ASSERT_NE(placeholder, nullptr);
    EXPECT_EQ(placeholder->text(), QString());
    QTest::keyClick(mWindow, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(filter, QStringLiteral("be the question"));
    ASSERT_EQ(rows(), 1);
    QTest::keyClick(filter, Qt::Key_Down);
    EXPECT_TRUE(mList->hasFocus());
    ASSERT_EQ(mWindow->selectionIndex(), 0);
    const QString hamlet = uidOfRow(0);
    QTest::keyClick(mList, Qt::Key_Return);
    EXPECT_TRUE(mText->hasFocus());

    mList->setFocus();
    click("settingsButton");
    QTest::keyClick(mList, Qt::Key_Delete); // never behind the settings page
    EXPECT_EQ(savedQuotes().count(hamlet), 1u);
    clickRow(0);
    filter->setFocus();
    QTest::keyClick(filter, Qt::Key_Delete); // the field's own key
    EXPECT_EQ(savedQuotes().count(hamlet), 1u);
    mList->setFocus();
    QTest::keyClick(mList, Qt::Key_Delete);
    settle();
    EXPECT_EQ(savedQuotes().count(hamlet), 0u);
    EXPECT_EQ(placeholder->text(), QStringLiteral("No quote matches “be the question”."));

    filter->setText(QStringLiteral("Gandalf"));
    QTest::keyClick(mWindow, Qt::Key_Z, Qt::ControlModifier); // comes back despite the filter
    EXPECT_EQ(filter->text(), QString());
    ASSERT_NE(mWindow->selectedQuote(), nullptr);
    EXPECT_EQ(mWindow->selectedQuote()->quoteUID(), hamlet);
    EXPECT_EQ(placeholder->text(), QString());
    filter->setText(QStringLiteral("Gandalf"));
    filter->setFocus();
    QTest::keyClick(filter, Qt::Key_Escape);
    EXPECT_EQ(filter->text(), QString());
    EXPECT_EQ(rows(), mSeedCount);

    click("removeAllButton");
    QMessageBox* question = openAlert();
    ASSERT_NE(question, nullptr);
    for (QAbstractButton* button : question->buttons()) {
        if (question->buttonRole(button) == QMessageBox::YesRole)
            QTest::mouseClick(button, Qt::LeftButton);
    }
    // The window manager gives the window back the keyboard when the question closes.
    mWindow->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(mWindow));
    settle();
    EXPECT_EQ(placeholder->text(),
              QStringLiteral("No quotes yet. Add one, or import many from a text file."));
    EXPECT_NE(child<QPushButton>("importQuotesActionButton"), nullptr);
    QTest::mouseClick(child<QPushButton>("addQuoteActionButton"), Qt::LeftButton);
    settle();
    EXPECT_EQ(rows(), 1);
    EXPECT_EQ(placeholder->text(), QString());
    EXPECT_TRUE(mText->hasFocus());
}

TEST_F(QuotesWindowTest, ClosingKeepsTheOpenEditAndARelaunchRestoresPlaceAndSelection)
{
    clickRow(5);
    const QString fifth = uidOfRow(5);
    const QString text = savedQuotes().at(fifth) + QStringLiteral(" (closed)");
    mText->setFocus();
    typeAtEnd(QStringLiteral(" (closed)"));
    // A place inside the screen: newer Qt moves a restored window that would stick out.
    mWindow->setGeometry(60, 70, 680, 460);
    settle();
    const QRect place = mWindow->geometry();
    ASSERT_TRUE(mWindow->screen()->availableGeometry().contains(mWindow->frameGeometry()))
        << mWindow->frameGeometry().width() << "x" << mWindow->frameGeometry().height();
    mWindow->close();
    EXPECT_EQ(savedQuotes().at(fifth), text);
    delete mWindow;

    QBAppDelegate relaunched;
    relaunched.applicationDidFinishLaunching();
    QBQuotesWindowController* window = relaunched.quotesWindowController();
    ASSERT_NE(window->selectedQuote(), nullptr);
    EXPECT_EQ(window->selectedQuote()->quoteUID(), fifth);
    EXPECT_EQ(window->geometry(), place);
    EXPECT_EQ(window->editorAreaViewController()
                  ->quotesEditorViewController()
                  ->quoteTextView()
                  ->toPlainText(),
              text);
}

TEST_F(QuotesWindowTest, RemoveAllAsksWithTheCountAndTheBarsUndoBringsThemBack)
{
    QAction* undo = findAction("undoAction");
    clickRow(4);
    const QString removed = uidOfRow(4);
    const QString next = uidOfRow(5);
    click("removeButton");
    EXPECT_EQ(rows(), mSeedCount - 1);
    EXPECT_EQ(uidOfRow(4), next);
    EXPECT_EQ(savedQuotes().count(removed), 0u);
    EXPECT_EQ(mEditor->currentQuote(), nullptr);
    EXPECT_TRUE(barText(QBCommandResults::kTopic).startsWith(QStringLiteral("Removed “")));
    EXPECT_EQ(undo->text(), QStringLiteral("&Undo Remove Quote"));

    auto* filter = child<QLineEdit>("filterField");
    filter->setText(QStringLiteral("the"));
    ASSERT_LT(rows(), mSeedCount - 1);
    for (const QMessageBox::ButtonRole answer : {QMessageBox::NoRole, QMessageBox::YesRole}) {
        click("removeAllButton");
        QMessageBox* question = openAlert();
        ASSERT_NE(question, nullptr);
        EXPECT_EQ(question->windowTitle(),
                  QStringLiteral("Remove all %1 quotes?").arg(mSeedCount - 1));
        for (QAbstractButton* button : question->buttons()) {
            if (question->buttonRole(button) == answer)
                QTest::mouseClick(button, Qt::LeftButton);
        }
        settle();
        if (answer == QMessageBox::NoRole) { // nothing happens
            EXPECT_EQ(savedQuotes().size(), std::size_t(mSeedCount - 1));
        }
    }
    EXPECT_EQ(filter->text(), QString()); // cleared first, then everything goes
    EXPECT_EQ(rows(), 0);
    EXPECT_TRUE(savedQuotes().empty());
    EXPECT_FALSE(child<QAction>("removeAllQuotesAction")->isEnabled());
    EXPECT_EQ(barText(QBCommandResults::kTopic),
              QStringLiteral("Removed all %1 quotes").arg(mSeedCount - 1));
    EXPECT_EQ(undo->text(), QStringLiteral("&Undo Remove All"));

    QTest::mouseClick(barButton(QBCommandResults::kTopic, "messageAction"), Qt::LeftButton);
    settle();
    EXPECT_EQ(rows(), mSeedCount - 1);
    EXPECT_EQ(savedQuotes().size(), std::size_t(mSeedCount - 1));
    EXPECT_EQ(findAction("redoAction")->text(), QStringLiteral("&Redo Remove All"));
    EXPECT_EQ(bar()->item(QBCommandResults::kTopic), nullptr);

    // A result whose step is no longer the one Undo takes back goes away.
    clickRow(0);
    click("removeButton");
    ASSERT_NE(bar()->item(QBCommandResults::kTopic), nullptr);
    click("addButton");
    EXPECT_EQ(bar()->item(QBCommandResults::kTopic), nullptr);
    EXPECT_EQ(undo->text(), QStringLiteral("&Undo Add Quote"));
}

TEST_F(QuotesWindowTest, FirstRunHintUseAsSignatureChoosesAFileFirstAndWriteFailuresShow)
{
    // First run: the hint with its link to the help and the chooser.
    EXPECT_EQ(barText(QBSignatureFileChooser::kHintTopic),
              QStringLiteral("First choose where your signature file goes, then point your mail "
                             "program at it."));
    EXPECT_TRUE(bar()
                    ->item(QBSignatureFileChooser::kHintTopic)
                    ->findChild<QLabel*>(QStringLiteral("messageText"))
                    ->text()
                    .contains(QStringLiteral("href=\"#QB_SIGNATURE\"")));

    // Use as Signature with no file: the chooser, in the home folder, then the write.
    ASSERT_TRUE(QDir().mkpath(mHome.filePath(QStringLiteral("Mail"))));
    const QString signature = mHome.filePath(QStringLiteral("Mail/signature.txt"));
    clickRow(0);
    click("chooseQuoteButton");
    chooseInDialog(QDir::home().filePath(QStringLiteral("CurrentSignature.txt")), signature);
    EXPECT_EQ(signatureText(signature), savedQuotes().at(uidOfRow(0)));
    EXPECT_EQ(bar()->item(QBSignatureFileChooser::kHintTopic), nullptr);
    EXPECT_EQ(barText(QBCommandResults::kTopic), QStringLiteral("Signature updated"));

    // The folder went away (an unplugged drive): the reason, and another file.
    ASSERT_TRUE(QDir(mHome.filePath(QStringLiteral("Mail"))).removeRecursively());
    clickRow(3);
    click("chooseQuoteButton");
    const QString failure = barText(QBSignatureWriteReport::kTopic);
    EXPECT_TRUE(failure.startsWith(
        QStringLiteral("The signature file %1 could not be written.").arg(signature)))
        << failure.toStdString();
    EXPECT_GT(failure.size(), signature.size() + 45) << "and why";
    QAbstractButton* another = barButton(QBSignatureWriteReport::kTopic, "messageAction");
    ASSERT_NE(another, nullptr);
    EXPECT_EQ(another->text(), QStringLiteral("Choose Another File…"));

    // A file that Quillbox2 did not write is replaced only when the user says so.
    const QString foreign = mHome.filePath(QStringLiteral("mine.txt"));
    ASSERT_TRUE(writeFileBytes(foreign, "-- \nMy own signature\n"));
    for (const QMessageBox::StandardButton answer : {QMessageBox::Cancel, QMessageBox::NoButton}) {
        click("chooseQuoteButton"); // fails again, and says so again
        QAbstractButton* chooseAnother = barButton(QBSignatureWriteReport::kTopic, "messageAction");
        ASSERT_NE(chooseAnother, nullptr);
        QTest::mouseClick(chooseAnother, Qt::LeftButton);
        chooseInDialog({}, foreign);
        QMessageBox* question = openAlert();
        ASSERT_NE(question, nullptr);
        EXPECT_EQ(question->windowTitle(), QStringLiteral("Replace “mine.txt”?"));
        QAbstractButton* button = answer == QMessageBox::Cancel
                                      ? question->button(QMessageBox::Cancel)
                                      : question->buttons().constFirst();
        if (answer != QMessageBox::Cancel) {
            for (QAbstractButton* candidate : question->buttons()) {
                if (question->buttonRole(candidate) == QMessageBox::DestructiveRole)
                    button = candidate;
            }
        }
        QTest::mouseClick(button, Qt::LeftButton);
        settle();
        if (answer == QMessageBox::Cancel) {
            EXPECT_EQ(readFileBytes(foreign), "-- \nMy own signature\n");
        }
    }
    EXPECT_EQ(signatureText(foreign), savedQuotes().at(uidOfRow(3)));
    EXPECT_EQ(bar()->item(QBSignatureWriteReport::kTopic), nullptr);

    // An open edit goes into the signature, and stays one undoable change of the quote.
    mText->setFocus();
    typeAtEnd(QStringLiteral(" (typed)"));
    click("chooseQuoteButton");
    EXPECT_TRUE(signatureText(foreign).endsWith(QStringLiteral(" (typed)")));
    EXPECT_EQ(signatureText(foreign), savedQuotes().at(uidOfRow(3)));

    // A quote longer than the line limit is written all the same, and the bar says how
    // long, in words a user sees on the screen (a laid-out label, not only a text).
    QBUserDefaults::standardUserDefaults().setObject(1, QBDefaultsSignatureMaxLines);
    int longRow = 0;
    while (longRow < rows() && !savedQuotes().at(uidOfRow(longRow)).contains(u'\n'))
        ++longRow;
    ASSERT_LT(longRow, rows());
    clickRow(longRow);
    click("chooseQuoteButton");
    EXPECT_EQ(signatureText(foreign), savedQuotes().at(uidOfRow(longRow)));
    QCoreApplication::processEvents(); // laid out, as on screen
    const QBMessageItem* warning = bar()->item(QBSignatureWriteReport::kTopic);
    ASSERT_NE(warning, nullptr);
    const auto* warningText = warning->findChild<QLabel*>(QStringLiteral("messageText"));
    EXPECT_TRUE(warningText->text().startsWith(QStringLiteral("The quote takes ")))
        << warningText->text().toStdString();
    EXPECT_TRUE(warningText->isVisible());
    EXPECT_GT(warningText->width(), warningText->fontMetrics().horizontalAdvance(u'x') * 20);
    EXPECT_GE(warningText->height(), warningText->fontMetrics().height());
    // Inside the message, where it is drawn; a label laid out taller than its message
    // puts its centred text below the message's edge, and the message looks empty.
    EXPECT_TRUE(warning->rect().contains(warningText->geometry()))
        << warningText->geometry().height() << " in " << warning->height();
    QBUserDefaults::standardUserDefaults().removeObjectForKey(QBDefaultsSignatureMaxLines);

    // The output file changes while nothing is selected.
    mList->selectionModel()->clearSelection();
    QBNotificationCenter::defaultCenter().post(QBWriteCurrentQuoteNotification);
    EXPECT_EQ(signatureText(foreign), QStringLiteral("..."));
}

TEST_F(QuotesWindowTest, HelpWithNoBrowserOpensInTheAppsOwnHelpWindow)
{
    // No browser anywhere: nothing on the path and no browser variables.
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "");
    qputenv("BROWSER", "");
    qunsetenv("DEFAULT_BROWSER");
    findAction("helpBookAction")->trigger();
    qputenv("PATH", path);
    QBHelpWindow* help = QBHelpWindow::instance();
    ASSERT_NE(help, nullptr);
    EXPECT_TRUE(help->isVisible());
    EXPECT_EQ(help->browser()->source().fileName(), QStringLiteral("index.html"));
    EXPECT_TRUE(help->browser()->toPlainText().contains(QStringLiteral("The signature file")));
    EXPECT_TRUE(barText(QStringLiteral("help")).startsWith(QStringLiteral("No web browser")));

    // The first-run hint's link opens the same window at its topic.
    emit bar()
        ->item(QBSignatureFileChooser::kHintTopic)
        ->findChild<QLabel*>(QStringLiteral("messageText"))
        ->linkActivated(QStringLiteral("#QB_SIGNATURE"));
    EXPECT_EQ(QBHelpWindow::instance(), help);
    EXPECT_EQ(help->browser()->source().fragment(), QStringLiteral("QB_SIGNATURE"));
    // Escape closes it, as Ctrl+W does.
    help->raise();
    help->windowHandle()->requestActivate();
    ASSERT_TRUE(QTest::qWaitFor([help] { return QApplication::activeWindow() == help; }));
    QTest::keyClick(help->browser(), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([] { return QBHelpWindow::instance() == nullptr; }));
}

TEST_F(QuotesWindowTest, DroppedFilesAreOneImportReportedInTheMessageBarWithUndo)
{
    QStringList files;
    for (const char* text : {"One\n%\nTwo\n", "Three\n\nFour\n"}) {
        files << mHome.filePath(QStringLiteral("drop %1.txt").arg(files.size()));
        ASSERT_TRUE(writeFileBytes(files.last(), text));
    }
    auto* data = new QMimeData;
    QList<QUrl> urls;
    for (const QString& file : files)
        urls << QUrl::fromLocalFile(file);
    data->setUrls(urls);
    const QPoint middle = mWindow->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(mWindow, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(middle, Qt::CopyAction, data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(mWindow, &drop);
    delete data;

    QTRY_COMPARE_WITH_TIMEOUT(rows(), mSeedCount + 4, 10000);
    EXPECT_EQ(mList->model()->index(rows() - 1, 0).data(), QStringLiteral("Four"));
    const QBUserMessage& message = QBUserMessages::shared().lastMessage();
    EXPECT_EQ(message.kind, QBUserMessage::Kind::Success);
    EXPECT_EQ(message.text, QStringLiteral("Imported 4 quotes from 2 files."));
    EXPECT_EQ(message.actionText, QStringLiteral("Undo"));
    ASSERT_TRUE(message.action);
    message.action(); // both files in one step
    EXPECT_EQ(rows(), mSeedCount);
    EXPECT_EQ(int(savedQuotes().size()), mSeedCount);
    QTest::qWait(1200); // the old alert a second later is gone for good
    EXPECT_EQ(openAlert(), nullptr);
}

TEST_F(QuotesWindowTest, ExportWritesTheCollectionOrTheSelectedQuoteAsChosen)
{
    for (const bool selectedOnly : {false, true}) {
        mWindow->activateWindow(); // the keyboard comes back from the file dialog
        ASSERT_TRUE(QTest::qWaitForWindowActive(mWindow));
        if (selectedOnly)
            clickRow(1);
        QTest::keyClick(mWindow, Qt::Key_E, Qt::ControlModifier);
        auto* dialog = mWindow->findChild<QFileDialog*>();
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowModality(), Qt::WindowModal);
        auto* onlySelected = dialog->findChild<QCheckBox*>(QStringLiteral("exportSelectionOnly"));
        ASSERT_EQ(onlySelected != nullptr, selectedOnly); // offered with a selection only
        if (onlySelected != nullptr)
            onlySelected->setChecked(true);
        const QString path =
            mHome.filePath(selectedOnly ? QStringLiteral("one.json") : QStringLiteral("all.json"));
        dialog->selectNameFilter(dialog->nameFilters().last()); // the collection's JSON
        dialog->selectFile(path);
        static_cast<QDialog*>(dialog)->accept();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(mWindow->findChild<QFileDialog*>(), nullptr);

        std::vector<CQuoteRecord> exported;
        readQuotesFile(path.toStdString(), exported);
        ASSERT_EQ(int(exported.size()), selectedOnly ? 1 : mSeedCount);
        EXPECT_EQ(QString::fromStdString(exported.front().mUID), uidOfRow(selectedOnly ? 1 : 0));
        EXPECT_EQ(QBUserMessages::shared().lastMessage().text,
                  selectedOnly
                      ? QStringLiteral("Exported 1 quote to “one.json”.")
                      : QStringLiteral("Exported %1 quotes to “all.json”.").arg(mSeedCount));
    }
}

TEST_F(QuotesWindowTest, FilterKeepsTheSelectionWhileItMatches)
{
    auto* filter = child<QLineEdit>("filterField");
    QTest::keyClick(mWindow, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(filter->hasFocus());
    clickRow(0);
    const QString first = uidOfRow(0);
    filter->setText(QStringLiteral("be the"));
    EXPECT_LT(rows(), mSeedCount);
    filter->setText(QStringLiteral("be the question"));
    EXPECT_EQ(rows(), 1);
    EXPECT_EQ(mWindow->selectedQuote()->quoteUID(), first); // still selected while it matches
    EXPECT_EQ(mEditor->currentQuote()->quoteUID(), first);
    filter->setText(QStringLiteral("bemüht"));
    EXPECT_EQ(mWindow->selectionIndex(), -1);
    EXPECT_EQ(mEditor->currentQuote(), nullptr);
}

TEST_F(QuotesWindowTest, FontPopupFollowsTheStoredNameAndTheUsersChoice)
{
    QBUserDefaults& defaults = QBUserDefaults::standardUserDefaults();
    // Names stored by earlier versions, in any case.
    const std::pair<const char*, int> cases[] = {
        {"Helvetica", 1}, {"Menlo-Regular", 0}, {"DejaVu Sans Mono", 0},
        {"monospace", 0}, {"Times-Roman", 2},   {"DejaVu Serif", 2},
        {"serif", 2},
    };
    for (const auto& [name, entry] : cases) {
        defaults.setObject(QString::fromLatin1(name), QBDefaultsEditorFontName);
        QBQuotesEditorViewController editor(&mDelegate.undoManager());
        EXPECT_EQ(editor.fontPopup()->currentIndex(), entry) << name;
        EXPECT_EQ(editor.quoteTextView()->font().pointSizeF(), 18.0) << name;
    }
    QComboBox* popup = mEditor->fontPopup();
    popup->setFocus();
    QTest::keyClick(popup, Qt::Key_End); // a user's choice: the serif entry
    const QString stored = defaults.stringForKey(QBDefaultsEditorFontName);
    EXPECT_EQ(stored, QBQuotesEditorViewController::fontForEntry(2).family());
    EXPECT_EQ(mText->font().family(), stored);
    // Each choice comes back in the next launch's editor, whatever its family is called.
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Down, Qt::Key_End}) {
        QTest::keyClick(popup, key);
        QBQuotesEditorViewController relaunched(&mDelegate.undoManager());
        EXPECT_EQ(relaunched.fontPopup()->currentIndex(), popup->currentIndex());
        EXPECT_EQ(relaunched.quoteTextView()->font(), mText->font());
    }
}

} // namespace
