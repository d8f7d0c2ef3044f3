#include "app/TemporaryFile.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <unistd.h>

namespace scenariomatch
{

TemporaryFile::TemporaryFile(
    const std::string& prefix, const std::string& suffix, const std::string& text)
{
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    m_path = (folder / (prefix + "XXXXXX" + suffix)).string();
    const int descriptor = ::mkstemps(m_path.data(), static_cast<int>(suffix.size()));
    m_isThere = descriptor >= 0;
    if (!m_isThere) {
        return;
    }
    ::close(descriptor);
    std::ofstream file(m_path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    m_isGood = !file.fail();
}

TemporaryFile::~TemporaryFile()
{
    if (m_isThere) {
        std::error_code error;
        std::filesystem::remove(m_path, error);
    }
}

} // namespace scenariomatch
