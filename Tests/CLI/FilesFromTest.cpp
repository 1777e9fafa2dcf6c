#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/Media.h"

#include <unistd.h>

// Files that a list names, for `check`.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

class FilesFrom : public testing::Test {
protected:
    std::string sound(const std::string& name) const
    {
        return m_folder.write(name, contents(Clips::wav()));
    }
    Words command(const Words& words) const
    {
        return Cli::command(Words{"check"} + m_profiles.words() + words);
    }
    ProgramRun run(const Words& words) const { return runProgram(command(words)); }
    /// With that file as standard input.
    ProgramRun runWith(const fs::path& input, const Words& words) const
    {
        return runProgram(Words{"sh", "-c", "exec \"$@\" < \"$0\"", input.native()}
                          + command(words));
    }
    static std::vector<std::string> done(const ProgramRun& run)
    {
        std::vector<std::string> names;
        for (const Cli::File& file : Cli::checked(run))
            names.push_back(file.status == u"done"_s ? file.path.toStdString() : "");
        return names;
    }

    const Cli::ProfilesFolder m_profiles;
    const TestFolder m_folder;
};

TEST_F(FilesFrom, AreTheLinesOfAListBehindThoseOfTheCall)
{
    const auto first = sound("first.wav");
    const auto spaces = sound(" two  words .wav");
    const auto last = sound("last.wav");
    const auto list = m_folder.write(
        "list", QByteArray::fromStdString('\n' + spaces + "\n\n\n" + last)); // no line end
    EXPECT_THAT(done(run({"--format", "json", "--files-from", list.native(), first})),
                ElementsAre(first, spaces, last));
    EXPECT_THAT(done(runWith(list, {"--format", "json", "--files-from", "-"})),
                ElementsAre(spaces, last));
}

TEST_F(FilesFrom, WithANulInTheListMayHoldLineEndsAndAnyBytes)
{
    const auto broken = sound("a\nb.wav");
    const auto latin = sound("caf\xE9.wav");
    std::string bytes = broken + '\0' + '\0' + latin + '\0';
    const auto list = m_folder.write("list", QByteArray::fromStdString(bytes));
    const auto result = runWith(list, {"--format", "json", "--files-from", "-"});
    EXPECT_NE(result.status, 2) << result.err.toStdString();
    EXPECT_THAT(Cli::checked(result), SizeIs(2));
    EXPECT_TRUE(result.out.contains(QByteArray::fromStdString(latin).toBase64()));
}

TEST_F(FilesFrom, AreToldOfWhenThereAreNone)
{
    const std::string help = "; --files-from takes a list of file names, or - for standard input\n";
    for (const auto& [list, complaint] :
         {std::pair{m_folder / "none", "No such file or directory" + help},
          {m_folder.path(), "Is a directory" + help}}) {
        const auto result = run({"--files-from", list.native()});
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err.toStdString(), "vantroque-cli: " + list.native() + ": " + complaint);
    }
    const auto empty = m_folder.write("empty", "\n\n");
    EXPECT_EQ(run({"--files-from", empty.native()}).err.toStdString(),
              "vantroque-cli: " + empty.native()
                  + " names no file: a list has one a line, or ends each with a NUL\n");
    EXPECT_THAT(runWith("/dev/null", {"--files-from", "-"}).err.toStdString(),
                StartsWith("vantroque-cli: standard input names no file: "));
}

TEST_F(FilesFrom, AndTheListItselfAreNeverWrittenOver)
{
    const auto film = sound("film.wav");
    const auto list = m_folder.write("list", QByteArray::fromStdString(film + '\n'));
    for (const std::string& target : {film, list.native()}) {
        const QByteArray before = contents(target);
        for (const auto& result : {run({"--files-from", list.native(), "-o", target}),
                                   runWith(list, {"--files-from", "-", "-o", target})}) {
            EXPECT_EQ(result.status, 2);
            EXPECT_THAT(result.err.toStdString(), HasSubstr(target + " is a file to be read"));
        }
        EXPECT_EQ(contents(target), before);
    }
}

TEST_F(FilesFrom, MayBeMoreThanFitIntoACall)
{
    // A device is refused without a tool, so that so many are soon done.
    const QByteArray name = "/dev/" + QByteArray("./").repeated(1900) + "null\n";
    const auto list = m_folder.write("list", name.repeated(600));
    EXPECT_GT(fs::file_size(list), static_cast<std::uintmax_t>(::sysconf(_SC_ARG_MAX)));
    const auto result = run({"--format", "json", "--jobs", "2", "--files-from", list.native()});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out.count("\"status\": \"failed\""), 600);
}

} // namespace
} // namespace vantroque
