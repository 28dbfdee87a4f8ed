// Music themes: whether the end of one runs into its beginning.
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace vcc::kit {

/// One channel's samples around the joint, -1 to 1: the end of the theme, then its beginning. The result is how sharp
/// the joint bends, over the sharpest bend beside it: a click stands out above 1. Pure.
double joint_ratio(std::span<const float> end, std::span<const float> beginning);

/// Whether the last of the equal windows of samples is far softer than the loudest: the theme fades, and its beginning
/// comes as a jump. Pure.
bool fades_out(std::span<const float> samples, std::size_t window);

/// Whether a PCM file is shorter than its header says.
bool is_cut(const std::string& path);

/// Why a theme cannot be played in a loop; empty when it can. `path` is a PCM file.
std::string loop_fault(const std::string& path);

} // namespace vcc::kit
