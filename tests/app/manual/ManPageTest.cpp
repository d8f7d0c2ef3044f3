#include "app/manual/ManPage.h"

#include "ManualExample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace scenariomatch
{

namespace
{

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string pageOf(const CommandEntry& command)
{
    return manPage(command, {"1.2.3", "2026-11-21"});
}

TEST(ManPage, LinesAreNoRequestsAndCharactersStayWhatTheyAre)
{
    EXPECT_EQ(roffLine(".a"), "\\&.a\n");
    EXPECT_EQ(roffLine("'a"), "\\(aqa\n");
    EXPECT_EQ(roffLine("a-b \\ `^~"), "a\\-b \\e \\(ga\\(ha\\(ti\n");
}

TEST(ManPage, BreaksLongTextBetweenWords)
{
    const std::string thirty(30, 'a');
    EXPECT_EQ(roffText(thirty + " " + thirty), thirty + "\n" + thirty + "\n");
    EXPECT_EQ(roffText("two words"), "two words\n");
    const std::string ninety(90, 'a');
    EXPECT_EQ(roffText(ninety), ninety + "\n");
    EXPECT_EQ(roffText(thirty + thirty + " .a"), thirty + thirty + "\n\\&.a\n");
}

TEST(ManPage, NamesItselfItsEditionAndTheCommand)
{
    const ManualExample example;
    EXPECT_THAT(
        pageOf(example.glue()),
        StartsWith(".TH TOOL\\-GLUE 1 2026-11-21 \"ScenarioMatch 1.2.3\" \"User Commands\"\n"
                   ".SH NAME\ntool\\-glue \\- Glue\n.SH SYNOPSIS\n"));
}

TEST(ManPage, ShowsHowTheCommandIsTyped)
{
    const ManualExample example;
    EXPECT_THAT(
        pageOf(example.glue()),
        HasSubstr("\\fBtool glue\\fR \\fB\\-\\-in\\fR \\fIFOLDER\\fR [\\fIOPTIONS\\fR] "
                  "[\\fIPART\\fR]\n"));
    EXPECT_THAT(
        pageOf(example.program), HasSubstr("\\fBtool\\fR [\\fIOPTIONS\\fR] \\fICOMMAND\\fR\n"));
}

TEST(ManPage, DescribesOptionsAsHelpDoes)
{
    const ManualExample example;
    const std::string page = pageOf(example.glue());
    EXPECT_THAT(
        page,
        HasSubstr(".TP\n\\fB\\-\\-with\\fR \\fBbone\\fR|\\fBpaste\\fR\n"
                  "\\&.like [this]: it\\(aqs \\e \\(gaodd\\(ga\n"));
    EXPECT_THAT(page, HasSubstr(".TP\n\\fB\\-\\-to\\fR \\fIFILE\\fR (default: \\-)\nWhere to\n"));
    EXPECT_THAT(page, HasSubstr("\\fB\\-\\-in\\fR \\fIFOLDER\\fR (required)\nWhere\n"));
    EXPECT_THAT(page, HasSubstr("\\fB\\-\\-note\\fR \\fIA:B\\fR ...\nNotes\n"));
    EXPECT_THAT(page, HasSubstr(".SH ARGUMENTS\n.TP\n\\fIPART\\fR\nWhat\n"));
}

TEST(ManPage, PrintsExamplesAsTheyAre)
{
    const ManualExample example;
    EXPECT_THAT(
        pageOf(example.glue()),
        HasSubstr(".SH EXAMPLES\n.EX\ntool glue \\(aq.x\\(aq\ntool glue \\e\n.EE\n"));
    EXPECT_THAT(pageOf(example.program), Not(HasSubstr("EXAMPLES")));
}

TEST(ManPage, LeadsToThePagesAroundIt)
{
    const ManualExample example;
    EXPECT_THAT(
        pageOf(example.program),
        HasSubstr(".SH SEE ALSO\n.BR tool\\-cut (1),\n.BR tool\\-glue (1)\n"));
    EXPECT_THAT(
        pageOf(example.program.commands.front()),
        HasSubstr(".SH SEE ALSO\n.BR tool (1),\n.BR tool\\-cut\\-twice (1)\n"));
}

} // namespace

} // namespace scenariomatch
