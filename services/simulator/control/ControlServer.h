#pragma once

#include <QByteArray>
#include <QSocketNotifier>

#include <functional>
#include <map>
#include <memory>
#include <string>

// Answers lines on the control socket, each with one line, in the Qt event loop.
class ControlServer {
public:
    using Answer = std::function<QByteArray(const QByteArray& line)>;

    explicit ControlServer(Answer answer);
    ~ControlServer();
    ControlServer(const ControlServer&) = delete;
    ControlServer& operator=(const ControlServer&) = delete;

    // False, with errno set, when the socket cannot be made or a live simulator has it.
    [[nodiscard]] bool listen(const std::string& socketPath);
    // Removes the socket and ends every conversation.
    void close();

private:
    struct Conversation {
        QByteArray received;
        std::unique_ptr<QSocketNotifier> notifier;
    };

    void accept();
    void read(int descriptor);
    [[nodiscard]] bool answerLines(int descriptor, QByteArray& received) const;
    void end(int descriptor);

    Answer m_answer;
    std::string m_path;
    int m_listener { -1 };
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::map<int, Conversation> m_conversations;
};
