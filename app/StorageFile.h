#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

// A value at the top level of a persistence file.
struct StorageEntry
{
    std::string key;
    std::string text;
    // Written as a number, not as a text.
    bool isNumber = false;
    // False for lists, maps and matrices, which have no text.
    bool isScalar = true;
    std::size_t line = 0;
};

// A matrix at the top level of a persistence file, row by row.
struct StorageMatrix
{
    std::string key;
    int rows = 0;
    int columns = 0;
    std::vector<double> values;
};

// What the program reads of OpenCV's persistence files: plain values and matrices at the top level.
struct StorageFile
{
    // Bytes of a file.
    static constexpr std::size_t kLongest = std::size_t{1024} * 1024;

    std::vector<StorageEntry> entries;
    std::vector<StorageMatrix> matrices;

    // 0 for a key that is not there.
    std::size_t lineOf(const std::string& key) const;
};

// Reads a file in the YAML or XML form (told apart by the first character). Nothing, and
// "FILE:LINE:COLUMN: reason" in error, when it cannot be read.
std::optional<StorageFile> readStorageFile(const std::string& path, std::string& error);

} // namespace scenariomatch
