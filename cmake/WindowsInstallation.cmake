# The complete installation for Windows in ${VELDOR_INSTALLATION}: programs and modules of this build, the libraries'
# DLLs, and the data files, which are the same on every system, of the release build.
set(VELDOR_DATA "${CMAKE_SOURCE_DIR}/build/release/veldor" CACHE PATH "Installation whose data files are taken")

# The settings are those of Linux but for the size of the picture, which is always its own there.
file(READ game/install/data/configs/vcc.cfg settings)
string(REGEX REPLACE "display_scale *= *[0-9]" "display_scale = 0" settings "${settings}")
set(VELDOR_SETTINGS "${CMAKE_BINARY_DIR}/generated/install")
file(WRITE "${VELDOR_SETTINGS}/data/configs/vcc.cfg" "${settings}")
configure_file(game/install/tools/language.ini "${VELDOR_SETTINGS}/tools/language.ini" COPYONLY)

# The launcher goes with what is installed for every player; see docs/installing.md.
add_executable(veldor packaging/windows/launcher.cpp)
target_link_libraries(veldor PRIVATE veldor_warnings)
target_link_options(veldor PRIVATE -municode)
set_target_properties(veldor PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${VELDOR_INSTALLATION}" WIN32_EXECUTABLE ON)
veldor_resources(veldor "Veldor")

add_custom_target(installation ALL
  COMMAND "${CMAKE_COMMAND}" "-DDATA=${VELDOR_DATA}" "-DSETTINGS=${VELDOR_SETTINGS}"
    "-DLIBRARIES=${VELDOR_WINDOWS_LIBRARIES}/bin" "-DINSTALLATION=${VELDOR_INSTALLATION}"
    -P "${CMAKE_SOURCE_DIR}/cmake/CopyInstallation.cmake"
  COMMENT "Putting DLLs and data beside the program" VERBATIM)
add_dependencies(installation vcc vcckit veldor hq factory battle)
