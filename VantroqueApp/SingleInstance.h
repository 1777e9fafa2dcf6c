#pragma once

#include "Base/FileUrl.h"

#include <QLocalServer>

#include <vector>

namespace vantroque {

/// Sees to it that a user has one window: a second start hands its files to the first and ends.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// Hands the files to a window that is already open. False when there is none; then this
    /// program is the one, and hears of later starts.
    bool handOver(const std::vector<FileUrl>& files);
    /// Hears of no later start any more.
    void stop() { m_server.close(); }

Q_SIGNALS:
    /// A later start came with these files, perhaps none.
    void called(const std::vector<vantroque::FileUrl>& files);

private:
    void listen(const QString& name);
    void receive();

    QLocalServer m_server;
};

} // namespace vantroque
