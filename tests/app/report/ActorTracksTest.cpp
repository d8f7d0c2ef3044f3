#include "app/report/ActorTracks.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace scenariomatch
{

namespace
{

const TrackPrecision kMetres{0.01, 0.05};

TrackedActor actorAt(int id, float x, float y)
{
    TrackedActor actor;
    actor.id = id;
    actor.type = "PERSON";
    actor.position = TrackPoint{x, y, 0.0F};
    return actor;
}

void addFrame(ActorTracks& tracks, std::int64_t time, std::vector<TrackedActor> actors)
{
    TrackFrame frame;
    frame.actors = std::move(actors);
    tracks.addFrame(frame, time);
}

} // namespace

TEST(ActorTracks, WriteKeyPointsAsDifferencesInOrderOfTheActors)
{
    ActorTracks tracks;
    addFrame(tracks, 0, {actorAt(7, 1, 2), actorAt(-3, 0, 0)});
    addFrame(tracks, 40, {actorAt(7, 1.5F, 2), actorAt(-3, 0, 0)});
    addFrame(tracks, 80, {actorAt(7, 1.5F, 1), actorAt(-3, 0, 0)});
    EXPECT_EQ(
        tracks.json(kMetres),
        R"({"quantum":0.01,"steps":[[40,2]],"actors":[{"t":[0,80],"x":[0,0],"y":[0,0],"gap":[]},)"
        R"({"t":[0,40,40],"x":[100,50,0],"y":[200,0,-100],"gap":[]}]})");
}

TEST(ActorTracks, TellWhereAnActorWasOutOfViewForMoreThanASecond)
{
    ActorTracks tracks;
    addFrame(tracks, 0, {actorAt(1, 0, 0)});
    addFrame(tracks, 40, {});
    addFrame(tracks, 1000, {actorAt(1, 5, 0)});
    addFrame(tracks, 1040, {});
    addFrame(tracks, 2001, {actorAt(1, 5, 0)});
    addFrame(tracks, 2041, {actorAt(1, 5, 0)});
    const auto json = nlohmann::json::parse(tracks.json(kMetres));
    EXPECT_EQ(json["actors"][0]["t"], nlohmann::json({0, 1000, 1001, 40}));
    EXPECT_EQ(json["actors"][0]["gap"], nlohmann::json({2}));
}

TEST(ActorTracks, TellWhenFramesCame)
{
    ActorTracks tracks;
    EXPECT_EQ(nlohmann::json::parse(tracks.json(kMetres))["steps"], nlohmann::json::array());
    for (const std::int64_t time : {0, 40, 80, 120, 1000, 1040}) {
        addFrame(tracks, time, {});
    }
    EXPECT_EQ(
        nlohmann::json::parse(tracks.json(kMetres))["steps"],
        nlohmann::json::parse("[[40,3],[880,1],[40,1]]"));
}

TEST(ActorTracks, HaveNoGapBetweenFramesHoweverSlowTheyCome)
{
    ActorTracks tracks;
    addFrame(tracks, 0, {actorAt(1, 0, 0)});
    addFrame(tracks, 5000, {actorAt(1, 1, 0)});
    const auto json = nlohmann::json::parse(tracks.json(kMetres));
    EXPECT_EQ(json["actors"][0]["t"], nlohmann::json({0, 5000}));
    EXPECT_TRUE(json["actors"][0]["gap"].empty());
}

TEST(ActorTracks, TakeAnActorWithoutAPlaceForOutOfView)
{
    TrackedActor unplaced = actorAt(1, 0, 0);
    unplaced.position.reset();
    ActorTracks tracks;
    addFrame(tracks, 0, {unplaced});
    addFrame(tracks, 40, {actorAt(1, 5, 0)});
    addFrame(tracks, 80, {unplaced});
    addFrame(tracks, 1120, {actorAt(1, 5, 0)});
    const auto json = nlohmann::json::parse(tracks.json(kMetres));
    EXPECT_EQ(json["actors"][0]["t"], nlohmann::json({40, 1080}));
    EXPECT_EQ(json["actors"][0]["gap"], nlohmann::json({1}));
    EXPECT_EQ(tracks.actors().at(1).first, 0);
    EXPECT_EQ(tracks.actors().at(1).last, 1120);
    EXPECT_EQ(tracks.actors().at(1).type, "PERSON");
}

TEST(ActorTracks, KnowTheGroundThatTheyCover)
{
    ActorTracks tracks;
    EXPECT_EQ(tracks.side(), 0.0);
    addFrame(tracks, 0, {actorAt(1, -3, 5), actorAt(2, 7, 0)});
    EXPECT_EQ(tracks.side(), 10.0);
}

TEST(TrackPrecision, IsFiveCentimetresAndCoarserInLargeScenes)
{
    EXPECT_DOUBLE_EQ(TrackPrecision::ofScene(0).departure, 0.05);
    EXPECT_DOUBLE_EQ(TrackPrecision::ofScene(100).quantum, 0.01);
    EXPECT_DOUBLE_EQ(TrackPrecision::ofScene(1920).departure, 0.96);
    EXPECT_DOUBLE_EQ(TrackPrecision::ofScene(1920).quantum, 0.192);
}

} // namespace scenariomatch
