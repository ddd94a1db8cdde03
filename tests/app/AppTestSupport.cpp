#include "AppTestSupport.h"

#include <sstream>

std::vector<std::string> splitLines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

int findLine(const std::vector<std::string>& lines, const std::string& fragment, int from)
{
    for (int i = from; i < static_cast<int>(lines.size()); ++i) {
        if (lines[static_cast<size_t>(i)].find(fragment) != std::string::npos) {
            return i;
        }
    }
    return -1;
}
