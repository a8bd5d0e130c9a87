# What `cmake --install` puts in place: the product, the layers below it, the
# headers, the host, a CMake package and a pkg-config file.

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
set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/OrrelinEditor)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${PROJECT_NAME})

# The layers have no stable interface of their own, so they share the version
foreach(target IN LISTS targets)
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR})
    target_include_directories(${target} INTERFACE
        $<INSTALL_INTERFACE:${header_dir}>)
endforeach()

# Named in lower case is what only the sources next to it include
install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/ DESTINATION ${header_dir}
    FILES_MATCHING REGEX "/([A-Z][A-Za-z]*)\\.h$"
    PATTERN MergeIndex.h EXCLUDE)
if(ORRELIN_USES_STANDINS)
    list(APPEND targets CorradeUtility Magnum)
    install(DIRECTORY
        ${PROJECT_SOURCE_DIR}/platform/corrade/Corrade
        ${PROJECT_SOURCE_DIR}/platform/magnum/Magnum
        DESTINATION ${header_dir}/standins
        FILES_MATCHING PATTERN *.h)
endif()
install(TARGETS ${targets} EXPORT ${PROJECT_NAME}Targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(ORRELIN_EDITOR_LIBRARIES)
    # The editor links the library where it is built; a package for others would
    # have to name the editor's own
    return()
endif()
install(FILES ${PROJECT_SOURCE_DIR}/platform/OrrelinEditorData/LICENSE-Unicode.txt
    DESTINATION ${CMAKE_INSTALL_DOCDIR})

install(EXPORT ${PROJECT_NAME}Targets
    NAMESPACE Orrelin::
    DESTINATION ${package_dir})
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
    DESTINATION ${package_dir})

if(ORRELIN_USES_STANDINS)
    set(pkgconfig_cflags "-I\${includedir}/standins")
    set(pkgconfig_libs "-lOrrelinCorradeUtility")
else()
    set(pkgconfig_libs "-lCorradeUtility")
endif()
configure_file(cmake/pkgconfig.pc.in ${PROJECT_NAME}.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/${PROJECT_NAME}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orrelin-localization)
set(CPACK_PACKAGE_CONTACT "Orrelin developers <developers@orrelin.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "Localization tools and change manager of a 3D scene editor")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The public headers include RapidJSON's
set(CPACK_DEBIAN_PACKAGE_DEPENDS rapidjson-dev)
set(CPACK_STRIP_FILES ON)
include(CPack)
