# Run by the target "installation" on Windows: copies what is newer there. Settings come from the sources, and once, so
# that those of somebody who plays in the build folder stay.
if(NOT EXISTS "${DATA}/images/menu.pcx" OR NOT EXISTS "${DATA}/sounds/theme00.wav")
  message(FATAL_ERROR "No data files in ${DATA}: build the preset \"release\" first (scripts/windows does so).")
endif()
file(GLOB folders LIST_DIRECTORIES true "${DATA}/*")
foreach(folder ${folders})
  if(IS_DIRECTORY "${folder}")
    file(COPY "${folder}" DESTINATION "${INSTALLATION}"
      REGEX "/data/logfiles/." EXCLUDE
      REGEX "/data/configs/vcc\\.[^/]*$" EXCLUDE
      REGEX "/tools/language\\.ini$" EXCLUDE)
  endif()
endforeach()
foreach(file data/configs/vcc.cfg tools/language.ini)
  if(NOT EXISTS "${INSTALLATION}/${file}")
    get_filename_component(folder "${file}" DIRECTORY)
    file(COPY "${SETTINGS}/${file}" DESTINATION "${INSTALLATION}/${folder}")
  endif()
endforeach()
file(GLOB libraries "${LIBRARIES}/*.dll")
file(COPY ${libraries} DESTINATION "${INSTALLATION}")
