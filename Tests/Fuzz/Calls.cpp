// The words with which a window calls its decoder, and a program the supervisor of a tool.

#include "Fuzz/Target.h"
#include "Tools/SuperviseCall.h"
#include "VantroquePlay/PlayCall.h"

#include <string>
#include <vector>

using namespace vantroque;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::vector<std::string> texts{"program"};
    for (const QByteArray& word : Fuzz::bytesOf(data, size).split('\n'))
        texts.push_back(word.toStdString());
    std::vector<char*> words;
    for (std::string& text : texts)
        words.push_back(text.data());
    words.push_back(nullptr);
    const int count = static_cast<int>(texts.size());
    if (const auto call = PlayCall::of(count, words.data()))
        Fuzz::hold(call->rate.perSecond() > 0 && call->stream >= 0, "what is played is a picture");
    if (const auto call = SuperviseCall::of(count, words.data()))
        Fuzz::hold(call->tool > words.data() && *call->tool != nullptr, "there is a tool to run");
    return 0;
}
