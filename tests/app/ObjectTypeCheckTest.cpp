#include "app/ObjectTypeCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fmt/format.h>
#include <utility>

namespace scenariomatch
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

// Types and their parents, one a line from line 1 on.
std::vector<std::string>
faultsOf(const std::vector<std::pair<std::string, std::string>>& namesAndParents)
{
    std::vector<CClass> types;
    for (const auto& [name, parent] : namesAndParents) {
        CClass type;
        type.m_name = name;
        type.m_parent = parent;
        type.m_line = static_cast<int>(types.size()) + 1;
        types.push_back(type);
    }
    std::vector<std::string> faults;
    for (const ObjectTypeFault& fault : objectTypeFaults(types)) {
        faults.push_back(fmt::format("{}: {}", fault.line, fault.reason));
    }
    return faults;
}

} // namespace

TEST(ObjectTypeCheck, IsContentWithDeclaredParents)
{
    EXPECT_THAT(faultsOf({{"Person", "Agent"}, {"Guard", "Person"}}), IsEmpty());
    EXPECT_THAT(faultsOf({{"Guard", "Person"}, {"Person", "Agent"}}), IsEmpty());
    EXPECT_THAT(faultsOf({{"Agent", "Agent"}, {"Person", "Agent"}}), IsEmpty());
}

TEST(ObjectTypeCheck, FindsParentsThatAreNotDeclared)
{
    EXPECT_THAT(
        faultsOf({{"Person", "Nobody"}, {"Guard", "Person"}, {"Zone", ""}}),
        ElementsAre(
            "1: the parent Nobody of Person is not declared", "3: the parent of Zone has no name"));
}

TEST(ObjectTypeCheck, FindsEveryCircleOnce)
{
    EXPECT_THAT(
        faultsOf({{"Group", "Group"}}),
        ElementsAre("1: Group derives from itself: Group -> Group"));
    EXPECT_THAT(
        faultsOf({{"Entry", "B"}, {"A", "C"}, {"B", "A"}, {"C", "B"}, {"Other", "A"}}),
        ElementsAre("2: A derives from itself: A -> C -> B -> A"));
}

TEST(ObjectTypeCheck, TakesTheFirstOfTypesOfOneName)
{
    EXPECT_THAT(
        faultsOf({{"Person", "Agent"}, {"Person", "Guard"}, {"Guard", "Person"}}), IsEmpty());
}

} // namespace scenariomatch
