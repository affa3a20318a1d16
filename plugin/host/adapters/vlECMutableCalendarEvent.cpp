#include "plugin/host/adapters/vlECMutableCalendarEvent.h"

#include "plugin/host/adapters/hostNames.h"

vlECMutableCalendarEvent::vlECMutableCalendarEvent(rt::Object *record)
    : vlDelegateBase(key_vlECMutableCalendarEvent, record) {}

QString vlECMutableCalendarEvent::summary() const {
    return rt::textValue(getOLItemID(olItem_summary));
}

QString vlECMutableCalendarEvent::location() const {
    return rt::textValue(getOLItemID(olItem_location));
}

QString vlECMutableCalendarEvent::body() const {
    return rt::textValue(getOLItemID(olItem_body));
}

QString vlECMutableCalendarEvent::olmUCCapabilities() const {
    return rt::textValue(getOLItemID(olItem_olmUCCapabilities));
}

void vlECMutableCalendarEvent::setSummary(const QString &summary) const {
    getOLItemID(olItem_setSummary, summary);
}

void vlECMutableCalendarEvent::setLocation(const QString &location) const {
    getOLItemID(olItem_setLocation, location);
}

void vlECMutableCalendarEvent::setBody(const QString &html) const {
    getOLItemID(olItem_setBody, html);
}

void vlECMutableCalendarEvent::setOlmUCCapabilities(const QString &text) const {
    getOLItemID(olItem_setOlmUCCapabilities, text);
}
