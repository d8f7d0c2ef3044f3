# Operator plug-ins, in this tree and in projects that find the installed package.

# What the functions below need wherever they are called: the variables of the file that includes this one are gone in
# other folders, and after a function that looks for the package.
foreach(name IN ITEMS VERSION_MAJOR OPERATOR_DESTINATION)
    if("${SCENARIOMATCH_${name}}" STREQUAL "")
        message(FATAL_ERROR "SCENARIOMATCH_${name} must be set before ScenarioMatchOperators.cmake is included")
    endif()
    set_property(GLOBAL PROPERTY SCENARIOMATCH_${name} "${SCENARIOMATCH_${name}}")
endforeach()

# Where the header stands that tells what a plug-in must have in common with the engine: beside this file when
# installed, else in the tree.
if(EXISTS "${CMAKE_CURRENT_LIST_DIR}/OperatorAbi.h")
    set_property(GLOBAL PROPERTY SCENARIOMATCH_OPERATOR_ABI_FOLDER "${CMAKE_CURRENT_LIST_DIR}")
else()
    get_filename_component(abi_folder "${CMAKE_CURRENT_LIST_DIR}/../types" ABSOLUTE)
    set_property(GLOBAL PROPERTY SCENARIOMATCH_OPERATOR_ABI_FOLDER "${abi_folder}")
endif()

# scenariomatch_operator_abi(variable)
#
# The tag of what the current compiler makes with the flags that all targets share (CMAKE_CXX_FLAGS). The compiler is asked
# once per run of CMake.
function(scenariomatch_operator_abi variable)
    get_property(tag GLOBAL PROPERTY SCENARIOMATCH_OPERATOR_ABI)
    if(NOT tag)
        get_property(abi_folder GLOBAL PROPERTY SCENARIOMATCH_OPERATOR_ABI_FOLDER)
        get_property(version_major GLOBAL PROPERTY SCENARIOMATCH_VERSION_MAJOR)
        set(probe "${CMAKE_BINARY_DIR}/CMakeFiles/scenariomatch_operator_abi")
        try_compile(compiled
            SOURCE_FROM_CONTENT abi.cpp "#include \"OperatorAbi.h\"
                static const char tag[] = \"ABI[\" CS_OPERATOR_ABI \"]\";
                int main(int argc, char**) { return tag[argc]; }"
            CMAKE_FLAGS "-DINCLUDE_DIRECTORIES=${abi_folder}"
            COMPILE_DEFINITIONS "-DSCENARIOMATCH_VERSION_MAJOR=${version_major}"
            CXX_STANDARD 20
            COPY_FILE "${probe}"
            OUTPUT_VARIABLE output
            NO_CACHE)
        if(compiled)
            file(STRINGS "${probe}" tag REGEX "ABI\\[.*\\]" LIMIT_COUNT 1)
            string(REGEX REPLACE ".*ABI\\[([^]]*)\\].*" "\\1" tag "${tag}")
        endif()
        if(NOT tag)
            message(FATAL_ERROR "The compiler does not tell what its operators must have in common:\n${output}")
        endif()
        set_property(GLOBAL PROPERTY SCENARIOMATCH_OPERATOR_ABI "${tag}")
    endif()
    set(${variable} "${tag}" PARENT_SCOPE)
endfunction()

