// Documents of an installation: history, journal, disk, two editors.
#include "edit/journal.h"
#include "edit/workspace.h"
#include "packed_screen.h"
#include "unpack.h"

#include "core/files.h"
#include "folder_test.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

#include <sys/wait.h>
#include <unistd.h>

namespace vcc::kit::edit {
namespace {

namespace fs = std::filesystem;

/// What needs no fonts.
SourceCheck check(const std::string& file, const std::string& text) {
    ScreenSource source = read_screen_source(text);
    source.screen.name = fs::path(file).stem().string();
    return {std::move(source.screen), std::move(source.faults)};
}

Operation set_row(int slot, std::int64_t row) {
    Operation operation;
    operation.of = {{Address::Of::slot, slot, "", ""}};
    operation.field = "row";
    operation.value = row;
    return operation;
}

/// An installation with two sources; what editors remember lies beside it.
class Workspaces : public test::FolderTest {
protected:
    Workspaces() {
        folder.write("game/tools/language.ini", "1");
        folder.write("game/screens/vcc.toml", menu);
        folder.write("game/screens/mess.toml", pages);
        folder.write("game/screens/factory.tw", "+1\n-1\nM\xfchle\n");
        ::setenv("XDG_STATE_HOME", path("state").c_str(), 1);
    }
    ~Workspaces() override { ::unsetenv("XDG_STATE_HOME"); }

    std::string path(const std::string& name) const { return (fs::current_path() / name).string(); }
    std::unique_ptr<Workspace> open() const {
        auto workspace = Workspace::open("game");
        EXPECT_TRUE(workspace) << workspace.reason();
        return std::move(workspace).value_or(nullptr);
    }
    static DocumentState state(const Workspace& workspace, const std::string& name = "vcc") {
        return *workspace.document(name);
    }
    static DocumentState edit(Workspace& workspace, std::int64_t row, const std::string& key = {},
                              const std::string& name = "vcc") {
        const auto edited = workspace.edit(name, state(workspace, name).revision, "", key, std::array{set_row(1, row)});
        EXPECT_TRUE(edited) << edited.reason();
        return *edited;
    }
    static std::string menu_with(int row) { return menu + "row = " + std::to_string(row) + "\n"; }

