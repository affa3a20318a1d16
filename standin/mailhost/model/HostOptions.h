// What the host program is started with.
#pragma once

#include "platform/Literals.h"

#include <QDate>
#include <QList>
#include <QString>

namespace mailhost {

// What the body editor does to bookmarks whenever it is handed HTML, as such editors are known to.
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
    QList<Mailbox> accounts; // empty: found out from the calendar
    // Other people whose calendars this one manages: From offers them too.
    QList<Mailbox> delegating{{u"Kim Principal"_s, u"kim@parlo.example"_s},
                              {u"Robin Director"_s, u"robin@parlo.example"_s}};
    BookmarkMangling bookmarkMangling = BookmarkMangling::None;
    QDate today; // invalid: the system's date
};

// Whether a host of that version has the header with rows and the Word-style body: 15.9 and later.
[[nodiscard]] bool isNewerGeneration(const QString &hostVersion);
// Does to the bookmarks in the HTML what the option says.
[[nodiscard]] QString mangled(const QString &html, BookmarkMangling mangling);

} // namespace mailhost
