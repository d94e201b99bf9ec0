# What `cmake --install` puts where, and the Debian package of it.
install(TARGETS ps_zolvm ps_tables RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(NOT ZOL_ROOT)
    install(TARGETS zolcore zolvm LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
endif()

# The interface, for those who write a library of their own.
install(FILES platform/include/zolcore.h platform/include/zolvm.h platform/include/zolvmtable.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
string(REGEX REPLACE "[^/]+" ".." PS_PREFIX_OF_PC ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
configure_file(platform/zolvm.pc.in zolvm.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zolvm.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(FILES docs/ps_zolvm.1 docs/ps_tables.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.schema.json")
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES tables/third_party/uplot/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME LICENSE.uPlot)
install(FILES scripts/completion/ps_zolvm scripts/completion/ps_tables
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ps-zolvm)
set(CPACK_PACKAGE_CONTACT "The Performance System developers <ps@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Measures the clocks per element of a vector math library")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "man-db, bash-completion")
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6 (>= 2.36), libgcc-s1, libstdc++6 (>= 12)")
include(CPack)
