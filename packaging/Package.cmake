# The install layout and the Debian package. Paths follow the Filesystem Hierarchy Standard; the program finds
# share/zettelwerk beside its own bin/ folder, so the same tree runs from /usr, /usr/local or an unpacked folder.
include(GNUInstallDirs)
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(zw_packaging "${PROJECT_SOURCE_DIR}/packaging")
set(zw_file_permissions OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
set(zw_app_id example.zettelwerk.Zettelwerk)

install(TARGETS zettelwerk zettelwerk-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# The command line's commands that need the toolkit or the network; zettelwerk-cli starts it (tools/HandOver.cpp).
install(TARGETS zettelwerk-cli-full RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/zettelwerk)
# The distribution data that fills a new program folder, the help (hilfe/) with it.
install(DIRECTORY "${ZETTELWERK_DIST_DIR}/" DESTINATION ${CMAKE_INSTALL_DATADIR}/zettelwerk
        FILE_PERMISSIONS ${zw_file_permissions} PATTERN ".complete" EXCLUDE)
install(DIRECTORY "${ZETTELWERK_ICON_DIR}/hicolor" DESTINATION ${CMAKE_INSTALL_DATADIR}/icons
        FILE_PERMISSIONS ${zw_file_permissions})
install(FILES "${zw_packaging}/${zw_app_id}.desktop" DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
        PERMISSIONS ${zw_file_permissions})
install(FILES "${zw_packaging}/${zw_app_id}.metainfo.xml" DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo
        PERMISSIONS ${zw_file_permissions})
install(FILES "${zw_packaging}/zettelwerk-mime.xml" DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
        RENAME zettelwerk.xml PERMISSIONS ${zw_file_permissions})
install(FILES "${zw_packaging}/copyright" DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zettelwerk PERMISSIONS ${zw_file_permissions})

# Man pages and the changelog go in compressed, without a time stamp in the gzip header, as Debian asks.
set(zw_compressed)
foreach(source zettelwerk.1 zettelwerk-cli.1 changelog)
  set(target "${CMAKE_BINARY_DIR}/packaging/${source}.gz")
  add_custom_command(OUTPUT "${target}"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${CMAKE_BINARY_DIR}/packaging"
    COMMAND gzip -9nc "${zw_packaging}/${source}" > "${target}"
    DEPENDS "${zw_packaging}/${source}" VERBATIM)
  list(APPEND zw_compressed "${target}")
endforeach()
add_custom_target(zettelwerk-packaging-files ALL DEPENDS ${zw_compressed})
install(FILES "${CMAKE_BINARY_DIR}/packaging/zettelwerk.1.gz" "${CMAKE_BINARY_DIR}/packaging/zettelwerk-cli.1.gz"
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 PERMISSIONS ${zw_file_permissions})
install(FILES "${CMAKE_BINARY_DIR}/packaging/changelog.gz" DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zettelwerk
        PERMISSIONS ${zw_file_permissions}) # a native package: its version has no Debian revision
install(FILES "${zw_packaging}/lintian-overrides" DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
        RENAME zettelwerk PERMISSIONS ${zw_file_permissions})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zettelwerk)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Zettelwerk <support@zettelwerk.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://www.zettelwerk.example/")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "cash receipts the German way - Quittungen ausstellen")
set(CPACK_PACKAGE_DESCRIPTION_FILE "${zw_packaging}/description.txt")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The form is laid out for Arial and Courier New; Liberation has their widths.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation2")
# QtKeychain reaches the Secret Service through libsecret, which it loads when it is there.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n, libsecret-1-0")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "gnome-keyring")
include(CPack)
