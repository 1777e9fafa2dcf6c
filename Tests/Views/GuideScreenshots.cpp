#include "Views/GuideScreenshots.h"

#include "Profiles/ProfileStore.h"
#include "VantroqueApp/Views/Notes/CommentsPanel.h"
#include "VantroqueApp/Views/Profiles/ProfilesPanel.h"
#include "VantroqueApp/Views/Report/MeasuredPanel.h"
#include "VantroqueApp/Views/Report/ProblemsPanel.h"
#include "VantroqueApp/Views/Window/DetailPane.h"
#include "VantroquePlatform/Playback/DecoderEngine.h"
#include "VantroquePlatform/Recognition/TesseractRecognizer.h"
#include "Views/GuideFilms.h"

namespace vantroque::GuideScreenshots {

namespace {

constexpr QSize windowSize(1160, 760);

std::unique_ptr<PlaybackEngine> engine(const PlaybackSource& source)
{
    return std::make_unique<DecoderEngine>(source);
}

void waitFor(const char* what, const std::function<bool()>& holds)
{
    if (!QTest::qWaitFor(holds, 300'000))
        std::cerr << what << '\n';
}

PlayerController& player(Studio& studio)
{
    waitFor("no player", [&] {
        PlayerController* open = studio.model().player();
        return open != nullptr && open->shown() && open->notebook().isOpen()
               && studio.window().findChild<CommentsPanel*>() != nullptr;
    });
    return *studio.model().player();
}

void seek(PlayerController& player, std::int64_t frame)
{
    player.seek(frame);
    waitFor("a frame is not shown", [&] { return player.shown()->frame == frame; });
}

ToolButton& button(Studio& studio, const QString& text)
{
    for (auto* button : studio.window().findChildren<ToolButton*>())
        if (button->text() == text)
            return *button;
    qFatal("no button %s", qUtf8Printable(text));
}

/// A loop around the line of text at the edge.
AnnotationStroke loop()
{
    AnnotationStroke stroke{
        .id = QUuid::createUuid(), .tool = AnnotationStroke::Tool::pen, .points = {}, .ink = {}};
    constexpr int points = 40;
    for (int i = 0; i <= points; ++i) {
        const double turn = 6.5 * i / points;
        stroke.points.push_back(
            {.x = 0.145 + 0.135 * std::cos(turn) + 0.0003 * i, .y = 0.955 + 0.04 * std::sin(turn)});
    }
    return stroke;
}

void writeNote(PlayerController& player, std::int64_t frame, const QString& text)
{
    seek(player, frame);
    player.notebook().setDraftText(text);
    player.saveComment(u"Mara Lind"_s);
}

/// A folder for the films whose name may stand in a picture.
class Shelf {
public:
    Shelf() { std::filesystem::create_directories(m_folder); }
    Shelf(const Shelf&) = delete;
    Shelf& operator=(const Shelf&) = delete;
    ~Shelf()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    FileUrl put(const FileUrl& film) const
    {
        const auto place = m_folder / film.path().filename();
        std::filesystem::copy_file(film.path(), place,
                                   std::filesystem::copy_options::overwrite_existing);
        return FileUrl::fromPath(place);
    }

private:
    const std::filesystem::path m_folder = std::filesystem::temp_directory_path() / "Northlight";
};

std::set<QString> platforms()
{
    return {u"amazon-streaming-tv"_s, u"netflix-ads"_s, u"peacock-nbcu"_s, u"tiktok-in-feed"_s,
            u"youtube-video-ad"_s};
}

/// From the empty window to the verdict.
void shootFirstVerdict(Studio& studio, const Shelf& shelf, const std::vector<Profile>& profiles,
                       RecognizerPool& recognizers)
{
    studio.open({}, profiles, windowSize);
    studio.shoot(u"first-window"_s);
    studio.close();
    studio.begin({}, engine, profiles, recognizers, windowSize);
    studio.model().profiles().setEnabledProfileIDs(platforms());
    studio.model().files().add({shelf.put(GuideFilms::faulty())});
    waitFor("the film is not measured", [&] {
        const auto* progress =
            studio.model().queue().progress(studio.model().files().analyses().front().id);
        return progress != nullptr && progress->mediaSeconds > 4;
    });
    studio.shootMoving(u"first-measuring"_s);
    studio.finishAnalyses();
    seek(player(studio), 60);
    studio.shoot(u"first-report"_s);
}

/// Presses the first check of that title.
void openCheck(ReportSections& sections, const QString& title)
{
    for (int row = 0; row < sections.model()->rowCount(); ++row)
        if (const QModelIndex index = sections.model()->index(row, 0);
            index.data().toString() == title)
            return Q_EMIT sections.clicked(index);
    std::cerr << "no check " << title.toStdString() << '\n';
}

void shootReport(Studio& studio)
{
    studio.window().resize(1440, 1100);
    auto& view = *studio.window().findChild<ReportView*>();
    auto& problems = *studio.window().findChild<ProblemsPanel*>();
    problems.step(true);
    studio.shootPart(u"report-problem"_s, problems);
    const auto scrollTo = [&](const QWidget& part) {
        studio.settle();
        auto& bar = *view.verticalScrollBar();
        bar.setValue(bar.value() + part.mapTo(&view, QPoint()).y() - 120);
    };
    auto& measured = *studio.window().findChild<MeasuredPanel*>();
    scrollTo(measured);
    studio.shootPart(u"report-figures"_s, measured);
    auto& sections = *studio.window().findChild<ReportSections*>();
    openCheck(sections, u"Loudness"_s);
    scrollTo(sections);
    studio.settle();
    constexpr int heading = 44;
    constexpr int height = 560;
    const QPoint corner = sections.mapTo(&studio.window(), QPoint());
    studio.shootPart(u"report-platforms"_s,
                     QRect(corner - QPoint(12, heading), QSize(sections.width() + 24, height)));
    studio.window().resize(windowSize);
    button(studio, u"Profiles"_s).click();
    studio.shootPart(u"profiles"_s, *studio.window().findChild<ProfilesPanel*>(), 0);
    studio.window().findChild<ProfilesPanel*>()->close();
    view.verticalScrollBar()->setValue(0);
}

/// With a profile of a client's own, which refuses the text at the edge.
void openReview(Studio& studio, const Shelf& shelf, std::vector<Profile> profiles,
                RecognizerPool& recognizers)
{
    auto enabled = platforms();
    const auto examples = ProfileStore::loadFrom(VANTROQUE_EXAMPLE_PROFILES).value();
    for (const Profile& own : examples) {
        enabled.insert(own.id);
        profiles.push_back(own);
    }
    studio.begin({}, engine, profiles, recognizers, windowSize);
    studio.model().profiles().setEnabledProfileIDs(enabled);
    studio.model().files().add({shelf.put(GuideFilms::faulty())});
    studio.finishAnalyses();
}

void shootReview(Studio& studio)
{
    PlayerController& film = player(studio);
    studio.window().findChild<DetailPane*>()->setReview(true);
    writeNote(film, 60, u"Title sits well. Hold it half a second longer."_s);
    film.notebook().addDraftStroke(loop());
    writeNote(film, 230, u"Too close to the edge. Move it up to the logo."_s);
    film.setSignOff(ReviewSignOff::Decision::needsRevisions);
    seek(film, 0);
    film.goToProblem(true);
    studio.shoot(u"review-desk"_s);
    studio.window().findChild<DetailPane*>()->setReview(false);
    film.guides().setGuideOptions({});
    film.notebook().setTool(AnnotationTool::arrow);
    seek(film, 152);
    film.notebook().setComposing(true);
    film.notebook().setDraftText(u"Eight frames of black. Is this cut meant?"_s);
    studio.shootPart(u"review-note"_s, *studio.window().findChild<CommentsPanel*>(), 0);
    film.saveComment(u"Mara Lind"_s);
    film.notebook().setTool(AnnotationTool::pointer);
}

void shootExport(Studio& studio)
{
    ToolButton& opener = button(studio, u"Export Report"_s);
    const QPixmap window = studio.withMenu(*opener.menu(), opener);
    const int width = opener.menu()->width() + 60;
    studio.save(window.copy(window.width() - width, 0, width,
                            opener.geometry().bottom() + opener.menu()->height() + 24),
                u"export-menu"_s);
    studio.desktop().answer = FileUrl::fromPath((studio.folder() + u"/guide.pdf"_s).toStdString());
    studio.desktop().letsReplace = true;
    studio.model().exports().exportReviewPDF(Exports::Scope::selectedFile);
    waitFor("the PDF is not written", [&] { return studio.model().exports().isIdle(); });
}

void selectFirst(Studio& studio, std::size_t count)
{
    FileSelection selection;
    for (std::size_t i = 0; i < count; ++i) {
        selection.lead = studio.model().files().analyses().at(i).id;
        selection.ids.insert(*selection.lead);
    }
    studio.model().files().select(selection);
}

void shootSeveral(Studio& studio, const Shelf& shelf)
{
    studio.model().files().add({shelf.put(GuideFilms::mended()), shelf.put(GuideFilms::vertical()),
                                shelf.put(GuideFilms::square()), shelf.put(GuideFilms::cutOff())});
    studio.finishAnalyses();
    studio.signOff(1, ReviewSignOff::Decision::approved);
    selectFirst(studio, 4);
    studio.shoot(u"files-several"_s);
}

void shootCompare(Studio& studio)
{
    selectFirst(studio, 3);
    studio.model().comparison().setComparing(true);
    CompareController& compare = *studio.model().openComparison().controller();
    compare.setSyncMode(SyncAlignment::fromEnd);
    compare.seek(10.5);
    studio.shoot(u"compare-tiles"_s);
    compare.setSyncMode(SyncAlignment::fromStart);
    compare.seek(9);
    ComparePair& pair = studio.window().findChild<CompareView*>()->pair();
    pair.choose(*compare.tiles()[0]);
    pair.choose(*compare.tiles()[1]);
    pair.setMode(CompareMode::difference);
    studio.shoot(u"compare-difference"_s);
}

} // namespace

void shoot(Studio& studio)
{
    studio.use(AppearanceMode::light);
    RecognizerPool recognizers([] { return TesseractRecognizer::make({"eng"}); });
    const auto profiles = ProfileStore::loadFrom(VANTROQUE_SHIPPED_PROFILES).value();
    const Shelf shelf;
    shootFirstVerdict(studio, shelf, profiles, recognizers);
    shootReport(studio);
    studio.close();
    openReview(studio, shelf, profiles, recognizers);
    shootReview(studio);
    shootExport(studio);
    shootSeveral(studio, shelf);
    shootCompare(studio);
    studio.close();
}

} // namespace vantroque::GuideScreenshots
