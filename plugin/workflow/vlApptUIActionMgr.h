// Handles what an editor does with its meeting: buttons, saving, sending and closing.
#pragma once

#include "plugin/link/clientCodes.h"
#include "plugin/util/sharedObject.h"
#include "plugin/workflow/vlActionResultMgr.h"

#include <QVariantMap>

class EditorStrip;
class QWidget;

class vlApptUIActionMgr : public SharedObject<vlApptUIActionMgr>, public vlActionResultMgr {
public:
    // Results of handleVLMeeting(), in addition to the number of a ClientError.
    static constexpr int heldBack = 0;       // the workflow runs the host operation at its end
    static constexpr int notStarted = 1;     // replaces the ClientError whose number equals hostMayProceed
    static constexpr int hostMayProceed = 2; // the meeting needs no work

    // Puts a strip into the host's header view, which owns it.
    void createVlAdditionViewOnCalHeaderContainerView(QWidget *headerView);
    // Call it before the host saves or sends: it sends the command that the operation requires. `action` is
    // {"keyApptViewActionID"}; if it is empty, the strip keeps its host action. Any result other than
    // heldBack and hostMayProceed: the command could not start; the host operation is held back too.
    int handleVLMeeting(rt::Object *editor, const QVariantMap &action);

    // Called by the strip's buttons. `meetingType` is unused.
    int addVLMeeting(EditorStrip *strip);
    int addPACMeeting(EditorStrip *strip, PACAccount account);
    int cancelVLMeeting(EditorStrip *strip, int meetingType);
    int changeVLMeeting(EditorStrip *strip, int meetingType);

    // Call it in the context of an editor after its window has closed. Returns 0. The window's identifier is
    // of no use here: the next editor's window may have the same address.
    int closeOLAppointment();
};
