#include "standin/meetingclient/ClientLink.h"

#include "platform/services/Services.h"
#include "standin/meetingclient/People.h"

namespace meetingclient {

namespace {

const QString requestChannel = u"VelaOutlookPluginToVelaVideoClient_PRL"_s;
const QString answerChannel = u"VelaVideoClientToVelaOutlookPlugin_PRL"_s;
const QString actionIdKey = u"actionId"_s;
const QString contentKey = u"content"_s;
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
        requestChannel, [this](const QString &, const platform::TextMap &info) { onRequest(info); });
    m_observers << bus.addObserver(
        controlNotification, [this](const QString &, const platform::TextMap &info) { onControl(info); });
    m_observers << bus.addObserver(activationNotification,
                                   [this](const QString &, const platform::TextMap &info) {
                                       Q_EMIT activated(info.value(activationUrlKey));
                                   });
}

ClientLink::~ClientLink() {
    *m_alive = false;
    for (const platform::ObserverId observer : std::as_const(m_observers))
        platform::services().distributedNotifications->removeObserver(observer);
}

void ClientLink::onRequest(const platform::TextMap &userInfo) {
    const quint32 actionId = userInfo.value(actionIdKey).toUInt();
    const QString content = userInfo.value(contentKey);
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
        answerChannel, QString(),
        {{actionIdKey, QString::number(answer.actionId())}, {contentKey, answer.content}}, true);
}

void ClientLink::onControl(const platform::TextMap &userInfo) {
    QString error;
    const QString line = userInfo.value(controlRuleKey);
    if (line == controlExit) {
        Q_EMIT quitRequested();
        return;
    }
    const bool done = isOrder(line) ? obey(m_store, line, &error) : m_rules.add(line, &error);
    Q_EMIT logged(done ? u"told: %1"_s.arg(line) : error);
    Q_EMIT meetingsChanged();
}

} // namespace meetingclient
