#pragma once

#include "scenario/AgentOperator.h"

#include <string>

namespace scenariomatch
{

// Reads an operator description, free in its layout; "#" starts a comment that ends with the line.
//
//     file = { declaration } ;
//     declaration = "operator" NAME "(" [ parameter { "," parameter } ] ")" "{" constraint "}" ;
//     parameter = NAME ":" TYPE ;
//
// A declaration may use the ones before it. `table` holds the loaded operators; a declared name
// that it lacks is added with an object owned by the result. A declaration whose body uses an
// operator that is not in the table is reported on standard error and dropped, as is text that is
// no declaration. Throws std::out_of_range where a body nests too deeply.
CS_EXPORT AgentOperators readAgentOperators(
    const std::string& fileName, const std::string& text, CConstraint::OperatorTable& table);

} // namespace scenariomatch
