# Compiler options that all of the project's own targets share.

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual)
if(ORRELIN_WARNINGS_AS_ERRORS)
    add_compile_options(-Werror)
endif()

# Assertion lines name source files by their place in the project, not by
# where it was built.
add_compile_options(
    "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=")

if(ORRELIN_BUILD_FUZZERS)
    add_compile_options(-fsanitize=fuzzer-no-link)
    add_link_options(-fsanitize=fuzzer-no-link)
endif()
if(ORRELIN_SANITIZE)
    add_compile_options(-fsanitize=${ORRELIN_SANITIZE}
        -fno-sanitize-recover=all -fno-omit-frame-pointer)
    # GCC warns of the code that sanitizers add
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
        add_compile_options(-Wno-array-bounds -Wno-stringop-overflow
            -Wno-maybe-uninitialized)
    endif()
    add_link_options(-fsanitize=${ORRELIN_SANITIZE})
    # RapidJSON adds offsets to null pointers, which only Clang reports
    if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
        add_compile_options(-fno-sanitize=pointer-overflow)
    endif()
endif()
