#include "app/report/SceneObjects.h"

#include <gtest/gtest.h>

#include <cmath>

namespace scenariomatch
{

namespace
{

std::vector<ContextElement> lobby()
{
    return {
        {"zone", "Floor", "polygon", {{0, 0, 0}, {8, 0, 0}, {8, 6, 0}}},
        {"camera", "Eye", "point", {{1, 1, 3}}},
        {"object", "Desk", "circle", {{2, 3, 0}}, 1.1, 0.5},
        {"wall", "North", "polygon", {{0, 6, 0}, {8, 6, 0}}}};
}

} // namespace

TEST(SceneObjects, HaveTheTypesAndIdentifiersOfRecognition)
{
    const std::vector<PlanObject> objects = sceneObjects(lobby());
    ASSERT_EQ(objects.size(), 4U);
    EXPECT_EQ(objects[0].type, "Zone");
    EXPECT_EQ(objects[0].id, 0);
    EXPECT_EQ(objects[1].type, "Camera");
    EXPECT_EQ(objects[2].type, "Equipment");
    // The camera gives its own away.
    EXPECT_EQ(objects[2].id, 1);
    EXPECT_EQ(objects[3].type, "Wall");
    EXPECT_EQ(objects[3].id, 2);
}

TEST(SceneObjects, AreDrawnAsPolygonsAndOpenWalls)
{
    const std::vector<PlanObject> objects = sceneObjects(lobby());
    EXPECT_TRUE(objects[0].isClosed);
    EXPECT_EQ(objects[0].shape.size(), 3U);
    EXPECT_FALSE(objects[3].isClosed);
    ASSERT_EQ(objects[2].shape.size(), 24U);
    for (const auto& [x, y] : objects[2].shape) {
        EXPECT_NEAR(std::hypot(x - 2, y - 3), 0.5, 1e-9);
    }
}

TEST(SceneObjects, CoverGround)
{
    EXPECT_EQ(sideOf(sceneObjects(lobby())), 8.0);
    EXPECT_EQ(sideOf(std::vector<PlanObject>()), 0.0);
}

TEST(SceneObjects, AreNotTracked)
{
    EXPECT_TRUE(isTracked("Person"));
    EXPECT_TRUE(isTracked("Group"));
    EXPECT_TRUE(isTracked("Mobile"));
    EXPECT_FALSE(isTracked("Zone"));
    EXPECT_FALSE(isTracked("Scene"));
}

} // namespace scenariomatch
