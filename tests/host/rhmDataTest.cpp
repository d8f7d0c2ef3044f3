#include "host/rhmDataActor.h"
#include "host/rhmDataEvent.h"

#include <gtest/gtest.h>

TEST(CSynchronizer, KeepsFrameAndDateTime)
{
    CSynchronizer clock;
    clock.setFrameNumber(12);
    clock.setDateTime(
        {.year = 2026,
         .month = 5,
         .day = 4,
         .hour = 10,
         .minute = 20,
         .second = 48,
         .millisecond = 160});
    EXPECT_EQ(clock.getFrameNumber(), 12);
    EXPECT_EQ(clock.getYear(), 2026);
    EXPECT_EQ(clock.getMonth(), 5);
    EXPECT_EQ(clock.getDay(), 4);
    EXPECT_EQ(clock.getHour(), 10);
    EXPECT_EQ(clock.getMinute(), 20);
    EXPECT_EQ(clock.getSecond(), 48);
    EXPECT_EQ(clock.getMillisecond(), 160);
}

TEST(rhmDataActor, KeepsWhatTheTrackerSaw)
{
    rhmDataActor actor;
    actor.setIdent(-3);
    actor.setType("PERSON");
    actor.setBoundingBox2D({.x = 1, .y = 2, .width = 3, .height = 4});
    actor.setInformation3D(Information3D(1.8F, 0.5F, 0.4F));
    actor.setCurrentPosition({.x = 5.5F, .y = 6.5F, .z = 7.5F});
    EXPECT_EQ(actor.getIdent(), -3);
    EXPECT_EQ(actor.getType(), "PERSON");
    EXPECT_EQ(actor.getBoundingBox2D().x, 1);
    EXPECT_EQ(actor.getBoundingBox2D().y, 2);
    EXPECT_EQ(actor.getBoundingBox2D().width, 3);
    EXPECT_EQ(actor.getBoundingBox2D().height, 4);
    EXPECT_EQ(actor.getInformation3D().getHeight(), 1.8F);
    EXPECT_EQ(actor.getInformation3D().getWidth(), 0.5F);
    EXPECT_EQ(actor.getInformation3D().getDepth(), 0.4F);
    EXPECT_EQ(actor.getCurrentPosition().x, 5.5F);
    EXPECT_EQ(actor.getCurrentPosition().y, 6.5F);
    EXPECT_EQ(actor.getCurrentPosition().z, 7.5F);
}

TEST(rhmDataEvent, KeepsWhatWasRecognised)
{
    CSynchronizer begin;
    begin.setFrameNumber(1);
    CSynchronizer end;
    end.setFrameNumber(9);
    rhmDataEvent event;
    event.setTRXId(7);
    event.setTRXName("Enter");
    event.setTRXType("PrimitiveState");
    event.setTRXAlarmLevel("URGENT");
    event.setTRXConfidence(0.5);
    event.setTRXBegin(begin);
    event.setTRXEnd(end);
    event.setTRXDuration(2.5);
    event.setTRXLatency(0.25);
    event.setInvolvedActorId(3);
    event.setInvolvedActorId(2);
    EXPECT_EQ(event.getTRXId(), 7U);
    EXPECT_EQ(event.getTRXName(), "Enter");
    EXPECT_EQ(event.getTRXType(), "PrimitiveState");
    EXPECT_EQ(event.getTRXAlarmLevel(), "URGENT");
    EXPECT_EQ(event.getTRXConfidence(), 0.5);
    EXPECT_EQ(event.getTRXBegin().getFrameNumber(), 1);
    EXPECT_EQ(event.getTRXEnd().getFrameNumber(), 9);
    EXPECT_EQ(event.getTRXDuration(), 2.5);
    EXPECT_EQ(event.getTRXLatency(), 0.25);
    EXPECT_EQ(event.getInvolvedActorIds(), (std::vector<int>{3, 2}));
}
