# Installs the headers under include/NorvaRuntime/<Module>/ and the CMake package NorvaRuntime.
include(CMakePackageConfigHelpers)

set(NORVA_CONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/NorvaRuntime)

install(EXPORT NorvaRuntimeTargets
        NAMESPACE NorvaRuntime::
        DESTINATION ${NORVA_CONFIG_DIR})

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/NorvaRuntimeConfig.cmake.in
                              ${CMAKE_CURRENT_BINARY_DIR}/NorvaRuntimeConfig.cmake
                              INSTALL_DESTINATION ${NORVA_CONFIG_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/NorvaRuntimeConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/NorvaRuntimeConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/NorvaRuntimeConfigVersion.cmake
        DESTINATION ${NORVA_CONFIG_DIR})
