#pragma once

#include <QMetaType>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <vector>

// The settings of the application. Keys that begin with "QBDefaults" live in the
// application's own defaults and are mirrored into the shared suite, where the helper
// process reads them; the bookmark key lives in the suite only and is never mirrored.

inline const QString QBDefaultsRandomizeInterval = QStringLiteral("QBDefaultsRandomizeInterval");
inline const QString QBDefaultsSignatureOutputPath =
    QStringLiteral("QBDefaultsSignatureOutputPath");
inline const QString QBDefaultsEditorFontName = QStringLiteral("QBDefaultsEditorFontName");
inline const QString QBDefaultsClearTrailingEmptyLines =
    QStringLiteral("QBDefaultsClearTrailingEmptyLines");
inline const QString QBDefaultsWarnForDuplicates = QStringLiteral("QBDefaultsWarnForDuplicates");
inline const QString QBDefaultsAutoRandomize = QStringLiteral("QBDefaultsAutoRandomize");
// Whether usage statistics may be sent: on until the user turns it off.
inline const QString QBDefaultsShareUsageStatistics =
    QStringLiteral("QBDefaultsShareUsageStatistics");
// The signature's text around the quote, with "{quote}" where the quote goes; missing
// means the quote alone.
inline const QString QBDefaultsSignatureTemplate = QStringLiteral("QBDefaultsSignatureTemplate");
// The column at which the quote's lines are wrapped; 0 or missing: not wrapped.
inline const QString QBDefaultsSignatureWrapColumn =
    QStringLiteral("QBDefaultsSignatureWrapColumn");
// The most lines a quote may take after wrapping; 0 or missing: no limit.
inline const QString QBDefaultsSignatureMaxLines = QStringLiteral("QBDefaultsSignatureMaxLines");
inline const QString QBPrivateDefaultsOutputFileSSB =
    QStringLiteral("QBPrivateDefaultsOutputFileSSB");

// Only keys with this prefix are copied into the suite.
inline const QString kQBMirroredKeyPrefix = QStringLiteral("QBDefaults");

// Seconds between two quotes picked by the helper, registered at launch.
inline constexpr qint64 kQBDefaultRandomizeIntervalSeconds = 120;

enum class QBSettingsStore
{
    StandardMirroredToSuite,
    SuiteOnly
};

struct QBSettingsKey
{
    QString name;
    QMetaType::Type type;
    QVariant defaultValue; // invalid: the reader's answer for a missing key
    QBSettingsStore store;
};

// Every key with its stored type, its default and where it lives.
const std::vector<QBSettingsKey>& settingsKeys();

// The user's choice from the value stored under QBDefaultsShareUsageStatistics; a
// missing value reads as on.
bool sharesUsageStatistics(const QVariant& storedValue);

// The registration domain set up at launch: the one key that has a registered default.
QVariantMap registeredDefaultSettings();
