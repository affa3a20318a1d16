#include "standin/meetingclient/ClientLink.h"

#include "standin/meetingclient/People.h"
#include "standin/support/BusNames.h"

#include <QPointer>

namespace meetingclient {

namespace names = standin::names;

namespace {

constexpr int shownCharacters = 90;
constexpr double millisecond = 0.001;

QString shortened(QString text) {
    text.replace(u'\n', u' ');
    return text.size() > shownCharacters ? text.left(shownCharacters) + u'…' : text;
}

} // namespace

ClientLink::ClientLink(MeetingStore &store, AnswerRules &rules)
    : m_store(store)
    , m_rules(rules) {
    const auto observe = [this](const QString &name, std::function<void(const platform::TextMap &)> handler) {
        m_observers << platform::services().distributedNotifications->addObserver(
            name, [handler = std::move(handler)](const QString &, const platform::TextMap &info) {
                handler(info);
            });
    };
    observe(names::requestsToClient, [this](const platform::TextMap &info) {
        onRequest(info.value(names::actionIdKey).toUInt(), info.value(names::contentKey));
    });
    observe(names::control,
            [this](const platform::TextMap &info) { onControl(info.value(names::controlRuleKey)); });
    observe(names::activation,
            [this](const platform::TextMap &info) { Q_EMIT activated(info.value(names::activationUrlKey)); });
}

ClientLink::~ClientLink() {
    for (const platform::ObserverId observer : std::as_const(m_observers))
        platform::services().distributedNotifications->removeObserver(observer);
}

void ClientLink::onRequest(quint32 actionId, const QString &content) {
    Q_EMIT logged(u"← %1  %2"_s.arg(actionId).arg(shortened(content)));
    const std::optional<Answer> result = carryOut(m_store, actionId, content);
    Q_EMIT changed();
    if (!result)
        return;
    if (result->operation == Operation::StartMeeting)
        Q_EMIT instantMeetingStarted(result->withVideo, result->content);
    else
        answer(*result);
}

void ClientLink::answer(const Answer &answer) {
    const std::optional<QList<PlannedAnswer>> planned = m_rules.plan(answer);
    if (!planned) {
        Q_EMIT quitRequested();
        return;
    }
    if (planned->isEmpty())
        Q_EMIT logged(u"   (no answer, by rule)"_s);
    for (const PlannedAnswer &one : *planned) {
        if (one.delayMilliseconds == 0)
            send(one.answer);
        else
            platform::services().runLoop->callAfter(one.delayMilliseconds * millisecond,
                                                    [link = QPointer(this), late = one.answer] {
                                                        if (link)
                                                            link->send(late);
                                                    });
    }
}

void ClientLink::send(const Answer &answer) {
    const QString action = QString::number(int(answer.operation));
    Q_EMIT logged(u"→ %1  %2"_s.arg(action, shortened(answer.content)));
    standin::post(names::answersOfClient,
                  {{names::actionIdKey, action}, {names::contentKey, answer.content}});
}

void ClientLink::onControl(const QString &line) {
    if (line == names::controlExit) {
        Q_EMIT quitRequested();
        return;
    }
    QString error;
    const bool done = isOrder(line) ? obey(m_store, line, &error) : m_rules.add(line, &error);
    Q_EMIT logged(done ? u"told: %1"_s.arg(line) : error);
    Q_EMIT changed();
}

} // namespace meetingclient
