#pragma once

#include "types/CSAgent.h"
#include "types/CSOperatorInterfaceAbstract.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace scenariomatch
{
class AgentOperator;
}

// One node of a constraint tree, and the reader that makes a tree of a constraint's text.
//
//     constraint = term | "(" constraint ")" | "(" constraint ")" OP constraint
//                | NAME "(" list ")" | "!" "(" constraint ")" | NAME "(" list ")" OP constraint
//                | LEFT OP RIGHT ;
//     list = item { "," item } ;   item = word | VARIABLE "->" ATTRIBUTE ;
//
// There is no precedence: text is split at the first "(", the first blank, the first "->" and the
// first ")". The splitting rules with their blind spots are the language and are told in
// docs/language.md.
//
// A node owns its children. The operator object belongs to its plug-in. Reading enters operator
// names into m_allOperators and is done by one thread.
class CS_EXPORT CConstraint
{
public:
    using Bindings = std::map<std::string, std::shared_ptr<CSAgent>>;
    using OperatorTable = std::map<std::string, CSOperatorInterfaceAbstract*>;

    CConstraint() = default;
    CConstraint(const CConstraint&) = delete;
    CConstraint(CConstraint&&) = delete;
    CConstraint& operator=(const CConstraint&) = delete;
    CConstraint& operator=(CConstraint&&) = delete;
    virtual ~CConstraint();

    // Parses the text into this node and new children. Throws std::out_of_range where a split
    // position lies past the end of the text, where expressions nest deeper than kMaximumDepth, and
    // where the name of an operator is longer than kMaximumNameLength.
    void read(std::string text);
    // Appends one leaf per item of a comma-separated argument list; only the first word of an item
    // counts.
    void readAttributes(std::string text);

    // Writes the tree to standard output.
    void print() const;

    // Takes the temporal flag over from the operator object, which must be set. Children are not
    // visited.
    void classifyConstraints(const std::vector<std::string>& unused);
    // Turns the leaves that are constants of the table, or numbers, into numbers; the numbers are
    // traced on standard output.
    void fillConstraintsConstants(const std::map<std::string, double>& constants);
    // Whether every operator of the tree is in the table; reports the first that is not on standard
    // error.
    bool checkOperator(const OperatorTable& loaded) const;

    // The value of a constraint on the bindings, which stay as they are.
    static std::shared_ptr<CSBasicType> verify(const CConstraint& root, Bindings bindings);
    // The same on the caller's own map: a variable that the root looks up in vain is entered with
    // an empty agent; below an operator nothing is entered. An attribute that an agent lacks is
    // entered into the agent.
    static std::shared_ptr<CSBasicType> check(const CConstraint& node, Bindings& bindings);

    // Whether the node is an attribute access or a word or number, and not an operator.
    bool isLeaf() const;

    // Not owned; null for leaves and as long as the operator is not loaded.
    CSOperatorInterfaceAbstract* m_operator = nullptr;
    // "NULL" for a word or number, "->" for an attribute access, else the operator's name.
    std::string m_operatorName;
    // The word, or the variable before the arrow.
    std::string m_value;
    double m_numericValue = 0.0;
    bool m_isNumeric = false;
    bool m_isTemporal = false;
    // The attribute after the arrow.
    std::string m_attribute;
    std::vector<std::unique_ptr<CConstraint>> m_children;
    // For who evaluates with agents in slots: the slot of an attribute access's variable, -1 for
    // none.
    std::int32_t m_slot = -1;

    // The process-wide table of operator names. Reading a constraint inserts the names that are
    // new, with null.
    static OperatorTable m_allOperators;

    static constexpr int kMaximumDepth = 200;
    static constexpr std::size_t kMaximumNameLength = 4096;
};
