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

CSPlainValue sum(Arguments arguments);
CSPlainValue difference(Arguments arguments);
CSPlainValue product(Arguments arguments);
CSPlainValue quotient(Arguments arguments);
CSPlainValue absolute(Arguments arguments);
CSPlainValue least(Arguments arguments);
CSPlainValue greatest(Arguments arguments);
// The one argument itself, of any type, with its object and history.
CSPlainValue handOn(Arguments arguments);

} // namespace scenariomatch
