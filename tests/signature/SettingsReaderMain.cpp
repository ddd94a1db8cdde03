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
        out << key.name << '=';
        if (!value.isValid()) {
            out << "<absent>";
        } else if (value.typeId() == QMetaType::QByteArray) {
            out << value.toByteArray().toHex();
        } else if (key.type == QMetaType::LongLong) {
            out << shared.integerForKey(key.name);
        } else if (key.type == QMetaType::Bool) {
            out << (shared.suiteUserDefaults().boolForKey(key.name) ? "true" : "false");
        } else {
            out << shared.stringForKey(key.name);
        }
        out << '\n';
    }
}
