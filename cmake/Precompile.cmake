# veldor_precompile(TARGET OWNER HEADERS...): what nearly every file of some targets includes is read once, by the owner
# and for all of them, which saves up to two thirds of a file's compile time. Sources still include what they use: the
# program for Windows is built without it.
function(veldor_precompile target owner)
  if(WIN32 OR VELDOR_FUZZ)
    return()
  endif()
  if(target STREQUAL owner)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  else()
    target_precompile_headers(${target} REUSE_FROM ${owner})
  endif()
endfunction()

set(VELDOR_STANDARD_HEADERS <algorithm> <array> <filesystem> <functional> <map> <memory> <optional> <set> <span>
  <string> <string_view> <variant> <vector>)
