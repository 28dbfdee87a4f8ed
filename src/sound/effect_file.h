// Effects as WAV files, loaded whole.
#pragma once

#include "core/handles.h"
#include "core/result.h"

#include <string>

namespace vcc {

/// Loads a PCM file as a sample. Fails if it is missing, not PCM, or too large for the memory. A file without audio
/// gives one sample of silence.
Result<SamplePtr> load_effect_file(const std::string& path);

} // namespace vcc
