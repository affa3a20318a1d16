// The editor's side of the meeting work: its buttons, its saving and sending, its closing.
#pragma once

#include "plugin/link/clientCodes.h"
#include "plugin/util/sharedObject.h"
#include "plugin/workflow/vlActionResultMgr.h"

#include <QString>
#include <QVariantMap>

class EditorStrip;
class QWidget;

class vlApptUIActionMgr : public SharedObject<vlApptUIActionMgr>, public vlActionResultMgr {
public:
    // What handleVLMeeting() answers, beside a ClientError's number.
    static constexpr int heldBack = 0;       // the workflow runs the host operation when it is done
    static constexpr int notStarted = 1;     // in place of the one ClientError that has the next number
    static constexpr int hostMayProceed = 2; // nothing to do for the meeting

    // Puts a strip into the host's header view, which owns it.
    void createVlAdditionViewOnCalHeaderContainerView(QWidget *headerView);
    // The host is about to save or send: sends the command that this needs. `action` is
    // {"keyApptViewActionID"}; when it is empty, the strip's host action stays. Any other answer than
    // heldBack and hostMayProceed: the command could not be started, and the host operation is held back too.
    int handleVLMeeting(rt::Object *editor, const QVariantMap &action);

    // The strip's buttons. `meetingType` is not read.
    int addVLMeeting(EditorStrip *strip);
    int addPACMeeting(EditorStrip *strip, PACAccount account);
    int cancelVLMeeting(EditorStrip *strip, int meetingType);
    int changeVLMeeting(EditorStrip *strip, int meetingType);

    // The window with that identifier has closed. Always 0.
    int closeOLAppointment(const QString &apptWindowID);
};
