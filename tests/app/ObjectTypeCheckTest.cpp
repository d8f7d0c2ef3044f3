#include "app/ObjectTypeCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

namespace scenariomatch
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

// Types and their parents, one a line from line 1 on.
std::vector<std::string>
warningsOf(const std::vector<std::pair<std::string, std::string>>& namesAndParents)
{
    std::vector<CClass> types;
    for (const auto& [name, parent] : namesAndParents) {
        CClass type;
        type.m_name = name;
        type.m_parent = parent;
        type.m_line = static_cast<int>(types.size()) + 1;
        types.push_back(type);
    }
    return objectTypeWarnings("objects.txt", types);
}

} // namespace

TEST(ObjectTypeCheck, IsContentWithDeclaredParents)
{
    EXPECT_THAT(warningsOf({{"Person", "Agent"}, {"Guard", "Person"}}), IsEmpty());
    EXPECT_THAT(warningsOf({{"Guard", "Person"}, {"Person", "Agent"}}), IsEmpty());
    EXPECT_THAT(warningsOf({{"Agent", "Agent"}, {"Person", "Agent"}}), IsEmpty());
}

TEST(ObjectTypeCheck, WarnsOfParentsThatAreNotDeclared)
{
    EXPECT_THAT(
        warningsOf({{"Person", "Nobody"}, {"Guard", "Person"}, {"Zone", ""}}),
        ElementsAre(
            "objects.txt:1: warning: the parent Nobody of Person is not declared",
            "objects.txt:3: warning: the parent of Zone has no name"));
}

TEST(ObjectTypeCheck, WarnsOnceOfEveryCircle)
{
    EXPECT_THAT(
        warningsOf({{"Group", "Group"}}),
        ElementsAre("objects.txt:1: warning: Group derives from itself: Group -> Group"));
    EXPECT_THAT(
        warningsOf({{"Entry", "B"}, {"A", "C"}, {"B", "A"}, {"C", "B"}, {"Other", "A"}}),
        ElementsAre("objects.txt:2: warning: A derives from itself: A -> C -> B -> A"));
}

TEST(ObjectTypeCheck, TakesTheFirstOfTypesOfOneName)
{
    EXPECT_THAT(
        warningsOf({{"Person", "Agent"}, {"Person", "Guard"}, {"Guard", "Person"}}), IsEmpty());
}

TEST(ObjectTypeCheck, WarnsOfAFileWithoutTypes)
{
    EXPECT_THAT(warningsOf({}), ElementsAre("objects.txt: warning: no class is declared"));
}

} // namespace scenariomatch
