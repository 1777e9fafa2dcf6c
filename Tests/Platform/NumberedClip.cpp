#include "Platform/NumberedClip.h"

#include "Support/Media.h"

namespace vantroque::NumberedClip {

using Media::operator+;

namespace {

constexpr int bits = 12;

/// The luma, 0 to 255, in the middle of a bar.
int lumaAt(const BiPlanarPicture& picture, int bar, int row)
{
    const int x = (2 * bar + 1) * picture.width / (2 * bits);
    const int y = (2 * row + 1) * picture.height / 4;
    const std::uint8_t* const line = picture.luma + picture.lumaStride * y;
    // The upper byte of a word comes second.
    return picture.sampleBits == 8 ? line[x] : line[2 * x + 1];
}

} // namespace

std::vector<std::string> input(const std::string& rate, const std::string& seconds)
{
    std::string graph = "color=black:size=192x96:rate=" + rate + ":duration=" + seconds;
    for (int bit = 0; bit < bits; ++bit) {
        const std::string number = std::to_string(bit);
        const std::string isSet = "mod(floor(n/" + std::to_string(1 << bit) + "),2)";
        const std::string box = ",drawbox=x=16*" + number + ":w=16:h=48:color=white:t=fill";
        graph += box + ":y=0:enable='" + isSet + "'";
        graph += box + ":y=48:enable='not(" + isSet + ")'";
    }
    return {"-f", "lavfi", "-i", graph};
}

std::filesystem::path make(const std::string& name, const std::string& rate,
                           const std::vector<std::string>& encoder, const std::string& seconds)
{
    return Media::make({name, input(rate, seconds) + encoder});
}

std::optional<int> numberIn(const BiPlanarPicture& picture)
{
    int number = 0;
    for (int bit = 0; bit < bits; ++bit) {
        const int upper = lumaAt(picture, bit, 0);
        const int lower = lumaAt(picture, bit, 1);
        constexpr int contrast = 120;
        if (upper - lower > contrast)
            number |= 1 << bit;
        else if (lower - upper <= contrast)
            return std::nullopt;
    }
    return number;
}

} // namespace vantroque::NumberedClip
