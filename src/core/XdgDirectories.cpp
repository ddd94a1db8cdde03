#include "core/XdgDirectories.h"

#include <cstdlib>

namespace fs = boost::filesystem;

namespace {
struct BaseNames
{
    const char* variable;
    const char* defaultUnderHome;
};

BaseNames namesFor(QBXdgBase base)
{
    switch (base) {
    case QBXdgBase::Data:
        return {"XDG_DATA_HOME", ".local/share"};
    case QBXdgBase::Config:
        return {"XDG_CONFIG_HOME", ".config"};
    case QBXdgBase::State:
        return {"XDG_STATE_HOME", ".local/state"};
    case QBXdgBase::Cache:
        return {"XDG_CACHE_HOME", ".cache"};
    }
    return {"XDG_DATA_HOME", ".local/share"};
}
} // namespace

QBXdgLookup xdgBaseDirectory(QBXdgBase base)
{
    const BaseNames names = namesFor(base);
    // Relative values are invalid by the XDG rules and must be ignored.
    const char* value = std::getenv(names.variable);
    if (value && fs::path(value).is_absolute()) {
        return {fs::path(value), {}};
    }
    const char* home = std::getenv("HOME");
    if (!home || !fs::path(home).is_absolute()) {
        return {std::nullopt,
                std::string("neither $") + names.variable + " nor $HOME names an absolute folder"};
    }
    return {fs::path(home) / names.defaultUnderHome, {}};
}
