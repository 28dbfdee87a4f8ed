// Documents and faults as the page gets them.
#pragma once

#include "vcckit/edit/document_kinds.h"
#include "vcckit/edit/workspace.h"
#include "vcckit/faults/report.h"
#include "vcckit/source/screen_source.h"

#include "screen/text_window.h"

#include <nlohmann/json.hpp>

#include <array>
#include <string>

namespace vcc::kit::edit {

using WindowSets = std::array<std::array<TextWindow, text_window_count>, languages.size()>;

/// What a document's working text says, and what is wrong with it. With a text that cannot be packed, screen and
/// description are those of the last one that could be.
struct Reading {
    std::int64_t revision = -1; ///< of the text that was read
    Screen screen;
    Description description;
    bool stale = false;
    Faults faults;
};

/// The fonts of the installation must be loaded: frames of texts depend on them.
nlohmann::json document_json(const Document& document, const Reading& reading, const WindowSets& windows);

/// What is different for a page that has the document as it was: lists by index, the text by lines. Pure.
nlohmann::json difference_json(const nlohmann::json& before, const nlohmann::json& now);

/// A fault of a document, or of the file of another kind; `slot` is the slot that it is about, or -1.
nlohmann::json fault_json(const Fault& fault, const std::string& document, int slot);

/// The slot that a fault of a source is in; -1 when it is in none.
int slot_of_fault(const Fault& fault);

/// One line; bytes that are not UTF-8 are replaced.
std::string text_of_json(const nlohmann::json& object);

} // namespace vcc::kit::edit
