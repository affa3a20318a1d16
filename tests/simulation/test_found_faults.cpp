// Runs in which something once went wrong, each under what must hold in it.
#include "tests/simulation/Runs.h"

#include <gtest/gtest.h>

using namespace simulation;

namespace {

struct FoundFault {
    const char *claim;
    const char *script;
};

class FoundFaults : public testing::TestWithParam<FoundFault> {};

#define TWO_MEETINGS                                                                                         \
    "conditions calm\n"                                                                                      \
    "open plain\nstrip plain add\nsheet ok\nsaveclose plain\n"                                               \
    "open other\nstrip other add\nsheet ok\nsaveclose other\n"
#define MEETING_OF_INVITED                                                                                   \
    "conditions calm\nopen invited\nstrip invited add\nsheet ok\nsend invited\nwait 1\n"

const FoundFault faultsFound[] = {
    {"WhatIsTypedIntoTheLocationSurvivesTheNextAnswer", "conditions calm\n"
                                                        "new plain\n"
                                                        "strip new1 add\n"
                                                        "sheet ok\n"
                                                        "place new1 here\n"
                                                        "later new1 30\n"
                                                        "save new1\n"},
    {"ARemovedMeetingTakesNoOtherAppointmentsLocation", "conditions stormy\n"
                                                        "open plain\n"
                                                        "place plain here\n"
                                                        "new video\n"
                                                        "sheet ok\n"
                                                        "strip new1 remove\n"
                                                        "save plain\n"},
    {"TheLocationOfAnotherEditorsMeetingIsNotStoredWithAMovedAppointment", "conditions slow\n"
                                                                           "open plain\n"
                                                                           "place plain here\n"
                                                                           "strip plain add\n"
                                                                           "sheet ok\n"
                                                                           "save plain\n"
                                                                           "close plain\n"
                                                                           "open other\n"
                                                                           "strip other add\n"
                                                                           "sheet ok\n"
                                                                           "move plain 30\n"},
    {"TheSheetThatIsConfirmedDoesWhatItWasOpenedFor", "conditions stormy\n"
                                                      "new plain\n"
                                                      "strip new1 add\n"
                                                      "sheet ok\n"
                                                      "new plain\n"
                                                      "place new2 here\n"
                                                      "strip new2 settings\n"
                                                      "strip new1 remove\n"
                                                      "sheet ok\n"},
    {"ALateAnswerRepeatsNoSaveAndCloseThatTheHostHasRun", "conditions stormy\n"
                                                          "rule once delay get 500\n"
                                                          "open series\n"
                                                          "strip series add\n"
                                                          "sheet ok\n"
                                                          "move other 30\n"
                                                          "saveclose series\n"},
    {"OnlyTheNewJoinURLIsLeftInTheLocationWhenItChanges", "conditions calm\n"
                                                          "open other\n"
                                                          "strip other add\n"
                                                          "sheet ok\n"
                                                          "save other\n"
                                                          "strip other settings\n"
                                                          "sheet usePMI\n"
                                                          "sheet ok\n"
                                                          "save other\n"},
    {"AnAudioConferenceIsWrittenIntoNoOtherAppointment", "conditions slow\n"
                                                         "new audio\n"
                                                         "save new1\n"
                                                         "move other 30\n"},
    {"AnAppointmentOpenedBesideAnotherKeepsToItself", "conditions calm\n"
                                                      "open plain\n"
                                                      "strip plain add\n"
                                                      "sheet ok\n"
                                                      "save plain\n"
                                                      "open other\n"
                                                      "subject other w1x\n"
                                                      "save other\n"},
    {"ARemovalTakesTheMeetingOfItsOwnEditor", TWO_MEETINGS "open plain\n"
                                                           "open other\n"
                                                           "front plain\n"
                                                           "strip plain remove\n"},
    {"AnEditorBroughtForwardAgainKeepsItsMeeting", TWO_MEETINGS "open plain\n"
                                                                "open other\n"
                                                                "open plain\n"
                                                                "subject plain w1x\n"
                                                                "save plain\n"},
    {"OfTwoMovesWhileTheClientIsSlowBothReachIt", TWO_MEETINGS "rule delay get 2500\n"
                                                               "move plain 30\n"
                                                               "move other 30\n"
                                                               "wait 6\n"},
    {"ASaveThatWasRefusedAsksAgain", TWO_MEETINGS "rule once drop get\n"
                                                  "move plain 30\n"
                                                  "wait 31\n"
                                                  "open plain\n"
                                                  "subject plain w1x\n"
                                                  "rule once error get 0;Error 5003\n"
                                                  "save plain\n"
                                                  "alert escape\n"
                                                  "save plain\n"},
    {"AHeldSendGoesOutOnceWhateverIsRepeated", MEETING_OF_INVITED "open invited\n"
                                                                  "body invited w1x\n"
                                                                  "rule once repeat get 2\n"
                                                                  "send invited\n"},
    {"AnEditorWhoseHeldStoringFailsStaysOpen", TWO_MEETINGS "open plain\n"
                                                            "subject plain w1x\n"
                                                            "disk full\n"
                                                            "saveclose plain\n"},
    {"ASendWhoseStoringFailsKeepsItsMeeting", MEETING_OF_INVITED "open invited\n"
                                                                 "subject invited w1x\n"
                                                                 "disk full\n"
                                                                 "send invited\nwait 1\n"
                                                                 "disk free\n"
                                                                 "alert escape\n"
                                                                 "subject invited w2x\n"
                                                                 "send invited\n"},
};

INSTANTIATE_TEST_SUITE_P(Runs, FoundFaults, testing::ValuesIn(faultsFound),
                         [](const auto &info) { return std::string(info.param.claim); });

} // namespace

TEST_P(FoundFaults, DoNotComeBack) {
    for (const char *host : {"15.8", "16"}) {
        Script script = Script::parse(QString::fromLatin1(GetParam().script));
        script.hostVersion = QString::fromLatin1(host);
        const auto run = runAgain(script);
        EXPECT_TRUE(run.wrong.isNull()) << host << ": " << qPrintable(run.wrong);
        if (run.wrong.isNull()) {
            EXPECT_EQ(run.script.text().toStdString(), script.text().toStdString())
                << "not all could be done";
        }
    }
}
