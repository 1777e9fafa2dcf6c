// The headers of QuickTime, MP4, Matroska, RIFF and MXF files and transport streams, and lists that
// lead to other files.

#include "Fuzz/Target.h"
#include "Probe/Prober.h"
#include "Tools/Playlists.h"
#include "Tools/QuickTimeReferences.h"

using namespace vantroque;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Fuzz::FileInMemory file(Fuzz::bytesOf(data, size));
    Prober::moovBeforeMdat(file.url());
    const auto missing = Prober::missingBytes(file.url(), static_cast<std::int64_t>(size));
    Fuzz::hold(missing.value_or(0) >= 0, "no less than nothing is missing");
    QuickTimeReferences::leadElsewhere(file.descriptor());
    (void)Playlists::refuse(file.url());
    return 0;
}
