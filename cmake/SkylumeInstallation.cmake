# The build tree contains a complete installation in the folder app/: launcher, libraries, plugins and data have the
# same places as in an installed copy.

set(SKYLUME_APP_DIR "${PROJECT_BINARY_DIR}/app")

# Global property: all files of this installation. Used to copy it.
define_property(GLOBAL PROPERTY SKYLUME_APP_FILES)

# skylume_place_in_app(<target>...): places the target's library or executable in the installation.
function(skylume_place_in_app)
    foreach(target IN LISTS ARGN)
        set_target_properties(${target} PROPERTIES
            RUNTIME_OUTPUT_DIRECTORY "${SKYLUME_APP_DIR}"
            LIBRARY_OUTPUT_DIRECTORY "${SKYLUME_APP_DIR}")
        set_property(GLOBAL APPEND PROPERTY SKYLUME_APP_FILES "$<TARGET_FILE:${target}>")
    endforeach()
endfunction()

# skylume_add_data(<name> DESTINATION <folder in the installation> [BASE <folder>] FILES <file>...)
#
# Adds the target <name>, which copies data files to the installation whenever they have changed. File names are
# relative to BASE, by default the folder of the calling CMakeLists.txt; relative paths are kept below the destination.
function(skylume_add_data name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESTINATION;BASE" "FILES")
    if(NOT arg_BASE)
        set(arg_BASE "${CMAKE_CURRENT_SOURCE_DIR}")
    endif()
    set(copies "")
    foreach(file IN LISTS arg_FILES)
        set(source "${arg_BASE}/${file}")
        set(copy "${SKYLUME_APP_DIR}/${arg_DESTINATION}/${file}")
        cmake_path(NORMAL_PATH copy)
        add_custom_command(OUTPUT "${copy}"
            COMMAND "${CMAKE_COMMAND}" -E copy "${source}" "${copy}"
            DEPENDS "${source}"
            VERBATIM)
        list(APPEND copies "${copy}")
    endforeach()
    add_custom_target(${name} ALL DEPENDS ${copies})
    set_property(GLOBAL APPEND PROPERTY SKYLUME_APP_FILES ${copies})
endfunction()
