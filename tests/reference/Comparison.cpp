#include "tests/reference/Comparison.h"

#include "tests/reference/TestOperators.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <sstream>

namespace scenariomatch
{

namespace
{

using Agents = std::map<int, std::shared_ptr<CSAgent>>;
using Value = std::shared_ptr<CSBasicType>;

// A list of more instances than this is cut off.
constexpr int kMostInstances = 60;

bool same(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

std::string stampText(const std::shared_ptr<CSTimeStamp>& stamp)
{
    std::ostringstream text;
    if (stamp) {
        text << std::setprecision(12) << stamp->m_frameID << "@" << stamp->m_seconds << "+"
             << stamp->m_milliseconds;
    }
    return text.str();
}

bool same(const std::shared_ptr<CSTimeStamp>& a, const std::shared_ptr<CSTimeStamp>& b)
{
    return a && b ? *a == *b && a->m_frameID == b->m_frameID : a == b;
}

std::string agentText(const std::shared_ptr<CSAgent>& agent)
{
    if (!agent) {
        return "none";
    }
    return (agent->m_constant              ? "constant "
            : agent->m_type == "Component" ? "component "
                                           : "") +
           std::to_string(agent->m_ID) + "/" + std::to_string(agent->m_engineID);
}

bool sameIdentity(const std::shared_ptr<CSAgent>& a, const std::shared_ptr<CSAgent>& b)
{
    if (!a || !b) {
        return a == b;
    }
    return a->m_ID == b->m_ID && a->m_constant == b->m_constant && a->m_type == b->m_type &&
           a->m_engineID == b->m_engineID;
}

template <class Instance>
std::string instanceText(const Instance& instance)
{
    std::ostringstream text;
    text << instance.m_id << " " << instance.m_scenario->m_name << " "
         << stampText(instance.m_start) << ".." << stampText(instance.m_end) << " confidence "
         << std::setprecision(17) << instance.m_confidence;
    for (const auto& [variable, agent] : instance.m_bindings) {
        text << " " << variable << "=" << agentText(agent);
    }
    return text.str();
}

// The instances from the first one on in which the sides differ.
template <class Place>
std::string listText(Place place, Place end)
{
    std::string text;
    for (int count = 0; place != end && count < kMostInstances; ++place, ++count) {
        text += "    " + instanceText(**place) + "\n";
    }
    return text;
}

bool sameBindings(const CConstraint::Bindings& a, const CConstraint::Bindings& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.first == y.first && sameIdentity(x.second, y.second);
    });
}

bool sameInstance(const CSScenarioInstance& a, const ReferenceInstance& b)
{
    return a.m_id == b.m_id && a.m_scenario->m_name == b.m_scenario->m_name &&
           same(a.m_start, b.m_start) && same(a.m_end, b.m_end) &&
           same(a.m_confidence, b.m_confidence) && sameBindings(a.m_bindings, b.m_bindings);
}

template <class Instances, class References>
std::string
compareInstances(const std::string& title, const Instances& engine, const References& reference)
{
    const auto [mine, other] = std::mismatch(
        engine.begin(),
        engine.end(),
        reference.begin(),
        reference.end(),
        [](const auto& a, const auto& b) { return sameInstance(*a, *b); });
    if (mine == engine.end() && other == reference.end()) {
        return "";
    }
    return title + ", from the first difference on\n  engine:\n" + listText(mine, engine.end()) +
           "  reference:\n" + listText(other, reference.end());
}

std::string valueText(const Value& value)
{
    std::string text = describeValue(value.get());
    if (value) {
        text += value->m_flag ? " (first)" : "";
        for (const auto& [frame, earlier] : value->m_history) {
            text += " " + std::to_string(frame) + ":" + describeValue(earlier.get());
            text += earlier && earlier->m_flag ? " (first)" : "";
        }
    }
    return text;
}

bool sameContent(const CSBasicType& a, const CSBasicType& b)
{
    if (a.m_type != b.m_type) {
        return false;
    }
    if (a.m_type == "DOUBLE" || a.m_type == "STRING") {
        const auto* number = dynamic_cast<const CSDouble*>(&a);
        const auto* otherNumber = dynamic_cast<const CSDouble*>(&b);
        if (number != nullptr && otherNumber != nullptr) {
            return same(number->m_value, otherNumber->m_value);
        }
        const auto* text = dynamic_cast<const CSString*>(&a);
        const auto* otherText = dynamic_cast<const CSString*>(&b);
        if (text != nullptr && otherText != nullptr) {
            return *text == *otherText;
        }
    }
    const auto* interval = dynamic_cast<const CSInterval*>(&a);
    const auto* other = dynamic_cast<const CSInterval*>(&b);
    if (interval != nullptr && other != nullptr) {
        return same(interval->m_start, other->m_start) && same(interval->m_end, other->m_end);
    }
    return interval == other && describeValue(&a) == describeValue(&b);
}

bool sameValue(const Value& a, const Value& b, bool flagToo)
{
    if (!a || !b) {
        return a == b;
    }
    const auto sameEntry = [&](const auto& x, const auto& y) {
        return x.first == y.first && sameValue(x.second, y.second, flagToo);
    };
    return a->m_frame == b->m_frame && (!flagToo || a->m_flag == b->m_flag) &&
           sameContent(*a, *b) &&
           std::equal(
               a->m_history.begin(),
               a->m_history.end(),
               b->m_history.begin(),
               b->m_history.end(),
               sameEntry);
}

// Compares the attributes of an agent by walking over both lists of names at once.
std::string compareAttributes(
    const CSAgent& engine, const CSAgent& reference, const std::set<std::string>& passedOver)
{
    std::string found;
    auto mine = engine.m_attributes.begin();
    auto other = reference.m_attributes.begin();
    while (mine != engine.m_attributes.end() || other != reference.m_attributes.end()) {
        const bool hasMine = mine != engine.m_attributes.end() &&
                             (other == reference.m_attributes.end() || mine->first <= other->first);
        const bool hasOther = other != reference.m_attributes.end() &&
                              (mine == engine.m_attributes.end() || other->first <= mine->first);
        const std::string& name = hasMine ? mine->first : other->first;
        const Value none;
        const Value& value = hasMine ? mine->second : none;
        const Value& otherValue = hasOther ? other->second : none;
        const bool isPure = passedOver.contains(name);
        const bool flagToo = !isPure;
        if ((hasMine != hasOther && (value || otherValue || !isPure)) ||
            !sameValue(value, otherValue, flagToo)) {
            found += " " + name + ": " + (hasMine ? valueText(value) : "nothing") + " instead of " +
                     (hasOther ? valueText(otherValue) : "nothing");
        }
        mine = hasMine ? std::next(mine) : mine;
        other = hasOther ? std::next(other) : other;
    }
    return found;
}

std::string compareAgent(
    const std::string& title,
    CSAgent& engine,
    const CSAgent& reference,
    const std::set<std::string>& passedOver)
{
    engine.makeUp();
    std::string found;
    if (!same(engine.m_confidence, reference.m_confidence)) {
        found += " confidence " + std::to_string(engine.m_confidence) + " instead of " +
                 std::to_string(reference.m_confidence);
    }
    if (engine.m_frames != reference.m_frames || engine.m_frameID != reference.m_frameID) {
        found += " frames";
    }
    if (engine.m_instances != reference.m_instances) {
        found += " instances";
    }
    found += compareAttributes(engine, reference, passedOver);
    return found.empty() ? found : title + " " + std::to_string(engine.m_ID) + ":" + found + "\n";
}

std::string compareNumber(const std::string& title, int engine, int reference)
{
    return engine == reference ? std::string()
                               : title + ": engine " + std::to_string(engine) + ", reference " +
                                     std::to_string(reference) + "\n";
}

} // namespace

