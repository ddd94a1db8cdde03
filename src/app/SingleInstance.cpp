#include "app/SingleInstance.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>
#include <QUrl>

#include <cstdio>

namespace {
const QByteArray kActivateRequest = "activate\n";
// "import", the separator and each file's URL, percent-encoded, separated by tabs.
const QByteArray kImportRequest = "import";
const QByteArray kImportRequestStart = "import\t";
const QByteArray kActivateReply = "ok\n";

QByteArray importRequest(const QStringList& files, const QString& separator)
{
    QByteArrayList fields{kImportRequest, separator.toUtf8().toPercentEncoding()};
    for (const QString& file : files)
        fields << QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()).toEncoded();
    return fields.join('\t') + '\n';
}
} // namespace

QBSingleInstance::QBSingleInstance(const QString& name, QObject* parent)
    : QObject(parent), m_lockPath(runtimeFolder() + QLatin1Char('/') + name + u".lock"),
      m_socketPath(runtimeFolder() + QLatin1Char('/') + name + u".socket"), m_lock(m_lockPath)
{
    // Held for the whole run: only a lock whose process is gone counts as stale.
    m_lock.setStaleLockTime(0);
}

QBSingleInstance::~QBSingleInstance() = default;

QString QBSingleInstance::runtimeFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
}

std::optional<int> QBSingleInstance::start(int timeoutMs, const QStringList& filesToImport,
                                           const QString& separator)
{
    if (m_lock.tryLock(0)) {
        listen();
        return std::nullopt;
    }
    if (m_lock.error() != QLockFile::LockFailedError) {
        // An unusable runtime folder must not keep the user from their quotes.
        std::fprintf(stderr, "Cannot take the lock '%s'; not checking for another instance.\n",
                     qPrintable(m_lockPath));
        return std::nullopt;
    }
    if (!filesToImport.isEmpty() &&
        askRunningInstanceToImport(filesToImport, separator, timeoutMs)) {
        //% "Quillbox2 is already running; it imports the files."
        std::fprintf(stdout, "%s\n", qtTrId("AlreadyRunningImports").toLocal8Bit().data());
        return 0;
    }
    if (filesToImport.isEmpty() && ask(kActivateRequest, timeoutMs)) {
        //% "Quillbox2 is already running; its window has been brought to the front."
        std::fprintf(stdout, "%s\n", qtTrId("AlreadyRunningBroughtToFront").toLocal8Bit().data());
        return 0;
    }
    //% "Quillbox2 is already running but does not answer."
    std::fprintf(stderr, "%s\n", qtTrId("AlreadyRunningNoAnswer").toLocal8Bit().data());
    return 1;
}

void QBSingleInstance::listen()
{
    // We hold the lock, so a socket file left here belongs to a process that is gone.
    QLocalServer::removeServer(m_socketPath);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_server.listen(m_socketPath)) {
        std::fprintf(stderr, "Cannot listen on '%s': %s\n", qPrintable(m_socketPath),
                     qPrintable(m_server.errorString()));
        return;
    }
    connect(&m_server, &QLocalServer::newConnection, this, &QBSingleInstance::answer);
}

void QBSingleInstance::answer()
{
    while (QLocalSocket* socket = m_server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto readRequest = [this, socket] {
            if (!socket->canReadLine()) {
                return;
            }
            const QByteArray request = socket->readLine();
            if (request == kActivateRequest || request.startsWith(kImportRequestStart)) {
                socket->write(kActivateReply);
                socket->flush();
                handleRequest(request);
            }
            socket->disconnectFromServer();
        };
        connect(socket, &QLocalSocket::readyRead, this, readRequest);
        readRequest(); // the request may have arrived with the connection
    }
}

void QBSingleInstance::handleRequest(const QByteArray& request)
{
    if (request == kActivateRequest) {
        emit activationRequested();
        return;
    }
    const QByteArrayList fields = request.trimmed().split('\t');
    QStringList files;
    for (const QByteArray& field : fields.mid(2)) {
        const QUrl url = QUrl::fromEncoded(field);
        if (url.isLocalFile())
            files << url.toLocalFile();
    }
    emit importRequested(files,
                         QString::fromUtf8(QByteArray::fromPercentEncoding(fields.value(1))));
}

bool QBSingleInstance::askRunningInstanceToImport(const QStringList& files,
                                                  const QString& separator, int timeoutMs)
{
    return ask(importRequest(files, separator), timeoutMs);
}

bool QBSingleInstance::ask(const QByteArray& request, int timeoutMs)
{
    const QDeadlineTimer deadline(timeoutMs);
    QLocalSocket socket;
    // The running process may have taken the lock a moment ago and not yet listen.
    while (!deadline.hasExpired()) {
        socket.connectToServer(m_socketPath);
        if (socket.waitForConnected(static_cast<int>(deadline.remainingTime()))) {
            break;
        }
        QThread::msleep(100);
    }
    if (socket.state() != QLocalSocket::ConnectedState) {
        return false;
    }
    socket.write(request);
    if (!socket.waitForBytesWritten(static_cast<int>(deadline.remainingTime()))) {
        return false;
    }
    while (!socket.canReadLine() &&
           socket.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) {
    }
    return socket.canReadLine() && socket.readLine() == kActivateReply;
}
