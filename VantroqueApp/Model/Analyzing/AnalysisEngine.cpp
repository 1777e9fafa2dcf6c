#include "VantroqueApp/Model/Analyzing/AnalysisEngine.h"

#include <filesystem>

namespace vantroque {

AnalysisEngine AnalysisEngine::real(RecognizerPool* recognizers)
{
    return {.analyze =
                [recognizers](const FileUrl& url, const std::vector<Profile>& profiles,
                              AnalysisProgress& progress) {
                    return Analyzer::analyze(url, profiles, {.recognizers = recognizers},
                                             &progress);
                },
            .rescore =
                [recognizers](MediaInfo& media, const std::vector<Profile>& profiles) {
                    return Analyzer::rescore(media, profiles, recognizers);
                }};
}

bool AnalysisEngine::exists(const FileUrl& file)
{
    std::error_code error;
    return std::filesystem::exists(file.path(), error);
}

} // namespace vantroque
