#include "bench/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace scenariomatch
{

TemporaryFolder::TemporaryFolder()
{
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    std::string name = (folder / "scenariomatch-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error(name + ": the folder cannot be made");
    }
    m_path = name;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string TemporaryFolder::write(const std::string& name, const std::string& text) const
{
    std::ofstream file(m_path / name, std::ios::binary);
    file << text;
    if (!file.flush()) {
        throw std::runtime_error(path(name) + " cannot be written");
    }
    return path(name);
}

} // namespace scenariomatch
