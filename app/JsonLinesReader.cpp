#include "app/JsonLinesReader.h"

#include "app/FrameClock.h"

#include <array>
#include <cmath>
#include <fmt/format.h>
#include <limits>
#include <simdjson.h>
#include <span>
#include <utility>

namespace scenariomatch
{

namespace
{

namespace json = simdjson::ondemand;

// What reading a number, a list or an actor came to.
enum class Outcome {
    Good,
    // The value is null.
    Missing,
    // The value is there and is not what it has to be; the line goes on behind it.
    Wrong,
    NotFinite,
    // The line is no JSON.
    Broken,
};

constexpr double kWholeLimit = 9'007'199'254'740'992.0;

bool isBroken(simdjson::error_code error)
{
    return error != simdjson::SUCCESS && error != simdjson::INCORRECT_TYPE &&
           error != simdjson::NUMBER_ERROR;
}

// NaN and Infinity are no JSON, but common programs write them.
bool isNotFiniteWord(std::string_view token)
{
    return token.starts_with("NaN") || token.starts_with("nan") || token.starts_with("Inf") ||
           token.starts_with("inf") || token.starts_with("-Inf") || token.starts_with("-inf");
}

Outcome readNumber(json::value value, double& number)
{
    const std::string_view token = value.raw_json_token();
    const simdjson::error_code error = value.get_double().get(number);
    if (error == simdjson::SUCCESS) {
        return Outcome::Good;
    }
    if (token.starts_with("null")) {
        return Outcome::Missing;
    }
    // A number that JSON allows and that is too great for a double.
    const bool isTooGreat =
        error == simdjson::NUMBER_ERROR && token.find_first_of("eE") != std::string_view::npos;
    return isTooGreat || isNotFiniteWord(token) ? Outcome::NotFinite : Outcome::Wrong;
}

// A whole number, also one written with a fraction of 0.
Outcome readWhole(json::value value, std::int64_t& number)
{
    if (value.get_int64().get(number) == simdjson::SUCCESS) {
        return Outcome::Good;
    }
    double real = 0.0;
    const Outcome outcome = readNumber(value, real);
    if (outcome != Outcome::Good) {
        return outcome;
    }
    if (real != std::floor(real)) {
        return Outcome::Wrong;
    }
    number = static_cast<std::int64_t>(std::max(-kWholeLimit, std::min(real, kWholeLimit)));
    return Outcome::Good;
}

// A list of exactly as many numbers.
Outcome readNumbers(json::value value, std::span<double> numbers)
{
    json::array list;
    const simdjson::error_code error = value.get_array().get(list);
    if (error != simdjson::SUCCESS) {
        bool isNull = false;
        if (isBroken(error)) {
            return Outcome::Broken;
        }
        return value.is_null().get(isNull) == simdjson::SUCCESS && isNull ? Outcome::Missing
                                                                          : Outcome::Wrong;
    }
    std::size_t count = 0;
    Outcome worst = Outcome::Good;
    for (auto element : list) {
        json::value number;
        if (element.get(number) != simdjson::SUCCESS) {
            return Outcome::Broken;
        }
        double ignored = 0.0;
        const Outcome outcome =
            readNumber(number, count < numbers.size() ? numbers[count] : ignored);
        if (outcome != Outcome::Good && worst == Outcome::Good) {
            worst = outcome == Outcome::NotFinite ? outcome : Outcome::Wrong;
        }
        ++count;
    }
    return worst == Outcome::Good && count != numbers.size() ? Outcome::Wrong : worst;
}

} // namespace

// Makes one frame out of one line; keeps its memory for the next line.
class JsonLinesReader::LineParser
{
public:
    LineParser(const TrackReaderOptions& options, TrackProblems& problems, FrameOrder& order)
        : m_ground(options.ground)
        , m_defaultType(options.defaultType)
        , m_limits(options.limits)
        , m_problems(problems)
        , m_order(order)
    {
    }

    // False when the line is left out.
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
        TrackProblemKind faultKind = TrackProblemKind::Malformed;
    };

