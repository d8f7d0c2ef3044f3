#include "host/XmlTags.h"

#include <QString>

#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

std::optional<qsizetype> crowded(const char* text)
{
    return findCrowdedTag(QString::fromLatin1(text), 2);
}

} // namespace

TEST(XmlTags, FindsTheTagWithTooManyAttributes)
{
    EXPECT_EQ(crowded(R"(<a b="1" c="2"/>)"), std::nullopt);
    EXPECT_EQ(crowded(R"( <a b="1"><b c="1" d="2" e="3">)"), 10);
    EXPECT_EQ(crowded("<a b = '1' c\n=\n'2' d='"), 0);
}

TEST(XmlTags, CountsWhatIsAnAttributeOnly)
{
    EXPECT_EQ(crowded(R"(<a b="= = = =" c='="="="'>= = = =</a>)"), std::nullopt);
    EXPECT_EQ(crowded(R"(<!-- <a b="" c="" d="" --> <![CDATA[<a b="" c="" d=""]]>)"), std::nullopt);
    EXPECT_EQ(crowded(R"(<?a b="" c="" d=""?>)"), std::nullopt);
    EXPECT_EQ(crowded(""), std::nullopt);
}

TEST(XmlTags, SeesATagBehindOneThatIsNotClosed)
{
    EXPECT_EQ(crowded(R"(<a b=<c d="1" e="2" f="3">)"), 5);
    EXPECT_EQ(crowded(R"(<!-- ---><c d="1" e="2" f="3">)"), 9);
    EXPECT_EQ(crowded("<!--"), std::nullopt);
    EXPECT_EQ(crowded("<"), std::nullopt);
}

} // namespace scenariomatch
