#pragma once

#include "app/explain/NearMiss.h"
#include "engine/CSScenarioInstance.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace scenariomatch
{

// A recognised event as far as it is known: who took part, and when.
struct KnownEvent
{
    int id = 0;
    // By variable; physical objects only.
    std::vector<EventObject> objects;
    std::shared_ptr<const CSTimeStamp> start;
    // The frames in which it was recognised; never empty.
    std::vector<std::shared_ptr<const CSTimeStamp>> times;

    const CSTimeStamp& end() const { return *times.back(); }
};

// The recognised events of some models, with the times at which each was recognised.
class KnownEvents
{
public:
    using Events = std::vector<std::shared_ptr<const KnownEvent>>;

    // Only events of models with these names are kept.
    void watch(const std::string& model) { m_byModel.try_emplace(model); }

    void add(const CSScenarioInstance& instance);
    // The event goes on.
    void extend(const CSScenarioInstance& instance);

    // Null where it is not known.
    std::shared_ptr<const KnownEvent> find(int id) const;
    // In order of recognition.
    const Events& of(const std::string& model) const;

private:
    std::unordered_map<int, std::shared_ptr<KnownEvent>> m_byId;
    std::unordered_map<std::string, Events> m_byModel;
};

// The physical objects among the bindings.
std::vector<EventObject> participantsOf(const CConstraint::Bindings& bindings);

} // namespace scenariomatch