    bool parseMembers(json::object root, TrackFrame& frame);
    bool parseMember(json::field& member, TrackFrame& frame);
    bool parseFrameNumber(json::value value);
    bool parseTime(json::value value);
    bool parseActors(json::value value, TrackFrame& frame);
    bool parseActor(json::value value, TrackFrame& frame);
    bool parseActorMember(json::field& member, Actor& actor, TrackedActor& tracked);
    bool parseType(json::value value, Actor& actor, TrackedActor& tracked) const;
    bool parseList(
        json::value value,
        std::span<double> numbers,
        bool& isThere,
        Actor& actor,
        const char* fault) const;
    bool complete(Actor& actor, TrackedActor& tracked);
    bool completePlace(Actor& actor, TrackedActor& tracked);
    static bool fail(Actor& actor, TrackProblemKind kind, const char* reason);

    // Reports the line as malformed; always false.
    bool refuse(const char* at, std::string_view reason);
    bool refuseBroken();
    TrackPlace placeOf(const char* at) const;

    GroundMapper m_ground;
    std::string m_defaultType;
    TrackLimits m_limits;
    TrackProblems& m_problems;
    FrameOrder& m_order;
    json::parser m_json;
    json::document m_document;
    IdSet m_ids;
    TextLine m_line;
    std::optional<int> m_number;
    std::optional<TrackClock> m_clock;
    bool m_hasActors = false;
    bool m_isRefused = false;
};

bool JsonLinesReader::LineParser::parse(const TextLine& line, TrackFrame& frame)
{
    m_line = line;
    m_number.reset();
    m_clock.reset();
    m_hasActors = false;
    m_isRefused = false;
    frame.actors.clear();
    const simdjson::padded_string_view text(
        line.text.data(), line.text.size(), line.text.size() + TrackInput::kPadding);
    json::object root;
    if (m_json.iterate(text).get(m_document) != simdjson::SUCCESS) {
        return refuse(line.text.data(), "the line is not JSON");
    }
    const simdjson::error_code error = m_document.get_object().get(root);
    if (error == simdjson::INCOMPLETE_ARRAY_OR_OBJECT) {
        return refuse(line.text.data(), "the line does not end with its JSON object");
    }
    if (error != simdjson::SUCCESS) {
        return refuse(line.text.data(), "the line is not a JSON object");
    }
    if (!parseMembers(root, frame)) {
        return m_isRefused ? false : refuseBroken();
    }
    const char* behind = nullptr;
    if (m_document.current_location().get(behind) == simdjson::SUCCESS) {
        return refuse(behind, "there is text behind the frame");
    }
    if (!m_number || !m_hasActors) {
        return refuse(
            line.text.data(), m_number ? "\"actors\" is missing" : "\"frame\" is missing");
    }
    return m_order.admit(frame, *m_number, m_clock, placeOf(line.text.data()));
}

bool JsonLinesReader::LineParser::parseMembers(json::object root, TrackFrame& frame)
{
    for (auto result : root) {
        json::field member;
        if (std::move(result).get(member) != simdjson::SUCCESS || !parseMember(member, frame)) {
            return false;
        }
    }
    return true;
}

bool JsonLinesReader::LineParser::parseMember(json::field& member, TrackFrame& frame)
{
    const json::raw_json_string name = member.key();
    if (name.unsafe_is_equal("frame")) {
        return parseFrameNumber(member.value());
    }
    if (name.unsafe_is_equal("time")) {
        return parseTime(member.value());
    }
    if (name.unsafe_is_equal("actors")) {
        return parseActors(member.value(), frame);
    }
    return true;
}

bool JsonLinesReader::LineParser::parseFrameNumber(json::value value)
{
    const char* const at = value.raw_json_token().data();
    std::int64_t number = 0;
    if (readWhole(value, number) != Outcome::Good || number < 0 ||
        number > std::numeric_limits<int>::max()) {
        return refuse(at, "\"frame\" is not a frame number");
    }
    m_number = static_cast<int>(number);
    return true;
}

bool JsonLinesReader::LineParser::parseTime(json::value value)
{
    const char* const at = value.raw_json_token().data();
    std::string_view text;
    bool isNull = false;
    if (value.get_string().get(text) == simdjson::SUCCESS) {
        m_clock = parseClock(text);
    } else if (value.is_null().get(isNull) == simdjson::SUCCESS && isNull) {
        return true;
    }
    return m_clock || refuse(at, "\"time\" is not a date and time");
}

