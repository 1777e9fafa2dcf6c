#pragma once

#include "Base/Result.h"
#include "Records/MediaInfo.h"
#include "Records/Profile.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// One line a file, one column a measurement: raw numbers for spreadsheets and regression runs, no
/// verdicts. An empty field was not measured.
namespace vantroque::MeasurementCSV {

/// The names of the columns, in order.
const QStringList& header();
QString headerLine();

/// Probes and measures a file afresh, with all that the profiles ask for and the picture's detail.
/// Blocks; any thread. Fails with the words of the probe or the decode.
Result<QString> row(const FileUrl& url, const std::vector<Profile>& profiles);

QString line(const MediaInfo& media, std::optional<double> block, std::optional<double> blur);

/// Mean blockiness and blur of every 12th frame, by an ffmpeg run of its own. Blocks; any thread.
struct BlockAndBlur {
    std::optional<double> block;
    std::optional<double> blur;
};
BlockAndBlur blockAndBlur(const MediaInfo& media);

} // namespace vantroque::MeasurementCSV
