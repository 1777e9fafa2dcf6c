#include "Model/ModelFixture.h"

#include "Base/FileDescriptor.h"
#include "Review/ReviewStore.h"
#include "Tools/ProcessTable.h"

#include <array>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <random>
#include <sys/prctl.h>
#include <unistd.h>

// A program that is killed while notes are written loses at most the one that is being written.

namespace vantroque {
namespace {

QString wordsOf(qsizetype number)
{
    return u"note %1 "_s.arg(number) + QString(number * 37 % 500, u'x');
}

/// Makes note after note, and tells by a letter when it begins to keep one and when the operator
/// sees it in the list.
[[noreturn]] void noteUntilKilled(const PlayedFile& file, int told)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ReviewBook book;
    Notebook notebook(file, book);
    const auto settle = [&] {
        book.waitUntilWritten();
        QCoreApplication::processEvents();
    };
    const auto tell = [told](char letter) {
        if (::write(told, &letter, 1) != 1)
            ::_exit(EXIT_FAILURE);
    };
    settle();
    for (qsizetype number = std::ssize(notebook.comments()) + 1;; ++number) {
        notebook.setDraftText(wordsOf(number));
        tell('b');
        notebook.saveComment(number, std::nullopt);
        settle();
        if (std::ssize(notebook.comments()) != number)
            ::_exit(EXIT_FAILURE);
        tell('s');
    }
}

/// Notes that a killed program leaves in a review, whose numbers go from 1 upwards.
class KilledNotes : public ModelTest {
protected:
    struct Told {
        qsizetype begun = 0;
        qsizetype seen = 0;
    };

    /// What a writer told until it was killed, at any instant after some letters.
    Told killAWriter()
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
        const FileDescriptor here(ends[0]);
        FileDescriptor there(ends[1]);
        ForkedChild writer([&] { noteUntilKilled(m_file, there.get()); });
        there.close();
        Told told;
        const auto readOne = [&] {
            char letter = 0;
            const bool isOne = ::read(here.get(), &letter, 1) == 1;
            told.begun += letter == 'b' ? 1 : 0;
            told.seen += letter == 's' ? 1 : 0;
            return isOne;
        };
        for (int wanted = between(0, 8); wanted > 0; --wanted)
            EXPECT_TRUE(readOne()) << "the writer gave up";
        for (std::atomic<int> spin = between(0, 400'000); spin > 0; --spin) {
        }
        writer.kill();
        while (readOne()) {
        }
        return told;
    }
    qsizetype storedNotes() const
    {
        const auto review = ReviewStore::peek(*m_file.fingerprint);
        if (!review)
            return 0;
        for (qsizetype i = 0; i < std::ssize(review->comments); ++i)
            EXPECT_EQ(review->comments[static_cast<std::size_t>(i)].text, wordsOf(i + 1));
        return std::ssize(review->comments);
    }
    int between(int least, int most)
    {
        return std::uniform_int_distribution<int>(least, most)(m_random);
    }

    const PlayedFile m_file{
        .url = anyFile("film.mov"),
        .video = {.width = 16, .height = 8, .frameRate = 25, .durationSeconds = 4},
        .fingerprint = ReviewStore::fingerprint(anyFile("film.mov")).value()};

private:
    std::minstd_rand m_random{20261122};
};

TEST_F(KilledNotes, AreAllThereThatWereSeenInTheList)
{
    constexpr int kills = 300;
    constexpr int killsOfAReview = 30; // so that it stays small
    qsizetype before = 0;
    int whileOneIsKept = 0;
    for (int kill = 0; kill < kills; ++kill) {
        if (kill % killsOfAReview == 0) {
            ASSERT_TRUE(ReviewStore::remove(*m_file.fingerprint));
            before = 0;
        }
        const Told told = killAWriter();
        const qsizetype stored = storedNotes();
        ASSERT_GE(stored, before + told.seen) << "after kill " << kill;
        ASSERT_LE(stored, before + told.begun) << "after kill " << kill;
        whileOneIsKept += told.begun > told.seen ? 1 : 0;
        before = stored;
    }
    EXPECT_GT(whileOneIsKept, kills / 10) << "many of the kills must come while a note is kept";
}

} // namespace
} // namespace vantroque
