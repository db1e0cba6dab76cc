# Installs the libraries, their public headers, a CMake package
# (find_package(twzo_units CONFIG) -> twzo_units::twzo_units) and a pkg-config file.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(TW_INCLUDE_SUBDIR ${CMAKE_INSTALL_INCLUDEDIR}/twzo_units)
set(TW_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/twzo_units)

target_include_directories(twhost PUBLIC $<INSTALL_INTERFACE:${TW_INCLUDE_SUBDIR}>)
# The installed units library finds the installed host library beside it.
set_target_properties(twzo_units PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS twhost twzo_units EXPORT twzo_unitsTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# Headers keep their paths: #include "units/UnitManager.hpp", #include "host/ErrorIdException.hpp".
install(DIRECTORY host/ DESTINATION ${TW_INCLUDE_SUBDIR}/host FILES_MATCHING PATTERN "*.hpp"
        PATTERN interpreter EXCLUDE)
install(DIRECTORY units/ DESTINATION ${TW_INCLUDE_SUBDIR}/units FILES_MATCHING PATTERN "*.hpp"
        PATTERN udd EXCLUDE)
install(FILES units/udd/UnitsModule.hpp DESTINATION ${TW_INCLUDE_SUBDIR}/units/udd)

install(EXPORT twzo_unitsTargets NAMESPACE twzo_units:: DESTINATION ${TW_CMAKE_DIR})
configure_package_config_file(cmake/twzo_unitsConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/twzo_unitsConfig.cmake
                              INSTALL_DESTINATION ${TW_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/twzo_unitsConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/twzo_unitsConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/twzo_unitsConfigVersion.cmake
        DESTINATION ${TW_CMAKE_DIR})

configure_file(cmake/twzo_units.pc.in ${CMAKE_CURRENT_BINARY_DIR}/twzo_units.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/twzo_units.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
