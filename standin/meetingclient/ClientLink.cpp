#include "standin/meetingclient/ClientLink.h"

#include "platform/services/Services.h"
#include "standin/meetingclient/People.h"
#include "standin/support/BusNames.h"

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

ClientLink::ClientLink(MeetingStore &store, MeetingService &service, AnswerRules &rules, QObject *parent)
    : QObject(parent)
    , m_store(store)
    , m_service(service)
    , m_rules(rules) {
    platform::DistributedNotificationCenter &bus = *platform::services().distributedNotifications;
    m_observers << bus.addObserver(
        names::requestsToClient, [this](const QString &, const platform::TextMap &info) { onRequest(info); });
    m_observers << bus.addObserver(
        names::control, [this](const QString &, const platform::TextMap &info) { onControl(info); });
    m_observers << bus.addObserver(names::activation, [this](const QString &, const platform::TextMap &info) {
        Q_EMIT activated(info.value(names::activationUrlKey));
    });
}

ClientLink::~ClientLink() {
    *m_alive = false;
    for (const platform::ObserverId observer : std::as_const(m_observers))
        platform::services().distributedNotifications->removeObserver(observer);
}

void ClientLink::onRequest(const platform::TextMap &userInfo) {
    const quint32 actionId = userInfo.value(names::actionIdKey).toUInt();
    const QString content = userInfo.value(names::contentKey);
    Q_EMIT logged(u"← %1  %2"_s.arg(actionId).arg(shortened(content)));
    const std::optional<Answer> answer = m_service.handle(actionId, content);
    Q_EMIT meetingsChanged();
    if (m_service.startedMeeting())
        Q_EMIT instantMeetingStarted(m_service.startedMeeting()->withVideo,
                                     m_service.startedMeeting()->joinUrl);
    if (!answer)
        return;
    bool quit = false;
    const QList<PlannedAnswer> planned = m_rules.plan(*answer, &quit);
    if (quit) {
        Q_EMIT quitRequested();
        return;
    }
    if (planned.isEmpty())
        Q_EMIT logged(u"   (no answer, by rule)"_s);
    for (const PlannedAnswer &one : planned) {
        if (one.delayMilliseconds == 0) {
            send(one.answer);
            continue;
        }
        platform::services().runLoop->callAfter(one.delayMilliseconds * millisecond,
                                                [this, alive = m_alive, late = one.answer] {
                                                    if (*alive)
                                                        send(late);
                                                });
    }
}

void ClientLink::send(const Answer &answer) {
    Q_EMIT logged(u"→ %1  %2"_s.arg(answer.actionId()).arg(shortened(answer.content)));
    platform::services().distributedNotifications->post(
        names::answersOfClient, QString(),
        {{names::actionIdKey, QString::number(answer.actionId())}, {names::contentKey, answer.content}},
        true);
}

void ClientLink::onControl(const platform::TextMap &userInfo) {
    QString error;
    const QString line = userInfo.value(names::controlRuleKey);
    if (line == names::controlExit) {
        Q_EMIT quitRequested();
        return;
    }
    const bool done = isOrder(line) ? obey(m_store, line, &error) : m_rules.add(line, &error);
    Q_EMIT logged(done ? u"told: %1"_s.arg(line) : error);
    Q_EMIT meetingsChanged();
}

} // namespace meetingclient
