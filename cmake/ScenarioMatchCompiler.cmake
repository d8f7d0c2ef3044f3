# What every target of ours is compiled with: the language level, the warnings, the sanitizers.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

set(SCENARIOMATCH_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize takes them")

add_library(scenariomatch_compiler INTERFACE)
target_include_directories(scenariomatch_compiler INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(scenariomatch_compiler INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wdouble-promotion -Wold-style-cast -Wcast-align
    -Wcast-qual -Wundef -Wformat=2 -Wformat-security -Wimplicit-fallthrough -Wnon-virtual-dtor -Woverloaded-virtual
    -Wextra-semi -Wnull-dereference -Wunused -Wvla -Wswitch-enum -Wredundant-decls -Wmissing-declarations -Werror
    -fstack-protector-strong
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wuseless-cast -Wsuggest-override
    -Wtrampolines -Warith-conversion
    # GCC 12 sees overlapping copies inside std::string where there are none (its bug 105329).
    -Wno-restrict>
    $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety -Wdocumentation -Winconsistent-missing-destructor-override
    -Wunreachable-code-aggressive>)
target_compile_definitions(scenariomatch_compiler INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_STRICT_ITERATORS
    $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>
    $<$<CONFIG:RelWithDebInfo>:_FORTIFY_SOURCE=2>)
target_link_options(scenariomatch_compiler INTERFACE -Wl,-z,relro -Wl,-z,now)

# For the parts of the engine's library: nobody replaces its functions by others of the same name, so that calls among
# them need no detour.
add_library(scenariomatch_inner INTERFACE)
target_link_libraries(scenariomatch_inner INTERFACE scenariomatch_compiler)
target_compile_options(scenariomatch_inner INTERFACE $<$<CXX_COMPILER_ID:GNU>:-fno-semantic-interposition>)
if(SCENARIOMATCH_SANITIZE)
    target_compile_options(scenariomatch_compiler INTERFACE
        -fsanitize=${SCENARIOMATCH_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
        # GCC's flow analysis sees null dereferences in the checks that the sanitizer itself adds.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-null-dereference>)
    target_link_options(scenariomatch_compiler INTERFACE -fsanitize=${SCENARIOMATCH_SANITIZE})
endif()
