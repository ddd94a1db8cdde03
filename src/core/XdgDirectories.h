#pragma once

#include <boost/filesystem/path.hpp>

#include <optional>
#include <string>

// The XDG base directories, read from the environment each time so that a changed
// $XDG_* (or $HOME) takes effect at once.
enum class QBXdgBase
{
    Data,
    Config,
    State,
    Cache
};

struct QBXdgLookup
{
    std::optional<boost::filesystem::path> path; // set on success
    std::string error;                           // why there is no path otherwise
};

// $XDG_<BASE>_HOME when it is absolute, else its default under $HOME (~/.local/share,
// ~/.config, ~/.local/state, ~/.cache). Fails only when $HOME is unusable.
QBXdgLookup xdgBaseDirectory(QBXdgBase base);
