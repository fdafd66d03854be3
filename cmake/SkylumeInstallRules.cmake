# cmake --install: the application in one folder, because it finds everything beside its executable, and the package for
# plugin authors: headers, the library Skylume::PluginSupport and CMake files.

include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(app_destination "${CMAKE_INSTALL_LIBDIR}/skylume")
set(package_destination "${CMAKE_INSTALL_LIBDIR}/cmake/Skylume")

install(DIRECTORY "${SKYLUME_APP_DIR}/" DESTINATION "${app_destination}" USE_SOURCE_PERMISSIONS)

install(TARGETS skylumecore qrvl SkylumePluginSupport EXPORT SkylumeTargets
    RUNTIME DESTINATION "${app_destination}"
    LIBRARY DESTINATION "${app_destination}"
    ARCHIVE DESTINATION "${app_destination}"
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/skylume")
install(DIRECTORY plugins/support DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/skylume"
    FILES_MATCHING PATTERN "*.h"
    PATTERN "*_p.h" EXCLUDE) # private headers
install(DIRECTORY src/core/ src/devicesdk/include/ DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/skylume"
    FILES_MATCHING PATTERN "*.h"
    PATTERN "*_p.h" EXCLUDE) # private headers
install(EXPORT SkylumeTargets NAMESPACE Skylume:: DESTINATION "${package_destination}")

configure_package_config_file(cmake/SkylumeConfig.cmake.in "${PROJECT_BINARY_DIR}/SkylumeConfig.cmake"
    INSTALL_DESTINATION "${package_destination}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/SkylumeConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/SkylumeConfig.cmake"
    "${PROJECT_BINARY_DIR}/SkylumeConfigVersion.cmake"
    cmake/SkylumeInstallation.cmake
    cmake/SkylumeAddPlugin.cmake
    plugins/support/PluginName.cpp
    DESTINATION "${package_destination}")
