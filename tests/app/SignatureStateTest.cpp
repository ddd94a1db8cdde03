// What the window shows about the signature: the marked quote, the status bar and Next
// Quote Now, driven through the real window and real helper processes.
#include "model/SignatureState.h"
#include "app/QuoteRowDelegate.h"
#include "core/QuotesRepository.h"
#include "signature/CurrentSignatureFileHelper.h"
#include "signature/LoginItemService.h"
#include "signature/SettingsKeys.h"
#include "signature/SignatureComposer.h"
#include "ui/ElidedLabel.h"
#include "util/UserMessages.h"

#include "HelperWorld.h"
#include "LaunchedAppFixture.h"

#include <QAction>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPixmap>
#include <QSet>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace {

// Turns the event loop until |condition| holds; false after |timeoutMs|. (Qt's QTRY
// macros report to QTest, not to this test framework.)
template <class Condition> bool eventually(Condition condition, int timeoutMs = 5000)
{
    return QTest::qWaitFor(condition, timeoutMs);
}

class SignatureStateTest : public ActiveWindowFixture
{
protected:
    void TearDown() override
    {
        QBLoginItemService::setHelperExecutablePath(QString());
        LaunchedAppFixture::TearDown();
    }
    // The signature file at |path| (created empty), chosen as the settings page does.
    void useSignatureFile(const QString& path) const
    {
        ASSERT_TRUE(writeFileBytes(path, {}));
        QBUserDefaults::standardUserDefaults().setObject(path, QBDefaultsSignatureOutputPath);
        QBCurrentSignatureFileHelper::createSecurityScopedBookmarkForPath(
            QUrl::fromLocalFile(path));
    }
    // UIDs of the rows the list marks as the current signature.
    QStringList markedUIDs() const
    {
        QStringList uids;
        const QAbstractItemModel* model = mWindow->quotesListView()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            const QModelIndex index = model->index(row, 0);
            if (index.data(QBQuotesListModel::IsCurrentSignatureRole).toBool())
                uids.append(index.data(QBQuotesListModel::QuoteUIDRole).toString());
        }
        return uids;
    }
    // The UID of the quote whose text the file at |path| holds, or empty.
    static QString uidOfFile(const QString& path)
    {
        const QByteArray bytes = readFileBytes(path);
        for (const CQuoteRecord& quote : CQuotesRepository::getInstance().mQuotes) {
            if (QBSignatureComposer::compose(
                    QString::fromStdString(quote.mContent),
                    QBSignatureSettings::fromDefaults(QBUserDefaults::standardUserDefaults()))
                    .bytes == bytes)
                return QString::fromStdString(quote.mUID);
        }
        return QString();
    }
    QString selectedUID() const
    {
        const auto quote = mWindow->selectedQuote();
        return quote ? quote->quoteUID() : QString();
    }
    LMElidedLabel* label(const char* name) const { return child<LMElidedLabel>(name); }
};

TEST_F(SignatureStateTest, StatusBarFollowsTheSettingsAndNeverWidensTheWindow)
{
    LMElidedLabel* path = label("signaturePathLabel");
    LMElidedLabel* rotation = label("rotationLabel");
    auto* choose = child<QToolButton>("chooseSignatureFileButton");
    auto* settingsLabel = child<QLabel>("rotationStatusLabel");
    ASSERT_TRUE(path && rotation && choose && settingsLabel);
    EXPECT_EQ(path->fullText(), QStringLiteral("No signature file chosen"));
    EXPECT_TRUE(choose->isVisible());
    EXPECT_EQ(rotation->fullText(), QStringLiteral("Automatic quote changes are off"));
    EXPECT_EQ(settingsLabel->text(), rotation->fullText());

    // Next Quote Now without a file says what to do instead of failing silently.
    mWindow->findChild<QAction*>(QStringLiteral("nextQuoteAction"))->trigger();
    EXPECT_EQ(QBUserMessages::shared().lastMessage().text,
              QStringLiteral("Choose a signature file first."));

    // "Choose…" opens the settings page's chooser, window-modal.
    QTest::mouseClick(choose, Qt::LeftButton);
    QFileDialog* dialog = nullptr;
    ASSERT_TRUE(eventually(
        [&] { return (dialog = mWindow->findChild<QFileDialog*>()) && dialog->isVisible(); }));
    EXPECT_EQ(dialog->windowModality(), Qt::WindowModal);
    dialog->reject();

    const int width = mWindow->width();
    const QString longPath =
        mHome.filePath(QString(120, QLatin1Char('d')) + QLatin1Char('/') +
                       QString(120, QLatin1Char('e')) + QStringLiteral("/CurrentSignature.txt"));
    useSignatureFile(longPath);
    ASSERT_TRUE(eventually([&] { return path->fullText() == longPath; }))
        << path->fullText().toStdString();
    EXPECT_EQ(path->toolTip(), longPath);
    EXPECT_TRUE(path->text().contains(QStringLiteral("…"))); // elided, in the middle
    EXPECT_TRUE(path->text().endsWith(QStringLiteral(".txt")));
    EXPECT_FALSE(choose->isVisible());
    mWindow->switchToSettings(); // the page shows the long path too
    QCoreApplication::processEvents();
    EXPECT_EQ(mWindow->width(), width);
    EXPECT_LE(mWindow->minimumSizeHint().width(), width);

    // Turned on with no helper program: not running, and why.
    QBLoginItemService::setHelperExecutablePath(mHome.filePath(QStringLiteral("no-helper")));
    QBUserDefaults::standardUserDefaults().setObject(true, QBDefaultsAutoRandomize);
    EXPECT_TRUE(eventually([&] {
        return rotation->fullText().startsWith(
            QStringLiteral("Automatic changes are on, but the helper is not running: the helper "
                           "program"));
    })) << rotation->fullText().toStdString();
    EXPECT_TRUE(rotation->fullText().contains(QStringLiteral("no-helper")));
    EXPECT_EQ(settingsLabel->text(), rotation->fullText());
    QBUserDefaults::standardUserDefaults().setObject(false, QBDefaultsAutoRandomize);
    EXPECT_TRUE(eventually([&] {
        return rotation->fullText() == QStringLiteral("Automatic quote changes are off");
    })) << rotation->fullText().toStdString();
    EXPECT_EQ(mWindow->width(), width);
}

