// Profiles of platforms, which an operator may write, and what a report says by them.

#include "Analysis/Analyzer.h"
#include "Check/ProblemsText.h"
#include "Check/TextRenderer.h"
#include "Fuzz/Target.h"
#include "Profiles/LoudnessTarget.h"
#include "Profiles/ProfileCheck.h"
#include "Profiles/SpecFreshness.h"

#include <QFile>

using namespace vantroque;

namespace {

MediaInfo spot()
{
    static const MediaInfo media = [] {
        QFile file(QStringLiteral(FUZZ_MEDIA));
        Fuzz::hold(file.open(QIODevice::ReadOnly), "the record of a spot is there");
        auto read = Json::read<MediaInfo>(file.readAll());
        Fuzz::hold(read.has_value(), "the record of a spot can be read");
        return *std::move(read);
    }();
    return media;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray text = Fuzz::bytesOf(data, size);
    const auto profile = Json::read<Profile>(text);
    const auto problems = ProfileCheck::problems(text);
    Fuzz::hold(profile || !problems.empty(), "what cannot be read has a problem");
    for (const auto& problem : problems)
        Fuzz::hold(problem.line >= 1 && problem.line <= text.count('\n') + 1, "a line of the text");
    if (!profile)
        return 0;
    Fuzz::holdThroughJson(*profile);
    const std::vector<Profile> profiles{*profile};
    const FileReport report = Analyzer::report(spot(), profiles);
    Fuzz::holdThroughJson(report);
    TextRenderer::render(report, true);
    ProblemsText::render(report, profiles);
    LoudnessTarget::across(profiles).caption();
    SpecFreshnessReport::summary(profiles, QDateTime::fromSecsSinceEpoch(1'800'000'000));
    return 0;
}
