#include "Records/FileReview.h"

#include "Base/Text.h"

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Right for any two stored numbers, whose difference may not fit their type.
std::uint64_t distance(std::int64_t a, std::int64_t b)
{
    const auto [low, high] = std::minmax(a, b);
    return static_cast<std::uint64_t>(high) - static_cast<std::uint64_t>(low);
}

} // namespace

QString AnnotationStroke::displayName(Ink ink)
{
    switch (ink) {
    case Ink::red: return u"Red"_s;
    case Ink::amber: return u"Amber"_s;
    case Ink::white: break;
    }
    return u"White"_s;
}

QString ReviewSignOff::label(Decision decision)
{
    return decision == Decision::approved ? u"Approved"_s : u"Needs revisions"_s;
}

QString ReviewSignOff::actionLabel(Decision decision)
{
    return decision == Decision::approved ? u"Approve"_s : u"Needs revisions"_s;
}

bool ReviewSignOff::overrodeFailure() const
{
    return decision == Decision::approved && qcVerdictWhenSigned == Verdict::fail;
}

std::optional<QString> ReviewSignOff::overrideNote() const
{
    if (!overrodeFailure())
        return std::nullopt;
    const auto count = std::ssize(failingWhenSigned);
    if (count == 0)
        return u"over a failing check"_s;
    return u"over %1 failing platform%2"_s.arg(count).arg(Text::plural(count));
}

QString ReviewSignOff::detailLine(QLocale::FormatType dateStyle) const
{
    const QLocale locale;
    const QDateTime local = decidedAt.toLocalTime();
    QString line = locale.toString(local.date(), dateStyle) + u", "_s
                   + locale.toString(local.time(), QLocale::ShortFormat);
    if (overrodeFailure() && !failingWhenSigned.empty())
        line += u", signed when it failed "_s + Text::joined(failingWhenSigned, u", "_s);
    return line;
}

std::vector<ReviewComment> FileReview::sortedComments() const
{
    auto sorted = comments;
    std::ranges::stable_sort(sorted, {}, &ReviewComment::frame);
    return sorted;
}

std::vector<ReviewComment> FileReview::commentsAt(std::int64_t frame, std::int64_t tolerance) const
{
    std::vector<ReviewComment> found;
    if (tolerance >= 0)
        std::ranges::copy_if(
            comments, std::back_inserter(found), [&](const ReviewComment& comment) {
                return distance(comment.frame, frame) <= static_cast<std::uint64_t>(tolerance);
            });
    return found;
}

std::vector<AnnotationStroke> FileReview::strokesAt(std::int64_t frame,
                                                    std::int64_t tolerance) const
{
    std::vector<AnnotationStroke> found;
    for (const ReviewComment& comment : commentsAt(frame, tolerance))
        found.insert(found.end(), comment.strokes.begin(), comment.strokes.end());
    return found;
}

} // namespace vantroque
