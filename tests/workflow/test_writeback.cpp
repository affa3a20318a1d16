#include "tests/workflow/WorkflowFixture.h"

#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/util/vlMd5Utils.h"
#include "plugin/workflow/recordWriteBack.h"

#include <QLineEdit>

namespace {

class WriteBack : public WorkflowTest {
protected:
    // Writes the body and the location, but not the record.
    void meetingIsWritten(const QString &url) {
        manager().updateVlKeyInfoToAppointment(editor.get(), {{vl_Meeting_JoinUrl, url}}, false);
    }
    static PendingWriteBack &pending() {
        auto &pending = MeetingContext::atHand().pendingWriteBack;
        return pending ? *pending : pending.emplace();
    }
    void givenTheOldURLInTheRecord(const QString &url) {
        store().setSavedApptInfo({{vl_ApptInfo_VlOIProperty, u"{\"joinUrl\":\"%1\"}"_s.arg(url)}});
    }
};

} // namespace

TEST_F(WriteBack, TheLocationKeepsWhatTheUserWroteAndNothingElse) {
    const std::tuple<const char *, const char *, const char *, const char *> cases[] = {
        {"", "", "u/new", "u/new"},
        {"Room R", "", "u/new", "Room R u/new"},
        {"  Room R\t", "", "u/new", "Room R u/new"},
        {"Room R u/old;", "u/old", "u/new", "Room R u/new"},
        {"u/old; Room R u/old", "u/old", "u/new", "Room R u/new"},
        {"Room R u/old?a=1", "u/old", "u/old?a=1", "Room R u/old?a=1"}, // the new URL begins with the old one
        {"Room R u/old?a=1", "u/old?a=1", "u/old", "Room R u/old"},     // the old URL begins with the new one
        {"u/new", "u/old", "u/new", "u/new"},
    };
    for (const auto &[field, oldURL, newURL, location] : cases) {
        SCOPED_TRACE(field);
        givenAnAppointment();
        givenTheOldURLInTheRecord(oldURL);
        editor->locationField()->setText(field);
        meetingIsWritten(newURL);
        EXPECT_EQ(editor->locationField()->text(), location);
        EXPECT_EQ(appointment->location(), location);
        EXPECT_EQ(manager().getOLNewLocation(), location);
        EXPECT_EQ(manager().getVlLocation(), newURL);
        manager().cleanVlInfoForUpdApptInfo();
        theEditorCloses();
    }
}

TEST_F(WriteBack, TheFieldGoesByWhatWasWrittenLastTheHostsLocationByTheRecord) {
    givenAnAppointment();
    givenTheOldURLInTheRecord("u/record");
    pending().joinURL = "u/written";
    editor->locationField()->setText("R u/written");
    meetingIsWritten("u/new");
    EXPECT_EQ(appointment->location(), "R u/new");
    EXPECT_EQ(manager().getJoinURLFromProperty(), "u/record");

    pending().joinURL = "u/written";
    editor->values.remove("locationTextField");
    appointment->values.insert("location", "R u/record");
    meetingIsWritten("u/new");
    EXPECT_EQ(appointment->location(), "R u/new");

    appointment->carriesTheMeeting(key, "u/1"); // the record to be replaced has the only one that is shown
    appointment->values.insert("location", "R u/1");
    meetingIsWritten("u/new");
    EXPECT_EQ(appointment->location(), "R u/new");
    const vlERCalendarEventEditorViewController adapter(editor.get());
    EXPECT_TRUE(manager().getOLUserInputLocation(adapter, "u/new", QString()).isNull());
}

