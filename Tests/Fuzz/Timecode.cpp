// Times that people type.

#include "Base/Timecode.h"
#include "Fuzz/Target.h"

#include <array>

using namespace vantroque;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::array rates{25.0, 29.97, 23.976, 59.94, 120.0, 0.0, -1.0, 1e300};
    QByteArray bytes = Fuzz::bytesOf(data, size);
    const double rate = rates.at(static_cast<std::size_t>(Fuzz::takeNumber(bytes)) % rates.size());
    const auto time = Timecode::parse(QString::fromUtf8(bytes), rate);
    if (!time)
        return 0;
    Fuzz::hold(time->frame() >= 0, "no frame stands before the first");
    const auto again = Timecode::parse(time->text(), rate);
    if (time->frame() < 24 * 3600 * time->framesPerSecond()) // What is typed ends with a day.
        Fuzz::hold(again == time, "its text means the same");
    time->fileSafeText();
    Timecode::durationText(time->seconds(), rate);
    return 0;
}
