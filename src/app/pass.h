// One pass: builds up what the screens need, runs them, and tears everything down again before a module runs.
#pragma once

#include "app/startup.h"

namespace vcc {

/// Runs one pass including its tear-down; sets pass_ok and, if the screens ran, choice.
void run_pass(Session& session);

/// Starts reading the next pass's pictures during start-up; later passes do so in run_pass().
void read_pass_pictures_ahead();

/// Releases sound and graphic buffers, and logs the pending message.
void pass_cleanup(const Session& session);

} // namespace vcc
