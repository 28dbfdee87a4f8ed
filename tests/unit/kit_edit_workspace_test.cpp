// Documents of an installation: history, unsaved work, disk, two editors.
#include "vcckit/edit/unsaved.h"
#include "vcckit/edit/workspace.h"
#include "vcckit/source/packed_screen.h"
#include "vcckit/source/unpack.h"

#include "core/files.h"
#include "folder_test.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

#include <fcntl.h>
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

Operation typed(const std::string& text, const std::optional<std::string>& base = {}) {
    Operation operation;
    operation.what = Operation::Do::replace_text;
    operation.text = text;
    operation.base = base;
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
    for (DocumentState now = state(*workspace); now.done > 0; now = *workspace->undo("vcc"))
        texts.push_back(now.text);
    EXPECT_EQ(texts, (std::vector{menu_with(9), menu_with(8), menu_with(1)}));
    EXPECT_EQ(state(*workspace).text, menu);
    EXPECT_FALSE(state(*workspace).dirty);
    EXPECT_FALSE(workspace->undo("vcc"));
    EXPECT_EQ(workspace->redo("vcc")->done, 1U);
    EXPECT_EQ(state(*workspace).steps, std::vector<std::string>(3, "Set row of slot 1"));
    edit(*workspace, 77, "drag");
    EXPECT_FALSE(workspace->redo("vcc"));
    EXPECT_EQ(workspace->undo("vcc")->text, menu_with(1)) << "a step after an undo stands by itself";
    EXPECT_EQ(workspace->edit("vcc", 1, "", "", {}).reason(), stale_reason);
}

