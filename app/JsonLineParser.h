#pragma once

#include "app/FrameOrder.h"
#include "app/IdSet.h"
#include "app/TrackReader.h"

#include <array>
#include <cstdint>
#include <optional>
#include <simdjson.h>
#include <span>
#include <string>
#include <string_view>

namespace scenariomatch
{

// Makes one frame out of one line of tracks in JSON Lines, as JsonLinesReader describes them; keeps
// its memory for the next line.
//
// Problems and order must outlive it.
//
// Example:
//     JsonLineParser parser(options, problems, order);
//     if (parser.parse(line, frame)) { ... }
class JsonLineParser
{
public:
    JsonLineParser(const TrackReaderOptions& options, TrackProblems& problems, FrameOrder& order);

    // False when the line is left out, and its objects counted as dropped.
    bool parse(const TextLine& line, TrackFrame& frame);

private:
    // The members of an actor as they were found.
    struct Actor
    {
        const char* place = nullptr;
        std::optional<std::int64_t> id;
        bool hasType = false;
        bool hasBox = false;
        bool hasPosition = false;
        bool hasSize = false;
        std::array<double, 4> box{};
        std::array<double, 3> position{};
        std::array<double, 3> size{};
        // The first thing wrong with it.
        const char* fault = nullptr;
        Oddity faultKind = Oddity::Malformed;
    };

    bool parseLine(TrackFrame& frame);
    bool parseMembers(simdjson::ondemand::object root, TrackFrame& frame);
    bool parseMember(simdjson::ondemand::field& member, TrackFrame& frame);
    bool parseFrameNumber(simdjson::ondemand::value& value);
    bool parseTime(simdjson::ondemand::value& value);
    bool parseActors(simdjson::ondemand::value& value, TrackFrame& frame);
    bool parseActor(simdjson::ondemand::value& value, TrackFrame& frame);
    bool parseActorMember(simdjson::ondemand::field& member, Actor& actor, TrackedActor& tracked);
    bool parseType(simdjson::ondemand::value& value, Actor& actor, TrackedActor& tracked) const;
    bool parseList(
        simdjson::ondemand::value& value,
        std::span<double> numbers,
        bool& isThere,
        Actor& actor,
        const char* fault) const;
    bool complete(Actor& actor, TrackedActor& tracked);
    bool completePlace(Actor& actor, TrackedActor& tracked);
    static bool fail(Actor& actor, Oddity kind, const char* reason);

    // Reports the line as malformed; always false.
    bool refuse(const char* at, std::string_view reason);
    bool refuseBroken();
    TrackPlace placeOf(const char* at) const;

    GroundMapper m_ground;
    std::string m_defaultType;
    TrackLimits m_limits;
    // What to say beyond the limits.
    std::string m_tooManyActors;
    std::string m_tooLongType;
    TrackProblems& m_problems;
    FrameOrder& m_order;
    simdjson::ondemand::parser m_json;
    simdjson::ondemand::document m_document;
    IdSet m_ids;
    TextLine m_line;
    std::optional<int> m_number;
    std::optional<TrackClock> m_clock;
    bool m_hasActors = false;
    bool m_isRefused = false;
};

} // namespace scenariomatch
