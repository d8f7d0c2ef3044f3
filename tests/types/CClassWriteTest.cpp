#include "types/CClass.h"
#include "WrittenFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

namespace scenariomatch
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Key;
using testing::Not;

std::map<std::string, std::string> filesOf(const std::string& block)
{
    const EmptyFolder folder;
    CClass type;
    type.read(block);
    EXPECT_TRUE(type.write(folder.path()));
    return filesIn(folder.path());
}

TEST(CClassWrite, WritesTheDeclarationAndTheDefinitions)
{
    EXPECT_THAT(
        filesOf("class Zone {constant true;}"), ElementsAre(Key("Zone.cpp"), Key("Zone.h")));
}

TEST(CClassWrite, DeclaresAllValuesThenAllHistories)
{
    EXPECT_THAT(
        filesOf("class Person:Mobile {constant false;INT Age;STRING Name;}").at("Person.h"),
        HasSubstr("class Person : public Mobile\n{\npublic:\nPerson();\n\tvirtual ~Person();\n"
                  "\tCSBasicType* getValue(std::string i_attribute);\n"
                  "\tvoid setValue(std::string i_attribute, CSBasicType* i_value);\n"
                  "\tCSBasicType* getHValue(std::string i_attribute, int i_pos);\n"
                  "\tvoid setHValue(std::string i_attribute, CSBasicType* i_value, int i_pos);\n"
                  "\tstd::map<int,CSBasicType*> getHAllValue(std::string i_attribute);\n"
                  "CSInt* Age;\nCSString* Name;\n"
                  "\tstd::map<int,CSInt*> h_Age;\n\tstd::map<int,CSString*> h_Name;\n};\n"));
}

TEST(CClassWrite, SetsTheTypeAndItsConstancy)
{
    EXPECT_THAT(
        filesOf("class Zone {constant true;}").at("Zone.cpp"),
        HasSubstr("Zone::Zone()\n{\n\tm_constant = true;\n\tType = \"Zone\";\n}\n"));
    EXPECT_THAT(
        filesOf("class Person {constant false;}").at("Person.cpp"),
        HasSubstr("Person::Person()\n{\n\tm_constant = false;\n\tType = \"Person\";\n}\n"));
}

TEST(CClassWrite, AnswersForAnUnknownAttributeOnlyWithoutAnotherParent)
{
    const std::string root = filesOf("class Mobile {constant false;INT Age;}").at("Mobile.cpp");
    EXPECT_THAT(root, HasSubstr("\t\t std::cerr << \""));
    EXPECT_THAT(root, HasSubstr("\t\t return new CSInt(-1);\n"));
    EXPECT_THAT(root, Not(HasSubstr("Agent::")));

    const std::string derived =
        filesOf("class Person:Mobile {constant false;INT Age;}").at("Person.cpp");
    EXPECT_THAT(derived, HasSubstr("return Mobile::getValue(i_attribute);\n"));
    EXPECT_THAT(derived, HasSubstr("Mobile::setValue(i_attribute,i_value);\n"));
    EXPECT_THAT(derived, HasSubstr("return Mobile::getHValue(i_attribute, i_pos);\n"));
    EXPECT_THAT(derived, Not(HasSubstr("std::cerr")));
    EXPECT_THAT(derived, Not(HasSubstr("new CSInt(-1)")));
}

TEST(CClassWrite, LetsAnAttributeWithAnUnknownTagHoldAnyValue)
{
    const auto files = filesOf("class Person {constant false;COLOUR Hair;}");
    EXPECT_THAT(files.at("Person.h"), HasSubstr("\nCSBasicType* Hair;\n"));
    EXPECT_THAT(files.at("Person.cpp"), HasSubstr("Hair = static_cast<CSBasicType*>(i_value);\n"));
}

TEST(CClassWrite, GivesEqualFilesForEqualTypes)
{
    const std::string block = "class Person:Mobile {constant false;INT Age;STRING Name;}";
    EXPECT_EQ(filesOf(block), filesOf(block));
}

TEST(CClassWrite, SaysThatAFileCannotBeWrittenAndWritesTheOther)
{
    const EmptyFolder folder;
    std::filesystem::create_directory(folder.path() + "/Zone.h");
    CClass type;
    type.read("class Zone {constant true;}");
    EXPECT_FALSE(type.write(folder.path()));
    EXPECT_THAT(contentOf(folder.path() + "/Zone.cpp"), HasSubstr("Zone::Zone()"));
    EXPECT_FALSE(type.write(folder.path() + "/none"));
}

TEST(CClassWrite, NoticesAFullDisk)
{
    const EmptyFolder folder;
    std::filesystem::create_symlink("/dev/full", folder.path() + "/Zone.cpp");
    CClass type;
    type.read("class Zone {constant true;}");
    EXPECT_FALSE(type.write(folder.path()));
}

} // namespace
} // namespace scenariomatch
