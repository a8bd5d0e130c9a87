# `cmake --install` installs the product, the layers below it, the headers, the
# host, a CMake package and a pkg-config file.

include(CMakePackageConfigHelpers)

set(targets OrrelinEditorToolsLocalization)
if(NOT ORRELIN_EDITOR_LIBRARIES)
    list(APPEND targets
        OrrelinEditor
        OrrelinEditorData
        OrrelinEditorToolsZip
        OrrelinEditorUtils
        OrrelinEngine
        OrrelinEngineData)
endif()
set(package orrelin-localization)
set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/OrrelinEditor)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${PROJECT_NAME})

# Private headers aren't installed
install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/ DESTINATION ${header_dir}
    COMPONENT Development
    FILES_MATCHING PATTERN *.h
    PATTERN Implementation EXCLUDE)
if(ORRELIN_USES_STANDINS)
    list(APPEND targets CorradeUtility)
    set(interface_targets Magnum)
    install(DIRECTORY
        ${PROJECT_SOURCE_DIR}/standins/corrade/Corrade
        ${PROJECT_SOURCE_DIR}/standins/magnum/Magnum
        DESTINATION ${header_dir}/standins
        COMPONENT Development
        FILES_MATCHING PATTERN *.h)
endif()

# The layers have no stable interface of their own, so they share the version
foreach(target IN LISTS targets)
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR})
    target_include_directories(${target} INTERFACE
        $<INSTALL_INTERFACE:${header_dir}>)
endforeach()
install(TARGETS ${targets} ${interface_targets} EXPORT ${PROJECT_NAME}Targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        COMPONENT Runtime
        NAMELINK_COMPONENT Development)
if(ORRELIN_EDITOR_LIBRARIES)
    # The editor links the library where it is built; a package for others would
    # have to name the editor's own
    return()
endif()
install(FILES ${PROJECT_SOURCE_DIR}/platform/OrrelinEditorData/LICENSE-Unicode.txt
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
    COMPONENT Runtime)

install(EXPORT ${PROJECT_NAME}Targets
    NAMESPACE Orrelin::
    DESTINATION ${package_dir}
    COMPONENT Development)
configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/Config.cmake.in
    ${PROJECT_BINARY_DIR}/${PROJECT_NAME}Config.cmake
    INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/${PROJECT_NAME}ConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/${PROJECT_NAME}Config.cmake
    ${PROJECT_BINARY_DIR}/${PROJECT_NAME}ConfigVersion.cmake
    DESTINATION ${package_dir}
    COMPONENT Development)

file(RELATIVE_PATH pkgconfig_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
if(ORRELIN_USES_STANDINS)
    set(pkgconfig_cflags "-I\${includedir}/standins")
    set(pkgconfig_libs "-lOrrelinCorradeUtility")
else()
    get_target_property(corrade_library Corrade::Utility IMPORTED_LOCATION_RELEASE)
    cmake_path(GET corrade_library PARENT_PATH corrade_libraries)
    set(pkgconfig_cflags "-I${CORRADE_INCLUDE_DIR} -I${MAGNUM_INCLUDE_DIR}")
    set(pkgconfig_libs "-L${corrade_libraries} -lCorradeUtility")
endif()
configure_file(cmake/pkgconfig.pc.in ${PROJECT_NAME}.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/${PROJECT_NAME}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT Development)

# Two packages: one to run the tool, one to build with the library
set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL Runtime Development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGE_NAME ${package})
set(CPACK_PACKAGE_CONTACT "Orrelin developers <developers@orrelin.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "Localization tools and change manager of a 3D scene editor")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${package}-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
# The public headers include RapidJSON's
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${package} (= ${PROJECT_VERSION}), rapidjson-dev")
set(CPACK_STRIP_FILES ON)
include(CPack)
