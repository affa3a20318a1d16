#include "plugin/link/requestHandBack.h"

#include "plugin/link/linkPorts.h"
#include "plugin/link/meetingKeys.h"

void handBackToMeetingMgr(QWidget *window, MeetingCommand command, const rt::Value &data) {
    FinishReceiver *receiver = LinkPorts::instance().finishReceiver;
    if (!receiver)
        return;
    QVariantMap answer;
    if (rt::isPresent(data))
        answer.insert(keyVlAPIResponse, data);
    const QString apptWindowID = window ? receiver->getApptWindowIDByWindow(window) : QString();
    if (!apptWindowID.isNull())
        answer.insert(keyApptWindowID, apptWindowID);
    receiver->onExcuteCommandFinished(qint32(command), answer);
}

void tellRefused() {
    if (FinishReceiver *receiver = LinkPorts::instance().finishReceiver)
        receiver->onRequestRefused();
}
