#pragma once

#include "lint/ConstraintTree.h"
#include "lint/Diagnostic.h"
#include "lint/Model.h"
#include "lint/ObjectTypes.h"
#include "types/CSOperatorDescription.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch::lint
{

// An operator that a plug-in provides.
struct LoadedOperator
{
    CSOperatorDescription description;
    bool isTemporal = false;
};

// An operator on agents that an operator description declares.
struct DeclaredOperator
{
    Word name;
    // Names and types.
    std::vector<Variable> parameters;
    ModelConstraint body;
};

// All operators that constraints may name.
class OperatorTable
{
public:
    void addLoaded(const std::string& name, LoadedOperator op);

    // Reads an operator description and reports what is wrong with the shape of it.
    void read(const Source& source, Diagnostics& out);

    // Whether any plug-in's operators are known. Without them nothing is said about operators.
    bool isLoaded() const { return !m_loaded.empty(); }

    const LoadedOperator* findLoaded(std::string_view name) const;
    bool isDeclared(std::string_view name) const;
    // The first declaration of the name whose parameters take objects of these types.
    const DeclaredOperator* findDeclared(
        std::string_view name,
        const std::vector<std::string>& types,
        const ObjectTypes& objectTypes) const;

    const std::vector<DeclaredOperator>& declared() const { return m_declared; }

    // All names, in alphabetical order.
    const std::set<std::string>& names() const { return m_names; }

private:
    std::map<std::string, LoadedOperator, std::less<>> m_loaded;
    std::vector<DeclaredOperator> m_declared;
    std::set<std::string> m_names;
};

} // namespace scenariomatch::lint
