#include "platform/document.h"
#include "platform/files.h"
#include "platform/latin1.h"
#include "platform/module_library.h"
#include "support/allegro_none.h"

#include <chrono>
#include <gtest/gtest.h>
#include <sys/wait.h>

namespace vcc::platform {
namespace {

TEST(Files, NamesOfOtherSystemsAreFound) {
    const test::ScratchFolder folder;
    folder.write("Tools/Language/E_VCC.slt", "x");
    folder.write("a/readme", "lower");
    folder.write("a/README", "upper");
    const std::pair<const char*, const char*> cases[] = {
        {"Tools/Language/E_VCC.slt", "Tools/Language/E_VCC.slt"},
        {"tools\\language\\e_vcc.SLT", "Tools/Language/E_VCC.slt"},
        {"./TOOLS//LANGUAGE/../language/e_vcc.slt", "./Tools//Language/../Language/E_VCC.slt"},
        {"a\\readme", "a/readme"},                      // as written comes first
        {"A/ReadMe", "a/README"},                       // otherwise the first by byte order
        {"tools/new.txt", "Tools/new.txt"},             // a file to be made
        {"tools\\none\\new.txt", "tools/none/new.txt"}, // leads nowhere
        {"", ""},
    };
    for (const auto& [written, found] : cases)
        EXPECT_EQ(resolve_path(written), found) << written;
    EXPECT_TRUE(file_exists("tools\\language\\e_vcc.slt"));
    EXPECT_FALSE(file_exists("tools\\language")) << "a folder is no file";
}

TEST(Files, TheFolderOfAProgramKeepsTheSeparatorOfARoot) {
    const std::pair<const char*, const char*> cases[] = {{"C:\\Games\\Game\\start.exe", "C:\\Games\\Game"},
                                                         {"D:\\start.exe", "D:\\"},
                                                         {"\\start.exe", "\\"},
                                                         {"\\\\start.exe", "\\\\"},
                                                         {"C:start.exe", ""},
                                                         {"start.exe", ""},
                                                         {"/usr/games/vcc", "/usr/games"},
                                                         {"/vcc", "/"},
                                                         {"", ""}};
    for (const auto& [path, folder] : cases)
        EXPECT_EQ(folder_of_program(path), folder) << path;
    EXPECT_NE(program_path().find("unit_platform"), std::string::npos);
}

TEST(Files, AReplacedFileKeepsItsRightsAndItsLink) {
    const test::ScratchFolder folder;
    folder.write("real", "old");
    std::filesystem::permissions("real", std::filesystem::perms(0640));
    std::filesystem::create_symlink("real", "link");
    folder.write("new", "new");
    EXPECT_TRUE(replace_file("new", "link"));
    EXPECT_TRUE(std::filesystem::is_symlink("link"));
    EXPECT_EQ(folder.read("real"), "new");
    EXPECT_EQ(std::filesystem::status("real").permissions(), std::filesystem::perms(0640));
    EXPECT_FALSE(replace_file("missing", "real"));
    EXPECT_EQ(folder.read("real"), "new");
}

TEST(Files, AVisitEndsWhereItBegan) {
    const test::ScratchFolder folder;
    std::filesystem::create_directories("inner");
    {
        const FolderVisit visit("inner");
        EXPECT_TRUE(visit.entered());
        EXPECT_EQ(std::filesystem::current_path().filename(), "inner");
    }
    EXPECT_FALSE(FolderVisit("missing").entered());
    EXPECT_EQ(std::filesystem::current_path(), folder.path());
}

TEST(Clipboard, TextBecomesLatin1) {
    EXPECT_EQ(latin1_from_utf8("Gr\xC3\xBC\xC3\x9F\x65 \xC2\xA7"), "Gr\xFC\xDF\x65 \xA7");
    EXPECT_EQ(utf8_from_latin1("Gr\xFC\xDF\x65 \xA7"), "Gr\xC3\xBC\xC3\x9F\x65 \xC2\xA7");
    EXPECT_EQ(latin1_from_utf8("5 \xE2\x82\xAC!"), "5 ?!") << "beyond Latin-1";
    EXPECT_EQ(latin1_from_utf8("a\xC3"), "a?") << "cut in the middle";
    EXPECT_EQ(latin1_from_utf8(std::string_view("ab\0c", 4)), "ab");
}

/// Puts a script of ours in the place of the desktop's opener.
class Document : public ::testing::Test {
protected:
    void SetUp() override {
        folder.write("docs/manual.pdf", "x");
        folder.write("docs/-x.pdf", "x");
        const char* const path = std::getenv("PATH");
        old_path = path != nullptr ? path : "";
    }
    void TearDown() override { ::setenv("PATH", old_path.c_str(), 1); }
    void opener(const std::string& script) {
        folder.write("bin/xdg-open", "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions("bin/xdg-open", std::filesystem::perms(0755));
        ::setenv("PATH", ((folder.path() / "bin").string() + ":/bin:/usr/bin").c_str(), 1);
    }
    const test::ScratchFolder folder;
    std::string old_path;
};

TEST_F(Document, TheOpenersAnswerBecomesAResultNumber) {
    const std::pair<int, int> answers[] = {{0, document_opened},         {1, document_access_denied},
                                           {2, document_file_not_found}, {3, document_no_association},
                                           {4, document_access_denied},  {127, document_no_association}};
    for (const auto& [status, result] : answers) {
        opener("echo \"$1\" > got; exit " + std::to_string(status));
        EXPECT_EQ(open_document("DOCS\\manual.pdf"), result) << "exit status " << status;
        EXPECT_EQ(folder.read("got"), "docs/manual.pdf\n");
    }
}

TEST_F(Document, WhatCannotBeOpenedIsToldApart) {
    opener("exit 0");
    EXPECT_EQ(open_document("docs/none.pdf"), document_file_not_found);
    EXPECT_EQ(open_document("nowhere/manual.pdf"), document_path_not_found);
    ::setenv("PATH", "/nowhere", 1);
    EXPECT_EQ(open_document("docs/manual.pdf"), document_no_association);
}

TEST_F(Document, AViewerThatStaysOpenIsNotWaitedForAndHoldsNothingOfOurs) {
    int ours[2] = {-1, -1}; // stands for the connection to the display
    ASSERT_EQ(::pipe(ours), 0);
    opener("exec sleep 4");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(open_document("docs/manual.pdf"), document_opened);
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited, std::chrono::milliseconds(1400));
    EXPECT_LT(waited, std::chrono::milliseconds(2500));
    ::close(ours[1]);
    char byte = 0;
    EXPECT_EQ(::read(ours[0], &byte, 1), 0) << "the viewer holds a descriptor of ours";
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(3500));
    ::close(ours[0]);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a child of ours is left";
}

TEST(ModuleLibrary, AMissingOrBrokenLibrarySaysWhy) {
    const test::ScratchFolder folder;
    std::string error;
    EXPECT_FALSE(ModuleLibrary::load("hq", error));
    EXPECT_NE(error.find(module_file_name("hq")), std::string::npos) << error;
    folder.write("hq.so", "no library");
    error.clear();
    const ModuleLibrary broken = ModuleLibrary::load("hq", error);
    EXPECT_FALSE(broken);
    EXPECT_FALSE(error.empty());
    EXPECT_EQ(broken.symbol("hq"), nullptr);
}

} // namespace
} // namespace vcc::platform
