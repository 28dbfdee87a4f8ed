# veldor_embed(OUTPUT NAME FOLDER FILES...): a source that holds the files of a folder, or others given by full path
# under their bare names, and defines NAME(), which vcckit/files/embedded_files.h declares.
function(veldor_embed output name folder)
  set(arrays "")
  set(rows "")
  set(number 0)
  foreach(file ${ARGN})
    set(path "${folder}/${file}")
    if(IS_ABSOLUTE "${file}")
      set(path "${file}")
      get_filename_component(file "${file}" NAME)
    endif()
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${path}")
    file(READ "${path}" bytes HEX)
    string(LENGTH "${bytes}" length)
    math(EXPR length "${length} / 2")
    string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
    string(APPEND arrays "constexpr char file_${number}[] = {${bytes}};\n")
    string(APPEND rows "    {\"${file}\", {file_${number}, ${length}}},\n")
    math(EXPR number "${number} + 1")
  endforeach()
  file(CONFIGURE OUTPUT "${output}" @ONLY CONTENT "#include \"vcckit/files/embedded_files.h\"

namespace vcc::kit {

namespace {
@arrays@
constexpr EmbeddedFile files[] = {
@rows@};
} // namespace

std::span<const EmbeddedFile> ${name}() {
    return files;
}

} // namespace vcc::kit
")
endfunction()
