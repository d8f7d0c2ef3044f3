# What others get: public headers, the CMake package, pkg-config files, documents and examples. Programs, libraries and
# operators are installed where they are built.

include(CMakePackageConfigHelpers)

# The public headers, and those that they include.
set(SCENARIOMATCH_PUBLIC_HEADERS
    types/CAllClasses.h
    types/CClass.h
    types/CSAgent.h
    types/CSAllTypes.h
    types/CSBasicType.h
    types/CSInterval.h
    types/CSOperatorDescription.h
    types/CSOperatorInterfaceAbstract.h
    types/CSPlainValue.h
    types/CSTimeStamp.h
    types/Export.h
    types/LateAttributes.h
    scenario/CComponent.h
    scenario/CConstraint.h
    scenario/CParserTool.h
    scenario/CSAllScenarios.h
    scenario/CSScenario.h
    engine/CSEngine.h
    engine/CSScenarioInstance.h
    host/CSynchronizer.h
    host/ContextElement.h
    host/HostExport.h
    host/Information3D.h
    host/XmlTags.h
    host/ovkAbstractProcess.h
    host/ovkAbstractProcessFactory.h
    host/ovkLogEngine.h
    host/ovkLogger.h
    host/ovkPlugin.h
    host/rhmAbstractProcess.h
    host/rhmAbstractProcessEventRecognition.h
    host/rhmDataActor.h
    host/rhmDataContext.h
    host/rhmDataEvent.h
    plugin/RecognitionView.h
    plugin/ScenarioMatchProcess.h
    plugin/ScenarioMatchProcessPlugin.h
    plugin/StreamText.h)
set(SCENARIOMATCH_INCLUDE_FOLDER "${CMAKE_INSTALL_INCLUDEDIR}/scenariomatch")
foreach(header IN LISTS SCENARIOMATCH_PUBLIC_HEADERS)
    get_filename_component(folder "${header}" DIRECTORY)
    install(FILES "${header}" DESTINATION "${SCENARIOMATCH_INCLUDE_FOLDER}/${folder}" COMPONENT development)
endforeach()

# The CMake package: one file of targets per component.
set(cmake_folder "${CMAKE_INSTALL_LIBDIR}/cmake/ScenarioMatch")
foreach(component IN ITEMS engine host)
    install(EXPORT ScenarioMatch-${component}
        NAMESPACE ScenarioMatch:: DESTINATION "${cmake_folder}" COMPONENT development)
endforeach()
set(SCENARIOMATCH_DATA_FOLDER "${CMAKE_INSTALL_DATADIR}/scenariomatch")
configure_package_config_file(
    cmake/ScenarioMatchConfig.cmake.in "${PROJECT_BINARY_DIR}/ScenarioMatchConfig.cmake"
    INSTALL_DESTINATION "${cmake_folder}"
    PATH_VARS CMAKE_INSTALL_BINDIR SCENARIOMATCH_PLUGIN_FOLDER SCENARIOMATCH_DATA_FOLDER)
# What a newer minor version adds, an older one lacks; the libraries' names change with the major version.
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/ScenarioMatchConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(
    FILES
        "${PROJECT_BINARY_DIR}/ScenarioMatchConfig.cmake"
        "${PROJECT_BINARY_DIR}/ScenarioMatchConfigVersion.cmake"
        cmake/ScenarioMatchOperators.cmake
        types/OperatorAbi.h
    DESTINATION "${cmake_folder}" COMPONENT development)

# pkg-config files, which find their prefix from their own place.
file(RELATIVE_PATH pc_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" pc_prefix "\${pcfiledir}/${pc_prefix}")
set(pc_description_engine "Recognition of events in streams of tracked objects")
set(pc_description_host "Interfaces of a platform that loads the ScenarioMatch plug-in")
foreach(pc_component IN ITEMS engine host)
    set(pc_description "${pc_description_${pc_component}}")
    configure_file(cmake/scenariomatch.pc.in "${PROJECT_BINARY_DIR}/scenariomatch-${pc_component}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/scenariomatch-${pc_component}.pc"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)
endforeach()

# Documents and examples, in the tree's own order, so that their links hold.
set(documents "${CMAKE_INSTALL_DATADIR}/doc/scenariomatch")
install(FILES README.md CONTRIBUTING.md LICENSE DESTINATION "${documents}" COMPONENT documentation)
install(DIRECTORY docs examples DESTINATION "${documents}" COMPONENT documentation)
install(DIRECTORY tests/consumers/host tests/consumers/engine
    DESTINATION "${documents}/examples/embedding" COMPONENT documentation)
