#include "folder_test.h"
#include "platform/files.h"
#include "platform/latin1.h"

namespace vcc::platform {
namespace {

using Files = test::FolderTest;

TEST_F(Files, TheFolderOfAProgramKeepsTheSeparatorOfARoot) {
    for (const auto& [path, its_folder] :
         {std::pair("C:\\Games\\start.exe", "C:\\Games"), {"D:\\start.exe", "D:\\"}, {"/vcc", "/"}, {"vcc", ""}})
        EXPECT_EQ(folder_of_program(path), its_folder) << path;
}

TEST_F(Files, FoldersWithNamesOfEveryScriptWork) {
    const std::string name = "\xC3\x9C\x62ung \xE6\x97\xA5\xE6\x9C\xAC"; // UTF-8
    std::filesystem::create_directory(system_path(name));
    enter_folder(name);
    const std::string whole = whole_name("new.txt");
    EXPECT_TRUE(whole.ends_with("new.txt") && whole.find(name) != std::string::npos) << whole;
    for (const std::string text : {"first", "second"}) { // the first makes the file, the second replaces it
        std::FILE* const file = open_file(whole + ".temporary", "wb");
        ASSERT_TRUE(file);
        std::fputs(text.c_str(), file);
        std::fclose(file);
        EXPECT_TRUE(replace_file(whole + ".temporary", whole));
        EXPECT_EQ(std::filesystem::file_size("new.txt"), text.size());
    }
    {
        const FolderVisit out("..");
        EXPECT_TRUE(file_exists(name + "/NEW.txt"));
    }
    EXPECT_TRUE(file_exists("new.txt"));
}

TEST(Clipboard, TextBecomesLatin1) {
    EXPECT_EQ(latin1_from_utf8("Gr\xC3\xBC\xC3\x9F\x65 \xC2\xA7"), "Gr\xFC\xDF\x65 \xA7");
    EXPECT_EQ(latin1_from_utf8("5 \xE2\x82\xAC!"), "5 ?!"); // beyond Latin-1
    EXPECT_EQ(latin1_from_utf8("a\xC3"), "a?");             // cut in the middle
    EXPECT_EQ(utf8_from_latin1("Gr\xFC\xDF"), "Gr\xC3\xBC\xC3\x9F");
}

} // namespace
} // namespace vcc::platform
