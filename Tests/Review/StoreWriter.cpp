// StoreWriter review|workspace COUNT: saves records of ever changing length until it is killed, and
// makes the file "started" in the data home once so many are whole. The length stands in the record
// twice, so that a mixture of two would show.

#include "Review/StoreWriter.h"
#include "Review/ReviewStore.h"
#include "Review/WorkspaceStore.h"

#include <cstdlib>
#include <fstream>
#include <string_view>

using namespace vantroque;

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const bool isReview = std::string_view(argv[1]) == "review";
    const int count = std::atoi(argv[2]);
    constexpr int longest = 60;
    for (int i = 0;; ++i) {
        const int length = 1 + i * 7 % longest;
        const auto saved = isReview ? ReviewStore::save(StoreWriter::review(length))
                                    : WorkspaceStore::save(StoreWriter::workspace(length));
        if (!saved)
            return 1;
        if (i + 1 == count)
            std::ofstream(std::string(::getenv("XDG_DATA_HOME")) + "/started");
    }
}
