# Debian packages by CPack: scenariomatch (what runs), libscenariomatch-dev (what others build with) and
# scenariomatch-doc. scripts/package builds them and looks them over.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "ScenarioMatch maintainers")
# Who speaks for the packages signs their changelog.
file(STRINGS packaging/debian/changelog signature REGEX "^ -- " LIMIT_COUNT 1)
string(REGEX REPLACE "^ -- (.*>).*" "\\1" CPACK_PACKAGE_CONTACT "${signature}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_COMPONENTS_ALL runtime development documentation)
set(CPACK_STRIP_FILES ON)
# Each package's description begins with a summary of its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
# Folders that are there for everyone.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME scenariomatch)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION video)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS scenariomatch-doc)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "recognises events in streams of tracked objects
Takes the output of any tracker and models of a few lines (a bag lies still
and its owner has gone), and gives events with participants, begin, end,
confidence and alarm level.

This package has the program, the plug-in for video analysis platforms, their
libraries and the standard operators.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libscenariomatch-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "scenariomatch (= ${version}), qt6-base-dev (>= 6.4)")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS scenariomatch-doc)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "development files of ScenarioMatch
Headers, CMake package and pkg-config files for operators of one's own, for
programs that load the recognition plug-in, and for programs that link the
recognition engine.")

set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME scenariomatch-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTATION_DESCRIPTION "documents and examples of ScenarioMatch
The model language, the operators, file formats, how to embed recognition and
how to write operators, and two complete examples to run.")

# What Debian wants beside each package's files; of no use in other installations.
option(SCENARIOMATCH_DEBIAN "Install the files that Debian packages must have" OFF)
if(SCENARIOMATCH_DEBIAN)
    find_program(GZIP_PROGRAM gzip REQUIRED)
    set(changelog "${PROJECT_BINARY_DIR}/changelog.Debian.gz")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS packaging/debian/changelog)
    execute_process(
        COMMAND "${GZIP_PROGRAM}" -9n INPUT_FILE "${PROJECT_SOURCE_DIR}/packaging/debian/changelog"
        OUTPUT_FILE "${changelog}" COMMAND_ERROR_IS_FATAL ANY)
    foreach(component IN LISTS CPACK_COMPONENTS_ALL)
        string(TOUPPER "${component}" name)
        install(FILES packaging/debian/copyright "${changelog}"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${name}_PACKAGE_NAME}" COMPONENT ${component})
    endforeach()

    # Manual pages lie compressed there.
    set(pages "\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_MANDIR}/man1")
    install(CODE "file(GLOB pages \"${pages}/scenariomatch*.1\")
        execute_process(COMMAND \"${GZIP_PROGRAM}\" -9nf \${pages} COMMAND_ERROR_IS_FATAL ANY)" COMPONENT runtime)

    # Which package others depend on that link our libraries; plug-ins have no such names.
    set(control_folder "${PROJECT_BINARY_DIR}/control")
    foreach(library IN ITEMS engine host)
        string(APPEND shlibs
            "libscenariomatch_${library} ${PROJECT_VERSION_MAJOR} scenariomatch (>= ${PROJECT_VERSION})\n")
    endforeach()
    file(WRITE "${control_folder}/shlibs" "${shlibs}")
    file(WRITE "${control_folder}/triggers" "activate-noawait ldconfig\n")
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${control_folder}/shlibs;${control_folder}/triggers")
else()
    install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/scenariomatch" COMPONENT runtime)
endif()
include(CPack)
