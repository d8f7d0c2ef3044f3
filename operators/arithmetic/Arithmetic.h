#pragma once

#include "operators/Values.h"

#include <cstddef>

// Arithmetic on numbers. The result is a DOUBLE; there is none when an argument is missing or no
// number, or when the result is not finite (a division by zero among them):
//
//     max(p->Width, p->Depth) < 1
//     distance(p->Position, q->Position) < value(p->Reach)
namespace scenariomatch
{

// min and max take two to eight numbers.
constexpr std::size_t kMaximumOperands = 8;

Value sum(const Arguments& arguments);
Value difference(const Arguments& arguments);
Value product(const Arguments& arguments);
Value quotient(const Arguments& arguments);
Value absolute(const Arguments& arguments);
Value least(const Arguments& arguments);
Value greatest(const Arguments& arguments);
// The one argument itself, of any type: the same object, with its history.
Value handOn(const Arguments& arguments);

} // namespace scenariomatch
