// The parts of the walk-through, in the order in which they build on each other. Each throws Stopped when one
// of its steps fails.
#pragma once

#include "standin/walkthrough/Session.h"

namespace walkthrough {

void cancelWithoutClient(Session &walk);
void changeInEditor(Session &walk);
void changeOnCalendar(Session &walk);
void changeWithoutClient(Session &walk); // and with one that refuses
void changeWithLateAnswers(Session &walk);
void deleteOnCalendar(Session &walk);
void useToolBar(Session &walk);
void addAudioConferences(Session &walk);
void scheduleForOthers(Session &walk);

inline constexpr struct {
    const char *name;
    void (*run)(Session &walk);
} parts[] = {
    {"cancellation", cancelWithoutClient},
    {"editor", changeInEditor},
    {"calendar", changeOnCalendar},
    {"refusals", changeWithoutClient},
    {"late answers", changeWithLateAnswers},
    {"deletions", deleteOnCalendar},
    {"tool-bar", useToolBar},
    {"audio conferences", addAudioConferences},
    {"on behalf", scheduleForOthers},
};

} // namespace walkthrough
