// Music themes: whether the end of one runs into its beginning.
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace vcc::kit {

/// `samples` of one channel, -1 to 1: the end of the theme, then its beginning. Returns how sharply the joint bends,
/// relative to the sharpest bend beside it; a click is above 1. Pure.
double joint_ratio(std::span<const float> end, std::span<const float> beginning);

/// Whether the last of the equal windows of samples is far softer than the loudest, so that the theme fades and its
/// beginning jumps in. Pure.
bool fades_out(std::span<const float> samples, std::size_t window);

/// Whether a PCM file is shorter than its header says.
bool is_cut(const std::string& path);

/// Why a theme does not loop; empty if it does. `path` is a PCM file.
std::string loop_fault(const std::string& path);

} // namespace vcc::kit
