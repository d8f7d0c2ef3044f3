#include "types/AccessorSources.h"

#include "types/TypeSources.h"

#include <array>
#include <set>
#include <string_view>
#include <unordered_map>

namespace scenariomatch
{

namespace
{

// A free function, and the call that it makes of a member.
struct Function
{
    std::string_view declaration;
    std::string_view call;
    bool isAnswering;
};

constexpr std::array<Function, 5> kFunctions{{
    {"void set(CSAgent* io_agent, std::string i_attribute, CSBasicType* i_value)",
     "setValue(i_attribute, i_value);",
     false},
    {"CSBasicType* get(CSAgent* io_agent, std::string i_attribute)",
     "getValue(i_attribute);",
     true},
    {"void setH(CSAgent* io_agent, std::string i_attribute, CSBasicType* i_value, int i_pos)",
     "setHValue(i_attribute, i_value, i_pos);",
     false},
    {"CSBasicType* getH(CSAgent* io_agent, std::string i_attribute, int i_pos)",
     "getHValue(i_attribute, i_pos);",
     true},
    {"std::map<int,CSBasicType*> getHAll(CSAgent* io_agent, std::string i_attribute)",
     "getHAllValue(i_attribute);",
     true},
}};

constexpr std::string_view kHierarchy =
    "std::map<std::string, std::vector<std::string> > getAllObjectTypes()";

std::string headerText()
{
    std::string text = guardOf("CSAccessor");
    text += "#include \"CSAgent.h\"\n#include \"CSAllTypes.h\"\n";
    text += "#include <map>\n#include <string>\n#include <vector>\n\n";
    for (const Function& function : kFunctions) {
        text += std::string(function.declaration) + ";\n";
    }
    return text + std::string(kHierarchy) + ";\n\n#endif\n";
}

// One test of the object's type and the call of that type's member.
std::string caseText(const std::string& name, const std::string& type, const Function& function)
{
    std::string text = "if (io_agent->Type.compare(\"" + name + "\")==0)\n\t\t";
    text += function.isAnswering ? "return " : "";
    return text + "(static_cast<" + type + "*>(io_agent))->" + std::string(function.call) +
           "\n\telse ";
}

std::string definitionText(const std::vector<CClass>& types, const Function& function)
{
    std::string text = std::string(function.declaration) + "\n{\n\t";
    for (const CClass& type : types) {
        text += caseText(type.m_name, type.m_name, function);
    }
    text += caseText("Component", "CSComponent", function);
    text += function.isAnswering ? "return " : "";
    return text + "io_agent->" + std::string(function.call) + "\n}\n";
}

// For every type its own name, then the names of all types that derive from it, in file order.
std::vector<std::vector<std::string>> subtypesOf(const std::vector<CClass>& types)
{
    std::unordered_map<std::string_view, std::size_t> places;
    std::vector<std::vector<std::string>> subtypes(types.size());
    for (std::size_t i = 0; i < types.size(); ++i) {
        places.emplace(types[i].m_name, i);
        subtypes[i].push_back(types[i].m_name);
    }
    for (std::size_t i = 0; i < types.size(); ++i) {
        std::set<std::size_t> walked{i};
        auto parent = places.find(types[i].m_parent);
        while (parent != places.end() && parent->first != "Agent" &&
               walked.insert(parent->second).second) {
            subtypes[parent->second].push_back(types[i].m_name);
            parent = places.find(types[parent->second].m_parent);
        }
    }
    return subtypes;
}

std::string hierarchyText(const std::vector<CClass>& types)
{
    std::string text = std::string(kHierarchy) + "\n{\n";
    text += "\tstd::map<std::string, std::vector<std::string> > l_res;\n";
    const std::vector<std::vector<std::string>> subtypes = subtypesOf(types);
    for (std::size_t i = 0; i < types.size(); ++i) {
        for (const std::string& subtype : subtypes[i]) {
            text += "\tl_res[\"" + types[i].m_name + "\"].push_back(\"" + subtype + "\");\n";
        }
    }
    return text + "\treturn l_res;\n}\n";
}

std::string definitionsText(const std::vector<CClass>& types)
{
    std::string text = "#include \"CSAccessor.h\"\n\n";
    text += "#include \"CSComponent.h\"\n#include \"CSObject.h\"\n\n";
    for (const Function& function : kFunctions) {
        text += definitionText(types, function) + "\n";
    }
    return text + hierarchyText(types);
}

} // namespace

std::vector<SourceFile> accessorSources(const std::vector<CClass>& types)
{
    return {{"CSAccessor.h", headerText()}, {"CSAccessor.cpp", definitionsText(types)}};
}

} // namespace scenariomatch
