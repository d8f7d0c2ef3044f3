#include "app/GroundMapper.h"

#include <gtest/gtest.h>

#include <limits>

namespace scenariomatch
{

TEST(GroundMapper, TakesTheFootPointInPixelsWithoutHomography)
{
    const MeasuredBox box{10.0, 20.0, 5.0, 40.0};
    const GroundMapper mapper;
    const TrackPoint position = mapper.position(GroundMapper::foot(box)).value();
    EXPECT_FLOAT_EQ(position.x, 12.5F);
    EXPECT_FLOAT_EQ(position.y, 60.0F);
    EXPECT_FLOAT_EQ(position.z, 0.0F);
    const TrackSize size = mapper.size(box).value();
    EXPECT_FLOAT_EQ(size.width, 5.0F);
    EXPECT_FLOAT_EQ(size.height, 40.0F);
    EXPECT_FLOAT_EQ(size.depth, 5.0F);
}

TEST(GroundMapper, MultipliesPositionsAndSizesByTheScale)
{
    const GroundMapper mapper(0.01, std::nullopt);
    EXPECT_FLOAT_EQ(mapper.givenPosition(250.0, -50.0, 100.0).value().x, 2.5F);
    EXPECT_FLOAT_EQ(mapper.givenPosition(250.0, -50.0, 100.0).value().y, -0.5F);
    EXPECT_FLOAT_EQ(mapper.givenPosition(250.0, -50.0, 100.0).value().z, 1.0F);
    EXPECT_FLOAT_EQ(mapper.givenSize(50.0, 176.0, 30.0).value().height, 1.76F);
    EXPECT_FLOAT_EQ(mapper.position({250.0, 100.0}).value().x, 2.5F);
    EXPECT_FLOAT_EQ(mapper.size({0.0, 0.0, 50.0, 100.0}).value().height, 1.0F);
}

TEST(GroundMapper, MapsTheFootPointAndScalesTheBoxByTheMetresOfAPixelThere)
{
    // A fiftieth of a metre a pixel.
    const GroundMapper plain(
        1.0, GroundMapper::Matrix{0.02, 0.0, 1.0, 0.0, -0.02, 5.0, 0.0, 0.0, 1.0});
    const MeasuredBox box{90.0, 100.0, 20.0, 80.0};
    EXPECT_FLOAT_EQ(plain.position(GroundMapper::foot(box)).value().x, 3.0F);
    EXPECT_FLOAT_EQ(plain.position(GroundMapper::foot(box)).value().y, 1.4F);
    EXPECT_FLOAT_EQ(plain.size(box).value().width, 0.4F);
    EXPECT_FLOAT_EQ(plain.size(box).value().height, 1.6F);
    EXPECT_FLOAT_EQ(plain.size(box).value().depth, 0.4F);

    // With perspective: x / (1 + y / 100).
    const GroundMapper tilted(
        1.0, GroundMapper::Matrix{1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.01, 1.0});
    EXPECT_FLOAT_EQ(tilted.position({50.0, 100.0}).value().x, 25.0F);
    EXPECT_FLOAT_EQ(tilted.size({40.0, 20.0, 20.0, 80.0}).value().height, 40.0F);
}

TEST(GroundMapper, HasNoPositionOnTheHorizonOrFarBeyondAllScenes)
{
    const GroundMapper tilted(
        1.0, GroundMapper::Matrix{1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.01, -1.0});
    EXPECT_FALSE(tilted.position({50.0, 100.0}));
    EXPECT_FALSE(tilted.size({50.0, 90.0, 5.0, 10.0}));
    EXPECT_FALSE(GroundMapper().givenPosition(1e10, 0.0, 0.0));
    EXPECT_FALSE(GroundMapper().givenPosition(0.0, std::numeric_limits<double>::quiet_NaN(), 0.0));
    EXPECT_FALSE(GroundMapper(1e9, std::nullopt).givenSize(0.0, 0.0, 10.0));
}

TEST(GroundMapper, RoundsBoxesToTheNearestPixel)
{
    const TrackBox box = GroundMapper::roundedBox({1.4, 1.5, 2.6, -0.0}).value();
    EXPECT_EQ(box.x, 1);
    EXPECT_EQ(box.y, 2);
    EXPECT_EQ(box.width, 3);
    EXPECT_EQ(box.height, 0);
    EXPECT_EQ(GroundMapper::roundedBox({-1.6, 0.0, 1.0, 1.0}).value().x, -2);
    EXPECT_FALSE(GroundMapper::roundedBox({0.0, 0.0, -1.0, 1.0}));
    EXPECT_FALSE(GroundMapper::roundedBox({0.0, 0.0, 1.0, 1e10}));
    EXPECT_FALSE(
        GroundMapper::roundedBox({std::numeric_limits<double>::infinity(), 0.0, 1.0, 1.0}));
}

} // namespace scenariomatch
