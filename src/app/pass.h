// One pass: everything that the screens need is built up, the screens run, and everything is torn down again before a
// module runs.
#pragma once

#include "app/startup.h"

namespace vcc {

/// Runs one pass up to its tear-down; sets pass_ok and, when the screens ran, choice.
void run_pass(Session& session);

/// Releases sound and graphic buffers, and logs the pending message.
void pass_cleanup(const Session& session);

} // namespace vcc
