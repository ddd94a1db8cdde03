#pragma once

class QBUserDefaults;
class QBSharedUserDefaults;

// Copies every "QBDefaults" key of the application's defaults (persistent and
// registered values alike) into the shared suite, one way; such keys that the
// application no longer has are removed from the suite. The settings controller runs
// a pass on every change of the application's defaults; a pass started while one is
// running does nothing, so changes caused by the pass itself cannot recurse.
class QBDefaultsMirror
{
public:
    QBDefaultsMirror(QBUserDefaults& standardDefaults, QBSharedUserDefaults& sharedDefaults);

    void mirrorToSharedDefaults();
    bool isMirroring() const { return mIsMirroring; }

private:
    QBUserDefaults& mStandardDefaults;
    QBSharedUserDefaults& mSharedDefaults;
    bool mIsMirroring = false;
};
