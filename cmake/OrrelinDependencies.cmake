# Finds the libraries that the project needs. Uses Corrade and Magnum if they
# are installed, otherwise the stand-ins in standins/.

find_package(PkgConfig REQUIRED)

find_path(RAPIDJSON_INCLUDE_DIR rapidjson/document.h REQUIRED)
add_library(RapidJSON INTERFACE IMPORTED)
target_include_directories(RapidJSON SYSTEM INTERFACE ${RAPIDJSON_INCLUDE_DIR})

# Debian's CMake package of libzip fails where its command-line tools are
# missing; its pkg-config file does not.
pkg_check_modules(LibZip REQUIRED IMPORTED_TARGET libzip)
pkg_check_modules(PugiXml REQUIRED IMPORTED_TARGET pugixml)

if(NOT ORRELIN_STANDINS)
    find_package(Corrade QUIET CONFIG COMPONENTS Utility)
    if(Corrade_FOUND)
        find_package(Magnum QUIET CONFIG)
    endif()
endif()
if(Corrade_FOUND AND Magnum_FOUND)
    message(STATUS "Corrade and Magnum: the installed ones")
else()
    message(STATUS "Corrade and Magnum: the stand-ins in standins/")
    set(ORRELIN_USES_STANDINS ON)
endif()
