// Days on which something once went wrong, each under what must hold on it.
#include "tests/faults/Days.h"

#include <gtest/gtest.h>

using namespace faults;

namespace {

struct FoundFault {
    const char *claim;
    const char *script;
};

class FoundFaults : public testing::TestWithParam<FoundFault> {};

const FoundFault faultsFound[] = {
    {"WhatIsTypedIntoTheLocationSurvivesTheNextAnswer", "weather calm\n"
                                                        "new plain\n"
                                                        "strip new1 add\n"
                                                        "sheet ok\n"
                                                        "place new1 here\n"
                                                        "later new1 30\n"
                                                        "save new1\n"},
    {"ARemovedMeetingTakesNoOtherAppointmentsLocation", "weather stormy\n"
                                                        "open plain\n"
                                                        "place plain here\n"
                                                        "new video\n"
                                                        "sheet ok\n"
                                                        "strip new1 remove\n"
                                                        "save plain\n"},
    {"TheLocationOfAnotherEditorsMeetingIsNotStoredWithAMovedAppointment", "weather busy\n"
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
    {"TheSheetThatIsConfirmedDoesWhatItWasOpenedFor", "weather stormy\n"
                                                      "new plain\n"
                                                      "strip new1 add\n"
                                                      "sheet ok\n"
                                                      "new plain\n"
                                                      "place new2 here\n"
                                                      "strip new2 settings\n"
                                                      "strip new1 remove\n"
                                                      "sheet ok\n"},
    {"ALateAnswerRepeatsNoSaveAndCloseThatTheHostHasRun", "weather stormy\n"
                                                          "rule once delay get 500\n"
                                                          "open series\n"
                                                          "strip series add\n"
                                                          "sheet ok\n"
                                                          "move other 30\n"
                                                          "saveclose series\n"},
    {"OnlyTheNewJoinURLIsLeftInTheLocationWhenItChanges", "weather calm\n"
                                                          "open other\n"
                                                          "strip other add\n"
                                                          "sheet ok\n"
                                                          "save other\n"
                                                          "strip other settings\n"
                                                          "sheet usePMI\n"
                                                          "sheet ok\n"
                                                          "save other\n"},
    {"AnAudioConferenceIsWrittenIntoNoOtherAppointment", "weather busy\n"
                                                         "new audio\n"
                                                         "save new1\n"
                                                         "move other 30\n"},
};

INSTANTIATE_TEST_SUITE_P(Days, FoundFaults, testing::ValuesIn(faultsFound),
                         [](const auto &info) { return std::string(info.param.claim); });

} // namespace

TEST_P(FoundFaults, DoNotComeBack) {
    for (const char *host : {"15.8", "16"}) {
        Script script = Script::parse(QString::fromLatin1(GetParam().script));
        script.hostVersion = QString::fromLatin1(host);
        const Day day = liveAgain(script);
        EXPECT_TRUE(day.wrong.isNull()) << host << ": " << qPrintable(day.wrong);
        EXPECT_EQ(day.script.text().toStdString(), script.text().toStdString()) << "not all could be done";
    }
}
