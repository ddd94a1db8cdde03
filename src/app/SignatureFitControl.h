#pragma once

#include "signature/SignatureComposer.h"
#include "util/NotificationCenter.h"

#include <QObject>

#include <functional>

class QCheckBox;
class QBQuotesListModel;
class QBUserDefaults;

// Tells the quotes list which quotes are longer than the signature's line limit (the
// row delegate greys them; the tooltip says why) and offers a check box that shows
// only those; both follow the signature settings as they change.
class QBSignatureFitControl : public QObject
{
    Q_OBJECT
public:
    // |rearrange| runs a change of the list's rows so that the selection survives it.
    QBSignatureFitControl(QBUserDefaults& defaults, QBQuotesListModel* model,
                          std::function<void(const std::function<void()>&)> rearrange,
                          QObject* parent = nullptr);
    ~QBSignatureFitControl() override;

    // The "only quotes too long" check box, to be placed by the window; hidden while
    // there is no line limit.
    QCheckBox* onlyTooLongCheckBox() const { return mCheckBox; }

private:
    void followSettings();

    QBUserDefaults& mDefaults;
    QBQuotesListModel* mModel;
    QCheckBox* mCheckBox;
    std::function<void(const std::function<void()>&)> mRearrange;
    QBSignatureSettings mApplied;
    bool mHasApplied = false;
    QBNotificationToken mDefaultsObserver;
};
