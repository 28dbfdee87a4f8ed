# The manual, set from its source and committed pictures.
file(GLOB manual_pictures CONFIGURE_DEPENDS "manual/*.jpg")
add_custom_command(OUTPUT "${VELDOR_INSTALLATION}/docs/veldor_manual.pdf"
  COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/manual/build-manual" "${VELDOR_INSTALLATION}/docs/veldor_manual.pdf"
  DEPENDS manual/build-manual manual/manual.ms ${manual_pictures} COMMENT "Setting the manual" VERBATIM)
list(APPEND installed "${VELDOR_INSTALLATION}/docs/veldor_manual.pdf")
