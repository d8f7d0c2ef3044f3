#include "types/TypeSources.h"

#include <algorithm>
#include <array>
#include <utility>

namespace scenariomatch
{

namespace
{

constexpr std::array<std::pair<std::string_view, std::string_view>, 12> kValueClasses{{
    {"BOOL", "CSBool"},
    {"STRING", "CSString"},
    {"INT", "CSInt"},
    {"DOUBLE", "CSDouble"},
    {"3DDPOINT", "CS3DDPoint"},
    {"3DIPOINT", "CS3DIPoint"},
    {"2DDPOINT", "CS2DDPoint"},
    {"2DIPOINT", "CS2DIPoint"},
    {"TIMESTAMP", "CSTimeStamp"},
    {"INTERVAL", "CSInterval"},
    {"3DDPOINTS", "CS3DDPoints"},
    {"ACCESSORAGENT", "CSAccessorAgent"},
}};

struct Attribute
{
    std::string name;
    std::string valueClass;
};

std::vector<Attribute> attributesOf(const CClass& type)
{
    std::vector<Attribute> attributes;
    for (std::size_t i = 0; i < type.m_attributeNames.size(); ++i) {
        const std::string_view known = valueClassOf(type.m_attributeTypes[i]);
        attributes.push_back(
            {type.m_attributeNames[i], std::string(known.empty() ? "CSBasicType" : known)});
    }
    return attributes;
}

// One of the five member functions that speak of an attribute by its name.
struct Accessor
{
    std::string result;
    // Name and parameters, and the same as a call.
    std::string declaration;
    std::string call;
    // What it does with an attribute of its own.
    std::string (*statement)(const Attribute& attribute);
    // What it returns for an attribute that nobody knows; empty when it returns nothing.
    std::string unknown;
};

std::vector<Accessor> accessors()
{
    return {
        {"CSBasicType*",
         "getValue(std::string i_attribute)",
         "getValue(i_attribute);",
         [](const Attribute& attribute) { return "return " + attribute.name + ";"; },
         "new CSInt(-1)"},
        {"void",
         "setValue(std::string i_attribute, CSBasicType* i_value)",
         "setValue(i_attribute,i_value);",
         [](const Attribute& attribute) {
             return attribute.name + " = static_cast<" + attribute.valueClass + "*>(i_value);";
         },
         ""},
        {"CSBasicType*",
         "getHValue(std::string i_attribute, int i_pos)",
         "getHValue(i_attribute, i_pos);",
         [](const Attribute& attribute) { return "return h_" + attribute.name + "[i_pos];"; },
         "new CSInt(-1)"},
        {"void",
         "setHValue(std::string i_attribute, CSBasicType* i_value, int i_pos)",
         "setHValue(i_attribute, i_value, i_pos);",
         [](const Attribute& attribute) {
             return "h_" + attribute.name + "[i_pos] = static_cast<" + attribute.valueClass +
                    "*>(i_value);";
         },
         ""},
        {"std::map<int,CSBasicType*>",
         "getHAllValue(std::string i_attribute)",
         "getHAllValue(i_attribute);",
         [](const Attribute& attribute) {
             const std::string history = "h_" + attribute.name;
             return "return std::map<int,CSBasicType*>(" + history + ".begin(), " + history +
                    ".end());";
         },
         "std::map<int,CSBasicType*>()"},
    };
}

std::string headerText(const CClass& type)
{
    const std::string& name = type.m_name;
    std::string text = guardOf(name);
    text += "#include \"CSAllTypes.h\"\n";
    text += "#include \"" + type.m_parent + ".h\"\n";
    text += "#include <map>\n";
    text += "#include <string>\n\n";
    text += "class " + name + " : public " + type.m_parent + "\n{\npublic:\n";
    text += name + "();\n";
    text += "\tvirtual ~" + name + "();\n";
    for (const Accessor& accessor : accessors()) {
        text += "\t" + accessor.result + " " + accessor.declaration + ";\n";
    }
    const std::vector<Attribute> attributes = attributesOf(type);
    for (const Attribute& attribute : attributes) {
        text += attribute.valueClass + "* " + attribute.name + ";\n";
    }
    for (const Attribute& attribute : attributes) {
        text += "\tstd::map<int," + attribute.valueClass + "*> h_" + attribute.name + ";\n";
    }
    return text + "};\n\n#endif\n";
}

std::string constructorText(const CClass& type)
{
    const std::string& name = type.m_name;
    std::string text = name + "::" + name + "()\n{\n";
    text += type.m_constant ? "\tm_constant = true;\n" : "\tm_constant = false;\n";
    text += "\tType = \"" + name + "\";\n";
    // What was never set is empty, not whatever the memory held.
    for (const std::string& attribute : type.m_attributeNames) {
        text += "\t" + attribute + " = nullptr;\n";
    }
    return text + "}\n\n" + name + "::~" + name + "()\n{\n}\n";
}

// What an accessor does with an attribute that is none of the type's own.
std::string otherwiseText(const CClass& type, const Accessor& accessor, bool isFirst)
{
    const std::string start = isFirst ? "" : "\telse\n";
    if (type.m_parent != "Agent") {
        const std::string indent = isFirst ? "\t" : "\t\t";
        const std::string answer = accessor.unknown.empty() ? "" : "return ";
        return start + indent + answer + type.m_parent + "::" + accessor.call + "\n";
    }
    std::string text = start + "\t{\n";
    text += "\t\t std::cerr << \"" + type.m_name +
            " has no attribute \" << i_attribute << std::endl;\n";
    if (!accessor.unknown.empty()) {
        text += "\t\t return " + accessor.unknown + ";\n";
    }
    return text + "\t}\n";
}

std::string accessorText(const CClass& type, const Accessor& accessor)
{
    std::string text = accessor.result + " " + type.m_name + "::" + accessor.declaration + "\n{\n";
    bool isFirst = true;
    for (const Attribute& attribute : attributesOf(type)) {
        text += isFirst ? "\t" : "\telse ";
        text += "if (i_attribute.compare(\"" + attribute.name + "\")==0)\n";
        text += "\t\t" + accessor.statement(attribute) + "\n";
        isFirst = false;
    }
    return text + otherwiseText(type, accessor, isFirst) + "}\n";
}

std::string definitionsText(const CClass& type)
{
    std::string text = "#include \"" + type.m_name + ".h\"\n\n#include <iostream>\n\n";
    text += constructorText(type);
    for (const Accessor& accessor : accessors()) {
        text += "\n" + accessorText(type, accessor);
    }
    return text;
}

} // namespace

std::string_view valueClassOf(std::string_view tag)
{
    const auto* const found =
        std::find_if(kValueClasses.begin(), kValueClasses.end(), [tag](const auto& entry) {
            return entry.first == tag;
        });
    return found == kValueClasses.end() ? std::string_view() : found->second;
}

bool isValueClass(std::string_view name)
{
    return std::any_of(kValueClasses.begin(), kValueClasses.end(), [name](const auto& entry) {
        return entry.second == name;
    });
}

std::vector<SourceFile> typeSources(const CClass& type)
{
    return {{type.m_name + ".h", headerText(type)}, {type.m_name + ".cpp", definitionsText(type)}};
}

SourceFile objectHeader(const std::vector<CClass>& types)
{
    std::string text = guardOf("CSObject");
    for (const CClass& type : types) {
        text += "#include \"" + type.m_name + ".h\"\n";
    }
    return {"CSObject.h", text + "\n#endif\n"};
}

std::string guardOf(const std::string& name)
{
    return "#ifndef " + name + "_H\n#define " + name + "_H\n\n";
}

} // namespace scenariomatch
