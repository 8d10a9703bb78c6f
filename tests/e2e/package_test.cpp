// Installed trees: any prefix, staging, taking away; completions by the option table.

#include <filesystem>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/run.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

RunResult install(const TempDir &dir, const std::string &prefix, const std::string &stage = "")
{
    return run({"cmake", "--install", TYR_BINARY_DIR, "--component", "runtime", "--prefix", prefix},
               {.env = {"DESTDIR=" + stage}, .folder = dir.path()});
}

/// Whether the installed program draws with nothing told of where its data are.
void expect_section(const TempDir &dir, const std::string &program)
{
    std::vector<std::string> words = {
        program, "-de", "p,out.ps,color", "-va", "wbrb", "-id", "PLTC2", "-me", "warn"};
    const std::vector<std::string> files = make_samples(dir.file("obs"), "12", 3);
    words.insert(words.end(), files.begin(), files.end());
    const RunResult drawn = run(words, {.folder = dir.path()});
    EXPECT_EQ(drawn.code, 0);
    EXPECT_EQ(drawn.err, "");
    EXPECT_NE(read_file(dir.file("out.ps")).find("Wind barbs"), std::string::npos)
        << "the label of the catalogue";
}

TEST(Package, DrawsFromAnyPrefixWithItsOwnData)
{
    const char *prefixes[] = {"a tree with blanks", "relative/tree"};
    for (const char *prefix : prefixes) {
        SCOPED_TRACE(prefix);
        const TempDir dir;
        ASSERT_EQ(install(dir, prefix).code, 0);
        expect_section(dir, dir.file(prefix) + "/bin/profiler");
        // the resource file names the folder, for programs that are told of it
        const std::string cfg = read_file(dir.file(prefix) + "/etc/tyr.cfg");
        EXPECT_NE(cfg.find(dir.file(prefix) + "/etc"), std::string::npos);
        EXPECT_EQ(cfg.find("/usr/local"), std::string::npos);
        const RunResult told =
            run({dir.file(prefix) + "/bin/tyrplay", "--help", "-df", dir.file(prefix) + "/etc"},
                {.folder = dir.path()});
        EXPECT_EQ(told.code, 0) << told.err;
    }
}

TEST(Package, StagedTreeNamesItsFinalPlaceAndIsTakenAway)
{
    const TempDir dir;
    const std::string stage = dir.file("stage");
    ASSERT_EQ(install(dir, "/opt/tyr", stage).code, 0);
    EXPECT_FALSE(fs::exists("/opt/tyr"));
    EXPECT_NE(read_file(stage + "/opt/tyr/etc/tyr.cfg").find("file_path: /opt/tyr/etc\n"),
              std::string::npos);
    const std::string own = dir.write("stage/opt/tyr/etc/own.cfg", "*level: 500\n");
    const RunResult away =
        run({"cmake", "-P", TYR_BINARY_DIR "/uninstall.cmake"}, {.env = {"DESTDIR=" + stage}});
    EXPECT_EQ(away.code, 0) << away.err;
    std::vector<std::string> left;
    for (const auto &entry : fs::recursive_directory_iterator(stage)) {
        if (!entry.is_directory()) {
            left.push_back(entry.path().string());
        }
    }
    EXPECT_EQ(left, std::vector<std::string>{own}) << "what others put there stays";
    EXPECT_FALSE(fs::exists(stage + "/opt/tyr/bin")) << "no empty folders";
}

TEST(Package, CompletionsAreThoseOfTheOptionTable)
{
    const TempDir dir;
    const RunResult made = run({"python3", TYR_SOURCE_DIR "/scripts/completions.py",
                                TYR_BINARY_DIR "/bin", dir.file("made")});
    ASSERT_EQ(made.code, 0) << made.err;
    int compared = 0;
    for (const auto &entry : fs::recursive_directory_iterator(TYR_SOURCE_DIR "/completions")) {
        if (entry.is_regular_file()) {
            const std::string name =
                fs::relative(entry.path(), TYR_SOURCE_DIR "/completions").string();
            SCOPED_TRACE(name);
            EXPECT_EQ(read_file(dir.file("made/" + name)), read_file(entry.path().string()))
                << "run scripts/completions.py";
            compared++;
        }
    }
    EXPECT_GE(compared, 9);
}

TEST(Package, ShellsTakeTheCompletions)
{
    const std::string folder = TYR_SOURCE_DIR "/completions/";
    if (have_program("bash")) {
        const RunResult words =
            run({"bash", "-c",
                 ". " + folder +
                     "bash/profiler; COMP_WORDS=(profiler -me w); COMP_CWORD=2; "
                     "_profiler; echo \"${COMPREPLY[@]}\"; COMP_WORDS=(profiler "
                     "-nh); COMP_CWORD=1; _profiler; echo \"${COMPREPLY[@]}\""});
        EXPECT_EQ(words.out, "warn\n-nh\n") << words.err;
    }
    if (have_program("fish")) {
        const RunResult words = run(
            {"fish", "-c", "source " + folder + "fish/profiler.fish; complete -C 'profiler -n'"});
        EXPECT_NE(words.out.find("-nh\tNumber of hours to view"), std::string::npos) << words.err;
    }
    if (have_program("zsh")) {
        const RunResult checked = run({"zsh", "-n", folder + "zsh/_profiler"});
        EXPECT_EQ(checked.code, 0) << checked.err;
    }
}

} // namespace
