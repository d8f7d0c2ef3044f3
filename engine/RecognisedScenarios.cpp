#include "engine/RecognisedScenarios.h"

#include "engine/Agents.h"
#include "engine/RecognitionSequence.h"

#include <algorithm>
#include <limits>

namespace scenariomatch
{

namespace
{

std::pair<double, double> instantOf(const CSTimeStamp& time)
{
    return {time.m_seconds, time.m_milliseconds};
}

std::uint64_t mixed(std::uint64_t hash, int id)
{
    constexpr std::uint64_t kOddConstant =
        0x9E3779B97F4A7C15U; // the golden ratio's bits spread ids well
    constexpr unsigned kShift = 29;
    hash = (hash ^ static_cast<std::uint32_t>(id)) * kOddConstant;
    return hash ^ (hash >> kShift);
}

std::uint64_t hashOf(RecognisedScenarios::Identifiers participants)
{
    std::uint64_t hash = participants.size();
    for (const int id : participants) {
        hash = mixed(hash, id);
    }
    return hash;
}

Participants participantsOf(const CConstraint::Bindings& bindings)
{
    Participants participants;
    for (const auto& [variable, agent] : bindings) {
        participants.append(agentIdentifier(agent));
    }
    return participants;
}

int identifierIn(const CConstraint::Bindings& bindings, const std::string& variable)
{
    const auto found = bindings.find(variable);
    return found == bindings.end() ? kNoAgent : agentIdentifier(found->second);
}

// Whether every variable that the instance binds has the agent that the function tells.
template <class IdentifierOf>
bool isOn(const CSScenarioInstance& instance, IdentifierOf&& identifierOf)
{
    return std::all_of(
        instance.m_bindings.begin(), instance.m_bindings.end(), [&](const auto& binding) {
            return agentIdentifier(binding.second) == identifierOf(binding.first);
        });
}

} // namespace

// The groups of one model name. Groups of participants that have become empty are dropped.
struct RecognisedIndex
{
    RecognisedGroup all;
    SteadyMap<std::uint64_t, RecognisedGroup> byParticipants;
    std::vector<std::pair<std::string, SteadyMap<int, RecognisedGroup>>> byAgent;
    RecognitionSequence sequence;
    // Two models of one name may bind different variables: then only a walk over all finds the same
    // participants.
    const CSScenario* model = nullptr;
    std::size_t variables = 0;
    bool mixed = false;

