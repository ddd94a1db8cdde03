#include "app/AppDelegate.h"
#include "app/AppIcon.h"
#include "core/QuotesDBHelper.h"
#include "core/QuotesRepository.h"
#include "model/QuoteEditHelper.h"
#include "util/UserMessages.h"

#include "LaunchedAppFixture.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

class AppDelegateTest : public LaunchedAppFixture
{
protected:
    QAction* action(const char* name) const { return child<QAction>(name); }
    // Runs the event loop after |trigger|; false if the application did not quit in 10 s.
    static bool quitsAfter(const std::function<void()>& trigger)
    {
        QTimer::singleShot(0, trigger);
        QTimer guard; // gone with the loop, so it cannot end a later one
        QObject::connect(&guard, &QTimer::timeout, [] { QApplication::exit(1); });
        guard.start(10000);
        return QApplication::exec() == 0;
    }

    const QString mDbPath = QString::fromStdString(*QBQuotesDBHelper::getPathToQuotesDb());
};

TEST_F(AppDelegateTest, LaunchShowsTheWindowAndMenusSaveWritesAboutIsMadeOnceAnotherLaunchRaises)
{
    EXPECT_TRUE(mWindow->isVisible());
    EXPECT_NE(mDelegate.autoSaver(), nullptr);

    ASSERT_TRUE(QFile::remove(mDbPath));
    action("saveAction")->trigger();
    std::vector<CQuoteRecord> saved;
    readQuotesFile(mDbPath.toStdString(), saved);
    EXPECT_EQ(saved.size(), CQuotesRepository::getInstance().mQuotes.size());
    EXPECT_GE(saved.size(), 40u);

    action("aboutAction")->trigger();
    QBAboutWindow* about = mDelegate.aboutWindowController();
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->isVisible());
    EXPECT_TRUE(about->creditsText().contains(QStringLiteral("William Shakespeare")));
    about->close();
    action("aboutAction")->trigger();
    EXPECT_EQ(mDelegate.aboutWindowController(), about);
    EXPECT_TRUE(about->isVisible());

    mWindow->showMinimized();
    ASSERT_TRUE(mWindow->isMinimized());
    mDelegate.bringWindowToFront(); // what another launch asks for
    EXPECT_FALSE(mWindow->isMinimized());
    EXPECT_TRUE(mWindow->isVisible());
}

TEST_F(AppDelegateTest, DuplicatesAreAskedAboutOnTheWindow)
{
    auto& quotes = CQuotesRepository::getInstance().mQuotes;
    const std::size_t seeded = quotes.size();
    quotes.push_back(CQuoteRecord(quotes.front().mContent, std::string()));
    QBQuoteEditHelper::checkForDuplicateQuotesWithUndoManager(&mDelegate.undoManager());
    auto* question = mWindow->findChild<QMessageBox*>();
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(question->windowModality(), Qt::WindowModal);
    EXPECT_EQ(question->windowTitle(), QStringLiteral("Duplicates Detected"));
    for (QAbstractButton* button : question->buttons()) {
        if (question->buttonRole(button) == QMessageBox::YesRole)
            button->click();
    }
    EXPECT_EQ(quotes.size(), seeded);
}

// Another program rewrote the database behind the window: saving keeps their version
// as a copy, and the user learns where.
TEST_F(AppDelegateTest, SavingOverAnotherProgramsChangeTellsWhereTheirCopyIsKept)
{
    writeQuotesFile(mDbPath.toStdString(), {CQuoteRecord("theirs", "their-id")});
    action("saveAction")->trigger();
    const QStringList copies =
        QFileInfo(mDbPath).dir().entryList({QStringLiteral("quotes.db.conflict-*")}, QDir::Files);
    ASSERT_EQ(copies.size(), 1);
    const QBUserMessage& message = QBUserMessages::shared().lastMessage();
    EXPECT_EQ(message.topic, QStringLiteral("quotes-conflict"));
    EXPECT_EQ(message.kind, QBUserMessage::Kind::Warning);
    EXPECT_TRUE(message.text.contains(QFileInfo(mDbPath).dir().filePath(copies.first())))
        << message.text.toStdString();
}

TEST_F(AppDelegateTest, ClosingTheWindowOrQuitEndsTheProgramWithoutSaving)
{
    // A change nobody was told about: only an explicit save would write it.
    CQuotesRepository::getInstance().mQuotes.clear();
    const QByteArray before = readFileBytes(mDbPath);
    mDelegate.showAboutWindow(); // does not keep the program alive
    EXPECT_TRUE(quitsAfter([this] { mWindow->close(); }));
    EXPECT_TRUE(quitsAfter([this] { action("quitAction")->trigger(); }));
    EXPECT_EQ(readFileBytes(mDbPath), before);
}

TEST(AppIconTest, TheBundleIconComesFromTheSvgOrEveryPngSize)
{
    const QString hicolor = QStringLiteral(QB_BUILD_SHARE_DIR "/../icons/hicolor");
    const QList<QSize> pngSizes = applicationIconFromFolder(hicolor, false).availableSizes();
    for (int size : {16, 32, 48, 64, 128, 256}) { // without Qt's SVG plug-in
        EXPECT_TRUE(pngSizes.contains(QSize(size, size))) << size;
    }
    const QIcon svg = applicationIconFromFolder(hicolor, true);
    EXPECT_TRUE(svg.availableSizes().isEmpty()); // drawn at any size, not a set of PNGs
    EXPECT_EQ(svg.pixmap(512, 512).size(), QSize(512, 512));
    EXPECT_TRUE(applicationIconFromFolder(QStringLiteral("/nonexistent"), false).isNull());

    QBBundle::setMainBundleResourcePath(QB_BUILD_SHARE_DIR);
    EXPECT_FALSE(applicationIcon().isNull());
    QBBundle::setMainBundleResourcePath(QBBundle::defaultResourcePath());
}

} // namespace
