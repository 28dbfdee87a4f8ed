# What "cmake --install" puts under the prefix and into the Debian package: the installation with the program in
# lib/games/veldor, a launcher that gives every player a folder of their own, and what a desktop shows. On Windows the
# package is the installation's folder.
include(GNUInstallDirs)
set(VELDOR_FOLDER "lib/games/veldor") # one level below lib: its modules are no libraries for ldconfig
if(WIN32)
  set(VELDOR_FOLDER "veldor")
else()
  set(VELDOR_SETTINGS game/install)
endif()
set(packaging "${CMAKE_CURRENT_SOURCE_DIR}/packaging")

# Settings come from the sources: those in the build folder are what somebody played with.
install(DIRECTORY "${VELDOR_INSTALLATION}/" DESTINATION "${VELDOR_FOLDER}" USE_SOURCE_PERMISSIONS
  REGEX "/data/logfiles/." EXCLUDE
  REGEX "/data/configs/vcc\\.[^/]*$" EXCLUDE
  REGEX "/tools/language\\.ini$" EXCLUDE
  REGEX "/veldor/factory\\.pcx$" EXCLUDE)
install(FILES "${VELDOR_SETTINGS}/data/configs/vcc.cfg" DESTINATION "${VELDOR_FOLDER}/data/configs")
install(FILES "${VELDOR_SETTINGS}/tools/language.ini" DESTINATION "${VELDOR_FOLDER}/tools")
if(WIN32)
  install(DIRECTORY DESTINATION "${VELDOR_FOLDER}/data/logfiles")
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME "veldor_${PROJECT_VERSION}_win64")
  set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
  include(CPack)
  return()
endif()

file(RELATIVE_PATH VELDOR_FROM_BIN "/${CMAKE_INSTALL_BINDIR}" "/${VELDOR_FOLDER}")
configure_file("${packaging}/veldor.in" "${CMAKE_CURRENT_BINARY_DIR}/packaging/veldor" @ONLY)
install(PROGRAMS "${CMAKE_CURRENT_BINARY_DIR}/packaging/veldor" TYPE BIN)

install(FILES "${packaging}/veldor.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
install(FILES game/images/icon.png DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps" RENAME veldor.png)
install(FILES game/images/icon-48.png DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/48x48/apps" RENAME veldor.png)
install(FILES "${packaging}/veldor.6" DESTINATION "${CMAKE_INSTALL_MANDIR}/man6")

# the tool for those who make installations
install(TARGETS vcckit RUNTIME)
install(TARGETS vcckit-edit RUNTIME DESTINATION libexec/veldor) # edit_command_linux.cpp looks there
install(FILES docs/vcckit.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES "${packaging}/vcckit.bash"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME vcckit)
install(FILES "${packaging}/vcckit.fish" DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
install(FILES "${packaging}/vcckit.zsh" DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions" RENAME _vcckit)

install(FILES "${packaging}/copyright" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/veldor")
install(FILES "${packaging}/fonts-liberation.copyright"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/veldor" RENAME copyright.fonts-liberation)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME veldor)
set(CPACK_PACKAGE_CONTACT "The Veldor developers <veldor@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "game of walking machines: control centre")
set(CPACK_PACKAGE_DESCRIPTION
"The control centre of Veldor plays the intro films, leads to headquarters, factory and battle,
and holds the settings that they share, in English and German.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# loaded at run time with the first film or window, so no linker names them
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libavformat59, libavcodec59, libavutil57, libswscale6, libxinerama1")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "ffmpeg, xdg-utils") # ffmpeg: what vcckit convert uses
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "make, xvfb") # what vcckit new and vcckit play use
set(CPACK_DEBIAN_COMPRESSION_TYPE zstd) # sounds hardly get smaller with anything slower
include(CPack)
