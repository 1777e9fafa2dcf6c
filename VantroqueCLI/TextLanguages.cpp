#include "VantroqueCLI/TextLanguages.h"

#include "Analysis/Analyzer.h"
#include "Base/UserDefaults.h"
#include "VantroqueCLI/Output.h"
#include "VantroquePlatform/Recognition/TesseractRecognizer.h"

namespace vantroque {

using namespace Qt::StringLiterals;

std::vector<std::string> textLanguages(const Arguments& arguments)
{
    if (arguments.has("text-language"))
        return arguments.values("text-language");
    std::vector<std::string> languages;
    for (const QString& code : UserDefaults().textList(u"text.languages"_s).value_or(QStringList()))
        languages.push_back(code.toStdString());
    return languages.empty() ? std::vector<std::string>{"eng"} : languages;
}

RecognizerPool::Start recognizerStart(const std::vector<std::string>& languages)
{
    return [languages] { return TesseractRecognizer::make(languages); };
}

std::unique_ptr<RecognizerPool> startRecognizers(const Arguments& arguments,
                                                 const std::vector<Profile>& profiles)
{
    auto recognizers = std::make_unique<RecognizerPool>(recognizerStart(textLanguages(arguments)));
    if (!arguments.has("skip-signal"))
        complainIfTextCannotBeRead(*recognizers, profiles);
    return recognizers;
}

void complainIfTextCannotBeRead(RecognizerPool& recognizers, const std::vector<Profile>& profiles)
{
    if (!Analyzer::needsTextReading(profiles))
        return;
    if (const auto recognizer = recognizers.take(); !recognizer)
        Output::complain(u"text in the picture is not read: "_s + recognizer.error().description);
}

} // namespace vantroque
