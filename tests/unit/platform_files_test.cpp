#include "folder_test.h"
#include "platform/document.h"
#include "platform/files.h"
#include "platform/latin1.h"
#include "platform/module_library.h"

#include <chrono>
#include <sys/wait.h>

namespace vcc::platform {
namespace {

using Files = test::FolderTest;

TEST_F(Files, NamesOfOtherSystemsAreFound) {
    folder.write("Tools/Language/E_VCC.slt", "x");
    folder.write("a/readme", "lower");
    folder.write("a/README", "upper");
    const std::pair<const char*, const char*> cases[] = {
        {"Tools/Language/E_VCC.slt", "Tools/Language/E_VCC.slt"},
        {"./TOOLS//LANGUAGE\\../language\\e_vcc.SLT", "./Tools//Language/../Language/E_VCC.slt"},
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

TEST_F(Files, TheFolderOfAProgramKeepsTheSeparatorOfARoot) {
    const std::pair<const char*, const char*> cases[] = {{"C:\\Games\\Game\\start.exe", "C:\\Games\\Game"},
                                                         {"D:\\start.exe", "D:\\"},
                                                         {"\\\\start.exe", "\\\\"},
                                                         {"C:start.exe", ""},
                                                         {"/usr/games/vcc", "/usr/games"},
                                                         {"/vcc", "/"},
                                                         {"", ""}};
    for (const auto& [path, its_folder] : cases)
        EXPECT_EQ(folder_of_program(path), its_folder) << path;
    EXPECT_NE(program_path().find("unit_platform"), std::string::npos);
}

TEST_F(Files, AReplacedFileKeepsItsRightsAndItsLink) {
    constexpr std::filesystem::perms rights{0640};
    folder.write("real", "old");
    folder.write("new", "new");
    std::filesystem::permissions("real", rights);
    std::filesystem::create_symlink("real", "link");
    EXPECT_TRUE(replace_file("new", "link"));
    EXPECT_TRUE(std::filesystem::is_symlink("link"));
    EXPECT_EQ(std::filesystem::status("real").permissions(), rights);
    EXPECT_FALSE(replace_file("missing", "real"));
    EXPECT_EQ(folder.read("real"), "new");
}

TEST_F(Files, AVisitEndsWhereItBegan) {
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
    const std::pair<std::string_view, const char*> cases[] = {
        {"Gr\xC3\xBC\xC3\x9F\x65 \xC2\xA7", "Gr\xFC\xDF\x65 \xA7"},
        {"5 \xE2\x82\xAC!", "5 ?!"}, // beyond Latin-1
        {"a\xC3", "a?"},             // cut in the middle
        {{"ab\0c", 4}, "ab"},
    };
    for (const auto& [utf8, latin1] : cases)
        EXPECT_EQ(latin1_from_utf8(utf8), latin1);
    EXPECT_EQ(utf8_from_latin1(cases[0].second), cases[0].first);
}

/// Puts a script of ours in the place of the desktop's opener.
class Document : public test::FolderTest {
protected:
    Document() { folder.write("docs/manual.pdf", "x"); }
    ~Document() override { ::setenv("PATH", old_path.c_str(), 1); }
    void opener(const std::string& script) {
        folder.write("bin/xdg-open", "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions("bin/xdg-open", std::filesystem::perms(0755));
        ::setenv("PATH", ((folder.path() / "bin").string() + ":/bin:/usr/bin").c_str(), 1);
    }
    const std::string old_path = std::getenv("PATH");
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

TEST_F(Files, AModuleThatIsMissingOrBrokenSaysWhy) {
    for (const bool broken : {false, true}) {
        if (broken)
            folder.write("hq.so", "no library");
        std::string error;
        const ModuleLibrary module = ModuleLibrary::load("hq", error);
        EXPECT_FALSE(module);
        EXPECT_NE(error.find("hq.so"), std::string::npos) << error;
        EXPECT_EQ(module.symbol("hq"), nullptr);
    }
}

} // namespace
} // namespace vcc::platform
