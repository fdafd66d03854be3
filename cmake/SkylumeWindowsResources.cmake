# skylume_windows_resources(<target> DESCRIPTION <text>)
#
# Adds Windows resources to a program, library or plugin: a version resource and, for a program, the icon and the
# manifest (supported systems, pixel density, privileges, style of the controls). Does nothing on other systems.

set(windows_resources_folder "${CMAKE_CURRENT_LIST_DIR}/windows")

function(skylume_windows_resources target)
    if(NOT WIN32)
        return()
    endif()
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESCRIPTION" "")
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
        set(file_type VFT_APP)
        set(icon "${PROJECT_SOURCE_DIR}/data/icons/skylume.ico")
        set(manifest "${windows_resources_folder}/program.manifest")
        set(program_resources "1 ICON \"${icon}\"\n1 RT_MANIFEST \"${manifest}\"")
    else()
        set(file_type VFT_DLL)
        set(icon "")
        set(manifest "")
        set(program_resources "")
    endif()
    string(REPLACE "." "," version_numbers "${PROJECT_VERSION}.0")

    set(resources "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
    configure_file("${windows_resources_folder}/resources.rc.in" "${resources}.in" @ONLY)
    # The target's file name is a generator expression, so the file is completed at generation time.
    file(GENERATE OUTPUT "${resources}" INPUT "${resources}.in" TARGET ${target})
    target_sources(${target} PRIVATE "${resources}")
    set_property(SOURCE "${resources}" TARGET_DIRECTORY ${target}
        PROPERTY OBJECT_DEPENDS ${icon} ${manifest})
endfunction()
