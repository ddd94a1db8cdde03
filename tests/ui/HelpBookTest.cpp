#include "ui/HelpBook.h"
#include "core/Bundle.h"

#include "TestHome.h"
#include "UrlRecorder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString kShare = QStringLiteral(QB_BUILD_SHARE_DIR);

QUrl page(const QString& name, const QString& anchor = {})
{
    QUrl url = QUrl::fromLocalFile(kShare + u"/help/"_s + name);
    if (!anchor.isEmpty())
        url.setFragment(anchor);
    return url;
}

class HelpBookTest : public ::testing::Test
{
protected:
    HelpBookTest() { QBBundle::setMainBundleResourcePath(kShare.toStdString()); }
    ~HelpBookTest() override { QBHelpBook::setBundleHelpBookName(u"help"_s); }

    QBUrlRecorder browser;
};

TEST_F(HelpBookTest, AnchorsOnlyOnTheIndexOpenTheIndex)
{
    for (const QString& anchor : {QString(), u"QB_SIGNATURE"_s, u"QB_BATCH"_s}) { // whole ids
        browser.opened.clear();
        EXPECT_TRUE(QBHelpBook::openHelpAnchor(anchor));
        EXPECT_EQ(browser.opened, QList<QUrl>{page(u"index.html"_s, anchor)})
            << anchor.toStdString();
    }
}

TEST_F(HelpBookTest, NoHelpWithoutTheBundleKeyOrTheBook)
{
    QBTestHome home;
    ASSERT_TRUE(writeFileBytes(home.filePath(u"share/other/index.html"_s), "<html></html>"));
    ASSERT_TRUE(writeFileBytes(home.filePath(u"share/noindex/import.html"_s), "<html></html>"));
    struct Case
    {
        const char* name;
        std::optional<QString> bookName;
        QString resources;
    };
    const Case cases[] = {
        {"bundle without the key", std::nullopt, kShare},
        {"named folder missing", u"manual"_s, kShare},
        {"folder without an index", u"noindex"_s, home.filePath(u"share"_s)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        QBHelpBook::setBundleHelpBookName(c.bookName);
        QBBundle::setMainBundleResourcePath(c.resources.toStdString());
        EXPECT_FALSE(QBHelpBook::openHelpAnchor(u"QB_BATCH_IMPORT"_s));
        EXPECT_TRUE(QBHelpBook::helpURL().isEmpty());
    }
    EXPECT_TRUE(browser.opened.isEmpty());

    // Any folder the bundle names is a book once it has an index.
    QBHelpBook::setBundleHelpBookName(u"other"_s);
    EXPECT_TRUE(QBHelpBook::openHelpAnchor());
    EXPECT_EQ(browser.opened,
              QList<QUrl>{QUrl::fromLocalFile(home.filePath(u"share/other/index.html"_s))});
}

} // namespace
