# skylume_add_plugin(<name>
#     SOURCES <source>...          the plugin's code
#     [DATA <file>...]             installation data; goes to plugins/<name>/, relative paths are kept
#     [LIBRARIES <target>...]      what it links besides the core library
#     [OUTPUT_DIRECTORY <folder>]  default: app/ of the build tree, an installation to be
#
# Makes the loadable library <name> (no "lib" prefix on any system, so that its base name is what the plugin
# library file gives as "url"). Language files <name>_<language>.lang beside the calling CMakeLists.txt are installed
# without being named; SKYLUME_PLUGIN_NAME is the name under which the code asks for their texts.
function(skylume_add_plugin name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "OUTPUT_DIRECTORY" "SOURCES;DATA;LIBRARIES")
    add_library(${name} MODULE ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE Skylume::Core ${arg_LIBRARIES})
    set_target_properties(${name} PROPERTIES PREFIX "" AUTOMOC ON)
    target_compile_definitions(${name} PRIVATE SKYLUME_PLUGIN_NAME="${name}")
    target_compile_features(${name} PRIVATE cxx_std_17)
    # A unique symbol would pin the library in memory: the container really unloads its plugins.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
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
