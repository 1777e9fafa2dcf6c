#include "Review/ReviewStore.h"
#include "Review/Reviews.h"
#include "Review/StoreWriter.h"
#include "Support/Program.h"
#include "Tools/ProcessTable.h"

#include <csignal>
#include <random>
#include <set>

// A program that is killed while it saves leaves the old record or the new one.

namespace vantroque {
namespace {

namespace fs = std::filesystem;

constexpr int kills = 300;

/// Starts the writer, and kills it after some saves at any moment of those that follow.
void killAWriter(const DataHome& home, const std::string& kind)
{
    static std::minstd_rand random(20260301); // the same moments in each run, as far as it goes
    fs::remove(home.folder() / "started");
    const int saves = std::uniform_int_distribution<int>(1, 8)(random);
    Program writer({VANTROQUE_STORE_WRITER, kind, QByteArray::number(saves).toStdString()});
    ASSERT_TRUE(comesTrue([&] { return fs::exists(home.folder() / "started"); }));
    ::usleep(std::uniform_int_distribution<useconds_t>(0, 3'000)(random));
    writer.signal(SIGKILL);
    EXPECT_EQ(writer.wait().status, 128 + SIGKILL);
}

/// What a kill leaves beside the record is no record, and has a name that nobody has.
void lookBeside(const fs::path& file)
{
    for (const auto& entry : fs::directory_iterator(file.parent_path()))
        if (entry.path() != file) {
            EXPECT_EQ(entry.path().extension(), ".tmp") << entry.path();
        }
}

template<typename Load>
void killAndLook(const std::string& kind, const fs::path& file, const DataHome& home, Load load)
{
    std::set<std::uintmax_t> sizes;
    for (int i = 0; i < kills; ++i) {
        killAWriter(home, kind);
        ASSERT_TRUE(StoreWriter::isWhole(load())) << "after kill " << i;
        lookBeside(file);
        sizes.insert(fs::file_size(file));
    }
    EXPECT_GT(sizes.size(), 3U) << "the kills must meet the writer after saves of several lengths";
}

TEST(KilledSave, OfAReviewLeavesAWholeOne)
{
    const DataHome home;
    const fs::path file = home.reviews() / (StoreWriter::fingerprint.toStdString() + ".json");
    killAndLook("review", file, home, [] { return ReviewStore::load(StoreWriter::fingerprint); });
}

TEST(KilledSave, OfAWorkspaceLeavesAWholeOne)
{
    const DataHome home;
    killAndLook("workspace", home.workspace(), home, [] { return WorkspaceStore::load(); });
}

} // namespace
} // namespace vantroque
