#include "MpvPlayer.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QThread>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

bool MpvPlayer::isInstalled()
{
    return !QStandardPaths::findExecutable(u"mpv"_s).isEmpty();
}

MpvPlayer::MpvPlayer(const QString& file)
{
    const QString socket = m_folder.filePath(u"mpv"_s);
    m_process.start(u"mpv"_s, {u"--no-config"_s, u"--really-quiet"_s, u"--pause"_s,
                               u"--keep-open=yes"_s, u"--vo=null"_s, u"--ao=null"_s,
                               u"--hr-seek=yes"_s, u"--input-ipc-server="_s + socket, file});
    for (int i = 0; i < 2000 && m_socket.state() != QLocalSocket::ConnectedState; ++i) {
        m_socket.connectToServer(socket);
        if (!m_socket.waitForConnected(1000))
            QThread::msleep(2);
    }
}

MpvPlayer::~MpvPlayer()
{
    m_process.kill();
    m_process.waitForFinished();
}

void MpvPlayer::send(const QString& command)
{
    const QJsonArray words = QJsonArray::fromStringList(command.split(u' '));
    m_socket.write(QJsonDocument(QJsonObject{{u"command"_s, words}}).toJson(QJsonDocument::Compact)
                   + '\n');
    m_socket.flush();
}

void MpvPlayer::seek(double seconds)
{
    send(u"seek %1 absolute+exact"_s.arg(seconds, 0, 'f', 4));
}

std::optional<QByteArray> MpvPlayer::next(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (!m_unread.contains('\n')) {
        const auto left = milliseconds - static_cast<int>(timer.elapsed());
        if (left <= 0 || !m_socket.waitForReadyRead(left))
            return std::nullopt;
        m_unread += m_socket.readAll();
    }
    const qsizetype end = m_unread.indexOf('\n');
    QByteArray line = m_unread.left(end);
    m_unread.remove(0, end + 1);
    return line;
}

bool MpvPlayer::waitForPicture()
{
    constexpr int patience = 8000;
    while (const auto line = next(patience))
        if (line->contains("playback-restart"))
            return true;
    return false;
}

int MpvPlayer::picturesIn(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    int count = 0;
    while (const auto line = next(std::max(milliseconds - static_cast<int>(timer.elapsed()), 1)))
        count += line->contains("playback-restart") ? 1 : 0;
    return count;
}

} // namespace vantroque