TEST_F(Workspaces, SavingWritesSourcesAndPackedFilesOfDirtyDocumentsOnly) {
    const auto workspace = open();
    edit(*workspace, 5);
    ASSERT_TRUE(workspace->edit("factory", 1, "", "", std::array{typed("+1\n-1\nM\xc3\xb6hre\n")}));
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

TEST_F(Workspaces, ChangesOnDiskAreMergedOrAskedAbout) {
    const auto workspace = open();
    edit(*workspace, 5);
    folder.write("game/screens/vcc.toml", "# new\n" + menu);
    folder.write("game/screens/more.toml", "");
    EXPECT_EQ(workspace->take_disk_changes(), (std::vector<std::string>{"more", "vcc"}));
    EXPECT_EQ(state(*workspace).text, "# new\n" + menu_with(5));
    EXPECT_TRUE(state(*workspace).conflicts.empty());
    EXPECT_TRUE(workspace->take_disk_changes().empty());

    folder.write("game/screens/vcc.toml", "# new\n" + menu_with(6));
    workspace->take_disk_changes();
    ASSERT_EQ(state(*workspace).conflicts.size(), 1U);
    const Operation longer = typed("# newer\n\n" + menu_with(5));
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
    ASSERT_TRUE(workspace->edit("vcc", 1, "", "", std::array{typed(menu + "row = 5")}));
    folder.write("game/screens/vcc.toml", menu + "column = 6");
    workspace->take_disk_changes();
    EXPECT_EQ(workspace->resolve("vcc", 0, Choice::both)->text, menu + "row = 5\ncolumn = 6");
    const auto back = workspace->undo("vcc");
    EXPECT_EQ(back->text, menu + "row = 5");
    ASSERT_EQ(back->conflicts.size(), 1U) << "the question comes back";
    EXPECT_EQ(back->conflicts[0].theirs, "column = 6");
    EXPECT_TRUE(workspace->redo("vcc")->conflicts.empty());
    ASSERT_TRUE(workspace->undo("vcc") && workspace->resolve("vcc", 0, Choice::theirs) && workspace->save(check));

    const std::string saved = state(*workspace).text;
    edit(*workspace, 8);
    folder.write("game/screens/vcc.toml", saved + "\nrow = 9\n");
    workspace->take_disk_changes();
    ASSERT_EQ(state(*workspace).conflicts.size(), 1U);
    EXPECT_FALSE(workspace->resolve("vcc", 0, Choice::both)) << "one key twice is no TOML";
    EXPECT_EQ(state(*workspace).conflicts.size(), 1U);
}

TEST_F(Workspaces, UnsavedWorkThatCannotBeKeptIsTold) {
    folder.write("state", "a file where the folder should be");
    const auto workspace = open();
    edit(*workspace, 5);
    EXPECT_NE(workspace->trouble().find("unsaved.json"), std::string::npos);
    fs::remove("state");
    edit(*workspace, 6);
    EXPECT_EQ(workspace->trouble(), "");
}

TEST_F(Workspaces, WhatACrashLeftIsOfferedAndMerged) {
    {
        const auto workspace = open();
        edit(*workspace, 4);
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
    ASSERT_TRUE(workspace->save(check));
    EXPECT_FALSE(fs::exists(state_folder(workspace->screens_folder()) + "/unsaved.json"));
    EXPECT_EQ(workspace->undo("vcc")->text, menu_with(5)) << "the change on disk";
    EXPECT_EQ(workspace->undo("vcc")->text, menu_with(4)) << "and every step before the crash";
    EXPECT_EQ(workspace->undo("vcc")->text, menu);
}

TEST_F(Workspaces, WhatIsDroppedIsNotOfferedAgain) {
    edit(*open(), 5);
    EXPECT_EQ(open()->recovered().documents.size(), 1U) << "and not deciding keeps it";
    ASSERT_TRUE(open()->recover(false));
    EXPECT_TRUE(open()->recovered().documents.empty());
}

TEST_F(Workspaces, AScreenWithoutASourceGetsOneWithItsFirstChange) {
    {
        const auto workspace = open();
        edit(*workspace, 5);
        edit(*workspace, 5, "", "mess");
        ASSERT_TRUE(workspace->save(check));
    }
    fs::remove("game/screens/mess.toml");
    folder.write("game/tools/language/english/e_factory.tw", "+1\n-1\n");
    folder.write("game/tools/language/german/g_factory.tw", "+1\n-1\n");
    fs::remove("game/screens/factory.tw");
    const auto workspace = open();
    EXPECT_TRUE(describes(state(*workspace, "mess").text, *read_packed_screen("game", "mess")));
    EXPECT_TRUE(workspace->save(check)->files.empty()) << "nothing is written unasked";
    edit(*workspace, 7, "", "mess");
    Operation move;
    move.what = Operation::Do::set;
    move.of = {{Address::Of::window, 1, "", ""}};
    move.field = "left";
    move.value = std::int64_t{9};
    ASSERT_TRUE(workspace->edit("factory", state(*workspace, "factory").revision, "", "", std::array{move}));
    ASSERT_TRUE(workspace->save(check));
    EXPECT_EQ(*read_file("game/screens/mess.toml"), state(*workspace, "mess").text);
    for (const char* file :
         {"screens/factory.tw", "tools/language/english/e_factory.tw", "tools/language/german/g_factory.tw"})
        EXPECT_EQ(*read_file("game/" + std::string(file)), "+1\n-1\nxo9\n") << file;
    EXPECT_EQ(read_packed_screen("game", "mess")->records[1].slots.at(1).row, 7);
    // Without its source the installed files count again.
    fs::remove("game/screens/mess.toml");
    EXPECT_EQ(workspace->take_disk_changes(), std::vector<std::string>{"mess"});
    EXPECT_TRUE(state(*workspace, "mess").made);
    EXPECT_FALSE(state(*workspace, "mess").dirty);
}

TEST_F(Workspaces, ABufferListIsWrittenWhereTheProjectHasIt) {
    folder.write("game/tools/vcc.buf", "+0\na.pcx\n");
    const std::string installed = path("game/tools/vcc.buf"), source = path("game/files/tools/vcc.buf");
    int buffer = 8;
    for (const std::vector<std::string>& written : {std::vector{installed}, {installed, source}}) {
        const auto workspace = open();
        Operation create;
        create.what = Operation::Do::create;
        create.to = ++buffer;
        create.text = "b.pcx";
        ASSERT_TRUE(workspace->edit("vcc.buf", 1, "", "", std::array{create}));
        EXPECT_EQ(workspace->save(check)->files, written);
        for (const std::string& file : written)
            EXPECT_TRUE(read_file(file)->ends_with("+" + std::to_string(buffer) + "\nb.pcx\n")) << file;
        folder.write("game/files/theme", "");
    }
}

TEST_F(Workspaces, AWholeTextIsMergedWithWhatHasChangedSince) {
    const auto workspace = open();
    folder.write("game/screens/vcc.toml", "# new\n" + menu);
    workspace->take_disk_changes();
    const auto edited = [&](const std::string& text, const std::string& base) {
        return *workspace->edit("vcc", 1, "", "", std::array{typed(text, base)});
    };
    EXPECT_EQ(edited(menu_with(5), menu).text, "# new\n" + menu_with(5));
    EXPECT_EQ(edited(menu_with(6), menu_with(5)).text, "# new\n" + menu_with(6)) << "the other line was not seen yet";
    EXPECT_EQ(edited(menu, menu_with(7)).conflicts.size(), 1U);
}

TEST_F(Workspaces, FilesThatGoTakeTheirDocumentsAlongUnlessTheyWereChanged) {
    const auto workspace = open();
    folder.write("game/screens/more.toml", "broken");
    workspace->take_disk_changes();
    fs::remove("game/screens/more.toml");
    EXPECT_EQ(workspace->take_disk_changes(), std::vector<std::string>{"more"});
    EXPECT_FALSE(workspace->document("more"));
    edit(*workspace, 5);
    fs::rename("game/screens/vcc.toml", "game/screens/menu.toml");
    workspace->take_disk_changes();
    EXPECT_TRUE(state(*workspace).conflicts.at(0).removed);
    EXPECT_FALSE(workspace->save(check));
    EXPECT_TRUE(workspace->resolve("vcc", 0, Choice::theirs)->gone);
    EXPECT_TRUE(workspace->save(check));
    EXPECT_FALSE(fs::exists("game/screens/vcc.toml"));
    EXPECT_EQ(state(*workspace, "menu").text, menu);

    edit(*workspace, 5, "", "mess");
    fs::rename("game", "moved");
    EXPECT_NE(workspace->save(check).reason().find("moved away"), std::string::npos);
    EXPECT_TRUE(workspace->take_disk_changes().empty());
    EXPECT_FALSE(fs::exists("game"));
    fs::rename("moved", "game");
    EXPECT_TRUE(workspace->save(check));
}

TEST_F(Workspaces, LinksDoNotLeadOut) {
    folder.write("outside/link.toml", "");
    folder.write("outside/e_vcc.slt", "not ours");
    fs::create_symlink("../../outside/link.toml", "game/screens/link.toml");
    fs::create_directories("game/tools/language/english");
    fs::create_symlink("../../../../outside/e_vcc.slt", "game/tools/language/english/e_vcc.slt");
    const auto workspace = open();
    EXPECT_FALSE(workspace->document("link"));
    edit(*workspace, 5);
    EXPECT_NE(workspace->save(check).reason().find("leads out"), std::string::npos);
    EXPECT_EQ(*read_file("outside/e_vcc.slt"), "not ours");
    EXPECT_EQ(*read_file("game/screens/vcc.toml"), menu);
}

/// Another program that writes a source just when it is read and written here.
TEST_F(Workspaces, WhatIsWrittenWhileSavingIsNotLost) {
    const auto workspace = open();
    const std::string file = path("game/screens/vcc.toml");
    for (int round = 0; round < 60; ++round) {
        const std::string mark = "# outside " + std::to_string(round) + "\n";
        edit(*workspace, 100 + round);
        const pid_t child = ::fork();
        if (child == 0) {
            ::usleep(static_cast<useconds_t>(round * 100));
            const std::string text = mark + *read_file(file);
            const int descriptor = ::open(file.c_str(), O_WRONLY | O_TRUNC);
            const bool slowly = round % 3 == 0;
            const std::size_t half = slowly ? text.size() / 2 : text.size();
            bool good = ::write(descriptor, text.data(), half) > 0;
            if (slowly)
                ::usleep(2000);
            good = ::write(descriptor, text.data() + half, text.size() - half) >= 0 && good;
            ::_exit(good ? 0 : 1);
        }
        auto saved = workspace->save(check);
        ::waitpid(child, nullptr, 0);
        workspace->take_disk_changes();
        const DocumentState now = state(*workspace);
        std::string all = now.text;
        for (const Conflict& conflict : now.conflicts)
            all += conflict.theirs;
        EXPECT_NE(all.find(mark), std::string::npos) << round << saved.reason() << "\n" << now.text;
        while (!state(*workspace).conflicts.empty())
            ASSERT_TRUE(workspace->resolve("vcc", 0, Choice::mine));
        ASSERT_TRUE(workspace->save(check)) << round;
    }
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

TEST_F(Workspaces, AFileOfUnsavedWorkThatIsDamagedIsNotTaken) {
    edit(*open(), 5);
    const std::string file = state_folder(path("game/screens")) + "/unsaved.json", whole = *read_file(file);
    ASSERT_EQ(work_of_text(whole).at("vcc").text, menu_with(5));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_TRUE(work_of_text(whole.substr(0, size)).empty()) << size;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string other = whole;
        other[at] = '9';
        for (auto& [name, document] : work_of_text(other)) // may be another text, but never one that the steps miss
            while (document.history.undoable())
                document.text = document.history.undo(document.text);
    }
}

} // namespace
} // namespace vcc::kit::edit
