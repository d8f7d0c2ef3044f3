# The page that reports are made from: web/ builds one file of it, which becomes a list of bytes that the program is compiled
# with. Nothing is fetched here: what web/ is built with is there before.

option(SCENARIOMATCH_REPORT "Make the program able to write reports; needs Node.js and `npm ci` in web/" ON)
if(NOT SCENARIOMATCH_REPORT)
    message(STATUS "Reports: off; scenariomatch report and run --report will say that this program writes none")
    return()
endif()

set(web "${PROJECT_SOURCE_DIR}/web")
find_program(SCENARIOMATCH_NPM npm)
if(NOT SCENARIOMATCH_NPM OR NOT EXISTS "${web}/node_modules")
    message(FATAL_ERROR "The report page cannot be built: run `npm ci` in web/ first (scripts/install-packages does), or "
        "configure with -DSCENARIOMATCH_REPORT=OFF for a program without reports")
endif()

file(GLOB_RECURSE web_sources CONFIGURE_DEPENDS
    "${web}/src/*" "${web}/*.html" "${web}/*.json" "${web}/*.ts")
list(FILTER web_sources EXCLUDE REGEX "/(node_modules|dist|tests?)/")
set(page "${PROJECT_BINARY_DIR}/web/report.html")
add_custom_command(
    OUTPUT "${page}"
    COMMAND "${SCENARIOMATCH_NPM}" run --silent build -- --outDir "${PROJECT_BINARY_DIR}/web" --emptyOutDir --logLevel warn
    DEPENDS ${web_sources}
    WORKING_DIRECTORY "${web}"
    COMMENT "Building the report page"
    VERBATIM)

set(SCENARIOMATCH_REPORT_BYTES "${PROJECT_BINARY_DIR}/generated/report/ReportPage.inc")
add_custom_command(
    OUTPUT "${SCENARIOMATCH_REPORT_BYTES}"
    COMMAND "${CMAKE_COMMAND}" "-DFROM=${page}" "-DTO=${SCENARIOMATCH_REPORT_BYTES}" -P "${PROJECT_SOURCE_DIR}/cmake/WriteBytes.cmake"
    DEPENDS "${page}" "${PROJECT_SOURCE_DIR}/cmake/WriteBytes.cmake"
    VERBATIM)