# scenariomatch_tag_operator(target)
#
# Lets Qt's meta object compiler write the tag into the metadata of the root objects that the target compiles. A source of
# its own in the target stops the build when flags of the target or its folder make something else than the tag says.
function(scenariomatch_tag_operator target)
    scenariomatch_operator_abi(tag)
    get_property(abi_folder GLOBAL PROPERTY SCENARIOMATCH_OPERATOR_ABI_FOLDER)
    get_property(version_major GLOBAL PROPERTY SCENARIOMATCH_VERSION_MAJOR)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    set_property(TARGET ${target} APPEND PROPERTY AUTOMOC_MOC_OPTIONS "-MScenarioMatchAbi=${tag}")
    set(check "${CMAKE_CURRENT_BINARY_DIR}/${target}_abi.cpp")
    file(CONFIGURE OUTPUT "${check}" @ONLY CONTENT [[
// What this target is compiled with, compared with what its metadata says.
#undef SCENARIOMATCH_VERSION_MAJOR
#define SCENARIOMATCH_VERSION_MAJOR @version_major@
#include "@abi_folder@/OperatorAbi.h"

#include <string_view>

static_assert(
    std::string_view(CS_OPERATOR_ABI) == "@tag@",
    "@target@ has flags that change the layout of C++ objects, and its tag (@tag@) does not tell: "
    "give such flags in CMAKE_CXX_FLAGS");
]])
    target_sources(${target} PRIVATE "${check}")
endfunction()

# scenariomatch_add_operator(NAME name SOURCES file... [TEST file...] [OUTPUT_DIRECTORY dir] [NO_INSTALL])
#
# Builds one operator plug-in (a module with one root object that implements CSOperatorInterfaceAbstract), names its
# file after NAME and installs it where the program looks for operators, unless the variable
# SCENARIOMATCH_OPERATOR_DESTINATION says otherwise. It is built into the folder operators/ of the project's build folder,
# unless OUTPUT_DIRECTORY or the variable SCENARIOMATCH_OPERATOR_OUTPUT_DIRECTORY says otherwise.
# TEST builds a program that finds that folder under the name OPERATOR_FOLDER, and has CTest run it.
function(scenariomatch_add_operator)
    cmake_parse_arguments(PARSE_ARGV 0 arg "NO_INSTALL" "NAME;OUTPUT_DIRECTORY" "SOURCES;TEST")
    if(NOT arg_NAME OR NOT arg_SOURCES)
        message(FATAL_ERROR "scenariomatch_add_operator needs NAME and SOURCES")
    endif()
    if(NOT arg_OUTPUT_DIRECTORY)
        set(arg_OUTPUT_DIRECTORY "${SCENARIOMATCH_OPERATOR_OUTPUT_DIRECTORY}")
    endif()
    if(NOT arg_OUTPUT_DIRECTORY)
        set(arg_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/operators")
    endif()
    set(target operator_${arg_NAME})
    add_library(${target} MODULE ${arg_SOURCES})
    target_link_libraries(${target} PRIVATE ScenarioMatch::engine Qt6::Core)
    if(TARGET scenariomatch_compiler)
        target_link_libraries(${target} PRIVATE scenariomatch_compiler)
    endif()
    set_target_properties(${target} PROPERTIES
        PREFIX ""
        OUTPUT_NAME "${arg_NAME}"
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        INSTALL_RPATH "$ORIGIN/../.."
        LIBRARY_OUTPUT_DIRECTORY "${arg_OUTPUT_DIRECTORY}")
    scenariomatch_tag_operator(${target})
    if(NOT arg_NO_INSTALL)
        if(NOT SCENARIOMATCH_OPERATOR_DESTINATION)
            get_property(SCENARIOMATCH_OPERATOR_DESTINATION GLOBAL PROPERTY SCENARIOMATCH_OPERATOR_DESTINATION)
        endif()
        install(TARGETS ${target} LIBRARY DESTINATION "${SCENARIOMATCH_OPERATOR_DESTINATION}" COMPONENT runtime)
    endif()
    if(arg_TEST)
        set(test ${arg_NAME}_test)
        add_executable(${test} ${arg_TEST})
        target_link_libraries(${test} PRIVATE ScenarioMatch::engine)
        target_compile_definitions(${test} PRIVATE OPERATOR_FOLDER="${arg_OUTPUT_DIRECTORY}")
        add_dependencies(${test} ${target})
        add_test(NAME ${arg_NAME} COMMAND ${test})
    endif()
endfunction()
