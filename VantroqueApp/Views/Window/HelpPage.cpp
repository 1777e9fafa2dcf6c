#include "VantroqueApp/Views/Window/HelpPage.h"

#include "Base/ResourceFolder.h"

#include <filesystem>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

std::vector<HelpPage> HelpPage::all()
{
    std::vector<HelpPage> pages;
    const auto folder = ResourceFolder::path();
    if (!folder)
        return pages;
    const std::vector<std::pair<QString, const char*>> titles{
        {u"First Verdict"_s, "first.html"},
        {u"How to Read the Report"_s, "report.html"},
        {u"What a Verdict Means"_s, "verdicts.html"},
        {u"Reviewing"_s, "review.html"},
        {u"How to Compare Versions"_s, "compare.html"},
        {u"Exporting"_s, "export.html"},
        {u"Profiles of Your Own"_s, "profiles.html"},
        {u"In a Pipeline"_s, "pipeline.html"},
        {u"Keys"_s, "keys.html"}};
    for (const auto& [title, name] : titles)
        if (const auto file = *folder / "Help" / name; std::filesystem::exists(file))
            pages.push_back({title, QUrl::fromLocalFile(QString::fromStdString(file.native()))});
    return pages;
}

} // namespace vantroque
