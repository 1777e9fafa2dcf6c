#include "VantroqueApp/Model/Playback/FilmPictures.h"

#include "VantroqueApp/Model/Playback/EngineFrames.h"

#include <QTimer>

#include <utility>

namespace vantroque {

namespace {

/// Null where the file cannot even be tried.
std::unique_ptr<FrameSource> engineFrames(const PlayedFile& file, const PlaybackEngineMaker& make)
{
    if (!make)
        return nullptr;
    auto engine = make({.url = file.url,
                        .stream = file.stream,
                        .rate = file.workingRate(),
                        .frames = file.video.frameCount.value_or(0),
                        .matrix = file.video.matrix.value_or(ColorMatrix::bt709),
                        .fullRange = file.video.fullRange.value_or(false)});
    return engine ? std::make_unique<EngineFrames>(file, std::move(engine)) : nullptr;
}

} // namespace

FilmPictures::FilmPictures(const PlayedFile& file, const PlaybackEngineMaker& makeEngine,
                           int stillWidth)
    : m_file(file), m_stillWidth(stillWidth)
{
    if (auto frames = engineFrames(m_file, makeEngine))
        use(std::move(frames));
    else
        fallBackToStills();
}

FilmPictures::~FilmPictures() = default;

void FilmPictures::use(std::unique_ptr<FrameSource> source)
{
    m_source = std::move(source);
    connect(m_source.get(), &FrameSource::shownChanged, this, &FilmPictures::shownChanged);
    connect(m_source.get(), &FrameSource::readyChanged, this, &FilmPictures::readyChanged);
    connect(m_source.get(), &FrameSource::failed, this, &FilmPictures::fallBackToStills);
}

/// There is no way back.
void FilmPictures::fallBackToStills()
{
    if (std::exchange(m_areStills, true))
        return;
    if (m_source) {
        m_lastOfFailed = m_source->shown();
        m_failed = std::move(m_source);
        // It is the one that calls, and holds much memory.
        QTimer::singleShot(0, this, [this] { m_failed.reset(); });
    }
    use(std::make_unique<StillStepper>(m_file, m_stillWidth));
    Q_EMIT sourceChanged();
}

const std::optional<ShownFrame>& FilmPictures::shown() const
{
    return m_source->shown() ? m_source->shown() : m_lastOfFailed;
}

} // namespace vantroque
