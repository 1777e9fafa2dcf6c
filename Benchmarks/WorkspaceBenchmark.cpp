// WorkspaceBenchmark REPORT: how long a workspace of 500 analysed files takes to save and to load,
// beside the bare work of Qt's JSON on the same bytes. REPORT is what `check --media --format json`
// printed of one file.

#include "AnalysedFile.h"
#include "Base/Files.h"
#include "Base/Numbers.h"
#include "Base/ScratchFolder.h"
#include "Review/WorkspaceStore.h"

#include <QJsonDocument>

#include <algorithm>
#include <chrono>
#include <functional>
#include <iostream>
#include <limits>

using namespace vantroque;
using namespace Qt::StringLiterals;

namespace {

constexpr int files = 500;
constexpr int rounds = 9;

/// The fastest of some rounds, in seconds: other work on the machine only adds.
double seconds(const std::function<void()>& work)
{
    double fastest = std::numeric_limits<double>::infinity();
    for (int i = 0; i < rounds; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        fastest = std::min(
            fastest,
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return fastest;
}

void print(const std::string& name, double value)
{
    std::cout << name << Numbers::fixed(value, 3).toStdString();
}

} // namespace

int main(int argc, char** argv)
{
    const auto file = argc == 2 ? analysedFile(argv[1]) : std::nullopt;
    const auto scratch = ScratchFolder::make();
    if (!file || !scratch) {
        std::cerr << "no report with measurements, or no scratch folder\n";
        return 2;
    }
    const std::filesystem::path path = scratch->path() / "workspace.json";
    const Workspace workspace{std::vector<WorkspaceFile>(files, *file), file->path,
                              QDateTime::fromSecsSinceEpoch(0, Qt::UTC)};
    bool isWhole = true;
    const double saving =
        seconds([&] { isWhole &= WorkspaceStore::save(workspace, path).has_value(); });
    const double loading = seconds([&] {
        const auto loaded = WorkspaceStore::load(path);
        isWhole &=
            loaded && loaded->files.size() == files && *loaded->files.back().media == *file->media;
    });
    const QByteArray bytes = Files::read(path, INT64_MAX).value_or(QByteArray());
    const double writing =
        seconds([&] { isWhole &= Files::writeAtomically(path, bytes).has_value(); });
    QJsonDocument document;
    const double parsing = seconds([&] { document = QJsonDocument::fromJson(bytes); });
    const double printing =
        seconds([&] { isWhole &= document.toJson(QJsonDocument::Compact) == bytes; });
    if (!isWhole) {
        std::cerr << "what was saved did not come back\n";
        return 1;
    }
    print("size               ", static_cast<double>(bytes.size()) / 1e6);
    print(" MB\nsave               ", saving);
    print(" s (under 0.3; the writing alone ", writing);
    print(", Qt's printing alone ", printing);
    print(")\nload               ", loading);
    print(" s (under 1; Qt's parsing alone ", parsing);
    std::cout << ")\n";
    return 0;
}
