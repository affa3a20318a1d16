// The parts of the table. Each is measured in a process of its own, since some of them load the plug-in, take
// a bus or fill the memory.
#pragma once

namespace bench {

void calls();      // by name, and through an exchanged method
void bus();        // a notification there and back
void addMeeting(); // and save it, with the client in its own process
void addMeetingInMemory();
void html();      // to plain characters
void bodies();    // the invitation in a body
void digests();   // MD5
void accounts();  // of audio conferences
void snapshots(); // of an appointment
void loading();   // the plug-in, into a host
void header();    // its drawing

// What the other process of bus() does until it is ended.
void echoBare();
void echoNotifications();

} // namespace bench