bool JsonLinesReader::LineParser::parseActors(json::value value, TrackFrame& frame)
{
    const char* const at = value.raw_json_token().data();
    json::array list;
    const simdjson::error_code error = value.get_array().get(list);
    if (error == simdjson::INCORRECT_TYPE) {
        return refuse(at, "\"actors\" is not a list");
    }
    if (error != simdjson::SUCCESS) {
        return false;
    }
    m_hasActors = true;
    frame.actors.clear();
    m_ids.clear();
    for (auto element : list) {
        json::value actor;
        if (element.get(actor) != simdjson::SUCCESS || !parseActor(actor, frame)) {
            return false;
        }
    }
    return true;
}

// False when the line is broken; an actor that is left out is reported and the line goes on.
bool JsonLinesReader::LineParser::parseActor(json::value value, TrackFrame& frame)
{
    Actor actor;
    actor.place = value.raw_json_token().data();
    json::object members;
    const simdjson::error_code error = value.get_object().get(members);
    if (error == simdjson::INCORRECT_TYPE) {
        m_problems.report(
            TrackProblemKind::Malformed, placeOf(actor.place), "the actor is not a JSON object");
        return true;
    }
    if (error != simdjson::SUCCESS) {
        return false;
    }
    TrackedActor& tracked = frame.actors.emplace_back();
    for (auto result : members) {
        json::field member;
        if (std::move(result).get(member) != simdjson::SUCCESS ||
            !parseActorMember(member, actor, tracked)) {
            return false;
        }
    }
    if (actor.fault == nullptr && frame.actors.size() > m_limits.mostActors) {
        fail(actor, TrackProblemKind::OutOfRange, "the frame has too many objects");
    }
    if (actor.fault != nullptr || !complete(actor, tracked)) {
        frame.actors.pop_back();
        m_problems.report(actor.faultKind, placeOf(actor.place), actor.fault);
    }
    return true;
}

bool JsonLinesReader::LineParser::parseActorMember(
    json::field& member, Actor& actor, TrackedActor& tracked)
{
    const json::raw_json_string name = member.key();
    if (name.unsafe_is_equal("id")) {
        std::int64_t id = 0;
        const Outcome outcome = readWhole(member.value(), id);
        if (outcome == Outcome::Good) {
            actor.id = id;
        } else if (outcome != Outcome::Missing) {
            fail(actor, TrackProblemKind::Malformed, "\"id\" is not a whole number");
        }
        return true;
    }
    if (name.unsafe_is_equal("type")) {
        return parseType(member.value(), actor, tracked);
    }
    if (name.unsafe_is_equal("box")) {
        return parseList(
            member.value(), actor.box, actor.hasBox, actor, "\"box\" is not a list of 4 numbers");
    }
    if (name.unsafe_is_equal("position")) {
        return parseList(
            member.value(),
            actor.position,
            actor.hasPosition,
            actor,
            "\"position\" is not a list of 3 numbers");
    }
    if (name.unsafe_is_equal("size")) {
        return parseList(
            member.value(),
            actor.size,
            actor.hasSize,
            actor,
            "\"size\" is not a list of 3 numbers");
    }
    return true;
}

bool JsonLinesReader::LineParser::parseType(
    json::value value, Actor& actor, TrackedActor& tracked) const
{
    std::string_view type;
    bool isNull = false;
    if (value.get_string().get(type) == simdjson::SUCCESS) {
        actor.hasType = true;
        if (type.size() > m_limits.longestType) {
            fail(actor, TrackProblemKind::OutOfRange, "\"type\" is too long");
        } else {
            tracked.type = type;
        }
    } else if (value.is_null().get(isNull) != simdjson::SUCCESS || !isNull) {
        fail(actor, TrackProblemKind::Malformed, "\"type\" is not a text");
    }
    return true;
}

bool JsonLinesReader::LineParser::parseList(
    json::value value,
    std::span<double> numbers,
    bool& isThere,
    Actor& actor,
    const char* fault) const
{
    const Outcome outcome = readNumbers(value, numbers);
    isThere = outcome == Outcome::Good;
    if (outcome == Outcome::NotFinite) {
        fail(actor, TrackProblemKind::NotFinite, "a number is not finite");
    } else if (outcome == Outcome::Wrong) {
        fail(actor, TrackProblemKind::Malformed, fault);
    }
    return outcome != Outcome::Broken;
}

