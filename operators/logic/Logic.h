#pragma once

#include "operators/Values.h"

// Truth values joined, with their confidences:
//
//     (p->Position in z->Vertices) and p->Posture = 401
//     !(p->Position in z->Vertices)
//
// An argument that is missing or no truth value makes the result false, also of `!` and `or`.
namespace scenariomatch
{

// `and`: the confidence is the product of both.
CSPlainValue conjunction(Arguments arguments);
// `or`: the confidence is the greatest of the true ones; when none is true, the product of both.
CSPlainValue disjunction(Arguments arguments);
// `!`: the confidence stays.
CSPlainValue negation(Arguments arguments);

} // namespace scenariomatch