    void note(const CSScenarioInstance& instance)
    {
        if (model == nullptr) {
            model = instance.m_scenario.get();
            variables = instance.m_bindings.size();
        }
        mixed =
            mixed || model != instance.m_scenario.get() || variables != instance.m_bindings.size();
    }
};

RecognisedScenarios::RecognisedScenarios() = default;

RecognisedScenarios::~RecognisedScenarios() = default;

RecognisedIndex& RecognisedScenarios::indexOf(const std::string& modelName)
{
    auto& index = m_models[modelName];
    if (!index) {
        index = std::make_unique<RecognisedIndex>();
    }
    return *index;
}

void RecognisedScenarios::recheckWhole()
{
    m_entries.forEach([](const std::shared_ptr<Entry>& entry) { entry->isWhole.reset(); });
}

void RecognisedScenarios::indexByParticipant(
    const std::string& modelName, const std::string& variable)
{
    RecognisedIndex& index = indexOf(modelName);
    const auto isVariable = [&](const auto& known) { return known.first == variable; };
    if (std::any_of(index.byAgent.begin(), index.byAgent.end(), isVariable)) {
        return;
    }
    std::vector<Entry*> entries(index.all.items().begin(), index.all.items().end());
    for (Entry* entry : entries) {
        leaveIndex(*entry);
    }
    index.byAgent.emplace_back(
        std::piecewise_construct, std::forward_as_tuple(variable), std::forward_as_tuple());
    for (Entry* entry : entries) {
        enterIndex(*entry);
    }
}

void RecognisedScenarios::enterIndex(Entry& entry)
{
    RecognisedIndex& index = *entry.model;
    index.note(*entry.instance);
    const auto joined = [&entry](Group& group) {
        return Entry::Membership{&group, group.append(&entry)};
    };
    entry.all = joined(index.all);
    entry.same = joined(index.byParticipants[entry.participantsHash]);
    for (auto& [variable, groups] : index.byAgent) {
        entry.others.push_back(joined(groups[identifierIn(entry.instance->m_bindings, variable)]));
    }
}

void RecognisedScenarios::leaveIndex(Entry& entry)
{
    entry.forEachMembership(
        [](const Entry::Membership& membership) { membership.group->erase(membership.place); });
    entry.others.clear();
    RecognisedIndex& index = *entry.model;
    const auto dropEmpty = [](auto& groups, auto key) {
        const Group* group = groups.find(key);
        if (group != nullptr && group->empty()) {
            groups.erase(key);
        }
    };
    dropEmpty(index.byParticipants, entry.participantsHash);
    for (auto& [variable, groups] : index.byAgent) {
        dropEmpty(groups, identifierIn(entry.instance->m_bindings, variable));
    }
}

namespace
{

// The group of all entries with these participants and of others with the same hash.
RecognisedGroup* groupOf(RecognisedIndex& index, RecognisedScenarios::Identifiers participants)
{
    if (const RecognisedEntry* expected = index.sequence.expect(participants)) {
        return expected->same.group;
    }
    RecognisedGroup* const group = index.byParticipants.find(hashOf(participants));
    if (group != nullptr) {
        index.sequence.resumeBehind(*group->items().front());
    }
    return group;
}

template <class IsSame>
RecognisedEntry* firstExtensible(
    const RecognisedGroup& group, const RecognisedScenarios::Moment& moment, IsSame&& isSame)
{
    for (RecognisedEntry* entry : group.items()) {
        const double age = entry->instance->m_end->duration(moment.now);
        if (age > moment.prolongation) {
            return nullptr;
        }
        if (age != 0.0 && isSame(*entry)) {
            return entry;
        }
    }
    return nullptr;
}

// Where the index holds one model alone, only those with the same participants are looked at. But a
// negative prolongation ends the walk at whatever ended now, so that all are walked over.
template <class IsSame>
RecognisedEntry* findIn(
    RecognisedIndex& index,
    const CSScenario& model,
    RecognisedScenarios::Identifiers participants,
    const RecognisedScenarios::Moment& moment,
    IsSame&& isSame)
{
    const bool isOneModel =
        !index.mixed && index.model == &model && index.variables == participants.size();
    if (!isOneModel || moment.prolongation < 0.0) {
        return firstExtensible(index.all, moment, isSame);
    }
    const RecognisedGroup* same = groupOf(index, participants);
    if (same == nullptr) {
        return nullptr;
    }
    return firstExtensible(*same, moment, [&](const RecognisedEntry& entry) {
        return hasParticipants(entry, participants);
    });
}

} // namespace

RecognisedEntry* RecognisedScenarios::findExtensible(
    RecognisedIndex& index,
    const CSScenario& model,
    std::span<const std::string> variables,
    Identifiers participants,
    const Moment& moment) const
{
    index.sequence.startTurn(m_turn);
    return findIn(index, model, participants, moment, [&](const Entry& entry) {
        return isOn(*entry.instance, [&](const std::string& variable) {
            const auto place = std::lower_bound(variables.begin(), variables.end(), variable);
            const bool found = place != variables.end() && *place == variable;
            return found ? participants[static_cast<std::size_t>(place - variables.begin())]
                         : kNoAgent;
        });
    });
}

RecognisedEntry* RecognisedScenarios::findExtensible(
    RecognisedIndex& index,
    const CSScenarioInstance& instance,
    Identifiers participants,
    const Moment& moment) const
{
    index.sequence.startTurn(m_turn);
    return findIn(index, *instance.m_scenario, participants, moment, [&](const Entry& entry) {
        return isOn(*entry.instance, [&](const std::string& variable) {
            return identifierIn(instance.m_bindings, variable);
        });
    });
}

void RecognisedScenarios::touch(Entry& entry, const CSTimeStamp& end)
{
    if (m_touched.empty()) {
        m_touchedEnd = instantOf(end);
        m_touchedAlike = true;
    }
    m_touchedAlike = m_touchedAlike && m_touchedEnd == instantOf(end);
    if (!entry.touched) {
        entry.touched = true;
        m_touched.push_back(&entry);
        entry.model->sequence.startTurn(m_turn);
        entry.model->sequence.note(entry);
    }
}

void RecognisedScenarios::extend(
    Entry& entry, const std::shared_ptr<CSTimeStamp>& now, double confidence)
{
    entry.instance->m_end = now;
    entry.instance->m_confidence = confidence;
    touch(entry, *now);
}

RecognisedEntry& RecognisedScenarios::add(RecognisedIndex& index, Instance instance)
{
    auto entry = std::make_shared<Entry>();
    entry->model = &index;
    entry->identifiers = participantsOf(instance->m_bindings);
    entry->participantsHash = hashOf(entry->identifiers.all());
    entry->index = m_touched.size();
    entry->instance = std::move(instance);
    entry->place = m_list.append(entry->instance);
    enterIndex(*entry);
    touch(*entry, *entry->instance->m_end);
    std::shared_ptr<Entry>& kept = m_entries[entry->instance.get()];
    kept = std::move(entry);
    return *kept;
}

bool RecognisedScenarios::isBefore(const Entry& a, const Entry& b)
{
    return a.turn != b.turn ? a.turn > b.turn : a.index < b.index;
}

void RecognisedScenarios::sort()
{
    if (m_touched.empty()) {
        return;
    }
    const bool isLater = m_touchedAlike && (m_turn == 0 || m_touchedEnd > m_turnEnd);
    if (isLater) {
        ++m_turn;
        m_nextIndex = 0;
        m_turnEnd = m_touchedEnd;
        m_turnIntact = true;
    }
    if (isLater || (m_touchedAlike && m_turnIntact && m_touchedEnd == m_turnEnd)) {
        sortTouched();
    } else {
        sortAll();
    }
    m_touched.clear();
}

// Those of the latest turn, which mostly are all that is not new, are put straight into their
// places; what is left has to be sorted.
void RecognisedScenarios::orderTouched()
{
    constexpr std::size_t kSparse = 8;
    std::uint64_t turn = 0;
    for (const Entry* entry : m_touched) {
        turn = std::max(turn, entry->turn);
    }
    const auto placed = std::partition(m_touched.begin(), m_touched.end(), [&](const Entry* entry) {
        return turn == 0 || entry->turn != turn || entry->index >= kSparse * m_touched.size();
    });
    m_places.clear();
    std::for_each(placed, m_touched.end(), [this](Entry* entry) {
        if (entry->index >= m_places.size()) {
            m_places.resize(entry->index + 1, nullptr);
        }
        m_places[entry->index] = entry;
    });
    std::erase(m_places, nullptr);
    std::sort(
        m_touched.begin(), placed, [](const Entry* a, const Entry* b) { return isBefore(*a, *b); });
    m_places.insert(m_places.end(), m_touched.begin(), placed);
    m_touched.swap(m_places);
}

void RecognisedScenarios::sortTouched()
{
    orderTouched();
    for (Entry* entry : m_touched) {
        m_list.touch(entry->place, m_turn);
        entry->forEachMembership([this](const Entry::Membership& membership) {
            membership.group->touch(membership.place, m_turn);
        });
        entry->turn = m_turn;
        entry->index = m_nextIndex++;
        entry->touched = false;
    }
}

void RecognisedScenarios::sortAll()
{
    m_list.items().sort([](const Instance& a, const Instance& b) { return *a->m_end > *b->m_end; });
    ++m_turn;
    m_nextIndex = 0;
    m_turnIntact = false;
    m_turnEnd = instantOf(*m_list.items().front()->m_end);
    std::vector<RecencyList<Instance>::Place> places;
    for (auto place = m_list.items().begin(); place != m_list.items().end(); ++place) {
        places.push_back(place);
    }
    for (const auto& place : places) {
        Entry& entry = *m_entries.at(place->get());
        m_list.restart(place);
        entry.forEachMembership([](const Entry::Membership& membership) {
            membership.group->restart(membership.place);
        });
        entry.turn = m_turn;
        entry.index = m_nextIndex++;
        entry.touched = false;
    }
}

const RecognisedScenarios::Group* RecognisedScenarios::ofModel(const std::string& modelName) const
{
    const auto found = m_models.find(modelName);
    return found == m_models.end() ? nullptr : &found->second->all;
}

const RecognisedScenarios::Group* RecognisedScenarios::ofParticipant(
    const std::string& modelName, const std::string& variable, int agentId) const
{
    const auto found = m_models.find(modelName);
    if (found == m_models.end()) {
        return nullptr;
    }
    for (const auto& [name, groups] : found->second->byAgent) {
        if (name == variable) {
            return groups.find(agentId);
        }
    }
    return nullptr;
}

void RecognisedScenarios::remove(Entry& entry)
{
    entry.model->sequence.forget(entry);
    leaveIndex(entry);
    m_list.erase(entry.place);
    m_entries.erase(entry.instance.get());
}

void RecognisedScenarios::removeExpired(
    const CSTimeStamp& now,
    double limit,
    const std::function<void(const CSScenarioInstance&)>& expired)
{
    if (!isSorted()) {
        removeUnsorted(now, limit, expired);
        return;
    }
    while (!m_list.empty()) {
        const CSScenarioInstance& last = *m_list.items().back();
        if (!(last.m_end->duration(now) > limit)) {
            return;
        }
        expired(last);
        remove(*m_entries.at(&last));
    }
}

void RecognisedScenarios::removeUnsorted(
    const CSTimeStamp& now,
    double limit,
    const std::function<void(const CSScenarioInstance&)>& expired)
{
    const auto isExpired = [&](const Instance& instance) {
        return instance->m_end->duration(now) > limit;
    };
    auto& items = m_list.items();
    for (const Instance& instance : items) {
        if (isExpired(instance)) {
            expired(*instance);
        }
    }
    const std::vector<Instance> behind(
        std::find_if(items.begin(), items.end(), isExpired), items.end());
    for (const Instance& instance : behind) {
        Entry& entry = *m_entries.at(instance.get());
        std::erase(m_touched, &entry);
        remove(entry);
    }
}

} // namespace scenariomatch
