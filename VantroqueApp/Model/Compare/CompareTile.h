#pragma once

#include "Base/FileUrl.h"
#include "Playback/CompareTiming.h"
#include "Records/FileReview.h"
#include "VantroqueApp/Model/Playback/FilmPictures.h"

#include <QObject>
#include <QUuid>

#include <memory>

namespace vantroque {

/// One of the versions that are compared: its pictures, and its place in the shared time. Main
/// thread.
class CompareTile : public QObject {
    Q_OBJECT

public:
    CompareTile(const PlayedFile& file, QString name, const PlaybackEngineMaker& makeEngine);

    const QUuid& id() const { return m_id; }
    const QString& name() const { return m_name; }
    const FileUrl& url() const { return m_file.url; }
    const PlayedFile& file() const { return m_file; }
    FilmPictures& pictures() { return m_pictures; }
    const FilmPictures& pictures() const { return m_pictures; }
    const CompareTiming::Clip& clip() const { return m_clip; }
    /// Slips it against the others, by seconds of its own time.
    void setOffset(double seconds) { m_clip.offset = seconds; }
    /// Shows that frame, from where it travels on at that rate; 0 is at rest.
    void aim(std::int64_t frame, double rate);
    std::int64_t aimed() const { return m_aimed; }

    /// Of its review; nothing until that was read.
    const std::optional<ReviewSignOff>& signOff() const { return m_signOff; }
    void setSignOff(std::optional<ReviewSignOff> signOff);

Q_SIGNALS:
    void pictureChanged();
    void modeChanged(); ///< It became ready, or is shown as stills.
    void clipChanged(); ///< Its picture was found to end sooner than the file says.
    void signOffChanged();

private:
    void takeEnd();

    const QUuid m_id = QUuid::createUuid();
    const PlayedFile m_file;
    const QString m_name;
    CompareTiming::Clip m_clip;
    std::int64_t m_aimed = 0;
    std::optional<ReviewSignOff> m_signOff;
    FilmPictures m_pictures;
};

} // namespace vantroque
