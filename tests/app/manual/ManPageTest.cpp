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
using ManPage = ManualExample;

std::string pageOf(const CommandEntry& command)
{
    return manPage(command, {"1.2.3", "2026-11-21"});
}

TEST_F(ManPage, LinesAreNoRequestsAndCharactersStayWhatTheyAre)
{
    EXPECT_EQ(roffLine(".a"), "\\&.a\n");
    EXPECT_EQ(roffLine("'a"), "\\(aqa\n");
    EXPECT_EQ(roffLine("a-b \\ `^~"), "a\\-b \\e \\(ga\\(ha\\(ti\n");
}

TEST_F(ManPage, BreaksLongTextBetweenWords)
{
    const std::string thirty(30, 'a');
    EXPECT_EQ(roffText(thirty + " " + thirty), thirty + "\n" + thirty + "\n");
    EXPECT_EQ(roffText("two words"), "two words\n");
    const std::string ninety(90, 'a');
    EXPECT_EQ(roffText(ninety), ninety + "\n");
    EXPECT_EQ(roffText(thirty + thirty + " .a"), thirty + thirty + "\n\\&.a\n");
}

TEST_F(ManPage, NamesItselfItsEditionAndTheCommand)
{
    EXPECT_THAT(
        pageOf(glue()),
        StartsWith(".TH TOOL\\-GLUE 1 2026-11-21 \"ScenarioMatch 1.2.3\" \"User Commands\"\n"
                   ".SH NAME\ntool\\-glue \\- Glue\n.SH SYNOPSIS\n"));
}

TEST_F(ManPage, ShowsHowTheCommandIsTyped)
{
    EXPECT_THAT(
        pageOf(glue()),
        HasSubstr("\\fBtool glue\\fR \\fB\\-\\-in\\fR \\fIFOLDER\\fR [\\fIOPTIONS\\fR] "
                  "[\\fIPART\\fR] [\\fINAME\\fR]\n"));
    EXPECT_THAT(pageOf(m_program), HasSubstr("\\fBtool\\fR [\\fIOPTIONS\\fR] \\fICOMMAND\\fR\n"));
}

TEST_F(ManPage, DescribesOptionsAsHelpDoes)
{
    const std::string page = pageOf(glue());
    EXPECT_THAT(
        page,
        HasSubstr(".TP\n\\fB\\-\\-with\\fR \\fBbone\\fR|\\fBpaste\\fR\n"
                  "\\&.like [this]: it\\(aqs \\e \\(gaodd\\(ga\n"));
    EXPECT_THAT(page, HasSubstr(".TP\n\\fB\\-\\-to\\fR \\fIFILE\\fR (default: \\-)\nWhere to\n"));
    EXPECT_THAT(page, HasSubstr("\\fB\\-\\-in\\fR \\fIFOLDER\\fR (required)\nWhere\n"));
    EXPECT_THAT(page, HasSubstr("\\fB\\-\\-note\\fR \\fIA:B\\fR ...\nNotes\n"));
    EXPECT_THAT(page, HasSubstr(".SH ARGUMENTS\n.TP\n\\fIPART\\fR\nWhat\n"));
}

TEST_F(ManPage, PrintsExamplesAsTheyAre)
{
    EXPECT_THAT(
        pageOf(glue()),
        HasSubstr(".SH EXAMPLES\n.EX\ntool glue \\(aq.x\\(aq\ntool glue \\e\n.EE\n"));
    EXPECT_THAT(pageOf(m_program), Not(HasSubstr("EXAMPLES")));
}

TEST_F(ManPage, SaysWhatTheCommandDoesAndHeeds)
{
    const std::string page = pageOf(glue());
    EXPECT_THAT(page, HasSubstr("\n.SH DESCRIPTION\nPuts two parts together.\n.SH ARGUMENTS\n"));
    EXPECT_THAT(
        page,
        HasSubstr(".SH ENVIRONMENT\n.TP\n\\fBGLUE_POT\\fR\nWhere glue is\n.SH EXIT STATUS\n"));
    EXPECT_THAT(pageOf(m_program), Not(HasSubstr("DESCRIPTION")));
    EXPECT_THAT(pageOf(m_program), Not(HasSubstr("ENVIRONMENT")));
}

TEST_F(ManPage, LeadsToThePagesAroundIt)
{
    EXPECT_THAT(
        pageOf(m_program), HasSubstr(".SH SEE ALSO\n.BR tool\\-cut (1),\n.BR tool\\-glue (1)\n"));
    EXPECT_THAT(
        pageOf(m_program.commands.front()),
        HasSubstr(".SH SEE ALSO\n.BR tool (1),\n.BR tool\\-cut\\-twice (1)\n"));
}

} // namespace

} // namespace scenariomatch
