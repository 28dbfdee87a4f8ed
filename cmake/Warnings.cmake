# Every target links `veldor_warnings`: the warnings that must stay silent, and the sanitizers if they are enabled.
add_library(veldor_warnings INTERFACE)
target_compile_options(veldor_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # In the joining of strings this compiler sees overlaps and sizes that are not there (its bug 105651).
  target_compile_options(veldor_warnings INTERFACE -Wno-restrict -Wno-array-bounds -Wno-stringop-overflow
    -Wno-stringop-overread)
endif()
if(VELDOR_SANITIZE)
  target_compile_options(veldor_warnings INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -g1)
  target_link_options(veldor_warnings INTERFACE -fsanitize=address,undefined)
endif()
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  target_compile_options(veldor_warnings INTERFACE -Wno-deprecated-volatile) # inside the graphics library's own macros
endif()
if(VELDOR_FUZZ)
  target_compile_options(veldor_warnings INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -g1)
  target_link_options(veldor_warnings INTERFACE -fsanitize=address,undefined)
endif()
