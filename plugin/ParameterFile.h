#pragma once

#include <memory>
#include <string>

namespace scenariomatch
{

// A parameter file in OpenCV's persistence format (XML, YAML or JSON); keys are looked up at its
// top level.
//
// The library's own console messages stay silent while a file is opened and read.
//
// Example:
//     ParameterFile file("lobby.yml");
//     if (file.isOpen()) { size = file.whole("historySize"); }
class ParameterFile
{
public:
    // A file that cannot be opened or parsed is not open; nothing is thrown.
    explicit ParameterFile(const std::string& path);
    ParameterFile(const ParameterFile&) = delete;
    ParameterFile(ParameterFile&&) = delete;
    ParameterFile& operator=(const ParameterFile&) = delete;
    ParameterFile& operator=(ParameterFile&&) = delete;
    ~ParameterFile();

    bool isOpen() const;

    // Why the file is not open; empty where there is none.
    const std::string& fault() const;

    // Empty when the key is absent or holds no text.
    std::string text(const std::string& key) const;
    // A whole number as it is, a real rounded to nearest, 2147483647 for anything else, 0 when the
    // key is absent.
    int whole(const std::string& key) const;
    // A number as it is, 1e300 for anything else, 0 when the key is absent.
    double real(const std::string& key) const;

private:
    struct Storage;

    std::unique_ptr<Storage> m_storage;
};

} // namespace scenariomatch
