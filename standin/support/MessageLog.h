// The messages between plug-in and meeting client, as anybody on the bus hears them.
#pragma once

#include "platform/Literals.h"
#include "platform/services/bus/Notifications.h"

#include <functional>

namespace standin {

// A kind of request from the plug-in to the client: its action, and how its content begins.
struct Request {
    quint32 action;
    QString prefix;
};
namespace requests {
inline const Request start{2, {}};
inline const Request meeting{3, {}};
inline const Request schedule{3, u"1;"_s};
inline const Request update{3, u"2;"_s};
inline const Request deletion{3, u"3;"_s};
inline const Request profile{6, {}};
inline const Request accounts{9, {}};
} // namespace requests
inline constexpr quint32 updateAnswer = 2;
inline constexpr quint32 readAnswer = 4;

struct Message {
    bool sent; // by the plug-in
    quint32 action;
    QString content;

    [[nodiscard]] QString text() const; // one line, cut
};

class MessageLog {
public:
    MessageLog() = default;
    ~MessageLog();
    MessageLog(const MessageLog &) = delete;
    MessageLog &operator=(const MessageLog &) = delete;

    // Records the messages from now on, and calls `heard` after each, if given. Needs the services.
    void observe(const std::function<void()> &heard = {});
    [[nodiscard]] const QList<Message> &messages() const { return m_messages; }

    // Messages are counted from the last mark on.
    void mark() { m_marked = m_messages.size(); }
    [[nodiscard]] QStringList sentContents(const Request &request) const;
    [[nodiscard]] qsizetype sent(const Request &request) const { return sentContents(request).size(); }
    [[nodiscard]] qsizetype answered(quint32 action) const;

private:
    QList<Message> m_messages;
    qsizetype m_marked = 0;
    QList<platform::ObserverId> m_observers;
};

} // namespace standin
