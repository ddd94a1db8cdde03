// The quotes window driven by real clicks and keys, checked against quotes.db and the signature.
#include "app/EditorAreaViewController.h"
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

#include "LaunchedAppFixture.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>
#include <QTextBrowser>
#include <QTextEdit>

#include <gtest/gtest.h>

namespace {

// The event loop turns as between two clicks, closing the undo group of the event.
void settle()
{
    QCoreApplication::processEvents();
}

class QuotesWindowTest : public LaunchedAppFixture
{
protected:
    void SetUp() override
    {
        LaunchedAppFixture::SetUp();
        if (HasFatalFailure())
            return;
        mWindow->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(mWindow));
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

TEST_F(QuotesWindowTest, UnconfirmedEditsAreDroppedAndEmptiedQuotesGo)
{
    const QByteArray before = readFileBytes(mDbPath);
    clickRow(2);
    const QString stored = mText->toPlainText();
    for (const bool leaveByClicking : {true, false}) {
        mText->setFocus();
        typeAtEnd(QStringLiteral(" typed"));
        EXPECT_TRUE(mEditor->isEditing());
        if (leaveByClicking) {
            clickRow(3);
            clickRow(2);
        } else {
            QTest::keyClick(mText, Qt::Key_Escape); // cancel
        }
        EXPECT_FALSE(mEditor->isEditing());
        EXPECT_EQ(mText->toPlainText(), stored);
        EXPECT_EQ(readFileBytes(mDbPath), before);
    }

    // Confirmed empty: the row goes about 250 ms later.
    const QString emptied = uidOfRow(1);
    clickRow(1);
    mText->setFocus();
    QTest::keyClick(mText, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(mText, Qt::Key_Delete);
    QElapsedTimer clock;
    clock.start();
    click("confirmButton");
    EXPECT_EQ(rows(), mSeedCount); // the row stays for a moment
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == mSeedCount - 1; }, 3000));
    EXPECT_GE(clock.elapsed(), 200);
    EXPECT_EQ(savedQuotes().count(emptied), 0u);
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
    help->close();
}

TEST_F(QuotesWindowTest, AnImportShowsAtOnceAndIsReportedASecondLater)
{
    QElapsedTimer clock;
    clock.start();
    QBQuoteEditHelper::addQuotesFromStringArray({QStringLiteral("One"), QStringLiteral("Two")});
    EXPECT_EQ(rows(), mSeedCount + 2);
    EXPECT_EQ(mList->model()->index(rows() - 1, 0).data(), QStringLiteral("Two"));
    EXPECT_EQ(openAlert(), nullptr);
    ASSERT_TRUE(QTest::qWaitFor([&] { return openAlert() != nullptr; }, 3000));
    EXPECT_GE(clock.elapsed(), 900);
    EXPECT_EQ(openAlert()->windowTitle(), QStringLiteral("Quotes Imported"));
    EXPECT_TRUE(openAlert()->text().contains(QLatin1Char('2')))
        << openAlert()->text().toStdString();
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
    const std::pair<const char*, int> cases[] = {
        {"Helvetica", 1},   {"Menlo-Regular", 0}, {"DejaVu Sans Mono", 0},
        {"Times-Roman", 2}, {"DejaVu Serif", 2},
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
}

} // namespace
