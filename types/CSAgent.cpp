#include "types/CSAgent.h"

#include "types/CAllClasses.h"

#include <iostream>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

std::int32_t CSAgent::m_historySize = 1;
std::map<std::string, bool> CSAgent::m_constantObjects;
std::map<std::string, std::map<std::string, std::string>> CSAgent::m_allAttributes;
std::map<std::string, std::vector<std::string>> CSAgent::m_allObjectTypes;

namespace
{

// Files the value under the position and drops the entry with the smallest one when there are more
// than limit; one per call. The value that drops out is given back.
template <class Value>
Value file(std::map<int, Value>& entries, int pos, Value value, std::int32_t limit)
{
    const bool isFull = !entries.empty() && std::cmp_greater_equal(entries.size(), limit);
    typename std::map<int, Value>::node_type oldest;
    if (isFull && entries.rbegin()->first < pos) {
        oldest = entries.extract(entries.begin());
    }
    if (oldest) {
        // Positions mostly grow: the entry that goes becomes the one that comes.
        oldest.key() = pos;
        std::swap(oldest.mapped(), value);
        entries.insert(entries.end(), std::move(oldest));
        return value;
    }
    entries.insert_or_assign(pos, std::move(value));
    Value dropped{};
    if (std::cmp_greater(entries.size(), limit)) {
        dropped = std::move(entries.begin()->second);
        entries.erase(entries.begin());
    }
    return dropped;
}

// Enters types under their ancestors, no type twice under one of them.
class ObjectTypeLists
{
public:
    explicit ObjectTypeLists(const std::vector<CClass>& types)
    {
        // Backwards, so that above a parent is what a pass over the types after this one finds.
        for (std::size_t i = types.size(); i-- > 0;) {
            m_above[types[i].m_name] = &climb(types[i].m_parent);
        }
    }

    void enter(const std::string& ancestor, const std::string& name)
    {
        std::vector<std::string>& list = CSAgent::m_allObjectTypes[ancestor];
        const auto [entry, isNew] = m_entered.try_emplace(ancestor);
        if (isNew) {
            entry->second.insert(list.begin(), list.end());
        }
        if (entry->second.insert(name).second) {
            list.push_back(name);
        }
    }

    // A circle ends at the first type met a second time.
    void enterUnderParents(const CClass& type)
    {
        std::set<std::string> met{type.m_name};
        for (const std::string* parent = &type.m_parent;
             *parent != "Agent" && met.insert(*parent).second;
             parent = &climb(*parent)) {
            enter(*parent, type.m_name);
        }
    }

private:
    // Where one pass over the types in file order leads from the parent; it climbs several levels
    // when ancestors stand after their descendants. The parent itself when it is not declared.
    const std::string& climb(const std::string& parent) const
    {
        const auto above = m_above.find(parent);
        return above == m_above.end() ? parent : *above->second;
    }

    // By the name of a type, which is declared first where it is declared twice.
    std::unordered_map<std::string, const std::string*> m_above;
    std::unordered_map<std::string, std::unordered_set<std::string>> m_entered;
};

} // namespace

namespace scenariomatch
{

LateAttributes::~LateAttributes() = default;

} // namespace scenariomatch

CSAgent::CSAgent(int id, bool constant)
    : m_ID(id)
    , m_constant(constant)
    , m_IDValue(std::make_shared<CSInt>(id))
{
}

CSAgent::CSAgent(std::string className, int id)
    : m_ID(id)
    , m_constant(m_constantObjects[className])
    , m_IDValue(std::make_shared<CSInt>(id))
    , m_className(std::move(className))
{
}

CSAgent::~CSAgent() = default;

std::shared_ptr<CSBasicType> CSAgent::get(const std::string& name)
{
    makeUp();
    return m_attributes[name];
}

std::shared_ptr<CSBasicType> CSAgent::get(const std::string& name, int pos)
{
    makeUp();
    const std::shared_ptr<CSBasicType>& current = m_attributes[name];
    return current ? current->m_history[pos] : nullptr;
}

std::vector<std::shared_ptr<CSBasicType>> CSAgent::getAll(const std::string& /*name*/) const
{
    return {};
}

void CSAgent::set(const std::string& name, std::shared_ptr<CSBasicType> value, int pos)
{
    if (!value) {
        return;
    }
    makeUp();
    const auto [entry, isFirst] = m_attributes.try_emplace(name);
    if (isFirst) {
        value->m_frame = pos;
        value->m_flag = true;
        entry->second = std::move(value);
        return;
    }
    replace(entry->second, std::move(value), pos);
}

std::shared_ptr<CSBasicType>
CSAgent::replace(std::shared_ptr<CSBasicType>& current, std::shared_ptr<CSBasicType> value, int pos)
{
    CSBasicType& stored = *value;
    std::shared_ptr<CSBasicType> old = std::exchange(current, std::move(value));
    stored.m_frame = pos;
    if (!old) {
        // A failed get left the entry; there is no earlier value to file.
        stored.m_history.clear();
        return nullptr;
    }
    // The history moves on, so that no earlier value holds a history of its own.
    if (old.get() != &stored) {
        stored.m_history = std::move(old->m_history);
    }
    old->m_history.clear();
    const int filed = old->m_frame;
    return file(stored.m_history, filed, std::move(old), m_historySize);
}

void CSAgent::setType(const std::shared_ptr<CSString>& type, int pos)
{
    if (!type) {
        return;
    }
    set("Type", type, pos);
    m_type = type->m_value;
}

void CSAgent::setFrameID(int frame)
{
    makeUp();
    addFrame(frame);
}

void CSAgent::addFrame(int frame)
{
    wakeUp();
    m_frameID = frame;
    file(m_frames, frame, 1, m_historySize);
}

void CSAgent::readAllObjects(const std::string& fileName)
{
    CAllClasses types;
    types.read(fileName);
    ObjectTypeLists lists(types.m_classes);
    for (const CClass& type : types.m_classes) {
        m_constantObjects[type.m_name] = type.m_constant;
        for (std::size_t i = 0; i < type.m_attributeNames.size(); ++i) {
            m_allAttributes[type.m_name][type.m_attributeNames[i]] = type.m_attributeTypes[i];
        }
        lists.enter(type.m_name, type.m_name);
        lists.enterUnderParents(type);
    }
    // The pseudo type of sub-events.
    m_constantObjects["Component"] = false;
}

void CSAgent::printAllObjects()
{
    for (const auto& [typeName, attributes] : m_allAttributes) {
        std::cout << typeName << '\n';
        std::cout << (m_constantObjects[typeName] ? "\tConstant Object" : "\tMobile Object")
                  << '\n';
        std::cout << "\tAttributes" << '\n';
        for (const auto& [name, type] : attributes) {
            std::cout << "\t\t" << type << " " << name << '\n';
        }
        std::cout << "\tChildren" << '\n';
        for (const std::string& child : m_allObjectTypes[typeName]) {
            std::cout << "\t\t" << child << '\n';
        }
    }
    std::cout << std::flush;
}
