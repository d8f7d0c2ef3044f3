#include "types/CClass.h"

#include "types/TypeSources.h"

#include <algorithm>
#include <string_view>

namespace
{

void skipBlanks(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
}

// What stands before the separator, or everything when there is none; text keeps what follows it.
std::string_view takeUntil(std::string_view& text, char separator)
{
    const std::string_view taken = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(taken.size() + 1, text.size()));
    return taken;
}

} // namespace

CClass::~CClass() = default;

void CClass::read(const std::string& text)
{
    std::string_view body = text;
    skipBlanks(body);
    takeUntil(body, ' ');

    std::string_view head = takeUntil(body, '{');
    head = head.substr(0, head.find(' '));
    const bool hasParent = head.find(':') != std::string_view::npos;
    m_name = takeUntil(head, ':');
    m_parent = hasParent ? head : "Agent";

    skipBlanks(body);
    takeUntil(body, ' ');
    skipBlanks(body);
    m_constant = takeUntil(body, ';') == "true";

    while (body != "}" && body.find(';') != std::string_view::npos) {
        skipBlanks(body);
        const std::string_view type = takeUntil(body, ' ');
        skipBlanks(body);
        const std::string_view name = takeUntil(body, ';');
        if (type != "}" && name != "}") {
            m_attributeTypes.emplace_back(type);
            m_attributeNames.emplace_back(name);
        }
    }
}

void CClass::clear()
{
    m_name.clear();
    m_parent.clear();
    m_attributeNames.clear();
    m_attributeTypes.clear();
    m_constant = false;
    m_line = 0;
}

bool CClass::write(const std::string& directory) const
{
    return scenariomatch::writeSourceFiles(directory, scenariomatch::typeSources(*this));
}