// Reaches the style options the list's delegate gives a row.
class RowOptions : public QBQuoteRowDelegate
{
public:
    using QBQuoteRowDelegate::QBQuoteRowDelegate;
    QStyleOptionViewItem of(const QModelIndex& index) const
    {
        QStyleOptionViewItem option;
        initStyleOption(&option, index);
        return option;
    }
};

TEST_F(SignatureStateTest, TheListsOneDelegateDrawsTheMarkAndTheTooLongRowsTogether)
{
    // The signature settings' fit rules must not replace the delegate that draws the mark.
    QBUserDefaults::standardUserDefaults().setObject(1, QBDefaultsSignatureMaxLines);
    EXPECT_NE(qobject_cast<QBQuoteRowDelegate*>(mWindow->quotesListView()->itemDelegate()),
              nullptr);
    QBUserDefaults::standardUserDefaults().removeObjectForKey(QBDefaultsSignatureMaxLines);

    QBQuotesListModel& model = mWindow->quotesArrayController();
    ASSERT_GT(model.rowCount(), 1);
    model.setCurrentSignatureUID(model.index(0).data(QBQuotesListModel::QuoteUIDRole).toString());
    model.setSignatureFitTest([](const QString&) { return false; });
    QPixmap mark(8, 8);
    mark.fill(Qt::black);
    const RowOptions delegate{QIcon(mark)};
    const QStyleOptionViewItem marked = delegate.of(model.index(0));
    EXPECT_FALSE(marked.icon.isNull());
    EXPECT_TRUE(marked.font.italic());
    model.setSignatureFitTest({});
    const QStyleOptionViewItem plain = delegate.of(model.index(1));
    EXPECT_TRUE(plain.icon.isNull());
    EXPECT_FALSE(plain.font.italic());
    EXPECT_EQ(plain.decorationSize, marked.decorationSize); // texts stay aligned
}

