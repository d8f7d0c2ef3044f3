#include "types/CAllClasses.h"
#include "WrittenFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace scenariomatch
{
namespace
{

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Files = std::map<std::string, std::string>;

const std::string kData = SCENARIOMATCH_TEST_DATA "/types/accessors/";

CAllClasses describedTypes()
{
    CAllClasses types;
    types.read(kData + "objects.types");
    return types;
}

// The expected files whose names begin, or do not begin, with one of the accessor layer's.
Files expectedFiles(const std::vector<std::string>& stems, bool areThey)
{
    Files files = filesIn(kData + "expected", ".expected");
    std::erase_if(files, [&stems, areThey](const auto& file) {
        const bool isOne = std::any_of(stems.begin(), stems.end(), [&file](const auto& stem) {
            return file.first == stem + ".h" || file.first == stem + ".cpp";
        });
        return isOne != areThey;
    });
    return files;
}

std::string expectedText(std::string name)
{
    return contentOf(kData + "expected/" + name.append(".expected"));
}

CAllClasses typesOf(const std::vector<std::pair<std::string, std::string>>& namesAndParents)
{
    CAllClasses types;
    for (const auto& [name, parent] : namesAndParents) {
        CClass type;
        type.m_name = name;
        type.m_parent = parent;
        types.m_classes.push_back(type);
    }
    return types;
}

// The lines of getAllObjectTypes between its table and its return.
std::string hierarchyOf(const std::vector<std::pair<std::string, std::string>>& namesAndParents)
{
    const EmptyFolder folder;
    typesOf(namesAndParents).writeAccessor(folder.path());
    const std::string text = contentOf(folder.path() + "/CSAccessor.cpp");
    const std::string before = "> > l_res;\n";
    const std::size_t begin = text.find(before) + before.size();
    return text.substr(begin, text.find("\treturn l_res;") - begin);
}

TEST(CAllClassesWrite, WritesAClassForEveryTypeAndAHeaderForAll)
{
    const EmptyFolder folder;
    EXPECT_TRUE(describedTypes().write(folder.path()));
    const Files expected = expectedFiles({"CSAccessor", "CSObjectConversion"}, false);
    EXPECT_EQ(expected.size(), 13U);
    EXPECT_EQ(filesIn(folder.path()), expected);
}

TEST(CAllClassesWrite, WritesTheAccessors)
{
    const EmptyFolder folder;
    EXPECT_TRUE(describedTypes().writeAccessor(folder.path()));
    const Files expected = expectedFiles({"CSAccessor"}, true);
    EXPECT_EQ(expected.size(), 2U);
    EXPECT_EQ(filesIn(folder.path()), expected);
}

TEST(CAllClassesWrite, WritesTheConversionClass)
{
    const EmptyFolder folder;
    EXPECT_TRUE(describedTypes().writeConversionClass(folder.path()));
    const Files expected = expectedFiles({"CSObjectConversion"}, true);
    EXPECT_EQ(expected.size(), 2U);
    EXPECT_EQ(filesIn(folder.path()), expected);
}

TEST(CAllClassesWrite, WritesOverWhatIsThere)
{
    const EmptyFolder folder;
    const std::string longer(100'000, 'x');
    for (const std::string name : {"CSObject.h", "Mobile.h", "CSAccessor.h"}) {
        std::ofstream(folder.path() + "/" + name) << longer;
    }
    EXPECT_TRUE(describedTypes().write(folder.path()));
    EXPECT_TRUE(describedTypes().writeAccessor(folder.path()));
    for (const auto& [name, text] : filesIn(folder.path())) {
        EXPECT_EQ(text, expectedText(name)) << name;
    }
}

TEST(CAllClassesWrite, KeepsTheLayerWithoutTypes)
{
    const EmptyFolder folder;
    const CAllClasses none;
    EXPECT_TRUE(none.write(folder.path()));
    EXPECT_TRUE(none.writeAccessor(folder.path()));
    EXPECT_TRUE(none.writeConversionClass(folder.path()));
    const Files files = filesIn(folder.path());
    EXPECT_EQ(files.size(), 5U);
    EXPECT_EQ(files.at("CSObject.h"), "#ifndef CSObject_H\n#define CSObject_H\n\n\n#endif\n");
    EXPECT_THAT(
        files.at("CSAccessor.cpp"),
        HasSubstr("{\n\tif (io_agent->Type.compare(\"Component\")==0)\n"
                  "\t\treturn (static_cast<CSComponent*>(io_agent))->getValue(i_attribute);\n"
                  "\telse return io_agent->getValue(i_attribute);\n}\n"));
    EXPECT_THAT(files.at("CSObjectConversion.cpp"), Not(HasSubstr("::add")));
}

TEST(CAllClassesWrite, ListsEveryPairOfTheHierarchyWhateverTheOrder)
{
    const std::string grown = "\tl_res[\"A\"].push_back(\"A\");\n"
                              "\tl_res[\"A\"].push_back(\"B\");\n"
                              "\tl_res[\"A\"].push_back(\"C\");\n"
                              "\tl_res[\"B\"].push_back(\"B\");\n"
                              "\tl_res[\"B\"].push_back(\"C\");\n"
                              "\tl_res[\"C\"].push_back(\"C\");\n";
    EXPECT_EQ(hierarchyOf({{"A", "Agent"}, {"B", "A"}, {"C", "B"}}), grown);
    EXPECT_EQ(
        hierarchyOf({{"C", "B"}, {"B", "A"}, {"A", "Agent"}}),
        "\tl_res[\"C\"].push_back(\"C\");\n"
        "\tl_res[\"B\"].push_back(\"B\");\n"
        "\tl_res[\"B\"].push_back(\"C\");\n"
        "\tl_res[\"A\"].push_back(\"A\");\n"
        "\tl_res[\"A\"].push_back(\"C\");\n"
        "\tl_res[\"A\"].push_back(\"B\");\n");
}

TEST(CAllClassesWrite, EndsTheHierarchyAtAnUndeclaredParentAndAtACircle)
{
    EXPECT_EQ(hierarchyOf({{"A", "Nobody"}}), "\tl_res[\"A\"].push_back(\"A\");\n");
    EXPECT_EQ(hierarchyOf({{"A", "A"}}), "\tl_res[\"A\"].push_back(\"A\");\n");
    EXPECT_EQ(
        hierarchyOf({{"A", "B"}, {"B", "C"}, {"C", "B"}}),
        "\tl_res[\"A\"].push_back(\"A\");\n"
        "\tl_res[\"B\"].push_back(\"B\");\n"
        "\tl_res[\"B\"].push_back(\"A\");\n"
        "\tl_res[\"B\"].push_back(\"C\");\n"
        "\tl_res[\"C\"].push_back(\"C\");\n"
        "\tl_res[\"C\"].push_back(\"A\");\n"
        "\tl_res[\"C\"].push_back(\"B\");\n");
}

TEST(CAllClassesWrite, SaysThatAFileCannotBeWrittenAndWritesTheOthers)
{
    const EmptyFolder folder;
    std::filesystem::create_directory(folder.path() + "/CSObject.h");
    std::filesystem::create_directory(folder.path() + "/Mobile.cpp");
    std::filesystem::create_directory(folder.path() + "/CSAccessor.h");
    std::filesystem::create_directory(folder.path() + "/CSObjectConversion.h");
    EXPECT_FALSE(describedTypes().write(folder.path()));
    EXPECT_FALSE(describedTypes().writeAccessor(folder.path()));
    EXPECT_FALSE(describedTypes().writeConversionClass(folder.path()));
    for (const std::string name :
         {"Mobile.h", "Zone.cpp", "CSAccessor.cpp", "CSObjectConversion.cpp"}) {
        EXPECT_EQ(contentOf(folder.path() + "/" + name), expectedText(name));
    }
}

TEST(CAllClassesWrite, WritesNothingWithoutTheFolder)
{
    const EmptyFolder folder;
    EXPECT_FALSE(describedTypes().write(folder.path() + "/none"));
    EXPECT_FALSE(describedTypes().writeAccessor(folder.path() + "/none"));
    EXPECT_FALSE(describedTypes().writeConversionClass(folder.path() + "/none"));
    EXPECT_THAT(filesIn(folder.path()), IsEmpty());
}

} // namespace
} // namespace scenariomatch
