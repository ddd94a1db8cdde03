#pragma once

#include <QString>

namespace qbtelemetryhash {

// SHA-256 of the UTF-8 bytes of |text| followed directly by |salt|, as 64 lower-case
// hexadecimal digits.
QString sha256Hex(const QString& text, const QString& salt = QString());

// Name of the client's own settings suite for |appID|: the vendor prefix and the last
// 12 digits of the identifier's unsalted hash, so each application gets its own.
QString suiteNameForAppID(const QString& appID);

} // namespace qbtelemetryhash
