#include "Review/ReviewStore.h"
#include "Review/Reviews.h"
#include "Review/StoreWriter.h"
#include "Support/Program.h"
#include "Tools/ProcessTable.h"

#include <csignal>
#include <random>

// A program that is killed while it saves leaves the old record or the new one.

namespace vantroque {
namespace {

namespace fs = std::filesystem;

constexpr int kills = 300;

/// Starts the writer and kills it at some moment of its saving.
void killAWriter(const DataHome& home, const std::string& kind)
{
    static std::minstd_rand random(20260301); // the same moments in each run, as far as it goes
    fs::remove(home.folder() / "started");
    Program writer({VANTROQUE_STORE_WRITER, kind});
    ASSERT_TRUE(comesTrue([&] { return fs::exists(home.folder() / "started"); }));
    ::usleep(std::uniform_int_distribution<useconds_t>(0, 3'000)(random));
    writer.signal(SIGKILL);
    EXPECT_EQ(writer.wait().status, 128 + SIGKILL);
}

/// How many files besides the record there are; no more than the one sibling.
int siblings(const fs::path& file)
{
    int count = 0;
    for (const auto& entry : fs::directory_iterator(file.parent_path()))
        if (entry.path() != file) {
            EXPECT_EQ(entry.path(), file.native() + ".tmp");
            ++count;
        }
    return count;
}

template<typename Load, typename Save>
void killAndLook(const std::string& kind, const fs::path& file, const DataHome& home, Load load,
                 Save save)
{
    int interrupted = 0;
    for (int i = 0; i < kills; ++i) {
        killAWriter(home, kind);
        ASSERT_TRUE(StoreWriter::isWhole(load())) << "after kill " << i;
        interrupted += siblings(file);
    }
    testing::Test::RecordProperty("interrupted", interrupted);
    EXPECT_GT(interrupted, kills / 10) << "the kills must meet saves";
    ASSERT_TRUE(save());
    EXPECT_EQ(siblings(file), 0) << "the next save takes the place of what a kill left";
}

TEST(KilledSave, OfAReviewLeavesAWholeOne)
{
    const DataHome home;
    const fs::path file = home.reviews() / (StoreWriter::fingerprint.toStdString() + ".json");
    killAndLook(
        "review", file, home, [] { return ReviewStore::load(StoreWriter::fingerprint); },
        [] { return ReviewStore::save(StoreWriter::review(1)); });
}

TEST(KilledSave, OfAWorkspaceLeavesAWholeOne)
{
    const DataHome home;
    killAndLook(
        "workspace", home.workspace(), home, [] { return WorkspaceStore::load(); },
        [] { return WorkspaceStore::save(StoreWriter::workspace(1)); });
}

} // namespace
} // namespace vantroque
