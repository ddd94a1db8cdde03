#include "app/Translations.h"

#include "core/Bundle.h"
#include "logging/ULog.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

void installTranslations()
{
    static QTranslator translator;
    if (!translator.isEmpty()) {
        return;
    }
    const QString folder =
        QString::fromStdString((QBBundle::mainBundle().resourcePath() / "translations").string());
    if (!translator.load(QLocale(), QStringLiteral("quillbox2"), QStringLiteral("_"), folder) &&
        !translator.load(QStringLiteral("quillbox2_en"), folder)) {
        logWarningMessage(QStringLiteral("No translations found in '%1'").arg(folder));
        return;
    }
    QCoreApplication::installTranslator(&translator);
}
