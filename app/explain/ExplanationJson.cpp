#include "app/explain/ExplanationJson.h"

#include "app/explain/Summary.h"
#include "app/FrameClock.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

namespace scenariomatch
{

namespace
{

using Json = nlohmann::ordered_json;

Json toJson(const Moment& moment, const Moment& start)
{
    constexpr double kMilliseconds = 1000.0;
    return {
        {"frame", moment.frame},
        {"time", printClock(millisecondsToClock(moment.milliseconds))},
        {"seconds", static_cast<double>(moment.milliseconds - start.milliseconds) / kMilliseconds}};
}

Json toJson(const std::vector<EventObject>& objects)
{
    Json list = Json::array();
    for (const EventObject& object : objects) {
        Json entry{{"variable", object.variable}, {"type", object.type}, {"id", object.id}};
        if (!object.name.empty()) {
            entry["name"] = object.name;
        }
        list.push_back(std::move(entry));
    }
    return list;
}

Json toJson(const Finding& finding)
{
    Json entry{
        {"constraint", finding.constraint}, {"text", finding.text}, {"holds", finding.holds}};
    if (!finding.seen.empty()) {
        entry["seen"] = finding.seen;
    }
    if (!finding.required.empty()) {
        entry["needed"] = finding.required;
    }
    if (finding.margin) {
        entry["margin"] = *finding.margin;
    }
    if (!finding.unit.empty()) {
        entry["unit"] = finding.unit;
    }
    if (!finding.note.empty()) {
        entry["note"] = finding.note;
    }
    return entry;
}

Json toJson(const std::vector<Finding>& findings)
{
    Json list = Json::array();
    for (const Finding& finding : findings) {
        list.push_back(toJson(finding));
    }
    return list;
}

Json toJson(const NearMiss& miss, const Moment& start)
{
    return {
        {"when", toJson(miss.when, start)},
        {"objects", toJson(miss.objects)},
        {"hindsight", miss.isHindsight},
        {"false", toJson(miss.findings)}};
}

Json toJson(const ConstraintOutcome& outcome, const Moment& start)
{
    Json entry{
        {"text", outcome.text}, {"first_false", outcome.firstFalse}, {"pure", outcome.isPure}};
    if (outcome.nearest) {
        entry["nearest"] = toJson(*outcome.nearest, start);
    }
    return entry;
}

Json toJson(const AppearedEvent& event, const Moment& start)
{
    return {
        {"id", event.id},
        {"begin", toJson(event.begin, start)},
        {"end", toJson(event.end, start)},
        {"objects", toJson(event.objects)}};
}

Json toJson(const ConfidenceMiss& miss, const Moment& start)
{
    return {
        {"times", miss.times},
        {"threshold", miss.threshold},
        {"confidence", miss.confidence},
        {"short", miss.threshold - miss.confidence},
        {"when", toJson(miss.nearest.when, start)},
        {"objects", toJson(miss.nearest.objects)}};
}

Json toJson(const WhyNot& why);

Json toJson(const ComponentOutcome& component)
{
    Json entry{
        {"variable", component.variable},
        {"model", component.model},
        {"arguments", component.arguments},
        {"events", component.events}};
    if (component.missing) {
        entry["missing"] = toJson(*component.missing);
    }
    return entry;
}

Json toJson(const WhyNot& why)
{
    Json entry{
        {"model", why.model},
        {"kind", why.kind},
        {"summary", summaryOf(why)},
        {"reason", reasonOf(why)},
        {"from", toJson(why.first, why.start)},
        {"to", toJson(why.last, why.start)},
        {"frames", why.frames},
        {"objects", why.objects},
        {"unseen_objects", why.unseenObjects},
        {"unseen_types", why.unseenTypes},
        {"candidates", why.candidates},
        {"cut_frames", why.cutFrames}};
    entry["events"] = Json::array();
    for (const AppearedEvent& event : why.events) {
        entry["events"].push_back(toJson(event, why.start));
    }
    entry["constraints"] = Json::array();
    for (const ConstraintOutcome& outcome : why.constraints) {
        entry["constraints"].push_back(toJson(outcome, why.start));
    }
    if (why.nearest) {
        entry["nearest"] = toJson(*why.nearest, why.start);
    }
    if (why.confidence) {
        entry["confidence"] = toJson(*why.confidence, why.start);
    }
    if (!why.components.empty()) {
        entry["components"] = Json::array();
        for (const ComponentOutcome& component : why.components) {
            entry["components"].push_back(toJson(component));
        }
    }
    if (!why.apart.empty()) {
        entry["apart"] = why.apart;
    }
    return entry;
}

// Counts and near misses alone; the nearest of all with what tells it from others.
Json outcomeToJson(const WhyNot& why)
{
    Json entry{
        {"frames", why.frames}, {"candidates", why.candidates}, {"cut_frames", why.cutFrames}};
    entry["constraints"] = Json::array();
    for (const ConstraintOutcome& outcome : why.constraints) {
        Json constraint{{"first_false", outcome.firstFalse}};
        if (outcome.nearest) {
            constraint["nearest"] = toJson(*outcome.nearest, why.start);
        }
        entry["constraints"].push_back(std::move(constraint));
    }
    if (why.nearest && why.nearestRank) {
        entry["nearest"] = toJson(*why.nearest, why.start);
        const MissRank& rank = *why.nearestRank;
        entry["nearest"]["rank"] = Json::array({rank.failing, rank.unmeasured, rank.share});
    }
    if (why.confidence) {
        entry["confidence"] = toJson(*why.confidence, why.start);
    }
    if (!why.unseenTypes.empty()) {
        entry["unseen_types"] = why.unseenTypes;
    }
    return entry;
}

Json toJson(const Evidence& evidence)
{
    Json entry{
        {"id", evidence.id},
        {"model", evidence.model},
        {"kind", evidence.kind},
        {"confidence", evidence.confidence},
        {"threshold", evidence.threshold},
        {"begin", toJson(evidence.begin, evidence.start)},
        {"recognised", toJson(evidence.recognised, evidence.start)},
        {"end", toJson(evidence.end, evidence.start)},
        {"objects", toJson(evidence.objects)},
        {"constraints", toJson(evidence.findings)}};
    if (!evidence.parts.empty()) {
        entry["components"] = Json::array();
    }
    for (const EvidencePart& part : evidence.parts) {
        entry["components"].push_back(
            {{"variable", part.variable},
             {"until", toJson(part.until, evidence.start)},
             {"event", toJson(*part.evidence)}});
    }
    return entry;
}

// Names in models may be any bytes. Without an indent all is one line.
std::string textOf(const Json& json, int indent)
{
    return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

Json wholeOf(const Evidence& evidence)
{
    Json entry = toJson(evidence);
    entry["summary"] = summaryOf(evidence);
    return entry;
}

constexpr int kIndent = 2;
constexpr int kOneLine = -1;

} // namespace

void writeExplanation(const WhyNot& why, std::ostream& out)
{
    out << textOf(toJson(why), kIndent) << '\n';
}

void writeExplanation(const Evidence& evidence, std::ostream& out)
{
    out << textOf(wholeOf(evidence), kIndent) << '\n';
}

std::string explanationLine(const Evidence& evidence)
{
    return textOf(wholeOf(evidence), kOneLine);
}

std::string outcomeLine(const WhyNot& why)
{
    return textOf(outcomeToJson(why), kOneLine);
}

} // namespace scenariomatch
