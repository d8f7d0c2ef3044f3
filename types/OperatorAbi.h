#pragma once

#include <version>

// What two libraries must have in common before one may hand C++ objects to the other, as one text:
// the compiler's family, the C++ library with what changes its layout, and this project's major
// version (SCENARIOMATCH_VERSION_MAJOR, given by the build). "gnu-libstdc++11-0", for instance.
//
// scenariomatch_add_operator() writes it into every operator's metadata under this key; an operator
// that carries another text is not loaded.
#define CS_OPERATOR_ABI_KEY "ScenarioMatchAbi"

#define CS_ABI_TEXT_OF(value) #value
#define CS_ABI_TEXT(value) CS_ABI_TEXT_OF(value)

#if defined(__clang__)
#define CS_ABI_COMPILER "clang"
#elif defined(__GNUC__)
#define CS_ABI_COMPILER "gnu"
#else
#define CS_ABI_COMPILER "other"
#endif

#if defined(_LIBCPP_ABI_VERSION)
#define CS_ABI_LIBRARY "libc++" CS_ABI_TEXT(_LIBCPP_ABI_VERSION)
#elif defined(_GLIBCXX_USE_CXX11_ABI) && _GLIBCXX_USE_CXX11_ABI
#define CS_ABI_LIBRARY "libstdc++11"
#elif defined(_GLIBCXX_USE_CXX11_ABI)
#define CS_ABI_LIBRARY "libstdc++"
#else
#define CS_ABI_LIBRARY "other"
#endif

// Containers that check themselves have other members.
#if defined(_GLIBCXX_DEBUG)
#define CS_ABI_CHECKED "checked"
#else
#define CS_ABI_CHECKED ""
#endif

#define CS_OPERATOR_ABI                                                                            \
    CS_ABI_COMPILER "-" CS_ABI_LIBRARY CS_ABI_CHECKED "-" CS_ABI_TEXT(SCENARIOMATCH_VERSION_MAJOR)
