#include "types/ConversionSources.h"

#include "types/TypeSources.h"

namespace scenariomatch
{

namespace
{

// Name and parameters of the function that adds an object of the type.
std::string addFunction(const CClass& type)
{
    return "add" + type.m_name + "(YOUROBJECTTYPE i_object," + type.m_name + "* i_csobject)";
}

std::string headerText(const std::vector<CClass>& types)
{
    std::string text = guardOf("CSObjectConversion");
    text += "#include \"YOUROBJECTTYPE.h\"\n#include \"CSObject.h\"\n";
    text += "#include <map>\n#include <string>\n#include <vector>\n\n";
    text += "class CSObjectConversion {\npublic:\nCSObjectConversion ();\n";
    text += "\tvirtual ~CSObjectConversion();\n";
    for (const CClass& type : types) {
        text += "void " + addFunction(type) + ";\n";
    }
    text += "\tstd::map <std::string, std::vector<CSAgent*> > m_allAgents;\n";
    text += "\tstd::map <std::string, std::vector<CSAgent*> > m_allConstAgents;\n";
    return text + "};\n\n#endif\n";
}

// The lines for the application to complete are a comment: the skeleton compiles as it is.
std::string addText(const CClass& type)
{
    std::string text = "\nvoid CSObjectConversion::" + addFunction(type) + "\n{\n";
    text += "\t/*\n\tAll your stuff to create the object\n";
    for (const std::string& attribute : type.m_attributeNames) {
        text += "\ti_csobject->" + attribute + " = l_obj\n";
    }
    text += "\t*/\n";
    text += type.m_constant ? "\tm_allConstAgents[\"" : "\tm_allAgents[\"";
    return text + type.m_name + "\"].push_back(i_csobject);\n}\n";
}

std::string definitionsText(const std::vector<CClass>& types)
{
    std::string text = "#include \"CSObjectConversion.h\"\n\n";
    text += "CSObjectConversion::CSObjectConversion ()\n{\n}\n\n";
    text += "CSObjectConversion::~CSObjectConversion()\n{\n}\n";
    for (const CClass& type : types) {
        text += addText(type);
    }
    return text;
}

} // namespace

std::vector<SourceFile> conversionSources(const std::vector<CClass>& types)
{
    return {
        {"CSObjectConversion.h", headerText(types)},
        {"CSObjectConversion.cpp", definitionsText(types)}};
}

} // namespace scenariomatch
