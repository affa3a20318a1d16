// The values that the plug-in adds to an appointment's record when the host stores it next.
#pragma once

#include <QString>

// A write-back composes it; the next storing of the appointment consumes it. A null text is not set.
struct PendingWriteBack {
    bool needClearLocation = false;
    QString joinURL;             // written by this write-back
    QString olNewLocation;       // the whole location
    QString vlLocation;          // its meeting part: join URL and rooms
    QString joinURLFromProperty; // in the stored record before this write-back
    QString olNewBody;           // HTML
};
