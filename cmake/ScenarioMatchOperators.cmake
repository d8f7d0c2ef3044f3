# scenariomatch_add_operator(NAME name SOURCES file... [OUTPUT_DIRECTORY dir] [NO_INSTALL])
#
# Builds one operator plug-in (a module with one root object that implements CSOperatorInterfaceAbstract),
# names its file after NAME and installs it where the program looks for operators.
function(scenariomatch_add_operator)
    cmake_parse_arguments(PARSE_ARGV 0 arg "NO_INSTALL" "NAME;OUTPUT_DIRECTORY" "SOURCES")
    if(NOT arg_NAME OR NOT arg_SOURCES)
        message(FATAL_ERROR "scenariomatch_add_operator needs NAME and SOURCES")
    endif()
    if(NOT arg_OUTPUT_DIRECTORY)
        set(arg_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib/${SCENARIOMATCH_OPERATOR_SUBDIR}")
    endif()
    set(target operator_${arg_NAME})
    add_library(${target} MODULE ${arg_SOURCES})
    target_link_libraries(${target} PRIVATE ScenarioMatch::engine Qt6::Core)
    if(TARGET scenariomatch_compiler)
        target_link_libraries(${target} PRIVATE scenariomatch_compiler)
    endif()
    set_target_properties(${target} PROPERTIES
        AUTOMOC ON
        PREFIX ""
        OUTPUT_NAME "${arg_NAME}"
        LIBRARY_OUTPUT_DIRECTORY "${arg_OUTPUT_DIRECTORY}")
    if(NOT arg_NO_INSTALL)
        install(TARGETS ${target} LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/${SCENARIOMATCH_OPERATOR_SUBDIR}")
    endif()
endfunction()
