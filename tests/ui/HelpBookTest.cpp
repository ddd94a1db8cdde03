#include "ui/HelpBook.h"
#include "core/Bundle.h"

#include "TestHome.h"
#include "UrlRecorder.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

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

TEST_F(HelpBookTest, AnchorsOpenThePageHoldingThemInTheBrowser)
{
    EXPECT_EQ(QBHelpBook::bundleHelpBookName(), u"help"_s);
    struct Case
    {
        QString anchor;
        QUrl opened;
    };
    const Case cases[] = {
        {{}, page(u"index.html"_s)},
        {u"QB_BATCH_IMPORT"_s, page(u"import.html"_s, u"QB_BATCH_IMPORT"_s)},
        {u"QB_SEPARATORS"_s, page(u"import.html"_s, u"QB_SEPARATORS"_s)},
        {u"QB_SIGNATURE"_s, page(u"index.html"_s, u"QB_SIGNATURE"_s)},
        {u"NO_SUCH_ANCHOR"_s, page(u"index.html"_s, u"NO_SUCH_ANCHOR"_s)},
        {u"QB_BATCH"_s, page(u"index.html"_s, u"QB_BATCH"_s)}, // whole ids only
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.anchor.toStdString());
        browser.opened.clear();
        EXPECT_TRUE(QBHelpBook::openHelpAnchor(c.anchor));
        EXPECT_EQ(browser.opened, QList<QUrl>{c.opened});
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
        {"empty name", u""_s, kShare},
        {"named folder missing", u"manual"_s, kShare},
        {"resources without the book", u"help"_s, home.filePath(u"share"_s)},
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

TEST_F(HelpBookTest, EveryLinkOfTheBookLeadsToAFileAndItsIds)
{
    const QDir book(kShare + u"/help"_s);
    const QStringList pages = book.entryList({u"*.html"_s}, QDir::Files);
    EXPECT_EQ(pages, QStringList({u"import.html"_s, u"index.html"_s}));
    const QRegularExpression link(uR"((?:href|src)="([^"#:]*)(?:#([^"]*))?")"_s);
    int links = 0;
    for (const QString& name : pages) {
        QFile file(book.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString html = QString::fromUtf8(file.readAll());
        for (const QRegularExpressionMatch& match : link.globalMatch(html)) {
            const QString target = match.captured(1).isEmpty() ? name : match.captured(1);
            SCOPED_TRACE(QString(name + u" -> "_s + match.captured(0)).toStdString());
            QFile linked(book.filePath(target));
            ++links;
            ASSERT_TRUE(linked.open(QIODevice::ReadOnly));
            if (!match.captured(2).isEmpty()) {
                EXPECT_TRUE(
                    linked.readAll().contains(u"id=\"%1\""_s.arg(match.captured(2)).toUtf8()));
            }
        }
    }
    EXPECT_GE(links, 3); // both style sheets and the index's link to the import page
}

} // namespace
