# Build options for all targets of this project.

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

# Libraries are always in the same folder as the programs and libraries that use them: in the build tree, in an
# installed copy and in the installations of the tests.
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN")

file(RELATIVE_PATH source_from_build "${PROJECT_BINARY_DIR}" "${PROJECT_SOURCE_DIR}/")
add_compile_options(
    -Wall -Wextra $<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,-Wshadow> -Wsuggest-override
    $<$<BOOL:${SKYLUME_WERROR}>:-Werror>
    # Log lines contain source paths relative to the source folder, not absolute paths. ccache may make paths relative
    # to the build folder.
    "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/="
    "-fmacro-prefix-map=${PROJECT_BINARY_DIR}/="
    "-fmacro-prefix-map=${source_from_build}=")
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    add_compile_options("SHELL:-include \"${PROJECT_SOURCE_DIR}/cmake/ConstantStrlen.h\"")
    if(SKYLUME_BUILD_FUZZERS)
        add_compile_options(-fsanitize=fuzzer-no-link) # coverage of the libraries guides the fuzzer
    endif()
endif()
add_compile_definitions(QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)

if(SKYLUME_SANITIZE)
    add_compile_options("-fsanitize=${SKYLUME_SANITIZE}" -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options("-fsanitize=${SKYLUME_SANITIZE}")
endif()

if(WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 4)
    add_compile_options(-msse2 -mfpmath=sse) # same floating-point results as on other systems
endif()
if(NOT WIN32)
    add_link_options("LINKER:--as-needed")
    if(NOT SKYLUME_SANITIZE OR NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang") # Clang links sanitizers into programs only
        add_link_options("LINKER:--no-undefined")
    endif()
endif()

# skylume_library_code(<target>...): stricter rules for code that is shipped. Strings are never converted from or to
# 8-bit implicitly.
function(skylume_library_code)
    foreach(target IN LISTS ARGN)
        target_compile_definitions(${target} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
    endforeach()
endfunction()
