# Keyboard mapping files in the graphics library's format.
foreach(layout us de fi fr it uk)
  add_custom_command(OUTPUT "${VELDOR_INSTALLATION}/data/configs/${layout}.cfg"
    COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/keyboards/make-layout"
      ${layout} "${VELDOR_INSTALLATION}/data/configs/${layout}.cfg"
    DEPENDS keyboards/make-layout keyboards/layouts.txt COMMENT "Making keyboard layout ${layout}" VERBATIM)
  list(APPEND installed "${VELDOR_INSTALLATION}/data/configs/${layout}.cfg")
endforeach()
