#include "VantroqueApp/SingleInstance.h"

#include "Base/SupportFolder.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QLocalSocket>
#include <QThread>

#include <sys/socket.h>
#include <unistd.h>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// A line for each file, and an empty one after the last.
QByteArray message(const std::vector<FileUrl>& files)
{
    QByteArray text;
    for (const FileUrl& file : files)
        text += file.toString().toUtf8() + '\n';
    return text + '\n';
}

/// Anybody may take a name in the abstract namespace, or call it.
bool isOfThisUser(const QLocalSocket& socket)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &peer,
                        &size)
               == 0
           && peer.uid == ::geteuid();
}

} // namespace

QString SingleInstance::name()
{
    std::error_code error;
    const auto folder = std::filesystem::weakly_canonical(SupportFolder::path(), error);
    const QByteArray path =
        QByteArray::fromStdString((error ? SupportFolder::path() : folder).native());
    const QByteArray hash = QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex();
    return u"vantroque-%1-%2"_s.arg(QString::number(::geteuid()),
                                    QString::fromLatin1(hash.first(16)));
}

Result<SingleInstance::Start> SingleInstance::start(const std::vector<FileUrl>& files,
                                                    std::chrono::milliseconds limit)
{
    m_server.setSocketOptions(QLocalServer::AbstractNamespaceOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::receive);
    const QDeadlineTimer deadline(limit);
    do {
        // Where there are no names to own, two windows are better than none.
        if (m_server.listen(name()) || m_server.serverError() != QAbstractSocket::AddressInUseError)
            return Start::first;
        if (const auto outcome = handOver(files, deadline))
            return *outcome;
        // The other one is about to listen, or about to end.
        QThread::msleep(10);
    } while (!deadline.hasExpired());
    return failure(u"it is open already, but does not answer"_s);
}

/// Nothing when the other one neither took the files nor ever will.
std::optional<SingleInstance::Start> SingleInstance::handOver(const std::vector<FileUrl>& files,
                                                              const QDeadlineTimer& deadline)
{
    QLocalSocket socket;
    socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    socket.connectToServer(name());
    if (!socket.waitForConnected(static_cast<int>(deadline.remainingTime())))
        return std::nullopt;
    if (!isOfThisUser(socket))
        return Start::first;
    socket.write(message(files));
    if (!socket.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
        return std::nullopt;
    return Start::handedOver;
}

void SingleInstance::receive()
{
    while (QLocalSocket* socket = m_server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        if (!isOfThisUser(*socket)) {
            socket->abort();
            continue;
        }
        connect(socket, &QLocalSocket::readyRead, this,
                [this, socket, files = std::vector<FileUrl>()]() mutable { read(*socket, files); });
    }
}

void SingleInstance::read(QLocalSocket& socket, std::vector<FileUrl>& files)
{
    constexpr qint64 longestLine = 65'536; // above any path, each byte of it in three
    while (socket.canReadLine()) {
        const QByteArray line = socket.readLine();
        if (line == "\n") {
            Q_EMIT called(std::exchange(files, {}));
            socket.write("taken\n");
            return;
        }
        if (const auto file = FileUrl::fromString(QString::fromUtf8(line.chopped(1))))
            files.push_back(*file);
    }
    if (socket.bytesAvailable() > longestLine)
        socket.abort();
}

} // namespace vantroque
