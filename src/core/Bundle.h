#pragma once

#include <boost/filesystem/path.hpp>

#include <optional>
#include <string>

// The application's bundle on Linux: the install tree, whose resources live in
// share/quillbox2 beside the bin folder of the executable. The build tree has the same
// layout, so a program run from build/bin finds its resources too.
class QBBundle
{
public:
    explicit QBBundle(boost::filesystem::path resourcePath);

    // The bundle of the running executable (../share/quillbox2 next to its folder).
    static QBBundle& mainBundle();
    // Points the main bundle at another resource folder (tests, relocated installs).
    static void setMainBundleResourcePath(const boost::filesystem::path& resourcePath);
    // Resource folder derived from the executable's location via /proc/self/exe.
    static boost::filesystem::path defaultResourcePath();

    const boost::filesystem::path& resourcePath() const { return mResourcePath; }
    // Path of "<name>.<type>" in the resource folder, or nothing when no such file exists.
    std::optional<std::string> pathForResource(const std::string& name,
                                               const std::string& type) const;
    // The bundle's name without extension, which names per-application folders.
    static std::string bundleName();

private:
    boost::filesystem::path mResourcePath;
};
