# The environment of every test: no display is needed, the locale is fixed, nothing is heard or shown on the developer's
# desktop, and the sanitizers know about Qt.
set(SKYLUME_TEST_ENVIRONMENT
    QT_QPA_PLATFORM=offscreen
    LC_ALL=C.UTF-8
    CANBERRA_DRIVER=none
    DBUS_SESSION_BUS_ADDRESS=unix:path=/dev/null
    QRVL_BACKEND=simulator
    "LSAN_OPTIONS=suppressions=${CMAKE_CURRENT_LIST_DIR}/lsan.supp:print_suppressions=0"
    "TSAN_OPTIONS=suppressions=${CMAKE_CURRENT_LIST_DIR}/tsan.supp:ignore_noninstrumented_modules=1")
if(TARGET skylumetsanqt)
    list(APPEND SKYLUME_TEST_ENVIRONMENT "LD_PRELOAD=$<TARGET_FILE:skylumetsanqt>")
endif()

# The file name that the loader looks for at run time.
function(skylume_runtime_file result target)
    if(WIN32)
        set(${result} "$<TARGET_FILE:${target}>" PARENT_SCOPE)
    else()
        set(${result} "$<TARGET_SONAME_FILE:${target}>" PARENT_SCOPE)
    endif()
endfunction()

# skylume_add_core_test(NAME <name> SOURCES <source>... [PLUGINS <test plugin>...] [TIMEOUT <seconds>])
#
# Adds a test with its own installation, the folder tests/<name>/ in the build tree: the executable and copies of the core
# library, the scripted device service and the named test plugins (see support/plugins). Tests may write there.
function(skylume_add_core_test)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME;TIMEOUT" "SOURCES;PLUGINS")
    set(folder "${PROJECT_BINARY_DIR}/tests/${arg_NAME}")

    add_executable(${arg_NAME} ${arg_SOURCES})
    target_link_libraries(${arg_NAME} PRIVATE skylumetestsupport)
    set_target_properties(${arg_NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${folder}")

    get_target_property(core Skylume::Core ALIASED_TARGET)
    set(files "")
    foreach(library ${core} skylumescriptedqrvl skylumecallrecorder)
        skylume_runtime_file(file ${library})
        list(APPEND files "${file}")
    endforeach()
    list(TRANSFORM arg_PLUGINS REPLACE "(.+)" "$<TARGET_FILE:\\1>" OUTPUT_VARIABLE plugin_files)

    set(stamp "${CMAKE_CURRENT_BINARY_DIR}/${arg_NAME}.installed")
    add_custom_command(OUTPUT "${stamp}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${folder}"
        COMMAND "${CMAKE_COMMAND}" -E copy ${files} ${plugin_files} "${folder}"
        COMMAND "${CMAKE_COMMAND}" -E touch "${stamp}"
        DEPENDS ${core} skylumescriptedqrvl skylumecallrecorder ${arg_PLUGINS}
        VERBATIM)
    add_custom_target(${arg_NAME}_installation DEPENDS "${stamp}")
    add_dependencies(${arg_NAME} ${arg_NAME}_installation)

    add_test(NAME ${arg_NAME} COMMAND ${arg_NAME})
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    set_tests_properties(${arg_NAME} PROPERTIES
        ENVIRONMENT "${SKYLUME_TEST_ENVIRONMENT}"
        TIMEOUT ${arg_TIMEOUT})
endfunction()

# skylume_copy_installation(<folder> [REPLACING <plugin>])
#
# Copies the installation to tests/<folder> in the build tree. The copy's plugin is replaced by one that fails.
function(skylume_copy_installation name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "REPLACING" "")
    set(folder "${PROJECT_BINARY_DIR}/tests/${name}")
    set(replace "")
    if(arg_REPLACING)
        set(replace COMMAND "${CMAKE_COMMAND}" -E copy
            "$<TARGET_FILE:FaultyPlugin>" "${folder}/$<TARGET_FILE_NAME:${arg_REPLACING}>")
    endif()
    get_property(app_files GLOBAL PROPERTY SKYLUME_APP_FILES)
    set(stamp "${CMAKE_CURRENT_BINARY_DIR}/${name}.installed")
    add_custom_command(OUTPUT "${stamp}"
        COMMAND "${CMAKE_COMMAND}" -E copy_directory "${SKYLUME_APP_DIR}" "${folder}"
        ${replace}
        COMMAND "${CMAKE_COMMAND}" -E touch "${stamp}"
        DEPENDS ${app_files} FaultyPlugin
        VERBATIM)
    add_custom_target(${name}_installation DEPENDS "${stamp}")
endfunction()

# skylume_add_application_test(<name> INSTALLATION <folder>)
#
# Adds a test that runs the application in its own process, from a copy of the installation.
function(skylume_add_application_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "INSTALLATION" "")
    add_executable(${name} ${name}.cpp)
    target_link_libraries(${name} PRIVATE runningapplication)
    set_target_properties(${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests/${arg_INSTALLATION}")
    add_dependencies(${name} ${arg_INSTALLATION}_installation)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "${SKYLUME_TEST_ENVIRONMENT}"
        TIMEOUT 300)
endfunction()

# skylume_label_tests(<label> <test>...)
#
# "ctest -L <label>" runs these tests of the current folder; the target tests-<label> builds them.
function(skylume_label_tests label)
    set_tests_properties(${ARGN} PROPERTIES LABELS ${label})
    if(NOT TARGET tests-${label})
        add_custom_target(tests-${label})
        if(TARGET skylumetsanqt)
            add_dependencies(tests-${label} skylumetsanqt) # preloaded
        endif()
    endif()
    add_dependencies(tests-${label} ${ARGN})
endfunction()
