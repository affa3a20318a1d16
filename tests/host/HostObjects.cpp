#include "tests/host/HostObjects.h"

namespace {

// "setIsDirty:" sets "isDirty"; "setInnerHTML:" sets "innerHTML".
QString setterProperty(const QString &setter) {
    return setter.at(3).toLower() + setter.mid(4).chopped(1);
}

rt::Value answer(rt::Object *self, rt::Selector command, rt::Args arguments) {
    auto *object = static_cast<HostObject *>(self);
    QVariantList given;
    for (int i = 0; i < arguments.count(); ++i)
        given.append(arguments[i]);
    if (!given.isEmpty())
        object->calls.append({command.name(), given});
    const QString name = command.name();
    if (name.startsWith(u"set") && given.size() == 1)
        object->values.insert(setterProperty(name), given.first());
    return object->values.value(name);
}

rt::Value dateUTC(rt::Object *self, rt::Selector, rt::Args) {
    return static_cast<HostDate *>(self)->utc;
}

rt::Value describe(rt::Object *self, rt::Selector, rt::Args arguments) {
    const QTimeZone zone = arguments[1].value<QTimeZone>();
    if (arguments[0].toString() != u"%Y-%m-%d %H:%M:%S" || arguments[2].isValid() || !zone.isValid())
        return {};
    return static_cast<HostDate *>(self)->utc.toTimeZone(zone).toString(u"yyyy-MM-dd HH:mm:ss"_s);
}

rt::Value secondsSince(rt::Object *self, rt::Selector, rt::Args arguments) {
    const auto *other = static_cast<HostDate *>(rt::objectValue(arguments[0]));
    return double(other->utc.msecsTo(static_cast<HostDate *>(self)->utc)) / 1000.0;
}

rt::Value later(rt::Object *self, rt::Selector, rt::Args arguments) {
    auto *date = static_cast<HostDate *>(self);
    auto moved = std::make_unique<HostDate>(QString(), date->values.value("timeZone").value<QTimeZone>());
    moved->utc = date->utc.addMSecs(qint64(rt::doubleValue(arguments[0]) * 1000));
    return rt::fromObject(rt::temporary(std::move(moved)));
}

rt::Class *define(const char *name, std::initializer_list<const char *> members,
                  rt::Class *superclass = nullptr) {
    rt::Class *cls = rt::defineClass(QString::fromLatin1(name), superclass);
    for (const char *member : members)
        rt::addMethod(cls, member, &answer, "");
    return cls;
}

void defineDates() {
    rt::Class *cls = define("OLCalendarDate", {"timeZone"});
    rt::addMethod(cls, "dateUTC", &dateUTC, "");
    rt::addMethod(cls, "descriptionWithCalendarFormat:timeZone:locale:", &describe, "");
    rt::addMethod(cls, "timeIntervalSinceDate:", &secondsSince, "");
    rt::addMethod(cls, "dateByAddingTimeInterval:", &later, "");
}

} // namespace

rt::Value composeViewMainFrame(rt::Object *self, rt::Selector, rt::Args) {
    return rt::fromObject(&static_cast<ComposeView *>(self)->m_frame);
}

void defineHost() {
    static bool defined = false;
    if (std::exchange(defined, true))
        return;
    define("ECCalendarEvent", {"summary", "setSummary:", "location", "setLocation:", "startTime", "endTime",
                               "recurrence", "body", "attendeeList", "isOccurrence", "isModifiedException",
                               "isOwner", "account", "olmUCCapabilities", "setOlmUCCapabilities:"});
    define("ECMutableCalendarEvent", {"summary", "setSummary:", "location", "setLocation:", "body",
                                      "setBody:", "olmUCCapabilities", "setOlmUCCapabilities:"});
    define("ECCalendarEventAttendee", {"name", "emailAddress", "attendeeType"});
    define("ECEmailAccount", {"emailAddress", "fromAddress"});
    define("ECEmailAddress", {"emailAddress"});
    define("ERCalendarEventEditorViewController",
           {"content", "uncommittedChanges", "currentEmailAccount", "isDelegating", "isCancelMode",
            "isOccurrenceOrException", "setIsDirty:", "olmUCCapabilities",
            "setOlmUCCapabilities:", "locationTextField", "view"});
    define("CCGridViewController", {"view", "selectedEvent"});
    define("OLCalendarGridViewWrapper", {"gridViewController", "gridViewControllers"});
    define("ErageAppDelegate", {"newCalendarMeeting:"});
    define("OLWordMailEditorContent", {"bodyContent"});
    rt::Class *word = define("OLWordMailEditor", {"editorContent", "displayHTMLContent:readOnly:"});
    rt::Class *signing = define("SigningWordEditor", {"displayHTMLContent:readOnly:signatureEditor:"}, word);
    define("ActivatingWordEditor", {"displayHTMLContent:readOnly:signatureEditor:activateEditor:"}, signing);
    define("WebFrame", {"DOMDocument"});
    define("DOMDocument", {"documentElement", "getElementsByTagName:"});
    define("DOMElement", {"outerHTML", "innerHTML", "setInnerHTML:"});
    rt::addMethod(define("ComposeView", {}), "mainFrame", &composeViewMainFrame, "");
    defineDates();
}

HostObject::HostObject(const QString &className, const QVariantMap &values)
    : rt::Object((defineHost(), rt::classNamed(className)))
    , values(values) {}

HostDate::HostDate(const QString &utc, const QTimeZone &zone)
    : HostObject("OLCalendarDate", {{"timeZone", QVariant::fromValue(zone)}})
    , utc(QDateTime::fromString(utc, u"yyyy-MM-dd HH:mm:ss"_s)) {
    this->utc.setTimeSpec(Qt::UTC);
}

ComposeView::ComposeView(QWidget *parent, const QString &html)
    : QWidget(parent)
    , rt::Object((defineHost(), rt::classNamed("ComposeView")))
    , m_root("DOMElement")
    , m_body("DOMElement")
    , m_document("DOMDocument")
    , m_frame("WebFrame") {
    m_root.values = {{"outerHTML", html}};
    m_document.values = {{"documentElement", rt::fromObject(&m_root)},
                         {"getElementsByTagName:", QVariantList{rt::fromObject(&m_body)}}};
    m_frame.values = {{"DOMDocument", rt::fromObject(&m_document)}};
}

QString ComposeView::writtenBody() const {
    return m_body.values.value("innerHTML").toString();
}
