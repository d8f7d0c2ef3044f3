#pragma once

#include <cstdlib>

// In a library of the tests: whether code of it ever ran can be told by the environment.
inline int leaveTrace(const char* name)
{
    return setenv("SCENARIOMATCH_TEST_TRACE", name, 1);
}
