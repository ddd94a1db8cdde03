#pragma once

#include <string>
#include <vector>

// Lines of |text| (split at line breaks, without them).
std::vector<std::string> splitLines(const std::string& text);
// Index of the first line at or after |from| that contains |fragment|, or -1.
int findLine(const std::vector<std::string>& lines, const std::string& fragment, int from = 0);