TEST_F(WriteBack, ASubjectOfBlanksGivesWayToTheMeetings) {
    givenAnAppointment();
    const QVariantMap info{{vl_Outlook_ApptInfo, QVariantMap{{vl_ApptInfo_Subject, "Parlo meeting"}}}};
    for (const char *subject : {" \t", "", "Mine"}) {
        appointment->values.insert("summary", subject);
        manager().updateVlKeyInfoToAppointment(editor.get(), info, false);
        EXPECT_EQ(appointment->subject(), qstrcmp(subject, "Mine") ? "Parlo meeting" : "Mine");
    }
    appointment->values.insert("summary", "");
    manager().updateVlKeyInfoToAppointment(editor.get(), {}, false);
    EXPECT_EQ(appointment->subject(), "");

    FakeObject record("ECMutableCalendarEvent", {{"summary", " "}});
    updateVlKeyInfoToAppointment(&record);
    EXPECT_EQ(record.values.value("summary"), " "); // no meeting is loaded
    givenTheMeetingIsLoaded();
    updateVlKeyInfoToAppointment(&record);
    EXPECT_EQ(record.values.value("summary"), "Review");
}

TEST_F(WriteBack, TheRecordIsWrittenOnlyWithACommitAndItsDigestIsKept) {
    givenAnAppointment();
    givenTheMeetingIsLoaded();
    const QVariantMap info = vlGetMeetingHelper::sharedInstance().getMeetingInfo();
    manager().updateVlKeyInfoToAppointment(editor.get(), info, false);
    EXPECT_TRUE(editor->record().isNull());
    EXPECT_TRUE(store().encodeMailBody().isNull());
    manager().updateVlKeyInfoToAppointment(editor.get(), info, true);
    const QString digest = vlMd5Utils::vlMD5Hex(invitation);
    EXPECT_EQ(store().encodeMailBody(), digest);
    EXPECT_EQ(vlOLUtils::toNSDictionary(editor->record()),
              (QVariantMap{{"meetingKey", key}, {"encodeMailBody", digest}, {"joinUrl", joinUrl}}));
}

TEST_F(WriteBack, TheStoredRecordGetsTheLocationThatItLacks) {
    struct Case {
        QVariant location;                                // of the record
        const char *composed, *meetingPart, *urlInRecord; // nullptr: none
        bool needed;
    };
    const Case cases[] = {{{}, "R u", "u", nullptr, true},     {{}, nullptr, nullptr, nullptr, true},
                          {"R", nullptr, "u", nullptr, false}, {"R u", "R u", "u", "old", false},
                          {"R", "R u", "u", nullptr, true},    {"S u", "R u", "u", nullptr, false},
                          {"R", "R u", "u", "u", false},       {"S u", "R u", "u", "old", true}};
    const auto text = [](const char *given) { return given ? QString::fromLatin1(given) : QString(); };
    for (const Case &c : cases) {
        SCOPED_TRACE(qPrintable(c.location.toString()));
        FakeObject record("ECMutableCalendarEvent", {{"location", c.location}, {"summary", "Mine"}});
        pending().olNewLocation = text(c.composed);
        pending().vlLocation = text(c.meetingPart);
        pending().joinURLFromProperty = text(c.urlInRecord);
        EXPECT_EQ(needUpdateLocation(&record), c.needed);
        updateVlKeyInfoToAppointment(&record);
        const bool isWritten = c.needed && c.composed;
        EXPECT_EQ(record.values.value("location"), isWritten ? QVariant(text(c.composed)) : c.location);
        EXPECT_TRUE(manager().getOLNewLocation().isNull()); // used up
    }
}

TEST_F(WriteBack, AfterADeleteTheEditorAndTheNextRecordLoseTheirLocationOnce) {
    givenAnAppointmentWithAMeeting();
    editor->locationField()->setText(joinUrl);
    manager().updateVlMeetingInfoToAppointmentForDelete(editor.get(), {});
    EXPECT_EQ(editor->locationField()->text(), "");
    FakeObject record("ECMutableCalendarEvent", {{"location", joinUrl}});
    cleanVlKeyInfoFromAppointment(&record);
    EXPECT_EQ(record.values.value("location"), "");
    record.values.insert("location", "Room R");
    cleanVlKeyInfoFromAppointment(&record);
    EXPECT_EQ(record.values.value("location"), "Room R");
    manager().updateVlMeetingInfoToAppointmentForDelete(editor.get(), {});
    answer(CmdScheduleMeeting, {{vl_MeetingKey, key}}); // a new meeting cancels it
    EXPECT_FALSE(manager().needClearLocation());
}
