#pragma once

#include "Base/FileUrl.h"
#include "Base/Result.h"

#include <QLocalServer>

#include <chrono>
#include <optional>
#include <vector>

class QDeadlineTimer;
class QLocalSocket;

namespace vantroque {

/// Sees to it that a user has one window for a data folder: a later start hands its files to the
/// first and ends. Whoever owns the name is the window. The kernel gives it to one process alone,
/// and takes it back when that process ends, in whatever way.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    enum class Start {
        first,     ///< This program is the window, and hears of later starts.
        handedOver ///< The window that is open has taken the files.
    };

    /// Blocks while the window that is open is busy, which it may be with a large workspace, or is
    /// about to end. Fails when it is there but does not take the files.
    Result<Start> start(const std::vector<FileUrl>& files,
                        std::chrono::milliseconds limit = std::chrono::seconds(10));
    /// The name in question, in the abstract namespace of sockets.
    static QString name();

Q_SIGNALS:
    /// A later start came with these files, perhaps none.
    void called(const std::vector<vantroque::FileUrl>& files);

private:
    static std::optional<Start> handOver(const std::vector<FileUrl>& files,
                                         const QDeadlineTimer& deadline);
    void receive();
    void read(QLocalSocket& socket, std::vector<FileUrl>& files);

    QLocalServer m_server;
};

} // namespace vantroque
