#pragma once

#include "lint/ConstraintTree.h"
#include "lint/PlacedText.h"

#include <optional>

namespace scenariomatch::lint
{

// The constraint as the engine reads it, blind spots included (CConstraint::read), with places.
// Nothing where the engine finds that it nests too deeply or that a name is too long.
std::optional<ConstraintNode> readConstraint(const PlacedText& text);

} // namespace scenariomatch::lint
