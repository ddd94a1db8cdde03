// Prints every setting of the shared suite as "key=value", one a line, as a process
// other than the one that wrote them sees it. Byte arrays are printed as hex.
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QBSharedUserDefaults& shared = QBSharedUserDefaults::sharedInstance();
    QTextStream out(stdout);
    for (const QBSettingsKey& key : settingsKeys()) {
        const QVariant value = shared.objectForKey(key.name);
        QString text;
        if (!value.isValid()) {
            text = QStringLiteral("<absent>");
        } else if (value.typeId() == QMetaType::QByteArray) {
            text = QString::fromLatin1(value.toByteArray().toHex());
        } else if (key.type == QMetaType::LongLong) {
            text = QString::number(shared.integerForKey(key.name));
        } else if (key.type == QMetaType::Bool) {
            text = shared.suiteUserDefaults().boolForKey(key.name) ? QStringLiteral("true")
                                                                   : QStringLiteral("false");
        } else {
            text = shared.stringForKey(key.name);
        }
        out << key.name << '=' << text << '\n';
    }
    return 0;
}
