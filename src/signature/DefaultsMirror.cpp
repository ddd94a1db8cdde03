#include "signature/DefaultsMirror.h"

#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"
#include "util/UserDefaults.h"

QBDefaultsMirror::QBDefaultsMirror(QBUserDefaults& standardDefaults,
                                   QBSharedUserDefaults& sharedDefaults)
    : mStandardDefaults(standardDefaults), mSharedDefaults(sharedDefaults)
{}

void QBDefaultsMirror::mirrorToSharedDefaults()
{
    if (mIsMirroring) {
        return;
    }
    mIsMirroring = true;
    // Keys the suite still holds but the application's defaults no longer have were
    // removed there; walking them too turns that removal into a removal in the suite.
    QStringList keys = mStandardDefaults.dictionaryRepresentation().keys();
    const QStringList suiteKeys =
        mSharedDefaults.suiteUserDefaults().dictionaryRepresentation().keys();
    for (const QString& key : suiteKeys) {
        if (!keys.contains(key)) {
            keys.append(key);
        }
    }
    for (const QString& key : std::as_const(keys)) {
        if (key.startsWith(kQBMirroredKeyPrefix)) {
            mSharedDefaults.setObject(mStandardDefaults.objectForKey(key), key);
        }
    }
    mIsMirroring = false;
}
