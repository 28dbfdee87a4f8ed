// One pass: everything that the screens need is built up, the screens run, and everything is torn down again before a
// module runs.
#pragma once

#include "app/startup.h"

namespace vcc {

/// Runs one pass up to its tear-down; sets pass_ok and, when the screens ran, choice.
void run_pass(Session& session);

/// Begins to read the pictures of the next pass while other things are set up; a pass does it by itself.
void read_pass_pictures_ahead();

/// Releases sound and graphic buffers, and logs the pending message.
void pass_cleanup(const Session& session);

} // namespace vcc
