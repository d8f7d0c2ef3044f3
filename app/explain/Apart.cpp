#include "app/explain/Apart.h"

#include "app/explain/NumberWords.h"
#include "app/explain/ObjectFilter.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <optional>
#include <utility>

namespace scenariomatch
{

namespace
{

using Event = std::shared_ptr<const KnownEvent>;

// A component with its model and the sub-events that could fill it.
struct Filling
{
    const CComponent* component = nullptr;
    const CSScenario* model = nullptr;
    std::vector<Event> events;
};

// How far two sub-events are apart, and the clause that says so.
struct Distance
{
    double seconds = 0.0;
    std::string text;
};

Filling fillingOf(
    const CComponent& component,
    const ModelSet& models,
    const KnownEvents& events,
    const TimeWindow& window)
{
    Filling filling{&component, models.find(component.m_modelName), {}};
    for (const Event& event : events.of(component.m_modelName)) {
        if (momentOf(*event->start).milliseconds <= window.to &&
            momentOf(event->end()).milliseconds >= window.from) {
            filling.events.push_back(event);
        }
    }
    return filling;
}

// The variables of the whole model that both components are told of.
std::vector<std::string> sharedVariables(const CComponent& a, const CComponent& b)
{
    std::vector<std::string> shared;
    for (const std::string& variable : a.m_arguments) {
        const auto& others = b.m_arguments;
        if (std::find(others.begin(), others.end(), variable) != others.end()) {
            shared.push_back(variable);
        }
    }
    return shared;
}

// Who stands for the variables in the event.
std::vector<std::string>
standingFor(const std::vector<std::string>& variables, const Filling& filling, const Event& event)
{
    std::vector<std::string> names;
    for (const std::string& variable : variables) {
        const auto& arguments = filling.component->m_arguments;
        const auto position = std::find(arguments.begin(), arguments.end(), variable);
        const auto own =
            filling.model->m_physicalObjects.find(static_cast<int>(position - arguments.begin()));
        for (const EventObject& object : event->objects) {
            if (own != filling.model->m_physicalObjects.end() && object.variable == own->second) {
                names.push_back(objectName(object));
            }
        }
    }
    return names;
}

// Nothing where the times are no reason.
std::optional<Distance>
distanceOf(const Filling& a, const Event& one, const Filling& b, const Event& last, double lookBack)
{
    const std::string& own = a.component->m_variable;
    const std::string& trigger = b.component->m_variable;
    if (*one->start > last->end()) {
        const double seconds = last->end().duration(*one->start);
        return Distance{
            seconds,
            fmt::format("{} began {} s after {} had ended", own, numberText(seconds), trigger)};
    }
    const double before = one->end().duration(*last->start);
    if (before > lookBack) {
        return Distance{
            before,
            fmt::format(
                "{} ended {} s before {} began, and events are looked back at for {} s",
                own,
                numberText(before),
                trigger,
                numberText(lookBack))};
    }
    return std::nullopt;
}

std::string joined(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text;
}

std::string apartFrom(const Filling& other, const Filling& trigger, double lookBack)
{
    constexpr std::size_t kMostPairs = 10'000'000;
    const auto shared = sharedVariables(*other.component, *trigger.component);
    std::map<std::vector<std::string>, std::vector<Event>> triggers;
    for (const Event& event : trigger.events) {
        triggers[standingFor(shared, trigger, event)].push_back(event);
    }
    bool hasMet = false;
    std::size_t pairs = 0;
    std::optional<Distance> nearest;
    for (const Event& one : other.events) {
        const auto found = triggers.find(standingFor(shared, other, one));
        if (found == triggers.end()) {
            continue;
        }
        for (const Event& last : found->second) {
            if (one == last) {
                continue;
            }
            hasMet = true;
            const auto distance = distanceOf(other, one, trigger, last, lookBack);
            if (!distance || ++pairs > kMostPairs) {
                return {};
            }
            if (!nearest || distance->seconds < nearest->seconds) {
                nearest = distance;
            }
        }
    }
    if (nearest) {
        return nearest->text;
    }
    return hasMet || shared.empty() ? ""
                                    : fmt::format(
                                          "{} and {} never had the same {}",
                                          other.component->m_variable,
                                          trigger.component->m_variable,
                                          joined(shared));
}

} // namespace

std::string apartText(
    const CSScenario& model,
    const ModelSet& models,
    const KnownEvents& events,
    double lookBack,
    const TimeWindow& window)
{
    if (model.m_triggerIndex < 0) {
        return {};
    }
    const auto& components = model.m_components;
    const auto trigger = static_cast<std::size_t>(model.m_triggerIndex);
    const Filling last = fillingOf(*components[trigger], models, events, window);
    for (std::size_t i = 0; i < components.size(); ++i) {
        const Filling other = fillingOf(*components[i], models, events, {INT64_MIN, window.to});
        if (i == trigger || other.model == nullptr || last.model == nullptr) {
            continue;
        }
        std::string text = apartFrom(other, last, lookBack);
        if (!text.empty()) {
            return text;
        }
    }
    return {};
}

} // namespace scenariomatch
