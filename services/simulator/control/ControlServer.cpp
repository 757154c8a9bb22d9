#include "services/simulator/control/ControlServer.h"

#include "services/simulator/control/ControlSocket.h"

#include <cerrno>

#include <sys/socket.h>
#include <unistd.h>

ControlServer::ControlServer(Answer answer)
    : m_answer(std::move(answer))
{
}

ControlServer::~ControlServer()
{
    close();
}

bool ControlServer::listen(const std::string& socketPath)
{
    if (!makePrivateFolder(socketPath))
        return false;
    m_listener = listenControl(socketPath);
    if (m_listener < 0)
        return false;
    m_path = socketPath;
    m_notifier = std::make_unique<QSocketNotifier>(m_listener, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { accept(); });
    return true;
}

void ControlServer::close()
{
    for (auto& [descriptor, conversation] : m_conversations) {
        conversation.notifier.reset();
        (void)::close(descriptor);
    }
    m_conversations.clear();
    m_notifier.reset();
    if (m_listener < 0)
        return;
    (void)::unlink(m_path.c_str());
    (void)::close(m_listener);
    m_listener = -1;
}

void ControlServer::accept()
{
    const int descriptor = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (descriptor < 0)
        return;
    Conversation& conversation = m_conversations[descriptor];
    conversation.notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    QObject::connect(conversation.notifier.get(), &QSocketNotifier::activated, conversation.notifier.get(),
        [this, descriptor] { read(descriptor); });
}

void ControlServer::read(int descriptor)
{
    char buffer[4096];
    const ssize_t count = ::recv(descriptor, buffer, sizeof(buffer), 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count <= 0) {
        end(descriptor);
        return;
    }
    QByteArray& received = m_conversations[descriptor].received;
    received.append(buffer, count);
    if (!answerLines(descriptor, received) || static_cast<std::size_t>(received.size()) > controlLineBytes)
        end(descriptor);
}

bool ControlServer::answerLines(int descriptor, QByteArray& received) const
{
    for (qsizetype end = received.indexOf('\n'); end >= 0; end = received.indexOf('\n')) {
        const QByteArray answer = m_answer(received.left(end)) + '\n';
        received.remove(0, end + 1);
        // An answer that the peer does not take in one go is for a peer that does not read.
        if (::send(descriptor, answer.constData(), static_cast<std::size_t>(answer.size()), MSG_NOSIGNAL)
            != answer.size())
            return false;
    }
    return true;
}

void ControlServer::end(int descriptor)
{
    const auto found = m_conversations.find(descriptor);
    if (found == m_conversations.end())
        return;
    // The notifier may be the one that is being served.
    found->second.notifier->setEnabled(false);
    found->second.notifier.release()->deleteLater();
    m_conversations.erase(found);
    (void)::close(descriptor);
}
