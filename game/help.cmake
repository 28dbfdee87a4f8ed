# Help files: pages set from readable texts, one file per screen and language.
foreach(name menu_en menu_de options_en options_de)
  add_custom_command(OUTPUT "${VELDOR_INSTALLATION}/help/${name}.hlp"
    COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/help/make-help"
      "${CMAKE_CURRENT_SOURCE_DIR}/help/${name}.txt" "${VELDOR_INSTALLATION}/help/${name}.hlp"
    DEPENDS help/make-help help/${name}.txt COMMENT "Setting help pages ${name}" VERBATIM)
  list(APPEND installed "${VELDOR_INSTALLATION}/help/${name}.hlp")
endforeach()
