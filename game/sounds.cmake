# Effects from their recipes and themes from their scores, rendered at build time.
veldor_copy("${CMAKE_CURRENT_SOURCE_DIR}/sound/vcc.snd" "tools/vcc.snd")

file(STRINGS sfx/effects.txt rows REGEX "^[0-9]")
file(GLOB recipes CONFIGURE_DEPENDS "sfx/*.recipe" "sfx/parts/*.recipe")
list(APPEND recipes "${CMAKE_CURRENT_SOURCE_DIR}/art/films/cuts.txt" "${CMAKE_CURRENT_SOURCE_DIR}/art/films/cuts.py")
foreach(row ${rows})
  string(REGEX REPLACE "^[0-9]+ +([a-z]+) .*" "\\1" name "${row}")
  add_custom_command(OUTPUT "${VELDOR_INSTALLATION}/sounds/sfx_${name}.wav"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${VELDOR_INSTALLATION}/sounds"
    COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/sfx/render-effect" ${name} "${VELDOR_INSTALLATION}/sounds/sfx_${name}.wav"
    DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/sfx/render-effect" ${recipes} COMMENT "Rendering effect ${name}" VERBATIM)
  list(APPEND installed "${VELDOR_INSTALLATION}/sounds/sfx_${name}.wav")
endforeach()

set(VELDOR_SOUNDFONT "/usr/share/sounds/sf2/FluidR3_GM.sf2" CACHE FILEPATH "General MIDI sound font for the music")
file(GLOB scores CONFIGURE_DEPENDS "music/theme*.abc")
foreach(score ${scores})
  get_filename_component(name "${score}" NAME_WE)
  add_custom_command(OUTPUT "${VELDOR_INSTALLATION}/sounds/${name}.wav"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${VELDOR_INSTALLATION}/sounds"
    COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/music/render-theme" "${score}" "${VELDOR_INSTALLATION}/sounds/${name}.wav"
            "${VELDOR_SOUNDFONT}"
    DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/music/render-theme" "${score}" COMMENT "Rendering music ${name}" VERBATIM)
  list(APPEND installed "${VELDOR_INSTALLATION}/sounds/${name}.wav")
endforeach()
