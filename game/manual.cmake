# The manuals, set from their sources and committed pictures.
foreach(pair "en veldor_manual" "de veldor_manual_de")
  separate_arguments(pair)
  list(GET pair 0 language)
  list(GET pair 1 name)
  file(GLOB manual_pictures CONFIGURE_DEPENDS "manual/${language}/*.jpg")
  add_custom_command(OUTPUT "${VELDOR_INSTALLATION}/docs/${name}.pdf"
    COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/manual/build-manual" ${language} "${VELDOR_INSTALLATION}/docs/${name}.pdf"
    DEPENDS manual/build-manual manual/manual_${language}.ms ${manual_pictures}
    COMMENT "Setting the manual ${name}" VERBATIM)
  list(APPEND installed "${VELDOR_INSTALLATION}/docs/${name}.pdf")
endforeach()
