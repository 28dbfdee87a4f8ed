// Documents of an installation: history, unsaved work, disk, two editors.
#include "vcckit/edit/unsaved.h"
#include "vcckit/edit/workspace.h"
#include "vcckit/source/packed_screen.h"
#include "vcckit/source/unpack.h"

#include "core/files.h"
#include "folder_test.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

/// Whether the disk has it does not matter to tests, which wait for it most of their time.
extern "C" int fsync(int) {
    return 0;
}

namespace vcc::kit::edit {
namespace {

namespace fs = std::filesystem;

/// What needs no fonts.
SourceCheck check(const std::string& file, const std::string& text) {
    ScreenSource source = read_screen_source(text);
    source.screen.name = fs::path(file).stem().string();
    return {std::move(source.screen), std::move(source.faults)};
}

/// Why something is refused; empty when it is not.
template <class Act>
std::string reason_of(const Act& act) {
    try {
        act();
    } catch (const Refused& refused) {
        return refused.what();
    }
    return {};
}

Operation set_number(const Address& of, const std::string& field, std::int64_t value) {
    return {.of = {of}, .field = field, .value = value};
}

Operation typed(const std::string& text, const std::optional<std::string>& base = {}) {
    return {.what = Operation::Do::replace_text, .text = text, .base = base};
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
    static const Document& vcc(const Workspace& workspace) { return workspace.document("vcc"); }
    static void apply(Workspace& workspace, const std::string& name, const Operation& operation,
                      const std::string& key = {}) {
        workspace.edit({name, workspace.document(name).revision, "", key, {operation}});
    }
    static void edit(Workspace& workspace, std::int64_t row, const std::string& key = {},
                     const std::string& name = "vcc") {
        apply(workspace, name, set_number({Address::Of::slot, 1}, "row", row), key);
    }
    /// What somebody else writes.
    void change_on_disk(Workspace& workspace, const std::string& text) {
        folder.write("game/screens/vcc.toml", text);
        workspace.take_disk_changes();
    }
    static std::string menu_with(int row) { return menu + "row = " + std::to_string(row) + "\n"; }

    static inline const std::string menu = "[[slot]]\nindex = 1 # one\n";
    static inline const std::string pages = "# pages\n\n[[slot]]\nindex = 1\ntext = \"a\"\n";
};

/// With an editor on it.
class Opened : public Workspaces {
protected:
    Workspace workspace{"game"};
};

TEST_F(Opened, UndoAndRedoGoStepByStepAndADragIsOne) {
    edit(workspace, 1);
    for (int row = 2; row < 9; ++row)
        edit(workspace, row, "drag");
    edit(workspace, 9, "other drag");
    for (const History::Step& step : vcc(workspace).history.steps())
        EXPECT_EQ(step.label, "Set row of slot 1");
    for (const std::string& text : {menu_with(9), menu_with(8), menu_with(1)}) {
        EXPECT_EQ(vcc(workspace).text, text);
        workspace.undo("vcc");
    }
    EXPECT_EQ(vcc(workspace).text, menu);
    EXPECT_FALSE(vcc(workspace).dirty());
    EXPECT_THROW(workspace.undo("vcc"), Refused);
    EXPECT_EQ(workspace.redo("vcc").history.done(), 1U);
    edit(workspace, 77, "drag");
    EXPECT_THROW(workspace.redo("vcc"), Refused);
    EXPECT_EQ(workspace.undo("vcc").text, menu_with(1)) << "a step after an undo stands by itself";
    EXPECT_EQ(reason_of([&] { workspace.edit({"vcc", 1}); }), stale_reason);
}

TEST_F(Opened, SavingWritesSourcesAndPackedFilesOfDirtyDocumentsOnly) {
    edit(workspace, 5);
    apply(workspace, "factory", typed("+1\n-1\nM\xc3\xb6hre\n"));
    EXPECT_EQ(workspace.save(check).files.size(), 6U) << "two slot files, a source, and three of text windows";
    EXPECT_EQ(*read_file("game/screens/vcc.toml"), menu_with(5));
    EXPECT_EQ(*read_file("game/tools/language/german/g_factory.tw"), "+1\n-1\nM\xf6hre\n");
    EXPECT_EQ(read_packed_screen("game", "vcc")->records[1].slots.at(1).row, 5);
    EXPECT_FALSE(fs::exists("game/tools/language/english/e_mess.slt"));
    EXPECT_FALSE(vcc(workspace).dirty());
    EXPECT_TRUE(workspace.save(check).files.empty());
    EXPECT_EQ(workspace.undo("vcc").text, menu) << "also behind what was saved";
}

TEST_F(Opened, ChangesOnDiskAreMergedOrAskedAbout) {
    edit(workspace, 5);
    folder.write("game/screens/vcc.toml", "# new\n" + menu);
    folder.write("game/screens/more.toml", "");
    EXPECT_EQ(workspace.take_disk_changes(), (std::vector<std::string>{"more", "vcc"}));
    EXPECT_EQ(vcc(workspace).text, "# new\n" + menu_with(5));
    EXPECT_TRUE(vcc(workspace).conflicts.empty());
    EXPECT_TRUE(workspace.take_disk_changes().empty());

    change_on_disk(workspace, "# new\n" + menu_with(6));
    ASSERT_EQ(vcc(workspace).conflicts.size(), 1U);
    apply(workspace, "vcc", typed("# newer\n\n" + menu_with(5)));
    const auto& [mine, base, theirs, removed] = vcc(workspace).conflicts.at(0);
    EXPECT_EQ(vcc(workspace).text.substr(mine.begin, mine.end - mine.begin), "row = 5\n");
    EXPECT_EQ(theirs, "row = 6\n");
    EXPECT_THROW(workspace.save(check), Refused);
    EXPECT_EQ(workspace.resolve("vcc", 0, Choice::theirs)->text, "# newer\n\n" + menu_with(6));
    EXPECT_THROW(workspace.resolve("vcc", 0, Choice::theirs), Refused);
    EXPECT_FALSE(workspace.save(check).files.empty());
}

TEST_F(Opened, BothSidesAreKeptLineByLine) {
    apply(workspace, "vcc", typed(menu + "row = 5"));
    change_on_disk(workspace, menu + "column = 6");
    EXPECT_EQ(workspace.resolve("vcc", 0, Choice::both)->text, menu + "row = 5\ncolumn = 6");
    EXPECT_EQ(workspace.undo("vcc").text, menu + "row = 5");
    EXPECT_EQ(vcc(workspace).conflicts.at(0).theirs, "column = 6") << "the question comes back";
    EXPECT_TRUE(workspace.redo("vcc").conflicts.empty());
    workspace.undo("vcc");
    workspace.resolve("vcc", 0, Choice::theirs);
    workspace.save(check);

    const std::string saved = vcc(workspace).text;
    edit(workspace, 8);
    change_on_disk(workspace, saved + "\nrow = 9\n");
    EXPECT_THROW(workspace.resolve("vcc", 0, Choice::both), Refused) << "one key twice is no TOML";
    EXPECT_EQ(vcc(workspace).conflicts.size(), 1U);
}

TEST_F(Workspaces, UnsavedWorkThatCannotBeKeptIsTold) {
    folder.write("state", "a file where the folder should be");
    Workspace workspace("game");
    edit(workspace, 5);
    EXPECT_NE(workspace.trouble().find("unsaved.json"), std::string::npos);
    fs::remove("state");
    edit(workspace, 6);
    EXPECT_EQ(workspace.trouble(), "");
}

TEST_F(Workspaces, WhatACrashLeftIsOfferedAndMerged) {
    {
        Workspace workspace("game");
        edit(workspace, 4);
        edit(workspace, 5);
        edit(workspace, 6, "", "mess");
        workspace.undo("mess");
    } // no save: as good as a crash
    folder.write("game/screens/vcc.toml", "# new\n" + menu);
    Workspace workspace("game");
    EXPECT_EQ(workspace.offered().size(), 1U);
    EXPECT_TRUE(workspace.offered().contains("vcc"));
    EXPECT_GT(workspace.offered_when(), 1'000'000'000);
    EXPECT_THROW(workspace.edit({"vcc", 1}), Refused);
    workspace.recover(true);
    EXPECT_EQ(vcc(workspace).text, "# new\n" + menu_with(5));
    EXPECT_TRUE(workspace.offered().empty());
    workspace.save(check);
    EXPECT_FALSE(fs::exists(state_folder(workspace.screens_folder()) + "/unsaved.json"));
    EXPECT_EQ(workspace.undo("vcc").text, menu_with(5)) << "the change on disk";
    EXPECT_EQ(workspace.undo("vcc").text, menu_with(4)) << "and every step before the crash";
    EXPECT_EQ(workspace.undo("vcc").text, menu);
}

TEST_F(Workspaces, AScreenWithoutASourceGetsOneWithItsFirstChange) {
    {
        Workspace workspace("game");
        edit(workspace, 5);
        edit(workspace, 5, "", "mess");
        workspace.save(check);
    }
    fs::remove("game/screens/mess.toml");
    folder.write("game/tools/language/english/e_factory.tw", "+1\n-1\n");
    folder.write("game/tools/language/german/g_factory.tw", "+1\n-1\n");
    fs::remove("game/screens/factory.tw");
    Workspace workspace("game");
    const Document& mess = workspace.document("mess");
    EXPECT_TRUE(describes(mess.text, *read_packed_screen("game", "mess")));
    EXPECT_TRUE(workspace.save(check).files.empty()) << "nothing is written unasked";
    edit(workspace, 7, "", "mess");
    apply(workspace, "factory", set_number({Address::Of::window, 1}, "left", 9));
    workspace.save(check);
    EXPECT_EQ(*read_file("game/screens/mess.toml"), mess.text);
    for (const char* file :
         {"screens/factory.tw", "tools/language/english/e_factory.tw", "tools/language/german/g_factory.tw"})
        EXPECT_EQ(*read_file("game/" + std::string(file)), "+1\n-1\nxo9\n") << file;
    EXPECT_EQ(read_packed_screen("game", "mess")->records[1].slots.at(1).row, 7);
    // Without its source the installed files count again.
    fs::remove("game/screens/mess.toml");
    EXPECT_EQ(workspace.take_disk_changes(), std::vector<std::string>{"mess"});
    EXPECT_TRUE(mess.made && !mess.dirty());
}

TEST_F(Workspaces, ABufferListIsWrittenWhereTheProjectHasIt) {
    folder.write("game/tools/vcc.buf", "+0\na.pcx\n");
    const std::string installed = path("game/tools/vcc.buf"), source = path("game/files/tools/vcc.buf");
    int buffer = 8;
    for (const std::vector<std::string>& written : {std::vector{installed}, {installed, source}}) {
        Workspace workspace("game");
        apply(workspace, "vcc.buf", {.what = Operation::Do::create, .to = ++buffer, .text = "b.pcx"});
        EXPECT_EQ(workspace.save(check).files, written);
        for (const std::string& file : written)
            EXPECT_TRUE(read_file(file)->ends_with("+" + std::to_string(buffer) + "\nb.pcx\n")) << file;
        folder.write("game/files/theme", "");
    }
}

TEST_F(Opened, AWholeTextIsMergedWithWhatHasChangedSince) {
    change_on_disk(workspace, "# new\n" + menu);
    const auto edited = [&](const std::string& text, const std::string& base) {
        return workspace.edit({"vcc", 1, "", "", {typed(text, base)}});
    };
    EXPECT_EQ(edited(menu_with(5), menu).text, "# new\n" + menu_with(5));
    EXPECT_EQ(edited(menu_with(6), menu_with(5)).text, "# new\n" + menu_with(6)) << "the other line was not seen yet";
    EXPECT_EQ(edited(menu, menu_with(7)).conflicts.size(), 1U);
}

TEST_F(Opened, FilesThatGoTakeTheirDocumentsAlongUnlessTheyWereChanged) {
    folder.write("game/screens/more.toml", "broken");
    workspace.take_disk_changes();
    fs::remove("game/screens/more.toml");
    EXPECT_EQ(workspace.take_disk_changes(), std::vector<std::string>{"more"});
    EXPECT_THROW(workspace.document("more"), Refused);
    edit(workspace, 5);
    fs::rename("game/screens/vcc.toml", "game/screens/menu.toml");
    workspace.take_disk_changes();
    EXPECT_TRUE(vcc(workspace).conflicts.at(0).removed);
    EXPECT_THROW(workspace.save(check), Refused);
    EXPECT_EQ(workspace.resolve("vcc", 0, Choice::theirs), nullptr);
    workspace.save(check);
    EXPECT_FALSE(fs::exists("game/screens/vcc.toml"));
    EXPECT_EQ(workspace.document("menu").text, menu);

    edit(workspace, 5, "", "mess");
    fs::rename("game", "moved");
    EXPECT_NE(reason_of([&] { workspace.save(check); }).find("moved away"), std::string::npos);
    EXPECT_TRUE(workspace.take_disk_changes().empty());
    EXPECT_FALSE(fs::exists("game"));
    fs::rename("moved", "game");
    EXPECT_FALSE(workspace.save(check).files.empty());
}

TEST_F(Workspaces, LinksDoNotLeadOut) {
    folder.write("outside/link.toml", "");
    folder.write("outside/e_vcc.slt", "not ours");
    fs::create_symlink("../../outside/link.toml", "game/screens/link.toml");
    fs::create_directories("game/tools/language/english");
    fs::create_symlink("../../../../outside/e_vcc.slt", "game/tools/language/english/e_vcc.slt");
    Workspace workspace("game");
    EXPECT_FALSE(workspace.documents().contains("link"));
    edit(workspace, 5);
    EXPECT_NE(reason_of([&] { workspace.save(check); }).find("leads out"), std::string::npos);
    EXPECT_EQ(*read_file("outside/e_vcc.slt"), "not ours");
    EXPECT_EQ(*read_file("game/screens/vcc.toml"), menu);
}

/// Another program that writes a source just when it is read and written here.
TEST_F(Opened, WhatIsWrittenWhileSavingIsNotLost) {
    const std::string file = path("game/screens/vcc.toml");
    for (int round = 0; round < 60; ++round) {
        const std::string mark = "# outside " + std::to_string(round) + "\n";
        edit(workspace, 100 + round);
        std::thread other([&] {
            ::usleep(static_cast<useconds_t>(round * 100));
            const std::string text = mark + *read_file(file);
            std::ofstream out(file, std::ios::binary);
            if (round % 3 == 0) { // slowly
                out << text.substr(0, text.size() / 2) << std::flush;
                ::usleep(2000);
            }
            EXPECT_TRUE(out << text.substr(static_cast<std::size_t>(out.tellp())) << std::flush);
        });
        const std::string reason = reason_of([&] { workspace.save(check); });
        other.join();
        workspace.take_disk_changes();
        std::string all = vcc(workspace).text;
        for (const MergeConflict& conflict : vcc(workspace).conflicts)
            all += conflict.theirs;
        EXPECT_NE(all.find(mark), std::string::npos) << round << reason << "\n" << all;
        while (!vcc(workspace).conflicts.empty())
            workspace.resolve("vcc", 0, Choice::mine);
        workspace.save(check);
    }
}

TEST_F(Workspaces, KilledWhileSavingLosesNothing) {
    for (int round = 0; round < 25; ++round) {
        const std::string mark = std::to_string(1000 + round);
        int ready[2];
        ASSERT_EQ(::pipe(ready), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            Workspace workspace("game");
            for (const char* name : {"vcc", "mess"})
                edit(workspace, 1000 + round, "", name);
            [[maybe_unused]] const auto told = ::write(ready[1], "x", 1);
            workspace.save(check);
            ::_exit(0);
        }
        char byte = 0;
        ASSERT_EQ(::read(ready[0], &byte, 1), 1);
        ::usleep(static_cast<useconds_t>(round * 400));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        ::close(ready[0]);
        ::close(ready[1]);

        Workspace workspace("game");
        if (!workspace.offered().empty())
            workspace.recover(true);
        for (const char* name : {"vcc", "mess"})
            EXPECT_NE(workspace.document(name).text.find("row = " + mark), std::string::npos) << name << round;
        workspace.save(check);
        for (const char* name : {"vcc", "mess"})
            EXPECT_EQ(read_packed_screen("game", name)->records[0].slots.at(1).row, 1000 + round) << name;
    }
    for (const auto& file : fs::recursive_directory_iterator("game"))
        EXPECT_NE(file.path().extension(), ".new") << file.path();
}

TEST_F(Workspaces, UnsavedWorkThatIsDamagedOrDroppedIsNotTaken) {
    {
        Workspace workspace("game");
        edit(workspace, 5);
    }
    const std::string file = state_folder(path("game/screens")) + "/unsaved.json", whole = *read_file(file);
    ASSERT_EQ(work_of_text(whole).at("vcc").text, menu_with(5));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_TRUE(work_of_text(whole.substr(0, size)).empty()) << size;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string other = whole;
        other[at] = '9';
        for (auto& [name, document] : work_of_text(other)) // may be another text, but never one that the steps miss
            while (document.history.next(true))
                document.text = document.history.travel(document.text, true);
    }
    EXPECT_EQ(Workspace("game").offered().size(), 1U) << "and not deciding keeps it";
    Workspace("game").recover(false);
    EXPECT_TRUE(Workspace("game").offered().empty());
}

} // namespace
} // namespace vcc::kit::edit
