#include "app/StreamRedirection.h"

#include "app/ProgressBar.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string_view>

namespace scenariomatch
{

TEST(StreamRedirection, SendsTextElsewhereForAsLongAsItLives)
{
    std::ostringstream stream;
    std::ostringstream target;
    stream << "a";
    {
        const StreamRedirection redirection(stream, target.rdbuf());
        static_cast<std::ostream&>(stream) << "b";
    }
    stream << "c";
    EXPECT_EQ(stream.str(), "ac");
    EXPECT_EQ(target.str(), "b");
}

TEST(StreamRedirection, DropsTextWithoutATarget)
{
    std::ostringstream buffer;
    std::ostream stream(buffer.rdbuf());
    {
        const StreamRedirection redirection(stream, nullptr);
        stream << "b" << 7 << std::flush;
        EXPECT_FALSE(stream.good());
    }
    stream << "c";
    EXPECT_EQ(buffer.str(), "c");
}

TEST(LineFilter, TakesOutWholeLines)
{
    std::ostringstream talk;
    std::ostringstream trace;
    {
        const auto isTakenOut = [](std::string_view line) { return line.starts_with("take "); };
        LineFilter filter(isTakenOut, *talk.rdbuf(), trace);
        std::ostream stream(&filter);
        stream << "take " << 1 << "\nkeep\n do not take\n\ntake this\ncut off";
    }
    EXPECT_EQ(talk.str(), "keep\n do not take\n\ncut off");
    EXPECT_EQ(trace.str(), "take 1\ntake this\n");
}

TEST(ProgressBar, SaysHowFarTheWorkIs)
{
    EXPECT_EQ(
        ProgressBar::line(500, 0.25, 2.0),
        "[######                  ]  25 %  500 frames, 250/s  0:00:06 left");
    EXPECT_EQ(ProgressBar::line(500, -1.0, 2.0), "500 frames, 250/s");
    EXPECT_EQ(ProgressBar::line(0, 0.0, 0.0), "[                        ]   0 %  0 frames, 0/s");
    EXPECT_EQ(
        ProgressBar::line(1, 1e-12, 1.0),
        "[                        ]   0 %  1 frames, 1/s  99:59:59 left");
}

TEST(ProgressBar, IsSilentForWorkThatIsDoneAtOnce)
{
    std::ostringstream terminal;
    {
        ProgressBar bar(terminal);
        bar.show(1, 0.5);
    }
    EXPECT_EQ(terminal.str(), "");
}

} // namespace scenariomatch
