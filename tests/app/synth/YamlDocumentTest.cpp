#include "app/YamlDocument.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

TEST(YamlDocument, IsTheOnlyOne)
{
    const YamlDocument document = readYamlDocument("a: 1\nb: [2, 3]\n");
    EXPECT_EQ(document.root["b"][1].as<int>(), 3);
    EXPECT_FALSE(document.next);
}

TEST(YamlDocument, IsNullInAnEmptyText)
{
    EXPECT_TRUE(readYamlDocument("").root.IsNull());
    EXPECT_TRUE(readYamlDocument("# words\n").root.IsNull());
}

TEST(YamlDocument, TellsWhereASecondBegins)
{
    const YamlDocument document = readYamlDocument("a: 1\n---\nb: 2\n");
    EXPECT_EQ(document.root["a"].as<int>(), 1);
    ASSERT_TRUE(document.next);
    EXPECT_EQ(document.next->line, 1);
    EXPECT_EQ(document.next->column, 0);
}

TEST(YamlDocument, IsRefusedWhereItDoesNotFollowTheLanguage)
{
    EXPECT_THROW(readYamlDocument("a: [1"), YAML::Exception);
    EXPECT_THROW(readYamlDocument("a: *nobody"), YAML::Exception);
}

// The library makes documents of nothing here without end.
TEST(YamlDocument, IsRefusedWhereTheTextDoesNotGoOn)
{
    EXPECT_THROW(readYamlDocument(",rMN0L"), YAML::Exception);
    EXPECT_THROW(readYamlDocument("]"), YAML::Exception);
}

} // namespace scenariomatch
