#pragma once

#include <QLocalSocket>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <optional>

namespace vantroque {

/// mpv on a file, paused and without a window, driven through its socket; to compare with.
class MpvPlayer {
public:
    static bool isInstalled();
    /// Begins to open the file.
    explicit MpvPlayer(const QString& file);
    ~MpvPlayer();
    MpvPlayer(const MpvPlayer&) = delete;
    MpvPlayer& operator=(const MpvPlayer&) = delete;

    void send(const QString& command);
    void seek(double seconds);
    /// Waits until it shows what it was told to; false when it does not in some seconds.
    bool waitForPicture();
    /// How many pictures of those sought were ready within that time.
    int picturesIn(int milliseconds);

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    QLocalSocket m_socket;
    QByteArray m_unread;

    /// One event, or nothing after that time.
    std::optional<QByteArray> next(int milliseconds);
};

} // namespace vantroque
