// Reviews of files, and the markers that are made of them.

#include "Export/MarkerExport.h"
#include "Export/MarkerFormats.h"
#include "Fuzz/Target.h"
#include "Records/FileReview.h"

using namespace vantroque;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto review = Json::read<FileReview>(Fuzz::bytesOf(data, size));
    if (!review)
        return 0;
    Fuzz::holdThroughJson(*review);
    const QDateTime now = QDateTime::fromSecsSinceEpoch(1'800'000'000);
    const auto markers = MarkerExport::markers({.review = &*review}, 29.97, now);
    for (const auto format : {MarkerExport::Format::avid, MarkerExport::Format::premiere,
                              MarkerExport::Format::resolve, MarkerExport::Format::csv})
        MarkerExport::write(markers, format, {}, QUuid());
    return 0;
}
