#include "helper/QuoteCycle.h"

#include "logging/ULog.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QRandomGenerator>
#include <QSaveFile>
#include <QSet>

#include <algorithm>
#include <random>

namespace {

const QString kRemainingKey = QStringLiteral("remaining");
const QString kShownKey = QStringLiteral("shown");
constexpr int kLockWaitMilliseconds = 2000;

QStringList toStringList(const QJsonArray& array)
{
    QStringList list;
    list.reserve(array.size());
    for (const QJsonValue& value : array) {
        list.append(value.toString());
    }
    return list;
}

} // namespace

QBQuoteCycle::QBQuoteCycle(const QString& statePath) : mStatePath(statePath) {}

QString QBQuoteCycle::advance(State& state, const QStringList& uids)
{
    const QSet<QString> current(uids.cbegin(), uids.cend());
    const auto isGone = [&current](const QString& uid) { return !current.contains(uid); };
    state.remaining.removeIf(isGone);
    state.shown.removeIf(isGone);

    QSet<QString> known(state.remaining.cbegin(), state.remaining.cend());
    known.unite(QSet<QString>(state.shown.cbegin(), state.shown.cend()));
    QRandomGenerator& random = *QRandomGenerator::global();
    for (const QString& uid : uids) {
        if (!known.contains(uid)) {
            state.remaining.insert(random.bounded(state.remaining.size() + 1), uid);
            known.insert(uid);
        }
    }

    if (state.remaining.isEmpty()) {
        if (uids.isEmpty()) {
            return QString();
        }
        const QString last = state.shown.value(state.shown.size() - 1);
        state.remaining = QStringList(known.cbegin(), known.cend());
        std::shuffle(state.remaining.begin(), state.remaining.end(), random);
        // The new round does not open with the quote that closed the last one.
        if (state.remaining.size() > 1 && state.remaining.first() == last) {
            state.remaining.swapItemsAt(0, 1 + random.bounded(state.remaining.size() - 1));
        }
        state.shown.clear();
    }
    const QString uid = state.remaining.takeFirst();
    state.shown.append(uid);
    return uid;
}

QString QBQuoteCycle::next(const QStringList& uids)
{
    // Without the lock the step still happens; at worst a quote comes twice in a round.
    QLockFile lock(mStatePath + QStringLiteral(".lock"));
    lock.tryLock(kLockWaitMilliseconds);
    State state = load();
    const QString uid = advance(state, uids);
    save(state);
    return uid;
}

QBQuoteCycle::State QBQuoteCycle::load() const
{
    QFile file(mStatePath);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    return {toStringList(object.value(kRemainingKey).toArray()),
            toStringList(object.value(kShownKey).toArray())};
}

void QBQuoteCycle::save(const State& state) const
{
    const QJsonObject object{{kRemainingKey, QJsonArray::fromStringList(state.remaining)},
                             {kShownKey, QJsonArray::fromStringList(state.shown)}};
    QSaveFile file(mStatePath);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(QJsonDocument(object).toJson(QJsonDocument::Compact)) < 0 || !file.commit()) {
        logWarningMessage(QStringLiteral("Cannot save the order of quotes to '%1': %2")
                              .arg(mStatePath, file.errorString()));
        return;
    }
    // Which quotes the user has seen is the user's business only.
    QFile::setPermissions(mStatePath, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}
