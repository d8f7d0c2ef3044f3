#include "app/AccessorCheck.h"

#include "app/CppNames.h"
#include "app/HeaderNames.h"
#include "app/ObjectTypeCheck.h"
#include "types/TypeSources.h"

#include <algorithm>
#include <cstddef>
#include <fmt/format.h>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace scenariomatch
{

namespace
{

// What every typed class and every header that it includes use themselves.
bool isTakenByMembers(std::string_view name)
{
    static const std::set<std::string_view> taken{
        "CSBasicType",
        "Type",
        "getHAllValue",
        "getHValue",
        "getValue",
        "i_attribute",
        "i_pos",
        "i_value",
        "m_constant",
        "setHValue",
        "setValue",
        "std"};
    return taken.contains(name) || isValueClass(name);
}

// What the other generated files and the application's own headers use beside that.
bool isTakenByFiles(std::string_view name)
{
    static const std::set<std::string_view> taken{
        "Agent",
        "CSAccessor",
        "CSAccessor_H",
        "CSAgent",
        "CSAllTypes",
        "CSComponent",
        "CSObject",
        "CSObjectConversion",
        "CSObjectConversion_H",
        "CSObject_H",
        "Component",
        "YOUROBJECTTYPE",
        "get",
        "getAllObjectTypes",
        "getH",
        "getHAll",
        "i_csobject",
        "i_object",
        "io_agent",
        "l_obj",
        "l_res",
        "m_allAgents",
        "m_allConstAgents",
        "set",
        "setH"};
    return taken.contains(name);
}

// Where the generated header "time.h" is found first, <ctime> does not get its own.
bool isSystemHeader(std::string_view name)
{
    static const std::set<std::string_view> headers{
        "alloca",  "assert",   "complex", "ctype",  "endian",   "errno",   "features",  "fenv",
        "float",   "inttypes", "iso646",  "limits", "locale",   "malloc",  "math",      "memory",
        "pthread", "sched",    "setjmp",  "signal", "stdalign", "stdarg",  "stdatomic", "stdbool",
        "stddef",  "stdint",   "stdio",   "stdlib", "string",   "strings", "tgmath",    "threads",
        "time",    "uchar",    "unistd",  "wchar",  "wctype"};
    return headers.contains(name);
}

constexpr const char* kHeaderFault = "is used by the C library's headers: expected another name";

// Why a name cannot stand in generated code whatever it names; empty when it can.
std::string identifierFault(std::string_view name)
{
    std::string fault = cppNameFault(name);
    if (!fault.empty()) {
        return fault;
    }
    if (isTakenByMembers(name)) {
        return "is used by the generated code itself: expected another name";
    }
    if (isHeaderMacro(name)) {
        return kHeaderFault;
    }
    return "";
}

// Goes through the types of one file and collects what is wrong.
class AccessorCheck
{
public:
    AccessorCheck(const lint::Source& source, const std::vector<CClass>& types);

    void checkTypes();
    void checkAttributes();
    void checkParents();
    std::vector<PlacedFault> faults();

private:
    std::string typeFault(const CClass& type) const;
    std::string nameFault(const CClass& type, std::size_t place) const;
    void checkAttribute(std::size_t type, std::size_t place);
    bool isGuard(std::string_view name) const;

    // A type that lacks what was meant for it has no other faults that matter.
    bool isWhole(std::size_t type) const { return m_layouts[type].losses.empty(); }

    const std::vector<CClass>& m_types;
    std::vector<TypeLayout> m_layouts;
    // The line of the first type of each name.
    std::map<std::string_view, int> m_lines;
    std::vector<PlacedFault> m_faults;
};

AccessorCheck::AccessorCheck(const lint::Source& source, const std::vector<CClass>& types)
    : m_types(types)
{
    for (const CClass& type : types) {
        m_layouts.push_back(layoutOf(source, static_cast<std::size_t>(type.m_line)));
        m_lines.emplace(type.m_name, type.m_line);
    }
}

// Whether the name is the macro that guards a type's header.
bool AccessorCheck::isGuard(std::string_view name) const
{
    return name.ends_with("_H") && m_lines.contains(name.substr(0, name.size() - 2));
}

std::string AccessorCheck::typeFault(const CClass& type) const
{
    const std::string_view name = type.m_name;
    std::string fault = identifierFault(name);
    if (!fault.empty()) {
        return fault;
    }
    const bool isFunction = name.starts_with("add") && m_lines.contains(name.substr(3));
    if (isTakenByFiles(name) || isFunction || isGuard(name)) {
        return "is used by the generated code itself: expected another name";
    }
    if (isSystemHeader(name)) {
        return fmt::format("would hide the header <{}.h>: expected another name", name);
    }
    if (isHeaderName(name)) {
        return kHeaderFault;
    }
    const int line = m_lines.at(name);
    return line == type.m_line
               ? ""
               : fmt::format("is declared in line {} already: expected it once", line);
}

void AccessorCheck::checkTypes()
{
    for (std::size_t i = 0; i < m_types.size(); ++i) {
        const std::vector<PlacedFault>& losses = m_layouts[i].losses;
        m_faults.insert(m_faults.end(), losses.begin(), losses.end());
        const std::string fault = isWhole(i) ? typeFault(m_types[i]) : "";
        if (!fault.empty()) {
            m_faults.push_back(
                {m_layouts[i].name,
                 fmt::format("the type name {:?} {}", m_types[i].m_name, fault)});
        }
    }
}

std::string AccessorCheck::nameFault(const CClass& type, std::size_t place) const
{
    const std::vector<std::string>& names = type.m_attributeNames;
    const std::string& name = names[place];
    std::string fault = identifierFault(name);
    if (!fault.empty()) {
        return fault;
    }
    const auto end = names.begin() + static_cast<std::ptrdiff_t>(place);
    if (std::find(names.begin(), end, name) != end) {
        return "is declared twice: expected it once";
    }
    const bool isHistory = name.starts_with("h_") &&
                           std::find(names.begin(), names.end(), name.substr(2)) != names.end();
    if (isHistory || name == type.m_name || isGuard(name)) {
        return "is used by the generated code itself: expected another name";
    }
    return "";
}

void AccessorCheck::checkAttribute(std::size_t type, std::size_t place)
{
    const std::string& name = m_types[type].m_attributeNames[place];
    const std::string& tag = m_types[type].m_attributeTypes[place];
    lint::Range range = m_layouts[type].attributeNames[place];
    std::string fault = nameFault(m_types[type], place);
    if (fault.empty() && valueClassOf(tag).empty()) {
        range = m_layouts[type].attributeTypes[place];
        fault = fmt::format("has the unknown type {:?}: expected a tag such as DOUBLE", tag);
    }
    if (!fault.empty()) {
        m_faults.push_back(
            {range,
             fmt::format("the attribute {:?} of {:?} {}", name, m_types[type].m_name, fault)});
    }
}

void AccessorCheck::checkAttributes()
{
    for (std::size_t i = 0; i < m_types.size(); ++i) {
        for (std::size_t k = 0; isWhole(i) && k < m_types[i].m_attributeNames.size(); ++k) {
            checkAttribute(i, k);
        }
    }
}

void AccessorCheck::checkParents()
{
    for (const ObjectTypeFault& fault : objectTypeFaults(m_types)) {
        const auto type =
            std::find_if(m_types.begin(), m_types.end(), [&fault](const CClass& candidate) {
                return candidate.m_line == fault.line;
            });
        const auto place = static_cast<std::size_t>(type - m_types.begin());
        m_faults.push_back(
            {m_layouts[place].parent,
             fault.reason + ": expected a line of declared parents that ends at Agent"});
    }
}

std::vector<PlacedFault> AccessorCheck::faults()
{
    std::stable_sort(m_faults.begin(), m_faults.end(), [](const auto& a, const auto& b) {
        return a.range.begin < b.range.begin;
    });
    return std::move(m_faults);
}

} // namespace

std::vector<PlacedFault> accessorFaults(
    const lint::Source& source, const std::vector<CClass>& types, bool areAttributesWritten)
{
    if (types.empty()) {
        const lint::Range start{&source, 0, 0};
        return {{start, "no class is declared: expected a line such as class Person {"}};
    }
    AccessorCheck check(source, types);
    check.checkTypes();
    if (areAttributesWritten) {
        check.checkAttributes();
    }
    check.checkParents();
    return check.faults();
}

} // namespace scenariomatch
