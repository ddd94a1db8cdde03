#include "signature/SettingsKeys.h"

#include "util/UserDefaults.h"

const std::vector<QBSettingsKey>& settingsKeys()
{
    static const std::vector<QBSettingsKey> keys = {
        {QBDefaultsRandomizeInterval, QMetaType::LongLong,
         QVariant(kQBDefaultRandomizeIntervalSeconds), QBSettingsStore::StandardMirroredToSuite},
        {QBDefaultsSignatureOutputPath, QMetaType::QString, QVariant(),
         QBSettingsStore::StandardMirroredToSuite},
        {QBDefaultsEditorFontName, QMetaType::QString, QVariant(),
         QBSettingsStore::StandardMirroredToSuite},
        {QBDefaultsClearTrailingEmptyLines, QMetaType::Bool, QVariant(),
         QBSettingsStore::StandardMirroredToSuite},
        {QBDefaultsWarnForDuplicates, QMetaType::Bool, QVariant(),
         QBSettingsStore::StandardMirroredToSuite},
        {QBDefaultsAutoRandomize, QMetaType::Bool, QVariant(),
         QBSettingsStore::StandardMirroredToSuite},
        {QBDefaultsShareUsageStatistics, QMetaType::Bool, QVariant(),
         QBSettingsStore::StandardMirroredToSuite},
        {QBDefaultsSignatureTemplate, QMetaType::QString, QVariant(),
         QBSettingsStore::StandardMirroredToSuite},
        {QBDefaultsSignatureWrapColumn, QMetaType::LongLong, QVariant(),
         QBSettingsStore::StandardMirroredToSuite},
        {QBDefaultsSignatureMaxLines, QMetaType::LongLong, QVariant(),
         QBSettingsStore::StandardMirroredToSuite},
        {QBPrivateDefaultsOutputFileSSB, QMetaType::QByteArray, QVariant(),
         QBSettingsStore::SuiteOnly},
    };
    return keys;
}

QVariantMap registeredDefaultSettings()
{
    QVariantMap defaults;
    for (const QBSettingsKey& key : settingsKeys()) {
        if (key.defaultValue.isValid()) {
            defaults.insert(key.name, key.defaultValue);
        }
    }
    return defaults;
}

bool sharesUsageStatistics(const QVariant& storedValue)
{
    return !storedValue.isValid() || QBUserDefaults::boolFromValue(storedValue);
}
