#include "folder_test.h"
#include "platform/document.h"
#include "platform/files.h"
#include "platform/latin1.h"

#include <chrono>
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

TEST_F(Files, TheFolderOfAProgramKeepsTheSeparatorOfARoot) {
    for (const auto& [path, its_folder] :
         {std::pair("C:\\Games\\start.exe", "C:\\Games"), {"D:\\start.exe", "D:\\"}, {"/vcc", "/"}, {"vcc", ""}})
        EXPECT_EQ(folder_of_program(path), its_folder) << path;
}

TEST_F(Files, AReplacedFileKeepsItsRightsAndItsLink) {
    folder.write("real", "old");
    folder.write("new", "new");
    std::filesystem::permissions("real", std::filesystem::perms(0640));
    std::filesystem::create_symlink("real", "link");
    EXPECT_TRUE(replace_file("new", "link"));
    EXPECT_TRUE(std::filesystem::is_symlink("link"));
    EXPECT_EQ(std::filesystem::status("real").permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(folder.read("real"), "new");
}

TEST_F(Files, AVisitEndsWhereItBegan) {
    std::filesystem::create_directories("inner");
    EXPECT_TRUE(FolderVisit("inner").entered());
    EXPECT_EQ(std::filesystem::current_path(), folder.path());
}

TEST(Clipboard, TextBecomesLatin1) {
    EXPECT_EQ(latin1_from_utf8("Gr\xC3\xBC\xC3\x9F\x65 \xC2\xA7"), "Gr\xFC\xDF\x65 \xA7");
    EXPECT_EQ(latin1_from_utf8("5 \xE2\x82\xAC!"), "5 ?!"); // beyond Latin-1
    EXPECT_EQ(latin1_from_utf8("a\xC3"), "a?");             // cut in the middle
    EXPECT_EQ(utf8_from_latin1("Gr\xFC\xDF"), "Gr\xC3\xBC\xC3\x9F");
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
