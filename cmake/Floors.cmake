# veldor_compile_alone(SOURCES...): those of them whose system's headers do not bear the graphics library's beside them.
function(veldor_compile_alone)
  list(FILTER ARGN INCLUDE REGEX "_windows\\.cpp$")
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# veldor_floor(NAME LIBRARIES...): the static library of one folder below src/, with every source file in it. The
# libraries are the floors below it and what it needs from outside. A file named *_linux.cpp or *_windows.cpp belongs to
# that system alone. The global property VELDOR_FLOORS lists them, lowest first.
function(veldor_floor name)
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp")
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$") # the program's own file
  if(WIN32)
    list(FILTER sources EXCLUDE REGEX "_linux\\.cpp$")
  else()
    list(FILTER sources EXCLUDE REGEX "_windows\\.cpp$")
  endif()
  veldor_compile_alone(${sources})
  set_property(GLOBAL APPEND PROPERTY VELDOR_FLOORS veldor_${name})
  add_library(veldor_${name} STATIC ${sources})
  target_include_directories(veldor_${name} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}" "${CMAKE_BINARY_DIR}/generated")
  target_link_libraries(veldor_${name} PUBLIC ${ARGN} PRIVATE veldor_warnings)
  set_target_properties(veldor_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  veldor_precompile(veldor_${name} veldor_platform <allegro.h> ${VELDOR_STANDARD_HEADERS})
endfunction()
