#pragma once

#include "lint/Diagnostic.h"
#include "lint/Project.h"

namespace scenariomatch::lint
{

// All checks of what files mean, after their shape has been checked by reading them.
void checkProject(const Project& project, Diagnostics& out);

// The checks by theme. Models whose shape is broken are left alone.

// Parents that are not declared, and circles of them.
void checkObjectTypes(const ObjectTypes& types, Diagnostics& out);
// Bodies of declared operators.
void checkDeclaredOperators(const Project& project, Diagnostics& out);
// Names, thresholds, alarm levels, types and clauses of one model.
void checkModel(const Project& project, const Model& model, Diagnostics& out);
// What a model is made of.
void checkComponents(const Project& project, const Model& model, Diagnostics& out);
// Names and types in a model's constraints, and how they are read.
void checkConstraints(const Project& project, const Model& model, Diagnostics& out);
// Whether the engine reads a constraint as it is meant; the cause when it does not.
void checkReading(const ModelConstraint& constraint, Diagnostics& out);
// Models that are used, defined and made of each other.
void checkUse(const Project& project, Diagnostics& out);

} // namespace scenariomatch::lint
