#include "VantroqueApp/Model/Playback/ScopeFeed.h"

#include "Picture/ScopeRenderer.h"

namespace vantroque {

namespace {

/// In the background.
ScopeFeed::ScopeImages images(const std::optional<ScopeFrame>& frame, const ScopeOptions& options)
{
    ScopeFeed::ScopeImages images;
    if (!frame)
        return images;
    if (options.waveform)
        images.waveform = ScopeRenderer::waveform(*frame, 256, 128);
    if (options.parade)
        images.parade = ScopeRenderer::parade(*frame, 384, 128);
    if (options.vectorscope)
        images.vectorscope = ScopeRenderer::vectorscope(*frame, 128);
    if (options.outOfRange)
        images.zebra = ScopeRenderer::outOfRangeImage(*frame);
    return images;
}

} // namespace

ScopeFeed::ScopeFeed(UserDefaults& defaults, PlayerClock& clock, QSize sampleSize,
                     ColorMatrix matrix)
    : m_defaults(defaults),
      m_clock(clock),
      m_sampleSize(sampleSize),
      m_matrix(matrix),
      m_options(ScopeOptions::load(defaults, m_place))
{
}

void ScopeFeed::setScopeOptions(const ScopeOptions& options)
{
    if (m_options == options)
        return;
    m_options = options;
    m_options.save(m_defaults, m_place);
    Q_EMIT optionsChanged();
    startOrStop();
}

void ScopeFeed::setPlace(ScopePlace place)
{
    if (m_place == place)
        return;
    m_place = place;
    m_options = ScopeOptions::load(m_defaults, place);
    Q_EMIT optionsChanged();
    startOrStop();
}

void ScopeFeed::use(const FrameSource* frames)
{
    m_frames = frames;
    startOrStop();
}

void ScopeFeed::startOrStop()
{
    m_rendered.reset();
    if (m_frames == nullptr || m_options == ScopeOptions()) {
        m_polls.reset();
        m_renders.forget();
        m_images = {};
        Q_EMIT imagesChanged();
        return;
    }
    if (!m_polls)
        m_polls = m_clock.every(1.0 / 30, [this] { poll(); });
    poll();
}

void ScopeFeed::poll()
{
    if (!m_renders.isIdle() || !m_frames->shown() || m_rendered == m_frames->shown()->frame)
        return;
    auto sampling = m_frames->sampling(m_sampleSize);
    if (!sampling)
        return;
    m_rendered = m_frames->shown()->frame;
    m_renders.run([sampling = std::move(sampling),
                   options = m_options] { return images(sampling(), options); },
                  [this](const ScopeImages& images) {
                      m_images = images;
                      Q_EMIT imagesChanged();
                  });
}

} // namespace vantroque
