#include "engine/SharedValues.h"

#include <algorithm>
#include <bit>

namespace scenariomatch
{

namespace
{

void writeKey(std::string& key, const CConstraint& part, const std::vector<std::int32_t>& slots)
{
    if (part.m_operatorName == "->") {
        const auto slot = std::find(slots.begin(), slots.end(), part.m_slot);
        const auto number = slots.empty() ? part.m_slot : slot - slots.begin();
        key += '$' + std::to_string(number) + '>' + part.m_attribute + ' ';
    } else if (part.isLeaf() && part.m_isNumeric) {
        key += '#' + std::to_string(std::bit_cast<std::uint64_t>(part.m_numericValue)) + ' ';
    } else if (part.isLeaf()) {
        key += '\'' + std::to_string(part.m_value.size()) + ':' + part.m_value + ' ';
    } else {
        key += part.m_operatorName + '(';
        for (const auto& child : part.m_children) {
            writeKey(key, *child, slots);
        }
        key += ')';
    }
}

bool canBeShared(const CConstraint& part)
{
    const std::size_t agents = slotsOf(part).size();
    return !part.isLeaf() && agents >= 1 && agents <= Expression::kMostSharers;
}

} // namespace

std::string keyOf(const CConstraint& part, const std::vector<std::int32_t>& slots)
{
    std::string key;
    writeKey(key, part, slots);
    return key;
}

void SharedValues::count(const CConstraint& constraint)
{
    if (canBeShared(constraint) &&
        ++m_parts[keyOf(constraint, slotsOf(constraint))].occurrences > 1) {
        return;
    }
    for (const auto& child : constraint.m_children) {
        count(*child);
    }
}

std::int32_t SharedValues::numberOf(const CConstraint& part)
{
    if (!canBeShared(part)) {
        return -1;
    }
    const auto found = m_parts.find(keyOf(part, slotsOf(part)));
    if (found == m_parts.end() || found->second.occurrences < 2) {
        return -1;
    }
    if (found->second.number < 0) {
        found->second.number = static_cast<std::int32_t>(m_cells.size());
        m_cells.emplace_back();
    }
    return found->second.number;
}

} // namespace scenariomatch
