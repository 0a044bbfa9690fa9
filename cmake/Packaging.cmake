# What `cmake --install` puts where, for hosts that use the component and for those that are built
# against it, and the Debian package of it all.
include(CMakePackageConfigHelpers)
set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/ORXDB)
set(class_folder ${CMAKE_INSTALL_DATADIR}/automation/classes.d)
set(component_library ${CMAKE_INSTALL_LIBDIR}/libORXDB.so)

install(TARGETS automation EXPORT ORXDB LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orxdb)
install(TARGETS ORXDB LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS orxdb orxregsvr RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY interface platform DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orxdb
        FILES_MATCHING PATTERN *.h PATTERN ClassFiles.h EXCLUDE PATTERN ClassLibraries.h EXCLUDE
        PATTERN ExchangeFormat.h EXCLUDE)
install(FILES ${PROJECT_BINARY_DIR}/resources/ORXDB.idl
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orxdb)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/orxdb)

# Completions where the shells look for those of packages and of /usr/local.
set(descriptions ${PROJECT_BINARY_DIR}/share)
install(FILES ${descriptions}/bash/orxdb
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${descriptions}/zsh/_orxdb DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
install(FILES ${descriptions}/zsh/_orxdb
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
install(FILES ${descriptions}/fish/orxdb.fish
        DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
install(FILES ${descriptions}/man/orxdb.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# The class files hold the library's path, which is known only now.
foreach(class OrxDbObj OrxDbLibrary)
  install(CODE "
set(class_file ${class_folder}/ORXDB.${class}.1.class)
set(library ${component_library})
set(script [[${PROJECT_SOURCE_DIR}/resources/${class}.class]])
include([[${PROJECT_SOURCE_DIR}/cmake/InstallClassFile.cmake]])")
endforeach()

install(EXPORT ORXDB NAMESPACE ORXDB:: DESTINATION ${config_folder} FILE ORXDBTargets.cmake)
configure_package_config_file(cmake/ORXDBConfig.cmake.in ${PROJECT_BINARY_DIR}/ORXDBConfig.cmake
  INSTALL_DESTINATION ${config_folder} PATH_VARS component_library)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ORXDBConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ORXDBConfig.cmake ${PROJECT_BINARY_DIR}/ORXDBConfigVersion.cmake
        DESTINATION ${config_folder})

file(RELATIVE_PATH prefix_from_pkgconfig
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/orxdb.pc.in ${PROJECT_BINARY_DIR}/orxdb.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orxdb.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orxdb)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "ORXDB maintainers <orxdb@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"An automation server for cutting tools, feeds and speeds and stock materials,
 a command-line host, and what C++ hosts need to be built against it.")
find_program(DPKG_SHLIBDEPS dpkg-shlibdeps)
find_program(FILE_PROGRAM file)
if(DPKG_SHLIBDEPS AND FILE_PROGRAM)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
else()
  set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6, libstdc++6, libsqlite3-0 (>= 3.40)")
endif()
include(CPack)