// Makes a tracked actor of the members; false, and the fault set, when they do not make one.
bool JsonLinesReader::LineParser::complete(Actor& actor, TrackedActor& tracked)
{
    if (!actor.id) {
        return fail(actor, TrackProblemKind::Malformed, "\"id\" is missing");
    }
    if (*actor.id < 0) {
        return fail(
            actor,
            TrackProblemKind::Untracked,
            "the identifier is negative: the object is not tracked");
    }
    if (*actor.id > std::numeric_limits<int>::max()) {
        return fail(
            actor, TrackProblemKind::OutOfRange, "the identifier is greater than 2147483647");
    }
    if (!completePlace(actor, tracked)) {
        return false;
    }
    tracked.id = static_cast<int>(*actor.id);
    if (!actor.hasType) {
        tracked.type = m_defaultType;
    }
    return m_ids.insert(tracked.id) ||
           fail(actor, TrackProblemKind::DuplicateId, "the identifier is in this frame already");
}

bool JsonLinesReader::LineParser::completePlace(Actor& actor, TrackedActor& tracked)
{
    if (!actor.hasBox && !actor.hasPosition) {
        return fail(actor, TrackProblemKind::Malformed, R"("box" and "position" are missing)");
    }
    const MeasuredBox measured{actor.box[0], actor.box[1], actor.box[2], actor.box[3]};
    if (actor.hasBox) {
        const std::optional<TrackBox> box = GroundMapper::roundedBox(measured);
        if (!box) {
            return fail(actor, TrackProblemKind::OutOfRange, "the box has a number out of range");
        }
        tracked.box = *box;
    }
    tracked.position =
        actor.hasPosition
            ? m_ground.givenPosition(actor.position[0], actor.position[1], actor.position[2])
            : m_ground.position(GroundMapper::foot(measured));
    if (!tracked.position) {
        return fail(actor, TrackProblemKind::OutOfRange, "the position is out of range");
    }
    if (actor.hasSize || actor.hasBox) {
        tracked.size = actor.hasSize
                           ? m_ground.givenSize(actor.size[0], actor.size[1], actor.size[2])
                           : m_ground.size(measured);
        return tracked.size ||
               fail(actor, TrackProblemKind::OutOfRange, "the size is out of range");
    }
    return true;
}

// Keeps the first fault; always false.
bool JsonLinesReader::LineParser::fail(Actor& actor, TrackProblemKind kind, const char* reason)
{
    if (actor.fault == nullptr) {
        actor.fault = reason;
        actor.faultKind = kind;
    }
    return false;
}

bool JsonLinesReader::LineParser::refuse(const char* at, std::string_view reason)
{
    m_isRefused = true;
    m_problems.report(TrackProblemKind::Malformed, placeOf(at), reason);
    return false;
}

bool JsonLinesReader::LineParser::refuseBroken()
{
    const char* at = nullptr;
    if (m_document.current_location().get(at) != simdjson::SUCCESS) {
        at = m_line.text.data() + m_line.text.size();
    }
    return refuse(at, "the line is not JSON from here on");
}

TrackPlace JsonLinesReader::LineParser::placeOf(const char* at) const
{
    const char* const begin = m_line.text.data();
    const bool isInside = at >= begin && at <= begin + m_line.text.size();
    const std::size_t offset = isInside ? static_cast<std::size_t>(at - begin) : m_line.text.size();
    return {m_line.number, offset + 1, m_line.text};
}

JsonLinesReader::JsonLinesReader(
    std::unique_ptr<TrackInput> input, const TrackReaderOptions& options, TrackProblems& problems)
    : m_input(std::move(input))
    , m_problems(problems)
    , m_order(FrameTimer(options.start, options.framesPerSecond), problems)
    , m_parser(std::make_unique<LineParser>(options, problems, m_order))
{
}

JsonLinesReader::~JsonLinesReader() = default;

bool JsonLinesReader::next(TrackFrame& frame)
{
    TextLine line;
    while (!m_problems.isStopped() && m_input->nextLine(line)) {
        if (line.isTooLong) {
            m_problems.report(
                TrackProblemKind::TooLong, {line.number, 1, line.text}, "the line is too long");
            continue;
        }
        if (line.text.find_first_not_of(" \t") == std::string_view::npos) {
            continue;
        }
        if (m_parser->parse(line, frame) && !m_problems.isStopped()) {
            return true;
        }
    }
    if (!m_problems.isStopped() && !m_input->damage().empty() && !m_isDamageReported) {
        m_isDamageReported = true;
        m_problems.report(TrackProblemKind::Damaged, {line.number, 0, {}}, m_input->damage());
    }
    return false;
}

} // namespace scenariomatch
