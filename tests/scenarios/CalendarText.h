// The appointments of a calendar file as they stand in it, for comparing to the letter.
#pragma once

#include <QByteArray>
#include <QList>
#include <string>

namespace scenarios {

// One line of a component, with its folds taken out.
struct TextLine {
    QByteArray octets;     // as it stands in the file, folds and line end included
    QByteArray name;       // upper case
    QByteArray parameters; // from the first ";" up to the ":", as they stand
    QByteArray value;
    int depth = 0; // 0: of the appointment itself; more: of a component in it
};

struct EventText {
    qsizetype begin = 0; // of the component in the file
    qsizetype end = 0;
    QList<TextLine> lines; // BEGIN and END of the appointment not included

    // The first line of that name that is the appointment's own, without fold and line end; empty when there
    // is none.
    [[nodiscard]] std::string line(const QByteArray &name) const;
};

// Every VEVENT, in the file's order.
[[nodiscard]] QList<EventText> eventsIn(const QByteArray &file);
// The first with that UID; an empty one when there is none.
[[nodiscard]] EventText eventIn(const QByteArray &file, const QByteArray &uid);

} // namespace scenarios
