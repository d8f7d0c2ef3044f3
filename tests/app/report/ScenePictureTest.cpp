#include "app/report/ScenePicture.h"

#include "tests/app/ProgramRun.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

std::string fileWith(const std::string& bytes)
{
    std::string path = temporary("picture");
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

void expectRefused(const std::string& path, const std::string& reason)
{
    std::string error;
    EXPECT_FALSE(readImage(path, error));
    EXPECT_EQ(error, path + ": " + reason);
}

} // namespace

TEST(ScenePicture, IsToldByItsFirstBytes)
{
    std::string error;
    EXPECT_EQ(
        readImage(fileWith(std::string("\x89PNG\r\n\x1a\n\0rest", 13)), error),
        "data:image/png;base64,iVBORw0KGgoAcmVzdA==");
    EXPECT_EQ(readImage(fileWith("\xff\xd8\xff\xe0"), error), "data:image/jpeg;base64,/9j/4A==");
}

TEST(ScenePicture, IsNothingElse)
{
    expectRefused(fileWith("<svg onload='alert(1)'/>"), "the picture is neither PNG nor JPEG");
    expectRefused(fileWith(""), "the picture is neither PNG nor JPEG");
    expectRefused(temporary("nowhere"), "No such file or directory");
}

TEST(ScenePicture, IsNotHuge)
{
    const std::string head = "\xff\xd8\xff";
    std::string error;
    EXPECT_TRUE(
        readImage(fileWith(head + std::string(ScenePicture::kLargest - head.size(), 'x')), error));
    expectRefused(
        fileWith(head + std::string(ScenePicture::kLargest, 'x')),
        "the picture is larger than 16 MiB");
}

TEST(ScenePicture, LiesOnTheGround)
{
    using Placement = std::array<double, 4>;
    EXPECT_EQ(parsePlacement("0,-1.5,20,1e1"), (Placement{0, -1.5, 20, 10}));
    // Where y grows downwards.
    EXPECT_EQ(parsePlacement("0,480,640,0"), (Placement{0, 480, 640, 0}));
    for (const char* const text :
         {"",
          "1",
          "0,0,1",
          "0,0,1,1,1",
          "0,0,1,1 ",
          "0;0;1;1",
          "0,0,0,1",
          "1,0,0,1",
          "0,1,1,1",
          "0,0,inf,1",
          "nan,0,1,1",
          "a,b,c,d",
          "0,0,1,"}) {
        EXPECT_FALSE(parsePlacement(text)) << text;
    }
}

} // namespace scenariomatch
