#include "ui/HelpBook.h"

#include "core/AppIdentity.h"
#include "core/Bundle.h"
#include "logging/ULog.h"
#include "ui/HelpWindow.h"
#include "util/UserMessages.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

const QString kIndexPage = QStringLiteral("index.html");

std::optional<QString>& helpBookName()
{
    static std::optional<QString> name = QStringLiteral("help");
    return name;
}

// The book's folder, or an empty string when the bundle names none or it is missing.
QString helpBookFolder()
{
    const std::optional<QString>& name = helpBookName();
    if (!name || name->isEmpty())
        return {};
    const QString resources =
        QString::fromStdString(QBBundle::mainBundle().resourcePath().string());
    if (resources.isEmpty())
        return {};
    const QString folder = QDir(resources).filePath(*name);
    return QFileInfo::exists(QDir(folder).filePath(kIndexPage)) ? folder : QString();
}

// The book has a handful of small pages: reading them is quicker than keeping an index.
QString pageHoldingAnchor(const QDir& book, const QString& anchor)
{
    const QByteArray idAttribute = QStringLiteral("id=\"%1\"").arg(anchor).toUtf8();
    const QStringList pages = book.entryList({QStringLiteral("*.html")}, QDir::Files, QDir::Name);
    for (const QString& page : pages) {
        QFile file(book.filePath(page));
        if (file.open(QIODevice::ReadOnly) && file.readAll().contains(idAttribute))
            return page;
    }
    logWarningMessage(QStringLiteral("Help anchor <%1> not found; opening the index").arg(anchor));
    return kIndexPage;
}

} // namespace

std::optional<QString> QBHelpBook::bundleHelpBookName()
{
    return helpBookName();
}

void QBHelpBook::setBundleHelpBookName(std::optional<QString> name)
{
    helpBookName() = std::move(name);
}

QUrl QBHelpBook::helpURL(const QString& anchor)
{
    const QString folder = helpBookFolder();
    if (folder.isEmpty())
        return {};
    const QDir book(folder);
    QUrl url = QUrl::fromLocalFile(
        book.filePath(anchor.isEmpty() ? kIndexPage : pageHoldingAnchor(book, anchor)));
    if (!anchor.isEmpty())
        url.setFragment(anchor);
    return url;
}

bool QBHelpBook::openHelpAnchor(const QString& anchor)
{
    const QUrl url = helpURL(anchor);
    if (url.isEmpty()) {
        logWarningMessage(QStringLiteral("No help book to open at <%1>").arg(anchor));
        return false;
    }
    if (QDesktopServices::openUrl(url))
        return true;
    logWarningMessage(
        QStringLiteral("No browser could open the help at <%1>; showing it in the help window")
            .arg(url.toString()));
    QBHelpWindow::showPage(url);
    QBUserMessages::shared().show(
        {QBUserMessage::Kind::Information,
         //% "No web browser could open the help, so it is shown in a window of %1."
         qtTrId("HelpShownInAppMessage").arg(QString::fromUtf8(qbidentity::kDisplayName)),
         {},
         {},
         {},
         {},
         QStringLiteral("help")});
    return true;
}
