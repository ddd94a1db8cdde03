#pragma once

#include <QString>
#include <QStringList>

// Names the ingestion service uses itself: a signal or parameter that takes one of them
// is still sent, but its sender is warned.
namespace qbreservednames {

// The 25 reserved names, as the service spells them.
const QStringList& reservedNames();

// The warning for a signal |name|, or an empty text when the name is free (case ignored).
QString warningForSignalName(const QString& name);
// The warning for a parameter |key|, or an empty text when the key is free (case ignored).
QString warningForParameterKey(const QString& key);

} // namespace qbreservednames
