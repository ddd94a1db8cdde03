#include "i18n/Translations.h"

#include "core/Bundle.h"
#include "logging/ULog.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

namespace {
QString translationsFolder()
{
    return QString::fromStdString(
        (QBBundle::mainBundle().resourcePath() / "translations").string());
}
} // namespace

QBTranslations::QBTranslations()
{
    const QString folder = translationsFolder();
    if (!mProgram.load(QLocale(), QStringLiteral("quillbox2"), QStringLiteral("_"), folder) &&
        !mProgram.load(QStringLiteral("quillbox2_en"), folder)) {
        logWarningMessage(QStringLiteral("No translations found in '%1'").arg(folder));
        return;
    }
    // Qt ships no English table: its built-in texts are English already.
    if (!mProgram.language().startsWith(u"en")) {
        (void)mQt.load(QLocale(mProgram.language()), QStringLiteral("qtbase"), QStringLiteral("_"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    }
}

void QBTranslations::install()
{
    for (QTranslator* translator : {&mQt, &mProgram}) {
        if (!translator->isEmpty()) {
            QCoreApplication::installTranslator(translator);
        }
    }
}

void installTranslations()
{
    static QBTranslations translations;
    static const bool installed = (translations.install(), true);
    (void)installed;
}
