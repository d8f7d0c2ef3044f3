#include "app/CppNames.h"

#include <algorithm>
#include <set>

namespace scenariomatch
{

namespace
{

bool isLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isIdentifier(std::string_view name)
{
    const auto fits = [](char character) {
        return isLetter(character) || (character >= '0' && character <= '9') || character == '_';
    };
    return !name.empty() && (isLetter(name.front()) || name.front() == '_') &&
           std::all_of(name.begin(), name.end(), fits);
}

bool isKeyword(std::string_view name)
{
    static const std::set<std::string_view> keywords{
        "alignas",       "alignof",     "and",
        "and_eq",        "asm",         "auto",
        "bitand",        "bitor",       "bool",
        "break",         "case",        "catch",
        "char",          "char16_t",    "char32_t",
        "char8_t",       "class",       "co_await",
        "co_return",     "co_yield",    "compl",
        "concept",       "const",       "const_cast",
        "consteval",     "constexpr",   "constinit",
        "continue",      "decltype",    "default",
        "delete",        "do",          "double",
        "dynamic_cast",  "else",        "enum",
        "explicit",      "export",      "extern",
        "false",         "float",       "for",
        "friend",        "goto",        "if",
        "inline",        "int",         "long",
        "mutable",       "namespace",   "new",
        "noexcept",      "not",         "not_eq",
        "nullptr",       "operator",    "or",
        "or_eq",         "private",     "protected",
        "public",        "register",    "reinterpret_cast",
        "requires",      "return",      "short",
        "signed",        "sizeof",      "static",
        "static_assert", "static_cast", "struct",
        "switch",        "template",    "this",
        "thread_local",  "throw",       "true",
        "try",           "typedef",     "typeid",
        "typename",      "union",       "unsigned",
        "using",         "virtual",     "void",
        "volatile",      "wchar_t",     "while",
        "xor",           "xor_eq"};
    return keywords.contains(name);
}

} // namespace

std::string cppNameFault(std::string_view name)
{
    if (!isIdentifier(name)) {
        return "is no C++ identifier: expected letters, digits and underscores, beginning with a "
               "letter";
    }
    if (isKeyword(name)) {
        return "is a C++ keyword: expected another name";
    }
    if (name.front() == '_' || name.find("__") != std::string_view::npos) {
        return "is reserved in C++: expected no underscore at the beginning and no two in a row";
    }
    return "";
}

} // namespace scenariomatch
