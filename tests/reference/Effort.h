#pragma once

#include <cstdlib>

namespace scenariomatch
{

// How much of the comparison runs: all that is promised where the build is optimised, every tenth
// case in debug and sanitizer builds, which are slower by as much. SCENARIOMATCH_EXHAUSTIVE=1 in
// the environment adds the families that take minutes.
#if defined(NDEBUG) && !defined(__SANITIZE_THREAD__) && !defined(__SANITIZE_ADDRESS__)
inline constexpr unsigned kEveryCase = 1;
#else
inline constexpr unsigned kEveryCase = 10;
#endif

inline bool isExhaustive()
{
    return std::getenv("SCENARIOMATCH_EXHAUSTIVE") != nullptr;
}

} // namespace scenariomatch
