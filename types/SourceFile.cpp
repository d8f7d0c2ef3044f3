#include "types/SourceFile.h"

#include <cerrno>
#include <fstream>

namespace scenariomatch
{

bool writeSourceFile(const std::string& directory, const SourceFile& file)
{
    errno = 0;
    std::ofstream stream(directory + "/" + file.name, std::ios::binary | std::ios::trunc);
    stream << file.text;
    stream.close();
    return stream.good();
}

bool writeSourceFiles(const std::string& directory, const std::vector<SourceFile>& files)
{
    bool isWritten = true;
    for (const SourceFile& file : files) {
        isWritten = writeSourceFile(directory, file) && isWritten;
    }
    return isWritten;
}

} // namespace scenariomatch
