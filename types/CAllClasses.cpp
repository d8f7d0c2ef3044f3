#include "types/CAllClasses.h"

#include "types/TextFile.h"

#include <sstream>

namespace
{

bool readLine(std::istream& lines, std::string& line)
{
    if (!std::getline(lines, line)) {
        return false;
    }
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
    CClass type;
    while (readLine(lines, line)) {
        if (line.find("class") == std::string::npos) {
            continue;
        }
        std::string block = line;
        while (line.find('}') == std::string::npos && readLine(lines, line)) {
            block += line;
        }
        type.read(block);
        m_classes.push_back(type);
        type.clear();
    }
}
