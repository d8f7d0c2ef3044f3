#pragma once

#include <string>

namespace scenariomatch
{

// A file of its own in the folder for temporary files, removed when the object dies.
class TemporaryFile
{
public:
    TemporaryFile(const std::string& prefix, const std::string& suffix, const std::string& text);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile(TemporaryFile&&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    TemporaryFile& operator=(TemporaryFile&&) = delete;
    ~TemporaryFile();

    // False when the file could not be made or the text not be written.
    bool isGood() const { return m_isGood; }

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
    bool m_isThere = false;
    bool m_isGood = false;
};

} // namespace scenariomatch
