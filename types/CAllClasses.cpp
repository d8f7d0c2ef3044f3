#include "types/CAllClasses.h"

#include "types/AccessorSources.h"
#include "types/ConversionSources.h"
#include "types/TextFile.h"
#include "types/TypeSources.h"

#include <sstream>

namespace
{

// Counts the lines it reads.
bool readLine(std::istream& lines, std::string& line, int& number)
{
    if (!std::getline(lines, line)) {
        return false;
    }
    ++number;
    if (line.ends_with('\r')) {
        line.pop_back();
    }
    return true;
}

} // namespace

CAllClasses::~CAllClasses() = default;

void CAllClasses::read(const std::string& fileName)
{
    if (const auto text = scenariomatch::readTextFile(fileName)) {
        readText(*text);
    }
}

void CAllClasses::readText(const std::string& text)
{
    std::istringstream lines(text);
    std::string line;
    int number = 0;
    CClass type;
    while (readLine(lines, line, number)) {
        if (line.find("class") == std::string::npos) {
            continue;
        }
        type.m_line = number;
        std::string block = line;
        while (line.find('}') == std::string::npos && readLine(lines, line, number)) {
            block += line;
        }
        type.read(block);
        m_classes.push_back(type);
        type.clear();
    }
}

bool CAllClasses::write(const std::string& directory) const
{
    bool isWritten =
        scenariomatch::writeSourceFile(directory, scenariomatch::objectHeader(m_classes));
    for (const CClass& type : m_classes) {
        isWritten = type.write(directory) && isWritten;
    }
    return isWritten;
}

bool CAllClasses::writeAccessor(const std::string& directory) const
{
    return scenariomatch::writeSourceFiles(directory, scenariomatch::accessorSources(m_classes));
}

bool CAllClasses::writeConversionClass(const std::string& directory) const
{
    return scenariomatch::writeSourceFiles(directory, scenariomatch::conversionSources(m_classes));
}
