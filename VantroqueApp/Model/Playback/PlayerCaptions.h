#pragma once

#include "Check/CaptionCheck.h"
#include "Records/EmbeddedCaptionSource.h"
#include "Records/Report.h"
#include "VantroqueApp/Model/Background/Tasks.h"
#include "VantroqueApp/Model/Playback/PlayedFile.h"

#include <QObject>

#include <memory>
#include <stop_token>
#include <variant>

namespace vantroque {

/// The captions of one player: of a file beside the media, or the ones inside it. They are read
/// and spelled in the background. Main thread.
class PlayerCaptions : public QObject {
    Q_OBJECT

public:
    using CaptionSource = std::variant<FileUrl, EmbeddedCaptionSource>;

    /// `speller` must outlive it.
    PlayerCaptions(const PlayedFile& file, SpellChecker& speller);
    ~PlayerCaptions() override;

    /// Null while there are none.
    const CaptionTrack* captions() const;
    const CaptionHealth* captionHealth() const;
    const std::optional<CaptionSource>& captionSource() const { return m_source; }
    /// The file beside the media that the review remembers, whether or not it is still there.
    const std::optional<FileUrl>& captionsURL() const { return m_url; }
    bool captionsShown() const { return m_shown; }
    void setCaptionsShown(bool shown);
    bool captionsMissing() const { return m_missing; }       ///< The remembered file is gone.
    bool captionsExtracting() const { return m_extracting; } ///< An embedded track is being read.
    std::optional<CaptionSpelling> captionSpelling() const;
    const std::vector<EmbeddedCaptionSource>& embeddedSources() const { return m_embedded; }
    bool hasAnyCaptionSource() const;

    std::vector<CaptionCue> activeCues(double seconds) const;
    /// What is said of them in the report; nothing while there are none.
    std::optional<ProfileReport> captionSection() const;
    /// Words to look at, as places on the timeline.
    std::vector<SignalEvent> captionEvents() const;

    void loadCaptions(const FileUrl& from);
    /// Those that the review remembers, or else the first that came with the media.
    void restoreCaptions(const std::optional<FileUrl>& remembered);
    void removeCaptions();
    void showEmbedded(const EmbeddedCaptionSource& source);
    /// Nothing is being read or spelled.
    bool isIdle() const { return m_sidecars.isIdle() && m_extractions.isIdle(); }

Q_SIGNALS:
    void changed();
    void chosen(const std::optional<vantroque::FileUrl>& sidecar); ///< For the review.
    void message(const QString& text);                             ///< For the operator.

private:
    struct Checked;
    struct Read;

    static std::shared_ptr<const Checked> checked(const LoadedCaptions& captions,
                                                  const PlayedFile& file, SpellChecker& speller);

    void readSidecar(const FileUrl& url, int wish, std::function<void(const Read&)> then);
    void takeSidecar(const FileUrl& url, const Read& read);
    void showFirstEmbeddedIfAny();
    void extract(const EmbeddedCaptionSource& source);
    void stopExtracting();

    const PlayedFile m_file;
    const std::vector<EmbeddedCaptionSource> m_embedded;
    SpellChecker& m_speller;
    std::shared_ptr<const Checked> m_checked; ///< Null while there are none.
    std::optional<CaptionSource> m_source;
    std::optional<FileUrl> m_url;
    bool m_shown = true;
    bool m_missing = false;
    bool m_extracting = false;
    int m_wishes = 0;     ///< Of the operator.
    int m_granted = 0;    ///< The newest that came true: a file that is read for an earlier one is
                          ///< dropped.
    int m_extraction = 0; ///< Counts them likewise.
    std::stop_source m_stopSidecars;
    std::stop_source m_stopExtraction;
    Tasks m_sidecars; ///< These end first.
    Tasks m_extractions;
};

} // namespace vantroque
