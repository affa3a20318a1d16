#include "standin/support/MessageLog.h"

#include "standin/support/BusNames.h"

#include <algorithm>

namespace standin {

QString Message::text() const {
    constexpr int shownCharacters = 140;
    const QString line = content.simplified();
    return u"%1 %2: %3"_s.arg(sent ? u"sent"_s : u"answered"_s)
        .arg(action)
        .arg(line.size() > shownCharacters ? line.left(shownCharacters) + u"..."_s : line);
}

MessageLog::~MessageLog() {
    if (const auto &center = platform::services().distributedNotifications)
        for (const platform::ObserverId observer : std::as_const(m_observers))
            center->removeObserver(observer);
}

void MessageLog::observe(const std::function<void()> &heard) {
    for (const QString &channel : {names::requestsToClient, names::answersOfClient})
        m_observers << platform::services().distributedNotifications->addObserver(
            channel, [this, heard, sent = channel == names::requestsToClient](const QString &,
                                                                              const platform::TextMap &info) {
                m_messages.append(
                    {sent, info.value(names::actionIdKey).toUInt(), info.value(names::contentKey)});
                if (heard)
                    heard();
            });
}

QStringList MessageLog::sentContents(const Request &request) const {
    QStringList contents;
    for (const Message &message : m_messages.mid(m_marked))
        if (message.sent && message.action == request.action && message.content.startsWith(request.prefix))
            contents << message.content;
    return contents;
}

qsizetype MessageLog::answered(quint32 action) const {
    const QList<Message> messages = m_messages.mid(m_marked);
    return std::ranges::count_if(
        messages, [action](const Message &message) { return !message.sent && message.action == action; });
}

} // namespace standin
