# What "cmake --install" puts under the prefix and into the Debian packages: the installation with the program in
# lib/games/veldor, a launcher that gives every player a folder of their own, and what a desktop shows; for makers of
# installations the tool, in a package of its own. On Windows the package is the installation's folder.
include(GNUInstallDirs)
set(VELDOR_FOLDER "lib/games/veldor") # one level below lib: its modules are no libraries for ldconfig
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME game)
if(WIN32)
  set(VELDOR_FOLDER "veldor")
else()
  set(VELDOR_SETTINGS game/install)
  install(TARGETS vcc hq factory battle DESTINATION "${VELDOR_FOLDER}") # which strips them
endif()
set(packaging "${CMAKE_CURRENT_SOURCE_DIR}/packaging")

# Settings come from the sources: those in the build folder are what somebody played with.
install(DIRECTORY "${VELDOR_INSTALLATION}/" DESTINATION "${VELDOR_FOLDER}" USE_SOURCE_PERMISSIONS
  REGEX "/veldor/(vcc|hq\\.so|factory\\.so|battle\\.so)$" EXCLUDE
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

# veldor_install_compressed(SOURCE NAME FOLDER...): a manual page or a list of changes, as Debian wants them
function(veldor_install_compressed source name folder)
  set(file "${CMAKE_CURRENT_BINARY_DIR}/packaging/${name}.gz")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${source}")
  file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/packaging")
  execute_process(COMMAND gzip -9nc "${source}" OUTPUT_FILE "${file}" COMMAND_ERROR_IS_FATAL ANY)
  install(FILES "${file}" DESTINATION "${folder}" ${ARGN})
endfunction()

set(bin games) # where Debian has the programs of games
file(RELATIVE_PATH VELDOR_FROM_BIN "/${bin}" "/${VELDOR_FOLDER}")
configure_file("${packaging}/veldor.in" "${CMAKE_CURRENT_BINARY_DIR}/packaging/veldor" @ONLY)
install(PROGRAMS "${CMAKE_CURRENT_BINARY_DIR}/packaging/veldor" DESTINATION "${bin}")

# what a desktop shows, with icons in more sizes than are drawn
set(share "${CMAKE_INSTALL_DATADIR}")
install(FILES "${packaging}/veldor.desktop" DESTINATION "${share}/applications")
install(FILES "${packaging}/org.veldor.Veldor.metainfo.xml" DESTINATION "${share}/metainfo")
set(images "${CMAKE_CURRENT_SOURCE_DIR}/game/images")
set(icons "${CMAKE_CURRENT_BINARY_DIR}/packaging/icons")
set(sizes 16 24 32 48 64 128 256)
list(TRANSFORM sizes REPLACE "(.+)" "${icons}/\\1.png" OUTPUT_VARIABLE icon_files)
add_custom_command(OUTPUT ${icon_files}
  COMMAND /usr/bin/python3 "${packaging}/make-icons" "${images}/icon.png" "${images}/icon-48.tga" "${icons}" ${sizes}
  DEPENDS "${packaging}/make-icons" "${images}/icon.png" "${images}/icon-48.tga" COMMENT "Making icons" VERBATIM)
add_custom_target(icons ALL DEPENDS ${icon_files})
foreach(size ${sizes})
  install(FILES "${icons}/${size}.png" DESTINATION "${share}/icons/hicolor/${size}x${size}/apps" RENAME veldor.png)
endforeach()

set(documents "${share}/doc/veldor")
veldor_install_compressed("${packaging}/veldor.6" veldor.6 "${CMAKE_INSTALL_MANDIR}/man6")
set(package veldor)
configure_file("${packaging}/changelog.in" "${CMAKE_CURRENT_BINARY_DIR}/packaging/changelog" @ONLY)
veldor_install_compressed("${CMAKE_CURRENT_BINARY_DIR}/packaging/changelog" changelog "${documents}")
veldor_install_compressed("${CMAKE_CURRENT_SOURCE_DIR}/CHANGELOG.md" NEWS "${documents}")
install(FILES "${packaging}/lintian-overrides" DESTINATION "${share}/lintian/overrides" RENAME veldor)
install(FILES "${packaging}/copyright" DESTINATION "${documents}")
install(FILES "${packaging}/fonts-liberation.copyright" DESTINATION "${documents}" RENAME copyright.fonts-liberation)

# the tool for those who make installations
if(TARGET vcckit)
  set(tools COMPONENT tools)
  set(documents "${share}/doc/veldor-tools")
  install(TARGETS vcckit RUNTIME ${tools})
  install(TARGETS vcckit-edit RUNTIME DESTINATION libexec/veldor ${tools}) # edit_command_linux.cpp looks there
  veldor_install_compressed("${CMAKE_CURRENT_SOURCE_DIR}/docs/vcckit.1" vcckit.1 "${CMAKE_INSTALL_MANDIR}/man1"
    ${tools})
  install(FILES "${packaging}/vcckit.bash" DESTINATION "${share}/bash-completion/completions" RENAME vcckit ${tools})
  install(FILES "${packaging}/vcckit.fish" DESTINATION "${share}/fish/vendor_completions.d" ${tools})
  install(FILES "${packaging}/vcckit.zsh" DESTINATION "${share}/zsh/vendor-completions" RENAME _vcckit ${tools})
  set(package veldor-tools)
  configure_file("${packaging}/changelog.in" "${CMAKE_CURRENT_BINARY_DIR}/packaging/tools/changelog" @ONLY)
  veldor_install_compressed("${CMAKE_CURRENT_BINARY_DIR}/packaging/tools/changelog" tools/changelog "${documents}"
    ${tools})
  install(FILES "${packaging}/copyright" DESTINATION "${documents}" ${tools})
  # what the tool's faults and its manual page name
  install(DIRECTORY docs DESTINATION "${documents}" ${tools}
    FILES_MATCHING PATTERN "*.md" PATTERN "*.json" PATTERN "*.png" PATTERN "architecture.md" EXCLUDE
    REGEX "/pictures/(films|menu|options)\\.png$" EXCLUDE) # those of the readme
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL game tools)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_THREADS 0) # for the compression
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Veldor developers <veldor@example.org>") # a domain that is nobody's
set(CPACK_PACKAGE_CONTACT "${CPACK_DEBIAN_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "game of walking machines")

set(CPACK_DEBIAN_GAME_PACKAGE_NAME veldor)
set(CPACK_DEBIAN_GAME_PACKAGE_SECTION games)
set(CPACK_DEBIAN_GAME_DESCRIPTION
"The control centre of Veldor plays the intro films, leads to headquarters,
factory and battle, and holds the settings that they share, in English and
German.")
# loaded at run time with the first film or window, so no linker names them; the last show why the program cannot start
set(CPACK_DEBIAN_GAME_PACKAGE_DEPENDS
    "libavformat59, libavcodec59, libavutil57, libswscale6, libxinerama1, x11-utils | zenity | kdialog")
set(CPACK_DEBIAN_GAME_PACKAGE_RECOMMENDS xdg-utils)

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME veldor-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION
"The tool for making installations packs screens from readable sources, checks
installations, converts pictures, films and sounds, plays every slot of a
screen, and has a screen editor in the browser.")
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "veldor (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS ffmpeg) # what vcckit convert uses
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS "make, xvfb, zip") # what vcckit new, play and export use
include(CPack)
