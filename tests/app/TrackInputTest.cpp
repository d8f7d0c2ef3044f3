#include "app/TrackInput.h"

#include "tests/app/TrackReading.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace scenariomatch
{

namespace
{

std::unique_ptr<TrackInput> openInput(const std::string& path, TrackInput::Limits limits = {})
{
    std::string error;
    std::unique_ptr<TrackInput> input = TrackInput::open(path, limits, error);
    EXPECT_EQ(error, "");
    return input;
}

// The lines, each with its number; "!" stands behind one that was too long.
std::string linesOf(TrackInput& input)
{
    std::string lines;
    TextLine line;
    while (input.nextLine(line)) {
        lines += std::to_string(line.number) + (line.isTooLong ? "!" : "") + "[" +
                 std::string(line.text) + "]";
    }
    return lines;
}

} // namespace

TEST(TrackInput, HandsOutLinesWithoutTheirEnds)
{
    EXPECT_EQ(
        linesOf(*openInput(writeTemporary("a", "one\ntwo\r\n\nfour"))), "1[one]2[two]3[]4[four]");
    EXPECT_EQ(linesOf(*openInput(writeTemporary("b", "\n"))), "1[]");
    EXPECT_EQ(linesOf(*openInput(writeTemporary("c", ""))), "");
    EXPECT_EQ(linesOf(*openInput(writeTemporary("d", "\xEF\xBB\xBFone\n"))), "1[one]");
}

TEST(TrackInput, ReadsGzipByItsFirstBytesWhateverTheName)
{
    std::string text;
    for (int i = 0; i < 100'000; ++i) {
        text += std::to_string(i) + "\n";
    }
    const std::string path = writeCompressed("packed.txt", text);
    EXPECT_EQ(linesOf(*openInput(path)), linesOf(*openInput(writeTemporary("plain.gz", text))));
}

TEST(TrackInput, ReadsGzipFilesPutOneBehindTheOther)
{
    std::stringstream both;
    both << std::ifstream(writeCompressed("a", "one\n"), std::ios::binary).rdbuf()
         << std::ifstream(writeCompressed("b", "two\n"), std::ios::binary).rdbuf();
    const auto input = openInput(writeTemporary("both", both.str()));
    EXPECT_EQ(linesOf(*input), "1[one]2[two]");
    EXPECT_EQ(input->damage(), "");
}

TEST(TrackInput, HandsOutWhatStandsBeforeDamagedData)
{
    std::string text;
    for (int i = 0; i < 200'000; ++i) {
        text += std::to_string(i * 7919) + "\n";
    }
    std::stringstream packed;
    packed << std::ifstream(writeCompressed("a", text), std::ios::binary).rdbuf();
    const auto cut =
        openInput(writeTemporary("cut", packed.str().substr(0, packed.str().size() / 2)));
    EXPECT_GT(linesOf(*cut).size(), 1000U);
    EXPECT_EQ(cut->damage(), "the compressed data ends too early");

    std::string broken = packed.str();
    broken.replace(broken.size() / 2, 40, 40, '\xFF');
    const auto damaged = openInput(writeTemporary("broken", broken));
    linesOf(*damaged);
    EXPECT_EQ(damaged->damage(), "the compressed data is damaged");
}

TEST(TrackInput, CutsLinesBeyondTheLimitAndGoesOnBehindThem)
{
    TrackInput::Limits limits;
    limits.longestLine = 5;
    const std::string path =
        writeTemporary("a", "12345\n123456\nab\n" + std::string(3'000'000, 'x') + "\nend");
    const auto input = openInput(path, limits);
    TextLine line;
    ASSERT_TRUE(input->nextLine(line));
    EXPECT_EQ(line.text, "12345");
    EXPECT_FALSE(line.isTooLong);
    ASSERT_TRUE(input->nextLine(line));
    EXPECT_EQ(line.text, "123456");
    EXPECT_TRUE(line.isTooLong);
    ASSERT_TRUE(input->nextLine(line));
    EXPECT_EQ(line.text, "ab");
    ASSERT_TRUE(input->nextLine(line));
    EXPECT_TRUE(line.isTooLong);
    EXPECT_EQ(line.text, std::string(1024, 'x'));
    ASSERT_TRUE(input->nextLine(line));
    EXPECT_EQ(line.text, "end");
    EXPECT_EQ(line.number, 5U);
    EXPECT_FALSE(input->nextLine(line));
}

TEST(TrackInput, KeepsLinesWholeThatAreLongerThanTheFirstBuffer)
{
    const std::string longLine(1'000'000, 'y');
    EXPECT_EQ(
        linesOf(*openInput(writeTemporary("a", "one\n" + longLine + "\ntwo"))),
        "1[one]2[" + longLine + "]3[two]");
}

TEST(TrackInput, HandsOutPiecesOfLongLines)
{
    TrackInput::Limits limits;
    limits.longestPiece = 4;
    const auto input = openInput(writeTemporary("a", "ab\n123456\n\nz"), limits);
    std::string pieces;
    TextPiece piece;
    while (input->nextPiece(piece)) {
        pieces += std::to_string(piece.lineNumber) + "[" + std::string(piece.text) + "]";
    }
    EXPECT_EQ(pieces, "1[ab\n]2[1234]2[56\n]3[\n]4[z]");
}

TEST(TrackInput, HandsOutALineOfAPipeBeforeTheNextIsWritten)
{
    const std::string path = temporaryFile("pipe");
    ::unlink(path.c_str());
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    // Open for reading as well, so that opening waits for nobody.
    const int writer = ::open(path.c_str(), O_RDWR);
    const auto input = openInput(path);
    TextLine line;
    for (const std::string text : {"first\n", "second\n"}) {
        ASSERT_EQ(::write(writer, text.data(), text.size()), static_cast<ssize_t>(text.size()));
        ASSERT_TRUE(input->nextLine(line));
        EXPECT_EQ(std::string(line.text) + "\n", text);
    }
    EXPECT_LT(input->progress(), 0.0);
    ::close(writer);
    EXPECT_FALSE(input->nextLine(line));
    ::unlink(path.c_str());
}

TEST(TrackInput, SaysWhyAFileCannotBeOpened)
{
    std::string error;
    EXPECT_EQ(TrackInput::open(temporaryFile("nothing"), {}, error), nullptr);
    EXPECT_EQ(error, "No such file or directory");
    EXPECT_EQ(TrackInput::open(testing::TempDir(), {}, error), nullptr);
    EXPECT_EQ(error, "Is a directory");
}

TEST(TrackInput, KnowsHowMuchOfAFileIsRead)
{
    const auto input = openInput(writeTemporary("a", "one\ntwo\n"));
    EXPECT_EQ(input->progress(), 0.0);
    linesOf(*input);
    EXPECT_EQ(input->progress(), 1.0);
}

} // namespace scenariomatch
