// What only this system has: letter case, links, rights, and a desktop's opener that is a program.
#include "folder_test.h"
#include "platform/desktop.h"
#include "platform/files.h"

#include <chrono>
#include <sys/stat.h>
#include <sys/wait.h>

namespace vcc::platform {
namespace {

using Files = test::FolderTest;

TEST_F(Files, NamesOfOtherSystemsAreFound) {
    folder.write("Tools/Language/E_VCC.slt", "x");
    EXPECT_EQ(resolve_path("./TOOLS//LANGUAGE\\../language\\e_vcc.SLT"), "./Tools//Language/../Language/E_VCC.slt");
    EXPECT_EQ(resolve_path("tools/new.txt"), "Tools/new.txt") << "a file to be made";
    EXPECT_EQ(resolve_path("tools\\none\\new.txt"), "tools/none/new.txt") << "leads nowhere";
    EXPECT_FALSE(file_exists("tools\\language")) << "a folder is no file";
}

TEST_F(Files, AReplacedFileKeepsItsRightsAndItsLinkAndAPipeIsNotReplaced) {
    folder.write("real", "old");
    folder.write("new", "new");
    std::filesystem::permissions("real", std::filesystem::perms(0640));
    std::filesystem::create_symlink("real", "link");
    EXPECT_TRUE(replace_file("new", "link"));
    EXPECT_TRUE(std::filesystem::is_symlink("link"));
    EXPECT_EQ(std::filesystem::status("real").permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(folder.read("real"), "new");

    folder.write("new", "new");
    ASSERT_EQ(::mkfifo("pipe", 0600), 0);
    EXPECT_FALSE(replace_file("new", "pipe"));
    EXPECT_TRUE(std::filesystem::is_fifo("pipe"));
}

/// Puts a script of ours in the place of the desktop's opener, and a manual into a folder.
void be_opener(const test::ScratchFolder& folder, const std::string& script) {
    folder.write("docs/manual.pdf", "x");
    folder.write("bin/xdg-open", "#!/bin/sh\n" + script + "\n");
    std::filesystem::permissions("bin/xdg-open", std::filesystem::perms(0755));
    ::setenv("PATH", ((folder.path() / "bin").string() + ":/bin:/usr/bin").c_str(), 1);
}

TEST_F(Files, TheAnswerOfADocumentsOpenerBecomesAResultNumber) {
    for (const auto& [status, result] : {std::pair(0, document_opened),
                                         {2, document_file_not_found},
                                         {4, document_access_denied},
                                         {127, document_no_association}}) {
        be_opener(folder, "[ \"$1\" = docs/manual.pdf ] && exit " + std::to_string(status));
        EXPECT_EQ(open_document("DOCS\\manual.pdf"), result) << "exit status " << status;
    }
    EXPECT_EQ(open_document("docs/none.pdf"), document_file_not_found);
    EXPECT_EQ(open_document("nowhere/manual.pdf"), document_path_not_found);
}

TEST_F(Files, AViewerThatStaysOpenIsNotWaitedForAndHoldsNothingOfOurs) {
    int ours[2] = {-1, -1}; // stands for the connection to the display
    ASSERT_EQ(::pipe(ours), 0);
    be_opener(folder, "exec sleep 4");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(open_document("docs/manual.pdf"), document_opened);
    ::close(ours[1]);
    char byte = 0;
    EXPECT_EQ(::read(ours[0], &byte, 1), 0) << "the viewer holds a descriptor of ours";
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(3500));
    ::close(ours[0]);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a child of ours is left";
}

} // namespace
} // namespace vcc::platform
