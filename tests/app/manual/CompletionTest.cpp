#include "app/manual/Completion.h"

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
using Completion = ManualExample;

TEST_F(Completion, BashKnowsWhatFollowsCommandsAndOptions)
{
    const std::string script = bashCompletion(m_program);
    EXPECT_THAT(script, HasSubstr("'tool cut' | 'tool cut twice' | 'tool glue') command+="));
    EXPECT_THAT(script, HasSubstr("'tool glue:--with') words='bone paste' ;;\n"));
    EXPECT_THAT(script, HasSubstr("'tool glue:--to') compopt -o default ;;\n"));
    EXPECT_THAT(script, HasSubstr("'tool glue:--in') compopt -o dirnames ;;\n"));
    EXPECT_THAT(script, HasSubstr("'tool glue:--note') : ;;\n"));
    EXPECT_THAT(script, Not(HasSubstr("'tool glue:--dry')")));
    EXPECT_THAT(script, HasSubstr("'tool glue:'*) compopt -o default ;;\n"));
    EXPECT_THAT(script, HasSubstr("'tool:'*) words='cut glue' ;;\n"));
    EXPECT_THAT(script, HasSubstr("'tool cut twice:'*) words='-h --help' ;;\n"));
    EXPECT_THAT(script, HasSubstr("\ncomplete -F _tool tool\n"));
}

TEST_F(Completion, ZshSpecificationsAreQuoted)
{
    const std::string script = zshCompletion(m_program);
    EXPECT_THAT(script, StartsWith("#compdef tool\n"));
    EXPECT_THAT(
        script,
        HasSubstr(
            "'(--with)--with=[.like \\[this\\]: it'\\''s \\\\ `odd`]:bone|paste:(bone paste)'"));
    EXPECT_THAT(script, HasSubstr("'*--note=[Notes]:A\\:B: '"));
    EXPECT_THAT(script, HasSubstr("'(--in)--in=[Where]:FOLDER:_files -/'"));
    EXPECT_THAT(script, HasSubstr("':PART:_files'"));
    EXPECT_THAT(script, HasSubstr("twice\\:\"Cut \\\"twice\\\" for \\$5\""));
}

TEST_F(Completion, FishDescriptionsAreQuoted)
{
    const std::string script = fishCompletion(m_program);
    EXPECT_THAT(
        script,
        HasSubstr("complete -c tool -n '__tool_at glue' -l with -x -a 'bone paste' "
                  "-d '.like [this]: it\\'s \\\\ `odd`'\n"));
    EXPECT_THAT(script, HasSubstr("if contains -- \"$longer\" 'cut' 'cut twice' 'glue'\n"));
    EXPECT_THAT(script, HasSubstr("-n '__tool_at cut' -a twice -d 'Cut \"twice\" for $5'\n"));
    EXPECT_THAT(script, HasSubstr("-n '__tool_at glue' -l to -r -F -d 'Where to'\n"));
    EXPECT_THAT(script, HasSubstr("-l in -x -a '(__fish_complete_directories)' -d 'Where'\n"));
    EXPECT_THAT(script, HasSubstr("-n '__tool_at glue' -F\n"));
    EXPECT_THAT(script, HasSubstr("-s h -l help -d "));
}

} // namespace

} // namespace scenariomatch
