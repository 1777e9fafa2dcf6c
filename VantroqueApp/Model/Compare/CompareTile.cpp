#include "VantroqueApp/Model/Compare/CompareTile.h"

#include <utility>

namespace vantroque {

namespace {

/// Of a still: tiles are smaller than the picture of a player.
constexpr int stillWidth = 640;

} // namespace

CompareTile::CompareTile(const PlayedFile& file, QString name,
                         const PlaybackEngineMaker& makeEngine)
    : m_file(file),
      m_name(std::move(name)),
      m_clip(CompareTiming::Clip::of(file.video)),
      m_pictures(file, makeEngine, stillWidth)
{
    connect(&m_pictures, &FilmPictures::shownChanged, this, &CompareTile::pictureChanged);
    connect(&m_pictures, &FilmPictures::readyChanged, this, &CompareTile::takeEnd);
    connect(&m_pictures, &FilmPictures::readyChanged, this, &CompareTile::modeChanged);
    connect(&m_pictures, &FilmPictures::sourceChanged, this, [this] {
        m_pictures.source().aim(m_aimed, 0);
        Q_EMIT modeChanged();
    });
}

void CompareTile::aim(std::int64_t frame, double rate)
{
    m_aimed = frame;
    m_pictures.source().aim(frame, rate);
}

/// Never later than the file says: an engine may count a frame that the container leaves out.
void CompareTile::takeEnd()
{
    const auto last = m_pictures.source().lastFrame();
    if (!last)
        return;
    const auto found = m_clip.endingWith(*last);
    if (found.duration >= m_clip.duration)
        return;
    m_clip = found;
    Q_EMIT clipChanged();
}

void CompareTile::setSignOff(std::optional<ReviewSignOff> signOff)
{
    if (std::exchange(m_signOff, std::move(signOff)) != m_signOff)
        Q_EMIT signOffChanged();
}

} // namespace vantroque
