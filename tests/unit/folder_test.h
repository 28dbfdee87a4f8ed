// The fixture of tests that need files: the library started, a folder of the test's own with an empty log in it.
#pragma once

#include "support/allegro_none.h"

#include <gtest/gtest.h>

namespace vcc::test {

class FolderTest : public testing::Test {
protected:
    FolderTest() {
        start_library();
        empty_log();
    }
    void empty_log() const { folder.write("data/logfiles/veldor_log.txt", ""); }
    bool logged(const std::string& text) const { return folder.log().find(text) != std::string::npos; }

    const ScratchFolder folder;
};

} // namespace vcc::test