TEST_F(SignatureStateTest, MarkFollowsEveryWriterOfTheFile)
{
    // Chosen in the suite file itself, where the helper processes read it (this process
    // keeps the suite of the first test's home).
    const QString file = helperworld::makeBookmarkedSignatureFile();
    QBUserDefaults::standardUserDefaults().setObject(file, QBDefaultsSignatureOutputPath);
    ASSERT_TRUE(eventually([&] { return mWindow->signatureState().signaturePath() == file; }));
    EXPECT_TRUE(markedUIDs().isEmpty()); // an empty file is no quote

    // A quote written from a terminal.
    const helperworld::HelperRun next = helperworld::runHelper({QStringLiteral("--next")});
    ASSERT_EQ(next.exitCode, 0) << next.err.toStdString();
    EXPECT_EQ(next.out, readFileBytes(file));
    const QString printed = uidOfFile(file);
    ASSERT_FALSE(printed.isEmpty());
    EXPECT_TRUE(eventually([&] { return markedUIDs() == QStringList{printed}; }, 1000))
        << markedUIDs().join(u' ').toStdString();
    const QModelIndex marked = mWindow->quotesListView()->model()->index(
        mWindow->quotesArrayController().rowOfObject(
            mWindow->quotesSource().valueObjectForQuoteUID(printed).get()),
        0);
    EXPECT_TRUE(marked.data(Qt::AccessibleTextRole)
                    .toString()
                    .startsWith(QStringLiteral("Current signature: ")));

    // The mark compares composed signatures: a quote written in a template is marked, and
    // another template makes the same file no quote's signature.
    QBUserDefaults& defaults = QBUserDefaults::standardUserDefaults();
    defaults.setObject(QStringLiteral("Jane Doe\n{quote}"), QBDefaultsSignatureTemplate);
    EXPECT_TRUE(eventually([&] { return markedUIDs().isEmpty(); }, 1000));
    const auto other = CQuotesRepository::getInstance().mQuotes.back();
    ASSERT_TRUE(QBCurrentSignatureFileHelper::writeQuoteAsSignature(
        QString::fromStdString(other.mContent), defaults));
    ASSERT_TRUE(readFileBytes(file).startsWith("Jane Doe\n"));
    EXPECT_TRUE(eventually(
        [&] { return markedUIDs() == QStringList{QString::fromStdString(other.mUID)}; }, 1000))
        << markedUIDs().join(u' ').toStdString();
    defaults.removeObjectForKey(QBDefaultsSignatureTemplate);
    EXPECT_TRUE(eventually([&] { return markedUIDs().isEmpty(); }, 1000));

    // A text that is no quote of the collection, written in place, marks nothing.
    QFile foreign(file);
    ASSERT_TRUE(foreign.open(QIODevice::WriteOnly | QIODevice::Truncate));
    foreign.write("Sent from my phone\n");
    foreign.close();
    EXPECT_TRUE(eventually([&] { return markedUIDs().isEmpty(); }, 1000));

    // The running helper's rotations, each marked within a second of the file changing.
    helperworld::setSuiteValue(QBDefaultsAutoRandomize, true);
    helperworld::setSuiteValue(QBDefaultsRandomizeInterval, 0.4);
    helperworld::RunningHelper helper;
    QSet<QString> seen;
    for (int rotationCount = 0; rotationCount < 3; ++rotationCount) {
        const QByteArray before = readFileBytes(file);
        ASSERT_TRUE(eventually([&] { return readFileBytes(file) != before; }))
            << helperworld::helperLogText().toStdString();
        const QString expected = uidOfFile(file);
        ASSERT_FALSE(expected.isEmpty());
        EXPECT_TRUE(eventually([&] { return markedUIDs() == QStringList{expected}; }, 1000))
            << markedUIDs().join(u' ').toStdString();
        seen.insert(expected);
    }
    EXPECT_EQ(seen.size(), 3); // a round of the cycle repeats nothing
    EXPECT_TRUE(helper.terminate());
}

TEST_F(SignatureStateTest, NextQuoteNowWalksOneRoundAndSelectsEachQuote)
{
    const QString file = mHome.filePath(QStringLiteral("Mail/sig.txt"));
    useSignatureFile(file);
    const int count = int(CQuotesRepository::getInstance().mQuotes.size());
    ASSERT_GT(count, 2);
    // A filter that hides most quotes: the quote written is shown all the same.
    auto* filter = mWindow->findChild<QLineEdit*>(QStringLiteral("filterField"));
    QTest::keyClicks(filter, QStringLiteral("zzz-no-match"));
    QSet<QString> written;
    for (int step = 0; step < count; ++step) {
        if (step % 2 == 0)
            QTest::keyClick(mWindow, Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
        else
            QTest::mouseClick(child<QToolButton>("nextQuoteButton"), Qt::LeftButton);
        const QString uid = uidOfFile(file);
        ASSERT_FALSE(uid.isEmpty());
        EXPECT_EQ(selectedUID(), uid);
        EXPECT_EQ(markedUIDs(), QStringList{uid});
        written.insert(uid);
    }
    EXPECT_EQ(written.size(), count);
    EXPECT_TRUE(filter->text().isEmpty());

    // No quote fits one line of one cell: nothing is written, and the message bar says why.
    const QByteArray before = readFileBytes(file);
    helperworld::setSuiteValue(QBDefaultsSignatureWrapColumn, 1);
    helperworld::setSuiteValue(QBDefaultsSignatureMaxLines, 1);
    QTest::keyClick(mWindow, Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(readFileBytes(file), before);
    const QBUserMessage& message = QBUserMessages::shared().lastMessage();
    EXPECT_EQ(message.kind, QBUserMessage::Kind::Error);
    EXPECT_TRUE(message.text.contains(QStringLiteral("quotes fits"))) << message.text.toStdString();
    helperworld::setSuiteValue(QBDefaultsSignatureWrapColumn, 0);
    helperworld::setSuiteValue(QBDefaultsSignatureMaxLines, 0);
}

} // namespace
