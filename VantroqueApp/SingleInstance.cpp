#include "VantroqueApp/SingleInstance.h"

#include "Base/SupportFolder.h"

#include <QCryptographicHash>
#include <QLocalSocket>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 1000; ///< Milliseconds for a window that lives but is busy.

/// One a workspace: who has another data folder has another window.
QString serverName()
{
    const QByteArray folder = QByteArray::fromStdString(SupportFolder::path().native());
    const QByteArray hash = QCryptographicHash::hash(folder, QCryptographicHash::Sha1).toHex();
    return u"vantroque-"_s + QString::fromLatin1(hash.first(16));
}

QByteArray message(const std::vector<FileUrl>& files)
{
    QStringList lines;
    for (const FileUrl& file : files)
        lines << file.toString();
    return lines.join(u'\n').toUtf8() + '\n';
}

std::vector<FileUrl> filesIn(const QByteArray& text)
{
    std::vector<FileUrl> files;
    for (const QByteArray& line : text.split('\n'))
        if (const auto file = FileUrl::fromString(QString::fromUtf8(line)))
            files.push_back(*file);
    return files;
}

} // namespace

bool SingleInstance::handOver(const std::vector<FileUrl>& files)
{
    QLocalSocket socket;
    socket.connectToServer(serverName());
    if (!socket.waitForConnected(patience)) {
        listen(serverName());
        return false;
    }
    socket.write(message(files));
    socket.waitForBytesWritten(patience);
    socket.disconnectFromServer();
    return true;
}

void SingleInstance::listen(const QString& name)
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::receive);
    if (m_server.listen(name))
        return;
    QLocalServer::removeServer(name); // left by a crash
    m_server.listen(name);
}

void SingleInstance::receive()
{
    QLocalSocket* socket = m_server.nextPendingConnection();
    connect(socket, &QLocalSocket::disconnected, this, [this, socket] {
        Q_EMIT called(filesIn(socket->readAll()));
        socket->deleteLater();
    });
}

} // namespace vantroque
