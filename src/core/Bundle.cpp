#include "core/Bundle.h"

#include "core/AppIdentity.h"

#include <boost/filesystem/operations.hpp>

#include <memory>
#include <mutex>

namespace fs = boost::filesystem;

namespace {
std::mutex gMainBundleMutex;
std::unique_ptr<QBBundle> gMainBundle; // guarded by gMainBundleMutex
} // namespace

QBBundle::QBBundle(fs::path resourcePath) : mResourcePath(std::move(resourcePath)) {}

QBBundle& QBBundle::mainBundle()
{
    std::lock_guard lock(gMainBundleMutex);
    if (!gMainBundle) {
        gMainBundle = std::make_unique<QBBundle>(defaultResourcePath());
    }
    return *gMainBundle;
}

void QBBundle::setMainBundleResourcePath(const fs::path& resourcePath)
{
    std::lock_guard lock(gMainBundleMutex);
    gMainBundle = std::make_unique<QBBundle>(resourcePath);
}

fs::path QBBundle::defaultResourcePath()
{
    boost::system::error_code error;
    const fs::path executable = fs::read_symlink("/proc/self/exe", error);
    if (error) {
        return {};
    }
    return executable.parent_path().parent_path() / "share" / qbidentity::kProcessName;
}

std::optional<std::string> QBBundle::pathForResource(const std::string& name,
                                                     const std::string& type) const
{
    if (mResourcePath.empty()) {
        return std::nullopt;
    }
    const fs::path candidate = mResourcePath / (type.empty() ? name : name + "." + type);
    boost::system::error_code error;
    if (!fs::is_regular_file(candidate, error)) {
        return std::nullopt;
    }
    return candidate.string();
}

std::string QBBundle::bundleName()
{
    return qbidentity::kBundleName;
}
