#include "app/Translations.h"

#include "core/Bundle.h"
#include "logging/ULog.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace {
QString translationsFolder()
{
    return QString::fromStdString(
        (QBBundle::mainBundle().resourcePath() / "translations").string());
}
} // namespace

bool loadTranslation(QTranslator& translator)
{
    const QString folder = translationsFolder();
    return translator.load(QLocale(), QStringLiteral("quillbox2"), QStringLiteral("_"), folder) ||
           translator.load(QStringLiteral("quillbox2_en"), folder);
}

void installTranslations()
{
    static QTranslator translator;
    if (!translator.isEmpty()) {
        return;
    }
    if (!loadTranslation(translator)) {
        logWarningMessage(
            QStringLiteral("No translations found in '%1'").arg(translationsFolder()));
        return;
    }
    QCoreApplication::installTranslator(&translator);
}
