# The build tree holds a complete, runnable installation: launcher, libraries, plugins and data lie there as they
# would in an installed copy.

set(SKYLUME_APP_DIR "${PROJECT_BINARY_DIR}/app")

# All files in it, for whoever makes copies: the global property SKYLUME_APP_FILES.
define_property(GLOBAL PROPERTY SKYLUME_APP_FILES)

# skylume_place_in_app(<target>...): puts what a target builds into the installation.
function(skylume_place_in_app)
    foreach(target IN LISTS ARGN)
        set_target_properties(${target} PROPERTIES
            RUNTIME_OUTPUT_DIRECTORY "${SKYLUME_APP_DIR}"
            LIBRARY_OUTPUT_DIRECTORY "${SKYLUME_APP_DIR}")
        set_property(GLOBAL APPEND PROPERTY SKYLUME_APP_FILES "$<TARGET_FILE:${target}>")
    endforeach()
endfunction()

# skylume_add_data(<name> DESTINATION <folder in the installation> FILES <file>...): copies installation data
# and keeps it up to date. Files keep their path relative to the calling folder.
function(skylume_add_data name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESTINATION" "FILES")
    set(copies "")
    foreach(file IN LISTS arg_FILES)
        set(source "${CMAKE_CURRENT_SOURCE_DIR}/${file}")
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
