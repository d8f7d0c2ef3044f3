#include "types/CSAgent.h"

#include "types/CAllClasses.h"

#include <algorithm>
#include <iostream>
#include <set>
#include <utility>

std::int32_t CSAgent::m_historySize = 1;
std::map<std::string, bool> CSAgent::m_constantObjects;
std::map<std::string, std::map<std::string, std::string>> CSAgent::m_allAttributes;
std::map<std::string, std::vector<std::string>> CSAgent::m_allObjectTypes;

namespace
{

// Drops the entry with the smallest key when there are more than limit; one per call.
template <class Value>
void dropOldest(std::map<int, Value>& entries, std::int32_t limit)
{
    if (!entries.empty() && std::cmp_greater(entries.size(), limit)) {
        entries.erase(entries.begin());
    }
}

void appendOnce(std::vector<std::string>& names, const std::string& name)
{
    if (std::find(names.begin(), names.end(), name) == names.end()) {
        names.push_back(name);
    }
}

// Where one pass over the types in file order leads from the parent; it climbs several levels when
// ancestors stand after their descendants. The parent itself when it is not declared.
std::string climb(std::string parent, const std::vector<CClass>& types)
{
    for (const CClass& type : types) {
        if (type.m_name == parent) {
            parent = type.m_parent;
        }
    }
    return parent;
}

// Enters the type under its ancestors. A circle ends at the first type met a second time.
void enterUnderParents(const CClass& type, const std::vector<CClass>& types)
{
    std::set<std::string> met{type.m_name};
    std::string parent = type.m_parent;
    while (parent != "Agent" && met.insert(parent).second) {
        appendOnce(CSAgent::m_allObjectTypes[parent], type.m_name);
        parent = climb(parent, types);
    }
}

} // namespace

CSAgent::CSAgent(int id, bool constant)
    : m_IDValue(std::make_shared<CSInt>(id))
    , m_ID(id)
    , m_constant(constant)
{
}

CSAgent::CSAgent(std::string className, int id)
    : m_IDValue(std::make_shared<CSInt>(id))
    , m_className(std::move(className))
    , m_ID(id)
    , m_constant(m_constantObjects[m_className])
{
}

CSAgent::~CSAgent() = default;

std::shared_ptr<CSBasicType> CSAgent::get(const std::string& name)
{
    return m_attributes[name];
}

std::shared_ptr<CSBasicType> CSAgent::get(const std::string& name, int pos)
{
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
    CSBasicType& stored = *value;
    const auto [entry, isFirst] = m_attributes.try_emplace(name);
    const std::shared_ptr<CSBasicType> old = std::exchange(entry->second, std::move(value));
    stored.m_frame = pos;
    if (isFirst) {
        stored.m_flag = true;
        return;
    }
    if (!old) {
        // A failed get left the entry; there is no earlier value to file.
        stored.m_history.clear();
        return;
    }
    // The history moves on, so that no earlier value holds a history of its own.
    if (old.get() != &stored) {
        stored.m_history = std::move(old->m_history);
    }
    old->m_history.clear();
    stored.m_history[old->m_frame] = old;
    dropOldest(stored.m_history, m_historySize);
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
    m_frameID = frame;
    m_frames[frame] = 1;
    dropOldest(m_frames, m_historySize);
}

void CSAgent::readAllObjects(const std::string& fileName)
{
    CAllClasses types;
    types.read(fileName);
    for (const CClass& type : types.m_classes) {
        m_constantObjects[type.m_name] = type.m_constant;
        for (std::size_t i = 0; i < type.m_attributeNames.size(); ++i) {
            m_allAttributes[type.m_name][type.m_attributeNames[i]] = type.m_attributeTypes[i];
        }
        appendOnce(m_allObjectTypes[type.m_name], type.m_name);
        enterUnderParents(type, types.m_classes);
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