std::string compareRecognised(const CSEngine& engine, const ReferenceMatcher& reference)
{
    return compareInstances(
        "recognised instances", engine.recognisedScenarios(), reference.m_recognised);
}

std::string compareStatistics(const CSEngine& engine, const ReferenceMatcher& reference)
{
    const CSEngine::Statistics& statistics = engine.statistics();
    return compareNumber("tested", statistics.tested, reference.m_tested) +
           compareNumber("accepted", statistics.accepted, reference.m_accepted) +
           compareNumber("completions", statistics.completions, reference.m_completions);
}

std::string compareFirstLevelCandidates(const CSEngine& engine, const ReferenceMatcher& reference)
{
    const auto& mine = engine.firstLevelCandidates();
    const auto& other = reference.m_firstLevelCandidates;
    const auto sameName = [](const auto& a, const auto& b) { return a.first == b.first; };
    if (!std::equal(mine.begin(), mine.end(), other.begin(), other.end(), sameName)) {
        return "models with candidates of the first level differ\n";
    }
    for (const auto& [name, instances] : mine) {
        std::string found =
            compareInstances("first level candidates of " + name, instances, other.at(name));
        if (!found.empty()) {
            return found;
        }
    }
    return "";
}

std::string compareTimes(const ReferenceMatcher& reference)
{
    const auto& mine = CSEngine::h_currentTime;
    const auto& other = reference.m_timeHistory;
    const bool equal = std::equal(
        mine.begin(), mine.end(), other.begin(), other.end(), [](const auto& a, const auto& b) {
            return a.first == b.first && same(a.second, b.second);
        });
    return equal ? "" : "kept times differ\n";
}

std::string
compareIdentities(const std::string& title, const Agents& engine, const Agents& reference)
{
    const bool equal = std::equal(
        engine.begin(),
        engine.end(),
        reference.begin(),
        reference.end(),
        [](const auto& a, const auto& b) {
            return a.first == b.first && sameIdentity(a.second, b.second);
        });
    return equal ? "" : title + " are others\n";
}

std::string compareAgents(
    const std::string& title,
    const Agents& engine,
    const Agents& reference,
    const std::set<std::string>& lookedUpByPureOperators)
{
    std::string found = compareIdentities(title, engine, reference);
    if (!found.empty()) {
        return found;
    }
    for (const auto& [id, agent] : engine) {
        found += compareAgent(title, *agent, *reference.at(id), lookedUpByPureOperators);
    }
    return found;
}

std::string
compareLines(const std::string& title, const std::string& engine, const std::string& reference)
{
    if (engine == reference) {
        return "";
    }
    const auto [mine, other] =
        std::mismatch(engine.begin(), engine.end(), reference.begin(), reference.end());
    auto common = static_cast<std::size_t>(mine - engine.begin());
    while (common > 0 && engine[common - 1] != '\n') {
        --common;
    }
    constexpr std::size_t kMostText = 2000;
    return title + ", from the first difference on (" + std::to_string(common) +
           " characters are the same)\n  engine:\n" + engine.substr(common, kMostText) +
           "  reference:\n" + reference.substr(common, kMostText);
}

} // namespace scenariomatch
