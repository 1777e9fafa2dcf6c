#include "Print/Printed.h"

#include "Support/Program.h"

#include <stdexcept>

namespace vantroque {

using namespace Qt::StringLiterals;

Printed::Printed(const std::vector<ReviewPDF::FileSection>& sections,
                 const ReviewPDF::Options& options)
{
    const auto written = ReviewPDF::write(sections, FileUrl::fromPath(path()), options);
    if (!written)
        throw std::runtime_error(written.error().description.toStdString());
}

QByteArray Printed::told(std::vector<std::string> command) const
{
    command.push_back(path().native());
    if (command.front() == "pdftotext")
        command.emplace_back("-");
    const ProgramRun run = runProgram(command);
    if (run.status != 0)
        throw std::runtime_error(run.err.toStdString());
    return run.out;
}

QString Printed::text(int page) const
{
    std::vector<std::string> command{"pdftotext", "-raw"};
    if (page > 0) {
        const std::string number = QString::number(page).toStdString();
        command.insert(command.end(), {"-f", number, "-l", number});
    }
    return QString::fromUtf8(told(command)).simplified();
}

int Printed::pageCount() const
{
    return QString::fromUtf8(told({"qpdf", "--show-npages"})).trimmed().toInt();
}

FileReport spotReport()
{
    ProfileReport platform;
    platform.profileID = u"test-tv"_s;
    platform.profileName = u"Test Television"_s;
    platform.profileShortName = u"Test TV"_s;
    platform.inferred = true;
    platform.sourceURL = u"https://example.com/delivery?part=1"_s;
    platform.verifiedDate = u"2026-01-01"_s;
    platform.checks = {
        {u"container"_s, u"Container"_s, Verdict::pass, u"mov"_s, u"mov"_s, {}},
        {u"resolution"_s, u"Resolution"_s, Verdict::fail, u"640x360"_s, u"1920x1080"_s,
         u"Re-export at 1920x1080."_s},
        {u"fast-start"_s,
         u"Fast start"_s,
         Verdict::warn,
         u"moov after mdat"_s,
         u"moov first"_s,
         {}},
        {u"note"_s, u"Bit rate"_s, Verdict::info, u"8000 kb/s"_s, u"unused expectation"_s, {}},
    };
    ProfileReport section;
    section.profileID = u"signal"_s;
    section.profileName = section.profileShortName = u"Picture and sound"_s;
    section.checks = {{u"levels"_s, u"Levels"_s, Verdict::pass, u"legal"_s, u"legal"_s, {}}};
    FileReport report;
    report.fileName = u"Autumn Sale 1920x1080.mov"_s;
    report.filePath = u"/films/Autumn Sale 1920x1080.mov"_s;
    report.summaryLine = u"75.0 MB · 30.0s · 640x360 · H264"_s;
    report.measurements = Measurements{.integratedLKFS = -23.1, .truePeakDb = -3};
    report.video =
        VideoSummary{.width = 640, .height = 360, .frameRate = 25, .durationSeconds = 30};
    report.profiles = {platform};
    report.sections = {section};
    return report;
}

ReviewPDF::FileSection spot()
{
    ReviewPDF::FileSection section;
    section.report = spotReport();
    section.video = section.report->video;
    section.mediaURL = FileUrl::fromPath("/films/Autumn Sale 1920x1080.mov");
    return section;
}

ReviewComment note(std::int64_t frame, const QString& text)
{
    ReviewComment comment;
    comment.id = QUuid::createUuid();
    comment.frame = frame;
    comment.frameRate = 25;
    comment.text = text;
    return comment;
}

FileReview reviewWith(std::vector<ReviewComment> comments)
{
    FileReview review;
    review.fingerprint = u"0"_s;
    review.videoWidth = 640;
    review.videoHeight = 360;
    review.fileSizeBytes = 75'000'000;
    review.comments = std::move(comments);
    return review;
}

} // namespace vantroque
