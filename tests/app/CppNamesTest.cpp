#include "app/CppNames.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

TEST(CppNames, TakeLettersDigitsAndUnderscores)
{
    for (const char* const name : {"Faster", "x", "left_of", "Near2", "Class", "a_b_", "classes"}) {
        EXPECT_EQ(cppNameFault(name), "") << name;
    }
}

TEST(CppNames, RefuseEverythingElse)
{
    for (const char* const name :
         {"", "2fast", "a-b", "a b", " a", "a\n", "../up", "Left/Of", "Größer", "a.b", "a;b"}) {
        EXPECT_EQ(
            cppNameFault(name),
            "is no C++ identifier: expected letters, digits and underscores, beginning with a "
            "letter")
            << name;
    }
}

TEST(CppNames, RefuseTheWordsOfTheLanguage)
{
    for (const char* const name :
         {"class", "and", "xor_eq", "co_await", "char8_t", "constinit", "operator", "alignas"}) {
        EXPECT_EQ(cppNameFault(name), "is a C++ keyword: expected another name") << name;
    }
}

TEST(CppNames, RefuseWhatIsKeptForCompilers)
{
    for (const char* const name : {"_Fast", "_fast", "a__b", "__a"}) {
        EXPECT_EQ(
            cppNameFault(name),
            "is reserved in C++: expected no underscore at the beginning and no two in a row")
            << name;
    }
}

} // namespace scenariomatch
