# skylume_add_plugin(<name>
#     SOURCES <source>...          the plugin's code
#     [DATA <file>...]             data files; copied to plugins/<name>/, relative paths are kept
#     [LIBRARIES <target>...]      what it links besides the core library
#     [OUTPUT_DIRECTORY <folder>]  default: app/ of the build tree, the staging folder
#
# Builds the loadable library <name>. It has no "lib" prefix on any system: its base name is that of the "url" in the
# plugin library file. Every symbol that it uses must be defined in it or in LIBRARIES. Language files <name>_<language>.lang
# beside the calling CMakeLists.txt are installed without being listed; the code asks for their strings with the macro
# SKYLUME_PLUGIN_NAME.
function(skylume_add_plugin name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "OUTPUT_DIRECTORY" "SOURCES;DATA;LIBRARIES")
    add_library(${name} MODULE ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE Skylume::Core ${arg_LIBRARIES})
    set_target_properties(${name} PROPERTIES PREFIX "" AUTOMOC ON)
    target_compile_definitions(${name} PRIVATE SKYLUME_PLUGIN_NAME="${name}")
    target_compile_features(${name} PRIVATE cxx_std_17)
    # GNU unique symbols would prevent the container from unloading the library.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    get_directory_property(directory_options LINK_OPTIONS)
    set(sanitizers "${CMAKE_CXX_FLAGS} ${CMAKE_MODULE_LINKER_FLAGS} ${directory_options}")
    # A missing symbol is an error here, not only when the plugin is loaded. Clang links its sanitizers into programs only,
    # so their symbols are missing in every library.
    if(NOT WIN32 AND (NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang" OR NOT "${sanitizers}" MATCHES "fsanitize"))
        target_link_options(${name} PRIVATE "LINKER:--no-undefined")
    endif()
    if(arg_OUTPUT_DIRECTORY)
        set_target_properties(${name} PROPERTIES
            RUNTIME_OUTPUT_DIRECTORY "${arg_OUTPUT_DIRECTORY}"
            LIBRARY_OUTPUT_DIRECTORY "${arg_OUTPUT_DIRECTORY}")
    else()
        skylume_place_in_app(${name})
    endif()
    file(GLOB languages RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" CONFIGURE_DEPENDS "${name}_*.lang")
    if(arg_DATA OR languages)
        skylume_add_data(${name}Data DESTINATION "plugins/${name}" FILES ${arg_DATA} ${languages})
    endif()
endfunction()
