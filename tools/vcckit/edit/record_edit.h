// Whole records: moved, resized, made, copied, taken away, renumbered, and groups written out one by one.
#pragma once

#include "vcckit/edit/source_edit.h"

#include <string>

namespace vcc::kit::edit {

// The text after the operation of that name. Everything addressed moves once, also where several addresses are of one
// group; languages keep their distance.
std::string move_or_resize(std::string text, const Operation& operation);
std::string create_record(const std::string& text, const Operation& operation);
std::string copy_record(const std::string& text, const Operation& operation);
std::string remove_record(const std::string& text, const Address& address, const std::string& screen);
std::string renumber_record(const std::string& text, const Operation& operation, const std::string& screen);
std::string split_group(const std::string& text, const Address& address);

} // namespace vcc::kit::edit
