// What the next stored record of an appointment brings into it.
#pragma once

#include <QString>

// Composed by a write-back, used up by the host's next storing of the appointment. Null: not set.
struct PendingWriteBack {
    bool needClearLocation = false;
    QString joinURL;             // just written
    QString olNewLocation;       // the whole location
    QString vlLocation;          // its meeting part: join URL and rooms
    QString joinURLFromProperty; // of the stored record before this write-back
    QString olNewBody;           // HTML
};
