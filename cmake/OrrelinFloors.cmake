# Makes a folder of links to the headers that a floor shows to those above it.
# They include from there, so they can't include anything else by accident.
#
#   orrelin_floor(NAME FOLDER_OR_HEADER...)
#
# sets NAME_FLOOR to that folder.
function(orrelin_floor name)
    set(root ${PROJECT_BINARY_DIR}/floors/${name})
    file(MAKE_DIRECTORY ${root})
    foreach(entry IN LISTS ARGN)
        cmake_path(GET entry FILENAME link)
        file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${entry} ${root}/${link} SYMBOLIC)
    endforeach()
    # Assertion lines name headers by their place in the project
    string(REGEX REPLACE "[^/]+$" "" place ${ARGV1})
    add_compile_options("-fmacro-prefix-map=${root}/=${place}")
    set(${name}_FLOOR ${root} PARENT_SCOPE)
endfunction()

# The editor's libraries implement the contract and see nothing else of src/
orrelin_floor(CONTRACT src/OrrelinEngine.h src/shared src/editor)
orrelin_floor(SESSION session)
orrelin_floor(HOST host/checks host/commandLine host/commands host/exchange
    host/project host/storage host/terminal)
