// Short runs, each under what must hold in it. In most something once went wrong.
#include "tests/simulation/Script.h"

using namespace simulation;

namespace {

struct FoundFault {
    const char *claim;
    const char *script;
};

class FoundFaults : public testing::TestWithParam<FoundFault> {};

// One line for each: the conditions, then the steps.
#define TWO_MEETINGS                                                                                         \
    "slow: open plain, strip plain add, sheet ok, saveclose plain, "                                         \
    "open other, strip other add, sheet ok, saveclose other, "
#define MEETING_OF_INVITED "prompt: open invited, strip invited add, sheet ok, send invited, wait 1, "

const FoundFault faultsFound[] = {
    {"WhatIsTypedIntoTheLocationSurvivesTheNextAnswer",
     "prompt: new plain, strip new1 add, sheet ok, place new1 here, later new1 30, save new1"},
    {"ARemovedMeetingTakesNoOtherAppointmentsLocation",
     "faulty: open plain, place plain here, new video, sheet ok, strip new1 remove, save plain"},
    {"TheLocationOfAnotherEditorsMeetingIsNotStoredWithAMovedAppointment",
     "slow: open plain, place plain here, strip plain add, sheet ok, save plain, close plain, open other, "
     "strip other add, sheet ok, menu later plain"},
    {"TheSheetThatIsConfirmedDoesWhatItWasOpenedFor",
     "faulty: new plain, strip new1 add, sheet ok, new plain, place new2 here, strip new2 add, "
     "strip new1 remove, sheet ok"},
    {"ALateAnswerRepeatsNoSaveAndCloseThatTheHostHasRun",
     "faulty: rule once delay get 500, open series, strip series add, sheet ok, menu later other, "
     "saveclose series"},
    {"OnlyTheNewJoinURLIsLeftInTheLocationWhenItChanges",
     "prompt: open other, strip other add, sheet ok, save other, strip other settings, sheet usePMI, "
     "sheet ok, save other"},
    {"AnAudioConferenceIsWrittenIntoNoOtherAppointment", "slow: new audio, save new1, menu later other"},
    {"AnAppointmentOpenedBesideAnotherKeepsToItself",
     "prompt: open plain, strip plain add, sheet ok, save plain, open other, subject other w1x, save other"},
    {"ARemovalTakesTheMeetingOfItsOwnEditor",
     TWO_MEETINGS "open plain, open other, front plain, strip plain remove"},
    {"AnEditorBroughtForwardAgainKeepsItsMeeting",
     TWO_MEETINGS "open plain, open other, open plain, subject plain w1x, save plain"},
    {"OfTwoMovesWhileTheClientIsSlowBothReachIt",
     TWO_MEETINGS "rule delay get 2500, menu later plain, menu later other, wait 6"},
    {"AChangeOnTheCalendarTakesNothingFromASaveThatWaits", TWO_MEETINGS
     "open plain, rule once delay get 2500, subject plain w1x, save plain, menu later plain, wait 6"},
    {"AnAnswerForTheEditorBehindIsNotWrittenIntoTheBodyInFront",
     "prompt: open plain, open other, strip plain add, sheet ok, front other, save plain"},
    {"ASaveThatWasRefusedAsksAgain",
     TWO_MEETINGS "rule once drop get, menu later plain, wait 31, open plain, subject plain w1x, "
                  "rule once error get 0;Error 5003, save plain, alert escape, save plain"},
    {"WhatIsChangedOnTheCalendarWhileAMeetingIsMadeReachesIt",
     "slow: rule once delay get 2000, open other, strip other add, sheet ok, save other, menu longer other, "
     "wait 3"},
    {"WhatIsTypedWhileASendWaitsReachesTheMeeting",
     MEETING_OF_INVITED "open invited, rule once delay update 2500, subject invited w1x, send invited, "
                        "later invited 15, wait 6"},
    {"ASaveWritesTheRecordOfAMeetingWhoseReadingFailed",
     "faulty: open series, strip series add, rule once corrupt get empty, sheet ok, alert escape, "
     "body series w1x, saveclose series, open series, strip series remove"},
    {"AHeldSendGoesOutOnceWhateverIsRepeated",
     MEETING_OF_INVITED "open invited, body invited w1x, rule once repeat get 2, send invited"},
    {"AnEditorWhoseHeldStoringFailsStaysOpen",
     TWO_MEETINGS "open plain, subject plain w1x, disk full, saveclose plain"},
    {"ASendWhoseStoringFailsKeepsItsMeeting",
     MEETING_OF_INVITED "open invited, subject invited w1x, disk full, send invited, disk free, "
                        "alert escape, subject invited w2x, send invited"},
};

INSTANTIATE_TEST_SUITE_P(Runs, FoundFaults, testing::ValuesIn(faultsFound),
                         [](const auto &info) { return std::string(info.param.claim); });

} // namespace

TEST_P(FoundFaults, DoNotComeBack) {
    for (const char *host : {"15.8", "16"}) {
        QString text = QString::fromLatin1(GetParam().script);
        text.replace(u": "_s, u"\n"_s).replace(u", "_s, u"\n"_s);
        const Script script = Script::parse(u"host %1\nconditions %2"_s.arg(QLatin1String(host), text));
        const auto run = runAgain(script);
        EXPECT_TRUE(run.wrong.isNull()) << host << ": " << qPrintable(run.wrong);
        if (run.wrong.isNull()) {
            EXPECT_EQ(run.script.text().toStdString(), script.text().toStdString())
                << "not all could be done";
        }
    }
}