    static inline const std::string menu = "[[slot]]\nindex = 1 # one\n";
    static inline const std::string pages = "# pages\n\n[[slot]]\nindex = 1\ntext = \"a\"\n";
};

TEST_F(Workspaces, UndoAndRedoGoStepByStepAndADragIsOne) {
    const auto workspace = open();
    edit(*workspace, 1);
    for (int row = 2; row < 9; ++row)
        edit(*workspace, row, "drag");
    edit(*workspace, 9, "other drag");
    std::vector<std::string> texts;
    for (DocumentState now = state(*workspace); !now.undo_label.empty(); now = *workspace->undo("vcc"))
        texts.push_back(now.text);
    EXPECT_EQ(texts, (std::vector{menu_with(9), menu_with(8), menu_with(1)}));
    EXPECT_EQ(state(*workspace).text, menu);
    EXPECT_FALSE(state(*workspace).dirty);
    EXPECT_FALSE(workspace->undo("vcc"));
    EXPECT_EQ(workspace->redo("vcc")->redo_label, "Set row of slot 1");
    edit(*workspace, 77, "drag");
    EXPECT_FALSE(workspace->redo("vcc"));
    EXPECT_EQ(workspace->undo("vcc")->text, menu_with(1)) << "a step after an undo stands by itself";
    EXPECT_EQ(workspace->edit("vcc", 1, "", "", {}).reason(), stale_reason);
}

TEST_F(Workspaces, SavingWritesSourcesAndPackedFilesOfDirtyDocumentsOnly) {
    const auto workspace = open();
    edit(*workspace, 5);
    Operation title;
    title.what = Operation::Do::replace_text;
    title.text = "+1\n-1\nM\xc3\xb6hre\n";
    ASSERT_TRUE(workspace->edit("factory", 1, "", "", std::array{title}));
    const auto saved = workspace->save(check);
    ASSERT_TRUE(saved) << saved.reason();
    EXPECT_EQ(saved->files.size(), 6U) << "two slot files, a source, and three of text windows";
    EXPECT_EQ(*read_file("game/screens/vcc.toml"), menu_with(5));
    EXPECT_EQ(*read_file("game/tools/language/german/g_factory.tw"), "+1\n-1\nM\xf6hre\n");
    EXPECT_EQ(read_packed_screen("game", "vcc")->records[1].slots.at(1).row, 5);
    EXPECT_FALSE(fs::exists("game/tools/language/english/e_mess.slt"));
    EXPECT_FALSE(state(*workspace).dirty);
    EXPECT_TRUE(workspace->save(check)->files.empty());
    EXPECT_EQ(workspace->undo("vcc")->text, menu) << "also behind what was saved";
}

TEST_F(Workspaces, AFaultForbidsToSaveAnything) {
    const auto workspace = open();
    edit(*workspace, 5);
    Operation broken;
    broken.what = Operation::Do::replace_text;
    broken.text = "[[slot]]\nindex = 1\nfont = \"mono\"\n";
    ASSERT_TRUE(workspace->edit("mess", 1, "", "", std::array{broken}));
    const auto saved = workspace->save(check);
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->faults.at(0).line, 3);
    EXPECT_EQ(*read_file("game/screens/vcc.toml"), menu);
    EXPECT_FALSE(fs::exists("game/tools/language/english/e_vcc.slt"));
    EXPECT_FALSE(fs::exists("game/screens/vcc.toml.new"));
}

TEST_F(Workspaces, ChangesOnDiskAreMergedOrAskedAbout) {
    const auto workspace = open();
    edit(*workspace, 5);
    folder.write("game/screens/vcc.toml", "# new\n" + menu);
    folder.write("game/screens/more.toml", "");
    EXPECT_EQ(workspace->take_disk_changes(), (std::vector<std::string>{"vcc", "more"}));
    EXPECT_EQ(state(*workspace).text, "# new\n" + menu_with(5));
    EXPECT_TRUE(state(*workspace).conflicts.empty());
    EXPECT_TRUE(workspace->take_disk_changes().empty());

    folder.write("game/screens/vcc.toml", "# new\n" + menu_with(6));
    workspace->take_disk_changes();
    ASSERT_EQ(state(*workspace).conflicts.size(), 1U);
    Operation longer;
    longer.what = Operation::Do::replace_text;
    longer.text = "# newer\n\n" + menu_with(5);
    ASSERT_TRUE(workspace->edit("vcc", state(*workspace).revision, "", "", std::array{longer}));
    const Conflict conflict = state(*workspace).conflicts.at(0);
    EXPECT_EQ(std::tuple(conflict.line, conflict.mine, conflict.theirs), std::tuple(5, "row = 5\n", "row = 6\n"));
    EXPECT_FALSE(workspace->save(check));
    EXPECT_EQ(workspace->resolve("vcc", 0, Choice::theirs)->text, "# newer\n\n" + menu_with(6));
    EXPECT_FALSE(workspace->resolve("vcc", 0, Choice::theirs));
    EXPECT_TRUE(workspace->save(check));
}

TEST_F(Workspaces, BothSidesAreKeptLineByLine) {
    const auto workspace = open();
    Operation unended;
    unended.what = Operation::Do::replace_text;
    unended.text = menu + "row = 5";
    ASSERT_TRUE(workspace->edit("vcc", 1, "", "", std::array{unended}));
    folder.write("game/screens/vcc.toml", menu + "column = 6");
    workspace->take_disk_changes();
    EXPECT_EQ(workspace->resolve("vcc", 0, Choice::both)->text, menu + "row = 5\ncolumn = 6");
}

TEST_F(Workspaces, TheSecondEditorIsTold) {
    const auto workspace = open();
    const pid_t child = ::fork();
    if (child == 0) {
        const auto second = Workspace::open("game");
        const std::string holder = "process " + std::to_string(::getppid());
        ::_exit(second ? 1 : second.reason().find(holder) == std::string::npos ? 2 : 0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(Workspaces, WhatACrashLeftIsOfferedAndMerged) {
    {
        const auto workspace = open();
        edit(*workspace, 5);
        edit(*workspace, 6, "", "mess");
        EXPECT_TRUE(workspace->undo("mess"));
    } // no save: as good as a crash
    folder.write("game/screens/vcc.toml", "# new\n" + menu);
    const auto workspace = open();
    EXPECT_EQ(workspace->recovered().documents, std::vector<std::string>{"vcc"});
    EXPECT_GT(workspace->recovered().when, 1'000'000'000);
    EXPECT_FALSE(workspace->edit("vcc", 1, "", "", {}));
    ASSERT_TRUE(workspace->recover(true));
    EXPECT_EQ(state(*workspace).text, "# new\n" + menu_with(5));
    EXPECT_TRUE(workspace->recovered().documents.empty());
    EXPECT_EQ(workspace->undo("vcc")->text, "# new\n" + menu);
    EXPECT_TRUE(workspace->redo("vcc"));
    ASSERT_TRUE(workspace->save(check));
    EXPECT_FALSE(fs::exists(state_folder(workspace->screens_folder()) + "/journal"));
}

TEST_F(Workspaces, WhatIsDroppedIsNotOfferedAgain) {
    edit(*open(), 5);
    EXPECT_EQ(open()->recovered().documents.size(), 1U) << "and not deciding keeps it";
    ASSERT_TRUE(open()->recover(false));
    EXPECT_TRUE(open()->recovered().documents.empty());
}

TEST_F(Workspaces, SourcesAreMadeWhereThereAreNone) {
    {
        const auto workspace = open();
        edit(*workspace, 5);
        edit(*workspace, 5, "", "mess");
        ASSERT_TRUE(workspace->save(check));
    }
    fs::remove_all("game/screens");
    const auto workspace = open();
    EXPECT_TRUE(workspace->sources_are_made());
    const Screen screen = *read_packed_screen("game", "vcc");
    EXPECT_TRUE(describes(state(*workspace).text, screen));
    EXPECT_EQ(workspace->documents().size(), 2U);
    EXPECT_FALSE(fs::exists("game/screens"));
    ASSERT_TRUE(workspace->save(check));
    EXPECT_EQ(*read_file("game/screens/vcc.toml"), state(*workspace).text);
    EXPECT_FALSE(workspace->sources_are_made());
}

TEST_F(Workspaces, KilledWhileSavingLosesNothing) {
    for (int round = 0; round < 25; ++round) {
        const std::string mark = std::to_string(1000 + round);
        int ready[2];
        ASSERT_EQ(::pipe(ready), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            const auto workspace = open();
            for (const char* name : {"vcc", "mess"})
                edit(*workspace, 1000 + round, "", name);
            [[maybe_unused]] const auto told = ::write(ready[1], "x", 1);
            [[maybe_unused]] const auto saved = workspace->save(check);
            ::_exit(0);
        }
        char byte = 0;
        ASSERT_EQ(::read(ready[0], &byte, 1), 1);
        ::usleep(static_cast<useconds_t>(round * 400));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        ::close(ready[0]);
        ::close(ready[1]);

        const auto workspace = open();
        [[maybe_unused]] const auto recovered = workspace->recover(true); // fails when the save was done
        for (const char* name : {"vcc", "mess"})
            EXPECT_NE(state(*workspace, name).text.find("row = " + mark), std::string::npos) << name << round;
        ASSERT_TRUE(workspace->save(check));
        for (const char* name : {"vcc", "mess"})
            EXPECT_EQ(read_packed_screen("game", name)->records[0].slots.at(1).row, 1000 + round) << name;
    }
    for (const auto& file : fs::recursive_directory_iterator("game"))
        EXPECT_NE(file.path().extension(), ".new") << file.path();
}

TEST(Journal, IsReadUpToTheTear) {
    const fs::path file = fs::temp_directory_path() / ("journal-" + std::to_string(::getpid()));
    Journal journal(file.string());
    std::vector<std::pair<std::size_t, std::string>> whole; ///< size of the file, and the text by then
    std::string text = "begin\n";
    for (int i = 0; i < 5; ++i) {
        const std::string next = text + std::string(static_cast<std::size_t>(i), 'x') + "line\n";
        journal.note("vcc", "vcc.toml", text, next);
        whole.emplace_back(journal.size(), text = next);
    }
    const std::string bytes = *read_file(file.string());
    fs::remove(file);
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        const JournalContents contents = read_journal(bytes.substr(0, size));
        std::string wanted;
        for (const auto& [end, then] : whole)
            wanted = size >= end ? then : wanted;
        if (wanted.empty())
            EXPECT_TRUE(contents.empty() || contents.at("vcc").text == "begin\n") << size;
        else
            EXPECT_EQ(contents.at("vcc").text, wanted) << size;
    }
    for (std::size_t at = 0; at < bytes.size(); ++at) { // and whatever a byte becomes, it is no other text
        std::string other = bytes;
        other[at] = static_cast<char>(other[at] ^ 0x55);
        for (const auto& [name, document] : read_journal(other))
            EXPECT_TRUE(document.text == "begin\n" ||
                        std::ranges::any_of(whole, [&](const auto& each) { return each.second == document.text; }))
                << at;
    }
}

} // namespace
} // namespace vcc::kit::edit
