#include "Captions/CaptionReport.h"
#include "Check/ReportWords.h"
#include "Print/SectionBlocks.h"

#include <QPainter>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace vantroque::SectionBlocks {

using namespace Qt::StringLiterals;

namespace {

/// The sign over the whole report. Scored against no platform, a file has only what the section of
/// picture and sound says.
Verdict sign(const FileReport& report)
{
    if (report.profiles.empty())
        return report.sectionsWarn() ? Verdict::warn : Verdict::info;
    return report.summaryVerdict();
}

std::vector<Block> summary(const FileReport& report)
{
    constexpr std::size_t maxNamed = 4;
    constexpr double wordsLeft = 82;
    constexpr double wordsWidth = 482;
    Composition composition;
    composition.add(
        {Pages::left, 4, 30, 34}, [verdict = sign(report)](QPainter& painter, const QRectF& place) {
            const Paragraph mark(Ink::mark(verdict), TextStyle::semibold(26).in(Ink::of(verdict)),
                                 place.width());
            mark.draw(painter, place.topLeft());
        });
    composition.add(Paragraph(report.summaryHeadline(), TextStyle::semibold(15), wordsWidth),
                    {wordsLeft, 8});
    composition.add(
        Paragraph(report.summarySubhead(maxNamed), TextStyle::plain(10).in(Ink::quiet), wordsWidth),
        {wordsLeft, 28});
    const double height = std::ceil(composition.bottom()) + 8;
    return std::move(composition).blocks(height);
}

std::vector<Block> platformLine(const ProfileReport& report)
{
    const Verdict verdict = report.displayVerdict();
    Composition composition;
    composition.add(Paragraph(Ink::mark(verdict), TextStyle::semibold(9).in(Ink::of(verdict)), 16),
                    {Pages::left, 0});
    composition.add(Paragraph(report.profileName, TextStyle::semibold(9), 210), {64, 0});
    composition.add(Paragraph(report.statusSummary(), TextStyle::plain(8.5), 280), {284, 0});
    const double height = std::max(12.0, std::ceil(composition.bottom()));
    return std::move(composition).blocks(height);
}

/// Only what a browser opens: a profile may name any text as its source.
QString webLink(const QString& source)
{
    const QUrl url(source, QUrl::StrictMode);
    const bool isWeb = url.scheme() == u"https"_s || url.scheme() == u"http"_s;
    return isWeb && !url.host().isEmpty() ? QString::fromLatin1(url.toEncoded()) : QString();
}

ReportWords::Word word(const ProfileReport& report)
{
    return report.profileID == CaptionReport::profileID ? ReportWords::ofSection(report)
                                                        : ReportWords::of(report);
}

std::vector<Block> profileHeading(const ProfileReport& report)
{
    TextStyle style = TextStyle::semibold(10.5);
    style.link = webLink(report.sourceURL);
    Composition composition;
    const Paragraph name(
        report.profileName + (report.inferred ? u"  (spec inferred)"_s : QString()), style, 446);
    composition.add(name, {Pages::left, 3});
    if (!style.link.isEmpty()) {
        const double bottom = 3 + name.height();
        composition.add(
            {Pages::left, bottom - 2, name.width(), 0.5},
            [](QPainter& painter, const QRectF& place) { painter.fillRect(place, Ink::hairline); });
    }
    const auto [text, verdict] = word(report);
    const Paragraph label(text, TextStyle::mono(9).in(Ink::of(verdict)), 70);
    composition.add(label, {Pages::right - label.width(), 4});
    const double height = std::max(20.0, std::ceil(composition.bottom()));
    return std::move(composition).blocks(height, true);
}

std::vector<Block> check(const CheckResult& row, bool advisory)
{
    const Verdict verdict = ProfileReport::displayVerdict(row.verdict, advisory);
    constexpr double wordsLeft = 68;
    constexpr double wordsWidth = 496;
    Composition composition;
    composition.add(Paragraph(Ink::mark(verdict), TextStyle::semibold(9).in(Ink::of(verdict)), 16),
                    {Pages::left, 0});
    composition.add(Paragraph(row.title, TextStyle::plain(9), 150), {wordsLeft, 0});
    composition.add(Paragraph(row.measured, TextStyle::mono(8.5), 338), {226, 0});
    double bottom = std::max(12.0, std::ceil(composition.bottom()));
    if (row.verdict == Verdict::warn || row.verdict == Verdict::fail) {
        double y = composition.add(Paragraph(u"Expected: %1"_s.arg(row.expected),
                                             TextStyle::plain(8).in(Ink::quiet), wordsWidth),
                                   {wordsLeft, bottom + 3});
        if (row.fix)
            composition.add(Paragraph(*row.fix, TextStyle::semibold(8), wordsWidth),
                            {wordsLeft, y});
        bottom = bottom + 3 + std::ceil(composition.bottom() - bottom - 3);
    }
    return std::move(composition).blocks(bottom + 6);
}

void append(std::vector<Block>& blocks, std::vector<Block> more)
{
    std::ranges::move(more, std::back_inserter(blocks));
}

} // namespace

std::vector<Block> verdict(const FileSection& section)
{
    std::vector<Block> blocks = summary(*section.report);
    for (const ProfileReport& report : rows(section))
        append(blocks, platformLine(report));
    return blocks;
}

std::vector<Block> results(const FileSection& section)
{
    std::vector<Block> blocks;
    for (const ProfileReport& report : rows(section)) {
        append(blocks, profileHeading(report));
        for (const CheckResult& row : report.checks)
            append(blocks, check(row, report.isAdvisory()));
        blocks.push_back(gap(10));
    }
    return blocks;
}

} // namespace vantroque::SectionBlocks
