#pragma once

#include <QString>

// Values a deployment chooses when it builds the program (CMake cache variables).
namespace qbtelemetrybuild {

// Base address of the ingestion service; empty when this build sends no usage signals.
QString ingestionEndpoint();
// Identifier the ingestion service issued for this deployment.
QString applicationID();
// Version of the program, which is also the version of its analytics client.
QString clientVersion();

} // namespace qbtelemetrybuild
