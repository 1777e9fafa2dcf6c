#include "Print/ReviewPDF.h"

#include "Base/Cancellation.h"
#include "Base/Files.h"
#include "Base/ScratchFolder.h"
#include "Base/Text.h"
#include "Check/CaptionCheck.h"
#include "Print/PdfFile.h"
#include "Print/SectionBlocks.h"

#include <QFile>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>

namespace vantroque::ReviewPDF {

using namespace Qt::StringLiterals;

namespace {

bool tellsSomething(const FileSection& section)
{
    return section.report || !section.comments().empty();
}

/// What the reader's window calls the document.
QString title(const std::vector<const FileSection*>& sections)
{
    if (sections.size() == 1)
        return u"%1 report"_s.arg(Text::printable(sections.front()->name()));
    return u"Vantroque reports (%1 files)"_s.arg(sections.size());
}

/// The pages of a document in the making.
class Document {
public:
    explicit Document(QIODevice& device, const QString& title) : m_writer(&device)
    {
        constexpr int pointsPerInch = 72;
        m_writer.setResolution(pointsPerInch);
        m_writer.setPageLayout(
            {QPageSize(QPageSize::Letter), QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)});
        m_writer.setTitle(title);
        m_writer.setCreator(u"Vantroque"_s);
    }

    bool begin()
    {
        if (!m_painter.begin(&m_writer))
            return false;
        m_painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        return true;
    }

    /// The number of pages so far.
    std::size_t pageCount() const { return m_pages; }

    /// On a new page, unless the work is called off.
    void add(const FileSection& section, const Options& options)
    {
        const auto blocks = SectionBlocks::all(section, options);
        const auto places = Pages::places(blocks);
        int page = 1;
        beginPage();
        for (std::size_t i = 0; i < blocks.size() && !Cancellation::isRequested(); ++i) {
            if (places[i].page != page) {
                drawFooter(page);
                page = places[i].page;
                beginPage();
                drawContinuation(section);
            }
            blocks[i].draw(m_painter, places[i].top);
        }
        drawFooter(page);
    }

    void end() { m_painter.end(); }

private:
    void beginPage()
    {
        if (m_pages++ > 0)
            m_writer.newPage();
    }

    void drawFooter(int page)
    {
        const Paragraph words(u"Vantroque report  ·  page %1"_s.arg(page),
                              TextStyle::plain(7.5).in(Ink::quiet), Pages::textWidth,
                              Pages::footerHeight);
        words.draw(m_painter, {Pages::left, Pages::footerTop});
    }

    void drawContinuation(const FileSection& section)
    {
        const Paragraph words = Paragraph::elided(section.name() + u" (continued)"_s,
                                                  TextStyle::semibold(9), Pages::textWidth);
        words.draw(m_painter, {Pages::left, Pages::top - 4});
        SectionBlocks::drawHairline(m_painter, Pages::top + 10);
    }

    QPdfWriter m_writer;
    QPainter m_painter;
    std::size_t m_pages = 0;
};

/// Draws all sections into a file.
Result<std::vector<PdfFile::Bookmark>> draw(const std::vector<const FileSection*>& sections,
                                            const Options& options,
                                            const std::filesystem::path& path)
{
    QFile file(QString::fromStdString(path.native()));
    if (!file.open(QIODevice::WriteOnly))
        return failure(description(PDFError::contextFailed));
    Document document(file, title(sections));
    if (!document.begin())
        return failure(description(PDFError::contextFailed));
    std::vector<PdfFile::Bookmark> bookmarks;
    for (const FileSection* section : sections) {
        bookmarks.push_back({Text::printable(section->name()), document.pageCount()});
        document.add(*section, options);
        options.progress(bookmarks.size());
        if (Cancellation::isRequested())
            return failure(u"cancelled"_s);
        // Qt's writer goes on when there is no more room.
        if (file.error() != QFileDevice::NoError)
            break;
    }
    document.end();
    if (!file.flush() || file.error() != QFileDevice::NoError)
        return failure(file.fileName() + u": "_s + file.errorString());
    return bookmarks;
}

} // namespace

void FileSection::addCaptions(const std::optional<LoadedCaptions>& given, SpellChecker& checker)
{
    captions = given ? given : LoadedCaptions::forReview(review, mediaURL, video);
    if (!captions)
        return;
    const VideoSummary picture = video.value_or(VideoSummary());
    const auto check =
        CaptionCheck::of(*captions, mediaURL, picture.durationSeconds, picture.frameRate, checker);
    captions->track = check.track;
    captionReport = check.section;
}

QString FileSection::name() const
{
    return report ? report->fileName : mediaURL.fileName();
}

std::vector<ReviewComment> FileSection::comments() const
{
    return review ? review->sortedComments() : std::vector<ReviewComment>();
}

QString description(PDFError error)
{
    return error == PDFError::contextFailed ? u"Could not create the PDF context."_s
                                            : u"There is nothing to export."_s;
}

std::vector<FrameWish> wishes(const std::vector<FileSection>& sections)
{
    std::vector<FrameWish> all;
    for (const FileSection& section : sections) {
        if (!tellsSomething(section))
            continue;
        auto identifying = FrameWish::identifying(
            section.mediaURL, section.video ? section.video->durationSeconds : 0);
        if (!identifying.seconds.empty())
            all.push_back(std::move(identifying));
        for (const ReviewComment& comment : section.comments())
            all.push_back(FrameWish::at(section.mediaURL, comment.seconds()));
    }
    return all;
}

Result<void> write(const std::vector<FileSection>& sections, const Options& options,
                   const Taker& take)
{
    std::vector<const FileSection*> told;
    for (const FileSection& section : sections)
        if (tellsSomething(section))
            told.push_back(&section);
    if (told.empty())
        return failure(description(PDFError::nothingToExport));
    const auto scratch = TRY(ScratchFolder::make());
    const auto drawn = scratch.path() / "drawn.pdf";
    const auto finished = scratch.path() / "finished.pdf";
    TRY(PdfFile::finish(drawn, finished, TRY(draw(told, options, drawn))));
    // Pictures may fill a gigabyte, which need not lie in memory.
    QFile file(QString::fromStdString(finished.native()));
    if (!file.open(QIODevice::ReadOnly))
        return failure(file.fileName() + u": "_s + file.errorString());
    const uchar* bytes = file.map(0, file.size());
    if (bytes == nullptr)
        return failure(file.fileName() + u": "_s + file.errorString());
    return take(QByteArray::fromRawData(reinterpret_cast<const char*>(bytes), file.size()));
}

Result<void> write(const std::vector<FileSection>& sections, const FileUrl& url,
                   const Options& options)
{
    return write(sections, options, [&url](const QByteArray& document) {
        return Files::writeAtomically(url.path(), document);
    });
}

} // namespace vantroque::ReviewPDF
