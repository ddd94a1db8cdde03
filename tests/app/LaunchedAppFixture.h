#pragma once

#include "app/AppDelegate.h"
#include "app/QuotesWindowController.h"
#include "core/Bundle.h"
#include "i18n/Translations.h"
#include "logging/Log.h"
#include "util/UserDefaults.h"

#include "TestHome.h"

#include <QTest>

#include <gtest/gtest.h>

// The application launched in-process as main() does, in a temporary home, from the build tree.
class LaunchedAppFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QBBundle::setMainBundleResourcePath(QB_BUILD_SHARE_DIR);
        QBUserDefaults::resetStandardUserDefaults();
        installTranslations();
        mDelegate.applicationDidFinishLaunching();
        mWindow = mDelegate.quotesWindowController();
        ASSERT_NE(mWindow, nullptr);
    }
    void TearDown() override
    {
        qblog::removeLogFileSink();
        QBUserDefaults::resetStandardUserDefaults();
        QBBundle::setMainBundleResourcePath(QBBundle::defaultResourcePath());
    }

    template <typename T> T* child(const char* name) const
    {
        return mWindow->findChild<T*>(QString::fromLatin1(name));
    }

    QBTestHome mHome;
    QBAppDelegate mDelegate;
    QBQuotesWindowController* mWindow = nullptr;
};

// The same with the window active, as after a click on it: the tests drive it with keys.
class ActiveWindowFixture : public LaunchedAppFixture
{
protected:
    void SetUp() override
    {
        LaunchedAppFixture::SetUp();
        if (HasFatalFailure())
            return;
        mWindow->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(mWindow));
    }
};
