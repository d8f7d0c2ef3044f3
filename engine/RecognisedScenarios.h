#pragma once

#include "engine/ComponentAttributes.h"
#include "engine/CSScenarioInstance.h"
#include "engine/Participants.h"
#include "engine/RecencyList.h"
#include "engine/SteadyMap.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace scenariomatch
{

struct RecognisedEntry;
struct RecognisedIndex;

// Recognised instances in the order of the list.
using RecognisedGroup = RecencyList<RecognisedEntry*>;

// One recognised instance with its places in the list and in the groups of its model's index. What
// every frame asks for stands together and not in allocations of its own: thousands of entries do
// not fit into the caches.
struct RecognisedEntry : std::enable_shared_from_this<RecognisedEntry>
{
    struct Membership
    {
        RecognisedGroup* group = nullptr;
        RecognisedGroup::Place place;
    };

    std::shared_ptr<CSScenarioInstance> instance;
    // Of its participants; those of agents never change.
    Participants identifiers;
    // Its pseudo-agent, and what makes that one's attributes, once it is part of something.
    std::shared_ptr<CSAgent> component;
    ComponentAttributes* attributes = nullptr;
    RecognisedIndex* model = nullptr;
    bool touched = false;
    // Whether it binds all variables of its model and no others, once that has been asked for.
    std::optional<bool> isWhole;
    // When and where it was noted last in its model's sequence.
    std::uint64_t notedTurn = 0;
    std::size_t notedPlace = 0;
    // Position in the sorted list: later turns first, then by index. Turn 0: not sorted in yet.
    std::uint64_t turn = 0;
    std::uint64_t index = 0;
    RecencyList<std::shared_ptr<CSScenarioInstance>>::Place place;
    // Among all of the model, and among those with the same participants.
    Membership all;
    Membership same;
    std::uint64_t participantsHash = 0;
    // One per indexed variable.
    std::vector<Membership> others;

    template <class Function>
    void forEachMembership(Function&& function)
    {
        function(all);
        function(same);
        for (Membership& membership : others) {
            function(membership);
        }
    }
};

// The recognised instances that are still alive, in list order (latest end first), and the indexes
// over them.
//
// An instance is found by its model and participants, by its model, or by its model and one
// participant; every look-up gives what a walk over the list would give, in the order of the list.
// Extending, adding and removing cost the same however many instances are alive. Shares the
// instances; their ends change through extend alone.
class CS_EXPORT RecognisedScenarios
{
public:
    using Instance = std::shared_ptr<CSScenarioInstance>;
    // Identifiers of agents, in the order of their variables' names.
    using Identifiers = std::span<const int>;

    // The present, and for how many seconds after its end an instance may still be extended.
    struct Moment
    {
        const CSTimeStamp& now;
        double prolongation = 0.0;
    };

    using Entry = RecognisedEntry;
    using Group = RecognisedGroup;

    RecognisedScenarios();
    RecognisedScenarios(const RecognisedScenarios&) = delete;
    RecognisedScenarios(RecognisedScenarios&&) = delete;
    RecognisedScenarios& operator=(const RecognisedScenarios&) = delete;
    RecognisedScenarios& operator=(RecognisedScenarios&&) = delete;
    ~RecognisedScenarios();

    const std::list<Instance>& list() const { return m_list.items(); }

    bool has(const CSScenarioInstance& instance) const
    {
        return m_entries.find(&instance) != nullptr;
    }

    // Whether the list is in order: nothing was extended or added since the last sort.
    bool isSorted() const { return m_touched.empty(); }

    // Models may have other variables now.
    void recheckWhole();

    // Where the instances of the models of this name are found; lives as long as this.
    RecognisedIndex& indexOf(const std::string& modelName);

    // Keeps an index over the agents that instances of the model bind to the variable.
    void indexByParticipant(const std::string& modelName, const std::string& variable);

    // The first instance of the list that a recognition of the model with these participants
    // extends: same model name and participants, not ended now, ended at most `prolongation`
    // seconds ago. Null when there is none. Participants are told by the names of the variables,
    // which are sorted, or by the instance at hand.
    Entry* findExtensible(
        RecognisedIndex& index,
        const CSScenario& model,
        std::span<const std::string> variables,
        Identifiers participants,
        const Moment& moment) const;
    Entry* findExtensible(
        RecognisedIndex& index,
        const CSScenarioInstance& instance,
        Identifiers participants,
        const Moment& moment) const;
    // Sets the end and the confidence of an instance.
    void extend(Entry& entry, const std::shared_ptr<CSTimeStamp>& now, double confidence);
    // Appends an instance that ends now.
    Entry& add(RecognisedIndex& index, Instance instance);

    // Restores list order, stably. Costs as much as was extended or added since the last time,
    // unless the clock went back.
    void sort();

    // The instances of the model, and those that bind the agent to an indexed variable, in list
    // order; null when there is none. The list must be sorted.
    const Group* ofModel(const std::string& modelName) const;
    const Group*
    ofParticipant(const std::string& modelName, const std::string& variable, int agentId) const;

    // Whether one entry stands before another in the sorted list.
    static bool isBefore(const Entry& a, const Entry& b);

    // Removes the instances whose end lies more than `limit` seconds before now, from the back of
    // the list, and tells each to `expired`. On a list that is not in order all that stands behind
    // the first such instance goes.
    void removeExpired(
        const CSTimeStamp& now,
        double limit,
        const std::function<void(const CSScenarioInstance&)>& expired);

private:
    // Whole and fractional seconds, compared as time stamps are.
    using Instant = std::pair<double, double>;

    static void enterIndex(Entry& entry);
    static void leaveIndex(Entry& entry);
    void touch(Entry& entry, const CSTimeStamp& end);
    void orderTouched();
    void sortTouched();
    void sortAll();
    void remove(Entry& entry);
    void removeUnsorted(
        const CSTimeStamp& now,
        double limit,
        const std::function<void(const CSScenarioInstance&)>& expired);

    RecencyList<Instance> m_list;
    SteadyMap<const CSScenarioInstance*, std::shared_ptr<Entry>> m_entries;
    std::unordered_map<std::string, std::unique_ptr<RecognisedIndex>> m_models;
    // Extended or added since the last sort, and whether they all end at the same time.
    std::vector<Entry*> m_touched;
    // Used while they are put in order.
    std::vector<Entry*> m_places;
    Instant m_touchedEnd;
    bool m_touchedAlike = true;
    std::uint64_t m_turn = 0;
    std::uint64_t m_nextIndex = 0;
    // The end that the current turn stands for: the latest of all. Not intact after the clock went
    // back.
    Instant m_turnEnd;
    bool m_turnIntact = false;
};

} // namespace scenariomatch
