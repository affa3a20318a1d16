// The options of the host program.
#pragma once

#include "platform/Literals.h"

#include <QDate>
#include <QList>
#include <QString>

namespace mailhost {

// How the body editor changes the bookmarks in HTML that it gets, as real editors do.
enum class BookmarkMangling { None, QuotesStripped, FontTags, LineBreaks };

struct Mailbox {
    QString name;
    QString email;
    friend bool operator==(const Mailbox &, const Mailbox &) = default;
};

struct HostOptions {
    QString hostVersion = u"16"_s;
    bool noPlugin = false;
    QString pluginPath;      // empty: the installed one
    QString documentsFolder; // empty: the desktop's
    QString defaultsFolder;  // empty: the desktop's
    QString outbox;          // empty: "Outbox" in the program's data folder
    QString calendarPath;    // empty: the sample calendar
    QList<Mailbox> accounts; // empty: derived from the calendar
    // Other people whose calendars the user manages: the From field offers them too.
    QList<Mailbox> delegating{{u"Kim Principal"_s, u"kim@parlo.example"_s},
                              {u"Robin Director"_s, u"robin@parlo.example"_s}};
    BookmarkMangling bookmarkMangling = BookmarkMangling::None;
    QDate today; // invalid: the system's date
};

// Whether a host of that version has the header with rows and the Word-style body: 15.9 and later.
[[nodiscard]] bool isNewerGeneration(const QString &hostVersion);
// Returns the HTML with its bookmarks changed as the option says.
[[nodiscard]] QString mangled(const QString &html, BookmarkMangling mangling);

} // namespace mailhost
