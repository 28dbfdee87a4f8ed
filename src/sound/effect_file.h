// Effects as WAV files, loaded whole.
#pragma once

#include "core/handles.h"

#include <string>

namespace vcc {

inline constexpr long effect_size_limit = 16L << 20; ///< bytes of audio data

/// Loads a PCM file as a sample; null when it is missing, is not such a file or is larger than the limit. A file
/// without audio gives one sample of silence.
SamplePtr load_effect_file(const std::string& path);

} // namespace vcc
