#include "app/JsonLineParser.h"

#include "app/FrameClock.h"
#include "app/JsonNumbers.h"

#include <algorithm>
#include <fmt/format.h>
#include <limits>
#include <utility>

namespace scenariomatch
{

namespace json = simdjson::ondemand;

JsonLineParser::JsonLineParser(
    const TrackReaderOptions& options, TrackProblems& problems, FrameOrder& order)
    : m_ground(options.ground)
    , m_defaultType(options.defaultType)
    , m_limits(options.limits)
    , m_tooManyActors(fmt::format("the frame has more than {} objects", m_limits.mostActors))
    , m_tooLongType(fmt::format("\"type\" is longer than {} bytes", m_limits.longestType))
    , m_problems(problems)
    , m_order(order)
{
}

bool JsonLineParser::parse(const TextLine& line, TrackFrame& frame)
{
    m_line = line;
    m_number.reset();
    m_clock.reset();
    m_hasActors = false;
    m_isRefused = false;
    frame.actors.clear();
    const bool isKept = parseLine(frame);
    if (!isKept) {
        m_problems.countDropped(frame.actors.size());
    }
    return isKept;
}

bool JsonLineParser::parseLine(TrackFrame& frame)
{
    const std::string_view line = m_line.text;
    const simdjson::padded_string_view text(
        line.data(), line.size(), line.size() + TrackInput::kPadding);
    json::object root;
    if (m_json.iterate(text).get(m_document) != simdjson::SUCCESS) {
        return refuse(line.data(), "the line is not JSON");
    }
    const simdjson::error_code error = m_document.get_object().get(root);
    if (error == simdjson::INCOMPLETE_ARRAY_OR_OBJECT) {
        return refuse(line.data(), "the line does not end with its JSON object");
    }
    if (error != simdjson::SUCCESS) {
        return refuse(line.data(), "the line is not a JSON object");
    }
    if (!parseMembers(root, frame)) {
        return m_isRefused ? false : refuseBroken();
    }
    const char* behind = nullptr;
    if (m_document.current_location().get(behind) == simdjson::SUCCESS) {
        return refuse(behind, "there is text behind the frame");
    }
    if (!m_number || !m_hasActors) {
        return refuse(line.data(), m_number ? "\"actors\" is missing" : "\"frame\" is missing");
    }
    return m_order.admit(frame, *m_number, m_clock, placeOf(line.data()));
}

bool JsonLineParser::parseMembers(json::object root, TrackFrame& frame)
{
    for (auto result : root) {
        if (result.error() != simdjson::SUCCESS) {
            return false;
        }
        // Where it lies: a copy costs about as much as the reading.
        json::field&& member = std::move(result).value_unsafe();
        if (!parseMember(member, frame)) {
            return false;
        }
    }
    return true;
}

bool JsonLineParser::parseMember(json::field& member, TrackFrame& frame)
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

bool JsonLineParser::parseFrameNumber(json::value& value)
{
    const char* const at = value.raw_json_token().data();
    std::int64_t number = 0;
    if (readWhole(value, number) != JsonOutcome::Good || number < 0 ||
        number > std::numeric_limits<int>::max()) {
        return refuse(at, "\"frame\" is not a frame number");
    }
    m_number = static_cast<int>(number);
    return true;
}

bool JsonLineParser::parseTime(json::value& value)
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

bool JsonLineParser::parseActors(json::value& value, TrackFrame& frame)
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
    if (m_hasActors) {
        return refuse(at, "\"actors\" stands there twice");
    }
    m_hasActors = true;
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
bool JsonLineParser::parseActor(json::value& value, TrackFrame& frame)
{
    Actor actor;
    actor.place = value.raw_json_token().data();
    json::object members;
    const simdjson::error_code error = value.get_object().get(members);
    if (error == simdjson::INCORRECT_TYPE) {
        m_problems.countRead();
        m_problems.countDropped(1);
        m_problems.report(
            Oddity::Malformed, placeOf(actor.place), "the actor is not a JSON object");
        return true;
    }
    if (error != simdjson::SUCCESS) {
        return false;
    }
    m_problems.countRead();
    TrackedActor& tracked = frame.actors.emplace_back();
    for (auto result : members) {
        if (result.error() != simdjson::SUCCESS) {
            return false;
        }
        json::field&& member = std::move(result).value_unsafe();
        if (!parseActorMember(member, actor, tracked)) {
            return false;
        }
    }
    if (actor.fault == nullptr && frame.actors.size() > m_limits.mostActors) {
        fail(actor, Oddity::TooManyObjects, m_tooManyActors.c_str());
    }
    if (actor.fault != nullptr || !complete(actor, tracked)) {
        frame.actors.pop_back();
        m_problems.countDropped(1);
        m_problems.report(actor.faultKind, placeOf(actor.place), actor.fault);
    }
    return true;
}

bool JsonLineParser::parseActorMember(json::field& member, Actor& actor, TrackedActor& tracked)
{
    const json::raw_json_string name = member.key();
    if (name.unsafe_is_equal("id")) {
        std::int64_t id = 0;
        const JsonOutcome outcome = readWhole(member.value(), id);
        if (outcome == JsonOutcome::Good) {
            actor.id = id;
        } else if (outcome != JsonOutcome::Missing) {
            fail(actor, Oddity::Malformed, "\"id\" is not a whole number");
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

bool JsonLineParser::parseType(json::value& value, Actor& actor, TrackedActor& tracked) const
{
    std::string_view type;
    bool isNull = false;
    if (value.get_string().get(type) == simdjson::SUCCESS) {
        actor.hasType = true;
        if (type.size() > m_limits.longestType) {
            fail(actor, Oddity::OutOfRange, m_tooLongType.c_str());
        } else {
            tracked.type = type;
        }
    } else if (value.is_null().get(isNull) != simdjson::SUCCESS || !isNull) {
        fail(actor, Oddity::Malformed, "\"type\" is not a text");
    }
    return true;
}

bool JsonLineParser::parseList(
    json::value& value,
    std::span<double> numbers,
    bool& isThere,
    Actor& actor,
    const char* fault) const
{
    const JsonOutcome outcome = readNumbers(value, numbers);
    isThere = outcome == JsonOutcome::Good;
    if (outcome == JsonOutcome::NotFinite) {
        fail(actor, Oddity::NotFinite, "a number is not finite");
    } else if (outcome == JsonOutcome::Wrong) {
        fail(actor, Oddity::Malformed, fault);
    }
    return outcome != JsonOutcome::Broken;
}

// Makes a tracked actor of the members; false, and the fault set, when they do not make one.
bool JsonLineParser::complete(Actor& actor, TrackedActor& tracked)
{
    if (!actor.id) {
        return fail(actor, Oddity::Malformed, "\"id\" is missing");
    }
    if (*actor.id < 0) {
        return fail(
            actor, Oddity::Untracked, "the identifier is negative: the object is not tracked");
    }
    if (*actor.id > std::numeric_limits<int>::max()) {
        return fail(actor, Oddity::OutOfRange, "the identifier is greater than 2147483647");
    }
    if (!completePlace(actor, tracked)) {
        return false;
    }
    tracked.id = static_cast<int>(*actor.id);
    if (!actor.hasType) {
        tracked.type = m_defaultType;
    }
    return m_ids.insert(tracked.id) ||
           fail(actor, Oddity::DuplicateId, "the identifier is in this frame already");
}

bool JsonLineParser::completePlace(Actor& actor, TrackedActor& tracked)
{
    if (!actor.hasBox && !actor.hasPosition) {
        return fail(actor, Oddity::Malformed, R"("box" and "position" are missing)");
    }
    const MeasuredBox measured{actor.box[0], actor.box[1], actor.box[2], actor.box[3]};
    if (actor.hasBox) {
        const std::optional<TrackBox> box = GroundMapper::roundedBox(measured);
        if (GroundMapper::isNegative(measured)) {
            return fail(actor, Oddity::NegativeBox, "the box has a negative size");
        }
        if (!box) {
            return fail(actor, Oddity::OutOfRange, "the box has a number out of range");
        }
        tracked.box = *box;
    }
    tracked.position =
        actor.hasPosition
            ? m_ground.givenPosition(actor.position[0], actor.position[1], actor.position[2])
            : m_ground.position(GroundMapper::foot(measured));
    if (!tracked.position) {
        return fail(actor, Oddity::OutOfRange, "the position is out of range");
    }
    if (actor.hasSize && std::min({actor.size[0], actor.size[1], actor.size[2]}) < 0.0) {
        return fail(actor, Oddity::NegativeBox, "the size is negative");
    }
    if (actor.hasSize || actor.hasBox) {
        tracked.size = actor.hasSize
                           ? m_ground.givenSize(actor.size[0], actor.size[1], actor.size[2])
                           : m_ground.size(measured);
        return tracked.size || fail(actor, Oddity::OutOfRange, "the size is out of range");
    }
    return true;
}

// Keeps the first fault; always false.
bool JsonLineParser::fail(Actor& actor, Oddity kind, const char* reason)
{
    if (actor.fault == nullptr) {
        actor.fault = reason;
        actor.faultKind = kind;
    }
    return false;
}

bool JsonLineParser::refuse(const char* at, std::string_view reason)
{
    m_isRefused = true;
    m_problems.report(Oddity::Malformed, placeOf(at), reason);
    return false;
}

bool JsonLineParser::refuseBroken()
{
    const char* at = nullptr;
    if (m_document.current_location().get(at) != simdjson::SUCCESS) {
        at = m_line.text.data() + m_line.text.size();
    }
    return refuse(at, "the line is not JSON from here on");
}

TrackPlace JsonLineParser::placeOf(const char* at) const
{
    const char* const begin = m_line.text.data();
    const bool isInside = at >= begin && at <= begin + m_line.text.size();
    const std::size_t offset = isInside ? static_cast<std::size_t>(at - begin) : m_line.text.size();
    return {m_line.number, offset + 1, m_line.text};
}

} // namespace scenariomatch
