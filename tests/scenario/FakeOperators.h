#pragma once

#include "scenario/CConstraint.h"
#include "types/CSOperatorInterfaceAbstract.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{

// An operator that a test makes up; by default it is true, and it remembers the arguments of its
// last call.
class FakeOperator : public CSOperatorInterfaceAbstract
{
public:
    using Arguments = std::vector<std::shared_ptr<CSBasicType>>;

    explicit FakeOperator(const std::string& name, bool isTemporal = false)
    {
        m_name = name;
        m_isTemporal = isTemporal;
    }

    std::shared_ptr<CSBasicType> evaluate(Arguments arguments) override
    {
        m_arguments = std::move(arguments);
        ++m_calls;
        return m_action ? m_action(m_arguments) : std::make_shared<CSBool>(true);
    }

    CSOperatorDescription describe() const override
    {
        if (m_describeThrows) {
            throw std::runtime_error("no description");
        }
        return m_description;
    }

    std::function<std::shared_ptr<CSBasicType>(const Arguments&)> m_action;
    CSOperatorDescription m_description;
    bool m_describeThrows = false;
    Arguments m_arguments;
    int m_calls = 0;
};

// A temporal operator whose first or second argument ends first.
inline FakeOperator& endingFirst(FakeOperator& op, std::size_t position)
{
    op.m_isTemporal = true;
    op.m_description.m_endsFirst = position;
    return op;
}

// The tree in one line: leaves as written, numbers after "#", operators as NAME[children].
inline std::string treeOf(const CConstraint& node)
{
    if (node.m_operatorName == "->") {
        return node.m_value + "->" + node.m_attribute;
    }
    if (node.m_operatorName == "NULL" && node.m_children.empty()) {
        return node.m_isNumeric ? "#" + std::to_string(node.m_numericValue) : node.m_value;
    }
    std::string text = node.m_operatorName + "[";
    for (const std::unique_ptr<CConstraint>& child : node.m_children) {
        text += (&child == &node.m_children.front() ? "" : ", ") + treeOf(*child);
    }
    return text + "]";
}

inline std::unique_ptr<CConstraint> treeFrom(const std::string& text)
{
    auto root = std::make_unique<CConstraint>();
    root->read(text);
    return root;
}

// Puts the table of operator names into a given state for one test and empties it afterwards.
class OperatorNames
{
public:
    explicit OperatorNames(const std::vector<CSOperatorInterfaceAbstract*>& operators = {})
    {
        CConstraint::m_allOperators.clear();
        for (CSOperatorInterfaceAbstract* op : operators) {
            CConstraint::m_allOperators[op->m_name] = op;
        }
    }

    OperatorNames(const OperatorNames&) = delete;
    OperatorNames(OperatorNames&&) = delete;
    OperatorNames& operator=(const OperatorNames&) = delete;
    OperatorNames& operator=(OperatorNames&&) = delete;

    ~OperatorNames() { CConstraint::m_allOperators.clear(); }
};

} // namespace scenariomatch
