#pragma once

#include "lint/Source.h"

#include <cstdint>
#include <vector>

namespace scenariomatch::lint
{

// A node of a constraint with its place.
//
//     p->Position in z->Vertices      a call "in" of two attributes
struct ConstraintNode
{
    enum class Kind : std::uint8_t { Word, Attribute, Call };

    Kind kind = Kind::Word;
    // The word, the variable before the arrow, or the operator's name.
    Word name;
    // Behind the arrow.
    Word attribute;
    std::vector<ConstraintNode> children;
    // All of it.
    Range range;
    // Whether it is written NAME(...).
    bool isPrefix = false;
    // Whether it stands in parentheses of its own.
    bool isGroup = false;
};

// Whether two trees are the same but for their places.
bool isSameTree(const ConstraintNode& left, const ConstraintNode& right);

} // namespace scenariomatch::lint
