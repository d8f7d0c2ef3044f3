#include "host/rhmAbstractProcessEventRecognition.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

class Idle : public rhmAbstractProcess
{
public:
    QString identifier() const override { return QStringLiteral("Idle"); }
};

class Recogniser : public rhmAbstractProcessEventRecognition
{
public:
    QString identifier() const override { return QStringLiteral("Recogniser"); }

    bool init() override { return true; }

    bool performEventRecognition() override { return true; }

    Events getCurrentFrameEvents() const override { return {}; }

    Events getAllFramesEvents() const override { return {}; }

    std::string generateEventListStreamToNotify() const override { return {}; }

    std::string generateEventListStorageStream() const override { return {}; }
};

} // namespace

TEST(rhmAbstractProcess, StartsWithAClockOfItsOwn)
{
    const Idle first;
    const Idle second;
    ASSERT_NE(first.getSynchronizer(), nullptr);
    EXPECT_NE(first.getSynchronizer(), second.getSynchronizer());
}

TEST(rhmAbstractProcess, SharesAClockAndIgnoresNone)
{
    const auto clock = std::make_shared<CSynchronizer>();
    Idle process;
    process.setSynchronizer(clock);
    EXPECT_EQ(process.getSynchronizer(), clock);
    process.setSynchronizer(nullptr);
    EXPECT_EQ(process.getSynchronizer(), clock);
}

TEST(rhmAbstractProcessEventRecognition, KeepsPathsAndActors)
{
    Recogniser process;
    const auto actor = QSharedPointer<rhmDataActor>::create();
    process.setParameterFile("lobby.yml");
    process.setCommonFilePath("models/");
    process.setActors({actor});
    EXPECT_EQ(process.getParameterFile(), "lobby.yml");
    EXPECT_EQ(process.getCommonFilePath(), "models/");
    ASSERT_EQ(process.actors().size(), 1);
    EXPECT_EQ(process.actors().front(), actor);
}

TEST(rhmAbstractProcessEventRecognition, CopiesClockPathsAndActors)
{
    Recogniser source;
    source.setParameterFile("lobby.yml");
    source.setCommonFilePath("models/");
    const auto actor = QSharedPointer<rhmDataActor>::create();
    source.setActors({actor});
    Recogniser target;
    target.copy(source);
    EXPECT_EQ(target.getSynchronizer(), source.getSynchronizer());
    EXPECT_EQ(target.getParameterFile(), "lobby.yml");
    EXPECT_EQ(target.getCommonFilePath(), "models/");
    EXPECT_EQ(target.actors(), source.actors());
}

TEST(rhmAbstractProcessEventRecognition, CopiesOnlyTheClockOfAnotherKindOfProcess)
{
    const Idle source;
    Recogniser target;
    target.setParameterFile("lobby.yml");
    target.copy(source);
    EXPECT_EQ(target.getSynchronizer(), source.getSynchronizer());
    EXPECT_EQ(target.getParameterFile(), "lobby.yml");
}
