#include "Base/Text.h"
#include "Check/CheckRow.h"
#include "Check/Checker.h"

#include <QRegularExpression>

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

std::optional<CheckResult> fileSizeRow(const FileRule& rule, std::int64_t size)
{
    const auto& max = rule.maxBytes;
    const auto& recommended = rule.recommendedMaxBytes;
    if (!max && !recommended)
        return std::nullopt;
    const CheckRow row{u"file-size"_s, u"File size"_s, {}};
    const QString measured = Text::byteCount(size);
    if (max && size > *max)
        return row.expecting(u"under "_s + Text::byteCount(*max))
            .fail(measured, u"Lower the bitrate or shorten the spot. The platform rejects files "
                            u"over the limit."_s);
    const QString limit = Text::byteCount(recommended ? *recommended : *max);
    if (recommended && size > *recommended) {
        const QString hardLimit = max ? u", %1 hard limit"_s.arg(Text::byteCount(*max)) : QString();
        return row.expecting(u"≤ %1 recommended%2"_s.arg(limit, hardLimit))
            .warn(u"%1 (over the %2 recommendation)"_s.arg(measured, limit));
    }
    return row.expecting(u"≤ "_s + limit).pass(measured);
}

CheckResult fileNameRow(const FileRule& rule, const QString& stem)
{
    const CheckRow row{u"file-name"_s, u"File name"_s, rule.nameNote.value_or(*rule.namePattern)};
    const QRegularExpression pattern(*rule.namePattern,
                                     QRegularExpression::UseUnicodePropertiesOption);
    if (pattern.isValid() && pattern.match(stem).hasMatch())
        return row.pass(stem);
    return row.warn(stem, u"Rename to the platform's convention before upload."_s);
}

} // namespace

void checkFile(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.file)
        return;
    if (const auto row = fileSizeRow(*profile.file, media.fileSizeBytes))
        rows.push_back(*row);
    if (profile.file->namePattern)
        rows.push_back(fileNameRow(*profile.file, media.url.stem()));
}

} // namespace vantroque::Checker
