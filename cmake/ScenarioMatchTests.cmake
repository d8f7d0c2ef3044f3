# scenariomatch_add_test(NAME name SOURCES file... [LIBRARIES target...])
#
# Builds one GoogleTest program from the files of a test folder and hands each of its tests to CTest.
# Tests read the files of tests/data/ through the macro SCENARIOMATCH_TEST_DATA.
function(scenariomatch_add_test)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME" "SOURCES;LIBRARIES")
    add_executable(${arg_NAME} ${arg_SOURCES})
    target_link_libraries(${arg_NAME} PRIVATE scenariomatch_compiler ${arg_LIBRARIES} GTest::gmock GTest::gtest_main)
    target_compile_definitions(${arg_NAME} PRIVATE
        SCENARIOMATCH_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data"
        SCENARIOMATCH_BUILD_BIN="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}"
        SCENARIOMATCH_BUILD_LIB="${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
    gtest_discover_tests(${arg_NAME} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 240)
endfunction()
