#pragma once

#include <array>
#include <cstdint>
#include <string>

// The text form of a version-4 UUID made of four random 32-bit words: the words give
// the 16 bytes in little-endian order, then the version and variant bits are set.
std::string uuidTextFromWords(const std::array<std::uint32_t, 4>& words);
