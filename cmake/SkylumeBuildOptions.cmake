# Options that every target of this project is built with.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(SKYLUME_CCACHE ccache)
if(SKYLUME_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${SKYLUME_CCACHE}")
endif()

# Everything that belongs together lies in one folder, so a library is always found beside its user:
# in the build tree, in an installed copy and in the installations of the tests.
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN")

file(RELATIVE_PATH source_from_build "${PROJECT_BINARY_DIR}" "${PROJECT_SOURCE_DIR}/")
add_compile_options(
    -Wall -Wextra $<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,-Wshadow> -Wsuggest-override
    $<$<BOOL:${SKYLUME_WERROR}>:-Werror>
    # Log lines name source files relative to the source root, never a path of the build machine; ccache may have made
    # the path relative to the build folder.
    "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/="
    "-fmacro-prefix-map=${PROJECT_BINARY_DIR}/="
    "-fmacro-prefix-map=${source_from_build}=")
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    add_compile_options("SHELL:-include \"${PROJECT_SOURCE_DIR}/cmake/ConstantStrlen.h\"")
    if(SKYLUME_BUILD_FUZZERS)
        add_compile_options(-fsanitize=fuzzer-no-link) # the fuzzer sees what the libraries do
    endif()
endif()
add_compile_definitions(QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)

if(SKYLUME_SANITIZE)
    add_compile_options("-fsanitize=${SKYLUME_SANITIZE}" -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options("-fsanitize=${SKYLUME_SANITIZE}")
endif()

if(WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 4)
    add_compile_options(-msse2 -mfpmath=sse) # floating-point results are those of every other system
endif()
if(NOT WIN32)
    add_link_options("LINKER:--as-needed")
    if(NOT SKYLUME_SANITIZE OR NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang") # Clang's sanitizers are in programs alone
        add_link_options("LINKER:--no-undefined")
    endif()
endif()

# skylume_library_code(<target>...): the stricter rules for what we ship. Texts are never converted from or
# to 8-bit by accident.
function(skylume_library_code)
    foreach(target IN LISTS ARGN)
        target_compile_definitions(${target} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
    endforeach()
endfunction()
